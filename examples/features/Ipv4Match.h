// What the example features match in IPv4 packets, and how a match becomes
// TCAM keys.
//
// A match names fields as a user writes them (address prefixes, a protocol,
// inclusive port ranges, a DSCP, in-ports); a key is one TCAM row's
// value/mask per field. Port ranges are the one field a single row cannot
// always hold: portMatches() turns a range into value/mask pairs, and a
// match becomes one key per pair of source and destination port pairs.
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
   std::optional< U8 > dscp;
   TesselTypes::TesselPortList inPorts; // empty: every port

   bool operator==( const Ipv4Match & ) const = default;
};

// One TCAM row's worth of a match: the match with one value/mask pair in
// place of each port range.
struct Ipv4Key {
   Ipv4Match match;
   PortPrefix srcPort{ 0, 0 };
   PortPrefix dstPort{ 0, 0 };
};

// The value/mask pairs that together match exactly the ports of `range`:
// one pair with mask 0 for every port, else the fewest prefixes. Every port
// range of every feature goes through here, so a range checker can take
// the range first once the library offers them.
std::vector< PortPrefix > portMatches( const PortRange & range );

// The keys that together match `match` (source pairs times destination
// pairs), in order.
std::vector< Ipv4Key > ipv4Keys( const Ipv4Match & match );

// Qualifies entry `entry` of `unit` with the key: IPv4 packets, and each
// field whose mask is not 0; in-ports are handed to the entry's manager,
// which qualifies every copy with them when it installs the entry. The
// first SDK error, else 0. Call with the activity lock held; each SDK call
// releases it.
int qualifyIpv4( Tessel::TesselTcamEntryManager & manager, U32 unit, U32 entry,
                 const Ipv4Key & key );

// The match fields of the workload and packet formats, read from a line:
// src, dst (prefixes), proto, sport, dport (ranges), dscp (0 to 63) and in
// (ports).
Ipv4Match readIpv4Match( const FieldLine & line );
// The keys readIpv4Match reads.
const std::vector< std::string > & ipv4MatchFields();

// "src=10.0.0.0/8 proto=tcp dport=80": the fields that are not wildcards,
// as readIpv4Match reads them ("any" when none is).
std::string ipv4MatchText( const Ipv4Match & match );

} // namespace Features
