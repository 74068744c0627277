#include "manager/GroupHints.h"

#include <array>

#include "catalogue/TcamGroupId.h"
#include "manager/SdkShimAccess.h"

namespace Tessel {

namespace {

// Hint numbers by group; 0: no hint.
U32
hintNumber( U32 groupId ) {
   switch ( groupId ) {
    case IFP_GROUP_IPV6_STD_PACL_RACL_:
      return 1;
    case IFP_GROUP_IPV6_RACL_:
      return 2;
    default:
      return 0;
   }
}

// Indexed by hint number; row 0 unused.
const std::array< GroupHint, 3 > &
hintTable() {
   static const std::array< GroupHint, 3 > table = {
      GroupHint{ 0, 0, 0, 0 },
      GroupHint{ U32( sdkShim().AR_bcmFieldQualifySrcIp6() ), 0, 64, 127 },
      GroupHint{ U32( sdkShim().AR_bcmFieldQualifyDstIp6() ), 0, 64, 127 },
   };
   return table;
}

} // namespace

const GroupHint *
groupHint( U32 groupId ) {
   U32 number = hintNumber( groupId );
   return number ? &hintTable()[ number ] : nullptr;
}

int
groupHintType() {
   return sdkShim().AR_bcmFieldHintTypeExtraction();
}

} // namespace Tessel
