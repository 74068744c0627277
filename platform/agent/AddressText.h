// Helpers shared by the address parsers and printers of IpAddr.cpp,
// Ip6Addr.cpp and EthAddr.cpp; internal to them, not for other callers.
#pragma once

#include "platform/agent/Wiretype.h"
#include "platform/kiln/Types.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Wiretype::Detail {

// Throws AddressError: invalid <kind> address "<text>": <problem>
[[noreturn]] void throwAddressError( std::string_view kind, std::string_view text,
                                     const std::string & problem );

// `text` cut at every `separator`; empty pieces are kept.
std::vector< std::string_view > splitText( std::string_view text, char separator );

// The value of 1 to `maxDigits` hex digits, or nothing for anything else.
std::optional< U32 > parseHex( std::string_view digits, size_t maxDigits );

// Parses a dotted quad; throws AddressError naming `kind` and `whole` (the
// text the quad is part of).
U32 parseDottedQuad( std::string_view quad, std::string_view kind, std::string_view whole );

// Writes a host-order IPv4 value as a dotted quad.
std::string dottedQuad( U32 value );

} // namespace Wiretype::Detail
