// Entry managers per reservation: made once, handed out again only to an
// identical request, found by entry, and registered for the reservations a
// unit keeps.
#include "tests/manager/ManagerFixture.h"

#include "manager/ReservationLayout.h"

namespace ManagerTest {
namespace {

class Watcher : public TesselTcamGroupManager::NotifieeConst {
 public:
   void onEntryManager( TcamGroupAssignment a ) override { bounded.push_back( a ); }
   void onUnboundedEntryManager( TcamGroupAssignment a ) override { unbounded.push_back( a ); }
   void onModChipInfo( U16 module ) override { modules.push_back( module ); }
   std::vector< TcamGroupAssignment > bounded;
   std::vector< TcamGroupAssignment > unbounded;
   std::vector< U16 > modules;
};

class RegistryTest : public testing::Test {
 protected:
   Kiln::Ptr< TesselBoundedTcamEntryManager >
   make( U32 baseEntry = 100, U32 endEntry = 110,
         TcamAllocationStrategy strategy = tcamAllocateOnDemand_ ) {
      return m.manager->entryManagerIs( test1TcamGroup_, "test feature", m.manager.get(),
                                        IFP_GROUP_IP_ACL_, baseEntry, endEntry, strategy );
   }

   ManagerBox m{ { "single" } };
};

TEST_F( RegistryTest, AnIdenticalRequestGetsTheSameManager ) {
   Watcher watcher;
   watcher.notifierIs( m.manager );
   Kiln::Ptr< TesselBoundedTcamEntryManager > first = make();
   EXPECT_EQ( first, make() );
   EXPECT_EQ( std::vector< TcamGroupAssignment >{ test1TcamGroup_ }, watcher.bounded );
   EXPECT_EQ( "tcam/entryManager/test1TcamGroup", first->name().str() );
   EXPECT_EQ( m.manager.get(), first->groupManager() );
   // The new manager is set up on the units the group manager knows.
   EXPECT_TRUE( first->internalUnitEntry( 0 ) );
   EXPECT_TRUE( first->exhaustedHas( 0 ) );

   m.manager->entryManagerDel( test1TcamGroup_ );
   EXPECT_FALSE( m.manager->entryManagerHas( test1TcamGroup_ ) );
   EXPECT_EQ( 2u, watcher.bounded.size() );
   EXPECT_NE( first, make() );
}

TEST_F( RegistryTest, ADifferentRequestAborts ) {
   make();
   EXPECT_DEATH( make( 101 ),
                 "Reinstantiating the entity with fullName tcam/entryManager/test1TcamGroup "
                 "where constructor parameter attribute 'baseEntry' has a different value of "
                 "101 than the current value of 100 not allowed" );
   EXPECT_DEATH( make( 100, 110, tcamAllocateAsChunk_ ),
                 "attribute 'strategy' has a different value of tcamAllocateAsChunk than the "
                 "current value of tcamAllocateOnDemand not allowed" );
   EXPECT_DEATH( m.manager->entryManagerIs( test1TcamGroup_, "other", m.manager.get(),
                                            IFP_GROUP_IP_ACL_, 100, 110, tcamAllocateOnDemand_ ),
                 "attribute 'desc' has a different value of other than the current value of "
                 "test feature not allowed" );
   EXPECT_DEATH( m.manager->entryManagerIs( test1TcamGroup_, "test feature", nullptr,
                                            IFP_GROUP_IP_ACL_, 100, 110, tcamAllocateOnDemand_ ),
                 "attribute 'groupManager' has a different value of null than the current "
                 "value of tcam at 0x[0-9a-f]+ not allowed" );
   EXPECT_DEATH( m.manager->entryManagerIs( test1TcamGroup_, "test feature", m.manager.get(),
                                            IFP_GROUP_MAC_ACL_, 100, 110, tcamAllocateOnDemand_ ),
                 "TesselTcamGroupManagerEntryMgrs.cpp:[0-9]+: "
                 "Kiln::Ptr<Tessel::TesselBoundedTcamEntryManager> "
                 "Tessel::TesselTcamGroupManager::entryManagerIs\\(Tessel::TcamGroupAssignment, "
                 "const Kiln::String&, Tessel::TesselTcamGroupManager\\*, U32, U32, U32, "
                 "Tessel::TcamAllocationStrategy\\): Assertion 'Reinstantiating the entity with "
                 "fullName tcam/entryManager/test1TcamGroup where constructor parameter attribute "
                 "'group' has a different value of 8 than the current value of 7 not allowed' "
                 "failed" );
   m.manager->unboundedEntryManagerIs( test2TcamGroup_, "any", m.manager.get(), IFP_GROUP_IP_ACL_,
                                       0, 0, tcamAllocateUnbounded_ );
   EXPECT_DEATH( m.manager->unboundedEntryManagerIs( test2TcamGroup_, "any", m.manager.get(),
                                                     IFP_GROUP_IP_ACL_, 0, 2,
                                                     tcamAllocateUnbounded_ ),
                 "fullName tcam/unboundedEntryManager/test2TcamGroup where constructor parameter "
                 "attribute 'endEntry' has a different value of 2 than the current value of 0" );
}

TEST_F( RegistryTest, BoundedAndUnboundedManagersAreKeptApart ) {
   Watcher watcher;
   watcher.notifierIs( m.manager );
   Kiln::Ptr< TesselUnboundedTcamEntryManager > unbounded = m.manager->unboundedEntryManagerIs(
      test1TcamGroup_, "any", m.manager.get(), IFP_GROUP_IP_ACL_, 0, 0, tcamAllocateUnbounded_ );
   make();
   EXPECT_EQ( std::vector< TcamGroupAssignment >{ test1TcamGroup_ }, watcher.unbounded );
   EXPECT_EQ( "tcam/unboundedEntryManager/test1TcamGroup", unbounded->name().str() );
   m.manager->unboundedEntryManagerDel( test1TcamGroup_ );
   EXPECT_TRUE( m.manager->entryManagerHas( test1TcamGroup_ ) );
}

TEST_F( RegistryTest, EntriesAreFoundByTheirManager ) {
   Kiln::Ptr< TesselBoundedTcamEntryManager > manager = make();
   m.manager->tcamManagerForEntryIs( 105, manager );
   EXPECT_EQ( Kiln::Ptr< TesselTcamEntryManager >( manager ), m.manager->tcamEntryMgr( 105 ) );
   EXPECT_DEATH( m.manager->tcamEntryMgr( 106 ),
                 "Tessel::TesselTcamGroupManager::tcamEntryMgr\\(U32\\) const: Assertion "
                 "'EntryMgr not found' failed" );
}

TEST_F( RegistryTest, ManagersOutliveTheirGroupManagerDetached ) {
   Kiln::Ptr< TesselBoundedTcamEntryManager > manager = make();
   m.manager = nullptr;
   EXPECT_EQ( nullptr, manager->groupManager() );
}

// The reservation rows a unit keeps become entry managers, with disjoint
// entry ranges; a unit keeps one of the two control layouts.
class ReservationTest : public testing::TestWithParam< ProfileFacts > {
 protected:
   ManagerBox m{ { GetParam().name } };
   bool perPipe = GetParam().ingressPipes > 1;
};

TEST_P( ReservationTest, TheUnitsLayoutDecidesWhichRowsHaveManagers ) {
   EXPECT_EQ( perPipe, m.manager->entryManagerHas( arpRequestInspectionTHxTcamGroup_ ) );
   EXPECT_EQ( !perPipe, m.manager->entryManagerHas( arpRequestInspectionTcamGroup_ ) );
   EXPECT_EQ( GetParam().name == "th3", m.manager->entryManagerHas( vfpTH3SystemAclGroup_ ) );
   EXPECT_TRUE( m.manager->unboundedEntryManagerHas( ipAclTcamGroup_ ) );
   Kiln::Ptr< TesselBoundedTcamEntryManager > qos = m.manager->entryManager( qosTcamGroup_ );
   ASSERT_TRUE( qos );
   EXPECT_EQ( IFP_GROUP_QOS_, qos->group() );
   EXPECT_EQ( 93u, qos->endEntry() - qos->baseEntry() );
   EXPECT_EQ( "Qos", qos->desc().str() );
   EXPECT_EQ( 2u, m.manager->unboundedEntryManager( openFlowL2OnlyGroupLowTcamGroup_ )->endEntry() );
}

TEST_P( ReservationTest, BoundedRangesDoNotOverlap ) {
   std::vector< std::pair< U32, U32 > > ranges;
   for ( const auto & [ assignment, manager ] : m.manager->entryManagerCollection() ) {
      ranges.emplace_back( manager->baseEntry(), manager->endEntry() );
   }
   std::sort( ranges.begin(), ranges.end() );
   for ( size_t i = 1; i < ranges.size(); ++i ) {
      EXPECT_LE( ranges[ i - 1 ].second, ranges[ i ].first );
   }
   EXPECT_GE( ranges.front().first, reservationEntryBase );
   EXPECT_LT( ranges.back().second, 1u << 24 );
}

INSTANTIATE_TEST_SUITE_P( Profiles, ReservationTest, testing::ValuesIn( allProfiles() ),
                          profileName );

TEST( ReservationCountTest, EntriesHeldAreCountedThroughTheRowsManager ) {
   ManagerBox m{ { "single" } };
   EXPECT_EQ( 0u, m.manager->getNumOfTcamEntries( 8 ) );
   EXPECT_EQ( 0u, m.manager->getNumOfTcamEntries( 127 ) );
   EXPECT_EQ( 0u, m.manager->getNumOfTcamEntries( 500 ) );
}

} // namespace
} // namespace ManagerTest
