// Time stamps shared by trace lines, FastLog records and log messages, so
// that lines from the three streams can be put side by side.
#pragma once

#include <string>

#include "platform/kiln/Types.h"

namespace FastLog {

// Wall-clock time in nanoseconds since the epoch. Cheap (no system call on
// a machine with a stable time-stamp counter), so every record takes one.
U64 nowNanos();

// "YYYY-MM-DD HH:MM:SS.uuuuuu" in local time, microseconds truncated.
std::string timestampText( U64 nanos );

} // namespace FastLog
