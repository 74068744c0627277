// Mirroring ACL: IPv4 rules whose packets are copied to a mirror port (the
// analyser), in the first mirroring reservation ("Mirroring ACL",
// IFP_GROUP_MIRROR_ACL_1). The mirroring groups choose their key when they
// are created: the feature declares the group an IPv4 one
// (groupMirroringAclType 1) before its first entry and withdraws the
// declaration when it lets go. Rule order is priority order. A rule may
// also match bytes of the L4 header or payload (udf): the feature takes
// each distinct field for the group before its first entry (FeatureUdfs)
// and refuses the rules when the chip cannot give one.
#pragma once

#include <optional>
#include <string>

#include "examples/features/FeatureUdfs.h"
#include "examples/features/ItemFeature.h"

namespace Features {

struct MirrorRule {
   std::string session; // a name for the operator
   Ipv4Match match;
   U32 port = 0;        // where the copies go
   std::optional< UdfMatch > udf;
   bool operator==( const MirrorRule & ) const = default;
};

class MirrorFeature : public ItemFeature< MirrorRule > {
 public:
   explicit MirrorFeature( const Kiln::Ptr< Tessel::TesselTcamGroupManager > & manager );
   ~MirrorFeature() override;
   std::string itemText( U32 rule ) const override;
   const FeatureUdfs & udfs() const { return udfs_; }

 protected:
   std::vector< FeatureEntries::Spec > specsOf( U32 unit, U32 rule ) override;
   std::string prepare() override;
   void releaseResources() override;
   void noteResources( LoadReport & report ) const override { report.udfFields = udfs_.fields(); }

 private:
   FeatureUdfs udfs_{ entries_ };
};

} // namespace Features
