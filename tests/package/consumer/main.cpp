// An outside project built against the installed package.
#include <cstdio>

#include "sdk/api/error.h"

int
main() {
   std::printf( "consumer ok: %s\n", bcm_errmsg( BCM_E_NONE ) );
   return 0;
}
