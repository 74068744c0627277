// Qualifier getters of the address, port-set, range and enumeration kinds.
#include "manager/SdkShimAccess.h"
#include "show/QualifierPrinter.h"

namespace Tessel {

namespace {

void
dstIp6( U32 unit, U32 entryId, QualifierPrinter & p ) {
   bcm_ip6_t dataIp6 = {}, maskIp6 = {};
   int rc = QUALIFIER_GET( bcm_field_qualify_DstIp6_get( unit, entryId, &dataIp6, &maskIp6 ) );
   p.ip6( rc, dataIp6, maskIp6 );
}

void
dstIp6High( U32 unit, U32 entryId, QualifierPrinter & p ) {
   bcm_ip6_t dataIp6 = {}, maskIp6 = {};
   int rc = QUALIFIER_GET( bcm_field_qualify_DstIp6High_get( unit, entryId, &dataIp6, &maskIp6 ) );
   p.ip6( rc, dataIp6, maskIp6 );
}

void
srcIp6( U32 unit, U32 entryId, QualifierPrinter & p ) {
   bcm_ip6_t dataIp6 = {}, maskIp6 = {};
   int rc = QUALIFIER_GET( bcm_field_qualify_SrcIp6_get( unit, entryId, &dataIp6, &maskIp6 ) );
   p.ip6( rc, dataIp6, maskIp6 );
}

void
srcIp6High( U32 unit, U32 entryId, QualifierPrinter & p ) {
   bcm_ip6_t dataIp6 = {}, maskIp6 = {};
   int rc = QUALIFIER_GET( bcm_field_qualify_SrcIp6High_get( unit, entryId, &dataIp6, &maskIp6 ) );
   p.ip6( rc, dataIp6, maskIp6 );
}

void
dstIp( U32 unit, U32 entryId, QualifierPrinter & p ) {
   bcm_ip_t dataIp = 0, maskIp = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_DstIp_get( unit, entryId, &dataIp, &maskIp ) );
   p.ip( rc, dataIp, maskIp );
}

void
srcIp( U32 unit, U32 entryId, QualifierPrinter & p ) {
   bcm_ip_t dataIp = 0, maskIp = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_SrcIp_get( unit, entryId, &dataIp, &maskIp ) );
   p.ip( rc, dataIp, maskIp );
}

void
dstMac( U32 unit, U32 entryId, QualifierPrinter & p ) {
   bcm_mac_t dataMac = {}, maskMac = {};
   int rc = QUALIFIER_GET( bcm_field_qualify_DstMac_get( unit, entryId, &dataMac, &maskMac ) );
   p.mac( rc, dataMac, maskMac );
}

void
srcMac( U32 unit, U32 entryId, QualifierPrinter & p ) {
   bcm_mac_t dataMac = {}, maskMac = {};
   int rc = QUALIFIER_GET( bcm_field_qualify_SrcMac_get( unit, entryId, &dataMac, &maskMac ) );
   p.mac( rc, dataMac, maskMac );
}

void
devicePortBitmap( U32 unit, U32 entryId, QualifierPrinter & p ) {
   bcm_pbmp_t dataPbmp = {}, maskPbmp = {};
   int rc = QUALIFIER_GET(
      bcm_field_qualify_DevicePortBitmap_get( unit, entryId, &dataPbmp, &maskPbmp ) );
   p.pbmp( rc, dataPbmp, maskPbmp );
}

void
inPorts( U32 unit, U32 entryId, QualifierPrinter & p ) {
   bcm_pbmp_t dataPbmp = {}, maskPbmp = {};
   int rc = QUALIFIER_GET( bcm_field_qualify_InPorts_get( unit, entryId, &dataPbmp, &maskPbmp ) );
   p.pbmp( rc, dataPbmp, maskPbmp );
}

void
dstPort( U32 unit, U32 entryId, QualifierPrinter & p ) {
   bcm_module_t dataModid = 0, maskModid = 0;
   bcm_port_t dataPort = 0, maskPort = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_DstPort_get(
      unit, entryId, &dataModid, &maskModid, &dataPort, &maskPort ) );
   p.modulePort( rc, dataModid, maskModid, dataPort, maskPort );
}

void
rangeCheck( U32 unit, U32 entryId, QualifierPrinter & p ) {
   constexpr int maxCount = 16;
   std::vector< bcm_field_range_t > ranges( maxCount );
   std::vector< int > inverts( maxCount );
   int count = 0;
   int rc = QUALIFIER_GET( bcm_field_qualify_RangeCheck_get(
      unit, entryId, maxCount, ranges.data(), inverts.data(), &count ) );
   p.ranges( rc, ranges, inverts, count );
}

void
forwardingType( U32 unit, U32 entryId, QualifierPrinter & p ) {
   bcm_field_ForwardingType_t value = bcmFieldForwardingTypeAny;
   int rc = QUALIFIER_GET( bcm_field_qualify_ForwardingType_get( unit, entryId, &value ) );
   p.enumeration( rc, bcm_field_ForwardingType_name( value ) );
}

void
ipType( U32 unit, U32 entryId, QualifierPrinter & p ) {
   bcm_field_IpType_t value = bcmFieldIpTypeAny;
   int rc = QUALIFIER_GET( bcm_field_qualify_IpType_get( unit, entryId, &value ) );
   p.enumeration( rc, bcm_field_IpType_name( value ) );
}

void
tunnelType( U32 unit, U32 entryId, QualifierPrinter & p ) {
   bcm_field_TunnelType_t value = bcmFieldTunnelTypeAny;
   int rc = QUALIFIER_GET( bcm_field_qualify_TunnelType_get( unit, entryId, &value ) );
   p.enumeration( rc, bcm_field_TunnelType_name( value ) );
}

void
ipFrag( U32 unit, U32 entryId, QualifierPrinter & p ) {
   bcm_field_IpFrag_t value = bcmFieldIpFragNon;
   int rc = QUALIFIER_GET( bcm_field_qualify_IpFrag_get( unit, entryId, &value ) );
   p.enumeration( rc, bcm_field_IpFrag_name( value ) );
}

} // namespace

std::vector< QualifierDump >
addressQualifierDumps() {
   const Shim::Sdk & s = sdkShim();
   return {
      { s.AR_bcmFieldQualifyDevicePortBitmap(), devicePortBitmap },
      { s.AR_bcmFieldQualifyInPorts(), inPorts },
      { s.AR_bcmFieldQualifyDstMac(), dstMac },
      { s.AR_bcmFieldQualifySrcMac(), srcMac },
      { s.AR_bcmFieldQualifyDstIp6(), dstIp6 },
      { s.AR_bcmFieldQualifyDstIp6High(), dstIp6High },
      { s.AR_bcmFieldQualifySrcIp6(), srcIp6 },
      { s.AR_bcmFieldQualifySrcIp6High(), srcIp6High },
      { s.AR_bcmFieldQualifyDstIp(), dstIp },
      { s.AR_bcmFieldQualifySrcIp(), srcIp },
      { s.AR_bcmFieldQualifyDstPort(), dstPort },
      { s.AR_bcmFieldQualifyRangeCheck(), rangeCheck },
      { s.AR_bcmFieldQualifyForwardingType(), forwardingType },
      { s.AR_bcmFieldQualifyIpType(), ipType },
      { s.AR_bcmFieldQualifyTunnelType(), tunnelType },
      { s.AR_bcmFieldQualifyIpFrag(), ipFrag },
   };
}

} // namespace Tessel
