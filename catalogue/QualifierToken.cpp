#include "catalogue/QualifierToken.h"

#include <iterator>

#include "platform/kiln/Assert.h"
#include "sdk/shim/Shim.h"

namespace Tessel {

namespace {

using Query = int ( Shim::Sdk::* )() const;

// Indexed by token; entry 0 stands for Qual::none and is never asked.
constexpr Query queries[] = {
   nullptr,
   &Shim::Sdk::AR_bcmFieldQualifySrcIp6,
   &Shim::Sdk::AR_bcmFieldQualifyDstIp6,
   &Shim::Sdk::AR_bcmFieldQualifySrcIp6High,
   &Shim::Sdk::AR_bcmFieldQualifyDstIp6High,
   &Shim::Sdk::AR_bcmFieldQualifySrcIp,
   &Shim::Sdk::AR_bcmFieldQualifyDstIp,
   &Shim::Sdk::AR_bcmFieldQualifySrcMac,
   &Shim::Sdk::AR_bcmFieldQualifyDstMac,
   &Shim::Sdk::AR_bcmFieldQualifyInPort,
   &Shim::Sdk::AR_bcmFieldQualifyInPorts,
   &Shim::Sdk::AR_bcmFieldQualifyOutPort,
   &Shim::Sdk::AR_bcmFieldQualifyDevicePortBitmap,
   &Shim::Sdk::AR_bcmFieldQualifyDstPort,
   &Shim::Sdk::AR_bcmFieldQualifySrcTrunk,
   &Shim::Sdk::AR_bcmFieldQualifyL4SrcPort,
   &Shim::Sdk::AR_bcmFieldQualifyL4DstPort,
   &Shim::Sdk::AR_bcmFieldQualifyRangeCheck,
   &Shim::Sdk::AR_bcmFieldQualifyEtherType,
   &Shim::Sdk::AR_bcmFieldQualifyOuterVlanId,
   &Shim::Sdk::AR_bcmFieldQualifyOuterVlanPri,
   &Shim::Sdk::AR_bcmFieldQualifyOuterVlanCfi,
   &Shim::Sdk::AR_bcmFieldQualifyInnerVlanId,
   &Shim::Sdk::AR_bcmFieldQualifyInnerVlanPri,
   &Shim::Sdk::AR_bcmFieldQualifyVlanFormat,
   &Shim::Sdk::AR_bcmFieldQualifyForwardingVlanId,
   &Shim::Sdk::AR_bcmFieldQualifyIpProtocol,
   &Shim::Sdk::AR_bcmFieldQualifyDSCP,
   &Shim::Sdk::AR_bcmFieldQualifyTtl,
   &Shim::Sdk::AR_bcmFieldQualifyIp6HopLimit,
   &Shim::Sdk::AR_bcmFieldQualifyIp6NextHeader,
   &Shim::Sdk::AR_bcmFieldQualifyIp6TrafficClass,
   &Shim::Sdk::AR_bcmFieldQualifyIp6FlowLabel,
   &Shim::Sdk::AR_bcmFieldQualifyTcpControl,
   &Shim::Sdk::AR_bcmFieldQualifyIpFrag,
   &Shim::Sdk::AR_bcmFieldQualifyIpType,
   &Shim::Sdk::AR_bcmFieldQualifyIpInfo,
   &Shim::Sdk::AR_bcmFieldQualifyL2Format,
   &Shim::Sdk::AR_bcmFieldQualifyForwardingType,
   &Shim::Sdk::AR_bcmFieldQualifyTunnelType,
   &Shim::Sdk::AR_bcmFieldQualifyVxlanNetworkId,
   &Shim::Sdk::AR_bcmFieldQualifyIcmpTypeCode,
   &Shim::Sdk::AR_bcmFieldQualifyPacketRes,
   &Shim::Sdk::AR_bcmFieldQualifyL3Routable,
   &Shim::Sdk::AR_bcmFieldQualifyMyStationHit,
   &Shim::Sdk::AR_bcmFieldQualifyL2SrcStatic,
   &Shim::Sdk::AR_bcmFieldQualifyIpmcStarGroupHit,
   &Shim::Sdk::AR_bcmFieldQualifyHiGig,
   &Shim::Sdk::AR_bcmFieldQualifyCpuQueue,
   &Shim::Sdk::AR_bcmFieldQualifyDrop,
   &Shim::Sdk::AR_bcmFieldQualifyIngressStpState,
   &Shim::Sdk::AR_bcmFieldQualifyIntPriority,
   &Shim::Sdk::AR_bcmFieldQualifyColor,
   &Shim::Sdk::AR_bcmFieldQualifyMirrorCopy,
   &Shim::Sdk::AR_bcmFieldQualifyFabricQueueTag,
   &Shim::Sdk::AR_bcmFieldQualifyEgressClassL3Interface,
   &Shim::Sdk::AR_bcmFieldQualifyEgressClassL2Gre,
   &Shim::Sdk::AR_bcmFieldQualifyEgressClassVxlan,
   &Shim::Sdk::AR_bcmFieldQualifyDstClassField,
   &Shim::Sdk::AR_bcmFieldQualifyDstClassL2,
   &Shim::Sdk::AR_bcmFieldQualifyDstClassL3,
   &Shim::Sdk::AR_bcmFieldQualifySrcClassField,
   &Shim::Sdk::AR_bcmFieldQualifySrcClassL2,
   &Shim::Sdk::AR_bcmFieldQualifySrcClassL3,
   &Shim::Sdk::AR_bcmFieldQualifyIngressClassField,
   &Shim::Sdk::AR_bcmFieldQualifyInterfaceClassL2,
   &Shim::Sdk::AR_bcmFieldQualifyInterfaceClassL3,
   &Shim::Sdk::AR_bcmFieldQualifyInterfaceClassPort,
   &Shim::Sdk::AR_bcmFieldQualifyInterfaceClassVPort,
   &Shim::Sdk::AR_bcmFieldQualifyVrf,
   &Shim::Sdk::AR_bcmFieldQualifyDstL3Egress,
   &Shim::Sdk::AR_bcmFieldQualifyDstMultipath,
   &Shim::Sdk::AR_bcmFieldQualifyInnerSrcIp,
   &Shim::Sdk::AR_bcmFieldQualifyInnerDstIp,
   &Shim::Sdk::AR_bcmFieldQualifyInnerIpProtocol,
   &Shim::Sdk::AR_bcmFieldQualifyDstIpClass,
   &Shim::Sdk::AR_bcmFieldQualifySrcIpClass,
   &Shim::Sdk::AR_bcmFieldQualifyL4SrcPortClass,
   &Shim::Sdk::AR_bcmFieldQualifyL4DstPortClass,
   &Shim::Sdk::AR_bcmFieldQualifyIpProtocolClass,
   &Shim::Sdk::AR_bcmFieldQualifyEtherTypeClass,
   &Shim::Sdk::AR_bcmFieldQualifyCompressionSelect,
   &Shim::Sdk::AR_bcmFieldQualifyCompressionAddrSelect,
   &Shim::Sdk::AR_bcmFieldQualifyStage,
   &Shim::Sdk::AR_bcmFieldQualifyStageIngress,
   &Shim::Sdk::AR_bcmFieldQualifyStageLookup,
   &Shim::Sdk::AR_bcmFieldQualifyStageEgress,
   &Shim::Sdk::AR_bcmFieldQualifyStageClass,
   &Shim::Sdk::AR_bcmFieldQualifyMixedSrcClassId,
};

static_assert( std::size( queries ) == static_cast< U32 >( Qual::MixedSrcClassId ) + 1,
               "one shim query per qualifier token" );

} // namespace

int
qualifierValue( Qual qual ) {
   U32 token = static_cast< U32 >( qual );
   KILN_ASSERT( token > 0 && token < std::size( queries ) );
   KILN_ASSERT_MSG( Shim::sdk_, "SDK shim not installed" );
   return ( Shim::sdk_->*queries[ token ] )();
}

void
fillQualifierSlots( const Qual * tokens, U32 slots, int * fields ) {
   U32 slot = 0;
   for ( ; slot + 1 < slots && tokens[ slot ] != Qual::none; ++slot ) {
      fields[ slot ] = qualifierValue( tokens[ slot ] );
   }
   fields[ slot ] = -1;
}

} // namespace Tessel
