// The request channel: round trips with an agent in another process,
// repeated requests, timeouts, abandoned and reclaimed slots.
#include <atomic>
#include <set>
#include <poll.h>
#include <signal.h>
#include <thread>

#include "platform/vault/VaultMailbox.h"
#include "platform/vault/VaultStore.h"
#include "platform/vault/VaultTable.h"
#include "tests/platform/vault/VaultTestSupport.h"

using namespace Vault;
using namespace std::chrono_literals;
using VaultTest::Child;
using VaultTest::RawSegment;
using VaultTest::Signal;
using VaultTest::TestPrefix;

namespace {

constexpr U32 stopKind = 99;

// An agent that, per request, fills table "served" with `kind` rows and a
// row 1000 counting the requests served; answers unit * 10 + stage.
int
runAgent( const std::string & prefix, Signal & ready ) {
   Store store( prefix );
   TableWriter table = store.createTable( "served", 8, 6 );
   MailboxServer mailbox( store, 4 );
   ready.send();
   U32 served = 0;
   bool stop = false;
   while ( !stop ) {
      pollfd wake = { mailbox.fd(), POLLIN, 0 };
      poll( &wake, 1, -1 );
      mailbox.serve( [ & ]( const IncomingRequest & in ) {
         stop = in.request.kind == stopKind;
         TableWriter::Batch batch( table );
         table.clear();
         for ( U32 key = 0; key < in.request.kind; ++key ) {
            table.put( key, in.request.parameters.data(),
                       std::min< U32 >( 8, in.request.parameters.size() ) );
         }
         ++served;
         table.put( 1000, &served, 4 );
         return static_cast< S32 >( in.request.unit * 10 + in.request.stage );
      } );
   }
   return 0;
}

U32
servedCount( const std::string & prefix ) {
   TableReader reader( prefix, "served" );
   Snapshot snapshot;
   EXPECT_TRUE( reader.snapshot( snapshot ).ok() );
   std::optional< Record > counter = snapshot.find( 1000 );
   U32 count = 0;
   if ( counter ) {
      std::memcpy( &count, counter->data, 4 );
   }
   return count;
}

U32
controlOf( const MailboxServer & server, U32 slot ) {
   RawSegment raw( server.segmentName() );
   return raw.as< MailboxSlot >( sizeof( MailboxHeader ) + slot * sizeof( MailboxSlot ) )
      ->control;
}

} // namespace

// The same request again and again: each is served anew, never taken for
// the previous one, and the table holds exactly the last answer.
TEST( VaultMailbox, RepeatedRequestsAreEachServed ) {
   TestPrefix prefix;
   Signal ready;
   Child agent( [ & ] { return runAgent( prefix, ready ); } );
   ASSERT_TRUE( ready.wait() );
   MailboxClient client( prefix );
   std::set< U64 > tokens;
   for ( U32 round = 1; round <= 50; ++round ) {
      Request request{ 3, round % 5 + 1, 2, 0, "grp" };
      Answer answer;
      Status status = client.call( request, answer, 2000ms );
      ASSERT_TRUE( status.ok() ) << status.text();
      EXPECT_EQ( 32, answer.result );
      EXPECT_EQ( answer.requestToken, answer.responseToken );
      EXPECT_EQ( U64( getpid() ), answer.requestToken >> 32 );
      EXPECT_TRUE( tokens.insert( answer.requestToken ).second ) << "token reused";
      EXPECT_EQ( round, servedCount( prefix ) );
      TableReader reader( prefix, "served" );
      Snapshot snapshot;
      ASSERT_TRUE( reader.snapshot( snapshot ).ok() );
      EXPECT_EQ( request.kind + 1, snapshot.size() );
   }
   Answer answer;
   ASSERT_TRUE( client.call( Request{ 0, stopKind, 0, 0, "" }, answer ).ok() );
   EXPECT_EQ( 0, agent.wait() );
   EXPECT_TRUE( listSegments( prefix ).empty() );
}

// Several client processes at once, more of them than slots.
TEST( VaultMailbox, ConcurrentClientsGetTheirOwnAnswers ) {
   TestPrefix prefix;
   Signal ready;
   Child agent( [ & ] { return runAgent( prefix, ready ); } );
   ASSERT_TRUE( ready.wait() );
   std::vector< std::unique_ptr< Child > > clients;
   for ( U32 unit = 0; unit < 6; ++unit ) {
      clients.push_back( std::make_unique< Child >( [ &prefix, unit ] {
         MailboxClient client( prefix );
         for ( U32 stage = 0; stage < 40; ++stage ) {
            Answer answer;
            Status status = client.call( Request{ unit, 1, stage, 0, "x" }, answer, 5000ms );
            if ( status.code() == Errc::busy ) {
               --stage;  // all slots taken for now: ask again
               continue;
            }
            if ( !status.ok() || answer.result != S32( unit * 10 + stage ) ||
                 answer.responseToken != answer.requestToken ) {
               return 1;
            }
         }
         return 0;
      } ) );
   }
   for ( auto & client : clients ) {
      EXPECT_EQ( 0, client->wait() );
   }
   EXPECT_EQ( 240u, servedCount( prefix ) );
   MailboxClient client( prefix );
   Answer answer;
   ASSERT_TRUE( client.call( Request{ 0, stopKind, 0, 0, "" }, answer ).ok() );
   EXPECT_EQ( 0, agent.wait() );
}

TEST( VaultMailbox, UnansweredRequestTimesOutAndFreesItsSlot ) {
   TestPrefix prefix;
   Store store( prefix );
   MailboxServer server( store, 1 );
   MailboxClient client( prefix );
   Answer answer;
   auto start = std::chrono::steady_clock::now();
   Status status = client.call( Request(), answer, 50ms );
   EXPECT_GE( std::chrono::steady_clock::now() - start, 50ms );
   EXPECT_EQ( Errc::timeout, status.code() );
   EXPECT_EQ( "the agent of prefix '" + prefix.str() + "' did not answer within 50 ms",
              status.text() );
   EXPECT_EQ( 0u, controlOf( server, 0 ) );
   // The withdrawn request is not served later.
   EXPECT_EQ( 0u, server.serve( []( const IncomingRequest & ) { return 0; } ) );
}

// The client gives up while the agent is busy with its request: the agent
// frees the slot when it is done, and the next request gets it.
TEST( VaultMailbox, AbandonedSlotIsFreedByTheAgent ) {
   TestPrefix prefix;
   Store store( prefix );
   MailboxServer server( store, 1 );
   std::atomic< bool > serving = false;
   std::atomic< bool > release = false;
   std::thread agent( [ & ] {
      server.wait( 2000 );
      server.serve( [ & ]( const IncomingRequest & ) {
         serving = true;
         while ( !release ) {
            std::this_thread::sleep_for( 1ms );
         }
         return 5;
      } );
   } );
   MailboxClient client( prefix );
   Answer answer;
   Status status = client.call( Request(), answer, 100ms );
   EXPECT_EQ( Errc::timeout, status.code() );
   EXPECT_TRUE( serving );
   EXPECT_EQ( ( U32( getpid() ) << 8 ) | slotAbandoned, controlOf( server, 0 ) );
   release = true;
   agent.join();
   EXPECT_EQ( 0u, controlOf( server, 0 ) );
   std::thread again( [ & ] {
      server.wait( 2000 );
      server.serve( []( const IncomingRequest & ) { return 6; } );
   } );
   EXPECT_TRUE( client.call( Request(), answer, 2000ms ).ok() );
   EXPECT_EQ( 6, answer.result );
   again.join();
}

// Slots held by live clients are busy; slots of dead clients are taken back.
TEST( VaultMailbox, BusySlotsAndSlotsOfDeadClients ) {
   TestPrefix prefix;
   Store store( prefix );
   MailboxServer server( store, 2 );
   Child gone( [] { return 0; } );
   const U32 deadPid = static_cast< U32 >( gone.pid() );
   ASSERT_EQ( 0, gone.wait() );
   const U32 livePid = static_cast< U32 >( getppid() );
   {
      RawSegment raw( server.segmentName() );
      raw.as< MailboxSlot >( sizeof( MailboxHeader ) )->control = ( livePid << 8 ) | slotClaimed;
      raw.as< MailboxSlot >( sizeof( MailboxHeader ) + sizeof( MailboxSlot ) )->control =
         ( deadPid << 8 ) | slotServing;
   }
   MailboxClient client( prefix );
   Answer answer;
   Status status = client.call( Request(), answer, 10ms );
   EXPECT_EQ( Errc::busy, status.code() );
   EXPECT_EQ( "all 2 request slots of the agent of prefix '" + prefix.str() + "' are in use",
              status.text() );
   {
      // A dead client's answered request is no longer the agent's business.
      RawSegment raw( server.segmentName() );
      raw.as< MailboxSlot >( sizeof( MailboxHeader ) + sizeof( MailboxSlot ) )->control =
         ( deadPid << 8 ) | slotAnswered;
   }
   std::thread agent( [ & ] {
      server.wait( 2000 );
      server.serve( []( const IncomingRequest & in ) { return S32( in.slot ); } );
   } );
   status = client.call( Request(), answer, 2000ms );
   agent.join();
   ASSERT_TRUE( status.ok() ) << status.text();
   EXPECT_EQ( 1, answer.result );  // served in the reclaimed slot
}

// The agent dies while a client waits: the client says so at once instead
// of waiting for its whole timeout.
TEST( VaultMailbox, AgentDeathEndsTheWait ) {
   TestPrefix prefix;
   Signal ready;
   Child agent( [ & ] {
      Store store( prefix );
      MailboxServer mailbox( store, 2 );
      ready.send();
      mailbox.wait( 5000 );
      kill( getpid(), SIGKILL );  // dies with the request in hand
      return 0;
   } );
   ASSERT_TRUE( ready.wait() );
   MailboxClient client( prefix );
   Answer answer;
   auto start = std::chrono::steady_clock::now();
   Status status = client.call( Request(), answer, 10000ms );
   EXPECT_LT( std::chrono::steady_clock::now() - start, 2000ms );
   EXPECT_EQ( Errc::agentNotRunning, status.code() );
   EXPECT_EQ( "agent not running: prefix '" + prefix.str() + "' was held by pid " +
                 std::to_string( agent.pid() ) + ", which has exited",
              status.text() );
   EXPECT_EQ( 128 + SIGKILL, agent.wait() );
}

TEST( VaultMailbox, ClientFailuresWithoutAnAgent ) {
   TestPrefix prefix;
   MailboxClient client( prefix );
   Answer answer;
   Status status = client.call( Request(), answer );
   EXPECT_EQ( Errc::agentNotRunning, status.code() );
   EXPECT_EQ( "agent not running: no agent holds prefix '" + prefix.str() + "'", status.text() );

   Store store( prefix );
   status = client.call( Request(), answer );
   EXPECT_EQ( Errc::notFound, status.code() );
   EXPECT_EQ( "the agent of prefix '" + prefix.str() + "' has no mailbox", status.text() );

   MailboxServer server( store, 1 );
   status = client.call( Request{ 0, 0, 0, 0, std::string( maxParameterLength + 1, 'p' ) },
                         answer );
   EXPECT_EQ( Errc::invalidArgument, status.code() );
   EXPECT_EQ( "request parameters of 257 bytes exceed 256", status.text() );
   EXPECT_EQ( 0u, controlOf( server, 0 ) );
}

// The doorbell is what the agent's event loop polls: it rings once a
// request is waiting and is quiet again once served. Watching the slots
// sees the same request without the doorbell, and gives up after its period.
TEST( VaultMailbox, DoorbellAndWatchFollowRequests ) {
   TestPrefix prefix;
   Store store( prefix );
   MailboxServer server( store, 2 );
   EXPECT_FALSE( server.wait( 0 ) );
   auto watchStart = std::chrono::steady_clock::now();
   EXPECT_FALSE( server.requestWithin( 2ms ) );
   EXPECT_GE( std::chrono::steady_clock::now() - watchStart, 2ms );
   std::thread client( [ & ] {
      MailboxClient mailbox( prefix );
      Answer answer;
      mailbox.call( Request{ 0, 0, 0, 0, "max" }, answer, 2000ms );
   } );
   EXPECT_TRUE( server.requestWithin( 2s ) );
   ASSERT_TRUE( server.wait( 2000 ) );
   std::string parameters;
   U32 served = server.serve( [ & ]( const IncomingRequest & in ) {
      parameters = in.request.parameters;
      return 0;
   } );
   client.join();
   EXPECT_EQ( 1u, served );
   EXPECT_EQ( "max", parameters );
   EXPECT_FALSE( server.wait( 0 ) );
   EXPECT_EQ( 0600u, VaultTest::modeOf( server.doorbellPath() ) );
}

TEST( VaultMailbox, HandlerExceptionStillAnswersTheClient ) {
   TestPrefix prefix;
   Store store( prefix );
   MailboxServer server( store, 1 );
   Answer answer;
   Status status;
   std::thread client( [ & ] {
      MailboxClient mailbox( prefix );
      status = mailbox.call( Request(), answer, 2000ms );
   } );
   ASSERT_TRUE( server.wait( 2000 ) );
   EXPECT_THROW( server.serve( []( const IncomingRequest & ) -> S32 {
                    throw std::runtime_error( "dump failed" );
                 } ),
                 std::runtime_error );
   client.join();
   EXPECT_TRUE( status.ok() );
   EXPECT_EQ( answerHandlerFailed, answer.result );
}
