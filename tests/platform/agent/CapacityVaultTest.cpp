// The capacity tables in shared memory: the record form, the writer keeping
// a table in step with the capacity service, and the reader's verdicts on
// records that are not capacity rows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "platform/agent/CapacityVault.h"
#include "tests/platform/vault/VaultTestSupport.h"

using namespace Hardware::Capacity;
using VaultTest::TestPrefix;

namespace {

const char path[] = "capacity/test";

CapacityRow
rowOf( const char * group, const char * feature, U32 unit, const char * row, U32 used,
       U32 free, U32 total ) {
   return CapacityRow{ CapacityKey( group, feature, unit, row ),
                       CapacityFigures( used, free, 0, total ) };
}

class CapacityVault : public ::testing::Test {
 protected:
   CapacityVault() : store( prefix ), capacity( new CapacityHelperSm( "capacity" ) ) {
      capacity->initCapacityTableFeature( "Tcam", "IFP" );
      capacity->initCapacityTableFeature( "Other", "Things" );
   }
   std::vector< CapacityRow >
   read() {
      std::vector< CapacityRow > rows;
      Vault::Status status = readCapacityTable( prefix, path, rows );
      EXPECT_TRUE( status.ok() ) << status.text();
      return rows;
   }
   std::vector< CapacityRow >
   serviceRows( const char * group ) {
      std::vector< CapacityRow > rows;
      for ( const CapacityRow & row : capacity->capacityTable() ) {
         if ( row.key.featureGroup == group ) {
            rows.push_back( row );
         }
      }
      return rows;
   }

   TestPrefix prefix;
   Vault::Store store;
   Kiln::Ptr< CapacityHelperSm > capacity;
};

} // namespace

TEST( CapacityVaultRecord, RoundTripsAndRefusesNamesItCannotHold ) {
   CapacityRow row = rowOf( "TesselTcamCapacity", "IFP", 7, "Slice-127", 1, 2, 0xffffffff );
   row.figures.reserved = 9;
   std::optional< CapacityVaultRecord > record = capacityVaultRecord( row );
   ASSERT_TRUE( record );
   std::string error;
   EXPECT_EQ( row, capacityRowOf( reinterpret_cast< const U8 * >( &*record ), sizeof( *record ),
                                  error ) );

   std::string longest( capacityVaultNameMax, 'x' );
   row.key.row = longest;
   record = capacityVaultRecord( row );
   ASSERT_TRUE( record );
   EXPECT_EQ( row, capacityRowOf( reinterpret_cast< const U8 * >( &*record ), sizeof( *record ),
                                  error ) );
   row.key.row = longest + "x";
   EXPECT_FALSE( capacityVaultRecord( row ) );
   row.key.row = "";
   row.key.feature = Kiln::String( "I\0FP", 4 );
   EXPECT_FALSE( capacityVaultRecord( row ) );
}

TEST( CapacityVaultRecord, BytesThatAreNotARowSayWhy ) {
   CapacityVaultRecord record = *capacityVaultRecord( rowOf( "g", "f", 0, "", 0, 0, 0 ) );
   const U8 * bytes = reinterpret_cast< const U8 * >( &record );
   std::string error;
   EXPECT_FALSE( capacityRowOf( bytes, sizeof( record ) - 1, error ) );
   EXPECT_EQ( "record of 215 bytes, a capacity row has 216", error );
   record.format = 2;
   EXPECT_FALSE( capacityRowOf( bytes, sizeof( record ), error ) );
   EXPECT_EQ( "capacity row format 2, expected 1", error );
   record.format = capacityVaultFormat;
   std::memset( record.row, 'r', sizeof( record.row ) );
   EXPECT_FALSE( capacityRowOf( bytes, sizeof( record ), error ) );
   EXPECT_EQ( "capacity row with an unterminated name", error );
}

TEST_F( CapacityVault, MirrorsTheRowsItFindsAndEveryChangeOfItsGroup ) {
   capacity->updateCapacityEntry( "Tcam", "IFP", 0, "Slice-0", 1, 2, 0, 3 );
   capacity->updateCapacityEntry( "Other", "Things", 0, "", 5, 5, 0, 10 );
   CapacityVaultWriter writer( store, path, capacity, "Tcam" );
   EXPECT_EQ( serviceRows( "Tcam" ), read() );

   capacity->initCapacityTableFeature( "Tcam", "IFP", 1, "Slice-0" ); // registered at zero
   capacity->updateCapacityEntry( "Tcam", "IFP", 0, "Slice-0", 2, 1, 0, 3 );
   capacity->updateCapacityEntry( "Tcam", "IFP", 0, "", 2, 1, 0, 3 );
   capacity->updateCapacityEntry( "Other", "Things", 1, "", 1, 1, 0, 2 );
   EXPECT_EQ( serviceRows( "Tcam" ), read() );
   EXPECT_EQ( 3u, writer.table().size() );

   capacity->capacityEntryDel( CapacityKey( "Tcam", "IFP", 0, "Slice-0" ) );
   EXPECT_EQ( serviceRows( "Tcam" ), read() );
   capacity->capacityEntryDelUnit( "Tcam", 1 );
   EXPECT_EQ( serviceRows( "Tcam" ), read() );
   EXPECT_EQ( 1u, writer.table().size() );
   EXPECT_EQ( 0u, writer.rowsNotPublished() );
}

TEST_F( CapacityVault, AnEmptyGroupMirrorsEveryGroup ) {
   capacity->updateCapacityEntry( "Tcam", "IFP", 0, "", 1, 2, 0, 3 );
   CapacityVaultWriter writer( store, path, capacity, "" );
   capacity->updateCapacityEntry( "Other", "Things", 0, "", 5, 5, 0, 10 );
   EXPECT_EQ( capacity->capacityTable(), read() );
}

TEST_F( CapacityVault, RowIdsOfRemovedRowsAreReused ) {
   CapacityVaultWriter writer( store, path, capacity, "Tcam" );
   for ( U32 unit = 0; unit < 300; ++unit ) { // beyond the first capacity
      capacity->updateCapacityEntry( "Tcam", "IFP", unit, "", unit, 1, 0, unit + 1 );
   }
   EXPECT_EQ( serviceRows( "Tcam" ), read() );
   CapacityKey gone( "Tcam", "IFP", 5, "" );
   U32 id = *writer.rowId( gone );
   capacity->capacityEntryDel( gone );
   EXPECT_FALSE( writer.rowId( gone ) );
   capacity->updateCapacityEntry( "Tcam", "IFP", 1000, "", 1, 1, 0, 2 );
   EXPECT_EQ( id, writer.rowId( CapacityKey( "Tcam", "IFP", 1000, "" ) ) );
   EXPECT_EQ( serviceRows( "Tcam" ), read() );
}

TEST_F( CapacityVault, ARowItCannotHoldIsCountedAndLeftOut ) {
   CapacityVaultWriter writer( store, path, capacity, "Tcam" );
   std::string longName( capacityVaultNameMax + 1, 's' );
   capacity->updateCapacityEntry( "Tcam", "IFP", 0, longName, 1, 1, 0, 2 );
   capacity->updateCapacityEntry( "Tcam", "IFP", 0, "", 1, 1, 0, 2 );
   EXPECT_EQ( 1u, writer.rowsNotPublished() );
   EXPECT_THAT( read(), ::testing::ElementsAre( rowOf( "Tcam", "IFP", 0, "", 1, 1, 2 ) ) );
}

TEST_F( CapacityVault, ReadersSayWhatIsWrong ) {
   std::vector< CapacityRow > rows = { rowOf( "x", "y", 0, "", 0, 0, 0 ) };
   Vault::Status status = readCapacityTable( prefix, path, rows );
   EXPECT_EQ( Vault::Errc::notFound, status.code() ) << status.text();
   EXPECT_TRUE( rows.empty() );
   {
      CapacityVaultWriter writer( store, path, capacity, "Tcam" );
      EXPECT_TRUE( readCapacityTable( prefix, path, rows ).ok() );
   }
   // The writer took its table with it.
   EXPECT_EQ( Vault::Errc::notFound, readCapacityTable( prefix, path, rows ).code() );

   // Records another writer put there.
   Vault::TableWriter table = store.createTable( path, 300, 4 );
   CapacityVaultRecord good = *capacityVaultRecord( rowOf( "g", "f", 0, "", 0, 0, 0 ) );
   table.put( 3, &good, sizeof( good ) );
   table.put( 4, "junk", 4 );
   status = readCapacityTable( prefix, path, rows );
   EXPECT_EQ( Vault::Errc::corrupt, status.code() );
   EXPECT_EQ( "corrupt capacity table 'capacity/test': row 4: record of 4 bytes, a capacity "
              "row has 216",
              status.text() );
   EXPECT_TRUE( rows.empty() );
}
