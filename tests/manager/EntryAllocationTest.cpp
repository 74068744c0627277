// Entry allocation against the chip model's real state: which SDK entries a
// logical entry is, in which groups, at which priority; what each strategy
// leaves in hardware on release; undo of a request that fails half-way.
#include "tests/manager/EntryFixture.h"

#include "platform/fastlog/TraceSink.h"
#include "sdk/api/error.h"

namespace ManagerTest {
namespace {

class EntryAllocationTest : public testing::TestWithParam< ProfileFacts > {
 protected:
   U32 pipes() const { return GetParam().pipes(); }
   U32 aclCopies() const { return GetParam().portAclCopies ? 2 : 1; }
   // The SDK group of a pipe and copy of an ingress group on this profile.
   U32
   sdkGroup( U32 group, U32 pipe, U32 copy ) const {
      return group | ( GetParam().ingressPipes > 1 ? pipe << 24 : 0 ) | copy << 27;
   }
   // Entries, stats and groups the test's managers left on the unit.
   void
   expectNothingLeft() {
      EXPECT_EQ( baseline, m.box.counts( 0 ) ) << m.box.counts( 0 ).text();
   }

   EntryBox m{ { GetParam().name } };
   ChipModel::ObjectCounts baseline = m.box.counts( 0 );
};

TEST_P( EntryAllocationTest, ALogicalEntryIsOneSdkEntryPerPipeAndCopyAtItsDefaultPriority ) {
   auto acl = m.bounded( test1TcamGroup_, IFP_GROUP_IP_ACL_, 100, 110, tcamAllocateOnDemand_ );
   m.box.clearCallLog();
   FastLog::recordsClear();
   ASSERT_EQ( 100u, acl->getEntry( 0, 100, "first" ) );

   std::vector< U32 > ids = copyIds( 100, pipes(), aclCopies() );
   std::vector< S64 > created;
   for ( const ChipModel::CallRecord & r : m.box.callLog() ) {
      if ( r.function == "bcm_field_entry_create_id" ) {
         created.push_back( r.args.at( 1 ) );
      }
   }
   EXPECT_EQ( std::vector< S64 >( ids.begin(), ids.end() ), created );
   EXPECT_EQ( 0x7fffffffu, acl->maxPrio() );
   for ( U32 i = 0; i < ids.size(); ++i ) {
      const ChipModel::Entry * copy = m.entry( ids[ i ] );
      ASSERT_TRUE( copy ) << std::hex << ids[ i ];
      U32 pipe = i / aclCopies();
      EXPECT_EQ( int( sdkGroup( IFP_GROUP_IP_ACL_, pipe, i % aclCopies() ) ), copy->group );
      EXPECT_EQ( 0x7fffffff - 100, copy->priority );
      const ChipModel::Stat * stat = m.field().stat( copy->statId );
      ASSERT_TRUE( stat );
      EXPECT_EQ( ( std::vector< bcm_field_stat_t >{ bcmFieldStatPackets, bcmFieldStatBytes } ),
                 stat->types );
   }
   EXPECT_EQ( ids.size(), m.box.counts( 0 ).entries - baseline.entries );
   EXPECT_EQ( "first", acl->internalUnitEntry( 0 )->entryCreated( 100 ).str() );
   EXPECT_EQ( acl.get(), m.manager->tcamEntryMgr( 100 ).get() );
   for ( const GroupIdToPipeGroupId & key : m.manager->pipeGroupsOf( 0, IFP_GROUP_IP_ACL_ ) ) {
      // A twin shares its entry's SDK group and counts there too.
      EXPECT_EQ( ids.size() / m.manager->pipeGroupsOf( 0, IFP_GROUP_IP_ACL_ ).size(),
                 m.manager->groupCounts( key )->unitAllocated( 0 ) );
   }
   char base[ 64 ];
   std::snprintf( base, sizeof( base ), "fp entry create 0x0 0x7 0x64\n" );
   EXPECT_NE( std::string::npos, m.fastLog().find( base ) ) << m.fastLog();

   // An id in use is refused without touching the hardware.
   U32 calls = U32( m.box.callLog().size() );
   EXPECT_EQ( 0u, acl->getEntry( 0, 100, "again" ) );
   EXPECT_EQ( calls, m.box.callLog().size() );
   EXPECT_EQ( "first", acl->internalUnitEntry( 0 )->entryCreated( 100 ).str() );
}

TEST_P( EntryAllocationTest, OnDemandEntriesAreDestroyedAndTheLastReleaseDropsTheGroup ) {
   auto acl = m.bounded( test1TcamGroup_, IFP_GROUP_IP_ACL_, 100, 110, tcamAllocateOnDemand_ );
   ASSERT_EQ( 100u, acl->getEntry( 0, 100, "a" ) );
   ASSERT_EQ( 101u, acl->getEntry( 0, 101, "b" ) );
   EXPECT_EQ( 2u, acl->entriesAllocated( 0 ) );
   acl->releaseEntry( 0, 100 );
   EXPECT_FALSE( m.entry( 100 ) );
   EXPECT_TRUE( m.manager->groupExists( 0, IFP_GROUP_IP_ACL_ ) );
   EXPECT_EQ( 1u, acl->entriesAllocated( 0 ) );
   acl->releaseEntry( 0, 101 );
   EXPECT_FALSE( m.manager->groupExists( 0, IFP_GROUP_IP_ACL_ ) );
   EXPECT_FALSE( m.manager->tcamManagerForEntryHas( 101 ) );
   EXPECT_TRUE( acl->internalUnitEntry( 0 )->groupIdCollection().empty() );
   expectNothingLeft();
}

TEST_P( EntryAllocationTest, UnboundedCopiesShareTheSdkChosenLowBits ) {
   auto copp = m.unbounded( test2TcamGroup_, IFP_GROUP_COPP_IP_ );
   U32 first = copp->getEntry( 0, "a" );
   U32 second = copp->getEntry( 0, "b" );
   ASSERT_GT( first, 0u );
   ASSERT_GT( second, 0u );
   EXPECT_LT( first, 1u << 24 );
   EXPECT_NE( first, second );
   for ( U32 id : copyIds( second, pipes(), 1 ) ) {
      EXPECT_TRUE( m.entry( id ) ) << std::hex << id;
   }
   copp->releaseEntry( 0, first );
   copp->releaseEntry( 0, second );
   expectNothingLeft();
}

// A chunk is made whole at the first request and given back whole with the
// last release; until then released entries stay as scrubbed slots.
TEST_P( EntryAllocationTest, ChunkEntriesSurviveReleaseScrubbedUntilTheLastOne ) {
   auto chunk = m.bounded( test3TcamGroup_, IFP_GROUP_QOS_, 200, 204, tcamAllocateAsChunk_ );
   EXPECT_EQ( 0u, chunk->entriesAllocated( 0 ) );
   ASSERT_EQ( 200u, chunk->getEntry( 0, 200, "a" ) );
   ASSERT_EQ( 201u, chunk->getEntry( 0, 201, "b" ) );
   EXPECT_EQ( 4 * pipes(), m.box.counts( 0 ).entries - baseline.entries );
   EXPECT_EQ( 4u, chunk->entriesAllocated( 0 ) );
   EXPECT_EQ( 2u, chunk->entriesAvailable( 0 ) );
   m.addAction( 200, bcmFieldActionDrop );
   ASSERT_EQ( 0, chunk->installEntry( 0, 200 ) );

   chunk->releaseEntry( 0, 200 );
   for ( U32 id : copyIds( 200, pipes(), 1 ) ) {
      const ChipModel::Entry * slot = m.entry( id );
      ASSERT_TRUE( slot ) << std::hex << id;
      EXPECT_FALSE( slot->installed() );
      EXPECT_TRUE( slot->soft.qualifiers.empty() );
      EXPECT_TRUE( slot->soft.actions.empty() );
      EXPECT_EQ( 0, slot->statId );
      EXPECT_EQ( 0x7fffffff - 200, slot->priority );
   }
   EXPECT_EQ( 4 * pipes(), m.box.counts( 0 ).entries - baseline.entries );
   EXPECT_EQ( 3u, chunk->entriesAvailable( 0 ) );
   chunk->releaseEntry( 0, 201 );
   EXPECT_EQ( 0u, chunk->entriesAllocated( 0 ) );
   expectNothingLeft();
}

TEST_P( EntryAllocationTest, AtBeginningRangesExistFromTheStartAndStay ) {
   auto reserved = m.bounded( test4TcamGroup_, IFP_GROUP_QOS_, 300, 303, tcamAllocateAtBeginning_ );
   EXPECT_EQ( 3 * pipes(), m.box.counts( 0 ).entries - baseline.entries );
   EXPECT_EQ( 3u, reserved->entriesAllocated( 0 ) );
   EXPECT_EQ( 0x7fffffff - 302, m.entry( 302 )->priority );
   ASSERT_EQ( 301u, reserved->getEntry( 0, 301, "a" ) );
   EXPECT_EQ( 2u, reserved->entriesAvailable( 0 ) );
   reserved->releaseEntry( 0, 301 );
   EXPECT_EQ( 3 * pipes(), m.box.counts( 0 ).entries - baseline.entries );
   EXPECT_EQ( baseline.stats, m.box.counts( 0 ).stats );
   EXPECT_TRUE( m.manager->groupExists( 0, IFP_GROUP_QOS_ ) );
   reserved->releaseRange( 0 );
   expectNothingLeft();
}

// A request that runs out in pipe 0 takes back what it made and marks the
// unit exhausted; the same in a later pipe is a broken chip.
TEST_P( EntryAllocationTest, RunningOutInPipeZeroUndoesTheRequest ) {
   auto acl = m.bounded( test1TcamGroup_, IFP_GROUP_IP_ACL_, 100, 110, tcamAllocateOnDemand_ );
   U32 shared = GetParam().ovidWar ? 2 : aclCopies(); // copies in the base's SDK group
   if ( shared < 2 ) {
      GTEST_SKIP() << "pipe 0 has one copy here";
   }
   FastLog::TraceCapture capture( "bcmFpCmd", FastLog::TraceLevels::only( 0 ) );
   m.box.failCall( 0, "bcm_field_entry_create_id", 2, BCM_E_RESOURCE );
   EXPECT_EQ( 0u, acl->getEntry( 0, 100, "feature" ) );
   EXPECT_TRUE( acl->exhausted( 0 ) );
   EXPECT_TRUE( acl->internalUnitEntry( 0 )->entryCreatedCollection().empty() );
   EXPECT_FALSE( m.manager->tcamManagerForEntryHas( 100 ) );
   expectNothingLeft();
   ASSERT_EQ( 1u, capture.texts().size() );
   EXPECT_EQ( "Unit: 0 bcm_field_entry_create_id( unit, groupId, entryId ) API ERROR: (rc:-14) "
              "failed to grab entry feature",
              capture.texts()[ 0 ] );

   ASSERT_EQ( 100u, acl->getEntry( 0, 100, "feature" ) );
   EXPECT_FALSE( acl->exhausted( 0 ) );
}

TEST_P( EntryAllocationTest, ALaterPipeThatFailsAborts ) {
   if ( GetParam().ingressPipes < 3 ) {
      GTEST_SKIP() << "no pipe 2 of its own";
   }
   auto copp = m.bounded( test1TcamGroup_, IFP_GROUP_COPP_IP_, 100, 110, tcamAllocateOnDemand_ );
   m.box.failCall( 0, "bcm_field_entry_create_id", 3, BCM_E_RESOURCE );
   EXPECT_DEATH( copp->getEntry( 0, 100, "feature" ),
                 "U32 Tessel::TesselTcamEntryManager::getEntryBase\\(U32, U32, const "
                 "Kiln::String&, const Kiln::Ptr<Tessel::StatTypes>&\\): Assertion 'Failed to "
                 "create per pipe entries' failed" );
}

TEST_P( EntryAllocationTest, IdsOutsideTheRangeAndRangesThatCannotFitAbort ) {
   auto acl = m.bounded( test1TcamGroup_, IFP_GROUP_IP_ACL_, 100, 110, tcamAllocateOnDemand_ );
   EXPECT_DEATH( acl->getEntry( 0, 110, "x" ),
                 "U32 Tessel::TesselBoundedTcamEntryManager::getEntry\\(U32, U32, const "
                 "Kiln::String&\\): Assertion 'entry >= baseEntry\\(\\) && entry < endEntry\\(\\)' "
                 "failed" );
   EXPECT_DEATH( acl->getEntry( 0, 99, "x" ), "entry >= baseEntry" );
   EXPECT_DEATH( m.bounded( test5TcamGroup_, IFP_GROUP_QOS_, 1000, 1000 + 100000,
                            tcamAllocateAtBeginning_ ),
                 "bool Tessel::TesselTcamEntryManager::allocateAllEntries\\(U32\\): Assertion "
                 "'strategy\\(\\) != tcamAllocateAtBeginning\\(\\)' failed" );
}

TEST_P( EntryAllocationTest, AChunkThatDoesNotFitGetsNothing ) {
   auto chunk = m.bounded( test3TcamGroup_, IFP_GROUP_QOS_, 1000, 1000 + 100000,
                           tcamAllocateAsChunk_ );
   EXPECT_EQ( 0u, chunk->getEntry( 0, 1000, "a" ) );
   EXPECT_TRUE( chunk->exhausted( 0 ) );
   EXPECT_EQ( 0u, chunk->entriesAllocated( 0 ) );
   EXPECT_EQ( 0u, chunk->entriesAvailable( 0 ) );
   expectNothingLeft();
}

INSTANTIATE_TEST_SUITE_P( Profiles, EntryAllocationTest, testing::ValuesIn( allProfiles() ),
                          profileName );

// The platform decides whether the egress cos mapper (group 69) reserves
// its range when the unit arrives; the three chip families reserve the VFI
// exception ranges (group 79) without PDP mode whatever the platform says.
TEST( EarlyReservationAtSetUp, FollowsThePlatformAndTheChip ) {
   for ( bool early : { false, true } ) {
      EntryBox m{ { "single", "trident3" }, false };
      Kiln::Ptr< Agent::PlatformState > platform = new Agent::PlatformState( "platform" );
      platform->earlyReservationIs( early );
      m.manager->platformStateIs( platform );
      m.manager->modChipInfoIs( 1, chipInfoFromShim( 1, { 0 } ) );
      m.manager->modChipInfoIs( 2, chipInfoFromShim( 2, { 1 } ) );
      EXPECT_EQ( early, m.manager->groupExists( 0, EFP_GROUP_VLAN_PRI_ ) );
      EXPECT_EQ( early ? 8u : 0u,
                 m.manager->entryManager( efpVlanPriTcamGroup_ )->entriesAllocated( 0 ) );
      EXPECT_EQ( early, m.manager->groupExists( 0, VFP_GROUP_IP_VFI_EXCEPTION_ ) );
      EXPECT_TRUE( m.manager->groupExists( 1, VFP_GROUP_IP_VFI_EXCEPTION_ ) );
      EXPECT_EQ( 16u, m.manager->entryManager( vfpVfiExceptionTcamGroup_ )->entriesAllocated( 1 ) +
                         m.manager->entryManager( vfpVfiPdpL2CtrlTcamGroup_ )->entriesAllocated( 1 ) );
   }
}

// A range that was not reserved early is reserved by its first request and
// kept after the last release.
TEST( EarlyReservationAtSetUp, ALateRangeIsReservedOnFirstUseAndKept ) {
   EntryBox m{ { "single" } };
   ChipModel::ObjectCounts before = m.box.counts( 0 );
   auto cos = m.manager->entryManager( efpVlanPriTcamGroup_ );
   ASSERT_FALSE( m.manager->groupExists( 0, EFP_GROUP_VLAN_PRI_ ) );
   U32 first = cos->baseEntry();
   ASSERT_EQ( first, cos->getEntry( 0, first, "cos" ) );
   EXPECT_EQ( before.entries + 8, m.box.counts( 0 ).entries );
   cos->releaseEntry( 0, first );
   EXPECT_TRUE( m.manager->groupExists( 0, EFP_GROUP_VLAN_PRI_ ) );
   EXPECT_EQ( before.entries + 8, m.box.counts( 0 ).entries );
   EXPECT_EQ( before.stats, m.box.counts( 0 ).stats );
}

// A chunk that holds its range never asks the hardware again.
TEST( ChunkAvailability, CountsDownFromTheRangeWithoutTheHardware ) {
   EntryBox m{ { "trident3" } };
   auto chunk = m.bounded( test3TcamGroup_, IFP_GROUP_QOS_, 200, 210, tcamAllocateAsChunk_ );
   ASSERT_EQ( 205u, chunk->getEntry( 0, 205, "a" ) );
   m.box.clearCallLog();
   EXPECT_EQ( 9u, chunk->entriesAvailable( 0 ) );
   EXPECT_EQ( 0u, m.box.callCount( "bcm_field_group_status_get" ) );
}

} // namespace
} // namespace ManagerTest
