#include "sdk/model/Ports.h"

namespace ChipModel {

namespace {

int
firstPort( const Profile & profile, U32 pipe ) {
   return 1 + static_cast< int >( pipe * profile.portStride );
}

} // namespace

std::vector< int >
frontPanelPorts( const Profile & profile, U32 pipe ) {
   std::vector< int > ports;
   if ( pipe < profile.pipes ) {
      for ( U32 i = 0; i < profile.frontPanelPortsPerPipe; ++i ) {
         ports.push_back( firstPort( profile, pipe ) + static_cast< int >( i ) );
      }
   }
   return ports;
}

int
loopbackPort( const Profile & profile, U32 pipe ) {
   if ( pipe >= profile.pipes ) {
      return -1;
   }
   return firstPort( profile, pipe ) + static_cast< int >( profile.frontPanelPortsPerPipe );
}

bcm_pbmp_t
pipePorts( const Profile & profile, U32 pipe ) {
   bcm_pbmp_t ports{};
   for ( int port : frontPanelPorts( profile, pipe ) ) {
      BCM_PBMP_PORT_ADD( ports, port );
   }
   if ( pipe < profile.pipes ) {
      BCM_PBMP_PORT_ADD( ports, loopbackPort( profile, pipe ) );
   }
   return ports;
}

std::optional< U32 >
pipeOfPort( const Profile & profile, int port ) {
   if ( port <= cpuPort ) {
      return std::nullopt;
   }
   U32 pipe = static_cast< U32 >( port - 1 ) / profile.portStride;
   if ( pipe >= profile.pipes || port > loopbackPort( profile, pipe ) ) {
      return std::nullopt;
   }
   return pipe;
}

std::optional< U32 >
pipeOfPorts( const Profile & profile, const bcm_pbmp_t & ports ) {
   std::optional< U32 > pipe;
   for ( int port = 0; port < BCM_PBMP_PORT_MAX; ++port ) {
      if ( !BCM_PBMP_MEMBER( ports, port ) ) {
         continue;
      }
      std::optional< U32 > here = pipeOfPort( profile, port );
      if ( !here || ( pipe && *pipe != *here ) ) {
         return std::nullopt;
      }
      pipe = here;
   }
   return pipe;
}

bcm_port_config_t
portConfig( const Profile & profile ) {
   bcm_port_config_t config{};
   BCM_PBMP_PORT_ADD( config.cpu, cpuPort );
   BCM_PBMP_PORT_ADD( config.all, cpuPort );
   for ( U32 pipe = 0; pipe < profile.pipes; ++pipe ) {
      for ( int port : frontPanelPorts( profile, pipe ) ) {
         BCM_PBMP_PORT_ADD( config.e, port );
      }
      BCM_PBMP_PORT_ADD( config.lb, loopbackPort( profile, pipe ) );
      config.per_pipe_pbmp[ pipe ] = pipePorts( profile, pipe );
      for ( int w = 0; w < BCM_PBMP_WORD_MAX; ++w ) {
         config.port.pbits[ w ] |= config.per_pipe_pbmp[ pipe ].pbits[ w ];
         config.all.pbits[ w ] |= config.per_pipe_pbmp[ pipe ].pbits[ w ];
      }
   }
   config.num_pipes = static_cast< int >( profile.pipes );
   return config;
}

} // namespace ChipModel
