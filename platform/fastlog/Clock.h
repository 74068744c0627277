// Time stamps shared by trace lines, FastLog records and log messages, so
// that lines from the three streams can be put side by side.
#pragma once

#include <string>

#include "platform/kiln/Types.h"

namespace FastLog {

// Wall-clock time in nanoseconds since the epoch. Where the kernel keeps
// time with the CPU's time-stamp counter, this reads the counter and scales
// it, re-taking the scale from the system clock every 100 ms or so; it then
// follows the system clock to within a few microseconds and costs a few
// nanoseconds. Elsewhere it asks the system clock each time.
U64 nowNanos();

// The system clock itself (CLOCK_REALTIME), for comparison.
U64 systemNanos();

// "YYYY-MM-DD HH:MM:SS.uuuuuu" in local time, microseconds truncated.
std::string timestampText( U64 nanos );

} // namespace FastLog
