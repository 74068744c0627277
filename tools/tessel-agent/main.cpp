// tessel-agent: the simulated forwarding agent (docs/architecture.md,
// "tools"). Options: tools/tessel-agent/AgentOptions.cpp or --help.
#include <cstdio>

#include "tools/tessel-agent/AgentRun.h"

int
main( int argc, char ** argv ) {
   using namespace TesselAgent;
   AgentOptions options;
   std::string error;
   if ( !parseAgentOptions( argc, argv, options, error ) ) {
      std::fprintf( stderr, "tessel-agent: %s\nTry 'tessel-agent --help'.\n", error.c_str() );
      return exitUsage;
   }
   if ( options.help ) {
      std::fputs( agentHelpText(), stdout );
      return exitOk;
   }
   return runAgent( options );
}
