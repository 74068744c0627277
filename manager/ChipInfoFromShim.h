// Chip information of a module as the SDK shim reports its units. The agent
// normally builds chip information from its own platform data; programs
// without one (tools, simulations, tests) ask the shim instead.
#pragma once

#include <vector>

#include "common/TesselExport.h"
#include "platform/agent/ChipInfo.h"

namespace Tessel {

// The module's record for `units`, all of one chip family; the chip facts
// are those of the first unit. The shim must be installed.
TESSEL_EXPORT Agent::ChipInfo
chipInfoFromShim( U16 moduleId, const std::vector< U32 > & units );

} // namespace Tessel
