// What the library must do when one SDK call fails, by call site: carry on
// (tracing the failure, answering "none" or false, or ignoring a result it
// does not check), or stop with its fatal text. The rules name the
// operations whose failures are fatal; every other call carries on.
#pragma once

#include <string>

#include "tests/proof/SiteRecorder.h"

namespace Proof {

struct Expected {
   bool fatal = false;
   // The line the process dies with: the SDK report
   // "<file>:<line> <call text> API ERROR:<error string> (<code>)" or an
   // assertion "Assertion '<text>' failed.".
   std::string death;
};

// The call failing with `rc`. Ranges made in the phases "start-up" and
// "reserve" are at-beginning ranges; later ones are the chunks of
// `chunkGroup`.
Expected expectedOutcome( const SiteCall & call, int rc, U32 chunkGroup );

// Whether a failure of the call may stop the program later although the
// call itself carries on: it gives something back (destroy, detach,
// delete, remove, unlock) and what stays in the chip may make a later
// release fail, or it makes a compression group that class ids need.
bool givesBack( const SiteCall & call );

} // namespace Proof
