// Capacity publication on the chip model, per profile: the published rows
// against the SDK's own field control walk and the profile's sizes, failing
// queries, stages the query does not report, and units that go away.
#include "startup/TesselTcamCapacity.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>

#include "platform/fastlog/TraceConfig.h"
#include "platform/fastlog/TraceSink.h"
#include "tests/startup/StartupTestSupport.h"

using namespace StartupTest;
using Hardware::Capacity::CapacityFigures;
using Hardware::Capacity::CapacityHelperSm;
using Hardware::Capacity::CapacityKey;
using Hardware::Capacity::CapacityRow;
using Hardware::Capacity::Tessel::TesselTcamCapacitySm;

namespace {

const char group[] = "TesselTcamCapacity";

// Slices of a stage as the SDK's field control shows them: entry and free
// counts, in slice order.
typedef std::vector< std::pair< int, int > > ControlSlices;

std::map< int, ControlSlices >
fieldControl( U32 unit ) {
   Kiln::UnlockAnchor anchor( Kiln::ActivityUnlockAnchor::lock() );
   std::map< int, ControlSlices > stages;
   int u = static_cast< int >( unit );
   EXPECT_EQ( BCM_E_NONE, FP_LOCK( u ) );
   bcm_field_control_t * control = nullptr;
   EXPECT_EQ( BCM_E_NONE, bcm_field_control_get( u, &control ) );
   for ( bcm_field_control_stage_t * s = control->stages; s; s = s->next ) {
      for ( int i = 0; i < s->tcam_slices; ++i ) {
         stages[ s->stage_id ].emplace_back( s->slices[ i ].entry_count,
                                             s->slices[ i ].free_count );
      }
   }
   EXPECT_EQ( BCM_E_NONE, FP_UNLOCK( u ) );
   return stages;
}

CapacityFigures
figuresOf( int entries, int free ) {
   return CapacityFigures( U32( entries - free ), U32( free ), 0, U32( entries ) );
}

class Capacity : public ::testing::TestWithParam< std::string > {
 protected:
   explicit Capacity( const std::vector< ChipModel::Profile > & profiles )
         : box( profiles, checkedOptions( false ) ), scsd( startupState( box.numUnits() ) ),
           helper( new CapacityHelperSm( "capacity" ) ),
           sm( new TesselTcamCapacitySm( "tcamCapacitySm" ) ) {
      sm->scsdIs( scsd );
      sm->capacityHelperSmIs( helper );
      sm->initCapacityTableFeatureMaps();
   }
   Capacity() : Capacity( { 2, profileNamed( GetParam() ) } ) {}

   static ChipModel::Profile
   profileNamed( const std::string & name ) {
      return *ChipModel::findProfile( name );
   }
   CapacityFigures
   row( U32 unit, const char * stage, const std::string & slice ) const {
      CapacityKey key( group, stage, unit, slice );
      EXPECT_TRUE( helper->capacityEntryHas( key ) ) << key.valueText();
      return helper->capacityEntry( key );
   }
   size_t
   rowsOf( U32 unit ) const {
      size_t n = 0;
      for ( const CapacityRow & r : helper->capacityTable() ) {
         n += r.key.unit == unit;
      }
      return n;
   }
   // Every row of the unit against the SDK's walk: each slice as it is,
   // the stage rows as the sums.
   void
   expectRowsMatchFieldControl( U32 unit ) {
      size_t expectedRows = 0;
      for ( const auto & [ stageId, slices ] : fieldControl( unit ) ) {
         const char * stage = Hardware::Capacity::Tessel::tcamStageName( stageId );
         if ( !stage ) {
            continue;
         }
         int entries = 0;
         int free = 0;
         for ( size_t s = 0; s < slices.size(); ++s ) {
            EXPECT_EQ( figuresOf( slices[ s ].first, slices[ s ].second ),
                       row( unit, stage, "Slice-" + std::to_string( s ) ) )
               << stage << " slice " << s;
            entries += slices[ s ].first;
            free += slices[ s ].second;
         }
         EXPECT_EQ( figuresOf( entries, free ), row( unit, stage, "" ) ) << stage;
         expectedRows += slices.size() + 1;
      }
      EXPECT_EQ( expectedRows, rowsOf( unit ) );
   }

   ChipModel::Box box;
   Kiln::Ptr< Agent::TesselCommonSmData > scsd;
   Kiln::Ptr< CapacityHelperSm > helper;
   Kiln::Ptr< TesselTcamCapacitySm > sm;
   FastLog::TraceCapture capture{ "*", FastLog::TraceLevels::all() };
   Kiln::ActivityLockGuard activity;
};

} // namespace

TEST_P( Capacity, RowsEqualTheFieldControlAndTheProfilesSizes ) {
   installIfpEntry( box, 0, 7 );
   sm->updateCapacityTable();
   expectRowsMatchFieldControl( 0 );
   expectRowsMatchFieldControl( 1 );

   // The sizes as the profile gives them; IFP rows of a half-row chip twice.
   const ChipModel::Profile & profile = box.unit( 0 ).profile();
   const ChipModel::StageProfile & ifp = *profile.stage( bcmFieldStageIngress );
   U32 slices = ifp.slicesPerPipe * profile.instances( ifp );
   U32 reported = ifp.entriesPerSlice * ( profile.ifpDoubleCount ? 2 : 1 );
   EXPECT_EQ( CapacityFigures( slices * ( reported - ifp.entriesPerSlice ),
                               slices * ifp.entriesPerSlice, 0, slices * reported ),
              row( 1, "IFP", "" ) );
   // The entry of unit 0 takes a row of the first slice of pipe 0.
   EXPECT_EQ( row( 1, "IFP", "Slice-0" ).used + 1, row( 0, "IFP", "Slice-0" ).used );
   EXPECT_EQ( row( 1, "IFP", "" ).free - 1, row( 0, "IFP", "" ).free );
   const ChipModel::StageProfile & vfp = *profile.stage( bcmFieldStageLookup );
   EXPECT_EQ( CapacityFigures( 0, vfp.slicesPerPipe * vfp.entriesPerSlice, 0,
                               vfp.slicesPerPipe * vfp.entriesPerSlice ),
              row( 0, "VFP", "" ) );
}

TEST_P( Capacity, AFailingQuerySkipsTheUnitAndLeavesItsRows ) {
   sm->updateCapacityTable();
   std::vector< CapacityRow > unit0Before;
   for ( const CapacityRow & r : helper->capacityTable() ) {
      if ( r.key.unit == 0 ) {
         unit0Before.push_back( r );
      }
   }
   installIfpEntry( box, 0, 7 );
   installIfpEntry( box, 1, 7 );
   capture.clear();
   box.failCall( 0, "oberon_bcm_tcam_capacity_info_get", 1, BCM_E_INTERNAL );
   sm->updateCapacityTable();

   std::vector< CapacityRow > unit0After;
   for ( const CapacityRow & r : helper->capacityTable() ) {
      if ( r.key.unit == 0 ) {
         unit0After.push_back( r );
      }
   }
   EXPECT_EQ( unit0Before, unit0After );
   expectRowsMatchFieldControl( 1 ); // the next unit was still done
   std::vector< std::string > texts = capture.texts();
   EXPECT_THAT( texts, ::testing::Contains(
                          "Unit: 0 oberon_bcm_tcam_capacity_info_get( unitIter.key(), &info ) "
                          "API ERROR: (rc:" + std::to_string( OBERON_E_NO_FIELD_CONTROL ) + ")" ) );
   EXPECT_THAT( matching( texts, "Computing .*" ),
                ::testing::ElementsAre( "Computing TesselTcamCapacity usage for unit: 1" ) );
}

TEST_P( Capacity, AUnitWithoutFieldProcessorPublishesNothing ) {
   box.unit( 1 ).fieldInitialisedIs( false );
   sm->updateCapacityTable();
   EXPECT_EQ( 0u, rowsOf( 1 ) );
   expectRowsMatchFieldControl( 0 );
}

TEST_P( Capacity, AUnitThatLeavesTakesItsRows ) {
   sm->updateCapacityTable();
   size_t unit0 = rowsOf( 0 );
   scsd->unitDel( 1 );
   EXPECT_EQ( 0u, rowsOf( 1 ) );
   EXPECT_EQ( unit0, rowsOf( 0 ) );
   sm->updateCapacityTable();
   EXPECT_EQ( 0u, rowsOf( 1 ) );
}

INSTANTIATE_TEST_SUITE_P( Profiles, Capacity, ::testing::ValuesIn( profiles() ),
                          []( const auto & info ) { return info.param; } );

namespace {

// th3 lists a class-id compression stage, which the query counts with a
// zero record. Shaped: the same chip with that stage first in the list.
class StageAboveEgress : public Capacity {
 protected:
   static std::vector< ChipModel::Profile >
   profiles() {
      ChipModel::Profile plain = profileNamed( "th3" );
      ChipModel::Profile first = plain;
      std::rotate( first.stages.begin(), first.stages.end() - 1, first.stages.end() );
      return { plain, first };
   }
   StageAboveEgress() : Capacity( profiles() ) {}
};

} // namespace

TEST_F( StageAboveEgress, KeepsItsZeroRecordAndAddsNothing ) {
   ASSERT_EQ( bcmFieldStageClass, box.unit( 1 ).profile().stages[ 0 ].stage );
   for ( U32 unit = 0; unit < 2; ++unit ) {
      oberon_tcam_capacity_info info;
      {
         Kiln::UnlockAnchor anchor( Kiln::ActivityUnlockAnchor::lock() );
         ASSERT_EQ( BCM_E_NONE, oberon_bcm_tcam_capacity_info_get( int( unit ), &info ) );
      }
      EXPECT_EQ( 4, info.num_stages );
      const oberon_tcam_stage_info & zero = info.stages[ unit == 0 ? 3 : 0 ];
      EXPECT_EQ( 0, zero.stage_id ); // reads as IFP's id
      EXPECT_EQ( 0, zero.tcam_slices );
   }
   sm->updateCapacityTable();
   for ( U32 unit = 0; unit < 2; ++unit ) {
      expectRowsMatchFieldControl( unit );
      // th3: 16 IFP slices in each of 8 pipes.
      EXPECT_EQ( CapacityFigures( 0, 128 * 256, 0, 128 * 256 ), row( unit, "IFP", "" ) );
      EXPECT_EQ( 128u + 4 + 4 + 3, rowsOf( unit ) );
   }
}

// A buffer as a faulty SDK could fill it: more stages than records and more
// slices than a record holds are cut to what the buffer has.
TEST_F( StageAboveEgress, ABufferClaimingTooMuchIsReadWithinItsBounds ) {
   oberon_tcam_capacity_info info{};
   info.num_stages = 9;
   info.stages[ 0 ].stage_id = bcmFieldStageIngress;
   info.stages[ 0 ].tcam_slices = 1000;
   for ( oberon_tcam_slice_info & slice : info.stages[ 0 ].slices ) {
      slice = { 10, 16 };
   }
   info.stages[ 4 ].stage_id = bcmFieldStageEgress;
   info.stages[ 4 ].tcam_slices = 1;
   info.stages[ 4 ].slices[ 0 ] = { 20, 10 }; // more free than entries
   sm->publishCapacity( 5, info );
   EXPECT_EQ( CapacityFigures( 128 * 6, 128 * 10, 0, 128 * 16 ), row( 5, "IFP", "" ) );
   EXPECT_EQ( CapacityFigures( 6, 10, 0, 16 ), row( 5, "IFP", "Slice-127" ) );
   EXPECT_EQ( CapacityFigures( 0, 20, 0, 10 ), row( 5, "EFP", "Slice-0" ) );
   EXPECT_EQ( CapacityFigures(), row( 5, "VFP", "" ) );
   EXPECT_EQ( 128u + 1 + 1 + 2, rowsOf( 5 ) );
}

TEST( CapacityDeathTest, NeedsACapacityService ) {
   EXPECT_DEATH(
      {
         Kiln::Ptr< TesselTcamCapacitySm > sm = new TesselTcamCapacitySm( "sm" );
         sm->updateCapacityTable();
      },
      "TesselTcamCapacity.cpp:[0-9]+: void "
      "Hardware::Capacity::Tessel::TesselTcamCapacitySm::updateCapacityTable\\(\\): "
      "Assertion 'TCAM capacity without a capacity service' failed." );
}
