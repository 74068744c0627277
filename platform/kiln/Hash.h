// Hash mixing for value types used as keys of hashed collections.
//
//    size_t operator()( const Key & k ) const {
//       return Kiln::hashCombine( Kiln::hashMix( k.unit ), k.group );
//    }
#pragma once

#include "platform/kiln/Types.h"

#include <cstddef>
#include <functional>
#include <type_traits>

namespace Kiln {

// Spreads the bits of an integer over the whole word, so that small, dense
// keys (units, ids) do not land in neighbouring buckets. 64-bit values are
// folded to the word size on a 32-bit host.
template< typename T >
   requires std::is_integral_v< T > || std::is_enum_v< T >
size_t
hashMix( T value ) noexcept {
   if constexpr ( sizeof( T ) <= sizeof( U32 ) ) {
      U32 v = static_cast< U32 >( value );
      v ^= v >> 16;
      v *= 0x7feb352dU;
      v ^= v >> 15;
      v *= 0x846ca68bU;
      v ^= v >> 16;
      return v;
   } else {
      U64 v = static_cast< U64 >( value );
      v ^= v >> 30;
      v *= 0xbf58476d1ce4e5b9ULL;
      v ^= v >> 27;
      v *= 0x94d049bb133111ebULL;
      v ^= v >> 31;
      return static_cast< size_t >( v ^ ( v >> 32 ) );
   }
}

// Folds the hash of `value` into `seed`; apply field by field.
template< typename T >
size_t
hashCombine( size_t seed, const T & value ) noexcept {
   size_t h = std::hash< T >()( value );
   return seed ^ ( h + 0x9e3779b9U + ( seed << 6 ) + ( seed >> 2 ) );
}

} // namespace Kiln
