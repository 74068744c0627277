// The agent's prefix: names, permissions, cleanup, and prefixes side by side.
#include <sys/stat.h>

#include "platform/vault/VaultMailbox.h"
#include "platform/vault/VaultNames.h"
#include "platform/vault/VaultStore.h"
#include "platform/vault/VaultTable.h"
#include "tests/platform/vault/VaultTestSupport.h"
#include "tests/common/Thrown.h"

using namespace Vault;
using VaultTest::TestPrefix;

TEST( VaultNames, TablePathsMapToDistinctSegmentNames ) {
   EXPECT_EQ( "/tessel-p-t.cliVault.groups.1.0.3",
              tableSegmentName( "p", "cliVault/groups/1/0/3" ) );
   EXPECT_EQ( "/tessel-p-t.cliVault.entries-nsme.2.1.0",
              tableSegmentName( "p", "cliVault/entries-nsme/2/1/0" ) );
   // Without the escapes these would all be "a.b".
   EXPECT_EQ( "/tessel-p-t.a.b", tableSegmentName( "p", "a/b" ) );
   EXPECT_EQ( "/tessel-p-t.a%2Eb", tableSegmentName( "p", "a.b" ) );
   EXPECT_EQ( "/tessel-p-t.a%252Eb", tableSegmentName( "p", "a%2Eb" ) );
   EXPECT_EQ( "/tessel-p-t.%20%FF", tableSegmentName( "p", " \xff" ) );
   EXPECT_EQ( "/tessel-p-owner", ownerSegmentName( "p" ) );
   EXPECT_EQ( "/tessel-p-mailbox", mailboxSegmentName( "p" ) );
}

TEST( VaultNames, BadPrefixesAndPaths ) {
   EXPECT_TRUE( checkPrefix( "agent_7" ).ok() );
   EXPECT_EQ( "invalid prefix '': needs 1 to 32 characters", checkPrefix( "" ).text() );
   EXPECT_EQ( Errc::invalidArgument, checkPrefix( std::string( 33, 'a' ) ).code() );
   // '-' would let one prefix's names start another's.
   EXPECT_EQ( "invalid prefix 'a-b': only letters, digits and '_' allowed",
              checkPrefix( "a-b" ).text() );
   EXPECT_EQ( Errc::invalidArgument, checkPrefix( "a/b" ).code() );
   EXPECT_TRUE( checkTablePath( "p", std::string( 199, 'x' ) ).ok() );
   EXPECT_EQ( "invalid table path '': needs 1 to 199 characters",
              checkTablePath( "p", "" ).text() );
   EXPECT_EQ( "invalid table path '" + std::string( 100, '.' ) +
                 "': its segment name is longer than 255 characters",
              checkTablePath( "p", std::string( 100, '.' ) ).text() );
   std::optional< Error > error = TestText::thrown< Error >( [] { Store store( "bad prefix" ); } );
   ASSERT_TRUE( error );
   EXPECT_EQ( Errc::invalidArgument, error->code() );
}

TEST( VaultNames, RuntimeDirectoryFollowsTheEnvironment ) {
   const char * saved = getenv( "XDG_RUNTIME_DIR" );
   std::string keep = saved ? saved : "";
   VaultTest::TempDir dir;
   setenv( "XDG_RUNTIME_DIR", dir.path().c_str(), 1 );
   EXPECT_EQ( dir.path() + "/tessel-p.sock", defaultReportSocketPath( "p" ) );
   setenv( "XDG_RUNTIME_DIR", "/nonexistent/run", 1 );
   EXPECT_EQ( "/tmp/tessel-p.bell", runtimePath( "p", "bell" ) );
   if ( saved ) {
      setenv( "XDG_RUNTIME_DIR", keep.c_str(), 1 );
   } else {
      unsetenv( "XDG_RUNTIME_DIR" );
   }
}

// Owner-only, whatever umask the agent was started with.
TEST( VaultStore, EverySegmentAndSocketIsOwnerOnly ) {
   for ( mode_t mask : { 0u, 077u, 0277u } ) {
      TestPrefix prefix;
      mode_t previous = umask( mask );
      {
         Store store( prefix );
         TableWriter table = store.createTable( "cliVault/stages", 16, 6 );
         MailboxServer mailbox( store, 2 );
         umask( previous );
         std::vector< std::string > names = listSegments( prefix );
         ASSERT_EQ( 3u, names.size() );
         for ( const std::string & name : names ) {
            EXPECT_EQ( 0600u, VaultTest::modeOf( "/dev/shm" + name ) ) << name << " umask " << mask;
         }
         EXPECT_EQ( 0600u, VaultTest::modeOf( mailbox.doorbellPath() ) ) << "umask " << mask;
      }
      umask( previous );
   }
}

// Destroyed in either order, agent objects leave nothing of the prefix.
TEST( VaultStore, CleanExitLeavesNothingBehind ) {
   TestPrefix prefix;
   std::string doorbell;
   {
      auto table = std::make_unique< TableWriter >(
         TableWriter( Store( prefix ).createTable( "left/over", 4, 2 ) ) );
      // The Store is gone already; the table outlives it.
      EXPECT_TRUE( listSegments( prefix ).empty() );
      table->put( 1, "ab", 2 );  // still writable memory, just nameless
   }
   {
      Store store( prefix );
      TableWriter first = store.createTable( "a", 4, 2 );
      TableWriter second = store.createTable( "b/c", 4, 2 );
      MailboxServer mailbox( store );
      doorbell = mailbox.doorbellPath();
      EXPECT_EQ( 4u, listSegments( prefix ).size() );
   }
   EXPECT_TRUE( listSegments( prefix ).empty() );
   EXPECT_EQ( 0xFFFFu, VaultTest::modeOf( doorbell ) );
}

TEST( VaultStore, RemoveAllKeepsThePrefixHeld ) {
   TestPrefix prefix;
   Store store( prefix );
   TableWriter table = store.createTable( "a", 4, 2 );
   table.put( 1, "x", 1 );
   TableReader reader( prefix, "a" );
   Snapshot snapshot;
   ASSERT_TRUE( reader.snapshot( snapshot ).ok() );
   EXPECT_EQ( 1u, store.removeAll() );
   EXPECT_EQ( std::vector< std::string >{ ownerSegmentName( prefix ) }, listSegments( prefix ) );
   EXPECT_EQ( Errc::notFound, reader.snapshot( snapshot ).code() );
   EXPECT_TRUE( agentStatus( prefix ).ok() );
   // A new table under the old name is not removed by the old writer.
   TableWriter again = store.createTable( "a", 4, 2 );
   table = store.createTable( "other", 4, 2 );
   EXPECT_EQ( 3u, listSegments( prefix ).size() );
   ASSERT_TRUE( reader.snapshot( snapshot ).ok() );
}

// Two agents with prefixes where one starts the other: neither touches the
// other's segments.
TEST( VaultStore, PrefixesCoexist ) {
   TestPrefix base;
   const std::string longer = base.str() + "_2";
   Store first( base );
   TableWriter table = first.createTable( "t", 4, 2 );
   {
      Store second( longer );
      TableWriter other = second.createTable( "t", 4, 2 );
      EXPECT_EQ( 0u, second.staleRemoved() );
      EXPECT_EQ( 2u, listSegments( base ).size() );
      EXPECT_EQ( 2u, listSegments( longer ).size() );
      EXPECT_EQ( 1u, first.removeAll() );
      EXPECT_EQ( 2u, listSegments( longer ).size() );
   }
   EXPECT_TRUE( listSegments( longer ).empty() );
   EXPECT_EQ( 1u, listSegments( base ).size() );
}
