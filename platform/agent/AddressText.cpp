#include "platform/agent/AddressText.h"

#include <cstdio>

namespace Wiretype::Detail {

void
throwAddressError( std::string_view kind, std::string_view text, const std::string & problem ) {
   throw AddressError( "invalid " + std::string( kind ) + " address \"" + std::string( text ) +
                       "\": " + problem );
}

std::vector< std::string_view >
splitText( std::string_view text, char separator ) {
   std::vector< std::string_view > pieces;
   size_t start = 0;
   for ( ;; ) {
      size_t end = text.find( separator, start );
      if ( end == std::string_view::npos ) {
         pieces.push_back( text.substr( start ) );
         return pieces;
      }
      pieces.push_back( text.substr( start, end - start ) );
      start = end + 1;
   }
}

std::optional< U32 >
parseHex( std::string_view digits, size_t maxDigits ) {
   if ( digits.empty() || digits.size() > maxDigits ) {
      return std::nullopt;
   }
   U32 value = 0;
   for ( char c : digits ) {
      U32 digit;
      if ( c >= '0' && c <= '9' ) {
         digit = U32( c - '0' );
      } else if ( c >= 'a' && c <= 'f' ) {
         digit = U32( c - 'a' + 10 );
      } else if ( c >= 'A' && c <= 'F' ) {
         digit = U32( c - 'A' + 10 );
      } else {
         return std::nullopt;
      }
      value = value * 16 + digit;
   }
   return value;
}

namespace {

// One number of a dotted quad: 0 to 255, decimal digits only, no leading zero.
U32
quadNumber( std::string_view number, std::string_view kind, std::string_view whole ) {
   if ( number.empty() ) {
      throwAddressError( kind, whole, "empty number between '.'" );
   }
   U32 value = 0;
   for ( char c : number ) {
      if ( c < '0' || c > '9' ) {
         throwAddressError( kind, whole, "\"" + std::string( number ) + "\" is not a decimal number" );
      }
      value = value * 10 + U32( c - '0' );
      if ( value > 255 ) {
         throwAddressError( kind, whole, std::string( number ) + " is above 255" );
      }
   }
   if ( number.size() > 1 && number.front() == '0' ) {
      throwAddressError( kind, whole, "\"" + std::string( number ) + "\" has a leading zero" );
   }
   return value;
}

} // namespace

U32
parseDottedQuad( std::string_view quad, std::string_view kind, std::string_view whole ) {
   std::vector< std::string_view > numbers = splitText( quad, '.' );
   if ( numbers.size() != 4 ) {
      throwAddressError( kind, whole, "expected 4 numbers separated by '.', got " +
                                         std::to_string( numbers.size() ) );
   }
   U32 value = 0;
   for ( std::string_view number : numbers ) {
      value = ( value << 8 ) | quadNumber( number, kind, whole );
   }
   return value;
}

std::string
dottedQuad( U32 value ) {
   char text[ 16 ];
   std::snprintf( text, sizeof text, "%u.%u.%u.%u", unsigned( value >> 24 ),
                  unsigned( ( value >> 16 ) & 0xff ), unsigned( ( value >> 8 ) & 0xff ),
                  unsigned( value & 0xff ) );
   return text;
}

} // namespace Wiretype::Detail
