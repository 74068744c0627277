// A scripted use of every subsystem on one unit of a simulated agent, for
// the fault sweep: start-up with the flash download and capacity, entry
// managers of all four strategies, install / reinstall / priority / enable
// / remove / release, counters, a loopback redirect, in-ports, the
// outer-VLAN twins and a VLAN change, range checkers, class ids, UDF
// fields, policers, the show reports and command-line tables, and the
// teardown that gives everything back.
//
// Every step copes with what an SDK failure makes the library answer (no
// entry, no checker, no field, an install error) and goes on, so one
// failure leaves the rest of the scenario running. Afterwards the chip
// model must hold nothing (ChipModel::Box::counts).
#pragma once

#include <functional>
#include <string>

#include "platform/kiln/ActivityLock.h"
#include "tools/agent/SimulatedAgent.h"

namespace Proof {

class Scenario {
 public:
   // An agent of one unit of the profile; with `tables` its command-line
   // tables are made under `vaultPrefix` and filled (a part of its own,
   // since making them costs more than the rest of the scenario). Nothing
   // runs yet.
   Scenario( const std::string & profile, bool tables, const std::string & vaultPrefix );
   ~Scenario();

   ChipModel::Box & box() { return agent_.box(); }
   // The whole scenario, start-up to teardown; `phase` is told when each
   // part begins ("start-up", "reserve": an at-beginning range made
   // after start-up, "features", "reports", "tables", "teardown").
   void run( const std::function< void( const std::string & ) > & phase = {} );

 private:
   struct Features;

   Kiln::ActivityLockGuard activity_;
   std::string profile_;
   bool tables_;
   std::string vaultPrefix_;
   SimAgent::SimulatedAgent agent_;
};

} // namespace Proof
