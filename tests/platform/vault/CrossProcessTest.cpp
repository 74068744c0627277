// Writer and reader in different processes: concurrent changes, growth under
// a reader's feet, agents that die without cleaning up.
#include <signal.h>

#include <chrono>
#include <thread>

#include "platform/vault/VaultMailbox.h"
#include "platform/vault/VaultStore.h"
#include "platform/vault/VaultTable.h"
#include "tests/platform/vault/VaultTestSupport.h"
#include "tests/common/Thrown.h"

using namespace Vault;
using VaultTest::Signal;
using VaultTest::TestPrefix;
using VaultTest::Child;

namespace {

constexpr U32 words = 18;  // 72-byte records, the size of a name record

// Rewrites 400 rows with ever newer versions, sometimes in batches, sometimes
// removing and adding rows back, growing from 6 rows, until told to stop.
int
churn( const std::string & prefix, Signal & ready, Signal & stop ) {
   Store store( prefix );
   TableWriter table = store.createTable( "cliVault/entryfeatures/1/0/0", words * 4, 6 );
   ready.send();
   for ( U32 version = 1; !stop.poll(); ++version ) {
      if ( version % 7 == 0 ) {
         TableWriter::Batch batch( table );
         table.clear();
      }
      for ( U32 key = 0; key < 400; ++key ) {
         std::vector< U32 > record = VaultTest::makeRecord( key, version, words );
         table.put( key, record.data(), words * 4 );
         if ( key % 50 == version % 50 ) {
            table.remove( key );
         }
      }
      // A short rest between passes, as an agent has between changes: a
      // writer that never stops leaves a reader no window for a whole copy.
      std::this_thread::sleep_for( std::chrono::microseconds( 100 ) );
   }
   return 0;
}

} // namespace

TEST( VaultCrossProcess, ConcurrentWritesAreNeverSeenTorn ) {
   TestPrefix prefix;
   Signal ready;
   Signal stop;
   Child writer( [ & ] { return churn( prefix, ready, stop ); } );
   ASSERT_TRUE( ready.wait() );
   TableReader reader( prefix, "cliVault/entryfeatures/1/0/0" );
   reader.setMaxAttempts( 100000 );
   Snapshot snapshot;
   U32 consistent = 0;
   U32 largestGeneration = 0;
   // At least 3000 rounds, and on until the reader has followed the growth:
   // on a busy machine the writer may not even run during the first ones.
   const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds( 30 );
   auto more = [ & ]( int round ) {
      return round < 3000 ||
             ( largestGeneration == 0 && std::chrono::steady_clock::now() < deadline );
   };
   for ( int round = 0; more( round ); ++round ) {
      Status status = reader.snapshot( snapshot );
      ASSERT_TRUE( status.ok() || status.code() == Errc::inconsistent ) << status.text();
      if ( !status.ok() ) {
         continue;
      }
      ++consistent;
      largestGeneration = std::max( largestGeneration, snapshot.generation() );
      for ( U32 i = 0; i < snapshot.size(); ++i ) {
         Record record = snapshot.at( i );
         ASSERT_TRUE( VaultTest::recordIntact( record.key, record.data, record.length, words ) )
            << "torn record " << record.key << " in round " << round;
      }
   }
   stop.send();
   EXPECT_EQ( 0, writer.wait() );
   EXPECT_GT( consistent, 100u );
   EXPECT_GT( largestGeneration, 0u );  // the reader followed the growth
   EXPECT_TRUE( listSegments( prefix ).empty() );  // the writer cleaned up on exit
}

// The reader maps a table of 6 rows; the writer grows it to 400 meanwhile.
TEST( VaultCrossProcess, ReaderWithTheOldGenerationMapsTheNewOne ) {
   TestPrefix prefix;
   Signal small;
   Signal readIt;
   Signal grown;
   Signal done;
   Child writer( [ & ] {
      Store store( prefix );
      TableWriter table = store.createTable( "cliVault/groups/1/0/0", 8, 6 );
      for ( U32 key = 0; key < 6; ++key ) {
         table.put( key, &key, 4 );
      }
      small.send();
      readIt.wait();
      for ( U32 key = 6; key < 400; ++key ) {
         table.put( key, &key, 4 );
      }
      grown.send();
      done.wait();
      return 0;
   } );
   ASSERT_TRUE( small.wait() );
   TableReader reader( prefix, "cliVault/groups/1/0/0" );
   Snapshot snapshot;
   ASSERT_TRUE( reader.snapshot( snapshot ).ok() );
   EXPECT_EQ( 6u, snapshot.size() );
   EXPECT_EQ( 6u, snapshot.capacity() );
   readIt.send();
   ASSERT_TRUE( grown.wait() );
   Status status = reader.snapshot( snapshot );
   ASSERT_TRUE( status.ok() ) << status.text();
   EXPECT_EQ( 400u, snapshot.size() );
   EXPECT_EQ( 768u, snapshot.capacity() );
   EXPECT_EQ( 7u, snapshot.generation() );
   snapshot.sortByKey();
   for ( U32 key = 0; key < 400; ++key ) {
      U32 stored;
      std::memcpy( &stored, snapshot.at( key ).data, 4 );
      ASSERT_EQ( key, stored );
   }
   done.send();
   EXPECT_EQ( 0, writer.wait() );
}

// An agent that exits without any cleanup: readers say so, and a new agent
// with the same prefix takes its segments over.
TEST( VaultCrossProcess, StaleAgentIsRecognisedAndTakenOver ) {
   TestPrefix prefix;
   Child dead( [ & ] {
      auto * store = new Store( prefix );  // never destroyed
      auto * table = new TableWriter( store->createTable( "cliVault/stages", 4, 6 ) );
      table->put( 1, "old", 3 );
      new MailboxServer( *store, 4, runtimePath( prefix, "bell" ) );
      return 0;
   } );
   ASSERT_EQ( 0, dead.wait() );
   EXPECT_EQ( 3u, listSegments( prefix ).size() );  // owner, table, mailbox

   const std::string gone = std::to_string( dead.pid() );
   TableReader reader( prefix, "cliVault/stages" );
   Snapshot snapshot;
   Status status = reader.snapshot( snapshot );
   EXPECT_EQ( Errc::agentNotRunning, status.code() );
   EXPECT_EQ( "agent not running: table 'cliVault/stages' was written by pid " + gone +
                 ", which has exited",
              status.text() );
   status = agentStatus( prefix );
   EXPECT_EQ( "agent not running: prefix '" + prefix.str() + "' was held by pid " + gone +
                 ", which has exited",
              status.text() );
   MailboxClient client( prefix );
   Answer answer;
   status = client.call( Request(), answer );
   EXPECT_EQ( Errc::agentNotRunning, status.code() );
   EXPECT_EQ( "agent not running: prefix '" + prefix.str() + "' was held by pid " + gone +
                 ", which has exited",
              status.text() );

   Store successor( prefix );
   EXPECT_EQ( 2u, successor.staleRemoved() );
   EXPECT_TRUE( agentStatus( prefix ).ok() );
   // The reader still maps the dead agent's table: it was retired.
   EXPECT_EQ( Errc::notFound, reader.snapshot( snapshot ).code() );
   TableWriter table = successor.createTable( "cliVault/stages", 4, 6 );
   table.put( 2, "new", 3 );
   // The dead agent's doorbell socket is replaced too.
   MailboxServer mailbox( successor, 4, runtimePath( prefix, "bell" ) );
   ASSERT_TRUE( reader.snapshot( snapshot ).ok() );
   ASSERT_EQ( 1u, snapshot.size() );
   EXPECT_EQ( 2u, snapshot.at( 0 ).key );
}

// A reader that attached while the agent lived notices when it is killed.
TEST( VaultCrossProcess, KilledAgentIsNoticedByAnAttachedReader ) {
   TestPrefix prefix;
   Signal ready;
   Child agent( [ & ] {
      Store store( prefix );
      TableWriter table = store.createTable( "t", 4, 1 );
      table.put( 9, "x", 1 );
      ready.send();
      pause();
      return 0;
   } );
   ASSERT_TRUE( ready.wait() );
   TableReader reader( prefix, "t" );
   Snapshot snapshot;
   ASSERT_TRUE( reader.snapshot( snapshot ).ok() );
   kill( agent.pid(), SIGKILL );
   EXPECT_EQ( 128 + SIGKILL, agent.wait() );
   Status status = reader.snapshot( snapshot );
   EXPECT_EQ( Errc::agentNotRunning, status.code() );
   EXPECT_TRUE( snapshot.empty() );
}

TEST( VaultCrossProcess, SecondLiveAgentIsRefusedThePrefix ) {
   TestPrefix prefix;
   Signal ready;
   Signal done;
   Child agent( [ & ] {
      Store store( prefix );
      ready.send();
      done.wait();
      return 0;
   } );
   ASSERT_TRUE( ready.wait() );
   std::optional< Error > error = TestText::thrown< Error >( [ & ] { Store second( prefix ); } );
   ASSERT_TRUE( error ) << "second agent accepted";
   EXPECT_EQ( Errc::busy, error->code() );
   EXPECT_EQ( "prefix '" + prefix.str() + "' is held by the running agent with pid " +
                 std::to_string( agent.pid() ),
              std::string( error->what() ) );
   done.send();
   EXPECT_EQ( 0, agent.wait() );
   EXPECT_TRUE( listSegments( prefix ).empty() );
   Store after( prefix );  // free again once the first one left
   EXPECT_EQ( 0u, after.staleRemoved() );
}
