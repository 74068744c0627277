// The workload format and the field line it is made of: what a good file
// becomes, and the exact "<file>:<line>: <what>" of every kind of mistake.
#include <gtest/gtest.h>

#include <fstream>

#include "examples/features/Workload.h"
#include "tests/platform/vault/VaultTestSupport.h"

using namespace Features;

namespace {

// The text of the error reading `line` as line 3 of "w" throws.
std::string
errorOf( const std::string & line ) {
   Workload w;
   try {
      readWorkloadLine( FieldLine( line, "w:3" ), w );
   } catch ( const FieldTextError & e ) {
      return e.what();
   }
   return "accepted";
}

TEST( WorkloadFile, EveryFeatureInFileOrderWithItsFields ) {
   VaultTest::TempDir dir;
   std::ofstream( dir.file( "w" ) )
      << "# a comment\n\n"
         "acl deny src=10.0.0.0/8 dst=192.0.2.1 proto=tcp sport=1024-2047 dport=22 dscp=10 in=1,3-4\n"
         "   acl permit   # everything\n"
         "copp bgp proto=tcp dport=179 rate=512 burst=64\n"
         "qos voice dscp=46 priority=7 colour=yellow rate=100 burst=10\n"
         "qos bulk dscp=8 priority=1 dports=5000-5001,53\n"
         "mirror dns proto=udp dport=53 udf=12:0x2112A442 port=16\n";
   Workload w = readWorkloadFile( dir.file( "w" ) );
   ASSERT_EQ( 2u, w.acl.size() );
   const Ipv4Match & m = w.acl[ 0 ].match;
   EXPECT_EQ( AclRule::Action::deny, w.acl[ 0 ].action );
   EXPECT_EQ( 0x0a000000u, m.srcIp );
   EXPECT_EQ( 0xff000000u, m.srcMask );
   EXPECT_EQ( 0xc0000201u, m.dstIp );
   EXPECT_EQ( 0xffffffffu, m.dstMask );
   EXPECT_EQ( 6, m.protocol );
   EXPECT_EQ( 0xff, m.protocolMask );
   EXPECT_EQ( ( PortRange{ 1024, 2047 } ), m.srcPorts );
   EXPECT_EQ( ( PortRange{ 22, 22 } ), m.dstPorts );
   EXPECT_EQ( std::optional< U8 >( 10 ), m.dscp );
   EXPECT_EQ( ( TesselTypes::TesselPortList{ 1, 3, 4 } ), m.inPorts );
   EXPECT_EQ( "src=10.0.0.0/8 dst=192.0.2.1 proto=6 sport=1024-2047 dport=22 dscp=10 in=1,3,4",
              ipv4MatchText( m ) );
   EXPECT_EQ( ( AclRule{ AclRule::Action::permit, Ipv4Match{} } ), w.acl[ 1 ] );
   EXPECT_EQ( "any", ipv4MatchText( w.acl[ 1 ].match ) );
   ASSERT_EQ( 1u, w.copp.size() );
   EXPECT_EQ( "bgp", w.copp[ 0 ].name );
   EXPECT_EQ( ( PolicerRate{ 512, 64 } ), w.copp[ 0 ].rate );
   ASSERT_EQ( 2u, w.qos.size() );
   EXPECT_EQ( 7, w.qos[ 0 ].priority );
   EXPECT_EQ( std::optional< bcm_field_color_t >( bcmFieldColorYellow ), w.qos[ 0 ].colour );
   EXPECT_EQ( std::optional< PolicerRate >( PolicerRate{ 100, 10 } ), w.qos[ 0 ].rate );
   EXPECT_FALSE( w.qos[ 1 ].colour );
   EXPECT_FALSE( w.qos[ 1 ].rate );
   ASSERT_EQ( 1u, w.mirror.size() );
   EXPECT_EQ( 16u, w.mirror[ 0 ].port );
   EXPECT_EQ( ( std::vector< U16 >{ 53, 5000, 5001 } ), w.qos[ 1 ].match.dstPortSet );
   ASSERT_TRUE( w.mirror[ 0 ].udf );
   EXPECT_EQ( "12:0x2112a442", w.mirror[ 0 ].udf->text() );
   EXPECT_EQ( 6u, w.size() );
}

TEST( WorkloadFile, AMistakeNamesFileLineAndWhat ) {
   struct Case {
      const char * line;
      const char * error;
   } cases[] = {
      { "firewall deny", "w:3: unknown feature 'firewall' (acl, copp, qos or mirror)" },
      { "src=1.2.3.4", "w:3: a line starts with its feature: acl, copp, qos or mirror" },
      { "acl drop", "w:3: acl action 'drop' is neither permit nor deny" },
      { "acl", "w:3: acl takes permit or deny, then match fields" },
      { "acl deny extra", "w:3: acl takes permit or deny, then match fields" },
      { "acl deny dprt=22",
        "w:3: unknown field 'dprt' (acl takes src dst proto sport dport dports dscp in)" },
      { "acl deny dport=22 dport=23", "w:3: field 'dport' given twice" },
      { "acl deny dport=22 tcp", "w:3: 'tcp' is not a field (key=value); plain words come first" },
      { "acl deny dport=", "w:3: field 'dport=' needs a key and a value" },
      { "acl deny dport=70000", "w:3: bad dport '70000' (a port 0 to 65535, or LOW-HIGH)" },
      { "acl deny dport=90-80", "w:3: bad dport '90-80': the range ends below its start" },
      { "acl deny src=10.0.0.1/8", "w:3: bad src '10.0.0.1/8': host bits set past the prefix length" },
      { "acl deny src=10.0.0.0/33", "w:3: bad src prefix length in '10.0.0.0/33' (0 to 32)" },
      { "acl deny dst=10.0.0", "w:3: bad dst: invalid IPv4 address \"10.0.0\": expected 4 numbers "
                               "separated by '.', got 3" },
      { "acl deny proto=sctpx", "w:3: bad proto 'sctpx' (tcp, udp, icmp, igmp, gre, ospf, pim, vrrp or 0 to 255)" },
      { "acl deny dscp=64", "w:3: bad dscp '64' (a number 0 to 63)" },
      { "acl deny in=1,300", "w:3: bad in '1,300' (ports 0 to 223, as 1,2,5-8)" },
      { "copp bgp proto=tcp", "w:3: copp class 'bgp' needs rate= and burst=" },
      { "copp bgp rate=10", "w:3: rate= and burst= go together (kbit/s and kbit)" },
      { "copp bgp priority=3 rate=1 burst=1",
        "w:3: unknown field 'priority' (copp takes src dst proto sport dport dports dscp in rate "
        "burst)" },
      { "qos voice dscp=46", "w:3: qos class 'voice' needs priority=" },
      { "qos voice priority=8", "w:3: bad priority '8' (a number 0 to 7)" },
      { "qos voice priority=1 colour=blue", "w:3: bad colour 'blue' (green, yellow or red)" },
      { "mirror s1 proto=udp", "w:3: mirror session 's1' needs port=" },
      { "mirror proto=udp port=3",
        "w:3: mirror takes a session name, then match fields, udf= and port=" },
      { "qos m priority=1 dport=5 dports=6", "w:3: dport= and dports= do not go together" },
      { "qos m priority=1 dports=5,x", "w:3: bad dports '5,x' (L4 ports 0 to 65535, as 53,5000-5003)" },
      { "qos m priority=1 dports=1-17", "w:3: bad dports '1-17' (L4 ports 0 to 65535, as 53,5000-5003)" },
      { "qos m priority=1 dports=1-16,20", "w:3: bad dports '1-16,20': 1 to 16 ports" },
      { "mirror s port=1 udf=108:0x01",
        "w:3: bad udf '108:0x01' (OFFSET:0xHEX, offset 0 to 107 from the L4 header, 1 to 16 bytes)" },
      { "mirror s port=1 udf=8:0x1",
        "w:3: bad udf '8:0x1' (OFFSET:0xHEX, offset 0 to 107 from the L4 header, 1 to 16 bytes)" },
   };
   for ( const Case & c : cases ) {
      EXPECT_EQ( c.error, errorOf( c.line ) ) << c.line;
   }
}

// A match becomes one key per pair of port prefixes; together the keys
// take exactly the ports of the ranges.
TEST( Ipv4Keys, PortRangesMultiplyAndCoverExactly ) {
   Ipv4Match match;
   EXPECT_EQ( 1u, ipv4Keys( match ).size() );
   EXPECT_EQ( 0, ipv4Keys( match )[ 0 ].srcPort.mask );
   match.srcPorts = PortRange{ 1024, 65535 }; // 6 prefixes
   match.dstPorts = PortRange{ 20, 23 };      // 20-23: one prefix
   EXPECT_EQ( 6u, ipv4Keys( match ).size() );
   match.dstPorts = PortRange{ 21, 23 };      // 21, 22-23
   std::vector< Ipv4Key > keys = ipv4Keys( match );
   ASSERT_EQ( 12u, keys.size() );
   for ( U32 sport : { 0u, 1023u, 1024u, 40000u, 65535u } ) {
      for ( U32 dport : { 20u, 21u, 22u, 23u, 24u } ) {
         int hits = 0;
         for ( const Ipv4Key & key : keys ) {
            hits += ( sport & key.srcPort.mask ) == key.srcPort.value &&
                    ( dport & key.dstPort.mask ) == key.dstPort.value;
            EXPECT_EQ( match.srcIp, key.match.srcIp );
         }
         EXPECT_EQ( sport >= 1024 && dport >= 21 && dport <= 23 ? 1 : 0, hits )
            << sport << " " << dport;
      }
   }
   // A range a checker holds, or a set class ids hold, takes one row.
   EXPECT_EQ( 2u, ipv4Keys( match, KeyResources{ 7, 0, std::nullopt } ).size() );
   EXPECT_EQ( 1u, ipv4Keys( match, KeyResources{ 7, 8, std::nullopt } ).size() );
   match.dstPortSet = { 53, 80, 443 };
   EXPECT_EQ( 18u, ipv4Keys( match ).size() );
   EXPECT_EQ( 6u, ipv4Keys( match, KeyResources{ 0, 0, ClassMatch{ 64, 0xfc } } ).size() );
}

} // namespace
