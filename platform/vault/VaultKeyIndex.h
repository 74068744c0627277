// The writer's private index from record key to slot.
//
// Open addressing with linear probing over a power-of-two array kept at most
// half full. Removal shifts the following entries back instead of leaving
// tombstones, and clear() keeps the array: a dump that empties and refills a
// table every request allocates nothing.
#pragma once

#include <vector>

#include "platform/kiln/Types.h"

namespace Vault {

class KeyIndex {
 public:
   static constexpr U32 none = 0xFFFFFFFF;

   // The slot of the key, or none.
   U32 find( U32 key ) const;

   // Sets the key's slot, adding the key when absent. `slot` must not be none.
   void set( U32 key, U32 slot );

   // False when the key was absent.
   bool erase( U32 key );

   void clear();
   U32 size() const { return size_; }

 private:
   struct Bucket {
      U32 key;
      U32 slot;  // none: empty
   };

   U32 home( U32 key ) const;
   U32 position( U32 key ) const;  // the key's bucket, or the empty one ending its run
   void rehash( U32 bucketCount );

   std::vector< Bucket > buckets_;
   U32 size_ = 0;
   U32 shift_ = 32;
};

} // namespace Vault
