// The unit tables filled when a unit becomes known (stages, stage names,
// group names) and the slice map filled on request.
#include <algorithm>
#include <set>
#include <vector>

#include "catalogue/TesselTcamGroups.h"
#include "common/TesselSdkCall.h"
#include "manager/SdkShimAccess.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/fastlog/Trace.h"
#include "sdk/shim/Oberon.h"
#include "show/TesselTcamStageNames.h"

TRACE_CHANNEL( "TesselTcamCliVault" );

namespace Tessel {

namespace {

// The stages the capacity query reports, each with the TCAM behind it.
std::vector< const oberon_tcam_stage_info * >
reportedStages( const oberon_tcam_capacity_info & info ) {
   std::vector< const oberon_tcam_stage_info * > stages;
   for ( int s = 0; s < std::min( info.num_stages, OBERON_TCAM_STAGES_MAX ); ++s ) {
      if ( info.stages[ s ].tcam_slices > 0 ) {
         stages.push_back( &info.stages[ s ] );
      }
   }
   return stages;
}

// The stage qualifier that names each stage id to the SDK.
std::vector< bcm_field_qualify_t >
stageQualifiers() {
   const Shim::Sdk & s = sdkShim();
   auto q = []( int value ) { return static_cast< bcm_field_qualify_t >( value ); };
   return { q( s.AR_bcmFieldQualifyStageIngress() ), q( s.AR_bcmFieldQualifyStageLookup() ),
            q( s.AR_bcmFieldQualifyStageEgress() ) };
}

// Drops the rows whose key is not in `keep`.
template< typename Mount >
void
dropOtherRows( Mount & mount, const std::set< U32 > & keep ) {
   for ( Id key : mount.recordKeys() ) {
      if ( !keep.count( key.value ) ) {
         mount.recordDel( key );
      }
   }
}

U32
pipesOfUnit( const TesselTcamGroupManager & manager, U32 unit ) {
   const Agent::ChipInfo * info = manager.chipInfo( unit );
   return info ? info->numPipes() : sdkShim().numPipes( unit );
}

} // namespace

void
TesselTcamGroupManager::dumpStageData( U16 unit, const Kiln::Ptr< VaultStagesMount > & mount ) {
   TRACE8( "dumpStageData unit " << unit );
   oberon_tcam_capacity_info info;
   SDK_CALL_CHECKED( oberon_bcm_tcam_capacity_info_get( unit, &info ) );
   const std::vector< bcm_field_qualify_t > stageIdQualifiers = stageQualifiers();
   bool halveIfp = !sdkShim().ifpSliceSizeExempt( unit );
   std::set< U32 > keys;
   for ( const oberon_tcam_stage_info * stage : reportedStages( info ) ) {
      if ( size_t( stage->stage_id ) >= stageIdQualifiers.size() ) {
         continue;
      }
      bcm_field_group_oper_mode_t mode = bcmFieldGroupOperModeGlobal;
      SDK_CALL_UNIT( unit, bcm_field_group_oper_mode_get(
                              unit, stageIdQualifiers[ stage->stage_id ], &mode ) );
      bool pipeLocal = mode == bcmFieldGroupOperModePipeLocal;
      int size = stage->stage_id == bcmFieldStageIngress && halveIfp ? stage->tcam_sz / 2
                                                                      : stage->tcam_sz;
      mount->vaultStageInfoIs( { U32( stage->stage_id ), U8( mode ),
                                 pipeLocal ? pipesOfUnit( *this, unit ) : 1u, U32( size ) } );
      keys.insert( U32( stage->stage_id ) );
   }
   dropOtherRows( *mount, keys );
}

void
TesselTcamGroupManager::dumpStageNames( U16 unit,
                                        const Kiln::Ptr< VaultStageNamesMount > & mount ) {
   TRACE8( "dumpStageNames unit " << unit );
   oberon_tcam_capacity_info info;
   SDK_CALL_CHECKED( oberon_bcm_tcam_capacity_info_get( unit, &info ) );
   std::set< U32 > keys;
   for ( const oberon_tcam_stage_info * stage : reportedStages( info ) ) {
      mount->vaultNameIs( { U32( stage->stage_id ), tcamStageName( stage->stage_id ) } );
      keys.insert( U32( stage->stage_id ) );
   }
   dropOtherRows( *mount, keys );
}

void
TesselTcamGroupManager::dumpGroupNames( U16 unit,
                                        const Kiln::Ptr< VaultGroupNamesMount > & mount ) {
   TRACE8( "dumpGroupNames unit " << unit );
   if ( !mount->table() ) {
      return;
   }
   Vault::TableWriter::Batch batch( *mount->table() );
   mount->vaultNameDelAll();
   for ( U32 group = IFP_INVALID_GROUP_ + 1; group <= COMPRESS_GROUP_ETHER_TYPE_; ++group ) {
      if ( group != HIGHEST_TCAM_GROUP_ ) {
         mount->vaultNameIs(
            { group, TcamGroupIdInstance::valueToStrep( static_cast< TcamGroupId >( group ) ) } );
      }
   }
}

} // namespace Tessel
