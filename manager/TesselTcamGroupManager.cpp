// The group manager's core: construction, the ACL parameter configuration,
// owned objects, start-up handlers and the set of known units.
#include "manager/TesselTcamGroupManager.h"

#include <algorithm>

#include "catalogue/TesselTcamGroups.h"
#include "manager/QsetModIndex.h"
#include "platform/fastlog/Trace.h"

TRACE_CHANNEL( "TesselTcam" );

namespace Tessel {

// Keeps the manager's copies of the sharing and key-width settings current.
class TesselTcamGroupManager::AclParamConfigReactor : public Acl::ParamConfig::NotifieeConst {
 public:
   explicit AclParamConfigReactor( TesselTcamGroupManager & manager ) : manager_( manager ) {}
   void onPaclSliceSharingSupported() override { manager_.copyAclParamConfig(); }
   void onMirrorAclSliceSharingSupported() override { manager_.copyAclParamConfig(); }
   void onQosAclSliceSharingSupported() override { manager_.copyAclParamConfig(); }
   void onIngressRaclSharingSupported() override { manager_.copyAclParamConfig(); }
   void onQosAclSharingSupported() override { manager_.copyAclParamConfig(); }
   void onPaclIpv6KeyWidthMode() override { manager_.copyAclParamConfig(); }
   void onQosIpv6KeyWidthMode() override { manager_.copyAclParamConfig(); }

 private:
   TesselTcamGroupManager & manager_;
};

// Keeps the manager's copy of the P4Runtime flag current.
class TesselTcamGroupManager::PlatformStateReactor : public Agent::PlatformState::NotifieeConst {
 public:
   explicit PlatformStateReactor( TesselTcamGroupManager & manager ) : manager_( manager ) {}
   void
   onP4RuntimeEnabled() override {
      manager_.p4RuntimeEnabledIs( notifier()->p4RuntimeEnabled() );
   }

 private:
   TesselTcamGroupManager & manager_;
};

TesselTcamGroupManager::TesselTcamGroupManager( const Kiln::Name & name )
      : Kiln::Entity( name ) {}

TesselTcamGroupManager::~TesselTcamGroupManager() {
   for ( const auto & [ assignment, manager ] : entryManager_ ) {
      manager->groupManagerDetach();
   }
   for ( const auto & [ assignment, manager ] : unboundedEntryManager_ ) {
      manager->groupManagerDetach();
   }
   classIdDelAll();
   if ( initialized_ ) {
      cleanupTcamGroups();
   }
}

void
TesselTcamGroupManager::aclParamConfigIs( const Kiln::Ptr< Acl::ParamConfig > & config ) {
   if ( config == aclParamConfig_ ) {
      return;
   }
   aclParamConfig_ = config;
   if ( !aclParamConfigReactor_ ) {
      aclParamConfigReactor_ = std::make_unique< AclParamConfigReactor >( *this );
   }
   aclParamConfigReactor_->notifierIs( config );
   copyAclParamConfig();
   notify( &NotifieeConst::onAclParamConfig );
}

void
TesselTcamGroupManager::copyAclParamConfig() {
   const Acl::ParamConfig * config = aclParamConfig_.get();
   if ( !config ) {
      return;
   }
   paclSliceSharingSupportedIs( config->paclSliceSharingSupported() );
   mirrorAclSliceSharingSupportedIs( config->mirrorAclSliceSharingSupported() );
   qosAclSliceSharingSupportedIs( config->qosAclSliceSharingSupported() );
   ingressRaclSharingSupportedIs( config->ingressRaclSharingSupported() );
   qosAclSharingSupportedIs( config->qosAclSharingSupported() );
   paclIpv6KeyWidthModeIs( config->paclIpv6KeyWidthMode() );
   qosIpv6KeyWidthModeIs( config->qosIpv6KeyWidthMode() );
}

void
TesselTcamGroupManager::vlanStateIs( const Kiln::Ptr< Agent::VlanState > & v ) {
   if ( v == vlanState_ ) {
      return;
   }
   vlanState_ = v;
   for ( const auto & [ unit, sm ] : ovidWarSm_ ) {
      sm->vlanStateIs( v );
   }
   notify( &NotifieeConst::onVlanState );
}

void
TesselTcamGroupManager::platformStateIs( const Kiln::Ptr< Agent::PlatformState > & v ) {
   if ( v == platformState_ ) {
      return;
   }
   platformState_ = v;
   if ( !platformStateReactor_ ) {
      platformStateReactor_ = std::make_unique< PlatformStateReactor >( *this );
   }
   platformStateReactor_->notifierIs( v );
   if ( v ) {
      p4RuntimeEnabledIs( v->p4RuntimeEnabled() );
   }
   notify( &NotifieeConst::onPlatformState );
}

Kiln::Ptr< TesselTcamStub >
TesselTcamGroupManager::tesselTcamStubIs() {
   if ( !tesselTcamStub_ ) {
      tesselTcamStub_ = new TesselTcamStub( name().str() + "/tesselTcamStub" );
      notify( &NotifieeConst::onTesselTcamStub );
   }
   return tesselTcamStub_;
}

void
TesselTcamGroupManager::tesselTcamStubDel() {
   if ( tesselTcamStub_ ) {
      tesselTcamStub_ = nullptr;
      notify( &NotifieeConst::onTesselTcamStub );
   }
}

void
TesselTcamGroupManager::handlePreInit() {
   TRACE8( "handlePreInit" );
   groupManagerVaultRequestIs();
   groupManagerVaultSmIs();
}

void
TesselTcamGroupManager::handleInitialized() {
   TRACE8( "handleInitialized" );
   initTcamGroups();
   initialized_ = true;
   for ( U32 group = 0; group < HIGHEST_TCAM_GROUP_; ++group ) {
      groupOpenFlowVxlanAclUdfValidIs( static_cast< U8 >( group ), false );
   }
   for ( const auto & [ key, index ] : indexQsetModRows( getGroupExcludes, "Exclude" ) ) {
      groupIdToExcludeIndexIs( key, index );
   }
   for ( const auto & [ key, index ] : indexQsetModRows( getGroupIncludes, "Include" ) ) {
      groupIdToIncludeIndexIs( key, index );
   }
   for ( U32 unit : units() ) {
      setUpUnit( unit, *chipInfo( unit ) );
   }
}

std::vector< U32 >
TesselTcamGroupManager::units() const {
   std::vector< U32 > result;
   for ( const auto & [ moduleId, info ] : modChipInfo_ ) {
      result.insert( result.end(), info.units().begin(), info.units().end() );
   }
   std::sort( result.begin(), result.end() );
   result.erase( std::unique( result.begin(), result.end() ), result.end() );
   return result;
}

const Agent::ChipInfo *
TesselTcamGroupManager::chipInfo( U32 unit ) const {
   return Agent::chipInfoForUnit( modChipInfo_, unit );
}

} // namespace Tessel
