#include <gtest/gtest.h>

#include "platform/kiln/Collection.h"
#include "platform/kiln/Ptr.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace {

struct Record : Kiln::PtrInterface {};

TEST( Collection, LookupsOfMissingKeysGiveEmptyValues ) {
   Kiln::OrderedCollection< U32, U32 > counts;
   Kiln::HashCollection< U32, Kiln::Ptr< Record > > records;
   EXPECT_EQ( 0u, counts.get( 7 ) );
   EXPECT_EQ( nullptr, counts.find( 7 ) );
   EXPECT_FALSE( counts.has( 7 ) );
   EXPECT_FALSE( records.get( 7 ) );
   EXPECT_TRUE( counts.empty() );
   // Looking up must not create the key.
   EXPECT_EQ( 0u, counts.size() );
   EXPECT_EQ( 0u, records.size() );
   EXPECT_TRUE( counts.set( 7, 0 ) ); // a new key is a change even at 0
   EXPECT_FALSE( counts.set( 7, 0 ) );
   EXPECT_EQ( 1u, counts.delAll() );
}

TEST( Collection, PtrValuesCompareByIdentity ) {
   Kiln::OrderedCollection< U32, Kiln::Ptr< Record > > c;
   Kiln::Ptr< Record > r = new Record;
   EXPECT_TRUE( c.set( 1, r ) );
   EXPECT_FALSE( c.set( 1, r ) );
   EXPECT_TRUE( c.set( 1, new Record ) );
   EXPECT_EQ( 1u, r->references() ); // the collection let go of it
}

// Keys above all others take a shortcut in; order, replacement and the
// reported change must not depend on which way a key went in.
TEST( Collection, OrderedSetsKeepOrderWhereverTheKeyGoes ) {
   Kiln::OrderedCollection< U32, std::string, std::greater< U32 > > descending;
   Kiln::OrderedCollection< U32, std::string > c;
   for ( U32 key : { 5u, 9u, 2u, 12u, 7u } ) {
      EXPECT_TRUE( c.set( key, "v" + std::to_string( key ) ) );
      descending.set( key, "v" );
   }
   EXPECT_FALSE( c.set( 12, "v12" ) );  // the last key, unchanged
   EXPECT_TRUE( c.set( 12, "w12" ) );   // the last key, replaced
   EXPECT_TRUE( c.set( 13, "v13" ) );   // a new last key
   EXPECT_EQ( ( std::vector< U32 >{ 2, 5, 7, 9, 12, 13 } ), c.keys() );
   EXPECT_EQ( "w12", c.get( 12 ) );
   EXPECT_EQ( ( std::vector< U32 >{ 12, 9, 7, 5, 2 } ), descending.keys() );
}

TEST( Collection, CountersHonourTheirTypeRange ) {
   Kiln::OrderedCollection< U32, S32 > balance;
   EXPECT_EQ( -5, balance.inc( 1, -5 ) );
   EXPECT_EQ( 0, balance.inc( 1, 5 ) );
   EXPECT_TRUE( balance.has( 1 ) ); // reaching 0 keeps the key

   Kiln::OrderedCollection< U32, U8 > small;
   EXPECT_EQ( 255, small.inc( 1, 255 ) );
   EXPECT_DEATH( small.inc( 1, 1 ), "Assertion 'counter out of range' failed" );
   Kiln::OrderedCollection< U32, U64 > big;
   EXPECT_EQ( 1ULL << 40, big.inc( 1, S64( 1 ) << 40 ) );
   EXPECT_DEATH( big.inc( 2, -1 ), "Assertion 'counter out of range' failed" );
}

TEST( Collection, OrderedIterationFollowsKeysAndSurvivesAnyChange ) {
   Kiln::OrderedCollection< U32, std::string > c;
   for ( U32 k : { 50u, 10u, 40u, 20u, 30u } ) {
      c.set( k, std::to_string( k ) );
   }
   std::vector< U32 > seen;
   for ( const auto & [ key, value ] : c ) {
      seen.push_back( key );
      EXPECT_EQ( std::to_string( key ), value );
      if ( key == 10 ) {
         c.del( 10 ); // the current element
         c.del( 30 ); // one ahead: never visited
         c.set( 35, "35" ); // inserted ahead: visited
         c.set( 5, "5" ); // inserted behind: not visited
      }
   }
   EXPECT_EQ( ( std::vector< U32 >{ 10, 20, 35, 40, 50 } ), seen );
   EXPECT_EQ( ( std::vector< U32 >{ 5, 20, 35, 40, 50 } ), c.keys() );

   // Emptying the collection from inside the loop ends it.
   seen.clear();
   for ( const auto & element : c ) {
      seen.push_back( element.first );
      c.delAll();
   }
   EXPECT_EQ( ( std::vector< U32 >{ 5 } ), seen );
}

TEST( Collection, OrderedIterationCanStartAtAKey ) {
   Kiln::OrderedCollection< U32, U32 > c;
   for ( U32 k = 0; k < 10; k += 2 ) {
      c.set( k, k );
   }
   std::vector< U32 > seen;
   for ( auto it = c.lowerBound( 5 ); it != c.end(); ++it ) {
      seen.push_back( it->first );
   }
   EXPECT_EQ( ( std::vector< U32 >{ 6, 8 } ), seen );
}

TEST( Collection, HashIterationMayDeleteTheCurrentElement ) {
   Kiln::HashCollection< U32, U32 > c;
   for ( U32 k = 0; k < 100; ++k ) {
      c.set( k, k * 2 );
   }
   std::vector< U32 > seen;
   for ( const auto & [ key, value ] : c ) {
      EXPECT_EQ( key * 2, value );
      seen.push_back( key );
      if ( key % 3 ) {
         c.del( key );
      }
   }
   std::sort( seen.begin(), seen.end() );
   ASSERT_EQ( 100u, seen.size() );
   EXPECT_EQ( 99u, seen.back() );
   EXPECT_EQ( 34u, c.size() ); // multiples of 3 below 100
}

TEST( OrderedSet, AddsOnceAndIteratesInOrderWhileDeleting ) {
   Kiln::OrderedSet< U32 > slices;
   EXPECT_TRUE( slices.add( 3 ) );
   EXPECT_FALSE( slices.add( 3 ) );
   slices.add( 1 );
   slices.add( 2 );
   std::vector< U32 > seen;
   for ( U32 s : slices ) {
      seen.push_back( s );
      slices.del( s );
   }
   EXPECT_EQ( ( std::vector< U32 >{ 1, 2, 3 } ), seen );
   EXPECT_TRUE( slices.empty() );
   EXPECT_FALSE( slices.del( 1 ) );
}

} // namespace
