// bcm_field_qualify_* setters and getters with plain values: integers,
// addresses, port bitmaps and enumerations. Each stores data and mask as the
// qualifier's bytes, most significant first (sdk/model/Qualifiers.h).
#include <cstring>

#include "sdk/api/field_qualify.h"
#include "sdk/model/SdkCall.h"

using namespace ChipModel;

namespace {

int
store( const char * function, int unit, bcm_field_entry_t entry, int qualifier,
       std::vector< S64 > args, const FieldValue & value ) {
   return sdkCall( function, unit, std::move( args ), [ & ]( Unit & u ) {
      return u.state().field.qualify( entry, qualifier, value );
   } );
}

// Runs the getter; on success `read` gets the value.
template< typename Read >
int
load( const char * function, int unit, bcm_field_entry_t entry, int qualifier, bool outputs,
      Read && read ) {
   return sdkCall( function, unit, { entry }, [ & ]( Unit & u ) {
      if ( !outputs ) {
         return BCM_E_PARAM;
      }
      FieldValue value;
      int rc = u.state().field.qualifyGet( entry, qualifier, value );
      if ( rc == BCM_E_NONE ) {
         read( value );
      }
      return rc;
   } );
}

template< typename T >
int
setValue( const char * function, int unit, bcm_field_entry_t entry, int qualifier, T data,
          T mask ) {
   U32 bytes = qualifierBytes( qualifier );
   return store(
      function, unit, entry, qualifier,
      { entry, static_cast< S64 >( data ), static_cast< S64 >( mask ) },
      intValue( static_cast< U64 >( data ), static_cast< U64 >( mask ), bytes ) );
}

template< typename T >
int
getValue( const char * function, int unit, bcm_field_entry_t entry, int qualifier, T * data,
          T * mask ) {
   return load( function, unit, entry, qualifier, data && mask,
                [ & ]( const FieldValue & v ) {
                   *data = static_cast< T >( fromBytes( v.data ) );
                   *mask = static_cast< T >( fromBytes( v.mask ) );
                } );
}

template< typename T >
int
setEnum( const char * function, int unit, bcm_field_entry_t entry, int qualifier,
         T value ) {
   U32 bytes = qualifierBytes( qualifier );
   return store( function, unit, entry, qualifier, { entry, static_cast< S64 >( value ) },
                 intValue( static_cast< U64 >( value ), ~0ull, bytes ) );
}

template< typename T >
int
getEnum( const char * function, int unit, bcm_field_entry_t entry, int qualifier,
         T * value ) {
   return load(
      function, unit, entry, qualifier, value != nullptr,
      [ & ]( const FieldValue & v ) { *value = static_cast< T >( fromBytes( v.data ) ); } );
}

int
setArray( const char * function, int unit, bcm_field_entry_t entry, int qualifier,
          const U8 * data, const U8 * mask, size_t size ) {
   if ( !data || !mask ) {
      return sdkCall( function, unit, { entry }, []( Unit & ) { return BCM_E_PARAM; } );
   }
   return store( function, unit, entry, qualifier, { entry },
                 FieldValue{ { data, data + size }, { mask, mask + size } } );
}

int
getArray( const char * function, int unit, bcm_field_entry_t entry, int qualifier,
          U8 * data, U8 * mask, size_t size ) {
   return load( function, unit, entry, qualifier, data && mask,
                [ & ]( const FieldValue & v ) {
                   std::memcpy( data, v.data.data(), size );
                   std::memcpy( mask, v.mask.data(), size );
                } );
}

std::vector< U8 >
pbmpBytes( const bcm_pbmp_t & pbmp ) {
   std::vector< U8 > out;
   for ( U32 word : pbmp.pbits ) {
      std::vector< U8 > w = toBytes( word, 4 );
      out.insert( out.end(), w.begin(), w.end() );
   }
   return out;
}

bcm_pbmp_t
pbmpOf( const std::vector< U8 > & bytes ) {
   bcm_pbmp_t pbmp{};
   for ( int w = 0; w < BCM_PBMP_WORD_MAX; ++w ) {
      pbmp.pbits[ w ] = static_cast< U32 >(
         fromBytes( { bytes.begin() + 4 * w, bytes.begin() + 4 * w + 4 } ) );
   }
   return pbmp;
}

int
setPbmp( const char * function, int unit, bcm_field_entry_t entry, int qualifier,
         const bcm_pbmp_t & data, const bcm_pbmp_t & mask ) {
   return store( function, unit, entry, qualifier, { entry },
                 FieldValue{ pbmpBytes( data ), pbmpBytes( mask ) } );
}

int
getPbmp( const char * function, int unit, bcm_field_entry_t entry, int qualifier,
         bcm_pbmp_t * data, bcm_pbmp_t * mask ) {
   return load( function, unit, entry, qualifier, data && mask,
                [ & ]( const FieldValue & v ) {
                   *data = pbmpOf( v.data );
                   *mask = pbmpOf( v.mask );
                } );
}

} // namespace

extern "C" int
bcm_field_qualify_InPorts( int unit, bcm_field_entry_t entry, bcm_pbmp_t data,
                           bcm_pbmp_t mask ) {
   return setPbmp( __func__, unit, entry, bcmFieldQualifyInPorts, data, mask );
}

extern "C" int
bcm_field_qualify_InPorts_get( int unit, bcm_field_entry_t entry, bcm_pbmp_t * data,
                               bcm_pbmp_t * mask ) {
   return getPbmp( __func__, unit, entry, bcmFieldQualifyInPorts, data, mask );
}

extern "C" int
bcm_field_qualify_DevicePortBitmap( int unit, bcm_field_entry_t entry, bcm_pbmp_t data,
                                    bcm_pbmp_t mask ) {
   return setPbmp( __func__, unit, entry, bcmFieldQualifyDevicePortBitmap, data, mask );
}

extern "C" int
bcm_field_qualify_DevicePortBitmap_get( int unit, bcm_field_entry_t entry,
                                        bcm_pbmp_t * data, bcm_pbmp_t * mask ) {
   return getPbmp( __func__, unit, entry, bcmFieldQualifyDevicePortBitmap, data, mask );
}

extern "C" int
bcm_field_qualify_SrcMac( int unit, bcm_field_entry_t entry, bcm_mac_t data,
                          bcm_mac_t mask ) {
   return setArray( __func__, unit, entry, bcmFieldQualifySrcMac, data, mask,
                    sizeof( bcm_mac_t ) );
}

extern "C" int
bcm_field_qualify_SrcMac_get( int unit, bcm_field_entry_t entry, bcm_mac_t * data,
                              bcm_mac_t * mask ) {
   return getArray( __func__, unit, entry, bcmFieldQualifySrcMac, data ? *data : nullptr,
                    mask ? *mask : nullptr, sizeof( bcm_mac_t ) );
}

extern "C" int
bcm_field_qualify_DstMac( int unit, bcm_field_entry_t entry, bcm_mac_t data,
                          bcm_mac_t mask ) {
   return setArray( __func__, unit, entry, bcmFieldQualifyDstMac, data, mask,
                    sizeof( bcm_mac_t ) );
}

extern "C" int
bcm_field_qualify_DstMac_get( int unit, bcm_field_entry_t entry, bcm_mac_t * data,
                              bcm_mac_t * mask ) {
   return getArray( __func__, unit, entry, bcmFieldQualifyDstMac, data ? *data : nullptr,
                    mask ? *mask : nullptr, sizeof( bcm_mac_t ) );
}

extern "C" int
bcm_field_qualify_SrcIp6( int unit, bcm_field_entry_t entry, bcm_ip6_t data,
                          bcm_ip6_t mask ) {
   return setArray( __func__, unit, entry, bcmFieldQualifySrcIp6, data, mask,
                    sizeof( bcm_ip6_t ) );
}

extern "C" int
bcm_field_qualify_SrcIp6_get( int unit, bcm_field_entry_t entry, bcm_ip6_t * data,
                              bcm_ip6_t * mask ) {
   return getArray( __func__, unit, entry, bcmFieldQualifySrcIp6, data ? *data : nullptr,
                    mask ? *mask : nullptr, sizeof( bcm_ip6_t ) );
}

extern "C" int
bcm_field_qualify_DstIp6( int unit, bcm_field_entry_t entry, bcm_ip6_t data,
                          bcm_ip6_t mask ) {
   return setArray( __func__, unit, entry, bcmFieldQualifyDstIp6, data, mask,
                    sizeof( bcm_ip6_t ) );
}

extern "C" int
bcm_field_qualify_DstIp6_get( int unit, bcm_field_entry_t entry, bcm_ip6_t * data,
                              bcm_ip6_t * mask ) {
   return getArray( __func__, unit, entry, bcmFieldQualifyDstIp6, data ? *data : nullptr,
                    mask ? *mask : nullptr, sizeof( bcm_ip6_t ) );
}

extern "C" int
bcm_field_qualify_SrcIp6High( int unit, bcm_field_entry_t entry, bcm_ip6_t data,
                              bcm_ip6_t mask ) {
   return setArray( __func__, unit, entry, bcmFieldQualifySrcIp6High, data, mask,
                    sizeof( bcm_ip6_t ) );
}

extern "C" int
bcm_field_qualify_SrcIp6High_get( int unit, bcm_field_entry_t entry, bcm_ip6_t * data,
                                  bcm_ip6_t * mask ) {
   return getArray( __func__, unit, entry, bcmFieldQualifySrcIp6High,
                    data ? *data : nullptr, mask ? *mask : nullptr, sizeof( bcm_ip6_t ) );
}

extern "C" int
bcm_field_qualify_DstIp6High( int unit, bcm_field_entry_t entry, bcm_ip6_t data,
                              bcm_ip6_t mask ) {
   return setArray( __func__, unit, entry, bcmFieldQualifyDstIp6High, data, mask,
                    sizeof( bcm_ip6_t ) );
}

extern "C" int
bcm_field_qualify_DstIp6High_get( int unit, bcm_field_entry_t entry, bcm_ip6_t * data,
                                  bcm_ip6_t * mask ) {
   return getArray( __func__, unit, entry, bcmFieldQualifyDstIp6High,
                    data ? *data : nullptr, mask ? *mask : nullptr, sizeof( bcm_ip6_t ) );
}

extern "C" int
bcm_field_qualify_SrcIp( int unit, bcm_field_entry_t entry, bcm_ip_t data, bcm_ip_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifySrcIp, data, mask );
}

extern "C" int
bcm_field_qualify_SrcIp_get( int unit, bcm_field_entry_t entry, bcm_ip_t * data,
                             bcm_ip_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifySrcIp, data, mask );
}

extern "C" int
bcm_field_qualify_DstIp( int unit, bcm_field_entry_t entry, bcm_ip_t data, bcm_ip_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyDstIp, data, mask );
}

extern "C" int
bcm_field_qualify_DstIp_get( int unit, bcm_field_entry_t entry, bcm_ip_t * data,
                             bcm_ip_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyDstIp, data, mask );
}

extern "C" int
bcm_field_qualify_InnerSrcIp( int unit, bcm_field_entry_t entry, bcm_ip_t data,
                              bcm_ip_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyInnerSrcIp, data, mask );
}

extern "C" int
bcm_field_qualify_InnerSrcIp_get( int unit, bcm_field_entry_t entry, bcm_ip_t * data,
                                  bcm_ip_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyInnerSrcIp, data, mask );
}

extern "C" int
bcm_field_qualify_InnerDstIp( int unit, bcm_field_entry_t entry, bcm_ip_t data,
                              bcm_ip_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyInnerDstIp, data, mask );
}

extern "C" int
bcm_field_qualify_InnerDstIp_get( int unit, bcm_field_entry_t entry, bcm_ip_t * data,
                                  bcm_ip_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyInnerDstIp, data, mask );
}

extern "C" int
bcm_field_qualify_InPort( int unit, bcm_field_entry_t entry, bcm_port_t data,
                          bcm_port_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyInPort, data, mask );
}

extern "C" int
bcm_field_qualify_InPort_get( int unit, bcm_field_entry_t entry, bcm_port_t * data,
                              bcm_port_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyInPort, data, mask );
}

extern "C" int
bcm_field_qualify_OutPort( int unit, bcm_field_entry_t entry, bcm_port_t data,
                           bcm_port_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyOutPort, data, mask );
}

extern "C" int
bcm_field_qualify_OutPort_get( int unit, bcm_field_entry_t entry, bcm_port_t * data,
                               bcm_port_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyOutPort, data, mask );
}

extern "C" int
bcm_field_qualify_L4SrcPort( int unit, bcm_field_entry_t entry, bcm_l4_port_t data,
                             bcm_l4_port_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyL4SrcPort, data, mask );
}

extern "C" int
bcm_field_qualify_L4SrcPort_get( int unit, bcm_field_entry_t entry, bcm_l4_port_t * data,
                                 bcm_l4_port_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyL4SrcPort, data, mask );
}

extern "C" int
bcm_field_qualify_L4DstPort( int unit, bcm_field_entry_t entry, bcm_l4_port_t data,
                             bcm_l4_port_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyL4DstPort, data, mask );
}

extern "C" int
bcm_field_qualify_L4DstPort_get( int unit, bcm_field_entry_t entry, bcm_l4_port_t * data,
                                 bcm_l4_port_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyL4DstPort, data, mask );
}

extern "C" int
bcm_field_qualify_SrcTrunk( int unit, bcm_field_entry_t entry, bcm_trunk_t data,
                            bcm_trunk_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifySrcTrunk, data, mask );
}

extern "C" int
bcm_field_qualify_SrcTrunk_get( int unit, bcm_field_entry_t entry, bcm_trunk_t * data,
                                bcm_trunk_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifySrcTrunk, data, mask );
}

extern "C" int
bcm_field_qualify_DstL3Egress( int unit, bcm_field_entry_t entry, int data, int mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyDstL3Egress, data, mask );
}

extern "C" int
bcm_field_qualify_DstL3Egress_get( int unit, bcm_field_entry_t entry, int * data,
                                   int * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyDstL3Egress, data, mask );
}

extern "C" int
bcm_field_qualify_DstMultipath( int unit, bcm_field_entry_t entry, int data, int mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyDstMultipath, data, mask );
}

extern "C" int
bcm_field_qualify_DstMultipath_get( int unit, bcm_field_entry_t entry, int * data,
                                    int * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyDstMultipath, data, mask );
}

extern "C" int
bcm_field_qualify_EtherType( int unit, bcm_field_entry_t entry, uint16_t data,
                             uint16_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyEtherType, data, mask );
}

extern "C" int
bcm_field_qualify_EtherType_get( int unit, bcm_field_entry_t entry, uint16_t * data,
                                 uint16_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyEtherType, data, mask );
}

extern "C" int
bcm_field_qualify_OuterVlanId( int unit, bcm_field_entry_t entry, bcm_vlan_t data,
                               bcm_vlan_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyOuterVlanId, data, mask );
}

extern "C" int
bcm_field_qualify_OuterVlanId_get( int unit, bcm_field_entry_t entry, bcm_vlan_t * data,
                                   bcm_vlan_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyOuterVlanId, data, mask );
}

extern "C" int
bcm_field_qualify_InnerVlanId( int unit, bcm_field_entry_t entry, bcm_vlan_t data,
                               bcm_vlan_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyInnerVlanId, data, mask );
}

extern "C" int
bcm_field_qualify_InnerVlanId_get( int unit, bcm_field_entry_t entry, bcm_vlan_t * data,
                                   bcm_vlan_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyInnerVlanId, data, mask );
}

extern "C" int
bcm_field_qualify_ForwardingVlanId( int unit, bcm_field_entry_t entry, bcm_vlan_t data,
                                    bcm_vlan_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyForwardingVlanId, data, mask );
}

extern "C" int
bcm_field_qualify_ForwardingVlanId_get( int unit, bcm_field_entry_t entry,
                                        bcm_vlan_t * data, bcm_vlan_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyForwardingVlanId, data, mask );
}

extern "C" int
bcm_field_qualify_EgressClassL3Interface( int unit, bcm_field_entry_t entry, uint16_t data,
                                          uint16_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyEgressClassL3Interface, data,
                    mask );
}

extern "C" int
bcm_field_qualify_EgressClassL3Interface_get( int unit, bcm_field_entry_t entry,
                                              uint16_t * data, uint16_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyEgressClassL3Interface, data,
                    mask );
}

extern "C" int
bcm_field_qualify_EgressClassL2Gre( int unit, bcm_field_entry_t entry, uint16_t data,
                                    uint16_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyEgressClassL2Gre, data, mask );
}

extern "C" int
bcm_field_qualify_EgressClassL2Gre_get( int unit, bcm_field_entry_t entry, uint16_t * data,
                                        uint16_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyEgressClassL2Gre, data, mask );
}

extern "C" int
bcm_field_qualify_EgressClassVxlan( int unit, bcm_field_entry_t entry, uint16_t data,
                                    uint16_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyEgressClassVxlan, data, mask );
}

extern "C" int
bcm_field_qualify_EgressClassVxlan_get( int unit, bcm_field_entry_t entry, uint16_t * data,
                                        uint16_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyEgressClassVxlan, data, mask );
}

extern "C" int
bcm_field_qualify_IcmpTypeCode( int unit, bcm_field_entry_t entry, uint16_t data,
                                uint16_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyIcmpTypeCode, data, mask );
}

extern "C" int
bcm_field_qualify_IcmpTypeCode_get( int unit, bcm_field_entry_t entry, uint16_t * data,
                                    uint16_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyIcmpTypeCode, data, mask );
}

extern "C" int
bcm_field_qualify_CpuQueue( int unit, bcm_field_entry_t entry, uint8_t data,
                            uint8_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyCpuQueue, data, mask );
}

extern "C" int
bcm_field_qualify_CpuQueue_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                uint8_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyCpuQueue, data, mask );
}

extern "C" int
bcm_field_qualify_Drop( int unit, bcm_field_entry_t entry, uint8_t data, uint8_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyDrop, data, mask );
}

extern "C" int
bcm_field_qualify_Drop_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                            uint8_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyDrop, data, mask );
}

extern "C" int
bcm_field_qualify_DSCP( int unit, bcm_field_entry_t entry, uint8_t data, uint8_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyDSCP, data, mask );
}

extern "C" int
bcm_field_qualify_DSCP_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                            uint8_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyDSCP, data, mask );
}

extern "C" int
bcm_field_qualify_HiGig( int unit, bcm_field_entry_t entry, uint8_t data, uint8_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyHiGig, data, mask );
}

extern "C" int
bcm_field_qualify_HiGig_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                             uint8_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyHiGig, data, mask );
}

extern "C" int
bcm_field_qualify_IngressStpState( int unit, bcm_field_entry_t entry, uint8_t data,
                                   uint8_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyIngressStpState, data, mask );
}

extern "C" int
bcm_field_qualify_IngressStpState_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                       uint8_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyIngressStpState, data, mask );
}

extern "C" int
bcm_field_qualify_IntPriority( int unit, bcm_field_entry_t entry, uint8_t data,
                               uint8_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyIntPriority, data, mask );
}

extern "C" int
bcm_field_qualify_IntPriority_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                   uint8_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyIntPriority, data, mask );
}

extern "C" int
bcm_field_qualify_Ip6HopLimit( int unit, bcm_field_entry_t entry, uint8_t data,
                               uint8_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyIp6HopLimit, data, mask );
}

extern "C" int
bcm_field_qualify_Ip6HopLimit_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                   uint8_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyIp6HopLimit, data, mask );
}

extern "C" int
bcm_field_qualify_IpmcStarGroupHit( int unit, bcm_field_entry_t entry, uint8_t data,
                                    uint8_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyIpmcStarGroupHit, data, mask );
}

extern "C" int
bcm_field_qualify_IpmcStarGroupHit_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                        uint8_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyIpmcStarGroupHit, data, mask );
}

extern "C" int
bcm_field_qualify_IpProtocol( int unit, bcm_field_entry_t entry, uint8_t data,
                              uint8_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyIpProtocol, data, mask );
}

extern "C" int
bcm_field_qualify_IpProtocol_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                  uint8_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyIpProtocol, data, mask );
}

extern "C" int
bcm_field_qualify_L2SrcStatic( int unit, bcm_field_entry_t entry, uint8_t data,
                               uint8_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyL2SrcStatic, data, mask );
}

extern "C" int
bcm_field_qualify_L2SrcStatic_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                   uint8_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyL2SrcStatic, data, mask );
}

extern "C" int
bcm_field_qualify_L3Routable( int unit, bcm_field_entry_t entry, uint8_t data,
                              uint8_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyL3Routable, data, mask );
}

extern "C" int
bcm_field_qualify_L3Routable_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                  uint8_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyL3Routable, data, mask );
}

extern "C" int
bcm_field_qualify_MirrorCopy( int unit, bcm_field_entry_t entry, uint8_t data,
                              uint8_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyMirrorCopy, data, mask );
}

extern "C" int
bcm_field_qualify_MirrorCopy_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                  uint8_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyMirrorCopy, data, mask );
}

extern "C" int
bcm_field_qualify_MyStationHit( int unit, bcm_field_entry_t entry, uint8_t data,
                                uint8_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyMyStationHit, data, mask );
}

extern "C" int
bcm_field_qualify_MyStationHit_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                    uint8_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyMyStationHit, data, mask );
}

extern "C" int
bcm_field_qualify_OuterVlanPri( int unit, bcm_field_entry_t entry, uint8_t data,
                                uint8_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyOuterVlanPri, data, mask );
}

extern "C" int
bcm_field_qualify_OuterVlanPri_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                    uint8_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyOuterVlanPri, data, mask );
}

extern "C" int
bcm_field_qualify_TcpControl( int unit, bcm_field_entry_t entry, uint8_t data,
                              uint8_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyTcpControl, data, mask );
}

extern "C" int
bcm_field_qualify_TcpControl_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                  uint8_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyTcpControl, data, mask );
}

extern "C" int
bcm_field_qualify_VlanFormat( int unit, bcm_field_entry_t entry, uint8_t data,
                              uint8_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyVlanFormat, data, mask );
}

extern "C" int
bcm_field_qualify_VlanFormat_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                  uint8_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyVlanFormat, data, mask );
}

extern "C" int
bcm_field_qualify_Ttl( int unit, bcm_field_entry_t entry, uint8_t data, uint8_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyTtl, data, mask );
}

extern "C" int
bcm_field_qualify_Ttl_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                           uint8_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyTtl, data, mask );
}

extern "C" int
bcm_field_qualify_Ip6NextHeader( int unit, bcm_field_entry_t entry, uint8_t data,
                                 uint8_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyIp6NextHeader, data, mask );
}

extern "C" int
bcm_field_qualify_Ip6NextHeader_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                     uint8_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyIp6NextHeader, data, mask );
}

extern "C" int
bcm_field_qualify_Ip6TrafficClass( int unit, bcm_field_entry_t entry, uint8_t data,
                                   uint8_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyIp6TrafficClass, data, mask );
}

extern "C" int
bcm_field_qualify_Ip6TrafficClass_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                       uint8_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyIp6TrafficClass, data, mask );
}

extern "C" int
bcm_field_qualify_OuterVlanCfi( int unit, bcm_field_entry_t entry, uint8_t data,
                                uint8_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyOuterVlanCfi, data, mask );
}

extern "C" int
bcm_field_qualify_OuterVlanCfi_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                    uint8_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyOuterVlanCfi, data, mask );
}

extern "C" int
bcm_field_qualify_InnerVlanPri( int unit, bcm_field_entry_t entry, uint8_t data,
                                uint8_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyInnerVlanPri, data, mask );
}

extern "C" int
bcm_field_qualify_InnerVlanPri_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                    uint8_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyInnerVlanPri, data, mask );
}

extern "C" int
bcm_field_qualify_InnerIpProtocol( int unit, bcm_field_entry_t entry, uint8_t data,
                                   uint8_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyInnerIpProtocol, data, mask );
}

extern "C" int
bcm_field_qualify_InnerIpProtocol_get( int unit, bcm_field_entry_t entry, uint8_t * data,
                                       uint8_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyInnerIpProtocol, data, mask );
}

extern "C" int
bcm_field_qualify_DstClassField( int unit, bcm_field_entry_t entry, uint32_t data,
                                 uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyDstClassField, data, mask );
}

extern "C" int
bcm_field_qualify_DstClassField_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                     uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyDstClassField, data, mask );
}

extern "C" int
bcm_field_qualify_DstClassL2( int unit, bcm_field_entry_t entry, uint32_t data,
                              uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyDstClassL2, data, mask );
}

extern "C" int
bcm_field_qualify_DstClassL2_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                  uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyDstClassL2, data, mask );
}

extern "C" int
bcm_field_qualify_DstClassL3( int unit, bcm_field_entry_t entry, uint32_t data,
                              uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyDstClassL3, data, mask );
}

extern "C" int
bcm_field_qualify_DstClassL3_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                  uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyDstClassL3, data, mask );
}

extern "C" int
bcm_field_qualify_FabricQueueTag( int unit, bcm_field_entry_t entry, uint32_t data,
                                  uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyFabricQueueTag, data, mask );
}

extern "C" int
bcm_field_qualify_FabricQueueTag_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                      uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyFabricQueueTag, data, mask );
}

extern "C" int
bcm_field_qualify_IngressClassField( int unit, bcm_field_entry_t entry, uint32_t data,
                                     uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyIngressClassField, data, mask );
}

extern "C" int
bcm_field_qualify_IngressClassField_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                         uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyIngressClassField, data, mask );
}

extern "C" int
bcm_field_qualify_InterfaceClassL2( int unit, bcm_field_entry_t entry, uint32_t data,
                                    uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyInterfaceClassL2, data, mask );
}

extern "C" int
bcm_field_qualify_InterfaceClassL2_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                        uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyInterfaceClassL2, data, mask );
}

extern "C" int
bcm_field_qualify_InterfaceClassL3( int unit, bcm_field_entry_t entry, uint32_t data,
                                    uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyInterfaceClassL3, data, mask );
}

extern "C" int
bcm_field_qualify_InterfaceClassL3_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                        uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyInterfaceClassL3, data, mask );
}

extern "C" int
bcm_field_qualify_InterfaceClassPort( int unit, bcm_field_entry_t entry, uint32_t data,
                                      uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyInterfaceClassPort, data, mask );
}

extern "C" int
bcm_field_qualify_InterfaceClassPort_get( int unit, bcm_field_entry_t entry,
                                          uint32_t * data, uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyInterfaceClassPort, data, mask );
}

extern "C" int
bcm_field_qualify_InterfaceClassVPort( int unit, bcm_field_entry_t entry, uint32_t data,
                                       uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyInterfaceClassVPort, data, mask );
}

extern "C" int
bcm_field_qualify_InterfaceClassVPort_get( int unit, bcm_field_entry_t entry,
                                           uint32_t * data, uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyInterfaceClassVPort, data, mask );
}

extern "C" int
bcm_field_qualify_IpInfo( int unit, bcm_field_entry_t entry, uint32_t data,
                          uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyIpInfo, data, mask );
}

extern "C" int
bcm_field_qualify_IpInfo_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                              uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyIpInfo, data, mask );
}

extern "C" int
bcm_field_qualify_PacketRes( int unit, bcm_field_entry_t entry, uint32_t data,
                             uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyPacketRes, data, mask );
}

extern "C" int
bcm_field_qualify_PacketRes_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                 uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyPacketRes, data, mask );
}

extern "C" int
bcm_field_qualify_SrcClassField( int unit, bcm_field_entry_t entry, uint32_t data,
                                 uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifySrcClassField, data, mask );
}

extern "C" int
bcm_field_qualify_SrcClassField_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                     uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifySrcClassField, data, mask );
}

extern "C" int
bcm_field_qualify_SrcClassL2( int unit, bcm_field_entry_t entry, uint32_t data,
                              uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifySrcClassL2, data, mask );
}

extern "C" int
bcm_field_qualify_SrcClassL2_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                  uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifySrcClassL2, data, mask );
}

extern "C" int
bcm_field_qualify_SrcClassL3( int unit, bcm_field_entry_t entry, uint32_t data,
                              uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifySrcClassL3, data, mask );
}

extern "C" int
bcm_field_qualify_SrcClassL3_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                  uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifySrcClassL3, data, mask );
}

extern "C" int
bcm_field_qualify_VxlanNetworkId( int unit, bcm_field_entry_t entry, uint32_t data,
                                  uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyVxlanNetworkId, data, mask );
}

extern "C" int
bcm_field_qualify_VxlanNetworkId_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                      uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyVxlanNetworkId, data, mask );
}

extern "C" int
bcm_field_qualify_Vrf( int unit, bcm_field_entry_t entry, uint32_t data, uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyVrf, data, mask );
}

extern "C" int
bcm_field_qualify_Vrf_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                           uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyVrf, data, mask );
}

extern "C" int
bcm_field_qualify_Ip6FlowLabel( int unit, bcm_field_entry_t entry, uint32_t data,
                                uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyIp6FlowLabel, data, mask );
}

extern "C" int
bcm_field_qualify_Ip6FlowLabel_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                    uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyIp6FlowLabel, data, mask );
}

extern "C" int
bcm_field_qualify_DstIpClass( int unit, bcm_field_entry_t entry, uint32_t data,
                              uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyDstIpClass, data, mask );
}

extern "C" int
bcm_field_qualify_DstIpClass_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                  uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyDstIpClass, data, mask );
}

extern "C" int
bcm_field_qualify_SrcIpClass( int unit, bcm_field_entry_t entry, uint32_t data,
                              uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifySrcIpClass, data, mask );
}

extern "C" int
bcm_field_qualify_SrcIpClass_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                  uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifySrcIpClass, data, mask );
}

extern "C" int
bcm_field_qualify_L4SrcPortClass( int unit, bcm_field_entry_t entry, uint32_t data,
                                  uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyL4SrcPortClass, data, mask );
}

extern "C" int
bcm_field_qualify_L4SrcPortClass_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                      uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyL4SrcPortClass, data, mask );
}

extern "C" int
bcm_field_qualify_L4DstPortClass( int unit, bcm_field_entry_t entry, uint32_t data,
                                  uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyL4DstPortClass, data, mask );
}

extern "C" int
bcm_field_qualify_L4DstPortClass_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                      uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyL4DstPortClass, data, mask );
}

extern "C" int
bcm_field_qualify_IpProtocolClass( int unit, bcm_field_entry_t entry, uint32_t data,
                                   uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyIpProtocolClass, data, mask );
}

extern "C" int
bcm_field_qualify_IpProtocolClass_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                       uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyIpProtocolClass, data, mask );
}

extern "C" int
bcm_field_qualify_EtherTypeClass( int unit, bcm_field_entry_t entry, uint32_t data,
                                  uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyEtherTypeClass, data, mask );
}

extern "C" int
bcm_field_qualify_EtherTypeClass_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                      uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyEtherTypeClass, data, mask );
}

extern "C" int
bcm_field_qualify_CompressionSelect( int unit, bcm_field_entry_t entry, uint32_t data,
                                     uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyCompressionSelect, data, mask );
}

extern "C" int
bcm_field_qualify_CompressionSelect_get( int unit, bcm_field_entry_t entry, uint32_t * data,
                                         uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyCompressionSelect, data, mask );
}

extern "C" int
bcm_field_qualify_CompressionAddrSelect( int unit, bcm_field_entry_t entry, uint32_t data,
                                         uint32_t mask ) {
   return setValue( __func__, unit, entry, bcmFieldQualifyCompressionAddrSelect, data,
                    mask );
}

extern "C" int
bcm_field_qualify_CompressionAddrSelect_get( int unit, bcm_field_entry_t entry,
                                             uint32_t * data, uint32_t * mask ) {
   return getValue( __func__, unit, entry, bcmFieldQualifyCompressionAddrSelect, data,
                    mask );
}

extern "C" int
bcm_field_qualify_ForwardingType( int unit, bcm_field_entry_t entry,
                                  bcm_field_ForwardingType_t value ) {
   return setEnum( __func__, unit, entry, bcmFieldQualifyForwardingType, value );
}

extern "C" int
bcm_field_qualify_ForwardingType_get( int unit, bcm_field_entry_t entry,
                                      bcm_field_ForwardingType_t * value ) {
   return getEnum( __func__, unit, entry, bcmFieldQualifyForwardingType, value );
}

extern "C" int
bcm_field_qualify_IpType( int unit, bcm_field_entry_t entry, bcm_field_IpType_t value ) {
   return setEnum( __func__, unit, entry, bcmFieldQualifyIpType, value );
}

extern "C" int
bcm_field_qualify_IpType_get( int unit, bcm_field_entry_t entry,
                              bcm_field_IpType_t * value ) {
   return getEnum( __func__, unit, entry, bcmFieldQualifyIpType, value );
}

extern "C" int
bcm_field_qualify_TunnelType( int unit, bcm_field_entry_t entry,
                              bcm_field_TunnelType_t value ) {
   return setEnum( __func__, unit, entry, bcmFieldQualifyTunnelType, value );
}

extern "C" int
bcm_field_qualify_TunnelType_get( int unit, bcm_field_entry_t entry,
                                  bcm_field_TunnelType_t * value ) {
   return getEnum( __func__, unit, entry, bcmFieldQualifyTunnelType, value );
}

extern "C" int
bcm_field_qualify_IpFrag( int unit, bcm_field_entry_t entry, bcm_field_IpFrag_t value ) {
   return setEnum( __func__, unit, entry, bcmFieldQualifyIpFrag, value );
}

extern "C" int
bcm_field_qualify_IpFrag_get( int unit, bcm_field_entry_t entry,
                              bcm_field_IpFrag_t * value ) {
   return getEnum( __func__, unit, entry, bcmFieldQualifyIpFrag, value );
}

extern "C" int
bcm_field_qualify_L2Format( int unit, bcm_field_entry_t entry,
                            bcm_field_L2Format_t value ) {
   return setEnum( __func__, unit, entry, bcmFieldQualifyL2Format, value );
}

extern "C" int
bcm_field_qualify_L2Format_get( int unit, bcm_field_entry_t entry,
                                bcm_field_L2Format_t * value ) {
   return getEnum( __func__, unit, entry, bcmFieldQualifyL2Format, value );
}

extern "C" int
bcm_field_qualify_Color( int unit, bcm_field_entry_t entry, bcm_field_color_t value ) {
   return setEnum( __func__, unit, entry, bcmFieldQualifyColor, value );
}

extern "C" int
bcm_field_qualify_Color_get( int unit, bcm_field_entry_t entry,
                             bcm_field_color_t * value ) {
   return getEnum( __func__, unit, entry, bcmFieldQualifyColor, value );
}

extern "C" int
bcm_field_qualify_Stage( int unit, bcm_field_entry_t entry, bcm_field_stage_t value ) {
   return setEnum( __func__, unit, entry, bcmFieldQualifyStage, value );
}

extern "C" int
bcm_field_qualify_Stage_get( int unit, bcm_field_entry_t entry,
                             bcm_field_stage_t * value ) {
   return getEnum( __func__, unit, entry, bcmFieldQualifyStage, value );
}
