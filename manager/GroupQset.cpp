#include "manager/GroupQset.h"

#include <vector>

#include "catalogue/TesselTcamGroups.h"
#include "common/TesselSdkCall.h"
#include "manager/SdkShimAccess.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/fastlog/Trace.h"
#include "sdk/api/field_data.h"
#include "sdk/api/udf.h"

TRACE_CHANNEL( "TesselTcam" );

namespace Tessel {

namespace {

int
stageQualifier( U32 groupId ) {
   switch ( getGroupStage( groupId ) ) {
    case stageTypeLookup_:
      return sdkShim().AR_bcmFieldQualifyStageLookup();
    case stageTypeEgress_:
      return sdkShim().AR_bcmFieldQualifyStageEgress();
    default:
      return sdkShim().AR_bcmFieldQualifyStageIngress();
   }
}

void
addQuals( bcm_field_qset_t & qset, const int * quals ) {
   for ( ; *quals != -1; ++quals ) {
      TRACE9( "adding qual=" << *quals );
      sdkShim().ob_field_qset_add( &qset, *quals );
   }
}

void
removeQuals( bcm_field_qset_t & qset, const int * quals ) {
   for ( ; *quals != -1; ++quals ) {
      TRACE9( "removing qual=" << *quals );
      sdkShim().ob_field_qset_remove( &qset, *quals );
   }
}

// The unit's chip-type include row added, its exclude row removed.
void
applyQsetMods( const TesselTcamGroupManager & m, U32 unit, U32 groupId,
               bcm_field_qset_t & qset ) {
   GroupQsetModKey key{ groupId, m.chipTypeFromUnit( unit ) };
   if ( m.groupIdToIncludeIndexHas( key ) ) {
      addQuals( qset, getGroupIncludes( m.groupIdToIncludeIndex( key ) )->fields );
   }
   if ( m.groupIdToExcludeIndexHas( key ) ) {
      removeQuals( qset, getGroupExcludes( m.groupIdToExcludeIndex( key ) )->fields );
   }
}

void
addUdfQuals( const TesselTcamGroupManager & m, U32 unit, U32 groupId,
             bcm_field_qset_t & qset ) {
   U8 group = static_cast< U8 >( groupId );
   QualIdList quals;
   for ( const auto & udf : { m.groupIdToAclUdf( group ), m.groupIdToOpenFlowAclUdf( group ),
                              m.groupIdToOpenFlowVxlanAclUdf( group ) } ) {
      if ( udf ) {
         QualIdList ofUnit = udf->qualsOfUnit( unit );
         quals.insert( ofUnit.begin(), ofUnit.end() );
      }
   }
   for ( U32 qual : quals ) {
      TRACE9( "adding UDF qual=" << qual );
      addUdfQualifierToQset( unit, &qset, qual, m.chipInfo( unit ) );
   }
}

// The groups that share a slice with this one under the sharing flags.
std::vector< U32 >
sliceSharingPartners( const TesselTcamGroupManager & m, U32 groupId ) {
   auto other = [ groupId ]( U32 a, U32 b ) { return groupId == a ? b : a; };
   if ( ( groupId == IFP_GROUP_IP_ACL_ || groupId == IFP_GROUP_IPV6_ACL_ ) &&
        m.paclSliceSharingSupported() ) {
      return { other( IFP_GROUP_IP_ACL_, IFP_GROUP_IPV6_ACL_ ) };
   }
   if ( ( groupId == IFP_GROUP_POLICY_QOS_IP_ || groupId == IFP_GROUP_POLICY_QOS_IPV6_ ) &&
        m.qosAclSliceSharingSupported() ) {
      return { other( IFP_GROUP_POLICY_QOS_IP_, IFP_GROUP_POLICY_QOS_IPV6_ ) };
   }
   std::vector< U32 > partners;
   int type = m.groupMirroringAclType( groupId );
   bool mirror = groupId >= IFP_GROUP_MIRROR_ACL_1_ && groupId <= IFP_GROUP_MIRROR_ACL_4_;
   if ( mirror && type < 2 && m.mirrorAclSliceSharingSupported() ) {
      for ( U32 g = IFP_GROUP_MIRROR_ACL_1_; g <= IFP_GROUP_MIRROR_ACL_4_; ++g ) {
         if ( g != groupId && m.groupMirroringAclValid( g ) &&
              m.groupMirroringAclType( g ) == type ) {
            partners.push_back( g );
         }
      }
   }
   return partners;
}

void
adjustQualifiersForSliceSharing( const TesselTcamGroupManager & m, U32 unit, U32 groupId,
                                 bcm_field_qset_t & qset ) {
   for ( U32 partner : sliceSharingPartners( m, groupId ) ) {
      TRACE9( "sharing a slice with group " << partner );
      addQuals( qset, getTcamGroupFields( partner, m.groupMirroringAclType( partner ) ) );
      applyQsetMods( m, unit, partner, qset );
   }
}

} // namespace

bcm_field_qset_t
groupQset( const TesselTcamGroupManager & m, U32 unit, U32 groupId ) {
   bcm_field_qset_t qset;
   BCM_FIELD_QSET_INIT( qset );
   int stage = stageQualifier( groupId );
   TRACE9( "adding qual=" << stage );
   sdkShim().ob_field_qset_add( &qset, stage );
   addQuals( qset, getTcamGroupFields( groupId, m.groupMirroringAclType( groupId ) ) );
   addUdfQuals( m, unit, groupId, qset );
   applyQsetMods( m, unit, groupId, qset );
   adjustQualifiersForSliceSharing( m, unit, groupId, qset );
   return qset;
}

int
addUdfQualifierToQset( U32 unit, bcm_field_qset_t * qset, U32 qual,
                       const Agent::ChipInfo * chipInfo ) {
   if ( chipInfo && ( chipInfo->flexParser() || chipInfo->udfModule() ) ) {
      return SDK_CALL_UNIT( unit, bcm_field_qset_udf_add( unit, qset, qual ) );
   }
   return SDK_CALL_UNIT( unit, bcm_field_qset_data_qualifier_add( unit, qset, qual ) );
}

bool
qsetHas( const bcm_field_qset_t & qset, int qual ) {
   return sdkShim().ob_field_qset_test( qset, qual );
}

} // namespace Tessel
