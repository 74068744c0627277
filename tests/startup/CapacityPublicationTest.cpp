// The capacity rows from the agent's chip model to another process: an
// agent (a child process) publishes its units' TCAM into shared memory, the
// command line (the test) reads and renders them, before and after the
// hardware changes, and after the agent has gone.
#include "startup/TesselTcamCapacity.h"
#include "startup/TesselTcamCapacityView.h"

#include <gmock/gmock.h>

#include "platform/agent/CapacityVault.h"
#include "tests/platform/vault/VaultTestSupport.h"
#include "tests/startup/StartupTestSupport.h"

using namespace StartupTest;
using namespace Hardware::Capacity;
using namespace Hardware::Capacity::Tessel;
using VaultTest::Child;
using VaultTest::Signal;
using VaultTest::TestPrefix;

namespace {

struct Signals {
   Signal published;
   Signal change;
   Signal republished;
   Signal stop;
};

// The agent: a THx-like unit 0 and a single-pipe unit 1. Exit codes above 0
// say where it went wrong.
int
agent( const std::string & prefix, Signals & signals ) {
   ChipModel::Box box( std::vector< std::string >{ "thx", "single" }, checkedOptions( false ) );
   Kiln::ActivityLockGuard activity;
   Kiln::Ptr< CapacityHelperSm > capacity = new CapacityHelperSm( "capacity" );
   Kiln::Ptr< TesselTcamCapacitySm > sm = new TesselTcamCapacitySm( "tcamCapacitySm" );
   sm->scsdIs( startupState( 2 ) );
   sm->capacityHelperSmIs( capacity );
   Vault::Store store( prefix );
   CapacityVaultWriter writer( store, tesselTcamCapacityVaultPath, capacity,
                               tesselTcamCapacityFeatureGroup );
   sm->initCapacityTableFeatureMaps();
   sm->updateCapacityTable();
   signals.published.send();
   if ( !signals.change.wait() ) {
      return 2;
   }
   installIfpEntry( box, 0, 7 );
   if ( box.counts( 0 ).entries != 1 ) {
      return 3;
   }
   sm->updateCapacityTable();
   signals.republished.send();
   return signals.stop.wait() && writer.rowsNotPublished() == 0 ? 0 : 4;
}

CapacityFigures
figures( const std::vector< CapacityRow > & rows, U32 unit, const char * stage,
         const char * slice ) {
   for ( const CapacityRow & row : rows ) {
      if ( row.key == CapacityKey( tesselTcamCapacityFeatureGroup, stage, unit, slice ) ) {
         return row.figures;
      }
   }
   ADD_FAILURE() << "no row for unit " << unit << " " << stage << " '" << slice << "'";
   return CapacityFigures();
}

} // namespace

TEST( CapacityPublication, TheCommandLineReadsWhatTheAgentPublishes ) {
   TestPrefix prefix;
   Signals signals;
   Child child( [ & ] { return agent( prefix, signals ); } );
   ASSERT_TRUE( signals.published.wait() );

   std::vector< CapacityRow > rows;
   Vault::Status status = readTesselTcamCapacity( prefix, rows );
   ASSERT_TRUE( status.ok() ) << status.text();
   // thx: 96 IFP slices (4 pipes), 4 VFP, 4 EFP; single: 12, 4, 4; a stage row each.
   EXPECT_EQ( 107u + 23u, rows.size() );
   EXPECT_TRUE( std::is_sorted( rows.begin(), rows.end(), []( const auto & a, const auto & b ) {
      return a.key < b.key;
   } ) );
   EXPECT_EQ( CapacityFigures( 96 * 768, 96 * 768, 0, 96 * 1536 ),
              figures( rows, 0, "IFP", "" ) );
   EXPECT_EQ( CapacityFigures( 0, 12 * 256, 0, 12 * 256 ), figures( rows, 1, "IFP", "" ) );
   // The half-row count shows as half used; it warns below that.
   std::string view = renderTesselTcamCapacity( rows );
   EXPECT_THAT( view, ::testing::Not( ::testing::HasSubstr( "WARNING" ) ) );
   EXPECT_THAT( view,
                ::testing::ContainsRegex( "\n +0  IFP +all +73728 +73728 +147456 +50\\.0%\n" ) );
   EXPECT_THAT( renderTesselTcamCapacity( rows, 40 ),
                ::testing::EndsWith(
                   "\nWARNING: unit 0 stage IFP is 50.0% used (threshold 40%)\n" ) );

   signals.change.send();
   ASSERT_TRUE( signals.republished.wait() );
   std::vector< CapacityRow > after;
   ASSERT_TRUE( readTesselTcamCapacity( prefix, after ).ok() );
   EXPECT_EQ( rows.size(), after.size() );
   EXPECT_EQ( CapacityFigures( 96 * 768 + 1, 96 * 768 - 1, 0, 96 * 1536 ),
              figures( after, 0, "IFP", "" ) );
   EXPECT_EQ( CapacityFigures( 769, 767, 0, 1536 ), figures( after, 0, "IFP", "Slice-0" ) );
   EXPECT_EQ( figures( rows, 1, "IFP", "" ), figures( after, 1, "IFP", "" ) );

   signals.stop.send();
   EXPECT_EQ( 0, child.wait() );
   status = readTesselTcamCapacity( prefix, rows );
   EXPECT_EQ( Vault::Errc::agentNotRunning, status.code() ) << status.text();
   EXPECT_TRUE( rows.empty() );
   EXPECT_TRUE( Vault::listSegments( prefix ).empty() );
}
