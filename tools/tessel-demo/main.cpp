// tessel-demo: exercises what the system offers so far, end to end, and
// prints what it sees. It grows with the system until tessel-agent takes over.
#include <cstdio>

#include "sdk/api/error.h"

int
main() {
   std::printf( "Tessel TCAM manager demo\n" );
   std::printf( "SDK result codes:\n" );
   for ( int rc = BCM_E_NONE; rc > BCM_E_LIMIT; --rc ) {
      std::printf( "  %4d %s\n", rc, bcm_errmsg( rc ) );
   }
   return 0;
}
