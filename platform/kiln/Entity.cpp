#include "platform/kiln/Entity.h"

#include <algorithm>

namespace Kiln {

NotifieeBase::~NotifieeBase() {
   notifierEntityIs( nullptr );
}

void
NotifieeBase::notifierEntityIs( Entity * entity ) {
   if ( entity == notifier_ ) {
      return;
   }
   if ( notifier_ ) {
      notifier_->notifieeDel( this );
   }
   notifier_ = entity;
   if ( notifier_ ) {
      notifier_->notifieeAdd( this );
   }
}

Entity::Entity( const Name & name ) : name_( name ) {}

Entity::~Entity() {
   for ( NotifieeBase * notifiee : notifiees_ ) {
      if ( notifiee ) {
         notifiee->notifier_ = nullptr;
      }
   }
}

size_t
Entity::notifiees() const noexcept {
   return static_cast< size_t >(
      std::count_if( notifiees_.begin(), notifiees_.end(),
                     []( const NotifieeBase * n ) { return n != nullptr; } ) );
}

void
Entity::notifieeAdd( NotifieeBase * notifiee ) {
   notifiees_.push_back( notifiee );
}

void
Entity::notifieeDel( NotifieeBase * notifiee ) {
   auto found = std::find( notifiees_.begin(), notifiees_.end(), notifiee );
   KILN_ASSERT( found != notifiees_.end() );
   if ( notifyDepth_ ) {
      *found = nullptr;
   } else {
      notifiees_.erase( found );
   }
}

Entity::NotifyScope::NotifyScope( const Entity & entity )
      : entity_( entity ), keptAlive_( entity.references() > 0 ) {
   if ( keptAlive_ ) {
      entity_.newRef();
   }
   ++entity_.notifyDepth_;
}

Entity::NotifyScope::~NotifyScope() {
   if ( --entity_.notifyDepth_ == 0 ) {
      auto & list = entity_.notifiees_;
      list.erase( std::remove( list.begin(), list.end(), nullptr ), list.end() );
   }
   if ( keptAlive_ ) {
      entity_.deleteRef();
   }
}

} // namespace Kiln
