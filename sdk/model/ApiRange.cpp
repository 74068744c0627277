// Range checkers: bcm_field_range_* (older API) and bcm_range_* (module).
#include "sdk/api/range.h"
#include "sdk/model/SdkCall.h"

using namespace ChipModel;

extern "C" int
bcm_field_range_create( int unit, bcm_field_range_t * range, uint32_t flags,
                        bcm_l4_port_t min, bcm_l4_port_t max ) {
   return sdkCall( __func__, unit, { flags, min, max }, [ & ]( Unit & u ) {
      return range ? u.state().ranges.fieldRangeCreate( *range, false, flags, min, max )
                   : BCM_E_PARAM;
   } );
}

extern "C" int
bcm_field_range_create_id( int unit, bcm_field_range_t range, uint32_t flags,
                           bcm_l4_port_t min, bcm_l4_port_t max ) {
   return sdkCall( __func__, unit, { range, flags, min, max }, [ & ]( Unit & u ) {
      return u.state().ranges.fieldRangeCreate( range, true, flags, min, max );
   } );
}

extern "C" int
bcm_field_range_destroy( int unit, bcm_field_range_t range ) {
   return sdkCall( __func__, unit, { range }, [ & ]( Unit & u ) {
      UnitState & s = u.state();
      if ( s.ranges.fieldRange( range ) && s.field.rangeInUse( range ) ) {
         return BCM_E_BUSY;
      }
      return s.ranges.fieldRangeDestroy( range );
   } );
}

extern "C" int
bcm_field_range_get( int unit, bcm_field_range_t range, uint32_t * flags,
                     bcm_l4_port_t * min, bcm_l4_port_t * max ) {
   return sdkCall( __func__, unit, { range }, [ & ]( Unit & u ) {
      const FieldRange * r = u.state().ranges.fieldRange( range );
      if ( !flags || !min || !max ) {
         return BCM_E_PARAM;
      }
      if ( !r ) {
         return BCM_E_NOT_FOUND;
      }
      *flags = r->flags;
      *min = r->min;
      *max = r->max;
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_range_create( int unit, int flags, bcm_range_config_t * config ) {
   std::vector< S64 > args = { flags };
   if ( config ) {
      args.insert( args.end(), { config->rid, config->rtype, config->min, config->max } );
   }
   return sdkCall( __func__, unit, args, [ & ]( Unit & u ) {
      if ( !config ) {
         return BCM_E_PARAM;
      }
      return u.state().ranges.moduleRangeCreate( flags & BCM_RANGE_CREATE_WITH_ID,
                                                 *config );
   } );
}

extern "C" int
bcm_range_destroy( int unit, bcm_range_t rid ) {
   return sdkCall( __func__, unit, { rid }, [ & ]( Unit & u ) {
      UnitState & s = u.state();
      if ( s.ranges.moduleRange( rid ) &&
           s.field.rangeInUse( static_cast< U32 >( rid ) ) ) {
         return BCM_E_BUSY;
      }
      return s.ranges.moduleRangeDestroy( rid );
   } );
}

extern "C" int
bcm_range_get( int unit, bcm_range_config_t * config ) {
   return sdkCall( __func__, unit, { config ? config->rid : 0 }, [ & ]( Unit & u ) {
      if ( !config ) {
         return BCM_E_PARAM;
      }
      const ModuleRange * r = u.state().ranges.moduleRange( config->rid );
      if ( !r ) {
         return BCM_E_NOT_FOUND;
      }
      config->rtype = r->type;
      config->min = r->min;
      config->max = r->max;
      config->ports = r->ports;
      return BCM_E_NONE;
   } );
}
