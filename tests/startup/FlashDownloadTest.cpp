// The flash download on the chip model, per profile: when it runs, what it
// programs (the model's commits and flags, packets before and after), what it
// records, and that nothing stops or repeats it.
#include "startup/TesselTcamFlashDownload.h"

#include <gmock/gmock.h>

#include "platform/agent/EventHistory.h"
#include "platform/agent/Stages.h"
#include "platform/fastlog/TraceConfig.h"
#include "platform/fastlog/TraceSink.h"
#include "tests/startup/StartupTestSupport.h"

using namespace StartupTest;
using Agent::StageSequencer;
using ::Tessel::TesselTcamFlashDownloadSm;
using ::testing::ElementsAre;

namespace {

const char stage[] = "TesselSliceTcamReconcile";

// Records each event with the number of commits the box had seen by then.
struct EventWatcher : Agent::EventHistory::NotifieeConst {
   explicit EventWatcher( ChipModel::Box & box ) : box_( box ) {}
   void
   onEvent( U64 ) override {
      const Agent::EventRecord & record = notifier()->records().back();
      seen.push_back( record.text.str() + " after " +
                      std::to_string( box_.callCount( "bcm_field_tcam_commit" ) ) );
      if ( onEventDo ) {
         onEventDo( record.text.str() );
      }
   }
   ChipModel::Box & box_;
   std::vector< std::string > seen;
   std::function< void( const std::string & ) > onEventDo;
};

class FlashDownload : public ::testing::TestWithParam< std::string > {
 protected:
   static constexpr U32 units = 3;

   FlashDownload()
         : box( std::vector< std::string >( units, GetParam() ), checkedOptions() ),
           scsd( startupState( units ) ), history( new Agent::EventHistory( "events" ) ),
           stages( new StageSequencer( "stages", { "PortInit", stage, "Done" } ) ),
           sm( new TesselTcamFlashDownloadSm( "tcamFlashDownloadSm" ) ), watcher( box ) {
      watcher.notifierIs( history );
      sm->scsdIs( scsd );
      sm->eventHistoryWriterIs(
         new Agent::EventHistoryWriter( history, "TesselTcamFlashDownloadSm" ) );
      sm->stageSequencerIs( stages );
      sm->initStages();
   }

   std::vector< U32 >
   commits() {
      std::vector< U32 > out;
      for ( U32 unit = 0; unit < units; ++unit ) {
         out.push_back( box.unit( unit ).commits() );
      }
      return out;
   }
   std::vector< std::string >
   traces( const std::string & channel ) {
      std::vector< std::string > out;
      for ( const FastLog::TraceEntry & entry : capture.lines() ) {
         if ( entry.channel == channel ) {
            out.push_back( entry.text );
         }
      }
      return out;
   }
   std::vector< std::string >
   events() {
      std::vector< std::string > out;
      for ( const Kiln::String & text : Agent::EventHistoryReader( history ).texts() ) {
         out.push_back( text.str() );
      }
      return out;
   }

   ChipModel::Box box;
   Kiln::Ptr< Agent::TesselCommonSmData > scsd;
   Kiln::Ptr< Agent::EventHistory > history;
   Kiln::Ptr< StageSequencer > stages;
   Kiln::Ptr< TesselTcamFlashDownloadSm > sm;
   EventWatcher watcher;
   FastLog::TraceCapture capture{ "*", FastLog::TraceLevels::all() };
   Kiln::ActivityLockGuard activity;
};

} // namespace

TEST_P( FlashDownload, ProgramsEveryUnitOnceInOrderWithTheStartupFlags ) {
   scsd->hitlessStartupIs( true );
   scsd->lacpDrainNeededIs( true );
   scsd->skipTcamFlashDownloadIs( true );
   othersReady( *scsd );
   EXPECT_THAT( commits(), ElementsAre( 0u, 0u, 0u ) ); // the stage has not run yet
   stages->start();

   EXPECT_THAT( commits(), ElementsAre( 1u, 1u, 1u ) );
   for ( U32 unit = 0; unit < units; ++unit ) {
      EXPECT_FALSE( box.unit( unit ).staged() );
      EXPECT_EQ( U32( BCM_FIELD_COMMIT_HITLESS | BCM_FIELD_COMMIT_LACP_DRAIN |
                      BCM_FIELD_COMMIT_SKIP_DOWNLOAD ),
                 box.unit( unit ).commitFlags() );
   }
   std::vector< int > order;
   for ( const ChipModel::CallRecord & call : box.callLog() ) {
      if ( call.function == "bcm_field_tcam_commit" ) {
         order.push_back( call.unit );
      }
   }
   EXPECT_THAT( order, ElementsAre( 0, 1, 2 ) );
   EXPECT_TRUE( sm->performedFlashDownload() );
   EXPECT_TRUE( scsd->flashDownloadWait( Agent::tcamFlashDownloadReqSliceTcamReconcile ) );
   EXPECT_EQ( StageSequencer::stageComplete, stages->stageStatus( stage ) );
   EXPECT_TRUE( stages->done() );
   // The events bracket the programming.
   EXPECT_THAT( watcher.seen, ElementsAre( "Programming TCAMs Start after 0",
                                           "Programming TCAMs Complete after 3" ) );
   EXPECT_EQ( "TesselTcamFlashDownloadSm", history->records().front().source.str() );
   std::vector< std::string > lines = matching( traces( "TesselTcamFlashDownload" ),
                                                "Ready to program: 1|Programming TCAMs|DoTcam.*" );
   ASSERT_EQ( 2 + units, lines.size() );
   EXPECT_EQ( "Ready to program: 1", lines[ 0 ] );
   EXPECT_EQ( "Programming TCAMs", lines[ 1 ] );
   EXPECT_EQ( "DoTcamFlashProgram unit 2 hitlessStartup: 1 lacpDrainNeeded: 1 "
              "skipTcamFlashDownload: 1",
              lines[ 4 ] );
}

TEST_P( FlashDownload, WaitsForTheLastRequiredFlagWhicheverComesLast ) {
   scsd->flashDownloadWaitIs( Agent::tcamFlashDownloadReqChipInit, true );
   stages->start();
   EXPECT_EQ( StageSequencer::stageRunning, stages->stageStatus( stage ) );
   scsd->flashDownloadWaitIs( Agent::tcamFlashDownloadReqPortInit, true );
   scsd->flashDownloadWaitIs( Agent::tcamFlashDownloadReqFeatureConfig, true );
   // A flag that is not required changes nothing.
   scsd->flashDownloadWaitIs( Agent::tcamFlashDownloadReqLacpDrain, true );
   EXPECT_THAT( commits(), ElementsAre( 0u, 0u, 0u ) );
   EXPECT_EQ( StageSequencer::stageRunning, stages->stageStatus( stage ) );
   EXPECT_THAT(
      traces( "TesselTcamFlashDownload" ),
      ::testing::Contains( "Ready to program: 0 waiting for: "
                           "tcamFlashDownloadReqForwardingReconcile" ) );

   scsd->flashDownloadWaitIs( Agent::tcamFlashDownloadReqForwardingReconcile, true );
   EXPECT_THAT( commits(), ElementsAre( 1u, 1u, 1u ) );
   EXPECT_EQ( StageSequencer::stageComplete, stages->stageStatus( stage ) );
   EXPECT_TRUE( stages->done() );
}

TEST_P( FlashDownload, ASecondNotificationDoesNothing ) {
   othersReady( *scsd );
   stages->start();
   ASSERT_TRUE( sm->performedFlashDownload() );
   box.clearCallLog();
   capture.clear();

   scsd->flashDownloadWaitIs( Agent::tcamFlashDownloadReqPortInit, false );
   scsd->flashDownloadWaitIs( Agent::tcamFlashDownloadReqPortInit, true );
   sm->handleFlashDownloadWait( Agent::tcamFlashDownloadReqChipInit );
   sm->handleFlashDownloadWait();
   sm->scsdIs( nullptr );
   sm->scsdIs( scsd ); // attaching ready flags again

   EXPECT_EQ( 0u, box.callCount( "bcm_field_tcam_commit" ) );
   EXPECT_THAT( commits(), ElementsAre( 1u, 1u, 1u ) );
   EXPECT_EQ( 2u, history->lastSequence() );
   EXPECT_TRUE( matching( traces( "TesselTcamFlashDownload" ), "Programming TCAMs|DoTcam.*" )
                   .empty() );
}

TEST_P( FlashDownload, SdkErrorsDoNotStopTheOtherUnitsNorTheStage ) {
   box.failCall( 0, "oberon_tcam_flash_program", 1, BCM_E_INTERNAL );
   box.failCall( 2, "oberon_tcam_flash_program", 1, BCM_E_TIMEOUT );
   othersReady( *scsd );
   stages->start();

   EXPECT_THAT( commits(), ElementsAre( 0u, 1u, 0u ) );
   EXPECT_TRUE( box.unit( 0 ).staged() );
   EXPECT_FALSE( box.unit( 1 ).staged() );
   EXPECT_EQ( 3u, box.callCount( "bcm_field_tcam_commit" ) );
   EXPECT_EQ( 0u, box.pendingFaults() );
   EXPECT_TRUE( sm->performedFlashDownload() );
   EXPECT_EQ( StageSequencer::stageComplete, stages->stageStatus( stage ) );
   EXPECT_THAT( events(), ElementsAre( "Programming TCAMs Start", "Programming TCAMs Complete" ) );
   // The failures are traced as deliberately unchecked.
   std::string call = "TesselTcamFlashDownload\\.cpp:[0-9]+ oberon_tcam_flash_program\\( unit, "
                      "hitlessStartup, lacpDrainNeeded, skipTcamFlashDownload, false \\) ";
   EXPECT_EQ( 1u, matching( traces( "bcmFpCmd" ),
                            call + "\\(rc:" + std::to_string( BCM_E_INTERNAL ) +
                               "\\) no rc check" ).size() );
   EXPECT_EQ( 1u, matching( traces( "bcmFpCmd" ), call + "\\(rc:0\\) no rc check" ).size() );
   // And are never repaired behind the agent's back.
   scsd->flashDownloadWaitIs( Agent::tcamFlashDownloadReqPortInit, false );
   scsd->flashDownloadWaitIs( Agent::tcamFlashDownloadReqPortInit, true );
   EXPECT_EQ( 3u, box.callCount( "bcm_field_tcam_commit" ) );
}

// Units marked not to program, and units the start-up state does not list.
TEST_P( FlashDownload, UnitsNotToProgramAreSkipped ) {
   scsd->doNotProgramUnitIs( 1 );
   scsd->unitDel( 2 );
   othersReady( *scsd );
   stages->start();
   EXPECT_THAT( commits(), ElementsAre( 1u, 0u, 0u ) );
   EXPECT_EQ( 0u, box.callCount( "bcm_field_tcam_commit", 1 ) );
   EXPECT_EQ( StageSequencer::stageComplete, stages->stageStatus( stage ) );
}

// A flag that changes while the download runs (the lock is released around
// every call) must not start a second one.
TEST_P( FlashDownload, FlagsChangingDuringTheDownloadDoNotStartAnother ) {
   watcher.onEventDo = [ & ]( const std::string & text ) {
      if ( text == "Programming TCAMs Start" ) {
         scsd->flashDownloadWaitIs( Agent::tcamFlashDownloadReqChipInit, false );
         scsd->flashDownloadWaitIs( Agent::tcamFlashDownloadReqChipInit, true );
      }
   };
   othersReady( *scsd );
   stages->start();
   EXPECT_THAT( commits(), ElementsAre( 1u, 1u, 1u ) );
   EXPECT_EQ( 3u, box.callCount( "bcm_field_tcam_commit" ) );
   EXPECT_EQ( 2u, history->lastSequence() );
}

TEST_P( FlashDownload, DroppingTheLastMissingRequirementRuns ) {
   scsd->flashDownloadRequiredIs( Agent::tcamFlashDownloadReqLacpDrain );
   othersReady( *scsd );
   stages->start();
   EXPECT_THAT( commits(), ElementsAre( 0u, 0u, 0u ) );
   scsd->flashDownloadRequiredDel( Agent::tcamFlashDownloadReqLacpDrain );
   EXPECT_THAT( commits(), ElementsAre( 1u, 1u, 1u ) );
   EXPECT_TRUE( stages->done() );
}

// Done before its stage started (the agent requires no stage flag, or says
// the TCAM is programmed already): the stage completes as soon as it runs.
TEST_P( FlashDownload, DoneBeforeTheStageCompletesTheStageWhenItStarts ) {
   scsd->flashDownloadRequiredDel( Agent::tcamFlashDownloadReqSliceTcamReconcile );
   othersReady( *scsd );
   EXPECT_THAT( commits(), ElementsAre( 1u, 1u, 1u ) );
   EXPECT_EQ( StageSequencer::stagePending, stages->stageStatus( stage ) );
   stages->start();
   EXPECT_TRUE( stages->done() );
   EXPECT_EQ( 3u, box.callCount( "bcm_field_tcam_commit" ) );
}

TEST_P( FlashDownload, AlreadyPerformedNeverPrograms ) {
   sm->performedFlashDownloadIs( true );
   othersReady( *scsd );
   stages->start();
   EXPECT_TRUE( stages->done() );
   EXPECT_EQ( 0u, box.callCount( "bcm_field_tcam_commit" ) );
   EXPECT_TRUE( events().empty() );
}

// A hitless restart: the old hardware image serves packets until the new
// agent's download, which then brings in what the new agent installed.
TEST_P( FlashDownload, AHitlessRestartKeepsTheOldImageUntilTheDownload ) {
   installIfpEntry( box, 0, 7 );
   othersReady( *scsd );
   stages->start();
   ASSERT_TRUE( packetHits( box, 0, 7 ) );

   box.restart( 0, true );
   Kiln::Ptr< Agent::TesselCommonSmData > again = startupState( 1 );
   again->hitlessStartupIs( true );
   Kiln::Ptr< StageSequencer > stagesAgain = new StageSequencer( "stages", { stage } );
   Kiln::Ptr< TesselTcamFlashDownloadSm > smAgain = new TesselTcamFlashDownloadSm( "sm" );
   smAgain->scsdIs( again );
   smAgain->stageSequencerIs( stagesAgain );
   smAgain->initStages();
   installIfpEntry( box, 0, 8 );
   stagesAgain->start();
   EXPECT_TRUE( packetHits( box, 0, 7 ) ); // still the old image
   EXPECT_FALSE( packetHits( box, 0, 8 ) );
   othersReady( *again );
   EXPECT_FALSE( packetHits( box, 0, 7 ) );
   EXPECT_TRUE( packetHits( box, 0, 8 ) );
   EXPECT_EQ( U32( BCM_FIELD_COMMIT_HITLESS ), box.unit( 0 ).commitFlags() );
   EXPECT_EQ( 2u, box.unit( 0 ).commits() );
}

INSTANTIATE_TEST_SUITE_P( Profiles, FlashDownload, ::testing::ValuesIn( profiles() ),
                          []( const auto & info ) { return info.param; } );

TEST( FlashDownloadStages, OtherStagesAreIgnored ) {
   Kiln::Ptr< Agent::TesselCommonSmData > scsd = startupState( 1 );
   Kiln::Ptr< TesselTcamFlashDownloadSm > sm = new TesselTcamFlashDownloadSm( "sm" );
   sm->scsdIs( scsd );
   sm->doStage( "PortInit" );
   EXPECT_FALSE( scsd->flashDownloadWaitHas( Agent::tcamFlashDownloadReqSliceTcamReconcile ) );
   sm->initStages();
   EXPECT_TRUE( sm->stageWaitHas( stage ) );
}

TEST( FlashDownloadDeathTest, TheStageNeedsTheStartupState ) {
   EXPECT_DEATH(
      {
         Kiln::Ptr< TesselTcamFlashDownloadSm > sm = new TesselTcamFlashDownloadSm( "sm" );
         sm->doStage( stage );
      },
      "TesselTcamFlashDownload.cpp:[0-9]+: virtual void "
      "Tessel::TesselTcamFlashDownloadSm::doStage\\(const Kiln::String&\\): Assertion "
      "'flash download stage without start-up state' failed." );
}
