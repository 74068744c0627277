// An IPv4 address. The value is in host order, as the SDK takes it:
// 10.1.2.3 is 0x0A010203.
//
// Text: dotted quad, four decimal numbers 0 to 255 ("10.1.2.3"). Parsing
// refuses anything else with Wiretype::AddressError, including leading
// zeros ("010.1.2.3" reads as octal in some tools, so it is not guessed at),
// signs, blanks and missing or extra parts.
#pragma once

#include "platform/agent/Wiretype.h"
#include "platform/kiln/Types.h"

#include <compare>
#include <cstddef>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>

namespace Wiretype {

class IpAddr {
 public:
   // 0.0.0.0
   constexpr IpAddr() = default;
   constexpr explicit IpAddr( U32 value ) : value_( value ) {}
   constexpr IpAddr( U8 a, U8 b, U8 c, U8 d )
         : value_( ( U32( a ) << 24 ) | ( U32( b ) << 16 ) | ( U32( c ) << 8 ) | d ) {}
   // Throws AddressError.
   explicit IpAddr( std::string_view text );

   constexpr U32 value() const { return value_; }
   // The dotted quad.
   std::string stringValue() const;
   // The dotted quad quoted, as value forms hold it: '10.1.2.3'.
   std::string valueText() const;

   // The address under a mask.
   constexpr IpAddr operator&( IpAddr mask ) const { return IpAddr( value_ & mask.value_ ); }

   constexpr bool operator==( const IpAddr & ) const = default;
   constexpr std::strong_ordering operator<=>( const IpAddr & ) const = default;

 private:
   U32 value_ = 0;
};

std::ostream & operator<<( std::ostream & os, const IpAddr & addr );

} // namespace Wiretype

template<>
struct std::hash< Wiretype::IpAddr > {
   size_t operator()( const Wiretype::IpAddr & addr ) const noexcept;
};
