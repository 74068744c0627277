// Control-plane policing: classes of control traffic (BGP, OSPF, SSH, ...)
// that are copied to the CPU, each through a policer of its own, so a flood
// of one protocol cannot starve the others. Installed in the "IP Copp"
// reservation (IFP_GROUP_COPP_IP) of every unit; class order is priority
// order. Packets above a class's rate turn red and are dropped.
//
//    Features::CoppFeature copp( manager );
//    copp.install( { { "bgp", match, { 256, 64 } } } );   // all or nothing
//    copp.itemOf( unit, hitGroup, hitEntry );
//    copp.release();
#pragma once

#include <string>

#include "examples/features/FeaturePolicers.h"

namespace Features {

struct CoppClass {
   std::string name;
   Ipv4Match match;
   PolicerRate rate;
   bool operator==( const CoppClass & ) const = default;
};

class CoppFeature : public PolicedFeature< CoppClass > {
 public:
   explicit CoppFeature( const Kiln::Ptr< Tessel::TesselTcamGroupManager > & manager );
   ~CoppFeature() override;
   std::string itemText( U32 item ) const override;

 protected:
   std::vector< FeatureEntries::Spec > specsOf( U32 unit, U32 item ) override;
   U32 policedItems() const override { return U32( items_.size() ); }
};

} // namespace Features
