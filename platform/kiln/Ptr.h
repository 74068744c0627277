// Intrusive reference counting.
//
// Objects that are shared (entities, records held in collections, state
// machines) derive from Kiln::PtrInterface, which carries the count, and are
// held by Kiln::Ptr<T>. The last Ptr to let go deletes the object:
//
//    Kiln::Ptr< GroupCounts > counts = new GroupCounts( "ifp" );
//    Kiln::Ptr< Kiln::Entity > entity = counts;          // count is 2
//    auto again = Kiln::ptr_cast< GroupCounts >( entity ); // null if not one
//
// Counting is atomic, so Ptrs to one object may be copied and dropped on
// several threads at once; the object itself is not made thread-safe by it.
//
// Do not take a Ptr to an object that is not on the heap or that someone
// else owns by other means: the count starts at 0 and the first Ptr to drop
// it back to 0 deletes the object.
#pragma once

#include "platform/kiln/Assert.h"
#include "platform/kiln/Types.h"

#include <atomic>
#include <cstddef>
#include <cstring>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace Kiln {

// Base of every counted object. The count belongs to the object's identity:
// copying an object gives the copy a count of 0.
class PtrInterface {
 public:
   PtrInterface() noexcept : references_( 0 ) {}
   PtrInterface( const PtrInterface & ) noexcept : references_( 0 ) {}
   PtrInterface &
   operator=( const PtrInterface & ) noexcept {
      return *this;
   }
   virtual ~PtrInterface() = default;

   // Adds a reference. Const so that Ptr< const T > can count too.
   void
   newRef() const noexcept {
      references_.fetch_add( 1, std::memory_order_relaxed );
   }

   // Drops a reference and deletes the object when it was the last one.
   // Dropping a reference nobody holds is a programming error.
   void
   deleteRef() const noexcept {
      U32 before = references_.fetch_sub( 1, std::memory_order_acq_rel );
      KILN_ASSERT_MSG( before > 0, "deleteRef without a reference" );
      if ( before == 1 ) {
         delete this;
      }
   }

   // The number of references held right now (a snapshot when other
   // threads hold references too).
   U32
   references() const noexcept {
      return references_.load( std::memory_order_acquire );
   }

 private:
   mutable std::atomic< U32 > references_;
};

// A counted pointer to T (T derives PtrInterface). Null by default.
template< typename T >
class Ptr {
 public:
   typedef T element_type;

   Ptr() noexcept : rawPtr_( nullptr ) {}
   Ptr( std::nullptr_t ) noexcept : rawPtr_( nullptr ) {}
   // Implicit on purpose: `Ptr< X > x = new X( ... );` takes the first
   // reference of a new object.
   Ptr( T * raw ) noexcept : rawPtr_( raw ) { retain(); }
   Ptr( const Ptr & other ) noexcept : rawPtr_( other.rawPtr_ ) { retain(); }
   Ptr( Ptr && other ) noexcept : rawPtr_( other.rawPtr_ ) { other.rawPtr_ = nullptr; }

   // Ptr< Derived > converts to Ptr< Base >, and Ptr< T > to Ptr< const T >.
   template< typename U, typename = std::enable_if_t< std::is_convertible_v< U *, T * > > >
   Ptr( const Ptr< U > & other ) noexcept : rawPtr_( other.rawPtr_ ) {
      retain();
   }
   template< typename U, typename = std::enable_if_t< std::is_convertible_v< U *, T * > > >
   Ptr( Ptr< U > && other ) noexcept : rawPtr_( other.rawPtr_ ) {
      other.rawPtr_ = nullptr;
   }

   ~Ptr() { release(); }

   Ptr &
   operator=( const Ptr & other ) noexcept {
      Ptr( other ).swap( *this ); // safe for self-assignment
      return *this;
   }
   Ptr &
   operator=( Ptr && other ) noexcept {
      Ptr( std::move( other ) ).swap( *this );
      return *this;
   }

   T *
   operator->() const noexcept {
      KILN_ASSERT_MSG( rawPtr_, "dereference of a null Kiln::Ptr" );
      return rawPtr_;
   }
   T &
   operator*() const noexcept {
      KILN_ASSERT_MSG( rawPtr_, "dereference of a null Kiln::Ptr" );
      return *rawPtr_;
   }
   T *
   get() const noexcept {
      return rawPtr_;
   }
   explicit operator bool() const noexcept { return rawPtr_ != nullptr; }
   bool
   operator!() const noexcept {
      return rawPtr_ == nullptr;
   }

   void
   swap( Ptr & other ) noexcept {
      std::swap( rawPtr_, other.rawPtr_ );
   }

   // Public so that code can compare identities cheaply (`ptr.rawPtr_ == this`).
   // Assign only through the members above.
   T * rawPtr_;

 private:
   void
   retain() noexcept {
      if ( rawPtr_ ) {
         rawPtr_->newRef();
      }
   }
   void
   release() noexcept {
      if ( rawPtr_ ) {
         rawPtr_->deleteRef();
      }
   }
};

// Identity comparisons. C++20 derives != and the reversed forms from these.
template< typename T, typename U >
bool
operator==( const Ptr< T > & a, const Ptr< U > & b ) noexcept {
   return a.rawPtr_ == b.rawPtr_;
}
template< typename T, typename U >
bool
operator==( const Ptr< T > & a, const U * b ) noexcept {
   return a.rawPtr_ == b;
}
template< typename T >
bool
operator==( const Ptr< T > & a, std::nullptr_t ) noexcept {
   return a.rawPtr_ == nullptr;
}

// Ordering by address (a total order, usable as a map key).
template< typename T, typename U >
bool
operator<( const Ptr< T > & a, const Ptr< U > & b ) noexcept {
   return std::less<>()( a.rawPtr_, b.rawPtr_ );
}
template< typename T, typename U >
bool
operator<( const Ptr< T > & a, const U * b ) noexcept {
   return std::less<>()( a.rawPtr_, b );
}
template< typename T, typename U >
bool
operator<( const T * a, const Ptr< U > & b ) noexcept {
   return std::less<>()( a, b.rawPtr_ );
}

// The object as a T when it is one (dynamic_cast), null otherwise. The
// result shares ownership with `from`.
template< typename T, typename U >
Ptr< T >
ptr_cast( const Ptr< U > & from ) {
   return Ptr< T >( dynamic_cast< T * >( from.rawPtr_ ) );
}

// A counted byte buffer whose size is fixed when it is made; copies share
// the bytes. Used to pass opaque blobs (an SDK configuration structure
// filled in by a client) through interfaces that do not know their type.
// The bytes are aligned for any scalar type and start zeroed.
class BytePtr {
 public:
   // Null: size() is 0 and data() is null.
   BytePtr() noexcept = default;
   explicit BytePtr( size_t size ) : buffer_( new Buffer( size ) ) {}
   BytePtr( const void * bytes, size_t size ) : buffer_( new Buffer( size ) ) {
      KILN_ASSERT_MSG( bytes || !size, "BytePtr copy from a null address" );
      if ( size ) {
         std::memcpy( buffer_->bytes_.get(), bytes, size );
      }
   }

   // A buffer holding a copy of `value`'s bytes.
   template< typename T >
   static BytePtr
   copyOf( const T & value ) {
      static_assert( std::is_trivially_copyable_v< T >, "only plain data can be copied" );
      return BytePtr( &value, sizeof( T ) );
   }

   size_t
   size() const noexcept {
      return buffer_ ? buffer_->size_ : 0;
   }
   // The shared bytes; writable, so a client can fill in a buffer it made.
   U8 *
   data() const noexcept {
      return buffer_ ? buffer_->bytes_.get() : nullptr;
   }
   explicit operator bool() const noexcept { return bool( buffer_ ); }
   // Handles sharing these bytes (0 for a null BytePtr).
   U32
   references() const noexcept {
      return buffer_ ? buffer_->references() : 0;
   }

 private:
   struct Buffer : PtrInterface {
      explicit Buffer( size_t size ) : size_( size ), bytes_( new U8[ size ]() ) {}
      size_t size_;
      std::unique_ptr< U8[] > bytes_;
   };
   Ptr< Buffer > buffer_;
};

} // namespace Kiln

template< typename T >
struct std::hash< Kiln::Ptr< T > > {
   size_t
   operator()( const Kiln::Ptr< T > & p ) const noexcept {
      return std::hash< T * >()( p.rawPtr_ );
   }
};
