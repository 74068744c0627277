// Observers of entities ("notifiees").
//
// An entity class declares its observer interface as a class derived from
// Kiln::Notifiee< Entity >, with one virtual per attribute or collection that
// does nothing by default (see Entity.h). An observer derives from that
// interface, overrides what it cares about and attaches to one entity:
//
//    class CountWatcher : public GroupCounts::NotifieeConst {
//     public:
//       void onUnitRefCount( U32 unit ) override { ... }
//    };
//    CountWatcher watcher;
//    watcher.notifierIs( counts );   // attach
//    watcher.notifierIs( nullptr );  // detach (destruction detaches too)
//
// An observer does not keep its entity alive. When the entity is destroyed
// first, every observer still attached is detached and its notifier()
// becomes null. Attaching and detaching happen on the thread that owns the
// entity (the activity thread); none of this is thread-safe.
#pragma once

#include "platform/kiln/Ptr.h"

#include <cstddef>

namespace Kiln {

class Entity;

// The untyped part of every observer: which entity it is attached to.
class NotifieeBase {
 public:
   NotifieeBase() = default;
   // Attachment is part of an observer's identity; it is not copied.
   NotifieeBase( const NotifieeBase & ) = delete;
   NotifieeBase & operator=( const NotifieeBase & ) = delete;
   // Detaches from the entity, if attached.
   virtual ~NotifieeBase();

 protected:
   Entity *
   notifierEntity() const noexcept {
      return notifier_;
   }
   // Detaches from the current entity (if any), then attaches to `entity`
   // (if not null). Attaching to the current entity again changes nothing.
   void notifierEntityIs( Entity * entity );

 private:
   friend class Entity;
   Entity * notifier_ = nullptr;
};

// The base of an entity's observer interface: E is the entity class.
template< typename E >
class Notifiee : public NotifieeBase {
 public:
   typedef E Notifier;

   // The entity observed, or null when detached.
   E *
   notifier() const noexcept {
      return static_cast< E * >( notifierEntity() );
   }
   void
   notifierIs( E * entity ) {
      notifierEntityIs( entity );
   }
   void
   notifierIs( const Ptr< E > & entity ) {
      notifierEntityIs( entity.rawPtr_ );
   }
   void
   notifierIs( std::nullptr_t ) {
      notifierEntityIs( nullptr );
   }
};

} // namespace Kiln
