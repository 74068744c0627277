#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "CatalogueFixture.h"
#include "catalogue/TesselTcamGroups.h"
#include "sdk/api/field_enums.h"

using namespace Tessel;
using namespace CatalogueTest;

namespace {

// Hardware priorities by group, written from the group list rather than
// copied from the table.
const std::map< U32, U32 > expectedPriority = {
   { IFP_GROUP_L3CTRL_OPENFLOW_, 9 }, { IFP_GROUP_L3CTRL_SNOOPING_HELM_, 9 },
   { IFP_GROUP_L2CTL_DOT1xMBA_, 15 }, { IFP_GROUP_L2CTL_ARP_REQUEST_, 15 },
   { IFP_GROUP_L2CTL_ARP_REPLY_, 15 }, { IFP_GROUP_L2CTL_L3ROUTING_, 15 },
   { IFP_GROUP_IP_ACL_, 33 }, { IFP_GROUP_MAC_ACL_, 35 }, { IFP_GROUP_IPV6_STD_PACL_RACL_, 38 },
   { IFP_GROUP_IP_RACL_, 19 }, { IFP_GROUP_IPV6_RACL_, 20 }, { IFP_GROUP_IPV6_ACL_, 39 },
   { IFP_GROUP_IP_ACL_VNI_, 51 }, { IFP_GROUP_IPV6_ACL_VNI_, 52 }, { IFP_GROUP_MIRROR_ACL_1_, 44 },
   { IFP_GROUP_MIRROR_ACL_2_, 45 }, { IFP_GROUP_MIRROR_ACL_3_, 46 },
   { IFP_GROUP_MIRROR_ACL_4_, 47 }, { IFP_GROUP_QOS_, 8 }, { IFP_GROUP_POLICY_QOS_IP_, 16 },
   { IFP_GROUP_POLICY_QOS_IPV6_, 17 }, { IFP_GROUP_SVI_POLICY_QOS_IP_, 42 },
   { IFP_GROUP_SVI_POLICY_QOS_IPV6_, 43 }, { IFP_GROUP_COS_WAR_, 1 }, { IFP_GROUP_COPP_IP_, 12 },
   { IFP_GROUP_COPP_IPV6_, 13 }, { IFP_GROUP_PDP_, 18 }, { IFP_GROUP_PFC_WATCHDOG_, 49 },
   { IFP_GROUP_STORM_CTL_PORT_, 36 }, { IFP_GROUP_UCAST_COLOR_, 31 }, { IFP_GROUP_IP_PBR_, 41 },
   { IFP_GROUP_IPV6_PBR_, 48 }, { IFP_GROUP_URPF_, 32 }, { IFP_GROUP_VXLAN_, 11 },
   { IFP_GROUP_VFI_UNKNOWN_MCAST_, 2 }, { IFP_GROUP_IP_SOURCE_GUARD_, 34 },
   { IFP_GROUP_OPENFLOW_UDF_, 3 }, { IFP_GROUP_OPENFLOW_VXLAN_, 4 },
   { IFP_GROUP_OPENFLOW_L2_ONLY_, 5 }, { IFP_GROUP_OPENFLOW_FULL_, 6 },
   { IFP_GROUP_OPENFLOW_IPV6_PROTO_, 7 }, { IFP_GROUP_CONDUIT_L2_ONLY_, 21 },
   { IFP_GROUP_CONDUIT_FULL_, 22 }, { IFP_GROUP_CONDUIT_IPV6_VLAN_, 23 },
   { IFP_GROUP_CONDUIT_IPV6_PROTO_, 24 }, { IFP_GROUP_CONDUIT_FABRIC_, 50 },
   { IFP_GROUP_CONDUIT_P4RT_REROUTE_, 25 }, { IFP_GROUP_CONDUIT_P4RT_EFFINGO_TABLE_, 26 },
   { IFP_GROUP_CONDUIT_P4RT_PUNT_, 27 }, { IFP_GROUP_CONDUIT_P4RT_POSTCARD_IPV4_, 28 },
   { IFP_GROUP_CONDUIT_P4RT_POSTCARD_IPV6_, 29 }, { IFP_GROUP_CONDUIT_P4RT_POSTCARD_COLOR_, 30 },
   { IFP_GROUP_FABRIC_, 40 }, { IFP_GROUP_MPC_, 37 }, { IFP_GROUP_URPF_THX_V4V6_EXCEPTION_, 53 },
   { IFP_GROUP_IPMC_BOUNDARY_ROUTES_, 14 }, { IFP_GROUP_NAT_SUPERSET_, 54 },
   { IFP_GROUP_EVPN_MULTIHOMING_, 10 }, { EFP_GROUP_MAC_ACL_, 58 }, { EFP_GROUP_IP_ACL_, 59 },
   { EFP_GROUP_IPV6_PACL_, 62 }, { EFP_GROUP_IPV6_EGRESS_ACL_, 61 }, { EFP_GROUP_RACL_, 60 },
   { EFP_GROUP_IPV6_RACL_, 63 }, { EFP_GROUP_IPV6_EGRESS_RACL_, 64 },
   { EFP_GROUP_POLICY_QOS_IP_, 66 }, { EFP_GROUP_MIRROR_RATELIMIT_, 67 }, { EFP_GROUP_VXLAN_, 57 },
   { EFP_GROUP_VLAN_PRI_, 65 }, { EFP_GROUP_MLAG_PEER_LINK_, 56 }, { EFP_GROUP_COPP_, 68 },
   { EFP_GROUP_ECN_COUNT_, 69 }, { VFP_GROUP_IP_ACL_, 71 }, { VFP_GROUP_MAC_ACL_, 72 },
   { VFP_GROUP_IPV6_ACL_, 73 }, { VFP_GROUP_IPV6_STD_ACL_, 74 }, { VFP_GROUP_PORT_VP_, 75 },
   { VFP_GROUP_VXLAN_PORT_VP_, 77 }, { VFP_GROUP_IP_VFI_EXCEPTION_, 80 },
   { VFP_GROUP_PDP_CLASS_, 81 }, { VFP_GROUP_FABRIC_, 76 }, { VFP_GROUP_OPENFLOW_VFP_, 70 },
   { VFP_GROUP_CONDUIT_L2_ONLY_, 78 }, { VFP_GROUP_TH3_SYS_ACL_, 82 },
   { VFP_GROUP_CONDUIT_P4RT_VRF_, 79 },
};

const char * const priority = "U32 Tessel::getGroupPriority(U32)";
const char * const fields = "int* Tessel::getTcamGroupFields(U32, int)";
const char * const init = "void Tessel::initTcamGroups()";
const char * const rangeCheck =
   "( groupId > IFP_INVALID_GROUP_ ) && ( groupId < HIGHEST_TCAM_GROUP_ )";

const TcamGroupDef *
rowOf( U32 groupId ) {
   for ( U32 row = 1; row < numTcamGroupDefs; ++row ) {
      if ( static_cast< U32 >( getTcamGroupDef( row )->groupId ) == groupId ) {
         return getTcamGroupDef( row );
      }
   }
   return nullptr;
}

} // namespace

using GroupTable = Catalogue;

TEST_F( GroupTable, EveryGroupHasOneRowWithItsPriority ) {
   ASSERT_EQ( 85u, expectedPriority.size() );
   std::map< U32, U32 > rowsPerGroup;
   for ( U32 row = 1; row < numTcamGroupDefs; ++row ) {
      ++rowsPerGroup[ static_cast< U32 >( getTcamGroupDef( row )->groupId ) ];
   }
   for ( U32 groupId = 1; groupId < HIGHEST_TCAM_GROUP_; ++groupId ) {
      EXPECT_EQ( 1u, rowsPerGroup[ groupId ] ) << TcamGroupId( groupId );
      EXPECT_TRUE( isTcamGroupDefined( groupId ) ) << TcamGroupId( groupId );
      EXPECT_EQ( expectedPriority.at( groupId ), getGroupPriority( groupId ) )
         << TcamGroupId( groupId );
   }
   const TcamGroupDef * placeholder = getTcamGroupDef( 0 );
   EXPECT_EQ( 0, placeholder->groupId );
   EXPECT_EQ( 0, placeholder->priority );
   EXPECT_EQ( nullptr, getTcamGroupDef( numTcamGroupDefs ) );
}

TEST_F( GroupTable, OnlyTheAlternativeControlLayoutsSharePriorities ) {
   std::map< U32, std::set< U32 > > groupsByPriority;
   for ( U32 groupId = 1; groupId < HIGHEST_TCAM_GROUP_; ++groupId ) {
      groupsByPriority[ getGroupPriority( groupId ) ].insert( groupId );
   }
   std::map< U32, std::set< U32 > > shared;
   for ( const auto & [ prio, groups ] : groupsByPriority ) {
      if ( groups.size() > 1 ) {
         shared[ prio ] = groups;
      }
   }
   std::map< U32, std::set< U32 > > expected = {
      { 9, { IFP_GROUP_L3CTRL_OPENFLOW_, IFP_GROUP_L3CTRL_SNOOPING_HELM_ } },
      { 15,
        { IFP_GROUP_L2CTL_DOT1xMBA_, IFP_GROUP_L2CTL_ARP_REQUEST_,
          IFP_GROUP_L2CTL_ARP_REPLY_, IFP_GROUP_L2CTL_L3ROUTING_ } },
   };
   EXPECT_EQ( expected, shared );
}

TEST_F( GroupTable, DefinedGroupsFollowTheIndex ) {
   EXPECT_FALSE( isTcamGroupDefined( IFP_INVALID_GROUP_ ) );
   EXPECT_TRUE( isTcamGroupDefined( VFP_GROUP_CONDUIT_P4RT_VRF_ ) );
   EXPECT_FALSE( isTcamGroupDefined( HIGHEST_TCAM_GROUP_ ) );
   EXPECT_FALSE( isTcamGroupDefined( COMPRESS_GROUP_L4_SRC_PORT_ ) );
   EXPECT_FALSE( isTcamGroupDefined( 0xFFFFFFFFu ) );
   cleanupTcamGroups();
   for ( U32 groupId = 0; groupId <= COMPRESS_GROUP_ETHER_TYPE_; ++groupId ) {
      EXPECT_FALSE( isTcamGroupDefined( groupId ) ) << groupId;
   }
   // A second start after cleanup rebuilds the same index.
   initTcamGroups();
   for ( U32 groupId = 1; groupId < HIGHEST_TCAM_GROUP_; ++groupId ) {
      EXPECT_TRUE( isTcamGroupDefined( groupId ) ) << groupId;
   }
}

TEST_F( GroupTable, LookupsOutsideTheGroupsAbort ) {
   for ( U32 groupId : { 0u, 86u, 87u, 0xFFFFFFFFu } ) {
      EXPECT_DEATH( getGroupPriority( groupId ), assertionReport( priority, rangeCheck ) );
      EXPECT_DEATH( getTcamGroupFields( groupId, 0 ), assertionReport( fields, rangeCheck ) );
   }
}

TEST_F( GroupTable, LookupsBeforeTheIndexIsBuiltAbort ) {
   cleanupTcamGroups();
   EXPECT_DEATH( getGroupPriority( IFP_GROUP_IP_ACL_ ),
                 assertionReport( priority, "groupIndex" ) );
   EXPECT_DEATH( getTcamGroupFields( IFP_GROUP_IP_ACL_, 0 ),
                 assertionReport( fields, "groupIndex" ) );
   // The mirroring lists do not depend on the index.
   EXPECT_NE( nullptr, getTcamGroupFields( IFP_GROUP_MIRROR_ACL_1_, 1 ) );
}

TEST_F( GroupTable, InitialisingTwiceOrFromABadRowAborts ) {
   EXPECT_DEATH( initTcamGroups(), assertionReport( init, "!groupIdToIndex[ groupId ]" ) );
   EXPECT_DEATH(
      {
         cleanupTcamGroups();
         const_cast< TcamGroupDef * >( getTcamGroupDef( 40 ) )->groupId =
            HIGHEST_TCAM_GROUP_;
         initTcamGroups();
      },
      assertionReport( init, "groupId < HIGHEST_TCAM_GROUP_" ) );
   EXPECT_DEATH(
      {
         cleanupTcamGroups();
         const_cast< TcamGroupDef * >( getTcamGroupDef( 1 ) )->groupId = -1;
         initTcamGroups();
      },
      assertionReport( init, "groupId < HIGHEST_TCAM_GROUP_" ) );
}

TEST_F( GroupTable, MirroringGroupsTakeTheListOfTheirType ) {
   for ( U32 groupId = IFP_GROUP_MIRROR_ACL_1_; groupId <= IFP_GROUP_MIRROR_ACL_4_;
         ++groupId ) {
      EXPECT_EQ( 15u, listOf( getTcamGroupFields( groupId, 1 ), 16 ).size() );
      EXPECT_EQ( 8u, listOf( getTcamGroupFields( groupId, 2 ), 9 ).size() );
      EXPECT_EQ( 16u, listOf( getTcamGroupFields( groupId, 0 ), 17 ).size() );
      EXPECT_EQ( getTcamGroupFields( IFP_GROUP_MIRROR_ACL_1_, 2 ),
                 getTcamGroupFields( groupId, 2 ) );
      // The row itself is empty: the type decides.
      EXPECT_EQ( -1, rowOf( groupId )->fields[ 0 ] );
   }
   const char * typeCheck = "( mirrorAclType >= 0 ) && ( mirrorAclType <= 2 )";
   EXPECT_DEATH( getTcamGroupFields( IFP_GROUP_MIRROR_ACL_4_, 3 ),
                 assertionReport( fields, typeCheck ) );
   EXPECT_DEATH( getTcamGroupFields( IFP_GROUP_MIRROR_ACL_2_, -1 ),
                 assertionReport( fields, typeCheck ) );
   // Other groups ignore the type.
   EXPECT_EQ( getTcamGroupFields( IFP_GROUP_IP_ACL_, 0 ),
              getTcamGroupFields( IFP_GROUP_IP_ACL_, 2 ) );
   EXPECT_EQ( getTcamGroupFields( IFP_GROUP_IP_ACL_, 0 ),
              getTcamGroupFields( IFP_GROUP_IP_ACL_, 77 ) );
}
