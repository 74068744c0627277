// Parsing tessel-show's arguments.
#include "tools/tessel-show/Options.h"

#include <cctype>
#include <charconv>
#include <cstdlib>
#include <set>
#include <vector>

#include "export/TesselTcamVaultTables.h"
#include "platform/vault/VaultNames.h"

namespace TesselShow {

namespace {

const std::set< std::string > commands = { "usage",  "summary",  "raw",     "entry",  "reservations",
                                           "groups", "features", "entries", "stages", "map" };

// Decimal, or hexadecimal with 0x.
std::optional< U32 >
number( const std::string & text ) {
   bool hex = text.size() > 2 && text[ 0 ] == '0' && ( text[ 1 ] == 'x' || text[ 1 ] == 'X' );
   const char * begin = text.data() + ( hex ? 2 : 0 );
   const char * end = text.data() + text.size();
   U32 value = 0;
   auto [ stop, ec ] = std::from_chars( begin, end, value, hex ? 16 : 10 );
   if ( begin == end || ec != std::errc() || stop != end ) {
      return std::nullopt;
   }
   return value;
}

// A stage by number or by name (IFP, VFP, EFP in any case).
std::optional< U32 >
stageNumber( const std::string & text ) {
   static const char * const names[] = { "IFP", "VFP", "EFP" };
   std::string upper = text;
   for ( char & c : upper ) {
      c = static_cast< char >( std::toupper( static_cast< unsigned char >( c ) ) );
   }
   for ( U32 i = 0; i < 3; ++i ) {
      if ( upper == names[ i ] ) {
         return i;
      }
   }
   return number( text );
}

class ArgumentReader {
 public:
   ArgumentReader( int argc, char ** argv ) : args_( argv + 1, argv + argc ) {}
   bool done() const { return next_ >= args_.size(); }
   std::string take() { return args_[ next_++ ]; }
   // The value of an option: "--x=value" or the next argument.
   bool
   value( const std::string & arg, const std::string & name, std::string & out ) {
      if ( arg.rfind( name + "=", 0 ) == 0 ) {
         out = arg.substr( name.size() + 1 );
         return true;
      }
      if ( arg != name || done() ) {
         return false;
      }
      out = take();
      return true;
   }

 private:
   std::vector< std::string > args_;
   size_t next_ = 0;
};

bool
numberOption( const std::string & name, const std::string & text, std::optional< U32 > & out,
              std::string & error, bool stage = false ) {
   out = stage ? stageNumber( text ) : number( text );
   if ( !out ) {
      error = "bad value for " + name + ": '" + text + "'";
   }
   return out.has_value();
}

// Options taking a value; false when `arg` is none of them.
bool
valueOption( ArgumentReader & r, const std::string & arg, Options & o, std::string & error,
             bool & handled ) {
   std::string v;
   handled = true;
   if ( r.value( arg, "--unit", v ) ) {
      return numberOption( "--unit", v, o.unit, error );
   }
   if ( r.value( arg, "--stage", v ) ) {
      return numberOption( "--stage", v, o.stage, error, true );
   }
   if ( r.value( arg, "--pipe", v ) ) {
      return v == "all" ? ( o.pipe = Tessel::reportAllPipes, true )
                        : numberOption( "--pipe", v, o.pipe, error );
   }
   if ( r.value( arg, "--prefix", v ) ) {
      o.prefix = v;
      return true;
   }
   if ( r.value( arg, "--socket", v ) ) {
      o.socketPath = v;
      return true;
   }
   if ( r.value( arg, "--svg", v ) ) {
      o.svgFile = v;
      return !v.empty() || ( error = "--svg needs a file name", false );
   }
   if ( r.value( arg, "--threshold", v ) ) {
      std::optional< U32 > percent;
      if ( !numberOption( "--threshold", v, percent, error ) ) {
         return false;
      }
      o.thresholdPercent = *percent;
      return *percent <= 100 || ( error = "--threshold is a percentage, 0 to 100", false );
   }
   if ( r.value( arg, "--timeout", v ) ) {
      std::optional< U32 > ms;
      if ( !numberOption( "--timeout", v, ms, error ) ) {
         return false;
      }
      o.timeoutMs = *ms;
      return true;
   }
   handled = false;
   return true;
}

bool
flagOption( const std::string & arg, Options & o ) {
   if ( arg == "--json" ) {
      o.json = true;
   } else if ( arg == "--help" || arg == "-h" ) {
      o.help = true;
   } else if ( arg == "--colour" || arg == "--color" ) {
      o.colour = Colour::always;
   } else if ( arg == "--no-colour" || arg == "--no-color" ) {
      o.colour = Colour::never;
   } else {
      return false;
   }
   return true;
}

// The words that are not options: "tcam", the command and its operands.
bool
positional( const std::vector< std::string > & words, Options & o, std::string & error ) {
   if ( words.size() == 1 && words[ 0 ] == "capacity" ) {
      o.command = "capacity";
      return true;
   }
   if ( words.empty() || words[ 0 ] != "tcam" ) {
      error = words.empty() ? "no command given" : "unknown command '" + words[ 0 ] + "'";
      return false;
   }
   if ( words.size() < 2 || !commands.count( words[ 1 ] ) ) {
      error = words.size() < 2 ? "tcam needs a command" : "unknown command 'tcam " + words[ 1 ] + "'";
      return false;
   }
   o.command = words[ 1 ];
   std::vector< std::string > rest( words.begin() + 2, words.end() );
   if ( o.command == "usage" && rest.size() == 1 && rest[ 0 ] == "detail" ) {
      o.detail = true;
      return true;
   }
   if ( o.command == "entry" ) {
      std::optional< U32 > id = rest.size() == 1 ? number( rest[ 0 ] ) : std::nullopt;
      if ( !id ) {
         error = "tcam entry needs one entry id (decimal or 0x hex)";
         return false;
      }
      o.entryId = *id;
      return true;
   }
   if ( !rest.empty() ) {
      error = "unexpected '" + rest[ 0 ] + "' after 'tcam " + o.command + "'";
      return false;
   }
   return true;
}

} // namespace

bool
parseOptions( int argc, char ** argv, Options & o, std::string & error ) {
   ArgumentReader r( argc, argv );
   std::vector< std::string > words;
   while ( !r.done() ) {
      std::string arg = r.take();
      bool handled = false;
      if ( !valueOption( r, arg, o, error, handled ) ) {
         return false;
      }
      if ( handled || flagOption( arg, o ) ) {
         continue;
      }
      if ( arg.size() > 1 && arg[ 0 ] == '-' ) {
         error = "unknown option '" + arg + "'";
         return false;
      }
      words.push_back( arg );
   }
   if ( o.prefix.empty() ) {
      const char * env = std::getenv( "TESSEL_PREFIX" );
      o.prefix = env && *env ? env : Tessel::defaultAgentPrefix;
   }
   if ( o.socketPath.empty() ) {
      o.socketPath = Vault::defaultReportSocketPath( o.prefix );
   }
   return o.help || positional( words, o, error );
}

const char *
helpText() {
   return R"(Usage: tessel-show [options] tcam <command>
       tessel-show [options] capacity [--unit N] [--threshold PCT]

Shows the TCAM of a running agent.

Text reports (written by the agent):
  tcam usage [detail] [--unit N] [--pipe P]   groups, their use and room; detail adds entries
  tcam summary [--unit N]                     slices (banks) held per reservation
  tcam raw [--unit N]                         slices per stage as the chip reports them
  tcam entry ID [--unit N]                    one entry decoded (ID decimal or 0x hex)
  tcam reservations                           every reservation of the catalogue
Tables (from shared memory):
  tcam stages [--unit N]                      stages: pipe mode, pipes, TCAM size
  tcam groups [--unit N] [--stage S] [--pipe P]     groups of a stage and pipe
  tcam features [--unit N] [--stage S] [--pipe P]   reservations using them
  tcam entries [--unit N] [--stage S] [--pipe P]    entries with feature, group and hits
  tcam map [--unit N] [--stage S] [--pipe P] [--svg FILE]
                                              slices with the group holding each and how
                                              full it is (every unit, stage and pipe unless
                                              narrowed)
Capacity (from the platform's capacity tables):
  capacity [--unit N] [--threshold PCT]       used, free and total entries per unit, stage
                                              and slice; a warning for every stage used
                                              above PCT percent (default 90)

Options:
  --unit N        unit (default: every unit for usage, summary, raw and map; else 0)
  --stage S       stage: 0/IFP, 1/VFP, 2/EFP (default 0; map: every stage)
  --pipe P        pipe (default 0; usage and map: every pipe; usage takes 'all')
  --json          machine-readable output
  --svg FILE      map: also write an SVG picture to FILE
  --colour, --no-colour   map: colours on or off (default: on for a terminal)
  --prefix NAME   the agent's prefix (default $TESSEL_PREFIX, else "tessel")
  --socket PATH   the agent's report socket (default from the prefix)
  --timeout MS    how long to wait for the agent (default 5000)
  --threshold PCT capacity: warn above this use (0 to 100, default 90)
  -h, --help      this text

Exit codes:
  0 success              2 bad command line          3 no agent running
  4 agent did not answer 5 table unreadable          6 no such unit, stage or pipe
  7 permission refused   8 the agent failed to serve the request
  9 an output file could not be written
)";
}

} // namespace TesselShow
