#include <gtest/gtest.h>

#include "platform/kiln/Activity.h"

#include <chrono>
#include <future>
#include <thread>
#include <vector>

namespace {

// Runs `fn` on another thread and returns its result.
template< typename Fn >
auto
onOtherThread( Fn fn ) {
   return std::async( std::launch::async, fn ).get();
}

TEST( ActivityLock, HeldByThisThreadIsExactPerThread ) {
   Kiln::ActivityLock lock;
   EXPECT_FALSE( lock.heldByThisThread() );
   lock.lock();
   EXPECT_TRUE( lock.heldByThisThread() );
   EXPECT_FALSE( onOtherThread( [ & ] { return lock.heldByThisThread(); } ) );
   EXPECT_FALSE( onOtherThread( [ & ] { return lock.tryLock(); } ) );
   EXPECT_FALSE( lock.tryLock() ); // not recursive
   lock.unlock();

   std::promise< void > taken, done;
   std::thread holder( [ & ] {
      lock.lock();
      taken.set_value();
      done.get_future().wait();
      EXPECT_TRUE( lock.heldByThisThread() );
      lock.unlock();
   } );
   taken.get_future().wait();
   EXPECT_FALSE( lock.heldByThisThread() );
   done.set_value();
   holder.join();
}

// Threads that find the lock taken sleep and are woken by its release:
// every increment made under the lock survives, none is lost to a race.
TEST( ActivityLock, ExcludesAndWakesEveryWaiter ) {
   Kiln::ActivityLock lock;
   U32 count = 0;
   constexpr U32 threads = 4;
   constexpr U32 rounds = 20000;
   std::vector< std::thread > workers;
   lock.lock(); // all start blocked, so the sleeping path is taken
   for ( U32 t = 0; t < threads; ++t ) {
      workers.emplace_back( [ & ] {
         for ( U32 i = 0; i < rounds; ++i ) {
            Kiln::ActivityLockGuard guard( lock );
            ++count;
            if ( i % 1000 == 0 ) {
               std::this_thread::yield(); // hold it a while: others queue up
            }
         }
      } );
   }
   std::this_thread::sleep_for( std::chrono::milliseconds( 10 ) );
   lock.unlock();
   for ( std::thread & worker : workers ) {
      worker.join();
   }
   Kiln::ActivityLockGuard guard( lock );
   EXPECT_EQ( count, threads * rounds );
}

TEST( ActivityLock, ProcessLockIsOneObject ) {
   EXPECT_EQ( &Kiln::ActivityUnlockAnchor::lock(), &Kiln::ActivityUnlockAnchor::lock() );
   Kiln::ActivityLockGuard guard;
   EXPECT_TRUE( Kiln::ActivityUnlockAnchor::lock().heldByThisThread() );
   {
      Kiln::ActivityUnlockAnchor anchor;
      EXPECT_TRUE( anchor.released() );
      EXPECT_FALSE( Kiln::ActivityUnlockAnchor::lock().heldByThisThread() );
   }
   EXPECT_TRUE( Kiln::ActivityUnlockAnchor::lock().heldByThisThread() );
}

TEST( UnlockAnchor, ReleasesForItsScopeAndTakesTheLockBack ) {
   Kiln::ActivityLock lock;
   Kiln::ActivityLockGuard guard( lock );
   {
      Kiln::UnlockAnchor anchor( lock );
      EXPECT_TRUE( anchor.released() );
      EXPECT_FALSE( lock.heldByThisThread() );
      // Another activity can run meanwhile.
      EXPECT_TRUE( onOtherThread( [ & ] {
         bool took = lock.tryLock();
         if ( took ) {
            lock.unlock();
         }
         return took;
      } ) );
   }
   EXPECT_TRUE( lock.heldByThisThread() );

   Kiln::UnlockAnchor early( lock );
   early.relock();
   EXPECT_TRUE( lock.heldByThisThread() );
   EXPECT_FALSE( early.released() );
   early.relock(); // harmless twice, and at scope end
}

TEST( UnlockAnchor, DoesNothingWhereTheLockIsNotHeld ) {
   Kiln::ActivityLock lock;
   {
      Kiln::UnlockAnchor anchor( lock );
      EXPECT_FALSE( anchor.released() );
   }
   EXPECT_FALSE( lock.heldByThisThread() );

   // Held by someone else: the anchor must neither release nor take it.
   std::promise< void > taken, done;
   std::thread holder( [ & ] {
      Kiln::ActivityLockGuard guard( lock );
      taken.set_value();
      done.get_future().wait();
      EXPECT_TRUE( lock.heldByThisThread() );
   } );
   taken.get_future().wait();
   {
      Kiln::UnlockAnchor anchor( lock );
      EXPECT_FALSE( anchor.released() );
   }
   EXPECT_FALSE( lock.heldByThisThread() );
   done.set_value();
   holder.join();
}

TEST( ActivityLockDeathTest, MisuseAborts ) {
   Kiln::ActivityLock lock;
   EXPECT_DEATH( lock.unlock(),
                 "Assertion 'activity lock released by a thread not holding it' failed" );
   EXPECT_DEATH(
      {
         lock.lock();
         lock.lock();
      },
      "void Kiln::ActivityLock::lock\\(\\): Assertion 'activity lock taken twice by one "
      "thread' failed" );
}

} // namespace
