// Preselectors and hints: small objects that groups refer to.
#pragma once

#include <map>
#include <vector>

#include "platform/kiln/Types.h"
#include "sdk/api/field.h"
#include "sdk/model/Qualifiers.h"

namespace ChipModel {

struct Presel {
   bcm_field_presel_t id = 0;
   std::map< int, FieldValue > qualifiers; // by bcm_field_qualify_t
   U32 users = 0;                          // groups that select with it
};

struct Hint {
   bcm_field_hintid_t id = 0;
   std::vector< bcm_field_hint_t > hints;
   U32 users = 0;
};

} // namespace ChipModel
