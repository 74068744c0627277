// User-defined fields outside the field processor: the UDF module (a UDF
// object extracts bits at a layer offset for the packet formats it is added
// to) and the flex parser (chunks extract bytes of abstract packet formats).
// Both yield UDF ids that groups add with bcm_field_qset_udf_add and entries
// match with bcm_field_qualify_udf.
#pragma once

#include "sdk/api/field.h"

typedef int bcm_udf_id_t;
typedef int bcm_udf_pkt_format_id_t;
typedef uint32_t bcm_udf_pkt_format_options_t;

#define BCM_UDF_PKT_FORMAT_MAX 64 // packet formats one UDF may carry

typedef enum bcm_udf_layer_e {
   bcmUdfLayerL2Header = 0,
   bcmUdfLayerL3OuterHeader = 1,
   bcmUdfLayerL3InnerHeader = 2,
   bcmUdfLayerL4OuterHeader = 3,
   bcmUdfLayerL4InnerHeader = 4,
   bcmUdfLayerCount = 5
} bcm_udf_layer_t;

// bcm_udf_t.flags
#define BCM_UDF_CREATE_O_WITHID 0x1

typedef struct bcm_udf_s {
   uint32_t flags;
   bcm_udf_layer_t layer;
   uint32_t start_bit; // from the start of the layer; a multiple of 8
   uint32_t bit_width; // a multiple of 8, at most 128
} bcm_udf_t;

// Allocation hints; none are needed here, pass null.
typedef struct bcm_udf_alloc_hints_s {
   uint32_t flags;
} bcm_udf_alloc_hints_t;

// Packet-format selectors of bcm_udf_pkt_format_info_t: alternatives as
// bits, or ..._ANY.
#define BCM_PKT_FORMAT_L2_ETH_II 0x1
#define BCM_PKT_FORMAT_L2_SNAP 0x2
#define BCM_PKT_FORMAT_L2_LLC 0x4
#define BCM_PKT_FORMAT_L2_ANY 0xffff
#define BCM_PKT_FORMAT_VLAN_TAG_NONE 0x1
#define BCM_PKT_FORMAT_VLAN_TAG_SINGLE 0x2
#define BCM_PKT_FORMAT_VLAN_TAG_DOUBLE 0x4
#define BCM_PKT_FORMAT_VLAN_TAG_ANY 0xffff
#define BCM_PKT_FORMAT_IP_NONE 0x1
#define BCM_PKT_FORMAT_IP4 0x2
#define BCM_PKT_FORMAT_IP6 0x4
#define BCM_PKT_FORMAT_IP_ANY 0xffff
#define BCM_PKT_FORMAT_TUNNEL_NONE 0x1
#define BCM_PKT_FORMAT_TUNNEL_IP_IN_IP 0x2
#define BCM_PKT_FORMAT_TUNNEL_GRE 0x4
#define BCM_PKT_FORMAT_TUNNEL_ANY 0xffff

typedef struct bcm_udf_pkt_format_info_s {
   int prio;
   bcm_ethertype_t ethertype;
   bcm_ethertype_t ethertype_mask;
   uint8_t ip_protocol;
   uint8_t ip_protocol_mask;
   uint16_t l2;
   uint16_t vlan_tag;
   uint16_t outer_ip;
   uint16_t inner_ip;
   uint16_t tunnel;
} bcm_udf_pkt_format_info_t;

// bcm_udf_pkt_format_options_t
#define BCM_UDF_PKT_FORMAT_CREATE_O_WITHID 0x1

// Abstract packet formats of the flex parser.
typedef enum bcm_udf_abstract_pkt_format_e {
   bcmUdfAbstractPktFormatLlc = 0,
   bcmUdfAbstractPktFormatUnknownL3 = 1,   // Ethernet, L3 not parsed
   bcmUdfAbstractPktFormatArp = 2,
   bcmUdfAbstractPktFormatIpv4UnknownL4 = 3,
   bcmUdfAbstractPktFormatIpv6UnknownL4 = 4,
   bcmUdfAbstractPktFormatIpv4Tcp = 5,
   bcmUdfAbstractPktFormatIpv4Udp = 6,
   bcmUdfAbstractPktFormatIpv4Sctp = 7,
   bcmUdfAbstractPktFormatIpv4Icmp = 8,
   bcmUdfAbstractPktFormatIpv6Tcp = 9,
   bcmUdfAbstractPktFormatIpv6Udp = 10,
   bcmUdfAbstractPktFormatIpv6Sctp = 11,
   bcmUdfAbstractPktFormatIpv6Icmp = 12,
   bcmUdfAbstractPktFormatIpv4Ipv4Tcp = 13,
   bcmUdfAbstractPktFormatIpv4Ipv4Udp = 14,
   bcmUdfAbstractPktFormatIpv4Ipv6Tcp = 15,
   bcmUdfAbstractPktFormatIpv4Ipv6Udp = 16,
   bcmUdfAbstractPktFormatIpv4GreIpv4Tcp = 17,
   bcmUdfAbstractPktFormatIpv4GreIpv4Udp = 18,
   bcmUdfAbstractPktFormatIpv4UdpVxlan = 19,
   bcmUdfAbstractPktFormatIpv6UdpVxlan = 20,
   bcmUdfAbstractPktFormatCount = 21
} bcm_udf_abstract_pkt_format_t;

typedef struct bcm_udf_abstract_pkt_format_info_s {
   uint32_t base_offset;    // bytes from the packet start to the format's L3 header
   uint32_t num_chunks;     // chunks of the flex parser
   uint32_t chunk_bytes;    // bytes per chunk
   uint32_t used_chunk_bmap; // chunks already programmed on this format
} bcm_udf_abstract_pkt_format_info_t;

typedef struct bcm_udf_chunk_info_s {
   bcm_udf_abstract_pkt_format_t abstract_pkt_format;
   uint32_t chunk_bmap;   // the chunks to program
   uint32_t chunk_offset; // bytes from the format's L3 header
   uint32_t chunk_width;  // bytes, at most chunks x chunk bytes
   uint32_t flags;
} bcm_udf_chunk_info_t;

extern "C" {

void bcm_udf_t_init( bcm_udf_t * udf );
void bcm_udf_pkt_format_info_t_init( bcm_udf_pkt_format_info_t * info );
void bcm_udf_chunk_info_t_init( bcm_udf_chunk_info_t * info );

// BCM_E_RESOURCE when the unit's UDF extractors are used up; BCM_E_PARAM for
// a bad layer, start or width; BCM_E_UNAVAIL without the UDF module.
int bcm_udf_create( int unit, bcm_udf_alloc_hints_t * hints, bcm_udf_t * udf_info,
                    bcm_udf_id_t * udf_id );
// Destroys a UDF object or a flex-parser chunk object. BCM_E_BUSY while a
// group's qualifier set holds it or (UDF module) packet formats are added.
int bcm_udf_destroy( int unit, bcm_udf_id_t udf_id );
int bcm_udf_get( int unit, bcm_udf_id_t udf_id, bcm_udf_t * udf_info );

// BCM_E_RESOURCE when the unit's packet-format objects are used up.
int bcm_udf_pkt_format_create( int unit, bcm_udf_pkt_format_options_t options,
                               bcm_udf_pkt_format_info_t * pkt_format,
                               bcm_udf_pkt_format_id_t * pkt_format_id );
// BCM_E_BUSY while UDFs are added to it.
int bcm_udf_pkt_format_destroy( int unit, bcm_udf_pkt_format_id_t pkt_format_id );
int bcm_udf_pkt_format_info_get( int unit, bcm_udf_pkt_format_id_t pkt_format_id,
                                 bcm_udf_pkt_format_info_t * pkt_format );
// BCM_E_EXISTS when added already; BCM_E_RESOURCE when the UDF carries
// BCM_UDF_PKT_FORMAT_MAX formats.
int bcm_udf_pkt_format_add( int unit, bcm_udf_id_t udf_id,
                            bcm_udf_pkt_format_id_t pkt_format_id );
int bcm_udf_pkt_format_delete( int unit, bcm_udf_id_t udf_id,
                               bcm_udf_pkt_format_id_t pkt_format_id );
// The formats the UDF carries; *actual is their number, of which the first
// max are written.
int bcm_udf_pkt_format_get_all( int unit, bcm_udf_id_t udf_id, int max,
                                bcm_udf_pkt_format_id_t * pkt_format_id_list, int * actual );

// Flex parser. BCM_E_UNAVAIL without one.
int bcm_udf_abstract_pkt_format_info_get( int unit, bcm_udf_abstract_pkt_format_t apf,
                                          bcm_udf_abstract_pkt_format_info_t * info );
// Programs the chunks of chunk_bmap on the abstract format. BCM_E_BUSY when a
// chunk is in use on that format; BCM_E_PARAM when the width exceeds the
// chunks or the bitmap names chunks the parser does not have.
int bcm_udf_chunk_create( int unit, bcm_udf_alloc_hints_t * hints, bcm_udf_chunk_info_t * info,
                          bcm_udf_id_t * udf_id );
int bcm_udf_chunk_info_get( int unit, bcm_udf_id_t udf_id, bcm_udf_chunk_info_t * info );

// Adds a UDF object or chunk to the qualifier set (it must exist).
int bcm_field_qset_udf_add( int unit, bcm_field_qset_t * qset, bcm_udf_id_t udf_id );

}
