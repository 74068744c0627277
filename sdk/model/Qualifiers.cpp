#include "sdk/model/Qualifiers.h"

#include <cstddef>

namespace ChipModel {

namespace {

struct QualifierShape {
   U32 keyBits;
   U32 bytes;
};

// Indexed by bcm_field_qualify_t.
constexpr QualifierShape shapes[] = {
   { 128, 16 }, // SrcIp6
   { 128, 16 }, // DstIp6
   { 64, 16 },  // SrcIp6High
   { 64, 16 },  // DstIp6High
   { 32, 4 },   // SrcIp
   { 32, 4 },   // DstIp
   { 48, 6 },   // SrcMac
   { 48, 6 },   // DstMac
   { 8, 4 },    // InPort
   { 34, 28 },  // InPorts: the pipe's ports
   { 8, 4 },    // OutPort
   { 34, 28 },  // DevicePortBitmap
   { 16, 8 },   // DstPort: module then port
   { 10, 4 },   // SrcTrunk
   { 16, 4 },   // L4SrcPort
   { 16, 4 },   // L4DstPort
   { 32, 4 },   // RangeCheck: the checker hit bits
   { 16, 2 },   // EtherType
   { 12, 2 },   // OuterVlanId
   { 3, 1 },    // OuterVlanPri
   { 1, 1 },    // OuterVlanCfi
   { 12, 2 },   // InnerVlanId
   { 3, 1 },    // InnerVlanPri
   { 2, 1 },    // VlanFormat
   { 12, 2 },   // ForwardingVlanId
   { 8, 1 },    // IpProtocol
   { 6, 1 },    // DSCP
   { 8, 1 },    // Ttl
   { 8, 1 },    // Ip6HopLimit
   { 8, 1 },    // Ip6NextHeader
   { 8, 1 },    // Ip6TrafficClass
   { 20, 4 },   // Ip6FlowLabel
   { 6, 1 },    // TcpControl
   { 2, 4 },    // IpFrag
   { 3, 4 },    // IpType
   { 4, 4 },    // IpInfo
   { 2, 4 },    // L2Format
   { 3, 4 },    // ForwardingType
   { 3, 4 },    // TunnelType
   { 24, 4 },   // VxlanNetworkId
   { 16, 2 },   // IcmpTypeCode
   { 6, 4 },    // PacketRes
   { 1, 1 },    // L3Routable
   { 1, 1 },    // MyStationHit
   { 1, 1 },    // L2SrcStatic
   { 1, 1 },    // IpmcStarGroupHit
   { 1, 1 },    // HiGig
   { 6, 1 },    // CpuQueue
   { 1, 1 },    // Drop
   { 2, 1 },    // IngressStpState
   { 4, 1 },    // IntPriority
   { 2, 4 },    // Color
   { 1, 1 },    // MirrorCopy
   { 16, 4 },   // FabricQueueTag
   { 12, 2 },   // EgressClassL3Interface
   { 12, 2 },   // EgressClassL2Gre
   { 12, 2 },   // EgressClassVxlan
   { 12, 4 },   // DstClassField
   { 10, 4 },   // DstClassL2
   { 10, 4 },   // DstClassL3
   { 12, 4 },   // SrcClassField
   { 10, 4 },   // SrcClassL2
   { 10, 4 },   // SrcClassL3
   { 12, 4 },   // IngressClassField
   { 12, 4 },   // InterfaceClassL2
   { 12, 4 },   // InterfaceClassL3
   { 8, 4 },    // InterfaceClassPort
   { 12, 4 },   // InterfaceClassVPort
   { 12, 4 },   // Vrf
   { 16, 4 },   // DstL3Egress
   { 16, 4 },   // DstMultipath
   { 32, 4 },   // InnerSrcIp
   { 32, 4 },   // InnerDstIp
   { 8, 1 },    // InnerIpProtocol
   { 16, 4 },   // DstIpClass
   { 16, 4 },   // SrcIpClass
   { 8, 4 },    // L4SrcPortClass
   { 8, 4 },    // L4DstPortClass
   { 8, 4 },    // IpProtocolClass
   { 8, 4 },    // EtherTypeClass
   { 4, 4 },    // CompressionSelect
   { 4, 4 },    // CompressionAddrSelect
   { 0, 4 },    // Stage
   { 0, 0 },    // StageIngress
   { 0, 0 },    // StageLookup
   { 0, 0 },    // StageEgress
   { 0, 0 },    // StageClass
   { 8, 32 },   // MixedSrcClassId: port bitmap, then the class
};
static_assert( sizeof( shapes ) / sizeof( shapes[ 0 ] ) == bcmFieldQualifyCount );

} // namespace

bool
knownQualifier( int qualifier ) {
   return qualifier >= 0 && qualifier < bcmFieldQualifyCount;
}

U32
qualifierKeyBits( int qualifier ) {
   return knownQualifier( qualifier ) ? shapes[ qualifier ].keyBits : 0;
}

U32
qualifierBytes( int qualifier ) {
   return knownQualifier( qualifier ) ? shapes[ qualifier ].bytes : 0;
}

U32
qsetKeyBits( const bcm_field_qset_t & qset, U32 dataQualifierBytes ) {
   U32 bits = dataQualifierBytes * 8;
   for ( int q = 0; q < bcmFieldQualifyCount; ++q ) {
      if ( BCM_FIELD_QSET_TEST( qset, q ) ) {
         bits += shapes[ q ].keyBits;
      }
   }
   return bits;
}

std::vector< U8 >
toBytes( U64 value, U32 bytes ) {
   std::vector< U8 > out( bytes );
   for ( U32 i = 0; i < bytes; ++i ) {
      out[ bytes - 1 - i ] = static_cast< U8 >( i < 8 ? value >> ( 8 * i ) : 0 );
   }
   return out;
}

U64
fromBytes( const std::vector< U8 > & bytes ) {
   U64 value = 0;
   for ( U8 byte : bytes ) {
      value = ( value << 8 ) | byte;
   }
   return value;
}

FieldValue
intValue( U64 data, U64 mask, U32 bytes ) {
   return FieldValue{ toBytes( data, bytes ), toBytes( mask, bytes ) };
}

bool
maskedEqual( const FieldValue & rule, const std::vector< U8 > & packet ) {
   if ( packet.size() < rule.data.size() ) {
      return false;
   }
   for ( std::size_t i = 0; i < rule.data.size(); ++i ) {
      if ( ( packet[ i ] & rule.mask[ i ] ) != ( rule.data[ i ] & rule.mask[ i ] ) ) {
         return false;
      }
   }
   return true;
}

bcm_field_stage_t
stageOfQset( const bcm_field_qset_t & qset ) {
   if ( BCM_FIELD_QSET_TEST( qset, bcmFieldQualifyStageLookup ) ) {
      return bcmFieldStageLookup;
   }
   if ( BCM_FIELD_QSET_TEST( qset, bcmFieldQualifyStageEgress ) ) {
      return bcmFieldStageEgress;
   }
   if ( BCM_FIELD_QSET_TEST( qset, bcmFieldQualifyStageClass ) ||
        BCM_FIELD_QSET_TEST( qset, bcmFieldQualifyCompressionSelect ) ||
        BCM_FIELD_QSET_TEST( qset, bcmFieldQualifyCompressionAddrSelect ) ) {
      return bcmFieldStageClass;
   }
   return bcmFieldStageIngress;
}

} // namespace ChipModel
