// TesselTcamCliServer: the agent's side of the command line, in one object.
//
// It claims the agent's shared-memory prefix (a Vault::Store), creates the
// request mailbox and the report socket, and gives the group manager a
// CliVaultHelper on that store, so the tables of every known unit exist from
// then on. Registered with the agent's activity loop it serves:
//
//  - table requests (mailbox): unit, kind (TcamGroupManagerVaultTypes),
//    stage and pipe are checked against the published tables, then set on
//    the group manager's request entity through the table's mounter
//    (`request` last); the group manager's state machine dumps the table and
//    answers, and the mailbox replies with 0 or a vaultResult* code;
//  - text reports (socket): one request line (TesselTcamVaultTables.h) and
//    the caller's descriptor, into which the report is written; the reply is
//    0 or a reportStatus* code.
//
// Lifecycle (activity thread): construct after the group manager's
// handlePreInit; attach( loop ) to serve; destruction detaches, takes the
// helper back from the group manager and removes every table, the mailbox,
// the socket and the prefix's owner segment.
#pragma once

#include <memory>
#include <string>

#include "common/TesselExport.h"
#include "export/TesselTcamCliVault.h"
#include "platform/kiln/ActivityLoop.h"
#include "platform/vault/VaultMailbox.h"
#include "platform/vault/VaultReport.h"
#include "platform/vault/VaultStore.h"

namespace Tessel {

class TesselTcamGroupManager;

class TESSEL_EXPORT TesselTcamCliServer {
 public:
   struct Options {
      std::string prefix;            // the agent's prefix (Vault/VaultNames.h)
      std::string reportSocketPath;  // empty: Vault::defaultReportSocketPath( prefix )
      std::string switchName;        // empty: the host's name
      U32 mailboxSlots = Vault::defaultMailboxSlots;
   };

   // Throws Vault::Error when the prefix is bad or held by a live agent, or
   // a socket cannot be made.
   TesselTcamCliServer( const Kiln::Ptr< TesselTcamGroupManager > & manager, Options options );
   ~TesselTcamCliServer();
   TesselTcamCliServer( const TesselTcamCliServer & ) = delete;
   TesselTcamCliServer & operator=( const TesselTcamCliServer & ) = delete;

   // Serves from the loop's thread until detach() (or destruction).
   void attach( Kiln::ActivityLoop & loop );
   void detach();

   // Serve what waits now; the loop calls these. Return how many were served.
   U32 serveTableRequests();
   U32 serveReports();

   // One table request, as the mailbox hands it: 0 when the table was
   // filled, or a vaultResult* code.
   S32 serveTableRequest( const Vault::IncomingRequest & in );
   // One report request line, written into `out`: 0 or a reportStatus* code.
   S32 serveReportRequest( const std::string & line, int out );

   Vault::Store & store() { return *store_; }
   const Kiln::Ptr< TesselTcam::CliVaultHelper > & helper() const { return helper_; }
   const std::string & reportSocketPath() const { return reports_->socketPath(); }
   const std::string & switchName() const { return switchName_; }

 private:
   S32 checkTableRequest( const Vault::Request & request ) const;
   S32 fillTable( const Vault::Request & request );

   Kiln::Ptr< TesselTcamGroupManager > manager_;
   std::string switchName_;
   std::unique_ptr< Vault::Store > store_;
   Kiln::Ptr< TesselTcam::CliVaultHelper > helper_;
   std::unique_ptr< Vault::MailboxServer > mailbox_;
   std::unique_ptr< Vault::ReportServer > reports_;
   Kiln::ActivityLoop * loop_ = nullptr;
};

} // namespace Tessel
