// Value types of class-id compression: the key a caller binds a class id
// under, the records of the six collections (srcIpClassId ... l4DstPortClassId)
// and the masked addresses the address kinds take.
//
// A record names the compression entry that makes the binding real in
// hardware; the collections are bookkeeping only (their Is, Del and DelAll
// operations never touch hardware).
#pragma once

#include <compare>
#include <string>

#include "common/TesselExport.h"
#include "platform/agent/Ip6Addr.h"
#include "platform/agent/IpAddr.h"
#include "platform/agent/Wiretype.h"
#include "platform/kiln/Entity.h"
#include "platform/kiln/Hash.h"
#include "platform/kiln/Types.h"

namespace Tessel {

// A class id as a caller bound it on a unit.
struct TesselCompressionClassKey {
   U64 classId = 0; // 8-bit ids are zero-extended
   U32 unit = 0;

   auto operator<=>( const TesselCompressionClassKey & ) const = default;
   // "Value('Tessel::TesselCompressionClassKey', ** {'classId': 5, 'unit': 0})"
   TESSEL_EXPORT std::string valueText() const;
};

// An IPv4 address with its mask (every bit of the mask is significant).
struct IpAddrWithFullMask {
   Wiretype::IpAddr address;
   Wiretype::IpAddr mask{ 0xFFFFFFFF };

   // The address under its mask: what a binding compares and stores.
   Wiretype::IpAddr masked() const { return address & mask; }
   bool operator==( const IpAddrWithFullMask & ) const = default;
};

// An IPv6 address with its mask.
struct Ip6AddrWithFullMask {
   Wiretype::Ip6Addr address;
   Wiretype::Ip6Addr mask{ Wiretype::Ip6Addr::Bytes{ 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
                                                     0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
                                                     0xFF, 0xFF, 0xFF, 0xFF } };
   bool operator==( const Ip6AddrWithFullMask & ) const = default;
};

// An address bound to a class id: the compression entry that maps it.
// IPv4 records hold the caller's address already under its mask, IPv6
// records the address as given.
class TESSEL_EXPORT TesselClassEntry : public Kiln::Entity {
 public:
   TesselClassEntry( const TesselCompressionClassKey & key,
                     Wiretype::AddressFamily addressFamily, U32 entry )
         : Kiln::Entity( key.valueText() ), key_( key ), addressFamily_( addressFamily ),
           entry_( entry ) {}

   const TesselCompressionClassKey & key() const { return key_; }
   Wiretype::AddressFamily addressFamily() const { return addressFamily_; }
   U32 entry() const { return entry_; } // SDK entry id of the compression entry

   const Wiretype::IpAddr & ipAddr() const { return ipAddr_; }
   void ipAddrIs( const Wiretype::IpAddr & v ) { ipAddr_ = v; }
   const Wiretype::Ip6Addr & ip6Addr() const { return ip6Addr_; }
   void ip6AddrIs( const Wiretype::Ip6Addr & v ) { ip6Addr_ = v; }

   // Whether the record binds this IPv4 address (family 1, masked address).
   bool binds( const IpAddrWithFullMask & addr ) const;
   // Whether the record binds this IPv6 address (family 2, byte for byte).
   bool binds( const Ip6AddrWithFullMask & addr ) const;
   // "Value('Tessel::TesselClassEntry', ** {'key': ..., 'addressFamily': 1,
   //  'entry': 7, 'address': '10.1.0.0'})"
   std::string valueText() const;

 private:
   TesselCompressionClassKey key_;
   Wiretype::AddressFamily addressFamily_;
   U32 entry_;
   Wiretype::IpAddr ipAddr_;
   Wiretype::Ip6Addr ip6Addr_;
};

// A 16-bit value (L4 port, IP protocol, ethertype) bound to a class id.
class TESSEL_EXPORT TesselExactMatchClassEntry : public Kiln::Entity {
 public:
   TesselExactMatchClassEntry( const TesselCompressionClassKey & key, U32 value, U32 entry )
         : Kiln::Entity( key.valueText() ), key_( key ), value_( value ), entry_( entry ) {}

   const TesselCompressionClassKey & key() const { return key_; }
   U32 value() const { return value_; }
   U32 entry() const { return entry_; } // SDK entry id of the compression entry
   // "Value('Tessel::TesselExactMatchClassEntry', ** {'key': ..., 'value': 179,
   //  'entry': 7})"
   std::string valueText() const;

 private:
   TesselCompressionClassKey key_;
   U32 value_;
   U32 entry_;
};

} // namespace Tessel

template<>
struct std::hash< Tessel::TesselCompressionClassKey > {
   std::size_t
   operator()( const Tessel::TesselCompressionClassKey & k ) const noexcept {
      return Kiln::hashCombine( Kiln::hashMix( k.classId ), k.unit );
   }
};
