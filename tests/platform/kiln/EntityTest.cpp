#include <gtest/gtest.h>

#include "platform/kiln/Attribute.h"
#include "platform/kiln/Collection.h"
#include "platform/kiln/Entity.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

struct PipeInfo : Kiln::Entity {
   static int live;
   explicit PipeInfo( U32 pipe ) : Kiln::Entity( "pipe" + std::to_string( pipe ) ) { ++live; }
   ~PipeInfo() override { --live; }
};
int PipeInfo::live = 0;

// An entity written the way product entities are: one-line members over the
// storage templates.
class GroupCounts : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< GroupCounts > {
    public:
      virtual void onEnabled() {}
      virtual void onUnitRefCount( U32 ) {}
      virtual void onPipe( U32 ) {}
      virtual void onSlice( U32 ) {}
      virtual void onOwner( const Kiln::String & ) {}
   };
   static int live;
   explicit GroupCounts( const Kiln::Name & name ) : Kiln::Entity( name ) { ++live; }
   ~GroupCounts() override { --live; }

   bool enabled() const { return enabled_.get(); }
   void enabledIs( bool v ) { attributeIs( enabled_, v, &NotifieeConst::onEnabled ); }

   U32 unitRefCount( U32 unit ) const { return unitRefCount_.get( unit ); }
   bool unitRefCountHas( U32 unit ) const { return unitRefCount_.has( unit ); }
   size_t unitRefCountSize() const { return unitRefCount_.size(); }
   void
   unitRefCountIs( U32 unit, U32 n ) {
      collectionIs( unitRefCount_, unit, n, &NotifieeConst::onUnitRefCount );
   }
   U32
   unitRefCountInc( U32 unit, S32 delta ) {
      return collectionInc( unitRefCount_, unit, delta, &NotifieeConst::onUnitRefCount );
   }
   void
   unitRefCountDel( U32 unit ) {
      collectionDel( unitRefCount_, unit, &NotifieeConst::onUnitRefCount );
   }
   void
   unitRefCountDelAll() {
      collectionDelAll( unitRefCount_, &NotifieeConst::onUnitRefCount );
   }

   Kiln::Ptr< PipeInfo > pipe( U32 p ) const { return pipe_.get( p ); }
   Kiln::Ptr< PipeInfo >
   pipeIs( U32 p ) {
      return collectionEntityIs( pipe_, p, &NotifieeConst::onPipe, p );
   }
   void pipeDel( U32 p ) { collectionDel( pipe_, p, &NotifieeConst::onPipe ); }
   void pipeDelAll() { collectionDelAll( pipe_, &NotifieeConst::onPipe ); }

   bool sliceHas( U32 s ) const { return slice_.has( s ); }
   void sliceIs( U32 s ) { collectionIs( slice_, s, &NotifieeConst::onSlice ); }
   void sliceDel( U32 s ) { collectionDel( slice_, s, &NotifieeConst::onSlice ); }

   U32 owner( const Kiln::String & o ) const { return owner_.get( o ); }
   void
   ownerIs( const Kiln::String & o, U32 v ) {
      collectionIs( owner_, o, v, &NotifieeConst::onOwner );
   }

 private:
   Kiln::Attribute< bool > enabled_;
   Kiln::OrderedCollection< U32, U32 > unitRefCount_;
   Kiln::OrderedCollection< U32, Kiln::Ptr< PipeInfo > > pipe_;
   Kiln::OrderedSet< U32 > slice_;
   Kiln::HashCollection< Kiln::String, U32 > owner_;
};
int GroupCounts::live = 0;

// Records what it is told, with the state it sees at that moment. Hooks let
// a test act from inside a notification.
class Recorder : public GroupCounts::NotifieeConst {
 public:
   Recorder( std::vector< std::string > & log, const std::string & tag )
         : log_( log ), tag_( tag ) {}

   void
   onEnabled() override {
      log_.push_back( tag_ + " enabled=" + std::to_string( notifier()->enabled() ) );
      run( onEnabledHook );
   }
   void
   onUnitRefCount( U32 unit ) override {
      GroupCounts * g = notifier();
      log_.push_back( tag_ + " unit " + std::to_string( unit ) + " " +
                      ( g->unitRefCountHas( unit )
                           ? std::to_string( g->unitRefCount( unit ) )
                           : std::string( "gone" ) ) +
                      " size " + std::to_string( g->unitRefCountSize() ) );
      run( onUnitHook );
   }
   void
   onPipe( U32 p ) override {
      log_.push_back( tag_ + " pipe " + std::to_string( p ) );
   }
   void
   onSlice( U32 s ) override {
      log_.push_back( tag_ + " slice " + std::to_string( s ) + " " +
                      std::to_string( notifier()->sliceHas( s ) ) );
   }
   void
   onOwner( const Kiln::String & o ) override {
      log_.push_back( tag_ + " owner " + o.str() + " " +
                      std::to_string( notifier()->owner( o ) ) );
   }

   std::function< void() > onEnabledHook;
   std::function< void() > onUnitHook;

 private:
   void
   run( const std::function< void() > & hook ) {
      if ( hook ) {
         auto copy = hook; // the hook may destroy this observer
         copy();
      }
   }
   std::vector< std::string > & log_;
   std::string tag_;
};

class EntityTest : public ::testing::Test {
 protected:
   void
   SetUp() override {
      counts = new GroupCounts( "ifp" );
      a.notifierIs( counts );
   }
   void
   TearDown() override {
      counts = nullptr;
      EXPECT_EQ( 0, GroupCounts::live );
      EXPECT_EQ( 0, PipeInfo::live );
   }
   std::vector< std::string >
   take() {
      return std::exchange( log, {} );
   }

   std::vector< std::string > log;
   Kiln::Ptr< GroupCounts > counts;
   Recorder a{ log, "a" };
};

typedef std::vector< std::string > Log;

TEST_F( EntityTest, NotifiesOnlyRealChangesWithTheNewState ) {
   counts->enabledIs( false ); // already false
   counts->enabledIs( true );
   counts->enabledIs( true );
   counts->unitRefCountIs( 1, 5 );
   counts->unitRefCountIs( 1, 5 );
   counts->unitRefCountIs( 1, 6 );
   counts->unitRefCountDel( 2 ); // not there
   counts->unitRefCountDel( 1 );
   counts->sliceIs( 9 );
   counts->sliceIs( 9 );
   counts->sliceDel( 9 );
   counts->ownerIs( "acl", 3 );
   counts->ownerIs( "acl", 3 );
   EXPECT_EQ( ( Log{ "a enabled=1", "a unit 1 5 size 1", "a unit 1 6 size 1",
                     "a unit 1 gone size 0", "a slice 9 1", "a slice 9 0", "a owner acl 3" } ),
              take() );
}

TEST_F( EntityTest, DelAllNotifiesEachKeyInOrderAsTheCollectionShrinks ) {
   counts->unitRefCountIs( 3, 30 );
   counts->unitRefCountIs( 1, 10 );
   counts->unitRefCountIs( 2, 20 );
   take();
   counts->unitRefCountDelAll();
   EXPECT_EQ( ( Log{ "a unit 1 gone size 2", "a unit 2 gone size 1", "a unit 3 gone size 0" } ),
              take() );
   counts->unitRefCountDelAll();
   EXPECT_TRUE( take().empty() );
}

TEST_F( EntityTest, DelAllToleratesObserversThatDeleteOtherKeys ) {
   for ( U32 unit = 1; unit <= 4; ++unit ) {
      counts->unitRefCountIs( unit, unit );
   }
   take();
   // Deleting key 2 while key 1's deletion is being told: 2 is reported
   // once, by the nested deletion, and DelAll moves on.
   a.onUnitHook = [ & ] { counts->unitRefCountDel( 2 ); };
   counts->unitRefCountDelAll();
   EXPECT_EQ( ( Log{ "a unit 1 gone size 3", "a unit 2 gone size 2", "a unit 3 gone size 1",
                     "a unit 4 gone size 0" } ),
              take() );
}

TEST_F( EntityTest, CountersStartAtZeroAndNotifyChanges ) {
   EXPECT_EQ( 0u, counts->unitRefCountInc( 4, 0 ) ); // creating is a change
   EXPECT_EQ( 0u, counts->unitRefCountInc( 4, 0 ) ); // this is not
   EXPECT_EQ( 3u, counts->unitRefCountInc( 4, 3 ) );
   EXPECT_EQ( 1u, counts->unitRefCountInc( 4, -2 ) );
   EXPECT_EQ( ( Log{ "a unit 4 0 size 1", "a unit 4 3 size 1", "a unit 4 1 size 1" } ), take() );
}

TEST_F( EntityTest, EntityCollectionMakesEachEntityOnce ) {
   Kiln::Ptr< PipeInfo > first = counts->pipeIs( 2 );
   Kiln::Ptr< PipeInfo > again = counts->pipeIs( 2 );
   EXPECT_EQ( first, again );
   EXPECT_EQ( "pipe2", first->name().str() );
   EXPECT_EQ( 3u, first->references() ); // the collection and two handles
   EXPECT_EQ( first, counts->pipe( 2 ) );
   EXPECT_FALSE( counts->pipe( 3 ) );
   EXPECT_EQ( ( Log{ "a pipe 2" } ), take() );

   first = again = nullptr;
   counts->pipeIs( 5 );
   EXPECT_EQ( 2, PipeInfo::live );
   counts->pipeDel( 2 );
   EXPECT_EQ( 1, PipeInfo::live );
   counts->pipeDelAll();
   EXPECT_EQ( 0, PipeInfo::live );
   EXPECT_EQ( ( Log{ "a pipe 5", "a pipe 2", "a pipe 5" } ), take() );
}

TEST_F( EntityTest, ObserversDetachingDuringANotificationAreSkipped ) {
   Recorder b( log, "b" ), c( log, "c" );
   b.notifierIs( counts );
   c.notifierIs( counts );
   a.onEnabledHook = [ & ] { a.notifierIs( nullptr ); }; // itself
   b.onEnabledHook = [ & ] { c.notifierIs( nullptr ); }; // one not yet called
   counts->enabledIs( true );
   EXPECT_EQ( ( Log{ "a enabled=1", "b enabled=1" } ), take() );
   EXPECT_EQ( 1u, counts->notifiees() );
   EXPECT_EQ( nullptr, a.notifier() );

   b.onEnabledHook = nullptr;
   counts->enabledIs( false );
   EXPECT_EQ( ( Log{ "b enabled=0" } ), take() );
}

TEST_F( EntityTest, ObserversAttachedDuringANotificationWaitForTheNext ) {
   Recorder late( log, "late" );
   a.onEnabledHook = [ & ] { late.notifierIs( counts ); };
   counts->enabledIs( true );
   EXPECT_EQ( ( Log{ "a enabled=1" } ), take() );
   a.onEnabledHook = nullptr;
   counts->enabledIs( false );
   EXPECT_EQ( ( Log{ "a enabled=0", "late enabled=0" } ), take() );
}

TEST_F( EntityTest, ObserverDestroyedDuringANotificationIsNotCalled ) {
   auto doomed = std::make_unique< Recorder >( log, "doomed" );
   doomed->notifierIs( counts );
   a.onEnabledHook = [ & ] { doomed.reset(); };
   counts->enabledIs( true );
   EXPECT_EQ( ( Log{ "a enabled=1" } ), take() );
   EXPECT_EQ( 1u, counts->notifiees() );
}

TEST_F( EntityTest, NestedNotificationsKeepEveryObserverInStep ) {
   Recorder b( log, "b" );
   b.notifierIs( counts );
   // a changes a collection from inside onEnabled; b detaches itself inside
   // the nested notification, before its turn in the outer one.
   a.onEnabledHook = [ & ] { counts->unitRefCountIs( 7, 1 ); };
   b.onUnitHook = [ & ] { b.notifierIs( nullptr ); };
   counts->enabledIs( true );
   EXPECT_EQ( ( Log{ "a enabled=1", "a unit 7 1 size 1", "b unit 7 1 size 1" } ), take() );
   EXPECT_EQ( 1u, counts->notifiees() );
}

TEST_F( EntityTest, EntityOutlivesANotificationThatDropsItsLastReference ) {
   a.onEnabledHook = [ & ] {
      counts = nullptr;
      EXPECT_EQ( 1, GroupCounts::live );
      EXPECT_EQ( "ifp", a.notifier()->name().str() ); // still readable
   };
   GroupCounts * raw = counts.get();
   raw->enabledIs( true );
   EXPECT_EQ( 0, GroupCounts::live );
   EXPECT_EQ( nullptr, a.notifier() );
}

TEST_F( EntityTest, DestroyedEntityDetachesItsObservers ) {
   Recorder b( log, "b" );
   b.notifierIs( counts );
   counts = nullptr;
   EXPECT_EQ( nullptr, a.notifier() );
   EXPECT_EQ( nullptr, b.notifier() );
   b.notifierIs( nullptr ); // harmless once detached
}

TEST_F( EntityTest, ReattachingMovesTheObserver ) {
   Kiln::Ptr< GroupCounts > other = new GroupCounts( "efp" );
   a.notifierIs( other );
   a.notifierIs( other ); // no double attachment
   EXPECT_EQ( 0u, counts->notifiees() );
   EXPECT_EQ( 1u, other->notifiees() );
   counts->enabledIs( true );
   other->enabledIs( true );
   EXPECT_EQ( ( Log{ "a enabled=1" } ), take() );
   EXPECT_EQ( "efp", a.notifier()->name().str() );
}

// A derived entity extends its base's observer interface; notifications of
// each level reach exactly the observers of that level.
class GroupCountsEx : public GroupCounts {
 public:
   class NotifieeConst : public GroupCounts::NotifieeConst {
    public:
      virtual void onLabel() {}
   };
   GroupCountsEx() : GroupCounts( "ex" ) {}
   void
   labelIs( const Kiln::String & l ) {
      attributeIs( label_, l, &NotifieeConst::onLabel );
   }

 private:
   Kiln::Attribute< Kiln::String > label_;
};

class LabelRecorder : public GroupCountsEx::NotifieeConst {
 public:
   explicit LabelRecorder( std::vector< std::string > & log ) : log_( log ) {}
   void onLabel() override { log_.push_back( "label" ); }
   void onEnabled() override { log_.push_back( "ex enabled" ); }

 private:
   std::vector< std::string > & log_;
};

TEST_F( EntityTest, DerivedInterfacesDispatchByLevel ) {
   Kiln::Ptr< GroupCountsEx > ex = new GroupCountsEx;
   LabelRecorder derived( log );
   derived.notifierIs( ex );
   a.notifierIs( ex ); // a base-level observer of the derived entity
   ex->labelIs( "x" );
   ex->enabledIs( true );
   EXPECT_EQ( ( Log{ "label", "ex enabled", "a enabled=1" } ), take() );
}

} // namespace
