// Chip profiles: what a modelled chip is made of. A profile is data only;
// every behaviour that differs between chips reads it from here.
//
// Profiles by name (the names users pick in tools, tests and options):
//   single    one pipe, older field-range API, data qualifiers
//   trident3  two pipes with global stages, UDF module
//   thx       four pipes, per-pipe ingress, range module, two-copies conditions
//   th3       eight pipes, per-pipe ingress, flex parser, class-id compression stage
#pragma once

#include <string>
#include <vector>

#include "platform/kiln/Types.h"
#include "sdk/api/field_types.h"
#include "sdk/shim/ChipType.h"

namespace ChipModel {

struct StageProfile {
   bcm_field_stage_t stage;
   bool pipeLocal;      // one instance per pipe, else one for the unit
   U32 slicesPerPipe;   // slices of one instance
   U32 entriesPerSlice; // single-width rows of a slice
   U32 maxSlicesPerRow; // widest mode: 1 single, 2 double, 3 triple
   U32 counterPools;    // counter pools of one instance
   U32 countersPerPool; // counter indices of a pool
};

struct Profile {
   std::string name;
   Shim::ChipType chipType;
   U32 device;     // bcm_info_t.device
   U32 capability; // bcm_info_t.capability bits
   U32 pipes;
   U32 frontPanelPortsPerPipe;
   U32 portStride;                     // pipe p owns ports 1 + p * portStride onwards
   std::vector< StageProfile > stages; // in the SDK's stage order
   U32 presels;                        // preselectors of the unit
   U32 hints;                          // hint ids of the unit
   U32 groupIds;                       // groups of the unit
   U32 metersPerPipe;
   U32 rangeCheckers;      // of the unit (older API) or of each pipe (module)
   U32 dataQualifiers;     // data qualifiers of the unit
   U32 dataQualifierBytes; // bytes they may extract together
   U32 dataPacketFormats;  // packet formats and ethertypes added, all qualifiers
   U32 udfObjects;         // UDF module objects
   U32 udfPacketFormats;   // UDF module packet-format objects
   U32 flexChunks;         // flex-parser chunks
   U32 flexChunkBytes;
   U32 udfMaxBytes;           // longest UDF extraction the unit offers
   U64 evictThresholdPackets; // hardware counter evicts to software at this count
   bool ifpDoubleCount;       // the field control reports IFP slice sizes in half rows

   const StageProfile * stage( bcm_field_stage_t stage ) const;
   bool has( U32 capabilityBit ) const { return ( capability & capabilityBit ) != 0; }
   // Instances of a stage: the pipes for a pipe-local stage, else 1.
   U32 instances( const StageProfile & stage ) const;
};

// The profile of that name, or null.
const Profile * findProfile( const std::string & name );
// The names of all profiles, in the order listed above.
std::vector< std::string > profileNames();

} // namespace ChipModel
