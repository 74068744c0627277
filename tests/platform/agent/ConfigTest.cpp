#include <gtest/gtest.h>

#include "platform/agent/AclParamConfig.h"
#include "platform/agent/PlatformState.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace {

// Records which callback fired, so that a setter wired to the wrong
// notification shows up.
struct ParamWatcher : Acl::ParamConfig::NotifieeConst {
   std::vector< std::string > seen;
   void onPaclSliceSharingSupported() override { seen.push_back( "pacl" ); }
   void onMirrorAclSliceSharingSupported() override { seen.push_back( "mirror" ); }
   void onQosAclSliceSharingSupported() override { seen.push_back( "qosSlice" ); }
   void onIngressRaclSharingSupported() override { seen.push_back( "racl" ); }
   void onQosAclSharingSupported() override { seen.push_back( "qos" ); }
   void onPaclIpv6KeyWidthMode() override { seen.push_back( "paclWidth" ); }
   void onQosIpv6KeyWidthMode() override { seen.push_back( "qosWidth" ); }
};

TEST( AclParamConfig, EachSettingNotifiesItsOwnObserverOnRealChangeOnly ) {
   Kiln::Ptr< Acl::ParamConfig > config = new Acl::ParamConfig( "aclParamConfig" );
   ParamWatcher watcher;
   watcher.notifierIs( config );
   std::vector< std::pair< std::string, std::function< void() > > > setters = {
      { "pacl", [ & ] { config->paclSliceSharingSupportedIs( true ); } },
      { "mirror", [ & ] { config->mirrorAclSliceSharingSupportedIs( true ); } },
      { "qosSlice", [ & ] { config->qosAclSliceSharingSupportedIs( true ); } },
      { "racl", [ & ] { config->ingressRaclSharingSupportedIs( true ); } },
      { "qos", [ & ] { config->qosAclSharingSupportedIs( true ); } },
      { "paclWidth", [ & ] { config->paclIpv6KeyWidthModeIs( Acl::tcamBankSharingModeShared ); } },
      { "qosWidth", [ & ] { config->qosIpv6KeyWidthModeIs( Acl::tcamBankSharingModeWide ); } },
   };
   for ( auto & [ name, set ] : setters ) {
      watcher.seen.clear();
      set();
      set();
      EXPECT_EQ( std::vector< std::string >{ name }, watcher.seen );
   }
   EXPECT_TRUE( config->paclSliceSharingSupported() && config->mirrorAclSliceSharingSupported() &&
                config->qosAclSliceSharingSupported() && config->ingressRaclSharingSupported() &&
                config->qosAclSharingSupported() );
   EXPECT_EQ( Acl::tcamBankSharingModeShared, config->paclIpv6KeyWidthMode() );
   EXPECT_EQ( Acl::tcamBankSharingModeWide, config->qosIpv6KeyWidthMode() );
}

struct StateWatcher : Agent::PlatformState::NotifieeConst {
   std::vector< std::string > seen;
   void onEarlyReservation() override { seen.push_back( "early" ); }
   void onPdpModeEnabled() override { seen.push_back( "pdp" ); }
   void onP4RuntimeEnabled() override { seen.push_back( "p4" ); }
   void onVfiForwarding() override { seen.push_back( "vfi" ); }
   void onHitlessInit() override { seen.push_back( "hitless" ); }
   void onSimulation() override { seen.push_back( "simulation" ); }
   void onPreInit() override { seen.push_back( "preInit" ); }
};

TEST( PlatformState, EachFlagNotifiesItsOwnObserverOnRealChangeOnly ) {
   Kiln::Ptr< Agent::PlatformState > state = new Agent::PlatformState( "platform" );
   StateWatcher watcher;
   watcher.notifierIs( state );
   std::vector< std::pair< std::string, std::function< void( bool ) > > > setters = {
      { "early", [ & ]( bool v ) { state->earlyReservationIs( v ); } },
      { "pdp", [ & ]( bool v ) { state->pdpModeEnabledIs( v ); } },
      { "p4", [ & ]( bool v ) { state->p4RuntimeEnabledIs( v ); } },
      { "vfi", [ & ]( bool v ) { state->vfiForwardingIs( v ); } },
      { "hitless", [ & ]( bool v ) { state->hitlessInitIs( v ); } },
      { "simulation", [ & ]( bool v ) { state->simulationIs( v ); } },
      { "preInit", [ & ]( bool v ) { state->preInitIs( v ); } },
   };
   for ( auto & [ name, set ] : setters ) {
      watcher.seen.clear();
      set( false ); // the default: no change
      set( true );
      set( true );
      set( false );
      EXPECT_EQ( ( std::vector< std::string >{ name, name } ), watcher.seen );
   }
   state->pdpModeEnabledIs( true );
   EXPECT_TRUE( state->pdpModeEnabled() );
   EXPECT_FALSE( state->earlyReservation() );
}

} // namespace
