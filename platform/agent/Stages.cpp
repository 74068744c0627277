#include "platform/agent/Stages.h"

#include "platform/kiln/Assert.h"

#include <algorithm>

namespace Agent {

StageSequencer::StageSequencer( const Kiln::Name & name, std::vector< Kiln::String > stages )
      : Kiln::Entity( name ), stages_( std::move( stages ) ) {
   for ( const Kiln::String & stage : stages_ ) {
      KILN_ASSERT_MSG( !stage.empty() && stageStatus_.set( stage, stagePending ),
                       "stage names must be distinct and not empty" );
   }
}

StageSequencer::~StageSequencer() = default;

Kiln::String
StageSequencer::currentStage() const {
   if ( !started_ || current_ == stages_.size() ) {
      return Kiln::String();
   }
   return stages_[ current_ ];
}

void
StageSequencer::start() {
   KILN_ASSERT_MSG( !started_, "stages already started" );
   started_ = true;
   advance();
}

size_t
StageSequencer::stageWaiters( const Kiln::String & stage ) const {
   auto found = waiters_.find( stage );
   return found == waiters_.end() ? 0 : found->second.size();
}

size_t
StageSequencer::stageWaitersPending( const Kiln::String & stage ) const {
   auto found = waiters_.find( stage );
   if ( found == waiters_.end() ) {
      return 0;
   }
   return static_cast< size_t >( std::count_if( found->second.begin(), found->second.end(),
                                                []( const Waiter & w ) { return !w.complete; } ) );
}

StageSequencer::Waiter *
StageSequencer::waiter( StagesHelperBase * helper, const Kiln::String & stage ) {
   auto found = waiters_.find( stage );
   if ( found == waiters_.end() ) {
      return nullptr;
   }
   for ( Waiter & w : found->second ) {
      if ( w.helper == helper ) {
         return &w;
      }
   }
   return nullptr;
}

void
StageSequencer::waitIs( StagesHelperBase * helper, const Kiln::String & stage ) {
   if ( !stageHas( stage ) || waiter( helper, stage ) ) {
      return;
   }
   KILN_ASSERT_MSG( stageStatus( stage ) != stageComplete,
                    "stage wait registered after the stage completed" );
   waiters_[ stage ].push_back( Waiter{ helper, false, false } );
   if ( stageStatus( stage ) == stageRunning ) {
      advance();
   }
}

void
StageSequencer::waitDel( StagesHelperBase * helper, const Kiln::String & stage ) {
   auto found = waiters_.find( stage );
   if ( found == waiters_.end() ) {
      return;
   }
   auto & list = found->second;
   list.erase( std::remove_if( list.begin(), list.end(),
                               [ helper ]( const Waiter & w ) { return w.helper == helper; } ),
               list.end() );
   if ( stageStatus( stage ) == stageRunning ) {
      advance();
   }
}

void
StageSequencer::completeIs( StagesHelperBase * helper, const Kiln::String & stage ) {
   if ( !stageHas( stage ) ) {
      return;
   }
   Waiter * w = waiter( helper, stage );
   KILN_ASSERT_MSG( w, "doStageComplete for a stage the helper does not wait for" );
   KILN_ASSERT_MSG( stageStatus( stage ) != stagePending,
                    "doStageComplete before the stage started" );
   if ( w->complete ) {
      return;
   }
   w->complete = true;
   advance();
}

void
StageSequencer::statusIs( const Kiln::String & stage, StageStatus status ) {
   if ( stageStatus_.set( stage, status ) ) {
      notify( &NotifieeConst::onStageStatus, stage );
   }
}

// Calls doStage once on every waiter of the stage, including waiters that
// register while it runs. The list may change under each call, so the next
// waiter is looked up afresh every time.
void
StageSequencer::dispatch( const Kiln::String & stage ) {
   for ( ;; ) {
      Waiter * next = nullptr;
      for ( Waiter & w : waiters_[ stage ] ) {
         if ( !w.called ) {
            next = &w;
            break;
         }
      }
      if ( !next ) {
         return;
      }
      next->called = true;
      next->helper->doStage( stage );
   }
}

// Runs stages from the current one for as long as they complete. Nested
// calls (a waiter completing inside doStage) return at once: the loop
// further up the stack picks their change up.
void
StageSequencer::advance() {
   if ( advancing_ || !started_ ) {
      return;
   }
   advancing_ = true;
   while ( current_ < stages_.size() ) {
      Kiln::String stage = stages_[ current_ ];
      statusIs( stage, stageRunning );
      dispatch( stage );
      if ( stageWaitersPending( stage ) > 0 ) {
         break;
      }
      ++current_;
      statusIs( stage, stageComplete );
   }
   advancing_ = false;
}

StagesHelperBase::~StagesHelperBase() {
   stageSequencerIs( nullptr );
}

void
StagesHelperBase::stageSequencerIs( const Kiln::Ptr< StageSequencer > & sequencer ) {
   if ( sequencer == sequencer_ ) {
      return;
   }
   // Held here so that the old sequencer outlives the withdrawal. The waits
   // are walked as a snapshot: doStage, called from either sequencer, may
   // add or withdraw waits.
   Kiln::Ptr< StageSequencer > old = sequencer_;
   sequencer_ = sequencer;
   std::vector< Kiln::String > stages( stageWait_.begin(), stageWait_.end() );
   if ( old ) {
      for ( const Kiln::String & stage : stages ) {
         old->waitDel( this, stage );
      }
   }
   for ( const Kiln::String & stage : stages ) {
      if ( sequencer_ && stageWaitHas( stage ) ) {
         sequencer_->waitIs( this, stage );
      }
   }
}

void
StagesHelperBase::stageWaitIs( const Kiln::String & stage ) {
   if ( !stageWait_.insert( stage ).second ) {
      return;
   }
   if ( sequencer_ ) {
      sequencer_->waitIs( this, stage );
   }
}

void
StagesHelperBase::stageWaitDel( const Kiln::String & stage ) {
   if ( stageWait_.erase( stage ) && sequencer_ ) {
      sequencer_->waitDel( this, stage );
   }
}

void
StagesHelperBase::doStageComplete( const Kiln::String & stage ) {
   KILN_ASSERT_MSG( sequencer_, "doStageComplete without a stage sequencer" );
   sequencer_->completeIs( this, stage );
}

} // namespace Agent
