// The tables of a unit: made when its module arrives, filled on request
// from the group manager's and the chip's state, removed when it leaves.
#include "manager/ChipInfoFromShim.h"
#include "platform/vault/VaultLayout.h"
#include "sdk/api/field.h"
#include "tests/export/ExportFixture.h"

namespace {

using namespace ExportTest;

struct ProfileTables {
   std::string profile;
   size_t tables; // every table of one unit, the units table included
};

// A stage's row as the chip's profile has it: one table per pipe of a
// pipe-local stage, and the entries of all its slices.
VaultStageInfo
stageRow( const ChipModel::Profile & profile, U32 stage ) {
   const ChipModel::StageProfile & s = profile.stages.at( stage );
   U32 instances = profile.instances( s );
   return VaultStageInfo( stage, s.pipeLocal ? 1 : 0, instances,
                          s.slicesPerPipe * s.entriesPerSlice * instances );
}

class UnitTablesTest : public testing::TestWithParam< ProfileTables > {};

// Per stage and pipe seven tables; three stage tables; the units table.
TEST_P( UnitTablesTest, TablesFollowTheUnitsModule ) {
   const ProfileTables & facts = GetParam();
   ChannelBox c{ { facts.profile } };
   EXPECT_EQ( facts.tables, tableCount( c.prefix ) );
   const ChipModel::Profile & profile = c.m.box.unit( 0 ).profile();
   EXPECT_EQ( ( std::vector< VaultStageInfo >{ stageRow( profile, 0 ), stageRow( profile, 1 ),
                                               stageRow( profile, 2 ) } ),
              tableRows< VaultStageInfo >( c.prefix, "cliVault/stages/0" ) );
   std::vector< VaultName > names = tableRows< VaultName >( c.prefix, "cliVault/stages-name/0" );
   ASSERT_EQ( 3u, names.size() );
   EXPECT_EQ( "IFP", names[ 0 ].name().str() );
   EXPECT_EQ( "EFP", names[ 2 ].name().str() );
   auto units = tableRows< TesselTcam::VaultUnitInfo >( c.prefix, unitTablePath );
   ASSERT_EQ( 1u, units.size() );
   EXPECT_EQ( 1u, units[ 0 ].moduleId );

   c.m.manager->modChipInfoDel( 1 );
   EXPECT_EQ( 1u, tableCount( c.prefix ) );
   EXPECT_TRUE( tableRows< TesselTcam::VaultUnitInfo >( c.prefix, unitTablePath ).empty() );
   EXPECT_TRUE( c.helper->cliVaultNamedCollectionCollection().empty() );

   c.m.manager->modChipInfoIs( 1, chipInfoFromShim( 1, { 0 } ) );
   EXPECT_EQ( facts.tables, tableCount( c.prefix ) );
}

INSTANTIATE_TEST_SUITE_P(
   Profiles, UnitTablesTest,
   testing::Values( ProfileTables{ "single", 25 }, ProfileTables{ "thx", 46 },
                    ProfileTables{ "th3", 74 } ),
   []( const testing::TestParamInfo< ProfileTables > & info ) { return info.param.profile; } );

// The single-pipe chip's figures as they stand, so that the rule above
// cannot drift together with the code.
TEST( UnitTablesTest, TheSinglePipeChipsStages ) {
   ChannelBox c{ { "single" } };
   EXPECT_EQ( ( std::vector< VaultStageInfo >{ VaultStageInfo( 0, 0, 1, 3072 ),
                                               VaultStageInfo( 1, 0, 1, 1024 ),
                                               VaultStageInfo( 2, 0, 1, 1024 ) } ),
              tableRows< VaultStageInfo >( c.prefix, "cliVault/stages/0" ) );
}

TEST( UnitTablesTest, GroupNamesComeFromTheCatalogue ) {
   ChannelBox c{ { "single" } };
   std::vector< VaultName > names = tableRows< VaultName >( c.prefix, "cliVault/groups-name/0" );
   EXPECT_EQ( 91u, names.size() ); // 85 groups and 6 compression groups
   EXPECT_EQ( 7u, names[ 6 ].key().value );
   EXPECT_EQ( "IFP_GROUP_IP_ACL", names[ 6 ].name().str() );
}

int
chipFree( ManagerBox & m, U32 sdkGroupId ) {
   bcm_field_group_status_t status;
   m.sdk( [ & ] { return bcm_field_group_status_get( 0, int( sdkGroupId ), &status ); } );
   return status.entries_free;
}

// Groups of the stage and pipe asked for, with the chip's free count; the
// copies of a group are never rows of their own.
// The dump tests start from bare units: the groups reserved at start-up
// would be rows of every table.
TEST( DumpDataTest, TheGroupsTableHoldsTheGroupsOfItsStageAndPipe ) {
   ChannelBox c{ { "thx" }, Reservations::release };
   ASSERT_TRUE( c.m.manager->initializeGroup( 0, IFP_GROUP_IP_ACL_ ) );
   ASSERT_TRUE( c.m.manager->initializeGroup( 0, VFP_GROUP_MAC_ACL_ ) );
   U32 pipe2 = 2u << 24 | IFP_GROUP_IP_ACL_;
   c.m.manager->groupCounts( { IFP_GROUP_IP_ACL_, pipe2 } )->unitAllocatedInc( 0, 3 );
   c.request( vaultTypeGroups, 0, 2 );
   EXPECT_EQ( ( std::vector< VaultGroupInfo >{
                 VaultGroupInfo( 7, 6, U32( chipFree( c.m, pipe2 ) ), 2, pipe2 ) } ),
              tableRows< VaultGroupInfo >( c.prefix, c.path( vaultTypeGroups, 0, 2 ) ) );
   c.request( vaultTypeGroups, 1, 0 );
   EXPECT_EQ( ( std::vector< VaultGroupInfo >{ VaultGroupInfo( 74, 0, U32( chipFree( c.m, 74 ) ),
                                                               1, 74 ) } ),
              tableRows< VaultGroupInfo >( c.prefix, c.path( vaultTypeGroups, 1, 0 ) ) );
   EXPECT_EQ( 2u, c.m.manager->groupManagerVaultSm()->served() );
}

// Every request replaces the whole table, so a group that went is gone; an
// identical request is served again.
TEST( DumpDataTest, EachRequestReplacesTheTable ) {
   ChannelBox c{ { "single" }, Reservations::release };
   ASSERT_TRUE( c.m.manager->initializeGroup( 0, IFP_GROUP_IP_ACL_ ) );
   ASSERT_TRUE( c.m.manager->initializeGroup( 0, IFP_GROUP_MAC_ACL_ ) );
   c.request( vaultTypeGroups, 0, 0 );
   EXPECT_EQ( 2u, tableRows< VaultGroupInfo >( c.prefix, c.path( vaultTypeGroups, 0, 0 ) ).size() );
   c.m.manager->uninitializeGroup( 0, IFP_GROUP_IP_ACL_ );
   c.request( vaultTypeGroups, 0, 0 );
   auto rows = tableRows< VaultGroupInfo >( c.prefix, c.path( vaultTypeGroups, 0, 0 ) );
   ASSERT_EQ( 1u, rows.size() );
   EXPECT_EQ( U32( IFP_GROUP_MAC_ACL_ ), rows[ 0 ].key.value );
   EXPECT_EQ( 2u, c.m.manager->groupManagerVaultSm()->served() );
}

// A request for a table that has not changed writes nothing (its sequence
// stays, and no chip status is read for a table without free counts); a
// change in between is seen in full.
TEST( DumpDataTest, OnlyAChangedTableIsWritten ) {
   ChannelBox c{ { "single" }, Reservations::release };
   Kiln::Ptr< TesselUnboundedTcamEntryManager > acl =
      c.m.manager->unboundedEntryManager( ipAclTcamGroup_ );
   U32 first = acl->getEntry( 0, "first" );
   U32 second = acl->getEntry( 0, "second" );
   ASSERT_TRUE( first && second );
   std::string path = c.path( vaultTypeEntryNames, 0, 0 );
   VaultTest::RawSegment raw(
      c.helper->getCliVaultMounter( "entry-name-list-0-0", 0 )->table()->segmentName() );
   auto sequence = [ & ] { return raw.as< Vault::TableHeader >()->sequence; };
   auto names = [ & ] {
      std::vector< std::string > out;
      for ( const VaultName & row : tableRows< VaultName >( c.prefix, path ) ) {
         out.push_back( std::to_string( row.key().value ) + " " + row.name().str() );
      }
      return out;
   };
   c.request( vaultTypeEntryNames, 0, 0 );
   U32 written = sequence();
   c.request( vaultTypeEntryNames, 0, 0 );
   EXPECT_EQ( written, sequence() );
   EXPECT_EQ( ( std::vector< std::string >{ std::to_string( first ) + " first",
                                            std::to_string( second ) + " second" } ),
              names() );

   acl->releaseEntry( 0, first );
   U32 third = acl->getEntry( 0, "third" );
   c.request( vaultTypeEntryNames, 0, 0 );
   EXPECT_NE( written, sequence() );
   EXPECT_EQ( 0u, sequence() % 2 );
   std::vector< std::string > expected = { std::to_string( second ) + " second",
                                           std::to_string( third ) + " third" };
   if ( third < second ) {
      std::swap( expected[ 0 ], expected[ 1 ] );
   }
   EXPECT_EQ( expected, names() );
   EXPECT_EQ( 3u, c.m.manager->groupManagerVaultSm()->served() );
}

// dumpData serves types 3 to 9; the raw entries type (8) and anything else
// leave every table as it was.
TEST( DumpDataTest, OtherTypesChangeNothing ) {
   ChannelBox c{ { "single" }, Reservations::release };
   ASSERT_TRUE( c.m.manager->initializeGroup( 0, IFP_GROUP_IP_ACL_ ) );
   c.request( vaultTypeGroups, 0, 0 );
   ASSERT_TRUE( c.m.manager->initializeGroup( 0, IFP_GROUP_MAC_ACL_ ) );
   auto request = c.m.manager->groupManagerVaultRequest();
   request->mounterIs( c.helper->getCliVaultMounter( "group-list-0-0", 0 ) );
   for ( TcamGroupManagerVaultTypes type : { vaultTypeEntries, vaultTypeStages, vaultTypeNone,
                                             TcamGroupManagerVaultTypes( 42 ) } ) {
      request->typeIs( type );
      c.m.manager->dumpData( request );
      EXPECT_EQ( 1u, tableRows< VaultGroupInfo >( c.prefix, c.path( vaultTypeGroups, 0, 0 ) ).size() );
   }
   // A groups request whose mounter is not the groups table writes nothing.
   request->typeIs( vaultTypeGroups );
   request->mounterIs( c.helper->getCliVaultMounter( "feature-list-0-0", 0 ) );
   c.m.manager->dumpData( request );
   EXPECT_EQ( 1u, tableRows< VaultGroupInfo >( c.prefix, c.path( vaultTypeGroups, 0, 0 ) ).size() );
   EXPECT_TRUE( tableRows< VaultFeatureInfo >( c.prefix, c.path( vaultTypeFeatures, 0, 0 ) ).empty() );
   request->mounterIs( nullptr );
}

// The slice map against the chip: every slice of the pipe, the group that
// holds it and its place in the group's rows.
TEST( DumpDataTest, TheSliceTableShowsWhoHoldsEachSlice ) {
   ChannelBox c{ { "thx" }, Reservations::release };
   ASSERT_TRUE( c.m.manager->initializeGroup( 0, IFP_GROUP_IP_ACL_ ) );
   c.request( vaultTypeSlices, 0, 1 );
   auto rows = tableRows< VaultSliceInfo >( c.prefix, c.path( vaultTypeSlices, 0, 1 ) );
   const ChipModel::StageProfile & ifp = c.m.box.unit( 0 ).profile().stages.at( 0 );
   U32 slices = ifp.slicesPerPipe;
   ASSERT_EQ( slices, rows.size() );
   EXPECT_EQ( slices, rows[ 0 ].key.value ); // slices are numbered across the pipes
   std::map< U32, VaultSliceInfo > bySlice;
   for ( const VaultSliceInfo & row : rows ) {
      EXPECT_EQ( ifp.entriesPerSlice, row.entryCount );
      bySlice[ row.key.value - slices ] = row;
   }
   for ( U32 copy = 0; copy < 2; ++copy ) {
      U32 id = copy << 27 | 1u << 24 | IFP_GROUP_IP_ACL_;
      const ChipModel::Group * group = c.m.group( id );
      ASSERT_TRUE( group );
      for ( U32 first : group->chain ) {
         for ( U32 k = 0; k < group->width; ++k ) {
            EXPECT_EQ( id, bySlice[ first + k ].groupId );
            EXPECT_EQ( group->width, bySlice[ first + k ].width );
            EXPECT_EQ( k, bySlice[ first + k ].member );
         }
      }
   }
   size_t free = std::count_if( rows.begin(), rows.end(),
                                []( const VaultSliceInfo & r ) { return r.groupId == 0; } );
   EXPECT_EQ( slices - 2 * c.m.group( 1u << 24 | 7 )->width, free );
}

} // namespace
