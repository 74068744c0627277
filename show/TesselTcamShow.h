// The TCAM reports that need no group manager: the raw slice table, the
// reservation listing, and the pieces of an entry dump with their value
// printers. The group manager's own reports are its members (showTcamUsage
// and its like, manager/TesselTcamGroupManager.h).
//
// Each SDK read is made with the activity lock released (common/
// TesselSdkCall.h). Printers write "<name>:" and then data and mask lines,
// each ending in "\n".
#pragma once

#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "common/TesselExport.h"
#include "platform/kiln/String.h"
#include "platform/kiln/Types.h"
#include "sdk/api/types.h"

namespace Tessel {

// The unit's slices per stage as the capacity query reports them: a boxed
// table per stage with every slice's entries and free entries and the
// stage's totals. IFP entry counts are halved on chips whose slices count
// half rows. A failing capacity query is fatal (standard error, then an
// assertion).
TESSEL_EXPORT Kiln::String tcamUsage( U32 unit );

// Every reservation of the catalogue, in table order, as
// "<name> <group assignment>#".
TESSEL_EXPORT Kiln::String getTcamReservationData();

// The entry decoded into `out`: "   Group: <id>", then its qualifiers,
// actions and statistics; "entry 0x<hex> (<dec>) not found.\n\n" when the
// unit has no such entry.
TESSEL_EXPORT void showDiagEntryTcamUsage( std::ostringstream & out, U32 unit, U32 entryId );
// "=== Qualifiers ===" and each qualifier of the -1-terminated list that
// the entry sets (mask not zero).
TESSEL_EXPORT void printTcamEntryQualifiers( std::ostringstream & out, U32 unit, U32 entryId,
                                             const int * qualifierIds );
// "=== Actions ===" and each action with its non-zero parameters.
TESSEL_EXPORT void printTcamEntryActions( std::ostringstream & out, U32 unit, U32 entryId );
// "=== Statistics ===", "Counters: " and each counter of the entry's stat.
TESSEL_EXPORT void printTcamEntryStatistics( std::ostringstream & out, U32 unit, U32 entryId );

// Value printers. IPv4 values are in host order (10.0.0.1 is 0x0a000001).
TESSEL_EXPORT void printIntData( std::ostream & out, const std::string & name, U32 data,
                                 U32 mask );
TESSEL_EXPORT void printIpData( std::ostream & out, const std::string & name, bcm_ip_t data,
                                bcm_ip_t mask );
// Prints nothing when the first 32 bits of the mask are zero.
TESSEL_EXPORT void printIp6Data( std::ostream & out, const std::string & name,
                                 const bcm_ip6_t & data, const bcm_ip6_t & mask );
TESSEL_EXPORT void printMacData( std::ostream & out, const std::string & name,
                                 const bcm_mac_t & data, const bcm_mac_t & mask );
// Prints nothing when the data bitmap is empty.
TESSEL_EXPORT void printPbmpData( std::ostream & out, const std::string & name,
                                  const bcm_pbmp_t & data, const bcm_pbmp_t & mask );
TESSEL_EXPORT void printEnumType( std::ostream & out, const std::string & name,
                                  const std::string & valueName );

} // namespace Tessel
