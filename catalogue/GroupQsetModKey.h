// GroupQsetModKey: the key of the per-chip qualifier adjustments, a group
// and a chip type (the platform's chip-type code, Shim::ChipType). Each key
// occurs at most once in the exclude table and once in the include table;
// the group manager indexes both tables by it.
#pragma once

#include <compare>
#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>

#include "common/TesselExport.h"
#include "platform/kiln/Hash.h"
#include "platform/kiln/Types.h"

namespace Tessel {

struct GroupQsetModKey {
   U32 groupId = 0;
   U32 chipType = 0;

   // Ordered by group, then chip type.
   auto operator<=>( const GroupQsetModKey & ) const = default;

   // "Value('Tessel::GroupQsetModKey', ** {'groupId': 7, 'chipType': 3})"
   TESSEL_EXPORT std::string
   valueText() const;
};

// The value text form.
TESSEL_EXPORT std::ostream &
operator<<( std::ostream & os, const GroupQsetModKey & key );

} // namespace Tessel

template<>
struct std::hash< Tessel::GroupQsetModKey > {
   std::size_t
   operator()( const Tessel::GroupQsetModKey & key ) const noexcept {
      return Kiln::hashCombine( Kiln::hashMix( key.groupId ), key.chipType );
   }
};
