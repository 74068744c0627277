#include "tools/agent/SimulatedAgent.h"

#include <stdexcept>

#include "manager/ChipInfoFromShim.h"
#include "platform/agent/AclParamConfig.h"
#include "platform/agent/PlatformState.h"
#include "startup/TesselTcamCapacityView.h"

namespace SimAgent {

using namespace Tessel;
using Agent::TcamFlashDownloadReq;

namespace {

ChipModel::Box::Options
boxOptions() {
   ChipModel::Box::Options options;
   // Installs wait for the flash download, as on a chip being started.
   options.staged = true;
   // A call made without releasing the activity lock is a bug: stop there.
   options.activityCheck = ChipModel::ActivityCheck::abort;
   return options;
}

// One module per unit, numbered from 1.
U16
moduleOf( U32 unit ) {
   return U16( unit + 1 );
}

} // namespace

const std::vector< Kiln::String > &
startupStages() {
   static const std::vector< Kiln::String > stages = { "ChipInit", "PortInit",
                                                       sliceTcamReconcileStage, "AgentReady" };
   return stages;
}

SimulatedAgent::SimulatedAgent( Settings settings )
      : settings_( std::move( settings ) ), box_( settings_.profiles, boxOptions() ) {}

SimulatedAgent::~SimulatedAgent() {
   stop();
}

void
SimulatedAgent::start() {
   constructManager();
   manager_->handlePreInit();
   manager_->preInitIs( false );
   if ( settings_.serveCommandLine ) {
      TesselTcamCliServer::Options options;
      options.prefix = settings_.prefix;
      options.reportSocketPath = settings_.socketPath;
      options.switchName = settings_.switchName;
      server_ = std::make_unique< TesselTcamCliServer >( manager_, options );
      server_->attach( loop_ );
   }
   manager_->handleInitialized();
   addModules();
   runStartupStages();
   startCapacity();
   // The start-up's calls are not wanted by anyone; the log would only grow.
   box_.clearCallLog();
}

void
SimulatedAgent::constructManager() {
   scsd_ = new Agent::TesselCommonSmData( "tesselCommonSmData" );
   history_ = new Agent::EventHistory( "eventHistory" );
   Kiln::Ptr< Agent::PlatformState > platform = new Agent::PlatformState( "platformState" );
   platform->simulationIs( true );
   manager_ = new TesselTcamGroupManager( "tcamGroupManager" );
   manager_->aclParamConfigIs( new Acl::ParamConfig( "aclParamConfig" ) );
   manager_->platformStateIs( platform );
   manager_->tesselCommonSmDataIs( scsd_ );
   manager_->simulationIs( true );
   manager_->preInitIs( true );
}

void
SimulatedAgent::addModules() {
   for ( U32 unit = 0; unit < box_.numUnits(); ++unit ) {
      scsd_->unitIs( unit );
      manager_->modChipInfoIs( moduleOf( unit ), chipInfoFromShim( moduleOf( unit ), { unit } ) );
      manager_->handleModuleUpdate( moduleOf( unit ) );
   }
   // The chips are attached and their ports exist from the start.
   scsd_->flashDownloadWaitIs( Agent::tcamFlashDownloadReqChipInit, true );
   scsd_->flashDownloadWaitIs( Agent::tcamFlashDownloadReqPortInit, true );
}

void
SimulatedAgent::runStartupStages() {
   stages_ = new Agent::StageSequencer( "startupStages", startupStages() );
   flashDownload_ = new TesselTcamFlashDownloadSm( "tcamFlashDownloadSm" );
   flashDownload_->scsdIs( scsd_ );
   flashDownload_->eventHistoryWriterIs(
      new Agent::EventHistoryWriter( history_, "TesselTcamFlashDownloadSm" ) );
   flashDownload_->stageSequencerIs( stages_ );
   flashDownload_->initStages();
   // Features load after start-up and forwarding has nothing to reconcile.
   scsd_->flashDownloadWaitIs( Agent::tcamFlashDownloadReqFeatureConfig, true );
   scsd_->flashDownloadWaitIs( Agent::tcamFlashDownloadReqForwardingReconcile, true );
   stages_->start();
   if ( !flashDownload_->performedFlashDownload() || !stages_->done() ) {
      throw std::runtime_error( "start-up did not complete: the TCAM flash download did not run" );
   }
}

void
SimulatedAgent::startCapacity() {
   namespace Capacity = Hardware::Capacity;
   capacity_ = new Capacity::CapacityHelperSm( "capacityHelperSm" );
   capacitySm_ = new Capacity::Tessel::TesselTcamCapacitySm( "tcamCapacitySm" );
   capacitySm_->scsdIs( scsd_ );
   capacitySm_->capacityHelperSmIs( capacity_ );
   capacitySm_->initCapacityTableFeatureMaps();
   if ( server_ ) {
      capacityWriter_ = std::make_unique< Capacity::CapacityVaultWriter >(
         server_->store(), Capacity::Tessel::tesselTcamCapacityVaultPath, capacity_,
         Capacity::Tessel::tesselTcamCapacityFeatureGroup );
   }
   capacitySm_->updateCapacityTable();
}

void
SimulatedAgent::publishCapacity() {
   if ( capacitySm_ ) {
      capacitySm_->updateCapacityTable();
   }
}

void
SimulatedAgent::refreshCapacityEvery( Kiln::ActivityLoop::Clock::duration period ) {
   capacityTimer_ = loop_.timerIs( period, [ this, period ] { refreshCapacity( period ); } );
}

void
SimulatedAgent::refreshCapacity( Kiln::ActivityLoop::Clock::duration period ) {
   publishCapacity();
   box_.clearCallLog();
   refreshCapacityEvery( period );
}

void
SimulatedAgent::stop() {
   if ( capacityTimer_ ) {
      loop_.timerDel( capacityTimer_ );
      capacityTimer_ = 0;
   }
   if ( manager_ ) {
      std::vector< U16 > modules = manager_->modChipInfoCollection().keys();
      for ( U16 module : modules ) {
         manager_->modChipInfoDel( module );
      }
   }
   capacityWriter_.reset();
   capacitySm_ = nullptr;
   capacity_ = nullptr;
   if ( flashDownload_ ) {
      flashDownload_->stageSequencerIs( nullptr );
      flashDownload_ = nullptr;
   }
   stages_ = nullptr;
   server_.reset();
   manager_ = nullptr;
   scsd_ = nullptr;
   history_ = nullptr;
}

} // namespace SimAgent
