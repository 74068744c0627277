// Which levels a channel has: rules, patterns, the configuration text and
// TESSEL_TRACE read when the library is loaded.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <memory>

#include "platform/fastlog/Trace.h"
#include "tests/platform/fastlog/FastLogTestUtil.h"

using FastLog::TraceLevels;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

TRACE_CHANNEL( "TesselTcam" );
FastLog::TraceChannel bcmFpCmdChannel( "bcmFpCmd" );
// Registered when the library had already read TESSEL_TRACE: the child
// process below checks that it took the variable's levels.
FastLog::TraceChannel envChildTrace( "EnvChildChannel" );

class TraceLevelsTest : public FastLogTest::TraceTest {};

TEST_F( TraceLevelsTest, LastMatchingRuleWinsAndOtherChannelsStayOff ) {
   FastLog::traceLevelsIs( "Tessel*", TraceLevels::all() );
   FastLog::traceLevelsIs( "TesselTcam", TraceLevels::upTo( 2 ) );
   EXPECT_EQ( TraceLevels::upTo( 2 ), TRACE_FILE_CHANNEL.levels() );
   EXPECT_TRUE( TRACE_ON( 2 ) );
   EXPECT_FALSE( TRACE_ON( 3 ) );
   EXPECT_EQ( TraceLevels::all(), FastLog::traceLevels( "TesselTcamShow" ) );
   EXPECT_EQ( TraceLevels::none(), bcmFpCmdChannel.levels() );

   // A later broad rule overrides the narrow one again.
   FastLog::traceLevelsIs( "*", TraceLevels::only( 9 ) );
   EXPECT_EQ( TraceLevels::only( 9 ), TRACE_FILE_CHANNEL.levels() );
   EXPECT_EQ( TraceLevels::only( 9 ), bcmFpCmdChannel.levels() );
}

TEST_F( TraceLevelsTest, SettingAPatternAgainReplacesItsRule ) {
   FastLog::traceLevelsIs( "bcmFpCmd", TraceLevels::only( 4 ) );
   FastLog::traceLevelsIs( "Tessel*", TraceLevels::all() );
   FastLog::traceLevelsIs( "bcmFpCmd", TraceLevels::none() );
   ASSERT_EQ( 2u, FastLog::traceRules().size() );
   EXPECT_EQ( "Tessel*", FastLog::traceRules()[ 0 ].pattern );
   EXPECT_EQ( TraceLevels::none(), bcmFpCmdChannel.levels() );
}

TEST_F( TraceLevelsTest, ChannelsMadeLaterTakeEarlierRulesAndShareLevels ) {
   FastLog::traceLevelsIs( "late?", TraceLevels::range( 3, 5 ) );
   auto first = std::make_unique< FastLog::TraceChannel >( "late1" );
   auto twin = std::make_unique< FastLog::TraceChannel >( "late1" );
   EXPECT_EQ( TraceLevels::range( 3, 5 ), first->levels() );
   FastLog::traceLevelsIs( "late1", TraceLevels::only( 7 ) );
   EXPECT_EQ( TraceLevels::only( 7 ), first->levels() );
   EXPECT_EQ( TraceLevels::only( 7 ), twin->levels() );
   // A handle that goes away leaves the others working.
   first.reset();
   FastLog::traceLevelsIs( "late1", TraceLevels::only( 1 ) );
   EXPECT_EQ( TraceLevels::only( 1 ), twin->levels() );
   EXPECT_STREQ( "late1", twin->name() );
}

TEST_F( TraceLevelsTest, ResetTurnsEverythingOff ) {
   FastLog::traceLevelsIs( "*", TraceLevels::all() );
   FastLog::traceLevelsReset();
   EXPECT_TRUE( FastLog::traceRules().empty() );
   EXPECT_EQ( TraceLevels::none(), TRACE_FILE_CHANNEL.levels() );
}

TEST_F( TraceLevelsTest, ScopePutsBackWhatWasThere ) {
   FastLog::traceLevelsIs( "bcmFpCmd", TraceLevels::only( 4 ) );
   {
      FastLog::TraceLevelsScope scope( "bcmFpCmd", TraceLevels::all() );
      EXPECT_EQ( TraceLevels::all(), bcmFpCmdChannel.levels() );
   }
   EXPECT_EQ( TraceLevels::only( 4 ), bcmFpCmdChannel.levels() );
   EXPECT_EQ( 1u, FastLog::traceRules().size() );
}

TEST( TraceGlob, StarsAndQuestionMarks ) {
   EXPECT_TRUE( FastLog::traceGlobMatches( "*", "" ) );
   EXPECT_TRUE( FastLog::traceGlobMatches( "Tessel*", "Tessel" ) );
   EXPECT_TRUE( FastLog::traceGlobMatches( "*Tcam*", "TesselTcamShow" ) );
   EXPECT_TRUE( FastLog::traceGlobMatches( "T*l*m", "TesselTcam" ) );
   EXPECT_TRUE( FastLog::traceGlobMatches( "bcm?pCmd", "bcmFpCmd" ) );
   EXPECT_TRUE( FastLog::traceGlobMatches( "a*b*c", "aXbYbZc" ) );
   EXPECT_FALSE( FastLog::traceGlobMatches( "a*b*c", "aXbYbZ" ) );
   EXPECT_FALSE( FastLog::traceGlobMatches( "Tessel", "TesselTcam" ) );
   EXPECT_FALSE( FastLog::traceGlobMatches( "tessel*", "TesselTcam" ) );
   EXPECT_FALSE( FastLog::traceGlobMatches( "bcm?pCmd", "bcmpCmd" ) );
   EXPECT_FALSE( FastLog::traceGlobMatches( "?", "" ) );
}

TEST( TraceLevelSets, TextAndMasks ) {
   EXPECT_EQ( "none", TraceLevels::none().text() );
   EXPECT_EQ( "0-9", TraceLevels::all().text() );
   EXPECT_EQ( "4", TraceLevels::only( 4 ).text() );
   EXPECT_EQ( "0-2+7", ( TraceLevels::upTo( 2 ) | TraceLevels::only( 7 ) ).text() );
   EXPECT_EQ( "1+3+9", TraceLevels::fromMask( 0x20a ).text() );
   EXPECT_EQ( 0x3ffu, TraceLevels::all().mask() );
   EXPECT_FALSE( TraceLevels::all().has( 10 ) );
}

using TraceLevelsDeathTest = TraceLevelsTest;

TEST_F( TraceLevelsDeathTest, BadArgumentsAreProgrammingErrors ) {
   EXPECT_DEATH( FastLog::traceLevelsIs( "", TraceLevels::all() ),
                 "Assertion 'trace channel pattern is empty' failed" );
   EXPECT_DEATH( TraceLevels::range( 3, 10 ), "Assertion 'low <= high && high <= maxTraceLevel'" );
   EXPECT_DEATH( TraceLevels::fromMask( 0x400 ), "Assertion 'mask < " );
}

class TraceConfigTextTest : public FastLogTest::TraceTest {};

TEST_F( TraceConfigTextTest, ItemsApplyInOrder ) {
   const auto errors = FastLog::traceConfigIs( " bcmFpCmd/4 , Tessel*/0-9,TesselTcam/0-2+7,,Other " );
   EXPECT_TRUE( errors.empty() );
   EXPECT_EQ( TraceLevels::only( 4 ), bcmFpCmdChannel.levels() );
   EXPECT_EQ( TraceLevels::upTo( 2 ) | TraceLevels::only( 7 ), TRACE_FILE_CHANNEL.levels() );
   EXPECT_EQ( TraceLevels::all(), FastLog::traceLevels( "TesselVault" ) );
   EXPECT_EQ( TraceLevels::all(), FastLog::traceLevels( "Other" ) );
   FastLog::traceConfigIs( "bcm*/none" );
   EXPECT_EQ( TraceLevels::none(), bcmFpCmdChannel.levels() );
}

TEST_F( TraceConfigTextTest, BadItemsAreReportedAndSkippedGoodOnesApply ) {
   const auto errors =
      FastLog::traceConfigIs( "bcmFpCmd/12,/4,Tessel*/x,TesselTcam/7-3,a b/1,bcmFpCmd/3,"
                              "Tessel*/4-,Tessel*/2+,Tessel*/-" );
   EXPECT_THAT( errors,
                ElementsAre( "ignoring \"bcmFpCmd/12\": level 12 is not in 0-9",
                             "ignoring \"/4\": the channel pattern is empty",
                             "ignoring \"Tessel*/x\": levels must be \"none\" or digits 0-9 "
                             "such as 4, 0-2 or 0-2+7",
                             "ignoring \"TesselTcam/7-3\": level range 7-3 runs backwards",
                             "ignoring \"a b/1\": the channel pattern contains a blank",
                             "ignoring \"Tessel*/4-\": levels must be \"none\" or digits 0-9 "
                             "such as 4, 0-2 or 0-2+7",
                             "ignoring \"Tessel*/2+\": levels must be \"none\" or digits 0-9 "
                             "such as 4, 0-2 or 0-2+7",
                             "ignoring \"Tessel*/-\": levels must be \"none\" or digits 0-9 "
                             "such as 4, 0-2 or 0-2+7" ) );
   EXPECT_EQ( TraceLevels::only( 3 ), bcmFpCmdChannel.levels() );
   EXPECT_EQ( 1u, FastLog::traceRules().size() );
}

// Runs in a child process started by the test below, with TESSEL_TRACE set
// before the program (and so the library) was loaded.
TEST( TraceEnvironmentChild, LevelsFromTheVariableAtStart ) {
   if ( getenv( "FASTLOG_TEST_CHILD" ) == nullptr ) {
      GTEST_SKIP() << "runs only as the child of TraceEnvironment.ReadWhenLoaded";
   }
   EXPECT_EQ( TraceLevels::only( 3 ) | TraceLevels::only( 5 ), envChildTrace.levels() );
}

TEST( TraceEnvironment, ReadWhenLoaded ) {
   char self[ 4096 ] = {};
   ASSERT_GT( readlink( "/proc/self/exe", self, sizeof( self ) - 1 ), 0 );
   const std::string command =
      "FASTLOG_TEST_CHILD=1 TESSEL_TRACE='EnvChild*/3+5,EnvChildChannel/x' '" +
      std::string( self ) + "' --gtest_filter=TraceEnvironmentChild.* 2>&1";
   FILE * child = popen( command.c_str(), "r" );
   ASSERT_NE( nullptr, child );
   std::string output;
   char buffer[ 512 ];
   while ( fgets( buffer, sizeof( buffer ), child ) != nullptr ) {
      output += buffer;
   }
   EXPECT_EQ( 0, pclose( child ) ) << output;
   EXPECT_THAT( output, HasSubstr( "TESSEL_TRACE: ignoring \"EnvChildChannel/x\": levels must "
                                   "be \"none\" or digits 0-9 such as 4, 0-2 or 0-2+7\n" ) );
   EXPECT_THAT( output, HasSubstr( "[  PASSED  ] 1 test" ) );
}

} // namespace
