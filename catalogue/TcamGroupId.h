// TcamGroupId: the hardware field groups that the TCAM manager creates on a
// unit. The prefix names the stage (IFP_ ingress, VFP_ lookup, EFP_ egress).
// IFP_INVALID_GROUP_ means no group, HIGHEST_TCAM_GROUP_ bounds the groups of
// the group table, and the COMPRESS_GROUP_ values above it name the class-id
// compression groups, which have no row in that table.
//
// Constants carry a trailing underscore; they compare directly with U32
// group ids, as assertion texts show ("groupId < HIGHEST_TCAM_GROUP_").
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

#include "common/TesselExport.h"
#include "platform/kiln/Types.h"

namespace Tessel {

enum TcamGroupId : U32 {
   IFP_INVALID_GROUP_ = 0,
   IFP_GROUP_L3CTRL_OPENFLOW_ = 1,
   IFP_GROUP_L3CTRL_SNOOPING_HELM_ = 2,
   IFP_GROUP_L2CTL_DOT1xMBA_ = 3,
   IFP_GROUP_L2CTL_ARP_REQUEST_ = 4,
   IFP_GROUP_L2CTL_ARP_REPLY_ = 5,
   IFP_GROUP_L2CTL_L3ROUTING_ = 6,
   IFP_GROUP_IP_ACL_ = 7,
   IFP_GROUP_MAC_ACL_ = 8,
   IFP_GROUP_IPV6_STD_PACL_RACL_ = 9,
   IFP_GROUP_IP_RACL_ = 10,
   IFP_GROUP_IPV6_RACL_ = 11,
   IFP_GROUP_IPV6_ACL_ = 12,
   IFP_GROUP_IP_ACL_VNI_ = 13,
   IFP_GROUP_IPV6_ACL_VNI_ = 14,
   IFP_GROUP_MIRROR_ACL_1_ = 15,
   IFP_GROUP_MIRROR_ACL_2_ = 16,
   IFP_GROUP_MIRROR_ACL_3_ = 17,
   IFP_GROUP_MIRROR_ACL_4_ = 18,
   IFP_GROUP_QOS_ = 19,
   IFP_GROUP_POLICY_QOS_IP_ = 20,
   IFP_GROUP_POLICY_QOS_IPV6_ = 21,
   IFP_GROUP_SVI_POLICY_QOS_IP_ = 22,
   IFP_GROUP_SVI_POLICY_QOS_IPV6_ = 23,
   IFP_GROUP_COS_WAR_ = 24,
   IFP_GROUP_COPP_IP_ = 25,
   IFP_GROUP_COPP_IPV6_ = 26,
   IFP_GROUP_PDP_ = 27,
   IFP_GROUP_PFC_WATCHDOG_ = 28,
   IFP_GROUP_STORM_CTL_PORT_ = 29,
   IFP_GROUP_UCAST_COLOR_ = 30,
   IFP_GROUP_IP_PBR_ = 31,
   IFP_GROUP_IPV6_PBR_ = 32,
   IFP_GROUP_URPF_ = 33,
   IFP_GROUP_VXLAN_ = 34,
   IFP_GROUP_VFI_UNKNOWN_MCAST_ = 35,
   IFP_GROUP_IP_SOURCE_GUARD_ = 36,
   IFP_GROUP_OPENFLOW_UDF_ = 37,
   IFP_GROUP_OPENFLOW_VXLAN_ = 38,
   IFP_GROUP_OPENFLOW_L2_ONLY_ = 39,
   IFP_GROUP_OPENFLOW_FULL_ = 40,
   IFP_GROUP_OPENFLOW_IPV6_PROTO_ = 41,
   IFP_GROUP_CONDUIT_L2_ONLY_ = 42,
   IFP_GROUP_CONDUIT_FULL_ = 43,
   IFP_GROUP_CONDUIT_IPV6_VLAN_ = 44,
   IFP_GROUP_CONDUIT_IPV6_PROTO_ = 45,
   IFP_GROUP_CONDUIT_FABRIC_ = 46,
   IFP_GROUP_CONDUIT_P4RT_REROUTE_ = 47,
   IFP_GROUP_CONDUIT_P4RT_EFFINGO_TABLE_ = 48,
   IFP_GROUP_CONDUIT_P4RT_PUNT_ = 49,
   IFP_GROUP_CONDUIT_P4RT_POSTCARD_IPV4_ = 50,
   IFP_GROUP_CONDUIT_P4RT_POSTCARD_IPV6_ = 51,
   IFP_GROUP_CONDUIT_P4RT_POSTCARD_COLOR_ = 52,
   IFP_GROUP_FABRIC_ = 53,
   IFP_GROUP_MPC_ = 54,
   IFP_GROUP_URPF_THX_V4V6_EXCEPTION_ = 55,
   IFP_GROUP_IPMC_BOUNDARY_ROUTES_ = 56,
   IFP_GROUP_NAT_SUPERSET_ = 57,
   IFP_GROUP_EVPN_MULTIHOMING_ = 58,
   EFP_GROUP_MAC_ACL_ = 59,
   EFP_GROUP_IP_ACL_ = 60,
   EFP_GROUP_IPV6_PACL_ = 61,
   EFP_GROUP_IPV6_EGRESS_ACL_ = 62,
   EFP_GROUP_RACL_ = 63,
   EFP_GROUP_IPV6_RACL_ = 64,
   EFP_GROUP_IPV6_EGRESS_RACL_ = 65,
   EFP_GROUP_POLICY_QOS_IP_ = 66,
   EFP_GROUP_MIRROR_RATELIMIT_ = 67,
   EFP_GROUP_VXLAN_ = 68,
   EFP_GROUP_VLAN_PRI_ = 69,
   EFP_GROUP_MLAG_PEER_LINK_ = 70,
   EFP_GROUP_COPP_ = 71,
   EFP_GROUP_ECN_COUNT_ = 72,
   VFP_GROUP_IP_ACL_ = 73,
   VFP_GROUP_MAC_ACL_ = 74,
   VFP_GROUP_IPV6_ACL_ = 75,
   VFP_GROUP_IPV6_STD_ACL_ = 76,
   VFP_GROUP_PORT_VP_ = 77,
   VFP_GROUP_VXLAN_PORT_VP_ = 78,
   VFP_GROUP_IP_VFI_EXCEPTION_ = 79,
   VFP_GROUP_PDP_CLASS_ = 80,
   VFP_GROUP_FABRIC_ = 81,
   VFP_GROUP_OPENFLOW_VFP_ = 82,
   VFP_GROUP_CONDUIT_L2_ONLY_ = 83,
   VFP_GROUP_TH3_SYS_ACL_ = 84,
   VFP_GROUP_CONDUIT_P4RT_VRF_ = 85,
   HIGHEST_TCAM_GROUP_ = 86,
   COMPRESS_GROUP_L4_SRC_PORT_ = 87,
   COMPRESS_GROUP_L4_DST_PORT_ = 88,
   COMPRESS_GROUP_SRC_IP_ = 89,
   COMPRESS_GROUP_DST_IP_ = 90,
   COMPRESS_GROUP_IP_PROTOCOL_ = 91,
   COMPRESS_GROUP_ETHER_TYPE_ = 92,
};

constexpr U32 numTcamGroupIdValues = 93;

// Text forms: the enumerator name without the trailing underscore.
// valueToStrep gives "" and stringValue the decimal number for a value
// outside the enumeration; stream output is stringValue.
TESSEL_EXPORT std::string_view
valueToStrep( TcamGroupId value );
TESSEL_EXPORT std::string
stringValue( TcamGroupId value );
TESSEL_EXPORT std::ostream &
operator<<( std::ostream & os, TcamGroupId value );

// Parses an enumerator name; false (value untouched) for any other text.
TESSEL_EXPORT bool
sequenceToValue( std::string_view text, TcamGroupId & value );

// A value from its number or its name; throws std::out_of_range for a
// number outside the enumeration and std::invalid_argument for an unknown
// name.
TESSEL_EXPORT TcamGroupId
TcamGroupIdInstance( U32 value );
TESSEL_EXPORT TcamGroupId
TcamGroupIdInstance( std::string_view text );

} // namespace Tessel
