// The simulated agent in-process: the start-up sequence as the chip and the
// published tables see it, the features it runs, and a stop that leaves
// nothing of the library in the chip, on every profile.
#include <gtest/gtest.h>

#include <fstream>
#include <set>

#include "platform/kiln/ActivityLock.h"
#include "platform/vault/VaultError.h"
#include "startup/TesselTcamCapacityView.h"
#include "tests/platform/vault/VaultTestSupport.h"
#include "tools/agent/AgentFeatures.h"
#include "tools/agent/SimulatedAgent.h"

using namespace SimAgent;

namespace {

class SimulatedAgentTest : public testing::Test {
 protected:
   Settings
   settings( std::vector< std::string > profiles, bool serve = true ) const {
      return Settings{ std::move( profiles ), prefix, dir.file( "agent.sock" ), "sw", serve };
   }

   VaultTest::TestPrefix prefix;
   VaultTest::TempDir dir;
   Kiln::ActivityLockGuard activity;
};

TEST_F( SimulatedAgentTest, StartUpProgramsEveryUnitOnceAndPublishesCapacity ) {
   SimulatedAgent agent( settings( { "thx", "single" } ) );
   agent.start();
   EXPECT_TRUE( agent.flashDownload()->performedFlashDownload() );
   for ( U32 unit : { 0u, 1u } ) {
      EXPECT_EQ( 1u, agent.box().unit( unit ).commits() ) << unit;
   }
   std::vector< std::string > events;
   for ( const Kiln::String & text : Agent::EventHistoryReader( agent.history() ).texts() ) {
      events.push_back( text.str() );
   }
   EXPECT_EQ( ( std::vector< std::string >{ "Programming TCAMs Start", "Programming TCAMs Complete" } ),
              events );
   EXPECT_EQ( ( std::vector< U32 >{ 0, 1 } ), agent.manager()->units() );

   std::vector< Hardware::Capacity::CapacityRow > rows;
   ASSERT_TRUE( Hardware::Capacity::Tessel::readTesselTcamCapacity( prefix, rows ).ok() );
   std::set< std::pair< U32, std::string > > stages;
   for ( const auto & row : rows ) {
      if ( row.key.row.empty() ) {
         stages.insert( { row.key.unit, row.key.feature.str() } );
      }
   }
   EXPECT_EQ( ( std::set< std::pair< U32, std::string > >{
                 { 0, "EFP" }, { 0, "IFP" }, { 0, "VFP" }, { 1, "EFP" }, { 1, "IFP" }, { 1, "VFP" } } ),
              stages );
   agent.stop();
   EXPECT_TRUE( Vault::listSegments( prefix ).empty() );
}

// Capacity follows what features take once published again.
TEST_F( SimulatedAgentTest, CapacityFollowsTheEntriesFeaturesTake ) {
   SimulatedAgent agent( settings( { "single" } ) );
   agent.start();
   auto ifpUsed = [ & ] {
      std::vector< Hardware::Capacity::CapacityRow > rows;
      Hardware::Capacity::Tessel::readTesselTcamCapacity( prefix, rows );
      for ( const auto & row : rows ) {
         if ( row.key.feature == "IFP" && row.key.row.empty() ) {
            return row.figures.used;
         }
      }
      return ~U32( 0 );
   };
   U32 before = ifpUsed();
   AgentFeatures features( agent.manager() );
   Features::Workload w;
   w.acl.assign( 5, Features::AclRule{} );
   ASSERT_TRUE( features.load( w ).back().ok() );
   EXPECT_EQ( before, ifpUsed() );
   agent.publishCapacity();
   EXPECT_GT( ifpUsed(), before );
}

class AgentStopTest : public SimulatedAgentTest,
                      public testing::WithParamInterface< const char * > {};

// Loaded, hit by traffic, released and stopped: the chip holds nothing
// the library made, and the shared memory is gone.
TEST_P( AgentStopTest, NothingOfTheLibraryIsLeftInTheChip ) {
   SimulatedAgent agent( settings( { GetParam() } ) );
   agent.start();
   EXPECT_GT( agent.box().counts().total(), 0u ); // reservations and their groups
   {
      AgentFeatures features( agent.manager() );
      // What fits every profile's IFP next to the reserved groups.
      Features::Workload w;
      Features::Ipv4Match telnet;
      telnet.protocol = 6;
      telnet.protocolMask = 0xff;
      telnet.dstPorts = Features::PortRange{ 23, 23 };
      w.acl = { { Features::AclRule::Action::deny, telnet }, Features::AclRule{} };
      w.copp = { { "telnet", telnet, { 64, 8 } } };
      for ( const Features::LoadReport & report : features.load( w ) ) {
         ASSERT_TRUE( report.ok() ) << report.error;
      }
      for ( const TrafficPacket & packet : readTrafficFile( TESSEL_REPO_DIR "/examples/workloads/default.traffic" ) ) {
         features.send( agent.box(), packet );
      }
      EXPECT_GT( agent.box().counts().policers, 0u );
   }
   agent.stop();
   EXPECT_EQ( ChipModel::ObjectCounts{}, agent.box().counts() ) << agent.box().counts().text();
   EXPECT_TRUE( Vault::listSegments( prefix ).empty() );
}

INSTANTIATE_TEST_SUITE_P( Profiles, AgentStopTest,
                          testing::Values( "single", "trident3", "thx", "th3" ) );

// What the agent reports of a packet, and the hits file made of it.
TEST_F( SimulatedAgentTest, VerdictsSummaryAndHitsFile ) {
   SimulatedAgent agent( settings( { "thx" }, false ) );
   agent.start();
   AgentFeatures features( agent.manager() );
   Features::Workload w =
      Features::readWorkloadFile( TESSEL_REPO_DIR "/examples/workloads/default.workload" );
   std::vector< Features::LoadReport > reports = features.load( w );
   ASSERT_EQ( 4u, reports.size() );
   for ( const Features::LoadReport & report : reports ) {
      ASSERT_TRUE( report.ok() ) << report.error;
   }
   EXPECT_EQ( "ACL: 7 rules, 7 entries per unit (expansion 1.00), 56 hardware entries, 2 range "
              "checkers",
              loadText( reports.front() ) );
   EXPECT_EQ( "Mirroring: 3 rules, 3 entries per unit (expansion 1.00), 12 hardware entries, 1 "
              "user-defined field",
              loadText( reports.back() ) );
   TrafficPacket telnet;
   telnet.packet = ChipModel::Packet::ipv4( 1, 0x01020304, 0x05060708, 6, 1234, 23 );
   TrafficPacket ospf;
   ospf.packet = ChipModel::Packet::ipv4( 1, 0x01020304, 0xe0000005, 89, 0, 0 );
   std::vector< Verdict > verdicts = { features.send( agent.box(), telnet ),
                                       features.send( agent.box(), ospf ) };
   EXPECT_EQ( std::optional< U32 >( 1 ), verdicts[ 0 ].aclRule );
   EXPECT_TRUE( verdicts[ 0 ].dropped );
   EXPECT_EQ( std::optional< U32 >( 6 ), verdicts[ 1 ].aclRule );
   EXPECT_EQ( std::optional< U32 >( 1 ), verdicts[ 1 ].coppClass );
   EXPECT_TRUE( verdicts[ 1 ].toCpu );
   TrafficSummary summary;
   for ( const Verdict & v : verdicts ) {
      summary.add( v );
   }
   EXPECT_EQ( "2 packets: 2 hit ACL rules, 1 CoPP classes, 0 QoS classes, 0 mirrored; 1 dropped, "
              "1 to the CPU, 0 red",
              summary.text() );
   verdicts.push_back( Verdict{} );
   EXPECT_EQ( "", writeHits( dir.file( "hits" ), verdicts ) );
   std::ifstream in( dir.file( "hits" ) );
   std::string text( ( std::istreambuf_iterator< char >( in ) ), std::istreambuf_iterator< char >() );
   EXPECT_EQ( "1\n6\n-1\n", text );
   EXPECT_EQ( "/nonexistent/hits: cannot write: No such file or directory",
              writeHits( "/nonexistent/hits", verdicts ) );
}

} // namespace
