// Policers: two-rate meters that colour the packets of the entries they are
// attached to (bcm_field_entry_policer_attach). A policer meters in the pipe
// of the first entry it is attached to; the unit has a fixed number of
// meters per pipe.
#pragma once

#include "sdk/api/field.h"

// bcm_policer_config_t.flags
#define BCM_POLICER_WITH_ID 0x1      // use the id passed in
#define BCM_POLICER_COLOR_BLIND 0x2
#define BCM_POLICER_DROP_RED 0x4     // red packets are dropped

typedef enum bcm_policer_mode_e {
   bcmPolicerModeSrTcm = 0,     // single rate, committed and excess burst
   bcmPolicerModeTrTcm = 1,     // two rates
   bcmPolicerModeCommitted = 2, // single rate, single burst: green or red
   bcmPolicerModePassThrough = 3,
   bcmPolicerModeCount = 4
} bcm_policer_mode_t;

typedef struct bcm_policer_config_s {
   uint32_t flags;
   bcm_policer_mode_t mode;
   uint32_t ckbits_sec;   // committed rate, kbit/s
   uint32_t ckbits_burst; // committed burst, kbit
   uint32_t pkbits_sec;   // peak rate (TrTcm), kbit/s
   uint32_t pkbits_burst; // peak or excess burst, kbit
} bcm_policer_config_t;

extern "C" {

void bcm_policer_config_t_init( bcm_policer_config_t * config );

// With BCM_POLICER_WITH_ID in config->flags the id is *policer_id
// (BCM_E_EXISTS when taken), otherwise the SDK picks it. BCM_E_RESOURCE when
// the unit's meters are used up; BCM_E_PARAM for a bad mode.
int bcm_policer_create( int unit, bcm_policer_config_t * config, bcm_policer_t * policer_id );
int bcm_policer_set( int unit, bcm_policer_t policer_id, bcm_policer_config_t * config );
int bcm_policer_get( int unit, bcm_policer_t policer_id, bcm_policer_config_t * config );
// BCM_E_BUSY while attached to an entry.
int bcm_policer_destroy( int unit, bcm_policer_t policer_id );

}
