#include "examples/features/Ipv4Match.h"

#include <tuple>

#include "common/TesselSdkCall.h"
#include "platform/agent/IpAddr.h"
#include "sdk/api/field_qualify.h"

namespace Features {

std::vector< PortPrefix >
portMatches( const PortRange & range ) {
   if ( range.any() ) {
      return { PortPrefix{ 0, 0 } };
   }
   return portRangePrefixes( range.low, range.high );
}

std::vector< Ipv4Key >
ipv4Keys( const Ipv4Match & match ) {
   std::vector< Ipv4Key > keys;
   for ( const PortPrefix & src : portMatches( match.srcPorts ) ) {
      for ( const PortPrefix & dst : portMatches( match.dstPorts ) ) {
         keys.push_back( Ipv4Key{ match, src, dst } );
      }
   }
   return keys;
}

namespace {

// The first error of a run of calls.
void
keep( int & first, int rc ) {
   first = first < 0 ? first : rc;
}

} // namespace

int
qualifyIpv4( Tessel::TesselTcamEntryManager & manager, U32 unit, U32 entryId,
             const Ipv4Key & key ) {
   const Ipv4Match & m = key.match;
   if ( !m.inPorts.empty() ) {
      manager.updateInPortsForEntry( unit, entryId, m.inPorts, false, false );
   }
   int entry = int( entryId );
   int rc = SDK_CALL_UNIT( unit, bcm_field_qualify_IpType( unit, entry, bcmFieldIpTypeIpv4Any ) );
   if ( m.srcMask ) {
      keep( rc, SDK_CALL_UNIT( unit, bcm_field_qualify_SrcIp( unit, entry, m.srcIp, m.srcMask ) ) );
   }
   if ( m.dstMask ) {
      keep( rc, SDK_CALL_UNIT( unit, bcm_field_qualify_DstIp( unit, entry, m.dstIp, m.dstMask ) ) );
   }
   if ( m.protocolMask ) {
      keep( rc, SDK_CALL_UNIT( unit, bcm_field_qualify_IpProtocol( unit, entry, m.protocol,
                                                                   m.protocolMask ) ) );
   }
   if ( key.srcPort.mask ) {
      keep( rc, SDK_CALL_UNIT( unit, bcm_field_qualify_L4SrcPort( unit, entry, key.srcPort.value,
                                                                  key.srcPort.mask ) ) );
   }
   if ( key.dstPort.mask ) {
      keep( rc, SDK_CALL_UNIT( unit, bcm_field_qualify_L4DstPort( unit, entry, key.dstPort.value,
                                                                  key.dstPort.mask ) ) );
   }
   if ( m.dscp ) {
      keep( rc, SDK_CALL_UNIT( unit, bcm_field_qualify_DSCP( unit, entry, *m.dscp, 0x3f ) ) );
   }
   return rc;
}

const std::vector< std::string > &
ipv4MatchFields() {
   static const std::vector< std::string > fields = { "src",   "dst",  "proto", "sport",
                                                      "dport", "dscp", "in" };
   return fields;
}

Ipv4Match
readIpv4Match( const FieldLine & line ) {
   Ipv4Match match;
   if ( auto src = line.ipv4Prefix( "src" ) ) {
      std::tie( match.srcIp, match.srcMask ) = *src;
   }
   if ( auto dst = line.ipv4Prefix( "dst" ) ) {
      std::tie( match.dstIp, match.dstMask ) = *dst;
   }
   if ( auto protocol = line.protocol( "proto" ) ) {
      match.protocol = *protocol;
      match.protocolMask = 0xff;
   }
   if ( auto ports = line.portRange( "sport" ) ) {
      match.srcPorts = PortRange{ ports->first, ports->second };
   }
   if ( auto ports = line.portRange( "dport" ) ) {
      match.dstPorts = PortRange{ ports->first, ports->second };
   }
   if ( auto dscp = line.number( "dscp", 63 ) ) {
      match.dscp = U8( *dscp );
   }
   if ( auto ports = line.ports( "in" ) ) {
      match.inPorts = *ports;
   }
   return match;
}

namespace {

std::string
prefixText( U32 address, U32 mask ) {
   U32 length = 0;
   while ( length < 32 && ( mask >> ( 31 - length ) ) & 1 ) {
      ++length;
   }
   return Wiretype::IpAddr( address ).stringValue() + ( length == 32 ? "" : "/" + std::to_string( length ) );
}

std::string
rangeText( const PortRange & range ) {
   return range.low == range.high ? std::to_string( range.low )
                                  : std::to_string( range.low ) + "-" + std::to_string( range.high );
}

} // namespace

std::string
ipv4MatchText( const Ipv4Match & m ) {
   std::string text;
   auto add = [ &text ]( const std::string & field ) { text += ( text.empty() ? "" : " " ) + field; };
   if ( m.srcMask ) {
      add( "src=" + prefixText( m.srcIp, m.srcMask ) );
   }
   if ( m.dstMask ) {
      add( "dst=" + prefixText( m.dstIp, m.dstMask ) );
   }
   if ( m.protocolMask ) {
      add( "proto=" + std::to_string( m.protocol ) );
   }
   if ( !m.srcPorts.any() ) {
      add( "sport=" + rangeText( m.srcPorts ) );
   }
   if ( !m.dstPorts.any() ) {
      add( "dport=" + rangeText( m.dstPorts ) );
   }
   if ( m.dscp ) {
      add( "dscp=" + std::to_string( *m.dscp ) );
   }
   if ( !m.inPorts.empty() ) {
      std::string ports;
      for ( U32 port : m.inPorts ) {
         ports += ( ports.empty() ? "" : "," ) + std::to_string( port );
      }
      add( "in=" + ports );
   }
   return text.empty() ? "any" : text;
}

} // namespace Features
