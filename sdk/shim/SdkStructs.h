// C++ wrappers of SDK structures with the accessors that call sites use.
// Each derives from its C structure, starts initialised the SDK's way, and
// goes wherever the C structure's pointer is expected:
//
//    Shim::PortConfig portConfig;
//    bcm_port_config_get( unit, &portConfig );
//    rangeConfig.ports = portConfig.per_pipe( pipe );
#pragma once

#include "platform/kiln/Types.h"
#include "sdk/api/field.h"
#include "sdk/api/field_data.h"
#include "sdk/api/policer.h"
#include "sdk/api/port.h"
#include "sdk/api/range.h"
#include "sdk/api/udf.h"

namespace Shim {

struct PortConfig : bcm_port_config_t {
   PortConfig() { bcm_port_config_t_init( this ); }
   // Front-panel and loopback ports of the pipe; empty for a pipe the unit
   // does not have.
   bcm_pbmp_t per_pipe( U32 pipe ) const;
   // The loopback port of the pipe, or -1.
   int loopback_port( U32 pipe ) const;
};

struct GroupConfig : bcm_field_group_config_t {
   GroupConfig() { bcm_field_group_config_t_init( this ); }
   void flags_or( U32 flag ) { flags |= flag; }
   void flags_clear( U32 flag ) { flags &= ~flag; }
};

struct GroupStatus : bcm_field_group_status_t {
   GroupStatus() { bcm_field_group_status_t_init( this ); }
};

struct FieldHint : bcm_field_hint_t {
   FieldHint() { bcm_field_hint_t_init( this ); }
};

struct ClassInfo : bcm_field_class_info_t {
   ClassInfo() { bcm_field_class_info_t_init( this ); }
   void action_is( int value ) { action = static_cast< bcm_field_action_t >( value ); }
   void class_id_is( U64 value ) { class_id = value; }
};

struct PolicerConfig : bcm_policer_config_t {
   PolicerConfig() { bcm_policer_config_t_init( this ); }
   void flags_or( U32 flag ) { flags |= flag; }
};

struct RangeConfig : bcm_range_config_t {
   RangeConfig();
};

struct DataQualifier : bcm_field_data_qualifier_t {
   DataQualifier() { bcm_field_data_qualifier_t_init( this ); }
   int offset() const { return byte_offset; }
   int length() const { return byte_length; }
   void offset_is( int value ) { byte_offset = value; }
   void length_is( int value ) { byte_length = value; }
};

struct DataPacketFormat : bcm_field_data_packet_format_t {
   DataPacketFormat() { bcm_field_data_packet_format_t_init( this ); }
};

struct DataEthertype : bcm_field_data_ethertype_t {
   DataEthertype() { bcm_field_data_ethertype_t_init( this ); }
};

struct Udf : bcm_udf_t {
   Udf() { bcm_udf_t_init( this ); }
   U32 start() const { return start_bit; }
   U32 width() const { return bit_width; }
   void start_is( U32 bits ) { start_bit = bits; }
   void width_is( U32 bits ) { bit_width = bits; }
};

struct UdfPktFormatInfo : bcm_udf_pkt_format_info_t {
   UdfPktFormatInfo() { bcm_udf_pkt_format_info_t_init( this ); }
   // Same packets selected (prio aside).
   bool operator==( const UdfPktFormatInfo & other ) const;
};

struct UdfAbstractPktFormatInfo : bcm_udf_abstract_pkt_format_info_t {
   UdfAbstractPktFormatInfo() : bcm_udf_abstract_pkt_format_info_t{} {}
   U32 chunk_bmap_used() const { return used_chunk_bmap; }
};

struct UdfChunkInfo : bcm_udf_chunk_info_t {
   UdfChunkInfo() { bcm_udf_chunk_info_t_init( this ); }
   U32 offset() const { return chunk_offset; }
   U32 width() const { return chunk_width; }
   void offset_is( U32 bytes ) { chunk_offset = bytes; }
   void width_is( U32 bytes ) { chunk_width = bytes; }
};

} // namespace Shim
