// Pipe group ids, pipe and copy counts per chip, and the priorities that
// groups sharing a slice must agree on.
#include "tests/manager/ManagerFixture.h"

#include "sdk/shim/Shim.h"

namespace ManagerTest {
namespace {

TEST( PipeGroupIdTest, PipeBitsOnlyWhereTheStageRunsPerPipe ) {
   ManagerBox m{ { "thx", "single" } };
   EXPECT_EQ( 218104099u, m.manager->getPipeGroupId( 0, 5, 1, 291 ) );
   EXPECT_EQ( 134218019u, m.manager->getPipeGroupId( 1, 5, 1, 291 ) );
   // Pipe 8 wraps to 0, flag 2 is no flag, the group keeps its 24 bits.
   EXPECT_EQ( 0x00ABCDEFu, m.manager->getPipeGroupId( 0, 8, 2, 0x7FABCDEF ) );
}

class PipesAndCopiesTest : public testing::TestWithParam< ProfileFacts > {};

TEST_P( PipesAndCopiesTest, ComeFromTheUnitsChipInformation ) {
   ManagerBox m{ { GetParam().name } };
   EXPECT_EQ( GetParam().pipes(), m.manager->getNumPipe( 0 ) );
   EXPECT_EQ( GetParam().pipes(), m.manager->getNumPipe( 0, IFP_GROUP_IP_ACL_ ) );
   EXPECT_EQ( GetParam().ovidWar, m.manager->ovidWar( 0 ) );
   EXPECT_EQ( GetParam().ovidWar, m.manager->ovidWarSmHas( 0 ) );
   EXPECT_EQ( 1u, m.manager->getNumPipe( 0, EFP_GROUP_IP_ACL_ ) );
   U32 portAclCopies = GetParam().portAclCopies ? 2 : 1;
   EXPECT_EQ( portAclCopies, m.manager->getNumCopiesPerPipe( 0, IFP_GROUP_IP_ACL_ ) );
   EXPECT_EQ( portAclCopies, m.manager->getNumCopiesPerPipe( 0, IFP_GROUP_IPV6_ACL_ ) );
   EXPECT_EQ( 1u, m.manager->getNumCopiesPerPipe( 0, IFP_GROUP_COPP_IP_ ) );
   // A unit nobody described answers as a single-pipe chip.
   EXPECT_EQ( 1u, m.manager->getNumPipe( 7 ) );
   EXPECT_EQ( 1u, m.manager->getNumCopiesPerPipe( 7, IFP_GROUP_IP_ACL_ ) );
   m.manager->ovidWarIs( 0, true );
   EXPECT_EQ( 2u, m.manager->getNumPipe( 0 ) );
}

INSTANTIATE_TEST_SUITE_P( Profiles, PipesAndCopiesTest, testing::ValuesIn( allProfiles() ),
                          profileName );

TEST( IpbmWorkaroundTest, QosIpv6FollowsItsKeyWidthModeWhereItsRowSaysNo ) {
   ManagerBox m{ { "thx" } };
   EXPECT_TRUE( m.manager->groupNeedsIpbmWAR( 0, IFP_GROUP_MAC_ACL_ ) );
   EXPECT_FALSE( m.manager->groupNeedsIpbmWAR( 0, IFP_GROUP_POLICY_QOS_IPV6_ ) );
   m.manager->qosIpv6KeyWidthModeIs( Acl::tcamBankSharingModeShared );
   EXPECT_TRUE( m.manager->groupNeedsIpbmWAR( 0, IFP_GROUP_POLICY_QOS_IPV6_ ) );
   EXPECT_EQ( 2u, m.manager->getNumCopiesPerPipe( 0, IFP_GROUP_POLICY_QOS_IPV6_ ) );
   // Without an include row for the chip there is nothing to need.
   EXPECT_FALSE( m.manager->groupNeedsIpbmWAR( 0, IFP_GROUP_L3CTRL_OPENFLOW_ ) );
}

class PriorityTest : public testing::Test {
 protected:
   ManagerBox m{ { "single" } };
   Kiln::Ptr< Acl::ParamConfig > config = new Acl::ParamConfig( "acl" );
   void SetUp() override { m.manager->aclParamConfigIs( config ); }
};

TEST_F( PriorityTest, PortAclsShareTheIpv4AclPriorityAndKey ) {
   EXPECT_EQ( 39u, m.manager->getTcamGroupPriority( IFP_GROUP_IPV6_ACL_, 0 ) );
   config->paclSliceSharingSupportedIs( true );
   EXPECT_TRUE( m.manager->paclSliceSharingSupported() );
   EXPECT_EQ( 33u, m.manager->getTcamGroupPriority( IFP_GROUP_IPV6_ACL_, 0 ) );
   EXPECT_EQ( 33u, m.manager->getTcamGroupPriority( IFP_GROUP_IP_ACL_, 0 ) );
   ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_IPV6_ACL_ ) );
   const Shim::Sdk & shim = *Shim::sdk_;
   const ChipModel::Group * g = m.group( IFP_GROUP_IPV6_ACL_ );
   EXPECT_EQ( 33, g->priority );
   // One key for both: the IPv4 ACL's addresses are in the IPv6 group too.
   EXPECT_TRUE( shim.ob_field_qset_test( g->qset, shim.AR_bcmFieldQualifySrcIp() ) );
   EXPECT_TRUE( shim.ob_field_qset_test( g->qset, shim.AR_bcmFieldQualifySrcIp6() ) );
}

TEST_F( PriorityTest, QosPoliciesShareTheIpv4Priority ) {
   EXPECT_EQ( 17u, m.manager->getTcamGroupPriority( IFP_GROUP_POLICY_QOS_IPV6_, 0 ) );
   config->qosAclSliceSharingSupportedIs( true );
   EXPECT_EQ( 16u, m.manager->getTcamGroupPriority( IFP_GROUP_POLICY_QOS_IPV6_, 0 ) );
   EXPECT_EQ( 42u, m.manager->getTcamGroupPriority( IFP_GROUP_SVI_POLICY_QOS_IP_, 0 ) );
}

TEST_F( PriorityTest, MirroringGroupsOfOneTypeTakeTheFirstOnesPriority ) {
   config->mirrorAclSliceSharingSupportedIs( true );
   for ( U32 group : { IFP_GROUP_MIRROR_ACL_1_, IFP_GROUP_MIRROR_ACL_3_ } ) {
      m.manager->groupMirroringAclValidIs( group, true );
      m.manager->groupMirroringAclTypeIs( group, 1 );
   }
   // The third group, made first, takes the priority of the first group in use.
   ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_MIRROR_ACL_3_ ) );
   EXPECT_EQ( 44, m.group( IFP_GROUP_MIRROR_ACL_3_ )->priority );
   EXPECT_EQ( 44u, m.manager->mirrorAclGroupToPriority( IFP_GROUP_MIRROR_ACL_3_ ) );
   m.manager->groupMirroringAclValidIs( IFP_GROUP_MIRROR_ACL_1_, false );
   m.manager->groupMirroringAclValidIs( IFP_GROUP_MIRROR_ACL_4_, true );
   m.manager->groupMirroringAclTypeIs( IFP_GROUP_MIRROR_ACL_4_, 1 );
   // The fourth finds the third's stored priority.
   ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_MIRROR_ACL_4_ ) );
   EXPECT_EQ( 44, m.group( IFP_GROUP_MIRROR_ACL_4_ )->priority );
   m.manager->groupMirroringAclValidIs( IFP_GROUP_MIRROR_ACL_1_, true );
   ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_MIRROR_ACL_1_ ) );
   EXPECT_EQ( 44, m.group( IFP_GROUP_MIRROR_ACL_1_ )->priority );
   // A mirroring group is counted once however many users it has.
   ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_MIRROR_ACL_1_ ) );
   m.manager->uninitializeGroup( 0, IFP_GROUP_MIRROR_ACL_1_ );
   EXPECT_FALSE( m.group( IFP_GROUP_MIRROR_ACL_1_ ) );
   // MAC mirroring ACLs (type 2) do not share.
   EXPECT_EQ( 45u, m.manager->getTcamGroupPriority( IFP_GROUP_MIRROR_ACL_2_, 2 ) );
}

TEST_F( PriorityTest, AMirroringTypeOtherThanTheGroupsAborts ) {
   config->mirrorAclSliceSharingSupportedIs( true );
   m.manager->groupMirroringAclTypeIs( IFP_GROUP_MIRROR_ACL_1_, 1 );
   EXPECT_DEATH( m.manager->getTcamGroupPriority( IFP_GROUP_MIRROR_ACL_1_, 0 ),
                 "U32 Tessel::TesselTcamGroupManager::getTcamGroupPriority\\(U32, int\\) const: "
                 "Assertion 'groupMirroringAclType\\( groupId \\) == mirAclType' failed" );
}

} // namespace
} // namespace ManagerTest
