#include "platform/agent/EthAddr.h"

#include "platform/agent/AddressText.h"
#include "platform/kiln/Hash.h"
#include "platform/kiln/ValueText.h"

#include <cstdio>
#include <vector>

namespace Wiretype {

namespace {

const char ethKind[] = "Ethernet";

// Parses `pieces` of up to `maxDigits` hex digits each into `bytes`, each
// piece giving `bytesPerPiece` bytes.
void
parsePieces( const std::vector< std::string_view > & pieces, size_t maxDigits,
             size_t bytesPerPiece, EthAddr::Bytes & bytes, std::string_view whole ) {
   size_t at = 0;
   for ( std::string_view piece : pieces ) {
      std::optional< U32 > value = Detail::parseHex( piece, maxDigits );
      if ( !value ) {
         Detail::throwAddressError( ethKind, whole, "\"" + std::string( piece ) +
                                                    "\" is not 1 to " +
                                                    std::to_string( maxDigits ) + " hex digits" );
      }
      for ( size_t i = bytesPerPiece; i-- > 0; ) {
         bytes[ at++ ] = U8( *value >> ( 8 * i ) );
      }
   }
}

} // namespace

EthAddr::EthAddr( std::string_view text ) {
   std::vector< std::string_view > colonPieces = Detail::splitText( text, ':' );
   std::vector< std::string_view > dotPieces = Detail::splitText( text, '.' );
   if ( colonPieces.size() == 6 && dotPieces.size() == 1 ) {
      parsePieces( colonPieces, 2, 1, bytes_, text );
   } else if ( dotPieces.size() == 3 && colonPieces.size() == 1 ) {
      parsePieces( dotPieces, 4, 2, bytes_, text );
   } else {
      Detail::throwAddressError( ethKind, text, "expected 6 groups separated by ':' or 3 "
                                             "separated by '.'" );
   }
}

std::string
EthAddr::stringValue() const {
   char text[ 18 ];
   std::snprintf( text, sizeof text, "%02x:%02x:%02x:%02x:%02x:%02x", bytes_[ 0 ], bytes_[ 1 ],
                  bytes_[ 2 ], bytes_[ 3 ], bytes_[ 4 ], bytes_[ 5 ] );
   return text;
}

std::string
EthAddr::valueText() const {
   return Kiln::valueText( stringValue() );
}

std::ostream &
operator<<( std::ostream & os, const EthAddr & addr ) {
   return os << addr.stringValue();
}

} // namespace Wiretype

size_t
std::hash< Wiretype::EthAddr >::operator()( const Wiretype::EthAddr & addr ) const noexcept {
   U64 value = 0;
   for ( U8 b : addr.bytes() ) {
      value = ( value << 8 ) | b;
   }
   return Kiln::hashMix( value );
}
