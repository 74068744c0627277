// Start-up stages: the agent starts in named stages that run one after
// another; a stage ends when every feature that waits for it has said it
// is done.
//
//    Kiln::Ptr< Agent::StageSequencer > stages =
//       new Agent::StageSequencer( "stages", { "PortInit", "TesselSliceTcamReconcile", "Done" } );
//
//    class FlashDownload : public Agent::StagesHelperBase {   // a feature
//       void initStages() { stageWaitIs( "TesselSliceTcamReconcile" ); }
//       void doStage( const Kiln::String & stage ) override {
//          if ( stage == "TesselSliceTcamReconcile" ) { ... later: doStageComplete( stage ); }
//       }
//    };
//    feature.stageSequencerIs( stages ); feature.initStages();
//    stages->start();
//
// Lifecycle: the agent makes the sequencer with its stage list, features
// attach and register their waits, then start() runs the first stage. When a
// stage starts, each of its waiters gets doStage( stage ) once, in the order
// they registered; the next stage starts as soon as every waiter has called
// doStageComplete( stage ), which it may do inside doStage or at any later
// time. A stage nobody waits for ends at once. Everything happens on the
// caller's thread, inside start() or inside the doStageComplete() call that
// finishes a stage, so one call may run several stages.
//
// Waits for a stage the sequencer does not run are ignored: never called,
// blocking nothing (features may name stages that only some agents have).
// Threads: the activity thread only, like all entities.
#pragma once

#include "platform/kiln/Collection.h"
#include "platform/kiln/Entity.h"
#include "platform/kiln/Ptr.h"
#include "platform/kiln/String.h"
#include "platform/kiln/Types.h"

#include <cstddef>
#include <map>
#include <set>
#include <vector>

namespace Agent {

class StagesHelperBase;

class StageSequencer : public Kiln::Entity {
 public:
   enum StageStatus : U8 {
      stagePending = 0,
      stageRunning = 1,
      stageComplete = 2,
   };

   class NotifieeConst : public Kiln::Notifiee< StageSequencer > {
    public:
      // The stage moved on: started or completed.
      virtual void onStageStatus( const Kiln::String & /* stage */ ) {}
   };

   // `stages` in the order they run; names must be distinct and not empty
   // (assertion "stage names must be distinct and not empty").
   StageSequencer( const Kiln::Name & name, std::vector< Kiln::String > stages );
   // Waiters still attached keep it alive (they hold Ptrs), so none are left
   // by the time it goes.
   ~StageSequencer() override;

   const std::vector< Kiln::String > & stages() const { return stages_; }
   bool stageHas( const Kiln::String & stage ) const { return stageStatus_.has( stage ); }
   // stagePending for a stage the sequencer does not run.
   StageStatus stageStatus( const Kiln::String & stage ) const { return stageStatus_.get( stage ); }
   // The stage running now; empty before start() and after the last stage.
   Kiln::String currentStage() const;
   bool started() const { return started_; }
   // Every stage completed.
   bool done() const { return started_ && current_ == stages_.size(); }

   // Runs the first stage, and the ones after it as far as they complete at
   // once. Starting twice is a programming error ("stages already started").
   void start();

   // Waits registered for the stage, and those not yet completed.
   size_t stageWaiters( const Kiln::String & stage ) const;
   size_t stageWaitersPending( const Kiln::String & stage ) const;

 private:
   friend class StagesHelperBase;
   struct Waiter {
      StagesHelperBase * helper;
      bool called;
      bool complete;
   };

   // Called by StagesHelperBase.
   void waitIs( StagesHelperBase * helper, const Kiln::String & stage );
   void waitDel( StagesHelperBase * helper, const Kiln::String & stage );
   void completeIs( StagesHelperBase * helper, const Kiln::String & stage );

   Waiter * waiter( StagesHelperBase * helper, const Kiln::String & stage );
   void statusIs( const Kiln::String & stage, StageStatus status );
   void dispatch( const Kiln::String & stage );
   void advance();

   std::vector< Kiln::String > stages_;
   Kiln::OrderedCollection< Kiln::String, StageStatus > stageStatus_;
   std::map< Kiln::String, std::vector< Waiter > > waiters_;
   size_t current_ = 0;
   bool started_ = false;
   // advance() is running further up the stack: it will see any change.
   bool advancing_ = false;
};

// The base of a feature that takes part in start-up. Not copyable: the
// sequencer refers to the helper by address.
class StagesHelperBase {
 public:
   StagesHelperBase() = default;
   StagesHelperBase( const StagesHelperBase & ) = delete;
   StagesHelperBase & operator=( const StagesHelperBase & ) = delete;
   // Withdraws the helper's waits; a stage that waited only for it moves on.
   virtual ~StagesHelperBase();

   const Kiln::Ptr< StageSequencer > & stageSequencer() const { return sequencer_; }
   // Moves the helper's waits from the current sequencer (if any) to
   // `sequencer` (if not null).
   void stageSequencerIs( const Kiln::Ptr< StageSequencer > & sequencer );

   // Registers a wait for `stage` with the sequencer (now or when one is
   // attached). When the stage is already running, doStage is called at
   // once. Waiting for a stage that has completed is a programming error
   // ("stage wait registered after the stage completed").
   void stageWaitIs( const Kiln::String & stage );
   // Withdraws the wait; a running stage that waited only for it moves on.
   void stageWaitDel( const Kiln::String & stage );
   bool stageWaitHas( const Kiln::String & stage ) const { return stageWait_.count( stage ) > 0; }

   // Called by the sequencer when a stage the helper waits for starts.
   virtual void doStage( const Kiln::String & stage ) = 0;

   // Tells the sequencer the helper is done with `stage`. Completing twice
   // changes nothing; a stage the sequencer does not run is ignored.
   // Programming errors: no sequencer ("doStageComplete without a stage
   // sequencer"), a stage the helper does not wait for ("doStageComplete for
   // a stage the helper does not wait for"), a stage not yet started
   // ("doStageComplete before the stage started").
   void doStageComplete( const Kiln::String & stage );

 private:
   Kiln::Ptr< StageSequencer > sequencer_;
   std::set< Kiln::String > stageWait_;
};

} // namespace Agent
