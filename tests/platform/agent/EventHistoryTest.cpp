#include <gtest/gtest.h>

#include "platform/agent/EventHistory.h"

#include <chrono>
#include <string>
#include <vector>

namespace {

using namespace Agent;
using std::chrono::system_clock;

// 2026-11-22 01:40:27 UTC plus `micros`, advancing one second per reading.
struct FakeClock {
   long long micros = 0;
   system_clock::time_point
   operator()() {
      auto t = system_clock::time_point( std::chrono::seconds( 1795311627 ) ) +
               std::chrono::microseconds( micros );
      micros += 1000000;
      return t;
   }
};

struct EventWatcher : EventHistory::NotifieeConst {
   std::vector< U64 > seen;
   void
   onEvent( U64 sequence ) override {
      // The record is there when observers are told.
      EXPECT_EQ( sequence, notifier()->records().back().sequence );
      seen.push_back( sequence );
   }
};

TEST( EventHistory, WritersAppendTimestampedEventsUnderTheirSource ) {
   Kiln::Ptr< EventHistory > history = new EventHistory( "events" );
   FakeClock clock;
   clock.micros = 123456;
   history->clockIs( std::ref( clock ) );
   EventWatcher watcher;
   watcher.notifierIs( history );
   Kiln::Ptr< EventHistoryWriter > writer =
      new EventHistoryWriter( history, "TesselTcamFlashDownloadSm" );

   EXPECT_EQ( 1u, writer->addEvent( "Programming TCAMs Start" ) );
   EXPECT_EQ( 2u, writer->addEvent( "Programming TCAMs Complete" ) );
   EventHistoryReader reader( history );
   EXPECT_EQ( ( std::vector< Kiln::String >{ "Programming TCAMs Start",
                                             "Programming TCAMs Complete" } ),
              reader.texts() );
   EXPECT_EQ( ( std::vector< std::string >{
                 "2026-11-22 01:40:27.123456 TesselTcamFlashDownloadSm: Programming TCAMs Start",
                 "2026-11-22 01:40:28.123456 TesselTcamFlashDownloadSm: Programming TCAMs "
                 "Complete" } ),
              reader.lines() );
   EXPECT_EQ( ( std::vector< U64 >{ 1, 2 } ), watcher.seen );
}

TEST( EventHistory, OldRecordsAreDroppedAndCountedNeverLostSilently ) {
   Kiln::Ptr< EventHistory > history = new EventHistory( "events", 3 );
   EventHistoryWriter writer( history, "test" );
   for ( int i = 1; i <= 5; ++i ) {
      writer.addEvent( "event " + std::to_string( i ) );
   }
   EventHistoryReader reader( history );
   EXPECT_EQ( ( std::vector< Kiln::String >{ "event 3", "event 4", "event 5" } ), reader.texts() );
   EXPECT_EQ( 2u, history->dropped() );
   EXPECT_EQ( 5u, history->lastSequence() );

   // A reader that last saw event 4 gets only event 5; one that saw event 1
   // gets what is left, and can tell from the sequence numbers that it
   // missed event 2.
   std::vector< EventRecord > newer = reader.eventsSince( 4 );
   ASSERT_EQ( 1u, newer.size() );
   EXPECT_EQ( "event 5", newer[ 0 ].text );
   EXPECT_EQ( 3u, reader.eventsSince( 1 ).front().sequence );
   EXPECT_TRUE( reader.eventsSince( 5 ).empty() );
}

TEST( EventHistoryDeath, ZeroCapacityIsRefused ) {
   EXPECT_DEATH( EventHistory( "events", 0 ),
                 "Assertion 'event history capacity must be above 0' failed" );
}

} // namespace
