#include "catalogue/TesselTcamGroups.h"

#include <string>

#include "catalogue/TcamTables.h"
#include "platform/kiln/Assert.h"

namespace Tessel {

namespace {

// Row of each group in the group table; 0 means no row (row 0 is never a
// real group). One spare entry past HIGHEST_TCAM_GROUP_ - 1 so that
// isTcamGroupDefined( HIGHEST_TCAM_GROUP_ ) reads a zero, never past the end.
U32 groupIdToIndex[ HIGHEST_TCAM_GROUP_ + 1 ];

} // namespace

void
initTcamGroups() {
   Tables::fillGroupQualifiers();
   const TcamGroupDef * rows = Tables::groupDefs();
   for ( U32 row = 0; row < numTcamGroupDefs; ++row ) {
      U32 groupId = static_cast< U32 >( rows[ row ].groupId );
      KILN_ASSERT( groupId < HIGHEST_TCAM_GROUP_ );
      KILN_ASSERT( !groupIdToIndex[ groupId ] );
      // Row 0 writes 0 for group 0, which keeps group 0 undefined.
      groupIdToIndex[ groupId ] = row;
   }
}

void
cleanupTcamGroups() {
   for ( U32 groupId = 0; groupId < HIGHEST_TCAM_GROUP_; ++groupId ) {
      groupIdToIndex[ groupId ] = 0;
   }
}

bool
isTcamGroupDefined( U32 groupId ) {
   if ( groupId > HIGHEST_TCAM_GROUP_ ) {
      return false;
   }
   return groupIdToIndex[ groupId ] != 0;
}

U32
getGroupPriority( U32 groupId ) {
   KILN_ASSERT( ( groupId > IFP_INVALID_GROUP_ ) && ( groupId < HIGHEST_TCAM_GROUP_ ) );
   U32 groupIndex = groupIdToIndex[ groupId ];
   KILN_ASSERT( groupIndex );
   return static_cast< U32 >( Tables::groupDefs()[ groupIndex ].priority );
}

int *
getTcamGroupFields( U32 groupId, int mirrorAclType ) {
   KILN_ASSERT( ( groupId > IFP_INVALID_GROUP_ ) && ( groupId < HIGHEST_TCAM_GROUP_ ) );
   if ( isMirrorAclGroup( groupId ) ) {
      KILN_ASSERT( ( mirrorAclType >= 0 ) && ( mirrorAclType <= 2 ) );
      return Tables::mirrorAclFields( mirrorAclType );
   }
   U32 groupIndex = groupIdToIndex[ groupId ];
   KILN_ASSERT( groupIndex );
   return Tables::groupDefs()[ groupIndex ].fields;
}

const TcamGroupDef *
getTcamGroupDef( U32 row ) {
   return row < numTcamGroupDefs ? &Tables::groupDefs()[ row ] : nullptr;
}

const TcamQsetModDef *
getGroupExcludes( U32 index ) {
   return index < numGroupExcludes ? &Tables::excludeRows()[ index ] : nullptr;
}

const TcamQsetModDef *
getGroupIncludes( U32 index ) {
   return index < numGroupIncludes ? &Tables::includeRows()[ index ] : nullptr;
}

const TcamReservation *
getTcamReservation( U32 index ) {
   // Accepts numTcamReservations() itself: storage has a zeroed row there.
   return index <= numTcamReservations() ? &Tables::reservationRows()[ index ] : nullptr;
}

U32
numTcamReservations() {
   return Tables::numReservationRows;
}

const TcamGroupMap *
getGroupMap( U32 index ) {
   return index == 0 ? Tables::groupMapRows() : nullptr;
}

U32
numGroupMapEntries() {
   return 0;
}

bool
groupRequiresMulticastWAR( U32 groupId ) {
   return isIPv4( groupId ) || isIPv6( groupId );
}

bool
isIPv4( U32 groupId ) {
   return groupId == IFP_GROUP_IP_PBR_;
}

bool
isIPv6( U32 groupId ) {
   return groupId == IFP_GROUP_IPV6_PBR_;
}

bool
skipReservation( TcamGroupAssignment featureId, bool thxLayout, bool th3SysAcl ) {
   if ( thxLayout ) {
      switch ( featureId ) {
       case vfpTH3SystemAclGroup_:
         return th3SysAcl;
       // The shared-group rows of ARP, dot1x and OpenFlow control.
       case arpRequestInspectionTcamGroup_:
       case arpReplyInspectionTcamGroup_:
       case dot1xTcamGroup_:
       case openFlowManagementTcamGroup_:
       case openFlowManagement2TcamGroup_:
       case openFlowExceptionFlowTcamGroup_:
         return true;
       default:
         return false;
      }
   }
   switch ( featureId ) {
    // The dedicated-group rows (groups 3, 4, 5 and 1), and the Th3 system ACL.
    case arpRequestInspectionTHxTcamGroup_:
    case arpReplyInspectionTHxTcamGroup_:
    case dot1xTHxTcamGroup_:
    case openFlowExceptionFlowTHxTcamGroup_:
    case openFlowManagementTHxTcamGroup_:
    case openFlowManagement2THxTcamGroup_:
    case vfpTH3SystemAclGroup_:
      return true;
    default:
      return false;
   }
}

TcamStageTypes
getGroupStage( U32 groupId ) {
   std::string name = TcamGroupIdInstance::valueToStrep( TcamGroupId( groupId ) );
   if ( name.starts_with( "IFP_" ) || name.starts_with( "COMPRESS_GROUP_" ) ) {
      return stageTypeIngress_;
   }
   if ( name.starts_with( "VFP_" ) ) {
      return stageTypeLookup_;
   }
   KILN_ASSERT_MSG( name.starts_with( "EFP_" ), "group has no stage" );
   return stageTypeEgress_;
}

} // namespace Tessel
