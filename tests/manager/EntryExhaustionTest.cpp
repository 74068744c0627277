// Exhaustion: a group filled until the chip model has no row left marks its
// managers exhausted, as far as the rule goes and no further, and releases
// clear it again. And the PBR groups' multicast placeholder.
#include "tests/manager/EntryFixture.h"

#include "platform/fastlog/TraceSink.h"

namespace ManagerTest {
namespace {

// A lookup stage of three slices of four rows; the two groups are one
// slice wide.
class ExhaustionTest : public testing::Test {
 protected:
   static ChipModel::Profile
   smallLookupStage() {
      ChipModel::Profile p = *ChipModel::findProfile( "single" );
      p.stages[ 1 ].slicesPerPipe = 3;
      p.stages[ 1 ].entriesPerSlice = 4;
      return p;
   }
   std::vector< U32 >
   fill( TesselUnboundedTcamEntryManager & manager ) {
      std::vector< U32 > got;
      while ( U32 id = manager.getEntry( 0, "fill" ) ) {
         got.push_back( id );
      }
      return got;
   }

   static constexpr U32 groupA = VFP_GROUP_OPENFLOW_VFP_;
   static constexpr U32 groupB = VFP_GROUP_FABRIC_;
   EntryBox m{ smallLookupStage(), AdjustedProfile() };
   ChipModel::ObjectCounts baseline = m.box.counts( 0 );
   // Group B: a reserved entry, then an on-demand manager.
   Kiln::Ptr< TesselBoundedTcamEntryManager > reservedB =
      m.bounded( test5TcamGroup_, groupB, 500, 501, tcamAllocateAtBeginning_ );
   Kiln::Ptr< TesselBoundedTcamEntryManager > onDemandB =
      m.bounded( test3TcamGroup_, groupB, 100, 110, tcamAllocateOnDemand_ );
   // Group A: a chunk and two unbounded managers.
   Kiln::Ptr< TesselBoundedTcamEntryManager > chunkA =
      m.bounded( test4TcamGroup_, groupA, 400, 402, tcamAllocateAsChunk_ );
   Kiln::Ptr< TesselUnboundedTcamEntryManager > fillerA = m.unbounded( test1TcamGroup_, groupA );
   Kiln::Ptr< TesselUnboundedTcamEntryManager > otherA = m.unbounded( test2TcamGroup_, groupA );
};

TEST_F( ExhaustionTest, AFullGroupExhaustsItsManagersButNotReservedOrHeldOnes ) {
   ASSERT_EQ( 400u, chunkA->getEntry( 0, 400, "chunk" ) );
   // A's first slice holds the chunk and two more; it grows into the third.
   std::vector< U32 > filled = fill( *fillerA );
   EXPECT_EQ( 6u, filled.size() );
   EXPECT_EQ( 8u, m.group( groupA )->rows.keysInOrder().size() );
   EXPECT_TRUE( fillerA->exhausted( 0 ) );
   EXPECT_TRUE( otherA->exhausted( 0 ) );
   EXPECT_FALSE( chunkA->exhausted( 0 ) );
   EXPECT_FALSE( onDemandB->exhausted( 0 ) );
   EXPECT_FALSE( reservedB->exhausted( 0 ) );
   EXPECT_EQ( 0u, otherA->getEntry( 0, "more" ) );

   // B's slice has three rows left; then B runs out on its own.
   for ( U32 id = 100; id < 103; ++id ) {
      ASSERT_EQ( id, onDemandB->getEntry( 0, id, "b" ) );
   }
   EXPECT_EQ( 0u, onDemandB->getEntry( 0, 103, "b" ) );
   EXPECT_TRUE( onDemandB->exhausted( 0 ) );
   EXPECT_FALSE( reservedB->exhausted( 0 ) );
   EXPECT_TRUE( fillerA->exhausted( 0 ) );

   // Room in A is A's business.
   fillerA->releaseEntry( 0, filled.back() );
   EXPECT_FALSE( fillerA->exhausted( 0 ) );
   EXPECT_FALSE( otherA->exhausted( 0 ) );
   EXPECT_TRUE( onDemandB->exhausted( 0 ) );
   EXPECT_FALSE( m.manager->sliceFreedHas( 0 ) );

   // Emptying A gives its slices back: everyone may grow again.
   filled.pop_back();
   for ( U32 id : filled ) {
      fillerA->releaseEntry( 0, id );
   }
   EXPECT_TRUE( onDemandB->exhausted( 0 ) );
   chunkA->releaseEntry( 0, 400 );
   EXPECT_FALSE( onDemandB->exhausted( 0 ) );
   EXPECT_FALSE( m.manager->groupExists( 0, groupA ) );
   ASSERT_EQ( 103u, onDemandB->getEntry( 0, 103, "b" ) );
}

// Entries taken while nothing is exhausted skip the group's marks; they must
// still see every later change of them.
TEST_F( ExhaustionTest, MarksFollowEveryRoundOfFillingAndFreeing ) {
   for ( int round = 0; round < 3; ++round ) {
      std::vector< U32 > filled = fill( *fillerA );
      ASSERT_EQ( 8u, filled.size() );
      EXPECT_TRUE( otherA->exhausted( 0 ) );
      fillerA->releaseEntry( 0, filled.back() );
      EXPECT_FALSE( otherA->exhausted( 0 ) );
      U32 other = otherA->getEntry( 0, "other" ); // the freed row, calm again
      ASSERT_NE( 0u, other );
      EXPECT_EQ( 0u, fillerA->getEntry( 0, "more" ) );
      EXPECT_TRUE( fillerA->exhausted( 0 ) );
      EXPECT_TRUE( otherA->exhausted( 0 ) );
      filled.pop_back();
      for ( U32 id : filled ) {
         fillerA->releaseEntry( 0, id );
      }
      otherA->releaseEntry( 0, other );
      EXPECT_FALSE( fillerA->exhausted( 0 ) );
   }
}

TEST_F( ExhaustionTest, RunningOutIsTracedWithTheCallAndTheFeature ) {
   fill( *fillerA );
   FastLog::TraceCapture capture( "bcmFpCmd", FastLog::TraceLevels::only( 0 ) );
   EXPECT_EQ( 0u, fillerA->getEntry( 0, "acl 7" ) );
   EXPECT_EQ( ( std::vector< std::string >{
                 "Unit: 0 bcm_field_entry_create( unit, groupId, &entryId ) API ERROR: "
                 "(rc:-14) failed to grab entry acl 7" } ),
              capture.texts() );
}

TEST_F( ExhaustionTest, AvailabilityFollowsTheStrategy ) {
   EXPECT_EQ( 1u, reservedB->entriesAvailable( 0 ) );
   EXPECT_EQ( 1u, reservedB->entriesAllocated( 0 ) );
   // B has three rows left and two free slices to grow into.
   U32 hwB = m.manager->entriesAvailable( 0, groupB );
   EXPECT_EQ( std::min( hwB, 10u ), onDemandB->entriesAvailable( 0 ) );
   EXPECT_EQ( m.manager->entriesAvailable( 0, groupA ), fillerA->entriesAvailable( 0 ) );
   fill( *fillerA );
   EXPECT_EQ( 0u, otherA->entriesAvailable( 0 ) );
   EXPECT_TRUE( otherA->exhausted( 0 ) );
}

// The PBR groups route by policy; multicast must not be, so the first entry
// on a unit brings a placeholder that catches multicast first, and the last
// release takes it along.
class MulticastPlaceholderTest : public testing::Test {
 protected:
   MulticastPlaceholderTest() {
      Agent::ChipInfo info = chipInfoFromShim( 1, { 0 } );
      info.multicastWarIs( true );
      m.manager->modChipInfoIs( 1, info );
      baseline = m.box.counts( 0 );
   }
   EntryBox m{ { "trident3" }, false };
   ChipModel::ObjectCounts baseline;
};

TEST_F( MulticastPlaceholderTest, MulticastHitsThePlaceholderAndUnicastTheFeature ) {
   Kiln::Ptr< TesselUnboundedTcamEntryManager > pbr = m.manager->unboundedEntryManager( ipPbrTcamGroup_ );
   ASSERT_TRUE( pbr );
   U32 route = pbr->getEntry( 0, "route" );
   ASSERT_GT( route, 0u );
   U32 dummy = pbr->internalUnitEntry( 0 )->multicastDummy();
   ASSERT_GT( dummy, 0u );
   EXPECT_EQ( "IP Multicast DUMMY Entry", pbr->internalUnitEntry( 0 )->entryCreated( dummy ).str() );
   EXPECT_EQ( 0x7fffffff, m.entry( dummy )->priority );
   EXPECT_TRUE( m.entry( dummy )->installed() );

   ASSERT_EQ( 0, m.sdk( [ & ] { return bcm_field_qualify_DstIp( 0, route, 0, 0 ); } ) );
   m.addAction( route, bcmFieldActionRedirectPort, 7 );
   ASSERT_EQ( 0, pbr->installEntry( 0, route ) );
   EXPECT_EQ( std::optional< bcm_field_entry_t >( int( dummy ) ),
              m.sendTo( m.port( 0 ), 0xe0000005 ).hitIn( IFP_GROUP_IP_PBR_ ) );
   EXPECT_EQ( std::optional< bcm_field_entry_t >( int( route ) ),
              m.sendTo( m.port( 0 ), 0x0a000005 ).hitIn( IFP_GROUP_IP_PBR_ ) );

   pbr->releaseEntry( 0, route );
   EXPECT_EQ( 0u, pbr->internalUnitEntry( 0 )->multicastDummy() );
   EXPECT_FALSE( m.manager->groupExists( 0, IFP_GROUP_IP_PBR_ ) );
   EXPECT_EQ( baseline, m.box.counts( 0 ) );
}

} // namespace
} // namespace ManagerTest
