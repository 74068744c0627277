// bcm_info_get, bcm_port_config_get.
#include "sdk/api/port.h"
#include "sdk/model/Ports.h"
#include "sdk/model/SdkCall.h"

using namespace ChipModel;

extern "C" int
bcm_info_get( int unit, bcm_info_t * info ) {
   return sdkCall( __func__, unit, {}, [ & ]( Unit & u ) {
      if ( !info ) {
         return BCM_E_PARAM;
      }
      const Profile & p = u.profile();
      *info = bcm_info_t{};
      info->vendor = 0x7e55;
      info->device = p.device;
      info->capability = p.capability;
      info->num_pipes = static_cast< int >( p.pipes );
      info->udf_max_bytes = static_cast< int >( p.udfMaxBytes );
      info->flex_chunks = static_cast< int >( p.flexChunks );
      info->flex_chunk_bytes = static_cast< int >( p.flexChunkBytes );
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_port_config_get( int unit, bcm_port_config_t * config ) {
   return sdkCall( __func__, unit, {}, [ & ]( Unit & u ) {
      if ( !config ) {
         return BCM_E_PARAM;
      }
      *config = portConfig( u.profile() );
      return BCM_E_NONE;
   } );
}
