#include <cstring>
#include <poll.h>
#include <sys/socket.h>

#include "platform/vault/VaultAtomic.h"
#include "platform/vault/VaultFutex.h"
#include "platform/vault/VaultMailbox.h"
#include "platform/vault/VaultNames.h"
#include "platform/vault/VaultSocket.h"
#include "platform/vault/VaultStore.h"

namespace Vault {

namespace {

// Rings carry nothing: each is taken truncated and dropped, many per call,
// so an empty doorbell costs one call rather than a read and a failed one.
void
drainDoorbell( int fd ) {
   constexpr unsigned batch = 32;
   mmsghdr rings[ batch ] = {};
   while ( recvmmsg( fd, rings, batch, MSG_DONTWAIT, nullptr ) == int( batch ) ) {
   }
}

} // namespace

MailboxServer::MailboxServer( const Store & store, U32 slotCount, std::string doorbellPath )
      : slotCount_( slotCount ) {
   if ( slotCount == 0 || slotCount > maxMailboxSlots ) {
      throw Error( Errc::invalidArgument, "mailbox slot count " + std::to_string( slotCount ) +
                                             " outside 1 to " +
                                             std::to_string( maxMailboxSlots ) );
   }
   if ( doorbellPath.empty() ) {
      doorbellPath = runtimePath( store.prefix(), "bell" );
   }
   // The header keeps the path with its NUL; BoundSocket checks the same bound.
   doorbell_ = std::make_unique< BoundSocket >( doorbellPath, SOCK_DGRAM | SOCK_NONBLOCK );
   const std::string name = mailboxSegmentName( store.prefix() );
   Status created = Segment::create(
      name, sizeof( MailboxHeader ) + U64( slotCount ) * sizeof( MailboxSlot ), segment_ );
   if ( !created.ok() ) {
      throw Error( created.code(), created.code() == Errc::busy ?
                                      "mailbox of prefix '" + store.prefix() + "' exists already" :
                                      created.text() );
   }
   auto * h = reinterpret_cast< MailboxHeader * >( segment_.data() );
   h->version = layoutVersion;
   h->headerSize = sizeof( MailboxHeader );
   h->state = segmentLive;
   h->slotCount = slotCount;
   h->slotSize = sizeof( MailboxSlot );
   h->ownerPid = store.identity().pid;
   h->ownerStart = store.identity().startTime;
   h->nextToken = 1;
   std::memcpy( h->doorbell, doorbellPath.data(), doorbellPath.size() );
   storeRelease( &h->magic, mailboxMagic );
}

MailboxServer::~MailboxServer() {
   // Only a tampering client could have shrunk the segment; do not fault on it.
   if ( segment_.valid() && fileSizeOf( segment_.fd() ) >= segment_.size() ) {
      auto * h = reinterpret_cast< MailboxHeader * >( segment_.data() );
      storeRelease( &h->state, segmentRetired );
      // Waiting clients look at the header again and stop waiting.
      for ( U32 index = 0; index < slotCount_; ++index ) {
         futexWakeAll( &slot( index ).control );
      }
   }
   segment_.unlinkIfOwn();
}

MailboxSlot &
MailboxServer::slot( U32 index ) const {
   return reinterpret_cast< MailboxSlot * >( segment_.data() + sizeof( MailboxHeader ) )[ index ];
}

int
MailboxServer::fd() const {
   return doorbell_->fd();
}

const std::string &
MailboxServer::doorbellPath() const {
   return doorbell_->path();
}

bool
MailboxServer::wait( int timeoutMs ) const {
   pollfd ready = { doorbell_->fd(), POLLIN, 0 };
   return poll( &ready, 1, timeoutMs ) == 1;
}

U32
MailboxServer::serve( const Handler & handler ) {
   drainDoorbell( doorbell_->fd() );
   U32 served = 0;
   for ( U32 index = 0; index < slotCount_; ++index ) {
      MailboxSlot & request = slot( index );
      U32 control = loadAcquire( &request.control );
      U32 serving = ( control & ~0xFFu ) | slotServing;
      if ( ( control & 0xFF ) != slotRequested ||
           !compareExchange( &request.control, control, serving ) ) {
         continue;
      }
      ++served;
      U32 length = request.parameterLength;
      if ( length > maxParameterLength ) {
         answer( request, serving, answerBadRequest );
         continue;
      }
      IncomingRequest incoming;
      incoming.request = Request{ request.unit, request.kind, request.stage, request.pipe,
                                  std::string( request.parameters, length ) };
      incoming.token = request.requestToken;
      incoming.clientPid = control >> 8;
      incoming.slot = index;
      S32 result;
      try {
         result = handler( incoming );
      } catch ( ... ) {
         answer( request, serving, answerHandlerFailed );
         throw;
      }
      answer( request, serving, result );
   }
   return served;
}

bool
MailboxServer::requestWithin( std::chrono::microseconds period ) const {
   auto requested = [ this ] {
      for ( U32 index = 0; index < slotCount_; ++index ) {
         if ( ( loadAcquire( &slot( index ).control ) & 0xFF ) == slotRequested ) {
            return true;
         }
      }
      return false;
   };
   return watchUntil( requested, std::chrono::steady_clock::now() + period );
}

void
MailboxServer::answer( MailboxSlot & slot, U32 serving, S32 result ) {
   slot.responseToken = slot.requestToken;
   slot.result = result;
   U32 answered = ( serving & ~0xFFu ) | slotAnswered;
   if ( !compareExchange( &slot.control, serving, answered ) ) {
      storeRelease( &slot.control, slotFree );  // the client abandoned it
   }
   futexWakeAll( &slot.control );
}

} // namespace Vault
