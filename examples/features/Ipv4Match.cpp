#include "examples/features/Ipv4Match.h"

#include <algorithm>
#include <charconv>
#include <sstream>
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

bool
rangeNeedsChecker( const PortRange & range ) {
   return !range.any() && range.low != range.high;
}

namespace {

const std::vector< PortPrefix > anyPort = { PortPrefix{ 0, 0 } };

std::vector< PortPrefix >
dstRows( const Ipv4Match & match, const KeyResources & resources ) {
   if ( resources.dstPortClass || resources.dstRange ) {
      return anyPort;
   }
   if ( match.dstPortSet.empty() ) {
      return portMatches( match.dstPorts );
   }
   std::vector< PortPrefix > rows;
   for ( U16 port : match.dstPortSet ) {
      rows.push_back( PortPrefix{ port, 0xffff } );
   }
   return rows;
}

} // namespace

std::vector< Ipv4Key >
ipv4Keys( const Ipv4Match & match, const KeyResources & resources ) {
   std::vector< Ipv4Key > keys;
   const std::vector< PortPrefix > src =
      resources.srcRange ? anyPort : portMatches( match.srcPorts );
   const std::vector< PortPrefix > dst = dstRows( match, resources );
   for ( const PortPrefix & s : src ) {
      for ( const PortPrefix & d : dst ) {
         keys.push_back( Ipv4Key{ match, s, d, resources } );
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
   const KeyResources & r = key.resources;
   if ( r.dstPortClass ) {
      keep( rc, SDK_CALL_UNIT( unit, bcm_field_qualify_L4DstPortClass(
                                        unit, entry, r.dstPortClass->value, r.dstPortClass->mask ) ) );
   }
   for ( U32 range : { r.srcRange, r.dstRange } ) {
      if ( range ) {
         keep( rc, manager.attachRangeChecker( unit, entryId, range ) );
      }
   }
   return rc;
}

const std::vector< std::string > &
ipv4MatchFields() {
   static const std::vector< std::string > fields = { "src",    "dst",  "proto", "sport", "dport",
                                                      "dports", "dscp", "in" };
   return fields;
}

namespace {

std::optional< U16 >
portNumber( const std::string & text ) {
   U32 value = 0;
   const char * end = text.data() + text.size();
   auto [ ptr, ec ] = std::from_chars( text.data(), end, value );
   if ( text.empty() || ec != std::errc() || ptr != end || value > 0xffff ) {
      return std::nullopt;
   }
   return U16( value );
}

// "53,5000-5003": ascending and distinct, 1 to maxPortSet ports.
std::vector< U16 >
readPortSet( const FieldLine & line, const std::string & key ) {
   std::string value = *line.text( key );
   std::vector< U16 > ports;
   std::istringstream in( value );
   for ( std::string item; std::getline( in, item, ',' ); ) {
      size_t dash = item.find( '-' );
      std::optional< U16 > low = portNumber( item.substr( 0, dash ) );
      std::optional< U16 > high =
         dash == std::string::npos ? low : portNumber( item.substr( dash + 1 ) );
      if ( !low || !high || *low > *high || U32( *high - *low ) >= maxPortSet ) {
         line.fail( "bad " + key + " '" + value + "' (L4 ports 0 to 65535, as 53,5000-5003)" );
      }
      for ( U32 port = *low; port <= *high; ++port ) {
         ports.push_back( U16( port ) );
      }
   }
   std::sort( ports.begin(), ports.end() );
   ports.erase( std::unique( ports.begin(), ports.end() ), ports.end() );
   if ( ports.empty() || ports.size() > maxPortSet ) {
      line.fail( "bad " + key + " '" + value + "': 1 to " + std::to_string( maxPortSet ) +
                 " ports" );
   }
   return ports;
}

} // namespace

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
   if ( line.has( "dports" ) ) {
      if ( line.has( "dport" ) ) {
         line.fail( "dport= and dports= do not go together" );
      }
      match.dstPortSet = readPortSet( line, "dports" );
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
   if ( !m.dstPortSet.empty() ) {
      std::string ports;
      for ( U16 port : m.dstPortSet ) {
         ports += ( ports.empty() ? "" : "," ) + std::to_string( port );
      }
      add( "dports=" + ports );
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
