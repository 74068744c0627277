// The shim over the chip model: chip queries per profile, the capacity query
// and its exact buffer, the field control walk, entry copies and the struct
// wrappers.
#include <gtest/gtest.h>

#include <cstring>

#include "sdk/api/bcm.h"
#include "sdk/model/Box.h"
#include "sdk/model/Ports.h"
#include "sdk/shim/Oberon.h"
#include "sdk/shim/SdkStructs.h"
#include "sdk/shim/Shim.h"

using ChipModel::Box;

namespace {

// A group of the pipe matching DstIp and `extra`; two slices wide with an
// IPv6 address among them.
bcm_field_group_config_t
ingressGroup( const ChipModel::Profile & profile, bcm_field_group_t id, U32 pipe,
              std::initializer_list< bcm_field_qualify_t > extra = {
                 bcmFieldQualifySrcIp } ) {
   Shim::GroupConfig config;
   config.flags_or( BCM_FIELD_GROUP_CREATE_WITH_ID | BCM_FIELD_GROUP_CREATE_WITH_PORT );
   config.group = id;
   config.ports = ChipModel::pipePorts( profile, pipe );
   SdkShim->ob_field_qset_add( &config.qset, bcmFieldQualifyDstIp );
   for ( bcm_field_qualify_t q : extra ) {
      SdkShim->ob_field_qset_add( &config.qset, q );
   }
   return config;
}

} // namespace

TEST( ShimChipQueries, EachProfileAnswersItsOwnCapabilities ) {
   Box box( { "single", "trident3", "thx", "th3" } );
   const Shim::Sdk & shim = *Shim::sdk_;
   EXPECT_EQ( Shim::chipTypeClassic, shim.chipType( 0 ) );
   EXPECT_EQ( Shim::chipTypeTrident3, shim.chipType( 1 ) );
   EXPECT_EQ( Shim::chipTypeThx, shim.chipType( 2 ) );
   EXPECT_EQ( Shim::chipTypeTh3, shim.chipType( 3 ) );
   EXPECT_EQ( Shim::chipTypeUnknown, shim.chipType( 4 ) );
   EXPECT_EQ( 1u, shim.numPipes( 4 ) );

   EXPECT_EQ(
      ( std::vector< bool >{ false, false, true, true } ),
      ( std::vector< bool >{ shim.fieldStagePerPipe( 0 ), shim.fieldStagePerPipe( 1 ),
                             shim.fieldStagePerPipe( 2 ), shim.fieldStagePerPipe( 3 ) } ) );
   // The copies-per-pipe conditions all hold on THx only.
   for ( U32 unit = 0; unit < 4; ++unit ) {
      bool thx = unit == 2;
      EXPECT_EQ( thx, shim.copiesConditionThxFamily( unit ) ) << unit;
      EXPECT_EQ( thx, shim.copiesConditionPipeLocalInPorts( unit ) ) << unit;
      EXPECT_EQ( thx, shim.copiesConditionIfpDoubleCount( unit ) ) << unit;
      EXPECT_EQ( thx, shim.anyCopiesCondition( unit ) ) << unit;
      EXPECT_EQ( !thx, shim.ifpSliceSizeExempt( unit ) ) << unit;
   }
   EXPECT_FALSE( shim.ifpSliceSizeExempt( 4 ) ); // unknown chips are not exempt
   EXPECT_TRUE( shim.hasDataQualifiers( 0 ) && !shim.hasRangeModule( 0 ) );
   EXPECT_TRUE( shim.hasUdfModule( 1 ) && shim.requiresSerialMuxAllocation( 1 ) );
   EXPECT_TRUE( shim.hasRangeModule( 2 ) && !shim.hasFlexParser( 2 ) );
   EXPECT_TRUE( shim.hasFlexParser( 3 ) && shim.hasClassStage( 3 ) &&
                shim.udfWidthsJoined( 3 ) );
   EXPECT_EQ( 16u, shim.flexChunkCount( 3 ) );
   EXPECT_EQ( 32u, shim.udfMaxLength( 0 ) );
   EXPECT_TRUE( shim.entryManagerFamilyCheckTrident3( 1 ) );
   EXPECT_FALSE( shim.entryManagerFamilyCheckTh3( 2 ) );
   // Only the Classic chip shows untagged packets with outer VLAN 0.
   EXPECT_EQ( ( std::vector< bool >{ true, false, false, false, false } ),
              ( std::vector< bool >{ shim.untaggedOuterVlanZero( 0 ), shim.untaggedOuterVlanZero( 1 ),
                                     shim.untaggedOuterVlanZero( 2 ), shim.untaggedOuterVlanZero( 3 ),
                                     shim.untaggedOuterVlanZero( 4 ) } ) );
}

TEST( ShimNames, TablesFollowTheSdkNumbering ) {
   const Shim::Sdk shim;
   ASSERT_EQ( static_cast< size_t >( shim.AR_bcmFieldQualifyCount() ),
              shim.qualifierNames().size() );
   EXPECT_EQ(
      "InPorts",
      shim.qualifierNames()[ static_cast< size_t >( shim.AR_bcmFieldQualifyInPorts() ) ] );
   EXPECT_EQ(
      "RedirectPort",
      shim.actionNames()[ static_cast< size_t >( shim.AR_bcmFieldActionRedirectPort() ) ] );
   EXPECT_EQ(
      "GreenBytes",
      shim.statNames()[ static_cast< size_t >( shim.AR_bcmFieldStatGreenBytes() ) ] );
   EXPECT_EQ( bcmUdfAbstractPktFormatUnknownL3,
              shim.AR_bcmUdfAbstractPktFormatUnknownL3() );
   bcm_field_qset_t qset;
   BCM_FIELD_QSET_INIT( qset );
   shim.ob_field_qset_add( &qset, shim.AR_bcmFieldQualifyOuterVlanId() );
   shim.ob_field_qset_add( &qset, 100000 ); // out of range: ignored
   EXPECT_TRUE( shim.ob_field_qset_test( qset, bcmFieldQualifyOuterVlanId ) );
   shim.ob_field_qset_remove( &qset, bcmFieldQualifyOuterVlanId );
   EXPECT_FALSE( shim.ob_field_qset_test( qset, bcmFieldQualifyOuterVlanId ) );
   EXPECT_TRUE( shim.ob_field_stat_id_invalid( 0 ) );
   EXPECT_FALSE( shim.ob_field_stat_id_invalid( 3 ) );
}

TEST( ShimCapacity, StagesInListOrderWithFreeAndEntryCountsPerSlice ) {
   Box box( { "single" } );
   const ChipModel::Profile & profile = box.unit( 0 ).profile();
   bcm_field_group_config_t config =
      ingressGroup( profile, 5, 0, { bcmFieldQualifySrcIp6, bcmFieldQualifyDstIp6 } );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) ); // double wide
   for ( int e = 1; e <= 3; ++e ) {
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 5, e ) );
   }
   oberon_tcam_capacity_info info;
   std::memset( &info, 0x5a, sizeof( info ) ); // stale contents must not survive
   ASSERT_EQ( BCM_E_NONE, oberon_bcm_tcam_capacity_info_get( 0, &info ) );
   ASSERT_EQ( 3, info.num_stages );
   const oberon_tcam_stage_info & ifp = info.stages[ 0 ];
   EXPECT_EQ( bcmFieldStageIngress, ifp.stage_id );
   EXPECT_EQ( 12, ifp.tcam_slices );
   EXPECT_EQ( 12 * 256, ifp.tcam_sz );
   EXPECT_EQ( 256, ifp.slices[ 0 ].entry_count );
   EXPECT_EQ( 253, ifp.slices[ 0 ].free_count ); // both slices of the double row
   EXPECT_EQ( 253, ifp.slices[ 1 ].free_count );
   EXPECT_EQ( 256, ifp.slices[ 2 ].free_count );
   EXPECT_EQ( 0, ifp.slices[ 12 ].entry_count ); // past the stage: zero
   EXPECT_EQ( bcmFieldStageLookup, info.stages[ 1 ].stage_id );
   EXPECT_EQ( bcmFieldStageEgress, info.stages[ 2 ].stage_id );
   EXPECT_EQ( 0, info.stages[ 3 ].stage_id );
   EXPECT_EQ( 0, info.stages[ 4 ].tcam_sz );
}

TEST( ShimCapacity, AnUninitialisedFieldProcessorLeavesTheBufferAlone ) {
   Box box( { "single" } );
   box.unit( 0 ).fieldInitialisedIs( false );
   oberon_tcam_capacity_info info;
   info.num_stages = 77;
   EXPECT_EQ( OBERON_E_NO_FIELD_CONTROL, oberon_bcm_tcam_capacity_info_get( 0, &info ) );
   EXPECT_EQ( 77, info.num_stages );
   // So does a unit the SDK does not know.
   EXPECT_EQ( OBERON_E_NO_FIELD_CONTROL, oberon_bcm_tcam_capacity_info_get( 3, &info ) );
}

TEST( ShimCapacityDeathTest, ANullBufferIsAProgrammingError ) {
   EXPECT_DEATH(
      {
         Box box( { "single" } );
         oberon_bcm_tcam_capacity_info_get( 0, nullptr );
      },
      "Oberon.cpp:[0-9]+: int oberon_bcm_tcam_capacity_info_get\\(int, "
      "oberon_tcam_capacity_info\\*\\): Assertion 'info_p' failed." );
}

TEST( ShimFieldControl, GroupsWithTheirSliceChainsUnderTheLock ) {
   Box box( { "thx" } );
   const ChipModel::Profile & profile = box.unit( 0 ).profile();
   bcm_field_group_config_t wide = ingressGroup(
      profile, 0x2000007, 2, { bcmFieldQualifySrcIp6, bcmFieldQualifyDstIp6 } );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &wide ) );
   for ( int e = 1; e <= 769; ++e ) { // one more than a row of slices holds
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, wide.group, e ) );
   }
   bcm_field_control_t * control = nullptr;
   ASSERT_EQ( BCM_E_NONE, bcm_field_control_get( 0, &control ) );
   ASSERT_EQ( BCM_E_NONE, FP_LOCK( 0 ) );
   const bcm_field_control_group_t * g = control->groups;
   ASSERT_NE( nullptr, g );
   EXPECT_EQ( 0x2000007, g->gid );
   EXPECT_EQ( 2, g->pipe );
   int count = 0;
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_mode_slice_count_get(
                             0, static_cast< int >( g->flags & 0xffff ), &count ) );
   EXPECT_EQ( 2, count );
   std::vector< int > slices;
   for ( const bcm_field_control_slice_t * s = g->slices; s; s = s->next ) {
      for ( int k = 0; k < count; ++k ) {
         slices.push_back( s->slice_number + k );
      }
   }
   // Pipe 2's slices are numbered after those of pipes 0 and 1.
   int first = 2 * static_cast< int >( profile.stages[ 0 ].slicesPerPipe );
   EXPECT_EQ( ( std::vector< int >{ first, first + 1, first + 2, first + 3 } ), slices );
   EXPECT_EQ( 0, control->stages->slices[ first ].free_count );
   EXPECT_EQ( 767, control->stages->slices[ first + 2 ].free_count );
   EXPECT_EQ( nullptr, g->next );
   ASSERT_EQ( BCM_E_NONE, FP_UNLOCK( 0 ) );
   EXPECT_EQ( BCM_E_PARAM, FP_UNLOCK( 0 ) ); // not held
}

TEST( ShimWrappers, PortsPerPipeAndPacketFormatEquality ) {
   Box box( { "thx" } );
   Shim::PortConfig ports;
   ASSERT_EQ( BCM_E_NONE, bcm_port_config_get( 0, &ports ) );
   const ChipModel::Profile & profile = box.unit( 0 ).profile();
   for ( U32 pipe = 0; pipe < 4; ++pipe ) {
      bcm_pbmp_t inPipe = ports.per_pipe( pipe );
      EXPECT_EQ( 17, _shr_pbmp_count( inPipe ) ); // 16 front-panel ports and the loopback
      EXPECT_EQ( ChipModel::loopbackPort( profile, pipe ), ports.loopback_port( pipe ) );
   }
   EXPECT_TRUE( _shr_pbmp_is_null( ports.per_pipe( 4 ) ) );
   EXPECT_EQ( -1, ports.loopback_port( 9 ) );

   // What a packet format selects, not its priority, makes two formats one.
   Shim::UdfPktFormatInfo a;
   Shim::UdfPktFormatInfo b;
   b.prio = 9;
   EXPECT_TRUE( a == b );
   b.ethertype = 0x800;
   EXPECT_FALSE( a == b );
}
