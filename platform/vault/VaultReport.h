// The text-report channel: the command line asks the agent for a report and
// the agent writes it straight into the command line's standard output.
//
// The agent listens on a UNIX stream socket (mode 0600) at a path it chooses,
// by default defaultReportSocketPath( prefix ). Per connection:
//   client -> agent   one request line ending in '\n' (a command and its
//                     arguments, at most maxReportRequest bytes), carrying
//                     the client's output descriptor (SCM_RIGHTS)
//   agent  -> client  "<exit status>\n", or "<exit status> <message>\n" when
//                     the agent refused the request itself
// The agent first checks the peer's credentials (SO_PEERCRED): only its own
// uid and root are served, whatever the socket file's mode. Requests are
// served one after the other on the agent's thread.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/vault/VaultError.h"

namespace Vault {

class BoundSocket;

constexpr U32 maxReportRequest = 4096;

// Exit statuses of requests the agent refuses (the values of sysexits.h).
constexpr S32 reportStatusMalformed = 76;  // no newline, too long, no descriptor
constexpr S32 reportStatusRefused = 77;    // peer neither the agent's uid nor root

class ReportServer {
 public:
   // Writes the report for `request` (the line without its '\n') into `out`
   // and returns the caller's exit status. `out` belongs to the server,
   // which closes it afterwards. SIGPIPE is blocked meanwhile, so a caller
   // that stops reading shows up as EPIPE from write.
   using Handler = std::function< S32 ( const std::string & request, int out ) >;

   // Listens at socketPath, replacing a socket file nobody serves. Throws
   // Error: busy (an agent serves there), invalidArgument (path too long or
   // not a socket), system.
   ReportServer( const std::string & socketPath, Handler handler );
   ~ReportServer();  // stops listening and removes the socket file
   ReportServer( const ReportServer & ) = delete;
   ReportServer & operator=( const ReportServer & ) = delete;

   // The listening socket, non-blocking: readable when a client waits.
   int fd() const;

   // Serves every connection waiting now, one after the other. Returns how
   // many (refused ones included).
   U32 serve();

   // How long serve() waits for a slow client's request line or for it to
   // take the reply. Default 2000 ms.
   void setClientTimeout( U32 milliseconds ) { clientTimeoutMs_ = milliseconds; }

   const std::string & socketPath() const;

 private:
   void serveConnection( int connection );

   std::unique_ptr< BoundSocket > socket_;
   Handler handler_;
   U32 clientTimeoutMs_ = 2000;
};

// Asks the agent at socketPath for the report `request`, handing it `out`
// (normally 1, the standard output) to write into, and waits for the
// agent's exit status. Ok: exitStatus holds it. Errors:
//   agentNotRunning  "no agent running at <path>"
//   refused          no permission to connect, or the agent refused the
//                    caller (its message; exitStatus is set)
//   invalidArgument  a request with '\n' or NUL, longer than
//                    maxReportRequest, or a negative descriptor; or the agent
//                    found it malformed (exitStatus is set)
//   system           "agent at <path> closed the connection without an exit
//                    status", or a failing system call
Status requestReport( const std::string & socketPath, const std::string & request, int out,
                      S32 & exitStatus );

} // namespace Vault
