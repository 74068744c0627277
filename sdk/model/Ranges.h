// Range checkers of a unit: the older field-range API (checkers of the
// unit) and the range module (checkers of one pipe each).
#pragma once

#include <map>
#include <optional>

#include "platform/kiln/Types.h"
#include "sdk/api/range.h"
#include "sdk/model/Profile.h"

namespace ChipModel {

struct FieldRange {
   bcm_field_range_t id = 0;
   U32 flags = 0;
   int min = 0;
   int max = 0;
};

struct ModuleRange {
   bcm_range_t rid = 0;
   bcm_range_type_t type = bcmRangeTypeL4SrcPort;
   U32 min = 0;
   U32 max = 0;
   U32 pipe = 0;
   bcm_pbmp_t ports{};
};

class RangeTable {
 public:
   explicit RangeTable( const Profile & profile ) : profile_( &profile ) {}

   int fieldRangeCreate( bcm_field_range_t & id, bool withId, U32 flags, int min, int max );
   int fieldRangeDestroy( bcm_field_range_t id );
   const FieldRange * fieldRange( bcm_field_range_t id ) const;
   int moduleRangeCreate( bool withId, bcm_range_config_t & config );
   int moduleRangeDestroy( bcm_range_t rid );
   const ModuleRange * moduleRange( bcm_range_t rid ) const;
   // Whether a packet's values hit the checker with that id (either API).
   bool hits( U32 id, U32 l4SrcPort, U32 l4DstPort, U32 length ) const;
   // The pipe of a range-module checker; nullopt for older-API checkers.
   std::optional< U32 > pipeOf( U32 id ) const;
   bool exists( U32 id ) const;
   U32 count() const {
      return static_cast< U32 >( fieldRanges_.size() + moduleRanges_.size() );
   }

 private:
   const Profile * profile_;
   std::map< bcm_field_range_t, FieldRange > fieldRanges_;
   std::map< bcm_range_t, ModuleRange > moduleRanges_;
};

} // namespace ChipModel
