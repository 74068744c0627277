// Chip families the shim knows. The codes are also the platform's chip-type
// codes: the agent stores them in its module chip information, and the
// catalogue's per-chip qualifier tables are keyed by them.
#pragma once

#include "platform/kiln/Types.h"

namespace Shim {

enum ChipType : U32 {
   chipTypeUnknown = 0,
   chipTypeClassic = 1,  // single pipe, older field-range API, UDF data qualifiers
   chipTypeTrident3 = 2, // UDF module
   chipTypeThx = 3,      // 4 pipes, per-pipe ingress, range module
   chipTypeTh3 = 4,      // 8 pipes, flex parser, class-id compression groups
   chipTypeCompact = 5,  // small single-pipe family; no profile uses it yet
};

} // namespace Shim
