// Records of the class-id compression collections (l4SrcPortClassId ...
// dstIpClassId). The collections and their keys are final; the records hold
// what the compression entries need and grow with the class-id operations.
#pragma once

#include <compare>
#include <string>

#include "common/TesselExport.h"
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

// An address bound to a class id: the compression entry that maps it.
class TESSEL_EXPORT TesselClassEntry : public Kiln::Entity {
 public:
   TesselClassEntry( const TesselCompressionClassKey & key, U32 addressFamily, U32 entry )
         : Kiln::Entity( key.valueText() ), key_( key ), addressFamily_( addressFamily ),
           entry_( entry ) {}

   const TesselCompressionClassKey & key() const { return key_; }
   U32 addressFamily() const { return addressFamily_; } // 1 IPv4, 2 IPv6
   U32 entry() const { return entry_; }                 // SDK entry id

 private:
   TesselCompressionClassKey key_;
   U32 addressFamily_;
   U32 entry_;
};

// A 16-bit value (L4 port, IP protocol, ethertype) bound to a class id.
class TESSEL_EXPORT TesselExactMatchClassEntry : public Kiln::Entity {
 public:
   TesselExactMatchClassEntry( const TesselCompressionClassKey & key, U32 value, U32 entry )
         : Kiln::Entity( key.valueText() ), key_( key ), value_( value ), entry_( entry ) {}

   const TesselCompressionClassKey & key() const { return key_; }
   U32 value() const { return value_; }
   U32 entry() const { return entry_; }

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
