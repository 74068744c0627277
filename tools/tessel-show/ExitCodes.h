// tessel-show's exit codes: what a script can branch on.
#pragma once

namespace TesselShow {

enum ExitCode : int {
   exitOk = 0,
   exitUsage = 2,           // the command line is wrong
   exitNoAgent = 3,         // no agent serves the prefix (or it went away)
   exitNoAnswer = 4,        // the agent did not answer in time, or was busy
   exitUnreadable = 5,      // a table could not be read: damaged, inconsistent, other version
   exitNotFound = 6,        // the agent has no such unit, stage or pipe
   exitRefused = 7,         // permissions: the agent refused this user
   exitAgentError = 8,      // the agent failed to serve the request
   exitOutput = 9,          // an output file could not be written
};

} // namespace TesselShow
