#include "sdk/model/Unit.h"

namespace ChipModel {

Unit::Unit( int number, const Profile & profile, bool staged )
    : number_( number ), profile_( &profile ), state_( profile ), staged_( staged ) {}

UnitState *
Unit::active() {
   if ( !staged_ ) {
      return &state_;
   }
   return retained_ ? &*retained_ : nullptr;
}

void
Unit::commit( U32 flags ) {
   if ( !staged_ ) {
      return;
   }
   staged_ = false;
   commitFlags_ = flags;
   ++commits_;
   retained_.reset();
}

void
Unit::restart( bool hitless ) {
   if ( hitless ) {
      if ( !staged_ ) {
         retained_.emplace( std::move( state_ ) );
      }
   } else {
      retained_.reset();
   }
   state_ = UnitState( *profile_ );
   staged_ = true;
}

} // namespace ChipModel
