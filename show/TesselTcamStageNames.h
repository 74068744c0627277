// Names of the field processor's stages as the reports print them.
#pragma once

namespace Tessel {

// "IFP", "VFP", "EFP", "EXT", "EXACT" or "CLASS" for stage ids 0 to 5,
// "UNKNOWN" for any other.
inline const char *
tcamStageName( int stageId ) {
   static const char * const names[] = { "IFP", "VFP", "EFP", "EXT", "EXACT", "CLASS" };
   return stageId >= 0 && stageId < 6 ? names[ stageId ] : "UNKNOWN";
}

} // namespace Tessel
