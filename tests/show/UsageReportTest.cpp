// The per-group usage report: its lines against the chip model's own
// figures, pipes, copies, the outer-VLAN halving, and the fatal status read.
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

TEST( UsageReportTest, OneLinePerGroupWithTheChipsFreeCount ) {
   ManagerBox m{ { "single" } };
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
   ManagerBox m{ { "single" } };
   ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_IP_ACL_ ) );
   std::string line = groupLine( 7, "", 0, freeEntries( m, 0, 7 ) );
   EXPECT_EQ( "=== TCAM summary for switch sw1 ===\n" + line, usage( m, false, 0, 3 ) );
   EXPECT_EQ( "=== TCAM summary for switch sw1 ===\n" + line, usage( m, false, 0, 0 ) );
}

// On the THx-like chip the IPv4 ACL group is one SDK group per pipe and two
// copies per pipe; the copies are never listed, but their status is read.
TEST( UsageReportTest, PerPipeGroupsNameTheirPipeAndCountTheirCopies ) {
   ManagerBox m{ { "thx" } };
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

TEST( UsageReportTest, TheOuterVlanWorkaroundHalvesTheCountsAndDropsThePipe ) {
   ManagerBox m{ { "thx" } };
   ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_IP_ACL_ ) );
   m.manager->ovidWarIs( 0, true );
   countEntries( m, 0, IFP_GROUP_IP_ACL_, 7, 5 );
   std::string expected = "=== TCAM summary for switch sw1 ===\n";
   for ( U32 pipe = 0; pipe < 4; ++pipe ) {
      U32 used = pipe == 0 ? ( 5 >> 1 ) * 2 : 0; // halved, then times the two copies
      expected += groupLine( 7, "", used, freeEntries( m, 0, pipe << 24 | 7 ) / 2 );
   }
   EXPECT_EQ( expected, usage( m, false, 0, 1 ) );
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
