// The agent's server: table requests through the mailbox and text reports
// through the socket, each from a client thread while the test's activity
// loop serves; bad requests answered and the server still serving; and
// nothing left behind.
#include <future>
#include <sys/mman.h>

#include "export/TesselTcamCliServer.h"
#include "export/TesselTcamVaultTables.h"
#include "show/TesselTcamShow.h"
#include "tests/export/ExportFixture.h"

namespace {

using namespace ExportTest;

class CliServerTest : public testing::Test {
 protected:
   // Runs `client` on another thread while the loop serves.
   template< typename Result >
   Result
   served( std::function< Result() > client ) {
      std::future< Result > done = std::async( std::launch::async, client );
      while ( done.wait_for( std::chrono::milliseconds( 0 ) ) != std::future_status::ready ) {
         loop.runOnce( std::chrono::milliseconds( 10 ) );
      }
      return done.get();
   }
   S32
   table( U32 unit, U32 kind, U32 stage, U32 pipe ) {
      return served< S32 >( [ & ] {
         Vault::MailboxClient client( prefix );
         Vault::Answer answer;
         Vault::Status status = client.call( { unit, kind, stage, pipe, "" }, answer );
         EXPECT_TRUE( status.ok() ) << status.text();
         return answer.result;
      } );
   }
   // The report's exit status and text.
   std::pair< S32, std::string >
   report( const std::string & line ) {
      int fd = memfd_create( "report", MFD_CLOEXEC );
      S32 status = served< S32 >( [ & ] {
         S32 exitStatus = -1;
         Vault::Status s = Vault::requestReport( server->reportSocketPath(), line, fd, exitStatus );
         EXPECT_TRUE( s.ok() ) << s.text();
         return exitStatus;
      } );
      std::string text( size_t( lseek( fd, 0, SEEK_END ) ), '\0' );
      EXPECT_EQ( ssize_t( text.size() ), pread( fd, text.data(), text.size(), 0 ) );
      close( fd );
      return { status, text };
   }

   void
   SetUp() override {
      ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_IP_ACL_ ) );
      TesselTcamCliServer::Options options;
      options.prefix = prefix;
      options.reportSocketPath = dir.file( "report.sock" );
      options.switchName = "sw1";
      server = std::make_unique< TesselTcamCliServer >( m.manager, options );
      server->attach( loop );
   }

   // A bare unit: the groups reserved at start-up would be rows of every table.
   ManagerBox m{ { "thx" }, true, Reservations::release };
   VaultTest::TestPrefix prefix;
   VaultTest::TempDir dir;
   Kiln::ActivityLoop loop;
   std::unique_ptr< TesselTcamCliServer > server;
};

TEST_F( CliServerTest, ATableRequestFillsTheTableBeforeTheAnswer ) {
   EXPECT_EQ( 0, table( 0, vaultTypeGroups, 0, 3 ) );
   auto rows = tableRows< VaultGroupInfo >( prefix, "cliVault/groups/0/3/0" );
   ASSERT_EQ( 1u, rows.size() );
   EXPECT_EQ( 3u << 24 | 7, rows[ 0 ].globalGroupId );
   // The same request again is served again, with what holds now.
   m.manager->uninitializeGroup( 0, IFP_GROUP_IP_ACL_ );
   EXPECT_EQ( 0, table( 0, vaultTypeGroups, 0, 3 ) );
   EXPECT_TRUE( tableRows< VaultGroupInfo >( prefix, "cliVault/groups/0/3/0" ).empty() );
   EXPECT_EQ( 0u, m.manager->groupManagerVaultRequest()->request() ); // back to idle
   EXPECT_FALSE( m.manager->groupManagerVaultRequest()->mounter() );
   EXPECT_EQ( 0, table( 0, vaultTypeStages, 0, 0 ) );
}

TEST_F( CliServerTest, RequestsForTablesThatDoNotExistAreAnsweredAsSuch ) {
   EXPECT_EQ( vaultResultUnknownUnit, table( 1, vaultTypeGroups, 0, 0 ) );
   EXPECT_EQ( vaultResultUnknownUnit, table( 0x10000, vaultTypeGroups, 0, 0 ) );
   EXPECT_EQ( vaultResultUnknownStage, table( 0, vaultTypeGroups, 5, 0 ) );
   EXPECT_EQ( vaultResultUnknownPipe, table( 0, vaultTypeGroups, 0, 4 ) );
   EXPECT_EQ( vaultResultUnknownPipe, table( 0, vaultTypeGroups, 1, 1 ) ); // VFP is global
   EXPECT_EQ( vaultResultUnknownKind, table( 0, vaultTypeEntries, 0, 0 ) );
   EXPECT_EQ( vaultResultUnknownKind, table( 0, 42, 0, 0 ) );
   EXPECT_EQ( 0, table( 0, vaultTypeGroups, 0, 0 ) ); // still serving
   EXPECT_EQ( 46u, tableCount( prefix ) );            // and nothing was made on the way
}

TEST_F( CliServerTest, ReportsAreWrittenIntoTheCallersDescriptor ) {
   std::string direct;
   {
      int fd = memfd_create( "direct", MFD_CLOEXEC );
      m.manager->showTcamUsage( "sw1", U32( fd ), true, 0, 1 );
      direct.resize( size_t( lseek( fd, 0, SEEK_END ) ) );
      pread( fd, direct.data(), direct.size(), 0 );
      close( fd );
   }
   EXPECT_EQ( std::make_pair( 0, direct ), report( "tcam usage 0 1 1" ) );
   auto [ status, listing ] = report( "tcam reservations" );
   EXPECT_EQ( 0, status );
   EXPECT_EQ( getTcamReservationData().str() + "\n", listing );
   EXPECT_EQ( 0, report( "tcam raw 0" ).first );
   EXPECT_EQ( 0u, report( "tcam summary 0" ).second.find( "=== TCAM summary for switch sw1 ===" ) );
   EXPECT_NE( std::string::npos, report( "tcam entry 0 5" ).second.find( "not found" ) );
}

TEST_F( CliServerTest, BadReportRequestsGetTheirStatus ) {
   EXPECT_EQ( reportStatusUnknownUnit, report( "tcam usage 3 255 0" ).first );
   EXPECT_EQ( reportStatusUnknownPipe, report( "tcam usage 0 4 0" ).first );
   for ( const char * line : { "tcam bogus 0", "tcam summary", "tcam raw 0 1", "usage 0 255 0",
                               "tcam usage 0 x 0", "tcam entry 0 -1", "" } ) {
      auto [ status, text ] = report( line );
      EXPECT_EQ( reportStatusBadRequest, status ) << line;
      EXPECT_EQ( "", text ) << line;
   }
   EXPECT_EQ( 0, report( "tcam usage 0 255 0" ).first );
}

TEST_F( CliServerTest, ASecondServerForTheSamePrefixIsRefused ) {
   TesselTcamCliServer::Options options;
   options.prefix = prefix;
   options.reportSocketPath = dir.file( "other.sock" );
   EXPECT_THROW( TesselTcamCliServer( m.manager, options ), Vault::Error );
   EXPECT_EQ( 0, table( 0, vaultTypeGroups, 0, 0 ) );
}

TEST_F( CliServerTest, DestructionLeavesNothingBehind ) {
   EXPECT_FALSE( Vault::listSegments( prefix ).empty() );
   server.reset();
   EXPECT_TRUE( Vault::listSegments( prefix ).empty() );
   EXPECT_NE( 0, access( dir.file( "report.sock" ).c_str(), F_OK ) );
   EXPECT_FALSE( m.manager->cliVaultHelper() );
   EXPECT_EQ( Vault::Errc::agentNotRunning, Vault::agentStatus( prefix ).code() );
}

} // namespace
