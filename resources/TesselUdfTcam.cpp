// User-defined fields on the field processor's data qualifiers (chips
// without the UDF module or the flex parser).
#include "manager/TesselTcamGroupManager.h"

#include "common/TesselSdkCall.h"
#include "manager/SdkShimAccess.h"
#include "platform/fastlog/Trace.h"
#include "sdk/api/field_data.h"
#include "sdk/shim/SdkStructs.h"

TRACE_CHANNEL( "TesselTcam" );

namespace Tessel {

namespace {

bool
isL3Base( UdfOffsetBase base ) {
   return base == UdfBaseL3HeaderStart || base == UdfBaseL3HeaderEnd;
}

// The L2 header's start is the packet's; every later base counts from the
// outer L3 header (the L2 header's end is where it starts).
bcm_field_data_offset_base_t
sdkOffsetBase( UdfOffsetBase base ) {
   if ( base == UdfBasePacketStart ) {
      TRACE0( "UDF base " << base << " not supported " );
      KILN_ASSERT( base != UdfBasePacketStart );
   }
   const Shim::Sdk & shim = sdkShim();
   return static_cast< bcm_field_data_offset_base_t >(
      base == UdfBaseL2HeaderStart ? shim.AR_bcmFieldDataOffsetBasePacketStart()
                                   : shim.AR_bcmFieldDataOffsetBaseOuterL3Header() );
}

// Ethernet II packets of the ACL type's outer IP version. The IPv4 format is
// the one group teardown deletes from a group's data qualifiers.
Shim::DataPacketFormat
ipPacketFormat( int aclType ) {
   Shim::DataPacketFormat udfQualPktType;
   udfQualPktType.relative_offset = 0;
   udfQualPktType.l2 = BCM_FIELD_DATA_FORMAT_L2_ETH_II;
   udfQualPktType.outer_ip =
      aclType == Acl::ipv6_ ? BCM_FIELD_DATA_FORMAT_IP6 : BCM_FIELD_DATA_FORMAT_IP4;
   return udfQualPktType;
}

// Every Ethernet II packet (a MAC field without an ethertype).
Shim::DataPacketFormat
ethernetPacketFormat() {
   Shim::DataPacketFormat udfQualPktType;
   udfQualPktType.relative_offset = 0;
   udfQualPktType.l2 = BCM_FIELD_DATA_FORMAT_L2_ETH_II;
   udfQualPktType.outer_ip = BCM_FIELD_DATA_FORMAT_IP_ANY;
   return udfQualPktType;
}

Shim::DataEthertype
ethertypeFormat( U32 ethType ) {
   Shim::DataEthertype udfEthQualPktType;
   udfEthQualPktType.relative_offset = 0;
   udfEthQualPktType.ethertype = static_cast< bcm_ethertype_t >( ethType );
   udfEthQualPktType.l2 = BCM_FIELD_DATA_FORMAT_L2_ANY;
   udfEthQualPktType.vlan_tag = BCM_FIELD_DATA_FORMAT_VLAN_TAG_ANY;
   return udfEthQualPktType;
}

// Adds the packets the field serves to the qualifier; the SDK's code.
int
addPacketFormat( const TesselTcamGroupManager::UdfRequest & request, int qual_id ) {
   U32 unit = request.unit;
   if ( isL3Base( request.base ) ) {
      TRACE7( "Pkt format IP" );
      Shim::DataPacketFormat udfQualPktType = ipPacketFormat( request.aclType );
      return SDK_CALL_RESOURCE_OK(
         bcm_field_data_qualifier_packet_format_add( unit, qual_id, &udfQualPktType ) );
   }
   TRACE7( "Pkt format Ethernet II" );
   if ( request.ethType == UdfUnitSpec::ethTypeNotSet ) {
      TRACE7( "MAC ACL UDF Ether Type not set" );
      Shim::DataPacketFormat udfQualPktType = ethernetPacketFormat();
      return SDK_CALL_RESOURCE_OK(
         bcm_field_data_qualifier_packet_format_add( unit, qual_id, &udfQualPktType ) );
   }
   TRACE7( "MAC ACL UDF Ether Type = " << request.ethType );
   Shim::DataEthertype udfEthQualPktType = ethertypeFormat( request.ethType );
   return SDK_CALL_RESOURCE_OK(
      bcm_field_data_qualifier_ethertype_add( unit, qual_id, &udfEthQualPktType ) );
}

} // namespace

QualIdList
TesselTcamGroupManager::createUdfQualifierUdfTcam( const UdfRequest & request ) {
   U32 unit = request.unit;
   Shim::DataQualifier udfQual;
   udfQual.offset_base = sdkOffsetBase( request.base );
   udfQual.offset_is( request.offset );
   udfQual.length_is( request.length );
   if ( SDK_CALL_RESOURCE_OK( bcm_field_data_qualifier_create( unit, &udfQual ) ) ==
        BCM_E_RESOURCE ) {
      TRACE3( "Unit: " << unit << " Out of hw resources to create UDF" );
      udfHwResourceFull( unit );
      return {};
   }
   int qual_id = udfQual.qual_id;
   if ( addPacketFormat( request, qual_id ) == BCM_E_RESOURCE ) {
      SDK_CALL_CHECKED( bcm_field_data_qualifier_destroy( unit, qual_id ) );
      TRACE3( "Unit: " << unit << " No hw resources to program UDF"
                       << " udf: base=" << request.base << " normalized offset="
                       << U32( request.offset ) << " length=" << U32( request.length ) );
      udfHwResourceFull( unit );
      return {};
   }
   return QualIdList{ static_cast< U32 >( qual_id ) };
}

void
TesselTcamGroupManager::destroyUdfQualifierUdfTcam( U32 unit, U32 ethType, int aclType,
                                                    UdfOffsetBase base,
                                                    const QualIdList & quals ) {
   for ( U32 qual : quals ) {
      int udfQualId = static_cast< int >( qual );
      if ( isL3Base( base ) ) {
         Shim::DataPacketFormat udfQualPktType = ipPacketFormat( aclType );
         SDK_CALL_CHECKED(
            bcm_field_data_qualifier_packet_format_delete( unit, udfQualId, &udfQualPktType ) );
      } else if ( ethType == UdfUnitSpec::ethTypeNotSet ) {
         Shim::DataPacketFormat udfQualPktType = ethernetPacketFormat();
         SDK_CALL_CHECKED(
            bcm_field_data_qualifier_packet_format_delete( unit, udfQualId, &udfQualPktType ) );
      } else {
         Shim::DataEthertype udfEthQualPktType = ethertypeFormat( ethType );
         SDK_CALL_CHECKED(
            bcm_field_data_qualifier_ethertype_delete( unit, udfQualId, &udfEthQualPktType ) );
      }
      SDK_CALL_CHECKED( bcm_field_data_qualifier_destroy( unit, udfQualId ) );
   }
}

void
TesselTcamGroupManager::udfQualProgrammedInHwUdfTcam( U32 unit, const QualIdList & quals,
                                                      U8 offset, U8 length ) const {
   const Shim::Sdk & shim = sdkShim();
   for ( U32 qual : quals ) {
      int udfQualId = static_cast< int >( qual );
      Shim::DataQualifier udfQual;
      SDK_CALL_CHECKED( bcm_field_data_qualifier_get( unit, udfQualId, &udfQual ) );
      KILN_ASSERT( udfQual.offset_base == shim.AR_bcmFieldDataOffsetBaseOuterL3Header() ||
                   udfQual.offset_base == shim.AR_bcmFieldDataOffsetBasePacketStart() );
      KILN_ASSERT( udfQual.offset() == offset );
      KILN_ASSERT( udfQual.length() == length );
   }
}

// The unit is going: what group teardown left of the qualifiers goes too.
// Errors are traced; the chip may be gone already.
void
TesselTcamGroupManager::forgetUdfTcam( const UdfUnitSpec & spec, int aclType ) {
   U32 unit = spec.key().unit;
   for ( U32 qual : spec.key().quals ) {
      int udfQualId = static_cast< int >( qual );
      Shim::DataQualifier udfQual;
      if ( SDK_CALL( bcm_field_data_qualifier_get( unit, udfQualId, &udfQual ) ) < 0 ) {
         continue; // gone with its group
      }
      if ( isL3Base( spec.base() ) || spec.ethType() == UdfUnitSpec::ethTypeNotSet ) {
         Shim::DataPacketFormat udfQualPktType =
            isL3Base( spec.base() ) ? ipPacketFormat( aclType ) : ethernetPacketFormat();
         SDK_CALL_UNIT( unit, bcm_field_data_qualifier_packet_format_delete( unit, udfQualId,
                                                                             &udfQualPktType ) );
      } else {
         Shim::DataEthertype udfEthQualPktType = ethertypeFormat( spec.ethType() );
         SDK_CALL_UNIT( unit, bcm_field_data_qualifier_ethertype_delete( unit, udfQualId,
                                                                         &udfEthQualPktType ) );
      }
      SDK_CALL_UNIT( unit, bcm_field_data_qualifier_destroy( unit, udfQualId ) );
   }
}

} // namespace Tessel
