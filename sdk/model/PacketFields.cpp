#include "sdk/model/PacketFields.h"

#include "sdk/model/Classify.h"

namespace ChipModel {

namespace {

bcm_udf_abstract_pkt_format_t
abstractFormatOf( const Packet & p ) {
   if ( p.etherType == 0x0806 ) {
      return bcmUdfAbstractPktFormatArp;
   }
   if ( !p.isIp() ) {
      return bcmUdfAbstractPktFormatUnknownL3;
   }
   bool v4 = p.isIpv4();
   switch ( p.protocol ) {
   case 6:
      return v4 ? bcmUdfAbstractPktFormatIpv4Tcp : bcmUdfAbstractPktFormatIpv6Tcp;
   case 17:
      return v4 ? bcmUdfAbstractPktFormatIpv4Udp : bcmUdfAbstractPktFormatIpv6Udp;
   case 1:
   case 58:
      return v4 ? bcmUdfAbstractPktFormatIpv4Icmp : bcmUdfAbstractPktFormatIpv6Icmp;
   default:
      return v4 ? bcmUdfAbstractPktFormatIpv4UnknownL4
                : bcmUdfAbstractPktFormatIpv6UnknownL4;
   }
}

U32
ipTypeOf( const Packet & p ) {
   return p.isIpv4()              ? bcmFieldIpTypeIpv4Any
          : p.isIpv6()            ? bcmFieldIpTypeIpv6
          : p.etherType == 0x0806 ? bcmFieldIpTypeArp
                                  : bcmFieldIpTypeNonIp;
}

bool
anyValue( int qualifier, const std::vector< U8 > & data ) {
   switch ( qualifier ) {
   case bcmFieldQualifyIpType:
      return fromBytes( data ) == bcmFieldIpTypeAny;
   case bcmFieldQualifyIpFrag:
      return fromBytes( data ) == bcmFieldIpFragAny;
   case bcmFieldQualifyForwardingType:
      return fromBytes( data ) == bcmFieldForwardingTypeAny;
   case bcmFieldQualifyTunnelType:
      return fromBytes( data ) == bcmFieldTunnelTypeAny;
   case bcmFieldQualifyL2Format:
      return fromBytes( data ) == bcmFieldL2FormatAny;
   default:
      return false;
   }
}

// Integer-valued fields; nullopt for the others.
std::optional< U64 >
intField( int q, const LookupContext & c ) {
   const Packet & p = c.packet;
   switch ( q ) {
   case bcmFieldQualifySrcIp:
      return p.isIpv4() ? p.srcIp : 0;
   case bcmFieldQualifyDstIp:
      return p.isIpv4() ? p.dstIp : 0;
   case bcmFieldQualifyInPort:
      return static_cast< U32 >( p.inPort );
   case bcmFieldQualifyOutPort:
      return static_cast< U32 >( c.egressPort.value_or( 0 ) );
   case bcmFieldQualifyL4SrcPort:
      return p.hasL4Ports() ? p.l4SrcPort : 0;
   case bcmFieldQualifyL4DstPort:
      return p.hasL4Ports() ? p.l4DstPort : 0;
   case bcmFieldQualifyEtherType:
      return p.etherType;
   case bcmFieldQualifyOuterVlanId:
      return p.vlan.value_or( 0 );
   case bcmFieldQualifyOuterVlanPri:
      return p.vlan ? p.vlanPriority : 0;
   case bcmFieldQualifyVlanFormat:
      return p.vlan ? 1 : 0;
   case bcmFieldQualifyForwardingVlanId:
      return c.forwardingVlan ? c.forwardingVlan : p.vlan.value_or( 0 );
   case bcmFieldQualifyIpProtocol:
      return p.isIp() ? p.protocol : 0;
   case bcmFieldQualifyIp6NextHeader:
      return p.isIpv6() ? p.protocol : 0;
   case bcmFieldQualifyDSCP:
      return p.isIp() ? p.dscp : 0;
   case bcmFieldQualifyIp6TrafficClass:
      return p.isIpv6() ? p.dscp << 2 : 0;
   case bcmFieldQualifyTtl:
      return p.isIpv4() ? p.ttl : 0;
   case bcmFieldQualifyIp6HopLimit:
      return p.isIpv6() ? p.ttl : 0;
   case bcmFieldQualifyTcpControl:
      return p.isIp() && p.protocol == 6 ? p.tcpFlags : 0;
   case bcmFieldQualifyIpType:
      return ipTypeOf( p );
   case bcmFieldQualifyIpFrag:
      return bcmFieldIpFragNon;
   case bcmFieldQualifyL2Format:
      return bcmFieldL2FormatEthII;
   case bcmFieldQualifyForwardingType:
      return p.isIp() ? bcmFieldForwardingTypeL3 : bcmFieldForwardingTypeL2;
   case bcmFieldQualifyTunnelType:
      return bcmFieldTunnelTypeNone;
   case bcmFieldQualifyColor:
      return c.colour;
   case bcmFieldQualifyDrop:
      return c.dropped ? 1 : 0;
   case bcmFieldQualifyIntPriority:
      return p.vlanPriority;
   case bcmFieldQualifyInterfaceClassPort:
      return p.portClass;
   case bcmFieldQualifySrcClassField:
      return c.srcClass;
   case bcmFieldQualifyDstClassField:
      return c.dstClass;
   case bcmFieldQualifyVrf:
      return c.vrf;
   case bcmFieldQualifyStage:
      return static_cast< U32 >( c.stage );
   case bcmFieldQualifyL4SrcPortClass:
   case bcmFieldQualifyL4DstPortClass:
   case bcmFieldQualifyIpProtocolClass:
   case bcmFieldQualifyEtherTypeClass:
   case bcmFieldQualifySrcIpClass:
   case bcmFieldQualifyDstIpClass: {
      auto it = c.compressedClass.find( q );
      return it == c.compressedClass.end() ? 0 : it->second;
   }
   default:
      return std::nullopt;
   }
}

std::vector< U8 >
packetField( int q, const LookupContext & c ) {
   const Packet & p = c.packet;
   switch ( q ) {
   case bcmFieldQualifySrcIp6:
   case bcmFieldQualifySrcIp6High:
      return p.isIpv6() ? std::vector< U8 >( p.srcIp6.begin(), p.srcIp6.end() )
                        : std::vector< U8 >( 16, 0 );
   case bcmFieldQualifyDstIp6:
   case bcmFieldQualifyDstIp6High:
      return p.isIpv6() ? std::vector< U8 >( p.dstIp6.begin(), p.dstIp6.end() )
                        : std::vector< U8 >( 16, 0 );
   case bcmFieldQualifySrcMac:
      return { p.srcMac.begin(), p.srcMac.end() };
   case bcmFieldQualifyDstMac:
      return { p.dstMac.begin(), p.dstMac.end() };
   case bcmFieldQualifyDstPort: {
      std::vector< U8 > out = toBytes( 0, 4 );
      std::vector< U8 > port =
         toBytes( static_cast< U32 >( c.egressPort.value_or( 0 ) ), 4 );
      out.insert( out.end(), port.begin(), port.end() );
      return out;
   }
   default:
      break;
   }
   return toBytes( intField( q, c ).value_or( 0 ), qualifierBytes( q ) );
}

// A port-set rule matches a packet whose ingress port is in the set, or
// outside the mask: ( mask & ~data ) must not hold the port.
bool
portInSet( const FieldValue & rule, int port ) {
   std::optional< std::pair< size_t, U8 > > at = portBitOf( port );
   if ( !at ) {
      return false;
   }
   return !( rule.mask[ at->first ] & ~rule.data[ at->first ] & at->second );
}

// The *Class qualifier a compression group's compressed field feeds.
std::optional< int >
compressedClassOf( const Group & group ) {
   static const std::pair< int, int > feeds[] = {
      { bcmFieldQualifyL4SrcPort, bcmFieldQualifyL4SrcPortClass },
      { bcmFieldQualifyL4DstPort, bcmFieldQualifyL4DstPortClass },
      { bcmFieldQualifyIpProtocol, bcmFieldQualifyIpProtocolClass },
      { bcmFieldQualifyEtherType, bcmFieldQualifyEtherTypeClass },
      { bcmFieldQualifySrcIp, bcmFieldQualifySrcIpClass },
      { bcmFieldQualifySrcIp6, bcmFieldQualifySrcIpClass },
      { bcmFieldQualifyDstIp, bcmFieldQualifyDstIpClass },
      { bcmFieldQualifyDstIp6, bcmFieldQualifyDstIpClass },
   };
   for ( const auto & [ field, feeds ] : feeds ) {
      if ( BCM_FIELD_QSET_TEST( group.qset, field ) ) {
         return feeds;
      }
   }
   return std::nullopt;
}

} // namespace

bool
matchesEveryPacket( int qualifier, const FieldValue & rule ) {
   return anyValue( qualifier, rule.data );
}

bool
isPortSet( int q ) {
   return q == bcmFieldQualifyInPorts || q == bcmFieldQualifyDevicePortBitmap ||
          q == bcmFieldQualifyMixedSrcClassId;
}

// Bitmap words are stored most significant byte first.
std::optional< std::pair< size_t, U8 > >
portBitOf( int port ) {
   if ( port < 0 || port >= BCM_PBMP_PORT_MAX ) {
      return std::nullopt;
   }
   size_t byte = static_cast< size_t >( ( port / 32 ) * 4 + 3 - ( port % 32 ) / 8 );
   return std::make_pair( byte, static_cast< U8 >( 1u << ( port % 8 ) ) );
}

bool
isIp6High( int q ) {
   return q == bcmFieldQualifySrcIp6High || q == bcmFieldQualifyDstIp6High;
}

bool
rangeHit( const RangeTable & ranges, bcm_field_range_t range, const LookupContext & context ) {
   const Packet & p = context.packet;
   std::optional< U32 > pipe = ranges.pipeOf( range );
   return ( !pipe || *pipe == context.pipe ) &&
          ranges.hits( range, p.hasL4Ports() ? p.l4SrcPort : 0,
                       p.hasL4Ports() ? p.l4DstPort : 0, context.length );
}

LookupContext::LookupContext( const Packet & p, U32 pipeOfPacket )
    : packet( p ), frame( p.bytes() ), pipe( pipeOfPacket ), length( p.wireLength() ) {
   layout.bytes = &frame;
   layout.l3Offset = p.l3Offset();
   layout.l4Offset = p.l4Offset();
   layout.vlanTagged = p.vlan.has_value();
   layout.ipv4 = p.isIpv4();
   layout.ipv6 = p.isIpv6();
   layout.etherType = p.etherType;
   layout.ipProtocol = p.isIp() ? p.protocol : 0;
   layout.abstractFormat = abstractFormatOf( p );
   egressPort = p.outPort;
   fields_.resize( bcmFieldQualifyCount );
   known_.assign( bcmFieldQualifyCount, false );
}

const std::vector< U8 > &
LookupContext::field( int qualifier ) const {
   size_t q = static_cast< size_t >( qualifier );
   if ( !known_[ q ] ) {
      fields_[ q ] = packetField( qualifier, *this );
      known_[ q ] = true;
   }
   return fields_[ q ];
}

void
LookupContext::newStage( bcm_field_stage_t next ) {
   stage = next;
   known_.assign( known_.size(), false );
}

bool
qualifierMatches( int qualifier, const FieldValue & rule, const LookupContext & context ) {
   if ( matchesEveryPacket( qualifier, rule ) ) {
      return true;
   }
   if ( isPortSet( qualifier ) ) {
      if ( !portInSet( rule, context.packet.inPort ) ) {
         return false;
      }
      if ( qualifier != bcmFieldQualifyMixedSrcClassId ) {
         return true;
      }
      FieldValue portClass{ { rule.data.begin() + 28, rule.data.end() },
                            { rule.mask.begin() + 28, rule.mask.end() } };
      return maskedEqual( portClass, toBytes( context.packet.portClass, 4 ) );
   }
   const std::vector< U8 > & value = context.field( qualifier );
   if ( !isIp6High( qualifier ) ) {
      return maskedEqual( rule, value );
   }
   FieldValue upper{ { rule.data.begin(), rule.data.begin() + 8 },
                     { rule.mask.begin(), rule.mask.begin() + 8 } };
   return maskedEqual( upper, value );
}

void
noteCompressedClass( const Group & group, const Entry & entry, LookupContext & context ) {
   std::optional< int > feeds = compressedClassOf( group );
   if ( !feeds ) {
      return;
   }
   for ( const Action & a : entry.hardware->actions ) {
      if ( a.action == bcmFieldActionNewClassId || a.action == bcmFieldActionClassSet ||
           a.action == bcmFieldActionClassSourceSet ||
           a.action == bcmFieldActionClassDestSet ) {
         context.compressedClass[ *feeds ] = a.param0;
         return;
      }
   }
}

void
applyStageEffects( const StageResult & result, LookupContext & context ) {
   for ( const ResolvedAction & a : result.actions ) {
      switch ( a.action ) {
      case bcmFieldActionClassSourceSet:
      case bcmFieldActionClassSet:
         context.srcClass = a.param0;
         break;
      case bcmFieldActionClassDestSet:
         context.dstClass = a.param0;
         break;
      case bcmFieldActionVrfSet:
         context.vrf = a.param0;
         break;
      case bcmFieldActionOuterVlanNew:
         context.forwardingVlan = static_cast< U16 >( a.param0 );
         break;
      case bcmFieldActionDrop:
         context.dropped = true;
         break;
      case bcmFieldActionCopyToCpu:
         context.copiedToCpu = true;
         break;
      case bcmFieldActionRedirectPort:
         context.egressPort = static_cast< int >( a.param1 );
         break;
      case bcmFieldActionRpDrop:
         context.dropped = context.dropped || context.colour == bcmFieldColorRed;
         break;
      case bcmFieldActionYpDrop:
         context.dropped = context.dropped || context.colour == bcmFieldColorYellow;
         break;
      default:
         break;
      }
   }
}

} // namespace ChipModel
