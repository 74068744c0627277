#include <gtest/gtest.h>

#include "platform/kiln/Activity.h"

#include <csignal>
#include <fcntl.h>
#include <future>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using namespace std::chrono_literals;
typedef Kiln::ActivityLoop::Clock Clock;

class ActivityLoopTest : public ::testing::Test {
 protected:
   Kiln::ActivityLock lock;
   Kiln::ActivityLoop loop{ lock };
   std::vector< std::string > ran;

   Kiln::ActivityLoop::Callback
   record( const std::string & what ) {
      return [ this, what ] {
         EXPECT_TRUE( lock.heldByThisThread() ) << what << " ran without the lock";
         ran.push_back( what );
      };
   }
   // Turns until `count` callbacks ran or a second passed.
   void
   turnUntil( size_t count ) {
      auto limit = Clock::now() + 1s;
      while ( ran.size() < count && Clock::now() < limit ) {
         loop.runOnce( 100ms );
      }
   }
};

TEST_F( ActivityLoopTest, DeferredCallsRunInOrderAndWhatTheyAddWaits ) {
   loop.defer( record( "a" ) );
   loop.defer( [ this ] {
      ran.push_back( "b" );
      loop.defer( record( "c" ) );
   } );
   EXPECT_EQ( 2u, loop.runOnce( 0ms ) );
   EXPECT_EQ( ( std::vector< std::string >{ "a", "b" } ), ran );
   EXPECT_EQ( 1u, loop.runOnce( 0ms ) );
   EXPECT_EQ( 0u, loop.runOnce( 0ms ) );
   EXPECT_EQ( "c", ran.back() );
   EXPECT_FALSE( lock.heldByThisThread() ); // a turn returns what it took
}

TEST_F( ActivityLoopTest, TimersFireInDeadlineOrderAndNeverEarly ) {
   auto start = Clock::now();
   std::vector< Clock::duration > at;
   auto stamp = [ & ]( const std::string & what ) {
      return [ &, what ] {
         at.push_back( Clock::now() - start );
         ran.push_back( what );
      };
   };
   loop.timerIs( 30ms, stamp( "30" ) );
   loop.timerIs( 10ms, stamp( "10" ) );
   Kiln::ActivityLoop::TimerId cancelled = loop.timerIs( 20ms, stamp( "20" ) );
   EXPECT_TRUE( loop.timerDel( cancelled ) );
   EXPECT_FALSE( loop.timerDel( cancelled ) );
   turnUntil( 2 );
   ASSERT_EQ( ( std::vector< std::string >{ "10", "30" } ), ran );
   EXPECT_GE( at[ 0 ], 10ms );
   EXPECT_GE( at[ 1 ], 30ms );
}

TEST_F( ActivityLoopTest, TimerSetByATimerRunsInALaterTurn ) {
   loop.timerIs( 0ms, [ this ] {
      ran.push_back( "first" );
      loop.timerIs( 0ms, record( "second" ) );
   } );
   EXPECT_EQ( 1u, loop.runOnce( 0ms ) );
   EXPECT_EQ( 1u, loop.runOnce( 0ms ) );
   EXPECT_EQ( ( std::vector< std::string >{ "first", "second" } ), ran );
}

TEST_F( ActivityLoopTest, ReadableDescriptorsAndEndOfFile ) {
   int fds[ 2 ];
   ASSERT_EQ( 0, pipe( fds ) );
   std::string got;
   bool sawEnd = false;
   loop.fdReadableIs( fds[ 0 ], [ & ] {
      char buffer[ 16 ];
      ssize_t n = read( fds[ 0 ], buffer, sizeof buffer );
      if ( n == 0 ) {
         sawEnd = true;
         loop.fdDel( fds[ 0 ] );
      } else {
         got.append( buffer, size_t( n ) );
      }
   } );
   EXPECT_EQ( 0u, loop.runOnce( 0ms ) );
   ASSERT_EQ( 2, write( fds[ 1 ], "hi", 2 ) );
   EXPECT_EQ( 1u, loop.runOnce( 1s ) );
   EXPECT_EQ( "hi", got );
   close( fds[ 1 ] );
   EXPECT_EQ( 1u, loop.runOnce( 1s ) );
   EXPECT_TRUE( sawEnd );
   EXPECT_FALSE( loop.fdDel( fds[ 0 ] ) );
   EXPECT_EQ( 0u, loop.runOnce( 0ms ) );
   close( fds[ 0 ] );
}

TEST_F( ActivityLoopTest, ReregisteringADescriptorReplacesItsCallback ) {
   int fds[ 2 ];
   ASSERT_EQ( 0, pipe( fds ) );
   ASSERT_EQ( 1, write( fds[ 1 ], "x", 1 ) );
   loop.fdReadableIs( fds[ 0 ], record( "old" ) );
   loop.fdReadableIs( fds[ 0 ], [ & ] {
      char c;
      ASSERT_EQ( 1, read( fds[ 0 ], &c, 1 ) );
      ran.push_back( "new" );
   } );
   EXPECT_EQ( 1u, loop.runOnce( 1s ) );
   EXPECT_EQ( ( std::vector< std::string >{ "new" } ), ran );
   loop.fdDel( fds[ 0 ] );
   close( fds[ 0 ] );
   close( fds[ 1 ] );
}

TEST_F( ActivityLoopTest, DescriptorClosedWhileRegisteredAborts ) {
   int fds[ 2 ];
   ASSERT_EQ( 0, pipe( fds ) );
   loop.fdReadableIs( fds[ 0 ], record( "never" ) );
   close( fds[ 0 ] );
   EXPECT_DEATH( loop.runOnce( 0ms ),
                 "Assertion 'ActivityLoop: descriptor closed while registered' failed" );
   close( fds[ 1 ] );
}

TEST_F( ActivityLoopTest, StopFromACallbackEndsRunAndIsConsumed ) {
   loop.defer( record( "a" ) );
   loop.defer( [ this ] { loop.stop(); } );
   loop.defer( record( "same turn" ) );
   loop.run();
   EXPECT_EQ( ( std::vector< std::string >{ "a", "same turn" } ), ran );

   // A request made before run() ends it at once, and only that run.
   loop.stop();
   loop.run();
   loop.timerIs( 5ms, [ this ] { loop.stop(); } );
   loop.run();
   EXPECT_FALSE( lock.heldByThisThread() );
}

TEST_F( ActivityLoopTest, WaitingReleasesTheLockAndOtherThreadsWakeTheLoop ) {
   std::promise< void > started;
   std::promise< size_t > turnDone;
   std::thread runner( [ & ] {
      Kiln::ActivityLockGuard guard( lock );
      started.set_value();
      turnDone.set_value( loop.runOnce( Clock::duration( -1 ) ) );
   } );
   // The runner holds the lock except while its loop waits (without limit):
   // only then can this thread take it. A call deferred from here wakes it.
   started.get_future().wait();
   auto limit = Clock::now() + 2s;
   bool took = false;
   while ( !took && Clock::now() < limit ) {
      took = lock.tryLock();
   }
   ASSERT_TRUE( took );
   lock.unlock();
   std::this_thread::sleep_for( 20ms ); // let the loop reach its wait
   loop.defer( record( "from another thread" ) );
   auto result = turnDone.get_future();
   ASSERT_EQ( std::future_status::ready, result.wait_for( 2s ) );
   EXPECT_EQ( 1u, result.get() );
   runner.join();
   EXPECT_EQ( ( std::vector< std::string >{ "from another thread" } ), ran );
}

TEST_F( ActivityLoopTest, RunKeepsTheLockOfItsCallerOrTakesItsOwn ) {
   {
      Kiln::ActivityLockGuard guard( lock );
      loop.defer( record( "under caller's lock" ) );
      loop.defer( [ this ] { loop.stop(); } );
      loop.run();
      EXPECT_TRUE( lock.heldByThisThread() );
   }
   EXPECT_EQ( 1u, ran.size() );
}

Kiln::ActivityLoop * signalledLoop = nullptr;

extern "C" void
stopOnSignal( int ) {
   signalledLoop->stopFromSignal();
}

TEST_F( ActivityLoopTest, SignalHandlerStopsABlockedRun ) {
   signalledLoop = &loop;
   struct sigaction action = {};
   struct sigaction previous = {};
   action.sa_handler = stopOnSignal;
   sigemptyset( &action.sa_mask );
   ASSERT_EQ( 0, sigaction( SIGUSR1, &action, &previous ) );

   std::thread sender( [] {
      std::this_thread::sleep_for( 20ms );
      kill( getpid(), SIGUSR1 );
   } );
   auto start = Clock::now();
   loop.run(); // nothing to do: only the signal can end it
   sender.join();
   EXPECT_LT( Clock::now() - start, 5s );
   sigaction( SIGUSR1, &previous, nullptr );
   signalledLoop = nullptr;
}

TEST_F( ActivityLoopTest, ACallbackThatThrowsLeavesTheRestQueued ) {
   loop.defer( [] { throw std::runtime_error( "boom" ); } );
   loop.defer( record( "after" ) );
   EXPECT_THROW( loop.runOnce( 0ms ), std::runtime_error );
   EXPECT_FALSE( lock.heldByThisThread() );
   EXPECT_EQ( 1u, loop.runOnce( 0ms ) );
   EXPECT_EQ( ( std::vector< std::string >{ "after" } ), ran );
}

} // namespace
