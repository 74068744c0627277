// The activity lock and its anchors.
//
// All of the agent's work runs on one activity thread holding the process's
// activity lock (ActivityUnlockAnchor::lock()). Calls that may block or take
// long, SDK calls above all, release it for their duration with an anchor so
// that other activities can run meanwhile:
//
//    {
//       Kiln::UnlockAnchor anchor( Kiln::ActivityUnlockAnchor::lock() );
//       rc = bcm_field_entry_install( unit, entry );
//    } // the lock is held again here; re-read any state the call may change
//
// An anchor only releases a lock that the calling thread holds, so code that
// runs both with and without the lock (start-up, tests) can use it freely.
#pragma once

#include <atomic>
#include <mutex>
#include <thread>

#include "platform/kiln/Assert.h"
#include "platform/kiln/Types.h"

namespace Kiln {

// A mutex that knows which thread holds it. Not recursive.
//
// Every SDK call releases and retakes it, so the uncontended paths are
// inline: one atomic exchange each way. Waiting threads sleep on the lock
// word (0 free, 1 held, 2 held with sleepers).
class ActivityLock {
 public:
   ActivityLock() = default;
   ActivityLock( const ActivityLock & ) = delete;
   ActivityLock & operator=( const ActivityLock & ) = delete;

   // Blocks until the lock is taken. Taking it again on the thread that
   // holds it is a programming error and aborts.
   void
   lock() {
      const std::thread::id self = std::this_thread::get_id();
      KILN_ASSERT_MSG( owner_.load( std::memory_order_relaxed ) != self,
                       "activity lock taken twice by one thread" );
      take( self );
   }
   // Takes the lock if it is free; returns whether it did (false, too, when
   // this thread already holds it).
   bool tryLock();
   // Releases the lock; the calling thread must hold it.
   void
   unlock() {
      KILN_ASSERT_MSG( heldByThisThread(), "activity lock released by a thread not holding it" );
      give();
   }
   // Whether the calling thread holds the lock. Exact for the calling thread
   // whatever other threads do.
   bool
   heldByThisThread() const noexcept {
      return owner_.load( std::memory_order_relaxed ) == std::this_thread::get_id();
   }

   // Lowercase forms, so that the standard lock guards work too.
   bool
   try_lock() {
      return tryLock();
   }

 private:
   friend class UnlockAnchor;

   static constexpr U32 free_ = 0;
   static constexpr U32 held_ = 1;
   static constexpr U32 contended_ = 2;

   // The caller (`self`) does not hold the lock.
   void
   take( std::thread::id self ) {
      U32 expected = free_;
      if ( !word_.compare_exchange_strong( expected, held_, std::memory_order_acquire,
                                           std::memory_order_relaxed ) ) {
         takeContended();
      }
      owner_.store( self, std::memory_order_relaxed );
   }
   // The caller holds the lock.
   void
   give() {
      owner_.store( std::thread::id(), std::memory_order_relaxed );
      if ( word_.exchange( free_, std::memory_order_release ) == contended_ ) {
         wakeOne();
      }
   }
   void takeContended();
   void wakeOne();

   std::atomic< U32 > word_{ free_ };
   // Written only by the holder, so a thread reading its own id back
   // cannot be mistaken.
   std::atomic< std::thread::id > owner_{};
};

// Releases a lock for the anchor's scope when the calling thread holds it,
// and takes it again when the scope ends. Does nothing when the thread does
// not hold it.
class UnlockAnchor {
 public:
   explicit UnlockAnchor( ActivityLock & lock )
         : lock_( lock ), self_( std::this_thread::get_id() ),
           released_( lock.owner_.load( std::memory_order_relaxed ) == self_ ) {
      if ( released_ ) {
         lock_.give();
      }
   }
   ~UnlockAnchor() { relock(); }
   UnlockAnchor( const UnlockAnchor & ) = delete;
   UnlockAnchor & operator=( const UnlockAnchor & ) = delete;

   // Whether the lock is released by this anchor right now (and so will be
   // taken again by it).
   bool
   released() const noexcept {
      return released_;
   }
   // Takes the lock again before the scope ends; nothing when it was not
   // released or is already taken again.
   void
   relock() {
      if ( released_ ) {
         lock_.take( self_ );
         released_ = false;
      }
   }

 private:
   ActivityLock & lock_;
   std::thread::id self_;
   bool released_;
};

// An UnlockAnchor on the process's activity lock; also where that lock lives.
class ActivityUnlockAnchor : public UnlockAnchor {
 public:
   ActivityUnlockAnchor();
   // The activity lock of the process (one per process).
   static ActivityLock & lock();
};

// Holds a lock for its scope (the process's activity lock by default): for
// program mains, threads that join the activity, and tests.
class ActivityLockGuard {
 public:
   ActivityLockGuard();
   explicit ActivityLockGuard( ActivityLock & lock );
   ~ActivityLockGuard();
   ActivityLockGuard( const ActivityLockGuard & ) = delete;
   ActivityLockGuard & operator=( const ActivityLockGuard & ) = delete;

 private:
   ActivityLock & lock_;
};

} // namespace Kiln
