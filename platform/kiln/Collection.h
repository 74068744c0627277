// Storage of keyed entity collections. The entity's named members wrap them
// and notify observers of changes (see Entity.h for the naming convention).
//
//    OrderedCollection< K, V >  keys in order (std::map)
//    HashCollection< K, V >     hashed keys (std::unordered_map, std::hash< K >)
//    OrderedSet< K >            keys only, in order (std::set)
//
// Values are copied in and out; V must be copyable, default-constructible
// and comparable with ==. A collection of entities stores Ptr< X > values.
//
// Iteration yields `const std::pair< const K, V > &` (the key alone for a
// set), read-only: changes go through set()/del() so that the entity can
// notify them.
//
// Changing a collection while iterating over it:
//  - OrderedCollection and OrderedSet: the loop body may delete or insert any
//    key, the current one included. Each step resumes at the first key above
//    the current one, so keys inserted above it are visited and keys deleted
//    before being reached are not. Do not use the current element after
//    deleting it.
//  - HashCollection: the body may delete the current element only (nothing
//    else, and no insertion: that may rehash). For anything else iterate
//    over a snapshot, keys().
#pragma once

#include "platform/kiln/Assert.h"
#include "platform/kiln/Types.h"

#include <cstddef>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <type_traits>
#include <unordered_map>
#include <vector>

namespace Kiln {

namespace Detail {

// The key of an element of a map (a pair) or of a set (the key itself).
template< typename Container >
const typename Container::key_type &
keyOf( const typename Container::value_type & element ) {
   if constexpr ( std::is_same_v< typename Container::key_type,
                                  typename Container::value_type > ) {
      return element;
   } else {
      return element.first;
   }
}

// Walks an ordered container by key, so that the loop body may change it.
template< typename Container >
class OrderedIterator {
 public:
   typedef std::forward_iterator_tag iterator_category;
   typedef typename Container::value_type value_type;
   typedef std::ptrdiff_t difference_type;
   typedef const value_type * pointer;
   typedef const value_type & reference;

   OrderedIterator() = default;
   OrderedIterator( const Container * container,
                    typename Container::const_iterator position )
         : container_( container ) {
      moveTo( position );
   }

   reference
   operator*() const {
      return *position_;
   }
   pointer
   operator->() const {
      return &*position_;
   }
   OrderedIterator &
   operator++() {
      moveTo( container_->upper_bound( *key_ ) );
      return *this;
   }
   OrderedIterator
   operator++( int ) {
      OrderedIterator before = *this;
      ++*this;
      return before;
   }
   friend bool
   operator==( const OrderedIterator & a, const OrderedIterator & b ) {
      return a.position_ == b.position_;
   }

 private:
   void
   moveTo( typename Container::const_iterator position ) {
      position_ = position;
      if ( position_ == container_->end() ) {
         key_.reset();
      } else {
         key_ = keyOf< Container >( *position_ );
      }
   }

   const Container * container_ = nullptr;
   typename Container::const_iterator position_;
   // A copy of the current key: the element itself may be gone on ++.
   std::optional< typename Container::key_type > key_;
};

// Walks a hashed container one element ahead, so that the loop body may
// delete the current element.
template< typename Container >
class HashIterator {
 public:
   typedef std::forward_iterator_tag iterator_category;
   typedef typename Container::value_type value_type;
   typedef std::ptrdiff_t difference_type;
   typedef const value_type * pointer;
   typedef const value_type & reference;

   HashIterator() = default;
   HashIterator( const Container * container, typename Container::const_iterator position )
         : container_( container ) {
      moveTo( position );
   }

   reference
   operator*() const {
      return *position_;
   }
   pointer
   operator->() const {
      return &*position_;
   }
   HashIterator &
   operator++() {
      moveTo( next_ );
      return *this;
   }
   HashIterator
   operator++( int ) {
      HashIterator before = *this;
      ++*this;
      return before;
   }
   friend bool
   operator==( const HashIterator & a, const HashIterator & b ) {
      return a.position_ == b.position_;
   }

 private:
   void
   moveTo( typename Container::const_iterator position ) {
      position_ = position;
      next_ = position_ == container_->end() ? position_ : std::next( position_ );
   }

   const Container * container_ = nullptr;
   typename Container::const_iterator position_;
   typename Container::const_iterator next_;
};

// What keyed collections share; Map is the standard container behind them.
template< typename Map >
class KeyedCollection {
 public:
   typedef typename Map::key_type Key;
   typedef typename Map::mapped_type Value;

   // The value under `key`, or a value-initialised one (0, false, null
   // Ptr) when there is none.
   Value
   get( const Key & key ) const {
      auto found = map_.find( key );
      return found == map_.end() ? Value() : found->second;
   }
   // The stored value, or null. Changing it through the pointer bypasses the
   // entity's notification.
   const Value *
   find( const Key & key ) const {
      auto found = map_.find( key );
      return found == map_.end() ? nullptr : &found->second;
   }
   Value *
   find( const Key & key ) {
      auto found = map_.find( key );
      return found == map_.end() ? nullptr : &found->second;
   }
   bool
   has( const Key & key ) const {
      return map_.find( key ) != map_.end();
   }
   // Inserts or replaces; returns whether anything changed.
   bool
   set( const Key & key, const Value & value ) {
      auto [ slot, inserted ] = map_.try_emplace( key, value );
      if ( inserted ) {
         return true;
      }
      if ( slot->second == value ) {
         return false;
      }
      slot->second = value;
      return true;
   }
   // Removes the key; returns whether it was there.
   bool
   del( const Key & key ) {
      return map_.erase( key ) > 0;
   }
   // Removes everything; returns how many keys there were.
   size_t
   delAll() {
      size_t removed = map_.size();
      map_.clear();
      return removed;
   }
   // Adds `delta` to the counter under `key`, creating it at 0, and returns
   // the new value. A result outside Value's range is a programming error
   // (a count going below zero) and aborts.
   Value
   inc( const Key & key, S64 delta )
      requires( std::is_integral_v< Value > && !std::is_same_v< Value, bool > )
   {
      Value & counter = map_[ key ];
      Value result;
      KILN_ASSERT_MSG( !__builtin_add_overflow( counter, delta, &result ),
                       "counter out of range" );
      counter = result;
      return result;
   }

   size_t
   size() const noexcept {
      return map_.size();
   }
   bool
   empty() const noexcept {
      return map_.empty();
   }
   // A snapshot of the keys (in order for an ordered collection).
   std::vector< Key >
   keys() const {
      std::vector< Key > result;
      result.reserve( map_.size() );
      for ( const auto & element : map_ ) {
         result.push_back( element.first );
      }
      return result;
   }

 protected:
   Map map_;
};

} // namespace Detail

template< typename K, typename V, typename Compare = std::less< K > >
class OrderedCollection : public Detail::KeyedCollection< std::map< K, V, Compare > > {
   typedef std::map< K, V, Compare > Map;

 public:
   typedef Detail::OrderedIterator< Map > iterator;
   typedef iterator const_iterator;

   // Inserts or replaces; returns whether anything changed. A key above
   // every other (ids handed out in rising order) goes in at the end
   // without a walk down the tree.
   bool
   set( const K & key, const V & value ) {
      Map & map = this->map_;
      if ( !map.empty() && map.key_comp()( map.rbegin()->first, key ) ) {
         map.emplace_hint( map.end(), key, value );
         return true;
      }
      return Detail::KeyedCollection< Map >::set( key, value );
   }

   iterator
   begin() const {
      return iterator( &this->map_, this->map_.begin() );
   }
   iterator
   end() const {
      return iterator( &this->map_, this->map_.end() );
   }
   // The first element whose key is not below `key`.
   iterator
   lowerBound( const K & key ) const {
      return iterator( &this->map_, this->map_.lower_bound( key ) );
   }
   // `fn( key, value )` for every element in key order. Walks the map
   // itself, without the iterators' re-finding of each key, so `fn` must not
   // change the collection; likewise anyOf.
   template< typename Fn >
   void
   forEach( Fn && fn ) const {
      for ( const auto & [ key, value ] : this->map_ ) {
         fn( key, value );
      }
   }
   // Whether `pred( key, value )` holds for an element, asked in key order
   // until it does.
   template< typename Pred >
   bool
   anyOf( Pred && pred ) const {
      for ( const auto & [ key, value ] : this->map_ ) {
         if ( pred( key, value ) ) {
            return true;
         }
      }
      return false;
   }
};

template< typename K, typename V, typename Hash = std::hash< K > >
class HashCollection : public Detail::KeyedCollection< std::unordered_map< K, V, Hash > > {
   typedef std::unordered_map< K, V, Hash > Map;

 public:
   typedef Detail::HashIterator< Map > iterator;
   typedef iterator const_iterator;

   iterator
   begin() const {
      return iterator( &this->map_, this->map_.begin() );
   }
   iterator
   end() const {
      return iterator( &this->map_, this->map_.end() );
   }
};

template< typename K, typename Compare = std::less< K > >
class OrderedSet {
   typedef std::set< K, Compare > Set;

 public:
   typedef K Key;
   typedef Detail::OrderedIterator< Set > iterator;
   typedef iterator const_iterator;

   bool
   has( const K & key ) const {
      return set_.find( key ) != set_.end();
   }
   // Adds the key; returns whether it was new.
   bool
   add( const K & key ) {
      return set_.insert( key ).second;
   }
   // Removes the key; returns whether it was there.
   bool
   del( const K & key ) {
      return set_.erase( key ) > 0;
   }
   size_t
   delAll() {
      size_t removed = set_.size();
      set_.clear();
      return removed;
   }
   size_t
   size() const noexcept {
      return set_.size();
   }
   bool
   empty() const noexcept {
      return set_.empty();
   }
   std::vector< K >
   keys() const {
      return std::vector< K >( set_.begin(), set_.end() );
   }
   iterator
   begin() const {
      return iterator( &set_, set_.begin() );
   }
   iterator
   end() const {
      return iterator( &set_, set_.end() );
   }

 private:
   Set set_;
};

} // namespace Kiln
