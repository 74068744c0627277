// Indexes the catalogue's per-chip qualifier tables by (group, chip type).
#pragma once

#include <map>

#include "catalogue/TesselTcamGroups.h"
#include "common/TesselExport.h"

namespace Tessel {

// Walks row( 0 ), row( 1 ) ... until null and returns each row's index
// under its GroupQsetModKey. A key that comes twice aborts with
// "<key> <what> double definition" ("Exclude", "Include").
TESSEL_EXPORT std::map< GroupQsetModKey, U32 >
indexQsetModRows( const TcamQsetModDef * ( *row )( U32 ), const char * what );

} // namespace Tessel
