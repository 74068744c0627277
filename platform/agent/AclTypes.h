// ACL enumerations shared by the agent's ACL configuration and the TCAM
// manager.
//
// Each enumerator comes as a constant and as a value function, both usable
// where an int is compared: `aclType == Acl::ipv6_`, `aclType == Acl::mac()`.
#pragma once

#include "platform/kiln/EnumInstance.h"
#include "platform/kiln/Types.h"

#include <ostream>

namespace Acl {

// The address family an ACL matches on.
enum AclType : int {
   ipv4_ = 0,
   ipv6_ = 1,
   mac_ = 2,
};

constexpr AclType
ipv4() {
   return ipv4_;
}
constexpr AclType
ipv6() {
   return ipv6_;
}
constexpr AclType
mac() {
   return mac_;
}

struct AclTypeNames {
   typedef AclType Enum;
   static constexpr const char * typeName = "Acl::AclType";
   static constexpr Kiln::EnumName< AclType > names[] = {
      { ipv4_, "ipv4" },
      { ipv6_, "ipv6" },
      { mac_, "mac" },
   };
};
typedef Kiln::EnumInstance< AclTypeNames > AclTypeInstance;

inline std::ostream &
operator<<( std::ostream & os, AclType v ) {
   return os << AclTypeInstance::valueToStrep( v );
}

// How a feature's IPv6 key uses the TCAM banks. The TCAM manager only asks
// whether a mode is tcamBankSharingModeShared (1): an IPv6 key narrowed to
// share banks with IPv4 leaves no room for the in-port bitmap, so the group
// needs the in-port bitmap workaround.
enum TcamBankSharingMode : U32 {
   // The chip's standard width for the feature's IPv6 key, in banks of its own.
   tcamBankSharingModeDefault = 0,
   // Narrowed IPv6 key sharing banks with the IPv4 key of the same feature.
   tcamBankSharingModeShared = 1,
   // Widest IPv6 key (full addresses and L4 ports), in banks of its own.
   tcamBankSharingModeWide = 2,
};

struct TcamBankSharingModeNames {
   typedef TcamBankSharingMode Enum;
   static constexpr const char * typeName = "Acl::TcamBankSharingMode";
   static constexpr Kiln::EnumName< TcamBankSharingMode > names[] = {
      { tcamBankSharingModeDefault, "tcamBankSharingModeDefault" },
      { tcamBankSharingModeShared, "tcamBankSharingModeShared" },
      { tcamBankSharingModeWide, "tcamBankSharingModeWide" },
   };
};
typedef Kiln::EnumInstance< TcamBankSharingModeNames > TcamBankSharingModeInstance;

inline std::ostream &
operator<<( std::ostream & os, TcamBankSharingMode v ) {
   return os << TcamBankSharingModeInstance::valueToStrep( v );
}

} // namespace Acl
