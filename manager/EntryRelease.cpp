// Entry release: ids given back. Entries of a range stay in hardware as
// scrubbed slots; others are destroyed. The last entry of a unit gives the
// group back.
#include "catalogue/TesselTcamGroups.h"
#include "common/TesselSdkCall.h"
#include "manager/TesselTcamEntryManager.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/fastlog/FastLog.h"
#include "platform/fastlog/Trace.h"
#include "sdk/api/field_qualify.h"
#include "sdk/shim/SdkStructs.h"

TRACE_CHANNEL( "TesselTcamEntryManager" );

namespace Tessel {

void
TesselTcamEntryManager::releaseEntry( U32 unit, U32 entry ) {
   releaseEntryInternal( unit, entry, true );
   releaseMulticastDummyIfAlone( unit );
   TesselTcamGroupManager * manager = groupManager();
   if ( manager && manager->entryRangeCheckIdHas( entry ) ) {
      TRACE7( " Releasing record for entryId: " << entry );
      manager->entryRangeCheckIdDel( entry );
   }
}

// A PBR group's multicast placeholder is its last entry once the features'
// entries are gone: it goes too, so that the group can.
void
TesselTcamEntryManager::releaseMulticastDummyIfAlone( U32 unit ) {
   if ( !unitRecord( unit ).layout().multicastWar ) {
      return;
   }
   UnitEntriesCreated & record = unitRecord( unit );
   U32 dummy = record.multicastDummy();
   if ( dummy && record.entryCreatedCollection().size() == 1 && record.entryCreatedHas( dummy ) ) {
      record.multicastDummyIs( 0 );
      releaseEntryInternal( unit, dummy, true );
   }
}

void
TesselTcamEntryManager::releaseEntryInternal( U32 unit, U32 entry, bool mayRemoveGroup ) {
   TRACE8( "releaseEntryInternal unit " << unit << " entry " << entry << " mayRemoveGroup "
                                        << mayRemoveGroup );
   U32 baseEntryId = getBaseCopyEntryId( entry );
   if ( strategy() != tcamAllocateUnbounded_ ) {
      KILN_ASSERT( baseEntryId >= baseEntry() && baseEntryId < endEntry() );
   }
   UnitEntriesCreated & record = unitRecord( unit );
   U32 groupId = record.groupId( entry );
   KILN_ASSERT( groupId != 0 );
   const EntryLayout layout = record.layout();
   bool freed = false;
   for ( U32 pipe = 0; pipe < layout.pipes; ++pipe ) {
      for ( U32 copy = 0; copy < layout.copies; ++copy ) {
         U32 tcamEntryId = getPipeEntryId( unit, pipe, entry, copy );
         TRACE8( " releasing entry 0x" << std::hex << tcamEntryId << std::dec );
         releaseCopy( unit, tcamEntryId, layout.pipeGroupId( pipe, copy ), freed );
      }
   }
   TRACE8( " Deleting entryCreated pipe " << layout.pipes << " entry " << entry );
   dropEntryRecords( unit, entry );
   setExhausted( unit, false, freed );
   traceGroupStatus( unit );
   releaseGroupIfUnused( unit, mayRemoveGroup );
}

void
TesselTcamEntryManager::releaseCopy( U32 unit, U32 tcamEntryId, U32 pipeGroupId, bool & freed ) {
   if ( unitRecord( unit ).layout().ovidTwins ) {
      tcamMgrUpdateOvidEntryMap( unit, 0, tcamEntryId, true );
   }
   removeStats( unit, tcamEntryId );
   U32 entryId = tcamEntryId;
   if ( strategy() == tcamAllocateAsChunk_ || strategy() == tcamAllocateAtBeginning_ ) {
      scrubCopy( unit, entryId );
   } else {
      SDK_CALL_UNIT( unit, bcm_field_entry_destroy( unit, entryId ) );
      FASTLOG( "fp entry destroy ", unit, entryId );
      countCopy( unit, pipeGroupId, -1 );
      GroupCounts * counts = pipeGroupCounts( unit, pipeGroupId );
      freed = freed || ( counts && counts->unitAllocated( unit ) == 0 );
   }
   if ( TRACE_ON( 9 ) ) {
      SDK_CALL_UNIT( unit, bcm_field_entry_dump( unit, entryId ) );
   }
}

// The slot keeps its row and priority, and nothing of what the feature put
// in it. An entry that was never installed has nothing to remove.
void
TesselTcamEntryManager::scrubCopy( U32 unit, U32 entryId ) {
   SDK_CALL( bcm_field_entry_remove( unit, entryId ) );
   SDK_CALL_NO_RC_CHECK( bcm_field_qualify_clear( unit, entryId ) );
   SDK_CALL_NO_RC_CHECK( bcm_field_action_remove_all( unit, entryId ) );
   SDK_CALL_UNIT( unit, bcm_field_entry_policer_detach_all( unit, entryId ) );
}

void
TesselTcamEntryManager::dropEntryRecords( U32 unit, U32 entry ) {
   UnitEntriesCreated & record = unitRecord( unit );
   const EntryLayout & layout = record.layout();
   for ( U32 pipe = 0; pipe < layout.pipes; ++pipe ) {
      for ( U32 copy = 0; copy < layout.copies; ++copy ) {
         record.groupIdDel( getPipeEntryId( unit, pipe, entry, copy ) );
      }
   }
   record.entryCreatedDel( entry );
   record.tcamEntryBcmPbmpDel( entry );
   record.loopbackPortRedirectActionDel( entry );
   record.outportsBcmPbmpDel( entry );
   dropOwner( entry );
}

// Bounded ids are the same on every unit: the owner stays while another
// unit still holds the entry.
void
TesselTcamEntryManager::dropOwner( U32 entry ) {
   TesselTcamGroupManager * manager = groupManager();
   const Kiln::Ptr< TesselTcamEntryManager > * owner =
      manager ? manager->tcamManagerForEntryFind( entry ) : nullptr;
   if ( !owner || owner->rawPtr_ != this ) {
      return;
   }
   bool held = internalUnitEntry_.anyOf(
      [ entry ]( U32, const Kiln::Ptr< UnitEntriesCreated > & record ) {
         return record->entryCreatedHas( entry );
      } );
   if ( !held ) {
      manager->tcamManagerForEntryDel( entry );
   }
}

void
TesselTcamEntryManager::releaseGroupIfUnused( U32 unit, bool mayRemoveGroup ) {
   if ( !unitRecord( unit ).entryCreatedCollection().empty() ) {
      return;
   }
   if ( strategy() == tcamAllocateAsChunk_ && unitRecord( unit ).rangeAllocated() ) {
      deallocateAllEntries( unit );
   }
   if ( mayRemoveGroup ) {
      TRACE7( " may be remove group: " << group() << " unit " << unit );
      groupManager()->uninitializeGroup( unit, group() );
   }
}

void
TesselTcamEntryManager::traceGroupStatus( U32 unit ) {
   if ( !TRACE_ON( 8 ) ) {
      return;
   }
   Shim::GroupStatus status;
   SDK_CALL_UNIT( unit, bcm_field_group_status_get( unit, group(), &status ) );
   TRACE8( "Unit: " << unit << " group " << group() << " entries_total " << status.entries_total
                    << " entries_free " << status.entries_free << " slices_used "
                    << status.slices_used );
}

} // namespace Tessel
