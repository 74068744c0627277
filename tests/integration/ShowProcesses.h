// Processes of the command line's integration test: the test agent
// (tessel-test-agent) and runs of the real tessel-show binary.
#pragma once

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <string>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

extern char ** environ;

namespace ShowIntegration {

// What a finished tessel-show printed and how it exited.
struct ShowRun {
   int exitCode = -1;
   std::string out;
   std::string err;
};

inline std::string
contents( int fd ) {
   std::string text( size_t( lseek( fd, 0, SEEK_END ) ), '\0' );
   if ( pread( fd, text.data(), text.size(), 0 ) != ssize_t( text.size() ) ) {
      text.clear();
   }
   return text;
}

// Starts `argv` with standard output and error going to memory files
// (`in` as standard input when not -1); returns its pid.
inline pid_t
spawn( const std::vector< std::string > & args, int out, int err ) {
   std::vector< char * > argv;
   for ( const std::string & arg : args ) {
      argv.push_back( const_cast< char * >( arg.c_str() ) );
   }
   argv.push_back( nullptr );
   posix_spawn_file_actions_t actions;
   posix_spawn_file_actions_init( &actions );
   posix_spawn_file_actions_adddup2( &actions, out, 1 );
   posix_spawn_file_actions_adddup2( &actions, err, 2 );
   pid_t pid = -1;
   int rc = posix_spawn( &pid, argv[ 0 ], &actions, nullptr, argv.data(), environ );
   posix_spawn_file_actions_destroy( &actions );
   return rc == 0 ? pid : -1;
}

inline int
exitCodeOf( pid_t pid ) {
   int status = 0;
   if ( waitpid( pid, &status, 0 ) != pid ) {
      return -1;
   }
   return WIFEXITED( status ) ? WEXITSTATUS( status ) : 128 + WTERMSIG( status );
}

// Runs a program (its path, then its arguments) to its end.
inline ShowRun
runProgram( const std::vector< std::string > & argv ) {
   int out = memfd_create( "out", 0 );
   int err = memfd_create( "err", 0 );
   ShowRun run;
   pid_t pid = spawn( argv, out, err );
   EXPECT_GT( pid, 0 );
   run.exitCode = pid > 0 ? exitCodeOf( pid ) : -1;
   run.out = contents( out );
   run.err = contents( err );
   close( out );
   close( err );
   return run;
}

// Runs tessel-show to its end.
inline ShowRun
runShow( const std::vector< std::string > & args ) {
   std::vector< std::string > all = { TESSEL_SHOW_BINARY };
   all.insert( all.end(), args.begin(), args.end() );
   return runProgram( all );
}

// A program that serves until it is stopped: started with `argv` and waited
// for (up to 20 s, or until it exits) until its standard output holds
// `readyText`; stopped, if still running, when the object goes.
class ServingProcess {
 public:
   ServingProcess( const std::vector< std::string > & argv, std::string readyText )
         : out_( memfd_create( "agent-out", 0 ) ), err_( memfd_create( "agent-err", 0 ) ),
           readyText_( std::move( readyText ) ) {
      pid_ = spawn( argv, out_, err_ );
      for ( int waited = 0; waited < 400 && !ready() && running(); ++waited ) {
         usleep( 50000 );
      }
   }
   ~ServingProcess() {
      if ( pid_ > 0 ) {
         stop();
      }
      close( out_ );
      close( err_ );
   }
   ServingProcess( const ServingProcess & ) = delete;
   ServingProcess & operator=( const ServingProcess & ) = delete;

   bool ready() const { return out().find( readyText_ ) != std::string::npos; }
   pid_t pid() const { return pid_; }
   std::string out() const { return contents( out_ ); }
   std::string errors() const { return contents( err_ ); }
   // The signal (SIGTERM by default), then the exit code.
   int
   stop( int signal = SIGTERM ) {
      kill( pid_, signal );
      int code = exitCodeOf( pid_ );
      pid_ = -1;
      return code;
   }

 private:
   // Looks without reaping, so stop() still gets the exit code.
   bool
   running() const {
      siginfo_t info{};
      return pid_ > 0 && waitid( P_PID, pid_t( pid_ ), &info, WEXITED | WNOHANG | WNOWAIT ) == 0 &&
             info.si_pid == 0;
   }

   int out_;
   int err_;
   std::string readyText_;
   pid_t pid_ = -1;
};

// The test agent as a process of its own.
class AgentProcess : public ServingProcess {
 public:
   AgentProcess( const std::string & prefix, const std::string & socketPath,
                 const std::string & profiles = "thx,single" )
         : ServingProcess( { TESSEL_TEST_AGENT_BINARY, "--prefix", prefix, "--socket", socketPath,
                             "--profiles", profiles },
                           "ready\n" ) {}
};

} // namespace ShowIntegration
