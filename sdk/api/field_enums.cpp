#include "sdk/api/field_enums.h"

#include "sdk/api/NameTable.h"

namespace {

const char * const qualifierNames[] = {
   "SrcIp6",
   "DstIp6",
   "SrcIp6High",
   "DstIp6High",
   "SrcIp",
   "DstIp",
   "SrcMac",
   "DstMac",
   "InPort",
   "InPorts",
   "OutPort",
   "DevicePortBitmap",
   "DstPort",
   "SrcTrunk",
   "L4SrcPort",
   "L4DstPort",
   "RangeCheck",
   "EtherType",
   "OuterVlanId",
   "OuterVlanPri",
   "OuterVlanCfi",
   "InnerVlanId",
   "InnerVlanPri",
   "VlanFormat",
   "ForwardingVlanId",
   "IpProtocol",
   "DSCP",
   "Ttl",
   "Ip6HopLimit",
   "Ip6NextHeader",
   "Ip6TrafficClass",
   "Ip6FlowLabel",
   "TcpControl",
   "IpFrag",
   "IpType",
   "IpInfo",
   "L2Format",
   "ForwardingType",
   "TunnelType",
   "VxlanNetworkId",
   "IcmpTypeCode",
   "PacketRes",
   "L3Routable",
   "MyStationHit",
   "L2SrcStatic",
   "IpmcStarGroupHit",
   "HiGig",
   "CpuQueue",
   "Drop",
   "IngressStpState",
   "IntPriority",
   "Color",
   "MirrorCopy",
   "FabricQueueTag",
   "EgressClassL3Interface",
   "EgressClassL2Gre",
   "EgressClassVxlan",
   "DstClassField",
   "DstClassL2",
   "DstClassL3",
   "SrcClassField",
   "SrcClassL2",
   "SrcClassL3",
   "IngressClassField",
   "InterfaceClassL2",
   "InterfaceClassL3",
   "InterfaceClassPort",
   "InterfaceClassVPort",
   "Vrf",
   "DstL3Egress",
   "DstMultipath",
   "InnerSrcIp",
   "InnerDstIp",
   "InnerIpProtocol",
   "DstIpClass",
   "SrcIpClass",
   "L4SrcPortClass",
   "L4DstPortClass",
   "IpProtocolClass",
   "EtherTypeClass",
   "CompressionSelect",
   "CompressionAddrSelect",
   "Stage",
   "StageIngress",
   "StageLookup",
   "StageEgress",
   "StageClass",
   "MixedSrcClassId",
};
static_assert( sizeof( qualifierNames ) / sizeof( qualifierNames[ 0 ] ) ==
               bcmFieldQualifyCount );

const char * const actionNames[] = {
   "CopyToCpu",
   "CopyToCpuCancel",
   "Drop",
   "DropCancel",
   "RedirectPort",
   "RedirectPbmp",
   "RedirectTrunk",
   "RedirectEgrNextHop",
   "EgressMask",
   "EgressPortsAdd",
   "L3Switch",
   "L3SwitchCancel",
   "MirrorIngress",
   "MirrorEgress",
   "MirrorOverride",
   "CosQNew",
   "CosQCpuNew",
   "PrioIntNew",
   "DscpNew",
   "EcnNew",
   "DropPrecedence",
   "GpDrop",
   "YpDrop",
   "RpDrop",
   "OuterVlanNew",
   "InnerVlanNew",
   "OuterVlanPrioNew",
   "VrfSet",
   "ClassSourceSet",
   "ClassDestSet",
   "ClassSet",
   "PolicerGroup",
   "MeterConfig",
   "StatGroup",
   "IngSampleEnable",
   "Snoop",
   "TtlDecrementCancel",
   "NatEnable",
   "PfcTxEnable",
   "UseGlobalMeterColor",
   "ColorIndependent",
   "NewClassId",
};
static_assert( sizeof( actionNames ) / sizeof( actionNames[ 0 ] ) == bcmFieldActionCount );

const char * const statNames[] = {
   "Packets",
   "Bytes",
   "GreenPackets",
   "GreenBytes",
   "YellowPackets",
   "YellowBytes",
   "RedPackets",
   "RedBytes",
   "DropPackets",
   "DropBytes",
};
static_assert( sizeof( statNames ) / sizeof( statNames[ 0 ] ) == bcmFieldStatCount );

} // namespace

extern "C" const char *
bcm_field_qualify_name( int qualifier ) {
   return nameOf( qualifierNames, qualifier );
}

extern "C" const char *
bcm_field_action_name( int action ) {
   return nameOf( actionNames, action );
}

extern "C" const char *
bcm_field_stat_name( int statType ) {
   return nameOf( statNames, statType );
}
