// The operator's view of the TCAM capacity rows: read from a running
// agent's shared memory, rendered as a table of used, free and total
// entries per unit, stage and slice, with a warning for every stage whose
// use is above a threshold.
//
// The agent publishes the rows of TesselTcamCapacitySm with
//    Hardware::Capacity::CapacityVaultWriter writer( store, tesselTcamCapacityVaultPath,
//                                                    capacity, tesselTcamCapacityFeatureGroup );
// and the command line shows them with
//    std::vector< Hardware::Capacity::CapacityRow > rows;
//    Vault::Status status = readTesselTcamCapacity( prefix, rows );
//    if ( status.ok() ) std::cout << renderTesselTcamCapacity( rows, 90 );
//
// Percentages are shown in tenths, rounded up (0.1% means "not empty") but
// never to 100.0% for a stage that still has room, so a stage is warned
// about exactly when the figure shown is above the threshold.
#pragma once

#include "common/TesselExport.h"
#include "platform/agent/CapacityHelperSm.h"
#include "platform/kiln/String.h"
#include "platform/kiln/Types.h"
#include "platform/vault/VaultError.h"

#include <string>
#include <vector>

namespace Hardware::Capacity::Tessel {

// Where the agent publishes the rows of "TesselTcamCapacity".
TESSEL_EXPORT extern const char * const tesselTcamCapacityVaultPath;
constexpr U32 defaultCapacityWarningPercent = 90;

// The TCAM capacity rows of the agent holding `prefix`; see
// readCapacityTable (platform/agent/CapacityVault.h) for the statuses.
TESSEL_EXPORT Vault::Status readTesselTcamCapacity( const std::string & prefix,
                                                    std::vector< CapacityRow > & rows );

// "50.0%", "0.1%" for any use below a tenth, "-" for a total of 0.
TESSEL_EXPORT std::string usedPercentText( const CapacityFigures & figures );

// A stage (a row with an empty slice name) whose use is above the
// threshold: used * 100 > threshold * total.
struct TESSEL_EXPORT TcamCapacityWarning {
   U32 unit = 0;
   Kiln::String stage;
   CapacityFigures figures;
   U32 thresholdPercent = defaultCapacityWarningPercent;
   // "WARNING: unit 0 stage IFP is 95.3% used (threshold 90%)"
   std::string text() const;
};

// The stages of "TesselTcamCapacity" above `thresholdPercent` (0 to 100,
// else std::invalid_argument), in the table's order.
TESSEL_EXPORT std::vector< TcamCapacityWarning >
tcamCapacityWarnings( const std::vector< CapacityRow > & rows,
                      U32 thresholdPercent = defaultCapacityWarningPercent );

// The table of the "TesselTcamCapacity" rows (others are not shown): a
// heading, then per unit and stage (IFP, VFP, EFP, then others by name) its
// slices in numeric order and its total as the slice "all", columns
// Unit Stage Slice Used Free Total Used%; then the warnings, one line each.
// "No TCAM capacity published." when there are no rows.
// `thresholdPercent` as for tcamCapacityWarnings.
TESSEL_EXPORT std::string
renderTesselTcamCapacity( const std::vector< CapacityRow > & rows,
                          U32 thresholdPercent = defaultCapacityWarningPercent );

} // namespace Hardware::Capacity::Tessel
