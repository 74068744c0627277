#include "platform/kiln/ActivityLock.h"

#include "platform/kiln/Assert.h"

namespace Kiln {

bool
ActivityLock::tryLock() {
   const std::thread::id self = std::this_thread::get_id();
   U32 expected = free_;
   if ( owner_.load( std::memory_order_relaxed ) == self ||
        !word_.compare_exchange_strong( expected, held_, std::memory_order_acquire,
                                        std::memory_order_relaxed ) ) {
      return false;
   }
   owner_.store( self, std::memory_order_relaxed );
   return true;
}

// Marks the lock contended and sleeps until a holder gives it up; whoever
// takes it this way leaves it marked, so its release wakes the next one.
void
ActivityLock::takeContended() {
   while ( word_.exchange( contended_, std::memory_order_acquire ) != free_ ) {
      word_.wait( contended_, std::memory_order_relaxed );
   }
}

void
ActivityLock::wakeOne() {
   word_.notify_one();
}

ActivityUnlockAnchor::ActivityUnlockAnchor() : UnlockAnchor( lock() ) {}

ActivityLock &
ActivityUnlockAnchor::lock() {
   static ActivityLock processLock;
   return processLock;
}

ActivityLockGuard::ActivityLockGuard() : ActivityLockGuard( ActivityUnlockAnchor::lock() ) {}

ActivityLockGuard::ActivityLockGuard( ActivityLock & lock ) : lock_( lock ) {
   lock_.lock();
}

ActivityLockGuard::~ActivityLockGuard() {
   lock_.unlock();
}

} // namespace Kiln
