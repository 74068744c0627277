// Port numbering of a modelled unit, derived from its profile: port 0 is the
// CPU port; pipe p owns front-panel ports 1 + p * stride onwards and, right
// after them, its loopback port.
#pragma once

#include <optional>
#include <vector>

#include "sdk/api/port.h"
#include "sdk/model/Profile.h"

namespace ChipModel {

constexpr int cpuPort = 0;

std::vector< int > frontPanelPorts( const Profile & profile, U32 pipe );
int loopbackPort( const Profile & profile, U32 pipe );
// Front-panel and loopback ports of the pipe.
bcm_pbmp_t pipePorts( const Profile & profile, U32 pipe );
// The pipe a port belongs to; nullopt for the CPU port and unknown ports.
std::optional< U32 > pipeOfPort( const Profile & profile, int port );
// The one pipe all ports of the bitmap belong to; nullopt when the bitmap is
// empty, spans pipes or holds ports the unit does not have.
std::optional< U32 > pipeOfPorts( const Profile & profile, const bcm_pbmp_t & ports );
bcm_port_config_t portConfig( const Profile & profile );

} // namespace ChipModel
