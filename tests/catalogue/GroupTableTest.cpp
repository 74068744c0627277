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

TEST_F( GroupTable, EveryGroupHasOneRow ) {
   std::map< U32, U32 > rowsPerGroup;
   for ( U32 row = 1; row < numTcamGroupDefs; ++row ) {
      ++rowsPerGroup[ static_cast< U32 >( getTcamGroupDef( row )->groupId ) ];
   }
   for ( U32 groupId = 1; groupId < HIGHEST_TCAM_GROUP_; ++groupId ) {
      EXPECT_EQ( 1u, rowsPerGroup[ groupId ] ) << TcamGroupId( groupId );
      EXPECT_TRUE( isTcamGroupDefined( groupId ) ) << TcamGroupId( groupId );
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
