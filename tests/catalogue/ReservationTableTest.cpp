#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <string>

#include "CatalogueFixture.h"
#include "catalogue/TesselTcamGroups.h"

using namespace Tessel;
using namespace CatalogueTest;

namespace {

std::string
lower( std::string text ) {
   std::transform( text.begin(), text.end(), text.begin(),
                   []( unsigned char c ) { return std::tolower( c ); } );
   return text;
}

// The stage that a reservation's names point at: "VFP" in either name means
// the lookup stage, "EFP" or "Egress" the egress stage.
std::optional< TcamStageTypes >
stageNamed( const TcamReservation & row ) {
   std::string names = lower( row.name ) + " " +
                       lower( TcamGroupAssignmentInstance::valueToStrep( row.featureId ) );
   if ( names.find( "vfp" ) != std::string::npos ) {
      return stageTypeLookup_;
   }
   if ( names.find( "efp" ) != std::string::npos ||
        names.find( "egress" ) != std::string::npos ) {
      return stageTypeEgress_;
   }
   return std::nullopt;
}

std::set< U32 >
featuresWhere( bool TcamReservation::*flag ) {
   std::set< U32 > features;
   for ( U32 i = 0; i < numTcamReservations(); ++i ) {
      if ( getTcamReservation( i )->*flag ) {
         features.insert( getTcamReservation( i )->featureId );
      }
   }
   return features;
}

} // namespace

using Reservations = Catalogue;

TEST_F( Reservations, WalkerAcceptsOneIndexPastTheLastRow ) {
   ASSERT_EQ( 127u, numTcamReservations() );
   EXPECT_STREQ( "IFP Nat Superset", getTcamReservation( 126 )->name );
   const TcamReservation * pastLast = getTcamReservation( 127 );
   ASSERT_NE( nullptr, pastLast );
   EXPECT_STREQ( "", pastLast->name );
   EXPECT_EQ( IFP_INVALID_GROUP_, pastLast->groupId );
   EXPECT_EQ( 0, pastLast->count );
   EXPECT_EQ( nullptr, getTcamReservation( 128 ) );
   EXPECT_EQ( nullptr, getTcamReservation( 0xFFFFFFFFu ) );
   EXPECT_NE( nullptr, getGroupMap( 0 ) );
   EXPECT_EQ( nullptr, getGroupMap( 1 ) );
   EXPECT_EQ( 0u, numGroupMapEntries() );
}

TEST_F( Reservations, EveryRowLivesInARealGroupOfTheStageItNames ) {
   std::set< U32 > features;
   for ( U32 i = 0; i < numTcamReservations(); ++i ) {
      const TcamReservation & row = *getTcamReservation( i );
      EXPECT_NE( std::string(), row.name ) << i;
      EXPECT_TRUE( features.insert( row.featureId ).second ) << row.name;
      EXPECT_LT( static_cast< U32 >( row.featureId ), numTcamGroupAssignmentValues );
      ASSERT_TRUE( isTcamGroupDefined( row.groupId ) ) << row.name;
      EXPECT_EQ( stageNamed( row ).value_or( stageTypeIngress_ ),
                 getGroupStage( row.groupId ) )
         << row.name << " in " << row.groupId;
   }
}

// Unbounded rows fix no count (-1) but for the "Group-Low" flow rows' 2;
// bounded ones never go negative.
TEST_F( Reservations, CountsFitTheirStrategies ) {
   for ( U32 i = 0; i < numTcamReservations(); ++i ) {
      const TcamReservation & row = *getTcamReservation( i );
      if ( row.strategy == tcamAllocateUnbounded() ) {
         EXPECT_TRUE( row.count == -1 || row.count == 2 ) << row.name;
      } else {
         EXPECT_GE( row.count, 0 ) << row.name;
      }
   }
}

TEST_F( Reservations, FlagsMarkTheirFeatureFamilies ) {
   EXPECT_EQ( ( std::set< U32 >{ openFlowUdfTcamGroup_, openFlowVxlanUdfTcamGroup_,
                                 mirroringAclTcamGroup1_, mirroringAclTcamGroup2_,
                                 mirroringAclTcamGroup3_, mirroringAclTcamGroup4_ } ),
              featuresWhere( &TcamReservation::runtimeQset ) );
   std::set< U32 > mapping = featuresWhere( &TcamReservation::mappingRow );
   EXPECT_EQ( ( std::set< U32 >{ vfpVxlanVpTcamGroup_, vfpVxlanSipHitGroup_,
                                 vxlanTransitPortVPTcamGroup_, vfpVfiExceptionTcamGroup_,
                                 vfpVfiPdpL2CtrlTcamGroup_, vfpPortVPTcamGroup_,
                                 vfpPdpClassTcamGroup_, efpVlanPriTcamGroup_ } ),
              mapping );
   for ( U32 i = 0; i < numTcamReservations(); ++i ) {
      const TcamReservation & row = *getTcamReservation( i );
      if ( row.mappingRow && row.featureId != efpVlanPriTcamGroup_ ) {
         EXPECT_EQ( stageTypeLookup_, getGroupStage( row.groupId ) ) << row.name;
      }
   }
   std::set< U32 > user = featuresWhere( &TcamReservation::userConfigurable );
   EXPECT_EQ( 50u, user.size() );
   for ( U32 feature : { ipAclTcamGroup_, macAclTcamGroup_, ip6PbrTcamGroup_,
                         loopProtectTcamGroup_, vfpTH3SystemAclGroup_, efpEcnCountTcamGroup_,
                         conduitP4RtPuntGroup_, openFlowUdfTcamGroup_ } ) {
      EXPECT_EQ( 1u, user.count( feature ) ) << TcamGroupAssignment( feature );
   }
   for ( U32 feature : { condiutP4RtPuntGroupReserved_, openFlowVxlanUdfTcamGroup_,
                         mirroringAclTcamGroup1_, policyCoppIpTcamGroup_ } ) {
      EXPECT_EQ( 0u, user.count( feature ) ) << TcamGroupAssignment( feature );
   }
}

TEST_F( Reservations, SkipFollowsTheUnitLayout ) {
   EXPECT_TRUE( skipReservation( vfpTH3SystemAclGroup_, false, false ) );
   EXPECT_TRUE( skipReservation( vfpTH3SystemAclGroup_, false, true ) );
   EXPECT_FALSE( skipReservation( vfpTH3SystemAclGroup_, true, false ) );
   EXPECT_TRUE( skipReservation( vfpTH3SystemAclGroup_, true, true ) );
   for ( bool th3SysAcl : { false, true } ) {
      EXPECT_TRUE( skipReservation( arpRequestInspectionTcamGroup_, true, th3SysAcl ) );
      EXPECT_FALSE( skipReservation( arpRequestInspectionTcamGroup_, false, th3SysAcl ) );
      EXPECT_TRUE( skipReservation( arpRequestInspectionTHxTcamGroup_, false, th3SysAcl ) );
      EXPECT_FALSE( skipReservation( arpRequestInspectionTHxTcamGroup_, true, th3SysAcl ) );
   }
   // Each control feature keeps exactly one of its two rows on a unit.
   const std::pair< U32, U32 > alternatives[] = {
      { arpRequestInspectionTHxTcamGroup_, arpRequestInspectionTcamGroup_ },
      { arpReplyInspectionTHxTcamGroup_, arpReplyInspectionTcamGroup_ },
      { dot1xTHxTcamGroup_, dot1xTcamGroup_ },
      { openFlowExceptionFlowTHxTcamGroup_, openFlowExceptionFlowTcamGroup_ },
      { openFlowManagementTHxTcamGroup_, openFlowManagementTcamGroup_ },
      { openFlowManagement2THxTcamGroup_, openFlowManagement2TcamGroup_ },
   };
   for ( bool thxLayout : { false, true } ) {
      for ( auto [ dedicated, shared ] : alternatives ) {
         bool keepsDedicated = !skipReservation( TcamGroupAssignment( dedicated ), thxLayout,
                                                 false );
         bool keepsShared = !skipReservation( TcamGroupAssignment( shared ), thxLayout, false );
         EXPECT_EQ( thxLayout, keepsDedicated ) << TcamGroupAssignment( dedicated );
         EXPECT_NE( keepsDedicated, keepsShared ) << TcamGroupAssignment( shared );
      }
   }
   // Everything else is kept in both layouts.
   U32 skipped[ 2 ] = {};
   for ( U32 i = 0; i < numTcamReservations(); ++i ) {
      for ( bool thxLayout : { false, true } ) {
         skipped[ thxLayout ] += skipReservation( getTcamReservation( i )->featureId,
                                                  thxLayout, false );
      }
   }
   EXPECT_EQ( 7u, skipped[ false ] );
   EXPECT_EQ( 6u, skipped[ true ] );
}

TEST_F( Reservations, OnlyPolicyRoutingNeedsTheMulticastPlaceholder ) {
   for ( U32 groupId = 0; groupId <= COMPRESS_GROUP_ETHER_TYPE_ + 1; ++groupId ) {
      bool pbr = groupId == IFP_GROUP_IP_PBR_ || groupId == IFP_GROUP_IPV6_PBR_;
      EXPECT_EQ( pbr, groupRequiresMulticastWAR( groupId ) ) << groupId;
      EXPECT_EQ( groupId == IFP_GROUP_IP_PBR_, isIPv4( groupId ) ) << groupId;
      EXPECT_EQ( groupId == IFP_GROUP_IPV6_PBR_, isIPv6( groupId ) ) << groupId;
   }
}
