// User-defined fields on the flex parser: a field takes chunks (2-byte
// extractors on the chips here) from the unit's free chunks and programs
// them, at the field's offset, on every abstract packet format whose
// packets it serves; its qualifiers are the chunk ids of those formats.
#include "manager/TesselTcamGroupManager.h"

#include <algorithm>
#include <optional>
#include <set>
#include <vector>

#include "common/TesselSdkCall.h"
#include "manager/SdkShimAccess.h"
#include "platform/fastlog/Trace.h"
#include "sdk/api/udf.h"
#include "sdk/shim/SdkStructs.h"

TRACE_CHANNEL( "TesselTcam" );

namespace Tessel {

namespace {

// The abstract packet formats that carry an L4 header.
const std::set< int > &
layer4Base() {
   static const std::set< int > formats = [] {
      const Shim::Sdk & shim = sdkShim();
      return std::set< int >{
         shim.AR_bcmUdfAbstractPktFormatIpv4Tcp(),
         shim.AR_bcmUdfAbstractPktFormatIpv4Udp(),
         shim.AR_bcmUdfAbstractPktFormatIpv4Sctp(),
         shim.AR_bcmUdfAbstractPktFormatIpv4Icmp(),
         shim.AR_bcmUdfAbstractPktFormatIpv6Tcp(),
         shim.AR_bcmUdfAbstractPktFormatIpv6Udp(),
         shim.AR_bcmUdfAbstractPktFormatIpv6Sctp(),
         shim.AR_bcmUdfAbstractPktFormatIpv6Icmp(),
         shim.AR_bcmUdfAbstractPktFormatIpv4Ipv4Tcp(),
         shim.AR_bcmUdfAbstractPktFormatIpv4Ipv4Udp(),
         shim.AR_bcmUdfAbstractPktFormatIpv4Ipv6Tcp(),
         shim.AR_bcmUdfAbstractPktFormatIpv4Ipv6Udp(),
         shim.AR_bcmUdfAbstractPktFormatIpv4GreIpv4Tcp(),
         shim.AR_bcmUdfAbstractPktFormatIpv4GreIpv4Udp(),
         shim.AR_bcmUdfAbstractPktFormatIpv4UdpVxlan(),
      };
   }();
   return formats;
}

// The formats a field is programmed on: MAC fields on Ethernet packets
// whose L3 is not parsed, IP fields on their version's L4 formats (the
// protocol's only, for OpenFlow fields), the VXLAN group's on VXLAN.
std::vector< int >
formatsOf( const TesselTcamGroupManager::UdfRequest & request ) {
   const Shim::Sdk & shim = sdkShim();
   if ( request.vxlan ) {
      return { shim.AR_bcmUdfAbstractPktFormatIpv4UdpVxlan() };
   }
   if ( request.aclType == Acl::mac_ ) {
      return { shim.AR_bcmUdfAbstractPktFormatUnknownL3() };
   }
   bool v6 = request.aclType == Acl::ipv6_;
   std::pair< U32, int > byProtocol[] = {
      { 6, v6 ? shim.AR_bcmUdfAbstractPktFormatIpv6Tcp()
              : shim.AR_bcmUdfAbstractPktFormatIpv4Tcp() },
      { 17, v6 ? shim.AR_bcmUdfAbstractPktFormatIpv6Udp()
               : shim.AR_bcmUdfAbstractPktFormatIpv4Udp() },
      { 132, v6 ? shim.AR_bcmUdfAbstractPktFormatIpv6Sctp()
                : shim.AR_bcmUdfAbstractPktFormatIpv4Sctp() },
      { v6 ? 58u : 1u, v6 ? shim.AR_bcmUdfAbstractPktFormatIpv6Icmp()
                          : shim.AR_bcmUdfAbstractPktFormatIpv4Icmp() },
   };
   std::vector< int > formats;
   for ( const auto & [ protocol, apf ] : byProtocol ) {
      if ( request.ipProtocol == protocol ) {
         return { apf };
      }
      formats.push_back( apf );
   }
   return formats;
}

// Programs the chunks on one abstract format at the field's offset (from the
// format's L3 header; a field based at the L2 header's start is moved by
// the format's L3 offset). The SDK's code; BCM_E_PARAM when the field lies
// before the format's L3 header.
int
program_abstract_pkt_type( U32 unit, int apfValue, UdfOffsetBase base, U32 offset, U32 width,
                           U32 chunkBmap, U32 & udfIdOut ) {
   bcm_udf_abstract_pkt_format_t apf = static_cast< bcm_udf_abstract_pkt_format_t >( apfValue );
   KILN_ASSERT( apf == ::Shim::sdk_->AR_bcmUdfAbstractPktFormatUnknownL3() ||
                layer4Base().find( apf ) != layer4Base().end() );
   Shim::UdfAbstractPktFormatInfo pfi;
   SDK_CALL_CHECKED( bcm_udf_abstract_pkt_format_info_get( unit, apf, &pfi ) );
   KILN_ASSERT( !( chunkBmap & pfi.chunk_bmap_used() ) );
   U32 fromL3 = base == UdfBaseL2HeaderStart ? pfi.base_offset : 0;
   if ( offset < fromL3 ) {
      TRACE3( "Unit: " << unit << " UDF offset " << offset
                       << " lies before the L3 header of abstract packet format " << apfValue );
      return BCM_E_PARAM;
   }
   Shim::UdfChunkInfo chunkInfo;
   chunkInfo.abstract_pkt_format = apf;
   chunkInfo.chunk_bmap = chunkBmap;
   chunkInfo.offset_is( offset - fromL3 );
   chunkInfo.width_is( width );
   bcm_udf_id_t udfId = 0;
   int rc = SDK_CALL_RESOURCE_OK( bcm_udf_chunk_create( unit, NULL, &chunkInfo, &udfId ) );
   udfIdOut = static_cast< U32 >( udfId );
   return rc;
}

U32
popcount( U32 bits ) {
   return static_cast< U32 >( __builtin_popcount( bits ) );
}

} // namespace

U32
TesselTcamGroupManager::flexChunkBitmap( U32 unit ) const {
   auto found = flexChunksUsed_.find( unit );
   return found == flexChunksUsed_.end() ? 0 : found->second;
}

// The lowest `count` free chunks of the unit, taken; 0 when too few are free.
U32
TesselTcamGroupManager::flexChunksTake( U32 unit, U32 count ) {
   const Agent::ChipInfo * info = chipInfo( unit );
   U32 chunks = info ? std::min< U32 >( info->flexChunkCount(), 32 ) : 0;
   U32 used = flexChunkBitmap( unit );
   U32 avail = chunks - popcount( used );
   if ( avail < count ) {
      TRACE3( "Unit: " << unit << " Not enough chunks to program UDF availChunks: " << avail
                       << " requested chunks: " << count );
      return 0;
   }
   U32 taken = 0;
   for ( U32 chunk = 0; popcount( taken ) < count; ++chunk ) {
      if ( !( used & ( 1u << chunk ) ) ) {
         taken |= 1u << chunk;
      }
   }
   flexChunksUsed_[ unit ] = used | taken;
   TRACE7( "Unit: " << unit << " Flex bitmap is now: 0x" << std::hex << ( used | taken ) );
   return taken;
}

void
TesselTcamGroupManager::flexChunksGive( U32 unit, U32 chunkBmap ) {
   U32 used = flexChunkBitmap( unit ) & ~chunkBmap;
   if ( used ) {
      flexChunksUsed_[ unit ] = used;
   } else {
      flexChunksUsed_.erase( unit );
   }
   TRACE7( "Unit: " << unit << " Flex bitmap is now: 0x" << std::hex << used );
}

QualIdList
TesselTcamGroupManager::createUdfQualifierFlexParser( const UdfRequest & request ) {
   U32 unit = request.unit;
   const Agent::ChipInfo * info = chipInfo( unit );
   U32 chunkBytes = info && info->flexChunkSize() ? info->flexChunkSize() : 1;
   U32 chunkBmap = flexChunksTake( unit, ( request.length + chunkBytes - 1 ) / chunkBytes );
   if ( !chunkBmap ) {
      udfHwResourceFull( unit );
      return {};
   }
   QualIdList quals;
   for ( int apf : formatsOf( request ) ) {
      U32 udfId = 0;
      int rc = program_abstract_pkt_type( unit, apf, request.base, request.offset,
                                          request.length, chunkBmap, udfId );
      if ( rc < 0 ) {
         destroyUdfQualifierFlexParser( unit, quals );
         flexChunksGive( unit, chunkBmap );
         if ( rc == BCM_E_RESOURCE ) {
            TRACE3( "Unit: " << unit << " No hw resources to program UDF" );
            udfHwResourceFull( unit );
         }
         return {};
      }
      quals.insert( udfId );
   }
   return quals;
}

void
TesselTcamGroupManager::destroyUdfQualifierFlexParser( U32 unit, const QualIdList & quals ) {
   U32 chunkBmap = 0;
   for ( U32 qual : quals ) {
      bcm_udf_id_t udfId = static_cast< bcm_udf_id_t >( qual );
      Shim::UdfChunkInfo chunkInfo;
      SDK_CALL_CHECKED( bcm_udf_chunk_info_get( unit, udfId, &chunkInfo ) );
      chunkBmap |= chunkInfo.chunk_bmap;
      SDK_CALL_CHECKED( bcm_udf_destroy( unit, udfId ) );
   }
   if ( chunkBmap ) {
      flexChunksGive( unit, chunkBmap );
   }
}

void
TesselTcamGroupManager::udfQualProgrammedInHwFlex( U32 unit, const QualIdList & quals,
                                                   UdfOffsetBase base, U8 offset,
                                                   U8 fieldLength ) const {
   const U32 length = fieldLength;
   std::optional< U32 > chunkBmap;
   for ( U32 qual : quals ) {
      bcm_udf_id_t udfId = static_cast< bcm_udf_id_t >( qual );
      Shim::UdfChunkInfo chunkInfo;
      SDK_CALL_CHECKED( bcm_udf_chunk_info_get( unit, udfId, &chunkInfo ) );
      Shim::UdfAbstractPktFormatInfo pfi;
      SDK_CALL_CHECKED(
         bcm_udf_abstract_pkt_format_info_get( unit, chunkInfo.abstract_pkt_format, &pfi ) );
      const U32 newOffset = offset - ( base == UdfBaseL2HeaderStart ? pfi.base_offset : 0 );
      KILN_ASSERT( chunkInfo.offset() == newOffset );
      KILN_ASSERT( chunkInfo.width() == length );
      const U32 progChunkBmap = chunkInfo.chunk_bmap;
      chunkBmap = chunkBmap.value_or( progChunkBmap );
      KILN_ASSERT( progChunkBmap == chunkBmap );
   }
   KILN_ASSERT( !chunkBmap || ( flexChunkBitmap( unit ) & *chunkBmap ) == *chunkBmap );
}

// The unit is going: its chunks go (errors traced; the chip may be gone).
void
TesselTcamGroupManager::forgetUdfFlex( const UdfUnitSpec & spec ) {
   U32 unit = spec.key().unit;
   for ( U32 qual : spec.key().quals ) {
      bcm_udf_id_t udfId = static_cast< bcm_udf_id_t >( qual );
      SDK_CALL_UNIT( unit, bcm_udf_destroy( unit, udfId ) );
   }
}

} // namespace Tessel
