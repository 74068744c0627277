#include "tools/agent/Traffic.h"

#include "examples/features/FieldText.h"
#include "sdk/model/Ports.h"

namespace SimAgent {

using Features::FieldLine;

namespace {

const std::vector< std::string > packetFields = {
   "unit", "port", "vlan", "pri",  "smac",  "dmac",  "etype", "src",  "dst", "proto",
   "sport", "dport", "dscp", "flags", "ttl", "len", "time", "payload", "count" };

constexpr size_t maxPayload = 64;

constexpr U32 maxCount = 100000;

template< typename T, typename V >
void
set( T & field, const std::optional< V > & value ) {
   if ( value ) {
      field = static_cast< T >( *value );
   }
}

void
readAddresses( const FieldLine & line, ChipModel::Packet & p ) {
   for ( const char * key : { "src", "dst" } ) {
      if ( auto prefix = line.ipv4Prefix( key ) ) {
         if ( prefix->second != ~U32( 0 ) ) {
            line.fail( std::string( key ) + " of a packet is an address, not a prefix" );
         }
         ( key[ 0 ] == 's' ? p.srcIp : p.dstIp ) = prefix->first;
      }
   }
}

TrafficPacket
readPacket( const FieldLine & line, U32 & count ) {
   if ( !line.words().empty() ) {
      line.fail( "'" + line.words()[ 0 ] + "' is not a field (key=value)" );
   }
   line.allowOnly( packetFields, "a packet" );
   TrafficPacket t;
   t.where = line.where();
   ChipModel::Packet & p = t.packet;
   set( t.unit, line.number( "unit", 255 ) );
   set( p.inPort, line.number( "port", TesselTypes::maxPortCount - 1 ) );
   if ( auto vlan = line.number( "vlan", 4094 ) ) {
      if ( *vlan == 0 ) {
         line.fail( "bad vlan '0' (1 to 4094; leave it out for an untagged packet)" );
      }
      p.vlan = U16( *vlan );
   }
   set( p.vlanPriority, line.number( "pri", 7 ) );
   set( p.srcMac, line.mac( "smac" ) );
   set( p.dstMac, line.mac( "dmac" ) );
   set( p.etherType, line.number( "etype", 0xffff ) );
   readAddresses( line, p );
   set( p.protocol, line.protocol( "proto" ) );
   for ( const char * key : { "sport", "dport" } ) {
      if ( auto range = line.portRange( key ) ) {
         if ( range->first != range->second ) {
            line.fail( std::string( key ) + " of a packet is one port, not a range" );
         }
         ( key[ 0 ] == 's' ? p.l4SrcPort : p.l4DstPort ) = range->first;
      }
   }
   set( p.dscp, line.number( "dscp", 63 ) );
   set( p.tcpFlags, line.number( "flags", 0xff ) );
   set( p.ttl, line.number( "ttl", 255 ) );
   set( p.length, line.number( "len", 16383 ) );
   set( p.timeUs, line.number( "time", 0xffffffff ) );
   if ( auto payload = line.text( "payload" ) ) {
      std::optional< std::vector< U8 > > bytes = Features::hexBytes( *payload, maxPayload );
      if ( !bytes ) {
         line.fail( "bad payload '" + *payload + "' (0x and 1 to " + std::to_string( maxPayload ) +
                    " bytes in hex)" );
      }
      p.payload = *bytes;
   }
   count = line.number( "count", maxCount ).value_or( 1 );
   if ( count == 0 ) {
      line.fail( "bad count '0' (1 to " + std::to_string( maxCount ) + ")" );
   }
   return t;
}

} // namespace

std::vector< TrafficPacket >
readTrafficFile( const std::string & path ) {
   std::vector< TrafficPacket > packets;
   Features::readFieldFile( path, [ &packets ]( const FieldLine & line ) {
      U32 count = 1;
      TrafficPacket packet = readPacket( line, count );
      packets.insert( packets.end(), count, packet );
   } );
   return packets;
}

TrafficPacket
packetOfHeader( const Features::ClassBenchHeader & h, int port ) {
   TrafficPacket t;
   t.packet = ChipModel::Packet::ipv4( port, h.srcIp, h.dstIp, h.protocol, h.srcPort, h.dstPort );
   return t;
}

int
firstFrontPanelPort( const ChipModel::Box & box, U32 unit ) {
   return ChipModel::frontPanelPorts( box.unit( unit ).profile(), 0 ).front();
}

} // namespace SimAgent
