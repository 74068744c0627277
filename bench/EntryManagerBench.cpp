// Entry managers against the chip model on the THx-like profile: what the
// library adds to the hardware work of an entry.
//
// An entry of the IP CoPP group (one copy in each of 4 pipes, 4608 entries
// when full) is taken with
// getEntry, qualified on the base entry and installed with installEntry;
// the "Direct" benchmarks make the same SDK calls, in the same order,
// straight on the model. Traces are off (TESSEL_TRACE unset); the FastLog
// records stay on, as they do in the agent.
//
//   PairedFill as many entries as the group holds, from empty, through the
//              library and directly in turn; the median of the pairs' ratios
//   Op/1000    one entry taken, qualified, installed, removed and released
//              with 1000 entries in the group
//   Op/0       the same with the group full (all but the one)
//
//    build/default/bench/EntryManagerBench
//
// The work of one entry is in functions of their own, kept out of line so
// that callgrind can count them alone:
//
//    valgrind --tool=callgrind --toggle-collect='*libraryEntry*'
//       build/default/bench/EntryManagerBench --benchmark_filter=BM_PairedFill
//    valgrind --tool=callgrind --toggle-collect='*libraryOp*'
//       build/default/bench/EntryManagerBench --benchmark_filter=BM_LibraryOp/0
//       --benchmark_min_time=0.01
// (each command on one line)
//
// and likewise directEntry and directOp.
#include <benchmark/benchmark.h>

#include <ctime>
#include <malloc.h>
#include <memory>
#include <vector>

#include "bench/Percentiles.h"
#include "catalogue/TcamGroupAssignment.h"
#include "catalogue/TcamGroupId.h"
#include "manager/ChipInfoFromShim.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/kiln/ActivityLock.h"
#include "sdk/api/bcm.h"
#include "sdk/model/Box.h"
#include "sdk/shim/Oberon.h"
#include "sdk/shim/Shim.h"

namespace {

using namespace Tessel;

constexpr U32 group = IFP_GROUP_COPP_IP_;
constexpr U32 pipes = 4;
constexpr U32 maxPrio = 0x7fffffff;

ChipModel::Box::Options
committed() {
   ChipModel::Box::Options options;
   options.staged = false;
   return options;
}

// The THx-like profile with a counter for every row of the ingress stage,
// so that every entry of a full group has its counters.
std::vector< ChipModel::Profile >
profile() {
   ChipModel::Profile thx = *ChipModel::findProfile( "thx" );
   ChipModel::StageProfile & ifp = thx.stages[ 0 ];
   ifp.countersPerPool = ifp.slicesPerPipe * ifp.entriesPerSlice / ifp.counterPools;
   return { thx };
}

// A THx-like box (counters for every row) whose unit is set up by a group manager (its reserved
// ranges made) and whose CoPP group exists; the activity lock is held as
// the agent holds it.
struct Setup {
   Setup() : box( profile(), committed() ), manager( new TesselTcamGroupManager( "tcam" ) ) {
      manager->handleInitialized();
      manager->modChipInfoIs( 1, chipInfoFromShim( 1, { 0 } ) );
      manager->initializeGroup( 0, group );
      copp = manager->unboundedEntryManager( policyCoppIpTcamGroup_ );
   }
   ~Setup() {
      copp = nullptr;
      manager = nullptr;
   }
   // Logical entries the group can still take.
   U32 capacity() { return manager->entriesAvailable( 0, group ); }

   ChipModel::Box box;
   Kiln::ActivityLockGuard activity;
   Kiln::Ptr< TesselTcamGroupManager > manager;
   Kiln::Ptr< TesselUnboundedTcamEntryManager > copp;
};

U32
dstOf( U32 index ) {
   return 0x0a000000u + index;
}

// --- through the library ---

[[gnu::noinline]] U32
libraryEntry( Setup & s, U32 index ) {
   U32 entry = s.copp->getEntry( 0, "bench" );
   {
      Kiln::UnlockAnchor anchor( Kiln::ActivityUnlockAnchor::lock() );
      bcm_field_qualify_DstIp( 0, entry, dstOf( index ), 0xffffffff );
   }
   s.copp->installEntry( 0, entry );
   return entry;
}

void
libraryDrop( Setup & s, U32 entry ) {
   s.copp->removeEntry( 0, entry );
   s.copp->releaseEntry( 0, entry );
}

[[gnu::noinline]] void
libraryOp( Setup & s, U32 index ) {
   libraryDrop( s, libraryEntry( s, index ) );
}

// --- the same SDK calls made directly ---

struct DirectEntry {
   U32 ids[ pipes ];
   int stats[ pipes ];
};

U32
pipeGroup( U32 pipe ) {
   return group | pipe << 24;
}

[[gnu::noinline]] DirectEntry
directEntry( U32 index ) {
   Kiln::UnlockAnchor anchor( Kiln::ActivityUnlockAnchor::lock() );
   DirectEntry e{};
   for ( U32 pipe = 0; pipe < pipes; ++pipe ) {
      bcm_field_entry_t id = 0;
      if ( pipe == 0 ) {
         bcm_field_entry_create( 0, pipeGroup( 0 ), &id );
      } else {
         id = static_cast< bcm_field_entry_t >( e.ids[ 0 ] | pipe << 24 );
         bcm_field_entry_create_id( 0, pipeGroup( pipe ), id );
      }
      e.ids[ pipe ] = U32( id );
      bcm_field_entry_prio_set( 0, id, int( maxPrio - e.ids[ 0 ] ) );
   }
   for ( U32 pipe = 0; pipe < pipes; ++pipe ) {
      bcm_field_stat_t types[] = { bcmFieldStatPackets, bcmFieldStatBytes };
      bcm_field_stat_create( 0, pipeGroup( pipe ), 2, types, &e.stats[ pipe ] );
      bcm_field_entry_stat_attach( 0, e.ids[ pipe ], e.stats[ pipe ] );
   }
   bcm_field_qualify_DstIp( 0, e.ids[ 0 ], dstOf( index ), 0xffffffff );
   for ( U32 pipe = 0; pipe < pipes; ++pipe ) {
      if ( pipe > 0 ) {
         SdkShim->ob_field_entry_copy_id( 0, e.ids[ 0 ], e.ids[ pipe ] );
      }
      bcm_field_entry_install( 0, e.ids[ pipe ] );
      oberon_stat_pool_index info;
      oberon_bcm_esw_field_stat_pool_index_( 0, e.stats[ pipe ], &info );
      for ( int i = 0; i < info.num_indices; ++i ) {
         bcm_field_stat_eviction_clear( 0, info.pipe, info.pool_id, info.indices[ i ], 1, 1 );
      }
   }
   return e;
}

void
directDrop( const DirectEntry & e ) {
   Kiln::UnlockAnchor anchor( Kiln::ActivityUnlockAnchor::lock() );
   for ( U32 pipe = 0; pipe < pipes; ++pipe ) {
      bcm_field_entry_remove( 0, e.ids[ pipe ] );
   }
   for ( U32 pipe = 0; pipe < pipes; ++pipe ) {
      bcm_field_entry_stat_detach( 0, e.ids[ pipe ], e.stats[ pipe ] );
      bcm_field_stat_destroy( 0, e.stats[ pipe ] );
      bcm_field_entry_destroy( 0, e.ids[ pipe ] );
   }
}

[[gnu::noinline]] void
directOp( U32 index ) {
   directDrop( directEntry( index ) );
}

// --- benchmarks ---

// The heap is kept, not given back to the system, between fills: memory
// returned after one fill page-faults back in during the next, on whichever
// side of a pair runs then. 16 MB is the largest mmap threshold a 32-bit
// build accepts.
[[maybe_unused]] const bool heapKept = [] {
   mallopt( M_TRIM_THRESHOLD, 1 << 30 );
   mallopt( M_MMAP_THRESHOLD, 16 << 20 );
   return true;
}();

// Thread CPU time in nanoseconds: the fills run on this thread alone.
double
threadCpuNs() {
   timespec now;
   clock_gettime( CLOCK_THREAD_CPUTIME_ID, &now );
   return double( now.tv_sec ) * 1e9 + double( now.tv_nsec );
}

// CPU nanoseconds per entry of filling a fresh group with `entry`.
template< typename EntryFn >
double
fillNsPerEntry( EntryFn && entry ) {
   auto s = std::make_unique< Setup >();
   U32 capacity = s->capacity();
   double start = threadCpuNs();
   for ( U32 index = 0; index < capacity; ++index ) {
      entry( *s, index );
   }
   double took = threadCpuNs() - start;
   return took / double( capacity );
}

// Each iteration fills a group through the library and one with the same
// calls made directly, in turn (which goes first alternates), and takes the
// pair's ratio: a neighbour's burst or the allocator's state then weighs on
// both sides of a ratio alike. Reports the medians. One pair is filled
// before the timing: the very first fill of a process pays for the heap's
// growth (page faults of fresh memory), which measured 1.7 to 2.4 times a
// later fill and would always land on the side that goes first.
void
BM_PairedFill( benchmark::State & state ) {
   std::vector< double > library;
   std::vector< double > direct;
   std::vector< double > ratios;
   auto viaLibrary = [] { return fillNsPerEntry( []( Setup & s, U32 i ) { libraryEntry( s, i ); } ); };
   auto viaModel = [] { return fillNsPerEntry( []( Setup &, U32 i ) { directEntry( i ); } ); };
   viaLibrary();
   viaModel();
   for ( auto _ : state ) {
      bool libraryFirst = library.size() % 2 == 0;
      double first = libraryFirst ? viaLibrary() : viaModel();
      double second = libraryFirst ? viaModel() : viaLibrary();
      library.push_back( libraryFirst ? first : second );
      direct.push_back( libraryFirst ? second : first );
      ratios.push_back( library.back() / direct.back() );
   }
   state.counters[ "libraryNsPerEntry" ] = median( library );
   state.counters[ "directNsPerEntry" ] = median( direct );
   state.counters[ "ratio" ] = median( ratios );
}

// The group's level for an Op benchmark: its argument, or full but one.
U32
levelOf( benchmark::State & state, Setup & s ) {
   return state.range( 0 ) ? U32( state.range( 0 ) ) : s.capacity() - 1;
}

void
BM_LibraryOp( benchmark::State & state ) {
   Setup s;
   U32 level = levelOf( state, s );
   for ( U32 i = 0; i < level; ++i ) {
      libraryEntry( s, i );
   }
   s.box.clearCallLog();
   for ( auto _ : state ) {
      libraryOp( s, level );
   }
   state.counters[ "entries" ] = level;
   state.counters[ "sdkCalls" ] = double( s.box.callLog().size() ) / double( state.iterations() );
}

void
BM_DirectOp( benchmark::State & state ) {
   Setup s;
   U32 level = levelOf( state, s );
   for ( U32 i = 0; i < level; ++i ) {
      directEntry( i );
   }
   s.box.clearCallLog();
   for ( auto _ : state ) {
      directOp( level );
   }
   state.counters[ "entries" ] = level;
   state.counters[ "sdkCalls" ] = double( s.box.callLog().size() ) / double( state.iterations() );
}

} // namespace

BENCHMARK( BM_PairedFill )->Unit( benchmark::kMillisecond )->Iterations( 5 );
BENCHMARK( BM_LibraryOp )->Arg( 1000 )->Arg( 0 )->Unit( benchmark::kMicrosecond );
BENCHMARK( BM_DirectOp )->Arg( 1000 )->Arg( 0 )->Unit( benchmark::kMicrosecond );

BENCHMARK_MAIN();
