// The mounters' requests and the registration of the mount classes.
#include "export/TesselTcamVaultMounts.h"

#include <cstdint>

#include "platform/fastlog/Trace.h"
#include "platform/kiln/Assert.h"

TRACE_CHANNEL( "TesselTcamCliVault" );

namespace Tessel {

U64
GroupManagerVaultMounter::requestToken() const {
   // The mounter's identity, sign-extended as the request word holds it.
   return static_cast< U64 >( static_cast< S64 >( reinterpret_cast< intptr_t >( this ) ) );
}

void
GroupManagerVaultMounter::populateVault() {
   TRACE9( "populateVault" << " for Unit " << unit() );
   const Kiln::Ptr< GroupManagerVaultRequest > & request = cliVaultMessage();
   KILN_ASSERT( request );
   request->unitIs( unit() );
   request->mounterIs( this );
   request->parametersIs( "" );
   request->pipeIdIs( pipeId() );
   request->typeIs( callerType() );
   request->stageIdIs( stageId() );
   request->requestIs( requestToken() );
}

void
GroupManagerStaticVaultMounter::populateVault() {
   TRACE9( "populateVault" << " for Unit " << unit() );
}

namespace {

template< typename Mount >
void
registerMount( const char * type, const char * parentType ) {
   TesselTcam::MountType mountType;
   mountType.parentType = parentType;
   mountType.recordSize = Mount::RecordType::recordSize;
   mountType.make = []( const Kiln::Name & name ) -> Kiln::Ptr< TesselTcam::CliVaultMounter > {
      return new Mount( name );
   };
   TesselTcam::registerMountType( type, std::move( mountType ) );
}

// The library registers its mount classes when it is loaded.
[[maybe_unused]] const bool registered = ( registerGroupManagerMountTypes(), true );

} // namespace

void
registerGroupManagerMountTypes() {
   registerMount< VaultStagesMount >( "Tessel::VaultStagesMount", staticMounterType );
   registerMount< VaultStageNamesMount >( "Tessel::VaultStageNamesMount", staticMounterType );
   registerMount< VaultQualifierNamesMount >( "Tessel::VaultQualifierNamesMount",
                                              staticMounterType );
   registerMount< VaultGroupNamesMount >( "Tessel::VaultGroupNamesMount", staticMounterType );
   registerMount< VaultGroupsMount >( "Tessel::VaultGroupsMount", requestMounterType );
   registerMount< VaultFeaturesMount >( "Tessel::VaultFeaturesMount", requestMounterType );
   registerMount< VaultFeatureNamesMount >( "Tessel::VaultFeatureNamesMount",
                                            requestMounterType );
   registerMount< VaultEntryGroupsMount >( "Tessel::VaultEntryGroupsMount", requestMounterType );
   registerMount< VaultEntryFeaturesMount >( "Tessel::VaultEntryFeaturesMount",
                                             requestMounterType );
   registerMount< VaultEntryNamesMount >( "Tessel::VaultEntryNamesMount", requestMounterType );
   registerMount< VaultEntriesMount >( "Tessel::VaultEntriesMount", requestMounterType );
   registerMount< VaultGroupQualifersMount >( "Tessel::VaultGroupQualifersMount",
                                              requestMounterType );
   registerMount< VaultSlicesMount >( "Tessel::VaultSlicesMount", requestMounterType );
}

} // namespace Tessel
