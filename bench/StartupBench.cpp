// Start-up of a box of four THx-like units, as the agent runs it: the group
// manager is made, its command-line channel opened (handlePreInit) and its
// catalogue built (handleInitialized); its command-line tables get a store;
// each unit's chip information arrives as a module of its own (groups and
// reservations made, the unit's tables created by handleModuleUpdate); then
// the readiness flags come in and the flash download programs the four
// units and completes its stage. The box is built and everything torn down
// outside the timing.
//
//    build/default/bench/StartupBench
#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

#include "export/TesselTcamCliVault.h"
#include "manager/ChipInfoFromShim.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/agent/Stages.h"
#include "platform/agent/TesselCommonSmData.h"
#include "platform/kiln/ActivityLock.h"
#include "platform/vault/VaultStore.h"
#include "sdk/model/Box.h"
#include "startup/TesselTcamFlashDownload.h"

namespace {

using namespace Tessel;

constexpr U32 units = 4;

ChipModel::Box::Options
staged() {
   ChipModel::Box::Options options;
   options.staged = true; // installs wait for the flash download
   return options;
}

// Everything the start-up makes; destroyed in reverse.
struct Started {
   explicit Started( const std::string & prefix ) : store( prefix ) {}
   ~Started() {
      if ( manager ) {
         manager->cliVaultHelperIs( nullptr );
      }
      flashDownload = nullptr;
      manager = nullptr;
   }

   Vault::Store store;
   Kiln::Ptr< TesselTcamGroupManager > manager;
   Kiln::Ptr< Agent::TesselCommonSmData > scsd;
   Kiln::Ptr< Agent::StageSequencer > stages;
   Kiln::Ptr< TesselTcamFlashDownloadSm > flashDownload;
};

void
startUp( Started & a ) {
   a.manager = new TesselTcamGroupManager( "tcamGroupManager" );
   a.manager->handlePreInit();
   a.manager->handleInitialized();
   a.manager->cliVaultHelperIs( TesselTcam::cliVaultHelperFactory( a.store ) );
   for ( U32 unit = 0; unit < units; ++unit ) {
      a.manager->modChipInfoIs( U16( unit + 1 ), chipInfoFromShim( U16( unit + 1 ), { unit } ) );
   }
   a.scsd = new Agent::TesselCommonSmData( "scsd" );
   for ( U32 unit = 0; unit < units; ++unit ) {
      a.scsd->unitIs( unit );
   }
   a.stages = new Agent::StageSequencer( "stages", { sliceTcamReconcileStage } );
   a.flashDownload = new TesselTcamFlashDownloadSm( "tcamFlashDownloadSm" );
   a.flashDownload->scsdIs( a.scsd );
   a.flashDownload->stageSequencerIs( a.stages );
   a.flashDownload->initStages();
   a.stages->start();
   for ( Agent::TcamFlashDownloadReq req :
         { Agent::tcamFlashDownloadReqChipInit, Agent::tcamFlashDownloadReqPortInit,
           Agent::tcamFlashDownloadReqFeatureConfig,
           Agent::tcamFlashDownloadReqForwardingReconcile } ) {
      a.scsd->flashDownloadWaitIs( req, true );
   }
}

void
BM_StartupFourUnits( benchmark::State & state ) {
   Kiln::ActivityLockGuard activity;
   U32 run = 0;
   U32 groups = 0;
   for ( auto _ : state ) {
      state.PauseTiming();
      auto box = std::make_unique< ChipModel::Box >( std::vector< std::string >( units, "thx" ),
                                                     staged() );
      auto agent = std::make_unique< Started >( "startbench" + std::to_string( getpid() ) + "x" +
                                              std::to_string( run++ ) );
      state.ResumeTiming();
      startUp( *agent );
      state.PauseTiming();
      bool programmed = agent->flashDownload->performedFlashDownload() && agent->stages->done();
      for ( U32 unit = 0; unit < units; ++unit ) {
         programmed = programmed && !box->unit( unit ).staged();
      }
      groups = U32( agent->manager->groupCountsCollection().size() );
      agent.reset();
      box.reset();
      if ( !programmed ) {
         state.SkipWithError( "the flash download did not program every unit" );
         break;
      }
      state.ResumeTiming();
   }
   state.counters[ "units" ] = units;
   state.counters[ "pipeGroups" ] = groups;
}
BENCHMARK( BM_StartupFourUnits )->Unit( benchmark::kMillisecond );

} // namespace

BENCHMARK_MAIN();
