#include "startup/TesselTcamCapacityNames.h"

#include <string>

#include "sdk/api/field_types.h"

namespace Hardware::Capacity::Tessel {

const char * const tesselTcamCapacityFeatureGroup = "TesselTcamCapacity";

const char *
tcamStageName( int stageId ) {
   switch ( stageId ) {
    case bcmFieldStageIngress:
      return "IFP";
    case bcmFieldStageLookup:
      return "VFP";
    case bcmFieldStageEgress:
      return "EFP";
    default:
      return nullptr;
   }
}

Kiln::String
tcamSliceRowName( int slice ) {
   return Kiln::String( "Slice-" + std::to_string( slice ) );
}

} // namespace Hardware::Capacity::Tessel
