// The per-group usage report: its lines against the chip model's own
// figures, pipes, copies, the outer-VLAN halving, and the fatal status read.
#include "tests/manager/EntryFixture.h"
#include "tests/show/ShowFixture.h"

namespace {

using namespace ShowTest;

std::string
usage( ManagerBox & m, bool detail, U32 unit, S8 pipe ) {
   return written( [ & ]( U32 fd ) { m.manager->showTcamUsage( "sw1", fd, detail, unit, pipe ); } );
}

std::string
groupLine( U32 group, const std::string & pipeText, U32 used, int free ) {
   return "TCAM group " + std::to_string( group ) + pipeText + " uses " + std::to_string( used ) +
          ( used == 1 ? " entry" : " entries" ) + " and can use up to " + std::to_string( free ) +
          " more.\n";
}

std::string
entryLine( U32 entry, U64 hits, const std::string & name ) {
   char line[ 256 ];
   std::snprintf( line, sizeof line, "    %-10d %12lld hits - %s\n", int( entry ),
                  static_cast< long long >( hits ), name.c_str() );
   return line;
}

// The format tests start from bare units: the reservations made at
// start-up would add their groups to every report.
TEST( UsageReportTest, OneLinePerGroupWithTheChipsFreeCount ) {
   ManagerBox m{ { "trident3" }, true, Reservations::release };
   ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_IP_ACL_ ) );
   ASSERT_TRUE( m.manager->initializeGroup( 0, EFP_GROUP_IP_ACL_ ) );
   countEntries( m, 0, IFP_GROUP_IP_ACL_, IFP_GROUP_IP_ACL_, 1 );
   EXPECT_EQ( "=== TCAM summary for switch sw1 ===\n" +
                 groupLine( 7, "", 1, freeEntries( m, 0, 7 ) ) +
                 groupLine( 60, "", 0, freeEntries( m, 0, 60 ) ),
              usage( m, false, 0, -1 ) );
   countEntries( m, 0, IFP_GROUP_IP_ACL_, IFP_GROUP_IP_ACL_, 1 );
   EXPECT_EQ( "=== TCAM detail for switch sw1 ===\n" +
                 groupLine( 7, "", 2, freeEntries( m, 0, 7 ) ) +
                 groupLine( 60, "", 0, freeEntries( m, 0, 60 ) ),
              usage( m, true, 0, -1 ) );
}

TEST( UsageReportTest, AUnitWithoutGroupsOrAnUnknownUnitGivesTheHeaderOnly ) {
   ManagerBox m{ { "single" } };
   ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_IP_ACL_ ) );
   EXPECT_EQ( "=== TCAM summary for switch sw1 ===\n", usage( m, false, 7, -1 ) );
}

TEST( UsageReportTest, SinglePipeChipsNeverShowAPipeWhateverIsAsked ) {
   ManagerBox m{ { "trident3" }, true, Reservations::release };
   ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_IP_ACL_ ) );
   std::string line = groupLine( 7, "", 0, freeEntries( m, 0, 7 ) );
   EXPECT_EQ( "=== TCAM summary for switch sw1 ===\n" + line, usage( m, false, 0, 3 ) );
   EXPECT_EQ( "=== TCAM summary for switch sw1 ===\n" + line, usage( m, false, 0, 0 ) );
}

// On the THx-like chip the IPv4 ACL group is one SDK group per pipe and two
// copies per pipe; the copies are never listed, but their status is read.
TEST( UsageReportTest, PerPipeGroupsNameTheirPipeAndCountTheirCopies ) {
   ManagerBox m{ { "thx" }, true, Reservations::release };
   ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_IP_ACL_ ) );
   ASSERT_TRUE( m.manager->initializeGroup( 0, VFP_GROUP_MAC_ACL_ ) );
   ASSERT_EQ( 2u, m.manager->getNumCopiesPerPipe( 0, IFP_GROUP_IP_ACL_ ) );
   countEntries( m, 0, IFP_GROUP_IP_ACL_, 2u << 24 | 7, 1 );
   std::string all = "=== TCAM summary for switch sw1 ===\n";
   for ( U32 pipe = 0; pipe < 4; ++pipe ) {
      all += groupLine( 7, " in PIPE " + std::to_string( pipe ), pipe == 2 ? 2 : 0,
                        freeEntries( m, 0, pipe << 24 | 7 ) );
   }
   std::string vfp = groupLine( 74, "", 0, freeEntries( m, 0, 74 ) );
   m.box.clearCallLog();
   EXPECT_EQ( all + vfp, usage( m, false, 0, -1 ) );
   EXPECT_EQ( 9u, m.box.callCount( "bcm_field_group_status_get", 0 ) ); // 4 x 2 copies + VFP
   EXPECT_EQ( "=== TCAM summary for switch sw1 ===\n" +
                 groupLine( 7, " in PIPE 2", 2, freeEntries( m, 0, 2u << 24 | 7 ) ) + vfp,
              usage( m, false, 0, 2 ) );
}

// The single-pipe chip shows untagged packets with outer VLAN 0, so every
// ingress entry has a twin in its SDK group: ingress counts are halved and
// no pipe is named. Egress entries have no twins and count as they are.
TEST( UsageReportTest, TheOuterVlanWorkaroundHalvesTheIngressCountsAndDropsThePipe ) {
   ManagerBox m{ { "single" }, true, Reservations::release };
   ASSERT_TRUE( m.manager->ovidWar( 0 ) );
   ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_IP_ACL_ ) );
   ASSERT_TRUE( m.manager->initializeGroup( 0, EFP_GROUP_IP_ACL_ ) );
   countEntries( m, 0, IFP_GROUP_IP_ACL_, IFP_GROUP_IP_ACL_, 5 );
   countEntries( m, 0, EFP_GROUP_IP_ACL_, EFP_GROUP_IP_ACL_, 3 );
   std::string expected = "=== TCAM summary for switch sw1 ===\n" +
                          groupLine( 7, "", 5 >> 1, freeEntries( m, 0, 7 ) / 2 ) +
                          groupLine( 60, "", 3, freeEntries( m, 0, 60 ) );
   EXPECT_EQ( expected, usage( m, false, 0, 1 ) );
   EXPECT_EQ( expected, usage( m, false, 0, -1 ) );
}

// The detail lists every entry of a reservation with the hits of all its
// copies: tagged traffic hits the entry, untagged traffic of its VLAN the
// twin, and both count.
TEST( UsageReportTest, TheDetailListsEachEntryWithTheHitsOfAllItsCopies ) {
   ManagerTest::EntryBox m{ { "single" }, true, Reservations::release };
   Kiln::Ptr< Agent::VlanState > vlans = new Agent::VlanState( "vlans" );
   m.manager->vlanStateIs( vlans );
   vlans->untaggedPortsIs( 100, { 3 } );
   Kiln::Ptr< TesselUnboundedTcamEntryManager > acl =
      m.manager->unboundedEntryManager( ipAclTcamGroup_ );
   U32 vlanEntry = acl->getEntry( 0, "vlan 100" );
   U32 other = acl->getEntry( 0, "other" );
   ASSERT_TRUE( vlanEntry && other );
   m.matchDstIp( vlanEntry, 0x0a000001 );
   ASSERT_EQ( 0, m.sdk( [ & ] {
                 return bcm_field_qualify_OuterVlanId( 0, int( vlanEntry ), 100, 0xfff );
              } ) );
   m.matchDstIp( other, 0x0a000002 );
   ASSERT_EQ( 0, acl->installEntry( 0, vlanEntry ) );
   ASSERT_EQ( 0, acl->installEntry( 0, other ) );
   ChipModel::Packet tagged = ChipModel::Packet::ipv4( 7, 1, 0x0a000001, 6, 1, 2 );
   tagged.vlan = U16( 100 );
   m.send( tagged );
   m.send( ChipModel::Packet::ipv4( 3, 1, 0x0a000001, 6, 1, 2 ) ); // untagged: the twin
   for ( int i = 0; i < 3; ++i ) {
      m.sendTo( 7, 0x0a000002 );
   }
   ASSERT_EQ( 1u, acl->hitsForPipeEntry( 0, vlanEntry | 1u << 24 ) );

   std::string group = groupLine( 7, "", 2, freeEntries( m, 0, 7 ) / 2 );
   EXPECT_EQ( "=== TCAM detail for switch sw1 ===\n" + group + "  IP ACL uses 2 entries.\n" +
                 entryLine( vlanEntry, 2, "vlan 100" ) + entryLine( other, 3, "other" ),
              usage( m, true, 0, -1 ) );
   EXPECT_EQ( "=== TCAM summary for switch sw1 ===\n" + group + "  IP ACL uses 2 entries.\n",
              usage( m, false, 0, -1 ) );
}

// A per-pipe group's line lists the hits its entries took in that pipe; an
// at-beginning reservation tells how much of its range is in use.
TEST( UsageReportTest, APipesLineCountsThatPipesHitsAndReservationsTheirUse ) {
   ManagerTest::EntryBox m{ { "thx" } };
   Kiln::Ptr< TesselUnboundedTcamEntryManager > acl =
      m.manager->unboundedEntryManager( ipAclTcamGroup_ );
   U32 entry = acl->getEntry( 0, "acl" );
   ASSERT_NE( 0u, entry );
   m.matchDstIp( entry, 0x0a000001 );
   ASSERT_EQ( 0, acl->installEntry( 0, entry ) );
   for ( U32 packets = 0; packets < 5; ++packets ) {
      m.sendTo( m.port( packets < 2 ? 0 : 2, packets ), 0x0a000001 );
   }
   std::string pipe2 = usage( m, true, 0, 2 );
   EXPECT_NE( std::string::npos,
              pipe2.find( groupLine( 7, " in PIPE 2", 2, freeEntries( m, 0, 2u << 24 | 7 ) ) +
                          "  IP ACL uses 2 entries.\n" + entryLine( entry, 3, "acl" ) ) )
      << pipe2;
   EXPECT_NE( std::string::npos, usage( m, true, 0, 0 ).find( entryLine( entry, 2, "acl" ) ) );

   Kiln::Ptr< TesselBoundedTcamEntryManager > dot1x = m.manager->entryManager( dot1xTHxTcamGroup_ );
   ASSERT_TRUE( dot1x );
   ASSERT_NE( 0u, dot1x->getEntry( 0, dot1x->baseEntry(), "dot1x" ) );
   EXPECT_NE( std::string::npos,
              pipe2.find( "  Dot1x traffic reserves 2 entries (0 used).\n" ) );
   EXPECT_NE( std::string::npos,
              usage( m, true, 0, 2 ).find( "  Dot1x traffic reserves 2 entries (1 used).\n" +
                                           entryLine( dot1x->baseEntry(), 0, "dot1x" ) ) );
}

TEST( UsageReportDeathTest, AFailingStatusReadIsFatal ) {
   ManagerBox m{ { "single" } };
   ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_IP_ACL_ ) );
   m.box.failCall( 0, "bcm_field_group_status_get", 1, BCM_E_INTERNAL );
   EXPECT_DEATH( usage( m, false, 0, -1 ),
                 "TesselTcamHelper.cpp:[0-9]+ bcm_field_group_status_get\\( unit, groupId, "
                 "&status \\) API ERROR:.* \\(-[0-9]+\\)" );
}

} // namespace
