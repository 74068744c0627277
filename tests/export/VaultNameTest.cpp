// The name record and the key: binary form byte by byte, lengths, what a
// reader refuses, the buffer's bookkeeping, and the text forms.
#include <gtest/gtest.h>

#include <stdexcept>

#include "export/TesselTcamVaultName.h"
#include "platform/kiln/ValueText.h"

namespace {

using TesselTcam::Id;
using TesselTcam::NameIndexRange60;
using TesselTcam::VaultName;

std::vector< U8 >
bytesOf( const VaultName & name ) {
   std::vector< U8 > bytes( name.serializeLen(), 0xEE );
   name.serialize( bytes.data() );
   return bytes;
}

VaultName
decoded( const std::vector< U8 > & bytes ) {
   VaultName out;
   EXPECT_TRUE( VaultName::deserialize( bytes.data(), U32( bytes.size() ), out ) );
   return out;
}

TEST( VaultNameTest, BinaryFormIsKeyCountBytesAndThreeSlackBytes ) {
   VaultName name( 0x01020304, "ab" );
   EXPECT_EQ( 3u, name.count() );
   EXPECT_EQ( 14u, name.serializeLen() );
   EXPECT_EQ( ( std::vector< U8 >{ 4, 3, 2, 1, 3, 0, 0, 0, 'a', 'b', 0, 0, 0, 0 } ),
              bytesOf( name ) );
   VaultName back = decoded( bytesOf( name ) );
   EXPECT_EQ( name, back );
   EXPECT_EQ( "ab", back.name().str() );
   EXPECT_EQ( 0x01020304u, back.key().value );
}

TEST( VaultNameTest, AnEmptyNameTakesItsTerminatorOnly ) {
   VaultName empty;
   EXPECT_TRUE( !empty );
   EXPECT_EQ( "", empty.name().str() );
   empty.nameIs( "" );
   EXPECT_FALSE( !empty );
   EXPECT_EQ( 1u, empty.count() );
   EXPECT_EQ( 12u, empty.serializeLen() );
}

TEST( VaultNameTest, NamesLongerThanSixtyAreCutToSixty ) {
   std::string sixty( 60, 'x' );
   VaultName exact( 1, sixty );
   EXPECT_EQ( sixty, decoded( bytesOf( exact ) ).name().str() );
   EXPECT_EQ( 61u, exact.count() );
   EXPECT_EQ( 72u, exact.serializeLen() );
   VaultName longer( 1, sixty + "yz" );
   EXPECT_EQ( sixty, decoded( bytesOf( longer ) ).name().str() );
   EXPECT_EQ( 61u, longer.count() );
}

// The count never shrinks when a shorter name follows a longer one; the
// NUL ends the name all the same.
TEST( VaultNameTest, AShorterNameKeepsTheCount ) {
   VaultName name( 1, "interface" );
   name.nameIs( "if" );
   EXPECT_EQ( 10u, name.count() );
   EXPECT_EQ( "if", decoded( bytesOf( name ) ).name().str() );
}

TEST( VaultNameTest, BufferBytesByIndexAndTheirDeletion ) {
   VaultName name;
   name.nameBufferIs( 2, 'c' );
   EXPECT_EQ( 3u, name.count() );
   EXPECT_EQ( "", name.name().str() ); // byte 0 is still NUL
   name.nameBufferIs( 0, 'a' );
   name.nameBufferIs( 1, 'b' );
   EXPECT_EQ( "abc", name.name().str() );
   name.nameBufferDel( 1 ); // not the last: only zeroed
   EXPECT_EQ( 3u, name.count() );
   name.nameBufferIs( 1, 'b' );
   name.nameBufferIs( 2, 0 );
   name.nameBufferIs( 4, 'e' );
   name.nameBufferDel( 4 ); // the last: trailing zero bytes leave the count
   EXPECT_EQ( 2u, name.count() );
   name.nameBufferDelAll();
   EXPECT_TRUE( !name );
}

TEST( VaultNameTest, IndexesBeyondSixtyThrowTheRangeText ) {
   VaultName name;
   const char * text =
      "NameIndexRange60::value < NameIndexRange60::min or > NameIndexRange60::max not allowed";
   try {
      name.nameBufferIs( 61, 'x' );
      FAIL() << "no exception";
   } catch ( const Kiln::RangeException & e ) {
      EXPECT_STREQ( text, e.what() );
   }
   NameIndexRange60 index = 60;
   EXPECT_THROW( index += 1, Kiln::RangeException );
   EXPECT_NO_THROW( name.nameBufferIs( 60, 'x' ) );
   EXPECT_EQ( 61u, name.count() );
}

TEST( VaultNameTest, ReadersRefuseCountsAbove61AndShortRecords ) {
   std::vector< U8 > bytes = bytesOf( VaultName( 9, "abc" ) );
   EXPECT_EQ( 72u, VaultName::deserializeLen( bytes.data(), U32( bytes.size() ) ) );
   EXPECT_EQ( 0u, VaultName::deserializeLen( bytes.data(), 7 ) );
   VaultName out( 5, "kept" );
   EXPECT_FALSE( VaultName::deserialize( bytes.data(), 11, out ) ); // the name runs past the end
   bytes[ 4 ] = 62;
   EXPECT_EQ( 0u, VaultName::deserializeLen( bytes.data(), U32( bytes.size() ) ) );
   EXPECT_FALSE( VaultName::deserialize( bytes.data(), U32( bytes.size() ), out ) );
   EXPECT_EQ( "kept", out.name().str() );
}

TEST( VaultNameTest, ACountTooLargeToWriteFailsWithTheBufferDump ) {
   U8 buffer[ VaultName::bufferSize ] = { 'a', 'b' };
   EXPECT_NO_THROW( VaultName::serializeCheck( 61, buffer ) );
   try {
      VaultName::serializeCheck( 62, buffer );
      FAIL() << "no exception";
   } catch ( const std::length_error & e ) {
      std::string text = e.what();
      EXPECT_EQ( 0u, text.find( "PodArray::set expected size <=61, instead got62. Buffer is at "
                                "address:0x" ) );
      EXPECT_NE( std::string::npos, text.find( " with contents:61 62 00 00" ) );
   }
}

TEST( VaultNameTest, TextFormsOfTheKeyAndTheRecord ) {
   EXPECT_EQ( "Value('TesselTcam::Id', ** {'value': 7})", Id( 7 ).valueText() );
   EXPECT_EQ( 7u, Id( std::string_view( "Value('TesselTcam::Id', ** {'value': 7})" ) ).value );
   EXPECT_THROW( Id( std::string_view( "Value('TesselTcam::Id', ** {'value': -1})" ) ),
                 Kiln::ValueTextError );
   EXPECT_EQ( "Value('TesselTcam::VaultName', ** {'key': Value('TesselTcam::Id', ** {'value': 3}), "
              "'nameBuffer': [73, 80, 0]})",
              VaultName( 3, "IP" ).valueText() );
   EXPECT_EQ( std::hash< Id >()( Id( 5 ) ), Kiln::hashMix( U32( 5 ) ) );
   EXPECT_LT( Id( 4 ), Id( 5 ) );
}

TEST( VaultNameDeathTest, ThereIsNoStringConstructor ) {
   EXPECT_DEATH( VaultName( std::string_view( "text" ) ),
                 "No String constructor for VaultName - has collection" );
}

} // namespace
