// The IPv4 access list: an ordered list of 5-tuple rules, each permitting
// or denying, installed in the "IP ACL" reservation (IFP_GROUP_IP_ACL) of
// every unit. Rule order is priority order: the first rule wins over every
// later one that matches the same packet. A port range that is neither one
// port nor every port goes through a range checker while the chip has them
// (rules with the same range share one, FeatureRanges); once it has none
// left, the rule takes one entry per pair of port prefixes (Ipv4Match), all
// at the rule's priority. Deny drops; permit lets the packet go on.
// Every entry counts packets and bytes while the chip has counters.
//
//    Features::AclFeature acl( manager );
//    Features::LoadReport report = acl.install( rules );   // all or nothing
//    if ( !report.ok() ) ... report.error says how far it got
//    acl.itemOf( unit, hitGroup, hitEntry );                // a packet's rule
//    acl.itemPackets( unit, rule );                         // its counters
//    acl.release();                                         // or destruction
#pragma once

#include "examples/features/ClassBench.h"
#include "examples/features/ItemFeature.h"

namespace Features {

struct AclRule {
   enum class Action { permit, deny };
   Action action = Action::permit;
   Ipv4Match match;
   bool operator==( const AclRule & ) const = default;
};

// A ClassBench filter as a permit rule. The flags column is not matched:
// the generator made it up and no packet field carries it.
AclRule aclRuleOf( const ClassBenchRule & rule );

class AclFeature : public ItemFeature< AclRule > {
 public:
   explicit AclFeature( const Kiln::Ptr< Tessel::TesselTcamGroupManager > & manager );
   ~AclFeature() override;
   std::string itemText( U32 rule ) const override;

 protected:
   std::vector< FeatureEntries::Spec > specsOf( U32 unit, U32 rule ) override;
};

} // namespace Features
