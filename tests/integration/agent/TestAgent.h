// A small agent for the command line's tests and benchmarks: the simulated
// agent (tools/agent: box of modelled chips, group manager, start-up,
// command-line server on an activity loop) with a few groups and entries
// (qualified, installed, hit by packets).
//
// The entries are made through the SDK in the first pipe group of the IPv4
// ACL group and counted in that pipe group the way entry allocation counts
// its entries, so the reports have something to show.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "catalogue/TcamGroupId.h"
#include "sdk/api/field_qualify.h"
#include "tools/agent/SimulatedAgent.h"

namespace TestAgent {

using namespace Tessel;

struct Settings {
   std::string prefix;
   std::string socketPath;  // empty: the prefix's default
   std::vector< std::string > profiles = { "thx", "single" };
   std::string switchName = "test-switch";
   U32 entries = 3;         // entries made in the IPv4 ACL group of each unit
};

// The groups every unit gets.
inline const std::vector< TcamGroupId > &
agentGroups() {
   static const std::vector< TcamGroupId > groups = {
      IFP_GROUP_IP_ACL_, IFP_GROUP_MAC_ACL_, IFP_GROUP_COPP_IP_, EFP_GROUP_IP_ACL_,
      VFP_GROUP_MAC_ACL_ };
   return groups;
}

// The first entry id the agent makes; the others follow it.
constexpr U32 firstEntryId = 0x800010;

class Agent {
 public:
   // Builds everything; the caller holds the activity lock.
   explicit Agent( const Settings & settings )
         : settings_( settings ),
           agent_( SimAgent::Settings{ settings.profiles, settings.prefix, settings.socketPath,
                                       settings.switchName, true } ) {
      agent_.start();
      for ( U32 unit = 0; unit < box().numUnits(); ++unit ) {
         for ( TcamGroupId group : agentGroups() ) {
            manager()->initializeGroup( unit, group );
         }
         makeEntries( unit );
      }
      agent_.publishCapacity();
   }

   Kiln::ActivityLoop & loop() { return agent_.loop(); }
   ChipModel::Box & box() { return agent_.box(); }
   const Kiln::Ptr< TesselTcamGroupManager > & manager() const { return agent_.manager(); }
   TesselTcamCliServer & server() { return *agent_.server(); }

 private:
   template< typename Call >
   int
   sdk( Call call ) {
      Kiln::UnlockAnchor anchor( Kiln::ActivityUnlockAnchor::lock() );
      return call();
   }

   // Entries in the first pipe group of the IPv4 ACL group: each matches
   // TCP to port 80 + n from 10.0.0.n, drops and counts, and sees n + 1
   // packets.
   void
   makeEntries( U32 unit ) {
      int unitId = int( unit );
      int group = int( manager()->getPipeGroupId( unit, 0, 0, IFP_GROUP_IP_ACL_ ) );
      int inPort = 1;
      for ( U32 n = 0; n < settings_.entries; ++n ) {
         int entry = int( firstEntryId + n );
         sdk( [ & ] {
            bcm_field_entry_create_id( unitId, group, entry );
            bcm_field_qualify_SrcIp( unitId, entry, 0x0a000000 + n, 0xffffffff );
            bcm_field_qualify_IpProtocol( unitId, entry, 6, 0xff );
            bcm_field_qualify_L4DstPort( unitId, entry, int( 80 + n ), 0xffff );
            bcm_field_action_add( unitId, entry, bcmFieldActionDrop, 0, 0 );
            bcm_field_stat_t types[] = { bcmFieldStatPackets, bcmFieldStatBytes };
            int stat = 0;
            bcm_field_stat_create( unitId, group, 2, types, &stat );
            bcm_field_entry_stat_attach( unitId, entry, stat );
            return bcm_field_entry_install( unitId, entry );
         } );
         for ( U32 packet = 0; packet <= n; ++packet ) {
            box().send( unit, ChipModel::Packet::ipv4( inPort, 0x0a000000 + n, 0x0b000001, 6,
                                                      1024, U16( 80 + n ) ) );
         }
      }
      GroupIdToPipeGroupId key{ IFP_GROUP_IP_ACL_, U32( group ) };
      if ( manager()->groupCountsHas( key ) ) {
         manager()->groupCounts( key )->unitAllocatedInc( unit, S32( settings_.entries ) );
      }
   }

   Settings settings_;
   SimAgent::SimulatedAgent agent_;
};

} // namespace TestAgent
