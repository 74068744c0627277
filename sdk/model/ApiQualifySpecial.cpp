// Qualifiers with their own shapes: destination module and port, range
// checks, the preselector's port class, data qualifiers and UDFs.
#include <cstring>

#include "sdk/api/field_qualify.h"
#include "sdk/model/SdkCall.h"

using namespace ChipModel;

namespace {

std::vector< U8 >
concat( std::vector< U8 > a, const std::vector< U8 > & b ) {
   a.insert( a.end(), b.begin(), b.end() );
   return a;
}

std::vector< U8 >
pbmpBytes( const bcm_pbmp_t & pbmp ) {
   std::vector< U8 > out;
   for ( U32 word : pbmp.pbits ) {
      out = concat( out, toBytes( word, 4 ) );
   }
   return out;
}

U64
wordAt( const std::vector< U8 > & bytes, size_t at ) {
   return fromBytes( { bytes.begin() + static_cast< long >( at ),
                       bytes.begin() + static_cast< long >( at + 4 ) } );
}

FieldValue
bytesValue( const uint8_t * data, const uint8_t * mask, size_t length ) {
   return FieldValue{ { data, data + length }, { mask, mask + length } };
}

// Copies up to max bytes of a stored value out.
void
copyOut( const FieldValue & v, size_t max, uint8_t * data, uint8_t * mask ) {
   size_t n = std::min( max, v.data.size() );
   std::memcpy( data, v.data.data(), n );
   std::memcpy( mask, v.mask.data(), n );
}

} // namespace

extern "C" int
bcm_field_qualify_DstPort( int unit, bcm_field_entry_t entry, bcm_module_t data_modid,
                           bcm_module_t mask_modid, bcm_port_t data_port,
                           bcm_port_t mask_port ) {
   FieldValue value{ concat( toBytes( static_cast< U32 >( data_modid ), 4 ),
                             toBytes( static_cast< U32 >( data_port ), 4 ) ),
                     concat( toBytes( static_cast< U32 >( mask_modid ), 4 ),
                             toBytes( static_cast< U32 >( mask_port ), 4 ) ) };
   return sdkCall( __func__, unit, { entry, data_modid, mask_modid, data_port, mask_port },
                   [ & ]( Unit & u ) {
                      return u.state().field.qualify( entry, bcmFieldQualifyDstPort,
                                                      value );
                   } );
}

extern "C" int
bcm_field_qualify_DstPort_get( int unit, bcm_field_entry_t entry, bcm_module_t * data_modid,
                               bcm_module_t * mask_modid, bcm_port_t * data_port,
                               bcm_port_t * mask_port ) {
   return sdkCall( __func__, unit, { entry }, [ & ]( Unit & u ) {
      if ( !data_modid || !mask_modid || !data_port || !mask_port ) {
         return BCM_E_PARAM;
      }
      FieldValue v;
      int rc = u.state().field.qualifyGet( entry, bcmFieldQualifyDstPort, v );
      if ( rc == BCM_E_NONE ) {
         *data_modid = static_cast< bcm_module_t >( wordAt( v.data, 0 ) );
         *data_port = static_cast< bcm_port_t >( wordAt( v.data, 4 ) );
         *mask_modid = static_cast< bcm_module_t >( wordAt( v.mask, 0 ) );
         *mask_port = static_cast< bcm_port_t >( wordAt( v.mask, 4 ) );
      }
      return rc;
   } );
}

extern "C" int
bcm_field_qualify_RangeCheck( int unit, bcm_field_entry_t entry, bcm_field_range_t range,
                              int invert ) {
   return sdkCall( __func__, unit, { entry, range, invert }, [ & ]( Unit & u ) {
      UnitState & s = u.state();
      const Entry * e = s.field.entry( entry );
      if ( !e ) {
         return BCM_E_NOT_FOUND;
      }
      if ( !s.ranges.exists( range ) ) {
         return BCM_E_NOT_FOUND;
      }
      std::optional< U32 > rangePipe = s.ranges.pipeOf( range );
      int groupPipe = s.field.group( e->group )->pipe;
      if ( rangePipe && groupPipe >= 0 && static_cast< int >( *rangePipe ) != groupPipe ) {
         return BCM_E_PARAM;
      }
      return s.field.rangeCheckSet( entry, range, invert != 0 );
   } );
}

extern "C" int
bcm_field_qualify_RangeCheck_get( int unit, bcm_field_entry_t entry, int max_count,
                                  bcm_field_range_t * range, int * invert, int * count ) {
   return sdkCall( __func__, unit, { entry, max_count }, [ & ]( Unit & u ) {
      const Entry * e = u.state().field.entry( entry );
      if ( !count || ( max_count > 0 && ( !range || !invert ) ) ) {
         return BCM_E_PARAM;
      }
      if ( !e ) {
         return BCM_E_NOT_FOUND;
      }
      if ( e->soft.ranges.empty() ) {
         return BCM_E_NOT_FOUND;
      }
      *count = static_cast< int >( e->soft.ranges.size() );
      for ( int i = 0; i < max_count && i < *count; ++i ) {
         range[ i ] = e->soft.ranges[ static_cast< size_t >( i ) ].range;
         invert[ i ] = e->soft.ranges[ static_cast< size_t >( i ) ].invert ? 1 : 0;
      }
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_field_qualify_MixedSrcClassId( int unit, bcm_field_entry_t entry, bcm_pbmp_t pbmp,
                                   uint32_t data, uint32_t mask ) {
   std::vector< U8 > allPorts( 28, 0xff );
   FieldValue value{ concat( pbmpBytes( pbmp ), toBytes( data, 4 ) ),
                     concat( allPorts, toBytes( mask, 4 ) ) };
   return sdkCall( __func__, unit, { entry, data, mask }, [ & ]( Unit & u ) {
      return u.state().field.qualify( entry, bcmFieldQualifyMixedSrcClassId, value );
   } );
}

extern "C" int
bcm_field_qualify_MixedSrcClassId_get( int unit, bcm_field_entry_t entry, bcm_pbmp_t * pbmp,
                                       uint32_t * data, uint32_t * mask ) {
   return sdkCall( __func__, unit, { entry }, [ & ]( Unit & u ) {
      if ( !pbmp || !data || !mask ) {
         return BCM_E_PARAM;
      }
      FieldValue v;
      int rc = u.state().field.qualifyGet( entry, bcmFieldQualifyMixedSrcClassId, v );
      if ( rc == BCM_E_NONE ) {
         for ( int w = 0; w < BCM_PBMP_WORD_MAX; ++w ) {
            pbmp->pbits[ w ] =
               static_cast< U32 >( wordAt( v.data, 4 * static_cast< size_t >( w ) ) );
         }
         *data = static_cast< U32 >( wordAt( v.data, 28 ) );
         *mask = static_cast< U32 >( wordAt( v.mask, 28 ) );
      }
      return rc;
   } );
}

extern "C" int
bcm_field_qualify_data( int unit, bcm_field_entry_t entry, int qual_id,
                        const uint8_t * data, const uint8_t * mask, uint16_t length ) {
   return sdkCall( __func__, unit, { entry, qual_id, length }, [ & ]( Unit & u ) {
      UnitState & s = u.state();
      const DataQualifier * q = s.udf.data( qual_id );
      if ( !data || !mask || !q ) {
         return q ? BCM_E_PARAM : BCM_E_NOT_FOUND;
      }
      if ( length == 0 || length > q->spec.byte_length ) {
         return BCM_E_PARAM;
      }
      return s.field.dataQualify( entry, qual_id, bytesValue( data, mask, length ) );
   } );
}

extern "C" int
bcm_field_qualify_data_get( int unit, bcm_field_entry_t entry, int qual_id,
                            uint16_t max_length, uint8_t * data, uint8_t * mask,
                            uint16_t * actual_length ) {
   return sdkCall( __func__, unit, { entry, qual_id, max_length }, [ & ]( Unit & u ) {
      if ( !data || !mask || !actual_length ) {
         return BCM_E_PARAM;
      }
      FieldValue v;
      int rc = u.state().field.dataQualifyGet( entry, qual_id, v );
      if ( rc == BCM_E_NONE ) {
         copyOut( v, max_length, data, mask );
         *actual_length = static_cast< uint16_t >( v.data.size() );
      }
      return rc;
   } );
}

extern "C" int
bcm_field_qualify_udf( int unit, bcm_field_entry_t entry, int udf_id, int length,
                       const uint8_t * data, const uint8_t * mask ) {
   return sdkCall( __func__, unit, { entry, udf_id, length }, [ & ]( Unit & u ) {
      UnitState & s = u.state();
      U32 width = 0;
      if ( const UdfObject * object = s.udf.udf( udf_id ) ) {
         width = object->spec.bit_width / 8;
      } else if ( const bcm_udf_chunk_info_t * chunk = s.udf.chunk( udf_id ) ) {
         width = chunk->chunk_width;
      } else {
         return BCM_E_NOT_FOUND;
      }
      if ( !data || !mask || length <= 0 || static_cast< U32 >( length ) > width ) {
         return BCM_E_PARAM;
      }
      return s.field.udfQualify(
         entry, udf_id, bytesValue( data, mask, static_cast< size_t >( length ) ) );
   } );
}

extern "C" int
bcm_field_qualify_udf_get( int unit, bcm_field_entry_t entry, int udf_id, int max_length,
                           uint8_t * data, uint8_t * mask, int * actual_length ) {
   return sdkCall( __func__, unit, { entry, udf_id, max_length }, [ & ]( Unit & u ) {
      if ( !data || !mask || !actual_length || max_length < 0 ) {
         return BCM_E_PARAM;
      }
      FieldValue v;
      int rc = u.state().field.udfQualifyGet( entry, udf_id, v );
      if ( rc == BCM_E_NONE ) {
         copyOut( v, static_cast< size_t >( max_length ), data, mask );
         *actual_length = static_cast< int >( v.data.size() );
      }
      return rc;
   } );
}
