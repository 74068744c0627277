// The outer-VLAN-ID workaround on a chip that shows untagged packets with
// outer VLAN 0: an entry for VLAN 100 gets a twin that catches VLAN 100's
// untagged traffic on exactly the ports that carry it untagged, and follows
// those ports as they change.
#include "tests/manager/EntryFixture.h"

#include "platform/fastlog/TraceSink.h"
#include "sdk/api/error.h"

namespace ManagerTest {
namespace {

constexpr U32 twin = 0x01000064; // pipe 1 of entry 100

class OvidWarTest : public testing::Test {
 protected:
   void
   SetUp() override {
      m.manager->vlanStateIs( vlans );
      vlans->untaggedPortsIs( 100, { 3, 5 } );
   }
   // Entry 100 for packets to `dst` on outer VLAN `vlan` under `mask`.
   void
   entryForVlan( U16 vlan, U16 mask = 0xfff ) {
      ASSERT_EQ( 100u, acl->getEntry( 0, 100, "acl" ) );
      m.matchDstIp( 100, dst );
      ASSERT_EQ( 0, m.sdk( [ & ] { return bcm_field_qualify_OuterVlanId( 0, 100, vlan, mask ); } ) );
   }
   std::optional< bcm_field_entry_t >
   hit( int port, std::optional< U16 > vlan ) {
      ChipModel::Packet packet = ChipModel::Packet::ipv4( port, 0xc0000201, dst, 6, 1234, 80 );
      packet.vlan = vlan;
      return m.send( packet ).hitIn( IFP_GROUP_IP_ACL_ );
   }
   Kiln::Ptr< TesselOvidWarSm > sm() { return m.manager->ovidWarSm( 0 ); }

   EntryBox m{ { "single" } };
   Kiln::Ptr< Agent::VlanState > vlans = new Agent::VlanState( "vlans" );
   Kiln::Ptr< TesselBoundedTcamEntryManager > acl =
      m.bounded( test1TcamGroup_, IFP_GROUP_IP_ACL_, 100, 110, tcamAllocateOnDemand_ );
   const std::optional< bcm_field_entry_t > none;
};

TEST_F( OvidWarTest, UntaggedTrafficOfTheVlanHitsTheTwinOnItsUntaggedPorts ) {
   entryForVlan( 100 );
   ASSERT_EQ( 0, acl->installEntry( 0, 100 ) );
   EXPECT_EQ( IFP_GROUP_IP_ACL_, U32( m.entry( twin )->group ) ); // the base's SDK group
   EXPECT_EQ( std::optional< bcm_field_entry_t >( 100 ), hit( 7, U16( 100 ) ) );
   EXPECT_EQ( std::optional< bcm_field_entry_t >( twin ), hit( 5, std::nullopt ) );
   EXPECT_EQ( std::optional< bcm_field_entry_t >( twin ), hit( 3, std::nullopt ) );
   EXPECT_EQ( none, hit( 7, std::nullopt ) );
   EXPECT_EQ( none, hit( 5, U16( 200 ) ) );
   EXPECT_EQ( 3u, acl->hitsForEntry( 0, 100 ) );
   EXPECT_TRUE( sm()->ovidEntries( 100 )->ovidTcamEntryHas( twin ) );
   EXPECT_EQ( 100u, sm()->ovidEntries( 100 )->ovidTcamEntry( twin ) );
   EXPECT_EQ( 100u, sm()->twinOvid( twin ) );

   // Port 5 stops carrying VLAN 100 untagged: its untagged traffic no
   // longer matches; port 3's still does.
   m.box.clearCallLog();
   vlans->untaggedPortDel( 100, 5 );
   EXPECT_EQ( 1u, m.box.callCount( "bcm_field_entry_reinstall" ) );
   EXPECT_EQ( none, hit( 5, std::nullopt ) );
   EXPECT_EQ( std::optional< bcm_field_entry_t >( twin ), hit( 3, std::nullopt ) );
   vlans->untaggedPortIs( 100, 5 );
   EXPECT_EQ( std::optional< bcm_field_entry_t >( twin ), hit( 5, std::nullopt ) );
   // Other VLANs' changes leave the twin alone.
   m.box.clearCallLog();
   vlans->untaggedPortsIs( 200, { 5 } );
   EXPECT_EQ( 0u, m.box.callCount( "bcm_field_entry_reinstall" ) );
}

TEST_F( OvidWarTest, TheTwinKeepsToTheEntrysOwnPorts ) {
   entryForVlan( 100 );
   acl->updateInPortsForEntry( 0, 100, { 3, 9 }, true, false );
   ASSERT_EQ( 0, acl->installEntry( 0, 100 ) );
   EXPECT_EQ( none, hit( 5, std::nullopt ) );
   EXPECT_EQ( std::optional< bcm_field_entry_t >( twin ), hit( 3, std::nullopt ) );
   EXPECT_EQ( std::optional< bcm_field_entry_t >( 100 ), hit( 9, U16( 100 ) ) );
   vlans->untaggedPortIs( 100, 9 );
   EXPECT_EQ( std::optional< bcm_field_entry_t >( twin ), hit( 9, std::nullopt ) );
}

// Without one exact outer VLAN the pipe-1 copy is a plain copy of the
// entry, and nothing is watched.
TEST_F( OvidWarTest, OnlyAnExactVlanMakesATwin ) {
   for ( std::pair< U16, U16 > vlanMask : { std::pair< U16, U16 >{ 4095, 0xfff },
                                            std::pair< U16, U16 >{ 100, 0xff0 } } ) {
      entryForVlan( vlanMask.first, vlanMask.second );
      ASSERT_EQ( 0, acl->installEntry( 0, 100 ) );
      EXPECT_EQ( m.entry( 100 )->hardware->qualifiers, m.entry( twin )->hardware->qualifiers );
      EXPECT_TRUE( sm()->tcamOvidMapCollection().empty() );
      acl->releaseEntry( 0, 100 );
   }
   ASSERT_EQ( 100u, acl->getEntry( 0, 100, "acl" ) );
   m.matchDstIp( 100, dst );
   ASSERT_EQ( 0, acl->installEntry( 0, 100 ) );
   EXPECT_EQ( m.entry( 100 )->hardware->qualifiers, m.entry( twin )->hardware->qualifiers );
   // The entry itself matches first; its copy never gets a packet.
   EXPECT_EQ( std::optional< bcm_field_entry_t >( 100 ), hit( 5, std::nullopt ) );
   EXPECT_TRUE( sm()->ovidEntriesCollection().empty() );
}

TEST_F( OvidWarTest, RemovingOrReleasingTheEntryForgetsItsTwin ) {
   entryForVlan( 100 );
   ASSERT_EQ( 0, acl->installEntry( 0, 100 ) );
   ASSERT_FALSE( sm()->tcamOvidMapCollection().empty() );
   ASSERT_EQ( 0, acl->removeEntry( 0, 100 ) );
   EXPECT_TRUE( sm()->tcamOvidMapCollection().empty() );
   EXPECT_TRUE( sm()->ovidEntriesCollection().empty() );
   m.box.clearCallLog();
   vlans->untaggedPortDel( 100, 5 );
   EXPECT_EQ( 0u, m.box.callCount( "bcm_field_entry_reinstall" ) );
   ASSERT_EQ( 0, acl->installEntry( 0, 100 ) );
   EXPECT_EQ( 100u, sm()->twinOvid( twin ) );
   acl->releaseEntry( 0, 100 );
   EXPECT_TRUE( sm()->tcamOvidMapCollection().empty() );
}

TEST_F( OvidWarTest, ATwinThatCannotBeReinstalledIsTracedAndTheOthersGoOn ) {
   entryForVlan( 100 );
   ASSERT_EQ( 0, acl->installEntry( 0, 100 ) );
   auto mac = m.bounded( test2TcamGroup_, IFP_GROUP_MAC_ACL_, 200, 210, tcamAllocateOnDemand_ );
   ASSERT_EQ( 200u, mac->getEntry( 0, 200, "mac" ) );
   ASSERT_EQ( 0, m.sdk( [ & ] { return bcm_field_qualify_OuterVlanId( 0, 200, 100, 0xfff ); } ) );
   ASSERT_EQ( 0, mac->installEntry( 0, 200 ) );
   ASSERT_EQ( 2u, sm()->ovidEntries( 100 )->ovidTcamEntryCollection().size() );

   FastLog::TraceCapture capture( "TesselTcamEntryManager", FastLog::TraceLevels::only( 0 ) );
   m.box.failCall( 0, "bcm_field_entry_reinstall", 1, BCM_E_RESOURCE );
   m.box.clearCallLog();
   vlans->untaggedPortDel( 100, 5 );
   EXPECT_EQ( 2u, m.box.callCount( "bcm_field_entry_reinstall" ) );
   EXPECT_EQ( ( std::vector< std::string >{ "TesselOvidWarSm::handleOvidUtBitmap Unit: 0 entry "
                                            "0x1000064 API ERROR: (rc:-14)" } ),
              capture.texts() );
}

TEST_F( OvidWarTest, TheWatchFollowsTheGroupManagersVlanState ) {
   entryForVlan( 100 );
   ASSERT_EQ( 0, acl->installEntry( 0, 100 ) );
   Kiln::Ptr< Agent::VlanState > other = new Agent::VlanState( "other" );
   m.manager->vlanStateIs( other );
   EXPECT_EQ( other, sm()->vlanState() );
   other->untaggedPortsIs( 100, { 7 } );
   EXPECT_EQ( std::optional< bcm_field_entry_t >( twin ), hit( 7, std::nullopt ) );
   EXPECT_EQ( none, hit( 5, std::nullopt ) );
   vlans->untaggedPortsIs( 100, { 8 } ); // no longer watched
   EXPECT_EQ( none, hit( 8, std::nullopt ) );
}

TEST( OvidWarUnits, OnlyGlobalStageChipsShowingVlanZeroRunTheWorkaround ) {
   EntryBox m{ { "single", "trident3", "thx" } };
   EXPECT_TRUE( m.manager->ovidWar( 0 ) );
   EXPECT_FALSE( m.manager->ovidWar( 1 ) );
   EXPECT_FALSE( m.manager->ovidWar( 2 ) );
   EXPECT_EQ( 2u, m.manager->getNumPipe( 0 ) );
   EXPECT_EQ( 1u, m.manager->getNumPipe( 0, VFP_GROUP_MAC_ACL_ ) );
   m.manager->modChipInfoDel( 1 );
   EXPECT_FALSE( m.manager->ovidWarHas( 0 ) );
   EXPECT_FALSE( m.manager->ovidWarSmHas( 0 ) );
}

} // namespace
} // namespace ManagerTest
