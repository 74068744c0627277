// The shared chip resources on a TH3-like unit: class ids bound to values in
// the compression groups, one user-defined field shared by two groups, a
// policer with a copy in every pipe; everything given back at the end.
#include "tools/tessel-demo/ResourcesDemo.h"

#include <cstdio>
#include <cstring>

#include "manager/ChipInfoFromShim.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/agent/AclTypes.h"
#include "platform/kiln/ActivityLock.h"
#include "platform/kiln/ValueText.h"
#include "sdk/api/policer.h"
#include "sdk/model/Box.h"

namespace {

using namespace Tessel;

Kiln::Ptr< TesselTcamEntryManager >
entryManagerOf( const TesselTcamGroupManager & manager, U32 group ) {
   for ( const auto & [ assignment, entryManager ] : manager.unboundedEntryManagerCollection() ) {
      if ( entryManager->group() == group ) {
         return entryManager;
      }
   }
   for ( const auto & [ assignment, entryManager ] : manager.entryManagerCollection() ) {
      if ( entryManager->group() == group ) {
         return entryManager;
      }
   }
   return nullptr;
}

void
demoClassIds( const ChipModel::Box & box, TesselTcamGroupManager & manager ) {
   std::printf( "\nclass ids (bound by the caller, one compression entry each):\n" );
   manager.allocateL4SrcPortClassId( 0, 179, 5 );
   manager.allocateL4SrcPortClassId( 0, 179, 5 ); // already bound: nothing programmed
   manager.allocateIpProtocolClassId( 0, 17, 6 );
   manager.allocateDstIpClassId(
      0, IpAddrWithFullMask{ Wiretype::IpAddr( "10.0.0.0" ), Wiretype::IpAddr( "255.0.0.0" ) },
      7 );
   for ( U32 group = COMPRESS_GROUP_L4_SRC_PORT_; group <= COMPRESS_GROUP_ETHER_TYPE_; ++group ) {
      const ChipModel::Group * g = box.unit( 0 ).state().field.group( int( group ) );
      unsigned entries = unsigned( g->rows.size() );
      std::printf( "  %-28s width %u, %u entr%s\n",
                   TcamGroupIdInstance::valueToStrep( TcamGroupId( group ) ).c_str(),
                   unsigned( g->width ), entries, entries == 1 ? "y" : "ies" );
   }
   manager.releaseL4SrcPortClassId( 0, 5 );
}

void
demoUdf( const ChipModel::Box & box, TesselTcamGroupManager & manager ) {
   std::printf( "\nuser-defined field: 2 bytes after the UDP header, asked by two groups:\n" );
   Kiln::Ptr< TesselTcamEntryManager > ipAcl = entryManagerOf( manager, IFP_GROUP_IP_ACL_ );
   Kiln::Ptr< TesselTcamEntryManager > qos = entryManagerOf( manager, IFP_GROUP_QOS_ );
   QualIdList a = ipAcl->getAclUdf( 0, Acl::ipv4_, UdfUnitSpec::ethTypeNotSet,
                                    UdfBaseL3HeaderEnd, 8, 2 );
   QualIdList b = qos->getAclUdf( 0, Acl::ipv4_, UdfUnitSpec::ethTypeNotSet, UdfBaseL3HeaderEnd,
                                  8, 2 );
   std::printf( "  IP ACL group's qualifiers %s, QoS group's %s (one chunk id per IPv4 format)\n",
                Kiln::valueText( a ).c_str(), Kiln::valueText( b ).c_str() );
   std::printf( "  %s\n", manager.ipAclUdf( { 0, a } ).valueText().c_str() );
   std::printf( "  flex chunks taken: 0x%x; chip objects: %s\n", manager.flexChunkBitmap( 0 ),
                box.counts( 0 ).text().c_str() );
   ipAcl->releaseAclUdf( 0, Acl::ipv4_, UdfUnitSpec::ethTypeNotSet, UdfBaseL3HeaderEnd, 8, 2 );
   qos->releaseAclUdf( 0, Acl::ipv4_, UdfUnitSpec::ethTypeNotSet, UdfBaseL3HeaderEnd, 8, 2 );
}

void
demoPolicer( const ChipModel::Box & box, TesselTcamGroupManager & manager ) {
   bcm_policer_config_t config;
   bcm_policer_config_t_init( &config );
   config.mode = bcmPolicerModeCommitted;
   config.ckbits_sec = 1000;
   config.ckbits_burst = 64;
   U32 base = manager.createPolicer( 0, Kiln::BytePtr::copyOf( config ) );
   std::printf( "\npolicer 0x%x, one per pipe:", base );
   for ( U32 pipe = 0; pipe < manager.getNumPipe( 0 ); ++pipe ) {
      std::printf( " 0x%x", manager.getPipePolicerId( 0, pipe, base ) );
   }
   std::printf( "\n  chip objects: %s\n", box.counts( 0 ).text().c_str() );
   manager.removePolicer( 0, base );
}

} // namespace

void
demoSharedResources() {
   ChipModel::Box box( { "th3" } );
   Kiln::ActivityLockGuard activity;
   Kiln::Ptr< TesselTcamGroupManager > manager = new TesselTcamGroupManager( "tcamGroupManager" );
   manager->handleInitialized();
   manager->modChipInfoIs( 1, chipInfoFromShim( 1, { 0 } ) );
   std::printf( "Shared resources on one %s unit (%u pipes)\n",
                box.unit( 0 ).profile().name.c_str(), manager->getNumPipe( 0 ) );
   ChipModel::ObjectCounts start = box.counts( 0 );
   demoClassIds( box, *manager );
   demoUdf( box, *manager );
   demoPolicer( box, *manager );
   ChipModel::ObjectCounts end = box.counts( 0 );
   std::printf( "\nchip objects given back: %s (two class-id bindings stay bound)\n\n",
                end.policers == start.policers && end.chunks == start.chunks ? "yes" : "NO" );
   manager = nullptr;
}
