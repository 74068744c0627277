#include "sdk/model/PriorityArray.h"

#include "platform/kiln/Assert.h"

namespace ChipModel {

bool
PriorityArray::Rank::operator<( const Rank & other ) const {
   if ( priority != other.priority ) {
      return priority > other.priority;
   }
   return seq < other.seq;
}

PriorityArray::PriorityArray( U32 capacity ) : slots_( capacity, freeSlot ) {}

std::optional< U32 >
PriorityArray::slotOf( U32 key ) const {
   auto it = items_.find( key );
   if ( it == items_.end() ) {
      return std::nullopt;
   }
   return it->second.slot;
}

std::optional< U32 >
PriorityArray::keyAt( U32 slot ) const {
   if ( slot >= slots_.size() || slots_[ slot ] == freeSlot ) {
      return std::nullopt;
   }
   return static_cast< U32 >( slots_[ slot ] );
}

S64
PriorityArray::priorityOf( U32 key ) const {
   auto it = items_.find( key );
   KILN_ASSERT( it != items_.end() );
   return it->second.rank.priority;
}

std::pair< S64, S64 >
PriorityArray::gapFor( const Rank & rank ) const {
   auto next = order_.lower_bound( rank );
   S64 right = static_cast< S64 >( slots_.size() );
   if ( next != order_.end() ) {
      right = items_.at( next->key ).slot;
   }
   S64 left = -1;
   if ( next != order_.begin() ) {
      left = items_.at( std::prev( next )->key ).slot;
   }
   return { left, right };
}

U32
PriorityArray::insert( U32 key, S64 priority, Mover & mover ) {
   KILN_ASSERT( !full() );
   KILN_ASSERT( !contains( key ) );
   Rank rank{ priority, nextSeq_++, key };
   auto [ left, right ] = gapFor( rank );
   items_[ key ] = Item{ rank, 0 };
   order_.insert( rank );
   return place( key, left, right, mover );
}

// Puts key (already in items_ and order_, not in slots_) between the
// neighbours at slots left and right.
U32
PriorityArray::place( U32 key, S64 left, S64 right, Mover & mover ) {
   S64 slot;
   if ( right - left > 1 ) {
      slot = freeSlotBetween( left, right );
   } else {
      S64 holeLeft = holeLeftOf( left );
      S64 holeRight = holeRightOf( right );
      bool useRight =
         holeRight >= 0 && ( holeLeft < 0 || holeRight - right <= left - holeLeft );
      if ( useRight ) {
         shiftRight( right, holeRight, mover );
         slot = right;
      } else {
         shiftLeft( holeLeft, left, mover );
         slot = left;
      }
   }
   slots_[ static_cast< size_t >( slot ) ] = key;
   items_[ key ].slot = static_cast< U32 >( slot );
   return static_cast< U32 >( slot );
}

// Items pack against their neighbours at the ends of the row, so that runs in
// one order cost nothing; between two items the middle of the gap keeps room
// on both sides.
S64
PriorityArray::freeSlotBetween( S64 left, S64 right ) const {
   S64 end = static_cast< S64 >( slots_.size() );
   if ( right == end ) {
      return left + 1;
   }
   if ( left < 0 ) {
      return right - 1;
   }
   return left + ( right - left ) / 2;
}

S64
PriorityArray::holeLeftOf( S64 slot ) const {
   for ( S64 s = slot; s >= 0; --s ) {
      if ( slots_[ static_cast< size_t >( s ) ] == freeSlot ) {
         return s;
      }
   }
   return -1;
}

S64
PriorityArray::holeRightOf( S64 slot ) const {
   for ( S64 s = slot; s < static_cast< S64 >( slots_.size() ); ++s ) {
      if ( slots_[ static_cast< size_t >( s ) ] == freeSlot ) {
         return s;
      }
   }
   return -1;
}

// Items in hole+1 .. last move one slot left; slot last becomes free.
void
PriorityArray::shiftLeft( S64 hole, S64 last, Mover & mover ) {
   for ( S64 s = hole + 1; s <= last; ++s ) {
      moveItem( static_cast< U32 >( slots_[ static_cast< size_t >( s ) ] ),
                static_cast< U32 >( s - 1 ), mover );
   }
}

// Items in first .. hole-1 move one slot right; slot first becomes free.
void
PriorityArray::shiftRight( S64 first, S64 hole, Mover & mover ) {
   for ( S64 s = hole - 1; s >= first; --s ) {
      moveItem( static_cast< U32 >( slots_[ static_cast< size_t >( s ) ] ),
                static_cast< U32 >( s + 1 ), mover );
   }
}

void
PriorityArray::moveItem( U32 key, U32 to, Mover & mover ) {
   Item & item = items_.at( key );
   KILN_ASSERT( slots_[ to ] == freeSlot );
   U32 from = item.slot;
   slots_[ from ] = freeSlot;
   slots_[ to ] = key;
   item.slot = to;
   mover.move( key, from, to );
}

void
PriorityArray::erase( U32 key ) {
   auto it = items_.find( key );
   if ( it == items_.end() ) {
      return;
   }
   slots_[ it->second.slot ] = freeSlot;
   order_.erase( it->second.rank );
   items_.erase( it );
}

void
PriorityArray::reprioritise( U32 key, S64 priority, Mover & mover ) {
   Item & item = items_.at( key );
   U32 oldSlot = item.slot;
   order_.erase( item.rank );
   slots_[ oldSlot ] = freeSlot;
   item.rank = Rank{ priority, nextSeq_++, key };
   auto [ left, right ] = gapFor( item.rank );
   order_.insert( item.rank );
   if ( left < static_cast< S64 >( oldSlot ) && static_cast< S64 >( oldSlot ) < right ) {
      slots_[ oldSlot ] = key; // still in its place
      return;
   }
   U32 newSlot = place( key, left, right, mover );
   mover.move( key, oldSlot, newSlot );
}

void
PriorityArray::grow( U32 extra ) {
   slots_.resize( slots_.size() + extra, freeSlot );
}

void
PriorityArray::pack( Mover & mover ) {
   U32 next = 0;
   for ( const Rank & rank : order_ ) {
      Item & item = items_.at( rank.key );
      if ( item.slot != next ) {
         moveItem( rank.key, next, mover );
      }
      ++next;
   }
}

void
PriorityArray::truncate( U32 newCapacity ) {
   KILN_ASSERT( newCapacity <= capacity() );
   for ( U32 slot = newCapacity; slot < capacity(); ++slot ) {
      KILN_ASSERT( slots_[ slot ] == freeSlot );
   }
   slots_.resize( newCapacity );
}

U32
PriorityArray::trailingFree() const {
   U32 free = 0;
   for ( auto it = slots_.rbegin(); it != slots_.rend() && *it == freeSlot; ++it ) {
      ++free;
   }
   return free;
}

std::vector< U32 >
PriorityArray::keysInOrder() const {
   std::vector< U32 > keys;
   keys.reserve( order_.size() );
   for ( const Rank & rank : order_ ) {
      keys.push_back( rank.key );
   }
   return keys;
}

} // namespace ChipModel
