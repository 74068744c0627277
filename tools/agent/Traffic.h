// Traffic: the packets the agent sends through the chip model, read from a
// packet file or from a ClassBench header trace, and what each met.
//
// Packet file: one packet per line, fields written key=value, '#' starts a
// comment; an omitted field takes its default:
//
//   unit=0            unit the packet enters
//   port=1            ingress port (front-panel ports of pipe p start at
//                     1 + p * the profile's port stride; 1 is pipe 0's first)
//   vlan=VID pri=0    802.1Q tag (1 to 4094) and its priority; none: untagged
//   smac=02:00:00:00:00:01 dmac=02:00:00:00:00:02 etype=0x0800
//   src=0.0.0.0 dst=0.0.0.0 proto=tcp (a name or 0 to 255)
//   sport=0 dport=0 dscp=0 flags=0 (TCP flags) ttl=64
//   len=0             frame length counters and meters see; 0: the built frame's
//   time=0            arrival time in microseconds, for policers
//   payload=0x...     bytes after the L4 header (1 to 64); none by default
//   count=1           the line stands for this many packets (1 to 100000)
//
// A bad line stops the reading with "<file>:<line>: <what>".
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "examples/features/ClassBench.h"
#include "sdk/model/Box.h"
#include "sdk/model/Packet.h"

namespace SimAgent {

struct TrafficPacket {
   std::string where; // "file:line" of a packet file's line
   U32 unit = 0;
   ChipModel::Packet packet;
};

// The packets of a packet file, `count` copies of a line in a row.
std::vector< TrafficPacket > readTrafficFile( const std::string & path );

// A ClassBench header as a TCP/UDP/other IPv4 packet on `port` of unit 0.
TrafficPacket packetOfHeader( const Features::ClassBenchHeader & header, int port );

// The first front-panel port of pipe 0 of the unit.
int firstFrontPanelPort( const ChipModel::Box & box, U32 unit );

} // namespace SimAgent
