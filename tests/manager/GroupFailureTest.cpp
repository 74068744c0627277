// A group whose creation fails at any hardware step leaves nothing behind:
// what was made is undone in reverse, the bookkeeping is as before, and a
// later attempt succeeds.
#include "tests/manager/ManagerFixture.h"

#include <algorithm>

#include "platform/fastlog/TraceSink.h"
#include "sdk/api/error.h"

namespace ManagerTest {
namespace {

struct Failure {
   std::string function;
   U32 nth;
};

class GroupFailureTest : public testing::TestWithParam< ProfileFacts > {
 protected:
   // Fails the step, checks that nothing is left, then creates the group.
   void
   failAndRecover( U32 group, const Failure & failure ) {
      SCOPED_TRACE( failure.function + " #" + std::to_string( failure.nth ) );
      m.box.failCall( 0, failure.function, failure.nth, BCM_E_RESOURCE );
      EXPECT_FALSE( m.manager->initializeGroup( 0, group ) );
      EXPECT_EQ( 0u, m.box.pendingFaults() );
      EXPECT_EQ( baseline, m.box.counts( 0 ) );
      EXPECT_TRUE( m.manager->pipeGroupsOf( 0, group ).empty() );
      EXPECT_TRUE( m.manager->groupIdToPreselIdCollection().empty() );
      EXPECT_FALSE( m.manager->groupHintIdInfoHas( GroupUnitKey{ 0, group } ) );
      ASSERT_TRUE( m.manager->initializeGroup( 0, group ) );
      m.manager->uninitializeGroup( 0, group );
      EXPECT_EQ( baseline, m.box.counts( 0 ) );
   }
   // Indexes in the call log of the calls of a function, in order.
   std::vector< ChipModel::CallRecord >
   calls( const std::string & function ) const {
      std::vector< ChipModel::CallRecord > found;
      for ( const ChipModel::CallRecord & r : m.box.callLog() ) {
         if ( r.function == function ) {
            found.push_back( r );
         }
      }
      return found;
   }

   ManagerBox m{ { GetParam().name }, true, Reservations::release };
   ChipModel::ObjectCounts baseline = m.box.counts( 0 );
};

TEST_P( GroupFailureTest, EachGroupCreationThatFailsUndoesTheOthers ) {
   U32 sdkGroups = GetParam().ingressPipes * ( GetParam().portAclCopies ? 2 : 1 );
   for ( U32 nth = 1; nth <= sdkGroups; ++nth ) {
      failAndRecover( IFP_GROUP_IPV6_STD_PACL_RACL_, { "bcm_field_group_config_create", nth } );
   }
}

TEST_P( GroupFailureTest, HintAndPreselectorFailuresUndoWhatCameBefore ) {
   std::vector< Failure > failures = { { "bcm_field_hints_create", 1 },
                                       { "bcm_field_hints_add", 1 } };
   for ( U32 pipe = 1; GetParam().ingressPipes > 1 && pipe <= GetParam().ingressPipes; ++pipe ) {
      failures.push_back( { "bcm_field_presel_create", pipe } );
      failures.push_back( { "bcm_field_qualify_Stage", pipe } );
      failures.push_back( { "bcm_field_qualify_MixedSrcClassId", pipe } );
   }
   for ( const Failure & failure : failures ) {
      failAndRecover( IFP_GROUP_IPV6_STD_PACL_RACL_, failure );
   }
}

TEST_P( GroupFailureTest, TheUndoRunsInReverseOrder ) {
   U32 sdkGroups = GetParam().ingressPipes * ( GetParam().portAclCopies ? 2 : 1 );
   m.box.failCall( 0, "bcm_field_group_config_create", sdkGroups, BCM_E_RESOURCE );
   m.box.clearCallLog();
   ASSERT_FALSE( m.manager->initializeGroup( 0, IFP_GROUP_IPV6_STD_PACL_RACL_ ) );

   std::vector< S64 > created;
   for ( const ChipModel::CallRecord & r : calls( "bcm_field_group_config_create" ) ) {
      if ( r.rc == 0 ) {
         created.push_back( r.args.at( 1 ) );
      }
   }
   std::vector< S64 > destroyed;
   for ( const ChipModel::CallRecord & r : calls( "bcm_field_group_destroy" ) ) {
      destroyed.push_back( r.args.at( 0 ) );
   }
   std::reverse( created.begin(), created.end() );
   EXPECT_EQ( created, destroyed );

   // Groups first, then the hint they used, then the preselectors.
   std::vector< std::string > order;
   for ( const ChipModel::CallRecord & r : m.box.callLog() ) {
      if ( r.function.find( "destroy" ) != std::string::npos &&
           ( order.empty() || order.back() != r.function ) ) {
         order.push_back( r.function );
      }
   }
   std::vector< std::string > expected = { "bcm_field_group_destroy", "bcm_field_hints_destroy" };
   if ( GetParam().ingressPipes > 1 ) {
      expected.push_back( "bcm_field_presel_destroy" );
   }
   if ( sdkGroups == 1 ) {
      expected.erase( expected.begin() );
   }
   EXPECT_EQ( expected, order );
}

TEST_P( GroupFailureTest, TheFailureIsReported ) {
   FastLog::TraceCapture capture( "TesselTcam", FastLog::TraceLevels::upTo( 5 ) );
   m.box.failCall( 0, "bcm_field_group_config_create", 1, BCM_E_RESOURCE );
   ASSERT_FALSE( m.manager->initializeGroup( 0, IFP_GROUP_MAC_ACL_ ) );
   EXPECT_EQ( ( std::vector< std::string >{
                 "Unit: 0 Creating group 8",
                 std::string( "Could not create group: 8 Due to error: " ) +
                    bcm_errmsg( BCM_E_RESOURCE ),
                 "Unit: 0 group 8 ref count is now 0",
              } ),
              capture.texts() );
}

TEST_P( GroupFailureTest, AFailedMirroringGroupForgetsItsType ) {
   m.manager->groupMirroringAclValidIs( IFP_GROUP_MIRROR_ACL_2_, true );
   m.manager->groupMirroringAclTypeIs( IFP_GROUP_MIRROR_ACL_2_, 1 );
   m.box.failCall( 0, "bcm_field_group_config_create", 1, BCM_E_RESOURCE );
   ASSERT_FALSE( m.manager->initializeGroup( 0, IFP_GROUP_MIRROR_ACL_2_ ) );
   EXPECT_EQ( -1, m.manager->groupMirroringAclType( IFP_GROUP_MIRROR_ACL_2_ ) );
   EXPECT_FALSE( m.manager->mirrorAclGroupToPriorityHas( IFP_GROUP_MIRROR_ACL_2_ ) );
}

TEST_P( GroupFailureTest, AUnitWithoutPortsCreatesNothing ) {
   m.box.failCall( 0, "bcm_port_config_get", 1, BCM_E_UNIT );
   m.box.clearCallLog();
   EXPECT_FALSE( m.manager->initializeGroup( 0, IFP_GROUP_IP_ACL_ ) );
   EXPECT_EQ( 0u, m.box.callCount( "bcm_field_group_config_create" ) );
   EXPECT_EQ( baseline, m.box.counts( 0 ) );
}

INSTANTIATE_TEST_SUITE_P( Profiles, GroupFailureTest, testing::ValuesIn( allProfiles() ),
                          profileName );

} // namespace
} // namespace ManagerTest
