#include "sdk/model/Udf.h"

#include <algorithm>

#include "sdk/api/error.h"
#include "sdk/api/port.h"

namespace ChipModel {

namespace {

constexpr int dataOffsetMax = 127;

// Field by field: the structures have padding, which copies need not keep.
bool
sameFormat( const bcm_field_data_packet_format_t & a, const bcm_field_data_packet_format_t & b ) {
   return a.relative_offset == b.relative_offset && a.l2 == b.l2 && a.vlan_tag == b.vlan_tag &&
          a.outer_ip == b.outer_ip && a.inner_ip == b.inner_ip && a.tunnel == b.tunnel;
}

bool
sameFormat( const bcm_field_data_ethertype_t & a, const bcm_field_data_ethertype_t & b ) {
   return a.relative_offset == b.relative_offset && a.ethertype == b.ethertype &&
          a.l2 == b.l2 && a.vlan_tag == b.vlan_tag;
}

// A selector field of a packet format: ANY, or the packet's alternative bit set.
bool
selects( U16 selector, U16 packetBit ) {
   return selector == 0xffff || ( selector & packetBit ) != 0;
}

U16
vlanBit( const PacketLayout & p ) {
   return p.vlanTagged ? BCM_FIELD_DATA_FORMAT_VLAN_SINGLE_TAGGED
                       : BCM_FIELD_DATA_FORMAT_VLAN_NO_TAG;
}

U16
ipBit( const PacketLayout & p ) {
   return p.ipv4   ? BCM_FIELD_DATA_FORMAT_IP4
          : p.ipv6 ? BCM_FIELD_DATA_FORMAT_IP6
                   : BCM_FIELD_DATA_FORMAT_IP_NONE;
}

std::vector< U8 >
bytesAt( const PacketLayout & p, U32 offset, U32 length ) {
   std::vector< U8 > out( length, 0 );
   for ( U32 i = 0; i < length && offset + i < p.bytes->size(); ++i ) {
      out[ i ] = ( *p.bytes )[ offset + i ];
   }
   return out;
}

std::optional< U32 >
dataBase( bcm_field_data_offset_base_t base, const PacketLayout & p ) {
   switch ( base ) {
   case bcmFieldDataOffsetBasePacketStart:
      return 0;
   case bcmFieldDataOffsetBaseOuterL3Header:
      return p.l3Offset; // right after the L2 header, whatever follows it
   case bcmFieldDataOffsetBaseOuterL4Header:
      return p.l4Offset;
   default:
      return std::nullopt; // no tunnels are modelled
   }
}

} // namespace

// --- data qualifiers -------------------------------------------------------

int
UdfTable::dataCreate( bcm_field_data_qualifier_t & qual ) {
   if ( !profile_->has( BCM_INFO_CAP_DATA_QUALIFIERS ) ) {
      return BCM_E_UNAVAIL;
   }
   if ( qual.byte_length < 1 || qual.byte_length > BCM_FIELD_DATA_QUALIFIER_LENGTH_MAX ||
        qual.byte_offset < 0 || qual.byte_offset > dataOffsetMax || qual.offset_base < 0 ||
        qual.offset_base >= bcmFieldDataOffsetBaseCount ) {
      return BCM_E_PARAM;
   }
   bool withId = qual.flags & BCM_FIELD_DATA_QUALIFIER_WITH_ID;
   if ( withId && ( qual.qual_id < 0 || qual.qual_id >= BCM_FIELD_USER_NUM_UDFS ) ) {
      return BCM_E_PARAM;
   }
   if ( withId && data_.count( qual.qual_id ) ) {
      return BCM_E_EXISTS;
   }
   U32 bytes = 0;
   for ( const auto & [ id, d ] : data_ ) {
      bytes += static_cast< U32 >( d.spec.byte_length );
   }
   if ( data_.size() >= profile_->dataQualifiers ||
        bytes + static_cast< U32 >( qual.byte_length ) > profile_->dataQualifierBytes ) {
      return BCM_E_RESOURCE;
   }
   if ( !withId ) {
      for ( qual.qual_id = 0; data_.count( qual.qual_id ); ++qual.qual_id ) {
      }
   }
   data_[ qual.qual_id ].spec = qual;
   return BCM_E_NONE;
}

int
UdfTable::dataDestroy( int id ) {
   auto it = data_.find( id );
   if ( it == data_.end() ) {
      return BCM_E_NOT_FOUND;
   }
   if ( !it->second.formats.empty() || !it->second.ethertypes.empty() ) {
      return BCM_E_BUSY;
   }
   data_.erase( it );
   return BCM_E_NONE;
}

const DataQualifier *
UdfTable::data( int id ) const {
   auto it = data_.find( id );
   return it == data_.end() ? nullptr : &it->second;
}

U32
UdfTable::dataFormatsUsed() const {
   U32 used = 0;
   for ( const auto & [ id, d ] : data_ ) {
      used += static_cast< U32 >( d.formats.size() + d.ethertypes.size() );
   }
   return used;
}

int
UdfTable::dataFormatAdd( int id, const bcm_field_data_packet_format_t & format ) {
   auto it = data_.find( id );
   if ( it == data_.end() ) {
      return BCM_E_NOT_FOUND;
   }
   auto & formats = it->second.formats;
   if ( std::any_of( formats.begin(), formats.end(), [ & ]( const auto & f ) {
           return sameFormat( f, format );
        } ) ) {
      return BCM_E_EXISTS;
   }
   if ( dataFormatsUsed() >= profile_->dataPacketFormats ) {
      return BCM_E_RESOURCE;
   }
   formats.push_back( format );
   return BCM_E_NONE;
}

int
UdfTable::dataFormatDelete( int id, const bcm_field_data_packet_format_t & format ) {
   auto it = data_.find( id );
   if ( it == data_.end() ) {
      return BCM_E_NOT_FOUND;
   }
   auto & formats = it->second.formats;
   auto found = std::find_if( formats.begin(), formats.end(), [ & ]( const auto & f ) {
      return sameFormat( f, format );
   } );
   if ( found == formats.end() ) {
      return BCM_E_NOT_FOUND;
   }
   formats.erase( found );
   return BCM_E_NONE;
}

int
UdfTable::dataEthertypeAdd( int id, const bcm_field_data_ethertype_t & etype ) {
   auto it = data_.find( id );
   if ( it == data_.end() ) {
      return BCM_E_NOT_FOUND;
   }
   auto & etypes = it->second.ethertypes;
   if ( std::any_of( etypes.begin(), etypes.end(), [ & ]( const auto & e ) {
           return sameFormat( e, etype );
        } ) ) {
      return BCM_E_EXISTS;
   }
   if ( dataFormatsUsed() >= profile_->dataPacketFormats ) {
      return BCM_E_RESOURCE;
   }
   etypes.push_back( etype );
   return BCM_E_NONE;
}

int
UdfTable::dataEthertypeDelete( int id, const bcm_field_data_ethertype_t & etype ) {
   auto it = data_.find( id );
   if ( it == data_.end() ) {
      return BCM_E_NOT_FOUND;
   }
   auto & etypes = it->second.ethertypes;
   auto found = std::find_if( etypes.begin(), etypes.end(), [ & ]( const auto & e ) {
      return sameFormat( e, etype );
   } );
   if ( found == etypes.end() ) {
      return BCM_E_NOT_FOUND;
   }
   etypes.erase( found );
   return BCM_E_NONE;
}

// --- UDF module and chunks (one id space) -------------------------------

bool
UdfTable::udfIdFree( bcm_udf_id_t id ) const {
   return !udfs_.count( id ) && !chunks_.count( id );
}

std::optional< bcm_udf_id_t >
UdfTable::pickUdfId() const {
   for ( bcm_udf_id_t id = 1; id < BCM_FIELD_USER_NUM_UDFS; ++id ) {
      if ( udfIdFree( id ) ) {
         return id;
      }
   }
   return std::nullopt;
}

int
UdfTable::udfCreate( const bcm_udf_t & spec, bcm_udf_id_t & id ) {
   if ( !profile_->has( BCM_INFO_CAP_UDF_MODULE ) ) {
      return BCM_E_UNAVAIL;
   }
   if ( spec.layer < 0 || spec.layer >= bcmUdfLayerCount || spec.start_bit % 8 ||
        spec.bit_width % 8 || spec.bit_width == 0 || spec.bit_width > 128 ) {
      return BCM_E_PARAM;
   }
   bool withId = spec.flags & BCM_UDF_CREATE_O_WITHID;
   if ( withId && ( id <= 0 || id >= BCM_FIELD_USER_NUM_UDFS ) ) {
      return BCM_E_PARAM;
   }
   if ( withId && !udfIdFree( id ) ) {
      return BCM_E_EXISTS;
   }
   std::optional< bcm_udf_id_t > picked = withId ? id : pickUdfId();
   if ( udfs_.size() >= profile_->udfObjects || !picked ) {
      return BCM_E_RESOURCE;
   }
   id = *picked;
   udfs_[ id ].spec = spec;
   return BCM_E_NONE;
}

int
UdfTable::udfDestroy( bcm_udf_id_t id ) {
   if ( chunks_.erase( id ) ) {
      return BCM_E_NONE;
   }
   auto it = udfs_.find( id );
   if ( it == udfs_.end() ) {
      return BCM_E_NOT_FOUND;
   }
   if ( !it->second.formats.empty() ) {
      return BCM_E_BUSY;
   }
   udfs_.erase( it );
   return BCM_E_NONE;
}

const UdfObject *
UdfTable::udf( bcm_udf_id_t id ) const {
   auto it = udfs_.find( id );
   return it == udfs_.end() ? nullptr : &it->second;
}

int
UdfTable::formatCreate( U32 options, const bcm_udf_pkt_format_info_t & info,
                        bcm_udf_pkt_format_id_t & id ) {
   if ( !profile_->has( BCM_INFO_CAP_UDF_MODULE ) ) {
      return BCM_E_UNAVAIL;
   }
   bool withId = options & BCM_UDF_PKT_FORMAT_CREATE_O_WITHID;
   if ( withId && id <= 0 ) {
      return BCM_E_PARAM;
   }
   if ( withId && formats_.count( id ) ) {
      return BCM_E_EXISTS;
   }
   if ( formats_.size() >= profile_->udfPacketFormats ) {
      return BCM_E_RESOURCE;
   }
   if ( !withId ) {
      for ( id = 1; formats_.count( id ); ++id ) {
      }
   }
   formats_[ id ] = info;
   return BCM_E_NONE;
}

int
UdfTable::formatDestroy( bcm_udf_pkt_format_id_t id ) {
   if ( !formats_.count( id ) ) {
      return BCM_E_NOT_FOUND;
   }
   for ( const auto & [ udfId, udf ] : udfs_ ) {
      if ( udf.formats.count( id ) ) {
         return BCM_E_BUSY;
      }
   }
   formats_.erase( id );
   return BCM_E_NONE;
}

const bcm_udf_pkt_format_info_t *
UdfTable::format( bcm_udf_pkt_format_id_t id ) const {
   auto it = formats_.find( id );
   return it == formats_.end() ? nullptr : &it->second;
}

int
UdfTable::formatAdd( bcm_udf_id_t udfId, bcm_udf_pkt_format_id_t formatId ) {
   auto it = udfs_.find( udfId );
   if ( it == udfs_.end() || !formats_.count( formatId ) ) {
      return BCM_E_NOT_FOUND;
   }
   if ( it->second.formats.count( formatId ) ) {
      return BCM_E_EXISTS;
   }
   if ( it->second.formats.size() >= BCM_UDF_PKT_FORMAT_MAX ) {
      return BCM_E_RESOURCE;
   }
   it->second.formats.insert( formatId );
   return BCM_E_NONE;
}

int
UdfTable::formatDelete( bcm_udf_id_t udfId, bcm_udf_pkt_format_id_t formatId ) {
   auto it = udfs_.find( udfId );
   if ( it == udfs_.end() || !it->second.formats.erase( formatId ) ) {
      return BCM_E_NOT_FOUND;
   }
   return BCM_E_NONE;
}

int
UdfTable::abstractInfo( bcm_udf_abstract_pkt_format_t apf,
                        bcm_udf_abstract_pkt_format_info_t & info ) const {
   if ( !profile_->has( BCM_INFO_CAP_FLEX_PARSER ) ) {
      return BCM_E_UNAVAIL;
   }
   if ( apf < 0 || apf >= bcmUdfAbstractPktFormatCount ) {
      return BCM_E_PARAM;
   }
   info = bcm_udf_abstract_pkt_format_info_t{};
   info.base_offset = 14;
   info.num_chunks = profile_->flexChunks;
   info.chunk_bytes = profile_->flexChunkBytes;
   for ( const auto & [ id, chunk ] : chunks_ ) {
      if ( chunk.abstract_pkt_format == apf ) {
         info.used_chunk_bmap |= chunk.chunk_bmap;
      }
   }
   return BCM_E_NONE;
}

int
UdfTable::chunkCreate( const bcm_udf_chunk_info_t & info, bcm_udf_id_t & id ) {
   bcm_udf_abstract_pkt_format_info_t apf;
   int rc = abstractInfo( info.abstract_pkt_format, apf );
   if ( rc != BCM_E_NONE ) {
      return rc;
   }
   U32 all = apf.num_chunks >= 32 ? ~0u : ( 1u << apf.num_chunks ) - 1;
   U32 capacity =
      static_cast< U32 >( __builtin_popcount( info.chunk_bmap ) ) * apf.chunk_bytes;
   if ( !info.chunk_bmap || ( info.chunk_bmap & ~all ) || info.chunk_width == 0 ||
        info.chunk_width > capacity ) {
      return BCM_E_PARAM;
   }
   if ( info.chunk_bmap & apf.used_chunk_bmap ) {
      return BCM_E_BUSY;
   }
   std::optional< bcm_udf_id_t > picked = pickUdfId();
   if ( !picked ) {
      return BCM_E_RESOURCE;
   }
   id = *picked;
   chunks_[ id ] = info;
   return BCM_E_NONE;
}

const bcm_udf_chunk_info_t *
UdfTable::chunk( bcm_udf_id_t id ) const {
   auto it = chunks_.find( id );
   return it == chunks_.end() ? nullptr : &it->second;
}

U32
UdfTable::packetFormatCount() const {
   return static_cast< U32 >( formats_.size() ) + dataFormatsUsed();
}

const bcm_udf_chunk_info_t *
UdfTable::chunkOn( bcm_udf_abstract_pkt_format_t apf, U32 chunkBmap ) const {
   for ( const auto & [ id, c ] : chunks_ ) {
      if ( c.abstract_pkt_format == apf && c.chunk_bmap == chunkBmap ) {
         return &c;
      }
   }
   return nullptr;
}

U32
UdfTable::keyBytes( const bcm_field_qset_t & qset ) const {
   U32 bytes = 0;
   U32 chunksInKey = 0; // chunk ids of several formats share their chunks
   for ( int id = 0; id < BCM_FIELD_USER_NUM_UDFS; ++id ) {
      if ( BCM_FIELD_BITSET_TEST( qset.udf_map, id ) && data( id ) ) {
         bytes += static_cast< U32 >( data( id )->spec.byte_length );
      }
      if ( BCM_FIELD_BITSET_TEST( qset.udf_id_map, id ) ) {
         if ( const UdfObject * u = udf( id ) ) {
            bytes += u->spec.bit_width / 8;
         } else if ( const bcm_udf_chunk_info_t * c = chunk( id ) ) {
            chunksInKey |= c->chunk_bmap;
         }
      }
   }
   return bytes + static_cast< U32 >( __builtin_popcount( chunksInKey ) ) *
                     profile_->flexChunkBytes;
}

// --- extraction ------------------------------------------------------------

std::optional< std::vector< U8 > >
UdfTable::extractData( int id, const PacketLayout & p ) const {
   const DataQualifier * d = data( id );
   if ( !d ) {
      return std::nullopt;
   }
   std::optional< int > relative;
   for ( const auto & f : d->formats ) {
      if ( selects( f.vlan_tag, vlanBit( p ) ) && selects( f.outer_ip, ipBit( p ) ) &&
           selects( f.l2, BCM_FIELD_DATA_FORMAT_L2_ETH_II ) &&
           selects( f.tunnel, BCM_FIELD_DATA_FORMAT_TUNNEL_NONE ) ) {
         relative = f.relative_offset;
         break;
      }
   }
   for ( const auto & e : d->ethertypes ) {
      if ( !relative && e.ethertype == p.etherType &&
           selects( e.vlan_tag, vlanBit( p ) ) ) {
         relative = e.relative_offset;
      }
   }
   std::optional< U32 > base = dataBase( d->spec.offset_base, p );
   if ( !relative || !base ) {
      return std::nullopt;
   }
   U32 offset = *base + static_cast< U32 >( d->spec.byte_offset + *relative );
   return bytesAt( p, offset, static_cast< U32 >( d->spec.byte_length ) );
}

std::optional< std::vector< U8 > >
UdfTable::extractUdf( bcm_udf_id_t id, const PacketLayout & p ) const {
   if ( const bcm_udf_chunk_info_t * c = chunk( id ) ) {
      // The key holds the chunks, not the format: the chunks of the id's
      // bitmap carry what the packet's own format programs them with.
      const bcm_udf_chunk_info_t * programmed = chunkOn( p.abstractFormat, c->chunk_bmap );
      if ( !programmed ) {
         return std::nullopt;
      }
      return bytesAt( p, p.l3Offset + programmed->chunk_offset, programmed->chunk_width );
   }
   const UdfObject * u = udf( id );
   if ( !u ) {
      return std::nullopt;
   }
   bool served = std::any_of( u->formats.begin(), u->formats.end(), [ & ]( auto formatId ) {
      const bcm_udf_pkt_format_info_t & f = formats_.at( formatId );
      return ( p.etherType & f.ethertype_mask ) == ( f.ethertype & f.ethertype_mask ) &&
             ( p.ipProtocol & f.ip_protocol_mask ) ==
                ( f.ip_protocol & f.ip_protocol_mask ) &&
             selects( f.vlan_tag, vlanBit( p ) ) && selects( f.outer_ip, ipBit( p ) );
   } );
   std::optional< U32 > base;
   switch ( u->spec.layer ) {
   case bcmUdfLayerL2Header:
      base = 0;
      break;
   case bcmUdfLayerL3OuterHeader:
      base = p.l3Offset;
      break;
   case bcmUdfLayerL4OuterHeader:
      base = p.l4Offset;
      break;
   default:
      break;
   }
   if ( !served || !base ) {
      return std::nullopt;
   }
   return bytesAt( p, *base + u->spec.start_bit / 8, u->spec.bit_width / 8 );
}

} // namespace ChipModel
