// Atomic access to words in shared memory.
//
// The words live in mappings shared with other processes, some of them
// read-only, so they are plain U32 fields reached through the compiler's
// atomic builtins rather than std::atomic objects (which cannot be placed
// over memory another process laid out, nor loaded through a const pointer).
#pragma once

#include <atomic>

#include "platform/kiln/Types.h"

namespace Vault {

inline U32
loadAcquire( const U32 * word ) {
   return __atomic_load_n( word, __ATOMIC_ACQUIRE );
}

inline U32
loadRelaxed( const U32 * word ) {
   return __atomic_load_n( word, __ATOMIC_RELAXED );
}

inline void
storeRelease( U32 * word, U32 value ) {
   __atomic_store_n( word, value, __ATOMIC_RELEASE );
}

inline void
storeRelaxed( U32 * word, U32 value ) {
   __atomic_store_n( word, value, __ATOMIC_RELAXED );
}

// True when *word held expected and now holds desired.
inline bool
compareExchange( U32 * word, U32 expected, U32 desired ) {
   return __atomic_compare_exchange_n( word, &expected, desired, false, __ATOMIC_ACQ_REL,
                                       __ATOMIC_ACQUIRE );
}

inline U32
fetchAdd( U32 * word, U32 value ) {
   return __atomic_fetch_add( word, value, __ATOMIC_ACQ_REL );
}

} // namespace Vault
