// GroupManagerVaultSm: serves the command line's requests on the group
// manager's request entity, and keeps the unit tables in step with the
// modules the group manager knows.
//
//  - When the message's `request` changes to a token (not 0), it calls
//    handleVaultMessage(): the group manager dumps the table the request
//    names (dumpData; dumpSliceData for the slice map) and `response` is
//    set to the token.
//  - When a module's chip information is stored or removed, or the group
//    manager is given its CliVaultHelper, it calls handleModuleUpdate, which
//    creates or cleans up the unit's tables.
//
// Owned by the group manager, which it points at without counting it. On
// the activity thread, like the entities it watches.
#pragma once

#include <memory>

#include "common/TesselExport.h"
#include "export/TesselTcamVaultMounts.h"
#include "platform/kiln/Ptr.h"

namespace Tessel {

class TesselTcamGroupManager;

class TESSEL_EXPORT GroupManagerVaultSm : public Kiln::PtrInterface {
 public:
   explicit GroupManagerVaultSm( TesselTcamGroupManager * manager );
   ~GroupManagerVaultSm() override;
   GroupManagerVaultSm( const GroupManagerVaultSm & ) = delete;
   GroupManagerVaultSm & operator=( const GroupManagerVaultSm & ) = delete;

   TesselTcamGroupManager * manager() const { return manager_; }

   // The request entity watched.
   const Kiln::Ptr< GroupManagerVaultRequest > & message() const { return message_; }
   void messageIs( const Kiln::Ptr< GroupManagerVaultRequest > & message );
   void messageDel();

   // Serves the pending request of message(): nothing when there is none
   // (request 0) or it is answered already.
   void handleVaultMessage();

   // Requests served since construction.
   U32 served() const { return served_; }

 private:
   class MessageWatch;
   class ManagerWatch;

   TesselTcamGroupManager * manager_;
   Kiln::Ptr< GroupManagerVaultRequest > message_;
   std::unique_ptr< MessageWatch > messageWatch_;
   std::unique_ptr< ManagerWatch > managerWatch_;
   U32 served_ = 0;
};

} // namespace Tessel
