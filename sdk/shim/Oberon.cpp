#include "sdk/shim/Oberon.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

// The shim's assertion, worded as the agent's own.
#define OBERON_ASSERT( expr )                                                              \
   ( ( expr )                                                                              \
        ? static_cast< void >( 0 )                                                         \
        : oberonAssertFailed( #expr, __FILE_NAME__, __LINE__, __PRETTY_FUNCTION__ ) )

[[noreturn]] void
oberonAssertFailed( const char * text, const char * file, int line,
                    const char * function ) {
   std::fprintf( stderr, "%s:%d: %s: Assertion '%s' failed.\n", file, line, function,
                 text );
   std::fflush( stderr );
   std::abort();
}

void
fillStage( const bcm_field_control_stage_t & stage, oberon_tcam_stage_info & record ) {
   record.stage_id = stage.stage_id;
   record.tcam_sz = stage.tcam_sz;
   record.tcam_slices = stage.tcam_slices;
   int slices = stage.tcam_slices < OBERON_TCAM_SLICES_MAX ? stage.tcam_slices
                                                           : OBERON_TCAM_SLICES_MAX;
   for ( int slice = 0; slice < slices; ++slice ) {
      record.slices[ slice ].free_count = stage.slices[ slice ].free_count;
      record.slices[ slice ].entry_count = stage.slices[ slice ].entry_count;
   }
}

} // namespace

extern "C" int
oberon_tcam_flash_program( int unit, bool hitlessStartup, bool lacpDrainNeeded,
                           bool skipTcamFlashDownload, bool verbose ) {
   uint32_t flags = ( hitlessStartup ? BCM_FIELD_COMMIT_HITLESS : 0 ) |
                    ( lacpDrainNeeded ? BCM_FIELD_COMMIT_LACP_DRAIN : 0 ) |
                    ( skipTcamFlashDownload ? BCM_FIELD_COMMIT_SKIP_DOWNLOAD : 0 );
   if ( verbose ) {
      std::printf( "oberon: programming TCAMs of unit %d (flags 0x%x)\n", unit, flags );
   }
   return bcm_field_tcam_commit( unit, flags );
}

extern "C" int
oberon_bcm_tcam_capacity_info_get( int unit, oberon_tcam_capacity_info * info_p ) {
   bcm_field_control_t * control = nullptr;
   if ( bcm_field_control_get( unit, &control ) < 0 || !control ) {
      return OBERON_E_NO_FIELD_CONTROL;
   }
   OBERON_ASSERT( info_p );
   std::memset( info_p, 0, sizeof( *info_p ) );
   int rc = FP_LOCK( unit );
   if ( rc < 0 ) {
      return rc;
   }
   int stages = 0;
   for ( bcm_field_control_stage_t * stage = control->stages;
         stage && stages < OBERON_TCAM_STAGES_MAX; stage = stage->next ) {
      // Records keep the SDK's list positions: a stage this query does not
      // report still takes its (zero) record.
      if ( stage->stage_id <= bcmFieldStageEgress ) {
         fillStage( *stage, info_p->stages[ stages ] );
      }
      ++stages;
   }
   FP_UNLOCK( unit );
   info_p->num_stages = stages;
   return BCM_E_NONE;
}

extern "C" int
oberon_bcm_esw_field_stat_pool_index_( int unit, int statId,
                                       oberon_stat_pool_index * info ) {
   if ( !info ) {
      return BCM_E_PARAM;
   }
   oberon_stat_pool_index found = {};
   int rc = bcm_field_stat_hw_info_get( unit, statId, &found.pipe, &found.pool_id,
                                        OBERON_STAT_INDICES_MAX, found.indices,
                                        &found.num_indices );
   if ( rc >= 0 ) {
      *info = found;
   }
   return rc;
}
