// The SDK's own view of a unit's field processor (bcm_field_control_t),
// rebuilt from the model's state whenever the field-processor lock is taken.
#pragma once

#include <vector>

#include "sdk/api/field.h"
#include "sdk/model/FieldProcessor.h"

namespace ChipModel {

class FieldControl {
 public:
   FieldControl() = default;
   FieldControl( const FieldControl & ) = delete;
   FieldControl & operator=( const FieldControl & ) = delete;

   // Rebuilds the structure. control() keeps its address; the records it
   // points to are valid until the next rebuild.
   void rebuild( const FieldProcessor & field );
   bcm_field_control_t * control() { return &control_; }

 private:
   void rebuildStage( const FieldProcessor & field, const StageSlices & slices,
                      size_t index );
   void rebuildGroups( const FieldProcessor & field );

   bcm_field_control_t control_{};
   std::vector< bcm_field_control_stage_t > stages_;
   std::vector< std::vector< bcm_field_control_slice_t > > slices_;
   std::vector< bcm_field_control_group_t > groups_;
};

} // namespace ChipModel
