#include "sdk/shim/SdkStructs.h"

#include "sdk/shim/Shim.h"

namespace Shim {

bcm_pbmp_t
PortConfig::per_pipe( U32 pipe ) const {
   if ( pipe >= BCM_PIPES_MAX ) {
      return bcm_pbmp_t{};
   }
   return per_pipe_pbmp[ pipe ];
}

int
PortConfig::loopback_port( U32 pipe ) const {
   bcm_pbmp_t ports = per_pipe( pipe );
   for ( int port = 0; port < BCM_PBMP_PORT_MAX; ++port ) {
      if ( BCM_PBMP_MEMBER( ports, port ) && BCM_PBMP_MEMBER( lb, port ) ) {
         return port;
      }
   }
   return -1;
}

RangeConfig::RangeConfig() {
   bcm_range_config_t_init( this );
   rtype = bcmRangeTypeL4SrcPort;
}

bool
UdfPktFormatInfo::operator==( const UdfPktFormatInfo & other ) const {
   return ethertype == other.ethertype && ethertype_mask == other.ethertype_mask &&
          ip_protocol == other.ip_protocol && ip_protocol_mask == other.ip_protocol_mask &&
          l2 == other.l2 && vlan_tag == other.vlan_tag && outer_ip == other.outer_ip &&
          inner_ip == other.inner_ip && tunnel == other.tunnel;
}

} // namespace Shim
