#include "startup/TesselTcamFlashDownload.h"

#include "common/TesselSdkCall.h"
#include "platform/fastlog/Trace.h"
#include "platform/kiln/Assert.h"
#include "sdk/shim/Oberon.h"
#include "startup/KeepAlive.h"

TRACE_CHANNEL( "TesselTcamFlashDownload" );

namespace Tessel {

const char * const sliceTcamReconcileStage = "TesselSliceTcamReconcile";

// Turns the start-up state's notifications into the state machine's handlers.
class TesselTcamFlashDownloadSm::ScsdReactor : public Agent::TesselCommonSmData::NotifieeConst {
 public:
   explicit ScsdReactor( TesselTcamFlashDownloadSm & sm ) : sm_( sm ) {}

   void
   onFlashDownloadWait( Agent::TcamFlashDownloadReq req ) override {
      sm_.handleFlashDownloadWait( req );
   }
   // Dropping a requirement may complete the flags as much as setting one.
   void
   onFlashDownloadRequired( Agent::TcamFlashDownloadReq req ) override {
      TRACE8( "flashDownloadRequired " << req << " "
                                       << notifier()->flashDownloadRequiredHas( req ) );
      sm_.handleFlashDownloadWait();
   }

 private:
   TesselTcamFlashDownloadSm & sm_;
};

namespace {

// " waiting for: a b" naming the required flags that are not set; empty
// when none is missing.
std::string
missingText( const Agent::TesselCommonSmData & scsd ) {
   std::string text;
   for ( Agent::TcamFlashDownloadReq req : scsd.flashDownloadMissing() ) {
      text += text.empty() ? " waiting for: " : " ";
      text += Agent::TcamFlashDownloadReqInstance::valueToStrep( req );
   }
   return text;
}

} // namespace

TesselTcamFlashDownloadSm::TesselTcamFlashDownloadSm( const Kiln::Name & name )
      : Kiln::Entity( name ), scsdReactor_( std::make_unique< ScsdReactor >( *this ) ) {}

TesselTcamFlashDownloadSm::~TesselTcamFlashDownloadSm() = default;

void
TesselTcamFlashDownloadSm::scsdIs( const Kiln::Ptr< Agent::TesselCommonSmData > & scsd ) {
   if ( !attributeIs( scsd_, scsd, &NotifieeConst::onScsd ) ) {
      return;
   }
   scsdReactor_->notifierIs( scsd );
   if ( scsd && scsd->flashDownloadReady() ) {
      handleFlashDownloadWait();
   }
}

void
TesselTcamFlashDownloadSm::performedFlashDownloadIs( bool performed ) {
   attributeIs( performedFlashDownload_, performed, &NotifieeConst::onPerformedFlashDownload );
   completeStageIfDone();
}

void
TesselTcamFlashDownloadSm::initStages() {
   TRACE8( "initStages" );
   stageWaitIs( sliceTcamReconcileStage );
}

void
TesselTcamFlashDownloadSm::doStage( const Kiln::String & stage ) {
   TRACE8( "doStage " << stage );
   if ( stage != sliceTcamReconcileStage ) {
      return;
   }
   KILN_ASSERT_MSG( scsd(), "flash download stage without start-up state" );
   KeepAlive keep( *this );
   scsd()->flashDownloadWaitIs( Agent::tcamFlashDownloadReqSliceTcamReconcile, true );
   // Done before the stage started (or the flag was already set): the stage
   // still has to hear about it.
   completeStageIfDone();
}

void
TesselTcamFlashDownloadSm::handleFlashDownloadWait( Agent::TcamFlashDownloadReq req ) {
   TRACE8( "handleFlashDownloadWait " << req << " "
                                      << ( scsd() && scsd()->flashDownloadWait( req ) ) );
   handleFlashDownloadWait();
}

void
TesselTcamFlashDownloadSm::handleFlashDownloadWait() {
   KeepAlive keep( *this );
   Kiln::Ptr< Agent::TesselCommonSmData > state = scsd();
   if ( !state ) {
      return;
   }
   bool ready = state->flashDownloadReady();
   TRACE5( "Ready to program: " << ready << missingText( *state ) );
   if ( !ready || performedFlashDownload() || programming_ ) {
      return;
   }
   programming_ = true;
   TRACE1( "Programming TCAMs" );
   eventIs( "Programming TCAMs Start" );
   // Walked by key: units added or marked while a call has the lock
   // released are seen as the walk reaches them.
   for ( U32 unit : state->unitCollection() ) {
      if ( state->doNotProgramUnitHas( unit ) ) {
         TRACE3( "Not programming unit " << unit );
         continue;
      }
      doTcamFlashProgram( unit );
   }
   eventIs( "Programming TCAMs Complete" );
   programming_ = false;
   performedFlashDownloadIs( true );
}

void
TesselTcamFlashDownloadSm::doTcamFlashProgram( U32 unit ) {
   const Kiln::Ptr< Agent::TesselCommonSmData > & state = scsd();
   bool hitlessStartup = state && state->hitlessStartup();
   bool lacpDrainNeeded = state && state->lacpDrainNeeded();
   bool skipTcamFlashDownload = state && state->skipTcamFlashDownload();
   TRACE1( "DoTcamFlashProgram unit " << unit << " hitlessStartup: " << hitlessStartup
                                      << " lacpDrainNeeded: " << lacpDrainNeeded
                                      << " skipTcamFlashDownload: " << skipTcamFlashDownload );
   // A failed download must not hold start-up up: the result is only traced.
   SDK_CALL_NO_RC_CHECK( oberon_tcam_flash_program( unit, hitlessStartup, lacpDrainNeeded,
                                                    skipTcamFlashDownload, false ) );
}

void
TesselTcamFlashDownloadSm::eventIs( const char * text ) {
   if ( eventHistoryWriter() ) {
      eventHistoryWriter()->addEvent( text );
   }
}

void
TesselTcamFlashDownloadSm::completeStageIfDone() {
   if ( !performedFlashDownload() || !stageWaitHas( sliceTcamReconcileStage ) ) {
      return;
   }
   const Kiln::Ptr< Agent::StageSequencer > & stages = stageSequencer();
   if ( stages && stages->stageStatus( sliceTcamReconcileStage ) ==
                     Agent::StageSequencer::stageRunning ) {
      TRACE5( "Completing stage " << sliceTcamReconcileStage );
      doStageComplete( sliceTcamReconcileStage );
   }
}

} // namespace Tessel
