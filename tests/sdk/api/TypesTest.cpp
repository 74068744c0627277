#include <gtest/gtest.h>

#include "sdk/api/bcm.h"

TEST( SdkTypes, PortBitmapIsSevenWordsAndFormatsMostSignificantFirst ) {
   static_assert( sizeof( bcm_pbmp_t ) == 7 * 4 );
   bcm_pbmp_t pbmp;
   BCM_PBMP_CLEAR( pbmp );
   EXPECT_TRUE( _shr_pbmp_is_null( pbmp ) );
   BCM_PBMP_PORT_ADD( pbmp, 1 );
   BCM_PBMP_PORT_ADD( pbmp, 223 );
   EXPECT_TRUE( BCM_PBMP_MEMBER( pbmp, 223 ) );
   EXPECT_FALSE( BCM_PBMP_MEMBER( pbmp, 222 ) );
   EXPECT_EQ( 2, _shr_pbmp_count( pbmp ) );
   char text[ _SHR_PBMP_FMT_LEN ];
   EXPECT_STREQ( "0x80000000000000000000000000000000000000000000000000000002",
                 _shr_pbmp_format( pbmp, text ) );
   BCM_PBMP_PORT_REMOVE( pbmp, 223 );
   EXPECT_EQ( 1, _shr_pbmp_count( pbmp ) );
}

TEST( SdkTypes, InitialisersSetTheDocumentedDefaults ) {
   bcm_field_group_config_t config;
   config.flags = 7;
   bcm_field_group_config_t_init( &config );
   EXPECT_EQ( 0u, config.flags );
   EXPECT_EQ( -1, config.action_res_id );
   EXPECT_FALSE( BCM_FIELD_QSET_TEST( config.qset, bcmFieldQualifySrcIp ) );
   BCM_FIELD_QSET_ADD( config.qset, bcmFieldQualifyMixedSrcClassId );
   EXPECT_TRUE( BCM_FIELD_QSET_TEST( config.qset, bcmFieldQualifyMixedSrcClassId ) );

   bcm_field_data_packet_format_t format;
   bcm_field_data_packet_format_t_init( &format );
   EXPECT_EQ( BCM_FIELD_DATA_FORMAT_L2_ANY, format.l2 );
   EXPECT_EQ( BCM_FIELD_DATA_FORMAT_TUNNEL_ANY, format.tunnel );
   EXPECT_EQ( 0, format.relative_offset );
   bcm_field_group_config_t_init( nullptr ); // must not crash
}

