// A small agent for the command line's tests, demonstrations and
// benchmarks: a box of modelled chips, a group manager that knows every unit,
// a few groups with entries (qualified, installed, hit by packets), and the
// command-line server on an activity loop.
//
// The entries are made through the SDK in the first pipe group of the IPv4
// ACL group and counted in that pipe group the way entry allocation counts
// its entries, so the reports have something to show.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "catalogue/TcamGroupId.h"
#include "export/TesselTcamCliServer.h"
#include "manager/ChipInfoFromShim.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/kiln/ActivityLock.h"
#include "platform/kiln/ActivityLoop.h"
#include "sdk/api/field_qualify.h"
#include "sdk/model/Box.h"

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

inline ChipModel::Box::Options
boxOptions() {
   ChipModel::Box::Options options;
   options.staged = false;
   options.activityCheck = ChipModel::ActivityCheck::abort;
   return options;
}

class Agent {
 public:
   // Builds everything; the caller holds the activity lock.
   explicit Agent( const Settings & settings )
         : settings_( settings ), box_( settings.profiles, boxOptions() ),
           manager_( new TesselTcamGroupManager( "tcamGroupManager" ) ) {
      manager_->handlePreInit();
      manager_->handleInitialized();
      for ( U32 unit = 0; unit < box_.numUnits(); ++unit ) {
         manager_->modChipInfoIs( U16( unit + 1 ), chipInfoFromShim( U16( unit + 1 ), { unit } ) );
         for ( TcamGroupId group : agentGroups() ) {
            manager_->initializeGroup( unit, group );
         }
         makeEntries( unit );
      }
      TesselTcamCliServer::Options options;
      options.prefix = settings.prefix;
      options.reportSocketPath = settings.socketPath;
      options.switchName = settings.switchName;
      server_ = std::make_unique< TesselTcamCliServer >( manager_, options );
      server_->attach( loop_ );
   }
   ~Agent() {
      server_.reset();
      manager_ = nullptr;
   }

   Kiln::ActivityLoop & loop() { return loop_; }
   ChipModel::Box & box() { return box_; }
   const Kiln::Ptr< TesselTcamGroupManager > & manager() const { return manager_; }
   TesselTcamCliServer & server() { return *server_; }

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
      int group = int( manager_->getPipeGroupId( unit, 0, 0, IFP_GROUP_IP_ACL_ ) );
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
            box_.send( unit, ChipModel::Packet::ipv4( inPort, 0x0a000000 + n, 0x0b000001, 6,
                                                      1024, U16( 80 + n ) ) );
         }
      }
      GroupIdToPipeGroupId key{ IFP_GROUP_IP_ACL_, U32( group ) };
      if ( manager_->groupCountsHas( key ) ) {
         manager_->groupCounts( key )->unitAllocatedInc( unit, S32( settings_.entries ) );
      }
   }

   Settings settings_;
   ChipModel::Box box_;
   Kiln::ActivityLoop loop_;
   Kiln::Ptr< TesselTcamGroupManager > manager_;
   std::unique_ptr< TesselTcamCliServer > server_;
};

} // namespace TestAgent
