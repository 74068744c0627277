// The table records: their binary forms byte by byte (what the command
// line decodes), refusal of records of another length, and the text forms.
#include <gtest/gtest.h>

#include "export/TesselTcamVaultRecords.h"
#include "platform/kiln/ValueText.h"

namespace {

using namespace Tessel;

template< typename Record >
std::vector< U8 >
bytesOf( const Record & record ) {
   std::vector< U8 > bytes( record.serializeLen() );
   record.serialize( bytes.data() );
   return bytes;
}

// The record comes back whole and nothing shorter or longer is taken for it.
template< typename Record >
void
roundTrips( const Record & record ) {
   std::vector< U8 > bytes = bytesOf( record );
   Record back;
   EXPECT_TRUE( Record::deserialize( bytes.data(), U32( bytes.size() ), back ) );
   EXPECT_EQ( record, back );
   EXPECT_FALSE( Record::deserialize( bytes.data(), U32( bytes.size() - 1 ), back ) );
   bytes.push_back( 0 );
   EXPECT_FALSE( Record::deserialize( bytes.data(), U32( bytes.size() ), back ) );
}

std::vector< U8 >
words( std::initializer_list< U32 > values ) {
   std::vector< U8 > bytes;
   for ( U32 v : values ) {
      for ( int i = 0; i < 4; ++i ) {
         bytes.push_back( U8( v >> ( 8 * i ) ) );
      }
   }
   return bytes;
}

TEST( VaultRecordsTest, BinaryFormsAreTheFieldsInOrderWithoutPadding ) {
   VaultStageInfo stage( 1, 1, 4, 36864 );
   std::vector< U8 > expected = { 1, 0, 0, 0, 1, 4, 0, 0, 0, 0, 0x90, 0, 0 };
   EXPECT_EQ( expected, bytesOf( stage ) );
   EXPECT_EQ( words( { 7, 6, 1533, 2, 0x01000007 } ),
              bytesOf( VaultGroupInfo( 7, 6, 1533, 2, 0x01000007 ) ) );
   EXPECT_EQ( words( { 12, 100, 3, 7 } ), bytesOf( VaultFeatureInfo( 12, 100, 3, 7 ) ) );
   EXPECT_EQ( words( { 0x800001, 7, 42 } ), bytesOf( VaultEntryGroupInfo( 0x800001, 7, 42 ) ) );
   EXPECT_EQ( words( { 0x800001, 12 } ), bytesOf( VaultEntryFeatureInfo( 0x800001, 12 ) ) );
   EXPECT_EQ( words( { 3, 16, 32 } ), bytesOf( VaultGroupQualiferInfo( 3, 16, 32 ) ) );
   EXPECT_EQ( words( { 5, 768, 700, 7, 2, 1 } ), bytesOf( VaultSliceInfo( 5, 768, 700, 7, 2, 1 ) ) );
   TesselTcam::VaultUnitInfo unit;
   unit.key = 2;
   unit.moduleId = 3;
   EXPECT_EQ( words( { 2, 3 } ), bytesOf( unit ) );
}

TEST( VaultRecordsTest, RecordsOfAnotherLengthAreRefused ) {
   roundTrips( VaultStageInfo( 2, 0, 1, 2048 ) );
   roundTrips( VaultGroupInfo( 7, 6, 1533, 2, 7 ) );
   roundTrips( VaultFeatureInfo( 12, 100, 3, 7 ) );
   roundTrips( VaultEntryGroupInfo( 1, 7, 42 ) );
   roundTrips( VaultEntryFeatureInfo( 1, 12 ) );
   roundTrips( VaultGroupQualiferInfo( 3, 16, 32 ) );
   roundTrips( VaultSliceInfo( 5, 768, 700, 7, 2, 1 ) );
}

TEST( VaultRecordsTest, EntryBytesCarryTheirSize ) {
   VaultEntryInfo entry( 9 );
   entry.dataIs( 0, 0xAB );
   entry.dataIs( 2, 0xCD );
   EXPECT_EQ( 3u, entry.size() );
   std::vector< U8 > expected = words( { 9, 3 } );
   expected.insert( expected.end(), { 0xAB, 0, 0xCD } );
   EXPECT_EQ( expected, bytesOf( entry ) );
   roundTrips( entry );
   std::vector< U8 > lying = bytesOf( entry );
   lying[ 4 ] = 200; // claims more bytes than the record holds
   VaultEntryInfo out;
   EXPECT_FALSE( VaultEntryInfo::deserialize( lying.data(), U32( lying.size() ), out ) );
   EXPECT_THROW( entry.dataIs( 256, 1 ), Kiln::RangeException );
   EXPECT_EQ( "Value('Tessel::VaultEntryInfo', ** {'key': Value('TesselTcam::Id', ** {'value': "
              "9}), 'size': 3, 'data': [171, 0, 205]})",
              entry.vaultString() );
}

TEST( VaultRecordsTest, TextFormsAndTheirConstructors ) {
   const std::string id = "Value('TesselTcam::Id', ** {'value': 7})";
   const std::vector< std::string > texts = {
      "Value('Tessel::VaultStageInfo', ** {'key': " + id +
         ", 'pipeOperationMode': 1, 'numPipes': 4, 'tcamSize': 36864})",
      "Value('Tessel::VaultGroupInfo', ** {'key': " + id +
         ", 'allocatedEntries': 6, 'freeEntries': 1533, 'numCopies': 2, 'globalGroupId': 7})",
      "Value('Tessel::VaultFeatureInfo', ** {'key': " + id +
         ", 'entriesAllocated': 100, 'entriesUsed': 3, 'groupId': 7})",
      "Value('Tessel::VaultEntryGroupInfo', ** {'key': " + id + ", 'groupId': 7, 'stats': 42})",
      "Value('Tessel::VaultEntryFeatureInfo', ** {'key': " + id + ", 'featureId': 12})",
      "Value('Tessel::VaultGroupQualiferInfo', ** {'key': " + id + ", 'offset': 16, 'size': 32})",
   };
   EXPECT_EQ( texts[ 0 ], VaultStageInfo( 7, 1, 4, 36864 ).vaultString() );
   EXPECT_EQ( texts[ 1 ], VaultGroupInfo( 7, 6, 1533, 2, 7 ).vaultString() );
   EXPECT_EQ( texts[ 2 ], VaultFeatureInfo( 7, 100, 3, 7 ).vaultString() );
   EXPECT_EQ( texts[ 3 ], VaultEntryGroupInfo( 7, 7, 42 ).vaultString() );
   EXPECT_EQ( texts[ 4 ], VaultEntryFeatureInfo( 7, 12 ).vaultString() );
   EXPECT_EQ( texts[ 5 ], VaultGroupQualiferInfo( 7, 16, 32 ).vaultString() );
   EXPECT_EQ( texts[ 0 ], VaultStageInfo( texts[ 0 ] ).vaultString() );
   EXPECT_EQ( texts[ 1 ], VaultGroupInfo( texts[ 1 ] ).vaultString() );
   EXPECT_EQ( texts[ 2 ], VaultFeatureInfo( texts[ 2 ] ).vaultString() );
   EXPECT_EQ( texts[ 3 ], VaultEntryGroupInfo( texts[ 3 ] ).vaultString() );
   EXPECT_EQ( texts[ 4 ], VaultEntryFeatureInfo( texts[ 4 ] ).vaultString() );
   EXPECT_EQ( texts[ 5 ], VaultGroupQualiferInfo( texts[ 5 ] ).vaultString() );
   VaultSliceInfo slice( 5, 768, 700, 7, 2, 1 );
   EXPECT_EQ( slice, VaultSliceInfo( slice.vaultString() ) );
}

TEST( VaultRecordsTest, TextOfAnotherRecordOrFieldIsRefused ) {
   std::string group = VaultGroupInfo( 7, 6, 1533, 2, 7 ).vaultString();
   EXPECT_THROW( VaultStageInfo( std::string_view( group ) ), Kiln::ValueTextError );
   std::string stage = VaultStageInfo( 7, 1, 4, 1 ).vaultString();
   stage.replace( stage.find( "'numPipes'" ), 10, "'pipes'" );
   EXPECT_THROW( VaultStageInfo( std::string_view( stage ) ), Kiln::ValueTextError );
   std::string big = VaultStageInfo( 7, 1, 4, 1 ).vaultString();
   big.replace( big.find( "'pipeOperationMode': 1" ), 22, "'pipeOperationMode': 256" );
   EXPECT_THROW( VaultStageInfo( std::string_view( big ) ), Kiln::ValueTextError );
}

TEST( VaultRecordsDeathTest, EntryRecordsHaveNoStringConstructor ) {
   EXPECT_DEATH( VaultEntryInfo( std::string_view( "x" ) ),
                 "No String constructor for VaultEntryInfo - has collection" );
}

} // namespace
