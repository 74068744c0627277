#include "catalogue/GroupQsetModKey.h"

#include <ostream>

#include "platform/kiln/ValueText.h"

namespace Tessel {

std::string
GroupQsetModKey::valueText() const {
   return Kiln::ValueText( "Tessel::GroupQsetModKey" )
      .field( "groupId", groupId )
      .field( "chipType", chipType )
      .str();
}

std::ostream &
operator<<( std::ostream & os, const GroupQsetModKey & key ) {
   return os << key.valueText();
}

} // namespace Tessel
