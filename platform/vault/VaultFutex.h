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

} // namespace Vault
