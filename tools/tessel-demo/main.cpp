// tessel-demo: exercises what the system offers so far, end to end, and
// prints what it sees. It grows with the system until tessel-agent takes over.
//
// A box with one THx-like unit (four pipes, ingress per pipe) gets a group
// manager the way the agent starts one; a few catalogue groups are created
// through it, and the chip model's own state shows where they landed: which
// SDK groups exist in which pipe, with which priority and room. Tearing the
// groups down again leaves the chip as it was.
#include <cstdio>
#include <string>
#include <vector>

#include "catalogue/TcamGroupId.h"
#include "manager/ChipInfoFromShim.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/kiln/ActivityLock.h"
#include "sdk/api/field.h"
#include "sdk/model/Box.h"
#include "tools/tessel-demo/ResourcesDemo.h"

namespace {

using namespace Tessel;

const std::vector< TcamGroupId > demoGroups = {
   IFP_GROUP_IP_ACL_, IFP_GROUP_MAC_ACL_, IFP_GROUP_COPP_IP_,
   IFP_GROUP_QOS_,    EFP_GROUP_IP_ACL_,  VFP_GROUP_MAC_ACL_,
};

std::string
groupName( U32 sdkGroupId ) {
   return TcamGroupIdInstance::valueToStrep( static_cast< TcamGroupId >( sdkGroupId & 0xFFFFFF ) );
}

// Every SDK group of the unit as the model holds it.
void
printChipGroups( const ChipModel::Box & box, U32 unit ) {
   std::printf( "  %-10s %-34s %-7s %-4s %-4s %8s %6s %6s\n", "sdk id", "catalogue group",
                "stage", "pipe", "copy", "priority", "width", "free" );
   for ( const auto & [ id, group ] : box.unit( unit ).state().field.groups() ) {
      bcm_field_group_status_t status;
      box.unit( unit ).state().field.groupStatus( id, status );
      std::string pipe = group.pipe < 0 ? "all" : std::to_string( group.pipe );
      std::printf( "  0x%08x %-34s %-7s %-4s %-4u %8d %6u %6d\n", unsigned( id ),
                   groupName( U32( id ) ).c_str(), bcm_field_stage_name( group.stage ),
                   pipe.c_str(), ( unsigned( id ) >> 27 ) & 1, group.priority,
                   unsigned( group.width ), status.entries_free );
   }
}

void
printCounts( const ChipModel::Box & box, U32 unit, const char * when ) {
   std::printf( "chip objects %s: %s\n", when, box.counts( unit ).text().c_str() );
}

} // namespace

int
main() {
   demoSharedResources();
   ChipModel::Box box( { "thx" } );
   Kiln::ActivityLockGuard activity;
   Kiln::Ptr< TesselTcamGroupManager > manager = new TesselTcamGroupManager( "tcamGroupManager" );
   manager->handlePreInit();
   manager->handleInitialized();
   manager->modChipInfoIs( 1, chipInfoFromShim( 1, { 0 } ) );

   std::printf( "Tessel TCAM manager demo: one %s unit, %u pipes, ingress per pipe: %s\n",
                box.unit( 0 ).profile().name.c_str(), manager->getNumPipe( 0 ),
                manager->stageIngress( 0 ) ? "yes" : "no" );
   std::printf( "entry managers registered for the unit's reservations: %zu bounded, "
                "%zu unbounded\n",
                manager->entryManagerCollection().size(),
                manager->unboundedEntryManagerCollection().size() );
   printCounts( box, 0, "at start" );

   std::printf( "\ncreating groups through the group manager:\n" );
   for ( TcamGroupId group : demoGroups ) {
      bool ok = manager->initializeGroup( 0, group );
      std::printf( "  %-34s priority %2u, %u pipe(s) x %u cop%s: %s\n", groupName( group ).c_str(),
                   manager->getTcamGroupPriority( group, 0 ), manager->getNumPipe( 0, group ),
                   manager->getNumCopiesPerPipe( 0, group ),
                   manager->getNumCopiesPerPipe( 0, group ) == 1 ? "y" : "ies",
                   ok ? "created" : "FAILED" );
   }
   std::printf( "\nwhat the chip holds:\n" );
   printChipGroups( box, 0 );
   printCounts( box, 0, "with the groups" );

   std::printf( "\nroom per group (entries a feature can still get):\n" );
   for ( TcamGroupId group : demoGroups ) {
      std::printf( "  %-34s %6u\n", groupName( group ).c_str(),
                   manager->entriesAvailable( 0, group ) );
   }

   for ( TcamGroupId group : demoGroups ) {
      if ( manager->groupExists( 0, group ) ) {
         manager->uninitializeGroup( 0, group );
      }
   }
   std::printf( "\n" );
   printCounts( box, 0, "after teardown" );
   manager = nullptr;
   return 0;
}
