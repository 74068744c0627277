// Where the reservation rows' entry managers live: the logical entry range
// of each bounded row, and which rows a unit keeps.
#pragma once

#include "catalogue/TesselTcamGroups.h"
#include "common/TesselExport.h"
#include "platform/agent/ChipInfo.h"

namespace Tessel {

// Logical entry ids of the bounded reservation rows start here, high in the
// 24-bit id space, well clear of the ids the SDK picks for unbounded
// entries (counted up from 1).
constexpr U32 reservationEntryBase = 0x00800000;

struct EntryRange {
   U32 baseEntry;
   U32 endEntry; // exclusive
};

// The entry range of reservation row `row`: bounded rows take consecutive
// ranges of their count, in table order, so every feature has the same
// range on every unit; unbounded rows get baseEntry 0 and endEntry their
// count (0 when none is fixed).
TESSEL_EXPORT EntryRange
reservationEntryRange( U32 row );

// Whether a unit keeps a reservation row: units whose ingress runs per pipe
// use the dedicated control groups, the others the shared ones; the system
// ACL row belongs to TH3 chips only.
TESSEL_EXPORT bool
reservationKept( const Agent::ChipInfo & info, TcamGroupAssignment featureId );

} // namespace Tessel
