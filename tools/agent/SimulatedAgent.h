// SimulatedAgent: the forwarding agent around the TCAM manager, on a box of
// modelled chips. It owns the box, the group manager and the agent services
// the manager is given, runs the agent's start-up sequence, and serves the
// command line from its activity loop. tessel-agent and the small agent of
// the command line's tests are built on it.
//
//    Kiln::ActivityLockGuard activity;        // the agent's activity thread
//    SimAgent::SimulatedAgent agent( settings );
//    agent.start();                           // start-up, see start()
//    ... features take entries from agent.manager() ...
//    agent.publishCapacity();
//    agent.loop().run();                      // serve until loop().stop()
//    agent.stop();                            // or destruction
//
// Threads: the activity thread, holding the activity lock; the loop gives
// it up only while it waits.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "export/TesselTcamCliServer.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/agent/CapacityVault.h"
#include "platform/agent/EventHistory.h"
#include "platform/agent/Stages.h"
#include "platform/kiln/ActivityLoop.h"
#include "sdk/model/Box.h"
#include "startup/TesselTcamCapacity.h"
#include "startup/TesselTcamFlashDownload.h"

namespace SimAgent {

struct Settings {
   std::vector< std::string > profiles = { "thx" }; // one unit each
   std::string prefix = "tessel";                   // the shared-memory prefix
   std::string socketPath;                          // empty: the prefix's default
   std::string switchName;                          // empty: the host's name
   // Serve the command line (tables, mailbox, report socket). Without it
   // the agent claims no prefix: a run that only loads and classifies.
   bool serveCommandLine = true;
};

// The start-up stages the agent runs.
const std::vector< Kiln::String > & startupStages();

class SimulatedAgent {
 public:
   // Builds the box of the profiles (std::invalid_argument naming an
   // unknown profile and the known ones); nothing else yet.
   explicit SimulatedAgent( Settings settings );
   // stop().
   ~SimulatedAgent();
   SimulatedAgent( const SimulatedAgent & ) = delete;
   SimulatedAgent & operator=( const SimulatedAgent & ) = delete;

   // The start-up sequence: the group manager constructed by name, its
   // attributes set (ACL configuration, platform state, start-up state,
   // simulation), handlePreInit, the command line's server, handleInitialized,
   // chip information per module (one module per unit) with
   // handleModuleUpdate, the readiness flags as the parts they stand for are
   // done, the start-up stages (the flash download programs every unit in
   // "TesselSliceTcamReconcile"), then the capacity figures. Throws
   // Vault::Error when the prefix is held by a live agent or a socket cannot
   // be made.
   void start();
   // Queries the chip again and publishes fresh capacity figures.
   void publishCapacity();
   // Serving: fresh capacity figures every `period` while the loop runs.
   void refreshCapacityEvery( Kiln::ActivityLoop::Clock::duration period );
   // Undoes start(): every module forgotten (the units' groups, class-id
   // entries and fields destroyed), the capacity table, the command line's
   // tables, mailbox and socket removed, the manager gone. Features must
   // have given their entries and policers back first.
   void stop();

   ChipModel::Box & box() { return box_; }
   Kiln::ActivityLoop & loop() { return loop_; }
   const Kiln::Ptr< Tessel::TesselTcamGroupManager > & manager() const { return manager_; }
   // Null unless serving.
   Tessel::TesselTcamCliServer * server() const { return server_.get(); }
   const Settings & settings() const { return settings_; }
   const Kiln::Ptr< Agent::EventHistory > & history() const { return history_; }
   const Kiln::Ptr< Tessel::TesselTcamFlashDownloadSm > & flashDownload() const {
      return flashDownload_;
   }
   const Kiln::Ptr< Hardware::Capacity::CapacityHelperSm > & capacity() const {
      return capacity_;
   }

 private:
   void constructManager();
   void addModules();
   void runStartupStages();
   void startCapacity();
   void refreshCapacity( Kiln::ActivityLoop::Clock::duration period );

   Settings settings_;
   ChipModel::Box box_;
   Kiln::ActivityLoop loop_;
   Kiln::Ptr< Agent::TesselCommonSmData > scsd_;
   Kiln::Ptr< Agent::EventHistory > history_;
   Kiln::Ptr< Agent::StageSequencer > stages_;
   Kiln::Ptr< Tessel::TesselTcamGroupManager > manager_;
   std::unique_ptr< Tessel::TesselTcamCliServer > server_;
   Kiln::Ptr< Tessel::TesselTcamFlashDownloadSm > flashDownload_;
   Kiln::Ptr< Hardware::Capacity::CapacityHelperSm > capacity_;
   Kiln::Ptr< Hardware::Capacity::Tessel::TesselTcamCapacitySm > capacitySm_;
   std::unique_ptr< Hardware::Capacity::CapacityVaultWriter > capacityWriter_;
   Kiln::ActivityLoop::TimerId capacityTimer_ = 0;
};

} // namespace SimAgent
