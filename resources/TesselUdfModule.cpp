// User-defined fields on the UDF module: one UDF object per field, hung on a
// packet-format object that fields selecting the same packets share.
#include "manager/TesselTcamGroupManager.h"

#include <algorithm>
#include <vector>

#include "common/TesselSdkCall.h"
#include "manager/SdkShimAccess.h"
#include "platform/fastlog/Trace.h"
#include "sdk/api/udf.h"
#include "sdk/shim/SdkStructs.h"

TRACE_CHANNEL( "TesselTcam" );

namespace Tessel {

namespace {

// pktFmtIdToUdfId keys a unit's packet format by unit and SDK id (the SDK
// picks ids below 2^24), so that two units' formats never meet.
constexpr U32 unitShift = 24;

PktFmtId
pktFmtKey( U32 unit, bcm_udf_pkt_format_id_t pktFmtId ) {
   return static_cast< PktFmtId >( ( unit << unitShift ) | static_cast< U32 >( pktFmtId ) );
}

U32
unitOfKey( PktFmtId key ) {
   return static_cast< U32 >( key ) >> unitShift;
}

bcm_udf_pkt_format_id_t
sdkIdOfKey( PktFmtId key ) {
   return static_cast< bcm_udf_pkt_format_id_t >( static_cast< U32 >( key ) &
                                                  ( ( 1u << unitShift ) - 1 ) );
}

// Only the L2 header's start counts from the L2 layer; every later base
// counts from the outer L3 header, where the L2 header ends.
int
layerOf( UdfOffsetBase base ) {
   const Shim::Sdk & shim = sdkShim();
   return base == UdfBaseL2HeaderStart ? shim.AR_bcmUdfLayerL2Header()
                                       : shim.AR_bcmUdfLayerL3OuterHeader();
}

// The packets a field serves: IPv4 or IPv6 packets (of the IP protocol,
// for OpenFlow fields), or the MAC field's ethertype (every Ethernet II
// packet without one).
Shim::UdfPktFormatInfo
packetFormatOf( const TesselTcamGroupManager::UdfRequest & request ) {
   Shim::UdfPktFormatInfo pktFmt;
   pktFmt.l2 = BCM_PKT_FORMAT_L2_ETH_II;
   if ( request.aclType != Acl::mac_ ) {
      bool v6 = request.aclType == Acl::ipv6_;
      pktFmt.ethertype = v6 ? 0x86DD : 0x0800;
      pktFmt.ethertype_mask = 0xFFFF;
      pktFmt.outer_ip = v6 ? BCM_PKT_FORMAT_IP6 : BCM_PKT_FORMAT_IP4;
      pktFmt.vlan_tag = BCM_PKT_FORMAT_VLAN_TAG_ANY;
      pktFmt.tunnel = BCM_PKT_FORMAT_TUNNEL_NONE;
      if ( request.ipProtocol ) {
         pktFmt.ip_protocol = static_cast< uint8_t >( request.ipProtocol );
         pktFmt.ip_protocol_mask = 0xFF;
      }
   } else if ( request.ethType == UdfUnitSpec::ethTypeNotSet ) {
      TRACE7( "MAC ACL UDF Ether Type not set" );
   } else {
      TRACE7( "MAC ACL UDF Ether Type = " << request.ethType );
      pktFmt.ethertype = static_cast< bcm_ethertype_t >( request.ethType );
      pktFmt.ethertype_mask = 0xFFFF;
   }
   return pktFmt;
}

} // namespace

// The unit's packet-format object that selects the field's packets: an
// existing one, else a new one; -1 when none can be made.
PktFmtId
TesselTcamGroupManager::udfModulePktFmt( const UdfRequest & request ) {
   U32 unit = request.unit;
   Shim::UdfPktFormatInfo wanted = packetFormatOf( request );
   for ( const auto & [ key, udfIds ] : pktFmtIdToUdfId_ ) {
      if ( unitOfKey( key ) != unit ) {
         continue;
      }
      bcm_udf_pkt_format_id_t pktFmtId = sdkIdOfKey( key );
      TRACE9( " Looking at pkt fmt id: " << pktFmtId );
      Shim::UdfPktFormatInfo pktFmt;
      SDK_CALL_CHECKED( bcm_udf_pkt_format_info_get( unit, pktFmtId, &pktFmt ) );
      if ( pktFmt == wanted ) {
         TRACE7( " Found Pkt format: " << pktFmtId );
         return pktFmtId;
      }
   }
   TRACE7( " Creating new pkt format object" );
   bcm_udf_pkt_format_options_t options = 0;
   bcm_udf_pkt_format_id_t pktFmtId = 0;
   Shim::UdfPktFormatInfo pktFmt = wanted;
   if ( SDK_CALL_RESOURCE_OK( bcm_udf_pkt_format_create( unit, options, &pktFmt, &pktFmtId ) ) ==
        BCM_E_RESOURCE ) {
      return -1;
   }
   return pktFmtId;
}

QualIdList
TesselTcamGroupManager::createUdfQualifierUdfModule( const UdfRequest & request ) {
   U32 unit = request.unit;
   Shim::Udf udf;
   udf.layer = static_cast< bcm_udf_layer_t >( layerOf( request.base ) );
   udf.start_is( request.offset * 8u );
   udf.width_is( request.length * 8u );
   bcm_udf_id_t udfId = 0;
   if ( SDK_CALL_RESOURCE_OK( bcm_udf_create( unit, NULL, &udf, &udfId ) ) == BCM_E_RESOURCE ) {
      TRACE3( "Unit: " << unit << " Out of hw resources to create UDF" );
      udfHwResourceFull( unit );
      return {};
   }
   PktFmtId pktFmtId = udfModulePktFmt( request );
   if ( pktFmtId < 0 ||
        SDK_CALL_RESOURCE_OK( bcm_udf_pkt_format_add( unit, udfId, pktFmtId ) ) ==
           BCM_E_RESOURCE ) {
      if ( pktFmtId >= 0 && !pktFmtIdToUdfIdHas( pktFmtKey( unit, pktFmtId ) ) ) {
         SDK_CALL_CHECKED( bcm_udf_pkt_format_destroy( unit, pktFmtId ) );
      }
      SDK_CALL_CHECKED( bcm_udf_destroy( unit, udfId ) );
      TRACE3( "Unit: " << unit << " No hw resources to program UDF"
                       << " udf: base=" << request.base << " normalized offset="
                       << U32( request.offset ) << " length=" << U32( request.length ) );
      udfHwResourceFull( unit );
      return {};
   }
   PktFmtId key = pktFmtKey( unit, pktFmtId );
   UdfIdList udfIds = pktFmtIdToUdfId( key );
   udfIds.insert( static_cast< U32 >( udfId ) );
   pktFmtIdToUdfIdIs( key, udfIds );
   return QualIdList{ static_cast< U32 >( udfId ) };
}

// The UDF is off the packet format: the format goes when no UDF is left on it.
void
TesselTcamGroupManager::udfModuleFormatRelease( U32 unit, U32 udfId, int pktFmtId ) {
   PktFmtId key = pktFmtKey( unit, pktFmtId );
   UdfIdList udfIds = pktFmtIdToUdfId( key );
   udfIds.erase( udfId );
   if ( !udfIds.empty() ) {
      pktFmtIdToUdfIdIs( key, udfIds );
      return;
   }
   SDK_CALL_CHECKED( bcm_udf_pkt_format_destroy( unit, pktFmtId ) );
   pktFmtIdToUdfIdDel( key );
}

void
TesselTcamGroupManager::destroyUdfQualifierUdfModule( U32 unit, const QualIdList & quals ) {
   for ( U32 qual : quals ) {
      bcm_udf_id_t udfId = static_cast< bcm_udf_id_t >( qual );
      std::vector< bcm_udf_pkt_format_id_t > pktFmtIds( BCM_UDF_PKT_FORMAT_MAX );
      int actual = 0;
      SDK_CALL_CHECKED( bcm_udf_pkt_format_get_all( unit, udfId, BCM_UDF_PKT_FORMAT_MAX,
                                                    pktFmtIds.data(), &actual ) );
      pktFmtIds.resize( static_cast< size_t >( std::min( actual, BCM_UDF_PKT_FORMAT_MAX ) ) );
      for ( bcm_udf_pkt_format_id_t pktFmtId : pktFmtIds ) {
         SDK_CALL_CHECKED( bcm_udf_pkt_format_delete( unit, udfId, pktFmtId ) );
         udfModuleFormatRelease( unit, qual, pktFmtId );
      }
      SDK_CALL_CHECKED( bcm_udf_destroy( unit, udfId ) );
   }
}

void
TesselTcamGroupManager::udfQualProgrammedInHwUdfModule( U32 unit, const QualIdList & quals,
                                                        UdfOffsetBase base, U8 fieldOffset,
                                                        U8 fieldLength ) const {
   const U32 offset = fieldOffset;
   const U32 length = fieldLength;
   for ( U32 qual : quals ) {
      bcm_udf_id_t udfId = static_cast< bcm_udf_id_t >( qual );
      Shim::Udf udf;
      SDK_CALL_CHECKED( bcm_udf_get( unit, udfId, &udf ) );
      KILN_ASSERT( udf.layer == layerOf( base ) );
      KILN_ASSERT( udf.start() == ( offset * 8 ) );
      KILN_ASSERT( udf.width() == ( length * 8 ) );
   }
}

// The unit is going: its UDFs and packet formats go (errors traced; the
// chip may be gone already).
void
TesselTcamGroupManager::forgetUdfModule( const UdfUnitSpec & spec ) {
   U32 unit = spec.key().unit;
   for ( U32 qual : spec.key().quals ) {
      bcm_udf_id_t udfId = static_cast< bcm_udf_id_t >( qual );
      for ( const auto & [ key, udfIds ] : pktFmtIdToUdfId_ ) {
         if ( unitOfKey( key ) == unit && udfIds.count( qual ) ) {
            bcm_udf_pkt_format_id_t pktFmtId = sdkIdOfKey( key );
            SDK_CALL_UNIT( unit, bcm_udf_pkt_format_delete( unit, udfId, pktFmtId ) );
         }
      }
      SDK_CALL_UNIT( unit, bcm_udf_destroy( unit, udfId ) );
   }
}

void
TesselTcamGroupManager::forgetUdfModulePktFmts( U32 unit ) {
   for ( const auto & [ key, udfIds ] : pktFmtIdToUdfId_ ) {
      if ( unitOfKey( key ) == unit ) {
         bcm_udf_pkt_format_id_t pktFmtId = sdkIdOfKey( key );
         SDK_CALL_UNIT( unit, bcm_udf_pkt_format_destroy( unit, pktFmtId ) );
         pktFmtIdToUdfIdDel( key );
      }
   }
}

} // namespace Tessel
