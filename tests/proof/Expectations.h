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

// Hardware groups whose entries the scenario takes as whole ranges after
// start-up (during start-up every range is an at-beginning one).
struct RangeGroups {
   U32 chunk;
   U32 atBeginning;
};

// The call failing with `rc`.
Expected expectedOutcome( const SiteCall & call, int rc, const RangeGroups & ranges );

// Whether the call gives something back (destroy, detach, delete, remove,
// unlock): when it fails, what it would have given back stays in the chip.
bool givesBack( const SiteCall & call );

// `text` as a regular expression matching it literally.
std::string literalRegex( const std::string & text );

} // namespace Proof
