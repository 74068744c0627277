// Stat objects: counter pools, attach and detach, reads and writes, the
// hardware location of counters and eviction.
#include "tests/sdk/model/ModelTestSupport.h"

using namespace ModelTest;
using ChipModel::Box;
using ChipModel::Packet;

namespace {

class Stats : public ::testing::Test {
 protected:
   explicit Stats( ChipModel::Profile profile = *ChipModel::findProfile( "thx" ) )
       : box_( std::vector< ChipModel::Profile >{ profile }, committed() ) {
      bcm_field_group_config_t config = groupConfig(
         box_.unit( 0 ).profile(), 1, qsetOf( { bcmFieldQualifyL4DstPort } ), 1, 2 );
      EXPECT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) );
   }
   int stat( std::initializer_list< bcm_field_stat_t > types ) {
      std::vector< bcm_field_stat_t > list( types );
      int id = -1;
      EXPECT_EQ( BCM_E_NONE, bcm_field_stat_create( 0, 1, static_cast< int >( list.size() ),
                                                    list.data(), &id ) );
      return id;
   }
   // An installed entry matching L4 destination port `port`, with the stat.
   void entryCounting( bcm_field_entry_t entry, int port, int statId ) {
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 1, entry ) );
      ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_L4DstPort( 0, entry, port, 0xffff ) );
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_stat_attach( 0, entry, statId ) );
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_install( 0, entry ) );
   }
   void send( int port, U32 length, int times = 1 ) {
      Packet p = Packet::ipv4( portIn( box_.unit( 0 ).profile(), 2 ), 1, 2, 6, 1000,
                               static_cast< U16 >( port ) );
      p.length = length;
      for ( int i = 0; i < times; ++i ) {
         box_.send( 0, p );
      }
   }
   U64 read( int statId, bcm_field_stat_t type ) {
      uint64_t value = 0;
      EXPECT_EQ( BCM_E_NONE, bcm_field_stat_get( 0, statId, type, &value ) );
      return value;
   }
   Box box_;
};

ChipModel::Profile
tinyCounters() {
   ChipModel::Profile p = *ChipModel::findProfile( "thx" );
   p.name = "thx-tiny";
   p.stages[ 0 ].counterPools = 2;
   p.stages[ 0 ].countersPerPool = 2;
   p.evictThresholdPackets = 3;
   return p;
}

class TinyStats : public Stats {
 protected:
   TinyStats() : Stats( tinyCounters() ) {}
};

} // namespace

TEST_F( Stats, HitsMovePacketAndByteCountersOfTheAttachedStat ) {
   int id = stat( { bcmFieldStatPackets, bcmFieldStatBytes } );
   entryCounting( 10, 80, id );
   send( 80, 100, 3 );
   send( 81, 100 ); // misses
   EXPECT_EQ( 3u, read( id, bcmFieldStatPackets ) );
   EXPECT_EQ( 300u, read( id, bcmFieldStatBytes ) );
   uint64_t value;
   EXPECT_EQ( BCM_E_PARAM, bcm_field_stat_get( 0, id, bcmFieldStatRedPackets, &value ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_stat_set( 0, id, bcmFieldStatPackets, 0 ) );
   EXPECT_EQ( 0u, read( id, bcmFieldStatPackets ) );
   EXPECT_EQ( 300u, read( id, bcmFieldStatBytes ) );
   int attached = 0;
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_stat_get( 0, 10, &attached ) );
   EXPECT_EQ( id, attached );
   // Detached, the stat no longer counts.
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_stat_detach( 0, 10, id ) );
   EXPECT_EQ( BCM_E_NOT_FOUND, bcm_field_entry_stat_detach( 0, 10, id ) );
   send( 80, 100 );
   EXPECT_EQ( 0u, read( id, bcmFieldStatPackets ) );
}

TEST_F( Stats, TypesComeBackInCreationOrderAndMustBeKnownOnce ) {
   int id = stat( { bcmFieldStatGreenBytes, bcmFieldStatPackets, bcmFieldStatRedPackets } );
   int size = 0;
   ASSERT_EQ( BCM_E_NONE, bcm_field_stat_size( 0, id, &size ) );
   ASSERT_EQ( 3, size );
   bcm_field_stat_t types[ 3 ];
   ASSERT_EQ( BCM_E_NONE, bcm_field_stat_config_get( 0, id, 3, types ) );
   EXPECT_EQ( bcmFieldStatGreenBytes, types[ 0 ] );
   EXPECT_EQ( bcmFieldStatRedPackets, types[ 2 ] );
   bcm_field_stat_t repeated[] = { bcmFieldStatPackets, bcmFieldStatPackets };
   int other;
   EXPECT_EQ( BCM_E_PARAM, bcm_field_stat_create( 0, 1, 2, repeated, &other ) );
   bcm_field_stat_t unknown[] = { bcmFieldStatCount };
   EXPECT_EQ( BCM_E_PARAM, bcm_field_stat_create( 0, 1, 1, unknown, &other ) );
   EXPECT_EQ( BCM_E_NOT_FOUND, bcm_field_stat_create( 0, 99, 1, repeated, &other ) );
}

TEST_F( Stats, AStatCountsForEntriesOfItsOwnGroupOnly ) {
   bcm_field_group_config_t config =
      groupConfig( box_.unit( 0 ).profile(), 2, qsetOf( { bcmFieldQualifySrcIp } ), 1, 2 );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 2, 20 ) );
   int id = stat( { bcmFieldStatPackets } );
   EXPECT_EQ( BCM_E_PARAM, bcm_field_entry_stat_attach( 0, 20, id ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 1, 10 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_stat_attach( 0, 10, id ) );
   EXPECT_EQ( BCM_E_EXISTS,
              bcm_field_entry_stat_attach( 0, 10, stat( { bcmFieldStatBytes } ) ) );
   EXPECT_EQ( BCM_E_BUSY,
              bcm_field_group_destroy( 0, 1 ) ); // still holds entries and stats
}

TEST_F( TinyStats, PoolsRunOutAndComeBack ) {
   // Each colour a stat counts takes one index; pools hold two each.
   int a = stat( { bcmFieldStatGreenPackets, bcmFieldStatRedPackets } );
   int b = stat( { bcmFieldStatPackets, bcmFieldStatBytes } );
   int c = stat( { bcmFieldStatBytes } );
   bcm_field_stat_t one[] = { bcmFieldStatPackets };
   int d;
   EXPECT_EQ( BCM_E_RESOURCE, bcm_field_stat_create( 0, 1, 1, one, &d ) );
   bcm_field_group_status_t status;
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_status_get( 0, 1, &status ) );
   EXPECT_EQ( 4, status.counters_total );
   EXPECT_EQ( 0, status.counters_free );
   ASSERT_EQ( BCM_E_NONE, bcm_field_stat_destroy( 0, b ) );
   EXPECT_EQ( BCM_E_NONE, bcm_field_stat_create( 0, 1, 1, one, &d ) );
   (void)a;
   (void)c;
}

TEST_F( TinyStats, HardwareLocationReadsTheSameCountsAndEvictionsAreCounted ) {
   int id = stat( { bcmFieldStatPackets, bcmFieldStatBytes } );
   entryCounting( 10, 80, id );
   send( 80, 64, 7 );
   oberon_stat_pool_index where;
   ASSERT_EQ( BCM_E_NONE, oberon_bcm_esw_field_stat_pool_index_( 0, id, &where ) );
   EXPECT_EQ( 2, where.pipe );
   ASSERT_EQ( 1, where.num_indices );
   uint64_t packets = 0;
   uint64_t bytes = 0;
   ASSERT_EQ( BCM_E_NONE,
              bcm_field_stat_pool_counter_get( 0, where.pipe, where.pool_id,
                                               where.indices[ 0 ], &packets, &bytes ) );
   EXPECT_EQ( read( id, bcmFieldStatPackets ), packets );
   EXPECT_EQ( 7u * 64u, bytes );
   // The threshold is 3 packets: two evictions of 3 packets so far.
   ASSERT_EQ( BCM_E_NONE,
              bcm_field_stat_eviction_get( 0, where.pipe, where.pool_id, where.indices[ 0 ],
                                           &packets, &bytes ) );
   EXPECT_EQ( 6u, packets );
   EXPECT_EQ( 6u * 64u, bytes );
   ASSERT_EQ( BCM_E_NONE, bcm_field_stat_eviction_clear( 0, where.pipe, where.pool_id,
                                                         where.indices[ 0 ], 1, 0 ) );
   ASSERT_EQ( BCM_E_NONE,
              bcm_field_stat_eviction_get( 0, where.pipe, where.pool_id, where.indices[ 0 ],
                                           &packets, &bytes ) );
   EXPECT_EQ( 0u, packets );
   EXPECT_EQ( 6u * 64u, bytes );
   EXPECT_EQ( BCM_E_NOT_FOUND,
              bcm_field_stat_pool_counter_get( 0, where.pipe, where.pool_id,
                                               where.indices[ 0 ] + 1, &packets, &bytes ) );
   EXPECT_EQ( BCM_E_NOT_FOUND,
              oberon_bcm_esw_field_stat_pool_index_( 0, id + 100, &where ) );
}
