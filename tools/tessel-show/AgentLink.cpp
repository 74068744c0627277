// Talking to the agent and turning what goes wrong into messages and exit
// codes.
#include "tools/tessel-show/AgentLink.h"

#include "export/TesselTcamVaultRecords.h"
#include "export/TesselTcamVaultTables.h"
#include "platform/vault/VaultReport.h"

namespace TesselShow {

Failure
failureOf( const Vault::Status & status ) {
   switch ( status.code() ) {
   case Vault::Errc::agentNotRunning: return { exitNoAgent, status.text() };
   case Vault::Errc::timeout:
   case Vault::Errc::busy: return { exitNoAnswer, status.text() };
   case Vault::Errc::refused: return { exitRefused, status.text() };
   case Vault::Errc::invalidArgument: return { exitUsage, status.text() };
   case Vault::Errc::notFound: return { exitNotFound, status.text() };
   default: return { exitUnreadable, status.text() };
   }
}

AgentLink::AgentLink( const Options & options )
      : options_( options ), mailbox_( options.prefix ) {}

Outcome
AgentLink::snapshotOf( const std::string & path, Vault::Snapshot & snapshot ) {
   Vault::TableReader reader( options_.prefix, path );
   Vault::Status status = reader.snapshot( snapshot );
   if ( !status.ok() ) {
      return failureOf( status );
   }
   snapshot.sortByKey();
   return std::nullopt;
}

Failure
AgentLink::damaged( const std::string & path, U32 key ) const {
   return { exitUnreadable,
            "table '" + path + "' holds a damaged record (key " + std::to_string( key ) + ")" };
}

Outcome
AgentLink::units( std::vector< U32 > & units ) {
   std::vector< TesselTcam::VaultUnitInfo > rows;
   if ( Outcome failure = read( Tessel::unitTablePath, rows ) ) {
      if ( failure->code == exitNotFound ) {
         failure->message = "the agent publishes no units (" + failure->message + ")";
      }
      return failure;
   }
   units.clear();
   for ( const TesselTcam::VaultUnitInfo & row : rows ) {
      units.push_back( row.key.value );
   }
   return std::nullopt;
}

Outcome
AgentLink::request( U32 unit, U32 kind, U32 stage, U32 pipe ) {
   Vault::Answer answer;
   Vault::Status status = mailbox_.call( Vault::Request{ unit, kind, stage, pipe, "" }, answer,
                                         std::chrono::milliseconds( options_.timeoutMs ) );
   if ( !status.ok() ) {
      return failureOf( status );
   }
   std::string u = std::to_string( unit );
   switch ( answer.result ) {
   case 0: return std::nullopt;
   case Tessel::vaultResultUnknownUnit:
      return Failure{ exitNotFound, "unit " + u + " is not known to the agent" };
   case Tessel::vaultResultUnknownStage:
      return Failure{ exitNotFound, "unit " + u + " has no stage " + std::to_string( stage ) };
   case Tessel::vaultResultUnknownPipe:
      return Failure{ exitNotFound, "stage " + std::to_string( stage ) + " of unit " + u +
                                       " has no pipe " + std::to_string( pipe ) };
   default:
      return Failure{ exitAgentError, "the agent could not fill the table (result " +
                                         std::to_string( answer.result ) + ")" };
   }
}

Outcome
AgentLink::report( const std::string & line, int out, U32 unit, U32 pipe ) {
   S32 exitStatus = 0;
   Vault::Status status = Vault::requestReport( options_.socketPath, line, out, exitStatus );
   if ( !status.ok() ) {
      return failureOf( status );
   }
   switch ( exitStatus ) {
   case 0: return std::nullopt;
   case Tessel::reportStatusUnknownUnit:
      return Failure{ exitNotFound, "unit " + std::to_string( unit ) +
                                       " is not known to the agent" };
   case Tessel::reportStatusUnknownPipe:
      return Failure{ exitNotFound, "unit " + std::to_string( unit ) + " has no pipe " +
                                       std::to_string( pipe ) };
   default:
      return Failure{ exitAgentError, "the agent could not serve '" + line + "' (status " +
                                         std::to_string( exitStatus ) + ")" };
   }
}

} // namespace TesselShow
