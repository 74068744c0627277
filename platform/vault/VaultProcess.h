// Identity of a writer process, as kept in segment headers.
//
// A pid alone is not enough to tell that the agent which wrote a segment is
// still running: pids are reused. The start time (clock ticks after boot, as
// the kernel reports it in /proc/<pid>/stat) pins the one process.
#pragma once

#include "platform/kiln/Types.h"

namespace Vault {

struct ProcessIdentity {
   U32 pid = 0;
   U64 startTime = 0;  // 0 when unknown
};

// The calling process.
ProcessIdentity selfIdentity();

// Start time of a running process, or 0 when it does not exist or /proc
// cannot tell.
U64 processStartTime( U32 pid );

// True while the process exists (a zombie counts as exited) and, when both
// start times are known, is the same process. Pid 0 is never alive.
bool isAlive( const ProcessIdentity & identity );

// Only asks the kernel whether the pid exists (no /proc read): cheap enough
// for every table read once the full check has passed.
bool pidExists( U32 pid );

} // namespace Vault
