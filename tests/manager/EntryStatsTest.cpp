// Counters of entries: one stat per copy, reads summed over every pipe and
// copy from what packets really counted, clears, colour counts, eviction
// counts, and what happens when a stat cannot be had.
#include "tests/manager/EntryFixture.h"

#include "platform/fastlog/TraceSink.h"
#include "sdk/api/error.h"

namespace ManagerTest {
namespace {

Kiln::Ptr< StatTypes >
statTypes( std::initializer_list< bcm_field_stat_t > types ) {
   Kiln::Ptr< StatTypes > list = new StatTypes( "types" );
   U32 position = 0;
   for ( bcm_field_stat_t type : types ) {
      list->typeIs( position++, U32( type ) );
   }
   return list;
}

class EntryStatsTest : public testing::Test {
 protected:
   // One packet into each pipe; returns the bytes sent.
   U64
   onePacketPerPipe() {
      U64 bytes = 0;
      for ( U32 pipe = 0; pipe < 4; ++pipe ) {
         ChipModel::Packet packet =
            ChipModel::Packet::ipv4( m.port( pipe, 2 ), 0xc0000201, dst, 6, 1234, 80 );
         packet.length = 100 + pipe;
         m.send( packet );
         bytes += packet.length;
      }
      return bytes;
   }
   U32
   installed( U32 entry, const Kiln::Ptr< StatTypes > & types = StatTypes::packetsAndBytes() ) {
      U32 id = copp->getEntryWithStats( 0, entry, "copp", types );
      m.matchDstIp( id, dst );
      EXPECT_EQ( 0, copp->installEntry( 0, id ) );
      return id;
   }

   EntryBox m{ { "thx" } };
   ChipModel::ObjectCounts baseline = m.box.counts( 0 );
   Kiln::Ptr< TesselBoundedTcamEntryManager > copp =
      m.bounded( test2TcamGroup_, IFP_GROUP_COPP_IP_, 100, 110, tcamAllocateOnDemand_ );
};

TEST_F( EntryStatsTest, EveryCopyCountsAndReadsAddUpOverThePipes ) {
   U32 entry = installed( 100 );
   EXPECT_EQ( baseline.stats + 4, m.box.counts( 0 ).stats );
   U64 bytes = onePacketPerPipe();
   EXPECT_EQ( 4u, copp->hitsForEntry( 0, 100 ) );
   EXPECT_EQ( bytes, copp->byteHitsForEntry( 0, 100 ) );
   for ( U32 id : copyIds( entry, 4, 1 ) ) {
      EXPECT_EQ( 1u, copp->hitsForPipeEntry( 0, id ) );
   }
   copp->clearHitsForEntry( 0, 100 );
   EXPECT_EQ( 0u, copp->hitsForEntry( 0, 100 ) );
   EXPECT_EQ( bytes, copp->byteHitsForEntry( 0, 100 ) );
   copp->clearBytesForEntry( 0, 100 );
   EXPECT_EQ( 0u, copp->byteHitsForEntry( 0, 100 ) );
   // Counts the stat does not keep read as nothing.
   EXPECT_EQ( 0u, copp->greenPktHitsForEntry( 0, 100 ) );

   copp->releaseEntry( 0, 100 );
   EXPECT_EQ( baseline, m.box.counts( 0 ) );
   EXPECT_NE( std::string::npos, EntryBox::fastLog().find( "fp stat attach entry=0x3000064" ) );
}

TEST_F( EntryStatsTest, ColourCountsReadTheirOwnTypes ) {
   installed( 100, statTypes( { bcmFieldStatGreenPackets, bcmFieldStatGreenBytes } ) );
   U64 bytes = onePacketPerPipe();
   EXPECT_EQ( 4u, copp->greenPktHitsForEntry( 0, 100 ) );
   EXPECT_EQ( bytes, copp->greenByteHitsForEntry( 0, 100 ) );
   EXPECT_EQ( 0u, copp->yellowPktHitsForEntry( 0, 100 ) );
   FastLog::TraceCapture capture( "TesselTcamEntryManager", FastLog::TraceLevels::only( 0 ) );
   EXPECT_EQ( 0u, copp->hitsForEntry( 0, 100 ) );
   ASSERT_EQ( 4u, capture.texts().size() );
   EXPECT_EQ( "Unit: 0 fieldStatGetPackets( unit, statsId, statPackets, &pktHits ) API ERROR: "
              "(rc:-4)",
              capture.texts()[ 0 ] );
   // Only the mapping groups count without plain packets.
   EXPECT_DEATH( copp->clearHitsForEntry( 0, 100 ),
                 "Assertion 'group\\(\\) == VFP_GROUP_PORT_VP_ \\|\\| group\\(\\) == "
                 "EFP_GROUP_VLAN_PRI_ \\|\\| group\\(\\) == VFP_GROUP_IP_VFI_EXCEPTION_ \\|\\| "
                 "group\\(\\) == VFP_GROUP_PDP_CLASS_' failed" );
}

TEST_F( EntryStatsTest, MappingGroupsClearTheirColourPacketCounts ) {
   auto portVp = m.bounded( test3TcamGroup_, VFP_GROUP_PORT_VP_, 100, 110, tcamAllocateOnDemand_ );
   ASSERT_EQ( 100u, portVp->getEntryWithStats(
                       0, 100, "vp", statTypes( { bcmFieldStatGreenPackets,
                                                  bcmFieldStatGreenBytes } ) ) );
   ASSERT_EQ( 0, portVp->installEntry( 0, 100 ) );
   U64 bytes = onePacketPerPipe();
   EXPECT_EQ( 4u, portVp->greenPktHitsForEntry( 0, 100 ) );
   portVp->clearHitsForEntry( 0, 100 );
   EXPECT_EQ( 0u, portVp->greenPktHitsForEntry( 0, 100 ) );
   EXPECT_EQ( bytes, portVp->greenByteHitsForEntry( 0, 100 ) );
}

TEST_F( EntryStatsTest, TwoTypesMustBeAPacketsAndBytesPair ) {
   EXPECT_DEATH( copp->getEntryWithStats( 0, 100, "copp",
                                          statTypes( { bcmFieldStatPackets,
                                                       bcmFieldStatGreenBytes } ) ),
                 "void Tessel::TesselTcamEntryManager::installStats\\(U32, U32, U32, const "
                 "Kiln::Ptr<Tessel::StatTypes>&\\): Assertion 'abs\\( \\( int \\)statTypesList\\[ "
                 "0 \\] - \\( int \\)statTypesList\\[ 1 \\] \\) == 1' failed" );
}

// A copy whose stat cannot be had goes without: the others still count.
TEST_F( EntryStatsTest, ACopyWithoutItsStatCountsNothing ) {
   FastLog::TraceCapture capture( "bcmFpCmd", FastLog::TraceLevels::only( 0 ) );
   m.box.failCall( 0, "bcm_field_stat_create", 2, BCM_E_RESOURCE );
   m.box.failCall( 0, "bcm_field_entry_stat_attach", 2, BCM_E_RESOURCE );
   installed( 100 );
   EXPECT_EQ( baseline.stats + 2, m.box.counts( 0 ).stats );
   EXPECT_FALSE( copp->internalUnitEntry( 0 )->entryStatsHas( 0x1000064 ) );
   EXPECT_FALSE( copp->internalUnitEntry( 0 )->entryStatsHas( 0x2000064 ) );
   onePacketPerPipe();
   EXPECT_EQ( 2u, copp->hitsForEntry( 0, 100 ) );
   ASSERT_EQ( 2u, capture.texts().size() );
   EXPECT_EQ( "Unit: 0 bcm_field_stat_create( unit, groupId, statIdx, statTypesList, &statsId ) "
              "API ERROR: (rc:-14) GroupId: 16777241 entryId: 16777316 for entry 100",
              capture.texts()[ 0 ] );

   FastLog::TraceCapture detail( "TesselTcamEntryManager", FastLog::TraceLevels::only( 7 ) );
   copp->removeStats( 0, 0x1000064 );
   EXPECT_EQ( ( std::vector< std::string >{ "Unit: 0 can't find stats for entry 0x1000064" } ),
              detail.texts() );
   copp->releaseEntry( 0, 100 );
   EXPECT_EQ( baseline, m.box.counts( 0 ) );
}

TEST_F( EntryStatsTest, NoStatsWhenTheManagerSaysSo ) {
   copp->allocateStatsPerEntryIs( false );
   installed( 100 );
   EXPECT_EQ( baseline.stats, m.box.counts( 0 ).stats );
   onePacketPerPipe();
   EXPECT_EQ( 0u, copp->hitsForEntry( 0, 100 ) );
}

// The cross-check reads where the stat's counters live; when it cannot,
// it says so and the count stands.
TEST_F( EntryStatsTest, AFailedPoolLookupIsTracedAndTheCountStands ) {
   installed( 100 );
   onePacketPerPipe();
   int stat = copp->internalUnitEntry( 0 )->entryStats( 100 );
   FastLog::TraceCapture capture( "TesselTcam", FastLog::TraceLevels::only( 0 ) );
   m.box.failCall( 0, "oberon_bcm_esw_field_stat_pool_index_", 1, BCM_E_RESOURCE );
   EXPECT_EQ( 1u, copp->hitsForPipeEntry( 0, 100 ) );
   EXPECT_EQ( ( std::vector< std::string >{ "oberon_bcm_esw_field_stat_pool_index_ failed:  unit0 "
                                            "statsId " +
                                            std::to_string( stat ) +
                                            " failed. Error: No resources for operation" } ),
              capture.texts() );
   EXPECT_EQ( 1u, copp->hitsForPipeEntry( 0, 100 ) );
   EXPECT_EQ( 1u, capture.texts().size() ); // no mismatch: the raw counter agrees
}

// Counters that overflow their hardware part are evicted to software; a
// fresh install starts the eviction counts again.
TEST( EntryEvictions, AreCountedPerStatAndClearedByAnInstall ) {
   ChipModel::Profile thx = *ChipModel::findProfile( "thx" );
   thx.evictThresholdPackets = 2;
   EntryBox m{ thx, AdjustedProfile() };
   auto copp = m.bounded( test2TcamGroup_, IFP_GROUP_COPP_IP_, 100, 110, tcamAllocateOnDemand_ );
   ASSERT_EQ( 100u, copp->getEntry( 0, 100, "copp" ) );
   ASSERT_EQ( 0, copp->installEntry( 0, 100 ) );
   for ( int i = 0; i < 5; ++i ) {
      m.sendTo( m.port( 1, 0 ), 0x01020304 );
   }
   int stat = copp->internalUnitEntry( 0 )->entryStats( 0x1000064 );
   U64 packets = 0;
   U64 bytes = 0;
   EXPECT_EQ( 0, m.manager->getCounterEvictions( 0, stat, packets, bytes ) );
   EXPECT_EQ( 4u, packets );
   EXPECT_GT( bytes, 0u );
   U64 pipePackets = 0;
   EXPECT_EQ( 0, m.manager->getCounterEvictionsForPipe( 0, 1, pipePackets, bytes ) );
   EXPECT_EQ( 4u, pipePackets );
   EXPECT_EQ( 0, m.manager->getCounterEvictionsForPipe( 0, 2, pipePackets, bytes ) );
   EXPECT_EQ( 0u, pipePackets );
   EXPECT_EQ( 5u, copp->hitsForEntry( 0, 100 ) );
   ASSERT_EQ( 0, copp->reinstallEntry( 0, 100 ) );
   EXPECT_EQ( 0, m.manager->getCounterEvictions( 0, stat, packets, bytes ) );
   EXPECT_EQ( 0u, packets );
   EXPECT_EQ( 5u, copp->hitsForEntry( 0, 100 ) );
}

} // namespace
} // namespace ManagerTest
