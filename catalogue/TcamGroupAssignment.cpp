#include "catalogue/TcamGroupAssignment.h"

#include <iterator>
#include <ostream>

#include "catalogue/EnumText.h"

namespace Tessel {

namespace {

const char * const names[] = {
   "stormControlTcamGroup",
   "routingTcamGroup",
   "macAclTcamGroup",
   "ipAclTcamGroup",
   "vxlanL3RoutingControlTcamGroup",
   "aclManagementTcamGroup",
   "aclPortBlockingTcamGroup",
   "unknownL2McastFloodTcamGroup",
   "l2ControlPrioTcamGroup",
   "l3ControlPrioTcamGroup",
   "l4MicroBfdTcamGroup",
   "ipmcRoutingTcamGroup",
   "ipmcBoundaryRoutesGroup",
   "mlagTcamGroup",
   "macAclVfpTcamGroup",
   "ipAclVfpTcamGroup",
   "ipAclVniTcamGroup",
   "aclVfpManagementTcamGroup",
   "qosTcamGroup",
   "macPhyConcLinerateGenTcamGroup",
   "routerAclTcamGroup",
   "ipCoppTcamGroup",
   "ip6AclTcamGroup",
   "ip6AclVniTcamGroup",
   "ip6RouterAclTcamGroup",
   "ip6AclVfpTcamGroup",
   "ip6StdAclTcamGroup",
   "ip6StdAclVfpTcamGroup",
   "macAclEgressTcamGroup",
   "ipAclEgressTcamGroup",
   "routerAclEgressTcamGroup",
   "policyCoppIpTcamGroup",
   "policyQosIpTcamGroup",
   "egrPolicyQosIpTcamGroup",
   "policyQosIp6TcamGroup",
   "policyCoppIp6TcamGroup",
   "pdpReservedTcamGroup",
   "pdpTcamGroup",
   "ucastTcamGroup",
   "stormControlManagementTcamGroup",
   "ip6AclEgressTcamGroup",
   "ip6StdAclPortEgressTcamGroup",
   "ip6StdAclRouterEgressTcamGroup",
   "ip6RouterAclEgressTcamGroup",
   "urpfTcamGroup",
   "urpfTHxV4ExceptionTcamGroup",
   "urpfTcamDefaultV4V6Group",
   "urpfTHxV4V6ExceptionTcamGroup",
   "ipDhcpSnoopingTcamGroup",
   "mlagControlTrafficTcamGroup",
   "fabricTcamGroup",
   "vxlanControlTcamGroup",
   "ipPbrTcamGroup",
   "ip6PbrTcamGroup",
   "blockHiGigLearnVfpTcamGroup",
   "arpRequestInspectionTHxTcamGroup",
   "arpReplyInspectionTHxTcamGroup",
   "arpRequestInspectionTcamGroup",
   "arpReplyInspectionTcamGroup",
   "dot1xTHxTcamGroup",
   "dot1xTcamGroup",
   "helmTcamGroup",
   "loopProtectTcamGroup",
   "vxlanEfpTcamGroup",
   "vxlanEfpIvidRewriteTcamGroup",
   "ipSourceGuardTcamGroup",
   "fabricFlowControlTcamGroup",
   "vxlanVfpControlTcamGroup",
   "vxlanVfpVfiControlTcamGroup",
   "policyQosSviIpTcamGroup",
   "policyQosSviIp6TcamGroup",
   "mirroringAclTcamGroup1",
   "mirroringAclTcamGroup2",
   "mirroringAclTcamGroup3",
   "mirroringAclTcamGroup4",
   "openFlowUdfTcamGroup",
   "openFlowVxlanUdfTcamGroup",
   "openFlowVfpTcamGroup",
   "openFlowManagementTcamGroup",
   "openFlowManagement2TcamGroup",
   "openFlowL2OnlyGroupDefaultTcamGroup",
   "openFlowL2OnlyGroupLowTcamGroup",
   "openFlowFullMatchGroupDefaultTcamGroup",
   "openFlowFullMatchGroupLowTcamGroup",
   "openFlowIP6ProtoOnlyGroupDefaultTcamGroup",
   "openFlowIP6ProtoOnlyGroupLowTcamGroup",
   "openFlowExceptionFlowTcamGroup",
   "openFlowExceptionFlowTHxTcamGroup",
   "openFlowManagementTHxTcamGroup",
   "openFlowManagement2THxTcamGroup",
   "conduitVfpTcamGroup",
   "conduitL2OnlyGroupDefaultTcamGroup",
   "conduitL2OnlyGroupLowTcamGroup",
   "conduitFullMatchGroupDefaultTcamGroup",
   "conduitFullMatchGroupLowTcamGroup",
   "conduitIP6VlanOnlyGroupDefaultTcamGroup",
   "conduitIP6VlanOnlyGroupLowTcamGroup",
   "conduitIP6ProtoOnlyGroupDefaultTcamGroup",
   "conduitIP6ProtoOnlyGroupLowTcamGroup",
   "vfpVxlanVpTcamGroup",
   "vfpVxlanSipHitGroup",
   "vfpVfiExceptionTcamGroup",
   "vfiUnknownMcastRedirectGroup",
   "ttlCheckTcamGroup",
   "pfcWatchdogTcamGroup",
   "efpCoppTcamGroup",
   "efpDefaultCoppTcamGroup",
   "efpMirrorGreRateLimitTcamGroup",
   "efpMirrorPortRateLimitTcamGroup",
   "vfpPdpClassTcamGroup",
   "vxlanEvpnMultiHomingGroup",
   "conduitP4RtVrfGroup",
   "conduitP4RtRerouteGroup",
   "conduitP4RtEffingoGroup",
   "conduitP4RtPuntGroup",
   "condiutP4RtPuntGroupReserved",
   "conduitP4RtPostcardIpV4Group",
   "conduitP4RtPostcardIpV6Group",
   "conduitP4RtPostcardColorGroup",
   "vfpVfiPdpL2CtrlTcamGroup",
   "ifpVlanPriTcamGroup",
   "efpVlanPriTcamGroup",
   "fabricVfpTcamGroup",
   "vfpPortVPTcamGroup",
   "vxlanTransitPortVPTcamGroup",
   "vfpTrunkNativeVPTcamGroup",
   "conduitFabricTcamGroup",
   "ifpPreserveQosTcamGroup",
   "efpEcnCountTcamGroup",
   "vfpTH3SystemAclGroup",
   "ifpNatSupersetGroup",
   "test1TcamGroup",
   "test2TcamGroup",
   "test3TcamGroup",
   "test4TcamGroup",
   "test5TcamGroup",
   "test6TcamGroup",
   "test7TcamGroup",
   "test8TcamGroup",
};

static_assert( std::size( names ) == numTcamGroupAssignmentValues );

} // namespace

std::string_view
valueToStrep( TcamGroupAssignment value ) {
   return EnumText::name( names, value );
}

std::string
stringValue( TcamGroupAssignment value ) {
   return EnumText::text( names, value );
}

std::ostream &
operator<<( std::ostream & os, TcamGroupAssignment value ) {
   return os << stringValue( value );
}

bool
sequenceToValue( std::string_view text, TcamGroupAssignment & value ) {
   auto parsed = EnumText::parse( names, text );
   if ( parsed ) {
      value = static_cast< TcamGroupAssignment >( *parsed );
   }
   return parsed.has_value();
}

TcamGroupAssignment
TcamGroupAssignmentInstance( U32 value ) {
   return static_cast< TcamGroupAssignment >( EnumText::checked( "TcamGroupAssignment", names, value ) );
}

TcamGroupAssignment
TcamGroupAssignmentInstance( std::string_view text ) {
   return static_cast< TcamGroupAssignment >( EnumText::parsed( "TcamGroupAssignment", names, text ) );
}

} // namespace Tessel
