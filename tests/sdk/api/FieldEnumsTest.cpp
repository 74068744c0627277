#include <gtest/gtest.h>

#include <set>
#include <string>

#include "sdk/api/field_enums.h"

TEST( FieldEnums, NamesAreUniqueAndBounded ) {
   std::set< std::string > seen;
   for ( int q = 0; q < bcmFieldQualifyCount; ++q ) {
      ASSERT_NE( nullptr, bcm_field_qualify_name( q ) ) << q;
      EXPECT_TRUE( seen.insert( bcm_field_qualify_name( q ) ).second ) << q;
   }
   EXPECT_EQ( nullptr, bcm_field_qualify_name( bcmFieldQualifyCount ) );
   EXPECT_EQ( nullptr, bcm_field_qualify_name( -1 ) );
   EXPECT_STREQ( "InPorts", bcm_field_qualify_name( bcmFieldQualifyInPorts ) );
   EXPECT_STREQ( "ClassSet", bcm_field_action_name( bcmFieldActionClassSet ) );
   EXPECT_EQ( nullptr, bcm_field_action_name( bcmFieldActionCount ) );
}

TEST( FieldEnums, PacketAndByteCountersOfOneColourAreNeighbours ) {
   // Entries ask for a packets/bytes pair by neighbouring values.
   EXPECT_EQ( 1, bcmFieldStatBytes - bcmFieldStatPackets );
   EXPECT_EQ( 1, bcmFieldStatGreenBytes - bcmFieldStatGreenPackets );
   EXPECT_EQ( 1, bcmFieldStatYellowBytes - bcmFieldStatYellowPackets );
   EXPECT_NE( 1, bcmFieldStatGreenBytes - bcmFieldStatPackets );
   EXPECT_STREQ( "Packets", bcm_field_stat_name( bcmFieldStatPackets ) );
}
