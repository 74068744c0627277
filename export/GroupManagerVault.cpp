// The group manager's request entity and GroupManagerVaultSm, which serves
// it and follows the modules for the unit tables.
#include "export/GroupManagerVaultSm.h"

#include "manager/TesselTcamGroupManager.h"
#include "platform/fastlog/Trace.h"

TRACE_CHANNEL( "TesselTcamCliVault" );

namespace Tessel {

class GroupManagerVaultSm::MessageWatch : public GroupManagerVaultRequest::NotifieeConst {
 public:
   explicit MessageWatch( GroupManagerVaultSm & sm ) : sm_( sm ) {}
   void onRequest() override { sm_.handleVaultMessage(); }

 private:
   GroupManagerVaultSm & sm_;
};

class GroupManagerVaultSm::ManagerWatch : public TesselTcamGroupManager::NotifieeConst {
 public:
   explicit ManagerWatch( TesselTcamGroupManager & manager ) : manager_( manager ) {
      notifierIs( &manager );
   }
   void onModChipInfo( U16 moduleId ) override { manager_.handleModuleUpdate( moduleId ); }
   // A helper given late catches up with the modules known by then.
   void
   onCliVaultHelper() override {
      for ( U16 moduleId : manager_.modChipInfoCollection().keys() ) {
         manager_.handleModuleUpdate( moduleId );
      }
   }

 private:
   TesselTcamGroupManager & manager_;
};

GroupManagerVaultSm::GroupManagerVaultSm( TesselTcamGroupManager * manager )
      : manager_( manager ), messageWatch_( std::make_unique< MessageWatch >( *this ) ),
        managerWatch_( std::make_unique< ManagerWatch >( *manager ) ) {}

GroupManagerVaultSm::~GroupManagerVaultSm() = default;

void
GroupManagerVaultSm::messageIs( const Kiln::Ptr< GroupManagerVaultRequest > & message ) {
   message_ = message;
   messageWatch_->notifierIs( message.get() );
}

void
GroupManagerVaultSm::messageDel() {
   messageIs( nullptr );
}

void
GroupManagerVaultSm::handleVaultMessage() {
   Kiln::Ptr< GroupManagerVaultRequest > request = message_;
   if ( !request || request->request() == 0 || request->response() == request->request() ) {
      return;
   }
   TRACE8( "handleVaultMessage unit " << request->unit() << " type "
                                      << TcamGroupManagerVaultTypesInstance( request->type() )
                                      << " stage " << request->stageId() << " pipe "
                                      << request->pipeId() );
   if ( request->type() == vaultTypeSlices ) {
      manager_->dumpSliceData( request );
   } else {
      manager_->dumpData( request );
   }
   ++served_;
   request->responseIs( request->request() );
}

Kiln::Ptr< GroupManagerVaultRequest >
TesselTcamGroupManager::groupManagerVaultRequestIs() {
   if ( !groupManagerVaultRequest_ ) {
      groupManagerVaultRequest_ =
         new GroupManagerVaultRequest( name().str() + "/groupManagerVaultRequest" );
      notify( &NotifieeConst::onGroupManagerVaultRequest );
   }
   return groupManagerVaultRequest_;
}

Kiln::Ptr< GroupManagerVaultSm >
TesselTcamGroupManager::groupManagerVaultSmIs() {
   KILN_ASSERT( groupManagerVaultRequest_ );
   if ( !groupManagerVaultSm_ ) {
      groupManagerVaultSm_ = new GroupManagerVaultSm( this );
      groupManagerVaultSm_->messageIs( groupManagerVaultRequest_ );
      notify( &NotifieeConst::onGroupManagerVaultSm );
   }
   return groupManagerVaultSm_;
}

} // namespace Tessel
