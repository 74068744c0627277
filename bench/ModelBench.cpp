// The chip model's own speed, on the THx-like profile: how fast it installs
// entries and classifies packets with 1K and 8K entries in one IFP group
// (through the groups' compiled tables, and through the plain loop they
// must agree with), and how many physical row moves an insertion costs for
// entries arriving in ascending, descending and random priority order.
//
// Goal for the compiled tables: 200K packets/s with 1K entries and 50K
// packets/s with 8K, so that tests and the agent can push real traffic
// through the model.
//
//    build/default/bench/ModelBench
#include <benchmark/benchmark.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <vector>

#include "sdk/api/bcm.h"
#include "sdk/model/Box.h"
#include "sdk/model/Ports.h"

namespace {

using ChipModel::Box;
using ChipModel::Packet;

constexpr bcm_field_group_t groupId = 1;
constexpr int firstEntry = 1000;

Box::Options
committed( ChipModel::Classifier classifier = ChipModel::Classifier::fast ) {
   Box::Options options;
   options.staged = false;
   options.classifier = classifier;
   return options;
}

void
createGroup( const Box & box ) {
   bcm_field_group_config_t config;
   bcm_field_group_config_t_init( &config );
   config.flags = BCM_FIELD_GROUP_CREATE_WITH_ID | BCM_FIELD_GROUP_CREATE_WITH_PORT;
   config.group = groupId;
   config.priority = 10;
   config.ports = ChipModel::pipePorts( box.unit( 0 ).profile(), 0 );
   BCM_FIELD_QSET_ADD( config.qset, bcmFieldQualifySrcIp );
   BCM_FIELD_QSET_ADD( config.qset, bcmFieldQualifyDstIp );
   BCM_FIELD_QSET_ADD( config.qset, bcmFieldQualifyL4DstPort );
   bcm_field_group_config_create( 0, &config );
}

U32
dstOf( int index ) {
   return 0x0a000000u + static_cast< U32 >( index );
}

// Entry `index`: destination 10.0.x.y exactly, priority as given.
void
addEntry( int index, int priority ) {
   bcm_field_entry_t id = firstEntry + index;
   bcm_field_entry_create_id( 0, groupId, id );
   bcm_field_entry_prio_set( 0, id, priority );
   bcm_field_qualify_DstIp( 0, id, dstOf( index ), 0xffffffff );
   bcm_field_action_add( 0, id, bcmFieldActionCosQNew, static_cast< U32 >( index % 8 ), 0 );
   bcm_field_entry_install( 0, id );
}

void
fill( int entries ) {
   std::mt19937 random( 7 );
   for ( int i = 0; i < entries; ++i ) {
      addEntry( i, static_cast< int >( random() % 100000 ) );
   }
}

// Installing one more entry (create, priority, qualify, action, install) into
// a group that holds `entries`, and taking it out again.
void
BM_ModelInstall( benchmark::State & state ) {
   Box box( { "thx" }, committed() );
   createGroup( box );
   int entries = static_cast< int >( state.range( 0 ) );
   fill( entries );
   std::mt19937 random( 11 );
   for ( auto _ : state ) {
      addEntry( entries, static_cast< int >( random() % 100000 ) );
      state.PauseTiming();
      bcm_field_entry_destroy( 0, firstEntry + entries );
      state.ResumeTiming();
   }
   state.SetItemsProcessed( state.iterations() );
}
BENCHMARK( BM_ModelInstall )->Arg( 1024 )->Arg( 8192 )->Unit( benchmark::kMicrosecond );

// Classifying packets, three in four hitting a random entry; the second
// argument picks the plain loop instead of the compiled tables.
void
BM_ModelClassify( benchmark::State & state ) {
   bool plainLoop = state.range( 1 ) != 0;
   Box box( { "thx" }, committed( plainLoop ? ChipModel::Classifier::reference
                                            : ChipModel::Classifier::fast ) );
   createGroup( box );
   int entries = static_cast< int >( state.range( 0 ) );
   fill( entries );
   int port = ChipModel::frontPanelPorts( box.unit( 0 ).profile(), 0 ).front();
   std::mt19937 random( 13 );
   std::vector< Packet > packets;
   for ( int i = 0; i < 1024; ++i ) {
      int target = static_cast< int >( random() % static_cast< U32 >( entries * 4 / 3 ) );
      packets.push_back( Packet::ipv4( port, 0xc0000201, dstOf( target ), 6, 1000, 80 ) );
   }
   size_t next = 0;
   int hits = 0;
   for ( auto _ : state ) {
      hits += box.send( 0, packets[ next ] ).hitIn( groupId ).has_value() ? 1 : 0;
      next = ( next + 1 ) % packets.size();
   }
   state.SetItemsProcessed( state.iterations() );
   state.counters[ "hit_ratio" ] =
      static_cast< double >( hits ) / static_cast< double >( state.iterations() );
   state.SetLabel( plainLoop ? "plain loop" : "compiled" );
}
BENCHMARK( BM_ModelClassify )
   ->ArgsProduct( { { 1024, 8192 }, { 0, 1 } } )
   ->Unit( benchmark::kMicrosecond );

// Physical moves per insertion of 8K entries in a given priority order.
enum Order { ascending, descending, shuffled };

void
BM_ModelMovesPerInsert( benchmark::State & state ) {
   constexpr int entries = 8192;
   std::vector< int > priorities( entries );
   std::iota( priorities.begin(), priorities.end(), 1 );
   Order order = static_cast< Order >( state.range( 0 ) );
   if ( order == descending ) {
      std::reverse( priorities.begin(), priorities.end() );
   } else if ( order == shuffled ) {
      std::shuffle( priorities.begin(), priorities.end(), std::mt19937( 17 ) );
   }
   double mean = 0;
   U64 worst = 0;
   for ( auto _ : state ) {
      Box box( { "thx" }, committed() );
      createGroup( box );
      const ChipModel::Group * group = box.unit( 0 ).state().field.group( groupId );
      U64 before = 0;
      for ( int i = 0; i < entries; ++i ) {
         addEntry( i, priorities[ static_cast< size_t >( i ) ] );
         worst = std::max( worst, group->moves - before );
         before = group->moves;
      }
      mean = static_cast< double >( group->moves ) / entries;
   }
   state.counters[ "moves_mean" ] = mean;
   state.counters[ "moves_max" ] = static_cast< double >( worst );
   state.SetLabel( order == ascending    ? "ascending"
                   : order == descending ? "descending"
                                         : "random" );
}
BENCHMARK( BM_ModelMovesPerInsert )
   ->Arg( ascending )
   ->Arg( descending )
   ->Arg( shuffled )
   ->Iterations( 1 )
   ->Unit( benchmark::kMillisecond );

} // namespace

BENCHMARK_MAIN();
