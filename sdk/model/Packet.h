// A packet sent into a modelled unit: the header fields the field processor
// matches, and its bytes as they are on the wire (for user-defined fields).
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "platform/kiln/Types.h"

namespace ChipModel {

struct Packet {
   int inPort = 1;
   std::optional< U16 > vlan; // outer tag; none: untagged
   U8 vlanPriority = 0;
   std::array< U8, 6 > srcMac{ { 0x02, 0, 0, 0, 0, 1 } };
   std::array< U8, 6 > dstMac{ { 0x02, 0, 0, 0, 0, 2 } };
   U16 etherType = 0x0800; // 0x0800 IPv4, 0x86dd IPv6, others carry no IP
   U32 srcIp = 0;          // IPv4, host order
   U32 dstIp = 0;
   std::array< U8, 16 > srcIp6{};
   std::array< U8, 16 > dstIp6{};
   U8 protocol = 6; // IP protocol; TCP 6, UDP 17, ICMP 1
   U16 l4SrcPort = 0;
   U16 l4DstPort = 0;
   U8 tcpFlags = 0;
   U8 dscp = 0;
   U8 ttl = 64;
   std::vector< U8 > payload;    // bytes after the L4 (or L3, or L2) header
   U32 length = 0;               // frame length; 0: that of the bytes built
   std::optional< int > outPort; // egress port chosen by forwarding, if any
   U32 portClass = 0;            // class id of the ingress port
   U64 timeUs = 0;               // arrival time, for meters

   static Packet ipv4( int inPort, U32 srcIp, U32 dstIp, U8 protocol, U16 l4SrcPort,
                       U16 l4DstPort );
   static Packet ipv6( int inPort, const std::array< U8, 16 > & srcIp,
                       const std::array< U8, 16 > & dstIp, U8 protocol, U16 l4SrcPort,
                       U16 l4DstPort );
   static Packet ethernet( int inPort, U16 etherType );

   bool isIpv4() const { return etherType == 0x0800; }
   bool isIpv6() const { return etherType == 0x86dd; }
   bool isIp() const { return isIpv4() || isIpv6(); }
   bool hasL4Ports() const { return isIp() && ( protocol == 6 || protocol == 17 ); }

   // The frame without FCS: Ethernet (and 802.1Q) header, IP header, TCP or
   // UDP header, payload.
   std::vector< U8 > bytes() const;
   U32 l3Offset() const { return vlan ? 18 : 14; }
   // Offset of the L4 header; nullopt for non-IP packets.
   std::optional< U32 > l4Offset() const;
   // The length counters and meters see: length, or the built frame's.
   U32 wireLength() const;
};

} // namespace ChipModel
