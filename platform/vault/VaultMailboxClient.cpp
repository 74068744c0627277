#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <unistd.h>

#include "platform/vault/VaultAtomic.h"
#include "platform/vault/VaultFutex.h"
#include "platform/vault/VaultMailbox.h"
#include "platform/vault/VaultNames.h"
#include "platform/vault/VaultProcess.h"
#include "platform/vault/VaultSocket.h"
#include "platform/vault/VaultStore.h"

namespace Vault {

namespace {

// How often a waiting client looks whether the agent still lives.
constexpr std::chrono::milliseconds livenessInterval( 20 );

// How long a client watches its slot before it sleeps. Most answers take
// tens of microseconds; a sleeping client's wake-up can cost as much again,
// so a short watch halves a typical round trip for little processor time.
constexpr std::chrono::microseconds watchBeforeSleep( 200 );

} // namespace

MailboxClient::MailboxClient( std::string prefix )
      : prefix_( std::move( prefix ) ), pid_( static_cast< U32 >( getpid() ) ) {}

MailboxClient::~MailboxClient() {
   if ( doorbellFd_ >= 0 ) {
      close( doorbellFd_ );
   }
}

const MailboxHeader &
MailboxClient::header() const {
   return *reinterpret_cast< const MailboxHeader * >( segment_.data() );
}

MailboxSlot &
MailboxClient::slot( U32 index ) const {
   return reinterpret_cast< MailboxSlot * >( segment_.data() + sizeof( MailboxHeader ) )[ index ];
}

Status
MailboxClient::attach() {
   segment_.reset();
   Status status = checkPrefix( prefix_ );
   if ( status.ok() ) {
      status = Segment::open( mailboxSegmentName( prefix_ ), true, segment_ );
   }
   if ( status.code() == Errc::notFound ) {
      Status agent = agentStatus( prefix_ );
      return agent.ok() ? Status( Errc::notFound,
                                  "the agent of prefix '" + prefix_ + "' has no mailbox" )
                        : agent;
   }
   if ( status.ok() ) {
      status = checkMailbox();
   }
   if ( status.ok() && !isAlive( ProcessIdentity{ header().ownerPid, header().ownerStart } ) ) {
      status = agentGone();
   }
   if ( status.ok() && doorbellFd_ < 0 ) {
      doorbellFd_ = socket( AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0 );
      if ( doorbellFd_ < 0 ) {
         status = systemStatus( "socket", errno );
      }
   }
   if ( !status.ok() ) {
      segment_.reset();
   }
   return status;
}

Status
MailboxClient::checkMailbox() const {
   auto corrupt = [ this ]( const std::string & detail ) {
      return Status( Errc::corrupt, "corrupt mailbox " + segment_.name() + ": " + detail );
   };
   if ( segment_.size() < sizeof( MailboxHeader ) ) {
      return corrupt( "truncated to " + std::to_string( segment_.size() ) + " bytes" );
   }
   const MailboxHeader & h = header();
   if ( h.magic != mailboxMagic ) {
      return corrupt( "bad magic" );
   }
   if ( h.version != layoutVersion ) {
      return Status( Errc::versionMismatch, "mailbox " + segment_.name() +
                                               " has layout version " +
                                               std::to_string( h.version ) +
                                               ", this client understands " +
                                               std::to_string( layoutVersion ) );
   }
   if ( h.headerSize != sizeof( MailboxHeader ) || h.slotSize != sizeof( MailboxSlot ) ||
        h.slotCount == 0 || h.slotCount > maxMailboxSlots ) {
      return corrupt( "header or slot sizes do not match" );
   }
   if ( sizeof( MailboxHeader ) + U64( h.slotCount ) * sizeof( MailboxSlot ) > segment_.size() ) {
      return corrupt( std::to_string( h.slotCount ) + " slots do not fit " +
                      std::to_string( segment_.size() ) + " bytes" );
   }
   if ( strnlen( h.doorbell, sizeof( h.doorbell ) ) == sizeof( h.doorbell ) || !h.doorbell[ 0 ] ) {
      return corrupt( "no doorbell path" );
   }
   return Status();
}

Status
MailboxClient::agentGone() const {
   Status agent = agentStatus( prefix_ );
   return agent.ok() ? Status( Errc::agentNotRunning, "agent not running: the agent of prefix '" +
                                                         prefix_ + "' closed its mailbox" )
                     : agent;
}

Status
MailboxClient::call( const Request & request, Answer & answer,
                     std::chrono::milliseconds timeout ) {
   answer = Answer();
   pid_ = static_cast< U32 >( getpid() );  // a forked child claims slots as itself
   if ( request.parameters.size() > maxParameterLength ) {
      return Status( Errc::invalidArgument, "request parameters of " +
                                               std::to_string( request.parameters.size() ) +
                                               " bytes exceed " +
                                               std::to_string( maxParameterLength ) );
   }
   if ( !segment_.valid() || loadAcquire( &header().state ) == segmentRetired ) {
      Status attached = attach();
      if ( !attached.ok() ) {
         return attached;
      }
   }
   U32 index = 0;
   Status claimed = claimSlot( index );
   if ( !claimed.ok() ) {
      return claimed;
   }
   MailboxSlot & s = slot( index );
   s.unit = request.unit;
   s.kind = request.kind;
   s.stage = request.stage;
   s.pipe = request.pipe;
   s.parameterLength = static_cast< U32 >( request.parameters.size() );
   std::memcpy( s.parameters, request.parameters.data(), request.parameters.size() );
   auto * h = reinterpret_cast< MailboxHeader * >( segment_.data() );
   U64 token = ( U64( pid_ ) << 32 ) | fetchAdd( &h->nextToken, 1 );
   s.requestToken = token;
   s.responseToken = 0;
   s.result = 0;
   storeRelease( &s.control, ( pid_ << 8 ) | slotRequested );
   Status rang = ring();
   if ( !rang.ok() && compareExchange( &s.control, ( pid_ << 8 ) | slotRequested, slotFree ) ) {
      return rang;
   }
   return await( index, token, timeout, answer );
}

Status
MailboxClient::claimSlot( U32 & index ) {
   const U32 count = header().slotCount;
   const U32 mine = ( pid_ << 8 ) | slotClaimed;
   for ( U32 step = 0; step < count; ++step ) {
      index = ( pid_ + step ) % count;
      if ( compareExchange( &slot( index ).control, slotFree, mine ) ) {
         return Status();
      }
   }
   // None free: take back a slot whose client died. Serving and abandoned
   // slots are the agent's until it answers.
   for ( index = 0; index < count; ++index ) {
      U32 control = loadAcquire( &slot( index ).control );
      U32 state = control & 0xFF;
      if ( control != slotFree && state != slotServing && state != slotAbandoned &&
           !pidExists( control >> 8 ) &&
           compareExchange( &slot( index ).control, control, mine ) ) {
         return Status();
      }
   }
   return Status( Errc::busy, "all " + std::to_string( count ) +
                                 " request slots of the agent of prefix '" + prefix_ +
                                 "' are in use" );
}

Status
MailboxClient::ring() {
   const std::string path( header().doorbell, strnlen( header().doorbell, maxDoorbellPath ) );
   sockaddr_un address;
   socklen_t length;
   Status valid = unixAddress( path, address, length );
   if ( !valid.ok() ) {
      return valid;
   }
   if ( sendto( doorbellFd_, "!", 1, MSG_DONTWAIT | MSG_NOSIGNAL,
                reinterpret_cast< const sockaddr * >( &address ), length ) == 1 ) {
      return Status();
   }
   switch ( errno ) {
    case EAGAIN:
      return Status();  // the agent has wake-ups queued already
    case ECONNREFUSED:
    case ENOENT:
      return agentGone();
    case EACCES:
    case EPERM:
      return Status( Errc::refused, "no permission to wake the agent at " + path );
    default:
      return systemStatus( "waking the agent at " + path, errno );
   }
}

Status
MailboxClient::await( U32 index, U64 token, std::chrono::milliseconds timeout,
                      Answer & answer ) {
   using Clock = std::chrono::steady_clock;
   const Clock::time_point deadline = Clock::now() + timeout;
   MailboxSlot & s = slot( index );
   const U32 requested = ( pid_ << 8 ) | slotRequested;
   const U32 serving = ( pid_ << 8 ) | slotServing;
   const U32 answered = ( pid_ << 8 ) | slotAnswered;
   const ProcessIdentity agent{ header().ownerPid, header().ownerStart };
   const Clock::time_point watchEnd = std::min( Clock::now() + watchBeforeSleep, deadline );
   Clock::time_point nextLivenessCheck = Clock::now() + livenessInterval;
   for ( ;; ) {
      U32 control = loadAcquire( &s.control );
      if ( control == answered ) {
         answer.requestToken = token;
         answer.responseToken = s.responseToken;
         answer.result = s.result;
         storeRelease( &s.control, slotFree );
         if ( answer.responseToken != token ) {
            return Status( Errc::corrupt, "mailbox " + segment_.name() + ": slot " +
                                             std::to_string( index ) +
                                             " was answered with another request's token" );
         }
         return Status();
      }
      if ( control != requested && control != serving ) {
         return Status( Errc::corrupt, "mailbox " + segment_.name() + ": slot " +
                                          std::to_string( index ) +
                                          " was taken while its request was waiting" );
      }
      Clock::time_point now = Clock::now();
      bool gone = loadAcquire( &header().state ) == segmentRetired;
      if ( !gone && now >= nextLivenessCheck ) {
         // The full check (a /proc read) also tells an exited but not yet
         // collected agent; a waiting client can afford it now and then.
         gone = !isAlive( agent );
         nextLivenessCheck = now + livenessInterval;
      }
      if ( gone || now >= deadline ) {
         // Withdraw the request, or leave it to the agent to free; when it
         // was answered meanwhile, the next round takes the answer.
         if ( compareExchange( &s.control, requested, slotFree ) ||
              compareExchange( &s.control, serving, ( pid_ << 8 ) | slotAbandoned ) ) {
            return gone ? agentGone()
                        : Status( Errc::timeout, "the agent of prefix '" + prefix_ +
                                                    "' did not answer within " +
                                                    std::to_string( timeout.count() ) + " ms" );
         }
         continue;
      }
      if ( now < watchEnd &&
           watchUntil( [ & ] { return loadAcquire( &s.control ) != control; }, watchEnd ) ) {
         continue;
      }
      futexWait( &s.control, control, std::min< Clock::duration >( deadline - now,
                                                                    livenessInterval ) );
   }
}

} // namespace Vault
