// Waiting on a word of a shared mapping across processes. The futex calls
// are the shared (not process-private) kind: the waker is another process.
#pragma once

#include <chrono>
#include <climits>
#include <ctime>
#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "platform/kiln/Types.h"

namespace Vault {

// Sleeps while *word == expected, at most `timeout`; returns early on a wake,
// a signal or a changed word. The caller re-reads the word.
inline void
futexWait( U32 * word, U32 expected, std::chrono::nanoseconds timeout ) {
   timespec limit;
   limit.tv_sec = static_cast< time_t >( timeout.count() / 1000000000 );
   limit.tv_nsec = static_cast< long >( timeout.count() % 1000000000 );
#ifdef SYS_futex_time64
   // A 32-bit build with a 64-bit time_t needs the call that takes it.
   if constexpr ( sizeof( limit.tv_sec ) != sizeof( long ) ) {
      syscall( SYS_futex_time64, word, FUTEX_WAIT, expected, &limit, nullptr, 0 );
      return;
   }
#endif
   syscall( SYS_futex, word, FUTEX_WAIT, expected, &limit, nullptr, 0 );
}

inline void
futexWakeAll( U32 * word ) {
   syscall( SYS_futex, word, FUTEX_WAKE, INT_MAX, nullptr, nullptr, 0 );
}

// One step of a busy wait on memory another process writes: tells the
// processor so, which saves power and the sibling thread's share.
inline void
cpuRelax() {
#if defined( __x86_64__ ) || defined( __i386__ )
   __builtin_ia32_pause();
#endif
}

// Busy-waits, without a system call, until ready() holds or `until` has
// passed; true when ready. Cheaper than sleeping when the other process is
// about to write: a sleeper's wake-up can cost as much as the work awaited.
template< typename Ready >
bool
watchUntil( Ready && ready, std::chrono::steady_clock::time_point until ) {
   for ( U32 turn = 0;; ++turn ) {
      if ( ready() ) {
         return true;
      }
      cpuRelax();
      // The clock is read now and then: it costs more than a look at memory.
      if ( turn % 64 == 63 && std::chrono::steady_clock::now() >= until ) {
         return false;
      }
   }
}

} // namespace Vault
