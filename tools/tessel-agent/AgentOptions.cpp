#include "tools/tessel-agent/AgentOptions.h"

#include <functional>
#include <map>

#include "platform/fastlog/TraceConfig.h"
#include "platform/vault/VaultNames.h"
#include "sdk/model/Profile.h"

namespace TesselAgent {

namespace {

typedef std::function< void( AgentOptions &, const std::string & ) > Setter;

// Options that take a value, written "--name value" or "--name=value".
const std::map< std::string, Setter > &
valueOptions() {
   static const std::map< std::string, Setter > options = {
      { "--profile", []( AgentOptions & o, const std::string & v ) { o.profiles.push_back( v ); } },
      { "--workload", []( AgentOptions & o, const std::string & v ) { o.workload = v; } },
      { "--traffic", []( AgentOptions & o, const std::string & v ) { o.traffic = v; } },
      { "--prefix", []( AgentOptions & o, const std::string & v ) { o.prefix = v; } },
      { "--socket", []( AgentOptions & o, const std::string & v ) { o.socketPath = v; } },
      { "--trace", []( AgentOptions & o, const std::string & v ) { o.traces.push_back( v ); } },
      { "--trace-file", []( AgentOptions & o, const std::string & v ) { o.traceFile = v; } },
      { "--hits", []( AgentOptions & o, const std::string & v ) { o.hitsFile = v; } },
      { "--classbench-rules",
        []( AgentOptions & o, const std::string & v ) { o.classBenchRules = v; } },
      { "--classbench-trace",
        []( AgentOptions & o, const std::string & v ) { o.classBenchTrace = v; } },
   };
   return options;
}

// One argument (and the value after it); false with `error` set.
bool
takeArgument( int argc, char ** argv, int & i, AgentOptions & o, std::string & error ) {
   std::string arg = argv[ i ];
   if ( arg == "--once" || arg == "--help" || arg == "-h" ) {
      ( arg == "--once" ? o.once : o.help ) = true;
      return true;
   }
   std::string name = arg.substr( 0, arg.find( '=' ) );
   auto option = valueOptions().find( name );
   if ( option == valueOptions().end() ) {
      error = arg.rfind( "-", 0 ) == 0 ? "unknown option '" + arg + "'"
                                       : "unexpected argument '" + arg + "'";
      return false;
   }
   std::string value;
   if ( name.size() < arg.size() ) {
      value = arg.substr( name.size() + 1 );
   } else if ( i + 1 < argc ) {
      value = argv[ ++i ];
   } else {
      error = name + " needs a value";
      return false;
   }
   if ( value.empty() ) {
      error = name + " needs a value";
      return false;
   }
   option->second( o, value );
   return true;
}

bool
checkProfiles( const AgentOptions & o, std::string & error ) {
   for ( const std::string & profile : o.profiles ) {
      if ( !ChipModel::findProfile( profile ) ) {
         error = "unknown profile '" + profile + "' (known:";
         for ( const std::string & known : ChipModel::profileNames() ) {
            error += " " + known;
         }
         error += ")";
         return false;
      }
   }
   return true;
}

bool
checkTraces( const AgentOptions & o, std::string & error ) {
   for ( const std::string & trace : o.traces ) {
      std::vector< std::string > bad = FastLog::traceConfigIs( trace );
      if ( !bad.empty() ) {
         error = "--trace: " + bad.front();
         return false;
      }
   }
   return true;
}

// Options that only make sense with others.
bool
checkCombinations( const AgentOptions & o, std::string & error ) {
   if ( !o.classBenchTrace.empty() && o.classBenchRules.empty() ) {
      error = "--classbench-trace needs --classbench-rules";
   } else if ( !o.classBenchTrace.empty() && !o.traffic.empty() ) {
      error = "give --traffic or --classbench-trace, not both";
   } else if ( !o.hitsFile.empty() && o.traffic.empty() && o.classBenchTrace.empty() ) {
      error = "--hits needs --traffic or --classbench-trace";
   }
   return error.empty();
}

} // namespace

bool
parseAgentOptions( int argc, char ** argv, AgentOptions & o, std::string & error ) {
   for ( int i = 1; i < argc; ++i ) {
      if ( !takeArgument( argc, argv, i, o, error ) ) {
         return false;
      }
   }
   if ( o.help ) {
      return true;
   }
   if ( o.profiles.empty() ) {
      o.profiles = { "thx" };
   }
   Vault::Status prefix = Vault::checkPrefix( o.prefix );
   if ( !prefix.ok() ) {
      error = "--prefix: " + prefix.text();
      return false;
   }
   return checkProfiles( o, error ) && checkTraces( o, error ) && checkCombinations( o, error );
}

const char *
agentHelpText() {
   return R"(Usage: tessel-agent [options]

The simulated forwarding agent: a box of modelled switch chips with the TCAM
manager, started the way the agent starts it, running example features and
serving tessel-show until SIGINT or SIGTERM.

Box and start-up:
  --profile NAME          a unit of this chip profile (repeat for more units;
                          single, trident3, thx, th3; default: one thx unit)
  --prefix NAME           shared-memory prefix tessel-show finds the agent by
                          (default "tessel")
  --socket PATH           report socket (default from the prefix)

Features and traffic:
  --workload FILE         feature rules to load (see docs/feature-guide.md)
  --traffic FILE          packets to send after loading
  --classbench-rules FILE a ClassBench filter set as the ACL, in file order
  --classbench-trace FILE ClassBench headers, sent on pipe 0's first port
  --hits FILE             per packet, the index of the ACL rule it hit, or -1
  --once                  load, send, report, release and exit; no serving

Tracing:
  --trace CONFIG          trace levels, e.g. 'bcmFpCmd/4,Tessel*/0-9' (repeatable)
  --trace-file FILE       trace lines go to FILE instead of standard error

  -h, --help              this text

Exit codes: 0 done, 1 could not do what was asked, 2 wrong command line.
)";
}

} // namespace TesselAgent
