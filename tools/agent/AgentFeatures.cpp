#include "tools/agent/AgentFeatures.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>

namespace SimAgent {

using namespace Features;

AgentFeatures::AgentFeatures( const Kiln::Ptr< Tessel::TesselTcamGroupManager > & manager )
      : acl_( manager ), copp_( manager ), qos_( manager ), mirror_( manager ) {}

AgentFeatures::~AgentFeatures() {
   release();
}

std::vector< LoadReport >
AgentFeatures::load( const Workload & w ) {
   std::vector< LoadReport > reports;
   auto step = [ & ]( bool wanted, auto install ) {
      if ( wanted && ( reports.empty() || reports.back().ok() ) ) {
         reports.push_back( install() );
      }
   };
   step( !w.acl.empty(), [ & ] { return acl_.install( w.acl ); } );
   step( !w.copp.empty(), [ & ] { return copp_.install( w.copp ); } );
   step( !w.qos.empty(), [ & ] { return qos_.install( w.qos ); } );
   step( !w.mirror.empty(), [ & ] { return mirror_.install( w.mirror ); } );
   if ( !reports.empty() && !reports.back().ok() ) {
      release();
   }
   return reports;
}

LoadReport
AgentFeatures::loadClassBench( const std::vector< ClassBenchRule > & rules ) {
   std::vector< AclRule > acl;
   acl.reserve( rules.size() );
   for ( const ClassBenchRule & rule : rules ) {
      acl.push_back( aclRuleOf( rule ) );
   }
   return acl_.install( acl );
}

void
AgentFeatures::release() {
   mirror_.release();
   qos_.release();
   copp_.release();
   acl_.release();
}

namespace {

std::string
entriesText( const FeatureEntries & entries, U32 unit, U32 item ) {
   std::string text;
   for ( const FeatureEntries::Held & held : entries.held() ) {
      if ( held.unit == unit && held.item == item ) {
         char id[ 16 ];
         std::snprintf( id, sizeof( id ), "0x%x", held.entry );
         text += ( text.empty() ? "" : " " ) + std::string( id );
      }
   }
   return text;
}

std::string
packetsText( U64 packets ) {
   return std::to_string( packets ) + ( packets == 1 ? " packet" : " packets" );
}

} // namespace

template< typename Feature >
void
AgentFeatures::addItemLines( Feature & feature, U32 unit, std::vector< std::string > & lines ) {
   for ( U32 item = 0; item < feature.items().size(); ++item ) {
      lines.push_back( feature.itemText( item ) + ": entries " +
                       entriesText( feature.entries(), unit, item ) + "; " +
                       packetsText( feature.itemPackets( unit, item ) ) );
   }
}

std::vector< std::string >
AgentFeatures::itemLines( U32 unit ) {
   std::vector< std::string > lines;
   addItemLines( acl_, unit, lines );
   addItemLines( copp_, unit, lines );
   addItemLines( qos_, unit, lines );
   addItemLines( mirror_, unit, lines );
   return lines;
}

Verdict
AgentFeatures::send( ChipModel::Box & box, const TrafficPacket & packet ) const {
   return verdictOf( packet.unit, box.send( packet.unit, packet.packet ) );
}

Verdict
AgentFeatures::verdictOf( U32 unit, const ChipModel::LookupResult & result ) const {
   Verdict v;
   for ( const ChipModel::Hit & hit : result.hits() ) {
      U32 group = U32( hit.group );
      U32 entry = U32( hit.entry );
      v.aclRule = v.aclRule ? v.aclRule : acl_.itemOf( unit, group, entry );
      v.coppClass = v.coppClass ? v.coppClass : copp_.itemOf( unit, group, entry );
      v.qosClass = v.qosClass ? v.qosClass : qos_.itemOf( unit, group, entry );
      v.mirrorRule = v.mirrorRule ? v.mirrorRule : mirror_.itemOf( unit, group, entry );
   }
   v.dropped = result.dropped;
   v.toCpu = result.copiedToCpu;
   v.colour = result.colour;
   return v;
}

void
TrafficSummary::add( const Verdict & v ) {
   ++packets;
   aclHits += v.aclRule ? 1 : 0;
   dropped += v.dropped ? 1 : 0;
   toCpu += v.toCpu && !v.dropped ? 1 : 0;
   coppHits += v.coppClass ? 1 : 0;
   qosHits += v.qosClass ? 1 : 0;
   mirrored += v.mirrorRule ? 1 : 0;
   red += v.colour == bcmFieldColorRed ? 1 : 0;
}

std::string
TrafficSummary::text() const {
   return std::to_string( packets ) + " packets: " + std::to_string( aclHits ) +
          " hit ACL rules, " + std::to_string( coppHits ) + " CoPP classes, " +
          std::to_string( qosHits ) + " QoS classes, " + std::to_string( mirrored ) +
          " mirrored; " + std::to_string( dropped ) + " dropped, " + std::to_string( toCpu ) +
          " to the CPU, " + std::to_string( red ) + " red";
}

std::string
loadText( const LoadReport & r ) {
   char expansion[ 32 ];
   std::snprintf( expansion, sizeof( expansion ), "%.2f", r.expansion() );
   std::string text = r.feature + ": " + r.itemsText( r.items ) + ", " +
                      std::to_string( r.entries ) + " entries per unit (expansion " + expansion +
                      "), " + std::to_string( r.hardwareEntries ) + " hardware entries";
   auto add = [ &text ]( U32 count, const std::string & one, const std::string & many ) {
      if ( count ) {
         text += ", " + std::to_string( count ) + " " + ( count == 1 ? one : many );
      }
   };
   add( r.rangeCheckers, "range checker", "range checkers" );
   add( r.rangesExpanded, "port range expanded (no checker left)",
        "port ranges expanded (no checker left)" );
   add( r.classIdPorts, "port bound to a class id", "ports bound to class ids" );
   add( r.udfFields, "user-defined field", "user-defined fields" );
   if ( r.entriesWithoutCounter ) {
      text += "; " + std::to_string( r.entriesWithoutCounter ) +
              " entries without counters (the counter pool ran out)";
   }
   return text;
}

std::string
writeHits( const std::string & path, const std::vector< Verdict > & verdicts ) {
   std::ofstream out( path, std::ios::trunc );
   for ( const Verdict & v : verdicts ) {
      out << ( v.aclRule ? S64( *v.aclRule ) : S64( -1 ) ) << '\n';
   }
   out.flush();
   if ( !out ) {
      return path + ": cannot write: " + std::strerror( errno );
   }
   return "";
}

} // namespace SimAgent
