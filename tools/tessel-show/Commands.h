// tessel-show's commands. Each returns the exit code; failures are printed
// on standard error as "tessel-show: <message>".
#pragma once

#include "tools/tessel-show/AgentLink.h"

namespace TesselShow {

// usage, summary, raw, entry, reservations: written by the agent.
int runReport( AgentLink & link, const Options & options );
// stages, groups, features, entries: from the shared-memory tables.
int runTable( AgentLink & link, const Options & options );
// map: the slices of every (or the chosen) unit, stage and pipe.
int runMap( AgentLink & link, const Options & options );
// capacity: the TCAM rows of the platform's capacity tables.
int runCapacity( const Options & options );

// Prints the failure and returns its code.
int fail( const Failure & failure );

// The units a command covers: the one asked for, or every unit the agent
// publishes when `allByDefault`, else unit 0.
Outcome unitsToShow( AgentLink & link, const Options & options, bool allByDefault,
                     std::vector< U32 > & units );

} // namespace TesselShow
