// What the example features match in IPv4 packets, and how a match becomes
// TCAM keys.
//
// A match names fields as a user writes them (address prefixes, a protocol,
// inclusive port ranges or a set of destination ports, a DSCP, in-ports); a
// key is one TCAM row's value/mask per field. Port ranges and port sets are
// the fields a single row cannot always hold. A feature first tries the
// chip's shared resources: a range checker for a range, a block of class
// ids for a port set (KeyResources). What it did not get is expanded:
// portMatches() turns a range into value/mask pairs, a set becomes one row
// per port, and a match one key per pair of source and destination rows.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "examples/features/ClassBench.h"
#include "examples/features/FieldText.h"
#include "manager/TesselTcamEntryManager.h"
#include "platform/agent/PortList.h"
#include "platform/kiln/Types.h"

namespace Features {

struct PortRange {
   U16 low = 0;
   U16 high = 0xffff;
   bool any() const { return low == 0 && high == 0xffff; }
   bool has( U16 port ) const { return low <= port && port <= high; }
   bool operator==( const PortRange & ) const = default;
};

struct Ipv4Match {
   U32 srcIp = 0;
   U32 srcMask = 0;
   U32 dstIp = 0;
   U32 dstMask = 0;
   U8 protocol = 0;
   U8 protocolMask = 0; // 0: any protocol
   PortRange srcPorts;
   PortRange dstPorts;
   std::vector< U16 > dstPortSet; // ascending, distinct; empty: none (dstPorts applies)
   std::optional< U8 > dscp;
   TesselTypes::TesselPortList inPorts; // empty: every port

   bool operator==( const Ipv4Match & ) const = default;
};

// A value/mask over 8-bit class ids.
struct ClassMatch {
   U8 value = 0;
   U8 mask = 0;
   bool operator==( const ClassMatch & ) const = default;
};

// What the chip's shared resources hold of a match on one unit: range
// checker ids (0: none) for its source and destination port ranges, and
// the class ids its destination port set was bound to.
struct KeyResources {
   U32 srcRange = 0;
   U32 dstRange = 0;
   std::optional< ClassMatch > dstPortClass;
};

// One TCAM row's worth of a match: the match with one value/mask pair in
// place of each port range (mask 0 where a resource matches the range).
struct Ipv4Key {
   Ipv4Match match;
   PortPrefix srcPort{ 0, 0 };
   PortPrefix dstPort{ 0, 0 };
   KeyResources resources;
};

// The value/mask pairs that together match exactly the ports of `range`:
// one pair with mask 0 for every port, else the fewest prefixes.
std::vector< PortPrefix > portMatches( const PortRange & range );

// Whether a range needs a checker to stay one row: neither one port nor all.
bool rangeNeedsChecker( const PortRange & range );

// The keys that together match `match` (source rows times destination
// rows), in order; the ranges and the set that `resources` holds take one
// row each.
std::vector< Ipv4Key > ipv4Keys( const Ipv4Match & match, const KeyResources & resources = {} );

// Qualifies entry `entry` of `unit` with the key: IPv4 packets, each field
// whose mask is not 0, the key's range checkers (attached through the
// manager, which gives every pipe copy its pipe's checker) and its port
// class; in-ports are handed to the entry's manager, which qualifies every
// copy with them when it installs the entry. The first SDK error, else 0.
// Call with the activity lock held; each SDK call releases it.
int qualifyIpv4( Tessel::TesselTcamEntryManager & manager, U32 unit, U32 entry,
                 const Ipv4Key & key );

// The match fields of the workload format, read from a line: src, dst
// (prefixes), proto, sport, dport (ranges), dports (a set of at most
// maxPortSet destination ports, "53,5000-5003"; not with dport), dscp (0 to
// 63) and in (ports).
constexpr U32 maxPortSet = 16;
Ipv4Match readIpv4Match( const FieldLine & line );
// The keys readIpv4Match reads.
const std::vector< std::string > & ipv4MatchFields();

// "src=10.0.0.0/8 proto=tcp dport=80": the fields that are not wildcards,
// as readIpv4Match reads them ("any" when none is).
std::string ipv4MatchText( const Ipv4Match & match );

} // namespace Features
