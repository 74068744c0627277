// bcm_field_group_*: groups, their status, pipe modes and dumps.
#include "sdk/api/field.h"
#include "sdk/model/SdkCall.h"

using namespace ChipModel;

namespace {

// Every data qualifier and UDF the qualifier set names must exist.
bool
extractorsExist( const UnitState & state, const bcm_field_qset_t & qset ) {
   for ( int id = 0; id < BCM_FIELD_USER_NUM_UDFS; ++id ) {
      if ( BCM_FIELD_BITSET_TEST( qset.udf_map, id ) && !state.udf.data( id ) ) {
         return false;
      }
      if ( BCM_FIELD_BITSET_TEST( qset.udf_id_map, id ) && !state.udf.udf( id ) &&
           !state.udf.chunk( id ) ) {
         return false;
      }
   }
   return true;
}

} // namespace

extern "C" int
bcm_field_group_config_create( int unit, bcm_field_group_config_t * config ) {
   std::vector< S64 > args;
   if ( config ) {
      args = { config->flags, config->group, config->priority, config->mode };
   }
   return sdkCall( __func__, unit, args, [ & ]( Unit & u ) {
      if ( !config ) {
         return BCM_E_PARAM;
      }
      UnitState & s = u.state();
      if ( !extractorsExist( s, config->qset ) ) {
         return BCM_E_NOT_FOUND;
      }
      return s.field.groupCreate( *config, s.udf.keyBytes( config->qset ) );
   } );
}

extern "C" int
bcm_field_group_destroy( int unit, bcm_field_group_t group ) {
   return sdkCall( __func__, unit, { group },
                   [ & ]( Unit & u ) { return u.state().field.groupDestroy( group ); } );
}

extern "C" int
bcm_field_group_compress( int unit, bcm_field_group_t group ) {
   return sdkCall( __func__, unit, { group },
                   [ & ]( Unit & u ) { return u.state().field.groupCompress( group ); } );
}

extern "C" int
bcm_field_group_status_get( int unit, bcm_field_group_t group,
                            bcm_field_group_status_t * status ) {
   return sdkCall( __func__, unit, { group }, [ & ]( Unit & u ) {
      if ( !status ) {
         return BCM_E_PARAM;
      }
      UnitState & s = u.state();
      int rc = s.field.groupStatus( group, *status );
      if ( rc == BCM_E_NONE ) {
         const Group * g = s.field.group( group );
         U32 perPipe = u.profile().metersPerPipe;
         U32 pipe = g->pipe < 0 ? 0 : static_cast< U32 >( g->pipe );
         status->meters_total = static_cast< int >( perPipe );
         status->meters_free =
            static_cast< int >( perPipe - s.policers.metersUsed( pipe ) );
      }
      return rc;
   } );
}

extern "C" int
bcm_field_group_oper_mode_get( int unit, bcm_field_qualify_t stage,
                               bcm_field_group_oper_mode_t * mode ) {
   return sdkCall( __func__, unit, { stage }, [ & ]( Unit & u ) {
      return mode ? u.state().field.operMode( stage, *mode ) : BCM_E_PARAM;
   } );
}

extern "C" int
bcm_field_group_qset_get( int unit, bcm_field_group_t group, bcm_field_qset_t * qset ) {
   return sdkCall( __func__, unit, { group }, [ & ]( Unit & u ) {
      const Group * g = u.state().field.group( group );
      if ( !qset || !g ) {
         return qset ? BCM_E_NOT_FOUND : BCM_E_PARAM;
      }
      *qset = g->qset;
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_field_group_priority_get( int unit, bcm_field_group_t group, int * priority ) {
   return sdkCall( __func__, unit, { group }, [ & ]( Unit & u ) {
      const Group * g = u.state().field.group( group );
      if ( !priority || !g ) {
         return priority ? BCM_E_NOT_FOUND : BCM_E_PARAM;
      }
      *priority = g->priority;
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_field_group_mode_get( int unit, bcm_field_group_t group,
                          bcm_field_group_mode_t * mode ) {
   return sdkCall( __func__, unit, { group }, [ & ]( Unit & u ) {
      const Group * g = u.state().field.group( group );
      if ( !mode || !g ) {
         return mode ? BCM_E_NOT_FOUND : BCM_E_PARAM;
      }
      *mode = g->mode;
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_field_group_dump( int unit, bcm_field_group_t group ) {
   return sdkCall( __func__, unit, { group }, [ & ]( Unit & u ) {
      std::string text;
      int rc = u.state().field.groupDump( group, text );
      if ( rc == BCM_E_NONE ) {
         emitDump( text );
      }
      return rc;
   } );
}
