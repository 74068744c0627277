// entriesAvailable against what the chip model says is free: the raw count,
// halved under the outer-VLAN-ID workaround, divided by the copies per pipe
// on chips with the two-copies conditions; and a full group makes every
// group of the unit give back its empty slices first.
#include "tests/manager/ManagerFixture.h"

#include "platform/fastlog/FastLog.h"
#include "sdk/api/error.h"
#include "sdk/shim/SdkStructs.h"

namespace ManagerTest {
namespace {

class EntriesAvailableTest : public testing::TestWithParam< ProfileFacts > {
 protected:
   int
   rawFree( U32 group ) {
      Shim::GroupStatus status;
      EXPECT_EQ( 0, m.sdk( [ & ] { return bcm_field_group_status_get( 0, group, &status ); } ) );
      return status.entries_free;
   }

   ManagerBox m{ { GetParam().name } };
   ChipModel::ObjectCounts baseline = m.box.counts( 0 );
};

TEST_P( EntriesAvailableTest, AnUnusedGroupIsMeasuredAndLeftAsItWas ) {
   U32 available = m.manager->entriesAvailable( 0, IFP_GROUP_MAC_ACL_ );
   EXPECT_EQ( baseline, m.box.counts( 0 ) );
   ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_MAC_ACL_ ) );
   U32 rowsPerEntry = ( GetParam().portAclCopies ? 2 : 1 ) * ( GetParam().ovidWar ? 2 : 1 );
   EXPECT_EQ( U32( rawFree( IFP_GROUP_MAC_ACL_ ) ) / rowsPerEntry, available );
   EXPECT_GT( available, 0u );
}

TEST_P( EntriesAvailableTest, AHeldGroupKeepsItsCount ) {
   ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_COPP_IP_ ) );
   EXPECT_EQ( U32( rawFree( IFP_GROUP_COPP_IP_ ) ) / ( GetParam().ovidWar ? 2 : 1 ),
              m.manager->entriesAvailable( 0, IFP_GROUP_COPP_IP_ ) );
   Kiln::Ptr< GroupCounts > counts =
      m.manager->groupCounts( GroupIdToPipeGroupId{ IFP_GROUP_COPP_IP_, IFP_GROUP_COPP_IP_ } );
   EXPECT_EQ( 1u, counts->unitRefCount( 0 ) );
}

// The arithmetic where both apply: halved, then per copy, a quarter.
TEST( EntriesAvailableArithmetic, TheWorkaroundHalvesAndCopiesDivide ) {
   ManagerBox m{ { "thx" } };
   ChipModel::ObjectCounts baseline = m.box.counts( 0 );
   m.manager->ovidWarIs( 0, true );
   ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_IP_ACL_ ) );
   EXPECT_EQ( baseline.groups + 4, m.box.counts( 0 ).groups );
   Shim::GroupStatus status;
   ASSERT_EQ( 0, m.sdk( [ & ] { return bcm_field_group_status_get( 0, IFP_GROUP_IP_ACL_, &status ); } ) );
   EXPECT_EQ( U32( status.entries_free ) / 4, m.manager->entriesAvailable( 0, IFP_GROUP_IP_ACL_ ) );
   m.manager->uninitializeGroup( 0, IFP_GROUP_IP_ACL_ );
   EXPECT_EQ( baseline, m.box.counts( 0 ) );
}

TEST_P( EntriesAvailableTest, AGroupThatFailsToExistHasNoRoom ) {
   m.box.failCall( 0, "bcm_field_group_config_create", 1, BCM_E_RESOURCE );
   EXPECT_EQ( 0u, m.manager->entriesAvailable( 0, IFP_GROUP_IP_ACL_ ) );
   EXPECT_EQ( baseline, m.box.counts( 0 ) );
}

INSTANTIATE_TEST_SUITE_P( Profiles, EntriesAvailableTest, testing::ValuesIn( allProfiles() ),
                          profileName );

// A unit whose lookup stage has three slices of four rows: two groups take
// one slice each, the first grows into the third and empties it again.
class FullGroupTest : public testing::Test {
 protected:
   static ChipModel::Profile
   smallProfile() {
      ChipModel::Profile p = *ChipModel::findProfile( "single" );
      p.stages[ 1 ].slicesPerPipe = 3;
      p.stages[ 1 ].entriesPerSlice = 4;
      return p;
   }
   std::vector< int >
   fill( U32 group, U32 count ) {
      std::vector< int > entries;
      for ( U32 i = 0; i < count; ++i ) {
         int entry = 0;
         EXPECT_EQ( 0, m.sdk( [ & ] { return bcm_field_entry_create( 0, group, &entry ); } ) );
         entries.push_back( entry );
      }
      return entries;
   }

   ManagerBox m{ smallProfile(), AdjustedProfile() };
};

TEST_F( FullGroupTest, NoFreeEntryCompressesEveryGroupOfTheUnitFirst ) {
   U32 grower = VFP_GROUP_OPENFLOW_VFP_;
   U32 full = VFP_GROUP_FABRIC_;
   ASSERT_TRUE( m.manager->initializeGroup( 0, grower ) );
   ASSERT_TRUE( m.manager->initializeGroup( 0, full ) );
   ASSERT_EQ( 1u, m.group( grower )->width );
   ASSERT_EQ( 1u, m.group( full )->width );
   for ( int entry : fill( grower, 5 ) ) {
      m.sdk( [ & ] { return bcm_field_entry_destroy( 0, entry ); } );
   }
   std::vector< int > kept = fill( full, 4 );
   m.manager->sliceFreedIs( 0 );
   m.box.clearCallLog();

   EXPECT_EQ( 4u, m.manager->entriesAvailable( 0, full ) );
   std::string log;
   for ( const FastLog::RecordText & r : FastLog::records() ) {
      log += r.text + "\n";
   }
   EXPECT_NE( std::string::npos, log.find( "fp group compress (group=0x52)" ) );
   EXPECT_NE( std::string::npos, log.find( "fp group compress (group=0x51)" ) );
   EXPECT_TRUE( m.manager->sliceFreedCollection().empty() );
   for ( int entry : kept ) {
      m.sdk( [ & ] { return bcm_field_entry_destroy( 0, entry ); } );
   }
}

} // namespace
} // namespace ManagerTest
