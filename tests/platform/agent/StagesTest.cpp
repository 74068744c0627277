#include <gtest/gtest.h>

#include "platform/agent/Stages.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

using Agent::StageSequencer;

// Everything that happens, in order, across helpers and the sequencer.
typedef std::vector< std::string > Log;

// A feature that logs each doStage and then runs what the test asks.
class Feature : public Agent::StagesHelperBase {
 public:
   Feature( const std::string & name, Log & log ) : name_( name ), log_( log ) {}
   void
   doStage( const Kiln::String & stage ) override {
      log_.push_back( name_ + " doStage " + stage.str() );
      if ( onStage ) {
         onStage( stage );
      }
   }
   std::function< void( const Kiln::String & ) > onStage;

 private:
   std::string name_;
   Log & log_;
};

struct StatusWatcher : StageSequencer::NotifieeConst {
   explicit StatusWatcher( Log & log ) : log_( log ) {}
   void
   onStageStatus( const Kiln::String & stage ) override {
      static const char * names[] = { "pending", "running", "complete" };
      log_.push_back( stage.str() + " " + names[ notifier()->stageStatus( stage ) ] );
   }
   Log & log_;
};

class Stages : public ::testing::Test {
 protected:
   Stages()
         : sequencer( new StageSequencer( "stages", { "PortInit", "TesselSliceTcamReconcile",
                                                      "Done" } ) ),
           watcher( log ) {
      watcher.notifierIs( sequencer );
   }
   Feature &
   feature( const std::string & name ) {
      features.push_back( std::make_unique< Feature >( name, log ) );
      features.back()->stageSequencerIs( sequencer );
      return *features.back();
   }

   Log log;
   Kiln::Ptr< StageSequencer > sequencer;
   StatusWatcher watcher;
   std::vector< std::unique_ptr< Feature > > features;
};

TEST_F( Stages, AStageWaitsForEveryWaiterWhateverOrderTheyComplete ) {
   Feature & a = feature( "a" );
   Feature & b = feature( "b" );
   a.stageWaitIs( "TesselSliceTcamReconcile" );
   b.stageWaitIs( "TesselSliceTcamReconcile" );
   sequencer->start();
   EXPECT_EQ( ( Log{ "PortInit running", "PortInit complete", "TesselSliceTcamReconcile running",
                     "a doStage TesselSliceTcamReconcile", "b doStage TesselSliceTcamReconcile" } ),
              log );
   EXPECT_EQ( "TesselSliceTcamReconcile", sequencer->currentStage() );
   EXPECT_EQ( 2u, sequencer->stageWaitersPending( "TesselSliceTcamReconcile" ) );

   log.clear();
   b.doStageComplete( "TesselSliceTcamReconcile" ); // the later waiter first
   b.doStageComplete( "TesselSliceTcamReconcile" ); // again: no effect
   EXPECT_TRUE( log.empty() );
   EXPECT_EQ( StageSequencer::stageRunning, sequencer->stageStatus( "TesselSliceTcamReconcile" ) );
   a.doStageComplete( "TesselSliceTcamReconcile" );
   EXPECT_EQ( ( Log{ "TesselSliceTcamReconcile complete", "Done running", "Done complete" } ), log );
   EXPECT_TRUE( sequencer->done() );
   EXPECT_EQ( "", sequencer->currentStage() );
}

TEST_F( Stages, CompletingInsideDoStageRunsLaterStagesInOrder ) {
   Feature & a = feature( "a" );
   a.onStage = [ & ]( const Kiln::String & stage ) { a.doStageComplete( stage ); };
   a.stageWaitIs( "Done" );
   a.stageWaitIs( "PortInit" );
   sequencer->start();
   EXPECT_EQ( ( Log{ "PortInit running", "a doStage PortInit", "PortInit complete",
                     "TesselSliceTcamReconcile running", "TesselSliceTcamReconcile complete",
                     "Done running", "a doStage Done", "Done complete" } ),
              log );
   EXPECT_TRUE( sequencer->done() );
}

TEST_F( Stages, UnknownStagesAreIgnoredAndBlockNothing ) {
   Feature & a = feature( "a" );
   a.stageWaitIs( "NoSuchStage" );
   EXPECT_TRUE( a.stageWaitHas( "NoSuchStage" ) );
   EXPECT_EQ( 0u, sequencer->stageWaiters( "NoSuchStage" ) );
   sequencer->start();
   EXPECT_TRUE( sequencer->done() );
   a.doStageComplete( "NoSuchStage" ); // ignored, not an error
   for ( const std::string & line : log ) {
      EXPECT_EQ( std::string::npos, line.find( "doStage" ) ) << line;
   }
}

TEST_F( Stages, AWaitRegisteredWhileItsStageRunsIsCalledAtOnce ) {
   Feature & a = feature( "a" );
   a.stageWaitIs( "TesselSliceTcamReconcile" );
   Feature * late = nullptr;
   // A waiter registered during another's doStage is called by the same
   // dispatch, and holds the stage too.
   a.onStage = [ & ]( const Kiln::String & ) {
      late = &feature( "late" );
      late->stageWaitIs( "TesselSliceTcamReconcile" );
      a.doStageComplete( "TesselSliceTcamReconcile" );
   };
   sequencer->start();
   EXPECT_EQ( "late doStage TesselSliceTcamReconcile", log.back() );
   EXPECT_EQ( "TesselSliceTcamReconcile", sequencer->currentStage() );

   Feature & later = feature( "later" );
   later.stageWaitIs( "TesselSliceTcamReconcile" );
   EXPECT_EQ( "later doStage TesselSliceTcamReconcile", log.back() );
   late->doStageComplete( "TesselSliceTcamReconcile" );
   EXPECT_FALSE( sequencer->done() );
   later.doStageComplete( "TesselSliceTcamReconcile" );
   EXPECT_TRUE( sequencer->done() );
}

TEST_F( Stages, AWaiterThatGoesAwayReleasesItsStage ) {
   Feature & a = feature( "a" );
   Feature & b = feature( "b" );
   a.stageWaitIs( "PortInit" );
   b.stageWaitIs( "PortInit" );
   sequencer->start();
   a.doStageComplete( "PortInit" );
   EXPECT_EQ( "PortInit", sequencer->currentStage() );
   features.pop_back(); // b is destroyed without completing
   EXPECT_TRUE( sequencer->done() );
   EXPECT_EQ( 1u, sequencer->stageWaiters( "PortInit" ) );

   // Withdrawing a wait of a running stage does the same.
   Kiln::Ptr< StageSequencer > other = new StageSequencer( "other", { "Only" } );
   a.stageSequencerIs( other );
   a.stageWaitIs( "Only" );
   other->start();
   EXPECT_FALSE( other->done() );
   a.stageWaitDel( "Only" );
   EXPECT_TRUE( other->done() );
}

TEST_F( Stages, WaitsMoveWithTheHelperToANewSequencer ) {
   Feature & a = feature( "a" );
   a.stageSequencerIs( nullptr );
   a.stageWaitIs( "Only" ); // remembered until a sequencer is attached
   Kiln::Ptr< StageSequencer > other = new StageSequencer( "other", { "Only" } );
   a.stageSequencerIs( other );
   EXPECT_EQ( 1u, other->stageWaiters( "Only" ) );
   EXPECT_EQ( 0u, sequencer->stageWaiters( "Only" ) );
   other->start();
   EXPECT_EQ( "a doStage Only", log.back() );
   a.doStageComplete( "Only" );
   EXPECT_TRUE( other->done() );
}

TEST( StagesDeath, MisuseIsAProgrammingError ) {
   Log log;
   Kiln::Ptr< StageSequencer > sequencer = new StageSequencer( "s", { "One", "Two" } );
   Feature a( "a", log );
   EXPECT_DEATH( a.doStageComplete( "One" ),
                 "void Agent::StagesHelperBase::doStageComplete\\(const Kiln::String&\\): "
                 "Assertion 'doStageComplete without a stage sequencer' failed" );
   a.stageSequencerIs( sequencer );
   EXPECT_DEATH( a.doStageComplete( "One" ),
                 "Assertion 'doStageComplete for a stage the helper does not wait for' failed" );
   a.stageWaitIs( "Two" );
   EXPECT_DEATH( a.doStageComplete( "Two" ),
                 "Assertion 'doStageComplete before the stage started' failed" );
   sequencer->start();
   EXPECT_DEATH( sequencer->start(), "Assertion 'stages already started' failed" );
   a.doStageComplete( "Two" );
   EXPECT_TRUE( sequencer->done() );

   Feature b( "b", log );
   b.stageSequencerIs( sequencer );
   EXPECT_DEATH( b.stageWaitIs( "One" ),
                 "Assertion 'stage wait registered after the stage completed' failed" );
   EXPECT_DEATH( StageSequencer( "dup", { "One", "One" } ),
                 "Assertion 'stage names must be distinct and not empty' failed" );
   EXPECT_DEATH( StageSequencer( "unnamed", { "One", "" } ),
                 "Assertion 'stage names must be distinct and not empty' failed" );
}

} // namespace
