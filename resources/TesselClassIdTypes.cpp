// Text forms and comparisons of the class-id records.
#include "resources/TesselClassIdTypes.h"

#include "platform/kiln/ValueText.h"

namespace Tessel {

std::string
TesselCompressionClassKey::valueText() const {
   return Kiln::ValueText( "Tessel::TesselCompressionClassKey" )
      .field( "classId", classId )
      .field( "unit", unit )
      .str();
}

bool
TesselClassEntry::binds( const IpAddrWithFullMask & addr ) const {
   return addressFamily_ == Wiretype::ipv4 && ipAddr_ == addr.masked();
}

bool
TesselClassEntry::binds( const Ip6AddrWithFullMask & addr ) const {
   return addressFamily_ == Wiretype::ipv6 && ip6Addr_ == addr.address;
}

std::string
TesselClassEntry::valueText() const {
   Kiln::ValueText text( "Tessel::TesselClassEntry" );
   text.field( "key", key_ )
      .field( "addressFamily", U32( addressFamily_ ) )
      .field( "entry", entry_ );
   if ( addressFamily_ == Wiretype::ipv6 ) {
      text.field( "address", ip6Addr_ );
   } else {
      text.field( "address", ipAddr_ );
   }
   return text.str();
}

std::string
TesselExactMatchClassEntry::valueText() const {
   return Kiln::ValueText( "Tessel::TesselExactMatchClassEntry" )
      .field( "key", key_ )
      .field( "value", value_ )
      .field( "entry", entry_ )
      .str();
}

} // namespace Tessel
