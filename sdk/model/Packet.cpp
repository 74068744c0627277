#include "sdk/model/Packet.h"

namespace ChipModel {

namespace {

void
put16( std::vector< U8 > & out, U32 value ) {
   out.push_back( static_cast< U8 >( value >> 8 ) );
   out.push_back( static_cast< U8 >( value ) );
}

void
put32( std::vector< U8 > & out, U32 value ) {
   put16( out, value >> 16 );
   put16( out, value & 0xffff );
}

U32
l4HeaderLength( U8 protocol ) {
   return protocol == 6 ? 20 : protocol == 17 ? 8 : 0;
}

void
putL4( const Packet & p, std::vector< U8 > & out ) {
   if ( p.protocol == 6 ) {
      put16( out, p.l4SrcPort );
      put16( out, p.l4DstPort );
      put32( out, 0 );         // sequence
      put32( out, 0 );         // acknowledgement
      out.push_back( 5 << 4 ); // data offset
      out.push_back( p.tcpFlags );
      put16( out, 0xffff ); // window
      put32( out, 0 );      // checksum, urgent pointer
   } else if ( p.protocol == 17 ) {
      put16( out, p.l4SrcPort );
      put16( out, p.l4DstPort );
      put16( out, 8 + static_cast< U32 >( p.payload.size() ) );
      put16( out, 0 );
   }
}

void
putIpv4( const Packet & p, std::vector< U8 > & out ) {
   U32 total = 20 + l4HeaderLength( p.protocol ) + static_cast< U32 >( p.payload.size() );
   out.push_back( 0x45 );
   out.push_back( static_cast< U8 >( p.dscp << 2 ) );
   put16( out, total );
   put32( out, 0 ); // identification, flags, fragment offset
   out.push_back( p.ttl );
   out.push_back( p.protocol );
   put16( out, 0 ); // checksum
   put32( out, p.srcIp );
   put32( out, p.dstIp );
}

void
putIpv6( const Packet & p, std::vector< U8 > & out ) {
   U32 payload = l4HeaderLength( p.protocol ) + static_cast< U32 >( p.payload.size() );
   put32( out, ( 6u << 28 ) | ( static_cast< U32 >( p.dscp ) << 22 ) );
   put16( out, payload );
   out.push_back( p.protocol );
   out.push_back( p.ttl );
   out.insert( out.end(), p.srcIp6.begin(), p.srcIp6.end() );
   out.insert( out.end(), p.dstIp6.begin(), p.dstIp6.end() );
}

} // namespace

Packet
Packet::ipv4( int inPort, U32 srcIp, U32 dstIp, U8 protocol, U16 l4SrcPort,
              U16 l4DstPort ) {
   Packet p;
   p.inPort = inPort;
   p.srcIp = srcIp;
   p.dstIp = dstIp;
   p.protocol = protocol;
   p.l4SrcPort = l4SrcPort;
   p.l4DstPort = l4DstPort;
   return p;
}

Packet
Packet::ipv6( int inPort, const std::array< U8, 16 > & srcIp,
              const std::array< U8, 16 > & dstIp, U8 protocol, U16 l4SrcPort,
              U16 l4DstPort ) {
   Packet p = ipv4( inPort, 0, 0, protocol, l4SrcPort, l4DstPort );
   p.etherType = 0x86dd;
   p.srcIp6 = srcIp;
   p.dstIp6 = dstIp;
   return p;
}

Packet
Packet::ethernet( int inPort, U16 etherType ) {
   Packet p;
   p.inPort = inPort;
   p.etherType = etherType;
   return p;
}

std::optional< U32 >
Packet::l4Offset() const {
   if ( !isIp() ) {
      return std::nullopt;
   }
   return l3Offset() + ( isIpv4() ? 20 : 40 );
}

std::vector< U8 >
Packet::bytes() const {
   std::vector< U8 > out;
   out.insert( out.end(), dstMac.begin(), dstMac.end() );
   out.insert( out.end(), srcMac.begin(), srcMac.end() );
   if ( vlan ) {
      put16( out, 0x8100 );
      put16( out, ( static_cast< U32 >( vlanPriority ) << 13 ) | ( *vlan & 0xfff ) );
   }
   put16( out, etherType );
   if ( isIpv4() ) {
      putIpv4( *this, out );
   } else if ( isIpv6() ) {
      putIpv6( *this, out );
   }
   if ( isIp() ) {
      putL4( *this, out );
   }
   out.insert( out.end(), payload.begin(), payload.end() );
   return out;
}

U32
Packet::wireLength() const {
   if ( length ) {
      return length;
   }
   U32 built = static_cast< U32 >( bytes().size() ) + 4; // and the FCS
   return built < 64 ? 64 : built;
}

} // namespace ChipModel
