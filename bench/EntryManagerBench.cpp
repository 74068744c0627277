// Entry managers against the chip model on the THx-like profile: what the
// library adds to the hardware work of an entry.
//
// An entry of the IP CoPP group (one copy in each of 4 pipes, 4608 entries
// when full) is taken with getEntry, qualified on the base entry and
// installed with installEntry; the "direct" side makes the same SDK calls,
// in the same order, straight on the model. Traces are off (TESSEL_TRACE
// unset); the FastLog records stay on, as they do in the agent.
//
// The box has two units with the group on each. Sides that are compared run
// in turns of a few dozen entries (about a millisecond each) on their own
// unit, so that a slower stretch of the machine weighs on both alike.
//
//   PairedFill   as many entries as the group holds, from empty, through
//                the library on one unit and directly on the other in
//                turns, the units traded from fill to fill; the median
//                over fills of library time / direct time
//   PairedOp     one entry taken, qualified, installed, removed and
//                released through the library, with 1000 entries in unit
//                0's group and unit 1's full (all but the one), in turns;
//                the median of the turns' full / 1000 ratios
//   LibraryOp/N, DirectOp/N   the operation alone (N = 0: group full)
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

#include <algorithm>
#include <ctime>
#include <malloc.h>
#include <memory>
#include <utility>
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
// so that every entry of a full group has its counters; two units of it.
std::vector< ChipModel::Profile >
profiles() {
   ChipModel::Profile thx = *ChipModel::findProfile( "thx" );
   ChipModel::StageProfile & ifp = thx.stages[ 0 ];
   ifp.countersPerPool = ifp.slicesPerPipe * ifp.entriesPerSlice / ifp.counterPools;
   return { thx, thx };
}

constexpr U32 units = 2;

// A box of two THx-like units (counters for every row), both set up by a
// group manager (their reserved ranges made) with the CoPP group on each;
// the activity lock is held as the agent holds it.
struct Setup {
   Setup() : box( profiles(), committed() ), manager( new TesselTcamGroupManager( "tcam" ) ) {
      manager->handleInitialized();
      manager->modChipInfoIs( 1, chipInfoFromShim( 1, { 0, 1 } ) );
      for ( U32 unit = 0; unit < units; ++unit ) {
         manager->initializeGroup( unit, group );
      }
      copp = manager->unboundedEntryManager( policyCoppIpTcamGroup_ );
   }
   ~Setup() {
      copp = nullptr;
      manager = nullptr;
   }
   // Logical entries the unit's group can still take.
   U32 capacity( U32 unit ) { return manager->entriesAvailable( unit, group ); }

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
libraryEntry( Setup & s, U32 unit, U32 index ) {
   U32 entry = s.copp->getEntry( unit, "bench" );
   {
      Kiln::UnlockAnchor anchor( Kiln::ActivityUnlockAnchor::lock() );
      bcm_field_qualify_DstIp( int( unit ), entry, dstOf( index ), 0xffffffff );
   }
   s.copp->installEntry( unit, entry );
   return entry;
}

void
libraryDrop( Setup & s, U32 unit, U32 entry ) {
   s.copp->removeEntry( unit, entry );
   s.copp->releaseEntry( unit, entry );
}

[[gnu::noinline]] void
libraryOp( Setup & s, U32 unit, U32 index ) {
   libraryDrop( s, unit, libraryEntry( s, unit, index ) );
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
directEntry( int unit, U32 index ) {
   Kiln::UnlockAnchor anchor( Kiln::ActivityUnlockAnchor::lock() );
   DirectEntry e{};
   for ( U32 pipe = 0; pipe < pipes; ++pipe ) {
      bcm_field_entry_t id = 0;
      if ( pipe == 0 ) {
         bcm_field_entry_create( unit, pipeGroup( 0 ), &id );
      } else {
         id = static_cast< bcm_field_entry_t >( e.ids[ 0 ] | pipe << 24 );
         bcm_field_entry_create_id( unit, pipeGroup( pipe ), id );
      }
      e.ids[ pipe ] = U32( id );
      bcm_field_entry_prio_set( unit, id, int( maxPrio - e.ids[ 0 ] ) );
   }
   for ( U32 pipe = 0; pipe < pipes; ++pipe ) {
      bcm_field_stat_t types[] = { bcmFieldStatPackets, bcmFieldStatBytes };
      bcm_field_stat_create( unit, pipeGroup( pipe ), 2, types, &e.stats[ pipe ] );
      bcm_field_entry_stat_attach( unit, e.ids[ pipe ], e.stats[ pipe ] );
   }
   bcm_field_qualify_DstIp( unit, e.ids[ 0 ], dstOf( index ), 0xffffffff );
   for ( U32 pipe = 0; pipe < pipes; ++pipe ) {
      if ( pipe > 0 ) {
         SdkShim->ob_field_entry_copy_id( unit, e.ids[ 0 ], e.ids[ pipe ] );
      }
      bcm_field_entry_install( unit, e.ids[ pipe ] );
      oberon_stat_pool_index info;
      oberon_bcm_esw_field_stat_pool_index_( unit, e.stats[ pipe ], &info );
      for ( int i = 0; i < info.num_indices; ++i ) {
         bcm_field_stat_eviction_clear( unit, info.pipe, info.pool_id, info.indices[ i ], 1, 1 );
      }
   }
   return e;
}

void
directDrop( int unit, const DirectEntry & e ) {
   Kiln::UnlockAnchor anchor( Kiln::ActivityUnlockAnchor::lock() );
   for ( U32 pipe = 0; pipe < pipes; ++pipe ) {
      bcm_field_entry_remove( unit, e.ids[ pipe ] );
   }
   for ( U32 pipe = 0; pipe < pipes; ++pipe ) {
      bcm_field_entry_stat_detach( unit, e.ids[ pipe ], e.stats[ pipe ] );
      bcm_field_stat_destroy( unit, e.stats[ pipe ] );
      bcm_field_entry_destroy( unit, e.ids[ pipe ] );
   }
}

[[gnu::noinline]] void
directOp( int unit, U32 index ) {
   directDrop( unit, directEntry( unit, index ) );
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

// Thread CPU time in nanoseconds: the work runs on this thread alone.
double
threadCpuNs() {
   timespec now;
   clock_gettime( CLOCK_THREAD_CPUTIME_ID, &now );
   return double( now.tv_sec ) * 1e9 + double( now.tv_nsec );
}

// Two sides of a comparison, each run in turns of `count` steps and timed
// turn by turn. Which side goes first alternates from one round to the
// next, so that neither always finds the caches as the other left them.
// The box's call log is emptied before each turn, untimed: left to grow,
// its vector's doublings (copies of up to hundreds of thousands of
// records) would fall on whichever side happened to cross them.
struct Turns {
   explicit Turns( ChipModel::Box & box ) : box( box ) {}

   ChipModel::Box & box;
   double first = 0;   // nanoseconds spent in side one
   double second = 0;  // and in side two

   template< typename One, typename Two >
   void
   round( U32 count, One && one, Two && two, bool oneFirst ) {
      if ( oneFirst ) {
         first += timed( count, one );
         second += timed( count, two );
      } else {
         second += timed( count, two );
         first += timed( count, one );
      }
   }

   template< typename Step >
   double
   timed( U32 count, Step && step ) {
      box.clearCallLog();
      double start = threadCpuNs();
      for ( U32 i = 0; i < count; ++i ) {
         step();
      }
      return threadCpuNs() - start;
   }
};

// About a millisecond of entries per turn: long enough that reading the
// clock costs nothing, short enough that the machine's pace barely moves
// within a round.
constexpr U32 entriesPerTurn = 48;

// One fill of a fresh box: the library fills one unit's group, the same
// calls made directly fill the other's with as many entries, in turns.
// Returns the library's and the direct side's nanoseconds per entry.
std::pair< double, double >
pairedFill( U32 libraryOn ) {
   const int directOn = int( units - 1 - libraryOn );
   auto s = std::make_unique< Setup >();
   const U32 capacity = s->capacity( libraryOn );
   U32 libraryNext = 0;
   U32 directNext = 0;
   Turns turns( s->box );
   for ( U32 done = 0; done < capacity; done += entriesPerTurn ) {
      const U32 count = std::min( entriesPerTurn, capacity - done );
      turns.round(
         count, [ & ] { libraryEntry( *s, libraryOn, libraryNext++ ); },
         [ & ] { directEntry( directOn, directNext++ ); }, ( done / entriesPerTurn ) % 2 == 0 );
   }
   return { turns.first / capacity, turns.second / capacity };
}

// Reports the medians over fills. One fill is made before the timing: the
// very first fill of a process pays for the heap's growth (page faults of
// fresh memory), which measured 1.7 to 2.4 times a later one. The sides
// trade units from one fill to the next, over an even number of fills:
// direct calls filling both units in turns ran about 1 percent slower on
// unit 0 than on unit 1.
void
BM_PairedFill( benchmark::State & state ) {
   std::vector< double > library;
   std::vector< double > direct;
   std::vector< double > ratios;
   pairedFill( 0 );
   for ( auto _ : state ) {
      auto [ libraryNs, directNs ] = pairedFill( U32( ratios.size() % units ) );
      library.push_back( libraryNs );
      direct.push_back( directNs );
      ratios.push_back( libraryNs / directNs );
   }
   state.counters[ "libraryNsPerEntry" ] = median( library );
   state.counters[ "directNsPerEntry" ] = median( direct );
   state.counters[ "ratio" ] = median( ratios );
}

constexpr U32 opsPerTurn = 16;

// The operation through the library with 1000 entries in unit 0's group
// and unit 1's full but one, in turns; reports the median of the rounds'
// full / 1000 ratios and each side's median time per operation.
void
BM_PairedOp( benchmark::State & state ) {
   Setup s;
   const U32 levels[ units ] = { 1000, s.capacity( 1 ) - 1 };
   for ( U32 unit = 0; unit < units; ++unit ) {
      for ( U32 i = 0; i < levels[ unit ]; ++i ) {
         libraryEntry( s, unit, i );
      }
   }
   std::vector< double > at1k;
   std::vector< double > full;
   std::vector< double > ratios;
   for ( auto _ : state ) {
      Turns turns( s.box );
      turns.round(
         opsPerTurn, [ & ] { libraryOp( s, 0, levels[ 0 ] ); },
         [ & ] { libraryOp( s, 1, levels[ 1 ] ); }, at1k.size() % 2 == 0 );
      at1k.push_back( turns.first / opsPerTurn );
      full.push_back( turns.second / opsPerTurn );
      ratios.push_back( turns.second / turns.first );
   }
   state.counters[ "at1kNsPerOp" ] = median( at1k );
   state.counters[ "fullNsPerOp" ] = median( full );
   state.counters[ "ratio" ] = median( ratios );
}

constexpr U32 libraryUnit = 0;
constexpr int directUnit = 1;

// The group's level for an Op benchmark: its argument, or full but one.
U32
levelOf( benchmark::State & state, Setup & s, U32 unit ) {
   return state.range( 0 ) ? U32( state.range( 0 ) ) : s.capacity( unit ) - 1;
}

void
BM_LibraryOp( benchmark::State & state ) {
   Setup s;
   U32 level = levelOf( state, s, libraryUnit );
   for ( U32 i = 0; i < level; ++i ) {
      libraryEntry( s, libraryUnit, i );
   }
   s.box.clearCallLog();
   for ( auto _ : state ) {
      libraryOp( s, libraryUnit, level );
   }
   state.counters[ "entries" ] = level;
   state.counters[ "sdkCalls" ] = double( s.box.callLog().size() ) / double( state.iterations() );
}

void
BM_DirectOp( benchmark::State & state ) {
   Setup s;
   U32 level = levelOf( state, s, U32( directUnit ) );
   for ( U32 i = 0; i < level; ++i ) {
      directEntry( directUnit, i );
   }
   s.box.clearCallLog();
   for ( auto _ : state ) {
      directOp( directUnit, level );
   }
   state.counters[ "entries" ] = level;
   state.counters[ "sdkCalls" ] = double( s.box.callLog().size() ) / double( state.iterations() );
}

} // namespace

BENCHMARK( BM_PairedFill )->Unit( benchmark::kMillisecond )->Iterations( 6 );
BENCHMARK( BM_PairedOp )->Unit( benchmark::kMillisecond )->Iterations( 60 );
BENCHMARK( BM_LibraryOp )->Arg( 1000 )->Arg( 0 )->Unit( benchmark::kMicrosecond );
BENCHMARK( BM_DirectOp )->Arg( 1000 )->Arg( 0 )->Unit( benchmark::kMicrosecond );

BENCHMARK_MAIN();
