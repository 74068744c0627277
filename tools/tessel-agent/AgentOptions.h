// tessel-agent's command line.
#pragma once

#include <string>
#include <vector>

namespace TesselAgent {

// Exit codes: 0 done (or stopped by SIGINT/SIGTERM after serving), 1 the
// agent could not do what it was asked (unreadable input, rules that do not
// fit, a prefix held by another agent, objects left in the chip), 2 a wrong
// command line.
constexpr int exitOk = 0;
constexpr int exitFailure = 1;
constexpr int exitUsage = 2;

struct AgentOptions {
   std::vector< std::string > profiles; // one unit each; empty: one "thx" unit
   std::string workload;
   std::string traffic;
   std::string prefix = "tessel";
   std::string socketPath;
   std::vector< std::string > traces; // FastLog configuration items
   std::string traceFile;
   std::string hitsFile;
   std::string classBenchRules;
   std::string classBenchTrace;
   bool once = false;
   bool help = false;
};

// Reads and checks the arguments: known options with their values, known
// profiles, a valid prefix, trace items that apply, and options that make
// sense together. False with `error` set otherwise.
bool parseAgentOptions( int argc, char ** argv, AgentOptions & options, std::string & error );

const char * agentHelpText();

} // namespace TesselAgent
