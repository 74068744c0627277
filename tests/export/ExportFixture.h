// The channel's tests: a box with a group manager that knows its units
// (tests/manager's ManagerBox), a Vault store under a prefix of the test's
// own, and readers of the tables as the command line reads them.
#pragma once

#include <string>
#include <vector>

#include "export/TesselTcamCliVault.h"
#include "export/TesselTcamVaultMounts.h"
#include "platform/vault/VaultTable.h"
#include "tests/manager/ManagerFixture.h"
#include "tests/platform/vault/VaultTestSupport.h"

namespace ExportTest {

using namespace Tessel;
using ManagerTest::ManagerBox;
using ManagerTest::Reservations;
using TesselTcam::VaultName;

// The records of a table as a reader in another process would see them,
// by key; fails the test when the table cannot be read.
template< typename Record >
std::vector< Record >
tableRows( const std::string & prefix, const std::string & path ) {
   Vault::TableReader reader( prefix, path );
   Vault::Snapshot snapshot;
   Vault::Status status = reader.snapshot( snapshot );
   EXPECT_TRUE( status.ok() ) << path << ": " << status.text();
   snapshot.sortByKey();
   std::vector< Record > rows;
   for ( U32 i = 0; i < snapshot.size(); ++i ) {
      Record record;
      EXPECT_TRUE( Record::deserialize( snapshot.at( i ).data, snapshot.at( i ).length, record ) )
         << path << " key " << snapshot.at( i ).key;
      rows.push_back( record );
   }
   return rows;
}

// The table's segment exists.
inline bool
tableExists( const std::string & prefix, const std::string & path ) {
   Vault::TableReader reader( prefix, path );
   Vault::Snapshot snapshot;
   return reader.snapshot( snapshot ).ok();
}

// Table segments of the prefix (the owner segment and the mailbox left out).
inline size_t
tableCount( const std::string & prefix ) {
   size_t count = 0;
   for ( const std::string & name : Vault::listSegments( prefix ) ) {
      count += name.find( "-t." ) != std::string::npos ? 1 : 0;
   }
   return count;
}

// A group manager whose units have their command-line tables in `store`.
struct ChannelBox {
   explicit ChannelBox( const std::vector< std::string > & profiles,
                        Reservations reservations = Reservations::keep )
         : m( profiles, true, reservations ), store( prefix ),
           helper( TesselTcam::cliVaultHelperFactory( store ) ) {
      m.manager->cliVaultHelperIs( helper );
   }
   ~ChannelBox() { m.manager->cliVaultHelperIs( nullptr ); }

   // Sets a request the way the server does and returns the entity to idle.
   void
   request( TcamGroupManagerVaultTypes type, U32 stage, U32 pipe, U16 unit = 0 ) {
      const VaultTableDesc * desc = perStageTable( type );
      auto mounter = Kiln::ptr_cast< GroupManagerVaultMounter >( helper->getCliVaultMounter(
         perStageText( desc->mounterName, stage, pipe ), unit ) );
      ASSERT_TRUE( mounter );
      mounter->populateVault();
      auto message = m.manager->groupManagerVaultRequest();
      EXPECT_EQ( message->request(), message->response() );
      message->requestIs( 0 );
      message->responseIs( 0 );
      message->mounterIs( nullptr );
   }
   std::string
   path( TcamGroupManagerVaultTypes type, U32 stage, U32 pipe, U32 unit = 0 ) const {
      return unitTablePathOf( perStageText( perStageTable( type )->path, stage, pipe ), unit );
   }

   ManagerBox m;
   VaultTest::TestPrefix prefix;
   Vault::Store store;
   Kiln::Ptr< TesselTcam::CliVaultHelper > helper;
};

} // namespace ExportTest
