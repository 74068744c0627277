// Qualifier tokens of the catalogue's compiled-in tables.
//
// The SDK's qualifier values are known only at run time (the shim reports
// each one), so the tables name qualifiers by these tokens and translate
// them once, when a table is first filled. A token's value means nothing
// to the SDK; only qualifierValue() does.
#pragma once

#include "platform/kiln/Types.h"

namespace Tessel {

enum class Qual : U8 {
   none = 0, // ends a token list
   SrcIp6,
   DstIp6,
   SrcIp6High,
   DstIp6High,
   SrcIp,
   DstIp,
   SrcMac,
   DstMac,
   InPort,
   InPorts,
   OutPort,
   DevicePortBitmap,
   DstPort,
   SrcTrunk,
   L4SrcPort,
   L4DstPort,
   RangeCheck,
   EtherType,
   OuterVlanId,
   OuterVlanPri,
   OuterVlanCfi,
   InnerVlanId,
   InnerVlanPri,
   VlanFormat,
   ForwardingVlanId,
   IpProtocol,
   DSCP,
   Ttl,
   Ip6HopLimit,
   Ip6NextHeader,
   Ip6TrafficClass,
   Ip6FlowLabel,
   TcpControl,
   IpFrag,
   IpType,
   IpInfo,
   L2Format,
   ForwardingType,
   TunnelType,
   VxlanNetworkId,
   IcmpTypeCode,
   PacketRes,
   L3Routable,
   MyStationHit,
   L2SrcStatic,
   IpmcStarGroupHit,
   HiGig,
   CpuQueue,
   Drop,
   IngressStpState,
   IntPriority,
   Color,
   MirrorCopy,
   FabricQueueTag,
   EgressClassL3Interface,
   EgressClassL2Gre,
   EgressClassVxlan,
   DstClassField,
   DstClassL2,
   DstClassL3,
   SrcClassField,
   SrcClassL2,
   SrcClassL3,
   IngressClassField,
   InterfaceClassL2,
   InterfaceClassL3,
   InterfaceClassPort,
   InterfaceClassVPort,
   Vrf,
   DstL3Egress,
   DstMultipath,
   InnerSrcIp,
   InnerDstIp,
   InnerIpProtocol,
   DstIpClass,
   SrcIpClass,
   L4SrcPortClass,
   L4DstPortClass,
   IpProtocolClass,
   EtherTypeClass,
   CompressionSelect,
   CompressionAddrSelect,
   Stage,
   StageIngress,
   StageLookup,
   StageEgress,
   StageClass,
   MixedSrcClassId,
};

// The SDK value of a qualifier, asked of the installed shim (Shim::sdk_).
// Asserts that a shim is installed and that the token names a qualifier.
int
qualifierValue( Qual qual );

// Writes the SDK values of tokens[ 0 .. ), up to the first
// Qual::none into fields, followed by the -1 terminator. tokens holds at most
// slots - 1 tokens, so the terminator always fits.
void
fillQualifierSlots( const Qual * tokens, U32 slots, int * fields );

} // namespace Tessel
