// The agent's hold on its prefix, and the factory of its tables.
//
// One live Store per prefix on the host: it creates /tessel-<prefix>-owner
// (mode 0600) and keeps an exclusive flock on it, which the kernel drops
// when the agent dies however it dies. A second agent with the same prefix is
// refused while the first lives. When the lock is free, whatever else exists
// under the prefix was left by an agent that died: the constructor retires
// those segments (readers holding them report "agent not running" and let
// go) and removes them.
//
// On destruction the Store removes every segment of the prefix, its owner
// segment last. Tables and the mailbox also remove themselves when destroyed,
// so either order of destruction leaves nothing behind.
#pragma once

#include <string>

#include "platform/vault/VaultError.h"
#include "platform/vault/VaultProcess.h"
#include "platform/vault/VaultTable.h"

namespace Vault {

class Store {
 public:
   // Claims the prefix. Throws Error: invalidArgument (bad prefix), busy
   // (a live agent holds it; the text names its pid), system.
   explicit Store( std::string prefix );
   ~Store();
   Store( const Store & ) = delete;
   Store & operator=( const Store & ) = delete;

   // Creates the table at `path` for records of 1 .. maxRecordSize bytes,
   // with room for `capacity` (1 .. maxTableCapacity) records before it
   // first grows. Throws Error: invalidArgument (bad path or sizes), busy
   // (the table exists already), system.
   TableWriter createTable( const std::string & path, U32 recordSize, U32 capacity );

   // Retires and removes every segment of the prefix except the owner
   // segment (tables and mailbox, whoever created them). Writers still alive
   // keep writing into memory nobody can open any more. Returns how many
   // segments were removed.
   U32 removeAll();

   const std::string & prefix() const { return prefix_; }
   const ProcessIdentity & identity() const { return identity_; }

   // Segments of a dead agent that the constructor retired and removed.
   U32 staleRemoved() const { return staleRemoved_; }

 private:
   void claimOwnerSegment();

   std::string prefix_;
   ProcessIdentity identity_;
   int ownerFd_ = -1;
   U32 staleRemoved_ = 0;
};

// Ok while a live agent holds the prefix. Otherwise agentNotRunning with the
// text to print: "agent not running: no agent holds prefix 'p'" or "agent not
// running: prefix 'p' was held by pid 123, which has exited"; invalidArgument
// for a bad prefix.
Status agentStatus( const std::string & prefix );

} // namespace Vault
