#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <sys/socket.h>
#include <unistd.h>

#include "platform/vault/VaultReport.h"
#include "platform/vault/VaultSocket.h"

namespace Vault {

namespace {

class Connection {
 public:
   Connection() : fd_( socket( AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0 ) ) {}
   ~Connection() {
      if ( fd_ >= 0 ) {
         close( fd_ );
      }
   }
   int fd() const { return fd_; }

 private:
   int fd_;
};

Status
connectTo( const Connection & connection, const std::string & path ) {
   sockaddr_un address;
   socklen_t length;
   Status valid = unixAddress( path, address, length );
   if ( !valid.ok() ) {
      return valid;
   }
   if ( connection.fd() < 0 ) {
      return systemStatus( "socket", errno );
   }
   if ( connect( connection.fd(), reinterpret_cast< const sockaddr * >( &address ), length ) ==
        0 ) {
      return Status();
   }
   switch ( errno ) {
    case ENOENT:
    case ECONNREFUSED:
    case ENOTDIR:
      return Status( Errc::agentNotRunning, "no agent running at " + path );
    case EACCES:
    case EPERM:
      return Status( Errc::refused, "no permission to reach the agent at " + path );
    default:
      return systemStatus( "connecting to " + path, errno );
   }
}

// Sends the line; the descriptor travels with its first byte. A peer that
// already replied and closed (a refusal) is not an error here: its reply
// waits to be read.
void
sendRequest( int connection, const std::string & line, int out ) {
   alignas( cmsghdr ) char control[ CMSG_SPACE( sizeof( int ) ) ] = {};
   size_t sent = 0;
   while ( sent < line.size() ) {
      iovec part = { const_cast< char * >( line.data() ) + sent, line.size() - sent };
      msghdr message = {};
      message.msg_iov = &part;
      message.msg_iovlen = 1;
      if ( sent == 0 ) {
         message.msg_control = control;
         message.msg_controllen = sizeof( control );
         cmsghdr * c = CMSG_FIRSTHDR( &message );
         c->cmsg_level = SOL_SOCKET;
         c->cmsg_type = SCM_RIGHTS;
         c->cmsg_len = CMSG_LEN( sizeof( int ) );
         std::memcpy( CMSG_DATA( c ), &out, sizeof( int ) );
      }
      ssize_t done = sendmsg( connection, &message, MSG_NOSIGNAL );
      if ( done < 0 && errno == EINTR ) {
         continue;
      }
      if ( done <= 0 ) {
         return;
      }
      sent += static_cast< size_t >( done );
   }
}

// Reads "<status>[ <message>]\n"; false when the agent closed before that.
bool
receiveReply( int connection, S32 & status, std::string & message ) {
   std::string text;
   char buffer[ 256 ];
   while ( text.find( '\n' ) == std::string::npos && text.size() <= maxReportRequest ) {
      ssize_t got = recv( connection, buffer, sizeof( buffer ), 0 );
      if ( got < 0 && errno == EINTR ) {
         continue;
      }
      if ( got <= 0 ) {
         return false;
      }
      text.append( buffer, static_cast< size_t >( got ) );
   }
   size_t end = text.find( '\n' );
   if ( end == std::string::npos ) {
      return false;
   }
   text.resize( end );
   char * after = nullptr;
   long value = std::strtol( text.c_str(), &after, 10 );
   if ( after == text.c_str() || ( *after != '\0' && *after != ' ' ) ) {
      return false;
   }
   status = static_cast< S32 >( value );
   message = *after == ' ' ? std::string( after + 1 ) : std::string();
   return true;
}

} // namespace

Status
requestReport( const std::string & socketPath, const std::string & request, int out,
               S32 & exitStatus ) {
   if ( request.size() > maxReportRequest || request.find_first_of( std::string( "\n\0", 2 ) ) !=
                                                std::string::npos ) {
      return Status( Errc::invalidArgument,
                     "report request must be one line of at most " +
                        std::to_string( maxReportRequest ) + " bytes" );
   }
   if ( out < 0 ) {
      return Status( Errc::invalidArgument, "no output descriptor for the report" );
   }
   Connection connection;
   Status connected = connectTo( connection, socketPath );
   if ( !connected.ok() ) {
      return connected;
   }
   sendRequest( connection.fd(), request + "\n", out );
   std::string message;
   if ( !receiveReply( connection.fd(), exitStatus, message ) ) {
      return Status( Errc::system, "agent at " + socketPath +
                                      " closed the connection without an exit status" );
   }
   if ( !message.empty() ) {
      return Status( exitStatus == reportStatusRefused ? Errc::refused : Errc::invalidArgument,
                     message );
   }
   return Status();
}

} // namespace Vault
