#include "sdk/shim/Shim.h"

#include "sdk/api/field_enums.h"

namespace Shim {

Sdk * sdk_ = nullptr;

int
Sdk::AR_bcmFieldQualifySrcIp6() const {
   return bcmFieldQualifySrcIp6;
}

int
Sdk::AR_bcmFieldQualifyDstIp6() const {
   return bcmFieldQualifyDstIp6;
}

int
Sdk::AR_bcmFieldQualifySrcIp6High() const {
   return bcmFieldQualifySrcIp6High;
}

int
Sdk::AR_bcmFieldQualifyDstIp6High() const {
   return bcmFieldQualifyDstIp6High;
}

int
Sdk::AR_bcmFieldQualifySrcIp() const {
   return bcmFieldQualifySrcIp;
}

int
Sdk::AR_bcmFieldQualifyDstIp() const {
   return bcmFieldQualifyDstIp;
}

int
Sdk::AR_bcmFieldQualifySrcMac() const {
   return bcmFieldQualifySrcMac;
}

int
Sdk::AR_bcmFieldQualifyDstMac() const {
   return bcmFieldQualifyDstMac;
}

int
Sdk::AR_bcmFieldQualifyInPort() const {
   return bcmFieldQualifyInPort;
}

int
Sdk::AR_bcmFieldQualifyInPorts() const {
   return bcmFieldQualifyInPorts;
}

int
Sdk::AR_bcmFieldQualifyOutPort() const {
   return bcmFieldQualifyOutPort;
}

int
Sdk::AR_bcmFieldQualifyDevicePortBitmap() const {
   return bcmFieldQualifyDevicePortBitmap;
}

int
Sdk::AR_bcmFieldQualifyDstPort() const {
   return bcmFieldQualifyDstPort;
}

int
Sdk::AR_bcmFieldQualifySrcTrunk() const {
   return bcmFieldQualifySrcTrunk;
}

int
Sdk::AR_bcmFieldQualifyL4SrcPort() const {
   return bcmFieldQualifyL4SrcPort;
}

int
Sdk::AR_bcmFieldQualifyL4DstPort() const {
   return bcmFieldQualifyL4DstPort;
}

int
Sdk::AR_bcmFieldQualifyRangeCheck() const {
   return bcmFieldQualifyRangeCheck;
}

int
Sdk::AR_bcmFieldQualifyEtherType() const {
   return bcmFieldQualifyEtherType;
}

int
Sdk::AR_bcmFieldQualifyOuterVlanId() const {
   return bcmFieldQualifyOuterVlanId;
}

int
Sdk::AR_bcmFieldQualifyOuterVlanPri() const {
   return bcmFieldQualifyOuterVlanPri;
}

int
Sdk::AR_bcmFieldQualifyOuterVlanCfi() const {
   return bcmFieldQualifyOuterVlanCfi;
}

int
Sdk::AR_bcmFieldQualifyInnerVlanId() const {
   return bcmFieldQualifyInnerVlanId;
}

int
Sdk::AR_bcmFieldQualifyInnerVlanPri() const {
   return bcmFieldQualifyInnerVlanPri;
}

int
Sdk::AR_bcmFieldQualifyVlanFormat() const {
   return bcmFieldQualifyVlanFormat;
}

int
Sdk::AR_bcmFieldQualifyForwardingVlanId() const {
   return bcmFieldQualifyForwardingVlanId;
}

int
Sdk::AR_bcmFieldQualifyIpProtocol() const {
   return bcmFieldQualifyIpProtocol;
}

int
Sdk::AR_bcmFieldQualifyDSCP() const {
   return bcmFieldQualifyDSCP;
}

int
Sdk::AR_bcmFieldQualifyTtl() const {
   return bcmFieldQualifyTtl;
}

int
Sdk::AR_bcmFieldQualifyIp6HopLimit() const {
   return bcmFieldQualifyIp6HopLimit;
}

int
Sdk::AR_bcmFieldQualifyIp6NextHeader() const {
   return bcmFieldQualifyIp6NextHeader;
}

int
Sdk::AR_bcmFieldQualifyIp6TrafficClass() const {
   return bcmFieldQualifyIp6TrafficClass;
}

int
Sdk::AR_bcmFieldQualifyIp6FlowLabel() const {
   return bcmFieldQualifyIp6FlowLabel;
}

int
Sdk::AR_bcmFieldQualifyTcpControl() const {
   return bcmFieldQualifyTcpControl;
}

int
Sdk::AR_bcmFieldQualifyIpFrag() const {
   return bcmFieldQualifyIpFrag;
}

int
Sdk::AR_bcmFieldQualifyIpType() const {
   return bcmFieldQualifyIpType;
}

int
Sdk::AR_bcmFieldQualifyIpInfo() const {
   return bcmFieldQualifyIpInfo;
}

int
Sdk::AR_bcmFieldQualifyL2Format() const {
   return bcmFieldQualifyL2Format;
}

int
Sdk::AR_bcmFieldQualifyForwardingType() const {
   return bcmFieldQualifyForwardingType;
}

int
Sdk::AR_bcmFieldQualifyTunnelType() const {
   return bcmFieldQualifyTunnelType;
}

int
Sdk::AR_bcmFieldQualifyVxlanNetworkId() const {
   return bcmFieldQualifyVxlanNetworkId;
}

int
Sdk::AR_bcmFieldQualifyIcmpTypeCode() const {
   return bcmFieldQualifyIcmpTypeCode;
}

int
Sdk::AR_bcmFieldQualifyPacketRes() const {
   return bcmFieldQualifyPacketRes;
}

int
Sdk::AR_bcmFieldQualifyL3Routable() const {
   return bcmFieldQualifyL3Routable;
}

int
Sdk::AR_bcmFieldQualifyMyStationHit() const {
   return bcmFieldQualifyMyStationHit;
}

int
Sdk::AR_bcmFieldQualifyL2SrcStatic() const {
   return bcmFieldQualifyL2SrcStatic;
}

int
Sdk::AR_bcmFieldQualifyIpmcStarGroupHit() const {
   return bcmFieldQualifyIpmcStarGroupHit;
}

int
Sdk::AR_bcmFieldQualifyHiGig() const {
   return bcmFieldQualifyHiGig;
}

int
Sdk::AR_bcmFieldQualifyCpuQueue() const {
   return bcmFieldQualifyCpuQueue;
}

int
Sdk::AR_bcmFieldQualifyDrop() const {
   return bcmFieldQualifyDrop;
}

int
Sdk::AR_bcmFieldQualifyIngressStpState() const {
   return bcmFieldQualifyIngressStpState;
}

int
Sdk::AR_bcmFieldQualifyIntPriority() const {
   return bcmFieldQualifyIntPriority;
}

int
Sdk::AR_bcmFieldQualifyColor() const {
   return bcmFieldQualifyColor;
}

int
Sdk::AR_bcmFieldQualifyMirrorCopy() const {
   return bcmFieldQualifyMirrorCopy;
}

int
Sdk::AR_bcmFieldQualifyFabricQueueTag() const {
   return bcmFieldQualifyFabricQueueTag;
}

int
Sdk::AR_bcmFieldQualifyEgressClassL3Interface() const {
   return bcmFieldQualifyEgressClassL3Interface;
}

int
Sdk::AR_bcmFieldQualifyEgressClassL2Gre() const {
   return bcmFieldQualifyEgressClassL2Gre;
}

int
Sdk::AR_bcmFieldQualifyEgressClassVxlan() const {
   return bcmFieldQualifyEgressClassVxlan;
}

int
Sdk::AR_bcmFieldQualifyDstClassField() const {
   return bcmFieldQualifyDstClassField;
}

int
Sdk::AR_bcmFieldQualifyDstClassL2() const {
   return bcmFieldQualifyDstClassL2;
}

int
Sdk::AR_bcmFieldQualifyDstClassL3() const {
   return bcmFieldQualifyDstClassL3;
}

int
Sdk::AR_bcmFieldQualifySrcClassField() const {
   return bcmFieldQualifySrcClassField;
}

int
Sdk::AR_bcmFieldQualifySrcClassL2() const {
   return bcmFieldQualifySrcClassL2;
}

int
Sdk::AR_bcmFieldQualifySrcClassL3() const {
   return bcmFieldQualifySrcClassL3;
}

int
Sdk::AR_bcmFieldQualifyIngressClassField() const {
   return bcmFieldQualifyIngressClassField;
}

int
Sdk::AR_bcmFieldQualifyInterfaceClassL2() const {
   return bcmFieldQualifyInterfaceClassL2;
}

int
Sdk::AR_bcmFieldQualifyInterfaceClassL3() const {
   return bcmFieldQualifyInterfaceClassL3;
}

int
Sdk::AR_bcmFieldQualifyInterfaceClassPort() const {
   return bcmFieldQualifyInterfaceClassPort;
}

int
Sdk::AR_bcmFieldQualifyInterfaceClassVPort() const {
   return bcmFieldQualifyInterfaceClassVPort;
}

int
Sdk::AR_bcmFieldQualifyVrf() const {
   return bcmFieldQualifyVrf;
}

int
Sdk::AR_bcmFieldQualifyDstL3Egress() const {
   return bcmFieldQualifyDstL3Egress;
}

int
Sdk::AR_bcmFieldQualifyDstMultipath() const {
   return bcmFieldQualifyDstMultipath;
}

int
Sdk::AR_bcmFieldQualifyInnerSrcIp() const {
   return bcmFieldQualifyInnerSrcIp;
}

int
Sdk::AR_bcmFieldQualifyInnerDstIp() const {
   return bcmFieldQualifyInnerDstIp;
}

int
Sdk::AR_bcmFieldQualifyInnerIpProtocol() const {
   return bcmFieldQualifyInnerIpProtocol;
}

int
Sdk::AR_bcmFieldQualifyDstIpClass() const {
   return bcmFieldQualifyDstIpClass;
}

int
Sdk::AR_bcmFieldQualifySrcIpClass() const {
   return bcmFieldQualifySrcIpClass;
}

int
Sdk::AR_bcmFieldQualifyL4SrcPortClass() const {
   return bcmFieldQualifyL4SrcPortClass;
}

int
Sdk::AR_bcmFieldQualifyL4DstPortClass() const {
   return bcmFieldQualifyL4DstPortClass;
}

int
Sdk::AR_bcmFieldQualifyIpProtocolClass() const {
   return bcmFieldQualifyIpProtocolClass;
}

int
Sdk::AR_bcmFieldQualifyEtherTypeClass() const {
   return bcmFieldQualifyEtherTypeClass;
}

int
Sdk::AR_bcmFieldQualifyCompressionSelect() const {
   return bcmFieldQualifyCompressionSelect;
}

int
Sdk::AR_bcmFieldQualifyCompressionAddrSelect() const {
   return bcmFieldQualifyCompressionAddrSelect;
}

int
Sdk::AR_bcmFieldQualifyStage() const {
   return bcmFieldQualifyStage;
}

int
Sdk::AR_bcmFieldQualifyStageIngress() const {
   return bcmFieldQualifyStageIngress;
}

int
Sdk::AR_bcmFieldQualifyStageLookup() const {
   return bcmFieldQualifyStageLookup;
}

int
Sdk::AR_bcmFieldQualifyStageEgress() const {
   return bcmFieldQualifyStageEgress;
}

int
Sdk::AR_bcmFieldQualifyStageClass() const {
   return bcmFieldQualifyStageClass;
}

int
Sdk::AR_bcmFieldQualifyMixedSrcClassId() const {
   return bcmFieldQualifyMixedSrcClassId;
}

int
Sdk::AR_bcmFieldActionCopyToCpu() const {
   return bcmFieldActionCopyToCpu;
}

int
Sdk::AR_bcmFieldActionCopyToCpuCancel() const {
   return bcmFieldActionCopyToCpuCancel;
}

int
Sdk::AR_bcmFieldActionDrop() const {
   return bcmFieldActionDrop;
}

int
Sdk::AR_bcmFieldActionDropCancel() const {
   return bcmFieldActionDropCancel;
}

int
Sdk::AR_bcmFieldActionRedirectPort() const {
   return bcmFieldActionRedirectPort;
}

int
Sdk::AR_bcmFieldActionRedirectPbmp() const {
   return bcmFieldActionRedirectPbmp;
}

int
Sdk::AR_bcmFieldActionRedirectTrunk() const {
   return bcmFieldActionRedirectTrunk;
}

int
Sdk::AR_bcmFieldActionRedirectEgrNextHop() const {
   return bcmFieldActionRedirectEgrNextHop;
}

int
Sdk::AR_bcmFieldActionEgressMask() const {
   return bcmFieldActionEgressMask;
}

int
Sdk::AR_bcmFieldActionEgressPortsAdd() const {
   return bcmFieldActionEgressPortsAdd;
}

int
Sdk::AR_bcmFieldActionL3Switch() const {
   return bcmFieldActionL3Switch;
}

int
Sdk::AR_bcmFieldActionL3SwitchCancel() const {
   return bcmFieldActionL3SwitchCancel;
}

int
Sdk::AR_bcmFieldActionMirrorIngress() const {
   return bcmFieldActionMirrorIngress;
}

int
Sdk::AR_bcmFieldActionMirrorEgress() const {
   return bcmFieldActionMirrorEgress;
}

int
Sdk::AR_bcmFieldActionMirrorOverride() const {
   return bcmFieldActionMirrorOverride;
}

int
Sdk::AR_bcmFieldActionCosQNew() const {
   return bcmFieldActionCosQNew;
}

int
Sdk::AR_bcmFieldActionCosQCpuNew() const {
   return bcmFieldActionCosQCpuNew;
}

int
Sdk::AR_bcmFieldActionPrioIntNew() const {
   return bcmFieldActionPrioIntNew;
}

int
Sdk::AR_bcmFieldActionDscpNew() const {
   return bcmFieldActionDscpNew;
}

int
Sdk::AR_bcmFieldActionEcnNew() const {
   return bcmFieldActionEcnNew;
}

int
Sdk::AR_bcmFieldActionDropPrecedence() const {
   return bcmFieldActionDropPrecedence;
}

int
Sdk::AR_bcmFieldActionGpDrop() const {
   return bcmFieldActionGpDrop;
}

int
Sdk::AR_bcmFieldActionYpDrop() const {
   return bcmFieldActionYpDrop;
}

int
Sdk::AR_bcmFieldActionRpDrop() const {
   return bcmFieldActionRpDrop;
}

int
Sdk::AR_bcmFieldActionOuterVlanNew() const {
   return bcmFieldActionOuterVlanNew;
}

int
Sdk::AR_bcmFieldActionInnerVlanNew() const {
   return bcmFieldActionInnerVlanNew;
}

int
Sdk::AR_bcmFieldActionOuterVlanPrioNew() const {
   return bcmFieldActionOuterVlanPrioNew;
}

int
Sdk::AR_bcmFieldActionVrfSet() const {
   return bcmFieldActionVrfSet;
}

int
Sdk::AR_bcmFieldActionClassSourceSet() const {
   return bcmFieldActionClassSourceSet;
}

int
Sdk::AR_bcmFieldActionClassDestSet() const {
   return bcmFieldActionClassDestSet;
}

int
Sdk::AR_bcmFieldActionClassSet() const {
   return bcmFieldActionClassSet;
}

int
Sdk::AR_bcmFieldActionPolicerGroup() const {
   return bcmFieldActionPolicerGroup;
}

int
Sdk::AR_bcmFieldActionMeterConfig() const {
   return bcmFieldActionMeterConfig;
}

int
Sdk::AR_bcmFieldActionStatGroup() const {
   return bcmFieldActionStatGroup;
}

int
Sdk::AR_bcmFieldActionIngSampleEnable() const {
   return bcmFieldActionIngSampleEnable;
}

int
Sdk::AR_bcmFieldActionSnoop() const {
   return bcmFieldActionSnoop;
}

int
Sdk::AR_bcmFieldActionTtlDecrementCancel() const {
   return bcmFieldActionTtlDecrementCancel;
}

int
Sdk::AR_bcmFieldActionNatEnable() const {
   return bcmFieldActionNatEnable;
}

int
Sdk::AR_bcmFieldActionPfcTxEnable() const {
   return bcmFieldActionPfcTxEnable;
}

int
Sdk::AR_bcmFieldActionUseGlobalMeterColor() const {
   return bcmFieldActionUseGlobalMeterColor;
}

int
Sdk::AR_bcmFieldActionColorIndependent() const {
   return bcmFieldActionColorIndependent;
}

int
Sdk::AR_bcmFieldActionNewClassId() const {
   return bcmFieldActionNewClassId;
}

int
Sdk::AR_bcmFieldStatPackets() const {
   return bcmFieldStatPackets;
}

int
Sdk::AR_bcmFieldStatBytes() const {
   return bcmFieldStatBytes;
}

int
Sdk::AR_bcmFieldStatGreenPackets() const {
   return bcmFieldStatGreenPackets;
}

int
Sdk::AR_bcmFieldStatGreenBytes() const {
   return bcmFieldStatGreenBytes;
}

int
Sdk::AR_bcmFieldStatYellowPackets() const {
   return bcmFieldStatYellowPackets;
}

int
Sdk::AR_bcmFieldStatYellowBytes() const {
   return bcmFieldStatYellowBytes;
}

int
Sdk::AR_bcmFieldStatRedPackets() const {
   return bcmFieldStatRedPackets;
}

int
Sdk::AR_bcmFieldStatRedBytes() const {
   return bcmFieldStatRedBytes;
}

int
Sdk::AR_bcmFieldStatDropPackets() const {
   return bcmFieldStatDropPackets;
}

int
Sdk::AR_bcmFieldStatDropBytes() const {
   return bcmFieldStatDropBytes;
}

} // namespace Shim
