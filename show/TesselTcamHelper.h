// What the usage report and the command-line tables read about a unit's
// groups and reservations, walked once for both so that they agree.
#pragma once

#include <utility>
#include <vector>

#include "catalogue/TesselTcamGroups.h"
#include "common/TesselExport.h"
#include "manager/TesselTcamEntryManager.h"
#include "platform/kiln/Ptr.h"
#include "platform/kiln/String.h"

namespace Tessel {

class TesselTcamGroupManager;

// One pipe group of a unit as the reports show it.
struct GroupUsage {
   U32 pipeGroupId = 0;  // the SDK group id
   U32 groupId = 0;      // the catalogue group (bits 0-23)
   U32 pipe = 0;         // bits 24-26
   bool ovidWar = false; // entries have outer-VLAN twins: counts halved
   bool perPipe = false; // the group has a copy per pipe (and no twins)
   U32 copies = 1;       // copies of an entry per pipe
   U32 used = 0;         // entries in use, times copies
   U32 freeEntries = 0;  // the SDK's free count (halved with twins)
};

// The pipe groups of the unit in key order, copies (bit 27) left out. The
// SDK's status is read for every pipe group the unit holds, copies
// included, with the activity lock released; a failing read is fatal.
TESSEL_EXPORT std::vector< GroupUsage > groupUsageOfUnit( TesselTcamGroupManager & manager,
                                                          U32 unit );

// A reservation row of a group with entries allocated on a unit.
struct ReservationUse {
   U32 index = 0;                           // row of the reservation table
   const TcamReservation * row = nullptr;
   Kiln::Ptr< TesselTcamEntryManager > entryManager;
   U32 allocated = 0;                       // entriesAllocated, times copies
   U32 used = 0;                            // entries in use, times copies
};

// The reservation rows the unit keeps for `groupId`, in table order, whose
// entry manager has entries allocated on the unit.
TESSEL_EXPORT std::vector< ReservationUse >
reservationsInUse( const TesselTcamGroupManager & manager, U32 unit, U32 groupId, U32 copies );

// Entries handed out by the manager on the unit.
TESSEL_EXPORT U32 entriesInUse( const TesselTcamEntryManager & entryManager, U32 unit );
// The manager's entries on the unit with their descriptions, by entry id.
TESSEL_EXPORT std::vector< std::pair< U32, Kiln::String > >
entriesOnUnit( const TesselTcamEntryManager & entryManager, U32 unit );
// The same without copying: fn( entryId, description ) for each, in entry
// id order. `fn` must not change the manager's entries.
template< typename Fn >
void
forEachEntryOnUnit( const TesselTcamEntryManager & entryManager, U32 unit, Fn && fn ) {
   if ( !entryManager.internalUnitEntryHas( unit ) ) {
      return;
   }
   Kiln::Ptr< UnitEntriesCreated > record = entryManager.internalUnitEntry( unit );
   record->entryCreatedCollection().forEach( fn );
}
// Hits of a logical entry in a pipe group: summed over the copies of the
// pipe and, under the outer-VLAN workaround, over the twins in pipe 1.
TESSEL_EXPORT U64 entryHits( TesselTcamEntryManager & entryManager, U32 unit, U32 entryId,
                             const GroupUsage & group );

} // namespace Tessel
