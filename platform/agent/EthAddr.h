// An Ethernet (MAC) address: 6 bytes in wire order.
//
// Text in: six groups of 1 or 2 hex digits separated by ':'
// ("0:1c:73:aa:bb:cc"), or three groups of 1 to 4 hex digits separated by
// '.' ("001c.73aa.bbcc"); either case. Anything else is refused with
// Wiretype::AddressError. Text out: "00:1c:73:aa:bb:cc".
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

class EthAddr {
 public:
   typedef std::array< U8, 6 > Bytes;

   // 00:00:00:00:00:00
   constexpr EthAddr() = default;
   constexpr explicit EthAddr( const Bytes & bytes ) : bytes_( bytes ) {}
   // Throws AddressError.
   explicit EthAddr( std::string_view text );

   constexpr const Bytes & bytes() const { return bytes_; }
   // Group bit of the first byte: multicast and broadcast addresses.
   constexpr bool isMulticast() const { return bytes_[ 0 ] & 1; }

   std::string stringValue() const;
   // The text quoted, as value forms hold it: '00:1c:73:aa:bb:cc'.
   std::string valueText() const;

   constexpr bool operator==( const EthAddr & ) const = default;
   constexpr std::strong_ordering operator<=>( const EthAddr & ) const = default;

 private:
   Bytes bytes_{};
};

std::ostream & operator<<( std::ostream & os, const EthAddr & addr );

} // namespace Wiretype

template<>
struct std::hash< Wiretype::EthAddr > {
   size_t operator()( const Wiretype::EthAddr & addr ) const noexcept;
};
