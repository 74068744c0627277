// The agent's example features (examples/features) on its group manager:
// loaded from a workload or a ClassBench rule file, given back on the way
// out, and asked what a packet met.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "examples/features/AclFeature.h"
#include "examples/features/CoppFeature.h"
#include "examples/features/MirrorFeature.h"
#include "examples/features/QosFeature.h"
#include "examples/features/Workload.h"
#include "sdk/model/Box.h"
#include "tools/agent/Traffic.h"

namespace SimAgent {

// What one packet met.
struct Verdict {
   std::optional< U32 > aclRule;    // the ACL rule whose entry it hit
   std::optional< U32 > coppClass;
   std::optional< U32 > qosClass;
   std::optional< U32 > mirrorRule;
   bool dropped = false;
   bool toCpu = false;
   bcm_field_color_t colour = bcmFieldColorGreen;
};

// Counts over a run of packets, for the operator.
struct TrafficSummary {
   U32 packets = 0;
   U32 aclHits = 0;
   U32 dropped = 0;
   U32 toCpu = 0;
   U32 coppHits = 0;
   U32 qosHits = 0;
   U32 mirrored = 0;
   U32 red = 0;

   void add( const Verdict & verdict );
   // "40 packets: 12 hit ACL rules, 5 dropped, ..."
   std::string text() const;
};

class AgentFeatures {
 public:
   explicit AgentFeatures( const Kiln::Ptr< Tessel::TesselTcamGroupManager > & manager );
   // release().
   ~AgentFeatures();

   // Loads the workload feature by feature (ACL, CoPP, QoS, mirroring),
   // skipping features it has no lines for. Stops at the first feature
   // that does not fit and gives back what the others loaded: the last
   // report is then the failure.
   std::vector< Features::LoadReport > load( const Features::Workload & workload );
   // The ClassBench rules become the ACL, in file order.
   Features::LoadReport loadClassBench( const std::vector< Features::ClassBenchRule > & rules );
   // Every feature gives its entries and policers back.
   void release();

   // One line per item (rule or class) of every feature on the unit: what
   // it matches, its entries (for tessel-show tcam entry) and the packets
   // its counters saw, "acl rule 0 (deny proto=6 dport=22): entries 0x1; 3 packets".
   std::vector< std::string > itemLines( U32 unit );

   // Sends the packet into its unit and says what it met.
   Verdict send( ChipModel::Box & box, const TrafficPacket & packet ) const;
   Verdict verdictOf( U32 unit, const ChipModel::LookupResult & result ) const;

   Features::AclFeature & acl() { return acl_; }
   Features::CoppFeature & copp() { return copp_; }
   Features::QosFeature & qos() { return qos_; }
   Features::MirrorFeature & mirror() { return mirror_; }

 private:
   template< typename Feature >
   static void addItemLines( Feature & feature, U32 unit, std::vector< std::string > & lines );

   Features::AclFeature acl_;
   Features::CoppFeature copp_;
   Features::QosFeature qos_;
   Features::MirrorFeature mirror_;
};

// "ACL: 6 rules, 8 entries per unit (expansion 1.33), 64 hardware entries, 2 range
// checkers", with the ranges expanded when the chip had no checker left.
std::string loadText( const Features::LoadReport & report );

// Writes one line per verdict: the ACL rule's index, or -1. The error's
// text, or empty.
std::string writeHits( const std::string & path, const std::vector< Verdict > & verdicts );

} // namespace SimAgent
