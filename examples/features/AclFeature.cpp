#include "examples/features/AclFeature.h"

#include "common/TesselSdkCall.h"
#include "sdk/api/field.h"

namespace Features {

AclRule
aclRuleOf( const ClassBenchRule & r ) {
   AclRule rule;
   rule.match.srcIp = r.srcIp;
   rule.match.srcMask = prefixMask( r.srcLen );
   rule.match.dstIp = r.dstIp;
   rule.match.dstMask = prefixMask( r.dstLen );
   rule.match.protocol = r.protocol & r.protocolMask;
   rule.match.protocolMask = r.protocolMask;
   rule.match.srcPorts = PortRange{ r.srcPortLow, r.srcPortHigh };
   rule.match.dstPorts = PortRange{ r.dstPortLow, r.dstPortHigh };
   return rule;
}

AclFeature::AclFeature( const Kiln::Ptr< Tessel::TesselTcamGroupManager > & manager )
      : ItemFeature( manager, Tessel::ipAclTcamGroup_, "ACL", "rule" ) {}

AclFeature::~AclFeature() {
   release();
}

std::string
AclFeature::itemText( U32 rule ) const {
   const AclRule & r = items_.at( rule );
   return "acl rule " + std::to_string( rule ) + " (" +
          ( r.action == AclRule::Action::deny ? "deny " : "permit " ) + ipv4MatchText( r.match ) +
          ")";
}

std::vector< FeatureEntries::Spec >
AclFeature::specsOf( U32 unit, U32 rule ) {
   bool deny = items_[ rule ].action == AclRule::Action::deny;
   const Ipv4Match & match = items_[ rule ].match;
   return matchSpecs( match, rule, "acl rule " + std::to_string( rule ),
                      [ deny ]( U32 unit, U32 entry ) {
                         return deny ? SDK_CALL_UNIT( unit, bcm_field_action_add(
                                                               unit, int( entry ),
                                                               bcmFieldActionDrop, 0, 0 ) )
                                     : 0;
                      },
                      ranges_.take( unit, match ) );
}

} // namespace Features
