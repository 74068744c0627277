// Which trace levels are on, per channel.
//
// Configuration is an ordered list of rules (channel glob, level set). A
// channel's levels are those of the last rule whose pattern matches its
// name; with no matching rule every level is off. Rules apply to channels
// registered before and after them alike.
//
// At start the library reads the environment variable TESSEL_TRACE:
//
//   TESSEL_TRACE = item { "," item }
//   item         = pattern [ "/" levels ]       no levels: all of 0-9
//   pattern      = channel name; "*" matches any run of characters,
//                  "?" any one character
//   levels       = "none" | range { "+" range }
//   range        = digit [ "-" digit ]          e.g. 4, 0-2, 0-2+7
//
// e.g. TESSEL_TRACE="bcmFpCmd/4,Tessel*/0-9,TesselTcamShow/none". Blanks
// around items are ignored, empty items too. A bad item is reported on
// standard error ("TESSEL_TRACE: ignoring ...") and skipped; the other
// items still apply.
//
// All functions here are thread-safe.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/kiln/Assert.h"
#include "platform/kiln/Types.h"

namespace FastLog {

constexpr U32 maxTraceLevel = 9;

// A set of trace levels 0-9, held as a bit mask (bit n: level n).
class TraceLevels {
 public:
   constexpr TraceLevels() = default;
   static constexpr TraceLevels none() { return TraceLevels(); }
   static constexpr TraceLevels all() { return range( 0, maxTraceLevel ); }
   static constexpr TraceLevels only( U32 level ) { return range( level, level ); }
   // Levels 0 up to and including `level`.
   static constexpr TraceLevels upTo( U32 level ) { return range( 0, level ); }
   static constexpr TraceLevels
   range( U32 low, U32 high ) {
      KILN_ASSERT( low <= high && high <= maxTraceLevel );
      return TraceLevels( ( ( 2u << high ) - 1 ) & ~( ( 1u << low ) - 1 ) );
   }
   static constexpr TraceLevels
   fromMask( U32 mask ) {
      KILN_ASSERT( mask < ( 2u << maxTraceLevel ) );
      return TraceLevels( mask );
   }

   constexpr U32 mask() const { return mask_; }
   constexpr bool has( U32 level ) const { return level <= maxTraceLevel && ( mask_ >> level ) & 1; }
   constexpr TraceLevels operator|( TraceLevels other ) const {
      return TraceLevels( mask_ | other.mask_ );
   }
   constexpr bool operator==( const TraceLevels & ) const = default;

   // The set in configuration syntax: "none", "4", "0-9", "0-2+7".
   std::string text() const;

 private:
   constexpr explicit TraceLevels( U32 mask ) : mask_( mask ) {}
   U32 mask_ = 0;
};

struct TraceRule {
   std::string pattern;
   TraceLevels levels;
   bool operator==( const TraceRule & ) const = default;
};

// Adds a rule after all others. An earlier rule with the same pattern is
// dropped, as the new one overrides it everywhere. `pattern` must not be empty.
void traceLevelsIs( std::string_view pattern, TraceLevels levels );

// Applies a configuration text (syntax above) item by item. Returns one
// message per bad item, e.g. `ignoring "bcmFpCmd/12": level 12 is not in
// 0-9`; the good items are applied even when others are bad.
std::vector< std::string > traceConfigIs( std::string_view config );

// Applies TESSEL_TRACE if set, reporting bad items on standard error. The
// library does this once when it is loaded.
void traceConfigFromEnvironment();

// Drops every rule: all channels off.
void traceLevelsReset();

// The levels a channel of this name has (or would have, if not registered).
TraceLevels traceLevels( std::string_view channel );

// The rules in force, oldest first, and replacing them all at once.
std::vector< TraceRule > traceRules();
void traceRulesIs( std::vector< TraceRule > rules );

// Whether `name` matches the glob `pattern` ("*" any run, "?" one character).
bool traceGlobMatches( std::string_view pattern, std::string_view name );

// For tests: adds a rule for its lifetime, then puts back the rules that
// were in force before it.
class TraceLevelsScope {
 public:
   TraceLevelsScope( std::string_view pattern, TraceLevels levels );
   ~TraceLevelsScope();
   TraceLevelsScope( const TraceLevelsScope & ) = delete;
   TraceLevelsScope & operator=( const TraceLevelsScope & ) = delete;

 private:
   std::vector< TraceRule > saved_;
};

} // namespace FastLog
