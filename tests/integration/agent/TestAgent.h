// A small agent for the command line's tests and benchmarks: the simulated
// agent (tools/agent: box of modelled chips, group manager, start-up,
// command-line server on an activity loop) with a few groups and entries
// (qualified, installed, hit by packets).
//
// The entries are made the way a feature makes them: from the IPv4 ACL
// reservation's entry manager (every pipe, copy and outer-VLAN twin), then
// qualified on the base entry and installed, so the reports have something
// to show. The units keep the reservations made at start-up.
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

   // Entries of the IPv4 ACL reservation: each matches TCP to port 80 + n
   // from 10.0.0.n, drops and counts, and sees n + 1 packets.
   void
   makeEntries( U32 unit ) {
      Kiln::Ptr< TesselUnboundedTcamEntryManager > acl =
         manager()->unboundedEntryManager( ipAclTcamGroup_ );
      int unitId = int( unit );
      int inPort = 1;
      for ( U32 n = 0; n < settings_.entries; ++n ) {
         int entry = int( acl->getEntry( unit, "acl rule " + std::to_string( n ) ) );
         if ( entry == 0 ) {
            return;
         }
         sdk( [ & ] {
            return bcm_field_qualify_SrcIp( unitId, entry, 0x0a000000 + n, 0xffffffff ) |
                   bcm_field_qualify_IpProtocol( unitId, entry, 6, 0xff ) |
                   bcm_field_qualify_L4DstPort( unitId, entry, int( 80 + n ), 0xffff ) |
                   bcm_field_action_add( unitId, entry, bcmFieldActionDrop, 0, 0 );
         } );
         acl->installEntry( unit, U32( entry ) );
         for ( U32 packet = 0; packet <= n; ++packet ) {
            sdk( [ & ] {
               box().send( unit, ChipModel::Packet::ipv4( inPort, 0x0a000000 + n, 0x0b000001, 6,
                                                         1024, U16( 80 + n ) ) );
               return 0;
            } );
         }
      }
   }

   Settings settings_;
   SimAgent::SimulatedAgent agent_;
};

} // namespace TestAgent
