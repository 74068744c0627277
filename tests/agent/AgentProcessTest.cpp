// tessel-agent and tessel-show as the operator runs them: the agent with
// the shipped workload and traffic, its rules' counters seen through
// tessel-show, the capacity view, a clean stop on SIGTERM and SIGINT, and
// the refusals of bad command lines, bad workloads and a taken prefix.
#include <fstream>

#include "platform/vault/VaultNames.h"
#include "tests/agent/AgentProcesses.h"
#include "tests/platform/vault/VaultTestSupport.h"

namespace {

using namespace AgentTest;

const std::string workload = repoFile( "examples/workloads/default.workload" );
const std::string traffic = repoFile( "examples/workloads/default.traffic" );

class AgentProcessTest : public testing::Test {
 protected:
   std::vector< std::string >
   serving( std::vector< std::string > more ) const {
      std::vector< std::string > args = { "--prefix", prefix, "--socket", socket() };
      args.insert( args.end(), more.begin(), more.end() );
      return args;
   }
   std::string socket() const { return dir.file( "agent.sock" ); }
   ShowRun
   show( std::vector< std::string > args ) const {
      args.insert( args.begin(), { "--prefix", prefix, "--socket", socket() } );
      return runShow( args );
   }
   bool gone() const { return Vault::listSegments( prefix ).empty() && access( socket().c_str(), F_OK ) != 0; }

   VaultTest::TestPrefix prefix;
   VaultTest::TempDir dir;
};

TEST_F( AgentProcessTest, TheDefaultWorkloadIsCountedShownAndReleasedOnSigterm ) {
   ServingAgent agent( serving( { "--workload", workload, "--traffic", traffic } ) );
   ASSERT_TRUE( agent.ready() ) << agent.errors();
   EXPECT_NE( std::string::npos,
              agent.out().find( "tessel-agent: ready: prefix " + prefix.str() + ", socket " + socket() ) );
   EXPECT_NE( std::string::npos,
              agent.out().find( "tessel-agent: unit 0: acl rule 2 (permit dst=192.0.2.10 proto=6 "
                                "dport=80): entries 0x3; 5 packets\n" ) );

   // The agent's counters, read back from the chip by the agent for tessel-show.
   ShowRun permitted = show( { "tcam", "entry", "3" } );
   EXPECT_EQ( 0, permitted.exitCode ) << permitted.err;
   EXPECT_NE( std::string::npos, permitted.out.find( "Packets: 5\n" ) ) << permitted.out;
   EXPECT_EQ( std::string::npos, permitted.out.find( "Drop" ) );
   ShowRun denied = show( { "tcam", "entry", "0x1" } );
   EXPECT_NE( std::string::npos, denied.out.find( "=== Actions ===\nDrop\n" ) ) << denied.out;
   EXPECT_NE( std::string::npos, denied.out.find( "Packets: 2\n" ) );
   ShowRun usage = show( { "tcam", "usage", "--unit", "0", "--pipe", "0" } );
   EXPECT_NE( std::string::npos, usage.out.find( "TCAM group 7 in PIPE 0 uses 14 entries" ) )
      << usage.out; // 7 rules' entries (the ranges through checkers), two copies each

   ShowRun capacity = show( { "capacity" } );
   EXPECT_EQ( 0, capacity.exitCode ) << capacity.err;
   EXPECT_EQ( 0u, capacity.out.find( "Unit  Stage  Slice" ) );
   EXPECT_NE( std::string::npos, capacity.out.find( "  0  EFP    all  " ) );
   EXPECT_EQ( std::string::npos, capacity.out.find( "WARNING" ) );
   ShowRun low = show( { "capacity", "--threshold", "0" } );
   EXPECT_NE( std::string::npos, low.out.find( "WARNING: unit 0 stage IFP is " ) ) << low.out;

   EXPECT_EQ( 0, agent.stop( SIGTERM ) ) << agent.errors();
   EXPECT_EQ( "", agent.errors() );
   EXPECT_NE( std::string::npos, agent.out().find( "tessel-agent: stopping\n" ) );
   EXPECT_TRUE( gone() );
   EXPECT_EQ( 3, show( { "capacity" } ).exitCode );
}

TEST_F( AgentProcessTest, SigintStopsAnAgentOfSeveralUnitsCleanly ) {
   ServingAgent agent( serving( { "--profile", "single", "--profile", "th3" } ) );
   ASSERT_TRUE( agent.ready() ) << agent.errors();
   ShowRun one = show( { "capacity", "--unit", "1" } );
   EXPECT_EQ( 0, one.exitCode ) << one.err;
   EXPECT_EQ( std::string::npos, one.out.find( "\n   0  " ) );
   EXPECT_EQ( 0, agent.stop( SIGINT ) ) << agent.errors();
   EXPECT_TRUE( gone() );
}

TEST_F( AgentProcessTest, OnceWritesWhichRuleEachPacketHitAndClaimsNoPrefix ) {
   ShowRun run = runAgent( { "--prefix", prefix, "--workload", workload, "--traffic", traffic,
                             "--once", "--hits", dir.file( "hits" ) } );
   EXPECT_EQ( 0, run.exitCode ) << run.err;
   EXPECT_EQ( "", run.err );
   std::ifstream in( dir.file( "hits" ) );
   std::vector< int > hits;
   for ( int hit; in >> hit; ) {
      hits.push_back( hit );
   }
   // Quarantined x2, telnet, the web server x5 and x3, a privileged port,
   // traceroute x3; the control, QoS, DNS and STUN packets fall to "permit".
   std::vector< int > expected = { 0, 0, 1, 2, 2, 2, 2, 2, 3, 3, 3, 4, 5, 5, 5 };
   expected.resize( 15 + 12 + 2 + 2 + 3 + 4 + 2 + 12 + 2 + 2 + 3, 6 );
   EXPECT_EQ( expected, hits );
   EXPECT_NE( std::string::npos,
              run.out.find( "tessel-agent: traffic " + traffic + ": 59 packets: 59 hit ACL rules, "
                            "19 CoPP classes, 20 QoS classes, 6 mirrored; 8 dropped, 15 to the "
                            "CPU, 8 red\n" ) );
   EXPECT_TRUE( gone() );
}

TEST_F( AgentProcessTest, WrongCommandLinesAreRefusedWithWhatIsWrong ) {
   struct Case {
      std::vector< std::string > args;
      std::string error;
   } cases[] = {
      { { "--frob" }, "unknown option '--frob'" },
      { { "workload.txt" }, "unexpected argument 'workload.txt'" },
      { { "--workload" }, "--workload needs a value" },
      { { "--workload=" }, "--workload needs a value" },
      { { "--profile", "quartz" }, "unknown profile 'quartz' (known: single trident3 thx th3)" },
      { { "--prefix", "a-b" }, "--prefix: " + Vault::checkPrefix( "a-b" ).text() },
      { { "--trace", "bcmFpCmd/12" }, "--trace: ignoring \"bcmFpCmd/12\": level 12 is not in 0-9" },
      { { "--classbench-trace", "t" }, "--classbench-trace needs --classbench-rules" },
      { { "--hits", "h" }, "--hits needs --traffic or --classbench-trace" },
      { { "--traffic", "a", "--classbench-rules", "r", "--classbench-trace", "t" },
        "give --traffic or --classbench-trace, not both" },
   };
   for ( const Case & c : cases ) {
      ShowRun run = runAgent( c.args );
      EXPECT_EQ( 2, run.exitCode ) << c.error;
      EXPECT_EQ( "tessel-agent: " + c.error + "\nTry 'tessel-agent --help'.\n", run.err );
      EXPECT_EQ( "", run.out );
   }
   ShowRun help = runAgent( { "--help" } );
   EXPECT_EQ( 0, help.exitCode );
   EXPECT_EQ( 0u, help.out.find( "Usage: tessel-agent [options]\n" ) );
}

TEST_F( AgentProcessTest, ABadInputStopsTheAgentBeforeItClaimsItsPrefix ) {
   std::ofstream( dir.file( "w" ) ) << "acl permit\n# next\nacl deny dport=99999\n";
   ShowRun bad = runAgent( serving( { "--workload", dir.file( "w" ) } ) );
   EXPECT_EQ( 1, bad.exitCode );
   EXPECT_EQ( "tessel-agent: " + dir.file( "w" ) +
                 ":3: bad dport '99999' (a port 0 to 65535, or LOW-HIGH)\n",
              bad.err );
   EXPECT_EQ( "", bad.out );
   EXPECT_TRUE( gone() );

   std::ofstream( dir.file( "t" ) ) << "port=1\nunit=1 port=2\n";
   ShowRun unit = runAgent( serving( { "--traffic", dir.file( "t" ) } ) );
   EXPECT_EQ( 1, unit.exitCode );
   EXPECT_EQ( "tessel-agent: " + dir.file( "t" ) + ":2: unit 1, but the box has 1 unit\n", unit.err );

   ShowRun missing = runAgent( serving( { "--workload", dir.file( "none" ) } ) );
   EXPECT_EQ( "tessel-agent: " + dir.file( "none" ) + ": cannot open\n", missing.err );
   EXPECT_TRUE( gone() );
}

TEST_F( AgentProcessTest, ASecondAgentForTheSamePrefixIsRefused ) {
   ServingAgent first( serving( {} ) );
   ASSERT_TRUE( first.ready() ) << first.errors();
   ShowRun second = runAgent( { "--prefix", prefix, "--socket", dir.file( "other.sock" ) } );
   EXPECT_EQ( 1, second.exitCode );
   EXPECT_EQ( 0u, second.err.find( "tessel-agent: " ) );
   EXPECT_NE( std::string::npos, second.err.find( prefix.str() ) ) << second.err;
   EXPECT_EQ( 0, show( { "capacity" } ).exitCode ); // the first one serves on
   EXPECT_EQ( 0, first.stop() );
}

} // namespace
