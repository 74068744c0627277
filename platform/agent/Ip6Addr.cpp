#include "platform/agent/Ip6Addr.h"

#include "platform/agent/AddressText.h"
#include "platform/kiln/Hash.h"
#include "platform/kiln/ValueText.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace Wiretype {

namespace {

const char ip6Kind[] = "IPv6";

// The groups of one side of "::" (or of the whole text when there is none).
// A dotted quad may stand for the last two groups when `quadAllowed`.
std::vector< U16 >
parseGroups( std::string_view side, bool quadAllowed, std::string_view whole ) {
   std::vector< U16 > groups;
   if ( side.empty() ) {
      return groups;
   }
   std::vector< std::string_view > pieces = Detail::splitText( side, ':' );
   for ( size_t i = 0; i < pieces.size(); ++i ) {
      std::string_view piece = pieces[ i ];
      if ( piece.empty() ) {
         Detail::throwAddressError( ip6Kind, whole, "empty group (a single ':' at the start, "
                                                 "at the end or next to another)" );
      }
      if ( piece.find( '.' ) != std::string_view::npos ) {
         if ( !quadAllowed || i + 1 != pieces.size() ) {
            Detail::throwAddressError( ip6Kind, whole, "a dotted quad may only end the address" );
         }
         U32 quad = Detail::parseDottedQuad( piece, ip6Kind, whole );
         groups.push_back( U16( quad >> 16 ) );
         groups.push_back( U16( quad & 0xffff ) );
         continue;
      }
      std::optional< U32 > value = Detail::parseHex( piece, 4 );
      if ( !value ) {
         bool allHex = Detail::parseHex( piece, piece.size() ).has_value();
         Detail::throwAddressError( ip6Kind, whole, "\"" + std::string( piece ) + "\"" +
                                                    ( allHex ? " has more than 4 hex digits"
                                                             : " is not a group of hex digits" ) );
      }
      groups.push_back( U16( *value ) );
   }
   return groups;
}

} // namespace

Ip6Addr::Ip6Addr( std::string_view text ) {
   if ( text.empty() ) {
      Detail::throwAddressError( ip6Kind, text, "empty text" );
   }
   size_t gap = text.find( "::" );
   if ( gap != std::string_view::npos && text.find( "::", gap + 1 ) != std::string_view::npos ) {
      Detail::throwAddressError( ip6Kind, text, "more than one \"::\"" );
   }
   bool compressed = gap != std::string_view::npos;
   std::vector< U16 > head = parseGroups( text.substr( 0, gap ), !compressed, text );
   std::vector< U16 > tail =
      compressed ? parseGroups( text.substr( gap + 2 ), true, text ) : std::vector< U16 >();
   size_t count = head.size() + tail.size();
   if ( !compressed && count != 8 ) {
      Detail::throwAddressError( ip6Kind, text, "expected 8 groups, got " + std::to_string( count ) );
   }
   if ( compressed && count > 7 ) {
      Detail::throwAddressError( ip6Kind, text, "\"::\" with " + std::to_string( count ) +
                                                " other groups stands for nothing" );
   }
   std::vector< U16 > groups = head;
   groups.resize( 8 - tail.size(), 0 );
   groups.insert( groups.end(), tail.begin(), tail.end() );
   for ( size_t i = 0; i < 8; ++i ) {
      bytes_[ 2 * i ] = U8( groups[ i ] >> 8 );
      bytes_[ 2 * i + 1 ] = U8( groups[ i ] & 0xff );
   }
}

bool
Ip6Addr::isZero() const {
   return std::all_of( bytes_.begin(), bytes_.end(), []( U8 b ) { return b == 0; } );
}

bool
Ip6Addr::isIpv4Mapped() const {
   return std::all_of( bytes_.begin(), bytes_.begin() + 10, []( U8 b ) { return b == 0; } ) &&
          bytes_[ 10 ] == 0xff && bytes_[ 11 ] == 0xff;
}

std::string
Ip6Addr::stringValue() const {
   if ( isIpv4Mapped() ) {
      U32 quad = ( U32( group( 6 ) ) << 16 ) | group( 7 );
      return "::ffff:" + Detail::dottedQuad( quad );
   }
   // The longest run of zero groups, the first of equal ones; a lone zero
   // group is written out.
   size_t bestStart = 8, bestLength = 1;
   for ( size_t i = 0; i < 8; ) {
      size_t length = 0;
      while ( i + length < 8 && group( i + length ) == 0 ) {
         ++length;
      }
      if ( length > bestLength ) {
         bestStart = i;
         bestLength = length;
      }
      i += length ? length : 1;
   }
   std::string out;
   for ( size_t i = 0; i < 8; ) {
      if ( i == bestStart ) {
         out += "::";
         i += bestLength;
         continue;
      }
      if ( !out.empty() && out.back() != ':' ) {
         out += ':';
      }
      char digits[ 8 ];
      std::snprintf( digits, sizeof digits, "%x", unsigned( group( i ) ) );
      out += digits;
      ++i;
   }
   return out;
}

std::string
Ip6Addr::valueText() const {
   return Kiln::valueText( stringValue() );
}

Ip6Addr
Ip6Addr::operator&( const Ip6Addr & mask ) const {
   Bytes masked;
   for ( size_t i = 0; i < masked.size(); ++i ) {
      masked[ i ] = U8( bytes_[ i ] & mask.bytes_[ i ] );
   }
   return Ip6Addr( masked );
}

std::ostream &
operator<<( std::ostream & os, const Ip6Addr & addr ) {
   return os << addr.stringValue();
}

} // namespace Wiretype

size_t
std::hash< Wiretype::Ip6Addr >::operator()( const Wiretype::Ip6Addr & addr ) const noexcept {
   size_t h = 0;
   for ( size_t i = 0; i < 8; ++i ) {
      h = Kiln::hashCombine( h, addr.group( i ) );
   }
   return h;
}
