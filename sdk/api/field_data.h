// Data qualifiers: the field processor's own user-defined fields (chips
// without the UDF module). A data qualifier extracts length bytes at an
// offset from a base of the packet, for the packet formats (or ethertypes)
// added to it; groups add it to their qualifier set with
// bcm_field_qset_data_qualifier_add and entries match it with
// bcm_field_qualify_data.
#pragma once

#include "sdk/api/field.h"

typedef enum bcm_field_data_offset_base_e {
   bcmFieldDataOffsetBasePacketStart = 0,
   bcmFieldDataOffsetBaseOuterL3Header = 1,
   bcmFieldDataOffsetBaseInnerL3Header = 2,
   bcmFieldDataOffsetBaseOuterL4Header = 3,
   bcmFieldDataOffsetBaseInnerL4Header = 4,
   bcmFieldDataOffsetBaseCount = 5
} bcm_field_data_offset_base_t;

// bcm_field_data_qualifier_t.flags
#define BCM_FIELD_DATA_QUALIFIER_WITH_ID 0x1

#define BCM_FIELD_DATA_QUALIFIER_LENGTH_MAX 16 // bytes

typedef struct bcm_field_data_qualifier_s {
   int qual_id;      // in with WITH_ID, out always
   uint32_t flags;
   bcm_field_data_offset_base_t offset_base;
   int byte_offset;  // from the base
   int byte_length;  // 1 .. BCM_FIELD_DATA_QUALIFIER_LENGTH_MAX
} bcm_field_data_qualifier_t;

// Packet-format selectors. Each field is a set of alternatives (bits) or
// ..._ANY for any packet.
#define BCM_FIELD_DATA_FORMAT_L2_ETH_II 0x1
#define BCM_FIELD_DATA_FORMAT_L2_SNAP 0x2
#define BCM_FIELD_DATA_FORMAT_L2_LLC 0x4
#define BCM_FIELD_DATA_FORMAT_L2_ANY 0xffff
#define BCM_FIELD_DATA_FORMAT_VLAN_NO_TAG 0x1
#define BCM_FIELD_DATA_FORMAT_VLAN_SINGLE_TAGGED 0x2
#define BCM_FIELD_DATA_FORMAT_VLAN_DOUBLE_TAGGED 0x4
#define BCM_FIELD_DATA_FORMAT_VLAN_TAG_ANY 0xffff
#define BCM_FIELD_DATA_FORMAT_IP_NONE 0x1
#define BCM_FIELD_DATA_FORMAT_IP4 0x2
#define BCM_FIELD_DATA_FORMAT_IP6 0x4
#define BCM_FIELD_DATA_FORMAT_IP_ANY 0xffff
#define BCM_FIELD_DATA_FORMAT_TUNNEL_NONE 0x1
#define BCM_FIELD_DATA_FORMAT_TUNNEL_IP_IN_IP 0x2
#define BCM_FIELD_DATA_FORMAT_TUNNEL_GRE 0x4
#define BCM_FIELD_DATA_FORMAT_TUNNEL_ANY 0xffff

typedef struct bcm_field_data_packet_format_s {
   int relative_offset; // added to the qualifier's offset for this format
   uint16_t l2;
   uint16_t vlan_tag;
   uint16_t outer_ip;
   uint16_t inner_ip;
   uint16_t tunnel;
} bcm_field_data_packet_format_t;

typedef struct bcm_field_data_ethertype_s {
   int relative_offset;
   bcm_ethertype_t ethertype;
   uint16_t l2;
   uint16_t vlan_tag;
} bcm_field_data_ethertype_t;

extern "C" {

void bcm_field_data_qualifier_t_init( bcm_field_data_qualifier_t * qual );
// All selectors ..._ANY, offsets 0.
void bcm_field_data_packet_format_t_init( bcm_field_data_packet_format_t * format );
void bcm_field_data_ethertype_t_init( bcm_field_data_ethertype_t * etype );

// BCM_E_RESOURCE when the unit's data qualifiers or their extraction bytes
// are used up; BCM_E_PARAM for a bad length, offset or base; BCM_E_EXISTS
// (WITH_ID) when the id is taken; BCM_E_UNAVAIL on a unit without data
// qualifiers.
int bcm_field_data_qualifier_create( int unit, bcm_field_data_qualifier_t * qual );
// BCM_E_BUSY while a group's qualifier set holds it or packet formats or
// ethertypes are still added.
int bcm_field_data_qualifier_destroy( int unit, int qual_id );
int bcm_field_data_qualifier_get( int unit, int qual_id, bcm_field_data_qualifier_t * qual );

// BCM_E_RESOURCE when the unit's packet-format slots are used up;
// BCM_E_EXISTS when the same format is added twice.
int bcm_field_data_qualifier_packet_format_add( int unit, int qual_id,
                                                bcm_field_data_packet_format_t * format );
// BCM_E_NOT_FOUND when the format was not added.
int bcm_field_data_qualifier_packet_format_delete( int unit, int qual_id,
                                                   bcm_field_data_packet_format_t * format );
int bcm_field_data_qualifier_ethertype_add( int unit, int qual_id,
                                            bcm_field_data_ethertype_t * etype );
int bcm_field_data_qualifier_ethertype_delete( int unit, int qual_id,
                                               bcm_field_data_ethertype_t * etype );

// Adds the data qualifier to the qualifier set (it must exist).
int bcm_field_qset_data_qualifier_add( int unit, bcm_field_qset_t * qset, int qual_id );

}
