#include "examples/features/ClassBench.h"

#include <charconv>
#include <fstream>
#include <sstream>

namespace Features {

namespace {

[[noreturn]] void
fail( const std::string & where, const std::string & what ) {
   throw ClassBenchError( where + ": " + what );
}

std::vector< std::string >
splitTabs( const std::string & line ) {
   std::vector< std::string > fields;
   std::string field;
   std::istringstream in( line );
   while ( std::getline( in, field, '\t' ) ) {
      fields.push_back( field );
   }
   while ( !fields.empty() && fields.back().empty() ) {
      fields.pop_back(); // every filter line ends in a tab
   }
   return fields;
}

// An unsigned number in the given base, the whole text, at most `max`.
U64
number( const std::string & text, U64 max, int base, const std::string & where,
        const char * what ) {
   U64 value = 0;
   const char * end = text.data() + text.size();
   auto [ ptr, ec ] = std::from_chars( text.data(), end, value, base );
   if ( text.empty() || ec != std::errc() || ptr != end || value > max ) {
      fail( where, std::string( "bad " ) + what + " '" + text + "'" );
   }
   return value;
}

U32
dottedQuad( const std::string & text, const std::string & where ) {
   U32 value = 0;
   std::istringstream in( text );
   std::string octet;
   int count = 0;
   while ( std::getline( in, octet, '.' ) ) {
      value = ( value << 8 ) | static_cast< U32 >( number( octet, 255, 10, where, "address octet" ) );
      ++count;
   }
   if ( count != 4 ) {
      fail( where, "bad address '" + text + "'" );
   }
   return value;
}

void
prefix( const std::string & text, U32 & address, U32 & length, const std::string & where ) {
   auto slash = text.find( '/' );
   if ( slash == std::string::npos ) {
      fail( where, "prefix without length '" + text + "'" );
   }
   address = dottedQuad( text.substr( 0, slash ), where );
   length = static_cast< U32 >( number( text.substr( slash + 1 ), 32, 10, where, "prefix length" ) );
   if ( address & ~prefixMask( length ) ) {
      fail( where, "host bits set past the prefix length in '" + text + "'" );
   }
}

void
portRange( const std::string & text, U16 & low, U16 & high, const std::string & where ) {
   auto colon = text.find( " : " );
   if ( colon == std::string::npos ) {
      fail( where, "bad port range '" + text + "'" );
   }
   low = static_cast< U16 >( number( text.substr( 0, colon ), 0xffff, 10, where, "port" ) );
   high = static_cast< U16 >( number( text.substr( colon + 3 ), 0xffff, 10, where, "port" ) );
   if ( low > high ) {
      fail( where, "port range '" + text + "' ends below its start" );
   }
}

// "0xNN/0xMM" into value and mask of at most `max`.
void
valueMask( const std::string & text, U32 max, U32 & value, U32 & mask,
           const std::string & where, const char * what ) {
   auto slash = text.find( '/' );
   if ( slash == std::string::npos || text.compare( 0, 2, "0x" ) ||
        text.compare( slash + 1, 2, "0x" ) ) {
      fail( where, std::string( "bad " ) + what + " '" + text + "'" );
   }
   value = static_cast< U32 >( number( text.substr( 2, slash - 2 ), max, 16, where, what ) );
   mask = static_cast< U32 >( number( text.substr( slash + 3 ), max, 16, where, what ) );
}

} // namespace

U32
prefixMask( U32 length ) {
   return length == 0 ? 0 : ~U32( 0 ) << ( 32 - length );
}

ClassBenchRule
parseClassBenchRule( const std::string & line, const std::string & where ) {
   if ( line.empty() || line[ 0 ] != '@' ) {
      fail( where, "a filter line starts with '@'" );
   }
   auto fields = splitTabs( line.substr( 1 ) );
   if ( fields.size() != 6 ) {
      fail( where, "a filter line has 6 fields, this one " + std::to_string( fields.size() ) );
   }
   ClassBenchRule rule;
   prefix( fields[ 0 ], rule.srcIp, rule.srcLen, where );
   prefix( fields[ 1 ], rule.dstIp, rule.dstLen, where );
   portRange( fields[ 2 ], rule.srcPortLow, rule.srcPortHigh, where );
   portRange( fields[ 3 ], rule.dstPortLow, rule.dstPortHigh, where );
   U32 value, mask;
   valueMask( fields[ 4 ], 0xff, value, mask, where, "protocol" );
   rule.protocol = static_cast< U8 >( value );
   rule.protocolMask = static_cast< U8 >( mask );
   valueMask( fields[ 5 ], 0xffff, value, mask, where, "flags" );
   rule.flags = static_cast< U16 >( value );
   rule.flagsMask = static_cast< U16 >( mask );
   return rule;
}

ClassBenchHeader
parseClassBenchHeader( const std::string & line, const std::string & where ) {
   std::istringstream in( line );
   std::vector< std::string > fields;
   std::string field;
   while ( in >> field ) {
      fields.push_back( field );
   }
   if ( fields.size() != 7 ) {
      fail( where, "a trace line has 7 fields, this one " + std::to_string( fields.size() ) );
   }
   ClassBenchHeader header;
   header.srcIp = static_cast< U32 >( number( fields[ 0 ], 0xffffffff, 10, where, "address" ) );
   header.dstIp = static_cast< U32 >( number( fields[ 1 ], 0xffffffff, 10, where, "address" ) );
   header.srcPort = static_cast< U16 >( number( fields[ 2 ], 0xffff, 10, where, "port" ) );
   header.dstPort = static_cast< U16 >( number( fields[ 3 ], 0xffff, 10, where, "port" ) );
   header.protocol = static_cast< U8 >( number( fields[ 4 ], 0xff, 10, where, "protocol" ) );
   header.flags = static_cast< U32 >( number( fields[ 5 ], 0xffffffff, 10, where, "flags" ) );
   header.ruleIndex =
      static_cast< U32 >( number( fields[ 6 ], 0xffffffff, 10, where, "rule index" ) );
   return header;
}

namespace {

template< typename T, typename Parse >
std::vector< T >
readLines( std::istream & in, const std::string & name, Parse parse ) {
   std::vector< T > items;
   std::string line;
   for ( U32 number = 1; std::getline( in, line ); ++number ) {
      if ( !line.empty() && line.back() == '\r' ) {
         line.pop_back();
      }
      if ( line.find_first_not_of( " \t" ) != std::string::npos ) {
         items.push_back( parse( line, name + ":" + std::to_string( number ) ) );
      }
   }
   return items;
}

std::ifstream
openOrThrow( const std::string & path ) {
   std::ifstream in( path );
   if ( !in ) {
      throw ClassBenchError( path + ": cannot open" );
   }
   return in;
}

} // namespace

std::vector< ClassBenchRule >
readClassBenchRules( std::istream & in, const std::string & name ) {
   return readLines< ClassBenchRule >( in, name, parseClassBenchRule );
}

std::vector< ClassBenchHeader >
readClassBenchTrace( std::istream & in, const std::string & name ) {
   return readLines< ClassBenchHeader >( in, name, parseClassBenchHeader );
}

std::vector< ClassBenchRule >
readClassBenchRulesFile( const std::string & path ) {
   auto in = openOrThrow( path );
   return readClassBenchRules( in, path );
}

std::vector< ClassBenchHeader >
readClassBenchTraceFile( const std::string & path ) {
   auto in = openOrThrow( path );
   return readClassBenchTrace( in, path );
}

std::vector< PortPrefix >
portRangePrefixes( U16 low, U16 high ) {
   std::vector< PortPrefix > prefixes;
   U32 start = low;
   while ( start <= high ) {
      // The largest aligned block that starts here and stays inside the range.
      U32 size = 1;
      while ( ( start & ( size * 2 - 1 ) ) == 0 && start + size * 2 - 1 <= high &&
              size < 0x10000 ) {
         size *= 2;
      }
      prefixes.push_back( { static_cast< U16 >( start ), static_cast< U16 >( ~( size - 1 ) ) } );
      start += size;
   }
   return prefixes;
}

} // namespace Features
