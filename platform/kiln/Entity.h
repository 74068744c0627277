// Entities: named, reference-counted objects whose attributes and keyed
// collections tell attached observers about every change.
//
// Naming convention, written as one-line members over the storage templates
// of Attribute.h and Collection.h and the protected helpers below:
//   attribute `foo`:   foo(), fooIs( v )                         notifies onFoo()
//   collection `bar`:  bar( k ), barIs( k, v ), barDel( k ), barDelAll(),
//                      barHas( k ), counters barInc( k, delta )  notify onBar( k )
//   entity collection: barIs( k ) returns the entity under k, making it first
//                      when there is none
// Setting a value equal to the stored one changes nothing and notifies no
// one; DelAll notifies once per key deleted. Observers are told after the
// change, so they read the new state.
//
//    class GroupCounts : public Kiln::Entity {
//     public:
//       class NotifieeConst : public Kiln::Notifiee< GroupCounts > {
//        public:
//          virtual void onEnabled() {}
//          virtual void onUnitRefCount( U32 unit ) {}
//          virtual void onPipe( U32 pipe ) {}
//       };
//       explicit GroupCounts( const Kiln::Name & name ) : Kiln::Entity( name ) {}
//
//       bool enabled() const { return enabled_.get(); }
//       void enabledIs( bool v ) { attributeIs( enabled_, v, &NotifieeConst::onEnabled ); }
//
//       U32 unitRefCount( U32 unit ) const { return unitRefCount_.get( unit ); }
//       bool unitRefCountHas( U32 unit ) const { return unitRefCount_.has( unit ); }
//       void unitRefCountIs( U32 unit, U32 n ) {
//          collectionIs( unitRefCount_, unit, n, &NotifieeConst::onUnitRefCount );
//       }
//       U32 unitRefCountInc( U32 unit, S32 delta ) {
//          return collectionInc( unitRefCount_, unit, delta, &NotifieeConst::onUnitRefCount );
//       }
//       void unitRefCountDel( U32 unit ) {
//          collectionDel( unitRefCount_, unit, &NotifieeConst::onUnitRefCount );
//       }
//       void unitRefCountDelAll() {
//          collectionDelAll( unitRefCount_, &NotifieeConst::onUnitRefCount );
//       }
//       // Read-only view for size and iteration.
//       const Kiln::OrderedCollection< U32, U32 > & unitRefCountCollection() const {
//          return unitRefCount_;
//       }
//
//       Kiln::Ptr< PipeInfo > pipe( U32 pipe ) const { return pipe_.get( pipe ); }
//       Kiln::Ptr< PipeInfo > pipeIs( U32 pipe ) {   // PipeInfo( U32 ) is its constructor
//          return collectionEntityIs( pipe_, pipe, &NotifieeConst::onPipe, pipe );
//       }
//
//     private:
//       Kiln::Attribute< bool > enabled_;
//       Kiln::OrderedCollection< U32, U32 > unitRefCount_;
//       Kiln::OrderedCollection< U32, Kiln::Ptr< PipeInfo > > pipe_;
//    };
//
// Threads: an entity and its observers belong to the activity thread (the
// holder of the activity lock); only the reference count is thread-safe.
#pragma once

#include "platform/kiln/Notifiee.h"
#include "platform/kiln/Ptr.h"
#include "platform/kiln/String.h"
#include "platform/kiln/Types.h"

#include <cstddef>
#include <type_traits>
#include <utility>
#include <vector>

namespace Kiln {

class Entity : public PtrInterface {
 public:
   explicit Entity( const Name & name );
   Entity( const Entity & ) = delete;
   Entity & operator=( const Entity & ) = delete;
   // Detaches the observers still attached; their notifier() becomes null.
   ~Entity() override;

   const Name &
   name() const noexcept {
      return name_;
   }
   // The number of observers attached.
   size_t notifiees() const noexcept;

 protected:
   // Calls `callback( args... )` on every attached observer that implements
   // the interface N, in attachment order. While it runs, observers may
   // attach, detach (themselves or others) and be destroyed; those attached
   // during the call are not called by it, those detached before their turn
   // are skipped. An entity held by Ptrs stays alive until notify returns
   // even if an observer drops the last reference; it is deleted then, so
   // notify last in a member function.
   template< typename N, typename... Params, typename... Args >
   void
   notify( void ( N::*callback )( Params... ), const Args &... args ) const {
      static_assert( std::is_base_of_v< NotifieeBase, N >, "not an observer interface" );
      if ( notifiees_.empty() ) {
         return;
      }
      NotifyScope scope( *this );
      for ( size_t i = 0, count = notifiees_.size(); i < count; ++i ) {
         if ( N * notifiee = dynamic_cast< N * >( notifiees_[ i ] ) ) {
            ( notifiee->*callback )( args... );
         }
      }
   }

   // Helpers for the named members; each returns whether anything changed
   // and notifies only then.

   // fooIs( v )
   template< typename A, typename Callback >
   bool
   attributeIs( A & attribute, const typename A::Value & value, Callback callback ) {
      if ( !attribute.set( value ) ) {
         return false;
      }
      notify( callback );
      return true;
   }
   // barIs( k, v )
   template< typename C, typename Callback >
   bool
   collectionIs( C & collection, const typename C::Key & key,
                 const typename C::Value & value, Callback callback ) {
      if ( !collection.set( key, value ) ) {
         return false;
      }
      notify( callback, key );
      return true;
   }
   // barIs( k ) for an OrderedSet.
   template< typename S, typename Callback >
   bool
   collectionIs( S & set, const typename S::Key & key, Callback callback ) {
      if ( !set.add( key ) ) {
         return false;
      }
      notify( callback, key );
      return true;
   }
   // barDel( k )
   template< typename C, typename Callback >
   bool
   collectionDel( C & collection, const typename C::Key & key, Callback callback ) {
      if ( !collection.del( key ) ) {
         return false;
      }
      notify( callback, key );
      return true;
   }
   // barDelAll(): deletes key by key in key order, notifying each deletion,
   // so observers see the collection shrink one key at a time. Returns the
   // number of keys deleted.
   template< typename C, typename Callback >
   size_t
   collectionDelAll( C & collection, Callback callback ) {
      size_t deleted = 0;
      for ( const auto & key : collection.keys() ) {
         if ( collection.del( key ) ) {
            ++deleted;
            notify( callback, key );
         }
      }
      return deleted;
   }
   // barInc( k, delta ): returns the new count. Creating the counter is a
   // change even with a delta of 0.
   template< typename C, typename Callback >
   typename C::Value
   collectionInc( C & collection, const typename C::Key & key, S64 delta,
                  Callback callback ) {
      bool existed = collection.has( key );
      typename C::Value count = collection.inc( key, delta );
      if ( !existed || delta != 0 ) {
         notify( callback, key );
      }
      return count;
   }
   // barIs( k ) for a collection of Ptr< X >: the X under `key`, or a new
   // X( args... ) stored there (and notified) when there is none.
   template< typename C, typename Callback, typename... Args >
   typename C::Value
   collectionEntityIs( C & collection, const typename C::Key & key, Callback callback,
                       Args &&... args ) {
      typedef typename C::Value::element_type Element;
      if ( const auto * existing = collection.find( key ); existing && *existing ) {
         return *existing;
      }
      typename C::Value made = new Element( std::forward< Args >( args )... );
      collection.set( key, made );
      notify( callback, key );
      return made;
   }

 private:
   friend class NotifieeBase;

   // Keeps the observer list stable while observers are being called.
   class NotifyScope {
    public:
      explicit NotifyScope( const Entity & entity );
      ~NotifyScope();
      NotifyScope( const NotifyScope & ) = delete;
      NotifyScope & operator=( const NotifyScope & ) = delete;

    private:
      const Entity & entity_;
      bool keptAlive_;
   };

   void notifieeAdd( NotifieeBase * notifiee );
   void notifieeDel( NotifieeBase * notifiee );

   Name name_;
   // Detached observers leave a null slot while a notification runs, so the
   // indexes being walked stay valid; the slots go when the last one ends.
   mutable std::vector< NotifieeBase * > notifiees_;
   mutable U32 notifyDepth_ = 0;
};

} // namespace Kiln
