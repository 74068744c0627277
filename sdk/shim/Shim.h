// The maker's shim between the agent and the chip SDK.
//
// Code above the shim asks it for SDK enumerator values at run time
// (the AR_ family), for the chip type of a unit and for chip-capability
// predicates, and calls the maker's own oberon_* functions. The shim is
// reached through one global object, Shim::sdk_, which the program installs
// at start-up (the chip model does so when it builds a box).
#pragma once

namespace Shim {

class Sdk {
 public:
   Sdk() = default;
   virtual ~Sdk() = default;
   Sdk( const Sdk & ) = delete;
   Sdk & operator=( const Sdk & ) = delete;

   // Enumerator queries: the SDK's value of each qualifier, action and stat type.
   int AR_bcmFieldQualifySrcIp6() const;
   int AR_bcmFieldQualifyDstIp6() const;
   int AR_bcmFieldQualifySrcIp6High() const;
   int AR_bcmFieldQualifyDstIp6High() const;
   int AR_bcmFieldQualifySrcIp() const;
   int AR_bcmFieldQualifyDstIp() const;
   int AR_bcmFieldQualifySrcMac() const;
   int AR_bcmFieldQualifyDstMac() const;
   int AR_bcmFieldQualifyInPort() const;
   int AR_bcmFieldQualifyInPorts() const;
   int AR_bcmFieldQualifyOutPort() const;
   int AR_bcmFieldQualifyDevicePortBitmap() const;
   int AR_bcmFieldQualifyDstPort() const;
   int AR_bcmFieldQualifySrcTrunk() const;
   int AR_bcmFieldQualifyL4SrcPort() const;
   int AR_bcmFieldQualifyL4DstPort() const;
   int AR_bcmFieldQualifyRangeCheck() const;
   int AR_bcmFieldQualifyEtherType() const;
   int AR_bcmFieldQualifyOuterVlanId() const;
   int AR_bcmFieldQualifyOuterVlanPri() const;
   int AR_bcmFieldQualifyOuterVlanCfi() const;
   int AR_bcmFieldQualifyInnerVlanId() const;
   int AR_bcmFieldQualifyInnerVlanPri() const;
   int AR_bcmFieldQualifyVlanFormat() const;
   int AR_bcmFieldQualifyForwardingVlanId() const;
   int AR_bcmFieldQualifyIpProtocol() const;
   int AR_bcmFieldQualifyDSCP() const;
   int AR_bcmFieldQualifyTtl() const;
   int AR_bcmFieldQualifyIp6HopLimit() const;
   int AR_bcmFieldQualifyIp6NextHeader() const;
   int AR_bcmFieldQualifyIp6TrafficClass() const;
   int AR_bcmFieldQualifyIp6FlowLabel() const;
   int AR_bcmFieldQualifyTcpControl() const;
   int AR_bcmFieldQualifyIpFrag() const;
   int AR_bcmFieldQualifyIpType() const;
   int AR_bcmFieldQualifyIpInfo() const;
   int AR_bcmFieldQualifyL2Format() const;
   int AR_bcmFieldQualifyForwardingType() const;
   int AR_bcmFieldQualifyTunnelType() const;
   int AR_bcmFieldQualifyVxlanNetworkId() const;
   int AR_bcmFieldQualifyIcmpTypeCode() const;
   int AR_bcmFieldQualifyPacketRes() const;
   int AR_bcmFieldQualifyL3Routable() const;
   int AR_bcmFieldQualifyMyStationHit() const;
   int AR_bcmFieldQualifyL2SrcStatic() const;
   int AR_bcmFieldQualifyIpmcStarGroupHit() const;
   int AR_bcmFieldQualifyHiGig() const;
   int AR_bcmFieldQualifyCpuQueue() const;
   int AR_bcmFieldQualifyDrop() const;
   int AR_bcmFieldQualifyIngressStpState() const;
   int AR_bcmFieldQualifyIntPriority() const;
   int AR_bcmFieldQualifyColor() const;
   int AR_bcmFieldQualifyMirrorCopy() const;
   int AR_bcmFieldQualifyFabricQueueTag() const;
   int AR_bcmFieldQualifyEgressClassL3Interface() const;
   int AR_bcmFieldQualifyEgressClassL2Gre() const;
   int AR_bcmFieldQualifyEgressClassVxlan() const;
   int AR_bcmFieldQualifyDstClassField() const;
   int AR_bcmFieldQualifyDstClassL2() const;
   int AR_bcmFieldQualifyDstClassL3() const;
   int AR_bcmFieldQualifySrcClassField() const;
   int AR_bcmFieldQualifySrcClassL2() const;
   int AR_bcmFieldQualifySrcClassL3() const;
   int AR_bcmFieldQualifyIngressClassField() const;
   int AR_bcmFieldQualifyInterfaceClassL2() const;
   int AR_bcmFieldQualifyInterfaceClassL3() const;
   int AR_bcmFieldQualifyInterfaceClassPort() const;
   int AR_bcmFieldQualifyInterfaceClassVPort() const;
   int AR_bcmFieldQualifyVrf() const;
   int AR_bcmFieldQualifyDstL3Egress() const;
   int AR_bcmFieldQualifyDstMultipath() const;
   int AR_bcmFieldQualifyInnerSrcIp() const;
   int AR_bcmFieldQualifyInnerDstIp() const;
   int AR_bcmFieldQualifyInnerIpProtocol() const;
   int AR_bcmFieldQualifyDstIpClass() const;
   int AR_bcmFieldQualifySrcIpClass() const;
   int AR_bcmFieldQualifyL4SrcPortClass() const;
   int AR_bcmFieldQualifyL4DstPortClass() const;
   int AR_bcmFieldQualifyIpProtocolClass() const;
   int AR_bcmFieldQualifyEtherTypeClass() const;
   int AR_bcmFieldQualifyCompressionSelect() const;
   int AR_bcmFieldQualifyCompressionAddrSelect() const;
   int AR_bcmFieldQualifyStage() const;
   int AR_bcmFieldQualifyStageIngress() const;
   int AR_bcmFieldQualifyStageLookup() const;
   int AR_bcmFieldQualifyStageEgress() const;
   int AR_bcmFieldQualifyStageClass() const;
   int AR_bcmFieldQualifyMixedSrcClassId() const;
   int AR_bcmFieldActionCopyToCpu() const;
   int AR_bcmFieldActionCopyToCpuCancel() const;
   int AR_bcmFieldActionDrop() const;
   int AR_bcmFieldActionDropCancel() const;
   int AR_bcmFieldActionRedirectPort() const;
   int AR_bcmFieldActionRedirectPbmp() const;
   int AR_bcmFieldActionRedirectTrunk() const;
   int AR_bcmFieldActionRedirectEgrNextHop() const;
   int AR_bcmFieldActionEgressMask() const;
   int AR_bcmFieldActionEgressPortsAdd() const;
   int AR_bcmFieldActionL3Switch() const;
   int AR_bcmFieldActionL3SwitchCancel() const;
   int AR_bcmFieldActionMirrorIngress() const;
   int AR_bcmFieldActionMirrorEgress() const;
   int AR_bcmFieldActionMirrorOverride() const;
   int AR_bcmFieldActionCosQNew() const;
   int AR_bcmFieldActionCosQCpuNew() const;
   int AR_bcmFieldActionPrioIntNew() const;
   int AR_bcmFieldActionDscpNew() const;
   int AR_bcmFieldActionEcnNew() const;
   int AR_bcmFieldActionDropPrecedence() const;
   int AR_bcmFieldActionGpDrop() const;
   int AR_bcmFieldActionYpDrop() const;
   int AR_bcmFieldActionRpDrop() const;
   int AR_bcmFieldActionOuterVlanNew() const;
   int AR_bcmFieldActionInnerVlanNew() const;
   int AR_bcmFieldActionOuterVlanPrioNew() const;
   int AR_bcmFieldActionVrfSet() const;
   int AR_bcmFieldActionClassSourceSet() const;
   int AR_bcmFieldActionClassDestSet() const;
   int AR_bcmFieldActionClassSet() const;
   int AR_bcmFieldActionPolicerGroup() const;
   int AR_bcmFieldActionMeterConfig() const;
   int AR_bcmFieldActionStatGroup() const;
   int AR_bcmFieldActionIngSampleEnable() const;
   int AR_bcmFieldActionSnoop() const;
   int AR_bcmFieldActionTtlDecrementCancel() const;
   int AR_bcmFieldActionNatEnable() const;
   int AR_bcmFieldActionPfcTxEnable() const;
   int AR_bcmFieldActionUseGlobalMeterColor() const;
   int AR_bcmFieldActionColorIndependent() const;
   int AR_bcmFieldActionNewClassId() const;
   int AR_bcmFieldStatPackets() const;
   int AR_bcmFieldStatBytes() const;
   int AR_bcmFieldStatGreenPackets() const;
   int AR_bcmFieldStatGreenBytes() const;
   int AR_bcmFieldStatYellowPackets() const;
   int AR_bcmFieldStatYellowBytes() const;
   int AR_bcmFieldStatRedPackets() const;
   int AR_bcmFieldStatRedBytes() const;
   int AR_bcmFieldStatDropPackets() const;
   int AR_bcmFieldStatDropBytes() const;
};

// The process's shim object; null until the program installs one.
extern Sdk * sdk_;

} // namespace Shim
