// Field-processor enumerations besides qualifiers, actions and stat types:
// stages, group modes, pipe operating modes, hint types, and the values of
// the enumeration-valued qualifiers, with printable names where the show
// reports print them.
#pragma once

extern "C" {

// The stages of the field processor. The numbering is the stage id that the
// field control walk and the capacity query report.
typedef enum bcm_field_stage_e {
   bcmFieldStageIngress = 0, // IFP
   bcmFieldStageLookup = 1,  // VFP
   bcmFieldStageEgress = 2,  // EFP
   bcmFieldStageExternal = 3,
   bcmFieldStageExactMatch = 4,
   bcmFieldStageClass = 5,   // class-id compression
   bcmFieldStageCount = 6
} bcm_field_stage_t;

// Key width of a group: how many slices one entry row spans.
typedef enum bcm_field_group_mode_e {
   bcmFieldGroupModeDefault = 0, // narrowest width that holds the qualifier set
   bcmFieldGroupModeSingle = 1,
   bcmFieldGroupModeDouble = 2,
   bcmFieldGroupModeTriple = 3,
   bcmFieldGroupModeAuto = 4,    // as Default
   bcmFieldGroupModeCount = 5
} bcm_field_group_mode_t;

// Whether a stage runs once for the unit or once per pipe.
typedef enum bcm_field_group_oper_mode_e {
   bcmFieldGroupOperModeGlobal = 0,
   bcmFieldGroupOperModePipeLocal = 1,
   bcmFieldGroupOperModeCount = 2
} bcm_field_group_oper_mode_t;

typedef enum bcm_field_hint_type_e {
   bcmFieldHintTypeCompression = 0, // qualifier values compress into fewer bits
   bcmFieldHintTypeExtraction = 1,  // only bits start..end of the qualifier are keyed
   bcmFieldHintTypeGroupAutoExpansion = 2,
   bcmFieldHintTypeCount = 3
} bcm_field_hint_type_t;

typedef enum bcm_field_ForwardingType_e {
   bcmFieldForwardingTypeAny = 0,
   bcmFieldForwardingTypeL2 = 1,
   bcmFieldForwardingTypeL3 = 2,
   bcmFieldForwardingTypeMpls = 3,
   bcmFieldForwardingTypeCount = 4
} bcm_field_ForwardingType_t;

typedef enum bcm_field_IpType_e {
   bcmFieldIpTypeAny = 0,
   bcmFieldIpTypeNonIp = 1,
   bcmFieldIpTypeIpv4Any = 2,
   bcmFieldIpTypeIpv6 = 3,
   bcmFieldIpTypeArp = 4,
   bcmFieldIpTypeCount = 5
} bcm_field_IpType_t;

typedef enum bcm_field_TunnelType_e {
   bcmFieldTunnelTypeAny = 0,
   bcmFieldTunnelTypeNone = 1,
   bcmFieldTunnelTypeIp = 2,
   bcmFieldTunnelTypeVxlan = 3,
   bcmFieldTunnelTypeCount = 4
} bcm_field_TunnelType_t;

typedef enum bcm_field_IpFrag_e {
   bcmFieldIpFragNon = 0,
   bcmFieldIpFragFirst = 1,
   bcmFieldIpFragNotFirst = 2,
   bcmFieldIpFragAny = 3,
   bcmFieldIpFragCount = 4
} bcm_field_IpFrag_t;

typedef enum bcm_field_L2Format_e {
   bcmFieldL2FormatAny = 0,
   bcmFieldL2FormatEthII = 1,
   bcmFieldL2FormatSnap = 2,
   bcmFieldL2FormatLlc = 3,
   bcmFieldL2FormatCount = 4
} bcm_field_L2Format_t;

typedef enum bcm_field_color_e {
   bcmFieldColorGreen = 0,
   bcmFieldColorYellow = 1,
   bcmFieldColorRed = 2,
   bcmFieldColorCount = 3
} bcm_field_color_t;

// Printable names ("Ingress", "Double", "Ipv4Any" ...), or null outside the
// enumeration. The strings are static.
const char * bcm_field_stage_name( int stage );
const char * bcm_field_group_mode_name( int mode );
const char * bcm_field_ForwardingType_name( int value );
const char * bcm_field_IpType_name( int value );
const char * bcm_field_TunnelType_name( int value );
const char * bcm_field_IpFrag_name( int value );
const char * bcm_field_L2Format_name( int value );
const char * bcm_field_color_name( int value );

}
