// UNIX-socket helpers shared by the request doorbell and the report channel.
#pragma once

#include <signal.h>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>

#include "platform/vault/VaultError.h"

namespace Vault {

// Fills a socket address for a file-system path. invalidArgument when the
// path is empty or does not fit sun_path.
Status unixAddress( const std::string & path, sockaddr_un & address, socklen_t & length );

// A socket of `type` (SOCK_STREAM, SOCK_DGRAM) bound at `path` with mode
// 0600, owned by the caller. A socket file that nobody serves any more is
// replaced. Throws Error: busy (a live server answers at the path),
// invalidArgument (the path is too long or names something else), system.
// `type` may carry SOCK_NONBLOCK; SOCK_CLOEXEC is always added.
class BoundSocket {
 public:
   BoundSocket( const std::string & path, int type );
   ~BoundSocket();  // closes; removes the file if it is still this socket's
   BoundSocket( const BoundSocket & ) = delete;
   BoundSocket & operator=( const BoundSocket & ) = delete;

   int fd() const { return fd_; }
   const std::string & path() const { return path_; }

 private:
   std::string path_;
   int fd_ = -1;
   unsigned long inode_ = 0;
};

// Blocks SIGPIPE in the calling thread while alive and discards one raised
// meanwhile, so that writing into a descriptor whose reader went away fails
// with EPIPE instead of killing the agent.
class SigpipeGuard {
 public:
   SigpipeGuard();
   ~SigpipeGuard();
   SigpipeGuard( const SigpipeGuard & ) = delete;
   SigpipeGuard & operator=( const SigpipeGuard & ) = delete;

 private:
   sigset_t previous_;
   bool wasPending_ = false;
};

} // namespace Vault
