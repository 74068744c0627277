// The configuration text: parsing items, level sets and glob patterns.
#include <cstdio>
#include <cstdlib>
#include <optional>

#include "platform/fastlog/TraceConfig.h"

namespace FastLog {

namespace {

std::string_view
trimmed( std::string_view text ) {
   const auto first = text.find_first_not_of( " \t" );
   if ( first == std::string_view::npos ) {
      return {};
   }
   const auto last = text.find_last_not_of( " \t" );
   return text.substr( first, last - first + 1 );
}

bool
isDigit( char c ) {
   return c >= '0' && c <= '9';
}

const char * const badLevels =
   "levels must be \"none\" or digits 0-9 such as 4, 0-2 or 0-2+7";

// Reads the digits at `pos` as one level and moves past them.
std::optional< U32 >
parseLevel( std::string_view text, size_t & pos, std::string & error ) {
   const size_t start = pos;
   while ( pos < text.size() && isDigit( text[ pos ] ) ) {
      ++pos;
   }
   if ( pos == start ) {
      error = badLevels;
      return std::nullopt;
   }
   if ( pos - start > 1 ) {
      error = "level " + std::string( text.substr( start, pos - start ) ) + " is not in 0-9";
      return std::nullopt;
   }
   return U32( text[ start ] - '0' );
}

// One range: "4" or "0-2". Sets `error` and returns nothing when bad.
std::optional< TraceLevels >
parseRange( std::string_view text, std::string & error ) {
   size_t pos = 0;
   const auto low = parseLevel( text, pos, error );
   if ( !low ) {
      return std::nullopt;
   }
   auto high = low;
   if ( pos < text.size() && text[ pos ] == '-' ) {
      high = parseLevel( text, ++pos, error );
      if ( !high ) {
         return std::nullopt;
      }
   }
   if ( pos != text.size() ) {
      error = badLevels;
      return std::nullopt;
   }
   if ( *low > *high ) {
      error = "level range " + std::string( text ) + " runs backwards";
      return std::nullopt;
   }
   return TraceLevels::range( *low, *high );
}

std::optional< TraceLevels >
parseLevels( std::string_view text, std::string & error ) {
   if ( text == "none" ) {
      return TraceLevels::none();
   }
   TraceLevels levels;
   while ( true ) {
      const size_t plus = text.find( '+' );
      const auto range = parseRange( text.substr( 0, plus ), error );
      if ( !range ) {
         return std::nullopt;
      }
      levels = levels | *range;
      if ( plus == std::string_view::npos ) {
         return levels;
      }
      text.remove_prefix( plus + 1 );
   }
}

std::optional< TraceRule >
parseItem( std::string_view item, std::string & error ) {
   const size_t slash = item.find( '/' );
   const std::string_view pattern = trimmed( item.substr( 0, slash ) );
   if ( pattern.empty() ) {
      error = "the channel pattern is empty";
      return std::nullopt;
   }
   if ( pattern.find_first_of( " \t" ) != std::string_view::npos ) {
      error = "the channel pattern contains a blank";
      return std::nullopt;
   }
   if ( slash == std::string_view::npos ) {
      return TraceRule{ std::string( pattern ), TraceLevels::all() };
   }
   const auto levels = parseLevels( trimmed( item.substr( slash + 1 ) ), error );
   if ( !levels ) {
      return std::nullopt;
   }
   return TraceRule{ std::string( pattern ), *levels };
}

} // namespace

std::string
TraceLevels::text() const {
   std::string text;
   for ( U32 level = 0; level <= maxTraceLevel; ++level ) {
      if ( !has( level ) ) {
         continue;
      }
      U32 high = level;
      while ( has( high + 1 ) ) {
         ++high;
      }
      text += ( text.empty() ? "" : "+" ) + std::to_string( level );
      if ( high > level ) {
         text += "-" + std::to_string( high );
      }
      level = high;
   }
   return text.empty() ? "none" : text;
}

bool
traceGlobMatches( std::string_view pattern, std::string_view name ) {
   size_t p = 0, n = 0;
   size_t starP = std::string_view::npos, starN = 0;
   while ( n < name.size() ) {
      if ( p < pattern.size() && ( pattern[ p ] == '?' || pattern[ p ] == name[ n ] ) ) {
         ++p;
         ++n;
      } else if ( p < pattern.size() && pattern[ p ] == '*' ) {
         starP = p++;
         starN = n;
      } else if ( starP != std::string_view::npos ) {
         // Let the last star swallow one more character and retry.
         p = starP + 1;
         n = ++starN;
      } else {
         return false;
      }
   }
   while ( p < pattern.size() && pattern[ p ] == '*' ) {
      ++p;
   }
   return p == pattern.size();
}

std::vector< std::string >
traceConfigIs( std::string_view config ) {
   std::vector< std::string > errors;
   while ( true ) {
      const size_t comma = config.find( ',' );
      const std::string_view item = trimmed( config.substr( 0, comma ) );
      std::string error;
      if ( !item.empty() ) {
         if ( auto rule = parseItem( item, error ) ) {
            traceLevelsIs( rule->pattern, rule->levels );
         } else {
            errors.push_back( "ignoring \"" + std::string( item ) + "\": " + error );
         }
      }
      if ( comma == std::string_view::npos ) {
         break;
      }
      config.remove_prefix( comma + 1 );
   }
   return errors;
}

void
traceConfigFromEnvironment() {
   const char * config = std::getenv( "TESSEL_TRACE" );
   if ( config == nullptr ) {
      return;
   }
   for ( const std::string & error : traceConfigIs( config ) ) {
      std::fprintf( stderr, "TESSEL_TRACE: %s\n", error.c_str() );
   }
}

} // namespace FastLog
