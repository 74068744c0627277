// CliVaultHelper: mounters made, found and cleaned up with their tables in
// shared memory; mount types; writes refused without a table; the request
// a mounter sets; the published units.
#include "export/GroupManagerVaultSm.h"
#include "tests/export/ExportFixture.h"

namespace {

using namespace ExportTest;

struct HelperTest : testing::Test {
   VaultTest::TestPrefix prefix;
   Vault::Store store{ prefix };
   Kiln::Ptr< TesselTcam::CliVaultHelper > helper = TesselTcam::cliVaultHelperFactory( store );

   Kiln::Ptr< TesselTcam::CliVaultMounter >
   groups( U16 unit, const char * name = "group-list-1-0" ) {
      return helper->cliVaultMounterFactory( name, unit, "cliVault/groups/1/0",
                                             "Tessel::VaultGroupsMount", 20,
                                             "Tessel::GroupManagerVaultMounter" );
   }
};

TEST_F( HelperTest, AMounterIsMadeOnceWithItsTableAtPathAndUnit ) {
   Kiln::Ptr< TesselTcam::CliVaultMounter > first = groups( 3 );
   ASSERT_TRUE( Kiln::ptr_cast< VaultGroupsMount >( first ) );
   EXPECT_EQ( 3u, first->unit() );
   EXPECT_EQ( "group-list-1-0", first->mountName().str() );
   EXPECT_TRUE( tableExists( prefix, "cliVault/groups/1/0/3" ) );
   EXPECT_EQ( first, groups( 3 ) );
   EXPECT_EQ( first, helper->getCliVaultMounter( "group-list-1-0", 3 ) );
   EXPECT_FALSE( helper->getCliVaultMounter( "group-list-1-0", 4 ) );
   EXPECT_FALSE( helper->getCliVaultMounter( "feature-list-1-0", 3 ) );
   EXPECT_EQ( 2u, tableCount( prefix ) ); // and the units table
}

TEST_F( HelperTest, UnknownTypesWrongParentsAndTakenPathsGiveNoMounter ) {
   EXPECT_FALSE( helper->cliVaultMounterFactory( "x", 0, "cliVault/x", "Tessel::NoSuchMount", 4,
                                                 "Tessel::GroupManagerVaultMounter" ) );
   EXPECT_FALSE( helper->cliVaultMounterFactory( "x", 0, "cliVault/x", "Tessel::VaultGroupsMount",
                                                 4, "Tessel::GroupManagerStaticVaultMounter" ) );
   ASSERT_TRUE( groups( 0 ) );
   EXPECT_FALSE( groups( 0, "another-name" ) ); // its table exists already
   EXPECT_FALSE( helper->cliVaultNamedCollectionHas( "another-name" ) );
   EXPECT_FALSE( helper->cliVaultNamedCollectionHas( "x" ) );
}

TEST_F( HelperTest, CleanupRemovesTheTableAndTheLastUnitTheNamedCollection ) {
   auto unit0 = Kiln::ptr_cast< VaultGroupsMount >( groups( 0 ) );
   ASSERT_TRUE( groups( 1 ) );
   helper->doCleanup( "group-list-1-0", 0, "cliVault/groups/1/0" );
   EXPECT_FALSE( tableExists( prefix, "cliVault/groups/1/0/0" ) );
   EXPECT_TRUE( tableExists( prefix, "cliVault/groups/1/0/1" ) );
   EXPECT_TRUE( helper->cliVaultNamedCollectionHas( "group-list-1-0" ) );
   // A mount held elsewhere has lost its table: writes are refused.
   EXPECT_FALSE( unit0->vaultGroupInfoIs( VaultGroupInfo( 7, 0, 0, 1, 7 ) ) );
   EXPECT_FALSE( unit0->vaultGroupInfoCommit( nullptr ) );
   helper->doCleanup( "group-list-1-0", 1, "cliVault/groups/1/0" );
   EXPECT_FALSE( helper->cliVaultNamedCollectionHas( "group-list-1-0" ) );
   EXPECT_EQ( 1u, tableCount( prefix ) );
   helper->doCleanup( "group-list-1-0", 1, "cliVault/groups/1/0" ); // nothing left: no-op
}

// A reader in another process sees every write, key by key.
TEST_F( HelperTest, MountWritesAreWhatReadersSee ) {
   auto mount = Kiln::ptr_cast< VaultGroupsMount >( groups( 0 ) );
   EXPECT_TRUE( mount->vaultGroupInfoIs( VaultGroupInfo( 8, 1, 10, 1, 8 ) ) );
   EXPECT_TRUE( mount->vaultGroupInfoIs( VaultGroupInfo( 7, 2, 20, 2, 7 ) ) );
   EXPECT_TRUE( mount->vaultGroupInfoIs( VaultGroupInfo( 7, 3, 30, 2, 7 ) ) ); // overwrites
   EXPECT_EQ( ( std::vector< VaultGroupInfo >{ VaultGroupInfo( 7, 3, 30, 2, 7 ),
                                              VaultGroupInfo( 8, 1, 10, 1, 8 ) } ),
              tableRows< VaultGroupInfo >( prefix, "cliVault/groups/1/0/0" ) );
   EXPECT_EQ( VaultGroupInfo( 8, 1, 10, 1, 8 ), mount->vaultGroupInfo( 8 ) );
   EXPECT_TRUE( mount->vaultGroupInfoDel( 8 ) );
   EXPECT_FALSE( mount->vaultGroupInfoDel( 8 ) );
   mount->vaultGroupInfoDelAll();
   EXPECT_TRUE( tableRows< VaultGroupInfo >( prefix, "cliVault/groups/1/0/0" ).empty() );
}

// More rows than the starting capacity: the table grows, nothing is dropped.
TEST_F( HelperTest, ATableGrowsPastItsStartingCapacity ) {
   auto mount = Kiln::ptr_cast< VaultGroupsMount >( groups( 0 ) );
   for ( U32 key = 0; key < 100; ++key ) {
      ASSERT_TRUE( mount->vaultGroupInfoIs( VaultGroupInfo( key, key, 0, 1, key ) ) );
   }
   EXPECT_EQ( 100u, tableRows< VaultGroupInfo >( prefix, "cliVault/groups/1/0/0" ).size() );
}

TEST_F( HelperTest, PublishedUnitsAreMirroredIntoTheirTable ) {
   helper->cliVaultUnits()->unitsIs( 2, 7 );
   helper->cliVaultUnits()->unitsIs( 0, 1 );
   helper->cliVaultUnits()->unitsIs( 2, 8 );
   auto rows = tableRows< TesselTcam::VaultUnitInfo >( prefix, unitTablePath );
   ASSERT_EQ( 2u, rows.size() );
   EXPECT_EQ( 0u, rows[ 0 ].key.value );
   EXPECT_EQ( 8u, rows[ 1 ].moduleId );
   helper->cliVaultUnits()->unitsDelAll();
   EXPECT_TRUE( tableRows< TesselTcam::VaultUnitInfo >( prefix, unitTablePath ).empty() );
}

TEST_F( HelperTest, DestroyingTheHelperRemovesEveryTable ) {
   ASSERT_TRUE( groups( 0 ) );
   ASSERT_TRUE( groups( 1 ) );
   helper = nullptr;
   EXPECT_EQ( 0u, tableCount( prefix ) );
}

// populateVault fills the request and sets `request` last, to the mounter's
// identity sign-extended to 64 bits.
TEST( MounterTest, ARequestNamesItsTableAndSetsTheTokenLast ) {
   Kiln::Ptr< GroupManagerVaultRequest > request = new GroupManagerVaultRequest( "request" );
   Kiln::Ptr< GroupManagerVaultMounter > mounter = new VaultFeaturesMount( "features" );
   mounter->unitIs( 2 );
   mounter->stageIdIs( 1 );
   mounter->pipeIdIs( 3 );
   mounter->callerTypeIs( vaultTypeFeatures );
   mounter->cliVaultMessageIs( request );
   struct Watch : GroupManagerVaultRequest::NotifieeConst {
      std::vector< std::string > seen;
      void onRequest() override {
         const auto & r = *notifier();
         auto * req = static_cast< const GroupManagerVaultRequest * >( &r );
         seen.push_back( std::to_string( req->unit() ) + "/" + std::to_string( req->type() ) +
                         "/" + std::to_string( req->stageId() ) + "/" +
                         std::to_string( req->pipeId() ) );
      }
   } watch;
   watch.notifierIs( request.get() );
   mounter->populateVault();
   EXPECT_EQ( ( std::vector< std::string >{ "2/4/1/3" } ), watch.seen );
   S64 identity = reinterpret_cast< intptr_t >( mounter.get() );
   EXPECT_EQ( U64( identity ), request->request() );
   EXPECT_EQ( mounter, request->mounter() );
   request->mounterIs( nullptr );
}

TEST( MounterDeathTest, TheBaseHasNoPopulateVault ) {
   Kiln::Ptr< TesselTcam::CliVaultMounter > base = new TesselTcam::CliVaultMounter( "base" );
   EXPECT_DEATH( base->populateVault(),
                 "Assertion 'false && \"Call to abstract interface populateVault\"' failed" );
}

} // namespace
