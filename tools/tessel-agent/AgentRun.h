// One run of tessel-agent: inputs read and checked, the agent started, the
// features loaded, the traffic sent, the command line served until a
// signal, everything given back.
#pragma once

#include "tools/tessel-agent/AgentOptions.h"

namespace TesselAgent {

// The exit code (AgentOptions.h). Messages go to standard error as
// "tessel-agent: <what>"; what the agent did to standard output.
int runAgent( const AgentOptions & options );

} // namespace TesselAgent
