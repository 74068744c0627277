// Holds a reference to a counted object for a scope in which the activity
// lock is released (around SDK calls): another activity may drop the last
// outside reference meanwhile, and the object must outlive the scope. An
// object nobody counts (one on the stack, in a test) is left alone.
#pragma once

#include "platform/kiln/Ptr.h"

namespace Tessel {

class KeepAlive {
 public:
   explicit KeepAlive( const Kiln::PtrInterface & object )
         : object_( object.references() > 0 ? &object : nullptr ) {
      if ( object_ ) {
         object_->newRef();
      }
   }
   ~KeepAlive() {
      if ( object_ ) {
         object_->deleteRef();
      }
   }
   KeepAlive( const KeepAlive & ) = delete;
   KeepAlive & operator=( const KeepAlive & ) = delete;

 private:
   const Kiln::PtrInterface * object_;
};

} // namespace Tessel
