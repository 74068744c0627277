// Items kept in priority order in a row of slots with holes, as a TCAM keeps
// the entries of a group: slot 0 is looked up first. It knows nothing of
// hardware; whoever owns the slots learns of every physical move through a
// Mover ("move this item from slot a to slot b").
//
// Order: a higher priority comes first; among equal priorities the item that
// arrived (or changed priority) earlier comes first.
//
// Placement: a new item goes into the free gap between its neighbours when
// there is one: right after the last item, right before the first, in the
// middle between two (an empty row starts at slot 0). Otherwise the items
// between it and the nearest hole (on either side, the nearer one; right on
// a tie) shift by one slot towards the hole. A priority change that leaves
// the item inside its new gap moves nothing.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <vector>

#include "platform/kiln/Types.h"

namespace ChipModel {

class PriorityArray {
 public:
   class Mover {
    public:
      virtual ~Mover() = default;
      virtual void move( U32 key, U32 from, U32 to ) = 0;
   };

   explicit PriorityArray( U32 capacity = 0 );

   U32 capacity() const { return static_cast< U32 >( slots_.size() ); }
   U32 size() const { return static_cast< U32 >( items_.size() ); }
   bool full() const { return size() == capacity(); }
   bool contains( U32 key ) const { return items_.count( key ) != 0; }

   // The item's slot; nullopt for an unknown key.
   std::optional< U32 > slotOf( U32 key ) const;
   // The key in a slot; nullopt for a free slot or one past the end.
   std::optional< U32 > keyAt( U32 slot ) const;
   S64 priorityOf( U32 key ) const; // the key must be present

   // Places a new key; the array must not be full and the key not present.
   // Returns the slot it took. Physical moves are reported to mover.
   U32 insert( U32 key, S64 priority, Mover & mover );
   // Frees the key's slot; unknown keys are ignored.
   void erase( U32 key );
   // Gives the key a new priority, moving it (and others) as needed; the key
   // then ranks after the items that already have that priority. When it has
   // to move, the key is lifted out of its slot first (the slot counts as free
   // for the shifts that follow) and written into its new slot last: the
   // shifts are reported, then move( key, oldSlot, newSlot ).
   void reprioritise( U32 key, S64 priority, Mover & mover );

   // Adds free slots at the end.
   void grow( U32 extra );
   // Moves every item towards slot 0, keeping the order, so that the holes
   // end up at the end.
   void pack( Mover & mover );
   // Drops free slots at the end so that capacity() becomes newCapacity;
   // the slots dropped must be free.
   void truncate( U32 newCapacity );
   // Number of free slots after the last item.
   U32 trailingFree() const;

   // Keys in lookup order.
   std::vector< U32 > keysInOrder() const;
   // Calls visit( key ) in lookup order until it returns true.
   template< typename Visit >
   void
   forEachInOrder( Visit && visit ) const {
      for ( const Rank & rank : order_ ) {
         if ( visit( rank.key ) ) {
            return;
         }
      }
   }

 private:
   struct Rank {
      S64 priority;
      U64 seq;
      U32 key;
      bool operator<( const Rank & other ) const;
   };
   struct Item {
      Rank rank;
      U32 slot;
   };
   static constexpr S64 freeSlot = -1;

   // Slot bounds of the gap a rank belongs in: the slots of its neighbours
   // in order (-1 and capacity() at the ends).
   std::pair< S64, S64 > gapFor( const Rank & rank ) const;
   U32 place( U32 key, S64 left, S64 right, Mover & mover );
   void shiftLeft( S64 hole, S64 last, Mover & mover );
   void shiftRight( S64 first, S64 hole, Mover & mover );
   void moveItem( U32 key, U32 to, Mover & mover );
   S64 freeSlotBetween( S64 left, S64 right ) const;
   S64 holeLeftOf( S64 slot ) const;
   S64 holeRightOf( S64 slot ) const;

   std::vector< S64 > slots_; // key of each slot, or freeSlot
   std::map< U32, Item > items_;
   std::set< Rank > order_;
   U64 nextSeq_ = 0;
};

} // namespace ChipModel
