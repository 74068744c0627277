// tessel-agent against the public ClassBench rule sets: a small set made
// from the head of a file is loaded, its trace sent, and every hit must be
// the first rule in file order that matches the header, by a plain
// reference matcher over the rule text. Flags are a wildcard for both (the
// column is the generator's, no packet field carries it). The trace's last
// column names the rule a header was made from: the hit is never after it.
//
// The data is not part of the project: the test looks for
// shared/data/classbench beside the checkout (or $TESSEL_CLASSBENCH_DIR)
// and skips when it is not there.
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "examples/features/ClassBench.h"
#include "tests/agent/AgentProcesses.h"
#include "tests/platform/vault/VaultTestSupport.h"

namespace {

using namespace AgentTest;
using namespace Features;
namespace fs = std::filesystem;

fs::path
classBenchDir() {
   if ( const char * dir = std::getenv( "TESSEL_CLASSBENCH_DIR" ) ) {
      return dir;
   }
   for ( fs::path dir = fs::absolute( TESSEL_REPO_DIR ); !dir.empty(); dir = dir.parent_path() ) {
      if ( fs::exists( dir / "shared" / "data" / "classbench" / "acl1_1k" ) ) {
         return dir / "shared" / "data" / "classbench";
      }
      if ( dir == dir.parent_path() ) {
         break;
      }
   }
   return {};
}

bool
matches( const ClassBenchRule & r, const ClassBenchHeader & h ) {
   return ( h.srcIp & prefixMask( r.srcLen ) ) == r.srcIp &&
          ( h.dstIp & prefixMask( r.dstLen ) ) == r.dstIp && r.srcPortLow <= h.srcPort &&
          h.srcPort <= r.srcPortHigh && r.dstPortLow <= h.dstPort && h.dstPort <= r.dstPortHigh &&
          ( h.protocol & r.protocolMask ) == ( r.protocol & r.protocolMask );
}

int
firstMatch( const std::vector< ClassBenchRule > & rules, const ClassBenchHeader & header ) {
   for ( size_t i = 0; i < rules.size(); ++i ) {
      if ( matches( rules[ i ], header ) ) {
         return int( i );
      }
   }
   return -1;
}

// The first `count` lines of a file.
std::vector< std::string >
headLines( const fs::path & path, size_t count ) {
   std::ifstream in( path );
   std::vector< std::string > lines;
   for ( std::string line; lines.size() < count && std::getline( in, line ); ) {
      lines.push_back( line );
   }
   return lines;
}

void
writeLines( const std::string & path, const std::vector< std::string > & lines ) {
   std::ofstream out( path );
   for ( const std::string & line : lines ) {
      out << line << '\n';
   }
}

class ClassBenchAgentTest : public testing::TestWithParam< const char * > {
 protected:
   void
   SetUp() override {
      data = classBenchDir();
      if ( data.empty() ) {
         GTEST_SKIP() << "ClassBench data not found (no shared/data/classbench beside the "
                         "checkout, no $TESSEL_CLASSBENCH_DIR): skipping";
      }
   }
   fs::path data;
   VaultTest::TempDir dir;
};

// The first 150 rules and the first 600 headers made from them.
TEST_P( ClassBenchAgentTest, EveryHitIsTheFirstMatchingRuleInFileOrder ) {
   const std::string set = GetParam();
   writeLines( dir.file( "rules" ), headLines( data / set, 150 ) );
   std::vector< std::string > traceLines;
   for ( const std::string & line : headLines( data / ( set + "_trace" ), 100000 ) ) {
      if ( traceLines.size() < 600 && parseClassBenchHeader( line, "trace" ).ruleIndex < 150 ) {
         traceLines.push_back( line );
      }
   }
   writeLines( dir.file( "trace" ), traceLines );
   ShowRun run = runAgent( { "--classbench-rules", dir.file( "rules" ), "--classbench-trace",
                             dir.file( "trace" ), "--once", "--hits", dir.file( "hits" ) } );
   ASSERT_EQ( 0, run.exitCode ) << run.err;
   EXPECT_NE( std::string::npos,
              run.out.find( "classbench: " + dir.file( "rules" ) + ": ACL: 150 rules, " ) ) << run.out;
   EXPECT_NE( std::string::npos, run.out.find( "600 headers classified in " ) ) << run.out;

   std::vector< ClassBenchRule > rules = readClassBenchRulesFile( dir.file( "rules" ) );
   std::vector< ClassBenchHeader > headers = readClassBenchTraceFile( dir.file( "trace" ) );
   std::ifstream in( dir.file( "hits" ) );
   std::vector< int > hits;
   for ( int hit; in >> hit; ) {
      hits.push_back( hit );
   }
   ASSERT_EQ( headers.size(), hits.size() );
   U32 earlier = 0;
   for ( size_t i = 0; i < headers.size(); ++i ) {
      EXPECT_EQ( firstMatch( rules, headers[ i ] ), hits[ i ] ) << "header " << i;
      EXPECT_LE( hits[ i ], int( headers[ i ].ruleIndex ) ) << "header " << i;
      EXPECT_GE( hits[ i ], 0 ) << "header " << i;
      earlier += hits[ i ] < int( headers[ i ].ruleIndex );
   }
   RecordProperty( "hitsBeforeTheGeneratingRule", int( earlier ) );
}

INSTANTIATE_TEST_SUITE_P( Sets, ClassBenchAgentTest, testing::Values( "acl1_1k", "fw1_1k", "ipc1_1k" ) );

// fw1_1k's ranges on both ports expand past what the IP ACL group holds on
// one THx unit: the agent says how far it got and exits without serving.
TEST( ClassBenchAgentFit, ARuleSetThatDoesNotFitIsRefusedWithTheFigures ) {
   fs::path data = classBenchDir();
   if ( data.empty() ) {
      GTEST_SKIP() << "ClassBench data not found: skipping";
   }
   std::string rules = ( data / "fw1_1k" ).string();
   ShowRun run = runAgent( { "--classbench-rules", rules, "--once" } );
   EXPECT_EQ( 1, run.exitCode );
   EXPECT_EQ( "tessel-agent: classbench: " + rules +
                 ": ACL: 634 of 761 rules fitted on unit 0 (2304 entries), then the TCAM is "
                 "exhausted (reservation IP ACL); nothing is left installed\n",
              run.err );
}

} // namespace
