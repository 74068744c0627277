// What trace points write, and where it goes: the capture, ring, file and
// standard-error sinks, and many threads at once.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iomanip>
#include <set>
#include <sstream>
#include <thread>

#include "platform/fastlog/Trace.h"
#include "platform/fastlog/TraceSink.h"
#include "tests/platform/fastlog/FastLogTestUtil.h"

using FastLog::TraceEntry;
using FastLog::TraceLevels;
using ::testing::ElementsAre;

namespace {

TRACE_CHANNEL( "TesselTcam" );
FastLog::TraceChannel bcmFpCmdTrace( "bcmFpCmd" );

struct Group {
   U32 id;
};

std::ostream &
operator<<( std::ostream & out, const Group & group ) {
   return out << "group(" << group.id << ")";
}

// A value whose printing traces on its own: the outer line must survive.
struct Chatty {
   int value;
};

std::ostream &
operator<<( std::ostream & out, const Chatty & chatty ) {
   TRACE_CH( bcmFpCmdTrace, 9, "printing chatty " << chatty.value );
   return out << "chatty " << chatty.value;
}

enum Colour { red, green };

class TraceOutputTest : public FastLogTest::TraceTest {};

TEST_F( TraceOutputTest, OnlyEnabledLevelsAreWrittenWithChannelAndLevel ) {
   FastLog::TraceCapture capture( "TesselTcam", TraceLevels::only( 4 ) | TraceLevels::only( 7 ) );
   const U32 unit = 0;
   const U32 group = 5;
   TRACE3( "level three" );
   TRACE4( "Unit: " << unit << " group " << group );
   TRACE7( "getEntry" );
   TRACE8( "level eight" );
   TRACE_CH( bcmFpCmdTrace, 4, "other channel is off" );
   const auto lines = capture.lines();
   ASSERT_EQ( 2u, lines.size() );
   EXPECT_EQ( "TesselTcam", lines[ 0 ].channel );
   EXPECT_EQ( 4u, lines[ 0 ].level );
   EXPECT_EQ( "Unit: 0 group 5", lines[ 0 ].text );
   EXPECT_EQ( 7u, lines[ 1 ].level );
   EXPECT_EQ( "getEntry", lines[ 1 ].text );
}

TEST_F( TraceOutputTest, DisabledTracesEvaluateNothing ) {
   FastLog::TraceCapture capture( "TesselTcam", TraceLevels::only( 4 ) );
   int evaluated = 0;
   auto costly = [ & ] { return ++evaluated; };
   TRACE5( "never " << costly() );
   TRACE_CH( bcmFpCmdTrace, 4, "never " << costly() );
   if ( TRACE_ON( 9 ) ) {
      costly();
   }
   EXPECT_EQ( 0, evaluated );
   TRACE4( "once " << costly() );
   EXPECT_EQ( 1, evaluated );
   EXPECT_THAT( capture.texts(), ElementsAre( "once 1" ) );
}

TEST_F( TraceOutputTest, TextsMatchWhatStdOstreamWrites ) {
   FastLog::TraceCapture capture( "TesselTcam", TraceLevels::all() );
   const U8 letter = 'A';
   const S32 rc = -4;
   const U64 big = 0xFFFFFFFFFFFFFFFFull;
   const char * none = nullptr;
   const std::string desc = "Conduit P4RT punt IFP group";
   TRACE4( "Unit: " << 0 << " bcm_field_entry_create_id( unit, groupId, entryId ) API ERROR: (rc:"
                    << rc << ")" );
   TRACE8( "Entry created with entryId: 0x" << std::hex << 0x1000064 << " returning entryId: "
                                            << std::dec << 100 );
   TRACE8( "width [" << std::setw( 4 ) << 7 << "] fill [" << std::setfill( '0' ) << std::setw( 3 )
                     << 5 << "]" );
   TRACE8( "letter " << letter << " bool " << true << " big " << big << " min "
                     << std::numeric_limits< S64 >::min() );
   TRACE8( "float " << 1.5 << " colour " << green << " " << Group{ 9 } << " null " << none );
   TRACE8( " desc: " << desc << ' ' << std::string_view( "view" ) );
   EXPECT_THAT( capture.texts(),
                ElementsAre( "Unit: 0 bcm_field_entry_create_id( unit, groupId, entryId ) API "
                             "ERROR: (rc:-4)",
                             "Entry created with entryId: 0x1000064 returning entryId: 100",
                             "width [   7] fill [005]",
                             "letter A bool 1 big 18446744073709551615 min -9223372036854775808",
                             "float 1.5 colour 1 group(9) null (null)",
                             " desc: Conduit P4RT punt IFP group view" ) );
}

TEST_F( TraceOutputTest, EachLineStartsWithDefaultFormatting ) {
   FastLog::TraceCapture capture( "TesselTcam", TraceLevels::all() );
   TRACE4( std::hex << std::showbase << 255 << std::setfill( '*' ) );
   TRACE4( 255 << " " << std::setw( 3 ) << 1 );
   EXPECT_THAT( capture.texts(), ElementsAre( "0xff", "255   1" ) );
}

TEST_F( TraceOutputTest, AValueThatTracesWhilePrintedKeepsBothLinesWhole ) {
   FastLog::TraceCapture capture( "*", TraceLevels::all() );
   TRACE4( "outer " << Chatty{ 3 } << " end" );
   const auto lines = capture.lines();
   ASSERT_EQ( 2u, lines.size() );
   EXPECT_EQ( "bcmFpCmd", lines[ 0 ].channel );
   EXPECT_EQ( "printing chatty 3", lines[ 0 ].text );
   EXPECT_EQ( "outer chatty 3 end", lines[ 1 ].text );
}

TEST_F( TraceOutputTest, LongLinesAreKeptWhole ) {
   FastLog::TraceCapture capture( "TesselTcam", TraceLevels::all() );
   const std::string longText( 5000, 'x' );
   TRACE4( "a" << longText << "b" << 12345 );
   TRACE4( "short" );
   EXPECT_THAT( capture.texts(), ElementsAre( "a" + longText + "b12345", "short" ) );
}

TEST_F( TraceOutputTest, CaptureRestoresThePreviousSinkAndLevels ) {
   auto ring = std::make_shared< FastLog::RingSink >( 4 );
   auto previous = FastLog::traceSinkIs( ring );
   FastLog::traceLevelsIs( "TesselTcam", TraceLevels::only( 1 ) );
   {
      FastLog::TraceCapture capture( "TesselTcam", TraceLevels::all() );
      TRACE4( "captured" );
      EXPECT_EQ( 1u, capture.lines().size() );
   }
   TRACE1( "back in the ring" );
   TRACE4( "off again" );
   FastLog::traceSinkIs( previous );
   const auto lines = ring->lines();
   ASSERT_EQ( 1u, lines.size() );
   EXPECT_EQ( "back in the ring", lines[ 0 ].text );
}

TEST_F( TraceOutputTest, RingKeepsTheNewestLinesAndCountsTheRest ) {
   auto ring = std::make_shared< FastLog::RingSink >( 3 );
   auto previous = FastLog::traceSinkIs( ring );
   FastLog::traceLevelsIs( "TesselTcam", TraceLevels::all() );
   TRACE4( "line " << 1 );
   TRACE4( "line " << 2 );
   EXPECT_EQ( 0u, ring->dropped() );
   for ( int i = 3; i <= 7; ++i ) {
      TRACE4( "line " << i );
   }
   FastLog::traceSinkIs( previous );
   const auto lines = ring->lines();
   ASSERT_EQ( 3u, lines.size() );
   EXPECT_EQ( "line 5", lines[ 0 ].text );
   EXPECT_EQ( "line 7", lines[ 2 ].text );
   EXPECT_EQ( 4u, ring->dropped() );

   std::ostringstream dump;
   ring->dump( dump );
   EXPECT_EQ( "(4 earlier lines dropped)\n"
              "<ts> TesselTcam 4 line 5\n"
              "<ts> TesselTcam 4 line 6\n"
              "<ts> TesselTcam 4 line 7\n",
              FastLogTest::maskTimestamps( dump.str() ) );

   ring->clear();
   EXPECT_TRUE( ring->lines().empty() );
   EXPECT_EQ( 0u, ring->dropped() );
}

TEST_F( TraceOutputTest, FileAndStderrLinesCarryTimeChannelLevelAndText ) {
   const std::string path = "/tmp/fastlog-test-" + std::to_string( getpid() ) + ".trace";
   std::string error;
   auto file = FastLog::FileSink::open( path, error );
   ASSERT_NE( nullptr, file ) << error;
   FastLog::traceLevelsIs( "bcmFpCmd", TraceLevels::all() );
   auto previous = FastLog::traceSinkIs( file );
   TRACE_CH( bcmFpCmdTrace, 4, "bcm_field_group_compress( unit, groupId ) (rc:0) no rc check" );
   FastLog::traceSinkIs( nullptr );  // back to standard error
   {
      FastLogTest::StderrCapture stderrCapture;
      TRACE_CH( bcmFpCmdTrace, 2, "to stderr" );
      EXPECT_EQ( "<ts> bcmFpCmd 2 to stderr\n",
                 FastLogTest::maskTimestamps( stderrCapture.text() ) );
   }
   FastLog::traceSinkIs( previous );
   file.reset();
   std::ifstream in( path );
   std::stringstream text;
   text << in.rdbuf();
   unlink( path.c_str() );
   EXPECT_EQ( "<ts> bcmFpCmd 4 bcm_field_group_compress( unit, groupId ) (rc:0) no rc check\n",
              FastLogTest::maskTimestamps( text.str() ) );
}

TEST( TraceFileSink, OpenFailureSaysWhy ) {
   std::string error;
   EXPECT_EQ( nullptr, FastLog::FileSink::open( "/nonexistent-dir/x.trace", error ) );
   EXPECT_EQ( "cannot open trace file /nonexistent-dir/x.trace: No such file or directory", error );
}

TEST( TraceRingSinkDeathTest, ZeroCapacityIsRefused ) {
   EXPECT_DEATH( FastLog::RingSink( 0 ),
                 "Assertion 'a trace ring needs room for one line at least' failed" );
}

// Many threads tracing while another changes levels: every line arrives
// once and whole.
TEST_F( TraceOutputTest, ThreadsTraceConcurrently ) {
   constexpr int threads = 4;
   constexpr int perThread = 2000;
   FastLog::TraceCapture capture( "TesselTcam", TraceLevels::all() );
   std::vector< std::thread > workers;
   for ( int t = 0; t < threads; ++t ) {
      workers.emplace_back( [ t ] {
         for ( int i = 0; i < perThread; ++i ) {
            TRACE4( "thread " << t << " line " << i << " " << std::hex << i );
         }
      } );
   }
   std::thread toggler( [] {
      for ( int i = 0; i < 200; ++i ) {
         FastLog::traceLevelsIs( "bcm*", i % 2 ? TraceLevels::all() : TraceLevels::none() );
      }
   } );
   for ( auto & worker : workers ) {
      worker.join();
   }
   toggler.join();

   std::set< std::string > seen;
   for ( const TraceEntry & line : capture.lines() ) {
      seen.insert( line.text );
   }
   ASSERT_EQ( size_t( threads * perThread ), seen.size() );
   for ( int t = 0; t < threads; ++t ) {
      for ( int i = 0; i < perThread; i += 397 ) {
         std::ostringstream expected;
         expected << "thread " << t << " line " << i << " " << std::hex << i;
         EXPECT_EQ( 1u, seen.count( expected.str() ) ) << expected.str();
      }
   }
}

} // namespace
