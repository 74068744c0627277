#include <gtest/gtest.h>

#include "platform/kiln/Ptr.h"

#include <map>
#include <thread>
#include <unordered_set>
#include <vector>

namespace {

// Counts live instances so that every test can check nothing leaked and
// nothing died early.
struct Tracked : Kiln::PtrInterface {
   static int live;
   explicit Tracked( int v = 0 ) : value( v ) { ++live; }
   ~Tracked() override { --live; }
   int value;
};
int Tracked::live = 0;

struct Derived : Tracked {
   explicit Derived( int v ) : Tracked( v ) {}
};

struct Other : Kiln::PtrInterface {};

class PtrTest : public ::testing::Test {
 protected:
   void
   TearDown() override {
      EXPECT_EQ( 0, Tracked::live ) << "objects leaked or were deleted twice";
   }
};

TEST_F( PtrTest, CopiesMovesAndAssignmentsKeepTheCountExact ) {
   Kiln::Ptr< Tracked > a = new Tracked( 7 );
   EXPECT_EQ( 1u, a->references() );
   {
      Kiln::Ptr< Tracked > b = a;
      EXPECT_EQ( 2u, a->references() );
      Kiln::Ptr< Tracked > c = std::move( b );
      EXPECT_FALSE( b );
      EXPECT_EQ( 2u, a->references() );
      c = c; // self-assignment keeps the object
      EXPECT_EQ( 2u, a->references() );
      c = std::move( c );
      EXPECT_EQ( 7, c->value );
   }
   EXPECT_EQ( 1u, a->references() );

   // Assigning over the last reference deletes the old object.
   a = new Tracked( 8 );
   EXPECT_EQ( 1, Tracked::live );
   a = nullptr;
   EXPECT_EQ( 0, Tracked::live );
   EXPECT_FALSE( a );
   EXPECT_TRUE( !a );
}

TEST_F( PtrTest, ConversionsShareOneCount ) {
   Kiln::Ptr< Derived > derived = new Derived( 3 );
   Kiln::Ptr< Tracked > base = derived;
   Kiln::Ptr< const Tracked > constBase = base;
   EXPECT_EQ( 3u, derived->references() );
   EXPECT_EQ( 3, constBase->value );

   Kiln::Ptr< Derived > back = Kiln::ptr_cast< Derived >( base );
   EXPECT_EQ( derived, back );
   EXPECT_EQ( 4u, derived->references() );
   EXPECT_FALSE( Kiln::ptr_cast< Other >( base ) );
   EXPECT_FALSE( Kiln::ptr_cast< Derived >( Kiln::Ptr< Tracked >() ) );

   Kiln::Ptr< Tracked > moved = std::move( back );
   EXPECT_EQ( 4u, derived->references() );
}

TEST_F( PtrTest, ComparesByIdentity ) {
   Kiln::Ptr< Tracked > a = new Tracked( 1 );
   Kiln::Ptr< Tracked > b = new Tracked( 1 );
   Kiln::Ptr< Tracked > a2 = a;
   Tracked * raw = a.get();

   EXPECT_TRUE( a == a2 );
   EXPECT_TRUE( a != b );
   EXPECT_TRUE( a == raw );
   EXPECT_TRUE( raw == a );
   EXPECT_TRUE( b != raw );
   EXPECT_TRUE( a.rawPtr_ == raw );
   EXPECT_TRUE( Kiln::Ptr< Tracked >() == nullptr );
   EXPECT_TRUE( a != nullptr );
   EXPECT_NE( a < b, b < a );
   EXPECT_EQ( a < b, a < b.get() );
   EXPECT_EQ( a < b, a.get() < b );

   // Usable as keys of ordered and hashed containers.
   std::map< Kiln::Ptr< Tracked >, int > ordered{ { a, 1 }, { b, 2 } };
   std::unordered_set< Kiln::Ptr< Tracked > > hashed{ a, b, a2 };
   EXPECT_EQ( 1, ordered[ a2 ] );
   EXPECT_EQ( 2u, hashed.size() );
}

TEST_F( PtrTest, CountIsExactUnderConcurrentCopies ) {
   Kiln::Ptr< Tracked > shared = new Tracked( 5 );
   std::vector< std::thread > threads;
   for ( int t = 0; t < 4; ++t ) {
      threads.emplace_back( [ shared ] {
         for ( int i = 0; i < 20000; ++i ) {
            Kiln::Ptr< Tracked > copy = shared;
            Kiln::Ptr< Tracked > moved = std::move( copy );
            EXPECT_GE( moved->references(), 2u );
         }
      } );
   }
   for ( auto & thread : threads ) {
      thread.join();
   }
   EXPECT_EQ( 1u, shared->references() );
}

TEST_F( PtrTest, LastReleaseOnAnotherThreadDeletes ) {
   Kiln::Ptr< Tracked > p = new Tracked( 1 );
   std::thread t( [ moved = std::move( p ) ]() mutable { moved = nullptr; } );
   t.join();
   EXPECT_EQ( 0, Tracked::live );
}

TEST( PtrDeathTest, DroppingAnUnheldReferenceAborts ) {
   EXPECT_DEATH( ( new Tracked )->deleteRef(),
                 "Assertion 'deleteRef without a reference' failed" );
}

TEST( PtrDeathTest, DereferencingNullAborts ) {
   Kiln::Ptr< Tracked > none;
   EXPECT_DEATH( (void)none->value, "Assertion 'dereference of a null Kiln::Ptr' failed" );
}

TEST( BytePtr, CopiesShareTheBytes ) {
   struct Config {
      U32 rate;
      U32 burst;
   } config{ 1000, 64 };
   Kiln::BytePtr blob = Kiln::BytePtr::copyOf( config );
   ASSERT_EQ( sizeof( Config ), blob.size() );
   Kiln::BytePtr other = blob;
   EXPECT_EQ( 2u, blob.references() );
   reinterpret_cast< Config * >( other.data() )->burst = 128;
   Config back;
   std::memcpy( &back, blob.data(), sizeof back );
   EXPECT_EQ( 1000u, back.rate );
   EXPECT_EQ( 128u, back.burst );
}

TEST( BytePtr, NewBuffersAreZeroedAndNullIsEmpty ) {
   Kiln::BytePtr zeroed( 16 );
   for ( size_t i = 0; i < zeroed.size(); ++i ) {
      EXPECT_EQ( 0, zeroed.data()[ i ] );
   }
   Kiln::BytePtr none;
   EXPECT_FALSE( none );
   EXPECT_EQ( 0u, none.size() );
   EXPECT_EQ( nullptr, none.data() );
   EXPECT_TRUE( Kiln::BytePtr( nullptr, 0 ) );
}

} // namespace
