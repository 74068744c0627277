// The time stamps of all three streams follow the system clock.
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "platform/fastlog/Clock.h"

namespace {

// Across several recalibrations, nowNanos() stays within a millisecond of
// the system clock and never steps back by more than a few microseconds.
TEST( FastLogClock, FollowsTheSystemClock ) {
   U64 previous = FastLog::nowNanos();
   const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds( 350 );
   U32 samples = 0;
   while ( std::chrono::steady_clock::now() < end ) {
      const U64 before = FastLog::systemNanos();
      const U64 now = FastLog::nowNanos();
      const U64 after = FastLog::systemNanos();
      ASSERT_LE( before, now + 1000000 ) << samples;
      ASSERT_LE( now, after + 1000000 ) << samples;
      ASSERT_LE( previous, now + 100000 ) << samples;
      previous = now;
      if ( ++samples % 1000 == 0 ) {
         std::this_thread::sleep_for( std::chrono::milliseconds( 1 ) );
      }
   }
   EXPECT_GT( samples, 1000u );
}

TEST( FastLogClock, TimestampText ) {
   // Local time differs from place to place; the shape and the fraction do not.
   const std::string text = FastLog::timestampText( 1700000000123456789ull );
   ASSERT_EQ( 26u, text.size() );
   EXPECT_EQ( ".123456", text.substr( 19 ) );
   EXPECT_EQ( ' ', text[ 10 ] );
}

} // namespace
