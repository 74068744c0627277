#include "sdk/shim/Shim.h"

#include "sdk/api/field_data.h"
#include "sdk/api/field_enums.h"
#include "sdk/api/field_types.h"
#include "sdk/api/policer.h"
#include "sdk/api/range.h"
#include "sdk/api/udf.h"

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

int
Sdk::AR_bcmFieldStageIngress() const {
   return bcmFieldStageIngress;
}

int
Sdk::AR_bcmFieldStageLookup() const {
   return bcmFieldStageLookup;
}

int
Sdk::AR_bcmFieldStageEgress() const {
   return bcmFieldStageEgress;
}

int
Sdk::AR_bcmFieldStageExternal() const {
   return bcmFieldStageExternal;
}

int
Sdk::AR_bcmFieldStageExactMatch() const {
   return bcmFieldStageExactMatch;
}

int
Sdk::AR_bcmFieldStageClass() const {
   return bcmFieldStageClass;
}

int
Sdk::AR_bcmFieldGroupModeDefault() const {
   return bcmFieldGroupModeDefault;
}

int
Sdk::AR_bcmFieldGroupModeSingle() const {
   return bcmFieldGroupModeSingle;
}

int
Sdk::AR_bcmFieldGroupModeDouble() const {
   return bcmFieldGroupModeDouble;
}

int
Sdk::AR_bcmFieldGroupModeTriple() const {
   return bcmFieldGroupModeTriple;
}

int
Sdk::AR_bcmFieldGroupModeAuto() const {
   return bcmFieldGroupModeAuto;
}

int
Sdk::AR_bcmFieldGroupOperModeGlobal() const {
   return bcmFieldGroupOperModeGlobal;
}

int
Sdk::AR_bcmFieldGroupOperModePipeLocal() const {
   return bcmFieldGroupOperModePipeLocal;
}

int
Sdk::AR_bcmFieldHintTypeCompression() const {
   return bcmFieldHintTypeCompression;
}

int
Sdk::AR_bcmFieldHintTypeExtraction() const {
   return bcmFieldHintTypeExtraction;
}

int
Sdk::AR_bcmFieldHintTypeGroupAutoExpansion() const {
   return bcmFieldHintTypeGroupAutoExpansion;
}

int
Sdk::AR_bcmFieldForwardingTypeAny() const {
   return bcmFieldForwardingTypeAny;
}

int
Sdk::AR_bcmFieldForwardingTypeL2() const {
   return bcmFieldForwardingTypeL2;
}

int
Sdk::AR_bcmFieldForwardingTypeL3() const {
   return bcmFieldForwardingTypeL3;
}

int
Sdk::AR_bcmFieldForwardingTypeMpls() const {
   return bcmFieldForwardingTypeMpls;
}

int
Sdk::AR_bcmFieldIpTypeAny() const {
   return bcmFieldIpTypeAny;
}

int
Sdk::AR_bcmFieldIpTypeNonIp() const {
   return bcmFieldIpTypeNonIp;
}

int
Sdk::AR_bcmFieldIpTypeIpv4Any() const {
   return bcmFieldIpTypeIpv4Any;
}

int
Sdk::AR_bcmFieldIpTypeIpv6() const {
   return bcmFieldIpTypeIpv6;
}

int
Sdk::AR_bcmFieldIpTypeArp() const {
   return bcmFieldIpTypeArp;
}

int
Sdk::AR_bcmFieldTunnelTypeAny() const {
   return bcmFieldTunnelTypeAny;
}

int
Sdk::AR_bcmFieldTunnelTypeNone() const {
   return bcmFieldTunnelTypeNone;
}

int
Sdk::AR_bcmFieldTunnelTypeIp() const {
   return bcmFieldTunnelTypeIp;
}

int
Sdk::AR_bcmFieldTunnelTypeVxlan() const {
   return bcmFieldTunnelTypeVxlan;
}

int
Sdk::AR_bcmFieldIpFragNon() const {
   return bcmFieldIpFragNon;
}

int
Sdk::AR_bcmFieldIpFragFirst() const {
   return bcmFieldIpFragFirst;
}

int
Sdk::AR_bcmFieldIpFragNotFirst() const {
   return bcmFieldIpFragNotFirst;
}

int
Sdk::AR_bcmFieldIpFragAny() const {
   return bcmFieldIpFragAny;
}

int
Sdk::AR_bcmFieldL2FormatAny() const {
   return bcmFieldL2FormatAny;
}

int
Sdk::AR_bcmFieldL2FormatEthII() const {
   return bcmFieldL2FormatEthII;
}

int
Sdk::AR_bcmFieldL2FormatSnap() const {
   return bcmFieldL2FormatSnap;
}

int
Sdk::AR_bcmFieldL2FormatLlc() const {
   return bcmFieldL2FormatLlc;
}

int
Sdk::AR_bcmFieldColorGreen() const {
   return bcmFieldColorGreen;
}

int
Sdk::AR_bcmFieldColorYellow() const {
   return bcmFieldColorYellow;
}

int
Sdk::AR_bcmFieldColorRed() const {
   return bcmFieldColorRed;
}

int
Sdk::AR_bcmRangeTypeL4SrcPort() const {
   return bcmRangeTypeL4SrcPort;
}

int
Sdk::AR_bcmRangeTypeL4DstPort() const {
   return bcmRangeTypeL4DstPort;
}

int
Sdk::AR_bcmRangeTypePacketLength() const {
   return bcmRangeTypePacketLength;
}

int
Sdk::AR_bcmPolicerModeSrTcm() const {
   return bcmPolicerModeSrTcm;
}

int
Sdk::AR_bcmPolicerModeTrTcm() const {
   return bcmPolicerModeTrTcm;
}

int
Sdk::AR_bcmPolicerModeCommitted() const {
   return bcmPolicerModeCommitted;
}

int
Sdk::AR_bcmPolicerModePassThrough() const {
   return bcmPolicerModePassThrough;
}

int
Sdk::AR_bcmFieldDataOffsetBasePacketStart() const {
   return bcmFieldDataOffsetBasePacketStart;
}

int
Sdk::AR_bcmFieldDataOffsetBaseOuterL3Header() const {
   return bcmFieldDataOffsetBaseOuterL3Header;
}

int
Sdk::AR_bcmFieldDataOffsetBaseInnerL3Header() const {
   return bcmFieldDataOffsetBaseInnerL3Header;
}

int
Sdk::AR_bcmFieldDataOffsetBaseOuterL4Header() const {
   return bcmFieldDataOffsetBaseOuterL4Header;
}

int
Sdk::AR_bcmFieldDataOffsetBaseInnerL4Header() const {
   return bcmFieldDataOffsetBaseInnerL4Header;
}

int
Sdk::AR_bcmUdfLayerL2Header() const {
   return bcmUdfLayerL2Header;
}

int
Sdk::AR_bcmUdfLayerL3OuterHeader() const {
   return bcmUdfLayerL3OuterHeader;
}

int
Sdk::AR_bcmUdfLayerL3InnerHeader() const {
   return bcmUdfLayerL3InnerHeader;
}

int
Sdk::AR_bcmUdfLayerL4OuterHeader() const {
   return bcmUdfLayerL4OuterHeader;
}

int
Sdk::AR_bcmUdfLayerL4InnerHeader() const {
   return bcmUdfLayerL4InnerHeader;
}

int
Sdk::AR_bcmUdfAbstractPktFormatLlc() const {
   return bcmUdfAbstractPktFormatLlc;
}

int
Sdk::AR_bcmUdfAbstractPktFormatUnknownL3() const {
   return bcmUdfAbstractPktFormatUnknownL3;
}

int
Sdk::AR_bcmUdfAbstractPktFormatArp() const {
   return bcmUdfAbstractPktFormatArp;
}

int
Sdk::AR_bcmUdfAbstractPktFormatIpv4UnknownL4() const {
   return bcmUdfAbstractPktFormatIpv4UnknownL4;
}

int
Sdk::AR_bcmUdfAbstractPktFormatIpv6UnknownL4() const {
   return bcmUdfAbstractPktFormatIpv6UnknownL4;
}

int
Sdk::AR_bcmUdfAbstractPktFormatIpv4Tcp() const {
   return bcmUdfAbstractPktFormatIpv4Tcp;
}

int
Sdk::AR_bcmUdfAbstractPktFormatIpv4Udp() const {
   return bcmUdfAbstractPktFormatIpv4Udp;
}

int
Sdk::AR_bcmUdfAbstractPktFormatIpv4Sctp() const {
   return bcmUdfAbstractPktFormatIpv4Sctp;
}

int
Sdk::AR_bcmUdfAbstractPktFormatIpv4Icmp() const {
   return bcmUdfAbstractPktFormatIpv4Icmp;
}

int
Sdk::AR_bcmUdfAbstractPktFormatIpv6Tcp() const {
   return bcmUdfAbstractPktFormatIpv6Tcp;
}

int
Sdk::AR_bcmUdfAbstractPktFormatIpv6Udp() const {
   return bcmUdfAbstractPktFormatIpv6Udp;
}

int
Sdk::AR_bcmUdfAbstractPktFormatIpv6Sctp() const {
   return bcmUdfAbstractPktFormatIpv6Sctp;
}

int
Sdk::AR_bcmUdfAbstractPktFormatIpv6Icmp() const {
   return bcmUdfAbstractPktFormatIpv6Icmp;
}

int
Sdk::AR_bcmUdfAbstractPktFormatIpv4Ipv4Tcp() const {
   return bcmUdfAbstractPktFormatIpv4Ipv4Tcp;
}

int
Sdk::AR_bcmUdfAbstractPktFormatIpv4Ipv4Udp() const {
   return bcmUdfAbstractPktFormatIpv4Ipv4Udp;
}

int
Sdk::AR_bcmUdfAbstractPktFormatIpv4Ipv6Tcp() const {
   return bcmUdfAbstractPktFormatIpv4Ipv6Tcp;
}

int
Sdk::AR_bcmUdfAbstractPktFormatIpv4Ipv6Udp() const {
   return bcmUdfAbstractPktFormatIpv4Ipv6Udp;
}

int
Sdk::AR_bcmUdfAbstractPktFormatIpv4GreIpv4Tcp() const {
   return bcmUdfAbstractPktFormatIpv4GreIpv4Tcp;
}

int
Sdk::AR_bcmUdfAbstractPktFormatIpv4GreIpv4Udp() const {
   return bcmUdfAbstractPktFormatIpv4GreIpv4Udp;
}

int
Sdk::AR_bcmUdfAbstractPktFormatIpv4UdpVxlan() const {
   return bcmUdfAbstractPktFormatIpv4UdpVxlan;
}

int
Sdk::AR_bcmUdfAbstractPktFormatIpv6UdpVxlan() const {
   return bcmUdfAbstractPktFormatIpv6UdpVxlan;
}

int
Sdk::AR_bcmFieldQualifyCount() const {
   return bcmFieldQualifyCount;
}

int
Sdk::AR_bcmFieldActionCount() const {
   return bcmFieldActionCount;
}

int
Sdk::AR_bcmFieldStatCount() const {
   return bcmFieldStatCount;
}

int
Sdk::AR_bcmUdfAbstractPktFormatCount() const {
   return bcmUdfAbstractPktFormatCount;
}

} // namespace Shim
