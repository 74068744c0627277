#include "manager/TesselTcamEntryManager.h"

#include "manager/TesselTcamGroupManager.h"
#include "platform/fastlog/Trace.h"

TRACE_CHANNEL( "TesselTcamEntryManager" );

namespace Tessel {

TesselTcamEntryManager::TesselTcamEntryManager(
   const Kiln::Name & name, TcamGroupAssignment groupAssignment, const Kiln::String & desc,
   TesselTcamGroupManager * groupManager, U32 group, U32 baseEntry, U32 endEntry,
   TcamAllocationStrategy strategy )
      : Kiln::Entity( name ), groupAssignment_( groupAssignment ), desc_( desc ),
        groupManager_( groupManager ), group_( group ), baseEntry_( baseEntry ),
        endEntry_( endEntry ), strategy_( strategy ) {
   handleInitialized();
}

TesselTcamEntryManager::~TesselTcamEntryManager() = default;

void
TesselTcamEntryManager::handleInitialized() {
   TRACE8( "TesselTcamEntryManager::" << "handleInitialized" << " group " << group()
                                      << " baseEntry " << baseEntry() << " endEntry "
                                      << endEntry() << " desc " << desc() );
   if ( !groupManager_ ) {
      return;
   }
   for ( U32 unit : groupManager_->units() ) {
      initializeUnit( unit );
   }
}

void
TesselTcamEntryManager::initializeUnit( U32 unit ) {
   internalUnitEntryIs( unit );
   exhaustedIs( unit, false );
}

void
TesselTcamEntryManager::forgetUnit( U32 unit ) {
   exhaustedDel( unit );
   internalUnitEntryDel( unit );
}

void
TesselTcamEntryManager::compressEntries( U32 unit ) {
   TRACE8( "compressEntries unit " << unit << " group " << group() );
}

U32
TesselTcamEntryManager::entriesAllocated( U32 ) const {
   return 0;
}

void
TesselTcamEntryManager::releaseEntry( U32 unit, U32 entry ) {
   releaseEntryInternal( unit, entry, true );
}

void
TesselTcamEntryManager::releaseEntryInternal( U32 unit, U32 entry, bool mayRemoveGroup ) {
   TRACE8( "releaseEntryInternal unit " << unit << " entry " << entry << " mayRemoveGroup "
                                        << mayRemoveGroup );
}

TesselBoundedTcamEntryManager::~TesselBoundedTcamEntryManager() = default;

TesselUnboundedTcamEntryManager::~TesselUnboundedTcamEntryManager() = default;

} // namespace Tessel
