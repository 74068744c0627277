// Qualifier getters of the integer kinds: signed 32-bit, 16-bit, 8-bit and
// unsigned 32-bit values, each with a mask.
#include "manager/SdkShimAccess.h"
#include "show/QualifierPrinter.h"

namespace Tessel {

namespace {

void
inPort( U32 unit, U32 entryId, QualifierPrinter & p ) {
   bcm_port_t dataInt = 0, maskInt = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_InPort_get( unit, entryId, &dataInt, &maskInt ) );
   p.integer( rc, U32( dataInt ), U32( maskInt ) );
}

void
l4DstPort( U32 unit, U32 entryId, QualifierPrinter & p ) {
   bcm_l4_port_t dataInt = 0, maskInt = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_L4DstPort_get( unit, entryId, &dataInt, &maskInt ) );
   p.integer( rc, U32( dataInt ), U32( maskInt ) );
}

void
l4SrcPort( U32 unit, U32 entryId, QualifierPrinter & p ) {
   bcm_l4_port_t dataInt = 0, maskInt = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_L4SrcPort_get( unit, entryId, &dataInt, &maskInt ) );
   p.integer( rc, U32( dataInt ), U32( maskInt ) );
}

void
outPort( U32 unit, U32 entryId, QualifierPrinter & p ) {
   bcm_port_t dataInt = 0, maskInt = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_OutPort_get( unit, entryId, &dataInt, &maskInt ) );
   p.integer( rc, U32( dataInt ), U32( maskInt ) );
}

void
srcTrunk( U32 unit, U32 entryId, QualifierPrinter & p ) {
   bcm_trunk_t dataInt = 0, maskInt = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_SrcTrunk_get( unit, entryId, &dataInt, &maskInt ) );
   p.integer( rc, U32( dataInt ), U32( maskInt ) );
}

void
egressClassL3Interface( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint16_t data16 = 0, mask16 = 0;
   int rc = QUALIFIER_GET(
      bcm_field_qualify_EgressClassL3Interface_get( unit, entryId, &data16, &mask16 ) );
   p.integer( rc, U32( data16 ), U32( mask16 ) );
}

void
forwardingVlanId( U32 unit, U32 entryId, QualifierPrinter & p ) {
   bcm_vlan_t data16 = 0, mask16 = 0;
   int rc = QUALIFIER_GET(
      bcm_field_qualify_ForwardingVlanId_get( unit, entryId, &data16, &mask16 ) );
   p.integer( rc, U32( data16 ), U32( mask16 ) );
}

void
egressClassL2Gre( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint16_t data16 = 0, mask16 = 0;
   int rc = QUALIFIER_GET(
      bcm_field_qualify_EgressClassL2Gre_get( unit, entryId, &data16, &mask16 ) );
   p.integer( rc, U32( data16 ), U32( mask16 ) );
}

void
egressClassVxlan( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint16_t data16 = 0, mask16 = 0;
   int rc = QUALIFIER_GET(
      bcm_field_qualify_EgressClassVxlan_get( unit, entryId, &data16, &mask16 ) );
   p.integer( rc, U32( data16 ), U32( mask16 ) );
}

void
etherType( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint16_t data16 = 0, mask16 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_EtherType_get( unit, entryId, &data16, &mask16 ) );
   p.integer( rc, U32( data16 ), U32( mask16 ) );
}

void
outerVlanId( U32 unit, U32 entryId, QualifierPrinter & p ) {
   bcm_vlan_t data16 = 0, mask16 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_OuterVlanId_get( unit, entryId, &data16, &mask16 ) );
   p.integer( rc, U32( data16 ), U32( mask16 ) );
}

void
cpuQueue( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint8_t data8 = 0, mask8 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_CpuQueue_get( unit, entryId, &data8, &mask8 ) );
   p.integer( rc, U32( data8 ), U32( mask8 ) );
}

void
drop( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint8_t data8 = 0, mask8 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_Drop_get( unit, entryId, &data8, &mask8 ) );
   p.integer( rc, U32( data8 ), U32( mask8 ) );
}

void
dSCP( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint8_t data8 = 0, mask8 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_DSCP_get( unit, entryId, &data8, &mask8 ) );
   p.integer( rc, U32( data8 ), U32( mask8 ) );
}

void
hiGig( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint8_t data8 = 0, mask8 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_HiGig_get( unit, entryId, &data8, &mask8 ) );
   p.integer( rc, U32( data8 ), U32( mask8 ) );
}

void
ingressStpState( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint8_t data8 = 0, mask8 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_IngressStpState_get( unit, entryId, &data8, &mask8 ) );
   p.integer( rc, U32( data8 ), U32( mask8 ) );
}

void
intPriority( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint8_t data8 = 0, mask8 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_IntPriority_get( unit, entryId, &data8, &mask8 ) );
   p.integer( rc, U32( data8 ), U32( mask8 ) );
}

void
ip6HopLimit( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint8_t data8 = 0, mask8 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_Ip6HopLimit_get( unit, entryId, &data8, &mask8 ) );
   p.integer( rc, U32( data8 ), U32( mask8 ) );
}

void
ipmcStarGroupHit( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint8_t data8 = 0, mask8 = 0;
   int rc = QUALIFIER_GET(
      bcm_field_qualify_IpmcStarGroupHit_get( unit, entryId, &data8, &mask8 ) );
   p.integer( rc, U32( data8 ), U32( mask8 ) );
}

void
ipProtocol( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint8_t data8 = 0, mask8 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_IpProtocol_get( unit, entryId, &data8, &mask8 ) );
   p.integer( rc, U32( data8 ), U32( mask8 ) );
}

void
l2SrcStatic( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint8_t data8 = 0, mask8 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_L2SrcStatic_get( unit, entryId, &data8, &mask8 ) );
   p.integer( rc, U32( data8 ), U32( mask8 ) );
}

void
l3Routable( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint8_t data8 = 0, mask8 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_L3Routable_get( unit, entryId, &data8, &mask8 ) );
   p.integer( rc, U32( data8 ), U32( mask8 ) );
}

void
mirrorCopy( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint8_t data8 = 0, mask8 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_MirrorCopy_get( unit, entryId, &data8, &mask8 ) );
   p.integer( rc, U32( data8 ), U32( mask8 ) );
}

void
myStationHit( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint8_t data8 = 0, mask8 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_MyStationHit_get( unit, entryId, &data8, &mask8 ) );
   p.integer( rc, U32( data8 ), U32( mask8 ) );
}

void
outerVlanPri( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint8_t data8 = 0, mask8 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_OuterVlanPri_get( unit, entryId, &data8, &mask8 ) );
   p.integer( rc, U32( data8 ), U32( mask8 ) );
}

void
tcpControl( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint8_t data8 = 0, mask8 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_TcpControl_get( unit, entryId, &data8, &mask8 ) );
   p.integer( rc, U32( data8 ), U32( mask8 ) );
}

void
vlanFormat( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint8_t data8 = 0, mask8 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_VlanFormat_get( unit, entryId, &data8, &mask8 ) );
   p.integer( rc, U32( data8 ), U32( mask8 ) );
}

void
dstClassField( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint32_t dataU32 = 0, maskU32 = 0;
   int rc = QUALIFIER_GET(
      bcm_field_qualify_DstClassField_get( unit, entryId, &dataU32, &maskU32 ) );
   p.integer( rc, U32( dataU32 ), U32( maskU32 ) );
}

void
dstClassL2( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint32_t dataU32 = 0, maskU32 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_DstClassL2_get( unit, entryId, &dataU32, &maskU32 ) );
   p.integer( rc, U32( dataU32 ), U32( maskU32 ) );
}

void
dstClassL3( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint32_t dataU32 = 0, maskU32 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_DstClassL3_get( unit, entryId, &dataU32, &maskU32 ) );
   p.integer( rc, U32( dataU32 ), U32( maskU32 ) );
}

void
fabricQueueTag( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint32_t dataU32 = 0, maskU32 = 0;
   int rc = QUALIFIER_GET(
      bcm_field_qualify_FabricQueueTag_get( unit, entryId, &dataU32, &maskU32 ) );
   p.integer( rc, U32( dataU32 ), U32( maskU32 ) );
}

void
ingressClassField( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint32_t dataU32 = 0, maskU32 = 0;
   int rc = QUALIFIER_GET(
      bcm_field_qualify_IngressClassField_get( unit, entryId, &dataU32, &maskU32 ) );
   p.integer( rc, U32( dataU32 ), U32( maskU32 ) );
}

void
interfaceClassL2( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint32_t dataU32 = 0, maskU32 = 0;
   int rc = QUALIFIER_GET(
      bcm_field_qualify_InterfaceClassL2_get( unit, entryId, &dataU32, &maskU32 ) );
   p.integer( rc, U32( dataU32 ), U32( maskU32 ) );
}

void
interfaceClassL3( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint32_t dataU32 = 0, maskU32 = 0;
   int rc = QUALIFIER_GET(
      bcm_field_qualify_InterfaceClassL3_get( unit, entryId, &dataU32, &maskU32 ) );
   p.integer( rc, U32( dataU32 ), U32( maskU32 ) );
}

void
interfaceClassPort( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint32_t dataU32 = 0, maskU32 = 0;
   int rc = QUALIFIER_GET(
      bcm_field_qualify_InterfaceClassPort_get( unit, entryId, &dataU32, &maskU32 ) );
   p.integer( rc, U32( dataU32 ), U32( maskU32 ) );
}

void
interfaceClassVPort( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint32_t dataU32 = 0, maskU32 = 0;
   int rc = QUALIFIER_GET(
      bcm_field_qualify_InterfaceClassVPort_get( unit, entryId, &dataU32, &maskU32 ) );
   p.integer( rc, U32( dataU32 ), U32( maskU32 ) );
}

void
ipInfo( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint32_t dataU32 = 0, maskU32 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_IpInfo_get( unit, entryId, &dataU32, &maskU32 ) );
   p.integer( rc, U32( dataU32 ), U32( maskU32 ) );
}

void
packetRes( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint32_t dataU32 = 0, maskU32 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_PacketRes_get( unit, entryId, &dataU32, &maskU32 ) );
   p.integer( rc, U32( dataU32 ), U32( maskU32 ) );
}

void
srcClassField( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint32_t dataU32 = 0, maskU32 = 0;
   int rc = QUALIFIER_GET(
      bcm_field_qualify_SrcClassField_get( unit, entryId, &dataU32, &maskU32 ) );
   p.integer( rc, U32( dataU32 ), U32( maskU32 ) );
}

void
srcClassL2( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint32_t dataU32 = 0, maskU32 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_SrcClassL2_get( unit, entryId, &dataU32, &maskU32 ) );
   p.integer( rc, U32( dataU32 ), U32( maskU32 ) );
}

void
srcClassL3( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint32_t dataU32 = 0, maskU32 = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_SrcClassL3_get( unit, entryId, &dataU32, &maskU32 ) );
   p.integer( rc, U32( dataU32 ), U32( maskU32 ) );
}

void
vxlanNetworkId( U32 unit, U32 entryId, QualifierPrinter & p ) {
   uint32_t dataU32 = 0, maskU32 = 0;
   int rc = QUALIFIER_GET(
      bcm_field_qualify_VxlanNetworkId_get( unit, entryId, &dataU32, &maskU32 ) );
   p.integer( rc, U32( dataU32 ), U32( maskU32 ) );
}

} // namespace

std::vector< QualifierDump >
integerQualifierDumps() {
   const Shim::Sdk & s = sdkShim();
   return {
      { s.AR_bcmFieldQualifyInPort(), inPort },
      { s.AR_bcmFieldQualifyL4DstPort(), l4DstPort },
      { s.AR_bcmFieldQualifyL4SrcPort(), l4SrcPort },
      { s.AR_bcmFieldQualifyOutPort(), outPort },
      { s.AR_bcmFieldQualifySrcTrunk(), srcTrunk },
      { s.AR_bcmFieldQualifyEgressClassL3Interface(), egressClassL3Interface },
      { s.AR_bcmFieldQualifyForwardingVlanId(), forwardingVlanId },
      { s.AR_bcmFieldQualifyEgressClassL2Gre(), egressClassL2Gre },
      { s.AR_bcmFieldQualifyEgressClassVxlan(), egressClassVxlan },
      { s.AR_bcmFieldQualifyEtherType(), etherType },
      { s.AR_bcmFieldQualifyOuterVlanId(), outerVlanId },
      { s.AR_bcmFieldQualifyCpuQueue(), cpuQueue },
      { s.AR_bcmFieldQualifyDrop(), drop },
      { s.AR_bcmFieldQualifyDSCP(), dSCP },
      { s.AR_bcmFieldQualifyHiGig(), hiGig },
      { s.AR_bcmFieldQualifyIngressStpState(), ingressStpState },
      { s.AR_bcmFieldQualifyIntPriority(), intPriority },
      { s.AR_bcmFieldQualifyIp6HopLimit(), ip6HopLimit },
      { s.AR_bcmFieldQualifyIpmcStarGroupHit(), ipmcStarGroupHit },
      { s.AR_bcmFieldQualifyIpProtocol(), ipProtocol },
      { s.AR_bcmFieldQualifyL2SrcStatic(), l2SrcStatic },
      { s.AR_bcmFieldQualifyL3Routable(), l3Routable },
      { s.AR_bcmFieldQualifyMirrorCopy(), mirrorCopy },
      { s.AR_bcmFieldQualifyMyStationHit(), myStationHit },
      { s.AR_bcmFieldQualifyOuterVlanPri(), outerVlanPri },
      { s.AR_bcmFieldQualifyTcpControl(), tcpControl },
      { s.AR_bcmFieldQualifyVlanFormat(), vlanFormat },
      { s.AR_bcmFieldQualifyDstClassField(), dstClassField },
      { s.AR_bcmFieldQualifyDstClassL2(), dstClassL2 },
      { s.AR_bcmFieldQualifyDstClassL3(), dstClassL3 },
      { s.AR_bcmFieldQualifyFabricQueueTag(), fabricQueueTag },
      { s.AR_bcmFieldQualifyIngressClassField(), ingressClassField },
      { s.AR_bcmFieldQualifyInterfaceClassL2(), interfaceClassL2 },
      { s.AR_bcmFieldQualifyInterfaceClassL3(), interfaceClassL3 },
      { s.AR_bcmFieldQualifyInterfaceClassPort(), interfaceClassPort },
      { s.AR_bcmFieldQualifyInterfaceClassVPort(), interfaceClassVPort },
      { s.AR_bcmFieldQualifyIpInfo(), ipInfo },
      { s.AR_bcmFieldQualifyPacketRes(), packetRes },
      { s.AR_bcmFieldQualifySrcClassField(), srcClassField },
      { s.AR_bcmFieldQualifySrcClassL2(), srcClassL2 },
      { s.AR_bcmFieldQualifySrcClassL3(), srcClassL3 },
      { s.AR_bcmFieldQualifyVxlanNetworkId(), vxlanNetworkId },
   };
}

} // namespace Tessel
