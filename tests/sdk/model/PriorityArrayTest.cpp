#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <random>
#include <vector>

#include "sdk/model/PriorityArray.h"

using ChipModel::PriorityArray;

namespace {

// Replays every reported move on a plain vector of slots, the way hardware
// would see them, and counts them.
class Replay : public PriorityArray::Mover {
 public:
   explicit Replay( U32 capacity ) : slots( capacity ) {}
   void move( U32 key, U32 from, U32 to ) override {
      ++moves;
      if ( lifted == key && from == liftedFrom ) {
         lifted.reset();
      } else {
         ASSERT_EQ( std::optional< U32 >( key ), slots.at( from ) ) << "move from " << from;
         slots[ from ].reset();
      }
      ASSERT_FALSE( slots.at( to ).has_value() ) << "move onto busy slot " << to;
      slots[ to ] = key;
   }
   // A reprioritised key leaves its slot before the shifts.
   void lift( U32 key, U32 slot ) {
      lifted = key;
      liftedFrom = slot;
      slots[ slot ].reset();
   }
   std::vector< std::optional< U32 > > slots;
   std::optional< U32 > lifted;
   U32 liftedFrom = 0;
   U64 moves = 0;
};

// Inserts and records the write on the replayed slots.
U32
insertInto( PriorityArray & array, Replay & replay, U32 key, S64 priority ) {
   U32 slot = array.insert( key, priority, replay );
   EXPECT_FALSE( replay.slots[ slot ].has_value() );
   replay.slots[ slot ] = key; // a write, not a move
   return slot;
}

struct Expected {
   S64 priority;
   U64 arrival;
};

// Checks the array against the replayed vector and the reference map.
void
checkConsistent( const PriorityArray & array, Replay & replay,
                 const std::map< U32, Expected > & reference ) {
   ASSERT_EQ( reference.size(), array.size() );
   ASSERT_EQ( replay.slots.size(), array.capacity() );
   const Expected * previous = nullptr;
   for ( U32 slot = 0; slot < array.capacity(); ++slot ) {
      ASSERT_EQ( replay.slots[ slot ], array.keyAt( slot ) ) << "slot " << slot;
      if ( !array.keyAt( slot ) ) {
         continue;
      }
      U32 key = *array.keyAt( slot );
      ASSERT_EQ( std::optional< U32 >( slot ), array.slotOf( key ) );
      const Expected & here = reference.at( key );
      if ( previous ) {
         ASSERT_GE( previous->priority, here.priority ) << "slot " << slot;
         if ( previous->priority == here.priority ) {
            ASSERT_LT( previous->arrival, here.arrival ) << "slot " << slot;
         }
      }
      previous = &here;
   }
}

} // namespace

TEST( PriorityArray, RandomWorkloadKeepsOrderSlotsAndMovesInStep ) {
   std::mt19937 random( 20240611 );
   PriorityArray array( 64 );
   Replay replay( 64 );
   std::map< U32, Expected > reference;
   U64 arrival = 0;
   U32 nextKey = 1;
   for ( int step = 0; step < 8000; ++step ) {
      int op = static_cast< int >( random() % 100 );
      S64 priority = static_cast< S64 >( random() % 40 ); // many ties
      if ( op < 45 && !array.full() ) {
         U32 key = nextKey++;
         U64 before = replay.moves;
         insertInto( array, replay, key, priority );
         reference[ key ] = { priority, arrival++ };
         ASSERT_LE( replay.moves - before, array.capacity() );
      } else if ( op < 75 && !reference.empty() ) {
         auto it = std::next( reference.begin(), random() % reference.size() );
         replay.slots[ *array.slotOf( it->first ) ].reset();
         array.erase( it->first );
         reference.erase( it );
      } else if ( op < 95 && !reference.empty() ) {
         auto it = std::next( reference.begin(), random() % reference.size() );
         U32 oldSlot = *array.slotOf( it->first );
         replay.lift( it->first, oldSlot );
         array.reprioritise( it->first, priority, replay );
         if ( replay.lifted ) { // not moved: back where it was
            ASSERT_EQ( std::optional< U32 >( oldSlot ), array.slotOf( it->first ) );
            replay.slots[ oldSlot ] = it->first;
            replay.lifted.reset();
         }
         it->second = { priority, arrival++ };
      } else if ( op < 97 ) {
         array.grow( 8 );
         replay.slots.resize( replay.slots.size() + 8 );
      } else {
         array.pack( replay );
         U32 keep = array.capacity() - array.trailingFree() / 2;
         array.truncate( keep );
         replay.slots.resize( keep );
      }
      checkConsistent( array, replay, reference );
      if ( HasFatalFailure() ) {
         FAIL() << "after step " << step;
      }
   }
}

TEST( PriorityArray, PlacementAndMoveCountsOfAKnownSequence ) {
   PriorityArray array( 8 );
   Replay replay( 8 );
   EXPECT_EQ( 0u, insertInto( array, replay, 1, 50 ) ); // an empty row starts at 0
   EXPECT_EQ( 1u, insertInto( array, replay, 2, 40 ) ); // packs after the last
   EXPECT_EQ( 2u, insertInto( array, replay, 3, 30 ) );
   EXPECT_EQ( 0u, replay.moves );
   // Before the first with no room there: the three shift right by one.
   EXPECT_EQ( 0u, insertInto( array, replay, 4, 60 ) );
   EXPECT_EQ( 3u, replay.moves );
   replay.slots[ *array.slotOf( 2 ) ].reset();
   array.erase( 2 ); // leaves a hole at slot 2
   // Between 1 (slot 1) and 3 (slot 3): into the hole, no move.
   EXPECT_EQ( 2u, insertInto( array, replay, 5, 45 ) );
   EXPECT_EQ( 3u, replay.moves );
   // Between 4 (slot 0) and 1 (slot 1): the nearest hole is after the run,
   // at slot 4, so 1, 5 and 3 shift right.
   EXPECT_EQ( 1u, insertInto( array, replay, 6, 55 ) );
   EXPECT_EQ( 6u, replay.moves );
   EXPECT_EQ( ( std::vector< U32 >{ 4, 6, 1, 5, 3 } ), array.keysInOrder() );
}

TEST( PriorityArray, EqualPrioritiesKeepArrivalOrderAndAChangeRanksLast ) {
   PriorityArray array( 16 );
   Replay replay( 16 );
   insertInto( array, replay, 1, 7 );
   insertInto( array, replay, 2, 7 );
   insertInto( array, replay, 3, 7 );
   EXPECT_EQ( ( std::vector< U32 >{ 1, 2, 3 } ), array.keysInOrder() );
   U64 before = replay.moves;
   array.reprioritise( 1, 7, replay ); // same priority: now after 2 and 3
   EXPECT_EQ( ( std::vector< U32 >{ 2, 3, 1 } ), array.keysInOrder() );
   EXPECT_EQ( before + 1, replay.moves ); // its own move into the free gap
   before = replay.moves;
   array.reprioritise( 1, 6, replay ); // still last: stays in place
   EXPECT_EQ( before, replay.moves );
}

TEST( PriorityArray, PackMovesItemsToTheFrontAndTruncateDropsTheFreeTail ) {
   PriorityArray array( 8 );
   Replay replay( 8 );
   insertInto( array, replay, 1, 3 );
   insertInto( array, replay, 2, 2 );
   insertInto( array, replay, 3, 1 );
   array.pack( replay );
   EXPECT_EQ( std::optional< U32 >( 0 ), array.slotOf( 1 ) );
   EXPECT_EQ( std::optional< U32 >( 2 ), array.slotOf( 3 ) );
   EXPECT_EQ( 5u, array.trailingFree() );
   array.truncate( 3 );
   EXPECT_EQ( 3u, array.capacity() );
   EXPECT_TRUE( array.full() );
}

TEST( PriorityArrayDeathTest, InsertIntoAFullArrayIsAProgrammingError ) {
   PriorityArray array( 1 );
   Replay replay( 1 );
   insertInto( array, replay, 1, 1 );
   EXPECT_DEATH( array.insert( 2, 1, replay ), "Assertion '!full\\(\\)' failed" );
}
