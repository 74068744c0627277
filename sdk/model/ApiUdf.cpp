// User-defined fields: data qualifiers (bcm_field_data_qualifier_*), the UDF
// module and flex-parser chunks (bcm_udf_*), and their qualifier-set adds.
#include "sdk/api/field_data.h"
#include "sdk/api/udf.h"
#include "sdk/model/SdkCall.h"

using namespace ChipModel;

extern "C" int
bcm_field_data_qualifier_create( int unit, bcm_field_data_qualifier_t * qual ) {
   std::vector< S64 > args;
   if ( qual ) {
      args = { qual->flags, qual->qual_id, qual->offset_base, qual->byte_offset,
               qual->byte_length };
   }
   return sdkCall( __func__, unit, args, [ & ]( Unit & u ) {
      return qual ? u.state().udf.dataCreate( *qual ) : BCM_E_PARAM;
   } );
}

extern "C" int
bcm_field_data_qualifier_destroy( int unit, int qual_id ) {
   return sdkCall( __func__, unit, { qual_id }, [ & ]( Unit & u ) {
      UnitState & s = u.state();
      if ( s.udf.data( qual_id ) && s.field.dataQualifierInUse( qual_id ) ) {
         return BCM_E_BUSY;
      }
      return s.udf.dataDestroy( qual_id );
   } );
}

extern "C" int
bcm_field_data_qualifier_get( int unit, int qual_id, bcm_field_data_qualifier_t * qual ) {
   return sdkCall( __func__, unit, { qual_id }, [ & ]( Unit & u ) {
      const DataQualifier * d = u.state().udf.data( qual_id );
      if ( !qual || !d ) {
         return qual ? BCM_E_NOT_FOUND : BCM_E_PARAM;
      }
      *qual = d->spec;
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_field_data_qualifier_packet_format_add( int unit, int qual_id,
                                            bcm_field_data_packet_format_t * format ) {
   return sdkCall( __func__, unit, { qual_id }, [ & ]( Unit & u ) {
      return format ? u.state().udf.dataFormatAdd( qual_id, *format ) : BCM_E_PARAM;
   } );
}

extern "C" int
bcm_field_data_qualifier_packet_format_delete( int unit, int qual_id,
                                               bcm_field_data_packet_format_t * format ) {
   return sdkCall( __func__, unit, { qual_id }, [ & ]( Unit & u ) {
      return format ? u.state().udf.dataFormatDelete( qual_id, *format ) : BCM_E_PARAM;
   } );
}

extern "C" int
bcm_field_data_qualifier_ethertype_add( int unit, int qual_id,
                                        bcm_field_data_ethertype_t * etype ) {
   return sdkCall(
      __func__, unit, { qual_id, etype ? etype->ethertype : 0 }, [ & ]( Unit & u ) {
         return etype ? u.state().udf.dataEthertypeAdd( qual_id, *etype ) : BCM_E_PARAM;
      } );
}

extern "C" int
bcm_field_data_qualifier_ethertype_delete( int unit, int qual_id,
                                           bcm_field_data_ethertype_t * etype ) {
   return sdkCall(
      __func__, unit, { qual_id, etype ? etype->ethertype : 0 }, [ & ]( Unit & u ) {
         return etype ? u.state().udf.dataEthertypeDelete( qual_id, *etype ) : BCM_E_PARAM;
      } );
}

extern "C" int
bcm_field_qset_data_qualifier_add( int unit, bcm_field_qset_t * qset, int qual_id ) {
   return sdkCall( __func__, unit, { qual_id }, [ & ]( Unit & u ) {
      if ( !qset ) {
         return BCM_E_PARAM;
      }
      if ( !u.state().udf.data( qual_id ) ) {
         return BCM_E_NOT_FOUND;
      }
      BCM_FIELD_BITSET_ADD( qset->udf_map, qual_id );
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_field_qset_udf_add( int unit, bcm_field_qset_t * qset, bcm_udf_id_t udf_id ) {
   return sdkCall( __func__, unit, { udf_id }, [ & ]( Unit & u ) {
      if ( !qset ) {
         return BCM_E_PARAM;
      }
      if ( !u.state().udf.udf( udf_id ) && !u.state().udf.chunk( udf_id ) ) {
         return BCM_E_NOT_FOUND;
      }
      BCM_FIELD_BITSET_ADD( qset->udf_id_map, udf_id );
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_udf_create( int unit, bcm_udf_alloc_hints_t *, bcm_udf_t * udf_info,
                bcm_udf_id_t * udf_id ) {
   std::vector< S64 > args;
   if ( udf_info ) {
      args = { udf_info->flags, udf_info->layer, udf_info->start_bit, udf_info->bit_width };
   }
   return sdkCall( __func__, unit, args, [ & ]( Unit & u ) {
      if ( !udf_info || !udf_id ) {
         return BCM_E_PARAM;
      }
      return u.state().udf.udfCreate( *udf_info, *udf_id );
   } );
}

extern "C" int
bcm_udf_destroy( int unit, bcm_udf_id_t udf_id ) {
   return sdkCall( __func__, unit, { udf_id }, [ & ]( Unit & u ) {
      UnitState & s = u.state();
      if ( s.field.udfInUse( udf_id ) &&
           ( s.udf.udf( udf_id ) || s.udf.chunk( udf_id ) ) ) {
         return BCM_E_BUSY;
      }
      return s.udf.udfDestroy( udf_id );
   } );
}

extern "C" int
bcm_udf_get( int unit, bcm_udf_id_t udf_id, bcm_udf_t * udf_info ) {
   return sdkCall( __func__, unit, { udf_id }, [ & ]( Unit & u ) {
      const UdfObject * object = u.state().udf.udf( udf_id );
      if ( !udf_info || !object ) {
         return udf_info ? BCM_E_NOT_FOUND : BCM_E_PARAM;
      }
      *udf_info = object->spec;
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_udf_pkt_format_create( int unit, bcm_udf_pkt_format_options_t options,
                           bcm_udf_pkt_format_info_t * pkt_format,
                           bcm_udf_pkt_format_id_t * pkt_format_id ) {
   return sdkCall( __func__, unit, { options }, [ & ]( Unit & u ) {
      if ( !pkt_format || !pkt_format_id ) {
         return BCM_E_PARAM;
      }
      return u.state().udf.formatCreate( options, *pkt_format, *pkt_format_id );
   } );
}

extern "C" int
bcm_udf_pkt_format_destroy( int unit, bcm_udf_pkt_format_id_t pkt_format_id ) {
   return sdkCall( __func__, unit, { pkt_format_id }, [ & ]( Unit & u ) {
      return u.state().udf.formatDestroy( pkt_format_id );
   } );
}

extern "C" int
bcm_udf_pkt_format_info_get( int unit, bcm_udf_pkt_format_id_t pkt_format_id,
                             bcm_udf_pkt_format_info_t * pkt_format ) {
   return sdkCall( __func__, unit, { pkt_format_id }, [ & ]( Unit & u ) {
      const bcm_udf_pkt_format_info_t * found = u.state().udf.format( pkt_format_id );
      if ( !pkt_format || !found ) {
         return pkt_format ? BCM_E_NOT_FOUND : BCM_E_PARAM;
      }
      *pkt_format = *found;
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_udf_pkt_format_add( int unit, bcm_udf_id_t udf_id,
                        bcm_udf_pkt_format_id_t pkt_format_id ) {
   return sdkCall( __func__, unit, { udf_id, pkt_format_id }, [ & ]( Unit & u ) {
      return u.state().udf.formatAdd( udf_id, pkt_format_id );
   } );
}

extern "C" int
bcm_udf_pkt_format_delete( int unit, bcm_udf_id_t udf_id,
                           bcm_udf_pkt_format_id_t pkt_format_id ) {
   return sdkCall( __func__, unit, { udf_id, pkt_format_id }, [ & ]( Unit & u ) {
      return u.state().udf.formatDelete( udf_id, pkt_format_id );
   } );
}

extern "C" int
bcm_udf_pkt_format_get_all( int unit, bcm_udf_id_t udf_id, int max,
                            bcm_udf_pkt_format_id_t * pkt_format_id_list, int * actual ) {
   return sdkCall( __func__, unit, { udf_id, max }, [ & ]( Unit & u ) {
      const UdfObject * object = u.state().udf.udf( udf_id );
      if ( !actual || ( max > 0 && !pkt_format_id_list ) ) {
         return BCM_E_PARAM;
      }
      if ( !object ) {
         return BCM_E_NOT_FOUND;
      }
      *actual = static_cast< int >( object->formats.size() );
      int i = 0;
      for ( auto it = object->formats.begin(); it != object->formats.end() && i < max;
            ++it ) {
         pkt_format_id_list[ i++ ] = *it;
      }
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_udf_abstract_pkt_format_info_get( int unit, bcm_udf_abstract_pkt_format_t apf,
                                      bcm_udf_abstract_pkt_format_info_t * info ) {
   return sdkCall( __func__, unit, { apf }, [ & ]( Unit & u ) {
      return info ? u.state().udf.abstractInfo( apf, *info ) : BCM_E_PARAM;
   } );
}

extern "C" int
bcm_udf_chunk_create( int unit, bcm_udf_alloc_hints_t *, bcm_udf_chunk_info_t * info,
                      bcm_udf_id_t * udf_id ) {
   std::vector< S64 > args;
   if ( info ) {
      args = { info->abstract_pkt_format, info->chunk_bmap, info->chunk_offset,
               info->chunk_width };
   }
   return sdkCall( __func__, unit, args, [ & ]( Unit & u ) {
      if ( !info || !udf_id ) {
         return BCM_E_PARAM;
      }
      return u.state().udf.chunkCreate( *info, *udf_id );
   } );
}

extern "C" int
bcm_udf_chunk_info_get( int unit, bcm_udf_id_t udf_id, bcm_udf_chunk_info_t * info ) {
   return sdkCall( __func__, unit, { udf_id }, [ & ]( Unit & u ) {
      const bcm_udf_chunk_info_t * found = u.state().udf.chunk( udf_id );
      if ( !info || !found ) {
         return info ? BCM_E_NOT_FOUND : BCM_E_PARAM;
      }
      *info = *found;
      return BCM_E_NONE;
   } );
}
