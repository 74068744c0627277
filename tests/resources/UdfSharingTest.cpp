// User-defined fields on every chip profile: shared and counted per unit,
// destroyed with the last user, matched by packets at their offset,
// refused within the width budgets and bounds with nothing programmed.
#include "tests/resources/UdfFixture.h"

#include <gmock/gmock.h>

#include "platform/fastlog/TraceConfig.h"
#include "tests/common/Thrown.h"

namespace ResourceTest {
namespace {

// An IPv4 field at an offset from the L3 header's start.
QualIdList
atL3( const Kiln::Ptr< TesselTcamEntryManager > & manager, U8 offset, U8 length ) {
   return manager->getAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderStart, offset, length );
}

class UdfTest : public testing::TestWithParam< ProfileFacts > {
 protected:
   std::string profile() const { return GetParam().name; }

   UdfBox u{ GetParam().name };
   ChipModel::ObjectCounts baseline = u.counts();
};

TEST_P( UdfTest, TwoGroupsAskingForOneFieldShareOneQualifier ) {
   QualIdList a =
      u.first->getAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderEnd, 8, 2 );
   ASSERT_EQ( ipv4QualCount( profile() ), a.size() );
   U32 hardware = u.udfHardware();
   EXPECT_LT( 0u, hardware );
   EXPECT_EQ( a, u.second->getAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderEnd, 8, 2 ) );
   EXPECT_EQ( a, u.first->getAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderEnd, 8, 2 ) );
   EXPECT_EQ( hardware, u.udfHardware() );

   UdfUnitKey key{ 0, a };
   EXPECT_EQ( 3u, u.m.manager->ipAclUdf( key ).refCount() );
   EXPECT_EQ( 2u, u.m.manager->groupIdToAclUdf( UdfBox::firstGroup )->udfQualId( key ) );
   EXPECT_EQ( 1u, u.m.manager->groupIdToAclUdf( UdfBox::secondGroup )->udfQualId( key ) );
   EXPECT_EQ( a, u.first->findAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderEnd, 8, 2 ) );
   EXPECT_TRUE(
      u.second->verifyMirroringAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderEnd, 8, 2 ) );
   // Another ACL type is another field.
   EXPECT_TRUE( u.first->findAclUdf( 0, Acl::ipv6_, noEthType, UdfBaseL3HeaderEnd, 8, 2 ).empty() );

   u.second->releaseAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderEnd, 8, 2 );
   u.first->releaseAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderEnd, 8, 2 );
   EXPECT_EQ( hardware, u.udfHardware() );
   EXPECT_FALSE( u.m.manager->groupIdToAclUdf( UdfBox::secondGroup )->udfQualIdHas( key ) );
   u.first->releaseAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderEnd, 8, 2 );
   EXPECT_EQ( baseline, u.counts() ) << u.counts().text();
   EXPECT_TRUE( u.m.manager->ipAclUdfCollection().empty() );
   EXPECT_TRUE( u.m.manager->pktFmtIdToUdfIdCollection().empty() );
   EXPECT_EQ( 0u, u.m.manager->flexChunkBitmap( 0 ) );
   EXPECT_FALSE(
      u.second->verifyMirroringAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderEnd, 8, 2 ) );
}

TEST_P( UdfTest, TheL3HeaderEndAddsTheFixedHeaderLength ) {
   QualIdList v4 = u.first->getAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderEnd, 4, 2 );
   QualIdList v6 = u.first->getAclUdf( 0, Acl::ipv6_, noEthType, UdfBaseL3HeaderEnd, 4, 2 );
   QualIdList start = u.first->getAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderStart, 4, 2 );
   EXPECT_EQ( 24u, u.m.manager->ipAclUdf( { 0, v4 } ).offset() );
   EXPECT_EQ( 44u, u.m.manager->ip6AclUdf( { 0, v6 } ).offset() );
   EXPECT_EQ( 4u, u.m.manager->ipAclUdf( { 0, start } ).offset() );
   for ( U32 qual : v4 ) {
      EXPECT_EQ( 24u, u.hwOffset( qual ) );
   }
   for ( U32 qual : v6 ) {
      EXPECT_EQ( 44u, u.hwOffset( qual ) );
   }
   EXPECT_EQ( "Value('Tessel::UdfUnitSpec', ** {'key': Value('Tessel::UdfUnitKey', ** "
              "{'unit': 0, 'quals': " +
                 Kiln::valueText( v4 ) +
                 "}), 'base': 4, 'offset': 24, 'length': 2, 'ethType': 4294967295, "
                 "'ipProtocol': 0, 'refCount': 1})",
              u.m.manager->ipAclUdf( { 0, v4 } ).valueText() );
   EXPECT_EQ( 24, TesselTcamGroupManager::adjustOffset( UdfBaseL3HeaderEnd, Acl::ipv4_, 4 ) );
   EXPECT_EQ( 4, TesselTcamGroupManager::adjustOffset( UdfBaseL2HeaderEnd, Acl::mac_, 4 ) );
}

TEST_P( UdfTest, MacFieldsWithAndWithoutAnEthertypeAreDifferent ) {
   QualIdList any = u.first->getAclUdf( 0, Acl::mac_, noEthType, UdfBaseL2HeaderEnd, 0, 2 );
   QualIdList lldp = u.first->getAclUdf( 0, Acl::mac_, 0x88cc, UdfBaseL2HeaderEnd, 0, 2 );
   ASSERT_FALSE( any.empty() );
   ASSERT_FALSE( lldp.empty() );
   EXPECT_NE( any, lldp );
   EXPECT_EQ( 2u, u.m.manager->macAclUdfCollection().size() );
   EXPECT_EQ( 0x88ccu, u.m.manager->macAclUdf( { 0, lldp } ).ethType() );
   u.first->releaseAclUdf( 0, Acl::mac_, 0x88cc, UdfBaseL2HeaderEnd, 0, 2 );
   u.first->releaseAclUdf( 0, Acl::mac_, noEthType, UdfBaseL2HeaderEnd, 0, 2 );
   EXPECT_EQ( baseline, u.counts() ) << u.counts().text();
}

// The field reaches the group's key, and packets whose bytes at the offset
// equal the entry's data hit it.
TEST_P( UdfTest, PacketsMatchTheBytesAtTheOffsetFromTheBase ) {
   QualIdList payload = u.first->getAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderEnd, 8, 2 );
   ASSERT_FALSE( payload.empty() );
   EXPECT_TRUE( u.first->addUdfQualifierToGroupQset( 0, payload ) ); // no group yet
   ASSERT_TRUE( u.m.manager->initializeGroup( 0, UdfBox::firstGroup ) );
   EXPECT_TRUE( u.first->addUdfQualifierToGroupQset( 0, payload ) );
   DropEntry drop( u.m, u.m.manager->getPipeGroupId( 0, 0, 0, UdfBox::firstGroup ) );
   ASSERT_EQ( BCM_E_NONE, u.qualify( drop.id(), payload, { 0xbe, 0xef } ) );
   drop.install();
   int port = portOfPipe( u.m, 0 );
   EXPECT_TRUE( u.m.box.send( 0, udpWith( port, { 0xbe, 0xef, 1 } ) ).dropped );
   EXPECT_FALSE( u.m.box.send( 0, udpWith( port, { 0xbe, 0xee, 1 } ) ).dropped );
   ChipModel::Packet tcp = ChipModel::Packet::ipv4( port, 1, 2, 6, 1, 2 );
   tcp.payload = { 0xbe, 0xef }; // 8 bytes into the TCP header: its ack number
   EXPECT_FALSE( u.m.box.send( 0, tcp ).dropped );
   // A group made before the field does not hold it.
   QualIdList other = u.first->getAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderStart, 0, 1 );
   EXPECT_FALSE( u.first->addUdfQualifierToGroupQset( 0, other ) );
   drop.destroy();
   u.m.manager->uninitializeGroup( 0, UdfBox::firstGroup );
   u.first->releaseAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderEnd, 8, 2 );
   u.first->releaseAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderStart, 0, 1 );
   EXPECT_EQ( baseline, u.counts() ) << u.counts().text();
}

TEST_P( UdfTest, MacAndIpv6FieldsMatchTheirPackets ) {
   QualIdList mac = u.first->getAclUdf( 0, Acl::mac_, noEthType, UdfBaseL2HeaderEnd, 1, 2 );
   QualIdList v6 = u.first->getAclUdf( 0, Acl::ipv6_, noEthType, UdfBaseL3HeaderEnd, 8, 1 );
   ASSERT_TRUE( u.m.manager->initializeGroup( 0, UdfBox::firstGroup ) );
   U32 group = u.m.manager->getPipeGroupId( 0, 0, 0, UdfBox::firstGroup );
   DropEntry macDrop( u.m, group );
   ASSERT_EQ( BCM_E_NONE, u.qualify( macDrop.id(), mac, { 0x22, 0x33 } ) );
   macDrop.install();
   DropEntry v6Drop( u.m, group );
   ASSERT_EQ( BCM_E_NONE, u.qualify( v6Drop.id(), v6, { 0x77 } ) );
   v6Drop.install();
   int port = portOfPipe( u.m, 0 );
   ChipModel::Packet raw = ChipModel::Packet::ethernet( port, 0x88b5 );
   raw.payload = { 0x11, 0x22, 0x33 };
   EXPECT_TRUE( u.m.box.send( 0, raw ).dropped );
   raw.payload = { 0x22, 0x33, 0x44 };
   EXPECT_FALSE( u.m.box.send( 0, raw ).dropped );
   ChipModel::Packet udp6 = ChipModel::Packet::ipv6( port, {}, {}, 17, 1, 2 );
   udp6.payload = { 0x77 };
   EXPECT_TRUE( u.m.box.send( 0, udp6 ).dropped );
   udp6.payload = { 0x78 };
   EXPECT_FALSE( u.m.box.send( 0, udp6 ).dropped );
}

TEST_P( UdfTest, AFieldBeyondTheGroupsWidthIsRefusedWithNothingProgrammed ) {
   FastLog::TraceCapture trace( "TesselTcam", FastLog::TraceLevels::only( 5 ) );
   u.first->maxUdfLengthIs( 4 );
   EXPECT_EQ( 4u, u.first->groupUdfWidthLimit( 0 ) );
   ASSERT_FALSE( atL3( u.first, 0, 3 ).empty() );
   ChipModel::ObjectCounts before = u.counts();
   u.m.box.clearCallLog();
   EXPECT_TRUE( atL3( u.first, 8, 2 ).empty() );
   EXPECT_EQ( before, u.counts() );
   EXPECT_THAT( textsWith( trace, "groupUdfWidthExceeded" ),
                testing::ElementsAre( "groupUdfWidthExceeded ACL type: 0 Ether type:4294967295 "
                                      "UDF length: 2 Max UDF length:4" ) );
   // Nothing was even asked of the chip beyond reading the existing field.
   for ( const ChipModel::CallRecord & call : u.m.box.callLog() ) {
      EXPECT_THAT( call.function, testing::Not( testing::HasSubstr( "create" ) ) );
   }
   // The other group has its own budget; an existing field is shared
   // whatever the budget.
   EXPECT_FALSE( atL3( u.second, 8, 2 ).empty() );
   EXPECT_FALSE( atL3( u.first, 8, 2 ).empty() );
}

// Only the mirroring groups match long fields; every other group's fields
// add up to 8 bytes at most.
TEST_P( UdfTest, AGroupHoldsEightBytesOfFieldsAMirroringGroupThirtyTwo ) {
   FastLog::TraceCapture trace( "TesselTcam", FastLog::TraceLevels::only( 5 ) );
   Kiln::Ptr< TesselTcamEntryManager > v6 = u.managerOf( IFP_GROUP_IPV6_ACL_ );
   Kiln::Ptr< TesselTcamEntryManager > mirror = u.managerOf( IFP_GROUP_MIRROR_ACL_1_ );
   ASSERT_TRUE( v6 && mirror );
   auto v6Field = [ & ]( const Kiln::Ptr< TesselTcamEntryManager > & manager, U8 offset,
                         U8 length ) {
      return manager->getAclUdf( 0, Acl::ipv6_, noEthType, UdfBaseL3HeaderStart, offset, length );
   };
   EXPECT_FALSE( v6Field( v6, 0, 8 ).empty() );
   EXPECT_TRUE( v6Field( v6, 8, 1 ).empty() );
   EXPECT_THAT( textsWith( trace, "groupUdfWidthExceeded" ),
                testing::ElementsAre( testing::EndsWith( "UDF length: 1 Max UDF length:8" ) ) );
   EXPECT_FALSE( v6Field( mirror, 8, 16 ).empty() );
}

TEST_P( UdfTest, AFieldBeyondTheUnitsWidthIsRefused ) {
   FastLog::TraceCapture trace( "TesselTcam", FastLog::TraceLevels::only( 5 ) );
   u.m.manager->maxUdfLengthIs( 0, 5 );
   EXPECT_EQ( 5u, u.m.manager->unitMaxUdfLength( 0 ) );
   ASSERT_FALSE( atL3( u.first, 0, 3 ).empty() );
   ChipModel::ObjectCounts before = u.counts();
   EXPECT_TRUE( atL3( u.second, 4, 3 ).empty() );
   EXPECT_EQ( before, u.counts() );
   EXPECT_THAT( textsWith( trace, "groupUdfWidthExceeded" ),
                testing::ElementsAre( testing::EndsWith( "Max UDF length:5" ) ) );
   // Where the chip joins the ACL types' widths, an IPv6 field counts too.
   bool joined = u.m.manager->chipInfo( 0 )->udfWidthsJoined();
   EXPECT_EQ( joined, u.second->getAclUdf( 0, Acl::ipv6_, noEthType, UdfBaseL3HeaderStart, 4, 3 )
                         .empty() );
}

TEST_P( UdfTest, BoundsAreCheckedBeforeAnythingIsProgrammed ) {
   auto refused = [ & ]( U8 offset, U8 length, UdfOffsetBase base, const char * text ) {
      EXPECT_EQ( text, TestText::thrownText< Kiln::RangeException >( [ & ] {
                    u.first->getAclUdf( 0, Acl::ipv6_, noEthType, base, offset, length );
                 } ) );
   };
   u.m.box.clearCallLog();
   refused( 0, 0, UdfBaseL3HeaderStart, "UdfUnitSpec::length < 1 or > 16 not allowed" );
   refused( 0, 17, UdfBaseL3HeaderStart, "UdfUnitSpec::length < 1 or > 16 not allowed" );
   refused( 128, 1, UdfBaseL3HeaderStart, "UdfUnitSpec::offset < 0 or > 127 not allowed" );
   refused( 88, 1, UdfBaseL3HeaderEnd, "UdfUnitSpec::offset < 0 or > 127 not allowed" );
   EXPECT_TRUE( u.m.box.callLog().empty() );
   EXPECT_FALSE( u.first->getAclUdf( 0, Acl::ipv6_, noEthType, UdfBaseL3HeaderEnd, 87, 16 )
                    .empty() );
}

TEST_P( UdfTest, OpenFlowGroupsKeepTheirFieldsApart ) {
   QualIdList of = u.m.manager->createGroupOpenFlowAclUdf( 0, IFP_GROUP_OPENFLOW_UDF_, 17,
                                                           UdfBaseL3HeaderEnd, 8, 2 );
   QualIdList vxlan = u.m.manager->createGroupOpenFlowAclUdf( 0, IFP_GROUP_OPENFLOW_VXLAN_, 17,
                                                              UdfBaseL3HeaderEnd, 8, 2 );
   ASSERT_FALSE( of.empty() );
   ASSERT_FALSE( vxlan.empty() );
   EXPECT_NE( of, vxlan );
   EXPECT_TRUE( u.m.manager->groupOpenFlowAclUdfValid( IFP_GROUP_OPENFLOW_UDF_ ) );
   EXPECT_TRUE( u.m.manager->groupOpenFlowVxlanAclUdfValid( IFP_GROUP_OPENFLOW_VXLAN_ ) );
   EXPECT_EQ( 17u, u.m.manager->openFlowAclUdf( { 0, of } ).ipProtocol() );
   EXPECT_TRUE( u.m.manager->openFlowVxlanAclUdfHas( { 0, vxlan } ) );
   EXPECT_TRUE( u.m.manager->ipAclUdfCollection().empty() );
   // The group's key holds the field once the group is made.
   ASSERT_TRUE( u.m.manager->initializeGroup( 0, IFP_GROUP_OPENFLOW_UDF_ ) );
   const ChipModel::Group * g = u.m.group( IFP_GROUP_OPENFLOW_UDF_ );
   for ( U32 qual : of ) {
      EXPECT_TRUE( BCM_FIELD_BITSET_TEST( g->qset.udf_map, int( qual ) ) ||
                   BCM_FIELD_BITSET_TEST( g->qset.udf_id_map, int( qual ) ) );
   }
   u.m.manager->uninitializeGroup( 0, IFP_GROUP_OPENFLOW_UDF_ );
   u.m.manager->releaseGroupOpenFlowAclUdf( 0, IFP_GROUP_OPENFLOW_UDF_, 17, UdfBaseL3HeaderEnd,
                                            8, 2 );
   u.m.manager->releaseGroupOpenFlowAclUdf( 0, IFP_GROUP_OPENFLOW_VXLAN_, 17,
                                            UdfBaseL3HeaderEnd, 8, 2 );
   EXPECT_FALSE( u.m.manager->groupOpenFlowAclUdfValid( IFP_GROUP_OPENFLOW_UDF_ ) );
   EXPECT_EQ( baseline, u.counts() ) << u.counts().text();
}

TEST_P( UdfTest, AGoneModuleTakesItsFieldsAlong ) {
   ASSERT_FALSE( u.first->getAclUdf( 0, Acl::ipv4_, noEthType, UdfBaseL3HeaderEnd, 8, 2 ).empty() );
   ASSERT_FALSE( u.first->getAclUdf( 0, Acl::ipv6_, noEthType, UdfBaseL3HeaderEnd, 8, 2 ).empty() );
   ASSERT_FALSE( u.second->getAclUdf( 0, Acl::mac_, 0x88b5, UdfBaseL2HeaderEnd, 0, 2 ).empty() );
   ASSERT_FALSE( u.m.manager
                    ->createGroupOpenFlowAclUdf( 0, IFP_GROUP_OPENFLOW_UDF_, 6,
                                                 UdfBaseL3HeaderStart, 0, 1 )
                    .empty() );
   ASSERT_TRUE( u.m.manager->initializeGroup( 0, UdfBox::firstGroup ) );
   ASSERT_TRUE( u.m.manager->initializeGroup( 0, UdfBox::secondGroup ) );
   u.m.manager->modChipInfoDel( 1 );
   EXPECT_EQ( ChipModel::ObjectCounts{}, u.counts() ) << u.counts().text();
   EXPECT_TRUE( u.m.manager->ipAclUdfCollection().empty() );
   EXPECT_TRUE( u.m.manager->macAclUdfCollection().empty() );
   EXPECT_TRUE( u.m.manager->openFlowAclUdfCollection().empty() );
   EXPECT_TRUE( u.m.manager->pktFmtIdToUdfIdCollection().empty() );
   EXPECT_TRUE( u.m.manager->groupIdToAclUdf( UdfBox::firstGroup )
                   ->udfQualIdCollection()
                   .empty() );
   EXPECT_EQ( 0u, u.m.manager->flexChunkBitmap( 0 ) );
}

INSTANTIATE_TEST_SUITE_P( Profiles, UdfTest, testing::ValuesIn( allProfiles() ), profileName );

} // namespace
} // namespace ResourceTest
