// libFuzzer target: the random operation driver of tests/proof run from the
// fuzzer's bytes. The first byte picks the pair of chip profiles, the rest
// choose the operations; the process aborts on the first disagreement
// between the library's bookkeeping and the chip, or on a leak.
#include <cstdio>
#include <cstdlib>

#include "tests/proof/RandomOps.h"

namespace {

void
failIf( const std::string & violations, const std::string & step ) {
   if ( !violations.empty() ) {
      std::fprintf( stderr, "after %s: %s\n", step.c_str(), violations.c_str() );
      std::abort();
   }
}

} // namespace

extern "C" int
LLVMFuzzerTestOneInput( const U8 * data, size_t size ) {
   static const std::vector< std::vector< std::string > > boxes = {
      { "thx", "single" }, { "th3", "trident3" }, { "single", "th3" }, { "trident3", "thx" } };
   if ( size < 2 || size > 4096 ) {
      return 0;
   }
   Proof::RandomOps ops( boxes[ data[ 0 ] % boxes.size() ] );
   Proof::ByteChoices choices( data + 1, size - 1 );
   while ( !choices.exhausted() ) {
      std::string step = ops.step( choices );
      failIf( ops.check(), step );
   }
   failIf( ops.finish(), "the end" );
   return 0;
}
