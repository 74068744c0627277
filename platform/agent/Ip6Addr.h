// An IPv6 address: 16 bytes in network order, as the SDK takes it.
//
// Text in: any RFC 4291 form: eight groups of 1 to 4 hex digits separated
// by ':', one "::" standing for one or more zero groups, and a dotted quad
// in place of the last two groups ("::ffff:10.1.2.3"). Anything else (zone
// ids, brackets, prefixes, blanks) is refused with Wiretype::AddressError.
// Text out: the RFC 5952 canonical form: lower case, no leading zeros, the
// longest run of two or more zero groups (the first of equal runs) as "::",
// and IPv4-mapped addresses as "::ffff:a.b.c.d".
#pragma once

#include "platform/agent/Wiretype.h"
#include "platform/kiln/Types.h"

#include <array>
#include <compare>
#include <cstddef>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>

namespace Wiretype {

class Ip6Addr {
 public:
   typedef std::array< U8, 16 > Bytes;

   // ::
   constexpr Ip6Addr() = default;
   constexpr explicit Ip6Addr( const Bytes & bytes ) : bytes_( bytes ) {}
   // Throws AddressError.
   explicit Ip6Addr( std::string_view text );

   constexpr const Bytes & bytes() const { return bytes_; }
   // Group i (0 to 7) of the eight 16-bit groups.
   constexpr U16 group( size_t i ) const { return U16( ( bytes_[ 2 * i ] << 8 ) | bytes_[ 2 * i + 1 ] ); }
   bool isZero() const;
   // ::ffff:a.b.c.d
   bool isIpv4Mapped() const;

   // The canonical text.
   std::string stringValue() const;
   // The canonical text quoted, as value forms hold it: '2001:db8::1'.
   std::string valueText() const;

   // The address under a mask, byte by byte.
   Ip6Addr operator&( const Ip6Addr & mask ) const;

   constexpr bool operator==( const Ip6Addr & ) const = default;
   constexpr std::strong_ordering operator<=>( const Ip6Addr & ) const = default;

 private:
   Bytes bytes_{};
};

std::ostream & operator<<( std::ostream & os, const Ip6Addr & addr );

} // namespace Wiretype

template<>
struct std::hash< Wiretype::Ip6Addr > {
   size_t operator()( const Wiretype::Ip6Addr & addr ) const noexcept;
};
