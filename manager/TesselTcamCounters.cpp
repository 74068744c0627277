// Counters of entries as the group manager reads them: stat counts with a
// check against the raw counters behind them, and what the counter
// eviction engine moved.
#include <sstream>

#include "common/TesselSdkCall.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/fastlog/Trace.h"
#include "sdk/shim/Shim.h"

TRACE_CHANNEL( "TesselTcam" );

namespace Tessel {

namespace {

// Packets and bytes of one kind (all, a colour, drops) are neighbours in
// the SDK's numbering and share a counter index.
int
counterKind( int stat ) {
   return ( stat - SdkShim->AR_bcmFieldStatPackets() ) / 2;
}

std::string
indicesText( const oberon_stat_pool_index & info ) {
   std::ostringstream text;
   for ( int i = 0; i < info.num_indices; ++i ) {
      text << ( i ? "," : "" ) << info.indices[ i ];
   }
   return text.str();
}

} // namespace

int
TesselTcamGroupManager::fieldStatGetBytes( U32 unit, U32 statsId, int statType, U64 & value ) {
   uint64_t count = 0;
   bcm_field_stat_t stat = static_cast< bcm_field_stat_t >( statType );
   int rc = SDK_CALL( bcm_field_stat_get( unit, statsId, stat, &count ) );
   if ( rc >= 0 ) {
      value = count;
   }
   return rc;
}

int
TesselTcamGroupManager::fieldStatGetPackets( U32 unit, U32 statsId, int statType, U64 & value ) {
   uint64_t count = 0;
   bcm_field_stat_t stat = static_cast< bcm_field_stat_t >( statType );
   int rc = SDK_CALL( bcm_field_stat_get( unit, statsId, stat, &count ) );
   if ( rc < 0 ) {
      return rc;
   }
   value = count;
   crossCheckPackets( unit, statsId, stat, count );
   return rc;
}

// The SDK's count comes from its software copy; the raw counter at the
// stat's pool and index is what the hardware holds. They must agree.
void
TesselTcamGroupManager::crossCheckPackets( U32 unit, U32 statsId, bcm_field_stat_t stat,
                                           U64 expected ) {
   oberon_stat_pool_index info = {};
   int rc = SDK_CALL( oberon_bcm_esw_field_stat_pool_index_( unit, statsId, &info ) );
   if ( rc < 0 ) {
      TRACE0( "oberon_bcm_esw_field_stat_pool_index_ failed:  unit" << unit << " statsId "
                                                                     << statsId << " failed. Error: "
                                                                     << bcm_errmsg( rc ) );
      return;
   }
   TRACE8( "TCAM stat ID fetch. unit: " << unit << " statsId: " << statsId << " poolId: "
                                        << info.pool_id << " indices: " << indicesText( info )
                                        << " bcmpipe: " << info.pipe << " bcmField: " << stat );
   int index = statCounterIndex( unit, statsId, stat, info );
   uint64_t actualPkts = 0;
   uint64_t actualBytes = 0;
   if ( index < 0 || SDK_CALL_UNIT( unit, bcm_field_stat_pool_counter_get(
                                             unit, info.pipe, info.pool_id, index,
                                             &actualPkts, &actualBytes ) ) < 0 ) {
      return;
   }
   if ( actualPkts != expected ) {
      TRACE0( "TCAM counter mismatch. unit: " << unit << " statsId: " << statsId << " poolId: "
                                              << info.pool_id << " index: " << index
                                              << ". Expected packets: " << expected
                                              << " actualPkts: " << actualPkts );
   }
}

// The counter index of the stat that counts `stat`: indices are listed in
// the order the stat's types first use them, one per kind.
int
TesselTcamGroupManager::statCounterIndex( U32 unit, U32 statsId, bcm_field_stat_t stat,
                                          const oberon_stat_pool_index & info ) {
   int nstat = 0;
   bcm_field_stat_t types[ bcmFieldStatCount ] = {};
   if ( SDK_CALL_UNIT( unit, bcm_field_stat_size( unit, statsId, &nstat ) ) < 0 ||
        SDK_CALL_UNIT( unit, bcm_field_stat_config_get( unit, statsId, nstat, types ) ) < 0 ) {
      return -1;
   }
   std::vector< int > kinds;
   for ( int i = 0; i < nstat && i < bcmFieldStatCount; ++i ) {
      if ( std::find( kinds.begin(), kinds.end(), counterKind( types[ i ] ) ) == kinds.end() ) {
         kinds.push_back( counterKind( types[ i ] ) );
      }
   }
   auto position = std::find( kinds.begin(), kinds.end(), counterKind( stat ) );
   size_t at = static_cast< size_t >( position - kinds.begin() );
   return position != kinds.end() && at < static_cast< size_t >( info.num_indices )
             ? info.indices[ at ]
             : -1;
}

void
TesselTcamGroupManager::clearEvictionCounter( U32 unit, int statsId, bool packets, bool bytes ) {
   SdkCallRun run;
   oberon_stat_pool_index info; // filled by a successful call
   if ( SDK_CALL_UNIT( unit, oberon_bcm_esw_field_stat_pool_index_( unit, statsId, &info ) ) < 0 ) {
      return;
   }
   for ( int i = 0; i < info.num_indices; ++i ) {
      SDK_CALL_UNIT( unit, bcm_field_stat_eviction_clear( unit, info.pipe, info.pool_id,
                                                          info.indices[ i ], packets, bytes ) );
   }
}

int
TesselTcamGroupManager::getCounterEvictions( U32 unit, int statsId, U64 & packets, U64 & bytes ) {
   packets = 0;
   bytes = 0;
   oberon_stat_pool_index info = {};
   int rc = SDK_CALL_UNIT( unit, oberon_bcm_esw_field_stat_pool_index_( unit, statsId, &info ) );
   for ( int i = 0; rc >= 0 && i < info.num_indices; ++i ) {
      uint64_t pktCount = 0;
      uint64_t byteCount = 0;
      rc = SDK_CALL_UNIT( unit, bcm_field_stat_eviction_get( unit, info.pipe, info.pool_id,
                                                             info.indices[ i ], &pktCount,
                                                             &byteCount ) );
      packets += pktCount;
      bytes += byteCount;
   }
   TRACE7( "TCAM evictions unit: " << unit << " statsId: " << statsId << " pktCount: " << packets
                                   << " byteCount: " << bytes );
   return rc;
}

int
TesselTcamGroupManager::getCounterEvictionsForPipe( U32 unit, U32 pipe, U64 & packets,
                                                    U64 & bytes ) {
   std::vector< int > stats;
   auto collect = [ & ]( const auto & managers ) {
      for ( const auto & [ assignment, manager ] : managers ) {
         if ( Kiln::Ptr< UnitEntriesCreated > record = manager->internalUnitEntry( unit ) ) {
            for ( const auto & [ tcamEntryId, statsId ] : record->entryStatsCollection() ) {
               stats.push_back( statsId );
            }
         }
      }
   };
   collect( entryManager_ );
   collect( unboundedEntryManager_ );
   packets = 0;
   bytes = 0;
   int result = 0;
   for ( int statsId : stats ) {
      oberon_stat_pool_index info = {};
      int rc = SDK_CALL_UNIT( unit, oberon_bcm_esw_field_stat_pool_index_( unit, statsId, &info ) );
      if ( rc < 0 || static_cast< U32 >( info.pipe ) != pipe ) {
         result = result < 0 ? result : std::min( rc, 0 );
         continue;
      }
      U64 statPackets = 0;
      U64 statBytes = 0;
      rc = getCounterEvictions( unit, statsId, statPackets, statBytes );
      result = result < 0 ? result : std::min( rc, 0 );
      packets += statPackets;
      bytes += statBytes;
   }
   return result;
}

} // namespace Tessel
