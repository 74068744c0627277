// The request channel: how a command-line process asks the agent to fill a
// table.
//
// The agent owns one mailbox segment per prefix (/tessel-<prefix>-mailbox,
// mode 0600) with a fixed number of request slots, and a datagram socket,
// the doorbell, whose path the mailbox header records. A client:
//   1. claims a free slot (compare-and-swap of the slot's control word from 0
//      to its pid and "claimed"); slots of dead clients are taken back;
//   2. writes unit, kind, stage, pipe and parameters, then the request token
//      ( pid << 32 | a counter of the whole mailbox: unique per request, so a
//      repeated request is never taken for one already served), and last
//      sets the state "requested";
//   3. rings the doorbell and waits (futex on the control word) until the
//      state is "answered" and the response token equals its request token,
//      or its timeout passes.
// The agent polls the doorbell's descriptor, takes each requested slot
// ("serving"), calls its handler, writes result and response token, sets
// "answered" and wakes the client. A client that times out while the agent
// is serving marks the slot "abandoned"; the agent frees it when done.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "platform/vault/VaultError.h"
#include "platform/vault/VaultLayout.h"
#include "platform/vault/VaultSegment.h"

namespace Vault {

class Store;
class BoundSocket;

struct Request {
   U32 unit = 0;
   U32 kind = 0;
   U32 stage = 0;
   U32 pipe = 0;
   std::string parameters;  // at most maxParameterLength bytes
};

// A request as the agent's handler sees it.
struct IncomingRequest {
   Request request;
   U64 token = 0;
   U32 clientPid = 0;
   U32 slot = 0;
};

struct Answer {
   U64 requestToken = 0;
   U64 responseToken = 0;  // equal to requestToken
   S32 result = 0;         // what the agent's handler returned
};

// Results the agent gives without its handler.
constexpr S32 answerBadRequest = -1000;     // the slot held a parameter length out of range
constexpr S32 answerHandlerFailed = -1001;  // the handler threw

constexpr U32 defaultMailboxSlots = 16;
constexpr U32 maxMailboxSlots = 1024;

// Agent side. Single-threaded: the agent's activity thread.
class MailboxServer {
 public:
   // The handler fills the tables the request asks for and returns the
   // result for the client.
   using Handler = std::function< S32 ( const IncomingRequest & ) >;

   // Creates the prefix's mailbox and binds its doorbell at `doorbellPath`
   // (default runtimePath( prefix, "bell" )). Throws Error: invalidArgument
   // (slot count outside 1 .. maxMailboxSlots, doorbell path too long), busy
   // (the mailbox exists already), system.
   explicit MailboxServer( const Store & store, U32 slotCount = defaultMailboxSlots,
                           std::string doorbellPath = "" );
   // Retires and removes the mailbox and the doorbell; clients waiting get
   // "agent not running".
   ~MailboxServer();
   MailboxServer( const MailboxServer & ) = delete;
   MailboxServer & operator=( const MailboxServer & ) = delete;

   // Readable (POLLIN) when requests may be waiting; for the event loop.
   int fd() const;

   // Waits up to timeoutMs (-1: no limit) for the doorbell; true if it rang.
   bool wait( int timeoutMs ) const;

   // Empties the doorbell, then serves every requested slot in slot order.
   // Returns how many were served. A slot whose parameter length is out of
   // range is answered with answerBadRequest without calling the handler; if
   // the handler throws, the request is answered with answerHandlerFailed
   // and the exception propagates.
   U32 serve( const Handler & handler );

   // Watches the slots for up to `period` without sleeping; true as soon as
   // one holds a request. An agent that watches for a moment after
   // answering serves a command's next request without the cost of waking
   // from sleep, which is most of a short round trip.
   bool requestWithin( std::chrono::microseconds period ) const;

   const std::string & doorbellPath() const;
   const std::string & segmentName() const { return segment_.name(); }

 private:
   void answer( MailboxSlot & slot, U32 control, S32 result );
   MailboxSlot & slot( U32 index ) const;

   Segment segment_;
   U32 slotCount_ = 0;
   std::unique_ptr< BoundSocket > doorbell_;
};

// Command-line side. Attaches to the mailbox on first use and again after
// the agent restarted. Not thread-safe; use one client per thread.
class MailboxClient {
 public:
   explicit MailboxClient( std::string prefix );
   ~MailboxClient();
   MailboxClient( const MailboxClient & ) = delete;
   MailboxClient & operator=( const MailboxClient & ) = delete;

   // Sends the request and waits for its answer. Errors:
   //   agentNotRunning  no live agent for the prefix, or it went away
   //   notFound         the agent runs without a mailbox
   //   timeout          no answer in time ("agent did not answer ...")
   //   busy             every slot is in use by live clients
   //   invalidArgument  parameters longer than maxParameterLength
   //   corrupt / versionMismatch  the mailbox segment cannot be used
   Status call( const Request & request, Answer & answer,
                std::chrono::milliseconds timeout = std::chrono::milliseconds( 5000 ) );

 private:
   Status attach();
   Status checkMailbox() const;
   Status claimSlot( U32 & index );
   Status ring();
   Status await( U32 index, U64 token, std::chrono::milliseconds timeout, Answer & answer );
   Status agentGone() const;
   MailboxSlot & slot( U32 index ) const;
   const MailboxHeader & header() const;

   std::string prefix_;
   U32 pid_ = 0;
   Segment segment_;
   int doorbellFd_ = -1;
};

} // namespace Vault
