// tessel-show's command line.
#pragma once

#include <optional>
#include <string>

#include "platform/kiln/Types.h"

namespace TesselShow {

enum class Colour { automatic, always, never };

struct Options {
   std::string prefix;      // the agent's prefix: --prefix, else $TESSEL_PREFIX, else the default
   std::string socketPath;  // the report socket: --socket, else the prefix's default
   std::string command;     // usage summary raw entry reservations groups features entries stages map
                            // capacity
   bool detail = false;
   std::optional< U32 > unit;
   std::optional< U32 > stage;
   std::optional< U32 > pipe;
   U32 entryId = 0;
   bool json = false;
   std::string svgFile;
   Colour colour = Colour::automatic;
   U32 timeoutMs = 5000;
   U32 thresholdPercent = 90; // capacity: warn about stages used above it
   bool help = false;
};

// Reads the arguments; false with `error` set when they are wrong.
bool parseOptions( int argc, char ** argv, Options & options, std::string & error );

// The --help text.
const char * helpText();

} // namespace TesselShow
