// Mirroring ACL: IPv4 rules whose packets are copied to a mirror port (the
// analyser), in the first mirroring reservation ("Mirroring ACL",
// IFP_GROUP_MIRROR_ACL_1). The mirroring groups choose their key when they
// are created: the feature declares the group an IPv4 one
// (groupMirroringAclType 1) before its first entry and withdraws the
// declaration when it lets go. Rule order is priority order.
#pragma once

#include <string>

#include "examples/features/ItemFeature.h"

namespace Features {

struct MirrorRule {
   std::string session; // a name for the operator
   Ipv4Match match;
   U32 port = 0;        // where the copies go
   bool operator==( const MirrorRule & ) const = default;
};

class MirrorFeature : public ItemFeature< MirrorRule > {
 public:
   explicit MirrorFeature( const Kiln::Ptr< Tessel::TesselTcamGroupManager > & manager );
   ~MirrorFeature() override;
   std::string itemText( U32 rule ) const override;

 protected:
   std::vector< FeatureEntries::Spec > specsOf( U32 unit, U32 rule ) override;
   void prepare() override;
   void releaseResources() override;
};

} // namespace Features
