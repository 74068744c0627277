#include "sdk/model/Group.h"

namespace ChipModel {

std::vector< U32 >
Group::usedPerRun() const {
   std::vector< U32 > used( chain.size(), 0 );
   for ( U32 row = 0; row < rows.capacity(); ++row ) {
      if ( rows.keyAt( row ) ) {
         ++used[ row / rowsPerSlice ];
      }
   }
   return used;
}

} // namespace ChipModel
