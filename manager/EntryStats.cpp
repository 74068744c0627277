// Entry counters: one stat object per copy, reads summed over every pipe
// and copy, clears.
#include <cstdlib>

#include "catalogue/TcamGroupId.h"
#include "common/TesselSdkCall.h"
#include "manager/TesselTcamEntryManager.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/fastlog/FastLog.h"
#include "platform/fastlog/Trace.h"
#include "sdk/shim/Shim.h"

TRACE_CHANNEL( "TesselTcamEntryManager" );

namespace Tessel {

Kiln::Ptr< StatTypes >
StatTypes::packetsAndBytes() {
   Kiln::Ptr< StatTypes > types = new StatTypes( "statTypes" );
   types->typeIs( 0, static_cast< U32 >( SdkShim->AR_bcmFieldStatPackets() ) );
   types->typeIs( 1, static_cast< U32 >( SdkShim->AR_bcmFieldStatBytes() ) );
   return types;
}

// Every entry of a getEntry without its own list counts packets and bytes:
// one list serves them all. Activity thread only, like every entity.
const Kiln::Ptr< StatTypes > &
defaultStatTypes() {
   static const Kiln::Ptr< StatTypes > types = StatTypes::packetsAndBytes();
   return types;
}

void
TesselTcamEntryManager::installStats( U32 unit, U32 entry, U32 tcamEntryId,
                                      const Kiln::Ptr< StatTypes > & statTypes ) {
   KILN_ASSERT_MSG( statTypes->typeCollection().size() <= size_t( bcmFieldStatCount ),
                    "more stat types than the SDK has" );
   bcm_field_stat_t statTypesList[ bcmFieldStatCount ] = {};
   int statIdx = 0;
   statTypes->typeCollection().forEach( [ & ]( U32, U32 type ) {
      statTypesList[ statIdx++ ] = static_cast< bcm_field_stat_t >( type );
   } );
   if ( statIdx == 2 ) {
      KILN_ASSERT( abs( ( int )statTypesList[ 0 ] - ( int )statTypesList[ 1 ] ) == 1 );
   }
   U32 groupId = unitRecord( unit ).groupId( tcamEntryId );
   U32 entryId = tcamEntryId;
   int statsId = 0;
   {
      SdkCallRun run;
      int rc = SDK_CALL_UNIT_MORE(
         unit, bcm_field_stat_create( unit, groupId, statIdx, statTypesList, &statsId ),
         " GroupId: " << groupId << " entryId: " << entryId << " for entry " << entry );
      if ( rc < 0 ) {
         return;
      }
      FASTLOG( "fp stat create group=", groupId, " statId=", statsId, " StatType: ",
               FastLog::dec( U32( statTypesList[ 0 ] ) ), " types: ",
               FastLog::dec( U32( statIdx ) ) );
      rc = SDK_CALL_UNIT_MORE( unit, bcm_field_entry_stat_attach( unit, entryId, statsId ),
                               " GroupId: " << groupId << " entryId: " << entryId
                                            << " statId: " << statsId );
      if ( rc < 0 ) {
         SDK_CALL_UNIT( unit, bcm_field_stat_destroy( unit, statsId ) );
         return;
      }
      FASTLOG( "fp stat attach entry=", entryId, " statId=", statsId );
   }
   unitRecord( unit ).entryStatsIs( tcamEntryId, statsId );
}

void
TesselTcamEntryManager::removeStats( U32 unit, U32 tcamEntryId ) {
   U32 entryId = tcamEntryId;
   const int * stat = unitRecord( unit ).entryStatsCollection().find( entryId );
   if ( !stat ) {
      TRACE7( "Unit: " << unit << " can't find stats for entry 0x" << std::hex << entryId );
      return;
   }
   int statsId = *stat;
   TRACE7( "Unit: " << unit << " Attempting to detach statId " << statsId << " from entry 0x"
                    << std::hex << entryId );
   {
      SdkCallRun run;
      SDK_CALL_UNIT( unit, bcm_field_entry_stat_detach( unit, entryId, statsId ) );
      FASTLOG( "fp stat detach entry=", entryId, " statId=", statsId );
      SDK_CALL_UNIT( unit, bcm_field_stat_destroy( unit, statsId ) );
      FASTLOG( "fp stat destroy StatId= ", statsId, " entry=", entryId );
   }
   unitRecord( unit ).entryStatsDel( entryId );
}

int
TesselTcamEntryManager::fieldStatGetBytes( U32 unit, U32 statsId, int statType, U64 & value ) {
   return groupManager()->fieldStatGetBytes( unit, statsId, statType, value );
}

int
TesselTcamEntryManager::fieldStatGetPackets( U32 unit, U32 statsId, int statType, U64 & value ) {
   return groupManager()->fieldStatGetPackets( unit, statsId, statType, value );
}

U64
TesselTcamEntryManager::hitsForPipeEntry( U32 unit, U32 tcamEntryId ) {
   const UnitEntriesCreated & record = unitRecord( unit );
   if ( !record.entryStatsHas( tcamEntryId ) ) {
      return 0;
   }
   U32 statsId = static_cast< U32 >( record.entryStats( tcamEntryId ) );
   U64 pktHits = 0;
   int rc = fieldStatGetPackets( unit, statsId, SdkShim->AR_bcmFieldStatPackets(), pktHits );
   if ( rc < 0 ) {
      TRACE0( "Unit: " << unit << " fieldStatGetPackets( unit, statsId, statPackets, &pktHits )"
                       << " API ERROR:" << " (rc:" << rc << ")" );
      return 0;
   }
   return pktHits;
}

U64
TesselTcamEntryManager::hitsForEntry( U32 unit, U32 entry ) {
   const EntryLayout layout = unitRecord( unit ).layout();
   U64 hits = 0;
   for ( U32 pipe = 0; pipe < layout.pipes; ++pipe ) {
      for ( U32 copy = 0; copy < layout.copies; ++copy ) {
         hits += hitsForPipeEntry( unit, getPipeEntryId( unit, pipe, entry, copy ) );
      }
   }
   return hits;
}

// One counter of every copy, summed; copies without a stat and reads that
// fail add nothing.
U64
TesselTcamEntryManager::sumForEntry( U32 unit, U32 entry, int statType, bool bytes ) {
   const EntryLayout layout = unitRecord( unit ).layout();
   U64 total = 0;
   for ( U32 pipe = 0; pipe < layout.pipes; ++pipe ) {
      for ( U32 copy = 0; copy < layout.copies; ++copy ) {
         U32 tcamEntryId = getPipeEntryId( unit, pipe, entry, copy );
         if ( !unitRecord( unit ).entryStatsHas( tcamEntryId ) ) {
            continue;
         }
         U32 statsId = static_cast< U32 >( unitRecord( unit ).entryStats( tcamEntryId ) );
         U64 count = 0;
         int rc = bytes ? fieldStatGetBytes( unit, statsId, statType, count )
                        : fieldStatGetPackets( unit, statsId, statType, count );
         if ( rc < 0 ) {
            TRACE0( "Unit: " << unit << ( bytes ? " fieldStatGetBytes" : " fieldStatGetPackets" )
                             << "( unit, statsId, " << statType << ", &count ) API ERROR:"
                             << " (rc:" << rc << ")" );
            continue;
         }
         total += count;
      }
   }
   return total;
}

U64
TesselTcamEntryManager::byteHitsForEntry( U32 unit, U32 entry ) {
   return sumForEntry( unit, entry, SdkShim->AR_bcmFieldStatBytes(), true );
}

U64
TesselTcamEntryManager::greenByteHitsForEntry( U32 unit, U32 entry ) {
   return sumForEntry( unit, entry, SdkShim->AR_bcmFieldStatGreenBytes(), true );
}

U64
TesselTcamEntryManager::yellowByteHitsForEntry( U32 unit, U32 entry ) {
   return sumForEntry( unit, entry, SdkShim->AR_bcmFieldStatYellowBytes(), true );
}

U64
TesselTcamEntryManager::byteDropsForEntry( U32 unit, U32 entry ) {
   return sumForEntry( unit, entry, SdkShim->AR_bcmFieldStatDropBytes(), true );
}

U64
TesselTcamEntryManager::greenPktHitsForEntry( U32 unit, U32 entry ) {
   return sumForEntry( unit, entry, SdkShim->AR_bcmFieldStatGreenPackets(), false );
}

U64
TesselTcamEntryManager::yellowPktHitsForEntry( U32 unit, U32 entry ) {
   return sumForEntry( unit, entry, SdkShim->AR_bcmFieldStatYellowPackets(), false );
}

U64
TesselTcamEntryManager::pktDropsForEntry( U32 unit, U32 entry ) {
   return sumForEntry( unit, entry, SdkShim->AR_bcmFieldStatDropPackets(), false );
}

void
TesselTcamEntryManager::clearHitsForEntry( U32 unit, U32 entry ) {
   clearForEntry( unit, entry, SdkShim->AR_bcmFieldStatPackets() );
}

void
TesselTcamEntryManager::clearBytesForEntry( U32 unit, U32 entry ) {
   clearForEntry( unit, entry, SdkShim->AR_bcmFieldStatBytes() );
}

void
TesselTcamEntryManager::clearForEntry( U32 unit, U32 entry, int statType ) {
   const EntryLayout layout = unitRecord( unit ).layout();
   bcm_field_stat_t stat = static_cast< bcm_field_stat_t >( statType );
   bool packets = statType == SdkShim->AR_bcmFieldStatPackets();
   for ( U32 pipe = 0; pipe < layout.pipes; ++pipe ) {
      for ( U32 copy = 0; copy < layout.copies; ++copy ) {
         U32 tcamEntryId = getPipeEntryId( unit, pipe, entry, copy );
         if ( !unitRecord( unit ).entryStatsHas( tcamEntryId ) ) {
            continue;
         }
         int statsId = unitRecord( unit ).entryStats( tcamEntryId );
         int rc = SDK_CALL( bcm_field_stat_set( unit, statsId, stat, 0 ) );
         if ( rc == BCM_E_PARAM && packets ) {
            clearHitsSpecial( unit, statsId );
         } else if ( rc < 0 ) {
            TRACE0( "Unit: " << unit << " bcm_field_stat_set( unit, statsId, stat, 0 )"
                             << " API ERROR:" << " (rc:" << rc << ")" );
         }
      }
   }
}

// The mapping groups count their entries by colour or drop only, without
// the plain packet count: each packet count the stat has is cleared.
void
TesselTcamEntryManager::clearHitsSpecial( U32 unit, int statsId ) {
   KILN_ASSERT( group() == VFP_GROUP_PORT_VP_ || group() == EFP_GROUP_VLAN_PRI_ ||
                group() == VFP_GROUP_IP_VFI_EXCEPTION_ || group() == VFP_GROUP_PDP_CLASS_ );
   int nstat = 0;
   bcm_field_stat_t types[ bcmFieldStatCount ] = {};
   if ( SDK_CALL_UNIT( unit, bcm_field_stat_size( unit, statsId, &nstat ) ) < 0 ||
        SDK_CALL_UNIT( unit, bcm_field_stat_config_get( unit, statsId, nstat, types ) ) < 0 ) {
      return;
   }
   int packets = SdkShim->AR_bcmFieldStatPackets();
   for ( int i = 0; i < nstat && i < bcmFieldStatCount; ++i ) {
      bcm_field_stat_t stat = types[ i ];
      if ( ( stat - packets ) % 2 == 0 ) { // packets and bytes of a kind pair up
         int rc = SDK_CALL( bcm_field_stat_set( unit, statsId, stat, 0 ) );
         if ( rc < 0 ) {
            TRACE0( "Unit: " << unit << " bcm_field_stat_set( unit, statsId, stat, 0 )"
                             << " API ERROR:" << " (rv:" << rc << ")" );
         }
      }
   }
}

} // namespace Tessel
