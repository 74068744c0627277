// Per-chip qualifier adjustments: what each chip type removes from
// (excludes) or adds to (includes) a group's qualifier list, keyed by
// (group, chip type), each pair at most once per table. Rows exist for the
// chip types of our profiles: Classic, Trident3, Thx and Th3; groups that only
// one family creates (VFP_GROUP_TH3_SYS_ACL on Th3, the uRPF exception group
// IFP_GROUP_URPF_THX_V4V6_EXCEPTION on Thx and Th3) have rows for it alone.
#include "catalogue/TcamTables.h"

#include <array>
#include <iterator>

#include "catalogue/QualifierToken.h"
#include "sdk/shim/ChipType.h"

namespace Tessel::Tables {

namespace {

using enum Qual;
using enum Shim::ChipType;

struct ModSource {
   TcamGroupId groupId;
   Shim::ChipType chipType;
   Qual quals[ qsetModQualifierSlots - 1 ];
   S32 ipbmWar = 0;
};

// Excludes: qualifiers a chip's keys do not have.
// - Classic, the older single-pipe chip, has no tunnel or VXLAN fields
//   (TunnelType, VxlanNetworkId, the inner header, the egress tunnel
//   classes), no VRF, VP class or multipath, no IPv6 flow label or hop
//   limit, none of the newer lookup metadata (DstL3Egress, ForwardingType,
//   IngressStpState, Drop), and it reads ICMP type and code through the L4
//   port fields, so IcmpTypeCode goes too.
// - Trident3 has no fabric queue tag, no IPv6 flow label in its ingress key,
//   reads ICMP type and code through the L4 ports, and reports forwarding
//   resolution as ForwardingType instead of PacketRes.
// - Thx and Th3 are pure Ethernet chips without stacking (no HiGig, no
//   fabric queue tag) or VXLAN VP classes; they fold the IPv6 hop limit into
//   Ttl, the IPv6 traffic class into DSCP and the fragment flags into
//   IpInfo. Th3 also has no inner-VLAN key.
constexpr ModSource excludeSources[] = {
   // chipTypeClassic
   { IFP_GROUP_L3CTRL_OPENFLOW_, chipTypeClassic, { IcmpTypeCode } },
   { IFP_GROUP_L3CTRL_SNOOPING_HELM_, chipTypeClassic, {
        IcmpTypeCode, TunnelType, VxlanNetworkId, ForwardingType } },
   { IFP_GROUP_L2CTL_L3ROUTING_, chipTypeClassic, {
        TunnelType, VxlanNetworkId, IngressStpState, DstL3Egress, Drop } },
   { IFP_GROUP_IP_ACL_, chipTypeClassic, { IcmpTypeCode } },
   { IFP_GROUP_IP_RACL_, chipTypeClassic, { Vrf, IcmpTypeCode } },
   { IFP_GROUP_IPV6_RACL_, chipTypeClassic, {
        Vrf, Ip6HopLimit, Ip6FlowLabel, IcmpTypeCode } },
   { IFP_GROUP_IPV6_ACL_, chipTypeClassic, { Ip6HopLimit, Ip6FlowLabel, IcmpTypeCode } },
   { IFP_GROUP_IP_ACL_VNI_, chipTypeClassic, {
        VxlanNetworkId, TunnelType, InnerSrcIp, InnerDstIp, InnerIpProtocol, IcmpTypeCode } },
   { IFP_GROUP_IPV6_ACL_VNI_, chipTypeClassic, {
        VxlanNetworkId, TunnelType, Ip6HopLimit, Ip6FlowLabel, IcmpTypeCode } },
   { IFP_GROUP_MIRROR_ACL_1_, chipTypeClassic, {
        IcmpTypeCode, Ip6HopLimit, Ip6FlowLabel } },
   { IFP_GROUP_MIRROR_ACL_2_, chipTypeClassic, {
        IcmpTypeCode, Ip6HopLimit, Ip6FlowLabel } },
   { IFP_GROUP_MIRROR_ACL_3_, chipTypeClassic, {
        IcmpTypeCode, Ip6HopLimit, Ip6FlowLabel } },
   { IFP_GROUP_MIRROR_ACL_4_, chipTypeClassic, {
        IcmpTypeCode, Ip6HopLimit, Ip6FlowLabel } },
   { IFP_GROUP_POLICY_QOS_IP_, chipTypeClassic, { IcmpTypeCode } },
   { IFP_GROUP_POLICY_QOS_IPV6_, chipTypeClassic, { Ip6FlowLabel, IcmpTypeCode } },
   { IFP_GROUP_SVI_POLICY_QOS_IP_, chipTypeClassic, { IcmpTypeCode } },
   { IFP_GROUP_SVI_POLICY_QOS_IPV6_, chipTypeClassic, { Ip6FlowLabel, IcmpTypeCode } },
   { IFP_GROUP_COPP_IP_, chipTypeClassic, { Vrf, IcmpTypeCode, DstL3Egress } },
   { IFP_GROUP_COPP_IPV6_, chipTypeClassic, {
        Vrf, Ip6HopLimit, IcmpTypeCode, DstL3Egress } },
   { IFP_GROUP_STORM_CTL_PORT_, chipTypeClassic, { ForwardingType } },
   { IFP_GROUP_UCAST_COLOR_, chipTypeClassic, { DstL3Egress, DstMultipath } },
   { IFP_GROUP_IP_PBR_, chipTypeClassic, { Vrf } },
   { IFP_GROUP_IPV6_PBR_, chipTypeClassic, { Vrf, Ip6FlowLabel } },
   { IFP_GROUP_URPF_, chipTypeClassic, { Vrf, DstL3Egress } },
   { IFP_GROUP_VXLAN_, chipTypeClassic, { TunnelType, VxlanNetworkId } },
   { IFP_GROUP_VFI_UNKNOWN_MCAST_, chipTypeClassic, {
        TunnelType, VxlanNetworkId, InterfaceClassVPort } },
   { IFP_GROUP_OPENFLOW_UDF_, chipTypeClassic, { IcmpTypeCode } },
   { IFP_GROUP_OPENFLOW_VXLAN_, chipTypeClassic, {
        TunnelType, VxlanNetworkId, InnerSrcIp, InnerDstIp, InnerIpProtocol } },
   { IFP_GROUP_OPENFLOW_FULL_, chipTypeClassic, { IcmpTypeCode } },
   { IFP_GROUP_CONDUIT_FULL_, chipTypeClassic, { IcmpTypeCode } },
   { IFP_GROUP_CONDUIT_P4RT_REROUTE_, chipTypeClassic, {
        Vrf, DstL3Egress, DstMultipath } },
   { IFP_GROUP_CONDUIT_P4RT_EFFINGO_TABLE_, chipTypeClassic, { Vrf } },
   { IFP_GROUP_CONDUIT_P4RT_PUNT_, chipTypeClassic, { Ip6HopLimit, Vrf, IcmpTypeCode } },
   { IFP_GROUP_CONDUIT_P4RT_POSTCARD_IPV4_, chipTypeClassic, { Vrf } },
   { IFP_GROUP_CONDUIT_P4RT_POSTCARD_IPV6_, chipTypeClassic, { Vrf } },
   { IFP_GROUP_CONDUIT_P4RT_POSTCARD_COLOR_, chipTypeClassic, { Drop } },
   { IFP_GROUP_IPMC_BOUNDARY_ROUTES_, chipTypeClassic, { Vrf } },
   { IFP_GROUP_NAT_SUPERSET_, chipTypeClassic, { Vrf, DstL3Egress } },
   { IFP_GROUP_EVPN_MULTIHOMING_, chipTypeClassic, {
        TunnelType, VxlanNetworkId, InterfaceClassVPort } },
   { EFP_GROUP_IP_ACL_, chipTypeClassic, { IcmpTypeCode } },
   { EFP_GROUP_IPV6_EGRESS_ACL_, chipTypeClassic, {
        Ip6HopLimit, Ip6FlowLabel, IcmpTypeCode } },
   { EFP_GROUP_RACL_, chipTypeClassic, { IcmpTypeCode } },
   { EFP_GROUP_IPV6_EGRESS_RACL_, chipTypeClassic, {
        Ip6HopLimit, Ip6FlowLabel, IcmpTypeCode } },
   { EFP_GROUP_MIRROR_RATELIMIT_, chipTypeClassic, { EgressClassL2Gre, TunnelType } },
   { EFP_GROUP_VXLAN_, chipTypeClassic, {
        EgressClassVxlan, TunnelType, VxlanNetworkId } },
   { VFP_GROUP_IP_ACL_, chipTypeClassic, { TunnelType, VxlanNetworkId } },
   { VFP_GROUP_IPV6_ACL_, chipTypeClassic, { Ip6FlowLabel } },
   { VFP_GROUP_VXLAN_PORT_VP_, chipTypeClassic, { TunnelType } },
   { VFP_GROUP_IP_VFI_EXCEPTION_, chipTypeClassic, { TunnelType, VxlanNetworkId } },
   // chipTypeTrident3
   { IFP_GROUP_L3CTRL_OPENFLOW_, chipTypeTrident3, { IcmpTypeCode, PacketRes } },
   { IFP_GROUP_L3CTRL_SNOOPING_HELM_, chipTypeTrident3, { IcmpTypeCode, PacketRes } },
   { IFP_GROUP_L2CTL_DOT1xMBA_, chipTypeTrident3, { PacketRes } },
   { IFP_GROUP_L2CTL_ARP_REQUEST_, chipTypeTrident3, { PacketRes } },
   { IFP_GROUP_L2CTL_ARP_REPLY_, chipTypeTrident3, { PacketRes } },
   { IFP_GROUP_L2CTL_L3ROUTING_, chipTypeTrident3, { PacketRes, FabricQueueTag } },
   { IFP_GROUP_IP_ACL_, chipTypeTrident3, { IcmpTypeCode } },
   { IFP_GROUP_IP_RACL_, chipTypeTrident3, { IcmpTypeCode } },
   { IFP_GROUP_IPV6_RACL_, chipTypeTrident3, { Ip6FlowLabel, IcmpTypeCode } },
   { IFP_GROUP_IPV6_ACL_, chipTypeTrident3, { Ip6FlowLabel, IcmpTypeCode } },
   { IFP_GROUP_IP_ACL_VNI_, chipTypeTrident3, { IcmpTypeCode } },
   { IFP_GROUP_IPV6_ACL_VNI_, chipTypeTrident3, { Ip6FlowLabel, IcmpTypeCode } },
   { IFP_GROUP_MIRROR_ACL_1_, chipTypeTrident3, { IcmpTypeCode, Ip6FlowLabel } },
   { IFP_GROUP_MIRROR_ACL_2_, chipTypeTrident3, { IcmpTypeCode, Ip6FlowLabel } },
   { IFP_GROUP_MIRROR_ACL_3_, chipTypeTrident3, { IcmpTypeCode, Ip6FlowLabel } },
   { IFP_GROUP_MIRROR_ACL_4_, chipTypeTrident3, { IcmpTypeCode, Ip6FlowLabel } },
   { IFP_GROUP_POLICY_QOS_IP_, chipTypeTrident3, { IcmpTypeCode } },
   { IFP_GROUP_POLICY_QOS_IPV6_, chipTypeTrident3, { Ip6FlowLabel, IcmpTypeCode } },
   { IFP_GROUP_SVI_POLICY_QOS_IP_, chipTypeTrident3, { IcmpTypeCode } },
   { IFP_GROUP_SVI_POLICY_QOS_IPV6_, chipTypeTrident3, { Ip6FlowLabel, IcmpTypeCode } },
   { IFP_GROUP_COPP_IP_, chipTypeTrident3, { IcmpTypeCode, PacketRes } },
   { IFP_GROUP_COPP_IPV6_, chipTypeTrident3, { IcmpTypeCode, PacketRes } },
   { IFP_GROUP_PFC_WATCHDOG_, chipTypeTrident3, { PacketRes } },
   { IFP_GROUP_STORM_CTL_PORT_, chipTypeTrident3, { PacketRes } },
   { IFP_GROUP_UCAST_COLOR_, chipTypeTrident3, { PacketRes } },
   { IFP_GROUP_IPV6_PBR_, chipTypeTrident3, { Ip6FlowLabel } },
   { IFP_GROUP_URPF_, chipTypeTrident3, { PacketRes } },
   { IFP_GROUP_VXLAN_, chipTypeTrident3, { PacketRes } },
   { IFP_GROUP_VFI_UNKNOWN_MCAST_, chipTypeTrident3, { PacketRes } },
   { IFP_GROUP_OPENFLOW_UDF_, chipTypeTrident3, { IcmpTypeCode } },
   { IFP_GROUP_OPENFLOW_FULL_, chipTypeTrident3, { IcmpTypeCode } },
   { IFP_GROUP_CONDUIT_FULL_, chipTypeTrident3, { IcmpTypeCode } },
   { IFP_GROUP_CONDUIT_FABRIC_, chipTypeTrident3, { FabricQueueTag } },
   { IFP_GROUP_CONDUIT_P4RT_PUNT_, chipTypeTrident3, { PacketRes, IcmpTypeCode } },
   { IFP_GROUP_FABRIC_, chipTypeTrident3, { FabricQueueTag, PacketRes } },
   { IFP_GROUP_EVPN_MULTIHOMING_, chipTypeTrident3, { PacketRes } },
   { EFP_GROUP_IP_ACL_, chipTypeTrident3, { IcmpTypeCode } },
   { EFP_GROUP_IPV6_EGRESS_ACL_, chipTypeTrident3, { Ip6FlowLabel, IcmpTypeCode } },
   { EFP_GROUP_RACL_, chipTypeTrident3, { IcmpTypeCode } },
   { EFP_GROUP_IPV6_EGRESS_RACL_, chipTypeTrident3, { Ip6FlowLabel, IcmpTypeCode } },
   { EFP_GROUP_MLAG_PEER_LINK_, chipTypeTrident3, { PacketRes } },
   { EFP_GROUP_COPP_, chipTypeTrident3, { PacketRes } },
   { VFP_GROUP_IPV6_ACL_, chipTypeTrident3, { Ip6FlowLabel } },
   { VFP_GROUP_FABRIC_, chipTypeTrident3, { FabricQueueTag } },
   // chipTypeThx
   { IFP_GROUP_L3CTRL_SNOOPING_HELM_, chipTypeThx, { IpFrag, HiGig } },
   { IFP_GROUP_L2CTL_L3ROUTING_, chipTypeThx, { HiGig, FabricQueueTag } },
   { IFP_GROUP_IP_ACL_, chipTypeThx, { IpFrag } },
   { IFP_GROUP_IP_RACL_, chipTypeThx, { IpFrag } },
   { IFP_GROUP_IPV6_RACL_, chipTypeThx, { Ip6TrafficClass, Ip6HopLimit, IpFrag } },
   { IFP_GROUP_IPV6_ACL_, chipTypeThx, { Ip6TrafficClass, Ip6HopLimit, IpFrag } },
   { IFP_GROUP_IP_ACL_VNI_, chipTypeThx, { IpFrag } },
   { IFP_GROUP_IPV6_ACL_VNI_, chipTypeThx, { Ip6TrafficClass, Ip6HopLimit, IpFrag } },
   { IFP_GROUP_MIRROR_ACL_1_, chipTypeThx, { IpFrag, Ip6TrafficClass, Ip6HopLimit } },
   { IFP_GROUP_MIRROR_ACL_2_, chipTypeThx, { IpFrag, Ip6TrafficClass, Ip6HopLimit } },
   { IFP_GROUP_MIRROR_ACL_3_, chipTypeThx, { IpFrag, Ip6TrafficClass, Ip6HopLimit } },
   { IFP_GROUP_MIRROR_ACL_4_, chipTypeThx, { IpFrag, Ip6TrafficClass, Ip6HopLimit } },
   { IFP_GROUP_QOS_, chipTypeThx, { Ip6TrafficClass, HiGig } },
   { IFP_GROUP_POLICY_QOS_IP_, chipTypeThx, { IpFrag } },
   { IFP_GROUP_POLICY_QOS_IPV6_, chipTypeThx, { Ip6TrafficClass } },
   { IFP_GROUP_SVI_POLICY_QOS_IP_, chipTypeThx, { IpFrag } },
   { IFP_GROUP_SVI_POLICY_QOS_IPV6_, chipTypeThx, { Ip6TrafficClass } },
   { IFP_GROUP_COS_WAR_, chipTypeThx, { HiGig } },
   { IFP_GROUP_COPP_IP_, chipTypeThx, { IpFrag } },
   { IFP_GROUP_COPP_IPV6_, chipTypeThx, { Ip6HopLimit, IpFrag, Ip6TrafficClass } },
   { IFP_GROUP_IP_PBR_, chipTypeThx, { IpFrag } },
   { IFP_GROUP_IPV6_PBR_, chipTypeThx, { Ip6TrafficClass } },
   { IFP_GROUP_VFI_UNKNOWN_MCAST_, chipTypeThx, { InterfaceClassVPort } },
   { IFP_GROUP_OPENFLOW_FULL_, chipTypeThx, { IpFrag } },
   { IFP_GROUP_OPENFLOW_IPV6_PROTO_, chipTypeThx, { Ip6TrafficClass } },
   { IFP_GROUP_CONDUIT_FULL_, chipTypeThx, { IpFrag } },
   { IFP_GROUP_CONDUIT_IPV6_PROTO_, chipTypeThx, { Ip6TrafficClass } },
   { IFP_GROUP_CONDUIT_FABRIC_, chipTypeThx, { HiGig, FabricQueueTag } },
   { IFP_GROUP_CONDUIT_P4RT_PUNT_, chipTypeThx, { Ip6HopLimit } },
   { IFP_GROUP_CONDUIT_P4RT_POSTCARD_IPV6_, chipTypeThx, { Ip6TrafficClass } },
   { IFP_GROUP_FABRIC_, chipTypeThx, { HiGig, FabricQueueTag } },
   { IFP_GROUP_EVPN_MULTIHOMING_, chipTypeThx, { InterfaceClassVPort } },
   { EFP_GROUP_IP_ACL_, chipTypeThx, { IpFrag } },
   { EFP_GROUP_IPV6_EGRESS_ACL_, chipTypeThx, { Ip6TrafficClass, Ip6HopLimit } },
   { EFP_GROUP_RACL_, chipTypeThx, { IpFrag } },
   { EFP_GROUP_IPV6_EGRESS_RACL_, chipTypeThx, { Ip6TrafficClass, Ip6HopLimit } },
   { EFP_GROUP_ECN_COUNT_, chipTypeThx, { Ip6TrafficClass } },
   { VFP_GROUP_IP_ACL_, chipTypeThx, { IpFrag } },
   { VFP_GROUP_MAC_ACL_, chipTypeThx, { HiGig } },
   { VFP_GROUP_IPV6_ACL_, chipTypeThx, { Ip6TrafficClass, IpFrag } },
   { VFP_GROUP_FABRIC_, chipTypeThx, { HiGig, FabricQueueTag } },
   // chipTypeTh3
   { IFP_GROUP_L3CTRL_SNOOPING_HELM_, chipTypeTh3, { IpFrag, HiGig } },
   { IFP_GROUP_L2CTL_L3ROUTING_, chipTypeTh3, { HiGig, FabricQueueTag } },
   { IFP_GROUP_IP_ACL_, chipTypeTh3, { IpFrag } },
   { IFP_GROUP_MAC_ACL_, chipTypeTh3, { InnerVlanId } },
   { IFP_GROUP_IP_RACL_, chipTypeTh3, { IpFrag } },
   { IFP_GROUP_IPV6_RACL_, chipTypeTh3, { Ip6TrafficClass, Ip6HopLimit, IpFrag } },
   { IFP_GROUP_IPV6_ACL_, chipTypeTh3, { Ip6TrafficClass, Ip6HopLimit, IpFrag } },
   { IFP_GROUP_IP_ACL_VNI_, chipTypeTh3, { IpFrag } },
   { IFP_GROUP_IPV6_ACL_VNI_, chipTypeTh3, { Ip6TrafficClass, Ip6HopLimit, IpFrag } },
   { IFP_GROUP_MIRROR_ACL_1_, chipTypeTh3, { IpFrag, Ip6TrafficClass, Ip6HopLimit } },
   { IFP_GROUP_MIRROR_ACL_2_, chipTypeTh3, { IpFrag, Ip6TrafficClass, Ip6HopLimit } },
   { IFP_GROUP_MIRROR_ACL_3_, chipTypeTh3, { IpFrag, Ip6TrafficClass, Ip6HopLimit } },
   { IFP_GROUP_MIRROR_ACL_4_, chipTypeTh3, { IpFrag, Ip6TrafficClass, Ip6HopLimit } },
   { IFP_GROUP_QOS_, chipTypeTh3, { Ip6TrafficClass, HiGig } },
   { IFP_GROUP_POLICY_QOS_IP_, chipTypeTh3, { IpFrag } },
   { IFP_GROUP_POLICY_QOS_IPV6_, chipTypeTh3, { Ip6TrafficClass } },
   { IFP_GROUP_SVI_POLICY_QOS_IP_, chipTypeTh3, { IpFrag } },
   { IFP_GROUP_SVI_POLICY_QOS_IPV6_, chipTypeTh3, { Ip6TrafficClass } },
   { IFP_GROUP_COS_WAR_, chipTypeTh3, { HiGig } },
   { IFP_GROUP_COPP_IP_, chipTypeTh3, { IpFrag } },
   { IFP_GROUP_COPP_IPV6_, chipTypeTh3, { Ip6HopLimit, IpFrag, Ip6TrafficClass } },
   { IFP_GROUP_IP_PBR_, chipTypeTh3, { IpFrag } },
   { IFP_GROUP_IPV6_PBR_, chipTypeTh3, { Ip6TrafficClass } },
   { IFP_GROUP_VFI_UNKNOWN_MCAST_, chipTypeTh3, { InterfaceClassVPort } },
   { IFP_GROUP_OPENFLOW_FULL_, chipTypeTh3, { IpFrag } },
   { IFP_GROUP_OPENFLOW_IPV6_PROTO_, chipTypeTh3, { Ip6TrafficClass } },
   { IFP_GROUP_CONDUIT_FULL_, chipTypeTh3, { IpFrag } },
   { IFP_GROUP_CONDUIT_IPV6_PROTO_, chipTypeTh3, { Ip6TrafficClass } },
   { IFP_GROUP_CONDUIT_FABRIC_, chipTypeTh3, { HiGig, FabricQueueTag } },
   { IFP_GROUP_CONDUIT_P4RT_PUNT_, chipTypeTh3, { Ip6HopLimit } },
   { IFP_GROUP_CONDUIT_P4RT_POSTCARD_IPV6_, chipTypeTh3, { Ip6TrafficClass } },
   { IFP_GROUP_FABRIC_, chipTypeTh3, { HiGig, FabricQueueTag } },
   { IFP_GROUP_EVPN_MULTIHOMING_, chipTypeTh3, { InterfaceClassVPort } },
   { EFP_GROUP_IP_ACL_, chipTypeTh3, { IpFrag } },
   { EFP_GROUP_IPV6_EGRESS_ACL_, chipTypeTh3, { Ip6TrafficClass, Ip6HopLimit } },
   { EFP_GROUP_RACL_, chipTypeTh3, { IpFrag } },
   { EFP_GROUP_IPV6_EGRESS_RACL_, chipTypeTh3, { Ip6TrafficClass, Ip6HopLimit } },
   { EFP_GROUP_VXLAN_, chipTypeTh3, { InnerVlanId } },
   { EFP_GROUP_ECN_COUNT_, chipTypeTh3, { Ip6TrafficClass } },
   { VFP_GROUP_IP_ACL_, chipTypeTh3, { InnerVlanId, IpFrag } },
   { VFP_GROUP_MAC_ACL_, chipTypeTh3, { InnerVlanId, HiGig } },
   { VFP_GROUP_IPV6_ACL_, chipTypeTh3, { InnerVlanId, Ip6TrafficClass, IpFrag } },
   { VFP_GROUP_PORT_VP_, chipTypeTh3, { InnerVlanId } },
   { VFP_GROUP_FABRIC_, chipTypeTh3, { HiGig, FabricQueueTag } },
   { VFP_GROUP_OPENFLOW_VFP_, chipTypeTh3, { InnerVlanId } },
};

// Includes: qualifiers a chip adds, and the two-copies-per-pipe flag.
// - Classic keys VRF-aware groups on the L3 interface class instead of Vrf.
// - Trident3 takes ForwardingType where PacketRes was dropped, gives its
//   VXLAN-aware ingress and lookup groups the VP class (VFI-based VXLAN),
//   and, like Thx and Th3, lets lookup-stage groups and egress port groups
//   match port classes so that one entry covers every port of an ACL.
// - Thx and Th3 run ingress per pipe: every ingress group matching a single
//   in-port also gets the pipe-local in-port bitmap; they take Ttl, DSCP and
//   IpInfo where the IPv6 and fragment fields were dropped.
// - Th3 has the class-id compression groups, so its ACL groups add the
//   compressed classes of the fields they match (addresses, L4 ports,
//   protocol, ethertype).
// - The flag (last word) is 1 only for the port ACLs on Thx (IFP_GROUP_IP_ACL,
//   IFP_GROUP_MAC_ACL, IFP_GROUP_IPV6_STD_PACL_RACL, IFP_GROUP_IPV6_ACL):
//   their entries carry large in-port bitmaps, which Thx cannot hold in one
//   copy per pipe. IFP_GROUP_POLICY_QOS_IPV6 keeps 0: there the IPv6 key
//   width mode decides.
constexpr ModSource includeSources[] = {
   // chipTypeClassic
   { IFP_GROUP_COPP_IP_, chipTypeClassic, { InterfaceClassL3 }, 0 },
   { IFP_GROUP_COPP_IPV6_, chipTypeClassic, { InterfaceClassL3 }, 0 },
   { IFP_GROUP_CONDUIT_P4RT_REROUTE_, chipTypeClassic, { InterfaceClassL3 }, 0 },
   { IFP_GROUP_CONDUIT_P4RT_EFFINGO_TABLE_, chipTypeClassic, { InterfaceClassL3 }, 0 },
   { IFP_GROUP_CONDUIT_P4RT_PUNT_, chipTypeClassic, { InterfaceClassL3 }, 0 },
   { IFP_GROUP_CONDUIT_P4RT_POSTCARD_IPV4_, chipTypeClassic, { InterfaceClassL3 }, 0 },
   { IFP_GROUP_CONDUIT_P4RT_POSTCARD_IPV6_, chipTypeClassic, { InterfaceClassL3 }, 0 },
   // chipTypeTrident3
   { IFP_GROUP_L3CTRL_OPENFLOW_, chipTypeTrident3, { ForwardingType }, 0 },
   { IFP_GROUP_L3CTRL_SNOOPING_HELM_, chipTypeTrident3, { InterfaceClassVPort }, 0 },
   { IFP_GROUP_L2CTL_DOT1xMBA_, chipTypeTrident3, { ForwardingType }, 0 },
   { IFP_GROUP_L2CTL_ARP_REQUEST_, chipTypeTrident3, { ForwardingType }, 0 },
   { IFP_GROUP_L2CTL_ARP_REPLY_, chipTypeTrident3, { ForwardingType }, 0 },
   { IFP_GROUP_L2CTL_L3ROUTING_, chipTypeTrident3, {
        ForwardingType, InterfaceClassVPort }, 0 },
   { IFP_GROUP_IP_ACL_VNI_, chipTypeTrident3, { InterfaceClassVPort }, 0 },
   { IFP_GROUP_IPV6_ACL_VNI_, chipTypeTrident3, { InterfaceClassVPort }, 0 },
   { IFP_GROUP_COPP_IP_, chipTypeTrident3, { ForwardingType }, 0 },
   { IFP_GROUP_COPP_IPV6_, chipTypeTrident3, { ForwardingType }, 0 },
   { IFP_GROUP_PFC_WATCHDOG_, chipTypeTrident3, { ForwardingType }, 0 },
   { IFP_GROUP_UCAST_COLOR_, chipTypeTrident3, { ForwardingType }, 0 },
   { IFP_GROUP_URPF_, chipTypeTrident3, { ForwardingType }, 0 },
   { IFP_GROUP_VXLAN_, chipTypeTrident3, { ForwardingType, InterfaceClassVPort }, 0 },
   { IFP_GROUP_VFI_UNKNOWN_MCAST_, chipTypeTrident3, { ForwardingType }, 0 },
   { IFP_GROUP_OPENFLOW_VXLAN_, chipTypeTrident3, { InterfaceClassVPort }, 0 },
   { IFP_GROUP_CONDUIT_P4RT_PUNT_, chipTypeTrident3, { ForwardingType }, 0 },
   { IFP_GROUP_FABRIC_, chipTypeTrident3, { ForwardingType }, 0 },
   { IFP_GROUP_EVPN_MULTIHOMING_, chipTypeTrident3, { ForwardingType }, 0 },
   { EFP_GROUP_MAC_ACL_, chipTypeTrident3, { InterfaceClassPort }, 0 },
   { EFP_GROUP_IP_ACL_, chipTypeTrident3, { InterfaceClassPort }, 0 },
   { EFP_GROUP_IPV6_PACL_, chipTypeTrident3, { InterfaceClassPort }, 0 },
   { EFP_GROUP_IPV6_EGRESS_ACL_, chipTypeTrident3, { InterfaceClassPort }, 0 },
   { EFP_GROUP_POLICY_QOS_IP_, chipTypeTrident3, { InterfaceClassPort }, 0 },
   { EFP_GROUP_MIRROR_RATELIMIT_, chipTypeTrident3, { InterfaceClassPort }, 0 },
   { EFP_GROUP_VLAN_PRI_, chipTypeTrident3, { InterfaceClassPort }, 0 },
   { EFP_GROUP_MLAG_PEER_LINK_, chipTypeTrident3, { ForwardingType }, 0 },
   { EFP_GROUP_COPP_, chipTypeTrident3, { ForwardingType }, 0 },
   { EFP_GROUP_ECN_COUNT_, chipTypeTrident3, { InterfaceClassPort }, 0 },
   { VFP_GROUP_IP_ACL_, chipTypeTrident3, {
        InterfaceClassVPort, InterfaceClassPort }, 0 },
   { VFP_GROUP_MAC_ACL_, chipTypeTrident3, { InterfaceClassPort }, 0 },
   { VFP_GROUP_IPV6_ACL_, chipTypeTrident3, { InterfaceClassPort }, 0 },
   { VFP_GROUP_IPV6_STD_ACL_, chipTypeTrident3, { InterfaceClassPort }, 0 },
   { VFP_GROUP_PORT_VP_, chipTypeTrident3, { InterfaceClassPort }, 0 },
   { VFP_GROUP_VXLAN_PORT_VP_, chipTypeTrident3, { InterfaceClassPort }, 0 },
   { VFP_GROUP_IP_VFI_EXCEPTION_, chipTypeTrident3, { InterfaceClassVPort }, 0 },
   { VFP_GROUP_FABRIC_, chipTypeTrident3, { InterfaceClassPort }, 0 },
   { VFP_GROUP_OPENFLOW_VFP_, chipTypeTrident3, { InterfaceClassPort }, 0 },
   { VFP_GROUP_CONDUIT_L2_ONLY_, chipTypeTrident3, { InterfaceClassPort }, 0 },
   // chipTypeThx
   { IFP_GROUP_L3CTRL_OPENFLOW_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_L3CTRL_SNOOPING_HELM_, chipTypeThx, { IpInfo }, 0 },
   { IFP_GROUP_L2CTL_DOT1xMBA_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_L2CTL_ARP_REQUEST_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_L2CTL_ARP_REPLY_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_IP_ACL_, chipTypeThx, { IpInfo }, 1 },
   { IFP_GROUP_MAC_ACL_, chipTypeThx, {}, 1 },
   { IFP_GROUP_IPV6_STD_PACL_RACL_, chipTypeThx, {}, 1 },
   { IFP_GROUP_IP_RACL_, chipTypeThx, { IpInfo }, 0 },
   { IFP_GROUP_IPV6_RACL_, chipTypeThx, { DSCP, Ttl, IpInfo }, 0 },
   { IFP_GROUP_IPV6_ACL_, chipTypeThx, { DSCP, Ttl, IpInfo }, 1 },
   { IFP_GROUP_IP_ACL_VNI_, chipTypeThx, { IpInfo }, 0 },
   { IFP_GROUP_IPV6_ACL_VNI_, chipTypeThx, { DSCP, Ttl, IpInfo }, 0 },
   { IFP_GROUP_MIRROR_ACL_1_, chipTypeThx, { IpInfo }, 0 },
   { IFP_GROUP_MIRROR_ACL_2_, chipTypeThx, { IpInfo }, 0 },
   { IFP_GROUP_MIRROR_ACL_3_, chipTypeThx, { IpInfo }, 0 },
   { IFP_GROUP_MIRROR_ACL_4_, chipTypeThx, { IpInfo }, 0 },
   { IFP_GROUP_POLICY_QOS_IP_, chipTypeThx, { IpInfo }, 0 },
   { IFP_GROUP_POLICY_QOS_IPV6_, chipTypeThx, { DSCP }, 0 },
   { IFP_GROUP_SVI_POLICY_QOS_IP_, chipTypeThx, { IpInfo }, 0 },
   { IFP_GROUP_SVI_POLICY_QOS_IPV6_, chipTypeThx, { DSCP }, 0 },
   { IFP_GROUP_COS_WAR_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_COPP_IP_, chipTypeThx, { IpInfo }, 0 },
   { IFP_GROUP_COPP_IPV6_, chipTypeThx, { Ttl, IpInfo, DSCP }, 0 },
   { IFP_GROUP_PFC_WATCHDOG_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_STORM_CTL_PORT_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_UCAST_COLOR_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_IP_PBR_, chipTypeThx, { IpInfo }, 0 },
   { IFP_GROUP_IPV6_PBR_, chipTypeThx, { DSCP }, 0 },
   { IFP_GROUP_URPF_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_VXLAN_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_IP_SOURCE_GUARD_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_OPENFLOW_UDF_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_OPENFLOW_VXLAN_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_OPENFLOW_L2_ONLY_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_OPENFLOW_FULL_, chipTypeThx, { IpInfo, InPorts }, 0 },
   { IFP_GROUP_OPENFLOW_IPV6_PROTO_, chipTypeThx, { DSCP, InPorts }, 0 },
   { IFP_GROUP_CONDUIT_L2_ONLY_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_CONDUIT_FULL_, chipTypeThx, { IpInfo, InPorts }, 0 },
   { IFP_GROUP_CONDUIT_IPV6_VLAN_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_CONDUIT_IPV6_PROTO_, chipTypeThx, { DSCP, InPorts }, 0 },
   { IFP_GROUP_CONDUIT_FABRIC_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_CONDUIT_P4RT_REROUTE_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_CONDUIT_P4RT_EFFINGO_TABLE_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_CONDUIT_P4RT_PUNT_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_CONDUIT_P4RT_POSTCARD_IPV4_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_CONDUIT_P4RT_POSTCARD_IPV6_, chipTypeThx, { DSCP, InPorts }, 0 },
   { IFP_GROUP_CONDUIT_P4RT_POSTCARD_COLOR_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_FABRIC_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_MPC_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_URPF_THX_V4V6_EXCEPTION_, chipTypeThx, { InPorts }, 0 },
   { IFP_GROUP_EVPN_MULTIHOMING_, chipTypeThx, { InPorts }, 0 },
   { EFP_GROUP_MAC_ACL_, chipTypeThx, { InterfaceClassPort }, 0 },
   { EFP_GROUP_IP_ACL_, chipTypeThx, { IpInfo, InterfaceClassPort }, 0 },
   { EFP_GROUP_IPV6_PACL_, chipTypeThx, { InterfaceClassPort }, 0 },
   { EFP_GROUP_IPV6_EGRESS_ACL_, chipTypeThx, { DSCP, Ttl, InterfaceClassPort }, 0 },
   { EFP_GROUP_RACL_, chipTypeThx, { IpInfo }, 0 },
   { EFP_GROUP_IPV6_EGRESS_RACL_, chipTypeThx, { DSCP, Ttl }, 0 },
   { EFP_GROUP_POLICY_QOS_IP_, chipTypeThx, { InterfaceClassPort }, 0 },
   { EFP_GROUP_MIRROR_RATELIMIT_, chipTypeThx, { InterfaceClassPort }, 0 },
   { EFP_GROUP_VLAN_PRI_, chipTypeThx, { InterfaceClassPort }, 0 },
   { EFP_GROUP_ECN_COUNT_, chipTypeThx, { DSCP, InterfaceClassPort }, 0 },
   { VFP_GROUP_IP_ACL_, chipTypeThx, { IpInfo, InterfaceClassPort }, 0 },
   { VFP_GROUP_MAC_ACL_, chipTypeThx, { InterfaceClassPort }, 0 },
   { VFP_GROUP_IPV6_ACL_, chipTypeThx, { DSCP, IpInfo, InterfaceClassPort }, 0 },
   { VFP_GROUP_IPV6_STD_ACL_, chipTypeThx, { InterfaceClassPort }, 0 },
   { VFP_GROUP_PORT_VP_, chipTypeThx, { InterfaceClassPort }, 0 },
   { VFP_GROUP_VXLAN_PORT_VP_, chipTypeThx, { InterfaceClassPort }, 0 },
   { VFP_GROUP_FABRIC_, chipTypeThx, { InterfaceClassPort }, 0 },
   { VFP_GROUP_OPENFLOW_VFP_, chipTypeThx, { InterfaceClassPort }, 0 },
   { VFP_GROUP_CONDUIT_L2_ONLY_, chipTypeThx, { InterfaceClassPort }, 0 },
   // chipTypeTh3
   { IFP_GROUP_L3CTRL_OPENFLOW_, chipTypeTh3, { InPorts }, 0 },
   { IFP_GROUP_L3CTRL_SNOOPING_HELM_, chipTypeTh3, { IpInfo }, 0 },
   { IFP_GROUP_L2CTL_DOT1xMBA_, chipTypeTh3, { InPorts }, 0 },
   { IFP_GROUP_L2CTL_ARP_REQUEST_, chipTypeTh3, { InPorts }, 0 },
   { IFP_GROUP_L2CTL_ARP_REPLY_, chipTypeTh3, { InPorts }, 0 },
   { IFP_GROUP_IP_ACL_, chipTypeTh3, {
        IpInfo, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass, IpProtocolClass }, 0 },
   { IFP_GROUP_MAC_ACL_, chipTypeTh3, { EtherTypeClass }, 0 },
   { IFP_GROUP_IPV6_STD_PACL_RACL_, chipTypeTh3, { SrcIpClass, DstIpClass }, 0 },
   { IFP_GROUP_IP_RACL_, chipTypeTh3, {
        IpInfo, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass, IpProtocolClass }, 0 },
   { IFP_GROUP_IPV6_RACL_, chipTypeTh3, {
        DSCP, Ttl, IpInfo, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass,
        IpProtocolClass }, 0 },
   { IFP_GROUP_IPV6_ACL_, chipTypeTh3, {
        DSCP, Ttl, IpInfo, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass,
        IpProtocolClass }, 0 },
   { IFP_GROUP_IP_ACL_VNI_, chipTypeTh3, {
        IpInfo, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass, IpProtocolClass }, 0 },
   { IFP_GROUP_IPV6_ACL_VNI_, chipTypeTh3, {
        DSCP, Ttl, IpInfo, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass,
        IpProtocolClass }, 0 },
   { IFP_GROUP_MIRROR_ACL_1_, chipTypeTh3, {
        IpInfo, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass, IpProtocolClass,
        EtherTypeClass }, 0 },
   { IFP_GROUP_MIRROR_ACL_2_, chipTypeTh3, {
        IpInfo, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass, IpProtocolClass,
        EtherTypeClass }, 0 },
   { IFP_GROUP_MIRROR_ACL_3_, chipTypeTh3, {
        IpInfo, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass, IpProtocolClass,
        EtherTypeClass }, 0 },
   { IFP_GROUP_MIRROR_ACL_4_, chipTypeTh3, {
        IpInfo, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass, IpProtocolClass,
        EtherTypeClass }, 0 },
   { IFP_GROUP_POLICY_QOS_IP_, chipTypeTh3, {
        IpInfo, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass, IpProtocolClass }, 0 },
   { IFP_GROUP_POLICY_QOS_IPV6_, chipTypeTh3, {
        DSCP, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass, IpProtocolClass }, 0 },
   { IFP_GROUP_SVI_POLICY_QOS_IP_, chipTypeTh3, {
        IpInfo, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass, IpProtocolClass }, 0 },
   { IFP_GROUP_SVI_POLICY_QOS_IPV6_, chipTypeTh3, {
        DSCP, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass, IpProtocolClass }, 0 },
   { IFP_GROUP_COS_WAR_, chipTypeTh3, { InPorts }, 0 },
   { IFP_GROUP_COPP_IP_, chipTypeTh3, { IpInfo }, 0 },
   { IFP_GROUP_COPP_IPV6_, chipTypeTh3, { Ttl, IpInfo, DSCP }, 0 },
   { IFP_GROUP_PDP_, chipTypeTh3, {
        SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass, IpProtocolClass,
        EtherTypeClass }, 0 },
   { IFP_GROUP_PFC_WATCHDOG_, chipTypeTh3, { InPorts }, 0 },
   { IFP_GROUP_STORM_CTL_PORT_, chipTypeTh3, { InPorts }, 0 },
   { IFP_GROUP_UCAST_COLOR_, chipTypeTh3, { InPorts }, 0 },
   { IFP_GROUP_IP_PBR_, chipTypeTh3, {
        IpInfo, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass, IpProtocolClass }, 0 },
   { IFP_GROUP_IPV6_PBR_, chipTypeTh3, {
        DSCP, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass, IpProtocolClass }, 0 },
   { IFP_GROUP_URPF_, chipTypeTh3, { InPorts }, 0 },
   { IFP_GROUP_VXLAN_, chipTypeTh3, { InPorts }, 0 },
   { IFP_GROUP_IP_SOURCE_GUARD_, chipTypeTh3, { InPorts }, 0 },
   { IFP_GROUP_OPENFLOW_UDF_, chipTypeTh3, {
        InPorts, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass, IpProtocolClass,
        EtherTypeClass }, 0 },
   { IFP_GROUP_OPENFLOW_VXLAN_, chipTypeTh3, {
        InPorts, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass, IpProtocolClass }, 0 },
   { IFP_GROUP_OPENFLOW_L2_ONLY_, chipTypeTh3, { InPorts, EtherTypeClass }, 0 },
   { IFP_GROUP_OPENFLOW_FULL_, chipTypeTh3, {
        IpInfo, InPorts, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass,
        IpProtocolClass, EtherTypeClass }, 0 },
   { IFP_GROUP_OPENFLOW_IPV6_PROTO_, chipTypeTh3, {
        DSCP, InPorts, IpProtocolClass, EtherTypeClass }, 0 },
   { IFP_GROUP_CONDUIT_L2_ONLY_, chipTypeTh3, { InPorts, EtherTypeClass }, 0 },
   { IFP_GROUP_CONDUIT_FULL_, chipTypeTh3, {
        IpInfo, InPorts, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass,
        IpProtocolClass, EtherTypeClass }, 0 },
   { IFP_GROUP_CONDUIT_IPV6_VLAN_, chipTypeTh3, {
        InPorts, SrcIpClass, DstIpClass, EtherTypeClass }, 0 },
   { IFP_GROUP_CONDUIT_IPV6_PROTO_, chipTypeTh3, {
        DSCP, InPorts, IpProtocolClass, EtherTypeClass }, 0 },
   { IFP_GROUP_CONDUIT_FABRIC_, chipTypeTh3, { InPorts }, 0 },
   { IFP_GROUP_CONDUIT_P4RT_REROUTE_, chipTypeTh3, { InPorts, DstIpClass }, 0 },
   { IFP_GROUP_CONDUIT_P4RT_EFFINGO_TABLE_, chipTypeTh3, {
        InPorts, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass, IpProtocolClass }, 0 },
   { IFP_GROUP_CONDUIT_P4RT_PUNT_, chipTypeTh3, {
        InPorts, DstIpClass, L4SrcPortClass, L4DstPortClass, IpProtocolClass,
        EtherTypeClass }, 0 },
   { IFP_GROUP_CONDUIT_P4RT_POSTCARD_IPV4_, chipTypeTh3, {
        InPorts, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass, IpProtocolClass }, 0 },
   { IFP_GROUP_CONDUIT_P4RT_POSTCARD_IPV6_, chipTypeTh3, {
        DSCP, InPorts, SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass,
        IpProtocolClass }, 0 },
   { IFP_GROUP_CONDUIT_P4RT_POSTCARD_COLOR_, chipTypeTh3, { InPorts }, 0 },
   { IFP_GROUP_FABRIC_, chipTypeTh3, { InPorts }, 0 },
   { IFP_GROUP_MPC_, chipTypeTh3, { InPorts }, 0 },
   { IFP_GROUP_URPF_THX_V4V6_EXCEPTION_, chipTypeTh3, { InPorts }, 0 },
   { IFP_GROUP_IPMC_BOUNDARY_ROUTES_, chipTypeTh3, { SrcIpClass, DstIpClass }, 0 },
   { IFP_GROUP_NAT_SUPERSET_, chipTypeTh3, {
        SrcIpClass, DstIpClass, L4SrcPortClass, L4DstPortClass, IpProtocolClass }, 0 },
   { IFP_GROUP_EVPN_MULTIHOMING_, chipTypeTh3, { InPorts }, 0 },
   { EFP_GROUP_MAC_ACL_, chipTypeTh3, { InterfaceClassPort }, 0 },
   { EFP_GROUP_IP_ACL_, chipTypeTh3, { IpInfo, InterfaceClassPort }, 0 },
   { EFP_GROUP_IPV6_PACL_, chipTypeTh3, { InterfaceClassPort }, 0 },
   { EFP_GROUP_IPV6_EGRESS_ACL_, chipTypeTh3, { DSCP, Ttl, InterfaceClassPort }, 0 },
   { EFP_GROUP_RACL_, chipTypeTh3, { IpInfo }, 0 },
   { EFP_GROUP_IPV6_EGRESS_RACL_, chipTypeTh3, { DSCP, Ttl }, 0 },
   { EFP_GROUP_POLICY_QOS_IP_, chipTypeTh3, { InterfaceClassPort }, 0 },
   { EFP_GROUP_MIRROR_RATELIMIT_, chipTypeTh3, { InterfaceClassPort }, 0 },
   { EFP_GROUP_VLAN_PRI_, chipTypeTh3, { InterfaceClassPort }, 0 },
   { EFP_GROUP_ECN_COUNT_, chipTypeTh3, { DSCP, InterfaceClassPort }, 0 },
   { VFP_GROUP_IP_ACL_, chipTypeTh3, { IpInfo, InterfaceClassPort }, 0 },
   { VFP_GROUP_MAC_ACL_, chipTypeTh3, { InterfaceClassPort }, 0 },
   { VFP_GROUP_IPV6_ACL_, chipTypeTh3, { DSCP, IpInfo, InterfaceClassPort }, 0 },
   { VFP_GROUP_IPV6_STD_ACL_, chipTypeTh3, { InterfaceClassPort }, 0 },
   { VFP_GROUP_PORT_VP_, chipTypeTh3, { InterfaceClassPort }, 0 },
   { VFP_GROUP_VXLAN_PORT_VP_, chipTypeTh3, { InterfaceClassPort }, 0 },
   { VFP_GROUP_FABRIC_, chipTypeTh3, { InterfaceClassPort }, 0 },
   { VFP_GROUP_OPENFLOW_VFP_, chipTypeTh3, { InterfaceClassPort }, 0 },
   { VFP_GROUP_CONDUIT_L2_ONLY_, chipTypeTh3, { InterfaceClassPort }, 0 },
   { VFP_GROUP_TH3_SYS_ACL_, chipTypeTh3, { InterfaceClassPort }, 0 },
};

static_assert( std::size( excludeSources ) == numGroupExcludes );
static_assert( std::size( includeSources ) == numGroupIncludes );

template< std::size_t N >
constexpr std::array< TcamQsetModDef, N >
unfilledRows( const ModSource ( &sources )[ N ] ) {
   std::array< TcamQsetModDef, N > rows{};
   for ( std::size_t row = 0; row < N; ++row ) {
      const ModSource & source = sources[ row ];
      rows[ row ].groupId = static_cast< S32 >( source.groupId );
      rows[ row ].chipType = static_cast< S32 >( source.chipType );
      std::size_t count = 0;
      while ( count < std::size( source.quals ) && source.quals[ count ] != none ) {
         ++count;
      }
      rows[ row ].fields[ count ] = -1;
      rows[ row ].ipbmWar = source.ipbmWar;
   }
   return rows;
}

constinit std::array< TcamQsetModDef, numGroupExcludes > excludes =
   unfilledRows( excludeSources );
constinit std::array< TcamQsetModDef, numGroupIncludes > includes =
   unfilledRows( includeSources );

template< std::size_t N >
bool
fill( const ModSource ( &sources )[ N ], std::array< TcamQsetModDef, N > & rows ) {
   for ( std::size_t row = 0; row < N; ++row ) {
      fillQualifierSlots( sources[ row ].quals, qsetModQualifierSlots, rows[ row ].fields );
   }
   return true;
}

} // namespace

const TcamQsetModDef *
excludeRows() {
   static const bool filled = fill( excludeSources, excludes );
   static_cast< void >( filled );
   return excludes.data();
}

const TcamQsetModDef *
includeRows() {
   static const bool filled = fill( includeSources, includes );
   static_cast< void >( filled );
   return includes.data();
}

} // namespace Tessel::Tables
