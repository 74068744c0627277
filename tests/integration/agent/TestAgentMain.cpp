// tessel-test-agent: the small agent of TestAgent.h as a process, for the
// integration test and the demonstration. Prints "ready" on standard output
// once it serves, and cleans up on SIGTERM or SIGINT.
//
//   tessel-test-agent --prefix NAME [--socket PATH] [--profiles thx,single]
//                     [--entries N] [--switch-name NAME]
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tests/integration/agent/TestAgent.h"

namespace {

Kiln::ActivityLoop * runningLoop = nullptr;

void
stop( int ) {
   if ( runningLoop ) {
      runningLoop->stopFromSignal();
   }
}

std::vector< std::string >
split( const std::string & text ) {
   std::vector< std::string > parts;
   size_t start = 0;
   for ( size_t end; ( end = text.find( ',', start ) ) != std::string::npos; start = end + 1 ) {
      parts.push_back( text.substr( start, end - start ) );
   }
   parts.push_back( text.substr( start ) );
   return parts;
}

bool
parse( int argc, char ** argv, TestAgent::Settings & settings ) {
   for ( int i = 1; i + 1 < argc; i += 2 ) {
      std::string option = argv[ i ];
      std::string value = argv[ i + 1 ];
      if ( option == "--prefix" ) {
         settings.prefix = value;
      } else if ( option == "--socket" ) {
         settings.socketPath = value;
      } else if ( option == "--profiles" ) {
         settings.profiles = split( value );
      } else if ( option == "--entries" ) {
         settings.entries = U32( std::strtoul( value.c_str(), nullptr, 10 ) );
      } else if ( option == "--switch-name" ) {
         settings.switchName = value;
      } else {
         return false;
      }
   }
   return argc % 2 == 1 && !settings.prefix.empty();
}

} // namespace

int
main( int argc, char ** argv ) {
   TestAgent::Settings settings;
   if ( !parse( argc, argv, settings ) ) {
      std::fprintf( stderr, "usage: %s --prefix NAME [--socket PATH] [--profiles a,b] "
                            "[--entries N] [--switch-name NAME]\n", argv[ 0 ] );
      return 2;
   }
   try {
      Kiln::ActivityLockGuard activity;
      TestAgent::Agent agent( settings );
      runningLoop = &agent.loop();
      std::signal( SIGTERM, stop );
      std::signal( SIGINT, stop );
      std::printf( "ready\n" );
      std::fflush( stdout );
      agent.loop().run();
      runningLoop = nullptr;
   } catch ( const std::exception & e ) {
      std::fprintf( stderr, "tessel-test-agent: %s\n", e.what() );
      return 1;
   }
   return 0;
}
