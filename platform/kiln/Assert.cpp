#include "platform/kiln/Assert.h"

#include <cstdio>
#include <cstdlib>

namespace Kiln {

void
assertionFailed( const char * text, const char * file, int line, const char * function ) {
   std::fprintf( stderr, "%s:%d: %s: Assertion '%s' failed.\n", file, line, function,
                 text );
   std::fflush( stderr );
   std::abort();
}

} // namespace Kiln
