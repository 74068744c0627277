// The slices of one stage of a unit: which group owns each slice, per stage
// instance (per pipe for a pipe-local stage, else one instance).
#pragma once

#include <optional>
#include <vector>

#include "platform/kiln/Types.h"
#include "sdk/api/field.h"
#include "sdk/model/Profile.h"

namespace ChipModel {

class StageSlices {
 public:
   StageSlices( const StageProfile & profile, U32 instances );

   const StageProfile & profile() const { return *profile_; }
   U32 instances() const { return static_cast< U32 >( owner_.size() ); }
   U32 slicesPerInstance() const { return profile_->slicesPerPipe; }

   // First slice of the lowest free run of `width` slices starting at a
   // multiple of width, or nullopt.
   std::optional< U32 > findFreeRun( U32 instance, U32 width ) const;
   // Number of such runs that are free.
   U32 freeRuns( U32 instance, U32 width ) const;
   void take( U32 instance, U32 first, U32 width, bcm_field_group_t group );
   void release( U32 instance, U32 first, U32 width );
   // The owner of a slice; 0 when free.
   bcm_field_group_t owner( U32 instance, U32 slice ) const;
   U32 freeSlices() const;

 private:
   const StageProfile * profile_;
   std::vector< std::vector< bcm_field_group_t > > owner_;
};

} // namespace ChipModel
