// The value printers of the entry dump.
#include <algorithm>
#include <cstdio>

#include "platform/agent/EthAddr.h"
#include "platform/agent/Ip6Addr.h"
#include "platform/agent/IpAddr.h"
#include "show/TesselTcamShow.h"

namespace Tessel {

namespace {

std::string
hexAndDecimal( U32 value ) {
   char text[ 32 ];
   std::snprintf( text, sizeof text, "0x%x (%u)", value, value );
   return text;
}

Wiretype::Ip6Addr
ip6( const bcm_ip6_t & bytes ) {
   Wiretype::Ip6Addr::Bytes copy;
   std::copy( bytes, bytes + 16, copy.begin() );
   return Wiretype::Ip6Addr( copy );
}

Wiretype::EthAddr
mac( const bcm_mac_t & bytes ) {
   Wiretype::EthAddr::Bytes copy;
   std::copy( bytes, bytes + 6, copy.begin() );
   return Wiretype::EthAddr( copy );
}

} // namespace

void
printIntData( std::ostream & out, const std::string & name, U32 data, U32 mask ) {
   out << name << ":\n"
       << "   data: " << hexAndDecimal( data ) << "\n"
       << "   mask: " << hexAndDecimal( mask ) << "\n";
}

void
printIpData( std::ostream & out, const std::string & name, bcm_ip_t data, bcm_ip_t mask ) {
   out << name << ":\n"
       << "   data: " << Wiretype::IpAddr( data ).stringValue() << "\n"
       << "   mask: " << Wiretype::IpAddr( mask ).stringValue() << "\n";
}

void
printIp6Data( std::ostream & out, const std::string & name, const bcm_ip6_t & data,
              const bcm_ip6_t & mask ) {
   // Only masks that reach into the first 32 bits are shown.
   if ( !mask[ 0 ] && !mask[ 1 ] && !mask[ 2 ] && !mask[ 3 ] ) {
      return;
   }
   out << name << ":\n"
       << "   data: " << ip6( data ).stringValue() << "\n"
       << "   mask: " << ip6( mask ).stringValue() << "\n";
}

void
printMacData( std::ostream & out, const std::string & name, const bcm_mac_t & data,
              const bcm_mac_t & mask ) {
   out << name << ":\n"
       << "   data: " << mac( data ).stringValue() << "\n"
       << "   mask: " << mac( mask ).stringValue() << "\n";
}

void
printPbmpData( std::ostream & out, const std::string & name, const bcm_pbmp_t & data,
               const bcm_pbmp_t & mask ) {
   if ( _shr_pbmp_is_null( data ) ) {
      return;
   }
   char dataText[ _SHR_PBMP_FMT_LEN ];
   char maskText[ _SHR_PBMP_FMT_LEN ];
   out << name << ":\n"
       << "   data: " << _shr_pbmp_format( data, dataText ) << "\n"
       << "   mask: " << _shr_pbmp_format( mask, maskText ) << "\n";
}

void
printEnumType( std::ostream & out, const std::string & name, const std::string & valueName ) {
   out << name << ":\n"
       << "   " << valueName << "\n";
}

} // namespace Tessel
