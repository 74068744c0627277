// tessel-show against a running agent: the test agent (a THx-like unit 0
// and a single-pipe unit 1, each with the reservations made at start-up,
// five more groups, and three IPv4 ACL entries hit by packets) in one
// process, the real tessel-show binary in others. Every command's output,
// the exit codes scripts rely on, and damaged, stale and missing agents.
//
// The single-pipe unit shows untagged packets with outer VLAN 0, so its
// ingress entries have twins: its ingress counts are half the SDK's.
#include <fstream>
#include <sstream>

#include "platform/vault/VaultLayout.h"
#include "platform/vault/VaultNames.h"
#include "tests/integration/ShowProcesses.h"
#include "tests/platform/vault/VaultTestSupport.h"

namespace {

using namespace ShowIntegration;

class ShowIntegrationTest : public testing::Test {
 protected:
   static void
   SetUpTestSuite() {
      prefix = new VaultTest::TestPrefix;
      dir = new VaultTest::TempDir;
      agent = new AgentProcess( *prefix, dir->file( "agent.sock" ) );
      ASSERT_TRUE( agent->ready() ) << agent->errors();
   }
   static void
   TearDownTestSuite() {
      EXPECT_EQ( 0, agent->stop() ) << agent->errors();
      EXPECT_TRUE( Vault::listSegments( *prefix ).empty() );
      delete agent;
      delete dir;
      delete prefix;
   }
   // tessel-show with the agent's prefix and socket.
   static ShowRun
   show( std::vector< std::string > args ) {
      args.insert( args.begin(), { "--prefix", *prefix, "--socket", dir->file( "agent.sock" ) } );
      return runShow( args );
   }
   static void
   expectOutput( const std::vector< std::string > & args, const std::string & out ) {
      ShowRun run = show( args );
      EXPECT_EQ( 0, run.exitCode ) << run.err;
      EXPECT_EQ( out, run.out );
      EXPECT_EQ( "", run.err );
   }

   static VaultTest::TestPrefix * prefix;
   static VaultTest::TempDir * dir;
   static AgentProcess * agent;
};

VaultTest::TestPrefix * ShowIntegrationTest::prefix = nullptr;
VaultTest::TempDir * ShowIntegrationTest::dir = nullptr;
AgentProcess * ShowIntegrationTest::agent = nullptr;

const std::string usageUnit1 = R"(=== TCAM summary for switch test-switch ===
TCAM group 2 uses 47 entries and can use up to 81 more.
  Mlag control traffic uses 4 entries.
  HELM traffic uses 6 entries.
  L3 Control Priority uses 28 entries.
  IGMP Snooping Flooding uses 8 entries.
  L4 MicroBfd traffic uses 1 entries.
TCAM group 6 uses 110 entries and can use up to 18 more.
  Dot1x traffic uses 2 entries.
  ARP Request Inspection uses 2 entries.
  ARP Reply Inspection uses 2 entries.
  ACL Management uses 6 entries.
  Vxlan Traffic uses 29 entries.
  L2 Control Priority uses 11 entries.
  Storm Control Management uses 2 entries.
  L3 Routing uses 52 entries.
  ACL Port Blocking Rules uses 4 entries.
TCAM group 7 uses 3 entries and can use up to 125 more.
  IP ACL uses 3 entries.
TCAM group 8 uses 0 entries and can use up to 128 more.
TCAM group 25 uses 0 entries and can use up to 128 more.
TCAM group 60 uses 0 entries and can use up to 1024 more.
TCAM group 74 uses 0 entries and can use up to 512 more.
)";

TEST_F( ShowIntegrationTest, UsageOfOneUnitOnePipeOrEveryUnit ) {
   expectOutput( { "tcam", "usage", "--unit", "1" }, usageUnit1 );
   // The packets came in on pipe 0: pipe 1's copies saw none.
   ShowRun pipe1 = show( { "tcam", "usage", "detail", "--unit", "0", "--pipe", "1" } );
   EXPECT_EQ( 0u, pipe1.out.find( "=== TCAM detail for switch test-switch ===\n"
                                  "TCAM group 2 in PIPE 1 uses 47 entries and can use up to 1489 "
                                  "more.\n  Mlag control traffic reserves 4 entries (0 used).\n" ) )
      << pipe1.out;
   EXPECT_NE( std::string::npos, pipe1.out.find( R"(
TCAM group 7 in PIPE 1 uses 6 entries and can use up to 1533 more.
  IP ACL uses 6 entries.
    1                     0 hits - acl rule 0
    2                     0 hits - acl rule 1
    3                     0 hits - acl rule 2
TCAM group 8 in PIPE 1 uses 0 entries and can use up to 1536 more.
)" ) ) << pipe1.out;
   EXPECT_TRUE(
      pipe1.out.ends_with( "TCAM group 74 uses 0 entries and can use up to 1024 more.\n" ) );
   ShowRun single = show( { "tcam", "usage", "detail", "--unit", "1" } );
   EXPECT_NE( std::string::npos, single.out.find( R"(
TCAM group 7 uses 3 entries and can use up to 125 more.
  IP ACL uses 3 entries.
    1                     1 hits - acl rule 0
    2                     2 hits - acl rule 1
    3                     3 hits - acl rule 2
)" ) ) << single.out;
   ShowRun all = show( { "tcam", "usage" } );
   EXPECT_EQ( 0, all.exitCode );
   ASSERT_GT( all.out.size(), usageUnit1.size() );
   EXPECT_EQ( usageUnit1, all.out.substr( all.out.size() - usageUnit1.size() ) ); // unit 1 last
   EXPECT_EQ( 0u, all.out.find( "=== TCAM summary for switch test-switch ===\n"
                                "TCAM group 2 in PIPE 0 " ) );
   EXPECT_NE( std::string::npos,
              all.out.find( "TCAM group 7 in PIPE 0 uses 6 entries and can use up to 1533 more.\n" ) );
}

TEST_F( ShowIntegrationTest, BankSummaryRawSlicesAndReservations ) {
   expectOutput( { "tcam", "summary", "--unit", "1" }, R"(=== TCAM summary for switch test-switch ===
--------------------------------------------
 Banks           Used By
--------------------------------------------
 0               IP ACL EGRESS
 0, 1            MAC ACL VFP
 0, 1, 2         Dot1x traffic
 10, 11          IP Copp
 4, 5            OpenFlow Exception Flows
 6, 7            IP ACL
 8, 9            MAC ACL
--------------------------------------------
)" );
   ShowRun raw = show( { "tcam", "raw", "--unit", "1" } );
   EXPECT_EQ( 0, raw.exitCode );
   EXPECT_EQ( 0u, raw.out.find( "-----------------------------------------------\n"
                                "|Stage                                    IFP |\n" ) );
   // The IP ACL's three entries and their twins in its two slices, the
   // reservations' 47 and 110 entries and their twins in theirs.
   for ( const char * line : { "|                        6 |    256 |     250 |\n",
                               "|                        4 |    256 |     162 |\n",
                               "|                        0 |    256 |      36 |\n",
                               "|                          |   3072 |    2212 |\n" } ) {
      EXPECT_NE( std::string::npos, raw.out.find( line ) ) << line;
   }
   ShowRun reservations = show( { "tcam", "reservations" } );
   EXPECT_EQ( 0u, reservations.out.find( "Assignment  Reservation\n        75  OpenFlow UDF\n" ) );
   EXPECT_EQ( 128, std::count( reservations.out.begin(), reservations.out.end(), '\n' ) );
}

TEST_F( ShowIntegrationTest, AnEntryDecoded ) {
   // The decoding is the entry dump's (its own tests pin every line); here
   // the agent's entry, counters included, reaches the command line.
   ShowRun entry = show( { "tcam", "entry", "0x2", "--unit", "1" } );
   EXPECT_EQ( 0, entry.exitCode ) << entry.err;
   EXPECT_EQ( 0u, entry.out.find( "\n=== TCAM entry information for test-switch; entry ID: 0x2 "
                                  "(2) ===\n   Group: 7\n\n=== Qualifiers ===\nSrcIp:\n"
                                  "   data: 10.0.0.1\n" ) )
      << entry.out;
   EXPECT_NE( std::string::npos, entry.out.find( "L4DstPort:\n   data: 0x51 (81)\n" ) );
   EXPECT_TRUE( entry.out.ends_with( "\n=== Actions ===\nDrop\n\n=== Statistics ===\n"
                                     "Counters: \n   Packets: 2\n   Bytes: 128\n" ) );
   ShowRun missing = show( { "tcam", "entry", "77" } );
   EXPECT_EQ( 0, missing.exitCode );
   EXPECT_NE( std::string::npos, missing.out.find( "entry 0x4d (77) not found.\n" ) );
}

TEST_F( ShowIntegrationTest, TheTablesOfAUnit ) {
   expectOutput( { "tcam", "stages", "--unit", "0" }, R"(Unit 0: 3 stages
 Stage  Name   Pipe mode   Pipes  TCAM entries
     0  IFP    pipe-local      4         73728
     1  VFP    global          1          2048
     2  EFP    global          1          2048
)" );
   const std::string groups = R"(Unit 0, stage IFP, pipe 0: 8 groups
 Group  Name                               Allocated      Free Copies  SDK group
     2  IFP_GROUP_L3CTRL_SNOOPING_HELM            47      1489      1  0x00000002
     3  IFP_GROUP_L2CTL_DOT1xMBA                   2      1534      1  0x00000003
     4  IFP_GROUP_L2CTL_ARP_REQUEST                2      1534      1  0x00000004
     5  IFP_GROUP_L2CTL_ARP_REPLY                  2      1534      1  0x00000005
     6  IFP_GROUP_L2CTL_L3ROUTING                104       664      1  0x00000006
     7  IFP_GROUP_IP_ACL                           6      1533      2  0x00000007
     8  IFP_GROUP_MAC_ACL                          0      1536      2  0x00000008
    25  IFP_GROUP_COPP_IP                          0      1536      1  0x00000019
)";
   expectOutput( { "tcam", "groups", "--unit", "0", "--stage", "IFP", "--pipe", "0" }, groups );
   expectOutput( { "tcam", "groups" }, groups ); // the same request again, served again
   expectOutput( { "tcam", "groups", "--unit", "0", "--stage", "efp" },
                 R"(Unit 0, stage EFP, pipe 0: 1 group
 Group  Name                               Allocated      Free Copies  SDK group
    60  EFP_GROUP_IP_ACL                           0      1024      1  0x0000003c
)" );
   expectOutput( { "tcam", "features", "--unit", "1" }, R"(Unit 1, stage IFP, pipe 0: 15 features
 Feature  Name                                      Group Allocated      Used
      24  Mlag control traffic                          2         4         0
      25  HELM traffic                                  2         6         0
      26  L3 Control Priority                           2        28         0
      27  IGMP Snooping Flooding                        2         8         0
      29  L4 MicroBfd traffic                           2         1         0
      32  Dot1x traffic                                 6         2         0
      35  ARP Request Inspection                        6         2         0
      36  ARP Reply Inspection                          6         2         0
      37  ACL Management                                6         6         0
      38  Vxlan Traffic                                 6        29         0
      39  L2 Control Priority                           6        11         0
      42  Storm Control Management                      6         2         0
      43  L3 Routing                                    6        52         0
      46  ACL Port Blocking Rules                       6         4         0
      70  IP ACL                                        7         3         3
)" );
   expectOutput( { "tcam", "entries", "--unit", "1" }, R"(Unit 1, stage IFP, pipe 0: 3 entries
     Entry  Feature  Group         Hits  Name
         1       70      7            1  acl rule 0
         2       70      7            2  acl rule 1
         3       70      7            3  acl rule 2
)" );
}

TEST_F( ShowIntegrationTest, TheMapAsTextJsonAndPicture ) {
   expectOutput( { "tcam", "map", "--unit", "1", "--stage", "1" },
                 R"(Unit 1, stage VFP, pipe 0: 4 slices, 2 held by 1 group
  [AA..]
  slice  group                                          row  used/entries  fill
      0  A VFP_GROUP_MAC_ACL (0x0000004a)               1/2         0/256  ..........   0%
      1  A VFP_GROUP_MAC_ACL (0x0000004a)               2/2         0/256  ..........   0%
      2  -                                                          0/256  ..........   0%
      3  -                                                          0/256  ..........   0%

)" );
   ShowRun colour = show( { "tcam", "map", "--unit", "1", "--stage", "0", "--colour" } );
   EXPECT_NE( std::string::npos, colour.out.find( "[\033[1;34mA\033[0m\033[1;34mA\033[0m" ) );
   ShowRun all = show( { "tcam", "map" } );
   EXPECT_EQ( 0, all.exitCode );
   EXPECT_EQ( 9, std::count( all.out.begin(), all.out.end(), '[' ) ); // 4 + 1 + 1 pipes, 3 stages
   std::string svg = dir->file( "map.svg" );
   ShowRun picture = show( { "tcam", "map", "--unit", "0", "--pipe", "2", "--svg", svg, "--json" } );
   EXPECT_EQ( 0, picture.exitCode ) << picture.err;
   EXPECT_EQ( 0u, picture.out.find( "{\"blocks\":[{\"unit\":0,\"stage\":0,\"stageName\":\"IFP\","
                                    "\"pipe\":2,\"slices\":[{\"slice\":48,\"entries\":768," ) );
   std::ifstream file( svg );
   std::stringstream text;
   text << file.rdbuf();
   EXPECT_EQ( 0u, text.str().find( "<svg xmlns=\"http://www.w3.org/2000/svg\"" ) );
   EXPECT_NE( std::string::npos, text.str().find( "IFP_GROUP_IP_ACL (0x02000007)" ) );
   EXPECT_EQ( "</svg>\n", text.str().substr( text.str().size() - 7 ) );
}

TEST_F( ShowIntegrationTest, JsonOfTablesAndReports ) {
   ShowRun groups = show( { "tcam", "groups", "--unit", "1", "--json" } );
   EXPECT_EQ( 0u,
              groups.out.find( "{\"unit\":1,\"stage\":0,\"pipe\":0,\"groups\":[{\"group\":2," ) );
   EXPECT_NE( std::string::npos,
              groups.out.find( "{\"group\":7,\"name\":\"IFP_GROUP_IP_ACL\",\"allocatedEntries\":3,"
                               "\"freeEntries\":125,\"numCopies\":1,\"globalGroupId\":7}," ) )
      << groups.out;
   ShowRun stages = show( { "tcam", "stages", "--unit", "1", "--json" } );
   EXPECT_EQ( 0u, stages.out.find( "{\"unit\":1,\"stages\":[{\"stage\":0,\"name\":\"IFP\","
                                   "\"pipeOperationMode\":0,\"mode\":\"global\",\"numPipes\":1,"
                                   "\"tcamSize\":3072}," ) );
   ShowRun usage = show( { "tcam", "usage", "--unit", "1", "--json" } );
   std::string text = usageUnit1;
   for ( size_t at = text.find( '\n' ); at != std::string::npos; at = text.find( '\n', at + 2 ) ) {
      text.replace( at, 1, "\\u000a" );
   }
   EXPECT_EQ( "{\"reports\":[{\"unit\":1,\"report\":\"usage\",\"text\":\"" + text + "\"}]}\n",
              usage.out );
   ShowRun reservations = show( { "tcam", "reservations", "--json" } );
   EXPECT_EQ( 0u, reservations.out.find( "{\"reservations\":[{\"name\":\"OpenFlow UDF\","
                                         "\"assignment\":75}," ) );
}

TEST_F( ShowIntegrationTest, ExitCodesAndMessagesForWhatDoesNotExist ) {
   const std::pair< std::vector< std::string >, std::string > cases[] = {
      { { "tcam", "groups", "--unit", "9" }, "unit 9 is not known to the agent" },
      { { "tcam", "groups", "--unit", "1", "--pipe", "1" }, "stage 0 of unit 1 has no pipe 1" },
      { { "tcam", "features", "--stage", "4" }, "unit 0 has no stage 4" },
      { { "tcam", "summary", "--unit", "5" }, "unit 5 is not known to the agent" },
      { { "tcam", "usage", "--unit", "1", "--pipe", "3" }, "unit 1 has no pipe 3" },
      { { "tcam", "stages", "--unit", "4" }, "unit 4 is not known to the agent" },
   };
   for ( const auto & [ args, error ] : cases ) {
      ShowRun run = show( args );
      EXPECT_EQ( 6, run.exitCode ) << error;
      EXPECT_EQ( "tessel-show: " + error + "\n", run.err );
      EXPECT_EQ( "", run.out );
   }
}

TEST_F( ShowIntegrationTest, CommandLineMistakesAndHelp ) {
   for ( std::vector< std::string > args :
         { std::vector< std::string >{}, { "tcam" }, { "tcam", "bogus" }, { "show", "tcam" },
           { "tcam", "entry" }, { "tcam", "entry", "12x" }, { "tcam", "usage", "--unit" },
           { "tcam", "usage", "--unit", "-1" }, { "tcam", "groups", "--stage", "XFP" },
           { "tcam", "groups", "--frobnicate" }, { "tcam", "stages", "extra" } } ) {
      ShowRun run = show( args );
      EXPECT_EQ( 2, run.exitCode ) << testing::PrintToString( args );
      EXPECT_EQ( "", run.out );
      EXPECT_NE( std::string::npos, run.err.find( "Try 'tessel-show --help'.\n" ) );
   }
   ShowRun help = show( { "--help" } );
   EXPECT_EQ( 0, help.exitCode );
   EXPECT_EQ( 0u, help.out.find( "Usage: tessel-show [options] tcam <command>\n" ) );
   EXPECT_NE( std::string::npos, help.out.find( "  3 no agent running" ) );
}

TEST_F( ShowIntegrationTest, NoAgentAtAnotherPrefixOrSocket ) {
   ShowRun tables = runShow( { "--prefix", "nobodyhere", "tcam", "groups" } );
   EXPECT_EQ( 3, tables.exitCode );
   EXPECT_EQ( "tessel-show: agent not running: no agent holds prefix 'nobodyhere'\n", tables.err );
   ShowRun report = show( { "--socket", dir->file( "none.sock" ), "tcam", "usage", "--unit", "0" } );
   EXPECT_EQ( 3, report.exitCode );
   EXPECT_EQ( "tessel-show: no agent running at " + dir->file( "none.sock" ) + "\n", report.err );
   ShowRun bad = runShow( { "--prefix", "bad-prefix", "tcam", "stages" } );
   EXPECT_EQ( 2, bad.exitCode );
}

// A damaged table is reported as such; the agent keeps serving the rest.
TEST_F( ShowIntegrationTest, DamagedTablesAreReportedAndTheAgentKeepsServing ) {
   {
      VaultTest::RawSegment stages( Vault::tableSegmentName( *prefix, "cliVault/stages/1" ) );
      stages.as< Vault::SlotHeader >( sizeof( Vault::TableHeader ) )->length = 12;
   }
   ShowRun record = show( { "tcam", "stages", "--unit", "1" } );
   EXPECT_EQ( 5, record.exitCode );
   EXPECT_EQ( "tessel-show: table 'cliVault/stages/1' holds a damaged record (key 0)\n",
              record.err );
   {
      VaultTest::RawSegment names( Vault::tableSegmentName( *prefix, "cliVault/stages-name/1" ) );
      names.as< Vault::TableHeader >()->magic = 0;
   }
   ShowRun map = show( { "tcam", "map", "--unit", "1" } );
   EXPECT_EQ( 5, map.exitCode );
   EXPECT_NE( std::string::npos, map.err.find( "cliVault/stages/1" ) ) << map.err;
   {
      VaultTest::RawSegment names( Vault::tableSegmentName( *prefix, "cliVault/stages-name/0" ) );
      names.truncate( 100 );
   }
   ShowRun truncated = show( { "tcam", "groups", "--unit", "0" } ); // names are a courtesy
   EXPECT_EQ( 0, truncated.exitCode ) << truncated.err;
   EXPECT_EQ( 0u, truncated.out.find( "Unit 0, stage 0, pipe 0: 8 groups\n" ) );
   expectOutput( { "tcam", "usage", "--unit", "1" }, usageUnit1 );
}

// An agent that dies leaves its tables; readers say it is gone, and the
// next agent with the prefix clears them and serves.
TEST( ShowStaleAgentTest, ADeadAgentIsNotTakenForALiveOne ) {
   VaultTest::TestPrefix prefix;
   VaultTest::TempDir dir;
   std::vector< std::string > where = { "--prefix", prefix, "--socket", dir.file( "a.sock" ) };
   auto with = [ & ]( std::vector< std::string > args ) {
      args.insert( args.begin(), where.begin(), where.end() );
      return runShow( args );
   };
   {
      AgentProcess first( prefix, dir.file( "a.sock" ), "single" );
      ASSERT_TRUE( first.ready() ) << first.errors();
      EXPECT_EQ( 0, with( { "tcam", "groups" } ).exitCode );
      EXPECT_EQ( 128 + SIGKILL, first.stop( SIGKILL ) );
   }
   EXPECT_FALSE( Vault::listSegments( prefix ).empty() );
   ShowRun dead = with( { "tcam", "stages" } );
   EXPECT_EQ( 3, dead.exitCode );
   EXPECT_NE( std::string::npos, dead.err.find( "agent not running" ) ) << dead.err;
   EXPECT_EQ( 3, with( { "tcam", "groups" } ).exitCode );
   EXPECT_EQ( 3, with( { "tcam", "usage" } ).exitCode );
   AgentProcess second( prefix, dir.file( "a.sock" ), "single" );
   ASSERT_TRUE( second.ready() ) << second.errors();
   ShowRun alive = with( { "tcam", "groups" } );
   EXPECT_EQ( 0, alive.exitCode ) << alive.err;
   EXPECT_EQ( 0u, alive.out.find( "Unit 0, stage IFP, pipe 0: 5 groups\n" ) );
   EXPECT_EQ( 0, second.stop() );
}

} // namespace
