#include "platform/vault/VaultKeyIndex.h"

#include <algorithm>

namespace Vault {

U32
KeyIndex::home( U32 key ) const {
   // Fibonacci hashing: the high bits of the product mix every key bit.
   return shift_ >= 32 ? 0 : ( key * 2654435769u ) >> shift_;
}

U32
KeyIndex::position( U32 key ) const {
   const U32 mask = static_cast< U32 >( buckets_.size() ) - 1;
   U32 at = home( key );
   while ( buckets_[ at ].slot != none && buckets_[ at ].key != key ) {
      at = ( at + 1 ) & mask;
   }
   return at;
}

U32
KeyIndex::find( U32 key ) const {
   return buckets_.empty() ? none : buckets_[ position( key ) ].slot;
}

void
KeyIndex::set( U32 key, U32 slot ) {
   if ( ( size_ + 1 ) * 2 > buckets_.size() ) {
      rehash( std::max< U32 >( 16, static_cast< U32 >( buckets_.size() ) * 2 ) );
   }
   Bucket & bucket = buckets_[ position( key ) ];
   size_ += bucket.slot == none ? 1 : 0;
   bucket = Bucket{ key, slot };
}

bool
KeyIndex::erase( U32 key ) {
   if ( buckets_.empty() ) {
      return false;
   }
   const U32 mask = static_cast< U32 >( buckets_.size() ) - 1;
   U32 hole = position( key );
   if ( buckets_[ hole ].slot == none ) {
      return false;
   }
   // Pull back every later entry of the run that may live in the hole.
   for ( U32 next = ( hole + 1 ) & mask; buckets_[ next ].slot != none;
         next = ( next + 1 ) & mask ) {
      U32 distanceToHole = ( next - hole ) & mask;
      U32 distanceFromHome = ( next - home( buckets_[ next ].key ) ) & mask;
      if ( distanceFromHome >= distanceToHole ) {
         buckets_[ hole ] = buckets_[ next ];
         hole = next;
      }
   }
   buckets_[ hole ].slot = none;
   --size_;
   return true;
}

void
KeyIndex::clear() {
   std::fill( buckets_.begin(), buckets_.end(), Bucket{ 0, none } );
   size_ = 0;
}

void
KeyIndex::rehash( U32 bucketCount ) {
   std::vector< Bucket > old( bucketCount, Bucket{ 0, none } );
   old.swap( buckets_ );
   shift_ = 32;
   for ( U32 count = bucketCount; count > 1; count >>= 1 ) {
      --shift_;
   }
   size_ = 0;
   for ( const Bucket & bucket : old ) {
      if ( bucket.slot != none ) {
         set( bucket.key, bucket.slot );
      }
   }
}

} // namespace Vault
