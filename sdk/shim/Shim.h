// The maker's shim between the agent and the chip SDK.
//
// Code above the shim asks it for SDK enumerator values at run time
// (the AR_ family), for the chip type of a unit and for chip-capability
// predicates, and calls the maker's own functions (ob_ members here, the
// oberon_* functions of sdk/shim/Oberon.h). The shim is reached through one
// global object, Shim::sdk_, which the program installs at start-up (the
// chip model does so when it builds a box); call sites write it as SdkShim:
//   SdkShim->ob_field_entry_copy_id( unit, entry, tcamEntryId )
//
// The shim knows units only through SDK calls (bcm_info_get), so it works
// over any implementation of the SDK. Its chip queries read bcm_info_get
// only, which reads constant chip facts; they may be asked with the
// activity lock held.
#pragma once

#include <string>
#include <vector>

#include "platform/kiln/Types.h"
#include "sdk/api/field.h"
#include "sdk/api/range.h"
#include "sdk/shim/ChipType.h"

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

   // Stages.
   int AR_bcmFieldStageIngress() const;
   int AR_bcmFieldStageLookup() const;
   int AR_bcmFieldStageEgress() const;
   int AR_bcmFieldStageExternal() const;
   int AR_bcmFieldStageExactMatch() const;
   int AR_bcmFieldStageClass() const;

   // Group modes.
   int AR_bcmFieldGroupModeDefault() const;
   int AR_bcmFieldGroupModeSingle() const;
   int AR_bcmFieldGroupModeDouble() const;
   int AR_bcmFieldGroupModeTriple() const;
   int AR_bcmFieldGroupModeAuto() const;

   // Pipe operating modes.
   int AR_bcmFieldGroupOperModeGlobal() const;
   int AR_bcmFieldGroupOperModePipeLocal() const;

   // Hint types.
   int AR_bcmFieldHintTypeCompression() const;
   int AR_bcmFieldHintTypeExtraction() const;
   int AR_bcmFieldHintTypeGroupAutoExpansion() const;

   // Enumeration-valued qualifiers.
   int AR_bcmFieldForwardingTypeAny() const;
   int AR_bcmFieldForwardingTypeL2() const;
   int AR_bcmFieldForwardingTypeL3() const;
   int AR_bcmFieldForwardingTypeMpls() const;
   int AR_bcmFieldIpTypeAny() const;
   int AR_bcmFieldIpTypeNonIp() const;
   int AR_bcmFieldIpTypeIpv4Any() const;
   int AR_bcmFieldIpTypeIpv6() const;
   int AR_bcmFieldIpTypeArp() const;
   int AR_bcmFieldTunnelTypeAny() const;
   int AR_bcmFieldTunnelTypeNone() const;
   int AR_bcmFieldTunnelTypeIp() const;
   int AR_bcmFieldTunnelTypeVxlan() const;
   int AR_bcmFieldIpFragNon() const;
   int AR_bcmFieldIpFragFirst() const;
   int AR_bcmFieldIpFragNotFirst() const;
   int AR_bcmFieldIpFragAny() const;
   int AR_bcmFieldL2FormatAny() const;
   int AR_bcmFieldL2FormatEthII() const;
   int AR_bcmFieldL2FormatSnap() const;
   int AR_bcmFieldL2FormatLlc() const;
   int AR_bcmFieldColorGreen() const;
   int AR_bcmFieldColorYellow() const;
   int AR_bcmFieldColorRed() const;

   // Range types.
   int AR_bcmRangeTypeL4SrcPort() const;
   int AR_bcmRangeTypeL4DstPort() const;
   int AR_bcmRangeTypePacketLength() const;

   // Policer modes.
   int AR_bcmPolicerModeSrTcm() const;
   int AR_bcmPolicerModeTrTcm() const;
   int AR_bcmPolicerModeCommitted() const;
   int AR_bcmPolicerModePassThrough() const;

   // Data-qualifier offset bases.
   int AR_bcmFieldDataOffsetBasePacketStart() const;
   int AR_bcmFieldDataOffsetBaseOuterL3Header() const;
   int AR_bcmFieldDataOffsetBaseInnerL3Header() const;
   int AR_bcmFieldDataOffsetBaseOuterL4Header() const;
   int AR_bcmFieldDataOffsetBaseInnerL4Header() const;

   // UDF layers.
   int AR_bcmUdfLayerL2Header() const;
   int AR_bcmUdfLayerL3OuterHeader() const;
   int AR_bcmUdfLayerL3InnerHeader() const;
   int AR_bcmUdfLayerL4OuterHeader() const;
   int AR_bcmUdfLayerL4InnerHeader() const;

   // Abstract packet formats of the flex parser.
   int AR_bcmUdfAbstractPktFormatLlc() const;
   int AR_bcmUdfAbstractPktFormatUnknownL3() const;
   int AR_bcmUdfAbstractPktFormatArp() const;
   int AR_bcmUdfAbstractPktFormatIpv4UnknownL4() const;
   int AR_bcmUdfAbstractPktFormatIpv6UnknownL4() const;
   int AR_bcmUdfAbstractPktFormatIpv4Tcp() const;
   int AR_bcmUdfAbstractPktFormatIpv4Udp() const;
   int AR_bcmUdfAbstractPktFormatIpv4Sctp() const;
   int AR_bcmUdfAbstractPktFormatIpv4Icmp() const;
   int AR_bcmUdfAbstractPktFormatIpv6Tcp() const;
   int AR_bcmUdfAbstractPktFormatIpv6Udp() const;
   int AR_bcmUdfAbstractPktFormatIpv6Sctp() const;
   int AR_bcmUdfAbstractPktFormatIpv6Icmp() const;
   int AR_bcmUdfAbstractPktFormatIpv4Ipv4Tcp() const;
   int AR_bcmUdfAbstractPktFormatIpv4Ipv4Udp() const;
   int AR_bcmUdfAbstractPktFormatIpv4Ipv6Tcp() const;
   int AR_bcmUdfAbstractPktFormatIpv4Ipv6Udp() const;
   int AR_bcmUdfAbstractPktFormatIpv4GreIpv4Tcp() const;
   int AR_bcmUdfAbstractPktFormatIpv4GreIpv4Udp() const;
   int AR_bcmUdfAbstractPktFormatIpv4UdpVxlan() const;
   int AR_bcmUdfAbstractPktFormatIpv6UdpVxlan() const;

   // Counts of the enumerations (one past the last value).
   int AR_bcmFieldQualifyCount() const;
   int AR_bcmFieldActionCount() const;
   int AR_bcmFieldStatCount() const;
   int AR_bcmUdfAbstractPktFormatCount() const;

   // Printable names indexed by the SDK's value (empty beyond the table),
   // built once.
   const std::vector< std::string > & qualifierNames() const;
   const std::vector< std::string > & actionNames() const;
   const std::vector< std::string > & statNames() const;

   // The shim's qualifier-set operations.
   void ob_field_qset_add( bcm_field_qset_t * qset, int qualifier ) const;
   void ob_field_qset_remove( bcm_field_qset_t * qset, int qualifier ) const;
   bool ob_field_qset_test( const bcm_field_qset_t & qset, int qualifier ) const;

   // Copies the qualifiers and actions of entry src into entry dst, which must
   // exist (created with bcm_field_entry_create_id), in a group of the same
   // stage whose sets hold what src uses. Priority, stat, policers and
   // installed state of dst stay. An SDK result code.
   int ob_field_entry_copy_id( int unit, bcm_field_entry_t src, bcm_field_entry_t dst ) const;

   // True for a stat id that names no stat object (ids of real stats are > 0).
   bool ob_field_stat_id_invalid( int statId ) const;

   // The range-configuration initialiser: an empty L4 source-port range
   // without ports.
   void ob_range_config_init( bcm_range_config_t * config ) const;

   // Chip type of the unit; chipTypeUnknown for a unit the SDK does not know.
   ChipType chipType( U32 unit ) const;
   U32 numPipes( U32 unit ) const; // 1 for an unknown unit

   // Chip families.
   bool isClassicFamily( U32 unit ) const;
   bool isTrident3Family( U32 unit ) const;
   bool isThxFamily( U32 unit ) const;
   bool isTh3Family( U32 unit ) const;
   bool isCompactFamily( U32 unit ) const;

   // The ingress stage runs once per pipe: groups are created per pipe.
   bool fieldStagePerPipe( U32 unit ) const;

   // The three chip conditions under which a group that needs it gets two
   // copies per pipe (any one suffices; all hold on THx-like chips): the
   // THx family, an InPorts qualifier that sees only its pipe's ports, and
   // IFP slices whose sizes count half rows.
   bool copiesConditionThxFamily( U32 unit ) const;
   bool copiesConditionPipeLocalInPorts( U32 unit ) const;
   bool copiesConditionIfpDoubleCount( U32 unit ) const;
   bool anyCopiesCondition( U32 unit ) const;

   // The four chip families whose reports show IFP slice sizes as the SDK
   // gives them (classic, Trident3, TH3, compact); other chips (THx) count
   // half rows and the reports halve them.
   bool ifpSliceSizeExempt( U32 unit ) const;

   // The three chip-family checks of entry-manager initialisation: Trident3,
   // TH3 and compact families.
   bool entryManagerFamilyCheckTrident3( U32 unit ) const;
   bool entryManagerFamilyCheckTh3( U32 unit ) const;
   bool entryManagerFamilyCheckCompact( U32 unit ) const;

   // The field processor sees untagged packets with outer VLAN id 0, not
   // the port's native VLAN (the Classic family).
   bool untaggedOuterVlanZero( U32 unit ) const;

   // Resource mechanisms of the unit.
   bool hasRangeModule( U32 unit ) const;   // bcm_range_* (else bcm_field_range_*)
   bool hasUdfModule( U32 unit ) const;     // bcm_udf_* on packet formats
   bool hasFlexParser( U32 unit ) const;    // bcm_udf_chunk_*
   bool hasDataQualifiers( U32 unit ) const; // bcm_field_data_qualifier_*
   bool hasClassStage( U32 unit ) const;    // class-id compression groups
   bool udfWidthsJoined( U32 unit ) const;  // IPv4, IPv6 and MAC ACLs share one UDF width
   U32 udfMaxLength( U32 unit ) const;      // bytes of UDF a unit may extract
   U32 flexChunkCount( U32 unit ) const;
   U32 flexChunkBytes( U32 unit ) const;
   bool requiresSerialMuxAllocation( U32 unit ) const;
};

// The process's shim object; null until the program installs one.
extern Sdk * sdk_;

} // namespace Shim

// How call sites name the shim object: SdkShim->ob_field_entry_copy_id( ... ).
#define SdkShim ( ::Shim::sdk_ )
