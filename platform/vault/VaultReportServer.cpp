#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include "platform/vault/VaultReport.h"
#include "platform/vault/VaultSocket.h"

namespace Vault {

namespace {

bool
peerAllowed( int connection, ucred & peer ) {
   socklen_t length = sizeof( peer );
   if ( getsockopt( connection, SOL_SOCKET, SO_PEERCRED, &peer, &length ) != 0 ) {
      return false;
   }
   return peer.uid == geteuid() || peer.uid == 0;
}

void
setTimeouts( int connection, U32 milliseconds ) {
   timeval limit = { static_cast< time_t >( milliseconds / 1000 ),
                     static_cast< suseconds_t >( ( milliseconds % 1000 ) * 1000 ) };
   setsockopt( connection, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof( limit ) );
   setsockopt( connection, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof( limit ) );
}

// Keeps the first descriptor passed along and closes any others.
void
takeDescriptors( msghdr & message, int & passed ) {
   for ( cmsghdr * c = CMSG_FIRSTHDR( &message ); c; c = CMSG_NXTHDR( &message, c ) ) {
      if ( c->cmsg_level != SOL_SOCKET || c->cmsg_type != SCM_RIGHTS ) {
         continue;
      }
      size_t count = ( c->cmsg_len - CMSG_LEN( 0 ) ) / sizeof( int );
      for ( size_t i = 0; i < count; ++i ) {
         int fd;
         std::memcpy( &fd, CMSG_DATA( c ) + i * sizeof( int ), sizeof( int ) );
         if ( passed < 0 ) {
            passed = fd;
         } else {
            close( fd );
         }
      }
   }
}

// Reads up to the first '\n'. False when the client stopped early, sent too
// much or took too long.
bool
receiveRequest( int connection, std::string & line, int & passed ) {
   char buffer[ 512 ];
   alignas( cmsghdr ) char control[ CMSG_SPACE( 4 * sizeof( int ) ) ];
   while ( line.size() <= maxReportRequest ) {
      iovec part = { buffer, sizeof( buffer ) };
      msghdr message = {};
      message.msg_iov = &part;
      message.msg_iovlen = 1;
      message.msg_control = control;
      message.msg_controllen = sizeof( control );
      ssize_t got = recvmsg( connection, &message, MSG_CMSG_CLOEXEC );
      if ( got <= 0 ) {
         return false;
      }
      takeDescriptors( message, passed );
      const char * end = static_cast< const char * >( std::memchr( buffer, '\n', got ) );
      line.append( buffer, end ? end - buffer : got );
      if ( end ) {
         return line.size() <= maxReportRequest;
      }
   }
   return false;
}

void
reply( int connection, S32 status, const std::string & message ) {
   std::string text = std::to_string( status ) + ( message.empty() ? "" : " " + message ) + "\n";
   send( connection, text.data(), text.size(), MSG_NOSIGNAL );
}

} // namespace

ReportServer::ReportServer( const std::string & socketPath, Handler handler )
      : socket_( std::make_unique< BoundSocket >( socketPath, SOCK_STREAM | SOCK_NONBLOCK ) ),
        handler_( std::move( handler ) ) {
   if ( listen( socket_->fd(), 16 ) != 0 ) {
      throw Error( Errc::system, systemText( "listen " + socketPath, errno ) );
   }
}

ReportServer::~ReportServer() = default;

int
ReportServer::fd() const {
   return socket_->fd();
}

const std::string &
ReportServer::socketPath() const {
   return socket_->path();
}

U32
ReportServer::serve() {
   U32 served = 0;
   for ( ;; ) {
      int connection = accept4( socket_->fd(), nullptr, nullptr, SOCK_CLOEXEC );
      if ( connection < 0 ) {
         if ( errno == EINTR || errno == ECONNABORTED ) {
            continue;
         }
         return served;  // EAGAIN: nobody else waits
      }
      ++served;
      // Closed however the handler leaves, so the client never waits forever.
      std::unique_ptr< int, void ( * )( int * ) > closer( &connection,
                                                          []( int * fd ) { close( *fd ); } );
      serveConnection( connection );
   }
}

void
ReportServer::serveConnection( int connection ) {
   setTimeouts( connection, clientTimeoutMs_ );
   ucred peer = {};
   if ( !peerAllowed( connection, peer ) ) {
      reply( connection, reportStatusRefused,
             "permission denied: uid " + std::to_string( peer.uid ) +
                " may not ask this agent (uid " + std::to_string( geteuid() ) +
                ") for reports" );
      return;
   }
   std::string line;
   int passed = -1;
   bool complete = receiveRequest( connection, line, passed );
   if ( !complete || passed < 0 ) {
      reply( connection, reportStatusMalformed,
             !complete ? "malformed report request: no complete line of at most " +
                            std::to_string( maxReportRequest ) + " bytes"
                       : "malformed report request: no output descriptor passed" );
   } else {
      S32 status;
      try {
         SigpipeGuard guard;
         status = handler_( line, passed );
      } catch ( ... ) {
         close( passed );
         throw;
      }
      reply( connection, status, "" );
   }
   if ( passed >= 0 ) {
      close( passed );
   }
}

} // namespace Vault
