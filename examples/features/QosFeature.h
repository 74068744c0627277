// QoS policy: classes of traffic (by DSCP, ports, addresses) given an
// internal priority and, optionally, a drop precedence (colour) and a
// policer that colours what exceeds the class's rate. Installed in the
// "Policy QOS" reservation (IFP_GROUP_POLICY_QOS_IP) of every unit; class
// order is priority order. A class matching a set of destination ports
// (dports) takes one entry on chips with class-id compression, its ports
// bound to a block of class ids (FeatureClassIds), and one entry per port
// elsewhere.
#pragma once

#include <optional>
#include <string>

#include "examples/features/FeatureClassIds.h"
#include "examples/features/FeaturePolicers.h"
#include "sdk/api/field_types.h"

namespace Features {

struct QosClass {
   std::string name;
   Ipv4Match match;
   U8 priority = 0;                           // internal priority 0 to 7
   std::optional< bcm_field_color_t > colour; // drop precedence
   std::optional< PolicerRate > rate;         // red above it, not dropped
   bool operator==( const QosClass & ) const = default;
};

// "green", "yellow", "red".
const char * colourName( bcm_field_color_t colour );
// The colour of such a name, or nothing.
std::optional< bcm_field_color_t > colourOfName( const std::string & name );

class QosFeature : public PolicedFeature< QosClass > {
 public:
   explicit QosFeature( const Kiln::Ptr< Tessel::TesselTcamGroupManager > & manager );
   ~QosFeature() override;
   std::string itemText( U32 item ) const override;
   const FeatureClassIds & classIds() const { return classIds_; }

 protected:
   std::vector< FeatureEntries::Spec > specsOf( U32 unit, U32 item ) override;
   U32 policedItems() const override;
   std::string checkItems() const override;
   void releaseResources() override;
   void noteResources( LoadReport & report ) const override { report.classIdPorts = classIds_.bound(); }

 private:
   int addActions( U32 unit, U32 entry, const QosClass & c, std::optional< U32 > policer );

   FeatureClassIds classIds_;
};

} // namespace Features
