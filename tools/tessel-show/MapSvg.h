// The data of tcam map and its SVG picture.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "export/TesselTcamVaultRecords.h"
#include "tools/tessel-show/AgentLink.h"

namespace TesselShow {

// The slices of one unit, stage and pipe.
struct MapBlock {
   U32 unit = 0;
   U32 stage = 0;
   std::string stageName;
   U32 pipe = 0;
   std::vector< Tessel::VaultSliceInfo > slices;     // by slice number
   std::map< U32, std::string > groupNames;          // catalogue group -> name
};

// "IFP_GROUP_IP_ACL (0x00000007)": the catalogue name of an SDK group id
// (its low 24 bits) and the id.
std::string groupLabel( const MapBlock & block, U32 sdkGroupId );

// The blocks of a unit the options cover (one stage and pipe, or all).
Outcome collectUnitBlocks( AgentLink & link, const Options & options, U32 unit,
                           std::vector< MapBlock > & blocks );

// A standalone SVG document: one row of slices per block, each slice filled
// from the bottom as far as it is used, coloured by group, with a legend.
std::string mapSvg( const std::vector< MapBlock > & blocks );

} // namespace TesselShow
