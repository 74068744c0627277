#include <gtest/gtest.h>

#include "platform/agent/EthAddr.h"
#include "platform/agent/Ip6Addr.h"
#include "platform/agent/IpAddr.h"

#include <arpa/inet.h>

#include <random>
#include <sstream>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

using namespace Wiretype;

// The message of the AddressError that parsing `text` as T throws.
template< typename T >
std::string
errorOf( const std::string & text ) {
   try {
      T parsed( text );
      return "accepted as " + parsed.stringValue();
   } catch ( const AddressError & e ) {
      return e.what();
   }
}

// Each text refused with "<kind> \"<text>\": <reason>", and the others refused.
template< typename T >
void
expectRefusals( const std::string & kind,
                std::vector< std::pair< std::string, std::string > > withReason,
                std::vector< std::string > others ) {
   for ( const auto & [ text, reason ] : withReason ) {
      EXPECT_EQ( kind + " \"" + text + "\": " + reason, errorOf< T >( text ) );
   }
   for ( const std::string & text : others ) {
      EXPECT_THROW( T{ text }, AddressError ) << text;
   }
}

TEST( IpAddr, DottedQuadBothWays ) {
   IpAddr addr( "10.1.2.3" );
   EXPECT_EQ( 0x0A010203u, addr.value() );
   EXPECT_EQ( IpAddr( 10, 1, 2, 3 ), addr );
   EXPECT_EQ( "10.1.2.3", addr.stringValue() );
   EXPECT_EQ( "'10.1.2.3'", addr.valueText() );
   EXPECT_EQ( "255.255.255.255", IpAddr( 0xffffffffu ).stringValue() );
   EXPECT_EQ( IpAddr(), IpAddr( "0.0.0.0" ) );
   // Masked addresses compare as the same binding.
   IpAddr mask( "255.255.0.0" );
   EXPECT_EQ( IpAddr( "10.1.2.3" ) & mask, IpAddr( "10.1.9.9" ) & mask );
   EXPECT_LT( IpAddr( "9.255.255.255" ), IpAddr( "10.0.0.0" ) );
   std::ostringstream os;
   os << addr;
   EXPECT_EQ( "10.1.2.3", os.str() );
}

TEST( IpAddr, BadTextIsRefusedWithTheReason ) {
   expectRefusals< IpAddr >(
      "invalid IPv4 address",
      { { "10.1.2", "expected 4 numbers separated by '.', got 3" },
        { "1.2.3.4.5", "expected 4 numbers separated by '.', got 5" },
        { "10.256.0.1", "256 is above 255" },
        { "010.1.2.3", "\"010\" has a leading zero" },
        { "10..2.3", "empty number between '.'" },
        { "10.1.2.3 ", "\"3 \" is not a decimal number" } },
      { "", "+1.2.3.4", "1.2.3.-4", "0x1.2.3.4", "99999999999.1.1.1" } );
}

TEST( Ip6Addr, CanonicalTextFollowsTheCompressionRules ) {
   struct Case {
      const char * in;
      const char * out;
   } cases[] = {
      { "::", "::" },
      { "::1", "::1" },
      { "1::", "1::" },
      { "2001:DB8:0:0:0:0:2:1", "2001:db8::2:1" },
      { "2001:db8:0000:0001:0001:0001:0001:0001", "2001:db8:0:1:1:1:1:1" }, // lone zero kept
      { "2001:db8:0:0:1:0:0:1", "2001:db8::1:0:0:1" },                      // first of equal runs
      { "2001:0:0:1:0:0:0:1", "2001:0:0:1::1" },                            // longest run wins
      { "1:2:3:4:5:6:7::", "1:2:3:4:5:6:7:0" },                             // :: for one group
      { "::ffff:10.1.2.3", "::ffff:10.1.2.3" },
      { "::ffff:a01:203", "::ffff:10.1.2.3" },
      { "::10.1.2.3", "::a01:203" }, // only mapped addresses keep the dotted quad
      { "fe80::1:2.3.4.5", "fe80::1:203:405" },
   };
   for ( const Case & c : cases ) {
      Ip6Addr addr( c.in );
      EXPECT_EQ( c.out, addr.stringValue() ) << c.in;
      EXPECT_EQ( addr, Ip6Addr( addr.stringValue() ) ) << c.in;
   }
   EXPECT_EQ( "'2001:db8::1'", Ip6Addr( "2001:db8::1" ).valueText() );
}

// The C library's parser and printer as a reference, over random addresses
// with long zero runs (fixed seed).
TEST( Ip6Addr, AgreesWithTheSystemParserAndPrinter ) {
   std::mt19937 random( 7 );
   for ( int round = 0; round < 2000; ++round ) {
      Ip6Addr::Bytes bytes;
      for ( size_t group = 0; group < 8; ++group ) {
         U16 value = ( random() % 3 ) ? 0 : U16( random() );
         bytes[ 2 * group ] = U8( value >> 8 );
         bytes[ 2 * group + 1 ] = U8( value );
      }
      Ip6Addr addr( bytes );
      std::string text = addr.stringValue();
      in6_addr parsed;
      ASSERT_EQ( 1, inet_pton( AF_INET6, text.c_str(), &parsed ) ) << text;
      ASSERT_TRUE( std::equal( bytes.begin(), bytes.end(), parsed.s6_addr ) ) << text;
      ASSERT_EQ( addr, Ip6Addr( text ) );
      // The library prints addresses whose first 96 bits are zero with a
      // dotted quad; outside that family both follow the same rules.
      if ( !std::all_of( bytes.begin(), bytes.begin() + 12, []( U8 b ) { return b == 0; } ) ) {
         char expected[ INET6_ADDRSTRLEN ];
         inet_ntop( AF_INET6, parsed.s6_addr, expected, sizeof expected );
         ASSERT_EQ( std::string( expected ), text );
      }
   }
}

TEST( Ip6Addr, BadTextIsRefusedWithTheReason ) {
   expectRefusals< Ip6Addr >(
      "invalid IPv6 address",
      { { "1::2::3", "more than one \"::\"" },
        { "1:2:3:4:5:6:7", "expected 8 groups, got 7" },
        { "1:2:3:4::5:6:7:8", "\"::\" with 8 other groups stands for nothing" },
        { "12345::", "\"12345\" has more than 4 hex digits" },
        { "fe80::g", "\"g\" is not a group of hex digits" },
        { "1.2.3.4::", "a dotted quad may only end the address" },
        { "::ffff:1.2.3.256", "256 is above 255" },
        { ":1::", "empty group (a single ':' at the start, at the end or next to another)" } },
      { "", ":", ":::", "1:", "1::2:", "fe80::1%eth0", "[::1]", "2001:db8::/32", " ::1",
        "1:2:3:4:5:6:7:8:9" } );
}

TEST( Ip6Addr, MaskHashAndOrder ) {
   Ip6Addr addr( "2001:db8:1:2:3:4:5:6" );
   Ip6Addr mask( "ffff:ffff:ffff::" );
   EXPECT_EQ( Ip6Addr( "2001:db8:1::" ), addr & mask );
   EXPECT_TRUE( Ip6Addr().isZero() );
   EXPECT_LT( Ip6Addr( "::1" ), Ip6Addr( "::2" ) );
   std::unordered_set< Ip6Addr > set{ addr, Ip6Addr( "2001:DB8:1:2:3:4:5:6" ), Ip6Addr( "::1" ) };
   EXPECT_EQ( 2u, set.size() );
}

TEST( EthAddr, BothTextFormsInCanonicalOut ) {
   EthAddr addr( "00:1C:73:aa:bb:cc" );
   EXPECT_EQ( "00:1c:73:aa:bb:cc", addr.stringValue() );
   EXPECT_EQ( addr, EthAddr( "0:1c:73:aa:bb:cc" ) );
   EXPECT_EQ( addr, EthAddr( "001c.73aa.bbcc" ) );
   EXPECT_EQ( EthAddr( "0:0:0:0:0:1" ), EthAddr( "0.0.1" ) );
   EXPECT_EQ( "'00:1c:73:aa:bb:cc'", addr.valueText() );
   EXPECT_FALSE( addr.isMulticast() );
   EXPECT_TRUE( EthAddr( "01:00:5e:00:00:01" ).isMulticast() );
   EXPECT_TRUE( EthAddr( "ff:ff:ff:ff:ff:ff" ).isMulticast() );
   std::unordered_set< EthAddr > set{ addr, EthAddr( "001c.73aa.bbcc" ), EthAddr() };
   EXPECT_EQ( 2u, set.size() );
   EXPECT_LT( EthAddr(), addr );
}

TEST( EthAddr, BadTextIsRefusedWithTheReason ) {
   expectRefusals< EthAddr >(
      "invalid Ethernet address",
      { { "00:1c:73:aa:bb", "expected 6 groups separated by ':' or 3 separated by '.'" },
        { "00:1c:73:aa:bb:ccc", "\"ccc\" is not 1 to 2 hex digits" },
        { "001c.73aa.bbcg", "\"bbcg\" is not 1 to 4 hex digits" } },
      { "", "00-1c-73-aa-bb-cc", "00:1c:73:aa:bb:", "001c.73aa.bbcc.dd", "00:1c.73:aa:bb:cc",
        "001c73aabbcc" } );
}

} // namespace
