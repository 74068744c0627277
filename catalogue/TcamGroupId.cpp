#include "catalogue/TcamGroupId.h"

#include <iterator>
#include <ostream>

#include "catalogue/EnumText.h"

namespace Tessel {

namespace {

const char * const names[] = {
   "IFP_INVALID_GROUP",
   "IFP_GROUP_L3CTRL_OPENFLOW",
   "IFP_GROUP_L3CTRL_SNOOPING_HELM",
   "IFP_GROUP_L2CTL_DOT1xMBA",
   "IFP_GROUP_L2CTL_ARP_REQUEST",
   "IFP_GROUP_L2CTL_ARP_REPLY",
   "IFP_GROUP_L2CTL_L3ROUTING",
   "IFP_GROUP_IP_ACL",
   "IFP_GROUP_MAC_ACL",
   "IFP_GROUP_IPV6_STD_PACL_RACL",
   "IFP_GROUP_IP_RACL",
   "IFP_GROUP_IPV6_RACL",
   "IFP_GROUP_IPV6_ACL",
   "IFP_GROUP_IP_ACL_VNI",
   "IFP_GROUP_IPV6_ACL_VNI",
   "IFP_GROUP_MIRROR_ACL_1",
   "IFP_GROUP_MIRROR_ACL_2",
   "IFP_GROUP_MIRROR_ACL_3",
   "IFP_GROUP_MIRROR_ACL_4",
   "IFP_GROUP_QOS",
   "IFP_GROUP_POLICY_QOS_IP",
   "IFP_GROUP_POLICY_QOS_IPV6",
   "IFP_GROUP_SVI_POLICY_QOS_IP",
   "IFP_GROUP_SVI_POLICY_QOS_IPV6",
   "IFP_GROUP_COS_WAR",
   "IFP_GROUP_COPP_IP",
   "IFP_GROUP_COPP_IPV6",
   "IFP_GROUP_PDP",
   "IFP_GROUP_PFC_WATCHDOG",
   "IFP_GROUP_STORM_CTL_PORT",
   "IFP_GROUP_UCAST_COLOR",
   "IFP_GROUP_IP_PBR",
   "IFP_GROUP_IPV6_PBR",
   "IFP_GROUP_URPF",
   "IFP_GROUP_VXLAN",
   "IFP_GROUP_VFI_UNKNOWN_MCAST",
   "IFP_GROUP_IP_SOURCE_GUARD",
   "IFP_GROUP_OPENFLOW_UDF",
   "IFP_GROUP_OPENFLOW_VXLAN",
   "IFP_GROUP_OPENFLOW_L2_ONLY",
   "IFP_GROUP_OPENFLOW_FULL",
   "IFP_GROUP_OPENFLOW_IPV6_PROTO",
   "IFP_GROUP_CONDUIT_L2_ONLY",
   "IFP_GROUP_CONDUIT_FULL",
   "IFP_GROUP_CONDUIT_IPV6_VLAN",
   "IFP_GROUP_CONDUIT_IPV6_PROTO",
   "IFP_GROUP_CONDUIT_FABRIC",
   "IFP_GROUP_CONDUIT_P4RT_REROUTE",
   "IFP_GROUP_CONDUIT_P4RT_EFFINGO_TABLE",
   "IFP_GROUP_CONDUIT_P4RT_PUNT",
   "IFP_GROUP_CONDUIT_P4RT_POSTCARD_IPV4",
   "IFP_GROUP_CONDUIT_P4RT_POSTCARD_IPV6",
   "IFP_GROUP_CONDUIT_P4RT_POSTCARD_COLOR",
   "IFP_GROUP_FABRIC",
   "IFP_GROUP_MPC",
   "IFP_GROUP_URPF_THX_V4V6_EXCEPTION",
   "IFP_GROUP_IPMC_BOUNDARY_ROUTES",
   "IFP_GROUP_NAT_SUPERSET",
   "IFP_GROUP_EVPN_MULTIHOMING",
   "EFP_GROUP_MAC_ACL",
   "EFP_GROUP_IP_ACL",
   "EFP_GROUP_IPV6_PACL",
   "EFP_GROUP_IPV6_EGRESS_ACL",
   "EFP_GROUP_RACL",
   "EFP_GROUP_IPV6_RACL",
   "EFP_GROUP_IPV6_EGRESS_RACL",
   "EFP_GROUP_POLICY_QOS_IP",
   "EFP_GROUP_MIRROR_RATELIMIT",
   "EFP_GROUP_VXLAN",
   "EFP_GROUP_VLAN_PRI",
   "EFP_GROUP_MLAG_PEER_LINK",
   "EFP_GROUP_COPP",
   "EFP_GROUP_ECN_COUNT",
   "VFP_GROUP_IP_ACL",
   "VFP_GROUP_MAC_ACL",
   "VFP_GROUP_IPV6_ACL",
   "VFP_GROUP_IPV6_STD_ACL",
   "VFP_GROUP_PORT_VP",
   "VFP_GROUP_VXLAN_PORT_VP",
   "VFP_GROUP_IP_VFI_EXCEPTION",
   "VFP_GROUP_PDP_CLASS",
   "VFP_GROUP_FABRIC",
   "VFP_GROUP_OPENFLOW_VFP",
   "VFP_GROUP_CONDUIT_L2_ONLY",
   "VFP_GROUP_TH3_SYS_ACL",
   "VFP_GROUP_CONDUIT_P4RT_VRF",
   "HIGHEST_TCAM_GROUP",
   "COMPRESS_GROUP_L4_SRC_PORT",
   "COMPRESS_GROUP_L4_DST_PORT",
   "COMPRESS_GROUP_SRC_IP",
   "COMPRESS_GROUP_DST_IP",
   "COMPRESS_GROUP_IP_PROTOCOL",
   "COMPRESS_GROUP_ETHER_TYPE",
};

static_assert( std::size( names ) == numTcamGroupIdValues );

} // namespace

std::string_view
valueToStrep( TcamGroupId value ) {
   return EnumText::name( names, value );
}

std::string
stringValue( TcamGroupId value ) {
   return EnumText::text( names, value );
}

std::ostream &
operator<<( std::ostream & os, TcamGroupId value ) {
   return os << stringValue( value );
}

bool
sequenceToValue( std::string_view text, TcamGroupId & value ) {
   auto parsed = EnumText::parse( names, text );
   if ( parsed ) {
      value = static_cast< TcamGroupId >( *parsed );
   }
   return parsed.has_value();
}

TcamGroupId
TcamGroupIdInstance( U32 value ) {
   return static_cast< TcamGroupId >( EnumText::checked( "TcamGroupId", names, value ) );
}

TcamGroupId
TcamGroupIdInstance( std::string_view text ) {
   return static_cast< TcamGroupId >( EnumText::parsed( "TcamGroupId", names, text ) );
}

} // namespace Tessel
