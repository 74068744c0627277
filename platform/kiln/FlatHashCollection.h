// A hashed keyed collection stored in one flat table (open addressing,
// linear probing), for collections that are filled and emptied at a high
// rate: an insertion or deletion allocates nothing unless the table grows.
//
//    FlatHashCollection< K, V >   the interface of HashCollection (Collection.h)
//
// Keys are integers or enumerations, hashed with hashMix unless the owner
// knows better: a hash that keeps keys used together in neighbouring slots
// (the copies of one entry, say) saves a cache miss per access, as long as
// it spreads the keys over the table. What differs from HashCollection:
//  - find() pointers and iterators are invalidated by any insertion (the
//    table may grow); deletions leave them valid.
//  - Iteration yields `const std::pair< K, V > &`; as with HashCollection the
//    loop body may delete the current element, and nothing else.
//  - The table never shrinks: delAll() keeps its size.
#pragma once

#include "platform/kiln/Assert.h"
#include "platform/kiln/Hash.h"
#include "platform/kiln/Types.h"

#include <cstddef>
#include <iterator>
#include <type_traits>
#include <utility>
#include <vector>

namespace Kiln {

template< typename K >
struct MixHash {
   size_t
   operator()( const K & key ) const noexcept {
      return hashMix( key );
   }
};

template< typename K, typename V, typename Hash = MixHash< K > >
class FlatHashCollection {
   enum class State : U8 { empty, full, deleted };
   struct Slot {
      std::pair< K, V > element{};
      State state = State::empty;
   };
   typedef std::vector< Slot > Table;

 public:
   typedef K Key;
   typedef V Value;

   class iterator {
    public:
      typedef std::forward_iterator_tag iterator_category;
      typedef std::pair< K, V > value_type;
      typedef std::ptrdiff_t difference_type;
      typedef const value_type * pointer;
      typedef const value_type & reference;

      iterator() = default;
      iterator( const Table * table, size_t index ) : table_( table ), index_( index ) {
         skipFree();
      }
      reference
      operator*() const {
         return ( *table_ )[ index_ ].element;
      }
      pointer
      operator->() const {
         return &( *table_ )[ index_ ].element;
      }
      // Deleting leaves the slot where it is, so the next one is still next.
      iterator &
      operator++() {
         ++index_;
         skipFree();
         return *this;
      }
      iterator
      operator++( int ) {
         iterator before = *this;
         ++*this;
         return before;
      }
      friend bool
      operator==( const iterator & a, const iterator & b ) {
         return a.index_ == b.index_;
      }

    private:
      void
      skipFree() {
         while ( index_ < table_->size() && ( *table_ )[ index_ ].state != State::full ) {
            ++index_;
         }
      }

      const Table * table_ = nullptr;
      size_t index_ = 0;
   };
   typedef iterator const_iterator;

   // The value under `key`, or a value-initialised one when there is none.
   V
   get( const K & key ) const {
      const V * value = find( key );
      return value ? *value : V();
   }
   // The stored value, or null; valid until the next insertion.
   const V *
   find( const K & key ) const {
      size_t index = indexOf( key );
      return index == npos ? nullptr : &table_[ index ].element.second;
   }
   V *
   find( const K & key ) {
      size_t index = indexOf( key );
      return index == npos ? nullptr : &table_[ index ].element.second;
   }
   bool
   has( const K & key ) const {
      return indexOf( key ) != npos;
   }
   // Inserts or replaces; returns whether anything changed.
   bool
   set( const K & key, const V & value ) {
      size_t index = slotFor( key );
      if ( table_[ index ].state == State::full ) {
         if ( table_[ index ].element.second == value ) {
            return false;
         }
         table_[ index ].element.second = value;
         return true;
      }
      fill( index, key, value );
      return true;
   }
   // Removes the key; returns whether it was there.
   bool
   del( const K & key ) {
      size_t index = indexOf( key );
      if ( index == npos ) {
         return false;
      }
      table_[ index ].state = State::deleted;
      table_[ index ].element.second = V();
      --size_;
      ++deleted_;
      return true;
   }
   // Removes everything; returns how many keys there were.
   size_t
   delAll() {
      size_t removed = size_;
      for ( Slot & slot : table_ ) {
         slot = Slot();
      }
      size_ = 0;
      deleted_ = 0;
      return removed;
   }
   // Adds `delta` to the counter under `key`, creating it at 0, and returns
   // the new value; a result outside V's range aborts.
   V
   inc( const K & key, S64 delta )
      requires( std::is_integral_v< V > && !std::is_same_v< V, bool > )
   {
      size_t index = slotFor( key );
      if ( table_[ index ].state != State::full ) {
         fill( index, key, V() );
      }
      V & counter = table_[ index ].element.second;
      V result;
      KILN_ASSERT_MSG( !__builtin_add_overflow( counter, delta, &result ),
                       "counter out of range" );
      counter = result;
      return result;
   }

   size_t
   size() const noexcept {
      return size_;
   }
   bool
   empty() const noexcept {
      return size_ == 0;
   }
   std::vector< K >
   keys() const {
      std::vector< K > result;
      result.reserve( size_ );
      for ( const auto & element : *this ) {
         result.push_back( element.first );
      }
      return result;
   }
   iterator
   begin() const {
      return iterator( &table_, 0 );
   }
   iterator
   end() const {
      return iterator( &table_, table_.size() );
   }

 private:
   static constexpr size_t npos = ~size_t( 0 );
   static constexpr size_t minCapacity = 16;

   size_t
   home( const K & key ) const {
      return Hash()( key ) & ( table_.size() - 1 );
   }
   size_t
   indexOf( const K & key ) const {
      if ( size_ == 0 ) {
         return npos;
      }
      const size_t mask = table_.size() - 1;
      for ( size_t index = home( key );; index = ( index + 1 ) & mask ) {
         const Slot & slot = table_[ index ];
         if ( slot.state == State::empty ) {
            return npos;
         }
         if ( slot.state == State::full && slot.element.first == key ) {
            return index;
         }
      }
   }
   // The slot holding `key`, or else the slot where it goes (the first
   // deleted one on its probe path, or the empty one that ends the path).
   // Grows the table first when one more key would leave less than a
   // quarter of the slots empty, so that every probe ends.
   size_t
   slotFor( const K & key ) {
      if ( ( size_ + deleted_ + 1 ) * 4 > table_.size() * 3 ) {
         rehash( size_ + 1 );
      }
      const size_t mask = table_.size() - 1;
      size_t free = npos;
      for ( size_t index = home( key );; index = ( index + 1 ) & mask ) {
         const Slot & slot = table_[ index ];
         if ( slot.state == State::full ) {
            if ( slot.element.first == key ) {
               return index;
            }
         } else if ( slot.state == State::deleted ) {
            free = free == npos ? index : free;
         } else {
            return free == npos ? index : free;
         }
      }
   }
   // Puts `key` into the free slot `index` that slotFor chose.
   void
   fill( size_t index, const K & key, const V & value ) {
      if ( table_[ index ].state == State::deleted ) {
         --deleted_;
      }
      table_[ index ].element = std::pair< K, V >( key, value );
      table_[ index ].state = State::full;
      ++size_;
   }
   // A table where `count` keys fill at most half the slots; deleted slots
   // are dropped.
   void
   rehash( size_t count ) {
      size_t capacity = minCapacity;
      while ( capacity < 2 * count ) {
         capacity *= 2;
      }
      Table old( capacity );
      old.swap( table_ );
      size_ = 0;
      deleted_ = 0;
      const size_t mask = table_.size() - 1;
      for ( Slot & slot : old ) {
         if ( slot.state == State::full ) {
            size_t index = home( slot.element.first );
            while ( table_[ index ].state == State::full ) {
               index = ( index + 1 ) & mask;
            }
            table_[ index ] = std::move( slot );
            ++size_;
         }
      }
   }

   Table table_;
   size_t size_ = 0;
   size_t deleted_ = 0;
};

} // namespace Kiln
