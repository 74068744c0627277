// The field control walk, the field-processor lock and the TCAM commit.
#include "sdk/api/field.h"
#include "sdk/model/SdkCall.h"

using namespace ChipModel;

extern "C" int
bcm_field_control_get( int unit, bcm_field_control_t ** control ) {
   return sdkCall( __func__, unit, {}, [ & ]( Unit & u ) {
      if ( !control ) {
         return BCM_E_PARAM;
      }
      if ( !u.fieldInitialised() ) {
         return BCM_E_INIT;
      }
      u.fieldControl().rebuild( u.state().field );
      *control = u.fieldControl().control();
      return BCM_E_NONE;
   } );
}

// The box's lock stays held after the call returns, one level per lock.
extern "C" int
bcm_field_control_lock( int unit ) {
   return sdkCall( __func__, unit, {}, [ & ]( Unit & u ) {
      if ( !u.fieldInitialised() ) {
         return BCM_E_INIT;
      }
      Box::current()->lock().lock();
      ++u.controlLocks();
      u.fieldControl().rebuild( u.state().field );
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_field_control_unlock( int unit ) {
   return sdkCall( __func__, unit, {}, [ & ]( Unit & u ) {
      if ( u.controlLocks() == 0 ) {
         return BCM_E_PARAM;
      }
      --u.controlLocks();
      Box::current()->lock().unlock();
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_field_group_mode_slice_count_get( int unit, int mode, int * count ) {
   return sdkCall( __func__, unit, { mode }, [ & ]( Unit & ) {
      if ( !count || mode < bcmFieldGroupModeSingle || mode > bcmFieldGroupModeTriple ) {
         return BCM_E_PARAM;
      }
      *count = mode;
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_field_tcam_commit( int unit, uint32_t flags ) {
   return sdkCall( __func__, unit, { flags }, [ & ]( Unit & u ) {
      u.commit( flags );
      return BCM_E_NONE;
   } );
}
