#include "catalogue/GroupQsetModKey.h"

#include <ostream>

#include "catalogue/TcamGroupId.h"

namespace Tessel {

std::ostream &
operator<<( std::ostream & os, const GroupQsetModKey & key ) {
   return os << "GroupQsetModKey(" << static_cast< TcamGroupId >( key.groupId ) << ", "
             << key.chipType << ")";
}

} // namespace Tessel
