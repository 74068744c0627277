#include <gtest/gtest.h>

#include "platform/kiln/Hash.h"
#include "platform/kiln/String.h"

#include <set>
#include <sstream>

namespace {

TEST( String, BuildsFromLiteralsStdStringAndNull ) {
   Kiln::String fromLiteral = "ipAcl";
   Kiln::String fromStd = std::string( "ipAcl" );
   Kiln::String fromNull = static_cast< const char * >( nullptr );
   Kiln::String embeddedNul( "a\0b", 3 );
   EXPECT_EQ( fromLiteral, fromStd );
   EXPECT_TRUE( fromNull.empty() );
   EXPECT_EQ( 3u, embeddedNul.size() );
   EXPECT_STREQ( "ipAcl", fromStd.c_str() );
   EXPECT_EQ( "ipAcl stage", ( fromLiteral + " stage" ).str() );
}

TEST( String, ComparesWithTextOfEitherKind ) {
   Kiln::String s = "b";
   EXPECT_TRUE( s == "b" );
   EXPECT_TRUE( "b" == s );
   EXPECT_TRUE( s != std::string( "a" ) );
   EXPECT_TRUE( Kiln::String( "a" ) < s );
   EXPECT_TRUE( s > "a" );
   std::set< Kiln::String > sorted{ "c", "a", "b" };
   EXPECT_EQ( "a", sorted.begin()->str() );
}

TEST( Name, ConvertsFromStringOneWayOnly ) {
   Kiln::String text = "groupManager";
   Kiln::Name name = text;
   EXPECT_TRUE( name == text ); // String -> Name, never ambiguous
   EXPECT_EQ( text, Kiln::String( name ) );
   static_assert( !std::is_convertible_v< Kiln::Name, Kiln::String > );
   std::ostringstream os;
   os << name << "/" << text;
   EXPECT_EQ( "groupManager/groupManager", os.str() );
}

TEST( Hash, MixSpreadsDenseKeysAndCombineIsOrderSensitive ) {
   std::set< size_t > buckets;
   for ( U32 unit = 0; unit < 64; ++unit ) {
      buckets.insert( Kiln::hashMix( unit ) % 64 );
   }
   EXPECT_GT( buckets.size(), 32u ) << "dense keys crowd into few buckets";
   EXPECT_NE( Kiln::hashMix( U64( 1 ) << 40 ), Kiln::hashMix( U64( 1 ) << 41 ) );
   size_t ab = Kiln::hashCombine( Kiln::hashCombine( 0, 1u ), 2u );
   size_t ba = Kiln::hashCombine( Kiln::hashCombine( 0, 2u ), 1u );
   EXPECT_NE( ab, ba );
}

} // namespace
