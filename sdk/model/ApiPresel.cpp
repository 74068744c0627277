// bcm_field_presel_*, bcm_field_hints_*.
#include "sdk/api/field.h"
#include "sdk/model/SdkCall.h"

using namespace ChipModel;

extern "C" int
bcm_field_presel_create( int unit, bcm_field_presel_t * presel ) {
   return sdkCall( __func__, unit, {}, [ & ]( Unit & u ) {
      return presel ? u.state().field.preselCreate( *presel ) : BCM_E_PARAM;
   } );
}

extern "C" int
bcm_field_presel_create_id( int unit, bcm_field_presel_t presel ) {
   return sdkCall( __func__, unit, { presel },
                   [ & ]( Unit & u ) { return u.state().field.preselCreateId( presel ); } );
}

extern "C" int
bcm_field_presel_destroy( int unit, bcm_field_presel_t presel ) {
   return sdkCall( __func__, unit, { presel },
                   [ & ]( Unit & u ) { return u.state().field.preselDestroy( presel ); } );
}

extern "C" int
bcm_field_hints_create( int unit, bcm_field_hintid_t * hint_id ) {
   return sdkCall( __func__, unit, {}, [ & ]( Unit & u ) {
      return hint_id ? u.state().field.hintsCreate( *hint_id ) : BCM_E_PARAM;
   } );
}

extern "C" int
bcm_field_hints_add( int unit, bcm_field_hintid_t hint_id, bcm_field_hint_t * hint ) {
   std::vector< S64 > args = { hint_id };
   if ( hint ) {
      args.insert( args.end(), { hint->hint_type, hint->qual, hint->max_values,
                                 hint->start_bit, hint->end_bit } );
   }
   return sdkCall( __func__, unit, args, [ & ]( Unit & u ) {
      return hint ? u.state().field.hintsAdd( hint_id, *hint ) : BCM_E_PARAM;
   } );
}

extern "C" int
bcm_field_hints_get( int unit, bcm_field_hintid_t hint_id, int n,
                     bcm_field_hint_t * hint ) {
   return sdkCall( __func__, unit, { hint_id, n }, [ & ]( Unit & u ) {
      return hint ? u.state().field.hintsGet( hint_id, n, *hint ) : BCM_E_PARAM;
   } );
}

extern "C" int
bcm_field_hints_destroy( int unit, bcm_field_hintid_t hint_id ) {
   return sdkCall( __func__, unit, { hint_id },
                   [ & ]( Unit & u ) { return u.state().field.hintsDestroy( hint_id ); } );
}
