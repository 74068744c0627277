// Request-to-answer round trip of the command line's table requests: a
// client asks the agent (another process) to fill a 400-row table, waits for
// the answer and copies the table. Reports the median and the 99th
// percentile of single round trips besides the mean.
//
//   build/default/bench/VaultBench
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstring>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "bench/Percentiles.h"
#include "platform/vault/VaultMailbox.h"
#include "platform/vault/VaultStore.h"
#include "platform/vault/VaultTable.h"

namespace {

using namespace Vault;

constexpr U32 rows = 400;
constexpr U32 recordSize = 72;  // a name record
constexpr U32 stopKind = 0xFFFF;
const char * const tablePath = "cliVault/entries-name/1/0/0";

std::string
benchPrefix() {
   return "bench" + std::to_string( getpid() );
}

// The agent: fills the table with `kind` rows per request, as a dump does
// (clear, then every row), until asked to stop; cleans up on return.
int
runAgent( const std::string & prefix, int ready ) {
   Store store( prefix );
   TableWriter table = store.createTable( tablePath, recordSize, 30 );
   MailboxServer mailbox( store );
   ( void ) !write( ready, "!", 1 );
   U8 record[ recordSize ] = {};
   bool stop = false;
   while ( !stop ) {
      mailbox.wait( -1 );
      mailbox.serve( [ & ]( const IncomingRequest & in ) {
         stop = in.request.kind == stopKind;
         TableWriter::Batch batch( table );
         table.clear();
         for ( U32 key = 0; key < in.request.kind && !stop; ++key ) {
            std::memcpy( record, &key, sizeof( key ) );
            table.put( key, record, recordSize );
         }
         return 0;
      } );
   }
   return 0;
}

pid_t
startAgent( const std::string & prefix ) {
   int ready[ 2 ];
   if ( pipe( ready ) != 0 ) {
      return -1;
   }
   pid_t agent = fork();
   if ( agent == 0 ) {
      close( ready[ 0 ] );
      _exit( runAgent( prefix, ready[ 1 ] ) );
   }
   close( ready[ 1 ] );
   char c;
   ( void ) !read( ready[ 0 ], &c, 1 );
   close( ready[ 0 ] );
   return agent;
}

// kind = rows to fill; 0 measures the channel alone.
void
roundTrip( benchmark::State & state, U32 kind, bool readTable ) {
   const std::string prefix = benchPrefix();
   pid_t agent = startAgent( prefix );
   MailboxClient client( prefix );
   TableReader reader( prefix, tablePath );
   Snapshot snapshot;
   Answer answer;
   std::vector< double > micros;
   micros.reserve( state.max_iterations );
   for ( auto _ : state ) {
      auto start = std::chrono::steady_clock::now();
      Status status = client.call( Request{ 1, kind, 1, 0, "" }, answer );
      if ( status.ok() && readTable ) {
         status = reader.snapshot( snapshot );
      }
      auto took = std::chrono::steady_clock::now() - start;
      if ( !status.ok() || ( readTable && snapshot.size() != kind ) ) {
         state.SkipWithError( status.ok() ? "short table" : status.text().c_str() );
         break;
      }
      micros.push_back( std::chrono::duration< double, std::micro >( took ).count() );
   }
   client.call( Request{ 1, stopKind, 0, 0, "" }, answer );
   waitpid( agent, nullptr, 0 );
   if ( !micros.empty() ) {
      percentiles( state, micros );
   }
}

void
BM_RequestFill400RowsAndRead( benchmark::State & state ) {
   roundTrip( state, rows, true );
}

void
BM_RequestEmptyAnswer( benchmark::State & state ) {
   roundTrip( state, 0, false );
}

// A reader's copy of a 400-row table of name records, in one process: the
// reader's share of a round trip.
void
BM_Snapshot400Rows( benchmark::State & state ) {
   const std::string prefix = benchPrefix();
   Store store( prefix );
   TableWriter table = store.createTable( tablePath, recordSize, rows );
   U8 record[ recordSize ] = {};
   for ( U32 key = 0; key < rows; ++key ) {
      std::memcpy( record, &key, sizeof( key ) );
      table.put( key, record, 11 + 20 );  // a name of 20 characters
   }
   TableReader reader( prefix, tablePath );
   Snapshot snapshot;
   for ( auto _ : state ) {
      Status status = reader.snapshot( snapshot );
      if ( !status.ok() || snapshot.size() != rows ) {
         state.SkipWithError( status.ok() ? "short table" : status.text().c_str() );
         break;
      }
   }
}

BENCHMARK( BM_Snapshot400Rows )->Unit( benchmark::kMicrosecond );
BENCHMARK( BM_RequestFill400RowsAndRead )->Iterations( 20000 )->Unit( benchmark::kMicrosecond );
BENCHMARK( BM_RequestEmptyAnswer )->Iterations( 20000 )->Unit( benchmark::kMicrosecond );

} // namespace

BENCHMARK_MAIN();
