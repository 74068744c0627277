// Value texts and constructors of the range-checker records and of the
// group manager's companions.

#include "manager/RangeCheckerRecords.h"
#include "manager/TesselTcamCompanions.h"
#include "platform/kiln/ValueText.h"

namespace Tessel {

std::string
RangeCheckerDesc::valueText() const {
   return Kiln::ValueText( "Tessel::RangeCheckerDesc" )
      .field( "low", low )
      .field( "high", high )
      .field( "rangeFlags", rangeFlags )
      .str();
}

std::string
UnitRangeInfoKey::valueText() const {
   return Kiln::ValueText( "Tessel::UnitRangeInfoKey" )
      .field( "unit", unit )
      .field( "baseRangeId", baseRangeId )
      .str();
}

QualPreselDataList::QualPreselDataList( U32 id )
      : Kiln::Entity( "excludedQual" + std::to_string( id ) ), id_( id ) {}

} // namespace Tessel
