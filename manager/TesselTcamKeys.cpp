#include "manager/TesselTcamKeys.h"

#include <ostream>

#include "platform/kiln/ValueText.h"

namespace Tessel {

std::string
GroupIdToPipeGroupId::valueText() const {
   return Kiln::ValueText( "Tessel::GroupIdToPipeGroupId" )
      .field( "groupId", groupId )
      .field( "pipeGroupId", pipeGroupId )
      .str();
}

std::string
GroupUnitKey::valueText() const {
   return Kiln::ValueText( "Tessel::GroupUnitKey" )
      .field( "unit", unit )
      .field( "groupId", groupId )
      .str();
}

std::string
UnitGroupId::valueText() const {
   return Kiln::ValueText( "Tessel::UnitGroupId" )
      .field( "unit", unit )
      .field( "groupId", groupId )
      .str();
}

std::ostream &
operator<<( std::ostream & os, const GroupIdToPipeGroupId & k ) {
   return os << k.valueText();
}

std::ostream &
operator<<( std::ostream & os, const GroupUnitKey & k ) {
   return os << k.valueText();
}

std::ostream &
operator<<( std::ostream & os, const UnitGroupId & k ) {
   return os << k.valueText();
}

} // namespace Tessel
