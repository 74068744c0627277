// User-defined fields by mechanism: data qualifiers (single), the UDF module
// (trident3) and flex-parser chunks (th3); their limits and their matching.
#include "tests/sdk/model/ModelTestSupport.h"

using namespace ModelTest;
using ChipModel::Box;
using ChipModel::Packet;

namespace {

// A UDP packet whose payload starts with the given bytes.
Packet
udpWith( int port, std::vector< U8 > payload ) {
   Packet p = Packet::ipv4( port, 1, 2, 17, 4000, 4789 );
   p.payload = std::move( payload );
   return p;
}

void
installMatching( bcm_field_entry_t entry ) {
   ASSERT_EQ( BCM_E_NONE, bcm_field_action_add( 0, entry, bcmFieldActionDrop, 0, 0 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_install( 0, entry ) );
}

} // namespace

TEST( DataQualifiers, ExtractBytesOfThePacketFormatsAddedToThem ) {
   Box box( { "single" }, committed() );
   bcm_field_data_qualifier_t qual;
   bcm_field_data_qualifier_t_init( &qual );
   qual.offset_base = bcmFieldDataOffsetBaseOuterL4Header;
   qual.byte_offset = 8; // the first two payload bytes after the UDP header
   qual.byte_length = 2;
   ASSERT_EQ( BCM_E_NONE, bcm_field_data_qualifier_create( 0, &qual ) );
   bcm_field_data_packet_format_t format;
   bcm_field_data_packet_format_t_init( &format );
   format.outer_ip = BCM_FIELD_DATA_FORMAT_IP4;
   ASSERT_EQ( BCM_E_NONE,
              bcm_field_data_qualifier_packet_format_add( 0, qual.qual_id, &format ) );
   EXPECT_EQ( BCM_E_EXISTS,
              bcm_field_data_qualifier_packet_format_add( 0, qual.qual_id, &format ) );

   bcm_field_group_config_t config =
      groupConfig( box.unit( 0 ).profile(), 1, qsetOf( { bcmFieldQualifyIpProtocol } ), 1 );
   ASSERT_EQ( BCM_E_NONE,
              bcm_field_qset_data_qualifier_add( 0, &config.qset, qual.qual_id ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 1, 10 ) );
   const uint8_t data[] = { 0xab, 0xcd };
   const uint8_t mask[] = { 0xff, 0xff };
   EXPECT_EQ( BCM_E_PARAM, bcm_field_qualify_data( 0, 10, qual.qual_id, data, mask, 3 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_data( 0, 10, qual.qual_id, data, mask, 2 ) );
   installMatching( 10 );
   int port = portIn( box.unit( 0 ).profile(), 0 );
   EXPECT_TRUE( box.send( 0, udpWith( port, { 0xab, 0xcd, 0 } ) ).dropped );
   EXPECT_FALSE( box.send( 0, udpWith( port, { 0xab, 0xce, 0 } ) ).dropped );
   Packet v6 = Packet::ipv6( port, {}, {}, 17, 1, 2 ); // not a format added
   v6.payload = { 0xab, 0xcd };
   EXPECT_FALSE( box.send( 0, v6 ).dropped );

   uint8_t back[ 4 ];
   uint8_t backMask[ 4 ];
   uint16_t length = 0;
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_data_get( 0, 10, qual.qual_id, 4, back,
                                                      backMask, &length ) );
   EXPECT_EQ( 2, length );
   EXPECT_EQ( 0xcd, back[ 1 ] );
   // Held by a group and by its formats: not destroyed.
   EXPECT_EQ( BCM_E_BUSY, bcm_field_data_qualifier_destroy( 0, qual.qual_id ) );
}

TEST( DataQualifiers, TheUnitsQualifiersAndBytesRunOut ) {
   Box box( { "single" } );
   std::vector< int > ids;
   for ( int i = 0; i < 2; ++i ) {
      bcm_field_data_qualifier_t qual;
      bcm_field_data_qualifier_t_init( &qual );
      qual.byte_length = 16;
      ASSERT_EQ( BCM_E_NONE, bcm_field_data_qualifier_create( 0, &qual ) );
      ids.push_back( qual.qual_id );
   }
   bcm_field_data_qualifier_t more;
   bcm_field_data_qualifier_t_init( &more );
   more.byte_length = 1;
   EXPECT_EQ( BCM_E_RESOURCE,
              bcm_field_data_qualifier_create( 0, &more ) ); // 32 bytes used
   more.byte_length = 17;
   EXPECT_EQ( BCM_E_PARAM, bcm_field_data_qualifier_create( 0, &more ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_data_qualifier_destroy( 0, ids[ 0 ] ) );
   more.byte_length = 4;
   EXPECT_EQ( BCM_E_NONE, bcm_field_data_qualifier_create( 0, &more ) );
   bcm_field_data_qualifier_t read;
   ASSERT_EQ( BCM_E_NONE, bcm_field_data_qualifier_get( 0, more.qual_id, &read ) );
   EXPECT_EQ( 4, read.byte_length );
   // Other mechanisms are not there on this chip.
   bcm_udf_t udf;
   bcm_udf_t_init( &udf );
   bcm_udf_id_t udfId;
   EXPECT_EQ( BCM_E_UNAVAIL, bcm_udf_create( 0, nullptr, &udf, &udfId ) );
}

TEST( UdfModule, UdfsOnPacketFormatsMatchTheirBytes ) {
   Box box( { "trident3" }, committed() );
   Shim::Udf udf;
   udf.layer = bcmUdfLayerL4OuterHeader;
   udf.start_is( 8 * 8 );
   udf.width_is( 16 );
   bcm_udf_id_t udfId;
   ASSERT_EQ( BCM_E_NONE, bcm_udf_create( 0, nullptr, &udf, &udfId ) );
   Shim::UdfPktFormatInfo format;
   format.ethertype = 0x0800;
   format.ethertype_mask = 0xffff;
   format.ip_protocol = 17;
   format.ip_protocol_mask = 0xff;
   bcm_udf_pkt_format_id_t formatId;
   ASSERT_EQ( BCM_E_NONE, bcm_udf_pkt_format_create( 0, 0, &format, &formatId ) );
   ASSERT_EQ( BCM_E_NONE, bcm_udf_pkt_format_add( 0, udfId, formatId ) );
   EXPECT_EQ( BCM_E_BUSY, bcm_udf_pkt_format_destroy( 0, formatId ) );
   bcm_udf_pkt_format_id_t all[ 4 ];
   int actual = 0;
   ASSERT_EQ( BCM_E_NONE, bcm_udf_pkt_format_get_all( 0, udfId, 4, all, &actual ) );
   EXPECT_EQ( 1, actual );
   EXPECT_EQ( formatId, all[ 0 ] );
   Shim::Udf back;
   ASSERT_EQ( BCM_E_NONE, bcm_udf_get( 0, udfId, &back ) );
   EXPECT_EQ( 64u, back.start() );
   EXPECT_EQ( 16u, back.width() );

   bcm_field_group_config_t config =
      groupConfig( box.unit( 0 ).profile(), 1, qsetOf( { bcmFieldQualifyIpProtocol } ), 1 );
   ASSERT_EQ( BCM_E_NONE, bcm_field_qset_udf_add( 0, &config.qset, udfId ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 1, 10 ) );
   const uint8_t data[] = { 0x12, 0x34 };
   const uint8_t mask[] = { 0xff, 0xff };
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_udf( 0, 10, udfId, 2, data, mask ) );
   installMatching( 10 );
   int port = portIn( box.unit( 0 ).profile(), 1 );
   EXPECT_TRUE( box.send( 0, udpWith( port, { 0x12, 0x34 } ) ).dropped );
   EXPECT_FALSE( box.send( 0, udpWith( port, { 0x12, 0x35 } ) ).dropped );
   EXPECT_EQ( BCM_E_BUSY, bcm_udf_destroy( 0, udfId ) );
   EXPECT_EQ( "groups=1 entries=1 udfObjects=1 packetFormats=1", box.counts( 0 ).text() );
}

TEST( FlexParser, ChunksOfAnAbstractFormatAreTakenOnce ) {
   Box box( { "th3" }, committed() );
   Shim::UdfAbstractPktFormatInfo info;
   ASSERT_EQ( BCM_E_NONE, bcm_udf_abstract_pkt_format_info_get(
                             0,
                             static_cast< bcm_udf_abstract_pkt_format_t >(
                                SdkShim->AR_bcmUdfAbstractPktFormatIpv4Udp() ),
                             &info ) );
   EXPECT_EQ( 0u, info.chunk_bmap_used() );
   Shim::UdfChunkInfo chunk;
   chunk.abstract_pkt_format = bcmUdfAbstractPktFormatIpv4Udp;
   chunk.chunk_bmap = 0x3;
   chunk.offset_is( 28 ); // 20 bytes of IPv4, 8 of UDP: the payload
   chunk.width_is( 3 );
   bcm_udf_id_t udfId;
   ASSERT_EQ( BCM_E_NONE, bcm_udf_chunk_create( 0, nullptr, &chunk, &udfId ) );
   ASSERT_EQ( BCM_E_NONE, bcm_udf_abstract_pkt_format_info_get(
                             0, bcmUdfAbstractPktFormatIpv4Udp, &info ) );
   EXPECT_EQ( 0x3u, info.chunk_bmap_used() );
   EXPECT_EQ( BCM_E_BUSY, bcm_udf_chunk_create( 0, nullptr, &chunk, &udfId ) );
   chunk.chunk_bmap = 0x4;
   EXPECT_EQ( BCM_E_PARAM,
              bcm_udf_chunk_create( 0, nullptr, &chunk, &udfId ) ); // 3 > 2 bytes
   chunk.abstract_pkt_format = bcmUdfAbstractPktFormatIpv6Udp;
   chunk.chunk_bmap = 0x3; // free on another format
   bcm_udf_id_t other;
   ASSERT_EQ( BCM_E_NONE, bcm_udf_chunk_create( 0, nullptr, &chunk, &other ) );
   Shim::UdfChunkInfo back;
   ASSERT_EQ( BCM_E_NONE, bcm_udf_chunk_info_get( 0, udfId, &back ) );
   EXPECT_EQ( 28u, back.offset() );
   EXPECT_EQ( 3u, back.width() );

   bcm_field_group_config_t config =
      groupConfig( box.unit( 0 ).profile(), 1, qsetOf( { bcmFieldQualifyIpProtocol } ), 1 );
   ASSERT_EQ( BCM_E_NONE, bcm_field_qset_udf_add( 0, &config.qset, udfId ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 1, 10 ) );
   const uint8_t data[] = { 1, 2, 3 };
   const uint8_t mask[] = { 0xff, 0xff, 0xff };
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_udf( 0, 10, udfId, 3, data, mask ) );
   installMatching( 10 );
   int port = portIn( box.unit( 0 ).profile(), 0 );
   EXPECT_TRUE( box.send( 0, udpWith( port, { 1, 2, 3 } ) ).dropped );
   EXPECT_FALSE( box.send( 0, udpWith( port, { 1, 2, 4 } ) ).dropped );
   ASSERT_EQ( BCM_E_NONE, bcm_udf_destroy( 0, other ) );
   EXPECT_EQ( 1u, box.counts( 0 ).chunks );
}

TEST( OlderRangeApi, AnInvertedCheckerMatchesOutsideItsRangeAndIsHeldByItsEntry ) {
   Box box( { "single" }, committed() );
   bcm_field_range_t range;
   ASSERT_EQ( BCM_E_NONE,
              bcm_field_range_create( 0, &range, BCM_FIELD_RANGE_SRCPORT, 1024, 65535 ) );
   EXPECT_EQ( BCM_E_EXISTS,
              bcm_field_range_create_id( 0, range, BCM_FIELD_RANGE_DSTPORT, 1, 2 ) );
   bcm_field_group_config_t config =
      groupConfig( box.unit( 0 ).profile(), 1, qsetOf( { bcmFieldQualifyRangeCheck } ), 1 );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 1, 10 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_RangeCheck( 0, 10, range, 1 ) ); // inverted
   installMatching( 10 );
   int port = portIn( box.unit( 0 ).profile(), 0 );
   EXPECT_TRUE( box.send( 0, Packet::ipv4( port, 1, 2, 6, 80, 80 ) ).dropped );
   EXPECT_FALSE( box.send( 0, Packet::ipv4( port, 1, 2, 6, 8080, 80 ) ).dropped );
   EXPECT_EQ( BCM_E_BUSY, bcm_field_range_destroy( 0, range ) );
}

TEST( FlexParser, AChunkIdStandsForItsChunksOnEveryFormat ) {
   Box box( { "th3" }, committed() );
   // One 2-byte field, programmed on the UDP and TCP formats of IPv4 with
   // the same chunk, at the first payload bytes after the L4 header.
   std::vector< bcm_udf_id_t > ids;
   for ( auto [ apf, offset ] : { std::pair{ bcmUdfAbstractPktFormatIpv4Udp, 28u },
                                  std::pair{ bcmUdfAbstractPktFormatIpv4Tcp, 40u } } ) {
      Shim::UdfChunkInfo chunk;
      chunk.abstract_pkt_format = apf;
      chunk.chunk_bmap = 0x10;
      chunk.offset_is( offset );
      chunk.width_is( 2 );
      bcm_udf_id_t id;
      ASSERT_EQ( BCM_E_NONE, bcm_udf_chunk_create( 0, nullptr, &chunk, &id ) );
      ids.push_back( id );
   }
   bcm_field_group_config_t config =
      groupConfig( box.unit( 0 ).profile(), 1, qsetOf( { bcmFieldQualifyIpProtocol } ), 1 );
   for ( bcm_udf_id_t id : ids ) {
      ASSERT_EQ( BCM_E_NONE, bcm_field_qset_udf_add( 0, &config.qset, id ) );
   }
   EXPECT_EQ( 2u, box.unit( 0 ).state().udf.keyBytes( config.qset ) ); // one chunk
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 1, 10 ) );
   const uint8_t data[] = { 0xbe, 0xef };
   const uint8_t mask[] = { 0xff, 0xff };
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_udf( 0, 10, ids[ 0 ], 2, data, mask ) );
   installMatching( 10 );
   int port = portIn( box.unit( 0 ).profile(), 0 );
   EXPECT_TRUE( box.send( 0, udpWith( port, { 0xbe, 0xef } ) ).dropped );
   Packet tcp = Packet::ipv4( port, 1, 2, 6, 1, 2 );
   tcp.payload = { 0xbe, 0xef };
   EXPECT_TRUE( box.send( 0, tcp ).dropped );
   tcp.payload = { 0xbe, 0xee };
   EXPECT_FALSE( box.send( 0, tcp ).dropped );
   Packet sctp = Packet::ipv4( port, 1, 2, 132, 0, 0 ); // no chunk on its format
   sctp.payload = { 0xbe, 0xef };
   EXPECT_FALSE( box.send( 0, sctp ).dropped );
}

TEST( DataQualifiers, TheOuterL3BaseOfANonIpPacketFollowsItsL2Header ) {
   Box box( { "single" }, committed() );
   Shim::DataQualifier qual;
   qual.offset_base = bcmFieldDataOffsetBaseOuterL3Header;
   qual.length_is( 2 );
   ASSERT_EQ( BCM_E_NONE, bcm_field_data_qualifier_create( 0, &qual ) );
   Shim::DataEthertype etype;
   etype.ethertype = 0x88b5;
   ASSERT_EQ( BCM_E_NONE, bcm_field_data_qualifier_ethertype_add( 0, qual.qual_id, &etype ) );
   bcm_field_group_config_t config =
      groupConfig( box.unit( 0 ).profile(), 1, qsetOf( { bcmFieldQualifyEtherType } ), 1 );
   ASSERT_EQ( BCM_E_NONE, bcm_field_qset_data_qualifier_add( 0, &config.qset, qual.qual_id ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 1, 10 ) );
   const uint8_t data[] = { 0xca, 0xfe };
   const uint8_t mask[] = { 0xff, 0xff };
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_data( 0, 10, qual.qual_id, data, mask, 2 ) );
   installMatching( 10 );
   Packet raw = Packet::ethernet( portIn( box.unit( 0 ).profile(), 0 ), 0x88b5 );
   raw.payload = { 0xca, 0xfe };
   EXPECT_TRUE( box.send( 0, raw ).dropped );
   raw.vlan = 10; // the tag moves the L3 start, and the bytes with it
   EXPECT_TRUE( box.send( 0, raw ).dropped );
   raw.payload = { 0xca, 0xff };
   EXPECT_FALSE( box.send( 0, raw ).dropped );
}
