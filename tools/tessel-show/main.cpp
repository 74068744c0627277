// tessel-show: the command line of the TCAM manager. It runs in its own
// process and reaches the agent only through shared memory and the report
// socket, so it links the shared-memory layer and the table records'
// header, nothing of the agent's library.
#include <cstdio>
#include <signal.h>

#include "tools/tessel-show/Commands.h"

namespace TesselShow {

int
fail( const Failure & failure ) {
   std::fflush( stdout );
   std::fprintf( stderr, "tessel-show: %s\n", failure.message.c_str() );
   return failure.code;
}

Outcome
unitsToShow( AgentLink & link, const Options & o, bool allByDefault, std::vector< U32 > & units ) {
   if ( o.unit || !allByDefault ) {
      units = { o.unit.value_or( 0 ) };
      return std::nullopt;
   }
   return link.units( units );
}

namespace {

int
run( const Options & o ) {
   if ( o.command == "capacity" ) {
      return runCapacity( o );
   }
   AgentLink link( o );
   if ( o.command == "groups" || o.command == "features" || o.command == "entries" ||
        o.command == "stages" ) {
      return runTable( link, o );
   }
   if ( o.command == "map" ) {
      return runMap( link, o );
   }
   return runReport( link, o );
}

} // namespace

} // namespace TesselShow

int
main( int argc, char ** argv ) {
   using namespace TesselShow;
   // A reader that goes away (tessel-show ... | head) ends us quietly.
   signal( SIGPIPE, SIG_DFL );
   Options options;
   std::string error;
   if ( !parseOptions( argc, argv, options, error ) ) {
      std::fprintf( stderr, "tessel-show: %s\nTry 'tessel-show --help'.\n", error.c_str() );
      return exitUsage;
   }
   if ( options.help ) {
      std::fputs( helpText(), stdout );
      return exitOk;
   }
   return run( options );
}
