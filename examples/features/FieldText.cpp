#include "examples/features/FieldText.h"

#include <charconv>
#include <fstream>
#include <sstream>

#include "platform/agent/EthAddr.h"
#include "platform/agent/IpAddr.h"

namespace Features {

namespace {

const std::pair< const char *, U8 > protocolNames[] = {
   { "icmp", 1 }, { "igmp", 2 }, { "tcp", 6 },  { "udp", 17 },
   { "gre", 47 }, { "ospf", 89 }, { "pim", 103 }, { "vrrp", 112 },
};

// Decimal, or hexadecimal with 0x; the whole text.
std::optional< U64 >
unsignedNumber( const std::string & text ) {
   bool hex = text.size() > 2 && text[ 0 ] == '0' && ( text[ 1 ] == 'x' || text[ 1 ] == 'X' );
   const char * begin = text.data() + ( hex ? 2 : 0 );
   const char * end = text.data() + text.size();
   U64 value = 0;
   auto [ stop, ec ] = std::from_chars( begin, end, value, hex ? 16 : 10 );
   if ( begin == end || ec != std::errc() || stop != end ) {
      return std::nullopt;
   }
   return value;
}

// "N" or "LOW-HIGH"; a part that is no number is nothing.
std::pair< std::optional< U64 >, std::optional< U64 > >
numberRange( const std::string & text ) {
   size_t dash = text.find( '-' );
   std::optional< U64 > low = unsignedNumber( text.substr( 0, dash ) );
   return { low, dash == std::string::npos ? low : unsignedNumber( text.substr( dash + 1 ) ) };
}

std::string
joined( const std::vector< std::string > & words ) {
   std::string text;
   for ( const std::string & word : words ) {
      text += ( text.empty() ? "" : " " ) + word;
   }
   return text;
}

} // namespace

std::optional< U8 >
protocolNumber( const std::string & name ) {
   for ( const auto & [ known, number ] : protocolNames ) {
      if ( name == known ) {
         return number;
      }
   }
   return std::nullopt;
}

FieldLine::FieldLine( const std::string & text, std::string where ) : where_( std::move( where ) ) {
   std::istringstream in( text.substr( 0, text.find( '#' ) ) );
   std::string word;
   while ( in >> word ) {
      size_t equals = word.find( '=' );
      if ( equals == std::string::npos ) {
         if ( !fields_.empty() ) {
            fail( "'" + word + "' is not a field (key=value); plain words come first" );
         }
         words_.push_back( word );
         continue;
      }
      std::string key = word.substr( 0, equals );
      std::string value = word.substr( equals + 1 );
      if ( key.empty() || value.empty() ) {
         fail( "field '" + word + "' needs a key and a value" );
      }
      if ( !fields_.emplace( key, value ).second ) {
         fail( "field '" + key + "' given twice" );
      }
   }
}

std::optional< std::string >
FieldLine::text( const std::string & key ) const {
   auto it = fields_.find( key );
   return it == fields_.end() ? std::nullopt : std::optional< std::string >( it->second );
}

void
FieldLine::allowOnly( const std::vector< std::string > & allowed, const std::string & owner ) const {
   for ( const auto & [ key, value ] : fields_ ) {
      bool known = false;
      for ( const std::string & name : allowed ) {
         known = known || name == key;
      }
      if ( !known ) {
         fail( "unknown field '" + key + "' (" + owner + " takes " + joined( allowed ) + ")" );
      }
   }
}

void
FieldLine::fail( const std::string & what ) const {
   throw FieldTextError( where_ + ": " + what );
}

std::optional< U32 >
FieldLine::number( const std::string & key, U32 max ) const {
   return readField( key, [ & ]( const std::string & value ) {
      std::optional< U64 > n = unsignedNumber( value );
      if ( !n || *n > max ) {
         fail( "bad " + key + " '" + value + "' (a number 0 to " + std::to_string( max ) + ")" );
      }
      return U32( *n );
   } );
}

std::optional< std::pair< U32, U32 > >
FieldLine::ipv4Prefix( const std::string & key ) const {
   return readField( key, [ & ]( const std::string & value ) {
      size_t slash = value.find( '/' );
      U32 length = 32;
      if ( slash != std::string::npos ) {
         std::optional< U64 > n = unsignedNumber( value.substr( slash + 1 ) );
         if ( !n || *n > 32 ) {
            fail( "bad " + key + " prefix length in '" + value + "' (0 to 32)" );
         }
         length = U32( *n );
      }
      U32 address = 0;
      try {
         address = Wiretype::IpAddr( value.substr( 0, slash ) ).value();
      } catch ( const Wiretype::AddressError & e ) {
         fail( "bad " + key + ": " + e.what() );
      }
      U32 mask = length == 0 ? 0 : ~U32( 0 ) << ( 32 - length );
      if ( address & ~mask ) {
         fail( "bad " + key + " '" + value + "': host bits set past the prefix length" );
      }
      return std::make_pair( address, mask );
   } );
}

std::optional< std::pair< U16, U16 > >
FieldLine::portRange( const std::string & key ) const {
   return readField( key, [ & ]( const std::string & value ) {
      auto [ low, high ] = numberRange( value );
      if ( !low || !high || *low > 0xffff || *high > 0xffff ) {
         fail( "bad " + key + " '" + value + "' (a port 0 to 65535, or LOW-HIGH)" );
      }
      if ( *low > *high ) {
         fail( "bad " + key + " '" + value + "': the range ends below its start" );
      }
      return std::make_pair( U16( *low ), U16( *high ) );
   } );
}

std::optional< U8 >
FieldLine::protocol( const std::string & key ) const {
   return readField( key, [ & ]( const std::string & value ) {
      if ( std::optional< U8 > named = protocolNumber( value ) ) {
         return *named;
      }
      std::optional< U64 > n = unsignedNumber( value );
      if ( !n || *n > 255 ) {
         fail( "bad " + key + " '" + value + "' (tcp, udp, icmp, igmp, gre, ospf, pim, vrrp or 0 to 255)" );
      }
      return U8( *n );
   } );
}

std::optional< TesselTypes::TesselPortList >
FieldLine::ports( const std::string & key ) const {
   return readField( key, [ & ]( const std::string & value ) {
      TesselTypes::TesselPortList list;
      std::istringstream in( value );
      std::string item;
      while ( std::getline( in, item, ',' ) ) {
         auto [ low, high ] = numberRange( item );
         if ( !low || !high || *low > *high || *high >= TesselTypes::maxPortCount ) {
            fail( "bad " + key + " '" + value + "' (ports 0 to " +
                  std::to_string( TesselTypes::maxPortCount - 1 ) + ", as 1,2,5-8)" );
         }
         for ( U64 port = *low; port <= *high; ++port ) {
            list.portIs( U32( port ) );
         }
      }
      if ( list.empty() ) {
         fail( "bad " + key + " '" + value + "': no port" );
      }
      return list;
   } );
}

std::optional< std::array< U8, 6 > >
FieldLine::mac( const std::string & key ) const {
   return readField( key, [ & ]( const std::string & value ) {
      try {
         return Wiretype::EthAddr( value ).bytes();
      } catch ( const Wiretype::AddressError & e ) {
         fail( "bad " + key + ": " + e.what() );
      }
   } );
}

std::optional< std::vector< U8 > >
hexBytes( const std::string & text, size_t max ) {
   if ( text.compare( 0, 2, "0x" ) || text.size() % 2 || text.size() < 4 ||
        text.size() > 2 + 2 * max ) {
      return std::nullopt;
   }
   std::vector< U8 > bytes;
   for ( size_t i = 2; i < text.size(); i += 2 ) {
      U32 byte = 0;
      auto [ ptr, ec ] = std::from_chars( text.data() + i, text.data() + i + 2, byte, 16 );
      if ( ec != std::errc() || ptr != text.data() + i + 2 ) {
         return std::nullopt;
      }
      bytes.push_back( U8( byte ) );
   }
   return bytes;
}

void
readFieldFile( const std::string & path,
               const std::function< void( const FieldLine & ) > & line ) {
   std::ifstream in( path );
   if ( !in ) {
      throw FieldTextError( path + ": cannot open" );
   }
   std::string text;
   for ( U32 number = 1; std::getline( in, text ); ++number ) {
      FieldLine fields( text, path + ":" + std::to_string( number ) );
      if ( !fields.empty() ) {
         line( fields );
      }
   }
}

} // namespace Features
