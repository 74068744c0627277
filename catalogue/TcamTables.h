// The catalogue's static tables, for the functions of TesselTcamGroups.cpp.
// Not part of the library's interface.
#pragma once

#include "catalogue/TesselTcamGroups.h"

namespace Tessel::Tables {

// The group table: numTcamGroupDefs rows in table order. Until
// fillGroupQualifiers() runs, the qualifier slots hold only the -1
// terminators.
TcamGroupDef *
groupDefs();

// Asks the shim for the group table's qualifier values; the first call
// does the work, later calls return at once.
void
fillGroupQualifiers();

// The qualifier list of a mirroring ACL type (0, 1 or 2), filled from the
// shim on its first use.
int *
mirrorAclFields( int mirrorAclType );

// The exclude and include tables (numGroupExcludes and numGroupIncludes
// rows), filled from the shim on the first call of each.
const TcamQsetModDef *
excludeRows();
const TcamQsetModDef *
includeRows();

// The reservation table: numReservationRows rows, then one zeroed row so
// that index numReservationRows can be handed out without reading past the
// table.
constexpr U32 numReservationRows = 127;
const TcamReservation *
reservationRows();

// The group map: no rows, only a zeroed placeholder to point at.
const TcamGroupMap *
groupMapRows();

} // namespace Tessel::Tables
