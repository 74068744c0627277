// Packet classification: priorities within groups, groups in priority order,
// stages feeding each other, preselectors, ranges, policers, and start-up
// staging.
#include "tests/sdk/model/ModelTestSupport.h"

using namespace ModelTest;
using ChipModel::Box;
using ChipModel::LookupResult;
using ChipModel::Packet;

namespace {

constexpr U32
ip( U32 a, U32 b, U32 c, U32 d ) {
   return a << 24 | b << 16 | c << 8 | d;
}

class Classify : public ::testing::Test {
 protected:
   explicit Classify( const char * profile = "thx", bool staged = false )
       : box_( { profile }, staged ? Box::Options() : committed() ) {}
   const ChipModel::Profile & profile() { return box_.unit( 0 ).profile(); }
   void group( bcm_field_group_t id, bcm_field_qset_t qset, int priority, U32 pipe = 0 ) {
      bcm_field_group_config_t config = groupConfig( profile(), id, qset, priority, pipe );
      ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) );
   }
   // An installed entry on destination IP `dst` (mask /32, or 0 for any).
   void entry( bcm_field_group_t g, bcm_field_entry_t id, int priority, U32 dst,
               bcm_field_action_t action, U32 param0 = 0, U32 param1 = 0 ) {
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, g, id ) );
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_prio_set( 0, id, priority ) );
      ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_DstIp( 0, id, dst, dst ? 0xffffffff : 0 ) );
      ASSERT_EQ( BCM_E_NONE, bcm_field_action_add( 0, id, action, param0, param1 ) );
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_install( 0, id ) );
   }
   LookupResult send( U32 dst, U32 pipe = 0, U16 dport = 80 ) {
      return box_.send( 0, Packet::ipv4( portIn( profile(), pipe ), ip( 192, 0, 2, 1 ), dst,
                                         6, 1234, dport ) );
   }
   Box box_;
};

const bcm_field_qset_t dstIp = qsetOf( { bcmFieldQualifyDstIp } );

} // namespace

TEST_F( Classify, TheHighestPriorityInstalledEnabledMatchingEntryWins ) {
   group( 1, dstIp, 10 );
   entry( 1, 100, 5, ip( 10, 0, 0, 1 ), bcmFieldActionCosQNew, 1 );
   entry( 1, 101, 50, 0, bcmFieldActionCosQNew, 2 );                  // catch-all, higher
   entry( 1, 102, 500, ip( 10, 0, 0, 1 ), bcmFieldActionCosQNew, 3 ); // best
   EXPECT_EQ( std::optional< bcm_field_entry_t >( 102 ),
              send( ip( 10, 0, 0, 1 ) ).hitIn( 1 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_enable_set( 0, 102, 0 ) );
   EXPECT_EQ( std::optional< bcm_field_entry_t >( 101 ),
              send( ip( 10, 0, 0, 1 ) ).hitIn( 1 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_remove( 0, 101 ) );
   EXPECT_EQ( std::optional< bcm_field_entry_t >( 100 ),
              send( ip( 10, 0, 0, 1 ) ).hitIn( 1 ) );
   EXPECT_FALSE( send( ip( 10, 0, 0, 2 ) ).hitIn( 1 ) );
   // Raising a priority reorders the hardware.
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_enable_set( 0, 102, 1 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_prio_set( 0, 100, 1000 ) );
   LookupResult r = send( ip( 10, 0, 0, 1 ) );
   EXPECT_EQ( std::optional< bcm_field_entry_t >( 100 ), r.hitIn( 1 ) );
   ASSERT_NE( nullptr, r.action( bcmFieldStageIngress, bcmFieldActionCosQNew ) );
   EXPECT_EQ( 1u, r.action( bcmFieldStageIngress, bcmFieldActionCosQNew )->param0 );
}

TEST_F( Classify, EqualPrioritiesMatchInArrivalOrder ) {
   group( 1, dstIp, 10 );
   entry( 1, 200, 7, 0, bcmFieldActionCosQNew, 1 );
   entry( 1, 100, 7, 0, bcmFieldActionCosQNew, 2 );
   EXPECT_EQ( std::optional< bcm_field_entry_t >( 200 ), send( 1 ).hitIn( 1 ) );
}

TEST_F( Classify, GroupsResolveConflictingActionsByGroupPriority ) {
   group( 1, dstIp, 10 );
   group( 2, dstIp, 20 );
   group( 3, dstIp, 5 );
   entry( 1, 100, 1, 0, bcmFieldActionDrop );
   entry( 2, 200, 1, 0, bcmFieldActionDropCancel );
   entry( 3, 300, 1, 0, bcmFieldActionCopyToCpu );
   LookupResult r = send( 1 );
   const ChipModel::StageResult * ifp = r.stage( bcmFieldStageIngress );
   ASSERT_NE( nullptr, ifp );
   ASSERT_EQ( 3u, ifp->hits.size() );
   EXPECT_EQ( 2, ifp->hits[ 0 ].group ); // groups in priority order
   EXPECT_EQ( 3, ifp->hits[ 2 ].group );
   EXPECT_FALSE( r.dropped ); // the cancel of the higher group decides
   EXPECT_EQ( nullptr, ifp->action( bcmFieldActionDrop ) );
   EXPECT_TRUE( r.copiedToCpu );
   EXPECT_EQ( 300, ifp->action( bcmFieldActionCopyToCpu )->entry );
}

TEST_F( Classify, OnlyThePipeOfTheIngressPortIsLookedUp ) {
   group( 1, dstIp, 10, 0 );
   group( 2, dstIp, 10, 3 );
   entry( 1, 100, 1, 0, bcmFieldActionDrop );
   entry( 2, 200, 1, 0, bcmFieldActionCopyToCpu );
   LookupResult pipe3 = send( 1, 3 );
   EXPECT_FALSE( pipe3.hitIn( 1 ) );
   EXPECT_EQ( std::optional< bcm_field_entry_t >( 200 ), pipe3.hitIn( 2 ) );
   EXPECT_EQ( 3, pipe3.stage( bcmFieldStageIngress )->pipe );
   // The loopback port of a pipe belongs to it too.
   Packet looped = Packet::ipv4( ChipModel::loopbackPort( profile(), 3 ), 1, 1, 6, 1, 2 );
   EXPECT_EQ( std::optional< bcm_field_entry_t >( 200 ),
              box_.send( 0, looped ).hitIn( 2 ) );
   // A port the unit does not have hits nothing at all.
   EXPECT_TRUE( box_.send( 0, Packet::ipv4( 250, 1, 1, 6, 1, 2 ) ).stages.empty() );
}

TEST_F( Classify, PreselectorsChooseThePacketsAGroupSees ) {
   bcm_field_presel_t presel;
   ASSERT_EQ( BCM_E_NONE, bcm_field_presel_create( 0, &presel ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_Stage( 0, presel | BCM_FIELD_QUALIFY_PRESEL,
                                                   bcmFieldStageIngress ) );
   // Only the first two ports of pipe 1, port class 5.
   std::vector< int > ports = ChipModel::frontPanelPorts( profile(), 1 );
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_MixedSrcClassId(
                             0, presel | BCM_FIELD_QUALIFY_PRESEL,
                             portsOf( { ports[ 0 ], ports[ 1 ] } ), 5, 0xf ) );
   bcm_field_group_config_t config;
   bcm_field_group_config_t_init( &config );
   config.flags = BCM_FIELD_GROUP_CREATE_WITH_ID | BCM_FIELD_GROUP_CREATE_WITH_PRESELSET;
   config.group = 1;
   config.qset = dstIp;
   BCM_FIELD_PRESEL_ADD( config.preselset, presel );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) );
   entry( 1, 100, 1, 0, bcmFieldActionDrop );
   Packet p = Packet::ipv4( ports[ 1 ], 1, 1, 6, 1, 2 );
   EXPECT_FALSE( box_.send( 0, p ).hitIn( 1 ) ); // port class 0
   p.portClass = 0x25;
   EXPECT_TRUE( box_.send( 0, p ).hitIn( 1 ) );
   p.inPort = ports[ 2 ];
   EXPECT_FALSE( box_.send( 0, p ).hitIn( 1 ) );
}

TEST_F( Classify, LookupStageClassesAndVrfFeedTheIngressStage ) {
   group( 1, qsetOf( { bcmFieldQualifyStageLookup, bcmFieldQualifyDstIp } ), 1 );
   group( 2, qsetOf( { bcmFieldQualifySrcClassField, bcmFieldQualifyVrf } ), 1 );
   entry( 1, 100, 1, ip( 10, 0, 0, 1 ), bcmFieldActionClassSourceSet, 9 );
   ASSERT_EQ( BCM_E_NONE, bcm_field_action_add( 0, 100, bcmFieldActionVrfSet, 4, 0 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_install( 0, 100 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 2, 200 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_SrcClassField( 0, 200, 9, 0xfff ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_Vrf( 0, 200, 4, 0xfff ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_action_add( 0, 200, bcmFieldActionDrop, 0, 0 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_install( 0, 200 ) );
   LookupResult hit = send( ip( 10, 0, 0, 1 ) );
   EXPECT_EQ( std::optional< bcm_field_entry_t >( 100 ), hit.hitIn( 1 ) );
   EXPECT_EQ( std::optional< bcm_field_entry_t >( 200 ), hit.hitIn( 2 ) );
   EXPECT_TRUE( hit.dropped );
   EXPECT_FALSE( send( ip( 10, 0, 0, 2 ) ).hitIn( 2 ) );
}

TEST_F( Classify, EgressStageSeesTheRedirectedPort ) {
   group( 1, dstIp, 1 );
   int out = portIn( profile(), 2 );
   entry( 1, 100, 1, 0, bcmFieldActionRedirectPort, 0, static_cast< U32 >( out ) );
   group( 2, qsetOf( { bcmFieldQualifyStageEgress, bcmFieldQualifyOutPort } ), 1 );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 2, 200 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_OutPort( 0, 200, out, -1 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_action_add( 0, 200, bcmFieldActionDrop, 0, 0 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_install( 0, 200 ) );
   LookupResult r = send( 1 );
   EXPECT_EQ( std::optional< int >( out ), r.egressPort );
   EXPECT_EQ( std::optional< bcm_field_entry_t >( 200 ), r.hitIn( 2 ) );
   EXPECT_TRUE( r.dropped );
}

TEST_F( Classify, RangeCheckersOfThePipeMatchPortRanges ) {
   group( 1, qsetOf( { bcmFieldQualifyRangeCheck } ), 1, 1 );
   bcm_range_config_t range;
   bcm_range_config_t_init( &range );
   range.rtype = bcmRangeTypeL4DstPort;
   range.min = 1000;
   range.max = 2000;
   range.ports = ChipModel::pipePorts( profile(), 2 );
   ASSERT_EQ( BCM_E_NONE, bcm_range_create( 0, 0, &range ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 1, 100 ) );
   // A checker of another pipe cannot serve this group's entries.
   EXPECT_EQ( BCM_E_PARAM, bcm_field_qualify_RangeCheck( 0, 100, range.rid, 0 ) );
   range.ports = ChipModel::pipePorts( profile(), 1 );
   ASSERT_EQ( BCM_E_NONE, bcm_range_create( 0, 0, &range ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_RangeCheck( 0, 100, range.rid, 0 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_action_add( 0, 100, bcmFieldActionDrop, 0, 0 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_install( 0, 100 ) );
   EXPECT_TRUE( send( 1, 1, 1500 ).hitIn( 1 ) );
   EXPECT_FALSE( send( 1, 1, 2001 ).hitIn( 1 ) );
   EXPECT_EQ( BCM_E_BUSY, bcm_range_destroy( 0, range.rid ) );
   bcm_field_range_t checked;
   int invert;
   int count;
   ASSERT_EQ( BCM_E_NONE,
              bcm_field_qualify_RangeCheck_get( 0, 100, 1, &checked, &invert, &count ) );
   EXPECT_EQ( static_cast< bcm_field_range_t >( range.rid ), checked );
   EXPECT_EQ( 1, count );
}

TEST_F( Classify, PolicersColourThePacketsOfTheirEntries ) {
   group( 1, dstIp, 1 );
   entry( 1, 100, 1, 0, bcmFieldActionRpDrop );
   bcm_policer_config_t config;
   bcm_policer_config_t_init( &config );
   config.mode = bcmPolicerModeSrTcm;
   config.ckbits_sec = 8;   // 1000 bytes per second
   config.ckbits_burst = 1; // 125 bytes
   config.pkbits_burst = 1; // and 125 more yellow
   bcm_policer_t policer;
   ASSERT_EQ( BCM_E_NONE, bcm_policer_create( 0, &config, &policer ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_policer_attach( 0, 100, 0, policer ) );
   EXPECT_EQ( BCM_E_EXISTS, bcm_field_entry_policer_attach( 0, 100, 0, policer ) );
   EXPECT_EQ( BCM_E_BUSY, bcm_policer_destroy( 0, policer ) );
   Packet p = Packet::ipv4( portIn( profile(), 0 ), 1, 1, 6, 1, 2 );
   p.length = 100;
   EXPECT_EQ( bcmFieldColorGreen, box_.send( 0, p ).colour );
   LookupResult second = box_.send( 0, p );
   EXPECT_EQ( bcmFieldColorYellow, second.colour );
   EXPECT_FALSE( second.dropped );
   LookupResult third = box_.send( 0, p );
   EXPECT_EQ( bcmFieldColorRed, third.colour );
   EXPECT_TRUE( third.dropped );
   p.timeUs = 1000000; // a second later the buckets are full again
   EXPECT_EQ( bcmFieldColorGreen, box_.send( 0, p ).colour );
   // The policer now meters in pipe 0: an entry of another pipe cannot use it.
   group( 2, dstIp, 1, 1 );
   entry( 2, 200, 1, 0, bcmFieldActionDrop );
   EXPECT_EQ( BCM_E_PARAM, bcm_field_entry_policer_attach( 0, 200, 0, policer ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_policer_detach( 0, 100, 0 ) );
   EXPECT_EQ( BCM_E_NOT_FOUND, bcm_field_entry_policer_detach( 0, 100, 0 ) );
   EXPECT_EQ( BCM_E_NONE, bcm_field_entry_policer_attach( 0, 200, 0, policer ) );
}

// Start-up staging: nothing is active before the unit's flash program.
class StagedClassify : public Classify {
 protected:
   StagedClassify() : Classify( "thx", true ) {}
};

TEST_F( StagedClassify, InstallsTakeEffectAtTheFlashProgram ) {
   group( 1, dstIp, 1 );
   entry( 1, 100, 1, 0, bcmFieldActionDrop );
   EXPECT_TRUE( box_.send( 0, Packet::ipv4( 1, 1, 1, 6, 1, 2 ) ).stages.empty() );
   ASSERT_EQ( BCM_E_NONE, oberon_tcam_flash_program( 0, false, false, false, false ) );
   EXPECT_TRUE( send( 1 ).hitIn( 1 ) );
   EXPECT_EQ( 0u, box_.unit( 0 ).commitFlags() );
   // Later installs take effect at once.
   entry( 1, 101, 9, ip( 10, 0, 0, 9 ), bcmFieldActionCopyToCpu );
   EXPECT_EQ( std::optional< bcm_field_entry_t >( 101 ),
              send( ip( 10, 0, 0, 9 ) ).hitIn( 1 ) );
   // A second program changes nothing.
   ASSERT_EQ( BCM_E_NONE, oberon_tcam_flash_program( 0, true, false, false, false ) );
   EXPECT_EQ( 1u, box_.unit( 0 ).commits() );
}

TEST_F( StagedClassify, ARestartStartsBareAndAColdOneClearsTheHardware ) {
   group( 1, dstIp, 1 );
   entry( 1, 100, 1, 0, bcmFieldActionDrop );
   ASSERT_EQ( BCM_E_NONE, oberon_tcam_flash_program( 0, false, false, false, false ) );
   box_.restart( 0, true );
   EXPECT_EQ( 0u, box_.counts( 0 ).total() ); // the new agent starts from nothing
   EXPECT_TRUE( send( 1 ).dropped );          // forwarding goes on meanwhile
   box_.restart( 0, false );
   EXPECT_TRUE( send( 1 ).stages.empty() );
}
