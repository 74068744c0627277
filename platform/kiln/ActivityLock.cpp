#include "platform/kiln/ActivityLock.h"

#include "platform/kiln/Assert.h"

namespace Kiln {

void
ActivityLock::lock() {
   KILN_ASSERT_MSG( !heldByThisThread(), "activity lock taken twice by one thread" );
   mutex_.lock();
   owner_.store( std::this_thread::get_id(), std::memory_order_relaxed );
}

bool
ActivityLock::tryLock() {
   if ( heldByThisThread() || !mutex_.try_lock() ) {
      return false;
   }
   owner_.store( std::this_thread::get_id(), std::memory_order_relaxed );
   return true;
}

void
ActivityLock::unlock() {
   KILN_ASSERT_MSG( heldByThisThread(), "activity lock released by a thread not holding it" );
   owner_.store( std::thread::id(), std::memory_order_relaxed );
   mutex_.unlock();
}

UnlockAnchor::UnlockAnchor( ActivityLock & lock )
      : lock_( lock ), released_( lock.heldByThisThread() ) {
   if ( released_ ) {
      lock_.unlock();
   }
}

UnlockAnchor::~UnlockAnchor() {
   relock();
}

void
UnlockAnchor::relock() {
   if ( released_ ) {
      lock_.lock();
      released_ = false;
   }
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
