#include "tests/proof/ProofScenario.h"

#include <fcntl.h>
#include <unistd.h>

#include <memory>

#include "common/TesselSdkCall.h"
#include "export/TesselTcamVaultTables.h"
#include "platform/agent/AclTypes.h"
#include "platform/vault/VaultStore.h"
#include "sdk/api/bcm.h"
#include "sdk/api/policer.h"

namespace Proof {

using namespace Tessel;

namespace {

constexpr U32 unit = 0;
const RangeCheckerDesc dstPorts( 1000, 2000, BCM_FIELD_RANGE_DSTPORT );

Kiln::BytePtr
policerConfig( U32 kbits ) {
   bcm_policer_config_t config;
   bcm_policer_config_t_init( &config );
   config.flags = BCM_POLICER_DROP_RED;
   config.mode = bcmPolicerModeCommitted;
   config.ckbits_sec = kbits;
   config.ckbits_burst = 8;
   return Kiln::BytePtr::copyOf( config );
}

bcm_pbmp_t
portsOf( std::initializer_list< int > ports ) {
   bcm_pbmp_t pbmp{};
   for ( int port : ports ) {
      BCM_PBMP_PORT_ADD( pbmp, port );
   }
   return pbmp;
}

} // namespace

// What the scenario holds while it runs; what it got is given back in
// teardown(), whatever failed on the way.
struct Scenario::Features {
   Features( SimAgent::SimulatedAgent & agent, bool tables, const std::string & prefix )
         : agent( agent ), manager( agent.manager() ),
           store( tables ? std::make_unique< Vault::Store >( prefix ) : nullptr ),
           devNull( open( "/dev/null", O_WRONLY ) ) {}
   ~Features() { close( devNull ); }

   // A feature's own SDK call on its base entry.
   static bool ok( int rc ) { return rc >= 0; }

   void reserve();
   void entryManagers();
   void aclEntries();
   void sharedResources();
   void otherStrategies();
   void classIds();
   void reports();
   void tables();
   void teardown();
   void requestTable( TcamGroupManagerVaultTypes type );

   SimAgent::SimulatedAgent & agent;
   Kiln::Ptr< TesselTcamGroupManager > manager;
   std::unique_ptr< Vault::Store > store;
   Kiln::Ptr< TesselTcam::CliVaultHelper > helper;
   Kiln::Ptr< Agent::VlanState > vlans = new Agent::VlanState( "proofVlans" );
   int devNull;

   Kiln::Ptr< TesselBoundedTcamEntryManager > acl, chunk, early;
   Kiln::Ptr< TesselUnboundedTcamEntryManager > egress;
   std::vector< std::pair< Kiln::Ptr< TesselTcamEntryManager >, U32 > > held;
   U32 rangeId = 0;
   U32 policer = 0;
   bool installed100 = false; // removeEntry asks for an installed entry
   bool classIdsBound = false;
};

// An at-beginning range reserved as soon as its manager is made.
void
Scenario::Features::reserve() {
   early = manager->entryManagerIs( test3TcamGroup_, "proof copp", manager.get(),
                                    IFP_GROUP_COPP_IP_, 300, 302, tcamAllocateAtBeginning_ );
}

void
Scenario::Features::entryManagers() {
   acl = manager->entryManagerIs( test1TcamGroup_, "proof acl", manager.get(), IFP_GROUP_IP_ACL_,
                                  100, 110, tcamAllocateOnDemand_ );
   chunk = manager->entryManagerIs( test2TcamGroup_, "proof qos", manager.get(), IFP_GROUP_QOS_,
                                    200, 204, tcamAllocateAsChunk_ );
   egress = manager->unboundedEntryManagerIs( test4TcamGroup_, "proof egress", manager.get(),
                                              EFP_GROUP_IP_ACL_, 0, 0, tcamAllocateUnbounded_ );
}

void
Scenario::Features::aclEntries() {
   manager->vlanStateIs( vlans );
   vlans->untaggedPortsIs( 100, { 3, 5 } );
   for ( U32 id : { 100u, 101u, 102u } ) {
      if ( acl->getEntry( unit, id, "proof" ) != id ) {
         continue;
      }
      held.emplace_back( acl, id );
      if ( !ok( SDK_CALL( bcm_field_qualify_DstIp( unit, id, 0x0a000000 + id, 0xffffffff ) ) ) ||
           !ok( SDK_CALL( bcm_field_action_add( unit, id, bcmFieldActionDrop, 0, 0 ) ) ) ) {
         continue;
      }
      if ( id == 101 && !ok( SDK_CALL( bcm_field_qualify_OuterVlanId( unit, id, 100, 0xfff ) ) ) ) {
         continue;
      }
      if ( id == 102 ) {
         bcm_pbmp_t out = portsOf( { 2 } );
         if ( ok( SDK_CALL( bcm_field_action_ports_add( unit, id, bcmFieldActionRedirectPbmp,
                                                        out ) ) ) ) {
            acl->setLoopbackPortRedirectAction( unit, id, bcmFieldActionRedirectPbmp, out );
         }
      }
      acl->updateInPortsForEntry( unit, id, { 3, 5, 9 }, false, false );
      acl->installEntry( unit, id );
   }
   vlans->untaggedPortDel( 100, 5 );
}

void
Scenario::Features::sharedResources() {
   if ( !acl->internalUnitEntry( unit )->entryCreatedHas( 100 ) ) {
      return;
   }
   rangeId = acl->getRangeChecker( unit, dstPorts );
   if ( rangeId && acl->attachRangeChecker( unit, 100, rangeId ) < 0 ) {
      acl->releaseRangeChecker( unit, dstPorts );
      rangeId = 0;
   }
   policer = manager->createPolicer( unit, policerConfig( 64 ) );
   acl->attachPolicer( unit, 100, policer, true );
   manager->setPolicer( unit, policer, policerConfig( 128 ) );
   acl->setPriorityForEntry( unit, 100, 5000 );
   installed100 = acl->installEntry( unit, 100 ) == 0 && acl->reinstallEntry( unit, 100 ) == 0;
   acl->enableEntry( unit, 100, false, BCM_E_NONE );
   acl->enableEntry( unit, 100, true, BCM_E_NONE );
   acl->hitsForEntry( unit, 100 );
   acl->byteHitsForEntry( unit, 100 );
   acl->clearHitsForEntry( unit, 100 );
   acl->clearBytesForEntry( unit, 100 );
   U64 packets = 0, bytes = 0;
   manager->getCounterEvictionsForPipe( unit, 0, packets, bytes );
   // A field used and given back while the group holds no key for it.
   QualIdList quals = acl->getAclUdf( unit, Acl::ipv4_, UdfUnitSpec::ethTypeNotSet,
                                      UdfBaseL3HeaderEnd, 8, 2 );
   if ( !quals.empty() ) {
      acl->findAclUdf( unit, Acl::ipv4_, UdfUnitSpec::ethTypeNotSet, UdfBaseL3HeaderEnd, 8, 2 );
      acl->addUdfQualifierToGroupQset( unit, quals );
      acl->releaseAclUdf( unit, Acl::ipv4_, UdfUnitSpec::ethTypeNotSet, UdfBaseL3HeaderEnd, 8,
                          2 );
   }
}

void
Scenario::Features::otherStrategies() {
   for ( U32 id : { 200u, 201u } ) {
      if ( chunk->getEntry( unit, id, "proof" ) == id ) {
         held.emplace_back( chunk, id );
         chunk->installEntry( unit, id );
      }
   }
   if ( early->getEntry( unit, 300, "proof" ) == 300 ) {
      held.emplace_back( early, 300 );
      early->installEntry( unit, 300 );
   }
   for ( int n = 0; n < 2; ++n ) {
      if ( U32 id = egress->getEntry( unit, "proof" ) ) {
         held.emplace_back( egress, id );
         egress->installEntry( unit, id );
         egress->setPriorityForEntry( unit, id, 10 + n );
      }
   }
}

void
Scenario::Features::classIds() {
   const Agent::ChipInfo * info = manager->chipInfo( unit );
   if ( !info || !info->classIdCompression() ) {
      return;
   }
   classIdsBound = true;
   manager->allocateSrcIpClassId( unit, { Wiretype::IpAddr( 10, 1, 0, 0 ),
                                          Wiretype::IpAddr( 255, 255, 0, 0 ) }, 1 );
   manager->allocateDstIpClassId( unit, { Wiretype::IpAddr( 10, 2, 0, 1 ) }, 2 );
   Ip6AddrWithFullMask v6;
   v6.address = Wiretype::Ip6Addr( "2001:db8::1" );
   manager->allocateDstIp6ClassId( unit, v6, 3 );
   manager->allocateIpProtocolClassId( unit, 17, 4 );
   manager->allocateEtherTypeClassId( unit, 0x88cc, 5 );
   manager->allocateL4SrcPortClassId( unit, 179, 6 );
   manager->allocateL4SrcPortClassId( unit, 180, 6 ); // rebinding destroys the old entry
   manager->allocateL4DstPortClassId( unit, 80, 7 );
}

void
Scenario::Features::requestTable( TcamGroupManagerVaultTypes type ) {
   const VaultTableDesc * desc = perStageTable( type );
   auto mounter = Kiln::ptr_cast< GroupManagerVaultMounter >(
      helper->getCliVaultMounter( perStageText( desc->mounterName, 0, 0 ), U16( unit ) ) );
   if ( !mounter ) {
      return;
   }
   mounter->populateVault();
   Kiln::Ptr< GroupManagerVaultRequest > message = manager->groupManagerVaultRequest();
   message->requestIs( 0 );
   message->responseIs( 0 );
   message->mounterIs( nullptr );
}

void
Scenario::Features::reports() {
   manager->showTcamUsage( "proof", U32( devNull ), true, unit, -1 );
   manager->showSummaryTcamUsage( "proof", U32( devNull ), unit );
   manager->showRawTcamUsage( "proof", U32( devNull ), unit );
   manager->showEntryTcamUsage( "proof", U32( devNull ), unit, 100 );
   agent.publishCapacity();
}

void
Scenario::Features::tables() {
   helper = TesselTcam::cliVaultHelperFactory( *store );
   manager->cliVaultHelperIs( helper );
   manager->handleModuleUpdate( U16( unit + 1 ) );
   requestTable( vaultTypeGroups );
   requestTable( vaultTypeEntryGroups );
   requestTable( vaultTypeSlices );
}

void
Scenario::Features::teardown() {
   if ( policer ) {
      acl->attachPolicer( unit, 100, policer, false );
      manager->removePolicer( unit, policer );
   }
   for ( auto & [ entries, id ] : held ) {
      if ( entries == acl && id == 100 && installed100 ) {
         entries->removeEntry( unit, id );
      }
      entries->releaseEntry( unit, id );
   }
   if ( rangeId ) {
      acl->releaseRangeChecker( unit, dstPorts );
   }
   if ( classIdsBound ) {
      manager->releaseL4SrcPortClassId( unit, 6 );
      manager->releaseL4DstPortClassId( unit, 7 );
   }
   if ( helper ) {
      manager->cliVaultHelperIs( nullptr );
      helper = nullptr;
   }
}

Scenario::Scenario( const std::string & profile, bool tables, const std::string & vaultPrefix )
      : profile_( profile ), tables_( tables ), vaultPrefix_( vaultPrefix ),
        agent_( SimAgent::Settings{ { profile }, "", "", "proof", false } ) {}

Scenario::~Scenario() {
   agent_.stop();
}

void
Scenario::run( const std::function< void( const std::string & ) > & phase ) {
   auto tell = [ & ]( const char * name ) {
      if ( phase ) {
         phase( name );
      }
   };
   tell( "start-up" );
   agent_.start();
   {
      Features features( agent_, tables_, vaultPrefix_ );
      tell( "reserve" );
      features.reserve();
      tell( "features" );
      features.entryManagers();
      features.aclEntries();
      features.sharedResources();
      features.otherStrategies();
      features.classIds();
      tell( "reports" );
      features.reports();
      if ( tables_ ) {
         tell( "tables" );
         features.tables();
      }
      tell( "teardown" );
      features.teardown();
   }
   agent_.stop();
}

} // namespace Proof
