// A field entry as the model holds it: what software set (qualifiers,
// actions, range checks) and, once installed, the image written to
// hardware, which is what packets are matched against.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "platform/kiln/Types.h"
#include "sdk/api/field.h"
#include "sdk/model/Qualifiers.h"

namespace ChipModel {

struct Action {
   bcm_field_action_t action;
   U32 param0 = 0;
   U32 param1 = 0;
   bool hasPorts = false;
   bcm_pbmp_t ports{};
};

struct RangeCheck {
   bcm_field_range_t range;
   bool invert;
};

struct EntryImage {
   std::map< int, FieldValue > qualifiers;     // by bcm_field_qualify_t
   std::map< int, FieldValue > dataQualifiers; // by data qualifier id
   std::map< int, FieldValue > udfs;           // by UDF id
   std::vector< RangeCheck > ranges;
   std::vector< Action > actions; // in the order they were added

   const Action * action( bcm_field_action_t which ) const;
};

struct Entry {
   bcm_field_entry_t id = 0;
   bcm_field_group_t group = 0;
   int priority = BCM_FIELD_ENTRY_PRIO_DEFAULT;
   EntryImage soft;                      // what was set
   std::optional< EntryImage > hardware; // what is installed
   bool enabled = true;
   int statId = 0;            // 0: none
   bcm_policer_t policer = 0; // level 0; 0: none

   bool installed() const { return hardware.has_value(); }
};

} // namespace ChipModel
