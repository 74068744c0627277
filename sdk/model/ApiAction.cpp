// bcm_field_action_*: actions of entries.
#include "sdk/api/field.h"
#include "sdk/model/SdkCall.h"

using namespace ChipModel;

extern "C" int
bcm_field_action_add( int unit, bcm_field_entry_t entry, bcm_field_action_t action,
                      uint32_t param0, uint32_t param1 ) {
   return sdkCall( __func__, unit, { entry, action, param0, param1 }, [ & ]( Unit & u ) {
      return u.state().field.actionAdd( entry, Action{ action, param0, param1 }, false );
   } );
}

extern "C" int
bcm_field_action_get( int unit, bcm_field_entry_t entry, bcm_field_action_t action,
                      uint32_t * param0, uint32_t * param1 ) {
   return sdkCall( __func__, unit, { entry, action }, [ & ]( Unit & u ) {
      if ( !param0 || !param1 ) {
         return BCM_E_PARAM;
      }
      Action found{ action };
      int rc = u.state().field.actionGet( entry, action, found );
      *param0 = found.param0;
      *param1 = found.param1;
      return rc;
   } );
}

extern "C" int
bcm_field_action_remove( int unit, bcm_field_entry_t entry, bcm_field_action_t action ) {
   return sdkCall( __func__, unit, { entry, action }, [ & ]( Unit & u ) {
      return u.state().field.actionRemove( entry, action );
   } );
}

extern "C" int
bcm_field_action_remove_all( int unit, bcm_field_entry_t entry ) {
   return sdkCall( __func__, unit, { entry },
                   [ & ]( Unit & u ) { return u.state().field.actionRemoveAll( entry ); } );
}

extern "C" int
bcm_field_action_ports_add( int unit, bcm_field_entry_t entry, bcm_field_action_t action,
                            bcm_pbmp_t pbmp ) {
   return sdkCall( __func__, unit, { entry, action }, [ & ]( Unit & u ) {
      Action added{ action };
      added.hasPorts = true;
      added.ports = pbmp;
      return u.state().field.actionAdd( entry, added, true );
   } );
}

extern "C" int
bcm_field_action_ports_get( int unit, bcm_field_entry_t entry, bcm_field_action_t action,
                            bcm_pbmp_t * pbmp ) {
   return sdkCall( __func__, unit, { entry, action }, [ & ]( Unit & u ) {
      if ( !pbmp ) {
         return BCM_E_PARAM;
      }
      Action found{ action };
      int rc = u.state().field.actionGet( entry, action, found );
      if ( rc == BCM_E_NONE && !found.hasPorts ) {
         rc = BCM_E_NOT_FOUND;
      }
      *pbmp = found.ports;
      return rc;
   } );
}

extern "C" int
bcm_field_action_class_add( int unit, bcm_field_entry_t entry,
                            bcm_field_class_info_t * class_info ) {
   std::vector< S64 > args = { entry };
   if ( class_info ) {
      args.push_back( class_info->action );
      args.push_back( static_cast< S64 >( class_info->class_id ) );
   }
   return sdkCall( __func__, unit, args, [ & ]( Unit & u ) {
      if ( !class_info ) {
         return BCM_E_PARAM;
      }
      Action added{ class_info->action, static_cast< U32 >( class_info->class_id ),
                    static_cast< U32 >( class_info->class_id >> 32 ) };
      return u.state().field.actionAdd( entry, added, false );
   } );
}

extern "C" int
bcm_field_action_class_get( int unit, bcm_field_entry_t entry,
                            bcm_field_class_info_t * class_info ) {
   return sdkCall( __func__, unit, { entry }, [ & ]( Unit & u ) {
      if ( !class_info ) {
         return BCM_E_PARAM;
      }
      Action found{ class_info->action };
      int rc = u.state().field.actionGet( entry, class_info->action, found );
      class_info->class_id = ( static_cast< U64 >( found.param1 ) << 32 ) | found.param0;
      return rc;
   } );
}

extern "C" int
bcm_field_entry_action_list_get( int unit, bcm_field_entry_t entry, int max,
                                 bcm_field_action_info_t * list, int * count ) {
   return sdkCall( __func__, unit, { entry, max }, [ & ]( Unit & u ) {
      const Entry * e = u.state().field.entry( entry );
      if ( !count || ( max > 0 && !list ) ) {
         return BCM_E_PARAM;
      }
      if ( !e ) {
         return BCM_E_NOT_FOUND;
      }
      *count = static_cast< int >( e->soft.actions.size() );
      for ( int i = 0; i < max && i < *count; ++i ) {
         const Action & a = e->soft.actions[ static_cast< size_t >( i ) ];
         list[ i ] = bcm_field_action_info_t{ a.action, { a.param0, a.param1 } };
      }
      return BCM_E_NONE;
   } );
}
