// Installation: the base entry copied into every pipe and copy, each copy
// completed with what differs per pipe (in-ports, range ids, loopback
// ports) and installed; removal, enabling and priorities of every copy.
#include "common/TesselSdkCall.h"
#include "manager/TesselTcamEntryManager.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/fastlog/FastLog.h"
#include "platform/fastlog/Trace.h"
#include "sdk/api/field_qualify.h"
#include "sdk/shim/Shim.h"

TRACE_CHANNEL( "TesselTcamEntryManager" );

namespace Tessel {

#define INSTALL_ERROR " for entryId: " << entry << " installEntry"

int
TesselTcamEntryManager::installEntry( U32 unit, U32 entry ) {
   TRACE8( "installEntry unit " << unit << " entry " << entry );
   // The layout stays while the unit holds entries; the record is held.
   Kiln::Ptr< UnitEntriesCreated > record = internalUnitEntry( unit );
   KILN_ASSERT_MSG( record, "unit not set up for the entry manager" );
   const EntryLayout & layout = record->layout();
   int result = 0;
   for ( U32 pipe = 0; pipe < layout.pipes; ++pipe ) {
      for ( U32 copy = 0; copy < layout.copies; ++copy ) {
         bool copied = true;
         int rc = installCopy( unit, entry, pipe, copy, copied );
         if ( !copied ) {
            return rc;
         }
         result = result < 0 ? result : rc;
      }
   }
   if ( record->loopbackPortRedirectActionHas( entry ) ) {
      int rc = installLoopbackRedirect( unit, entry );
      result = result < 0 ? result : rc;
   }
   dropInstallRecords( unit, entry );
   return result;
}

int
TesselTcamEntryManager::reinstallEntry( U32 unit, U32 entry ) {
   return installEntry( unit, entry );
}

// One copy: made from the base entry (a twin under the outer-VLAN-ID
// workaround), completed, installed, its eviction counts reset. A copy that
// cannot be made ends the install (`copied` false, its code returned);
// other errors are returned and the install goes on.
int
TesselTcamEntryManager::installCopy( U32 unit, U32 entry, U32 pipe, U32 copy, bool & copied ) {
   UnitEntriesCreated & record = unitRecord( unit );
   const EntryLayout & layout = record.layout();
   U32 tcamEntryId = getPipeEntryId( unit, pipe, entry, copy );
   bool twin = layout.ovidTwins && pipe == 1;
   int rc = 0;
   if ( twin ) {
      rc = processOvidWarEntry( unit, entry, tcamEntryId );
   } else if ( tcamEntryId != entry ) {
      rc = SDK_CALL_UNIT_MORE( unit, SdkShim->ob_field_entry_copy_id( unit, entry, tcamEntryId ),
                               INSTALL_ERROR );
   }
   if ( rc < 0 ) {
      copied = false;
      return rc;
   }
   // Copies sharing a pipe's packets each take their share of its ports.
   bool ports = !twin && ( layout.copies > 1 || record.tcamEntryBcmPbmpHas( entry ) );
   int result = ports ? qualifyInPorts( unit, entry, tcamEntryId ) : 0;
   rc = layout.rangeModule ? qualifyRangeCheckers( unit, entry, tcamEntryId, pipe ) : 0;
   result = result < 0 ? result : rc;
   int stat = evictionStat( record, tcamEntryId );
   TesselTcamGroupManager * manager = groupManager();
   // From here on no entity is touched: one release serves every call.
   SdkCallRun run;
   rc = SDK_CALL_UNIT_MORE( unit, bcm_field_entry_install( unit, tcamEntryId ), INSTALL_ERROR );
   result = result < 0 ? result : rc;
   if ( rc >= 0 ) {
      TRACE7( " Entry installed: " << entry << " pipe " << pipe << " copy " << copy );
      if ( stat ) {
         manager->clearEvictionCounter( unit, stat, true, true );
      }
   }
   return result;
}

int
TesselTcamEntryManager::qualifyInPorts( U32 unit, U32 entry, U32 tcamEntryId ) {
   Kiln::Ptr< UnitEntriesCreated > entries = internalUnitEntry( unit );
   Kiln::Ptr< TcamEntryBcmPbmp > record = addTcamEntryToBcmPbmp( unit, entry );
   bool split = entries->layout().copies > 1;
   if ( record->inPort() < 0 ) {
      addInPortsForEntry( unit, tcamEntryId, record->portsData(), record->portsMask() );
   } else if ( !split || sharesPort( unit, tcamEntryId, record->inPort() ) ) {
      addInPortForEntry( unit, tcamEntryId, record->inPort() );
      return SDK_CALL_UNIT_MORE(
         unit,
         bcm_field_qualify_InPort( unit, tcamEntryId, entries->tcamEntryBcmPbmp( entry )->inPort(),
                                   ~0 ),
         INSTALL_ERROR );
   } else {
      // The pipe's other copy matches the port; this one nothing.
      addInPortForEntry( unit, tcamEntryId, record->inPort() );
   }
   return SDK_CALL_UNIT_MORE(
      unit,
      bcm_field_qualify_InPorts( unit, tcamEntryId, entries->tcamEntryBcmPbmp( entry )->pbmpData(),
                                 entries->tcamEntryBcmPbmp( entry )->pbmpMask() ),
      INSTALL_ERROR );
}

// Range ids differ per pipe (range-module chips): each copy checks its own
// pipe's ranges.
int
TesselTcamEntryManager::qualifyRangeCheckers( U32 unit, U32 entry, U32 tcamEntryId, U32 pipe ) {
   TesselTcamGroupManager * manager = groupManager();
   if ( !manager->entryRangeCheckIdHas( entry ) ) {
      return 0;
   }
   int result = 0;
   for ( RangeCheckId baseRangeId :
         manager->entryRangeCheckId( entry )->rangeCheckIdCollection().keys() ) {
      UnitRangeInfoKey key{ unit, baseRangeId };
      KILN_ASSERT( groupManager()->unitRangeInfoHas( key ) );
      KILN_ASSERT( groupManager()->unitRangeInfo( key )->pipeRangeIdHas( pipe ) );
      RangeCheckId rangeCheckId = groupManager()->unitRangeInfo( key )->pipeRangeId( pipe );
      TRACE7( " Configuring RangeId: " << rangeCheckId << " pipe " << pipe << " entry 0x"
                                       << std::hex << tcamEntryId << std::dec );
      int rc = SDK_CALL_UNIT_MORE(
         unit, bcm_field_qualify_RangeCheck( unit, tcamEntryId, rangeCheckId, 0 ), INSTALL_ERROR );
      result = result < 0 ? result : rc;
   }
   return result;
}

// The second pass: each copy's redirect also goes out its own pipe's
// loopback port.
int
TesselTcamEntryManager::installLoopbackRedirect( U32 unit, U32 entry ) {
   UnitEntriesCreated & record = unitRecord( unit );
   const EntryLayout layout = record.layout();
   LoopbackPortRedirect redirect = record.loopbackPortRedirectAction( entry );
   bcm_field_action_t lbAction = static_cast< bcm_field_action_t >( redirect.lbAction );
   int result = 0;
   for ( U32 pipe = 0; pipe < layout.pipes; ++pipe ) {
      for ( U32 copy = 0; copy < layout.copies; ++copy ) {
         U32 tcamEntryId = getPipeEntryId( unit, pipe, entry, copy );
         addOutLoopbackPortForEntry( unit, entry, pipe, redirect.outPorts.bits );
         bcm_pbmp_t outPorts = unitRecord( unit ).outportsBcmPbmp( entry ).bits;
         int rc = SDK_CALL_UNIT_MORE(
            unit, bcm_field_action_ports_add( unit, tcamEntryId, lbAction, outPorts ),
            INSTALL_ERROR );
         result = result < 0 ? result : rc;
         rc = SDK_CALL_UNIT_MORE( unit, bcm_field_entry_install( unit, tcamEntryId ),
                                  INSTALL_ERROR );
         result = result < 0 ? result : rc;
      }
   }
   return result;
}

// What the entry carried for this install goes, unless its in-port record
// is kept for good (the entry is then reinstalled with all of it).
void
TesselTcamEntryManager::dropInstallRecords( U32 unit, U32 entry ) {
   UnitEntriesCreated & record = unitRecord( unit );
   Kiln::Ptr< TcamEntryBcmPbmp > ports = record.tcamEntryBcmPbmp( entry );
   if ( ports && ports->permanent() ) {
      return;
   }
   removeTcamEntryBcmPbmp( unit, entry );
   record.loopbackPortRedirectActionDel( entry );
   record.outportsBcmPbmpDel( entry );
}

int
TesselTcamEntryManager::evictionStat( const UnitEntriesCreated & record, U32 tcamEntryId ) {
   int stat = record.entryStats( tcamEntryId ); // 0: none
   return stat && !SdkShim->ob_field_stat_id_invalid( stat ) ? stat : 0;
}

int
TesselTcamEntryManager::removeEntry( U32 unit, U32 entry ) {
   TRACE8( "removeEntry unit " << unit << " entry " << entry );
   const EntryLayout layout = unitRecord( unit ).layout();
   for ( U32 pipe = 0; pipe < layout.pipes; ++pipe ) {
      for ( U32 copy = 0; copy < layout.copies; ++copy ) {
         U32 tcamEntryId = getPipeEntryId( unit, pipe, entry, copy );
         SDK_CALL_CHECKED( bcm_field_entry_remove( unit, tcamEntryId ) );
         TRACE7( " Entry removed: " << entry << " pipe " << pipe << " copy " << copy );
         if ( layout.ovidTwins ) {
            tcamMgrUpdateOvidEntryMap( unit, 0, tcamEntryId, true );
         }
      }
   }
   removeTcamEntryBcmPbmp( unit, entry );
   if ( groupManager()->entryRangeCheckIdHas( entry ) ) {
      groupManager()->entryRangeCheckIdDel( entry );
   }
   TRACE7( " Releasing record for entry: " << entry );
   return 0;
}

void
TesselTcamEntryManager::enableEntry( U32 unit, U32 entry, bool enable, int allowedRc ) {
   KILN_ASSERT( groupManager()->tcamManagerForEntry( entry ).rawPtr_ == this );
   const EntryLayout layout = unitRecord( unit ).layout();
   for ( U32 pipe = 0; pipe < layout.pipes; ++pipe ) {
      for ( U32 copy = 0; copy < layout.copies; ++copy ) {
         U32 tcamEntryId = getPipeEntryId( unit, pipe, entry, copy );
         int rc = SDK_CALL( bcm_field_entry_enable_set( unit, tcamEntryId, enable ) );
         if ( rc < 0 && rc != allowedRc ) {
            TRACE0( "Unit: " << unit << " bcm_field_entry_enable_set( unit, tcamEntryId, enable )"
                             << " API ERROR:" << " (rc:" << rc << ") for entryId: " << entry );
         }
      }
   }
}

// Every feature relies on the priority order of its group: a priority that
// cannot be set leaves the group in a state nobody can describe.
int
TesselTcamEntryManager::setPriorityForEntry( U32 unit, U32 entry, U32 priority ) {
   if ( priority == invalidPrio() ) {
      priority = defaultPrio( entry );
   }
   const EntryLayout layout = unitRecord( unit ).layout();
   for ( U32 pipe = 0; pipe < layout.pipes; ++pipe ) {
      for ( U32 copy = 0; copy < layout.copies; ++copy ) {
         U32 entryId = getPipeEntryId( unit, pipe, entry, copy );
         SDK_CALL_CHECKED( bcm_field_entry_prio_set( unit, entryId, priority ) );
         FASTLOG( " fp entry prio ", unit, entryId, priority );
      }
   }
   return 0;
}

} // namespace Tessel
