// Results of the shared-memory layer.
//
// Readers (the command line) get a Status: a code to branch on and a text to
// print as it stands. The writer (the agent) gets a Vault::Error exception for
// failures it cannot work around (shared memory exhausted, a prefix already
// served by a live agent, a bad argument): those end its start-up.
#pragma once

#include <stdexcept>
#include <string>

#include "platform/kiln/Types.h"

namespace Vault {

enum class Errc : U32 {
   ok = 0,
   invalidArgument,  // bad prefix, path, size or request
   notFound,         // the agent runs but has no such table
   agentNotRunning,  // no agent, or the segment belongs to an agent that exited
   corrupt,          // bad magic, sizes that do not fit, garbage counts
   versionMismatch,  // a segment written by another layout version
   inconsistent,     // no consistent view after the bounded retries
   timeout,          // the agent did not answer in time
   busy,             // every request slot taken, or the prefix held by another agent
   refused,          // permissions or peer credentials
   tooLarge,         // a table cannot grow any further
   system,           // an operating-system call failed
};

// The code's name, e.g. "agentNotRunning"; "unknown" for values outside the enum.
const char * errcName( Errc code );

class Status {
 public:
   Status() = default;
   Status( Errc code, std::string text ) : code_( code ), text_( std::move( text ) ) {}

   bool ok() const { return code_ == Errc::ok; }
   Errc code() const { return code_; }
   // Empty for ok; otherwise a complete sentence fragment naming the object,
   // e.g. "agent not running: table 'a/b' belongs to pid 12, which has exited".
   const std::string & text() const { return text_; }

 private:
   Errc code_ = Errc::ok;
   std::string text_;
};

class Error : public std::runtime_error {
 public:
   Error( Errc code, const std::string & text ) : std::runtime_error( text ), code_( code ) {}
   explicit Error( const Status & status ) : Error( status.code(), status.text() ) {}
   Errc code() const { return code_; }

 private:
   Errc code_;
};

// "<what>: <strerror(err)>", e.g. "shm_open /tessel-a-owner: Permission denied".
std::string systemText( const std::string & what, int err );

// Status( Errc::system, systemText( what, err ) ).
Status systemStatus( const std::string & what, int err );

} // namespace Vault
