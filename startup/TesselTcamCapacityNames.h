// The names of the TCAM capacity rows, shared by the agent that publishes
// them and the command line that shows them (which links none of the
// agent's library, so these live in a file of their own).
#pragma once

#include "common/TesselExport.h"
#include "platform/kiln/String.h"

namespace Hardware::Capacity::Tessel {

// The feature group of the TCAM rows.
TESSEL_EXPORT extern const char * const tesselTcamCapacityFeatureGroup;
// "IFP", "VFP", "EFP" for SDK stages 0, 1, 2; null for any other stage.
TESSEL_EXPORT const char * tcamStageName( int stageId );
// "Slice-<n>".
TESSEL_EXPORT Kiln::String tcamSliceRowName( int slice );

} // namespace Hardware::Capacity::Tessel
