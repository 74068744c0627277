// TesselTcamFlashDownloadSm: programs every unit's TCAM once at start-up,
// when every party the start-up depends on has said it is ready, and then
// completes the start-up stage "TesselSliceTcamReconcile".
//
//    Kiln::Ptr< Tessel::TesselTcamFlashDownloadSm > sm =
//       new Tessel::TesselTcamFlashDownloadSm( "tcamFlashDownloadSm" );
//    sm->scsdIs( scsd );                        // the shared start-up state
//    sm->eventHistoryWriterIs( writer );        // optional
//    sm->stageSequencerIs( stages );            // the agent's stage service
//    sm->initStages();
//    stages->start();   // the stage sets request 4; the last flag set programs
//
// States: waiting (flags incomplete) -> programming -> done
// (performedFlashDownload true, stage complete). The decision runs on every
// change of a readiness flag or of the set of required flags, and when the
// start-up state is attached; once done, nothing runs again.
//
// Locking: the activity thread, holding the activity lock. The flash-program
// call releases the lock while it runs; flags may change meanwhile (their
// notifications find the download in progress and do nothing) and the
// start-up state is read again after each call.
#pragma once

#include "common/TesselExport.h"
#include "platform/agent/EventHistory.h"
#include "platform/agent/Stages.h"
#include "platform/agent/TesselCommonSmData.h"
#include "platform/kiln/Attribute.h"
#include "platform/kiln/Entity.h"
#include "platform/kiln/Ptr.h"
#include "platform/kiln/String.h"
#include "platform/kiln/Types.h"

#include <memory>

namespace Tessel {

// The start-up stage that waits for the flash download.
TESSEL_EXPORT extern const char * const sliceTcamReconcileStage;

class TESSEL_EXPORT TesselTcamFlashDownloadSm : public Kiln::Entity,
                                                public Agent::StagesHelperBase {
 public:
   class NotifieeConst : public Kiln::Notifiee< TesselTcamFlashDownloadSm > {
    public:
      virtual void onScsd() {}
      virtual void onEventHistoryWriter() {}
      virtual void onPerformedFlashDownload() {}
   };

   explicit TesselTcamFlashDownloadSm( const Kiln::Name & name );
   ~TesselTcamFlashDownloadSm() override;

   // The shared start-up state: units, readiness flags, start-up flags.
   // Attaching one whose flags are already complete runs the download.
   const Kiln::Ptr< Agent::TesselCommonSmData > & scsd() const { return scsd_.get(); }
   void scsdIs( const Kiln::Ptr< Agent::TesselCommonSmData > & scsd );
   void scsdDel() { scsdIs( nullptr ); }

   // Where "Programming TCAMs Start" and "... Complete" go; none: no events.
   const Kiln::Ptr< Agent::EventHistoryWriter > &
   eventHistoryWriter() const {
      return eventHistoryWriter_.get();
   }
   void
   eventHistoryWriterIs( const Kiln::Ptr< Agent::EventHistoryWriter > & writer ) {
      attributeIs( eventHistoryWriter_, writer, &NotifieeConst::onEventHistoryWriter );
   }

   // True once the download has run; it never runs again. Setting it true
   // beforehand (the agent knows the TCAM is already programmed) keeps the
   // download from running; the stage then completes when it starts.
   bool performedFlashDownload() const { return performedFlashDownload_.get(); }
   void performedFlashDownloadIs( bool performed );

   // Registers the wait for "TesselSliceTcamReconcile" with the stage
   // service (attach it first with stageSequencerIs, or later: the wait
   // moves with it).
   void initStages();
   // For "TesselSliceTcamReconcile": sets request 4 in flashDownloadWait;
   // other stages are ignored. The start-up state must be attached by then
   // ("flash download stage without start-up state").
   void doStage( const Kiln::String & stage ) override;

   // A flag of flashDownloadWait changed: traces it and decides.
   void handleFlashDownloadWait( Agent::TcamFlashDownloadReq req );
   // The decision: when every required flag is set and the download has not
   // run, programs every unit that may be programmed (ascending), records the
   // events, sets performedFlashDownload and completes the stage. SDK errors
   // do not stop it.
   void handleFlashDownloadWait();
   // Programs one unit with the start-up state's flags; the result is
   // deliberately not examined.
   void doTcamFlashProgram( U32 unit );

 private:
   class ScsdReactor;

   void eventIs( const char * text );
   void completeStageIfDone();

   Kiln::Attribute< Kiln::Ptr< Agent::TesselCommonSmData > > scsd_;
   Kiln::Attribute< Kiln::Ptr< Agent::EventHistoryWriter > > eventHistoryWriter_;
   Kiln::Attribute< bool > performedFlashDownload_;
   std::unique_ptr< ScsdReactor > scsdReactor_;
   // Between "Programming TCAMs Start" and "... Complete": the SDK calls
   // release the activity lock, and a flag set meanwhile must not start a
   // second download.
   bool programming_ = false;
};

} // namespace Tessel
