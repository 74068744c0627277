// Packet files: what a line becomes (defaults included), count, and the
// exact "<file>:<line>: <what>" of mistakes; ClassBench headers as packets.
#include <gtest/gtest.h>

#include <fstream>

#include "examples/features/FieldText.h"
#include "tests/platform/vault/VaultTestSupport.h"
#include "tools/agent/Traffic.h"

using namespace SimAgent;

namespace {

class TrafficTest : public testing::Test {
 protected:
   std::vector< TrafficPacket >
   read( const std::string & text ) {
      std::ofstream( dir.file( "t" ) ) << text;
      return readTrafficFile( dir.file( "t" ) );
   }
   std::string
   errorOf( const std::string & text ) {
      try {
         read( text );
      } catch ( const Features::FieldTextError & e ) {
         return std::string( e.what() ).substr( dir.file( "t" ).size() );
      }
      return "accepted";
   }

   VaultTest::TempDir dir;
};

TEST_F( TrafficTest, EveryFieldAndTheDefaults ) {
   std::vector< TrafficPacket > packets =
      read( "# comment\n\n"
            "unit=1 port=17 vlan=100 pri=5 smac=02:00:00:00:00:0a dmac=02:00:00:00:00:0b "
            "etype=0x0800 src=10.0.0.1 dst=10.0.0.2 proto=udp sport=53 dport=5353 dscp=46 "
            "flags=0x12 ttl=9 len=512 time=1500 count=3\n"
            "port=2   # all else default\n" );
   ASSERT_EQ( 4u, packets.size() );
   const ChipModel::Packet & p = packets[ 0 ].packet;
   EXPECT_EQ( 1u, packets[ 0 ].unit );
   EXPECT_EQ( 17, p.inPort );
   EXPECT_EQ( std::optional< U16 >( 100 ), p.vlan );
   EXPECT_EQ( 5, p.vlanPriority );
   EXPECT_EQ( 0x0a, p.srcMac[ 5 ] );
   EXPECT_EQ( 0x0b, p.dstMac[ 5 ] );
   EXPECT_EQ( 0x0a000001u, p.srcIp );
   EXPECT_EQ( 0x0a000002u, p.dstIp );
   EXPECT_EQ( 17, p.protocol );
   EXPECT_EQ( 53, p.l4SrcPort );
   EXPECT_EQ( 5353, p.l4DstPort );
   EXPECT_EQ( 46, p.dscp );
   EXPECT_EQ( 0x12, p.tcpFlags );
   EXPECT_EQ( 9, p.ttl );
   EXPECT_EQ( 512u, p.length );
   EXPECT_EQ( 1500u, p.timeUs );
   EXPECT_EQ( dir.file( "t" ) + ":3", packets[ 2 ].where );
   const ChipModel::Packet & d = packets[ 3 ].packet;
   ChipModel::Packet defaults;
   EXPECT_EQ( 0u, packets[ 3 ].unit );
   EXPECT_EQ( 2, d.inPort );
   EXPECT_FALSE( d.vlan );
   EXPECT_EQ( defaults.srcMac, d.srcMac );
   EXPECT_EQ( 0x0800, d.etherType );
   EXPECT_EQ( 0u, d.srcIp );
   EXPECT_EQ( 6, d.protocol );
   EXPECT_EQ( 0u, d.length );
}

TEST_F( TrafficTest, AMistakeNamesTheLine ) {
   struct Case {
      const char * text;
      const char * error;
   } cases[] = {
      { "port=1\nprot=tcp\n",
        ":2: unknown field 'prot' (a packet takes unit port vlan pri smac dmac etype src dst "
        "proto sport dport dscp flags ttl len time payload count)" },
      { "payload=0xabc\n", ":1: bad payload '0xabc' (0x and 1 to 64 bytes in hex)" },
      { "tcp port=1\n", ":1: 'tcp' is not a field (key=value)" },
      { "src=10.0.0.0/8\n", ":1: src of a packet is an address, not a prefix" },
      { "dport=80-81\n", ":1: dport of a packet is one port, not a range" },
      { "vlan=0\n", ":1: bad vlan '0' (1 to 4094; leave it out for an untagged packet)" },
      { "vlan=4095\n", ":1: bad vlan '4095' (a number 0 to 4094)" },
      { "count=0\n", ":1: bad count '0' (1 to 100000)" },
      { "smac=02:00:00:00:00\n", ":1: bad smac: invalid Ethernet address \"02:00:00:00:00\": "
                                 "expected 6 groups separated by ':' or 3 separated by '.'" },
   };
   for ( const Case & c : cases ) {
      EXPECT_EQ( c.error, errorOf( c.text ) ) << c.text;
   }
}

TEST_F( TrafficTest, AClassBenchHeaderIsAnIpv4PacketOnTheGivenPort ) {
   Features::ClassBenchHeader h{ 0x01020304, 0x05060708, 1024, 80, 17, 0, 5 };
   TrafficPacket t = packetOfHeader( h, 3 );
   EXPECT_EQ( 0u, t.unit );
   EXPECT_EQ( 3, t.packet.inPort );
   EXPECT_TRUE( t.packet.isIpv4() );
   EXPECT_EQ( 0x01020304u, t.packet.srcIp );
   EXPECT_EQ( 0x05060708u, t.packet.dstIp );
   EXPECT_EQ( 17, t.packet.protocol );
   EXPECT_EQ( 1024, t.packet.l4SrcPort );
   EXPECT_EQ( 80, t.packet.l4DstPort );
}

} // namespace
