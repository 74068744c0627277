// The report channel: descriptor passing across processes, exit statuses,
// peer credentials, and clients or agents that misbehave.
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>

#include "platform/vault/VaultReport.h"
#include "tests/platform/vault/VaultTestSupport.h"
#include "tests/common/Thrown.h"

using namespace Vault;
using VaultTest::Child;
using VaultTest::Signal;
using VaultTest::TempDir;

namespace {

constexpr U32 nobody = 65534;

// Serves one connection on another thread.
class ServeOnce {
 public:
   explicit ServeOnce( ReportServer & server )
         : thread_( [ &server ] {
              pollfd ready = { server.fd(), POLLIN, 0 };
              if ( poll( &ready, 1, 5000 ) == 1 ) {
                 server.serve();
              }
           } ) {}
   ~ServeOnce() { thread_.join(); }

 private:
   std::thread thread_;
};

std::string
readAll( int fd ) {
   std::string text;
   char buffer[ 256 ];
   ssize_t got;
   while ( ( got = read( fd, buffer, sizeof( buffer ) ) ) > 0 ) {
      text.append( buffer, static_cast< size_t >( got ) );
   }
   return text;
}

struct Pipe {
   int fds[ 2 ] = { -1, -1 };
   Pipe() { EXPECT_EQ( 0, pipe( fds ) ); }
   ~Pipe() {
      closeRead();
      closeWrite();
   }
   void closeRead() {
      if ( fds[ 0 ] >= 0 ) {
         close( fds[ 0 ] );
      }
      fds[ 0 ] = -1;
   }
   void closeWrite() {
      if ( fds[ 1 ] >= 0 ) {
         close( fds[ 1 ] );
      }
      fds[ 1 ] = -1;
   }
};

} // namespace

// The agent in another process writes straight into the descriptor the
// client passed, and the client gets the agent's exit status.
TEST( VaultReport, ReportArrivesThroughThePassedDescriptor ) {
   TempDir dir;
   const std::string path = dir.file( "agent.sock" );
   Signal ready;
   Child agent( [ & ] {
      bool stop = false;
      ReportServer server( path, [ & ]( const std::string & request, int out ) {
         stop = request == "stop";
         std::string text = "report for '" + request + "' from " + std::to_string( getpid() ) +
                            "\n";
         return write( out, text.data(), text.size() ) == ssize_t( text.size() ) ? 3 : 1;
      } );
      ready.send();
      while ( !stop ) {
         pollfd wake = { server.fd(), POLLIN, 0 };
         poll( &wake, 1, -1 );
         server.serve();
      }
      return 0;
   } );
   ASSERT_TRUE( ready.wait() );
   EXPECT_EQ( 0600u, VaultTest::modeOf( path ) );
   for ( const std::string request : { "show tcam usage", "show tcam entries 3 1" } ) {
      Pipe output;
      S32 exitStatus = -1;
      Status status = requestReport( path, request, output.fds[ 1 ], exitStatus );
      ASSERT_TRUE( status.ok() ) << status.text();
      EXPECT_EQ( 3, exitStatus );
      output.closeWrite();
      EXPECT_EQ( "report for '" + request + "' from " + std::to_string( agent.pid() ) + "\n",
                 readAll( output.fds[ 0 ] ) );
   }
   S32 exitStatus = -1;
   int sink = open( "/dev/null", O_WRONLY );
   EXPECT_TRUE( requestReport( path, "stop", sink, exitStatus ).ok() );
   close( sink );
   EXPECT_EQ( 0, agent.wait() );
   EXPECT_EQ( 0xFFFFu, VaultTest::modeOf( path ) );  // removed on exit
}

TEST( VaultReport, NoAgentAtThePath ) {
   TempDir dir;
   const std::string path = dir.file( "agent.sock" );
   S32 exitStatus = -1;
   Status status = requestReport( path, "show", 1, exitStatus );
   EXPECT_EQ( Errc::agentNotRunning, status.code() );
   EXPECT_EQ( "no agent running at " + path, status.text() );

   // A killed agent leaves its socket file behind.
   Signal ready;
   Child agent( [ & ] {
      new ReportServer( path, []( const std::string &, int ) { return 0; } );
      ready.send();
      pause();
      return 0;
   } );
   ASSERT_TRUE( ready.wait() );
   std::optional< Error > error = TestText::thrown< Error >(
      [ & ] { ReportServer second( path, []( const std::string &, int ) { return 0; } ); } );
   ASSERT_TRUE( error ) << "two agents at one path";
   EXPECT_EQ( Errc::busy, error->code() );
   EXPECT_EQ( "an agent already serves at " + path, std::string( error->what() ) );
   kill( agent.pid(), SIGKILL );
   agent.wait();
   status = requestReport( path, "show", 1, exitStatus );
   EXPECT_EQ( "no agent running at " + path, status.text() );
   ReportServer successor( path, []( const std::string &, int ) { return 4; } );
   ServeOnce serving( successor );
   EXPECT_TRUE( requestReport( path, "show", 1, exitStatus ).ok() );
   EXPECT_EQ( 4, exitStatus );
}

// A caller that stops reading must not take the agent down with SIGPIPE.
TEST( VaultReport, ReaderGoneIsAnErrorForTheHandlerOnly ) {
   TempDir dir;
   const std::string path = dir.file( "agent.sock" );
   int writeError = 0;
   ReportServer server( path, [ & ]( const std::string &, int out ) {
      errno = 0;
      if ( write( out, "lost\n", 5 ) < 0 ) {
         writeError = errno;
      }
      return 9;
   } );
   ServeOnce serving( server );
   Pipe output;
   output.closeRead();
   S32 exitStatus = -1;
   EXPECT_TRUE( requestReport( path, "show", output.fds[ 1 ], exitStatus ).ok() );
   EXPECT_EQ( 9, exitStatus );
   EXPECT_EQ( EPIPE, writeError );
}

TEST( VaultReport, MalformedRequests ) {
   TempDir dir;
   const std::string path = dir.file( "agent.sock" );
   bool called = false;
   ReportServer server( path, [ & ]( const std::string &, int ) {
      called = true;
      return 0;
   } );
   S32 exitStatus = -1;
   Status status = requestReport( path, "two\nlines", 1, exitStatus );
   EXPECT_EQ( Errc::invalidArgument, status.code() );
   EXPECT_EQ( "report request must be one line of at most 4096 bytes", status.text() );
   EXPECT_EQ( Errc::invalidArgument,
              requestReport( path, std::string( 4097, 'r' ), 1, exitStatus ).code() );
   EXPECT_EQ( Errc::invalidArgument, requestReport( path, "show", -1, exitStatus ).code() );

   // A client of its own that passes no descriptor.
   ServeOnce serving( server );
   int raw = socket( AF_UNIX, SOCK_STREAM, 0 );
   sockaddr_un address = {};
   address.sun_family = AF_UNIX;
   std::strcpy( address.sun_path, path.c_str() );
   ASSERT_EQ( 0, connect( raw, reinterpret_cast< sockaddr * >( &address ), sizeof( address ) ) );
   ASSERT_EQ( 5, write( raw, "show\n", 5 ) );
   EXPECT_EQ( "76 malformed report request: no output descriptor passed\n", readAll( raw ) );
   close( raw );
   EXPECT_FALSE( called );
}

TEST( VaultReport, AgentThatDropsTheConnection ) {
   TempDir dir;
   const std::string path = dir.file( "agent.sock" );
   ReportServer server( path, []( const std::string &, int ) -> S32 {
      throw std::runtime_error( "report failed" );
   } );
   std::thread serving( [ & ] {
      pollfd ready = { server.fd(), POLLIN, 0 };
      poll( &ready, 1, 5000 );
      EXPECT_THROW( server.serve(), std::runtime_error );
   } );
   S32 exitStatus = -1;
   Status status = requestReport( path, "show", 1, exitStatus );
   serving.join();
   EXPECT_EQ( Errc::system, status.code() );
   EXPECT_EQ( "agent at " + path + " closed the connection without an exit status",
              status.text() );
}

// Only the agent's own user and root are served, whatever the socket's mode.
TEST( VaultReport, PeerCredentialsAreChecked ) {
   if ( geteuid() != 0 ) {
      GTEST_SKIP() << "needs root to act as another user";
   }
   TempDir dir;
   ASSERT_EQ( 0, chmod( dir.path().c_str(), 0777 ) );
   const std::string path = dir.file( "agent.sock" );
   U32 called = 0;
   ReportServer server( path, [ & ]( const std::string &, int ) { return ++called, 0; } );

   auto askAsNobody = [ & ]( const std::string & expectedText, S32 expectedExit ) {
      Child client( [ & ] {
         if ( setuid( nobody ) != 0 ) {
            return 10;
         }
         S32 exitStatus = -1;
         Status status = requestReport( path, "show", 1, exitStatus );
         if ( status.code() != Errc::refused ) {
            return 11;
         }
         if ( status.text() != expectedText ) {
            return 12;
         }
         return exitStatus == expectedExit ? 0 : 13;
      } );
      return client.wait();
   };
   // The socket's mode keeps other users out...
   EXPECT_EQ( 0, askAsNobody( "no permission to reach the agent at " + path, -1 ) );
   // ...and when it is loosened, the credentials still do.
   ASSERT_EQ( 0, chmod( path.c_str(), 0666 ) );
   {
      ServeOnce serving( server );
      EXPECT_EQ( 0, askAsNobody( "permission denied: uid 65534 may not ask this agent (uid 0) "
                                 "for reports",
                                 reportStatusRefused ) );
   }
   EXPECT_EQ( 0u, called );

   // Root may ask an agent that runs as another user.
   const std::string otherPath = dir.file( "nobody.sock" );
   Signal ready;
   Child agent( [ & ] {
      if ( setuid( nobody ) != 0 ) {
         return 10;
      }
      ReportServer other( otherPath, []( const std::string &, int ) { return 5; } );
      ready.send();
      pollfd wake = { other.fd(), POLLIN, 0 };
      poll( &wake, 1, 5000 );
      return other.serve() == 1 ? 0 : 14;
   } );
   ASSERT_TRUE( ready.wait() );
   S32 exitStatus = -1;
   Status status = requestReport( otherPath, "show", 1, exitStatus );
   EXPECT_TRUE( status.ok() ) << status.text();
   EXPECT_EQ( 5, exitStatus );
   EXPECT_EQ( 0, agent.wait() );
}
