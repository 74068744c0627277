// Text forms of the range-checker keys.
#include "resources/TesselRangeCheckerTypes.h"

#include "platform/kiln/ValueText.h"

namespace Tessel {

std::string
RangeCheckerDesc::valueText() const {
   return Kiln::ValueText( "Tessel::RangeCheckerDesc" )
      .field( "low", low_ )
      .field( "high", high_ )
      .field( "rangeFlags", rangeFlags_ )
      .str();
}

std::string
UnitRangeInfoKey::valueText() const {
   return Kiln::ValueText( "Tessel::UnitRangeInfoKey" )
      .field( "unit", unit )
      .field( "baseRangeId", baseRangeId )
      .str();
}

} // namespace Tessel
