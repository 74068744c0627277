// Groups: ids, width, slices, placement in pipes, expansion, compression,
// status and teardown, on every profile.
#include "tests/sdk/model/ModelTestSupport.h"

using namespace ModelTest;
using ChipModel::Box;

namespace {

class GroupOnEveryProfile : public ::testing::TestWithParam< std::string > {
 protected:
   GroupOnEveryProfile() : box_( { GetParam() }, committed() ) {}
   const ChipModel::Profile & profile() { return box_.unit( 0 ).profile(); }
   const ChipModel::StageProfile & ifp() {
      return *profile().stage( bcmFieldStageIngress );
   }
   int create( bcm_field_group_t id, bcm_field_qset_t qset, int priority = 1,
               U32 pipe = 0 ) {
      bcm_field_group_config_t config = groupConfig( profile(), id, qset, priority, pipe );
      return bcm_field_group_config_create( 0, &config );
   }
   bcm_field_group_status_t status( bcm_field_group_t id ) {
      bcm_field_group_status_t s;
      EXPECT_EQ( BCM_E_NONE, bcm_field_group_status_get( 0, id, &s ) );
      return s;
   }
   Box box_;
};

const bcm_field_qset_t narrow = qsetOf( { bcmFieldQualifySrcIp, bcmFieldQualifyDstIp } );
// 128 + 128 + 16 + 16 + 8 bits: two slices per row.
const bcm_field_qset_t ipv6 =
   qsetOf( { bcmFieldQualifySrcIp6, bcmFieldQualifyDstIp6, bcmFieldQualifyL4SrcPort,
             bcmFieldQualifyL4DstPort, bcmFieldQualifyIpProtocol } );

} // namespace

TEST_P( GroupOnEveryProfile, CallerIdsAreOpaqueAndModelIdsAreSmall ) {
   // Pipe and copy bits in a caller's id say nothing about placement.
   bcm_field_group_t withPipeBits = ( 1 << 27 ) | ( 5 << 24 ) | 291;
   ASSERT_EQ( BCM_E_NONE, create( withPipeBits, narrow ) );
   EXPECT_EQ( 0, box_.unit( 0 ).state().field.group( withPipeBits )->instance );
   EXPECT_EQ( BCM_E_EXISTS, create( withPipeBits, narrow ) );
   EXPECT_EQ( BCM_E_PARAM, create( 0, narrow ) );
   EXPECT_EQ( BCM_E_PARAM, create( BCM_FIELD_ID_MAX + 1, narrow ) );
   bcm_field_group_config_t config = groupConfig( profile(), 0, narrow, 1 );
   config.flags &= ~BCM_FIELD_GROUP_CREATE_WITH_ID;
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) );
   EXPECT_GT( config.group, 0 );
   EXPECT_LT( config.group, 1 << 24 );
}

TEST_P( GroupOnEveryProfile, QualifierSetFixesTheWidthAndAModeMayWidenIt ) {
   ASSERT_EQ( BCM_E_NONE, create( 1, narrow ) );
   ASSERT_EQ( BCM_E_NONE, create( 2, ipv6 ) );
   bcm_field_group_mode_t mode;
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_mode_get( 0, 1, &mode ) );
   EXPECT_EQ( bcmFieldGroupModeSingle, mode );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_mode_get( 0, 2, &mode ) );
   EXPECT_EQ( bcmFieldGroupModeDouble, mode );
   EXPECT_EQ( 2, status( 2 ).slices_used );

   bcm_field_group_config_t config = groupConfig( profile(), 3, ipv6, 1 );
   config.flags |= BCM_FIELD_GROUP_CREATE_WITH_MODE;
   config.mode = bcmFieldGroupModeSingle; // narrower than the qualifiers
   EXPECT_EQ( BCM_E_PARAM, bcm_field_group_config_create( 0, &config ) );
   config.mode = bcmFieldGroupModeTriple;
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) );
   EXPECT_EQ( 3, status( 3 ).slices_used );
}

TEST_P( GroupOnEveryProfile, CreationTakesFreeSlicesUntilNoneAreLeft ) {
   U32 slices = ifp().slicesPerPipe;
   for ( U32 g = 1; g <= slices; ++g ) {
      ASSERT_EQ( BCM_E_NONE, create( static_cast< int >( g ), narrow ) ) << g;
   }
   EXPECT_EQ( BCM_E_RESOURCE, create( 100, narrow ) );
   EXPECT_EQ( nullptr, box_.unit( 0 ).state().field.group( 100 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_destroy( 0, 4 ) );
   EXPECT_EQ( BCM_E_NONE, create( 100, narrow ) );
   // A double-wide group needs two free slices side by side.
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_destroy( 0, 100 ) );
   EXPECT_EQ( BCM_E_RESOURCE, create( 101, ipv6 ) );
}

TEST_P( GroupOnEveryProfile, StatusCountsFreeRowsAndFreeSlicesItMayExpandInto ) {
   U32 rows = ifp().entriesPerSlice;
   U32 slices = ifp().slicesPerPipe;
   ASSERT_EQ( BCM_E_NONE, create( 1, narrow ) );
   bcm_field_group_status_t s = status( 1 );
   EXPECT_EQ( static_cast< int >( rows * slices ), s.entries_free );
   EXPECT_EQ( s.entries_free, s.entries_total );
   EXPECT_EQ( BCM_FIELD_ENTRY_PRIO_HIGHEST, s.prio_max );
   EXPECT_EQ( 0, s.prio_min );
   // Another group's slice is no longer free for this one.
   ASSERT_EQ( BCM_E_NONE, create( 2, narrow ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 1, 10 ) );
   s = status( 1 );
   EXPECT_EQ( static_cast< int >( rows * ( slices - 1 ) - 1 ), s.entries_free );
   EXPECT_EQ( static_cast< int >( rows * ( slices - 1 ) ), s.entries_total );
   EXPECT_EQ( 1, s.slices_used );
}

TEST_P( GroupOnEveryProfile, EntriesExpandTheGroupAndCompressGivesEmptySlicesBack ) {
   U32 rows = ifp().entriesPerSlice;
   ASSERT_EQ( BCM_E_NONE, create( 1, narrow ) );
   for ( U32 e = 1; e <= rows + 1; ++e ) {
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 1, static_cast< int >( e ) ) );
   }
   EXPECT_EQ( 2, status( 1 ).slices_used );
   EXPECT_EQ( BCM_E_BUSY, bcm_field_group_destroy( 0, 1 ) );
   for ( U32 e = 1; e <= rows; ++e ) {
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_destroy( 0, static_cast< int >( e ) ) );
   }
   EXPECT_EQ( 2, status( 1 ).slices_used ); // destroying entries keeps the slices
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_compress( 0, 1 ) );
   EXPECT_EQ( 1, status( 1 ).slices_used );
   // The entry that survived the compress is still there and still found.
   EXPECT_GE( box_.unit( 0 ).state().field.rowOf( static_cast< int >( rows + 1 ) ), 0 );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_destroy( 0, static_cast< int >( rows + 1 ) ) );
   EXPECT_EQ( BCM_E_NONE, bcm_field_group_destroy( 0, 1 ) );
   EXPECT_EQ( ChipModel::ObjectCounts{}, box_.counts() );
}

TEST_P( GroupOnEveryProfile, ReferencesMustExistAndHoldTheirObjectsUntilTheGroupGoes ) {
   bcm_field_group_config_t config = groupConfig( profile(), 1, narrow, 1 );
   config.flags |= BCM_FIELD_GROUP_CREATE_WITH_HINTID;
   config.hintid = 9;
   EXPECT_EQ( BCM_E_NOT_FOUND, bcm_field_group_config_create( 0, &config ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_hints_create( 0, &config.hintid ) );
   bcm_field_hint_t hint;
   bcm_field_hint_t_init( &hint );
   hint.hint_type = bcmFieldHintTypeExtraction;
   hint.qual = bcmFieldQualifyDstIp;
   hint.start_bit = 0;
   hint.end_bit = 23;
   ASSERT_EQ( BCM_E_NONE, bcm_field_hints_add( 0, config.hintid, &hint ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) );
   EXPECT_EQ( BCM_E_BUSY, bcm_field_hints_destroy( 0, config.hintid ) );
   bcm_field_hint_t back;
   ASSERT_EQ( BCM_E_NONE, bcm_field_hints_get( 0, config.hintid, 0, &back ) );
   EXPECT_EQ( 23u, back.end_bit );
   EXPECT_EQ( BCM_E_NOT_FOUND, bcm_field_hints_get( 0, config.hintid, 1, &back ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_destroy( 0, 1 ) );
   EXPECT_EQ( BCM_E_NONE, bcm_field_hints_destroy( 0, config.hintid ) );
}

TEST_P( GroupOnEveryProfile, StageComesFromTheQualifierSetAndOperModeFromTheProfile ) {
   ASSERT_EQ( BCM_E_NONE, create( 1, qsetOf( { bcmFieldQualifyStageLookup,
                                               bcmFieldQualifyOuterVlanId } ) ) );
   ASSERT_EQ( BCM_E_NONE, create( 2, qsetOf( { bcmFieldQualifyStageEgress,
                                               bcmFieldQualifyOutPort } ) ) );
   const auto & field = box_.unit( 0 ).state().field;
   EXPECT_EQ( bcmFieldStageLookup, field.group( 1 )->stage );
   EXPECT_EQ( bcmFieldStageEgress, field.group( 2 )->stage );
   bcm_field_group_oper_mode_t mode;
   ASSERT_EQ( BCM_E_NONE,
              bcm_field_group_oper_mode_get( 0, bcmFieldQualifyStageIngress, &mode ) );
   EXPECT_EQ( ifp().pipeLocal ? bcmFieldGroupOperModePipeLocal
                              : bcmFieldGroupOperModeGlobal,
              mode );
   ASSERT_EQ( BCM_E_NONE,
              bcm_field_group_oper_mode_get( 0, bcmFieldQualifyStageLookup, &mode ) );
   EXPECT_EQ( bcmFieldGroupOperModeGlobal, mode );
   EXPECT_EQ( BCM_E_PARAM,
              bcm_field_group_oper_mode_get( 0, bcmFieldQualifySrcIp, &mode ) );
   bool classStage = profile().stage( bcmFieldStageClass ) != nullptr;
   EXPECT_EQ( classStage ? BCM_E_NONE : BCM_E_UNAVAIL,
              create( 3, qsetOf( { bcmFieldQualifyCompressionSelect,
                                   bcmFieldQualifyL4SrcPort } ) ) );
}

TEST_P( GroupOnEveryProfile, FlagsWithNothingBehindThemRestrictNothing ) {
   // The agent sets the action-set, hint-id and mode flags on every group.
   bcm_field_group_config_t config = groupConfig( profile(), 1, narrow, 1 );
   config.flags |= BCM_FIELD_GROUP_CREATE_WITH_ASET | BCM_FIELD_GROUP_CREATE_WITH_HINTID |
                   BCM_FIELD_GROUP_CREATE_WITH_MODE;
   config.mode = bcmFieldGroupModeAuto;
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 1, 5 ) );
   EXPECT_EQ( BCM_E_NONE, bcm_field_action_add( 0, 5, bcmFieldActionCopyToCpu, 0, 0 ) );
   EXPECT_FALSE( box_.unit( 0 ).state().field.group( 1 )->hint.has_value() );
   bcm_field_group_config_t noPorts = groupConfig( profile(), 2, narrow, 1 );
   noPorts.flags |= BCM_FIELD_GROUP_CREATE_WITH_PORT;
   BCM_PBMP_CLEAR( noPorts.ports );
   EXPECT_EQ( BCM_E_PARAM, bcm_field_group_config_create( 0, &noPorts ) );
}

INSTANTIATE_TEST_SUITE_P( Profiles, GroupOnEveryProfile,
                          ::testing::Values( "single", "trident3", "thx", "th3" ) );

// Pipe-local stages: a group's pipe comes from its ports or preselectors.
class PipeLocalGroup : public ::testing::Test {
 protected:
   PipeLocalGroup() : box_( { "thx" }, committed() ) {}
   const ChipModel::Profile & profile() { return box_.unit( 0 ).profile(); }
   bcm_field_presel_t preselForPipe( U32 pipe ) {
      bcm_field_presel_t presel;
      EXPECT_EQ( BCM_E_NONE, bcm_field_presel_create( 0, &presel ) );
      EXPECT_EQ( BCM_E_NONE, bcm_field_qualify_Stage( 0, presel | BCM_FIELD_QUALIFY_PRESEL,
                                                      bcmFieldStageIngress ) );
      EXPECT_EQ( BCM_E_NONE, bcm_field_qualify_MixedSrcClassId(
                                0, presel | BCM_FIELD_QUALIFY_PRESEL,
                                ChipModel::pipePorts( profile(), pipe ), 0, 0 ) );
      return presel;
   }
   bcm_field_group_config_t
   byPresel( bcm_field_group_t id, std::initializer_list< bcm_field_presel_t > presels ) {
      bcm_field_group_config_t config;
      bcm_field_group_config_t_init( &config );
      config.flags = BCM_FIELD_GROUP_CREATE_WITH_ID | BCM_FIELD_GROUP_CREATE_WITH_PRESELSET;
      config.group = id;
      config.qset = qsetOf( { bcmFieldQualifySrcIp } );
      for ( bcm_field_presel_t p : presels ) {
         BCM_FIELD_PRESEL_ADD( config.preselset, p );
      }
      return config;
   }
   Box box_;
};

TEST_F( PipeLocalGroup, PortsOrPreselectorsPlaceTheGroupInOnePipe ) {
   bcm_field_group_config_t config =
      groupConfig( profile(), 1, qsetOf( { bcmFieldQualifySrcIp } ), 1, 3 );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) );
   EXPECT_EQ( 3, box_.unit( 0 ).state().field.group( 1 )->pipe );

   bcm_field_group_config_t viaPresel = byPresel( 2, { preselForPipe( 2 ) } );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &viaPresel ) );
   EXPECT_EQ( 2, box_.unit( 0 ).state().field.group( 2 )->pipe );
   // Several groups live in one pipe, each in its own slices.
   bcm_field_group_config_t again = byPresel( 3, { preselForPipe( 2 ) } );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &again ) );
   EXPECT_NE( box_.unit( 0 ).state().field.group( 2 )->chain,
              box_.unit( 0 ).state().field.group( 3 )->chain );
   // The same slice numbers are free again in every other pipe.
   EXPECT_EQ( box_.unit( 0 ).state().field.group( 1 )->chain,
              box_.unit( 0 ).state().field.group( 2 )->chain );
}

TEST_F( PipeLocalGroup, GroupsSpanningPipesOrWithoutRestrictionAreRefused ) {
   bcm_field_group_config_t config =
      groupConfig( profile(), 1, qsetOf( { bcmFieldQualifySrcIp } ), 1, 0 );
   config.flags &= ~BCM_FIELD_GROUP_CREATE_WITH_PORT;
   EXPECT_EQ( BCM_E_PARAM, bcm_field_group_config_create( 0, &config ) );
   config.flags |= BCM_FIELD_GROUP_CREATE_WITH_PORT;
   config.ports = portsOf( { portIn( profile(), 0 ), portIn( profile(), 1 ) } );
   EXPECT_EQ( BCM_E_PARAM, bcm_field_group_config_create( 0, &config ) );
   bcm_field_group_config_t mixed =
      byPresel( 2, { preselForPipe( 0 ), preselForPipe( 1 ) } );
   EXPECT_EQ( BCM_E_PARAM, bcm_field_group_config_create( 0, &mixed ) );
   bcm_field_group_config_t unknown = byPresel( 3, { 77 } );
   EXPECT_EQ( BCM_E_NOT_FOUND, bcm_field_group_config_create( 0, &unknown ) );
   EXPECT_EQ( 0u, box_.counts( 0 ).groups );
}

TEST_F( PipeLocalGroup, APreselectorInUseCannotBeDestroyed ) {
   bcm_field_presel_t presel = preselForPipe( 1 );
   bcm_field_group_config_t config = byPresel( 1, { presel } );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) );
   EXPECT_EQ( BCM_E_BUSY, bcm_field_presel_destroy( 0, presel ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_destroy( 0, 1 ) );
   EXPECT_EQ( BCM_E_NONE, bcm_field_presel_destroy( 0, presel ) );
   bcm_field_stage_t stage;
   EXPECT_EQ( BCM_E_NOT_FOUND,
              bcm_field_qualify_Stage_get( 0, presel | BCM_FIELD_QUALIFY_PRESEL, &stage ) );
}
