// The entry dump: an entry made and hit on the chip model, decoded back to
// text; the qualifier printers' rules; and what a failing read does.
#include "show/TesselTcamShow.h"
#include "tests/show/ShowFixture.h"

namespace {

using namespace ShowTest;

constexpr int entryId = 0x800001;

class EntryDumpTest : public testing::Test {
 protected:
   // An IPv4 ACL entry on the single-pipe chip, installed and hit three
   // times on port 1.
   void
   SetUp() override {
      ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_IP_ACL_ ) );
      bcm_pbmp_t ports, mask;
      BCM_PBMP_CLEAR( ports );
      BCM_PBMP_CLEAR( mask );
      BCM_PBMP_PORT_ADD( ports, 1 );
      BCM_PBMP_PORT_ADD( ports, 2 );
      for ( int port = 0; port < 32; ++port ) {
         BCM_PBMP_PORT_ADD( mask, port );
      }
      ASSERT_EQ( BCM_E_NONE, m.sdk( [ & ] {
         int group = IFP_GROUP_IP_ACL_;
         int rc = bcm_field_entry_create_id( 0, group, entryId );
         rc |= bcm_field_qualify_SrcIp( 0, entryId, 0x0a010203, 0xffffff00 );
         rc |= bcm_field_qualify_DstIp( 0, entryId, 0xc0a80001, 0xffffffff );
         rc |= bcm_field_qualify_InPorts( 0, entryId, ports, mask );
         rc |= bcm_field_qualify_IpProtocol( 0, entryId, 6, 0xff );
         rc |= bcm_field_qualify_L4DstPort( 0, entryId, 443, 0xffff );
         rc |= bcm_field_qualify_IpType( 0, entryId, bcmFieldIpTypeIpv4Any );
         rc |= bcm_field_action_add( 0, entryId, bcmFieldActionDrop, 0, 0 );
         rc |= bcm_field_action_add( 0, entryId, bcmFieldActionRedirectPort, 0, 5 );
         rc |= bcm_field_action_add( 0, entryId, bcmFieldActionCosQNew, 3, 0x10 );
         bcm_field_stat_t types[] = { bcmFieldStatPackets, bcmFieldStatBytes };
         int stat = 0;
         rc |= bcm_field_stat_create( 0, group, 2, types, &stat );
         rc |= bcm_field_entry_stat_attach( 0, entryId, stat );
         return rc | bcm_field_entry_install( 0, entryId );
      } ) );
      for ( int i = 0; i < 3; ++i ) {
         m.box.send( 0, ChipModel::Packet::ipv4( 1, 0x0a010277, 0xc0a80001, 6, 1000, 443 ) );
      }
   }

   std::string
   diag( U32 id ) {
      std::ostringstream out;
      showDiagEntryTcamUsage( out, 0, id );
      return out.str();
   }

   ManagerBox m{ { "single" } };
};

const char * const dumped = R"(   Group: 7

=== Qualifiers ===
SrcIp:
   data: 10.1.2.3
   mask: 255.255.255.0
DstIp:
   data: 192.168.0.1
   mask: 255.255.255.255
InPorts:
   data: 0x00000000000000000000000000000000000000000000000000000006
   mask: 0x000000000000000000000000000000000000000000000000ffffffff
L4DstPort:
   data: 0x1bb (443)
   mask: 0xffff (65535)
IpProtocol:
   data: 0x6 (6)
   mask: 0xff (255)
qualifier with ID 27 is unknown
   (Ttl)
IpType:
   Ipv4Any

=== Actions ===
Drop
RedirectPort:
   param1: 0x5 (5)
CosQNew:
   param0: 0x3 (3)
   param1: 0x10 (16)

=== Statistics ===
Counters: 
   Packets: 3
   Bytes: 192
)";

TEST_F( EntryDumpTest, AnEntryDecodedFromTheChip ) {
   EXPECT_EQ( dumped, diag( entryId ) );
   std::string report =
      written( [ & ]( U32 fd ) { m.manager->showEntryTcamUsage( "sw1", fd, 0, entryId ); } );
   const std::string heading =
      "\n=== TCAM entry information for sw1; entry ID: 0x800001 (8388609) ===\n";
   EXPECT_EQ( heading, report.substr( 0, heading.size() ) );
   EXPECT_EQ( dumped, report.substr( heading.size() ) );
}

TEST_F( EntryDumpTest, AnUnknownEntryIsNotFound ) {
   EXPECT_EQ( "entry 0x5 (5) not found.\n\n", diag( 5 ) );
   EXPECT_EQ( "\n=== TCAM entry information for sw1; entry ID: 0xffffffff (-1) ===\n"
              "entry 0xffffffff (4294967295) not found.\n\n",
              written( [ & ]( U32 fd ) { m.manager->showEntryTcamUsage( "sw1", fd, 0, ~0u ); } ) );
}

// A qualifier read that fails for a reason other than "never set" is
// reported on standard error; the rest of the dump is still written.
TEST_F( EntryDumpTest, AFailingQualifierReadIsReportedAndSkipped ) {
   m.box.failCall( 0, "bcm_field_qualify_SrcIp_get", 1, BCM_E_INTERNAL );
   testing::internal::CaptureStderr();
   std::string text = diag( entryId );
   std::string error = testing::internal::GetCapturedStderr();
   EXPECT_NE( std::string::npos,
              error.find( " bcm_field_qualify_SrcIp_get( unit, entryId, &dataIp, &maskIp ) API "
                          "ERROR:" ) );
   EXPECT_EQ( std::string::npos, text.find( "SrcIp:" ) );
   EXPECT_NE( std::string::npos, text.find( "DstIp:\n   data: 192.168.0.1\n" ) );
   EXPECT_NE( std::string::npos, text.find( "Counters: \n   Packets: 3\n" ) );
}

TEST_F( EntryDumpTest, AnEntryWithoutCountersShowsNone ) {
   int other = entryId + 1;
   ASSERT_EQ( BCM_E_NONE, m.sdk( [ & ] { return bcm_field_entry_create_id( 0, 7, other ); } ) );
   std::string text = diag( U32( other ) );
   EXPECT_NE( std::string::npos, text.find( "\n=== Actions ===\n\n=== Statistics ===\n" ) );
   EXPECT_EQ( text.size() - 20, text.rfind( "\n=== Statistics ===\n" ) );
}

TEST_F( EntryDumpTest, UnknownQualifiersAreNamedWhenTheNameTableHasThem ) {
   std::ostringstream out;
   const int ids[] = { bcmFieldQualifyMixedSrcClassId, 500, -1 };
   printTcamEntryQualifiers( out, 0, entryId, ids );
   EXPECT_EQ( "\n=== Qualifiers ===\n"
              "qualifier with ID 87 is unknown\n   (MixedSrcClassId)\n"
              "qualifier with ID 500 is unknown\n",
              out.str() );
}

TEST_F( EntryDumpTest, StageSelectorsPrintNothing ) {
   std::ostringstream out;
   const int ids[] = { bcmFieldQualifyStageIngress, bcmFieldQualifyStageLookup,
                       bcmFieldQualifyStageEgress, bcmFieldQualifyStageClass, -1 };
   printTcamEntryQualifiers( out, 0, entryId, ids );
   EXPECT_EQ( "\n=== Qualifiers ===\n", out.str() );
}

// IPv6 masks whose first 32 bits are zero print nothing.
TEST( Ip6QualifierTest, OnlyMasksReachingIntoTheFirst32BitsAreShown ) {
   ManagerBox m{ { "single" } };
   ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_IPV6_ACL_ ) );
   bcm_ip6_t data = { 0x20, 0x01, 0x0d, 0xb8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1 };
   bcm_ip6_t lowMask = {};
   bcm_ip6_t highMask = {};
   for ( int i = 4; i < 16; ++i ) {
      lowMask[ i ] = 0xff;
   }
   for ( int i = 0; i < 8; ++i ) {
      highMask[ i ] = 0xff;
   }
   const int ids[] = { bcmFieldQualifySrcIp6, bcmFieldQualifyDstIp6, -1 };
   ASSERT_EQ( BCM_E_NONE, m.sdk( [ & ] {
      int group = IFP_GROUP_IPV6_ACL_;
      int rc = bcm_field_entry_create_id( 0, group, entryId );
      rc |= bcm_field_qualify_SrcIp6( 0, entryId, data, lowMask );
      return rc | bcm_field_qualify_DstIp6( 0, entryId, data, highMask );
   } ) );
   std::ostringstream out;
   printTcamEntryQualifiers( out, 0, entryId, ids );
   EXPECT_EQ( "\n=== Qualifiers ===\nDstIp6:\n   data: 2001:db8::1\n   mask: ffff:ffff:ffff:ffff::\n",
              out.str() );
}

TEST( ValuePrinterTest, AddressesAndPortSetsInThePlatformsForms ) {
   std::ostringstream out;
   printIpData( out, "SrcIp", 0x0a000001, 0xffff0000 );
   bcm_mac_t mac = { 0x00, 0x1c, 0x73, 0xaa, 0xbb, 0x0c };
   bcm_mac_t macMask = { 0xff, 0xff, 0xff, 0, 0, 0 };
   printMacData( out, "DstMac", mac, macMask );
   bcm_pbmp_t empty;
   BCM_PBMP_CLEAR( empty );
   printPbmpData( out, "InPorts", empty, empty );
   printEnumType( out, "IpFrag", "Non" );
   EXPECT_EQ( "SrcIp:\n   data: 10.0.0.1\n   mask: 255.255.0.0\n"
              "DstMac:\n   data: 00:1c:73:aa:bb:0c\n   mask: ff:ff:ff:00:00:00\n"
              "IpFrag:\n   Non\n",
              out.str() );
}

} // namespace
