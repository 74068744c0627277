#include "platform/agent/CapacityHelperSm.h"

#include "platform/kiln/Assert.h"
#include "platform/kiln/Hash.h"
#include "platform/kiln/ValueText.h"

namespace Hardware::Capacity {

namespace {

const char keyTypeName[] = "Hardware::Capacity::CapacityKey";
const char figuresTypeName[] = "Hardware::Capacity::CapacityFigures";

} // namespace

CapacityKey::CapacityKey( std::string_view text ) {
   Kiln::ValueTextReader r( text, keyTypeName );
   featureGroup = r.text( "featureGroup" );
   feature = r.text( "feature" );
   unit = r.number< U32 >( "unit" );
   row = r.text( "row" );
   r.end();
}

std::string
CapacityKey::valueText() const {
   return Kiln::ValueText( keyTypeName )
      .field( "featureGroup", featureGroup )
      .field( "feature", feature )
      .field( "unit", unit )
      .field( "row", row )
      .str();
}

CapacityFigures::CapacityFigures( std::string_view text ) {
   Kiln::ValueTextReader r( text, figuresTypeName );
   used = r.number< U32 >( "used" );
   free = r.number< U32 >( "free" );
   reserved = r.number< U32 >( "reserved" );
   total = r.number< U32 >( "total" );
   r.end();
}

std::string
CapacityFigures::valueText() const {
   return Kiln::ValueText( figuresTypeName )
      .field( "used", used )
      .field( "free", free )
      .field( "reserved", reserved )
      .field( "total", total )
      .str();
}

void
CapacityHelperSm::featureIs( const Kiln::String & featureGroup, const Kiln::String & feature ) {
   KILN_ASSERT_MSG( !featureGroup.empty() && !feature.empty(),
                    "capacity feature group and feature must be named" );
   collectionIs( capacityFeature_, FeatureKey( featureGroup, feature ),
                 &NotifieeConst::onCapacityFeature );
}

void
CapacityHelperSm::initCapacityTableFeature( const Kiln::String & featureGroup,
                                            const Kiln::String & feature ) {
   featureIs( featureGroup, feature );
}

void
CapacityHelperSm::initCapacityTableFeature( const Kiln::String & featureGroup,
                                            const Kiln::String & feature, U32 unit,
                                            const Kiln::String & row ) {
   featureIs( featureGroup, feature );
   CapacityKey key( featureGroup, feature, unit, row );
   if ( !capacityEntry_.has( key ) ) {
      collectionIs( capacityEntry_, key, CapacityFigures(), &NotifieeConst::onCapacityEntry );
   }
}

void
CapacityHelperSm::updateCapacityEntry( const Kiln::String & featureGroup,
                                       const Kiln::String & feature, U32 unit,
                                       const Kiln::String & row, U32 used, U32 free,
                                       U32 reserved, U32 total ) {
   KILN_ASSERT_MSG( capacityFeatureHas( featureGroup, feature ),
                    "capacity feature not registered" );
   collectionIs( capacityEntry_, CapacityKey( featureGroup, feature, unit, row ),
                 CapacityFigures( used, free, reserved, total ), &NotifieeConst::onCapacityEntry );
}

size_t
CapacityHelperSm::capacityEntryDelUnit( const Kiln::String & featureGroup, U32 unit ) {
   size_t deleted = 0;
   for ( const CapacityKey & key : capacityEntry_.keys() ) {
      if ( key.featureGroup == featureGroup && key.unit == unit ) {
         deleted += collectionDel( capacityEntry_, key, &NotifieeConst::onCapacityEntry );
      }
   }
   return deleted;
}

std::vector< CapacityRow >
CapacityHelperSm::capacityTable() const {
   std::vector< CapacityRow > table;
   table.reserve( capacityEntry_.size() );
   for ( const auto & [ key, figures ] : capacityEntry_ ) {
      table.push_back( CapacityRow{ key, figures } );
   }
   return table;
}

} // namespace Hardware::Capacity

size_t
std::hash< Hardware::Capacity::CapacityKey >::operator()(
   const Hardware::Capacity::CapacityKey & key ) const noexcept {
   size_t h = std::hash< Kiln::String >()( key.featureGroup );
   h = Kiln::hashCombine( h, key.feature );
   h = Kiln::hashCombine( h, key.unit );
   return Kiln::hashCombine( h, key.row );
}
