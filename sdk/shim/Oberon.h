// The maker's own calls beside the SDK: flash programming at start-up, the
// TCAM capacity query and the location of a stat's counters. They are
// implemented over SDK calls only.
#pragma once

#include "sdk/api/error.h"
#include "sdk/api/field.h"

#define OBERON_TCAM_STAGES_MAX 5
#define OBERON_TCAM_SLICES_MAX 128
#define OBERON_STAT_INDICES_MAX BCM_FIELD_STAT_INDICES_MAX

typedef struct oberon_tcam_slice_info {
   int free_count;
   int entry_count;
} oberon_tcam_slice_info;

typedef struct oberon_tcam_stage_info {
   int stage_id;    // bcm_field_stage_t
   int tcam_sz;     // entries of the stage's TCAM
   int tcam_slices; // slices of the stage
   oberon_tcam_slice_info slices[ OBERON_TCAM_SLICES_MAX ];
} oberon_tcam_stage_info;

// All 32-bit signed integers: 1 + 5 x 259 of them.
typedef struct oberon_tcam_capacity_info {
   int num_stages;
   oberon_tcam_stage_info stages[ OBERON_TCAM_STAGES_MAX ];
} oberon_tcam_capacity_info;

static_assert( sizeof( oberon_tcam_capacity_info ) == ( 1 + 5 * 259 ) * sizeof( int ) );

// Where a stat object's counters live.
typedef struct oberon_stat_pool_index {
   int pipe;
   int pool_id;
   int num_indices;
   int indices[ OBERON_STAT_INDICES_MAX ];
} oberon_stat_pool_index;

// The code oberon_bcm_tcam_capacity_info_get returns when the unit's field
// processor cannot be reached.
#define OBERON_E_NO_FIELD_CONTROL BCM_E_INIT

extern "C" {

// Programs the unit's TCAMs from the state prepared during start-up: ends
// the unit's start-up staging (bcm_field_tcam_commit). An SDK result code.
int oberon_tcam_flash_program( int unit, bool hitlessStartup, bool lacpDrainNeeded,
                               bool skipTcamFlashDownload, bool verbose );

// Fills info from the unit's field control walk, under the field-processor
// lock: the buffer is zeroed, then one record per stage of the SDK's stage
// list in its order (at most 5); stages with ids above 2 are counted in
// num_stages but leave their record zero. OBERON_E_NO_FIELD_CONTROL, info
// untouched, when the unit's field control cannot be had. A null info is
// a programming error (assertion "info_p").
int oberon_bcm_tcam_capacity_info_get( int unit, oberon_tcam_capacity_info * info_p );

// The pipe, pool and counter indices of a stat object. An SDK result code.
int oberon_bcm_esw_field_stat_pool_index_( int unit, int statId, oberon_stat_pool_index * info );

}
