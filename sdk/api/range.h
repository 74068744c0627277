// Range checkers: match an L4 source port, L4 destination port or packet
// length against [min, max]. Entries qualify on a checker's id with
// bcm_field_qualify_RangeCheck. Two interfaces exist and a unit offers one
// (bcm_info_t capability BCM_INFO_CAP_RANGE_MODULE):
// - the older field-range API, one checker per unit: bcm_field_range_*;
// - the range module, one checker per pipe, restricted to the pipe's ports:
//   bcm_range_*.
#pragma once

#include "sdk/api/field.h"

// bcm_field_range_create flags
#define BCM_FIELD_RANGE_SRCPORT 0x1
#define BCM_FIELD_RANGE_DSTPORT 0x2
#define BCM_FIELD_RANGE_PACKET_LENGTH 0x100

typedef int bcm_range_t;

typedef enum bcm_range_type_e {
   bcmRangeTypeL4SrcPort = 0,
   bcmRangeTypeL4DstPort = 1,
   bcmRangeTypePacketLength = 2,
   bcmRangeTypeCount = 3
} bcm_range_type_t;

// bcm_range_create flags
#define BCM_RANGE_CREATE_WITH_ID 0x1

typedef struct bcm_range_config_s {
   bcm_range_t rid;   // in with WITH_ID, out always
   bcm_range_type_t rtype;
   uint32_t min;
   uint32_t max;
   bcm_pbmp_t ports;  // ports of one pipe; the checker lives in that pipe
} bcm_range_config_t;

extern "C" {

// Zeroes config; rtype L4 source port.
void bcm_range_config_t_init( bcm_range_config_t * config );

// Older API. flags: one of BCM_FIELD_RANGE_SRCPORT, _DSTPORT,
// _PACKET_LENGTH (other bits are kept). BCM_E_RESOURCE when the unit's
// checkers are used up; BCM_E_PARAM when min > max or no type bit is set;
// BCM_E_UNAVAIL on a unit with the range module.
int bcm_field_range_create( int unit, bcm_field_range_t * range, uint32_t flags,
                            bcm_l4_port_t min, bcm_l4_port_t max );
int bcm_field_range_create_id( int unit, bcm_field_range_t range, uint32_t flags,
                               bcm_l4_port_t min, bcm_l4_port_t max );
// BCM_E_BUSY while an entry checks it.
int bcm_field_range_destroy( int unit, bcm_field_range_t range );
int bcm_field_range_get( int unit, bcm_field_range_t range, uint32_t * flags,
                         bcm_l4_port_t * min, bcm_l4_port_t * max );

// Range module. The checker lives in the pipe of config.ports (all ports in
// one pipe, else BCM_E_PARAM); BCM_E_RESOURCE when that pipe's checkers are
// used up; BCM_E_UNAVAIL on a unit without the module.
int bcm_range_create( int unit, int flags, bcm_range_config_t * config );
// BCM_E_BUSY while an entry checks it.
int bcm_range_destroy( int unit, bcm_range_t rid );
// Fills config for config->rid.
int bcm_range_get( int unit, bcm_range_config_t * config );

}
