// Class-id compression on the TH3-like chip: bindings in the compression
// groups as the chip model holds them, the traces that name them, the
// deliberate difference between the L4-port kinds and the others, and
// packets that the main lookup matches through the class qualifiers.
#include "tests/resources/ResourceFixture.h"

#include <gmock/gmock.h>

#include "platform/fastlog/TraceConfig.h"

namespace ResourceTest {
namespace {

using ::testing::ElementsAre;

class ClassIdTest : public testing::Test {
 protected:
   const ChipModel::Entry *
   hwEntry( U32 id, U32 unit = 0 ) const {
      return m.box.unit( unit ).state().field.entry( static_cast< int >( id ) );
   }
   U32 entriesIn( U32 group ) const { return U32( m.group( group )->rows.size() ); }
   // The compression entry's qualifier value as the model stores it.
   U64
   qualifierOf( U32 entry, int qualifier ) const {
      return ChipModel::fromBytes( hwEntry( entry )->hardware->qualifiers.at( qualifier ).data );
   }

   ManagerBox m{ { "th3", "th3" } };
   FastLog::TraceCapture trace{ "*", FastLog::TraceLevels::upTo( 8 ) }; // SDK calls at 4
};

TEST_F( ClassIdTest, AnExactValueIsProgrammedOnceAndTracedByItsKind ) {
   EXPECT_TRUE( m.manager->allocateIpProtocolClassId( 0, 6, 5 ) );
   EXPECT_TRUE( m.manager->allocateIpProtocolClassId( 0, 6, 5 ) );
   EXPECT_TRUE( m.manager->allocateEtherTypeClassId( 0, 0x88cc, 6 ) );
   EXPECT_TRUE( m.manager->allocateEtherTypeClassId( 0, 0x88cc, 6 ) );
   EXPECT_TRUE( m.manager->allocateL4SrcPortClassId( 0, 179, 7 ) );
   EXPECT_TRUE( m.manager->allocateL4SrcPortClassId( 0, 179, 7 ) );
   EXPECT_TRUE( m.manager->allocateL4DstPortClassId( 0, 80, 8 ) );
   EXPECT_TRUE( m.manager->allocateL4DstPortClassId( 0, 80, 8 ) );
   EXPECT_EQ( 4u, m.box.callCount( "bcm_field_entry_create", 0 ) );
   EXPECT_THAT( textsWith( trace, "ClassID" ),
                ElementsAre( "Unit: 0  Allocating ClassID 5 to IpProtocol 6",
                             "Unit: 0  ClassID 5 already assigned to IpProtocol 6",
                             "Unit: 0  Allocating ClassID 6 to EtherType 0x88cc",
                             "Unit: 0  ClassID 6 already assigned to EtherType 0x88cc",
                             "Unit: 0  Allocating ClassID 7 to Src Port 179",
                             "Unit: 0  ClassID 7 already assigned to Src Port 179",
                             "Unit: 0  Allocating ClassID 8 to Dst port 80",
                             "Unit: 0  ClassID 8 already assigned to Dst Port 80" ) );
   EXPECT_EQ( 2u, textsWith( trace, "bool Tessel::TesselTcamGroupManager::"
                                    "allocateIpProtocolClassId(U32, U16, U8)" )
                     .size() );

   // Each record names an installed entry of its kind's group that
   // qualifies the value and assigns the id.
   TesselCompressionClassKey key{ 7, 0 };
   Kiln::Ptr< TesselExactMatchClassEntry > port = m.manager->l4SrcPortClassId( key );
   ASSERT_TRUE( port );
   EXPECT_EQ( 179u, port->value() );
   const ChipModel::Entry * e = hwEntry( port->entry() );
   ASSERT_TRUE( e && e->installed() );
   EXPECT_EQ( int( COMPRESS_GROUP_L4_SRC_PORT_ ), e->group );
   EXPECT_EQ( 179u, qualifierOf( port->entry(), bcmFieldQualifyL4SrcPort ) );
   const ChipModel::Action * assign = e->hardware->action( bcmFieldActionNewClassId );
   ASSERT_TRUE( assign );
   EXPECT_EQ( 7u, assign->param0 );
   EXPECT_EQ( "Value('Tessel::TesselExactMatchClassEntry', ** {'key': "
              "Value('Tessel::TesselCompressionClassKey', ** {'classId': 7, 'unit': 0}), "
              "'value': 179, 'entry': " +
                 std::to_string( port->entry() ) + "})",
              port->valueText() );
   EXPECT_EQ( int( COMPRESS_GROUP_ETHER_TYPE_ ),
              hwEntry( m.manager->etherTypeClassId( { 6, 0 } )->entry() )->group );
}

TEST_F( ClassIdTest, RebindingDestroysOnlyTheOldPortEntry ) {
   ASSERT_TRUE( m.manager->allocateL4DstPortClassId( 0, 80, 3 ) );
   U32 oldPort = m.manager->l4DstPortClassId( { 3, 0 } )->entry();
   ASSERT_TRUE( m.manager->allocateL4DstPortClassId( 0, 443, 3 ) );
   U32 newPort = m.manager->l4DstPortClassId( { 3, 0 } )->entry();
   EXPECT_FALSE( hwEntry( oldPort ) );
   EXPECT_TRUE( hwEntry( newPort )->installed() );
   EXPECT_EQ( 1u, entriesIn( COMPRESS_GROUP_L4_DST_PORT_ ) );
   EXPECT_EQ( 443u, m.manager->l4DstPortClassId( { 3, 0 } )->value() );

   // The protocol kind keeps the old entry installed beside the new one.
   ASSERT_TRUE( m.manager->allocateIpProtocolClassId( 0, 6, 3 ) );
   U32 oldProtocol = m.manager->ipProtocolClassId( { 3, 0 } )->entry();
   ASSERT_TRUE( m.manager->allocateIpProtocolClassId( 0, 17, 3 ) );
   EXPECT_TRUE( hwEntry( oldProtocol )->installed() );
   EXPECT_EQ( 2u, entriesIn( COMPRESS_GROUP_IP_PROTOCOL_ ) );
   EXPECT_EQ( 17u, m.manager->ipProtocolClassId( { 3, 0 } )->value() );
   EXPECT_NE( oldProtocol, m.manager->ipProtocolClassId( { 3, 0 } )->entry() );
}

TEST_F( ClassIdTest, UnitsBindIndependently ) {
   ASSERT_TRUE( m.manager->allocateL4SrcPortClassId( 0, 22, 9 ) );
   ASSERT_TRUE( m.manager->allocateL4SrcPortClassId( 1, 23, 9 ) );
   EXPECT_EQ( 22u, m.manager->l4SrcPortClassId( { 9, 0 } )->value() );
   EXPECT_EQ( 23u, m.manager->l4SrcPortClassId( { 9, 1 } )->value() );
   EXPECT_EQ( 1u, m.box.callCount( "bcm_field_entry_create", 1 ) );
   EXPECT_TRUE( m.manager->releaseL4SrcPortClassId( 1, 9 ) );
   EXPECT_TRUE( m.manager->l4SrcPortClassIdHas( { 9, 0 } ) );
   EXPECT_EQ( 1u, entriesIn( COMPRESS_GROUP_L4_SRC_PORT_ ) );
}

TEST_F( ClassIdTest, AddressesCompareUnderTheirMaskAndFamily ) {
   IpAddrWithFullMask wide{ Wiretype::IpAddr( "10.1.2.3" ), Wiretype::IpAddr( "255.255.0.0" ) };
   IpAddrWithFullMask same{ Wiretype::IpAddr( "10.1.9.9" ), Wiretype::IpAddr( "255.255.0.0" ) };
   ASSERT_TRUE( m.manager->allocateDstIpClassId( 0, wide, 40 ) );
   ASSERT_TRUE( m.manager->allocateDstIpClassId( 0, same, 40 ) );
   EXPECT_EQ( 1u, entriesIn( COMPRESS_GROUP_DST_IP_ ) );
   Kiln::Ptr< TesselClassEntry > v4 = m.manager->dstIpClassId( { 40, 0 } );
   EXPECT_EQ( Wiretype::ipv4, v4->addressFamily() );
   EXPECT_EQ( Wiretype::IpAddr( "10.1.0.0" ), v4->ipAddr() );
   EXPECT_EQ( 0x0a010203u, qualifierOf( v4->entry(), bcmFieldQualifyDstIp ) );
   EXPECT_EQ( 0xffff0000u,
              ChipModel::fromBytes( hwEntry( v4->entry() )
                                       ->hardware->qualifiers.at( bcmFieldQualifyDstIp )
                                       .mask ) );

   // The same class id for an IPv6 destination is another binding, which
   // replaces the record; the IPv4 entry stays.
   Ip6AddrWithFullMask v6Addr{ Wiretype::Ip6Addr( "2001:db8::1" ) };
   ASSERT_TRUE( m.manager->allocateDstIp6ClassId( 0, v6Addr, 40 ) );
   ASSERT_TRUE( m.manager->allocateDstIp6ClassId( 0, v6Addr, 40 ) );
   Kiln::Ptr< TesselClassEntry > v6 = m.manager->dstIpClassId( { 40, 0 } );
   EXPECT_EQ( Wiretype::ipv6, v6->addressFamily() );
   EXPECT_EQ( v6Addr.address, v6->ip6Addr() );
   EXPECT_EQ( 2u, entriesIn( COMPRESS_GROUP_DST_IP_ ) );
   EXPECT_TRUE( hwEntry( v4->entry() )->installed() );

   // A source address with a 64-bit-wide id call of its own kind.
   ASSERT_TRUE( m.manager->allocateSrcIpClassId( 0, wide, 41 ) );
   EXPECT_EQ( int( COMPRESS_GROUP_SRC_IP_ ),
              hwEntry( m.manager->srcIpClassId( { 41, 0 } )->entry() )->group );
}

TEST_F( ClassIdTest, ReleasingAPortIdDestroysItsEntryAndAnUnboundOneTouchesNothing ) {
   m.box.clearCallLog();
   EXPECT_FALSE( m.manager->releaseL4SrcPortClassId( 0, 12 ) );
   EXPECT_FALSE( m.manager->releaseL4DstPortClassId( 0, 12 ) );
   EXPECT_TRUE( m.box.callLog().empty() );
   EXPECT_THAT( textsWith( trace, "Class ID" ),
                ElementsAre( "Unit: 0  Class ID: 12 Not available",
                             "Unit: 0  Class ID: 12 Not available" ) );

   ChipModel::ObjectCounts before = m.box.counts( 0 );
   ASSERT_TRUE( m.manager->allocateL4SrcPortClassId( 0, 4789, 12 ) );
   trace.clear();
   EXPECT_TRUE( m.manager->releaseL4SrcPortClassId( 0, 12 ) );
   EXPECT_FALSE( m.manager->l4SrcPortClassIdHas( { 12, 0 } ) );
   EXPECT_EQ( before, m.box.counts( 0 ) );
   EXPECT_THAT( textsWith( trace, "Class ID" ), ElementsAre( "Unit: 0  Freeing Class ID: 12" ) );
   EXPECT_THAT( textsWith( trace, "bcm_field_entry_destroy" ),
                ElementsAre( testing::EndsWith(
                   "bcm_field_entry_destroy( unit, l4SrcPortClassId( key )->entry() ) (rc:0)" ) ) );
}

// Class ids bound to values are what IFP entries match through the class
// qualifiers.
TEST_F( ClassIdTest, PacketsCarryTheBoundClassIdIntoTheIngressLookup ) {
   ASSERT_TRUE( m.manager->allocateL4SrcPortClassId( 0, 179, 21 ) );
   IpAddrWithFullMask net{ Wiretype::IpAddr( "192.168.0.0" ), Wiretype::IpAddr( "255.255.0.0" ) };
   ASSERT_TRUE( m.manager->allocateDstIpClassId( 0, net, 22 ) );
   const ChipModel::Profile & profile = m.box.unit( 0 ).profile();
   Shim::GroupConfig acl;
   acl.flags_or( BCM_FIELD_GROUP_CREATE_WITH_ID | BCM_FIELD_GROUP_CREATE_WITH_PORT );
   acl.group = 500;
   acl.ports = ChipModel::pipePorts( profile, 0 );
   Shim::sdk_->ob_field_qset_add( &acl.qset, bcmFieldQualifyL4SrcPortClass );
   Shim::sdk_->ob_field_qset_add( &acl.qset, bcmFieldQualifyDstIpClass );
   ASSERT_EQ( BCM_E_NONE, m.sdk( [ & ] { return bcm_field_group_config_create( 0, &acl ); } ) );
   DropEntry drop( m, 500 );
   ASSERT_EQ( BCM_E_NONE, m.sdk( [ & ] {
                 return bcm_field_qualify_L4SrcPortClass( 0, drop.id(), 21, 0xff ) +
                        bcm_field_qualify_DstIpClass( 0, drop.id(), 22, 0xff );
              } ) );
   drop.install();
   int port = portOfPipe( m, 0 );
   auto send = [ & ]( U32 dst, U16 sport ) {
      return m.box.send( 0, ChipModel::Packet::ipv4( port, 0x0a000001, dst, 6, sport, 5000 ) );
   };
   ChipModel::LookupResult bgp = send( 0xc0a80505, 179 );
   EXPECT_TRUE( bgp.dropped );
   EXPECT_EQ( std::optional< bcm_field_entry_t >(
                 m.manager->l4SrcPortClassId( { 21, 0 } )->entry() ),
              bgp.hitIn( COMPRESS_GROUP_L4_SRC_PORT_ ) );
   EXPECT_FALSE( send( 0xc0a90505, 179 ).dropped ); // outside the bound network
   EXPECT_FALSE( send( 0xc0a80505, 180 ).dropped ); // another port
   // Released, the port no longer carries the class id.
   ASSERT_TRUE( m.manager->releaseL4SrcPortClassId( 0, 21 ) );
   EXPECT_FALSE( send( 0xc0a80505, 179 ).dropped );
   drop.destroy();
   EXPECT_EQ( BCM_E_NONE, m.sdk( [ & ] { return bcm_field_group_destroy( 0, 500 ); } ) );
}

TEST_F( ClassIdTest, AGoneModuleTakesItsBindingsAndEntriesAlong ) {
   ASSERT_TRUE( m.manager->allocateL4SrcPortClassId( 1, 1, 1 ) );
   ASSERT_TRUE( m.manager->allocateIpProtocolClassId( 1, 6, 1 ) );
   ASSERT_TRUE( m.manager->allocateIpProtocolClassId( 1, 17, 2 ) );
   ASSERT_TRUE( m.manager->allocateDstIp6ClassId( 1, {}, 3 ) );
   ASSERT_TRUE( m.manager->allocateIpProtocolClassId( 0, 6, 1 ) );
   m.manager->modChipInfoDel( 2 ); // unit 1
   EXPECT_EQ( ChipModel::ObjectCounts{}, m.box.counts( 1 ) ) << m.box.counts( 1 ).text();
   EXPECT_FALSE( m.manager->ipProtocolClassIdHas( { 1, 1 } ) );
   EXPECT_FALSE( m.manager->dstIpClassIdHas( { 3, 1 } ) );
   EXPECT_TRUE( m.manager->ipProtocolClassIdHas( { 1, 0 } ) );
}

class ClassIdDeathTest : public ClassIdTest {};

TEST_F( ClassIdDeathTest, AnSdkFailureIsFatalWithTheCallText ) {
   m.box.failCall( 0, "bcm_field_entry_create", 1, BCM_E_RESOURCE );
   EXPECT_DEATH( m.manager->allocateIpProtocolClassId( 0, 6, 5 ),
                 "TesselClassIds.cpp:[0-9]+ bcm_field_entry_create\\( unit, "
                 "COMPRESS_GROUP_IP_PROTOCOL_, &entry \\) API ERROR:No resources for "
                 "operation \\(-14\\)\n.*Assertion '0' failed" );
   m.box.clearFaults();
   m.box.failCall( 0, "bcm_field_action_class_add", 1, BCM_E_PARAM );
   EXPECT_DEATH( m.manager->allocateL4DstPortClassId( 0, 80, 5 ),
                 "bcm_field_action_class_add\\( unit, entry, &class_info \\) API ERROR:" );
}

} // namespace
} // namespace ResourceTest
