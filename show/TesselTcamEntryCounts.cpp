// What the reports read from an entry manager about its entries on a unit.
//
// The entry managers do not keep per-entry records yet (entry allocation
// fills UnitEntriesCreated and counts hits per pipe entry); until they do,
// a manager shows no entries in use and no hits.
#include "show/TesselTcamHelper.h"

namespace Tessel {

U32
entriesInUse( const TesselTcamEntryManager &, U32 ) {
   return 0;
}

std::vector< std::pair< U32, Kiln::String > >
entriesOnUnit( const TesselTcamEntryManager &, U32 ) {
   return {};
}

U64
entryHits( const TesselTcamEntryManager &, U32, U32, const GroupUsage & ) {
   return 0;
}

} // namespace Tessel
