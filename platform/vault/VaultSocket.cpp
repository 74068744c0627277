#include "platform/vault/VaultSocket.h"

#include <cerrno>
#include <cstring>
#include <pthread.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

namespace Vault {

Status
unixAddress( const std::string & path, sockaddr_un & address, socklen_t & length ) {
   std::memset( &address, 0, sizeof( address ) );
   address.sun_family = AF_UNIX;
   if ( path.empty() || path.size() >= sizeof( address.sun_path ) ) {
      return Status( Errc::invalidArgument, "socket path '" + path + "' must have 1 to " +
                                               std::to_string( sizeof( address.sun_path ) - 1 ) +
                                               " characters" );
   }
   std::memcpy( address.sun_path, path.data(), path.size() );
   length = static_cast< socklen_t >( offsetof( sockaddr_un, sun_path ) + path.size() + 1 );
   return Status();
}

namespace {

// Removes a socket file that nobody serves; refuses to touch anything else.
void
clearStaleSocket( const std::string & path, const sockaddr_un & address, socklen_t length,
                  int type ) {
   struct stat st;
   if ( lstat( path.c_str(), &st ) != 0 ) {
      return;  // nothing there
   }
   if ( !S_ISSOCK( st.st_mode ) ) {
      throw Error( Errc::invalidArgument, "'" + path + "' exists and is not a socket" );
   }
   int probe = socket( AF_UNIX, ( type & ~SOCK_NONBLOCK ) | SOCK_CLOEXEC, 0 );
   if ( probe < 0 ) {
      throw Error( Errc::system, systemText( "socket", errno ) );
   }
   int connected = connect( probe, reinterpret_cast< const sockaddr * >( &address ), length );
   int err = errno;
   close( probe );
   if ( connected == 0 ) {
      throw Error( Errc::busy, "an agent already serves at " + path );
   }
   if ( err != ECONNREFUSED ) {
      throw Error( Errc::system, systemText( "probing " + path, err ) );
   }
   if ( unlink( path.c_str() ) != 0 ) {
      throw Error( Errc::system, systemText( "removing stale socket " + path, errno ) );
   }
}

} // namespace

BoundSocket::BoundSocket( const std::string & path, int type ) : path_( path ) {
   sockaddr_un address;
   socklen_t length;
   Status valid = unixAddress( path, address, length );
   if ( !valid.ok() ) {
      throw Error( valid );
   }
   clearStaleSocket( path, address, length, type );
   fd_ = socket( AF_UNIX, type | SOCK_CLOEXEC, 0 );
   if ( fd_ < 0 ) {
      throw Error( Errc::system, systemText( "socket", errno ) );
   }
   struct stat st;
   if ( bind( fd_, reinterpret_cast< const sockaddr * >( &address ), length ) != 0 ||
        chmod( path.c_str(), 0600 ) != 0 || stat( path.c_str(), &st ) != 0 ) {
      int err = errno;
      close( fd_ );
      fd_ = -1;
      throw Error( err == EADDRINUSE ? Errc::busy : Errc::system,
                   systemText( "binding " + path, err ) );
   }
   inode_ = st.st_ino;
}

BoundSocket::~BoundSocket() {
   struct stat st;
   if ( lstat( path_.c_str(), &st ) == 0 && st.st_ino == inode_ ) {
      unlink( path_.c_str() );
   }
   close( fd_ );
}

SigpipeGuard::SigpipeGuard() {
   sigset_t pipe;
   sigemptyset( &pipe );
   sigaddset( &pipe, SIGPIPE );
   sigset_t pending;
   sigpending( &pending );
   wasPending_ = sigismember( &pending, SIGPIPE ) == 1;
   pthread_sigmask( SIG_BLOCK, &pipe, &previous_ );
}

SigpipeGuard::~SigpipeGuard() {
   sigset_t pending;
   sigpending( &pending );
   if ( !wasPending_ && sigismember( &pending, SIGPIPE ) == 1 ) {
      sigset_t pipe;
      sigemptyset( &pipe );
      sigaddset( &pipe, SIGPIPE );
      timespec now = { 0, 0 };
      sigtimedwait( &pipe, nullptr, &now );
   }
   pthread_sigmask( SIG_SETMASK, &previous_, nullptr );
}

} // namespace Vault
