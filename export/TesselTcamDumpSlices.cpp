// dumpSliceData: the slice map of a stage and pipe, from the SDK's field
// control walk.
#include <map>
#include <vector>

#include "common/TesselSdkCall.h"
#include "manager/SdkShimAccess.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/fastlog/Trace.h"
#include "sdk/api/field.h"

TRACE_CHANNEL( "TesselTcamCliVault" );

namespace Tessel {

namespace {

struct SliceOwner {
   U32 groupId;
   U32 width;
   U32 member;
};

// Which group holds each slice of the stage, by slice number.
std::map< int, SliceOwner >
sliceOwners( int unit, const bcm_field_control_t & control, int stageId ) {
   std::map< int, SliceOwner > owners;
   for ( const bcm_field_control_group_t * group = control.groups; group; group = group->next ) {
      if ( group->stage_id != stageId ) {
         continue;
      }
      int count = 1;
      if ( SDK_CALL( bcm_field_group_mode_slice_count_get( unit, group->flags & 0xffff,
                                                           &count ) ) < 0 ) {
         count = 1;
      }
      for ( const bcm_field_control_slice_t * slice = group->slices; slice; slice = slice->next ) {
         for ( int k = 0; k < count; ++k ) {
            owners[ slice->slice_number + k ] = { U32( group->gid ), U32( count ), U32( k ) };
         }
      }
   }
   return owners;
}

// The slices of the stage in the pipe (every slice of a global stage),
// read under the field-processor lock. An SDK result code.
int
collectSlices( int unit, int stageId, int pipe, bool halveEntries,
               std::vector< VaultSliceInfo > & rows ) {
   bcm_field_control_t * control = nullptr;
   int rc = SDK_CALL( bcm_field_control_get( unit, &control ) );
   if ( rc < 0 || ( rc = SDK_CALL( FP_LOCK( unit ) ) ) < 0 ) {
      return rc;
   }
   const bcm_field_control_stage_t * stage = control->stages;
   while ( stage && stage->stage_id != stageId ) {
      stage = stage->next;
   }
   std::map< int, SliceOwner > owners = sliceOwners( unit, *control, stageId );
   for ( int s = 0; stage && s < stage->tcam_slices; ++s ) {
      const bcm_field_control_slice_t & slice = stage->slices[ s ];
      if ( slice.pipe >= 0 && slice.pipe != pipe ) {
         continue;
      }
      SliceOwner owner = owners.count( slice.slice_number ) ? owners[ slice.slice_number ]
                                                            : SliceOwner{ 0, 0, 0 };
      rows.push_back( { U32( slice.slice_number ),
                        U32( halveEntries ? slice.entry_count / 2 : slice.entry_count ),
                        U32( slice.free_count ), owner.groupId, owner.width, owner.member } );
   }
   SDK_CALL_NO_RC_CHECK( FP_UNLOCK( unit ) );
   return BCM_E_NONE;
}

} // namespace

void
TesselTcamGroupManager::dumpSliceData( const Kiln::Ptr< GroupManagerVaultRequest > & request ) {
   Kiln::Ptr< VaultSlicesMount > mount = Kiln::ptr_cast< VaultSlicesMount >( request->mounter() );
   if ( !mount || !mount->table() ) {
      return;
   }
   int unit = request->unit();
   int stageId = request->stageId();
   int pipe = request->pipeId();
   bool halve = stageId == bcmFieldStageIngress && !sdkShim().ifpSliceSizeExempt( unit );
   std::vector< VaultSliceInfo > rows;
   int rc;
   {
      Kiln::UnlockAnchor anchor( Kiln::ActivityUnlockAnchor::lock() );
      rc = collectSlices( unit, stageId, pipe, halve, rows );
   }
   if ( rc < 0 ) {
      TRACE2( "Unit: " << unit << " dumpSliceData cannot walk the field control (rc:" << rc
                       << ")" );
   }
   Vault::TableWriter::Batch batch( *mount->table() );
   mount->vaultSliceInfoDelAll();
   for ( const VaultSliceInfo & row : rows ) {
      mount->vaultSliceInfoIs( row );
   }
}

} // namespace Tessel
