// What the reports read from an entry manager about its entries on a unit:
// the entries it handed out (its per-unit record) and their hit counts.
#include "show/TesselTcamHelper.h"

namespace Tessel {

namespace {

constexpr U32 pipeShift = 24;
constexpr U32 copyShift = 27;
constexpr U32 twinPipe = 1;

const UnitEntriesCreated *
recordOf( const TesselTcamEntryManager & entryManager, U32 unit ) {
   return entryManager.internalUnitEntryHas( unit ) ? entryManager.internalUnitEntry( unit ).get()
                                                    : nullptr;
}

} // namespace

U32
entriesInUse( const TesselTcamEntryManager & entryManager, U32 unit ) {
   const UnitEntriesCreated * record = recordOf( entryManager, unit );
   return record ? U32( record->entryCreatedCollection().size() ) : 0;
}

std::vector< std::pair< U32, Kiln::String > >
entriesOnUnit( const TesselTcamEntryManager & entryManager, U32 unit ) {
   std::vector< std::pair< U32, Kiln::String > > entries;
   forEachEntryOnUnit( entryManager, unit, [ & ]( U32 entry, const Kiln::String & desc ) {
      entries.emplace_back( entry, desc );
   } );
   return entries;
}

U64
entryHits( TesselTcamEntryManager & entryManager, U32 unit, U32 entryId,
           const GroupUsage & group ) {
   U64 hits = 0;
   for ( U32 copy = 0; copy < group.copies; ++copy ) {
      U32 copyBits = copy << copyShift;
      hits += entryManager.hitsForPipeEntry( unit, entryId | group.pipe << pipeShift | copyBits );
      if ( group.ovidWar ) {
         hits += entryManager.hitsForPipeEntry( unit, entryId | twinPipe << pipeShift | copyBits );
      }
   }
   return hits;
}

} // namespace Tessel
