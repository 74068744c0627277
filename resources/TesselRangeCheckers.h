// The hardware steps of the group manager's range checkers
// (TesselTcamGroupManager::getRangeChecker and friends). Called on the
// activity thread; each SDK call releases the activity lock. Whether a unit
// has the range module comes from its chip information.
#pragma once

#include "manager/TesselTcamGroupManager.h"
#include "platform/kiln/Types.h"
#include "resources/TesselRangeCheckerTypes.h"
#include "sdk/api/range.h"

namespace Tessel {

// Makes the hardware of one checker and sets *id to its id.
// Range module: one range per pipe 0 .. numPipes - 1 over the pipe's ports,
// recorded in tcamGroupManager's unitRangeInfo under { unit, pipe-0 rid };
// numPipes 0 makes nothing. Older API: one checker of the unit, no records.
// The SDK's code: BCM_E_RESOURCE when the chip has no checker left (nothing
// made). Other failures abort, as does a failure in a pipe after the first
// ("Failed to allocate RangeChecker": the pipes made are not taken back).
int getRangeCheck( U32 unit, TesselTcamGroupManager * tcamGroupManager, U8 numPipes,
                   const RangeCheckerDesc & specs, U32 * id );
// Destroys the hardware of checker `baseId` (every pipe's range and the
// unitRangeInfo record on range-module chips). SDK failures abort, as do
// missing records.
void freeRangeCheck( U32 unit, TesselTcamGroupManager * tcamGroupManager, U8 numPipes,
                     U32 baseId );
// Fills one pipe's range configuration: the type from the flags (source
// port, else destination port, else packet length; none aborts with
// "Unsupported range type"), rid 0, the bounds and the pipe's ports.
void setRangeCheckParams( U32 unit, U32 pipe, bcm_pbmp_t pipePorts,
                          const RangeCheckerDesc & specs, bcm_range_config_t * conf );

} // namespace Tessel
