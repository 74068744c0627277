#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

#include "CatalogueFixture.h"
#include "catalogue/TesselTcamGroups.h"
#include "sdk/api/field_enums.h"
#include "sdk/shim/ChipType.h"

using namespace Tessel;
using namespace CatalogueTest;

namespace {

using Walker = const TcamQsetModDef * (*)( U32 );

std::vector< const TcamQsetModDef * >
walk( Walker walker ) {
   std::vector< const TcamQsetModDef * > rows;
   for ( U32 index = 0; walker( index ); ++index ) {
      rows.push_back( walker( index ) );
   }
   return rows;
}

std::vector< int >
qualsOf( const TcamQsetModDef * row ) {
   return listOf( row->fields, qsetModQualifierSlots );
}

std::string
describe( const TcamQsetModDef * row ) {
   return groupName( row->groupId ) + " on chip type " +
          std::to_string( row->chipType );
}

// A group's qualifiers before any chip adjustment; the mirroring groups can
// hold any of their three lists.
std::set< int >
baseQualifiers( U32 groupId ) {
   std::set< int > quals;
   bool mirror = groupId >= IFP_GROUP_MIRROR_ACL_1_ && groupId <= IFP_GROUP_MIRROR_ACL_4_;
   for ( int type : mirror ? std::vector< int >{ 0, 1, 2 } : std::vector< int >{ 0 } ) {
      for ( int qual : listOf( getTcamGroupFields( groupId, type ), tcamGroupQualifierSlots ) ) {
         quals.insert( qual );
      }
   }
   return quals;
}

const std::set< S32 > profileChipTypes = {
   Shim::chipTypeClassic, Shim::chipTypeTrident3, Shim::chipTypeThx, Shim::chipTypeTh3 };

std::set< int >
compressionClasses() {
   const Shim::Sdk & s = shim();
   return { s.AR_bcmFieldQualifySrcIpClass(),      s.AR_bcmFieldQualifyDstIpClass(),
            s.AR_bcmFieldQualifyL4SrcPortClass(),  s.AR_bcmFieldQualifyL4DstPortClass(),
            s.AR_bcmFieldQualifyIpProtocolClass(), s.AR_bcmFieldQualifyEtherTypeClass() };
}

} // namespace

using QsetModTables = Catalogue;

TEST_F( QsetModTables, WalkersStopAfterTheLastRow ) {
   EXPECT_NE( nullptr, getGroupExcludes( 178 ) );
   EXPECT_EQ( nullptr, getGroupExcludes( 179 ) );
   EXPECT_EQ( nullptr, getGroupExcludes( 0xFFFFFFFFu ) );
   EXPECT_NE( nullptr, getGroupIncludes( 191 ) );
   EXPECT_EQ( nullptr, getGroupIncludes( 192 ) );
   EXPECT_EQ( 179u, walk( getGroupExcludes ).size() );
   EXPECT_EQ( 192u, walk( getGroupIncludes ).size() );
}

// The group manager indexes both tables by key and aborts on a repeated
// key, so a repeated pair here would stop every start-up.
TEST_F( QsetModTables, EveryKeyNamesARealGroupAndAProfileChipOnce ) {
   for ( Walker walker : { getGroupExcludes, getGroupIncludes } ) {
      std::map< GroupQsetModKey, U32 > index;
      std::unordered_set< GroupQsetModKey > hashed;
      for ( const TcamQsetModDef * row : walk( walker ) ) {
         GroupQsetModKey key{ static_cast< U32 >( row->groupId ),
                              static_cast< U32 >( row->chipType ) };
         EXPECT_TRUE( index.emplace( key, 0 ).second ) << describe( row );
         EXPECT_TRUE( hashed.insert( key ).second ) << describe( row );
         EXPECT_TRUE( isTcamGroupDefined( key.groupId ) ) << describe( row );
         EXPECT_EQ( 1u, profileChipTypes.count( row->chipType ) ) << describe( row );
      }
   }
}

TEST_F( QsetModTables, RowsHoldShimQualifiersTheGroupStageSees ) {
   for ( Walker walker : { getGroupExcludes, getGroupIncludes } ) {
      for ( const TcamQsetModDef * row : walk( walker ) ) {
         std::vector< int > quals = qualsOf( row );
         ASSERT_LT( quals.size(), qsetModQualifierSlots ) << describe( row );
         EXPECT_EQ( quals.size(), setOf( quals ).size() ) << describe( row );
         for ( int qual : quals ) {
            EXPECT_NE( nullptr, bcm_field_qualify_name( qual ) ) << describe( row );
         }
         std::set< int > forbidden = forbiddenIn( getGroupStage( row->groupId ) );
         for ( int qual : quals ) {
            EXPECT_EQ( 0u, forbidden.count( qual ) )
               << describe( row ) << ": " << bcm_field_qualify_name( qual );
         }
      }
   }
}

TEST_F( QsetModTables, ExcludesRemoveOnlyWhatTheGroupHas ) {
   for ( const TcamQsetModDef * row : walk( getGroupExcludes ) ) {
      std::vector< int > quals = qualsOf( row );
      EXPECT_FALSE( quals.empty() ) << describe( row );
      EXPECT_EQ( 0, row->ipbmWar ) << describe( row );
      std::set< int > base = baseQualifiers( row->groupId );
      for ( int qual : quals ) {
         EXPECT_EQ( 1u, base.count( qual ) )
            << describe( row ) << " removes " << bcm_field_qualify_name( qual );
      }
   }
}

TEST_F( QsetModTables, IncludesAddOnlyWhatTheChipKeeps ) {
   std::map< GroupQsetModKey, std::set< int > > excluded;
   std::map< S32, std::set< int > > excludedOnChip;
   for ( const TcamQsetModDef * row : walk( getGroupExcludes ) ) {
      GroupQsetModKey key{ static_cast< U32 >( row->groupId ),
                           static_cast< U32 >( row->chipType ) };
      excluded[ key ] = setOf( qualsOf( row ) );
      excludedOnChip[ row->chipType ].merge( setOf( qualsOf( row ) ) );
   }
   for ( const TcamQsetModDef * row : walk( getGroupIncludes ) ) {
      GroupQsetModKey key{ static_cast< U32 >( row->groupId ),
                           static_cast< U32 >( row->chipType ) };
      std::set< int > kept = baseQualifiers( row->groupId );
      for ( int qual : excluded[ key ] ) {
         kept.erase( qual );
      }
      std::vector< int > quals = qualsOf( row );
      EXPECT_TRUE( !quals.empty() || row->ipbmWar == 1 ) << describe( row ) << ": empty row";
      for ( int qual : quals ) {
         const char * name = bcm_field_qualify_name( qual );
         EXPECT_EQ( 0u, kept.count( qual ) ) << describe( row ) << " re-adds " << name;
         // A chip never adds a qualifier that its keys lack elsewhere.
         EXPECT_EQ( 0u, excludedOnChip[ row->chipType ].count( qual ) )
            << describe( row ) << " adds " << name;
      }
   }
}

TEST_F( QsetModTables, OnlyThxPortAclsNeedTwoCopiesPerPipe ) {
   std::set< U32 > flagged;
   for ( const TcamQsetModDef * row : walk( getGroupIncludes ) ) {
      ASSERT_TRUE( row->ipbmWar == 0 || row->ipbmWar == 1 ) << describe( row );
      if ( row->ipbmWar ) {
         EXPECT_EQ( Shim::chipTypeThx, row->chipType ) << describe( row );
         EXPECT_EQ( stageTypeIngress_, getGroupStage( row->groupId ) ) << describe( row );
         flagged.insert( static_cast< U32 >( row->groupId ) );
      }
   }
   EXPECT_EQ( ( std::set< U32 >{ IFP_GROUP_IP_ACL_, IFP_GROUP_MAC_ACL_,
                                 IFP_GROUP_IPV6_STD_PACL_RACL_, IFP_GROUP_IPV6_ACL_ } ),
              flagged );
}

// Only Th3 has the compression groups that produce class ids.
TEST_F( QsetModTables, CompressedClassesAreAddedOnlyOnTh3 ) {
   std::set< U32 > th3Groups;
   for ( const TcamQsetModDef * row : walk( getGroupIncludes ) ) {
      for ( int qual : qualsOf( row ) ) {
         if ( compressionClasses().count( qual ) ) {
            EXPECT_EQ( Shim::chipTypeTh3, row->chipType ) << describe( row );
            th3Groups.insert( static_cast< U32 >( row->groupId ) );
         }
      }
   }
   for ( U32 acl : { IFP_GROUP_IP_ACL_, IFP_GROUP_IPV6_ACL_, IFP_GROUP_IP_RACL_,
                     IFP_GROUP_MAC_ACL_, IFP_GROUP_POLICY_QOS_IP_, IFP_GROUP_IP_PBR_ } ) {
      EXPECT_EQ( 1u, th3Groups.count( acl ) ) << TcamGroupId( acl );
   }
   for ( U32 control : { IFP_GROUP_L2CTL_L3ROUTING_, IFP_GROUP_COPP_IP_ } ) {
      EXPECT_EQ( 0u, th3Groups.count( control ) ) << TcamGroupId( control );
   }
}
