// The command line's costs against a running agent (the test agent of
// tests/integration/agent on a Trident3-like unit, whose IPv4 ACL group
// holds the 400 entries in its first slices, forked into a process of its
// own; the unit keeps its start-up reservations):
//
//   BM_EntryTable400RoundTrip  a request for a 400-row table (the entry
//                              names of a reservation with 400 entries):
//                              the agent's group manager dumps it, answers,
//                              and the client copies the table
//   BM_EntryTable400ChangedRoundTrip
//                              the same with one entry renamed by the agent
//                              after each request, so that every request
//                              finds a row to write
//   BM_EntryTable400IdleRoundTrip
//                              the same with a pause of 1 ms before each
//                              request: the agent sleeps when it arrives,
//                              as for the first request of a command
//   BM_EntryTable400Serve      the agent's share of the first alone, in
//                              this process (CPU time)
//   BM_GroupTableRoundTrip     the same for the groups of a stage and pipe
//   BM_TesselShowRun           a whole `tessel-show tcam groups` process
//
// Each reports the median and the 99th percentile of single runs besides
// the mean.
//
//   build/default/bench/ShowBench
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "bench/Percentiles.h"
#include "export/TesselTcamVaultTables.h"
#include "platform/vault/VaultMailbox.h"
#include "platform/vault/VaultTable.h"
#include "tests/integration/agent/TestAgent.h"

extern char ** environ;

namespace {

using namespace Tessel;

constexpr U32 entries = 400;

std::string
benchPrefix() {
   return "showbench" + std::to_string( getpid() );
}

// After every turn of its loop (each served request) the agent renames one
// of the 400 entries, so that the next request finds one row changed.
void
renameAnEntry( TestAgent::Agent & agent, U32 turn ) {
   Kiln::Ptr< TesselUnboundedTcamEntryManager > acl =
      agent.manager()->unboundedEntryManager( ipAclTcamGroup_ );
   Kiln::Ptr< UnitEntriesCreated > record = acl->internalUnitEntry( 0 );
   std::vector< U32 > ids = record->entryCreatedCollection().keys();
   U32 entry = ids[ turn % ids.size() ];
   record->entryCreatedIs( entry, "acl rule " + std::to_string( entry ) + " v" +
                                     std::to_string( turn ) );
}

// The agent in a child process; returns its pid once it serves.
pid_t
startAgent( const std::string & prefix, bool changeEachTurn = false ) {
   int ready[ 2 ];
   if ( pipe( ready ) != 0 ) {
      return -1;
   }
   pid_t agent = fork();
   if ( agent == 0 ) {
      close( ready[ 0 ] );
      Kiln::ActivityLockGuard activity;
      TestAgent::Settings settings;
      settings.prefix = prefix;
      settings.profiles = { "trident3" };
      settings.entries = entries;
      TestAgent::Agent running( settings );
      ( void ) !write( ready[ 1 ], "!", 1 );
      signal( SIGTERM, []( int ) { _exit( 0 ); } );
      if ( !changeEachTurn ) {
         running.loop().run();
      }
      for ( U32 turn = 0;; ++turn ) {
         running.loop().runOnce( Kiln::ActivityLoop::Clock::duration( -1 ) );
         renameAnEntry( running, turn );
      }
   }
   close( ready[ 1 ] );
   char c;
   ( void ) !read( ready[ 0 ], &c, 1 );
   close( ready[ 0 ] );
   return agent;
}

void
stopAgent( pid_t agent, const std::string & prefix ) {
   kill( agent, SIGTERM );
   waitpid( agent, nullptr, 0 );
   // The agent left through _exit: its segments are a dead agent's now.
   Vault::Store cleanup( prefix );
}

// expectedRows 0: as many as the first answer holds, and never none.
// idleBetween: how long the client waits before each request, so that the
// agent has gone back to sleep (its watch after an answer has ended).
void
roundTrip( benchmark::State & state, TcamGroupManagerVaultTypes kind, U32 expectedRows,
           bool changeEachTurn = false,
           std::chrono::microseconds idleBetween = std::chrono::microseconds( 0 ) ) {
   const std::string prefix = benchPrefix();
   pid_t agent = startAgent( prefix, changeEachTurn );
   Vault::MailboxClient client( prefix );
   std::string path = unitTablePathOf( perStageText( perStageTable( kind )->path, 0, 0 ), 0 );
   Vault::TableReader reader( prefix, path );
   Vault::Snapshot snapshot;
   Vault::Answer answer;
   std::vector< double > micros;
   for ( auto _ : state ) {
      if ( idleBetween.count() > 0 ) {
         state.PauseTiming();
         usleep( useconds_t( idleBetween.count() ) );
         state.ResumeTiming();
      }
      auto start = std::chrono::steady_clock::now();
      Vault::Status status = client.call( { 0, kind, 0, 0, "" }, answer );
      if ( status.ok() ) {
         status = reader.snapshot( snapshot );
      }
      auto took = std::chrono::steady_clock::now() - start;
      if ( expectedRows == 0 ) {
         expectedRows = snapshot.size() ? snapshot.size() : ~0u;
      }
      if ( !status.ok() || answer.result != 0 || snapshot.size() != expectedRows ) {
         state.SkipWithError( status.ok() ? "the table does not hold the rows expected"
                                          : status.text().c_str() );
         break;
      }
      micros.push_back( std::chrono::duration< double, std::micro >( took ).count() );
   }
   stopAgent( agent, prefix );
   percentiles( state, micros );
}

void
BM_EntryTable400RoundTrip( benchmark::State & state ) {
   roundTrip( state, vaultTypeEntryNames, entries );
}

void
BM_EntryTable400ChangedRoundTrip( benchmark::State & state ) {
   roundTrip( state, vaultTypeEntryNames, entries, true );
}

void
BM_EntryTable400IdleRoundTrip( benchmark::State & state ) {
   roundTrip( state, vaultTypeEntryNames, entries, false, std::chrono::microseconds( 1000 ) );
}

// The agent's share of a request alone, in this process: the request
// checked and set on the group manager, the table dumped, the answer ready.
void
BM_EntryTable400Serve( benchmark::State & state ) {
   Kiln::ActivityLockGuard activity;
   TestAgent::Settings settings;
   settings.prefix = benchPrefix();
   settings.profiles = { "trident3" };
   settings.entries = entries;
   TestAgent::Agent agent( settings );
   Vault::IncomingRequest in;
   in.request = { 0, vaultTypeEntryNames, 0, 0, "" };
   for ( auto _ : state ) {
      if ( agent.server().serveTableRequest( in ) != 0 ) {
         state.SkipWithError( "the request was not served" );
         break;
      }
   }
}

void
BM_GroupTableRoundTrip( benchmark::State & state ) {
   roundTrip( state, vaultTypeGroups, 0 );
}

int
runShow( const std::string & prefix ) {
   std::vector< std::string > args = { TESSEL_SHOW_BINARY, "--prefix", prefix, "tcam", "groups" };
   std::vector< char * > argv;
   for ( std::string & arg : args ) {
      argv.push_back( arg.data() );
   }
   argv.push_back( nullptr );
   posix_spawn_file_actions_t actions;
   posix_spawn_file_actions_init( &actions );
   posix_spawn_file_actions_addopen( &actions, 1, "/dev/null", O_WRONLY, 0 );
   pid_t pid = -1;
   int rc = posix_spawn( &pid, argv[ 0 ], &actions, nullptr, argv.data(), environ );
   posix_spawn_file_actions_destroy( &actions );
   int status = 0;
   if ( rc != 0 || waitpid( pid, &status, 0 ) != pid ) {
      return -1;
   }
   return WIFEXITED( status ) ? WEXITSTATUS( status ) : -1;
}

void
BM_TesselShowRun( benchmark::State & state ) {
   const std::string prefix = benchPrefix();
   pid_t agent = startAgent( prefix );
   std::vector< double > micros;
   for ( auto _ : state ) {
      auto start = std::chrono::steady_clock::now();
      int exitCode = runShow( prefix );
      auto took = std::chrono::steady_clock::now() - start;
      if ( exitCode != 0 ) {
         state.SkipWithError( "tessel-show failed" );
         break;
      }
      micros.push_back( std::chrono::duration< double, std::micro >( took ).count() );
   }
   stopAgent( agent, prefix );
   percentiles( state, micros );
}

BENCHMARK( BM_EntryTable400RoundTrip )->Iterations( 5000 )->Unit( benchmark::kMicrosecond );
BENCHMARK( BM_EntryTable400ChangedRoundTrip )
   ->Iterations( 5000 )
   ->Unit( benchmark::kMicrosecond );
BENCHMARK( BM_EntryTable400IdleRoundTrip )->Iterations( 1000 )->Unit( benchmark::kMicrosecond );
BENCHMARK( BM_EntryTable400Serve )->Unit( benchmark::kMicrosecond );
BENCHMARK( BM_GroupTableRoundTrip )->Iterations( 5000 )->Unit( benchmark::kMicrosecond );
BENCHMARK( BM_TesselShowRun )->Iterations( 300 )->Unit( benchmark::kMillisecond );

} // namespace

BENCHMARK_MAIN();
