// Entry managers: construction, entry ids, the per-unit frame the group
// manager drives, and exhaustion.
#include "manager/TesselTcamEntryManager.h"

#include <set>

#include "catalogue/TcamEarlyReservation.h"
#include "catalogue/TesselTcamGroups.h"
#include "common/TesselSdkCall.h"
#include "manager/ReservationLayout.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/fastlog/FastLog.h"
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

UnitEntriesCreated &
TesselTcamEntryManager::unitRecord( U32 unit ) const {
   if ( lastRecord_ && lastRecordUnit_ == unit ) {
      return *lastRecord_;
   }
   const Kiln::Ptr< UnitEntriesCreated > * record = internalUnitEntry_.find( unit );
   KILN_ASSERT_MSG( record && *record, "unit not set up for the entry manager" );
   lastRecordUnit_ = unit;
   lastRecord_ = record->rawPtr_;
   return **record;
}

void
TesselTcamEntryManager::handleInitialized() {
   TRACE8( "TesselTcamEntryManager::" << "handleInitialized" << " group " << group()
                                      << " baseEntry " << baseEntry() << " endEntry "
                                      << endEntry() << " desc " << desc() );
   // Only the mirroring ACL groups match long user-defined fields.
   if ( !isMirrorAclGroup( group() ) ) {
      maxUdfLengthIs( 8 );
   }
   if ( !groupManager_ ) {
      return;
   }
   for ( U32 unit : groupManager_->units() ) {
      if ( groupManager_->stageIngressHas( unit ) ) {
         initializeUnit( unit );
      }
   }
   initializedIs( true );
}

void
TesselTcamEntryManager::initializeUnit( U32 unit ) {
   if ( internalUnitEntryHas( unit ) ) {
      return;
   }
   internalUnitEntryIs( unit );
   exhaustedIs( unit, false );
   if ( reservesAtBeginning( unit ) ) {
      reserveRange( unit );
   }
}

// The at-beginning range holds the group for itself, so the group stays
// while the range does, whoever else comes and goes.
void
TesselTcamEntryManager::reserveRange( U32 unit ) {
   TRACE5( "Unit: " << unit << " reserving entries 0x" << std::hex << baseEntry() << " to 0x"
                    << endEntry() << std::dec << " of group " << group() << " desc " << desc() );
   KILN_ASSERT( initializeGroup( unit ) );
   allocateAllEntries( unit );
}

void
TesselTcamEntryManager::releaseRange( U32 unit ) {
   UnitEntriesCreated & record = unitRecord( unit );
   KILN_ASSERT( strategy() == tcamAllocateAtBeginning() && record.rangeAllocated() );
   KILN_ASSERT( record.entryCreatedCollection().empty() );
   deallocateAllEntries( unit );
   groupManager()->uninitializeGroup( unit, group() );
}

bool
TesselTcamEntryManager::reservesAtBeginning( U32 unit ) const {
   TesselTcamGroupManager * manager = groupManager();
   const Agent::ChipInfo * info = manager ? manager->chipInfo( unit ) : nullptr;
   if ( !info || !reservationKept( *info, groupAssignment() ) ) {
      return false;
   }
   EarlyReservationFacts facts = earlyReservationFacts(
      manager->platformState().get(), manager->p4RuntimeEnabled(), unit );
   return Tessel::reservesAtBeginning( group(), strategy(), facts );
}

void
TesselTcamEntryManager::forgetUnit( U32 unit ) {
   if ( internalUnitEntryHas( unit ) ) {
      TRACE7( "forgetUnit unit " << unit << " group " << group() );
      UnitEntriesCreated & record = unitRecord( unit );
      for ( U32 entry : record.entryCreatedCollection().keys() ) {
         releaseEntryInternal( unit, entry, false );
      }
      if ( record.rangeAllocated() ) {
         deallocateAllEntries( unit );
      }
   }
   exhaustedDel( unit );
   internalUnitEntryDel( unit );
   std::erase_if( keptCounts_, [ unit ]( const KeptCounts & kept ) { return kept.unit == unit; } );
}

void
TesselTcamEntryManager::compressEntries( U32 unit ) {
   TRACE8( "compressEntries unit " << unit << " group " << group() );
   std::set< U32 > compressed;
   const EntryLayout layout = layoutOf( unit );
   for ( U32 groupId : layout.pipeGroupIds() ) {
      if ( !compressed.insert( groupId ).second ) {
         continue;
      }
      SDK_CALL_NO_RC_CHECK( bcm_field_group_compress( unit, groupId ) );
      FASTLOG( "fp group compress ", "(group=", groupId, ")" );
   }
   if ( groupManager() ) {
      groupManager()->sliceFreedDel( unit );
   }
}

// Exhaustion reaches managers of other groups only with freed space, so
// without it only the group's own managers are visited.
void
TesselTcamEntryManager::setExhausted( U32 unit, bool exhausted, bool freed ) {
   exhaustedIs( unit, exhausted );
   TesselTcamGroupManager * manager = groupManager();
   if ( !manager ) {
      return;
   }
   if ( freed ) {
      for ( const auto & [ assignment, other ] : manager->entryManagerCollection() ) {
         other->setExhaustedForManager( unit, exhausted, group(), freed );
      }
      for ( const auto & [ assignment, other ] : manager->unboundedEntryManagerCollection() ) {
         other->setExhaustedForManager( unit, exhausted, group(), freed );
      }
      manager->sliceFreedIs( unit );
      return;
   }
   // Every entry taken clears the mark: once the group was found calm on
   // the unit, nothing is looked at again until a mark or a manager changes.
   const U64 generation = manager->exhaustionGeneration();
   if ( !exhausted && calmUnit_ == unit && calmGeneration_ == generation ) {
      return;
   }
   const auto & sameGroup = manager->entryManagersOfGroup( group() );
   bool changes = false;
   for ( const Kiln::Ptr< TesselTcamEntryManager > & other : sameGroup ) {
      changes = changes || !other->exhaustedHas( unit ) || other->exhausted( unit ) != exhausted;
   }
   if ( !changes ) {
      if ( !exhausted ) {
         calmUnit_ = unit;
         calmGeneration_ = generation;
      }
      return;
   }
   // A copy: observers told of a change may change the managers.
   std::vector< Kiln::Ptr< TesselTcamEntryManager > > managers = sameGroup;
   for ( const Kiln::Ptr< TesselTcamEntryManager > & other : managers ) {
      other->setExhaustedForManager( unit, exhausted, group(), freed );
   }
}

// Running out in one hardware group says nothing about another; freeing
// space (slices given back) may let any group grow again. Reserved ranges
// and held chunks never run out.
void
TesselTcamEntryManager::setExhaustedForManager( U32 unit, bool exhausted, U32 group,
                                                bool freed ) {
   if ( strategy() == tcamAllocateAtBeginning_ || !internalUnitEntryHas( unit ) ) {
      return;
   }
   if ( strategy() == tcamAllocateAsChunk_ &&
        !unitRecord( unit ).entryCreatedCollection().empty() ) {
      return;
   }
   if ( group == this->group() ) {
      exhaustedIs( unit, exhausted );
   } else if ( !exhausted && freed ) {
      exhaustedIs( unit, false );
   }
}

void
TesselTcamEntryManager::exhaustionChanged() {
   if ( TesselTcamGroupManager * manager = groupManager() ) {
      manager->exhaustionChanged();
   }
}

bool
TesselTcamEntryManager::rangeCheckersExhausted( U32 unit ) const {
   return groupManager() && groupManager()->rangeCheckersExhaustedHas( unit );
}

TesselBoundedTcamEntryManager::~TesselBoundedTcamEntryManager() = default;

U32
TesselBoundedTcamEntryManager::getEntry( U32 unit, U32 entry, const Kiln::String & desc ) {
   TRACE8( "getEntry unit " << unit << " entry " << entry << " desc: " << desc );
   KILN_ASSERT( entry >= baseEntry() && entry < endEntry() );
   return getEntryWithStats( unit, entry, desc, defaultStatTypes() );
}

U32
TesselBoundedTcamEntryManager::getEntryWithStats( U32 unit, U32 entry, const Kiln::String & desc,
                                                  const Kiln::Ptr< StatTypes > & statTypes ) {
   KILN_ASSERT( entry >= baseEntry() && entry < endEntry() );
   U32 id = getEntryBase( unit, entry, desc, statTypes );
   if ( id ) {
      setPriorityForEntry( unit, entry, invalidPrio() );
   }
   return id;
}

TesselUnboundedTcamEntryManager::~TesselUnboundedTcamEntryManager() = default;

U32
TesselUnboundedTcamEntryManager::getEntry( U32 unit, const Kiln::String & desc ) {
   return getEntryBase( unit, anyEntry, desc, defaultStatTypes() );
}

U32
TesselUnboundedTcamEntryManager::getEntryWithStats( U32 unit, const Kiln::String & desc,
                                                    const Kiln::Ptr< StatTypes > & statTypes ) {
   return getEntryBase( unit, anyEntry, desc, statTypes );
}

} // namespace Tessel
