#include "sdk/api/field_types.h"

#include "sdk/api/NameTable.h"

namespace {

const char * const stageNames[] = { "Ingress", "Lookup", "Egress",
                                    "External", "ExactMatch", "Class" };
static_assert( sizeof( stageNames ) / sizeof( stageNames[ 0 ] ) == bcmFieldStageCount );

const char * const groupModeNames[] = { "Default", "Single", "Double", "Triple", "Auto" };
static_assert( sizeof( groupModeNames ) / sizeof( groupModeNames[ 0 ] ) ==
               bcmFieldGroupModeCount );

const char * const forwardingTypeNames[] = { "Any", "L2", "L3", "Mpls" };
static_assert( sizeof( forwardingTypeNames ) / sizeof( forwardingTypeNames[ 0 ] ) ==
               bcmFieldForwardingTypeCount );

const char * const ipTypeNames[] = { "Any", "NonIp", "Ipv4Any", "Ipv6", "Arp" };
static_assert( sizeof( ipTypeNames ) / sizeof( ipTypeNames[ 0 ] ) == bcmFieldIpTypeCount );

const char * const tunnelTypeNames[] = { "Any", "None", "Ip", "Vxlan" };
static_assert( sizeof( tunnelTypeNames ) / sizeof( tunnelTypeNames[ 0 ] ) ==
               bcmFieldTunnelTypeCount );

const char * const ipFragNames[] = { "Non", "First", "NotFirst", "Any" };
static_assert( sizeof( ipFragNames ) / sizeof( ipFragNames[ 0 ] ) == bcmFieldIpFragCount );

const char * const l2FormatNames[] = { "Any", "EthII", "Snap", "Llc" };
static_assert( sizeof( l2FormatNames ) / sizeof( l2FormatNames[ 0 ] ) ==
               bcmFieldL2FormatCount );

const char * const colorNames[] = { "Green", "Yellow", "Red" };
static_assert( sizeof( colorNames ) / sizeof( colorNames[ 0 ] ) == bcmFieldColorCount );

} // namespace

extern "C" const char *
bcm_field_stage_name( int stage ) {
   return nameOf( stageNames, stage );
}

extern "C" const char *
bcm_field_group_mode_name( int mode ) {
   return nameOf( groupModeNames, mode );
}

extern "C" const char *
bcm_field_ForwardingType_name( int value ) {
   return nameOf( forwardingTypeNames, value );
}

extern "C" const char *
bcm_field_IpType_name( int value ) {
   return nameOf( ipTypeNames, value );
}

extern "C" const char *
bcm_field_TunnelType_name( int value ) {
   return nameOf( tunnelTypeNames, value );
}

extern "C" const char *
bcm_field_IpFrag_name( int value ) {
   return nameOf( ipFragNames, value );
}

extern "C" const char *
bcm_field_L2Format_name( int value ) {
   return nameOf( l2FormatNames, value );
}

extern "C" const char *
bcm_field_color_name( int value ) {
   return nameOf( colorNames, value );
}
