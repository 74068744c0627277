// Modules arriving and leaving: units are set up when their chip
// information is stored and leave nothing behind when it goes; start-up in
// the agent's order.
#include "tests/manager/ManagerFixture.h"

#include "manager/QsetModIndex.h"

namespace ManagerTest {
namespace {

class ModuleWatcher : public TesselTcamGroupManager::NotifieeConst {
 public:
   void onModChipInfo( U16 module ) override { modules.push_back( module ); }
   std::vector< U16 > modules;
};

TEST( ModulesTest, AnEqualRecordStoredTwiceNotifiesOnce ) {
   ManagerBox m{ { "thx" }, false };
   ModuleWatcher watcher;
   watcher.notifierIs( m.manager );
   Agent::ChipInfo info = chipInfoFromShim( 3, { 0 } );
   m.manager->modChipInfoIs( 3, info );
   m.manager->modChipInfoIs( 3, info );
   EXPECT_EQ( std::vector< U16 >{ 3 }, watcher.modules );
   info.maxUdfLengthIs( 12 );
   m.manager->modChipInfoIs( 3, info );
   EXPECT_EQ( ( std::vector< U16 >{ 3, 3 } ), watcher.modules );
   EXPECT_EQ( std::vector< U32 >{ 0 }, m.manager->units() );
   EXPECT_TRUE( m.manager->stageIngress( 0 ) );
   EXPECT_EQ( 4u, m.manager->numPipe() );
}

TEST( ModulesTest, RemovingAModuleDestroysItsUnitsGroups ) {
   ManagerBox m{ { "thx", "th3" }, false };
   ChipModel::ObjectCounts empty = m.box.counts();
   m.manager->modChipInfoIs( 1, chipInfoFromShim( 1, { 0 } ) );
   m.manager->modChipInfoIs( 2, chipInfoFromShim( 2, { 1 } ) );
   ChipModel::ObjectCounts unit1 = m.box.counts( 1 );
   ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_IPV6_STD_PACL_RACL_ ) );
   ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_IPV6_STD_PACL_RACL_ ) );
   ASSERT_TRUE( m.manager->initializeGroup( 1, IFP_GROUP_IP_ACL_ ) );
   Kiln::Ptr< TesselTcamEntryManager > ipAcl =
      m.manager->unboundedEntryManager( ipAclTcamGroup_ );

   m.manager->modChipInfoDel( 1 );
   EXPECT_EQ( empty, m.box.counts( 0 ) );
   EXPECT_TRUE( m.manager->pipeGroupsOf( 0, IFP_GROUP_IPV6_STD_PACL_RACL_ ).empty() );
   EXPECT_FALSE( m.manager->stageIngressHas( 0 ) );
   EXPECT_FALSE( ipAcl->internalUnitEntry( 0 ) );
   EXPECT_TRUE( ipAcl->internalUnitEntry( 1 ) );
   // The other module's unit is untouched.
   EXPECT_TRUE( m.manager->groupExists( 1, IFP_GROUP_IP_ACL_ ) );
   m.manager->uninitializeGroup( 1, IFP_GROUP_IP_ACL_ );
   EXPECT_EQ( unit1, m.box.counts( 1 ) );
}

// The compression groups the manager asked the unit for, and those it
// recorded; every one asked for and made is recorded, nothing else.
void
expectCompressionGroups( ChipModel::Box & box, TesselTcamGroupManager & manager,
                         bool expected ) {
   U32 asked = 0;
   for ( const ChipModel::CallRecord & r : box.callLog() ) {
      if ( r.function == "bcm_field_group_config_create" && r.args.at( 1 ) >= 87 &&
           r.args.at( 1 ) <= 92 ) {
         EXPECT_EQ( r.args.at( 1 ), 87 + asked );
         EXPECT_EQ( BCM_FIELD_GROUP_CREATE_WITH_ID, r.args.at( 0 ) );
         ++asked;
      }
   }
   EXPECT_EQ( expected ? 6u : 0u, asked );
   for ( U32 group = COMPRESS_GROUP_L4_SRC_PORT_; group <= COMPRESS_GROUP_ETHER_TYPE_; ++group ) {
      const ChipModel::Group * g = box.unit( 0 ).state().field.group( int( group ) );
      EXPECT_EQ( bool( g ), manager.groupExists( 0, group ) ) << group;
      if ( g ) {
         EXPECT_EQ( bcmFieldStageClass, g->stage );
      }
   }
   // All six fit the class stage on every chip that has it, the address
   // groups (both address families) included.
   for ( U32 group = COMPRESS_GROUP_L4_SRC_PORT_; group <= COMPRESS_GROUP_ETHER_TYPE_; ++group ) {
      EXPECT_EQ( expected, manager.groupExists( 0, group ) ) << group;
   }
}

TEST( ModulesTest, ChipInformationBeforeStartUpWaitsForIt ) {
   ChipModel::Box box( { "th3" }, checkedOptions() );
   Kiln::ActivityLockGuard activity;
   Kiln::Ptr< TesselTcamGroupManager > manager = new TesselTcamGroupManager( "tcam" );
   manager->modChipInfoIs( 1, chipInfoFromShim( 1, { 0 } ) );
   EXPECT_EQ( 0u, box.counts( 0 ).groups );
   EXPECT_FALSE( manager->stageIngressHas( 0 ) );
   manager->handleInitialized();
   EXPECT_TRUE( manager->stageIngress( 0 ) );
   EXPECT_EQ( 8u, manager->getNumPipe( 0 ) );
   EXPECT_TRUE( manager->entryManagerHas( vfpTH3SystemAclGroup_ ) );
   // The compression groups exist from the start on the chip that has them.
   expectCompressionGroups( box, *manager, true );
   manager = nullptr;
}

TEST( ModulesTest, CompressionGroupsOnlyWhereTheChipHasThem ) {
   for ( const ProfileFacts & facts : allProfiles() ) {
      SCOPED_TRACE( facts.name );
      ManagerBox m{ { facts.name } };
      expectCompressionGroups( m.box, *m.manager, facts.compressionGroups );
      ChipModel::ObjectCounts before = m.box.counts( 0 );
      m.manager->initializeCompressionGroups( 0, IFP_GROUP_IP_ACL_ );
      m.manager->initializeCompressionGroups( 0, COMPRESS_GROUP_L4_SRC_PORT_ );
      EXPECT_EQ( before, m.box.counts( 0 ) );
   }
}

TEST( ModulesTest, StartUpBuildsTheQualifierIndexesAndTheRequestChannel ) {
   ManagerBox m{ { "single" } };
   EXPECT_EQ( numGroupExcludes, m.manager->groupIdToExcludeIndexCollection().size() );
   EXPECT_EQ( numGroupIncludes, m.manager->groupIdToIncludeIndexCollection().size() );
   const TcamQsetModDef * row = getGroupIncludes( 191 );
   GroupQsetModKey key{ U32( row->groupId ), U32( row->chipType ) };
   EXPECT_EQ( 191u, m.manager->groupIdToIncludeIndex( key ) );
   EXPECT_TRUE( m.manager->groupOpenFlowVxlanAclUdfValidHas( 85 ) );
   EXPECT_FALSE( m.manager->groupOpenFlowVxlanAclUdfValidHas( 86 ) );
   ASSERT_TRUE( m.manager->groupManagerVaultSm() );
   EXPECT_EQ( m.manager->groupManagerVaultRequest(), m.manager->groupManagerVaultSm()->message() );
}

const TcamQsetModDef twiceDefined[] = {
   { IFP_GROUP_IP_ACL_, 3, { -1 }, 0 },
   { IFP_GROUP_MAC_ACL_, 3, { -1 }, 0 },
   { IFP_GROUP_IP_ACL_, 3, { -1 }, 1 },
};

const TcamQsetModDef *
twiceDefinedRow( U32 index ) {
   return index < 3 ? &twiceDefined[ index ] : nullptr;
}

TEST( QsetModIndexTest, AKeyDefinedTwiceAborts ) {
   EXPECT_DEATH( indexQsetModRows( twiceDefinedRow, "Include" ),
                 "Value\\('Tessel::GroupQsetModKey', \\*\\* \\{'groupId': 7, 'chipType': 3\\}\\) "
                 "Include double definition" );
}

} // namespace
} // namespace ManagerTest
