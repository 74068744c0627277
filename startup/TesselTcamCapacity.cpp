#include "startup/TesselTcamCapacity.h"

#include "common/TesselSdkCall.h"
#include "platform/fastlog/Trace.h"
#include "platform/kiln/Assert.h"
#include "startup/KeepAlive.h"

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

TRACE_CHANNEL( "TesselTcamCapacity" );

namespace Hardware::Capacity::Tessel {

// A unit that leaves the start-up state takes its rows with it.
class TesselTcamCapacitySm::ScsdReactor : public Agent::TesselCommonSmData::NotifieeConst {
 public:
   explicit ScsdReactor( TesselTcamCapacitySm & sm ) : sm_( sm ) {}

   void
   onUnit( U32 unit ) override {
      if ( notifier()->unitHas( unit ) || !sm_.capacityHelperSm() ) {
         return;
      }
      size_t removed = sm_.capacityHelperSm()->capacityEntryDelUnit(
         tesselTcamCapacityFeatureGroup, unit );
      TRACE5( "Unit " << unit << " gone: " << removed << " capacity rows removed" );
   }

 private:
   TesselTcamCapacitySm & sm_;
};

namespace {

const char noService[] = "TCAM capacity without a capacity service";

// Walks a snapshot of the units, one key at a time: while a query has the
// activity lock released units may come and go, so the caller checks each
// one against the live state.
class UnitIter {
 public:
   explicit UnitIter( const Kiln::OrderedSet< U32 > & units ) : units_( units.keys() ) {}
   explicit operator bool() const { return next_ < units_.size(); }
   U32 key() const { return units_[ next_ ]; }
   UnitIter &
   operator++() {
      ++next_;
      return *this;
   }

 private:
   std::vector< U32 > units_;
   size_t next_ = 0;
};

U32
toFigure( S64 value ) {
   return static_cast< U32 >(
      std::clamp< S64 >( value, 0, std::numeric_limits< U32 >::max() ) );
}

} // namespace

TesselTcamCapacitySm::TesselTcamCapacitySm( const Kiln::Name & name )
      : Kiln::Entity( name ), scsdReactor_( std::make_unique< ScsdReactor >( *this ) ) {}

TesselTcamCapacitySm::~TesselTcamCapacitySm() = default;

void
TesselTcamCapacitySm::scsdIs( const Kiln::Ptr< Agent::TesselCommonSmData > & scsd ) {
   if ( attributeIs( scsd_, scsd, &NotifieeConst::onScsd ) ) {
      scsdReactor_->notifierIs( scsd );
   }
}

void
TesselTcamCapacitySm::initCapacityTableFeatureMaps() {
   TRACE8( "initCapacityTableFeatureMaps" );
   KILN_ASSERT_MSG( capacityHelperSm(), noService );
   for ( int stageId : { bcmFieldStageIngress, bcmFieldStageLookup, bcmFieldStageEgress } ) {
      capacityHelperSm()->initCapacityTableFeature( tesselTcamCapacityFeatureGroup,
                                                    tcamStageName( stageId ) );
   }
}

void
TesselTcamCapacitySm::updateCapacityTable() {
   TRACE8( "updateCapacityTable" );
   KILN_ASSERT_MSG( capacityHelperSm(), noService );
   ::Tessel::KeepAlive keep( *this );
   Kiln::Ptr< Agent::TesselCommonSmData > state = scsd();
   if ( !state ) {
      return;
   }
   for ( UnitIter unitIter( state->unitCollection() ); unitIter; ++unitIter ) {
      if ( !state->unitHas( unitIter.key() ) ) {
         continue;
      }
      oberon_tcam_capacity_info info{};
      int rc = SDK_CALL_UNIT( unitIter.key(),
                              oberon_bcm_tcam_capacity_info_get( unitIter.key(), &info ) );
      // Skipped: the unit failed, or went away while the query ran.
      if ( rc < 0 || !state->unitHas( unitIter.key() ) ) {
         continue;
      }
      publishCapacity( unitIter.key(), info );
   }
}

void
TesselTcamCapacitySm::publishCapacity( U32 unit, const oberon_tcam_capacity_info & info ) {
   KILN_ASSERT_MSG( capacityHelperSm(), noService );
   TRACE5( "Computing " << tesselTcamCapacityFeatureGroup << " usage for unit: " << unit );
   for ( int stageId : { bcmFieldStageIngress, bcmFieldStageLookup, bcmFieldStageEgress } ) {
      publishStage( unit, stageId, info );
   }
}

// Every record of the stage contributes its slices. A stage the query does
// not report (an id above 2) leaves a zero record, whose id reads 0 but
// which has no slices, so it adds nothing to IFP.
void
TesselTcamCapacitySm::publishStage( U32 unit, int stageId,
                                    const oberon_tcam_capacity_info & info ) {
   CapacityHelperSm & helper = *capacityHelperSm();
   const Kiln::String group = tesselTcamCapacityFeatureGroup;
   const Kiln::String stage = tcamStageName( stageId );
   S64 entries = 0;
   S64 free = 0;
   int records = std::clamp( info.num_stages, 0, OBERON_TCAM_STAGES_MAX );
   for ( int r = 0; r < records; ++r ) {
      const oberon_tcam_stage_info & record = info.stages[ r ];
      if ( record.stage_id != stageId ) {
         continue;
      }
      int slices = std::clamp( record.tcam_slices, 0, OBERON_TCAM_SLICES_MAX );
      for ( int s = 0; s < slices; ++s ) {
         const oberon_tcam_slice_info & slice = record.slices[ s ];
         Kiln::String row = tcamSliceRowName( s );
         if ( !helper.capacityEntryHas( CapacityKey( group, stage, unit, row ) ) ) {
            helper.initCapacityTableFeature( group, stage, unit, row );
         }
         helper.updateCapacityEntry( group, stage, unit, row,
                                     toFigure( S64( slice.entry_count ) - slice.free_count ),
                                     toFigure( slice.free_count ), 0,
                                     toFigure( slice.entry_count ) );
         entries += slice.entry_count;
         free += slice.free_count;
      }
   }
   helper.updateCapacityEntry( group, stage, unit, "", toFigure( entries - free ),
                               toFigure( free ), 0, toFigure( entries ) );
}

} // namespace Hardware::Capacity::Tessel
