// Installation proved by packets: an entry restricted to some ports matches
// exactly those, once, in whatever pipe and copy sees them; range checks
// use each pipe's own range; redirects name each pipe's loopback port.
// Removal, enabling, priorities and the fatal paths.
#include "tests/manager/EntryFixture.h"

#include "platform/fastlog/TraceSink.h"
#include "sdk/api/error.h"
#include "sdk/api/range.h"

namespace ManagerTest {
namespace {

class EntryPortsTest : public testing::TestWithParam< ProfileFacts > {
 protected:
   // Pipe 0 and the farthest of pipes 1 and 2 the chip has.
   U32 farPipe() const { return std::min( 2u, m.modelPipes() - 1 ); }

   EntryBox m{ { GetParam().name } };
   Kiln::Ptr< TesselBoundedTcamEntryManager > acl =
      m.bounded( test1TcamGroup_, IFP_GROUP_IP_ACL_, 100, 110, tcamAllocateOnDemand_ );
};

TEST_P( EntryPortsTest, AnEntryMatchesItsPortsOnceWhateverPipeAndCopySeesThem ) {
   ASSERT_EQ( 100u, acl->getEntry( 0, 100, "acl" ) );
   m.matchDstIp( 100, dst );
   U32 lastFront = U32( ChipModel::frontPanelPorts( m.profile(), 0 ).size() ) - 1;
   std::vector< int > ports = { m.port( 0, 0 ), m.port( 0, lastFront ), m.port( farPipe(), 1 ),
                                m.port( farPipe(), 2 ) };
   TesselTypes::TesselPortList list;
   for ( int port : ports ) {
      list.portIs( U32( port ) );
   }
   acl->updateInPortsForEntry( 0, 100, list, false, false );
   ASSERT_EQ( 0, acl->installEntry( 0, 100 ) );
   EXPECT_FALSE( acl->tcamEntryBcmPbmp( 0, 100 ) );

   U32 copies = GetParam().portAclCopies ? 2 : 1;
   for ( U32 id : copyIds( 100, GetParam().pipes(), copies ) ) {
      ASSERT_TRUE( m.entry( id ) && m.entry( id )->installed() ) << std::hex << id;
   }
   U64 bytes = 0;
   for ( int port : ports ) {
      ChipModel::LookupResult result = m.sendTo( port, dst );
      std::vector< U32 > hit = EntryBox::copiesHit( result, 100 );
      ASSERT_EQ( 1u, hit.size() ) << "port " << port;
      if ( GetParam().ingressPipes > 1 ) {
         EXPECT_EQ( *ChipModel::pipeOfPort( m.profile(), port ), ( hit[ 0 ] >> 24 ) & 7 );
      }
      bytes += ChipModel::Packet::ipv4( port, 0xc0000201, dst, 6, 1234, 80 ).wireLength();
   }
   for ( int port : { m.port( 0, 3 ), m.port( m.modelPipes() - 1, 4 ) } ) {
      EXPECT_TRUE( EntryBox::copiesHit( m.sendTo( port, dst ), 100 ).empty() ) << port;
   }
   EXPECT_EQ( 4u, acl->hitsForEntry( 0, 100 ) );
   EXPECT_EQ( bytes, acl->byteHitsForEntry( 0, 100 ) );
}

// Both copies of a pipe see all of its packets: each matches half of the
// pipe's ports, so an entry for every port still counts a packet once.
TEST_P( EntryPortsTest, CopiesOfAPipeShareItsPortsWithoutARecord ) {
   ASSERT_EQ( 100u, acl->getEntry( 0, 100, "acl" ) );
   m.matchDstIp( 100, dst );
   ASSERT_EQ( 0, acl->installEntry( 0, 100 ) );
   std::vector< int > pipe0 = ChipModel::frontPanelPorts( m.profile(), 0 );
   pipe0.push_back( ChipModel::loopbackPort( m.profile(), 0 ) );
   for ( int port : pipe0 ) {
      EXPECT_EQ( 1u, EntryBox::copiesHit( m.sendTo( port, dst ), 100 ).size() ) << port;
   }
   EXPECT_EQ( pipe0.size(), acl->hitsForEntry( 0, 100 ) );
   if ( GetParam().portAclCopies ) {
      EXPECT_EQ( pipe0.size() / 2, acl->hitsForPipeEntry( 0, 0x08000064 ) );
   }
}

INSTANTIATE_TEST_SUITE_P( Profiles, EntryPortsTest, testing::ValuesIn( allProfiles() ),
                          profileName );

class EntryInstallTest : public testing::Test {
 protected:
   EntryBox m{ { "thx" } };
   Kiln::Ptr< TesselBoundedTcamEntryManager > copp =
      m.bounded( test2TcamGroup_, IFP_GROUP_COPP_IP_, 100, 110, tcamAllocateOnDemand_ );
   const int redirect = bcmFieldActionRedirectPbmp;
};

TEST_F( EntryInstallTest, ASinglePortIsMatchedWithTheInPortQualifierAndAPermanentRecordStays ) {
   ASSERT_EQ( 100u, copp->getEntry( 0, 100, "copp" ) );
   m.matchDstIp( 100, dst );
   int port = m.port( 2, 3 );
   copp->updateInPortsForEntry( 0, 100, { U32( port ) }, false, true );
   copp->setTcamEntryBcmPbmpPermanent( 0, 100, true );
   ASSERT_EQ( 0, copp->installEntry( 0, 100 ) );
   ASSERT_TRUE( copp->tcamEntryBcmPbmp( 0, 100 ) );
   EXPECT_EQ( port, copp->tcamEntryBcmPbmp( 0, 100 )->inPort() );
   EXPECT_TRUE( m.entry( 0x2000064 )->hardware->qualifiers.count( bcmFieldQualifyInPort ) );
   EXPECT_EQ( 1u, EntryBox::copiesHit( m.sendTo( port, dst ), 100 ).size() );
   EXPECT_TRUE( EntryBox::copiesHit( m.sendTo( m.port( 2, 4 ), dst ), 100 ).empty() );
   // A reinstall applies the kept record again.
   ASSERT_EQ( 0, copp->reinstallEntry( 0, 100 ) );
   EXPECT_TRUE( EntryBox::copiesHit( m.sendTo( m.port( 0, 3 ), dst ), 100 ).empty() );
   EXPECT_DEATH( copp->setTcamEntryBcmPbmpPermanent( 0, 101, true ),
                 "Assertion 'Entry 101 not found in pbmp collection.' failed" );
}

TEST_F( EntryInstallTest, ARedirectGoesOutEachPipesOwnLoopbackPort ) {
   ASSERT_EQ( 100u, copp->getEntry( 0, 100, "copp" ) );
   m.matchDstIp( 100, dst );
   bcm_pbmp_t out = portsOf( { m.port( 1, 0 ) } );
   ASSERT_EQ( 0, m.sdk( [ & ] {
                 return bcm_field_action_ports_add( 0, 100, bcmFieldActionRedirectPbmp, out );
              } ) );
   copp->setLoopbackPortRedirectAction( 0, 100, redirect, out );
   m.box.clearCallLog();
   ASSERT_EQ( 0, copp->installEntry( 0, 100 ) );
   EXPECT_EQ( 8u, m.box.callCount( "bcm_field_entry_install" ) );
   for ( U32 pipe = 0; pipe < 4; ++pipe ) {
      const ChipModel::Action * action =
         m.entry( 100 | pipe << 24 )->hardware->action( bcmFieldActionRedirectPbmp );
      ASSERT_TRUE( action );
      bcm_pbmp_t expected =
         portsOf( { m.port( 1, 0 ), ChipModel::loopbackPort( m.profile(), pipe ) } );
      EXPECT_EQ( PortBitmap{ expected }, PortBitmap{ action->ports } ) << "pipe " << pipe;
   }
   EXPECT_FALSE( copp->internalUnitEntry( 0 )->loopbackPortRedirectActionHas( 100 ) );
}

// Range ids differ per pipe: each copy checks its own pipe's range.
TEST_F( EntryInstallTest, EachPipeChecksItsOwnRange ) {
   auto acl = m.bounded( test1TcamGroup_, IFP_GROUP_IP_ACL_, 100, 110, tcamAllocateOnDemand_ );
   std::vector< RangeCheckId > rids;
   for ( U32 pipe = 0; pipe < 4; ++pipe ) {
      Shim::RangeConfig range;
      range.rtype = bcmRangeTypeL4DstPort;
      range.min = 1000;
      range.max = 2000;
      range.ports = ChipModel::pipePorts( m.profile(), pipe );
      ASSERT_EQ( 0, m.sdk( [ & ] { return bcm_range_create( 0, 0, &range ); } ) );
      rids.push_back( RangeCheckId( range.rid ) );
   }
   Kiln::Ptr< UnitRangeIdInfo > info = m.manager->unitRangeInfoIs( UnitRangeInfoKey{ 0, rids[ 0 ] } );
   for ( U32 pipe = 0; pipe < 4; ++pipe ) {
      info->pipeRangeIdIs( pipe, rids[ pipe ] );
   }
   ASSERT_EQ( 100u, acl->getEntry( 0, 100, "acl" ) );
   m.matchDstIp( 100, dst );
   ASSERT_EQ( 0, m.sdk( [ & ] { return bcm_field_qualify_RangeCheck( 0, 100, rids[ 0 ], 0 ); } ) );
   m.manager->entryRangeCheckIdIs( 100 )->rangeCheckIdIs( rids[ 0 ], true );
   ASSERT_EQ( 0, acl->installEntry( 0, 100 ) );

   for ( U32 pipe = 0; pipe < 4; ++pipe ) {
      for ( U32 copy = 0; copy < 2; ++copy ) {
         const ChipModel::Entry * e = m.entry( 100 | pipe << 24 | copy << 27 );
         ASSERT_EQ( 1u, e->hardware->ranges.size() );
         EXPECT_EQ( rids[ pipe ], e->hardware->ranges[ 0 ].range );
      }
      EXPECT_EQ( 1u, EntryBox::copiesHit( m.sendTo( m.port( pipe, 9 ), dst, 1500 ), 100 ).size() );
      EXPECT_TRUE( EntryBox::copiesHit( m.sendTo( m.port( pipe, 9 ), dst, 80 ), 100 ).empty() );
   }

   info->pipeRangeIdDel( 2 );
   EXPECT_DEATH( acl->reinstallEntry( 0, 100 ),
                 "int Tessel::TesselTcamEntryManager::qualifyRangeCheckers\\(U32, U32, U32, "
                 "U32\\): Assertion 'groupManager\\(\\)->unitRangeInfo\\( key \\)->pipeRangeIdHas\\( "
                 "pipe \\)' failed" );
   m.manager->unitRangeInfoDel( UnitRangeInfoKey{ 0, rids[ 0 ] } );
   EXPECT_DEATH( acl->reinstallEntry( 0, 100 ),
                 "Assertion 'groupManager\\(\\)->unitRangeInfoHas\\( key \\)' failed" );
   // Taking the entry out drops its range association.
   EXPECT_EQ( 0, acl->removeEntry( 0, 100 ) );
   EXPECT_FALSE( m.manager->entryRangeCheckIdHas( 100 ) );
}

TEST_F( EntryInstallTest, RemoveTakesEveryCopyOutAndKeepsTheEntry ) {
   ASSERT_EQ( 100u, copp->getEntry( 0, 100, "copp" ) );
   m.matchDstIp( 100, dst );
   ASSERT_EQ( 0, copp->installEntry( 0, 100 ) );
   ASSERT_EQ( 1u, EntryBox::copiesHit( m.sendTo( m.port( 3 ), dst ), 100 ).size() );
   EXPECT_EQ( 0, copp->removeEntry( 0, 100 ) );
   for ( U32 id : copyIds( 100, 4, 1 ) ) {
      EXPECT_FALSE( m.entry( id )->installed() );
      EXPECT_EQ( 1u, m.entry( id )->soft.qualifiers.count( bcmFieldQualifyDstIp ) );
   }
   EXPECT_TRUE( EntryBox::copiesHit( m.sendTo( m.port( 3 ), dst ), 100 ).empty() );
   EXPECT_DEATH( copp->removeEntry( 0, 100 ),
                 "EntryInstall.cpp:[0-9]+ bcm_field_entry_remove\\( unit, tcamEntryId \\) API "
                 "ERROR:Invalid parameter \\(-4\\).*int Tessel::TesselTcamEntryManager::"
                 "removeEntry\\(U32, U32\\): Assertion '0' failed" );
   ASSERT_EQ( 0, copp->reinstallEntry( 0, 100 ) );
   EXPECT_EQ( 1u, EntryBox::copiesHit( m.sendTo( m.port( 3 ), dst ), 100 ).size() );
}

TEST_F( EntryInstallTest, DisabledCopiesStayInstalledAndMatchNothing ) {
   ASSERT_EQ( 100u, copp->getEntry( 0, 100, "copp" ) );
   m.matchDstIp( 100, dst );
   ASSERT_EQ( 0, copp->installEntry( 0, 100 ) );
   copp->enableEntry( 0, 100, false, 0 );
   EXPECT_TRUE( m.entry( 0x3000064 )->installed() );
   EXPECT_FALSE( m.entry( 0x3000064 )->enabled );
   EXPECT_TRUE( EntryBox::copiesHit( m.sendTo( m.port( 3 ), dst ), 100 ).empty() );
   copp->enableEntry( 0, 100, true, 0 );
   EXPECT_EQ( 1u, EntryBox::copiesHit( m.sendTo( m.port( 3 ), dst ), 100 ).size() );
   auto other = m.bounded( test3TcamGroup_, IFP_GROUP_COPP_IP_, 200, 210, tcamAllocateOnDemand_ );
   EXPECT_DEATH( other->enableEntry( 0, 100, false, 0 ),
                 "Assertion 'groupManager\\(\\)->tcamManagerForEntry\\( entry \\).rawPtr_ == "
                 "this' failed" );
}

TEST_F( EntryInstallTest, PrioritiesGoToEveryCopyAndAFailureIsFatal ) {
   ASSERT_EQ( 105u, copp->getEntry( 0, 105, "copp" ) );
   EXPECT_EQ( 0, copp->setPriorityForEntry( 0, 105, 7 ) );
   for ( U32 id : copyIds( 105, 4, 1 ) ) {
      EXPECT_EQ( 7, m.entry( id )->priority );
   }
   EXPECT_EQ( 0, copp->setPriorityForEntry( 0, 105, copp->invalidPrio() ) );
   for ( U32 id : copyIds( 105, 4, 1 ) ) {
      EXPECT_EQ( 0x7fffffff - 105, m.entry( id )->priority );
   }
   m.box.failCall( 0, "bcm_field_entry_prio_set", 3, BCM_E_PARAM );
   EXPECT_DEATH( copp->setPriorityForEntry( 0, 105, 9 ),
                 "EntryInstall.cpp:[0-9]+ bcm_field_entry_prio_set\\( unit, entryId, priority \\) "
                 "API ERROR:Invalid parameter \\(-4\\).*int Tessel::TesselTcamEntryManager::"
                 "setPriorityForEntry\\(U32, U32, U32\\): Assertion '0' failed" );
}

// Errors of a copy's install are returned and the others still go in; a
// copy that cannot be made ends the install.
TEST_F( EntryInstallTest, TheFirstErrorIsReturnedAndTraced ) {
   ASSERT_EQ( 100u, copp->getEntry( 0, 100, "copp" ) );
   FastLog::TraceCapture capture( "bcmFpCmd", FastLog::TraceLevels::only( 0 ) );
   m.box.failCall( 0, "bcm_field_entry_install", 2, BCM_E_RESOURCE );
   EXPECT_EQ( BCM_E_RESOURCE, copp->installEntry( 0, 100 ) );
   EXPECT_FALSE( m.entry( 0x1000064 )->installed() );
   EXPECT_TRUE( m.entry( 0x3000064 )->installed() );
   EXPECT_EQ( ( std::vector< std::string >{
                 "Unit: 0 bcm_field_entry_install( unit, tcamEntryId ) API ERROR: (rc:-14) for "
                 "entryId: 100 installEntry" } ),
              capture.texts() );

   ASSERT_EQ( 101u, copp->getEntry( 0, 101, "copp" ) );
   m.box.failCall( 0, "ob_field_entry_copy_id", 2, BCM_E_PARAM );
   EXPECT_EQ( BCM_E_PARAM, copp->installEntry( 0, 101 ) );
   EXPECT_TRUE( m.entry( 0x1000065 )->installed() );
   EXPECT_FALSE( m.entry( 0x2000065 )->installed() );
   EXPECT_FALSE( m.entry( 0x3000065 )->installed() );
}

// Two pipes (the outer-VLAN twin's) and one copy each: one copy call, two
// installs, two more for a loopback redirect.
TEST( EntryInstallCalls, TwoPipesMakeOneCopyAndTwoInstalls ) {
   EntryBox m{ { "single" } };
   auto qos = m.bounded( test1TcamGroup_, IFP_GROUP_QOS_, 100, 110, tcamAllocateOnDemand_ );
   ASSERT_EQ( 100u, qos->getEntry( 0, 100, "qos" ) );
   m.box.clearCallLog();
   ASSERT_EQ( 0, qos->installEntry( 0, 100 ) );
   EXPECT_EQ( 1u, m.box.callCount( "ob_field_entry_copy_id" ) );
   EXPECT_EQ( 2u, m.box.callCount( "bcm_field_entry_install" ) );
   qos->setLoopbackPortRedirectAction( 0, 100, bcmFieldActionRedirectPbmp,
                                       portsOf( { 5 } ) );
   m.box.clearCallLog();
   ASSERT_EQ( 0, qos->reinstallEntry( 0, 100 ) );
   EXPECT_EQ( 4u, m.box.callCount( "bcm_field_entry_install" ) );
   EXPECT_EQ( 2u, m.box.callCount( "bcm_field_action_ports_add" ) );
}

} // namespace
} // namespace ManagerTest
