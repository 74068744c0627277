// Names of the shared-memory segments and socket files of one agent.
//
// Every agent picks a prefix (1 to 32 characters of [A-Za-z0-9_]); all its
// objects carry it, so several agents and test runs coexist on one host:
//
//   /tessel-<prefix>-owner        held (flock) by the live agent
//   /tessel-<prefix>-mailbox      request slots of the command line
//   /tessel-<prefix>-t.<path>     one table, <path> encoded as below
//
// Table paths ("cliVault/groups/1/0/3") contain slashes, which shared-memory
// names may not. The encoding keeps [A-Za-z0-9_-], turns '/' into '.', and
// writes every other byte (including '.' and '%') as '%' and two upper-case
// hex digits, so two different paths never share a name:
//   "cliVault/groups/1/0/3"  ->  "/tessel-p-t.cliVault.groups.1.0.3"
//   "a.b"                    ->  "/tessel-p-t.a%2Eb"
// A prefix may not contain '-', so "tessel-<prefix>-" starts the names of
// exactly one prefix and removing "all of a prefix" cannot touch another's.
#pragma once

#include <string>
#include <vector>

#include "platform/vault/VaultError.h"

namespace Vault {

constexpr U32 maxPrefixLength = 32;
constexpr U32 maxPathLength = 199;     // fits the path field of a table header
constexpr U32 maxShmNameLength = 255;  // one file name under /dev/shm

// Ok, or invalidArgument naming what is wrong with the prefix.
Status checkPrefix( const std::string & prefix );

// Ok, or invalidArgument: empty, longer than maxPathLength, or an encoded
// name longer than maxShmNameLength.
Status checkTablePath( const std::string & prefix, const std::string & path );

// The shared-memory name of a table, e.g. "/tessel-p-t.cliVault.stages".
// The caller has checked prefix and path.
std::string tableSegmentName( const std::string & prefix, const std::string & path );

std::string ownerSegmentName( const std::string & prefix );
std::string mailboxSegmentName( const std::string & prefix );

// "tessel-<prefix>-": how the names of the prefix start under /dev/shm.
std::string segmentFilePrefix( const std::string & prefix );

// Names ("/tessel-p-...") of every segment of the prefix that exists now,
// sorted. Lists /dev/shm, where Linux keeps shared-memory objects.
std::vector< std::string > listSegments( const std::string & prefix );

// Directory for the agent's socket files: $XDG_RUNTIME_DIR when it names a
// directory, otherwise /tmp.
std::string runtimeDirectory();

// "<runtimeDirectory()>/tessel-<prefix>.<suffix>", e.g. "/tmp/tessel-p.sock".
std::string runtimePath( const std::string & prefix, const std::string & suffix );

// Where the agent serves text reports by default: runtimePath( prefix, "sock" ).
std::string defaultReportSocketPath( const std::string & prefix );

} // namespace Vault
