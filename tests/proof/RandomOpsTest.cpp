// Seeded random operation sequences on a two-unit agent: the library's
// bookkeeping matches the chip after every step and nothing is left at the
// end. TESSEL_PROOF_SEED=<n> repeats one run; TESSEL_PROOF_STEPS=<n> sets
// its length.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>

#include "tests/proof/RandomOps.h"

namespace Proof {
namespace {

U64
envOr( const char * name, U64 fallback ) {
   const char * text = std::getenv( name );
   return text ? std::strtoull( text, nullptr, 0 ) : fallback;
}

void
runSeed( const std::vector< std::string > & profiles, U64 seed, U32 steps ) {
   SCOPED_TRACE( "TESSEL_PROOF_SEED=" + std::to_string( seed ) );
   RandomOps ops( profiles );
   SeededChoices choices( seed );
   std::string last;
   for ( U32 n = 0; n < steps; ++n ) {
      last = ops.step( choices );
      std::string violations = ops.check();
      ASSERT_EQ( "", violations ) << "step " << n << ": " << last;
   }
   EXPECT_EQ( "", ops.finish() );
}

TEST( RandomOps, BookkeepingMatchesTheChipAfterEveryStep ) {
#if defined( __SANITIZE_ADDRESS__ )
   U32 steps = U32( envOr( "TESSEL_PROOF_STEPS", 300 ) );
#else
   U32 steps = U32( envOr( "TESSEL_PROOF_STEPS", 1000 ) );
#endif
   if ( const char * seed = std::getenv( "TESSEL_PROOF_SEED" ) ) {
      runSeed( { "thx", "single" }, std::strtoull( seed, nullptr, 0 ), steps );
      runSeed( { "th3", "trident3" }, std::strtoull( seed, nullptr, 0 ), steps );
      return;
   }
   for ( U64 seed = 1; seed <= 4 && !HasFatalFailure(); ++seed ) {
      runSeed( { "thx", "single" }, seed, steps );
      runSeed( { "th3", "trident3" }, seed, steps );
   }
}

} // namespace
} // namespace Proof
