// How tessel-show reaches the agent: table requests through the mailbox,
// tables read from shared memory, text reports through the report socket.
// Every failure comes back as the message to print and the exit code.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/vault/VaultMailbox.h"
#include "platform/vault/VaultTable.h"
#include "tools/tessel-show/ExitCodes.h"
#include "tools/tessel-show/Options.h"

namespace TesselShow {

struct Failure {
   int code;
   std::string message;  // without "tessel-show: "
};
typedef std::optional< Failure > Outcome;  // nothing: success

// The exit code and text of a Vault status that is not ok.
Failure failureOf( const Vault::Status & status );

class AgentLink {
 public:
   explicit AgentLink( const Options & options );

   // The units the agent publishes, ascending.
   Outcome units( std::vector< U32 > & units );
   // Asks the agent to fill the table of `kind` for the unit, stage and pipe.
   Outcome request( U32 unit, U32 kind, U32 stage, U32 pipe );
   // A report written by the agent into `out`; unit and pipe name what the
   // request was about in messages.
   Outcome report( const std::string & line, int out, U32 unit = 0, U32 pipe = 0 );

   // Every record of the table at `path`, by key. A record that does not
   // decode is reported as a damaged table.
   template< typename Record >
   Outcome
   read( const std::string & path, std::vector< Record > & rows ) {
      Vault::Snapshot snapshot;
      Outcome failure = snapshotOf( path, snapshot );
      if ( failure ) {
         return failure;
      }
      rows.clear();
      for ( U32 i = 0; i < snapshot.size(); ++i ) {
         Vault::Record stored = snapshot.at( i );
         Record record;
         if ( !Record::deserialize( stored.data, stored.length, record ) ) {
            return damaged( path, stored.key );
         }
         rows.push_back( record );
      }
      return std::nullopt;
   }

   const Options & options() const { return options_; }

 private:
   Outcome snapshotOf( const std::string & path, Vault::Snapshot & snapshot );
   Failure damaged( const std::string & path, U32 key ) const;

   const Options & options_;
   Vault::MailboxClient mailbox_;
};

} // namespace TesselShow
