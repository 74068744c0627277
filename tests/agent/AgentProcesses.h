// tessel-agent as a process of its own, for the tests that run the real
// binaries (tessel-show runs through ShowProcesses.h).
#pragma once

#include <string>
#include <vector>

#include "tests/integration/ShowProcesses.h"

namespace AgentTest {

using ShowIntegration::contents;
using ShowIntegration::exitCodeOf;
using ShowIntegration::runShow;
using ShowIntegration::ShowRun;
using ShowIntegration::spawn;

// A file of the repository, e.g. "examples/workloads/default.workload".
inline std::string
repoFile( const std::string & path ) {
   return std::string( TESSEL_REPO_DIR ) + "/" + path;
}

// Runs tessel-agent with `args` to its end (for --once and refusals).
inline ShowRun
runAgent( const std::vector< std::string > & args ) {
   std::vector< std::string > all = { TESSEL_AGENT_BINARY };
   all.insert( all.end(), args.begin(), args.end() );
   return ShowIntegration::runProgram( all );
}

// tessel-agent serving until stopped, started with `args`.
class ServingAgent : public ShowIntegration::ServingProcess {
 public:
   explicit ServingAgent( const std::vector< std::string > & args )
         : ServingProcess( withBinary( args ), "tessel-agent: ready: " ) {}

 private:
   static std::vector< std::string >
   withBinary( const std::vector< std::string > & args ) {
      std::vector< std::string > all = { TESSEL_AGENT_BINARY };
      all.insert( all.end(), args.begin(), args.end() );
      return all;
   }
};

} // namespace AgentTest
