// Entries: ids, priorities and the physical order they buy, install state,
// qualifiers and their getters, actions, copies and dumps.
#include "tests/sdk/model/ModelTestSupport.h"

#include <cstring>

using namespace ModelTest;
using ChipModel::Box;

namespace {

class Entries : public ::testing::Test {
 protected:
   Entries() : box_( { "thx" }, committed() ) {
      bcm_field_group_config_t config = groupConfig(
         profile(), group,
         qsetOf( { bcmFieldQualifySrcIp, bcmFieldQualifyDstIp, bcmFieldQualifyInPorts,
                   bcmFieldQualifyL4DstPort, bcmFieldQualifySrcMac, bcmFieldQualifySrcIp6,
                   bcmFieldQualifyIpType } ),
         10, 1 );
      EXPECT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) );
   }
   const ChipModel::Profile & profile() { return box_.unit( 0 ).profile(); }
   const ChipModel::FieldProcessor & field() { return box_.unit( 0 ).state().field; }
   // Entry ids in the group's lookup order.
   std::vector< U32 > order() { return field().group( group )->rows.keysInOrder(); }
   static constexpr bcm_field_group_t group = 0x1000042; // pipe bits are opaque
   Box box_;
};

} // namespace

TEST_F( Entries, ModelIdsAreNonZeroBelow2To24AndCallerIdsMustBeFree ) {
   bcm_field_entry_t picked = 0;
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create( 0, group, &picked ) );
   EXPECT_GT( picked, 0 );
   EXPECT_LT( picked, 1 << 24 );
   EXPECT_EQ( BCM_E_EXISTS, bcm_field_entry_create_id( 0, group, picked ) );
   EXPECT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, group, 0x0b000064 ) );
   EXPECT_EQ( BCM_E_EXISTS, bcm_field_entry_create_id( 0, group, 0x0b000064 ) );
   EXPECT_EQ( BCM_E_NOT_FOUND, bcm_field_entry_create_id( 0, 999, 5 ) );
   EXPECT_EQ( BCM_E_PARAM, bcm_field_entry_create_id( 0, group, 0 ) );
   bcm_field_entry_t next = 0;
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create( 0, group, &next ) );
   EXPECT_NE( picked, next );
   EXPECT_EQ( 3u, box_.counts( 0 ).entries );
}

TEST_F( Entries, HigherPriorityComesFirstAndEqualPrioritiesKeepArrivalOrder ) {
   for ( int id : { 1, 2, 3, 4 } ) {
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, group, id ) );
   }
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_prio_set( 0, 1, 5 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_prio_set( 0, 2, 50 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_prio_set( 0, 3, 5 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_prio_set( 0, 4, 500 ) );
   EXPECT_EQ( ( std::vector< U32 >{ 4, 2, 1, 3 } ), order() );
   EXPECT_EQ( BCM_E_PARAM, bcm_field_entry_prio_set( 0, 1, -1 ) );
   int priority = 0;
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_prio_get( 0, 3, &priority ) );
   EXPECT_EQ( 5, priority );
   // Rows follow the order.
   EXPECT_LT( field().rowOf( 4 ), field().rowOf( 2 ) );
   EXPECT_LT( field().rowOf( 1 ), field().rowOf( 3 ) );
}

TEST_F( Entries, PriorityChangesCostPhysicalMovesOnlyWhenRowsAreTight ) {
   const ChipModel::Group * g = field().group( group );
   U32 rows = profile().stage( bcmFieldStageIngress )->entriesPerSlice;
   // Fill one slice completely in descending order: each lands in free space.
   for ( U32 id = 1; id <= rows; ++id ) {
      ASSERT_EQ( BCM_E_NONE,
                 bcm_field_entry_create_id( 0, group, static_cast< int >( id ) ) );
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_prio_set( 0, static_cast< int >( id ),
                                                       static_cast< int >( rows - id ) ) );
   }
   U64 before = g->moves;
   // Raising the last entry to the top with no free row left shifts every
   // entry above it by one row, plus its own move.
   ASSERT_EQ( BCM_E_NONE,
              bcm_field_entry_prio_set( 0, static_cast< int >( rows ), 1000000 ) );
   EXPECT_EQ( before + rows, g->moves );
   EXPECT_EQ( rows, order().front() );
   EXPECT_EQ( 0, field().rowOf( static_cast< int >( rows ) ) );
}

TEST_F( Entries, InstallRemoveAndReinstallFollowTheHardwareState ) {
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, group, 7 ) );
   EXPECT_EQ( BCM_E_PARAM, bcm_field_entry_remove( 0, 7 ) );
   EXPECT_EQ( BCM_E_PARAM, bcm_field_entry_reinstall( 0, 7 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_DstIp( 0, 7, 0x0a000001, 0xffffffff ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_install( 0, 7 ) );
   const ChipModel::Entry * e = field().entry( 7 );
   ASSERT_TRUE( e->installed() );
   // A qualifier set after the install reaches hardware at the next install.
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_DstIp( 0, 7, 0x0a000002, 0xffffffff ) );
   EXPECT_EQ( ChipModel::toBytes( 0x0a000001, 4 ),
              e->hardware->qualifiers.at( bcmFieldQualifyDstIp ).data );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_reinstall( 0, 7 ) );
   EXPECT_EQ( ChipModel::toBytes( 0x0a000002, 4 ),
              e->hardware->qualifiers.at( bcmFieldQualifyDstIp ).data );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_enable_set( 0, 7, 0 ) );
   int enabled = 1;
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_enable_get( 0, 7, &enabled ) );
   EXPECT_EQ( 0, enabled );
   EXPECT_TRUE( e->installed() ); // disabled, still installed
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_remove( 0, 7 ) );
   EXPECT_FALSE( e->installed() );
   EXPECT_EQ( 1u, e->soft.qualifiers.size() ); // removal keeps what was set
}

TEST_F( Entries, GettersReturnWhatWasSetAndNotFoundForWhatWasNot ) {
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, group, 7 ) );
   bcm_vlan_t vlan = 0;
   bcm_vlan_t vlanMask = 0;
   // A bare entry has no outer VLAN; the group does not even have it.
   EXPECT_EQ( BCM_E_NOT_FOUND,
              bcm_field_qualify_OuterVlanId_get( 0, 7, &vlan, &vlanMask ) );
   EXPECT_EQ( BCM_E_PARAM, bcm_field_qualify_OuterVlanId( 0, 7, 100, 0xfff ) );
   EXPECT_EQ( BCM_E_NOT_FOUND, bcm_field_qualify_DstIp( 0, 8, 1, 1 ) );

   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_L4DstPort( 0, 7, 443, -1 ) );
   bcm_l4_port_t port = 0;
   bcm_l4_port_t portMask = 0;
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_L4DstPort_get( 0, 7, &port, &portMask ) );
   EXPECT_EQ( 443, port );
   EXPECT_EQ( -1, portMask );

   // Port sets, addresses and enumerations come back through the entry
   // dump's readers, whose tests pin them; MACs have no reader there.
   bcm_mac_t mac = { 0, 1, 2, 3, 4, 5 };
   bcm_mac_t macMask = { 0xff, 0xff, 0xff, 0, 0, 0 };
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_SrcMac( 0, 7, mac, macMask ) );
   bcm_mac_t macBack;
   bcm_mac_t macMaskBack;
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_SrcMac_get( 0, 7, &macBack, &macMaskBack ) );
   EXPECT_EQ( 0, std::memcmp( mac, macBack, 6 ) );
   EXPECT_EQ( 0, std::memcmp( macMask, macMaskBack, 6 ) );

   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_IpType( 0, 7, bcmFieldIpTypeIpv6 ) );
   EXPECT_EQ( BCM_E_PARAM, bcm_field_qualify_IpType_get( 0, 7, nullptr ) );

   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_clear( 0, 7 ) );
   EXPECT_EQ( BCM_E_NOT_FOUND, bcm_field_qualify_L4DstPort_get( 0, 7, &port, &portMask ) );
}

TEST_F( Entries, ActionsKeepTheirParametersAndTheGroupsActionSet ) {
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, group, 7 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_action_add( 0, 7, bcmFieldActionCosQNew, 3, 0 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_action_add( 0, 7, bcmFieldActionRedirectPort, 0, 17 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_action_add( 0, 7, bcmFieldActionCosQNew, 5, 0 ) );
   uint32_t p0 = 0;
   uint32_t p1 = 0;
   ASSERT_EQ( BCM_E_NONE, bcm_field_action_get( 0, 7, bcmFieldActionCosQNew, &p0, &p1 ) );
   EXPECT_EQ( 5u, p0 );
   bcm_field_action_info_t list[ 4 ];
   int count = 0;
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_action_list_get( 0, 7, 4, list, &count ) );
   ASSERT_EQ( 2, count );
   EXPECT_EQ( bcmFieldActionCosQNew, list[ 0 ].action );
   EXPECT_EQ( 17u, list[ 1 ].param[ 1 ] );
   EXPECT_EQ( BCM_E_NOT_FOUND, bcm_field_action_get( 0, 7, bcmFieldActionDrop, &p0, &p1 ) );
   EXPECT_EQ( BCM_E_PARAM, bcm_field_action_add( 0, 7, bcmFieldActionCount, 0, 0 ) );

   bcm_pbmp_t first = portsOf( { 30 } );
   bcm_pbmp_t second = portsOf( { 59 } );
   ASSERT_EQ( BCM_E_NONE,
              bcm_field_action_ports_add( 0, 7, bcmFieldActionRedirectPbmp, first ) );
   ASSERT_EQ( BCM_E_NONE,
              bcm_field_action_ports_add( 0, 7, bcmFieldActionRedirectPbmp, second ) );
   bcm_pbmp_t ports;
   ASSERT_EQ( BCM_E_NONE,
              bcm_field_action_ports_get( 0, 7, bcmFieldActionRedirectPbmp, &ports ) );
   EXPECT_TRUE( BCM_PBMP_MEMBER( ports, 30 ) && BCM_PBMP_MEMBER( ports, 59 ) );

   ASSERT_EQ( BCM_E_NONE, bcm_field_action_remove( 0, 7, bcmFieldActionCosQNew ) );
   EXPECT_EQ( BCM_E_NOT_FOUND, bcm_field_action_remove( 0, 7, bcmFieldActionCosQNew ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_action_remove_all( 0, 7 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_action_list_get( 0, 7, 0, nullptr, &count ) );
   EXPECT_EQ( 0, count );

   // A group created with an action set refuses other actions.
   bcm_field_group_config_t config =
      groupConfig( profile(), 2, qsetOf( { bcmFieldQualifySrcIp } ), 1, 1 );
   config.flags |= BCM_FIELD_GROUP_CREATE_WITH_ASET;
   BCM_FIELD_ASET_ADD( config.aset, bcmFieldActionDrop );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 2, 8 ) );
   EXPECT_EQ( BCM_E_NONE, bcm_field_action_add( 0, 8, bcmFieldActionDrop, 0, 0 ) );
   EXPECT_EQ( BCM_E_PARAM, bcm_field_action_add( 0, 8, bcmFieldActionCopyToCpu, 0, 0 ) );
}

TEST_F( Entries, CopyIntoAnEntryOfAnotherGroupOfTheStage ) {
   bcm_field_group_config_t other =
      groupConfig( profile(), 0x1000043, qsetOf( { bcmFieldQualifyDstIp } ), 10, 2 );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &other ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, group, 100 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 0x1000043, 0x2000064 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_prio_set( 0, 0x2000064, 77 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_DstIp( 0, 100, 0x0a000001, 0xffffffff ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_action_add( 0, 100, bcmFieldActionDrop, 0, 0 ) );
   ASSERT_EQ( BCM_E_NONE, SdkShim->ob_field_entry_copy_id( 0, 100, 0x2000064 ) );
   const ChipModel::Entry * copy = field().entry( 0x2000064 );
   EXPECT_EQ( field().entry( 100 )->soft.qualifiers, copy->soft.qualifiers );
   ASSERT_EQ( 1u, copy->soft.actions.size() );
   EXPECT_EQ( 77, copy->priority ); // the copy keeps its own priority
   EXPECT_FALSE( copy->installed() );
   // A qualifier the target group lacks makes the copy fail, untouched.
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_SrcIp( 0, 100, 1, 1 ) );
   EXPECT_EQ( BCM_E_PARAM, SdkShim->ob_field_entry_copy_id( 0, 100, 0x2000064 ) );
   EXPECT_EQ( 1u, copy->soft.qualifiers.size() );
   EXPECT_EQ( BCM_E_NOT_FOUND, SdkShim->ob_field_entry_copy_id( 0, 100, 0x3000064 ) );
}

// A range of the range module lives in one pipe: a copy into a group of
// another pipe leaves it behind (that pipe checks its own ranges), a copy
// within the pipe keeps it.
TEST( EntryCopy, RangesOfAnotherPipeStayBehind ) {
   Box box( { "thx" }, committed() );
   const ChipModel::Profile & thx = box.unit( 0 ).profile();
   for ( U32 pipe : { 0u, 2u } ) {
      bcm_field_group_config_t config = groupConfig(
         thx, static_cast< int >( pipe << 24 | 7 ), qsetOf( { bcmFieldQualifyRangeCheck } ), 1,
         pipe );
      ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) );
   }
   bcm_range_config_t range;
   bcm_range_config_t_init( &range );
   range.max = 10;
   range.ports = ChipModel::pipePorts( thx, 0 );
   ASSERT_EQ( BCM_E_NONE, bcm_range_create( 0, 0, &range ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 7, 100 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 7, 0x8000064 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 0x2000007, 0x2000064 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_RangeCheck( 0, 100, range.rid, 0 ) );
   ASSERT_EQ( BCM_E_NONE, SdkShim->ob_field_entry_copy_id( 0, 100, 0x8000064 ) );
   ASSERT_EQ( BCM_E_NONE, SdkShim->ob_field_entry_copy_id( 0, 100, 0x2000064 ) );
   const ChipModel::FieldProcessor & field = box.unit( 0 ).state().field;
   EXPECT_EQ( 1u, field.entry( 0x8000064 )->soft.ranges.size() );
   EXPECT_TRUE( field.entry( 0x2000064 )->soft.ranges.empty() );
   EXPECT_EQ( 1u, field.entry( 100 )->soft.ranges.size() );
}

TEST_F( Entries, DestroyedEntriesLeaveNothingBehind ) {
   bcm_field_entry_t id;
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create( 0, group, &id ) );
   bcm_field_stat_t types[] = { bcmFieldStatPackets };
   int stat;
   ASSERT_EQ( BCM_E_NONE, bcm_field_stat_create( 0, group, 1, types, &stat ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_stat_attach( 0, id, stat ) );
   EXPECT_EQ( BCM_E_BUSY, bcm_field_stat_destroy( 0, stat ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_destroy( 0, id ) );
   EXPECT_EQ( BCM_E_NOT_FOUND, bcm_field_entry_destroy( 0, id ) );
   EXPECT_EQ( BCM_E_NONE, bcm_field_stat_destroy( 0, stat ) );
   EXPECT_EQ( 0u, field().group( group )->rows.size() );
}

TEST_F( Entries, DumpsDescribeTheEntryAndTheGroupThroughTheSink ) {
   std::string text;
   bcm_dump_sink_set(
      []( void * context, const char * piece ) {
         *static_cast< std::string * >( context ) += piece;
      },
      &text );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, group, 100 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_prio_set( 0, 100, 9 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_L4DstPort( 0, 100, 22, 0xffff ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_action_add( 0, 100, bcmFieldActionDrop, 0, 0 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_dump( 0, 100 ) );
   EXPECT_NE( std::string::npos,
              text.find( "EID 100 (0x64): group 16777282, stage Ingress, pipe 1, "
                         "priority 9" ) )
      << text;
   EXPECT_NE( std::string::npos,
              text.find( "   L4DstPort: data 00000016 mask 0000ffff\n" ) );
   EXPECT_NE( std::string::npos, text.find( "   Action Drop: 0x0 0x0\n" ) );
   EXPECT_NE( std::string::npos, text.find( "not installed, enabled" ) );
   text.clear();
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_dump( 0, group ) );
   EXPECT_NE( std::string::npos,
              text.find( "GID 16777282 (0x1000042): stage Ingress, pipe 1, "
                         "priority 10, mode Double" ) )
      << text;
   EXPECT_NE( std::string::npos, text.find( "entries 1" ) );
   bcm_dump_sink_set( nullptr, nullptr );
   EXPECT_EQ( BCM_E_NOT_FOUND, bcm_field_entry_dump( 0, 101 ) );
}
