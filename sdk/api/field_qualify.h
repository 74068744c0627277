// Qualifier setters and getters. A setter stores data and mask on an entry
// (or, with BCM_FIELD_QUALIFY_PRESEL or-ed into the id, on a preselector);
// a later set of the same qualifier replaces the earlier one. A packet
// matches a qualifier when ( packet value & mask ) == ( data & mask ); for
// the port sets (InPorts, DevicePortBitmap, the ports of MixedSrcClassId)
// when its ingress port is in data or outside mask.
//
// Results: BCM_E_NOT_FOUND for an unknown entry; BCM_E_PARAM when the
// entry's group does not have the qualifier in its qualifier set (setters on
// preselectors take any qualifier) or for a null pointer. A getter returns
// BCM_E_NOT_FOUND when the qualifier was never set on the entry (or was
// cleared), and what was set otherwise. Setting a qualifier of an installed
// entry takes effect at its next install.
#pragma once

#include "sdk/api/field.h"

extern "C" {

// Module and port of the destination.
int bcm_field_qualify_DstPort( int unit, bcm_field_entry_t entry, bcm_module_t data_modid,
                               bcm_module_t mask_modid, bcm_port_t data_port,
                               bcm_port_t mask_port );
int bcm_field_qualify_DstPort_get( int unit, bcm_field_entry_t entry,
                                   bcm_module_t * data_modid, bcm_module_t * mask_modid,
                                   bcm_port_t * data_port, bcm_port_t * mask_port );

// Range checkers (sdk/api/range.h): the entry matches when the checker hits,
// or misses with invert set. An entry may check several ranges; setting the
// same range again replaces its invert flag. The getter fills up to
// max_count ranges and sets count to the number the entry checks.
int bcm_field_qualify_RangeCheck( int unit, bcm_field_entry_t entry,
                                  bcm_field_range_t range,
                                  int invert );
int bcm_field_qualify_RangeCheck_get( int unit, bcm_field_entry_t entry, int max_count,
                                      bcm_field_range_t * range, int * invert, int * count );

// Preselectors: packets entering on a port of pbmp whose port class matches
// data under mask. On a pipe-local stage pbmp names the pipe of the groups
// that use the preselector (all its ports must lie in one pipe).
int bcm_field_qualify_MixedSrcClassId( int unit, bcm_field_entry_t entry, bcm_pbmp_t pbmp,
                                       uint32_t data, uint32_t mask );
int bcm_field_qualify_MixedSrcClassId_get( int unit, bcm_field_entry_t entry,
                                           bcm_pbmp_t * pbmp, uint32_t * data,
                                           uint32_t * mask );

// Packet bytes extracted by a data qualifier (sdk/api/field_data.h); length
// at most the qualifier's length.
int bcm_field_qualify_data( int unit, bcm_field_entry_t entry, int qual_id,
                            const uint8_t * data, const uint8_t * mask, uint16_t length );
int bcm_field_qualify_data_get( int unit, bcm_field_entry_t entry, int qual_id,
                                uint16_t max_length, uint8_t * data, uint8_t * mask,
                                uint16_t * actual_length );

// Packet bytes extracted by a UDF module object or flex-parser chunk
// (sdk/api/udf.h).
int bcm_field_qualify_udf( int unit, bcm_field_entry_t entry, int udf_id, int length,
                           const uint8_t * data, const uint8_t * mask );
int bcm_field_qualify_udf_get( int unit, bcm_field_entry_t entry, int udf_id,
                               int max_length,
                               uint8_t * data, uint8_t * mask, int * actual_length );

// Port bitmaps.
int bcm_field_qualify_InPorts( int unit, bcm_field_entry_t entry, bcm_pbmp_t data,
                               bcm_pbmp_t mask );
int bcm_field_qualify_InPorts_get( int unit, bcm_field_entry_t entry, bcm_pbmp_t * data,
                                   bcm_pbmp_t * mask );
int bcm_field_qualify_DevicePortBitmap( int unit, bcm_field_entry_t entry,
                                        bcm_pbmp_t data, bcm_pbmp_t mask );
int bcm_field_qualify_DevicePortBitmap_get( int unit, bcm_field_entry_t entry,
                                            bcm_pbmp_t * data, bcm_pbmp_t * mask );

// MAC addresses, network byte order.
int bcm_field_qualify_SrcMac( int unit, bcm_field_entry_t entry, bcm_mac_t data,
                              bcm_mac_t mask );
int bcm_field_qualify_SrcMac_get( int unit, bcm_field_entry_t entry, bcm_mac_t * data,
                                  bcm_mac_t * mask );
int bcm_field_qualify_DstMac( int unit, bcm_field_entry_t entry, bcm_mac_t data,
                              bcm_mac_t mask );
int bcm_field_qualify_DstMac_get( int unit, bcm_field_entry_t entry, bcm_mac_t * data,
                                  bcm_mac_t * mask );

// IPv6 addresses, network byte order. The High forms match the upper 64 bits.
int bcm_field_qualify_SrcIp6( int unit, bcm_field_entry_t entry, bcm_ip6_t data,
                              bcm_ip6_t mask );
int bcm_field_qualify_SrcIp6_get( int unit, bcm_field_entry_t entry, bcm_ip6_t * data,
                                  bcm_ip6_t * mask );
int bcm_field_qualify_DstIp6( int unit, bcm_field_entry_t entry, bcm_ip6_t data,
                              bcm_ip6_t mask );
int bcm_field_qualify_DstIp6_get( int unit, bcm_field_entry_t entry, bcm_ip6_t * data,
                                  bcm_ip6_t * mask );
int bcm_field_qualify_SrcIp6High( int unit, bcm_field_entry_t entry, bcm_ip6_t data,
                                  bcm_ip6_t mask );
int bcm_field_qualify_SrcIp6High_get( int unit, bcm_field_entry_t entry, bcm_ip6_t * data,
                                      bcm_ip6_t * mask );
int bcm_field_qualify_DstIp6High( int unit, bcm_field_entry_t entry, bcm_ip6_t data,
                                  bcm_ip6_t mask );
int bcm_field_qualify_DstIp6High_get( int unit, bcm_field_entry_t entry, bcm_ip6_t * data,
                                      bcm_ip6_t * mask );

// IPv4 addresses, host byte order.
int bcm_field_qualify_SrcIp( int unit, bcm_field_entry_t entry, bcm_ip_t data,
                             bcm_ip_t mask );
int bcm_field_qualify_SrcIp_get( int unit, bcm_field_entry_t entry, bcm_ip_t * data,
                                 bcm_ip_t * mask );
int bcm_field_qualify_DstIp( int unit, bcm_field_entry_t entry, bcm_ip_t data,
                             bcm_ip_t mask );
int bcm_field_qualify_DstIp_get( int unit, bcm_field_entry_t entry, bcm_ip_t * data,
                                 bcm_ip_t * mask );
int bcm_field_qualify_InnerSrcIp( int unit, bcm_field_entry_t entry, bcm_ip_t data,
                                  bcm_ip_t mask );
int bcm_field_qualify_InnerSrcIp_get( int unit, bcm_field_entry_t entry, bcm_ip_t * data,
                                      bcm_ip_t * mask );
int bcm_field_qualify_InnerDstIp( int unit, bcm_field_entry_t entry, bcm_ip_t data,
                                  bcm_ip_t mask );
int bcm_field_qualify_InnerDstIp_get( int unit, bcm_field_entry_t entry, bcm_ip_t * data,
                                      bcm_ip_t * mask );

// Signed 32-bit values.
int bcm_field_qualify_InPort( int unit, bcm_field_entry_t entry, bcm_port_t data,
                              bcm_port_t mask );
int bcm_field_qualify_InPort_get( int unit, bcm_field_entry_t entry, bcm_port_t * data,
                                  bcm_port_t * mask );
int bcm_field_qualify_OutPort( int unit, bcm_field_entry_t entry, bcm_port_t data,
                               bcm_port_t mask );
int bcm_field_qualify_OutPort_get( int unit, bcm_field_entry_t entry, bcm_port_t * data,
                                   bcm_port_t * mask );
int bcm_field_qualify_L4SrcPort( int unit, bcm_field_entry_t entry, bcm_l4_port_t data,
                                 bcm_l4_port_t mask );
int bcm_field_qualify_L4SrcPort_get( int unit, bcm_field_entry_t entry,
                                     bcm_l4_port_t * data, bcm_l4_port_t * mask );
int bcm_field_qualify_L4DstPort( int unit, bcm_field_entry_t entry, bcm_l4_port_t data,
                                 bcm_l4_port_t mask );
int bcm_field_qualify_L4DstPort_get( int unit, bcm_field_entry_t entry,
                                     bcm_l4_port_t * data, bcm_l4_port_t * mask );
int bcm_field_qualify_SrcTrunk( int unit, bcm_field_entry_t entry, bcm_trunk_t data,
                                bcm_trunk_t mask );
int bcm_field_qualify_SrcTrunk_get( int unit, bcm_field_entry_t entry, bcm_trunk_t * data,
                                    bcm_trunk_t * mask );
int bcm_field_qualify_DstL3Egress( int unit, bcm_field_entry_t entry, int data,
                                   int mask );
int bcm_field_qualify_DstL3Egress_get( int unit, bcm_field_entry_t entry, int * data,
                                       int * mask );
int bcm_field_qualify_DstMultipath( int unit, bcm_field_entry_t entry, int data,
                                    int mask );
int bcm_field_qualify_DstMultipath_get( int unit, bcm_field_entry_t entry, int * data,
                                        int * mask );

// 16-bit values.
int bcm_field_qualify_EtherType( int unit, bcm_field_entry_t entry, uint16_t data,
                                 uint16_t mask );
int bcm_field_qualify_EtherType_get( int unit, bcm_field_entry_t entry, uint16_t * data,
                                     uint16_t * mask );
int bcm_field_qualify_OuterVlanId( int unit, bcm_field_entry_t entry, bcm_vlan_t data,
                                   bcm_vlan_t mask );
int bcm_field_qualify_OuterVlanId_get( int unit, bcm_field_entry_t entry,
                                       bcm_vlan_t * data, bcm_vlan_t * mask );
int bcm_field_qualify_InnerVlanId( int unit, bcm_field_entry_t entry, bcm_vlan_t data,
                                   bcm_vlan_t mask );
int bcm_field_qualify_InnerVlanId_get( int unit, bcm_field_entry_t entry,
                                       bcm_vlan_t * data, bcm_vlan_t * mask );
int bcm_field_qualify_ForwardingVlanId( int unit, bcm_field_entry_t entry,
                                        bcm_vlan_t data, bcm_vlan_t mask );
int bcm_field_qualify_ForwardingVlanId_get( int unit, bcm_field_entry_t entry,
                                            bcm_vlan_t * data, bcm_vlan_t * mask );
int bcm_field_qualify_EgressClassL3Interface( int unit, bcm_field_entry_t entry,
                                              uint16_t data, uint16_t mask );
int bcm_field_qualify_EgressClassL3Interface_get( int unit, bcm_field_entry_t entry,
                                                  uint16_t * data, uint16_t * mask );
int bcm_field_qualify_EgressClassL2Gre( int unit, bcm_field_entry_t entry, uint16_t data,
                                        uint16_t mask );
int bcm_field_qualify_EgressClassL2Gre_get( int unit, bcm_field_entry_t entry,
                                            uint16_t * data, uint16_t * mask );
int bcm_field_qualify_EgressClassVxlan( int unit, bcm_field_entry_t entry, uint16_t data,
                                        uint16_t mask );
int bcm_field_qualify_EgressClassVxlan_get( int unit, bcm_field_entry_t entry,
                                            uint16_t * data, uint16_t * mask );
int bcm_field_qualify_IcmpTypeCode( int unit, bcm_field_entry_t entry, uint16_t data,
                                    uint16_t mask );
int bcm_field_qualify_IcmpTypeCode_get( int unit, bcm_field_entry_t entry,
                                        uint16_t * data, uint16_t * mask );

// 8-bit values.
int bcm_field_qualify_CpuQueue( int unit, bcm_field_entry_t entry, uint8_t data,
                                uint8_t mask );
int bcm_field_qualify_CpuQueue_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                    uint8_t * mask );
int bcm_field_qualify_Drop( int unit, bcm_field_entry_t entry, uint8_t data,
                            uint8_t mask );
int bcm_field_qualify_Drop_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                uint8_t * mask );
int bcm_field_qualify_DSCP( int unit, bcm_field_entry_t entry, uint8_t data,
                            uint8_t mask );
int bcm_field_qualify_DSCP_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                uint8_t * mask );
int bcm_field_qualify_HiGig( int unit, bcm_field_entry_t entry, uint8_t data,
                             uint8_t mask );
int bcm_field_qualify_HiGig_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                 uint8_t * mask );
int bcm_field_qualify_IngressStpState( int unit, bcm_field_entry_t entry, uint8_t data,
                                       uint8_t mask );
int bcm_field_qualify_IngressStpState_get( int unit, bcm_field_entry_t entry,
                                           uint8_t * data, uint8_t * mask );
int bcm_field_qualify_IntPriority( int unit, bcm_field_entry_t entry, uint8_t data,
                                   uint8_t mask );
int bcm_field_qualify_IntPriority_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                       uint8_t * mask );
int bcm_field_qualify_Ip6HopLimit( int unit, bcm_field_entry_t entry, uint8_t data,
                                   uint8_t mask );
int bcm_field_qualify_Ip6HopLimit_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                       uint8_t * mask );
int bcm_field_qualify_IpmcStarGroupHit( int unit, bcm_field_entry_t entry, uint8_t data,
                                        uint8_t mask );
int bcm_field_qualify_IpmcStarGroupHit_get( int unit, bcm_field_entry_t entry,
                                            uint8_t * data, uint8_t * mask );
int bcm_field_qualify_IpProtocol( int unit, bcm_field_entry_t entry, uint8_t data,
                                  uint8_t mask );
int bcm_field_qualify_IpProtocol_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                      uint8_t * mask );
int bcm_field_qualify_L2SrcStatic( int unit, bcm_field_entry_t entry, uint8_t data,
                                   uint8_t mask );
int bcm_field_qualify_L2SrcStatic_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                       uint8_t * mask );
int bcm_field_qualify_L3Routable( int unit, bcm_field_entry_t entry, uint8_t data,
                                  uint8_t mask );
int bcm_field_qualify_L3Routable_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                      uint8_t * mask );
int bcm_field_qualify_MirrorCopy( int unit, bcm_field_entry_t entry, uint8_t data,
                                  uint8_t mask );
int bcm_field_qualify_MirrorCopy_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                      uint8_t * mask );
int bcm_field_qualify_MyStationHit( int unit, bcm_field_entry_t entry, uint8_t data,
                                    uint8_t mask );
int bcm_field_qualify_MyStationHit_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                        uint8_t * mask );
int bcm_field_qualify_OuterVlanPri( int unit, bcm_field_entry_t entry, uint8_t data,
                                    uint8_t mask );
int bcm_field_qualify_OuterVlanPri_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                        uint8_t * mask );
int bcm_field_qualify_TcpControl( int unit, bcm_field_entry_t entry, uint8_t data,
                                  uint8_t mask );
int bcm_field_qualify_TcpControl_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                      uint8_t * mask );
int bcm_field_qualify_VlanFormat( int unit, bcm_field_entry_t entry, uint8_t data,
                                  uint8_t mask );
int bcm_field_qualify_VlanFormat_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                      uint8_t * mask );
int bcm_field_qualify_Ttl( int unit, bcm_field_entry_t entry, uint8_t data,
                           uint8_t mask );
int bcm_field_qualify_Ttl_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                               uint8_t * mask );
int bcm_field_qualify_Ip6NextHeader( int unit, bcm_field_entry_t entry, uint8_t data,
                                     uint8_t mask );
int bcm_field_qualify_Ip6NextHeader_get( int unit, bcm_field_entry_t entry,
                                         uint8_t * data, uint8_t * mask );
int bcm_field_qualify_Ip6TrafficClass( int unit, bcm_field_entry_t entry, uint8_t data,
                                       uint8_t mask );
int bcm_field_qualify_Ip6TrafficClass_get( int unit, bcm_field_entry_t entry,
                                           uint8_t * data, uint8_t * mask );
int bcm_field_qualify_OuterVlanCfi( int unit, bcm_field_entry_t entry, uint8_t data,
                                    uint8_t mask );
int bcm_field_qualify_OuterVlanCfi_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                        uint8_t * mask );
int bcm_field_qualify_InnerVlanPri( int unit, bcm_field_entry_t entry, uint8_t data,
                                    uint8_t mask );
int bcm_field_qualify_InnerVlanPri_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                        uint8_t * mask );
int bcm_field_qualify_InnerIpProtocol( int unit, bcm_field_entry_t entry, uint8_t data,
                                       uint8_t mask );
int bcm_field_qualify_InnerIpProtocol_get( int unit, bcm_field_entry_t entry,
                                           uint8_t * data, uint8_t * mask );

// Unsigned 32-bit values (class ids, metadata).
int bcm_field_qualify_DstClassField( int unit, bcm_field_entry_t entry, uint32_t data,
                                     uint32_t mask );
int bcm_field_qualify_DstClassField_get( int unit, bcm_field_entry_t entry,
                                         uint32_t * data, uint32_t * mask );
int bcm_field_qualify_DstClassL2( int unit, bcm_field_entry_t entry, uint32_t data,
                                  uint32_t mask );
int bcm_field_qualify_DstClassL2_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                      uint32_t * mask );
int bcm_field_qualify_DstClassL3( int unit, bcm_field_entry_t entry, uint32_t data,
                                  uint32_t mask );
int bcm_field_qualify_DstClassL3_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                      uint32_t * mask );
int bcm_field_qualify_FabricQueueTag( int unit, bcm_field_entry_t entry, uint32_t data,
                                      uint32_t mask );
int bcm_field_qualify_FabricQueueTag_get( int unit, bcm_field_entry_t entry,
                                          uint32_t * data, uint32_t * mask );
int bcm_field_qualify_IngressClassField( int unit, bcm_field_entry_t entry, uint32_t data,
                                         uint32_t mask );
int bcm_field_qualify_IngressClassField_get( int unit, bcm_field_entry_t entry,
                                             uint32_t * data, uint32_t * mask );
int bcm_field_qualify_InterfaceClassL2( int unit, bcm_field_entry_t entry, uint32_t data,
                                        uint32_t mask );
int bcm_field_qualify_InterfaceClassL2_get( int unit, bcm_field_entry_t entry,
                                            uint32_t * data, uint32_t * mask );
int bcm_field_qualify_InterfaceClassL3( int unit, bcm_field_entry_t entry, uint32_t data,
                                        uint32_t mask );
int bcm_field_qualify_InterfaceClassL3_get( int unit, bcm_field_entry_t entry,
                                            uint32_t * data, uint32_t * mask );
int bcm_field_qualify_InterfaceClassPort( int unit, bcm_field_entry_t entry,
                                          uint32_t data, uint32_t mask );
int bcm_field_qualify_InterfaceClassPort_get( int unit, bcm_field_entry_t entry,
                                              uint32_t * data, uint32_t * mask );
int bcm_field_qualify_InterfaceClassVPort( int unit, bcm_field_entry_t entry,
                                           uint32_t data, uint32_t mask );
int bcm_field_qualify_InterfaceClassVPort_get( int unit, bcm_field_entry_t entry,
                                               uint32_t * data, uint32_t * mask );
int bcm_field_qualify_IpInfo( int unit, bcm_field_entry_t entry, uint32_t data,
                              uint32_t mask );
int bcm_field_qualify_IpInfo_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                  uint32_t * mask );
int bcm_field_qualify_PacketRes( int unit, bcm_field_entry_t entry, uint32_t data,
                                 uint32_t mask );
int bcm_field_qualify_PacketRes_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                     uint32_t * mask );
int bcm_field_qualify_SrcClassField( int unit, bcm_field_entry_t entry, uint32_t data,
                                     uint32_t mask );
int bcm_field_qualify_SrcClassField_get( int unit, bcm_field_entry_t entry,
                                         uint32_t * data, uint32_t * mask );
int bcm_field_qualify_SrcClassL2( int unit, bcm_field_entry_t entry, uint32_t data,
                                  uint32_t mask );
int bcm_field_qualify_SrcClassL2_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                      uint32_t * mask );
int bcm_field_qualify_SrcClassL3( int unit, bcm_field_entry_t entry, uint32_t data,
                                  uint32_t mask );
int bcm_field_qualify_SrcClassL3_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                      uint32_t * mask );
int bcm_field_qualify_VxlanNetworkId( int unit, bcm_field_entry_t entry, uint32_t data,
                                      uint32_t mask );
int bcm_field_qualify_VxlanNetworkId_get( int unit, bcm_field_entry_t entry,
                                          uint32_t * data, uint32_t * mask );
int bcm_field_qualify_Vrf( int unit, bcm_field_entry_t entry, uint32_t data,
                           uint32_t mask );
int bcm_field_qualify_Vrf_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                               uint32_t * mask );
int bcm_field_qualify_Ip6FlowLabel( int unit, bcm_field_entry_t entry, uint32_t data,
                                    uint32_t mask );
int bcm_field_qualify_Ip6FlowLabel_get( int unit, bcm_field_entry_t entry,
                                        uint32_t * data, uint32_t * mask );
int bcm_field_qualify_DstIpClass( int unit, bcm_field_entry_t entry, uint32_t data,
                                  uint32_t mask );
int bcm_field_qualify_DstIpClass_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                      uint32_t * mask );
int bcm_field_qualify_SrcIpClass( int unit, bcm_field_entry_t entry, uint32_t data,
                                  uint32_t mask );
int bcm_field_qualify_SrcIpClass_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                      uint32_t * mask );
int bcm_field_qualify_L4SrcPortClass( int unit, bcm_field_entry_t entry, uint32_t data,
                                      uint32_t mask );
int bcm_field_qualify_L4SrcPortClass_get( int unit, bcm_field_entry_t entry,
                                          uint32_t * data, uint32_t * mask );
int bcm_field_qualify_L4DstPortClass( int unit, bcm_field_entry_t entry, uint32_t data,
                                      uint32_t mask );
int bcm_field_qualify_L4DstPortClass_get( int unit, bcm_field_entry_t entry,
                                          uint32_t * data, uint32_t * mask );
int bcm_field_qualify_IpProtocolClass( int unit, bcm_field_entry_t entry, uint32_t data,
                                       uint32_t mask );
int bcm_field_qualify_IpProtocolClass_get( int unit, bcm_field_entry_t entry,
                                           uint32_t * data, uint32_t * mask );
int bcm_field_qualify_EtherTypeClass( int unit, bcm_field_entry_t entry, uint32_t data,
                                      uint32_t mask );
int bcm_field_qualify_EtherTypeClass_get( int unit, bcm_field_entry_t entry,
                                          uint32_t * data, uint32_t * mask );
int bcm_field_qualify_CompressionSelect( int unit, bcm_field_entry_t entry, uint32_t data,
                                         uint32_t mask );
int bcm_field_qualify_CompressionSelect_get( int unit, bcm_field_entry_t entry,
                                             uint32_t * data, uint32_t * mask );
int bcm_field_qualify_CompressionAddrSelect( int unit, bcm_field_entry_t entry,
                                             uint32_t data, uint32_t mask );
int bcm_field_qualify_CompressionAddrSelect_get( int unit, bcm_field_entry_t entry,
                                                 uint32_t * data, uint32_t * mask );

// Enumerations: one value, no mask.
int bcm_field_qualify_ForwardingType( int unit, bcm_field_entry_t entry,
                                      bcm_field_ForwardingType_t value );
int bcm_field_qualify_ForwardingType_get( int unit, bcm_field_entry_t entry,
                                          bcm_field_ForwardingType_t * value );
int bcm_field_qualify_IpType( int unit, bcm_field_entry_t entry,
                              bcm_field_IpType_t value );
int bcm_field_qualify_IpType_get( int unit, bcm_field_entry_t entry,
                                  bcm_field_IpType_t * value );
int bcm_field_qualify_TunnelType( int unit, bcm_field_entry_t entry,
                                  bcm_field_TunnelType_t value );
int bcm_field_qualify_TunnelType_get( int unit, bcm_field_entry_t entry,
                                      bcm_field_TunnelType_t * value );
int bcm_field_qualify_IpFrag( int unit, bcm_field_entry_t entry,
                              bcm_field_IpFrag_t value );
int bcm_field_qualify_IpFrag_get( int unit, bcm_field_entry_t entry,
                                  bcm_field_IpFrag_t * value );
int bcm_field_qualify_L2Format( int unit, bcm_field_entry_t entry,
                                bcm_field_L2Format_t value );
int bcm_field_qualify_L2Format_get( int unit, bcm_field_entry_t entry,
                                    bcm_field_L2Format_t * value );
int bcm_field_qualify_Color( int unit, bcm_field_entry_t entry, bcm_field_color_t value );
int bcm_field_qualify_Color_get( int unit, bcm_field_entry_t entry,
                                 bcm_field_color_t * value );
int bcm_field_qualify_Stage( int unit, bcm_field_entry_t entry, bcm_field_stage_t value );
int bcm_field_qualify_Stage_get( int unit, bcm_field_entry_t entry,
                                 bcm_field_stage_t * value );
}
