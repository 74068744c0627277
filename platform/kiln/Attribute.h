// Storage of one entity attribute. The entity's named members wrap it and
// notify observers of changes (see Entity.h).
#pragma once

#include <utility>

namespace Kiln {

// T must be copyable and comparable with ==.
template< typename T >
class Attribute {
 public:
   typedef T Value;

   // Starts value-initialised (0, false, null, empty) or at `initial`.
   Attribute() : value_() {}
   explicit Attribute( T initial ) : value_( std::move( initial ) ) {}

   const T &
   get() const noexcept {
      return value_;
   }
   // Stores `value`; returns whether it differs from what was stored.
   bool
   set( const T & value ) {
      if ( value_ == value ) {
         return false;
      }
      value_ = value;
      return true;
   }

 private:
   T value_;
};

} // namespace Kiln
