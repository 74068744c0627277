// Entry allocation: entries created in every pipe and copy of the group,
// whole ranges for chunk and at-beginning managers, and how many entries a
// manager can still hand out.
#include <algorithm>

#include "catalogue/TesselTcamGroups.h"
#include "common/TesselSdkCall.h"
#include "manager/GroupQset.h"
#include "manager/TesselTcamEntryManager.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/fastlog/FastLog.h"
#include "platform/fastlog/Trace.h"
#include "sdk/api/field_qualify.h"
#include "sdk/shim/SdkStructs.h"
#include "sdk/shim/Shim.h"

TRACE_CHANNEL( "TesselTcamEntryManager" );

namespace Tessel {

namespace {

bool
rangeStrategy( TcamAllocationStrategy strategy ) {
   return strategy == tcamAllocateAsChunk_ || strategy == tcamAllocateAtBeginning_;
}

} // namespace

// How the group lies on the unit now: fixed while the manager holds it.
EntryLayout
TesselTcamEntryManager::layoutOf( U32 unit ) const {
   const TesselTcamGroupManager & manager = *groupManager();
   EntryLayout layout;
   layout.pipes = manager.getNumPipe( unit, group() );
   layout.copies = manager.getNumCopiesPerPipe( unit, group() );
   for ( U32 pipe = 0; pipe < layout.pipes; ++pipe ) {
      for ( U32 copy = 0; copy < layout.copies; ++copy ) {
         layout.pipeGroupIdAdd( manager.getPipeGroupId( unit, pipe, copy, group() ) );
      }
   }
   bool ingress = getGroupStage( group() ) == stageTypeIngress_;
   layout.perPipe = ingress && manager.stageIngress( unit );
   layout.ovidTwins = ingress && manager.ovidWar( unit ) &&
                      qsetHas( groupQset( manager, unit, group() ),
                               Shim::sdk_->AR_bcmFieldQualifyOuterVlanId() );
   const Agent::ChipInfo * info = manager.chipInfo( unit );
   layout.rangeModule = info && info->rangeModule();
   layout.multicastWar = multicastWar( unit );
   return layout;
}

bool
TesselTcamEntryManager::initializeGroup( U32 unit ) {
   TRACE8( "initializeGroup unit " << unit << " group " << group() );
   if ( !groupManager()->initializeGroup( unit, group() ) ) {
      setExhausted( unit, true, false );
      return false;
   }
   unitRecord( unit ).layoutIs( layoutOf( unit ) );
   Shim::GroupStatus status;
   if ( SDK_CALL_UNIT( unit, bcm_field_group_status_get( unit, group(), &status ) ) >= 0 ) {
      maxPrioIs( static_cast< U32 >( status.prio_max ) );
   } else if ( maxPrio() == 0 ) {
      // Without the group's priority range every default priority
      // (maxPrio - entry) would be out of range: the group is unusable.
      groupManager()->uninitializeGroup( unit, group() );
      setExhausted( unit, true, false );
      return false;
   }
   if ( multicastWar( unit ) ) {
      addMulticastDummy( unit );
   }
   return true;
}

// The PBR groups route by policy; multicast must not be: a placeholder of
// the highest priority catches it first, with no action.
bool
TesselTcamEntryManager::multicastWar( U32 unit ) const {
   const Agent::ChipInfo * info = groupManager() ? groupManager()->chipInfo( unit ) : nullptr;
   return info && info->multicastWar() && groupRequiresMulticastWAR( group() );
}

void
TesselTcamEntryManager::addMulticastDummy( U32 unit ) {
   UnitEntriesCreated & record = unitRecord( unit );
   record.entryCreatedIs( anyEntry, "placeholder" ); // the group is held: no nested setup
   U32 entry = getEntryBase( unit, anyEntry, "IP Multicast DUMMY Entry", defaultStatTypes() );
   record.entryCreatedDel( anyEntry );
   if ( !entry ) {
      TRACE0( "Unit: " << unit << " group " << group() << " no room for the multicast entry" );
      return;
   }
   if ( isIPv4( group() ) ) {
      SDK_CALL_UNIT( unit, bcm_field_qualify_DstIp( unit, entry, 0xe0000000, 0xf0000000 ) );
   } else {
      bcm_ip6_t ip6_mask = { 0xff };         // ff00::/8
      bcm_ip6_t ip6_mcast_prefix = { 0xff }; // ff00::
      SDK_CALL_UNIT( unit, bcm_field_qualify_DstIp6( unit, entry, ip6_mask, ip6_mcast_prefix ) );
   }
   setPriorityForEntry( unit, entry, 0x7FFFFFFF );
   installEntry( unit, entry );
   record.multicastDummyIs( entry );
}

// The first entry on a unit holds the group (it goes with the last one);
// a chunk is created whole then, and an at-beginning range that was not
// reserved early is reserved now.
bool
TesselTcamEntryManager::prepareUnit( U32 unit ) {
   if ( strategy() == tcamAllocateAtBeginning_ && !unitRecord( unit ).rangeAllocated() ) {
      reserveRange( unit );
   }
   if ( !initializeGroup( unit ) ) {
      return false;
   }
   if ( strategy() == tcamAllocateAsChunk_ && !allocateAllEntries( unit ) ) {
      groupManager()->uninitializeGroup( unit, group() );
      return false;
   }
   return true;
}

U32
TesselTcamEntryManager::getEntryBase( U32 unit, U32 entry, const Kiln::String & desc,
                                      const Kiln::Ptr< StatTypes > & statTypes ) {
   TRACE8( "getEntryBase unit " << unit << " entry 0x" << std::hex << entry << std::dec
                                << " desc " << desc );
   UnitEntriesCreated & record = unitRecord( unit );
   if ( record.entryCreatedCollection().empty() ) {
      if ( !prepareUnit( unit ) ) {
         return 0;
      }
   } else if ( strategy() != tcamAllocateUnbounded_ && record.entryCreatedHas( entry ) ) {
      return 0;
   }
   // The layout stays while the manager holds the group; the record is held.
   Kiln::Ptr< UnitEntriesCreated > held = internalUnitEntry( unit );
   const EntryLayout & layout = held->layout();
   U32 made = 0; // copies, pipe-major
   for ( U32 pipe = 0; pipe < layout.pipes; ++pipe ) {
      for ( U32 copy = 0; copy < layout.copies; ++copy, ++made ) {
         int rc = createCopy( unit, pipe, copy, entry, desc );
         if ( rc < 0 ) {
            KILN_ASSERT_MSG( !copyFailureIsFatal( layout, pipe, copy ),
                             "Failed to create per pipe entries" );
            undoCopies( unit, entry, made );
            setExhausted( unit, true, false );
            releaseGroupIfUnused( unit, true );
            releaseMulticastDummyIfAlone( unit );
            return 0;
         }
      }
   }
   for ( U32 i = 0; i < made; ++i ) {
      U32 tcamEntryId = getPipeEntryId( unit, i / layout.copies, entry, i % layout.copies );
      recordCopy( unit, entry, tcamEntryId, layout.pipeGroupIds()[ i ], desc, statTypes );
   }
   setExhausted( unit, false, false );
   U32 entryId = entry;
   TRACE7( "Entry created with entryId: 0x" << std::hex << entryId << std::dec
                                            << " returning entryId: " << entryId );
   KILN_ASSERT( entryId > 0 );
   return entryId;
}

// Creates one copy the way the strategy says (nothing for a range that
// exists already) at the entry's default priority. An unbounded request
// learns its logical id from the SDK's choice for pipe 0, copy 0.
int
TesselTcamEntryManager::createCopy( U32 unit, U32 pipe, U32 copy, U32 & entry,
                                    const Kiln::String & desc ) {
   if ( rangeStrategy( strategy() ) ) {
      return 0;
   }
   U32 groupId = unitRecord( unit ).layout().pipeGroupId( pipe, copy );
   bool learnsId = strategy() == tcamAllocateUnbounded_ && pipe == 0 && copy == 0;
   bcm_field_entry_t entryId =
      learnsId ? 0 : static_cast< bcm_field_entry_t >( getPipeEntryId( unit, pipe, entry, copy ) );
   U32 prioTop = maxPrio();
   {
      // The copy is made and given its priority with no entity touched in
      // between: one release serves both calls. It is counted after.
      SdkCallRun run;
      int rc;
      if ( learnsId ) {
         rc = SDK_CALL_UNIT_MORE( unit, bcm_field_entry_create( unit, groupId, &entryId ),
                                  " failed to grab entry " << desc );
         entry = static_cast< U32 >( entryId );
      } else {
         rc = SDK_CALL_UNIT_MORE( unit, bcm_field_entry_create_id( unit, groupId, entryId ),
                                  " failed to grab entry " << desc );
      }
      if ( rc < 0 ) {
         return rc;
      }
      FASTLOG( "fp entry create ", unit, groupId, static_cast< U32 >( entryId ) );
      int defPrio = static_cast< int >( prioTop - entry ); // defaultPrio( entry ), unlocked
      SDK_CALL_UNIT( unit, bcm_field_entry_prio_set( unit, entryId, defPrio ) );
   }
   countCopy( unit, groupId, 1 );
   return 0;
}

void
TesselTcamEntryManager::countCopy( U32 unit, U32 pipeGroupId, S32 delta ) {
   if ( GroupCounts * counts = pipeGroupCounts( unit, pipeGroupId ) ) {
      counts->unitAllocatedInc( unit, delta );
   }
}

// Every copy made or destroyed is counted, so the counts found are kept.
// A pipe group's counts hold a record of the unit exactly while the group
// exists there, and counts that leave the group manager hold none: once the
// group manager's counts have changed, a kept one without the unit's record
// is looked up again.
GroupCounts *
TesselTcamEntryManager::pipeGroupCounts( U32 unit, U32 pipeGroupId ) const {
   const U64 generation = groupManager()->groupCountsGeneration();
   for ( KeptCounts & kept : keptCounts_ ) {
      if ( kept.unit == unit && kept.pipeGroupId == pipeGroupId ) {
         if ( !kept.counts ||
              ( kept.generation != generation && !kept.counts->unitRefCountHas( unit ) ) ) {
            kept.counts =
               groupManager()->groupCounts( GroupIdToPipeGroupId{ group(), pipeGroupId } );
         }
         kept.generation = generation;
         return kept.counts.rawPtr_;
      }
   }
   Kiln::Ptr< GroupCounts > counts =
      groupManager()->groupCounts( GroupIdToPipeGroupId{ group(), pipeGroupId } );
   if ( counts ) {
      keptCounts_.push_back( KeptCounts{ unit, pipeGroupId, counts, generation } );
   }
   return counts.rawPtr_;
}

// Copies of one entry in other pipes are expected to succeed once pipe 0
// did: their groups mirror pipe 0's. Copies that share an SDK group with
// the base copy (pipe 0's other copy, outer-VLAN twins on a global stage)
// compete with it for rows, so running out there is exhaustion.
bool
TesselTcamEntryManager::copyFailureIsFatal( const EntryLayout & layout, U32 pipe,
                                            U32 copy ) const {
   return pipe > 0 && layout.pipeGroupId( pipe, copy ) != layout.pipeGroupId( 0, 0 );
}

// Destroys the first `made` copies of the entry, pipe-major.
void
TesselTcamEntryManager::undoCopies( U32 unit, U32 entry, U32 made ) {
   if ( rangeStrategy( strategy() ) ) {
      return;
   }
   const EntryLayout & layout = unitRecord( unit ).layout();
   for ( U32 i = 0; i < made; ++i ) {
      U32 entryId = getPipeEntryId( unit, i / layout.copies, entry, i % layout.copies );
      SDK_CALL_UNIT( unit, bcm_field_entry_destroy( unit, entryId ) );
      FASTLOG( "fp entry destroy ", unit, entryId );
      countCopy( unit, layout.pipeGroupIds()[ i ], -1 );
   }
}

void
TesselTcamEntryManager::recordCopy( U32 unit, U32 entry, U32 tcamEntryId, U32 pipeGroupId,
                                    const Kiln::String & desc,
                                    const Kiln::Ptr< StatTypes > & statTypes ) {
   UnitEntriesCreated & record = unitRecord( unit );
   if ( tcamEntryId == entry ) {
      record.entryCreatedIs( entry, desc );
      groupManager()->tcamManagerForEntryIs( entry, Kiln::Ptr< TesselTcamEntryManager >( this ) );
   }
   record.groupIdIs( tcamEntryId, pipeGroupId );
   if ( allocateStatsPerEntry() ) {
      installStats( unit, entry, tcamEntryId, statTypes );
   }
   if ( TRACE_ON( 9 ) ) {
      U32 entryId = tcamEntryId;
      SDK_CALL_UNIT( unit, bcm_field_entry_dump( unit, entryId ) );
   }
}

bool
TesselTcamEntryManager::allocateAllEntries( U32 unit ) {
   KILN_ASSERT( strategy() == tcamAllocateAtBeginning() || strategy() == tcamAllocateAsChunk() );
   U32 range = endEntry() - baseEntry();
   bool fits = entriesAvailable( unit ) >= range;
   for ( U32 entry = baseEntry(); fits && entry < endEntry(); ++entry ) {
      fits = createRangeEntry( unit, entry );
   }
   if ( !fits ) {
      KILN_ASSERT( strategy() != tcamAllocateAtBeginning() );
      setExhausted( unit, true, false );
      return false;
   }
   for ( U32 entry = baseEntry(); entry < endEntry(); ++entry ) {
      setPriorityForEntry( unit, entry, invalidPrio() );
   }
   unitRecord( unit ).rangeAllocatedIs( true );
   return true;
}

// One logical entry of a range in every pipe and copy. A failure takes back
// the whole range made so far: a chunk is all or nothing.
bool
TesselTcamEntryManager::createRangeEntry( U32 unit, U32 entry ) {
   const EntryLayout layout = unitRecord( unit ).layout();
   for ( U32 pipe = 0; pipe < layout.pipes; ++pipe ) {
      for ( U32 copy = 0; copy < layout.copies; ++copy ) {
         U32 groupId = layout.pipeGroupId( pipe, copy );
         U32 entryId = getPipeEntryId( unit, pipe, entry, copy );
         int rc = SDK_CALL( bcm_field_entry_create_id( unit, groupId, entryId ) );
         if ( rc < 0 ) {
            TRACE0( "Unit: " << unit << " group 0x" << std::hex << groupId << " entry 0x"
                             << entryId << std::dec << " API ERROR:" << bcm_errmsg( rc )
                             << " (rc:" << rc << ")"
                             << " bcm_field_entry_create_id( unit, groupId, entryId )" );
            destroyRange( unit, entry, pipe * layout.copies + copy );
            return false;
         }
         FASTLOG( "fp entry create ", unit, groupId, entryId );
         SDK_CALL_UNIT( unit, bcm_field_entry_prio_set( unit, entryId, defaultPrio( entry ) ) );
         countCopy( unit, groupId, 1 );
      }
   }
   return true;
}

void
TesselTcamEntryManager::deallocateAllEntries( U32 unit ) {
   KILN_ASSERT( strategy() == tcamAllocateAtBeginning() || strategy() == tcamAllocateAsChunk() );
   const EntryLayout layout = unitRecord( unit ).layout();
   if ( layout.pipes == 0 ) {
      setExhausted( unit, false, false );
      return;
   }
   destroyRange( unit, endEntry(), 0 );
   unitRecord( unit ).rangeAllocatedIs( false );
   setExhausted( unit, false, anyPipeGroupEmpty( unit ) );
}

// Destroys the range's entries below `end`, and the first `endCopies`
// copies of `end` itself. Errors are traced and the walk goes on.
void
TesselTcamEntryManager::destroyRange( U32 unit, U32 end, U32 endCopies ) {
   const EntryLayout layout = unitRecord( unit ).layout();
   for ( U32 pipe = 0; pipe < layout.pipes; ++pipe ) {
      for ( U32 copy = 0; copy < layout.copies; ++copy ) {
         U32 groupId = layout.pipeGroupId( pipe, copy );
         U32 last = pipe * layout.copies + copy < endCopies ? end + 1 : end;
         for ( U32 entry = baseEntry(); entry < last; ++entry ) {
            U32 entryId = getPipeEntryId( unit, pipe, entry, copy );
            SDK_CALL_UNIT_MORE( unit, bcm_field_entry_destroy( unit, entryId ),
                                " deallocateAllEntries" );
            FASTLOG( "fp entry destroy ", unit, entryId );
            countCopy( unit, groupId, -1 );
         }
      }
   }
}

// Whether one of the group's pipe groups holds no entry on the unit any
// more: a compress can then give its slices back.
bool
TesselTcamEntryManager::anyPipeGroupEmpty( U32 unit ) const {
   for ( U32 pipeGroupId : unitRecord( unit ).layout().pipeGroupIds() ) {
      GroupCounts * counts = pipeGroupCounts( unit, pipeGroupId );
      if ( counts && counts->unitAllocated( unit ) == 0 ) {
         return true;
      }
   }
   return false;
}

U32
TesselTcamEntryManager::entriesAvailable( U32 unit ) {
   U32 created = static_cast< U32 >( unitRecord( unit ).entryCreatedCollection().size() );
   U32 range = endEntry() - baseEntry();
   U32 remaining = range > created ? range - created : 0;
   if ( strategy() == tcamAllocateAtBeginning_ ||
        ( strategy() == tcamAllocateAsChunk_ && created > 0 ) ) {
      return remaining;
   }
   U32 hw = groupManager()->entriesAvailable( unit, group() );
   bool room = strategy() == tcamAllocateAsChunk_ ? remaining <= hw : hw != 0;
   if ( !room ) {
      setExhausted( unit, true, false );
      return 0;
   }
   if ( strategy() == tcamAllocateAsChunk_ ) {
      return remaining;
   }
   return strategy() == tcamAllocateOnDemand_ ? std::min( hw, remaining ) : hw;
}

U32
TesselTcamEntryManager::entriesAllocated( U32 unit ) const {
   KILN_ASSERT( internalUnitEntryHas( unit ) );
   const UnitEntriesCreated & record = unitRecord( unit );
   if ( rangeStrategy( strategy() ) ) {
      return record.rangeAllocated() ? endEntry() - baseEntry() : 0;
   }
   return static_cast< U32 >( record.entryCreatedCollection().size() );
}

} // namespace Tessel
