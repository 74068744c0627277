// Wire-format value types shared by the agent and the TCAM manager: the
// address family here, the addresses in IpAddr.h, Ip6Addr.h and EthAddr.h.
#pragma once

#include "platform/kiln/EnumInstance.h"
#include "platform/kiln/Types.h"

#include <ostream>
#include <stdexcept>

namespace Wiretype {

enum AddressFamily : U8 {
   ipUnknown = 0,
   ipv4 = 1,
   ipv6 = 2,
};

struct AddressFamilyNames {
   typedef AddressFamily Enum;
   static constexpr const char * typeName = "Wiretype::AddressFamily";
   static constexpr Kiln::EnumName< AddressFamily > names[] = {
      { ipUnknown, "ipUnknown" },
      { ipv4, "ipv4" },
      { ipv6, "ipv6" },
   };
};
typedef Kiln::EnumInstance< AddressFamilyNames > AddressFamilyInstance;

inline std::ostream &
operator<<( std::ostream & os, AddressFamily v ) {
   return os << AddressFamilyInstance::valueToStrep( v );
}

// Text that is not an address of the kind asked for. The message names the
// kind, quotes the text and says what is wrong:
//    invalid IPv4 address "10.1.2": expected 4 numbers separated by '.', got 3
class AddressError : public std::invalid_argument {
 public:
   using std::invalid_argument::invalid_argument;
};

} // namespace Wiretype
