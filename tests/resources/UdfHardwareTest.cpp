// Each UDF mechanism on the chip that has it: its own limits, exhaustion
// that refuses the field with nothing left behind and is announced once,
// recovery, shared packet formats and chunk bitmaps; and the assertions
// that guard the bookkeeping and the hardware.
#include "tests/resources/UdfFixture.h"

#include <gmock/gmock.h>

#include "platform/fastlog/LogMessage.h"
#include "platform/fastlog/TraceConfig.h"
#include "resources/TesselUdfMessages.h"

namespace ResourceTest {
namespace {

using ::testing::ElementsAre;

std::vector< std::string >
namesOf( const FastLog::LogCapture & log ) {
   std::vector< std::string > names;
   for ( const auto & message : log.messages() ) {
      names.push_back( message.name );
   }
   return names;
}

// One-byte IPv4 fields at offsets 0, 1, ... of the L3 header.
QualIdList
field( UdfBox & u, U8 offset, U8 length = 1 ) {
   return u.first->getAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderStart, offset, length );
}

void
release( UdfBox & u, U8 offset, U8 length = 1 ) {
   u.first->releaseAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderStart, offset, length );
}

// --- data qualifiers (single, thx) -------------------------------------------

class DataQualifierTest : public testing::TestWithParam< std::string > {
 protected:
   UdfBox u{ GetParam() };
   FastLog::LogCapture log;
   FastLog::TraceCapture trace{ "TesselTcam", FastLog::TraceLevels::upTo( 5 ) };
};

TEST_P( DataQualifierTest, RunningOutIsAnnouncedOnceAndRecoveryOnce ) {
   for ( U8 offset = 0; offset < 8; ++offset ) {
      ASSERT_FALSE( field( u, offset ).empty() ) << int( offset );
   }
   EXPECT_EQ( 8u, u.counts().dataQualifiers );
   EXPECT_TRUE( field( u, 8 ).empty() );
   EXPECT_TRUE( field( u, 9 ).empty() );
   EXPECT_EQ( 8u, u.counts().dataQualifiers );
   EXPECT_TRUE( u.m.manager->udfHwResourceShort( 0 ) );
   EXPECT_EQ( 2u, textsWith( trace, "Unit: 0 Out of hw resources to create UDF" ).size() );
   EXPECT_EQ( 2u, textsWith( trace, "Unit: 0 could not allocate UDF qualifier" ).size() );
   ASSERT_THAT( namesOf( log ), ElementsAre( "TESSEL_UDF_HW_RESOURCE_FULL" ) );
   FastLog::LogCapture::Message full = log.messages().front();
   EXPECT_EQ( 3u, full.severity );
   EXPECT_EQ( "The switch is unable to program UDF due to insufficient hardware resources.",
              full.text );
   EXPECT_STREQ(
      "Reconfigure other ACLs or features that use UDF to free up UDF hardware resources.",
      udfHwResourceFullMessage.advice );

   release( u, 0 );
   ASSERT_THAT( namesOf( log ),
                ElementsAre( "TESSEL_UDF_HW_RESOURCE_FULL", "TESSEL_UDF_HW_RESOURCE_NORMAL" ) );
   EXPECT_EQ( "The switch was able to program all the UDFs in the hardware.",
              log.messages().back().text );
   EXPECT_EQ( 3u, log.messages().back().severity );
   EXPECT_FALSE( u.m.manager->udfHwResourceShort( 0 ) );
   EXPECT_FALSE( field( u, 8 ).empty() );
   EXPECT_EQ( 2u, log.messages().size() );
}

TEST_P( DataQualifierTest, ThePacketFormatRunningOutTakesTheQualifierBack ) {
   ChipModel::ObjectCounts before = u.counts();
   u.m.box.failCall( 0, "bcm_field_data_qualifier_packet_format_add", 1, BCM_E_RESOURCE );
   EXPECT_TRUE(
      u.first->getAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderEnd, 4, 2 ).empty() );
   EXPECT_EQ( before, u.counts() );
   EXPECT_THAT( textsWith( trace, "No hw resources" ),
                ElementsAre( "Unit: 0 No hw resources to program UDF udf: "
                             "base=UdfBaseL3HeaderEnd normalized offset=24 length=2" ) );
   EXPECT_THAT( namesOf( log ), ElementsAre( "TESSEL_UDF_HW_RESOURCE_FULL" ) );
   EXPECT_TRUE( u.m.manager->ipAclUdfCollection().empty() );
   // The next field that fits ends the shortage.
   EXPECT_FALSE( field( u, 0 ).empty() );
   EXPECT_THAT( namesOf( log ),
                ElementsAre( "TESSEL_UDF_HW_RESOURCE_FULL", "TESSEL_UDF_HW_RESOURCE_NORMAL" ) );
}

// The formats added are the ones group teardown and release delete.
TEST_P( DataQualifierTest, EachFieldServesItsPacketFormat ) {
   QualIdList v4 = u.first->getAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderEnd, 0, 1 );
   QualIdList v6 = u.first->getAclUdf( 0, Acl::ipv6_, noEthType, UdfBaseL3HeaderEnd, 0, 1 );
   QualIdList mac = u.first->getAclUdf( 0, Acl::mac_, noEthType, UdfBaseL2HeaderStart, 12, 2 );
   QualIdList arp = u.first->getAclUdf( 0, Acl::mac_, 0x0806, UdfBaseL2HeaderEnd, 0, 2 );
   auto dq = [ & ]( const QualIdList & quals ) { return u.udf().data( int( *quals.begin() ) ); };
   ASSERT_EQ( 1u, dq( v4 )->formats.size() );
   EXPECT_EQ( BCM_FIELD_DATA_FORMAT_IP4, dq( v4 )->formats[ 0 ].outer_ip );
   EXPECT_EQ( BCM_FIELD_DATA_FORMAT_L2_ETH_II, dq( v4 )->formats[ 0 ].l2 );
   EXPECT_EQ( BCM_FIELD_DATA_FORMAT_IP6, dq( v6 )->formats[ 0 ].outer_ip );
   EXPECT_EQ( bcmFieldDataOffsetBasePacketStart, dq( mac )->spec.offset_base );
   EXPECT_EQ( BCM_FIELD_DATA_FORMAT_IP_ANY, dq( mac )->formats[ 0 ].outer_ip );
   ASSERT_EQ( 1u, dq( arp )->ethertypes.size() );
   EXPECT_EQ( 0x0806, dq( arp )->ethertypes[ 0 ].ethertype );
   EXPECT_EQ( bcmFieldDataOffsetBaseOuterL3Header, dq( arp )->spec.offset_base );
}

INSTANTIATE_TEST_SUITE_P( Chips, DataQualifierTest, testing::Values( "single", "thx" ) );

// --- the UDF module (trident3) -----------------------------------------------

TEST( UdfModuleTest, FieldsSelectingTheSamePacketsShareAPacketFormat ) {
   UdfBox u{ "trident3" };
   QualIdList a = field( u, 0 );
   QualIdList b = field( u, 1 );
   EXPECT_EQ( 2u, u.counts().udfObjects );
   EXPECT_EQ( 1u, u.counts().packetFormats );
   QualIdList v6 = u.first->getAclUdf( 0, Acl::ipv6_, noEthType, UdfBaseL3HeaderEnd, 0, 2 );
   QualIdList lldp = u.first->getAclUdf( 0, Acl::mac_, 0x88cc, UdfBaseL2HeaderEnd, 0, 2 );
   QualIdList mac = u.first->getAclUdf( 0, Acl::mac_, noEthType, UdfBaseL2HeaderStart, 12, 2 );
   EXPECT_EQ( 4u, u.counts().packetFormats );
   EXPECT_EQ( 4u, u.m.manager->pktFmtIdToUdfIdCollection().size() );
   const ChipModel::UdfObject * macUdf = u.udf().udf( int( *mac.begin() ) );
   EXPECT_EQ( bcmUdfLayerL2Header, macUdf->spec.layer );
   EXPECT_EQ( 96u, macUdf->spec.start_bit );
   const bcm_udf_pkt_format_info_t * lldpFormat =
      u.udf().format( *u.udf().udf( int( *lldp.begin() ) )->formats.begin() );
   EXPECT_EQ( 0x88cc, lldpFormat->ethertype );
   EXPECT_EQ( 0xffff, lldpFormat->ethertype_mask );

   release( u, 0 );
   EXPECT_EQ( 4u, u.counts().packetFormats ); // b still uses the IPv4 format
   release( u, 1 );
   EXPECT_EQ( 3u, u.counts().packetFormats );
   u.first->releaseAclUdf( 0, Acl::ipv6_, noEthType, UdfBaseL3HeaderEnd, 0, 2 );
   u.first->releaseAclUdf( 0, Acl::mac_, 0x88cc, UdfBaseL2HeaderEnd, 0, 2 );
   u.first->releaseAclUdf( 0, Acl::mac_, noEthType, UdfBaseL2HeaderStart, 12, 2 );
   EXPECT_EQ( 0u, u.udfHardware() );
   EXPECT_TRUE( u.m.manager->pktFmtIdToUdfIdCollection().empty() );
}

TEST( UdfModuleTest, RunningOutOfUdfsOrFormatsLeavesNothingBehind ) {
   UdfBox u{ "trident3" };
   FastLog::LogCapture log;
   FastLog::TraceCapture trace( "TesselTcam", FastLog::TraceLevels::upTo( 5 ) );
   for ( U8 offset = 0; offset < 16; ++offset ) {
      ASSERT_FALSE( field( u, offset ).empty() ) << int( offset );
   }
   EXPECT_TRUE( field( u, 16 ).empty() );
   EXPECT_EQ( 16u, u.counts().udfObjects );
   EXPECT_EQ( 1u, textsWith( trace, "Out of hw resources to create UDF" ).size() );
   EXPECT_THAT( namesOf( log ), ElementsAre( "TESSEL_UDF_HW_RESOURCE_FULL" ) );
   release( u, 15 );

   // A new packet format that cannot be hung on the UDF: both go again.
   ChipModel::ObjectCounts before = u.counts();
   u.m.box.failCall( 0, "bcm_udf_pkt_format_add", 1, BCM_E_RESOURCE );
   EXPECT_TRUE( u.first->getAclUdf( 0, Acl::ipv6_, noEthType, UdfBaseL3HeaderEnd, 0, 2 ).empty() );
   EXPECT_EQ( before, u.counts() );
   EXPECT_EQ( 1u, textsWith( trace, "No hw resources to program UDF" ).size() );
   u.m.box.failCall( 0, "bcm_udf_pkt_format_create", 1, BCM_E_RESOURCE );
   EXPECT_TRUE( u.first->getAclUdf( 0, Acl::ipv6_, noEthType, UdfBaseL3HeaderEnd, 0, 2 ).empty() );
   EXPECT_EQ( before, u.counts() );
   EXPECT_EQ( 1u, u.m.manager->pktFmtIdToUdfIdCollection().size() );
}

// --- the flex parser (th3) -----------------------------------------------------

TEST( FlexParserTest, ChunksAreTakenFromTheUnitsBitmapAndGivenBack ) {
   UdfBox u{ "th3" };
   FastLog::LogCapture log;
   FastLog::TraceCapture trace( "TesselTcam", FastLog::TraceLevels::upTo( 7 ) );
   // Three bytes take two 2-byte chunks, on each of the four IPv4 formats.
   for ( U8 i = 0; i < 8; ++i ) {
      ASSERT_EQ( 4u, field( u, U8( 4 * i ), 3 ).size() ) << int( i );
   }
   EXPECT_EQ( 0xffffu, u.m.manager->flexChunkBitmap( 0 ) );
   EXPECT_EQ( 32u, u.counts().chunks );
   EXPECT_TRUE( field( u, 40, 1 ).empty() );
   EXPECT_THAT( textsWith( trace, "Not enough chunks" ),
                ElementsAre( "Unit: 0 Not enough chunks to program UDF availChunks: 0 "
                             "requested chunks: 1" ) );
   EXPECT_THAT( namesOf( log ), ElementsAre( "TESSEL_UDF_HW_RESOURCE_FULL" ) );
   EXPECT_EQ( 1u, textsWith( trace, "Flex bitmap is now: 0xffff" ).size() );

   release( u, 4, 3 );
   EXPECT_EQ( 0xfff3u, u.m.manager->flexChunkBitmap( 0 ) );
   EXPECT_EQ( 28u, u.counts().chunks );
   EXPECT_THAT( namesOf( log ),
                ElementsAre( "TESSEL_UDF_HW_RESOURCE_FULL", "TESSEL_UDF_HW_RESOURCE_NORMAL" ) );
   QualIdList again = field( u, 40, 4 );
   ASSERT_EQ( 4u, again.size() );
   const bcm_udf_chunk_info_t * chunk = u.udf().chunk( int( *again.begin() ) );
   EXPECT_EQ( 0xcu, chunk->chunk_bmap );
   EXPECT_EQ( 40u, chunk->chunk_offset );
   EXPECT_EQ( 4u, chunk->chunk_width );
}

TEST( FlexParserTest, AChunkRefusedOnOneFormatUndoesTheOthers ) {
   UdfBox u{ "th3" };
   FastLog::LogCapture log;
   ChipModel::ObjectCounts before = u.counts();
   u.m.box.failCall( 0, "bcm_udf_chunk_create", 3, BCM_E_RESOURCE );
   EXPECT_TRUE( field( u, 0, 2 ).empty() );
   EXPECT_EQ( before, u.counts() );
   EXPECT_EQ( 0u, u.m.manager->flexChunkBitmap( 0 ) );
   EXPECT_THAT( namesOf( log ), ElementsAre( "TESSEL_UDF_HW_RESOURCE_FULL" ) );
   // A field inside the L2 header is out of the flex parser's reach.
   EXPECT_TRUE(
      u.first->getAclUdf( 0, Acl::mac_, noEthType, UdfBaseL2HeaderStart, 12, 2 ).empty() );
   EXPECT_EQ( before, u.counts() );
   EXPECT_EQ( 1u, log.messages().size() );
   // An OpenFlow field of one protocol is programmed on its format only.
   QualIdList udp = u.m.manager->createGroupOpenFlowAclUdf( 0, IFP_GROUP_OPENFLOW_UDF_, 17,
                                                            UdfBaseL3HeaderEnd, 8, 2 );
   ASSERT_EQ( 1u, udp.size() );
   EXPECT_EQ( bcmUdfAbstractPktFormatIpv4Udp,
              u.udf().chunk( int( *udp.begin() ) )->abstract_pkt_format );
}

// --- assertions ------------------------------------------------------------------

TEST( UdfDeathTest, BookkeepingThatDoesNotAddUpAborts ) {
   UdfBox u{ "single" };
   EXPECT_DEATH( release( u, 0 ), "udfRelease.*Assertion '!!spec' failed" );
   ASSERT_FALSE( field( u, 0 ).empty() );
   ASSERT_FALSE( u.second->getAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderStart, 5, 1 )
                    .empty() );
   EXPECT_DEATH(
      u.second->releaseAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderStart, 0, 1 ),
      "Assertion 'groupToQual->udfQualId\\( unitKey \\) > 0' failed" );
   EXPECT_DEATH( u.first->getAclUdf( 0, 3, noEthType, UdfBaseL3HeaderStart, 0, 1 ),
                 "Assertion 'aclType == Acl::mac\\(\\)' failed" );
   EXPECT_DEATH( u.first->getAclUdf( 0, Acl::mac_, noEthType, UdfBaseL3HeaderEnd, 0, 1 ),
                 "adjustOffset.*Assertion 'aclType == Acl::ipv6_' failed" );
   EXPECT_DEATH( u.first->getAclUdf( 0, Acl::ipv4_, noEthType, UdfBasePacketStart, 0, 1 ),
                 "Assertion 'base != UdfBasePacketStart' failed" );
}

// The hardware no longer holding what the records say is found when the
// field is looked up.
TEST( UdfDeathTest, AFieldChangedInHardwareAborts ) {
   {
      UdfBox u{ "single" };
      int qual = int( *field( u, 4, 2 ).begin() );
      Shim::DataPacketFormat format;
      format.l2 = BCM_FIELD_DATA_FORMAT_L2_ETH_II;
      format.outer_ip = BCM_FIELD_DATA_FORMAT_IP4;
      Shim::DataQualifier other;
      other.flags = BCM_FIELD_DATA_QUALIFIER_WITH_ID;
      other.qual_id = qual;
      other.offset_base = bcmFieldDataOffsetBaseOuterL3Header;
      other.offset_is( 4 );
      other.length_is( 3 );
      ASSERT_EQ( BCM_E_NONE, u.m.sdk( [ & ] {
                    return bcm_field_data_qualifier_packet_format_delete( 0, qual, &format ) +
                           bcm_field_data_qualifier_destroy( 0, qual ) +
                           bcm_field_data_qualifier_create( 0, &other );
                 } ) );
      EXPECT_DEATH( field( u, 4, 2 ), "Assertion 'udfQual.length\\(\\) == length' failed" );
   }
   {
      UdfBox u{ "trident3" };
      int udfId = int( *field( u, 4, 2 ).begin() );
      int format = *u.udf().udf( udfId )->formats.begin();
      Shim::Udf other;
      other.flags = BCM_UDF_CREATE_O_WITHID;
      other.layer = bcmUdfLayerL3OuterHeader;
      other.start_is( 32 );
      other.width_is( 24 );
      ASSERT_EQ( BCM_E_NONE, u.m.sdk( [ & ] {
                    return bcm_udf_pkt_format_delete( 0, udfId, format ) +
                           bcm_udf_destroy( 0, udfId ) +
                           bcm_udf_create( 0, nullptr, &other, &udfId );
                 } ) );
      EXPECT_DEATH( release( u, 4, 2 ),
                    "Assertion 'udf.width\\(\\) == \\( length \\* 8 \\)' failed" );
   }
}

} // namespace
} // namespace ResourceTest
