// The example features on the chip model, on every chip profile: packets
// classified the way the rules say (first rule wins, actions, policers),
// counters per rule, all-or-nothing installs when the TCAM or the chip says
// no, and nothing left in the chip once a feature lets go.
#include <gtest/gtest.h>

#include "examples/features/AclFeature.h"
#include "examples/features/CoppFeature.h"
#include "examples/features/MirrorFeature.h"
#include "examples/features/QosFeature.h"
#include "sdk/api/port.h"
#include "sdk/model/Ports.h"
#include "tests/manager/ManagerFixture.h"

using namespace Features;
using namespace ManagerTest;

namespace {

Ipv4Match
matchOf( U32 src, U32 srcMask, U8 protocol, PortRange dstPorts = {} ) {
   Ipv4Match m;
   m.srcIp = src;
   m.srcMask = srcMask;
   m.protocol = protocol;
   m.protocolMask = protocol ? 0xff : 0;
   m.dstPorts = dstPorts;
   return m;
}

class FeatureTest : public testing::TestWithParam< ProfileFacts > {
 protected:
   FeatureTest() : m( { GetParam().name } ) {}

   // A front-panel port of the last pipe, so per-pipe copies are exercised.
   int
   port() const {
      const ChipModel::Profile & profile = m.box.unit( 0 ).profile();
      return ChipModel::frontPanelPorts( profile, profile.pipes - 1 ).front();
   }
   ChipModel::LookupResult
   send( U32 src, U8 protocol, U16 dport, U32 length = 0 ) {
      ChipModel::Packet p = ChipModel::Packet::ipv4( port(), src, 0xc0000201, protocol, 1000, dport );
      p.length = length;
      return m.box.send( 0, p );
   }
   // The item of a feature a packet hit, if any.
   template< typename Feature >
   std::optional< U32 >
   hitOf( const Feature & feature, const ChipModel::LookupResult & result ) {
      for ( const ChipModel::Hit & hit : result.hits() ) {
         if ( auto item = feature.itemOf( 0, U32( hit.group ), U32( hit.entry ) ) ) {
            return item;
         }
      }
      return std::nullopt;
   }

   // Hardware ranges behind one range checker of the IP ACL group.
   U32
   rangesPerChecker() const {
      const ChipModel::Profile & profile = m.box.unit( 0 ).profile();
      return profile.has( BCM_INFO_CAP_RANGE_MODULE ) ? GetParam().ingressPipes : 1;
   }

   ManagerBox m;
};

TEST_P( FeatureTest, TheFirstAclRuleWinsDenyDropsAndCountersCountPerRule ) {
   ChipModel::ObjectCounts before = m.box.counts( 0 );
   AclFeature acl( m.manager );
   std::vector< AclRule > rules = {
      { AclRule::Action::deny, matchOf( 0x0a010000, 0xffff0000, 0 ) },
      { AclRule::Action::permit, matchOf( 0x0a000000, 0xff000000, 6, { 1000, 1999 } ) },
      { AclRule::Action::deny, Ipv4Match{} },
   };
   LoadReport report = acl.install( rules );
   ASSERT_TRUE( report.ok() ) << report.error;
   // 1000-1999 is one entry through a range checker: a hardware range in
   // every pipe the group spans on range-module chips, one on the others.
   U32 entries = 3;
   EXPECT_EQ( entries, report.entries );
   EXPECT_EQ( 1u, report.rangeCheckers );
   U32 copies = acl.entries().copiesPerEntry( 0 );
   EXPECT_EQ( entries * copies, report.hardwareEntries );
   EXPECT_EQ( before.entries + entries * copies, m.box.counts( 0 ).entries );
   EXPECT_EQ( before.ranges + rangesPerChecker(), m.box.counts( 0 ).ranges );

   struct Packet {
      U32 src;
      U16 dport;
      U32 rule;
      bool dropped;
   } packets[] = { { 0x0a010203, 1500, 0, true },   // rule 0 shadows rule 1
                   { 0x0a020001, 1000, 1, false },
                   { 0x0a020001, 1999, 1, false },
                   { 0x0a020001, 999, 2, true },
                   { 0x0a020001, 2000, 2, true },
                   { 0x0b000001, 1500, 2, true } };
   for ( const Packet & p : packets ) {
      ChipModel::LookupResult result = send( p.src, 6, p.dport );
      EXPECT_EQ( std::optional< U32 >( p.rule ), hitOf( acl, result ) ) << p.dport;
      EXPECT_EQ( p.dropped, result.dropped ) << p.dport;
   }
   EXPECT_EQ( 1u, acl.itemPackets( 0, 0 ) );
   EXPECT_EQ( 2u, acl.itemPackets( 0, 1 ) );
   EXPECT_EQ( 3u, acl.itemPackets( 0, 2 ) );

   acl.release();
   EXPECT_EQ( before, m.box.counts( 0 ) );
   EXPECT_TRUE( acl.items().empty() );
   EXPECT_FALSE( hitOf( acl, send( 0x0a010203, 6, 1500 ) ) );
}

// More distinct ranges than the chip has checkers: the rules that come
// too late expand into prefixes, and every rule still classifies at both
// ends of its range and not just outside. Rules sharing a range share its
// checker; the last release gives every checker back.
TEST_P( FeatureTest, AclRangesExpandOnceTheChipHasNoCheckerLeft ) {
   ChipModel::ObjectCounts before = m.box.counts( 0 );
   U32 checkers = m.box.unit( 0 ).profile().rangeCheckers;
   AclFeature acl( m.manager );
   std::vector< AclRule > rules;
   auto rangeOf = []( U32 rule ) {
      return PortRange{ U16( 100 * rule + 1 ), U16( 100 * rule + 50 ) }; // 8 prefixes
   };
   for ( U32 rule = 0; rule < checkers + 3; ++rule ) {
      rules.push_back( { AclRule::Action::permit, matchOf( 0, 0, 6, rangeOf( rule ) ) } );
   }
   rules.push_back( { AclRule::Action::deny, matchOf( 0, 0, 17, rangeOf( 0 ) ) } ); // shares
   LoadReport report = acl.install( rules );
   ASSERT_TRUE( report.ok() ) << report.error;
   EXPECT_EQ( checkers, report.rangeCheckers );
   EXPECT_EQ( 3u, report.rangesExpanded );
   EXPECT_EQ( checkers + 1 + 3 * 8, report.entries );
   EXPECT_EQ( before.ranges + checkers * rangesPerChecker(), m.box.counts( 0 ).ranges );
   EXPECT_TRUE( acl.entries().entryManager()->rangeCheckersExhausted( 0 ) );
   for ( U32 rule = 0; rule < checkers + 3; ++rule ) {
      PortRange range = rangeOf( rule );
      EXPECT_EQ( std::optional< U32 >( rule ), hitOf( acl, send( 1, 6, range.low ) ) ) << rule;
      EXPECT_EQ( std::optional< U32 >( rule ), hitOf( acl, send( 1, 6, range.high ) ) ) << rule;
      EXPECT_FALSE( hitOf( acl, send( 1, 6, U16( range.low - 1 ) ) ) ) << rule;
      EXPECT_FALSE( hitOf( acl, send( 1, 6, U16( range.high + 1 ) ) ) ) << rule;
   }
   EXPECT_EQ( std::optional< U32 >( checkers + 3 ), hitOf( acl, send( 1, 17, 50 ) ) );
   acl.release();
   EXPECT_EQ( before, m.box.counts( 0 ) ) << m.box.counts( 0 ).text();
   EXPECT_FALSE( acl.entries().entryManager()->rangeCheckersExhausted( 0 ) );
}

// Chips with the compression stage bind the set's ports to a block of
// class ids and match it in one entry; the others take one per port.
TEST_P( FeatureTest, QosPortSetsUseClassIdsWhereTheChipCompresses ) {
   ChipModel::ObjectCounts before = m.box.counts( 0 );
   QosFeature qos( m.manager );
   Ipv4Match media = matchOf( 0, 0, 17 );
   media.dstPortSet = { 5004, 5006, 16384 };
   LoadReport report = qos.install( { { "media", media, 6, std::nullopt, std::nullopt } } );
   ASSERT_TRUE( report.ok() ) << report.error;
   bool compress = GetParam().compressionGroups;
   EXPECT_EQ( compress ? 1u : 3u, report.entries );
   EXPECT_EQ( compress ? 3u : 0u, report.classIdPorts );
   EXPECT_EQ( compress ? 3u : 0u, m.manager->l4DstPortClassIdCollection().size() );
   for ( U16 port : { 5004, 5006, 16384 } ) {
      EXPECT_EQ( std::optional< U32 >( 0 ), hitOf( qos, send( 1, 17, port ) ) ) << port;
   }
   for ( U16 port : { 5005, 16385, 0 } ) { // 16385 would take the block's unbound fourth id
      EXPECT_FALSE( hitOf( qos, send( 1, 17, port ) ) ) << port;
   }
   qos.release();
   EXPECT_EQ( before, m.box.counts( 0 ) ) << m.box.counts( 0 ).text();
   EXPECT_TRUE( m.manager->l4DstPortClassIdCollection().empty() );

   Ipv4Match other = media;
   other.dstPortSet = { 5006, 5008 };
   EXPECT_EQ( "QoS: port 5006 is in two different port sets; a port maps to one class id",
              qos.install( { { "media", media, 6, std::nullopt, std::nullopt },
                             { "other", other, 5, std::nullopt, std::nullopt } } )
                 .error );
   EXPECT_EQ( before, m.box.counts( 0 ) );
}

// A mirroring rule on bytes of the UDP payload: the field is taken for the
// group before its first entry and given back after the last; a field the
// group's width cannot take refuses the rules with nothing left behind.
TEST_P( FeatureTest, MirroringMatchesAUserDefinedFieldAndGivesItBack ) {
   ChipModel::ObjectCounts before = m.box.counts( 0 );
   MirrorFeature mirror( m.manager );
   UdfMatch cookie{ 12, { 0x21, 0x12, 0xa4, 0x42 } };
   MirrorRule stun{ "stun", matchOf( 0, 0, 17 ), 9, cookie };
   LoadReport report = mirror.install( { stun } );
   ASSERT_TRUE( report.ok() ) << report.error;
   EXPECT_EQ( 1u, report.udfFields );
   ChipModel::ObjectCounts held = m.box.counts( 0 );
   EXPECT_LT( before.dataQualifiers + before.udfObjects + before.chunks,
              held.dataQualifiers + held.udfObjects + held.chunks );
   ChipModel::Packet p = ChipModel::Packet::ipv4( port(), 1, 2, 17, 40000, 3478 );
   p.payload = { 0, 1, 0, 0, 0x21, 0x12, 0xa4, 0x42 }; // the cookie 12 bytes into UDP
   EXPECT_EQ( std::optional< U32 >( 0 ), hitOf( mirror, m.box.send( 0, p ) ) );
   p.payload[ 7 ] = 0x43;
   EXPECT_FALSE( hitOf( mirror, m.box.send( 0, p ) ) );
   mirror.release();
   EXPECT_EQ( before, m.box.counts( 0 ) ) << m.box.counts( 0 ).text();
   EXPECT_TRUE( m.manager->ipAclUdfCollection().empty() );

   // Three 16-byte fields: the group's 32 bytes take two.
   std::vector< MirrorRule > wide;
   for ( U8 offset : { 8, 24, 40 } ) {
      wide.push_back( { "w", matchOf( 0, 0, 17 ), 9, UdfMatch{ offset, std::vector< U8 >( 16, 1 ) } } );
   }
   EXPECT_EQ( "Mirroring: udf=40 with 16 bytes on unit 0: the chip has no user-defined field left "
              "for it (or the group's key no room)",
              mirror.install( wide ).error );
   EXPECT_EQ( before, m.box.counts( 0 ) ) << m.box.counts( 0 ).text();
   EXPECT_TRUE( m.manager->ipAclUdfCollection().empty() );
}

TEST_P( FeatureTest, InstallingAgainReplacesTheRules ) {
   ChipModel::ObjectCounts before = m.box.counts( 0 );
   AclFeature acl( m.manager );
   ASSERT_TRUE( acl.install( { { AclRule::Action::deny, matchOf( 0, 0, 6, { 1, 1023 } ) } } ).ok() );
   ASSERT_TRUE( acl.install( { { AclRule::Action::permit, Ipv4Match{} } } ).ok() );
   EXPECT_EQ( before.entries + acl.entries().copiesPerEntry( 0 ), m.box.counts( 0 ).entries );
   ChipModel::LookupResult result = send( 0x01020304, 6, 22 );
   EXPECT_EQ( std::optional< U32 >( 0 ), hitOf( acl, result ) );
   EXPECT_FALSE( result.dropped );
}

// The chip runs out of room for entry 6: the first five rules are given
// back and the report says how far it got.
TEST_P( FeatureTest, AnExhaustedTcamLeavesNothingHalfInstalled ) {
   ChipModel::ObjectCounts before = m.box.counts( 0 );
   AclFeature acl( m.manager );
   std::vector< AclRule > rules( 8, AclRule{ AclRule::Action::deny, matchOf( 0, 0, 17 ) } );
   // The SDK picks pipe 0's ids (bcm_field_entry_create); the copies are
   // made with theirs.
   m.box.failCall( 0, "bcm_field_entry_create", 6, BCM_E_RESOURCE );
   LoadReport report = acl.install( rules );
   EXPECT_EQ( "ACL: 5 of 8 rules fitted on unit 0 (5 entries), then the TCAM is exhausted "
              "(reservation IP ACL); nothing is left installed",
              report.error );
   EXPECT_EQ( 5u, report.itemsInstalled );
   EXPECT_EQ( before, m.box.counts( 0 ) );
   EXPECT_TRUE( acl.items().empty() );
   EXPECT_TRUE( acl.entries().held().empty() );
   // The manager recovers: the same rules fit now.
   EXPECT_TRUE( acl.install( rules ).ok() );
}

TEST_P( FeatureTest, AnEntryTheChipRefusesUndoesTheWholeFeature ) {
   ChipModel::ObjectCounts before = m.box.counts( 0 );
   QosFeature qos( m.manager );
   std::vector< QosClass > classes = {
      { "a", matchOf( 0, 0, 6 ), 1, std::nullopt, PolicerRate{ 100, 10 } },
      { "b", matchOf( 0, 0, 17 ), 2, std::nullopt, PolicerRate{ 100, 10 } },
   };
   m.box.failCall( 0, "bcm_field_entry_install", 1, BCM_E_INTERNAL );
   LoadReport report = qos.install( classes );
   EXPECT_EQ( std::string( "QoS: 0 of 2 classes fitted on unit 0 (0 entries), then the chip "
                           "refused an entry: " ) +
                 bcm_errmsg( BCM_E_INTERNAL ) + " (" + std::to_string( BCM_E_INTERNAL ) +
                 "); nothing is left installed",
              report.error );
   // Its policer went too.
   EXPECT_EQ( before, m.box.counts( 0 ) );
   EXPECT_EQ( 0u, qos.policers().count() );
}

// A BGP burst bigger than its class's burst: what fits reaches the CPU,
// the rest turns red and is dropped. Each pipe meters with its own policer.
TEST_P( FeatureTest, CoppCopiesToTheCpuThroughAPolicerPerClass ) {
   ChipModel::ObjectCounts before = m.box.counts( 0 );
   CoppFeature copp( m.manager );
   ASSERT_TRUE( copp.install( { { "bgp", matchOf( 0, 0, 6, { 179, 179 } ), { 8, 64 } },
                                { "ospf", matchOf( 0, 0, 89 ), { 8, 64 } } } )
                   .ok() );
   EXPECT_EQ( before.policers + 2 * m.manager->getNumPipe( 0 ), m.box.counts( 0 ).policers );
   U32 cpu = 0, dropped = 0;
   for ( int i = 0; i < 12; ++i ) {
      ChipModel::LookupResult result = send( 0x01020304, 6, 179, 1000 );
      EXPECT_EQ( std::optional< U32 >( 0 ), hitOf( copp, result ) );
      cpu += result.copiedToCpu && !result.dropped;
      dropped += result.dropped;
   }
   EXPECT_EQ( 8u, cpu ); // 64 kbit: eight 1000-byte packets
   EXPECT_EQ( 4u, dropped );
   EXPECT_EQ( std::optional< U32 >( 1 ), hitOf( copp, send( 0x01020304, 89, 0, 1000 ) ) );
   copp.release();
   EXPECT_EQ( before, m.box.counts( 0 ) );
}

TEST_P( FeatureTest, TooManyPolicedClassesAreRefusedBeforeAnythingIsMade ) {
   ChipModel::ObjectCounts before = m.box.counts( 0 );
   CoppFeature copp( m.manager );
   std::vector< CoppClass > classes( FeaturePolicers::maxPolicersPerUnit + 1,
                                     CoppClass{ "c", matchOf( 0, 0, 6 ), { 8, 8 } } );
   EXPECT_EQ( "CoPP: 33 policed classes, at most 32 fit", copp.install( classes ).error );
   EXPECT_EQ( before, m.box.counts( 0 ) );
}

TEST_P( FeatureTest, QosSetsPriorityColourAndColoursAboveItsRate ) {
   QosFeature qos( m.manager );
   Ipv4Match voice;
   voice.dscp = 46;
   ASSERT_TRUE( qos.install( { { "voice", voice, 7, bcmFieldColorYellow, PolicerRate{ 8, 8 } } } )
                   .ok() );
   for ( int i = 0; i < 2; ++i ) {
      ChipModel::Packet p = ChipModel::Packet::ipv4( port(), 1, 2, 17, 5, 5 );
      p.dscp = 46;
      p.length = 1000; // 8 kbit: the first fits the burst
      ChipModel::LookupResult result = m.box.send( 0, p );
      ASSERT_EQ( std::optional< U32 >( 0 ), hitOf( qos, result ) );
      const ChipModel::ResolvedAction * priority =
         result.action( bcmFieldStageIngress, bcmFieldActionPrioIntNew );
      ASSERT_TRUE( priority );
      EXPECT_EQ( 7u, priority->param0 );
      const ChipModel::ResolvedAction * colour =
         result.action( bcmFieldStageIngress, bcmFieldActionDropPrecedence );
      ASSERT_TRUE( colour );
      EXPECT_EQ( U32( bcmFieldColorYellow ), colour->param0 );
      EXPECT_EQ( i == 0 ? bcmFieldColorGreen : bcmFieldColorRed, result.colour ) << i;
      EXPECT_FALSE( result.dropped ); // QoS colours, it does not police away
   }
   ChipModel::Packet other = ChipModel::Packet::ipv4( port(), 1, 2, 17, 5, 5 );
   other.dscp = 45;
   EXPECT_FALSE( hitOf( qos, m.box.send( 0, other ) ) );
}

TEST_P( FeatureTest, MirroringDeclaresItsGroupIpv4AndWithdrawsIt ) {
   ChipModel::ObjectCounts before = m.box.counts( 0 );
   MirrorFeature mirror( m.manager );
   ASSERT_TRUE( mirror.install( { { "dns", matchOf( 0, 0, 17, { 53, 53 } ), 9, std::nullopt } } ).ok() );
   EXPECT_TRUE( m.manager->groupMirroringAclValid( IFP_GROUP_MIRROR_ACL_1_ ) );
   EXPECT_EQ( 1, m.manager->groupMirroringAclType( IFP_GROUP_MIRROR_ACL_1_ ) );
   ChipModel::LookupResult result = send( 0x01020304, 17, 53 );
   EXPECT_EQ( std::optional< U32 >( 0 ), hitOf( mirror, result ) );
   const ChipModel::ResolvedAction * to =
      result.action( bcmFieldStageIngress, bcmFieldActionMirrorIngress );
   ASSERT_TRUE( to );
   EXPECT_EQ( 9u, to->param1 );
   mirror.release();
   EXPECT_FALSE( m.manager->groupMirroringAclValid( IFP_GROUP_MIRROR_ACL_1_ ) );
   EXPECT_EQ( before, m.box.counts( 0 ) );
}

// In-ports are the manager's to place: every copy sees its pipe's share.
TEST_P( FeatureTest, AclRulesOnInPortsMatchOnlyThosePorts ) {
   AclFeature acl( m.manager );
   Ipv4Match onPort;
   onPort.inPorts = TesselTypes::TesselPortList{ U32( port() ) };
   ASSERT_TRUE( acl.install( { { AclRule::Action::deny, onPort } } ).ok() );
   EXPECT_TRUE( send( 1, 6, 80 ).dropped );
   const ChipModel::Profile & profile = m.box.unit( 0 ).profile();
   int other = ChipModel::frontPanelPorts( profile, 0 )[ 1 ];
   ChipModel::Packet p = ChipModel::Packet::ipv4( other, 1, 2, 6, 1, 80 );
   EXPECT_FALSE( m.box.send( 0, p ).dropped );
}

INSTANTIATE_TEST_SUITE_P( Profiles, FeatureTest, testing::ValuesIn( allProfiles() ),
                          profileName );

// Every unit gets the rules; a full TCAM on one profile is reported with
// its real figures.
TEST( FeatureUnits, RulesGoToEveryUnitAndATcamReallyFills ) {
   ManagerBox m( { "thx", "single" } );
   ChipModel::ObjectCounts before = m.box.counts();
   AclFeature acl( m.manager );
   std::vector< AclRule > rules;
   for ( U16 port = 1; port <= 4000; ++port ) {
      rules.push_back( { AclRule::Action::deny, matchOf( 0, 0, 6, { port, port } ) } );
   }
   LoadReport report = acl.install( rules );
   // Unit 0 comes first: three double-wide rows of slices per copy group.
   EXPECT_EQ( "ACL: 2304 of 4000 rules fitted on unit 0 (2304 entries), then the TCAM is "
              "exhausted (reservation IP ACL); nothing is left installed",
              report.error );
   EXPECT_EQ( before, m.box.counts() );
   rules.resize( 10 );
   ASSERT_TRUE( acl.install( rules ).ok() );
   for ( U32 unit : { 0u, 1u } ) {
      ChipModel::Packet p = ChipModel::Packet::ipv4( 1, 1, 2, 6, 1, 7 );
      ChipModel::LookupResult result = m.box.send( unit, p );
      EXPECT_TRUE( result.dropped ) << unit;
      EXPECT_EQ( 1u, acl.itemPackets( unit, 6 ) ) << unit;
   }
}

} // namespace
