// Units and ports: what a unit is (bcm_info_get) and which ports it has,
// per pipe (bcm_port_config_get).
#pragma once

#include "sdk/api/types.h"

// Device ids reported in bcm_info_t.device, one per chip family.
#define BCM_DEVICE_CLASSIC 0xb100
#define BCM_DEVICE_TRIDENT3 0xb300
#define BCM_DEVICE_THX 0xb400
#define BCM_DEVICE_TH3 0xb500
#define BCM_DEVICE_COMPACT 0xb600

// Capability bits of bcm_info_t.capability.
#define BCM_INFO_CAP_RANGE_MODULE 0x1      // bcm_range_* (else bcm_field_range_*)
#define BCM_INFO_CAP_UDF_MODULE 0x2        // bcm_udf_* objects on packet formats
#define BCM_INFO_CAP_FLEX_PARSER 0x4       // bcm_udf_chunk_* on abstract formats
#define BCM_INFO_CAP_DATA_QUALIFIERS 0x8   // bcm_field_data_qualifier_*
#define BCM_INFO_CAP_JOINED_UDF_WIDTH 0x10 // all ACL types share one UDF width
#define BCM_INFO_CAP_PIPE_LOCAL_INPORTS 0x20 // InPorts matches only the pipe's ports
#define BCM_INFO_CAP_IFP_DOUBLE_COUNT 0x40 // IFP slice sizes count half rows
#define BCM_INFO_CAP_SERIAL_MUX 0x80       // groups need serial mux allocation
#define BCM_INFO_CAP_CLASS_STAGE 0x100     // class-id compression stage
#define BCM_INFO_CAP_IFP_PIPE_LOCAL 0x200  // the ingress stage runs per pipe

typedef struct bcm_info_s {
   uint32_t vendor;
   uint32_t device;   // BCM_DEVICE_*
   uint32_t revision;
   uint32_t capability; // BCM_INFO_CAP_* bits
   int num_pipes;
   int udf_max_bytes;   // longest UDF extraction per unit, in bytes
   int flex_chunks;     // flex-parser chunks per unit
   int flex_chunk_bytes; // bytes per flex-parser chunk
} bcm_info_t;

// Ports of a unit. Front-panel ports are Ethernet (e); every pipe also has
// one loopback port (lb). per_pipe_pbmp[ p ] holds the front-panel ports and
// the loopback port of pipe p; entries of unused pipes are empty.
typedef struct bcm_port_config_s {
   bcm_pbmp_t e;     // front-panel Ethernet ports
   bcm_pbmp_t lb;    // loopback ports, one per pipe
   bcm_pbmp_t cpu;   // the CPU port
   bcm_pbmp_t port;  // e and lb
   bcm_pbmp_t all;   // port and cpu
   bcm_pbmp_t per_pipe_pbmp[ BCM_PIPES_MAX ];
   int num_pipes;
} bcm_port_config_t;

extern "C" {

// Fills info for the unit. BCM_E_UNIT for a unit that does not exist,
// BCM_E_PARAM for a null info. Reads constant chip facts only: callers may
// ask it at any time, the activity lock held or not.
int bcm_info_get( int unit, bcm_info_t * info );

// Fills config with the unit's ports. BCM_E_UNIT, BCM_E_PARAM as above.
int bcm_port_config_get( int unit, bcm_port_config_t * config );

// Zeroes config.
void bcm_port_config_t_init( bcm_port_config_t * config );

}
