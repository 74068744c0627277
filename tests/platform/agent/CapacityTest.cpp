#include <gtest/gtest.h>

#include "platform/agent/CapacityHelperSm.h"
#include "platform/kiln/ValueText.h"

#include <string>
#include <vector>

namespace {

using namespace Hardware::Capacity;

const char group[] = "TesselTcamCapacity";

struct RowWatcher : CapacityHelperSm::NotifieeConst {
   std::vector< std::string > seen;
   void
   onCapacityEntry( const CapacityKey & key ) override {
      bool present = notifier()->capacityEntryHas( key );
      seen.push_back( key.feature.str() + "/" + std::to_string( key.unit ) + "/" + key.row.str() +
                      ( present ? "" : " gone" ) );
   }
};

class Capacity : public ::testing::Test {
 protected:
   Capacity() : capacity( new CapacityHelperSm( "capacity" ) ) {
      watcher.notifierIs( capacity );
      for ( const char * feature : { "IFP", "VFP", "EFP" } ) {
         capacity->initCapacityTableFeature( group, feature );
      }
   }
   Kiln::Ptr< CapacityHelperSm > capacity;
   RowWatcher watcher;
};

TEST_F( Capacity, RowsArePublishedPerUnitFeatureAndRow ) {
   capacity->initCapacityTableFeature( group, "IFP", 0, "Slice-0" );
   capacity->updateCapacityEntry( group, "IFP", 0, "Slice-0", 100, 412, 0, 512 );
   capacity->updateCapacityEntry( group, "IFP", 0, "", 100, 412, 0, 512 );
   capacity->updateCapacityEntry( group, "IFP", 1, "Slice-0", 7, 505, 0, 512 );

   std::vector< CapacityRow > table = capacity->capacityTable();
   ASSERT_EQ( 3u, table.size() );
   // Key order: the feature's own row (empty name) before its slices, unit 0 before 1.
   EXPECT_EQ( CapacityKey( group, "IFP", 0, "" ), table[ 0 ].key );
   EXPECT_EQ( CapacityKey( group, "IFP", 0, "Slice-0" ), table[ 1 ].key );
   EXPECT_EQ( CapacityFigures( 100, 412, 0, 512 ), table[ 1 ].figures );
   EXPECT_EQ( CapacityFigures( 7, 505, 0, 512 ), table[ 2 ].figures );
   EXPECT_EQ( ( std::vector< std::string >{ "IFP/0/Slice-0", "IFP/0/Slice-0", "IFP/0/", "IFP/1/Slice-0" } ),
              watcher.seen );
}

TEST_F( Capacity, OnlyRealChangesAreNotified ) {
   capacity->updateCapacityEntry( group, "VFP", 0, "Slice-1", 1, 2, 0, 3 );
   capacity->updateCapacityEntry( group, "VFP", 0, "Slice-1", 1, 2, 0, 3 );
   // Registering a row that already holds figures keeps them.
   capacity->initCapacityTableFeature( group, "VFP", 0, "Slice-1" );
   EXPECT_EQ( CapacityFigures( 1, 2, 0, 3 ),
              capacity->capacityEntry( CapacityKey( group, "VFP", 0, "Slice-1" ) ) );
   capacity->initCapacityTableFeature( group, "VFP" );
   EXPECT_EQ( std::vector< std::string >{ "VFP/0/Slice-1" }, watcher.seen );
}

TEST_F( Capacity, AUnitThatGoesAwayTakesOnlyItsRows ) {
   capacity->initCapacityTableFeature( "OtherAgent", "Counters" );
   for ( U32 unit : { 0u, 1u } ) {
      capacity->updateCapacityEntry( group, "IFP", unit, "", 1, 1, 0, 2 );
      capacity->updateCapacityEntry( group, "EFP", unit, "Slice-0", 1, 1, 0, 2 );
      capacity->updateCapacityEntry( "OtherAgent", "Counters", unit, "", 1, 1, 0, 2 );
   }
   watcher.seen.clear();
   EXPECT_EQ( 2u, capacity->capacityEntryDelUnit( group, 1 ) );
   EXPECT_EQ( ( std::vector< std::string >{ "EFP/1/Slice-0 gone", "IFP/1/ gone" } ), watcher.seen );
   EXPECT_EQ( 4u, capacity->capacityTable().size() );
   EXPECT_TRUE( capacity->capacityEntryHas( CapacityKey( "OtherAgent", "Counters", 1, "" ) ) );
}

TEST_F( Capacity, KeysAndFiguresHaveValueForms ) {
   CapacityKey key( group, "IFP", 2, "Slice-3" );
   EXPECT_EQ( "Value('Hardware::Capacity::CapacityKey', ** {'featureGroup': 'TesselTcamCapacity', "
              "'feature': 'IFP', 'unit': 2, 'row': 'Slice-3'})",
              key.valueText() );
   EXPECT_EQ( key, CapacityKey( key.valueText() ) );
   CapacityFigures figures( 1, 2, 3, 6 );
   EXPECT_EQ( "Value('Hardware::Capacity::CapacityFigures', ** {'used': 1, 'free': 2, "
              "'reserved': 3, 'total': 6})",
              figures.valueText() );
   EXPECT_EQ( figures, CapacityFigures( figures.valueText() ) );
   EXPECT_THROW( CapacityKey( "Value('Hardware::Capacity::CapacityKey', ** {'featureGroup': 'x'})" ),
                 Kiln::ValueTextError );
   EXPECT_NE( std::hash< CapacityKey >()( key ),
              std::hash< CapacityKey >()( CapacityKey( group, "IFP", 3, "Slice-3" ) ) );
}

TEST_F( Capacity, UpdatingAnUnregisteredFeatureIsAProgrammingError ) {
   EXPECT_DEATH( capacity->updateCapacityEntry( group, "XFP", 0, "", 0, 0, 0, 0 ),
                 "Assertion 'capacity feature not registered' failed" );
   EXPECT_DEATH( capacity->initCapacityTableFeature( "", "IFP" ),
                 "Assertion 'capacity feature group and feature must be named' failed" );
}

} // namespace
