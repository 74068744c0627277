// Keys of the group manager's per-group and per-unit collections.
//
//   GroupIdToPipeGroupId  a catalogue group and the SDK id of one of its pipe
//                         copies (getPipeGroupId); ordered by group, then by
//                         pipe group id, so one group's copies sit together
//   GroupUnitKey          (unit, group): hint ids of a group
//   UnitGroupId           (unit, SDK group id): preselectors of a pipe group
//
// Plain value types with the platform's value text form.
#pragma once

#include <compare>
#include <iosfwd>
#include <string>

#include "common/TesselExport.h"
#include "platform/kiln/Types.h"

namespace Tessel {

struct GroupIdToPipeGroupId {
   U32 groupId = 0;     // TcamGroupId
   U32 pipeGroupId = 0; // bits 0-23 group, 24-26 pipe, 27 copy

   auto operator<=>( const GroupIdToPipeGroupId & ) const = default;
   TESSEL_EXPORT std::string valueText() const;
};

struct GroupUnitKey {
   U32 unit = 0;
   U32 groupId = 0;

   auto operator<=>( const GroupUnitKey & ) const = default;
   TESSEL_EXPORT std::string valueText() const;
};

struct UnitGroupId {
   U32 unit = 0;
   U32 groupId = 0; // an SDK group id: the group itself for pipe 0, copy 0

   auto operator<=>( const UnitGroupId & ) const = default;
   TESSEL_EXPORT std::string valueText() const;
};

TESSEL_EXPORT std::ostream & operator<<( std::ostream & os, const GroupIdToPipeGroupId & k );
TESSEL_EXPORT std::ostream & operator<<( std::ostream & os, const GroupUnitKey & k );
TESSEL_EXPORT std::ostream & operator<<( std::ostream & os, const UnitGroupId & k );

} // namespace Tessel
