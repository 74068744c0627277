// TcamGroupAssignment: the feature reservations (clients of a hardware
// group). Entry managers are created and kept per reservation; each row of
// the reservation table names the TcamGroupId that holds its entries.
// condiutP4RtPuntGroupReserved_ is spelt so on purpose: the name is part of
// the text forms that reports and traces print.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

#include "common/TesselExport.h"
#include "platform/kiln/Types.h"

namespace Tessel {

enum TcamGroupAssignment : U32 {
   stormControlTcamGroup_ = 0,
   routingTcamGroup_ = 1,
   macAclTcamGroup_ = 2,
   ipAclTcamGroup_ = 3,
   vxlanL3RoutingControlTcamGroup_ = 4,
   aclManagementTcamGroup_ = 5,
   aclPortBlockingTcamGroup_ = 6,
   unknownL2McastFloodTcamGroup_ = 7,
   l2ControlPrioTcamGroup_ = 8,
   l3ControlPrioTcamGroup_ = 9,
   l4MicroBfdTcamGroup_ = 10,
   ipmcRoutingTcamGroup_ = 11,
   ipmcBoundaryRoutesGroup_ = 12,
   mlagTcamGroup_ = 13,
   macAclVfpTcamGroup_ = 14,
   ipAclVfpTcamGroup_ = 15,
   ipAclVniTcamGroup_ = 16,
   aclVfpManagementTcamGroup_ = 17,
   qosTcamGroup_ = 18,
   macPhyConcLinerateGenTcamGroup_ = 19,
   routerAclTcamGroup_ = 20,
   ipCoppTcamGroup_ = 21,
   ip6AclTcamGroup_ = 22,
   ip6AclVniTcamGroup_ = 23,
   ip6RouterAclTcamGroup_ = 24,
   ip6AclVfpTcamGroup_ = 25,
   ip6StdAclTcamGroup_ = 26,
   ip6StdAclVfpTcamGroup_ = 27,
   macAclEgressTcamGroup_ = 28,
   ipAclEgressTcamGroup_ = 29,
   routerAclEgressTcamGroup_ = 30,
   policyCoppIpTcamGroup_ = 31,
   policyQosIpTcamGroup_ = 32,
   egrPolicyQosIpTcamGroup_ = 33,
   policyQosIp6TcamGroup_ = 34,
   policyCoppIp6TcamGroup_ = 35,
   pdpReservedTcamGroup_ = 36,
   pdpTcamGroup_ = 37,
   ucastTcamGroup_ = 38,
   stormControlManagementTcamGroup_ = 39,
   ip6AclEgressTcamGroup_ = 40,
   ip6StdAclPortEgressTcamGroup_ = 41,
   ip6StdAclRouterEgressTcamGroup_ = 42,
   ip6RouterAclEgressTcamGroup_ = 43,
   urpfTcamGroup_ = 44,
   urpfTHxV4ExceptionTcamGroup_ = 45,
   urpfTcamDefaultV4V6Group_ = 46,
   urpfTHxV4V6ExceptionTcamGroup_ = 47,
   ipDhcpSnoopingTcamGroup_ = 48,
   mlagControlTrafficTcamGroup_ = 49,
   fabricTcamGroup_ = 50,
   vxlanControlTcamGroup_ = 51,
   ipPbrTcamGroup_ = 52,
   ip6PbrTcamGroup_ = 53,
   blockHiGigLearnVfpTcamGroup_ = 54,
   arpRequestInspectionTHxTcamGroup_ = 55,
   arpReplyInspectionTHxTcamGroup_ = 56,
   arpRequestInspectionTcamGroup_ = 57,
   arpReplyInspectionTcamGroup_ = 58,
   dot1xTHxTcamGroup_ = 59,
   dot1xTcamGroup_ = 60,
   helmTcamGroup_ = 61,
   loopProtectTcamGroup_ = 62,
   vxlanEfpTcamGroup_ = 63,
   vxlanEfpIvidRewriteTcamGroup_ = 64,
   ipSourceGuardTcamGroup_ = 65,
   fabricFlowControlTcamGroup_ = 66,
   vxlanVfpControlTcamGroup_ = 67,
   vxlanVfpVfiControlTcamGroup_ = 68,
   policyQosSviIpTcamGroup_ = 69,
   policyQosSviIp6TcamGroup_ = 70,
   mirroringAclTcamGroup1_ = 71,
   mirroringAclTcamGroup2_ = 72,
   mirroringAclTcamGroup3_ = 73,
   mirroringAclTcamGroup4_ = 74,
   openFlowUdfTcamGroup_ = 75,
   openFlowVxlanUdfTcamGroup_ = 76,
   openFlowVfpTcamGroup_ = 77,
   openFlowManagementTcamGroup_ = 78,
   openFlowManagement2TcamGroup_ = 79,
   openFlowL2OnlyGroupDefaultTcamGroup_ = 80,
   openFlowL2OnlyGroupLowTcamGroup_ = 81,
   openFlowFullMatchGroupDefaultTcamGroup_ = 82,
   openFlowFullMatchGroupLowTcamGroup_ = 83,
   openFlowIP6ProtoOnlyGroupDefaultTcamGroup_ = 84,
   openFlowIP6ProtoOnlyGroupLowTcamGroup_ = 85,
   openFlowExceptionFlowTcamGroup_ = 86,
   openFlowExceptionFlowTHxTcamGroup_ = 87,
   openFlowManagementTHxTcamGroup_ = 88,
   openFlowManagement2THxTcamGroup_ = 89,
   conduitVfpTcamGroup_ = 90,
   conduitL2OnlyGroupDefaultTcamGroup_ = 91,
   conduitL2OnlyGroupLowTcamGroup_ = 92,
   conduitFullMatchGroupDefaultTcamGroup_ = 93,
   conduitFullMatchGroupLowTcamGroup_ = 94,
   conduitIP6VlanOnlyGroupDefaultTcamGroup_ = 95,
   conduitIP6VlanOnlyGroupLowTcamGroup_ = 96,
   conduitIP6ProtoOnlyGroupDefaultTcamGroup_ = 97,
   conduitIP6ProtoOnlyGroupLowTcamGroup_ = 98,
   vfpVxlanVpTcamGroup_ = 99,
   vfpVxlanSipHitGroup_ = 100,
   vfpVfiExceptionTcamGroup_ = 101,
   vfiUnknownMcastRedirectGroup_ = 102,
   ttlCheckTcamGroup_ = 103,
   pfcWatchdogTcamGroup_ = 104,
   efpCoppTcamGroup_ = 105,
   efpDefaultCoppTcamGroup_ = 106,
   efpMirrorGreRateLimitTcamGroup_ = 107,
   efpMirrorPortRateLimitTcamGroup_ = 108,
   vfpPdpClassTcamGroup_ = 109,
   vxlanEvpnMultiHomingGroup_ = 110,
   conduitP4RtVrfGroup_ = 111,
   conduitP4RtRerouteGroup_ = 112,
   conduitP4RtEffingoGroup_ = 113,
   conduitP4RtPuntGroup_ = 114,
   condiutP4RtPuntGroupReserved_ = 115,
   conduitP4RtPostcardIpV4Group_ = 116,
   conduitP4RtPostcardIpV6Group_ = 117,
   conduitP4RtPostcardColorGroup_ = 118,
   vfpVfiPdpL2CtrlTcamGroup_ = 119,
   ifpVlanPriTcamGroup_ = 120,
   efpVlanPriTcamGroup_ = 121,
   fabricVfpTcamGroup_ = 122,
   vfpPortVPTcamGroup_ = 123,
   vxlanTransitPortVPTcamGroup_ = 124,
   vfpTrunkNativeVPTcamGroup_ = 125,
   conduitFabricTcamGroup_ = 126,
   ifpPreserveQosTcamGroup_ = 127,
   efpEcnCountTcamGroup_ = 128,
   vfpTH3SystemAclGroup_ = 129,
   ifpNatSupersetGroup_ = 130,
   test1TcamGroup_ = 131,
   test2TcamGroup_ = 132,
   test3TcamGroup_ = 133,
   test4TcamGroup_ = 134,
   test5TcamGroup_ = 135,
   test6TcamGroup_ = 136,
   test7TcamGroup_ = 137,
   test8TcamGroup_ = 138,
};

constexpr U32 numTcamGroupAssignmentValues = 139;

// Text forms: the enumerator name without the trailing underscore.
// valueToStrep gives "" and stringValue the decimal number for a value
// outside the enumeration; stream output is stringValue.
TESSEL_EXPORT std::string_view
valueToStrep( TcamGroupAssignment value );
TESSEL_EXPORT std::string
stringValue( TcamGroupAssignment value );
TESSEL_EXPORT std::ostream &
operator<<( std::ostream & os, TcamGroupAssignment value );

// Parses an enumerator name; false (value untouched) for any other text.
TESSEL_EXPORT bool
sequenceToValue( std::string_view text, TcamGroupAssignment & value );

// A value from its number or its name; throws std::out_of_range for a
// number outside the enumeration and std::invalid_argument for an unknown
// name.
TESSEL_EXPORT TcamGroupAssignment
TcamGroupAssignmentInstance( U32 value );
TESSEL_EXPORT TcamGroupAssignment
TcamGroupAssignmentInstance( std::string_view text );

} // namespace Tessel
