// The control interface: box lifecycle, call log, fault injection, the
// activity-lock check and object counts.
#include "tests/sdk/model/ModelTestSupport.h"

#include <stdexcept>

#include "platform/kiln/Activity.h"
#include "sdk/shim/Shim.h"
#include "tests/common/Thrown.h"

using namespace ModelTest;
using ChipModel::ActivityCheck;
using ChipModel::Box;

TEST( ModelBox, UnknownProfileIsRefusedNamingTheKnownOnes ) {
   EXPECT_EQ( "unknown chip profile 'quartz9' (known: single, trident3, thx, th3)",
              TestText::thrownText< std::invalid_argument >(
                 [] { Box box( { "thx", "quartz9" } ); } ) );
   EXPECT_EQ( nullptr, Box::current() ); // nothing half-built is left current
   EXPECT_EQ( nullptr, Shim::sdk_ );
}

TEST( ModelBox, InstallsTheShimAndTheUnitsWhileItLives ) {
   EXPECT_EQ( BCM_E_UNIT, bcm_field_group_destroy( 0, 1 ) ); // no box yet
   {
      Box box( { "single", "th3" } );
      ASSERT_NE( nullptr, Shim::sdk_ );
      EXPECT_EQ( Shim::chipTypeClassic, Shim::sdk_->chipType( 0 ) );
      EXPECT_EQ( Shim::chipTypeTh3, Shim::sdk_->chipType( 1 ) );
      EXPECT_EQ( BCM_E_UNIT, bcm_field_group_destroy( 2, 1 ) );
      EXPECT_EQ( BCM_E_NOT_FOUND, bcm_field_group_destroy( 1, 1 ) );
   }
   EXPECT_EQ( nullptr, Shim::sdk_ );
   EXPECT_EQ( BCM_E_UNIT, bcm_field_group_destroy( 0, 1 ) );
}

TEST( ModelBoxDeathTest, OneBoxAtATime ) {
   EXPECT_DEATH(
      {
         Box first( { "single" } );
         Box second( { "single" } );
      },
      "Assertion 'one chip model box at a time' failed" );
}

TEST( ModelBox, CallLogRecordsFunctionUnitArgumentsAndResult ) {
   Box box( { "single", "single" } );
   bcm_field_group_config_t config =
      groupConfig( box.unit( 1 ).profile(), 7, qsetOf( { bcmFieldQualifySrcIp } ), 3 );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 1, &config ) );
   EXPECT_EQ( BCM_E_EXISTS, bcm_field_group_config_create( 1, &config ) );
   EXPECT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 1, 7, 100 ) );
   EXPECT_EQ( BCM_E_NONE, bcm_field_entry_prio_set( 1, 100, 55 ) );
   std::vector< ChipModel::CallRecord > log = box.callLog();
   ASSERT_EQ( 4u, log.size() );
   EXPECT_EQ( "bcm_field_group_config_create(1, 1, 7, 3, 0) = -8", log[ 1 ].text() );
   EXPECT_EQ( "bcm_field_entry_prio_set", log[ 3 ].function );
   EXPECT_EQ( ( std::vector< S64 >{ 100, 55 } ), log[ 3 ].args );
   EXPECT_EQ( 2u, box.callCount( "bcm_field_group_config_create" ) );
   EXPECT_EQ( 2u, box.callCount( "bcm_field_group_config_create", 1 ) );
   EXPECT_EQ( 0u, box.callCount( "bcm_field_group_config_create", 0 ) );
   box.clearCallLog();
   EXPECT_TRUE( box.callLog().empty() );
}

TEST( ModelBox, NthCallOfANamedFunctionFailsAndChangesNothing ) {
   Box box( { "single", "single" } );
   const auto & profile = box.unit( 0 ).profile();
   for ( int unit = 0; unit < 2; ++unit ) {
      bcm_field_group_config_t config =
         groupConfig( profile, 7, qsetOf( { bcmFieldQualifySrcIp } ), 3 );
      ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( unit, &config ) );
   }
   box.failCall( 0, "bcm_field_entry_create_id", 2, BCM_E_RESOURCE, 2 );
   EXPECT_EQ( 1u, box.pendingFaults() );
   EXPECT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 7, 1 ) );
   EXPECT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 1, 7, 2 ) ); // other unit: not counted
   EXPECT_EQ( BCM_E_RESOURCE, bcm_field_entry_create_id( 0, 7, 2 ) );
   EXPECT_EQ( BCM_E_RESOURCE, bcm_field_entry_create_id( 0, 7, 3 ) );
   EXPECT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 7, 4 ) );
   EXPECT_EQ( 0u, box.pendingFaults() );
   EXPECT_EQ( 2u, box.counts( 0 ).entries ); // the failed calls created nothing
   EXPECT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, 7, 2 ) );
   // The failed calls are logged with the injected code.
   EXPECT_EQ( 5u, box.callCount( "bcm_field_entry_create_id", 0 ) );
   EXPECT_EQ( BCM_E_RESOURCE, box.callLog()[ 5 ].rc );
}

TEST( ModelBox, FaultsOnAnyUnitAndByTheShimCallsName ) {
   Box box( { "single", "single" } );
   box.failCall( -1, "ob_field_entry_copy_id", 1, BCM_E_INTERNAL );
   EXPECT_EQ( BCM_E_INTERNAL, SdkShim->ob_field_entry_copy_id( 1, 1, 2 ) );
   EXPECT_EQ( BCM_E_NOT_FOUND, SdkShim->ob_field_entry_copy_id( 1, 1, 2 ) );
   EXPECT_EQ( 2u, box.callCount( "ob_field_entry_copy_id", 1 ) );
   EXPECT_EQ( 2u, box.callCount( "bcm_field_entry_content_copy" ) );
   box.failCall( 0, "oberon_tcam_flash_program", 1, BCM_E_TIMEOUT );
   EXPECT_EQ( BCM_E_TIMEOUT, oberon_tcam_flash_program( 0, false, false, false, false ) );
   EXPECT_TRUE( box.unit( 0 ).staged() );
   box.clearFaults();
   EXPECT_EQ( BCM_E_NONE, oberon_tcam_flash_program( 0, false, false, false, false ) );
   EXPECT_FALSE( box.unit( 0 ).staged() );
}

TEST( ModelBox, ActivityCheckCountsCallsMadeWithTheLockHeld ) {
   Box box( { "single" } );
   box.activityCheckIs( ActivityCheck::count );
   EXPECT_EQ( BCM_E_NOT_FOUND, bcm_field_group_destroy( 0, 1 ) );
   {
      Kiln::ActivityLockGuard held;
      EXPECT_EQ( BCM_E_NOT_FOUND, bcm_field_group_destroy( 0, 1 ) );
      // Constant chip facts may be asked with the lock held.
      EXPECT_TRUE( Shim::sdk_->isClassicFamily( 0 ) );
      {
         Kiln::UnlockAnchor anchor( Kiln::ActivityUnlockAnchor::lock() );
         EXPECT_EQ( BCM_E_NOT_FOUND, bcm_field_group_destroy( 0, 1 ) );
      }
   }
   EXPECT_EQ( 1u, box.activityViolations() );
   box.activityCheckIs( ActivityCheck::off );
   {
      Kiln::ActivityLockGuard held;
      bcm_field_group_destroy( 0, 1 );
   }
   EXPECT_EQ( 1u, box.activityViolations() );
}

TEST( ModelBoxDeathTest, ActivityCheckAbortsOnACallWithTheLockHeld ) {
   Box::Options options;
   options.activityCheck = ActivityCheck::abort;
   EXPECT_DEATH(
      {
         Box box( { "single" }, options );
         Kiln::ActivityLockGuard held;
         bcm_field_entry_install( 0, 5 );
      },
      "Assertion 'bcm_field_entry_install called while holding the activity lock' failed" );
}

TEST( ModelBox, CountsEveryKindOfLiveObjectPerUnit ) {
   Box box( { "thx", "single" } );
   const auto & thx = box.unit( 0 ).profile();
   EXPECT_EQ( "none", box.counts().text() );
   bcm_field_presel_t presel;
   ASSERT_EQ( BCM_E_NONE, bcm_field_presel_create( 0, &presel ) );
   bcm_field_hintid_t hint;
   ASSERT_EQ( BCM_E_NONE, bcm_field_hints_create( 0, &hint ) );
   bcm_field_group_config_t config =
      groupConfig( thx, 5, qsetOf( { bcmFieldQualifyRangeCheck } ), 1, 2 );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) );
   bcm_field_entry_t entry;
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create( 0, 5, &entry ) );
   bcm_field_stat_t types[] = { bcmFieldStatPackets, bcmFieldStatBytes };
   int stat;
   ASSERT_EQ( BCM_E_NONE, bcm_field_stat_create( 0, 5, 2, types, &stat ) );
   bcm_range_config_t range;
   bcm_range_config_t_init( &range );
   range.max = 10;
   range.ports = ChipModel::pipePorts( thx, 2 );
   ASSERT_EQ( BCM_E_NONE, bcm_range_create( 0, 0, &range ) );
   bcm_policer_config_t policer;
   bcm_policer_config_t_init( &policer );
   bcm_policer_t policerId;
   ASSERT_EQ( BCM_E_NONE, bcm_policer_create( 0, &policer, &policerId ) );
   bcm_field_data_qualifier_t data;
   bcm_field_data_qualifier_t_init( &data );
   data.byte_length = 2;
   ASSERT_EQ( BCM_E_NONE, bcm_field_data_qualifier_create( 1, &data ) );
   bcm_field_data_packet_format_t format;
   bcm_field_data_packet_format_t_init( &format );
   ASSERT_EQ( BCM_E_NONE,
              bcm_field_data_qualifier_packet_format_add( 1, data.qual_id, &format ) );

   EXPECT_EQ( "groups=1 entries=1 stats=1 presels=1 hints=1 ranges=1 policers=1",
              box.counts( 0 ).text() );
   EXPECT_EQ( "dataQualifiers=1 packetFormats=1", box.counts( 1 ).text() );
   EXPECT_EQ( 9u, box.counts().total() );

   EXPECT_EQ( BCM_E_NONE,
              bcm_field_data_qualifier_packet_format_delete( 1, data.qual_id, &format ) );
   EXPECT_EQ( BCM_E_NONE, bcm_field_data_qualifier_destroy( 1, data.qual_id ) );
   EXPECT_EQ( BCM_E_NONE, bcm_policer_destroy( 0, policerId ) );
   EXPECT_EQ( BCM_E_NONE, bcm_range_destroy( 0, range.rid ) );
   EXPECT_EQ( BCM_E_NONE, bcm_field_entry_destroy( 0, entry ) );
   EXPECT_EQ( BCM_E_NONE, bcm_field_stat_destroy( 0, stat ) );
   EXPECT_EQ( BCM_E_NONE, bcm_field_group_destroy( 0, 5 ) );
   EXPECT_EQ( BCM_E_NONE, bcm_field_hints_destroy( 0, hint ) );
   EXPECT_EQ( BCM_E_NONE, bcm_field_presel_destroy( 0, presel ) );
   EXPECT_EQ( ChipModel::ObjectCounts{}, box.counts() ) << box.counts().text();
}
