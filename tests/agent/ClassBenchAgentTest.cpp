// The public ClassBench rule sets end to end, on every chip profile: each
// set that has a trace is loaded through the ACL feature into unit 0's IFP
// (file order is priority order; port ranges through range checkers while
// the chip has them, then expanded; protocol wildcards left unqualified),
// the whole trace is sent through the chip model, and every packet's hit
// must be the first rule in file order that a plain matcher over the rule
// text finds for the header. Neither side matches the flags column: the
// generator made it up and no packet field carries it. The trace's last
// column is the rule a header was made from, so a hit is never after it.
// A set that does not fit a profile must be refused whole: exhaustion
// reported and nothing of it left in the chip.
//
// The data is not part of the project: the test looks for
// shared/data/classbench beside the checkout (or $TESSEL_CLASSBENCH_DIR)
// and skips when it is not there.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>

#include "examples/features/ClassBench.h"
#include "platform/kiln/ActivityLock.h"
#include "sdk/api/port.h"
#include "tools/agent/AgentFeatures.h"
#include "tools/agent/SimulatedAgent.h"

namespace {

using namespace Features;
namespace fs = std::filesystem;

fs::path
classBenchDir() {
   if ( const char * dir = std::getenv( "TESSEL_CLASSBENCH_DIR" ) ) {
      return dir;
   }
   for ( fs::path dir = fs::absolute( TESSEL_REPO_DIR ); !dir.empty(); dir = dir.parent_path() ) {
      if ( fs::exists( dir / "shared" / "data" / "classbench" ) ) {
         return dir / "shared" / "data" / "classbench";
      }
      if ( dir == dir.parent_path() ) {
         break;
      }
   }
   return {};
}

// The rule sets of the directory that have a trace, by name.
std::vector< std::string >
setsWithTraces( const fs::path & dir ) {
   std::set< std::string > sets;
   for ( const fs::directory_entry & file : fs::directory_iterator( dir ) ) {
      std::string name = file.path().filename().string();
      if ( fs::exists( dir / ( name + "_trace" ) ) ) {
         sets.insert( name );
      }
   }
   return { sets.begin(), sets.end() };
}

// The reference: the rule text's fields compared one by one.
bool
matches( const ClassBenchRule & r, const ClassBenchHeader & h ) {
   return ( h.srcIp & prefixMask( r.srcLen ) ) == r.srcIp &&
          ( h.dstIp & prefixMask( r.dstLen ) ) == r.dstIp && r.srcPortLow <= h.srcPort &&
          h.srcPort <= r.srcPortHigh && r.dstPortLow <= h.dstPort && h.dstPort <= r.dstPortHigh &&
          ( h.protocol & r.protocolMask ) == ( r.protocol & r.protocolMask );
}

std::optional< U32 >
firstMatch( const std::vector< ClassBenchRule > & rules, const ClassBenchHeader & header ) {
   for ( U32 i = 0; i < rules.size(); ++i ) {
      if ( matches( rules[ i ], header ) ) {
         return i;
      }
   }
   return std::nullopt;
}

// Which sets fit which profile's IP ACL group, as measured: a change here
// is a change in what the chip or the feature can hold. Sets not listed
// may go either way, but must be refused whole when they do not fit.
const std::map< std::string, std::set< std::string > > &
setsThatFit() {
   static const std::map< std::string, std::set< std::string > > fits = {
      { "acl1_1k", { "trident3", "thx" } },
      { "fw1_1k", { "trident3", "thx" } },
      { "ipc1_1k", { "trident3", "thx" } },
      { "acl3_10k", {} },
   };
   return fits;
}

class ClassBenchEndToEnd : public testing::TestWithParam< const char * > {
 protected:
   void
   SetUp() override {
      data = classBenchDir();
      if ( data.empty() ) {
         GTEST_SKIP() << "ClassBench data not found (no shared/data/classbench beside the "
                         "checkout, no $TESSEL_CLASSBENCH_DIR): skipping";
      }
      agent.start();
      before = agent.box().counts( 0 );
   }

   // Hardware ranges behind one checker of the IP ACL group.
   U32
   rangesPerChecker() {
      const ChipModel::Profile & profile = agent.box().unit( 0 ).profile();
      return profile.has( BCM_INFO_CAP_RANGE_MODULE ) ? profile.pipes : 1;
   }

   void checkRefused( const std::string & set, const LoadReport & report, size_t rules );
   void checkClassified( const std::string & set, SimAgent::AgentFeatures & features,
                         const LoadReport & report );

   Kiln::ActivityLockGuard activity;
   SimAgent::SimulatedAgent agent{ SimAgent::Settings{ { GetParam() }, "", "", "", false } };
   fs::path data;
   ChipModel::ObjectCounts before;
};

void
ClassBenchEndToEnd::checkRefused( const std::string & set, const LoadReport & report,
                                  size_t rules ) {
   EXPECT_THAT( report.error,
                testing::MatchesRegex( "ACL: [0-9]+ of " + std::to_string( rules ) +
                                       " rules fitted on unit 0 \\([0-9]+ entries\\), then the "
                                       "TCAM is exhausted \\(reservation IP ACL\\); nothing is "
                                       "left installed" ) );
   EXPECT_EQ( before, agent.box().counts( 0 ) ) << agent.box().counts( 0 ).text();
   std::cout << "[   NOTE   ] " << set << " does not fit " << GetParam() << ": " << report.error
             << "\n";
   RecordProperty( set, "does not fit" );
}

void
ClassBenchEndToEnd::checkClassified( const std::string & set, SimAgent::AgentFeatures & features,
                                     const LoadReport & report ) {
   std::vector< ClassBenchRule > rules = readClassBenchRulesFile( ( data / set ).string() );
   const ChipModel::Profile & profile = agent.box().unit( 0 ).profile();
   EXPECT_LE( report.rangeCheckers, profile.rangeCheckers );
   if ( report.rangesExpanded ) {
      EXPECT_EQ( profile.rangeCheckers, report.rangeCheckers ) << "expanded before exhausted";
   }
   EXPECT_EQ( before.ranges + report.rangeCheckers * rangesPerChecker(),
              agent.box().counts( 0 ).ranges );

   int port = SimAgent::firstFrontPanelPort( agent.box(), 0 );
   U32 wrong = 0, afterColumn = 0, earlier = 0;
   std::string firstWrong;
   for ( const ClassBenchHeader & h : readClassBenchTraceFile( ( data / ( set + "_trace" ) ).string() ) ) {
      std::optional< U32 > hit = features.send( agent.box(), SimAgent::packetOfHeader( h, port ) ).aclRule;
      std::optional< U32 > expected = firstMatch( rules, h );
      if ( hit != expected && wrong++ < 5 ) {
         firstWrong += " [header made from rule " + std::to_string( h.ruleIndex ) + ": hit " +
                       ( hit ? std::to_string( *hit ) : "none" ) + ", first match " +
                       ( expected ? std::to_string( *expected ) : "none" ) + "]";
      }
      afterColumn += !hit || *hit > h.ruleIndex;
      earlier += hit && *hit < h.ruleIndex;
   }
   EXPECT_EQ( 0u, wrong ) << set << " on " << GetParam() << ":" << firstWrong;
   EXPECT_EQ( 0u, afterColumn ) << set << " on " << GetParam();
   RecordProperty( set, "hits before the generating rule: " + std::to_string( earlier ) );
}

TEST_P( ClassBenchEndToEnd, EveryHeaderHitsItsFirstMatchingRuleOrTheSetIsRefusedWhole ) {
   for ( const std::string & set : setsWithTraces( data ) ) {
      SCOPED_TRACE( set );
      std::vector< ClassBenchRule > rules = readClassBenchRulesFile( ( data / set ).string() );
      SimAgent::AgentFeatures features( agent.manager() );
      LoadReport report = features.loadClassBench( rules );
      auto known = setsThatFit().find( set );
      if ( known != setsThatFit().end() ) {
         EXPECT_EQ( known->second.count( GetParam() ) != 0, report.ok() ) << report.error;
      }
      if ( report.ok() ) {
         EXPECT_EQ( rules.size(), report.itemsInstalled );
         checkClassified( set, features, report );
      } else {
         checkRefused( set, report, rules.size() );
      }
      features.release();
      EXPECT_EQ( before, agent.box().counts( 0 ) ) << agent.box().counts( 0 ).text();
   }
}

INSTANTIATE_TEST_SUITE_P( Profiles, ClassBenchEndToEnd,
                          testing::Values( "single", "trident3", "thx", "th3" ),
                          []( const testing::TestParamInfo< const char * > & info ) {
                             return std::string( info.param );
                          } );

} // namespace
