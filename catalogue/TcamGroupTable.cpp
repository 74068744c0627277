// The group table and the mirroring ACL qualifier lists.
//
// Each group's key holds what its features match on:
// - ACL groups: port ACLs key on the in-port bitmap and outer VLAN, router
//   ACLs on the L3 interface class, VRF and forwarding VLAN; the IPv4 ones
//   on addresses, protocol, L4 ports, range checks, TCP flags, DSCP, TTL,
//   fragments and ICMP; the IPv6 ones on the IPv6 equivalents (next header,
//   traffic class, hop limit, flow label); "standard" IPv6 ACLs on
//   addresses only; MAC ACLs on MAC addresses, ethertype and VLAN tags.
// - Control-plane groups: what their traffic is recognised by (ports, MAC
//   and IP addresses, ethertype, protocol and ports, TTL for expiring
//   packets, my-station and routable flags, packet resolution).
// - VXLAN and VFI groups: tunnel type, VNI, inner headers, VP classes.
// - Lookup-stage (VFP) groups: only what is known before forwarding lookup
//   (ports, trunks, VLAN tags, headers); egress (EFP) groups: the out-port,
//   egress classes, internal priority and colour.
// A row holds at most 32 qualifiers so that its -1 terminator fits.
#include "catalogue/TcamTables.h"

#include <array>
#include <iterator>

#include "catalogue/QualifierToken.h"

namespace Tessel::Tables {

namespace {

using enum Qual;

struct GroupSource {
   TcamGroupId groupId;
   U32 priority;
   Qual quals[ tcamGroupQualifierSlots - 1 ];
};

// In table order; the mirroring ACL groups have empty rows because their
// list depends on the type of ACL the group carries (mirrorAclFields()).
constexpr GroupSource groupSources[] = {
   { IFP_INVALID_GROUP_, 0, {} },
   { IFP_GROUP_OPENFLOW_UDF_, 3, {
        InPort, SrcMac, DstMac, EtherType, OuterVlanId, OuterVlanPri, SrcIp, DstIp,
        IpProtocol, L4SrcPort, L4DstPort, DSCP, IpType, IcmpTypeCode } },
   { IFP_GROUP_OPENFLOW_VXLAN_, 4, {
        InPort, TunnelType, VxlanNetworkId, InnerSrcIp, InnerDstIp, InnerIpProtocol,
        SrcIp, DstIp, IpProtocol, L4SrcPort, L4DstPort, IpType } },
   { IFP_GROUP_OPENFLOW_L2_ONLY_, 5, {
        InPort, SrcMac, DstMac, EtherType, OuterVlanId, OuterVlanPri, VlanFormat } },
   { IFP_GROUP_OPENFLOW_FULL_, 6, {
        InPort, SrcMac, DstMac, EtherType, OuterVlanId, OuterVlanPri, VlanFormat, SrcIp,
        DstIp, IpProtocol, L4SrcPort, L4DstPort, DSCP, IpFrag, IpType, TcpControl,
        IcmpTypeCode, Ttl } },
   { IFP_GROUP_OPENFLOW_IPV6_PROTO_, 7, {
        InPort, OuterVlanId, EtherType, IpType, Ip6NextHeader, Ip6TrafficClass } },
   { IFP_GROUP_QOS_, 8, {
        InPort, InPorts, OuterVlanPri, OuterVlanCfi, VlanFormat, DSCP, Ip6TrafficClass,
        IpType, EtherType, HiGig } },
   { IFP_GROUP_COPP_IP_, 12, {
        InPort, InPorts, Vrf, SrcIp, DstIp, IpProtocol, L4SrcPort, L4DstPort, Ttl, IpFrag,
        IpType, IcmpTypeCode, TcpControl, PacketRes, MyStationHit, L3Routable,
        DstL3Egress, OuterVlanId, DSCP } },
   { IFP_GROUP_POLICY_QOS_IP_, 16, {
        InPorts, OuterVlanId, OuterVlanPri, SrcIp, DstIp, IpProtocol, L4SrcPort,
        L4DstPort, RangeCheck, TcpControl, DSCP, IpFrag, IpType, IcmpTypeCode } },
   { IFP_GROUP_SVI_POLICY_QOS_IP_, 42, {
        InPorts, ForwardingVlanId, InterfaceClassL3, OuterVlanPri, SrcIp, DstIp,
        IpProtocol, L4SrcPort, L4DstPort, RangeCheck, TcpControl, DSCP, IpFrag, IpType,
        IcmpTypeCode } },
   { EFP_GROUP_POLICY_QOS_IP_, 66, {
        OutPort, SrcIp, DstIp, IpProtocol, L4SrcPort, L4DstPort, DSCP, IpType,
        IntPriority, Color } },
   { IFP_GROUP_POLICY_QOS_IPV6_, 17, {
        InPorts, OuterVlanId, OuterVlanPri, SrcIp6, DstIp6, Ip6NextHeader, L4SrcPort,
        L4DstPort, RangeCheck, TcpControl, Ip6TrafficClass, Ip6FlowLabel, IpType,
        IcmpTypeCode } },
   { IFP_GROUP_SVI_POLICY_QOS_IPV6_, 43, {
        InPorts, ForwardingVlanId, InterfaceClassL3, OuterVlanPri, SrcIp6, DstIp6,
        Ip6NextHeader, L4SrcPort, L4DstPort, RangeCheck, TcpControl, Ip6TrafficClass,
        Ip6FlowLabel, IpType, IcmpTypeCode } },
   { IFP_GROUP_COPP_IPV6_, 13, {
        InPort, InPorts, Vrf, SrcIp6, DstIp6, Ip6NextHeader, L4SrcPort, L4DstPort,
        Ip6HopLimit, IpFrag, IpType, IcmpTypeCode, TcpControl, PacketRes, MyStationHit,
        L3Routable, DstL3Egress, OuterVlanId, Ip6TrafficClass } },
   { IFP_GROUP_EVPN_MULTIHOMING_, 10, {
        InPort, SrcTrunk, TunnelType, VxlanNetworkId, SrcIp, DstMac, PacketRes,
        InterfaceClassVPort } },
   { IFP_GROUP_VXLAN_, 11, {
        InPort, TunnelType, VxlanNetworkId, SrcIp, DstIp, IpProtocol, L4SrcPort,
        L4DstPort, MyStationHit, IpType, PacketRes, DstMac, EtherType } },
   { IFP_GROUP_L3CTRL_OPENFLOW_, 9, {
        InPort, OuterVlanId, DstMac, EtherType, IpType, SrcIp, DstIp, IpProtocol,
        L4SrcPort, L4DstPort, Ttl, IcmpTypeCode, PacketRes, MyStationHit, L3Routable } },
   { IFP_GROUP_L3CTRL_SNOOPING_HELM_, 9, {
        InPort, InPorts, OuterVlanId, ForwardingVlanId, DstMac, EtherType, IpType, SrcIp,
        DstIp, IpProtocol, L4SrcPort, L4DstPort, Ttl, IpFrag, TcpControl, IcmpTypeCode,
        PacketRes, MyStationHit, L3Routable, IpmcStarGroupHit, L2SrcStatic, TunnelType,
        VxlanNetworkId, ForwardingType, HiGig } },
   { IFP_GROUP_L2CTL_DOT1xMBA_, 15, {
        InPort, SrcMac, DstMac, EtherType, OuterVlanId, L2SrcStatic, PacketRes } },
   { IFP_GROUP_L2CTL_ARP_REQUEST_, 15, {
        InPort, SrcMac, DstMac, EtherType, OuterVlanId, L2Format, PacketRes, SrcIp, DstIp } },
   { IFP_GROUP_L2CTL_ARP_REPLY_, 15, {
        InPort, SrcMac, DstMac, EtherType, OuterVlanId, L2Format, PacketRes, SrcIp, DstIp,
        MyStationHit } },
   { IFP_GROUP_L2CTL_L3ROUTING_, 15, {
        InPort, InPorts, SrcMac, DstMac, EtherType, OuterVlanId, OuterVlanPri, L2Format,
        IpType, SrcIp, DstIp, IpProtocol, L4SrcPort, L4DstPort, Ttl, TcpControl,
        PacketRes, MyStationHit, L3Routable, IpmcStarGroupHit, L2SrcStatic, TunnelType,
        VxlanNetworkId, ForwardingVlanId, IngressStpState, HiGig, FabricQueueTag,
        DstL3Egress, Drop } },
   { IFP_GROUP_IPMC_BOUNDARY_ROUTES_, 14, {
        InterfaceClassL3, Vrf, SrcIp, DstIp, SrcIp6, DstIp6, IpType, IpmcStarGroupHit,
        L3Routable } },
   { IFP_GROUP_PDP_, 18, {
        InPort, InPorts, SrcClassField, DstClassField, IngressClassField,
        InterfaceClassPort, OuterVlanId, SrcMac, DstMac, EtherType, SrcIp, DstIp,
        IpProtocol, L4SrcPort, L4DstPort, IpType } },
   { IFP_GROUP_IP_RACL_, 19, {
        InPorts, InterfaceClassL3, ForwardingVlanId, Vrf, L3Routable, MyStationHit, SrcIp,
        DstIp, IpProtocol, L4SrcPort, L4DstPort, RangeCheck, TcpControl, DSCP, Ttl,
        IpFrag, IpType, IcmpTypeCode } },
   { IFP_GROUP_MIRROR_ACL_1_, 44, {} },
   { IFP_GROUP_MIRROR_ACL_2_, 45, {} },
   { IFP_GROUP_MIRROR_ACL_3_, 46, {} },
   { IFP_GROUP_MIRROR_ACL_4_, 47, {} },
   { IFP_GROUP_IPV6_RACL_, 20, {
        InPorts, InterfaceClassL3, ForwardingVlanId, Vrf, L3Routable, MyStationHit,
        SrcIp6, DstIp6, Ip6NextHeader, L4SrcPort, L4DstPort, RangeCheck, TcpControl,
        Ip6TrafficClass, Ip6HopLimit, Ip6FlowLabel, IpFrag, IpType, IcmpTypeCode } },
   { IFP_GROUP_CONDUIT_L2_ONLY_, 21, {
        InPort, SrcMac, DstMac, EtherType, OuterVlanId, OuterVlanPri, VlanFormat } },
   { IFP_GROUP_CONDUIT_FULL_, 22, {
        InPort, SrcMac, DstMac, EtherType, OuterVlanId, OuterVlanPri, VlanFormat, SrcIp,
        DstIp, IpProtocol, L4SrcPort, L4DstPort, DSCP, IpFrag, IpType, TcpControl,
        IcmpTypeCode, Ttl } },
   { IFP_GROUP_CONDUIT_IPV6_VLAN_, 23, {
        InPort, OuterVlanId, EtherType, IpType, SrcIp6, DstIp6 } },
   { IFP_GROUP_CONDUIT_IPV6_PROTO_, 24, {
        InPort, OuterVlanId, EtherType, IpType, Ip6NextHeader, Ip6TrafficClass } },
   { IFP_GROUP_CONDUIT_P4RT_REROUTE_, 25, {
        InPort, Vrf, DstIp, DstIp6, IpType, DstL3Egress, DstMultipath } },
   { IFP_GROUP_CONDUIT_P4RT_EFFINGO_TABLE_, 26, {
        InPort, Vrf, SrcIp, DstIp, SrcIp6, DstIp6, IpType, IpProtocol, L4SrcPort,
        L4DstPort, DSCP } },
   { IFP_GROUP_CONDUIT_P4RT_PUNT_, 27, {
        InPort, DstMac, EtherType, OuterVlanId, IpType, IpProtocol, L4SrcPort, L4DstPort,
        Ttl, Ip6HopLimit, DstIp, DstIp6, MyStationHit, PacketRes, Vrf, IcmpTypeCode } },
   { IFP_GROUP_CONDUIT_P4RT_POSTCARD_IPV4_, 28, {
        InPort, Vrf, SrcIp, DstIp, IpProtocol, L4SrcPort, L4DstPort, DSCP, IpType } },
   { IFP_GROUP_CONDUIT_P4RT_POSTCARD_IPV6_, 29, {
        InPort, Vrf, SrcIp6, DstIp6, Ip6NextHeader, L4SrcPort, L4DstPort, Ip6TrafficClass,
        IpType } },
   { IFP_GROUP_CONDUIT_P4RT_POSTCARD_COLOR_, 30, {
        InPort, Color, IntPriority, DstPort, Drop } },
   { IFP_GROUP_UCAST_COLOR_, 31, {
        InPort, PacketRes, IntPriority, DSCP, DstL3Egress, DstMultipath } },
   { IFP_GROUP_URPF_, 32, {
        InPort, InterfaceClassL3, Vrf, IpType, SrcIp, MyStationHit, L3Routable,
        DstL3Egress, PacketRes } },
   { IFP_GROUP_URPF_THX_V4V6_EXCEPTION_, 53, {
        InPort, InterfaceClassL3, Vrf, IpType, SrcIp, SrcIp6, MyStationHit, L3Routable,
        DstL3Egress, PacketRes } },
   { EFP_GROUP_MLAG_PEER_LINK_, 56, {
        InPort, OutPort, SrcTrunk, PacketRes, InterfaceClassPort } },
   { EFP_GROUP_VXLAN_, 57, {
        OutPort, EgressClassVxlan, TunnelType, OuterVlanId, InnerVlanId, VxlanNetworkId } },
   { EFP_GROUP_MAC_ACL_, 58, {
        OutPort, SrcMac, DstMac, EtherType, OuterVlanId, OuterVlanPri, VlanFormat,
        L2Format } },
   { EFP_GROUP_IP_ACL_, 59, {
        OutPort, OuterVlanId, SrcIp, DstIp, IpProtocol, L4SrcPort, L4DstPort, TcpControl,
        DSCP, Ttl, IpFrag, IpType, IcmpTypeCode } },
   { EFP_GROUP_RACL_, 60, {
        EgressClassL3Interface, OuterVlanId, SrcIp, DstIp, IpProtocol, L4SrcPort,
        L4DstPort, TcpControl, DSCP, Ttl, IpFrag, IpType, IcmpTypeCode } },
   { IFP_GROUP_IP_ACL_, 33, {
        InPorts, OuterVlanId, SrcIp, DstIp, IpProtocol, L4SrcPort, L4DstPort, RangeCheck,
        TcpControl, DSCP, Ttl, IpFrag, IpType, IcmpTypeCode } },
   { IFP_GROUP_IP_ACL_VNI_, 51, {
        InPorts, VxlanNetworkId, TunnelType, InnerSrcIp, InnerDstIp, InnerIpProtocol,
        SrcIp, DstIp, IpProtocol, L4SrcPort, L4DstPort, RangeCheck, TcpControl, DSCP, Ttl,
        IpFrag, IpType, IcmpTypeCode } },
   { VFP_GROUP_OPENFLOW_VFP_, 70, {
        InPort, SrcTrunk, OuterVlanId, InnerVlanId, VlanFormat } },
   { VFP_GROUP_CONDUIT_L2_ONLY_, 78, {
        InPort, SrcMac, DstMac, EtherType, OuterVlanId, OuterVlanPri, VlanFormat } },
   { VFP_GROUP_CONDUIT_P4RT_VRF_, 79, {
        InPort, InterfaceClassPort, DstMac, EtherType, OuterVlanId, IpType } },
   { IFP_GROUP_IP_SOURCE_GUARD_, 34, {
        InPort, SrcIp, SrcMac, OuterVlanId, IpType, EtherType, L2SrcStatic } },
   { VFP_GROUP_IP_VFI_EXCEPTION_, 80, {
        InPort, InterfaceClassPort, OuterVlanId, DstMac, EtherType, TunnelType,
        VxlanNetworkId, SrcIp, DstIp, IpProtocol, L4DstPort, IpType } },
   { VFP_GROUP_IP_ACL_, 71, {
        InPort, OuterVlanId, InnerVlanId, TunnelType, VxlanNetworkId, SrcIp, DstIp,
        IpProtocol, L4SrcPort, L4DstPort, TcpControl, DSCP, IpFrag, IpType, EtherType } },
   { VFP_GROUP_TH3_SYS_ACL_, 82, {
        InPort, DstMac, EtherType, IpType, SrcIp, DstIp, IpProtocol, L4DstPort,
        OuterVlanId } },
   { VFP_GROUP_MAC_ACL_, 72, {
        InPort, SrcTrunk, SrcMac, DstMac, EtherType, OuterVlanId, OuterVlanPri,
        InnerVlanId, VlanFormat, L2Format, HiGig } },
   { IFP_GROUP_MAC_ACL_, 35, {
        InPorts, SrcMac, DstMac, EtherType, OuterVlanId, OuterVlanPri, OuterVlanCfi,
        InnerVlanId, VlanFormat, L2Format, IpType } },
   { VFP_GROUP_IPV6_ACL_, 73, {
        InPort, OuterVlanId, InnerVlanId, SrcIp6, DstIp6, Ip6NextHeader, L4SrcPort,
        L4DstPort, TcpControl, Ip6TrafficClass, Ip6FlowLabel, IpFrag, IpType } },
   { VFP_GROUP_IPV6_STD_ACL_, 74, { InPort, OuterVlanId, SrcIp6, DstIp6, IpType } },
   { IFP_GROUP_STORM_CTL_PORT_, 36, { InPort, PacketRes, DstMac, ForwardingType } },
   { IFP_GROUP_MPC_, 37, {
        InPort, SrcMac, DstMac, EtherType, OuterVlanId, SrcIp, DstIp, IpProtocol,
        L4SrcPort, L4DstPort } },
   { IFP_GROUP_IPV6_STD_PACL_RACL_, 38, {
        InPorts, OuterVlanId, InterfaceClassL3, SrcIp6, DstIp6, IpType } },
   { IFP_GROUP_IPV6_ACL_, 39, {
        InPorts, OuterVlanId, SrcIp6, DstIp6, Ip6NextHeader, L4SrcPort, L4DstPort,
        RangeCheck, TcpControl, Ip6TrafficClass, Ip6HopLimit, Ip6FlowLabel, IpFrag,
        IpType, IcmpTypeCode } },
   { IFP_GROUP_IPV6_ACL_VNI_, 52, {
        InPorts, VxlanNetworkId, TunnelType, SrcIp6, DstIp6, Ip6NextHeader, L4SrcPort,
        L4DstPort, RangeCheck, TcpControl, Ip6TrafficClass, Ip6HopLimit, Ip6FlowLabel,
        IpFrag, IpType, IcmpTypeCode } },
   { EFP_GROUP_IPV6_EGRESS_ACL_, 61, {
        OutPort, OuterVlanId, SrcIp6, DstIp6, Ip6NextHeader, L4SrcPort, L4DstPort,
        TcpControl, Ip6TrafficClass, Ip6HopLimit, Ip6FlowLabel, IpType, IcmpTypeCode } },
   { EFP_GROUP_IPV6_PACL_, 62, { OutPort, OuterVlanId, SrcIp6, DstIp6, IpType } },
   { EFP_GROUP_IPV6_RACL_, 63, { EgressClassL3Interface, SrcIp6, DstIp6, IpType } },
   { EFP_GROUP_IPV6_EGRESS_RACL_, 64, {
        EgressClassL3Interface, SrcIp6, DstIp6, Ip6NextHeader, L4SrcPort, L4DstPort,
        TcpControl, Ip6TrafficClass, Ip6HopLimit, Ip6FlowLabel, IpType, IcmpTypeCode } },
   { IFP_GROUP_FABRIC_, 40, {
        InPort, HiGig, FabricQueueTag, DstPort, SrcTrunk, IntPriority, PacketRes } },
   { IFP_GROUP_IP_PBR_, 41, {
        InPorts, InterfaceClassL3, Vrf, SrcIp, DstIp, IpProtocol, L4SrcPort, L4DstPort,
        RangeCheck, DSCP, IpFrag, IpType, TcpControl, MyStationHit, L3Routable } },
   { IFP_GROUP_IPV6_PBR_, 48, {
        InPorts, InterfaceClassL3, Vrf, SrcIp6, DstIp6, Ip6NextHeader, L4SrcPort,
        L4DstPort, RangeCheck, Ip6TrafficClass, Ip6FlowLabel, IpType, TcpControl,
        MyStationHit, L3Routable } },
   { IFP_GROUP_PFC_WATCHDOG_, 49, { InPort, DstPort, IntPriority, PacketRes } },
   { VFP_GROUP_PORT_VP_, 75, { InPort, SrcTrunk, OuterVlanId, InnerVlanId, VlanFormat } },
   { VFP_GROUP_FABRIC_, 76, { InPort, HiGig, FabricQueueTag, OuterVlanId } },
   { EFP_GROUP_COPP_, 68, { OutPort, CpuQueue, IntPriority, Color, PacketRes } },
   { EFP_GROUP_VLAN_PRI_, 65, { OutPort, IntPriority, OuterVlanPri, Color } },
   { IFP_GROUP_VFI_UNKNOWN_MCAST_, 2, {
        InPorts, ForwardingVlanId, PacketRes, DstMac, IpmcStarGroupHit, IpType,
        TunnelType, VxlanNetworkId, InterfaceClassVPort } },
   { IFP_GROUP_COS_WAR_, 1, { InPort, OuterVlanPri, VlanFormat, IntPriority, HiGig } },
   { VFP_GROUP_VXLAN_PORT_VP_, 77, {
        InPort, SrcTrunk, OuterVlanId, VlanFormat, TunnelType } },
   { IFP_GROUP_CONDUIT_FABRIC_, 50, {
        InPort, HiGig, FabricQueueTag, DstPort, EtherType, OuterVlanId, IntPriority } },
   { EFP_GROUP_MIRROR_RATELIMIT_, 67, {
        OutPort, MirrorCopy, EgressClassL2Gre, TunnelType } },
   { EFP_GROUP_ECN_COUNT_, 69, { OutPort, IpType, Ip6TrafficClass, IntPriority, Color } },
   { VFP_GROUP_PDP_CLASS_, 81, {
        InPort, InterfaceClassPort, OuterVlanId, DstMac, EtherType, IpType } },
   { IFP_GROUP_NAT_SUPERSET_, 54, {
        InterfaceClassL3, Vrf, SrcIp, DstIp, IpProtocol, L4SrcPort, L4DstPort, IpType,
        MyStationHit, L3Routable, DstL3Egress, TcpControl } },
};

static_assert( std::size( groupSources ) == numTcamGroupDefs );

constexpr U32
countOf( const Qual * quals, U32 slots ) {
   U32 count = 0;
   while ( count < slots && quals[ count ] != none ) {
      ++count;
   }
   return count;
}

// Ids, priorities and terminators are compile-time; qualifier values are not.
// Row 0 stays all zero.
constexpr std::array< TcamGroupDef, numTcamGroupDefs >
unfilledGroupDefs() {
   std::array< TcamGroupDef, numTcamGroupDefs > rows{};
   for ( U32 row = 1; row < numTcamGroupDefs; ++row ) {
      const GroupSource & source = groupSources[ row ];
      rows[ row ].groupId = static_cast< S32 >( source.groupId );
      rows[ row ].priority = static_cast< S32 >( source.priority );
      rows[ row ].fields[ countOf( source.quals, std::size( source.quals ) ) ] = -1;
   }
   return rows;
}

constinit std::array< TcamGroupDef, numTcamGroupDefs > tcamGroupDefs =
   unfilledGroupDefs();

// Mirroring ACL lists by type. Type 1: IPv4 ACLs.
constexpr Qual mirrorIpv4Tokens[] = {
   InPorts, OuterVlanId, SrcIp, DstIp, IpProtocol, L4SrcPort, L4DstPort, RangeCheck,
   TcpControl, DSCP, Ttl, IpFrag, IpType, IcmpTypeCode, EtherType,
};
// Type 2: MAC ACLs.
constexpr Qual mirrorMacTokens[] = {
   InPorts, SrcMac, DstMac, EtherType, OuterVlanId, OuterVlanPri, VlanFormat, L2Format,
};
// Type 0: IPv6 ACLs.
constexpr Qual mirrorIpv6Tokens[] = {
   InPorts, OuterVlanId, SrcIp6, DstIp6, Ip6NextHeader, L4SrcPort, L4DstPort, RangeCheck,
   TcpControl, Ip6TrafficClass, Ip6HopLimit, Ip6FlowLabel, IpFrag, IpType, IcmpTypeCode,
   EtherType,
};
static_assert( std::size( mirrorIpv4Tokens ) == 15 );
static_assert( std::size( mirrorMacTokens ) == 8 );
static_assert( std::size( mirrorIpv6Tokens ) == 16 );

template< std::size_t N >
constexpr std::array< int, N + 1 >
unfilledList() {
   std::array< int, N + 1 > fields{};
   fields[ N ] = -1;
   return fields;
}

constinit auto mirrorIpv4Fields = unfilledList< std::size( mirrorIpv4Tokens ) >();
constinit auto mirrorMacFields = unfilledList< std::size( mirrorMacTokens ) >();
constinit auto mirrorIpv6Fields = unfilledList< std::size( mirrorIpv6Tokens ) >();

template< std::size_t N >
int *
fill( const Qual ( &source )[ N ], std::array< int, N + 1 > & fields ) {
   for ( std::size_t i = 0; i < N; ++i ) {
      fields[ i ] = qualifierValue( source[ i ] );
   }
   return fields.data();
}

} // namespace

TcamGroupDef *
groupDefs() {
   return tcamGroupDefs.data();
}

void
fillGroupQualifiers() {
   static const bool filled = [] {
      for ( U32 row = 1; row < numTcamGroupDefs; ++row ) {
         fillQualifierSlots( groupSources[ row ].quals, tcamGroupQualifierSlots,
                             tcamGroupDefs[ row ].fields );
      }
      return true;
   }();
   static_cast< void >( filled );
}

int *
mirrorAclFields( int mirrorAclType ) {
   // One guard per list: each is filled the first time its type is asked for.
   switch ( mirrorAclType ) {
    case 0: {
      static int * const fields = fill( mirrorIpv6Tokens, mirrorIpv6Fields );
      return fields;
    }
    case 1: {
      static int * const fields = fill( mirrorIpv4Tokens, mirrorIpv4Fields );
      return fields;
    }
    case 2: {
      static int * const fields = fill( mirrorMacTokens, mirrorMacFields );
      return fields;
    }
   }
   return nullptr;
}

} // namespace Tessel::Tables
