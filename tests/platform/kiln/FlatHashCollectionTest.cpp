#include <gtest/gtest.h>

#include "platform/kiln/FlatHashCollection.h"
#include "platform/kiln/Ptr.h"

#include <map>
#include <random>
#include <vector>

namespace {

typedef Kiln::FlatHashCollection< U32, int > Table;

std::map< U32, int >
contents( const Table & table ) {
   std::map< U32, int > seen;
   for ( const auto & [ key, value ] : table ) {
      EXPECT_TRUE( seen.emplace( key, value ).second ) << "key " << key << " visited twice";
   }
   return seen;
}

// Churn like an entry table's: ids taken and given back in waves, so
// deleted slots pile up, are reused and are dropped when the table grows.
TEST( FlatHashCollection, AgreesWithAMapUnderChurn ) {
   Table table;
   std::map< U32, int > expected;
   std::mt19937 random( 7 );
   for ( U32 step = 0; step < 40000; ++step ) {
      U32 key = random() % ( step < 20000 ? 3000 : 300 ) | ( random() % 4 ) << 24;
      switch ( random() % 4 ) {
      case 0:
      case 1: {
         bool changes = !expected.count( key ) || expected[ key ] != int( step );
         EXPECT_EQ( table.set( key, int( step ) ), changes );
         expected[ key ] = int( step );
         break;
      }
      case 2:
         EXPECT_EQ( table.del( key ), expected.erase( key ) == 1 );
         break;
      default:
         EXPECT_EQ( table.inc( key, 3 ), expected[ key ] += 3 );
      }
      ASSERT_EQ( table.size(), expected.size() );
      ASSERT_EQ( table.has( key ), expected.count( key ) == 1 );
      ASSERT_EQ( table.get( key ), expected.count( key ) ? expected[ key ] : 0 );
   }
   EXPECT_EQ( contents( table ), expected );
   EXPECT_EQ( table.delAll(), expected.size() );
   EXPECT_TRUE( table.empty() );
   EXPECT_FALSE( table.has( expected.begin()->first ) );
   EXPECT_TRUE( contents( table ).empty() );
}

TEST( FlatHashCollection, IterationMayDeleteTheCurrentElement ) {
   Table table;
   for ( U32 key = 1; key <= 100; ++key ) {
      table.set( key, int( key ) );
   }
   U32 visited = 0;
   for ( const auto & [ key, value ] : table ) {
      ++visited;
      if ( key % 2 ) {
         table.del( key );
      }
   }
   EXPECT_EQ( visited, 100u );
   EXPECT_EQ( table.size(), 50u );
   for ( const auto & [ key, value ] : table ) {
      EXPECT_EQ( key % 2, 0u );
      EXPECT_EQ( value, int( key ) );
   }
}

// A deleted value is let go at once, not when its slot is reused.
TEST( FlatHashCollection, DeletingReleasesTheValue ) {
   struct Counted : Kiln::PtrInterface {};
   Kiln::FlatHashCollection< U32, Kiln::Ptr< Counted > > table;
   Kiln::Ptr< Counted > held = new Counted;
   table.set( 5, held );
   EXPECT_EQ( held->references(), 2u );
   table.del( 5 );
   EXPECT_EQ( held->references(), 1u );
   EXPECT_EQ( table.get( 5 ), nullptr );
}

} // namespace
