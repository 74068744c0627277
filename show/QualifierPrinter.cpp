// Printing one qualifier of the entry dump.
#include "show/QualifierPrinter.h"

#include <algorithm>
#include <cstdio>

namespace Tessel {

namespace {

bool
anySet( const U8 * bytes, size_t count ) {
   return std::any_of( bytes, bytes + count, []( U8 b ) { return b != 0; } );
}

std::string
hex( U32 value ) {
   char text[ 16 ];
   std::snprintf( text, sizeof text, "%x", value );
   return text;
}

} // namespace

void
QualifierPrinter::ip6( int rc, const bcm_ip6_t & data, const bcm_ip6_t & mask ) {
   if ( rc >= 0 && anySet( mask, sizeof( bcm_ip6_t ) ) ) {
      printIp6Data( out_, name_, data, mask );
   }
}

void
QualifierPrinter::mac( int rc, const bcm_mac_t & data, const bcm_mac_t & mask ) {
   if ( rc >= 0 && anySet( mask, sizeof( bcm_mac_t ) ) ) {
      printMacData( out_, name_, data, mask );
   }
}

void
QualifierPrinter::pbmp( int rc, const bcm_pbmp_t & data, const bcm_pbmp_t & mask ) {
   if ( rc >= 0 && !_shr_pbmp_is_null( mask ) ) {
      printPbmpData( out_, name_, data, mask );
   }
}

void
QualifierPrinter::modulePort( int rc, int moduleData, int moduleMask, int portData,
                              int portMask ) {
   if ( rc < 0 || ( !moduleMask && !portMask ) ) {
      return;
   }
   out_ << name_ << ":\n"
        << "   module ID data: 0x" << hex( U32( moduleData ) ) << "\n"
        << "   module ID mask: 0x" << hex( U32( moduleMask ) ) << "\n"
        << "   port data: 0x" << hex( U32( portData ) ) << "\n"
        << "   port mask: 0x" << hex( U32( portMask ) ) << "\n";
}

void
QualifierPrinter::ranges( int rc, const std::vector< bcm_field_range_t > & ranges,
                          const std::vector< int > & inverts, int count ) {
   if ( rc < 0 || count <= 0 ) {
      return;
   }
   out_ << name_ << ":\n";
   size_t shown = std::min( size_t( count ), ranges.size() );
   for ( size_t i = 0; i < shown; ++i ) {
      out_ << "   range: " << ranges[ i ] << "\n"
           << "   invert: " << inverts[ i ] << "\n";
   }
   out_ << "   count: " << count << "\n";
}

void
QualifierPrinter::enumeration( int rc, const char * valueName ) {
   if ( rc >= 0 ) {
      printEnumType( out_, name_, valueName ? valueName : "unknown" );
   }
}

} // namespace Tessel
