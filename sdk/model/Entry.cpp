#include "sdk/model/Entry.h"

namespace ChipModel {

const Action *
EntryImage::action( bcm_field_action_t which ) const {
   for ( const Action & a : actions ) {
      if ( a.action == which ) {
         return &a;
      }
   }
   return nullptr;
}

} // namespace ChipModel
