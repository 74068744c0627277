// Qualifier shapes: each kind of value comes back from its getter as set and
// matches packets as the hardware would; and the limits of the unit's small
// objects (preselectors, hints, policers).
#include "tests/sdk/model/ModelTestSupport.h"

#include <cstring>

using namespace ModelTest;
using ChipModel::Box;
using ChipModel::Packet;

namespace {

class Qualifiers : public ::testing::Test {
 protected:
   Qualifiers() : box_( { "single" }, committed() ) {}
   // An installed entry of a new group with the qualifiers; `set` qualifies it.
   template< typename Set >
   void entryWith( std::initializer_list< bcm_field_qualify_t > qualifiers, Set && set ) {
      ++group_;
      bcm_field_group_config_t config =
         groupConfig( box_.unit( 0 ).profile(), group_, qsetOf( qualifiers ), group_ );
      ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) );
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, group_, group_ * 10 ) );
      set( group_ * 10 );
      ASSERT_EQ( BCM_E_NONE,
                 bcm_field_action_add( 0, group_ * 10, bcmFieldActionDrop, 0, 0 ) );
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_install( 0, group_ * 10 ) );
   }
   bool dropped( const Packet & p ) { return box_.send( 0, p ).dropped; }
   Box box_;
   int group_ = 0;
};

std::array< U8, 16 >
ip6( U8 first, U8 last ) {
   std::array< U8, 16 > a{};
   a[ 0 ] = first;
   a[ 15 ] = last;
   return a;
}

} // namespace

TEST_F( Qualifiers, Ip6HighMatchesTheUpper64BitsOnly ) {
   bcm_ip6_t prefix = { 0x20, 0x01, 0x0d, 0xb8 };
   bcm_ip6_t mask;
   std::memset( mask, 0xff, sizeof( mask ) ); // the lower half of the mask is ignored
   entryWith( { bcmFieldQualifyDstIp6High }, [ & ]( bcm_field_entry_t e ) {
      ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_DstIp6High( 0, e, prefix, mask ) );
   } );
   std::array< U8, 16 > dst{ { 0x20, 0x01, 0x0d, 0xb8 } };
   dst[ 15 ] = 7;
   EXPECT_TRUE( dropped( Packet::ipv6( 1, ip6( 1, 1 ), dst, 6, 1, 2 ) ) );
   dst[ 3 ] = 0xb9;
   EXPECT_FALSE( dropped( Packet::ipv6( 1, ip6( 1, 1 ), dst, 6, 1, 2 ) ) );
   bcm_ip6_t back;
   bcm_ip6_t backMask;
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_DstIp6High_get( 0, 10, &back, &backMask ) );
   EXPECT_EQ( 0, std::memcmp( mask, backMask, 16 ) ); // as it was set
}

TEST_F( Qualifiers, EnumerationsMatchTheirValueAndAnyMatchesAll ) {
   entryWith( { bcmFieldQualifyIpType }, []( bcm_field_entry_t e ) {
      ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_IpType( 0, e, bcmFieldIpTypeIpv6 ) );
   } );
   EXPECT_TRUE( dropped( Packet::ipv6( 1, ip6( 1, 1 ), ip6( 2, 2 ), 6, 1, 2 ) ) );
   EXPECT_FALSE( dropped( Packet::ipv4( 1, 1, 2, 6, 1, 2 ) ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_IpType( 0, 10, bcmFieldIpTypeAny ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_reinstall( 0, 10 ) );
   EXPECT_TRUE( dropped( Packet::ipv4( 1, 1, 2, 6, 1, 2 ) ) );
   EXPECT_TRUE( dropped( Packet::ethernet( 1, 0x88cc ) ) );
}

TEST_F( Qualifiers, VlanAndMacAndPortSetsMatchAsSet ) {
   entryWith( { bcmFieldQualifyOuterVlanId, bcmFieldQualifyInPorts }, []( bcm_field_entry_t
                                                                             e ) {
      ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_OuterVlanId( 0, e, 100, 0xfff ) );
      bcm_pbmp_t all;
      std::memset( &all, 0xff, sizeof( all ) );
      ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_InPorts( 0, e, portsOf( { 3, 4 } ), all ) );
   } );
   Packet p = Packet::ipv4( 3, 1, 2, 6, 1, 2 );
   EXPECT_FALSE( dropped( p ) ); // untagged: outer VLAN 0
   p.vlan = 100;
   EXPECT_TRUE( dropped( p ) );
   p.inPort = 5;
   EXPECT_FALSE( dropped( p ) );
   bcm_vlan_t vlan;
   bcm_vlan_t vlanMask;
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_OuterVlanId_get( 0, 10, &vlan, &vlanMask ) );
   EXPECT_EQ( 100, vlan );
   EXPECT_EQ( 0xfff, vlanMask );
}

TEST_F( Qualifiers, ModulePortAndPreselectorValuesComeBackAsSet ) {
   entryWith( { bcmFieldQualifyDstPort }, []( bcm_field_entry_t e ) {
      ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_DstPort( 0, e, 3, 0xff, 17, -1 ) );
   } );
   bcm_module_t modid;
   bcm_module_t modMask;
   bcm_port_t port;
   bcm_port_t portMask;
   ASSERT_EQ( BCM_E_NONE,
              bcm_field_qualify_DstPort_get( 0, 10, &modid, &modMask, &port, &portMask ) );
   EXPECT_EQ( ( std::vector< int >{ 3, 0xff, 17, -1 } ),
              ( std::vector< int >{ modid, modMask, port, portMask } ) );
   EXPECT_EQ( BCM_E_NOT_FOUND,
              bcm_field_qualify_DstPort_get( 0, 11, &modid, &modMask, &port, &portMask ) );

   bcm_field_presel_t presel;
   ASSERT_EQ( BCM_E_NONE, bcm_field_presel_create( 0, &presel ) );
   bcm_pbmp_t ports = portsOf( { 2, 9 } );
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_MixedSrcClassId(
                             0, presel | BCM_FIELD_QUALIFY_PRESEL, ports, 4, 0xf ) );
   bcm_pbmp_t portsBack;
   uint32_t data;
   uint32_t mask;
   ASSERT_EQ( BCM_E_NONE,
              bcm_field_qualify_MixedSrcClassId_get( 0, presel | BCM_FIELD_QUALIFY_PRESEL,
                                                     &portsBack, &data, &mask ) );
   EXPECT_EQ( 0, std::memcmp( &ports, &portsBack, sizeof( ports ) ) );
   EXPECT_EQ( 4u, data );
   EXPECT_EQ( 0xfu, mask );
   bcm_field_range_t range;
   int invert;
   int count;
   EXPECT_EQ( BCM_E_NOT_FOUND,
              bcm_field_qualify_RangeCheck_get( 0, 10, 1, &range, &invert, &count ) );
}

TEST( SmallObjects, PreselectorsHintsAndPolicersHaveTheirLimits ) {
   Box box( { "th3" } );
   const ChipModel::Profile & profile = box.unit( 0 ).profile();
   bcm_field_presel_t presel;
   for ( U32 i = 0; i < profile.presels; ++i ) {
      ASSERT_EQ( BCM_E_NONE, bcm_field_presel_create( 0, &presel ) ) << i;
   }
   EXPECT_EQ( BCM_E_RESOURCE, bcm_field_presel_create( 0, &presel ) );
   EXPECT_EQ( BCM_E_EXISTS, bcm_field_presel_create_id( 0, presel ) );

   bcm_field_hintid_t hint;
   ASSERT_EQ( BCM_E_NONE, bcm_field_hints_create( 0, &hint ) );
   bcm_field_hint_t h;
   bcm_field_hint_t_init( &h );
   h.hint_type = bcmFieldHintTypeExtraction;
   h.qual = bcmFieldQualifySrcIp;
   h.start_bit = 8;
   h.end_bit = 7;
   EXPECT_EQ( BCM_E_PARAM, bcm_field_hints_add( 0, hint, &h ) );
   h.end_bit = 31;
   for ( int i = 0; i < BCM_FIELD_HINTS_PER_ID_MAX; ++i ) {
      ASSERT_EQ( BCM_E_NONE, bcm_field_hints_add( 0, hint, &h ) );
   }
   EXPECT_EQ( BCM_E_RESOURCE, bcm_field_hints_add( 0, hint, &h ) );

   bcm_policer_config_t config;
   bcm_policer_config_t_init( &config );
   config.flags = BCM_POLICER_WITH_ID;
   bcm_policer_t id = 0x05000001; // ids the caller derives are opaque
   ASSERT_EQ( BCM_E_NONE, bcm_policer_create( 0, &config, &id ) );
   EXPECT_EQ( BCM_E_EXISTS, bcm_policer_create( 0, &config, &id ) );
   config.mode = bcmPolicerModeTrTcm;
   config.ckbits_sec = 100;
   ASSERT_EQ( BCM_E_NONE, bcm_policer_set( 0, id, &config ) );
   bcm_policer_config_t back;
   ASSERT_EQ( BCM_E_NONE, bcm_policer_get( 0, id, &back ) );
   EXPECT_EQ( bcmPolicerModeTrTcm, back.mode );
   EXPECT_EQ( 100u, back.ckbits_sec );
   config.mode = bcmPolicerModeCount;
   EXPECT_EQ( BCM_E_PARAM, bcm_policer_set( 0, id, &config ) );
   EXPECT_EQ( BCM_E_NOT_FOUND, bcm_policer_destroy( 0, id + 1 ) );
}
