#include "platform/kiln/ActivityLoop.h"

#include "platform/kiln/Assert.h"

#include <cerrno>
#include <climits>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <vector>

namespace Kiln {

namespace {

// Takes the lock for a scope unless the calling thread holds it already.
class HoldLock {
 public:
   explicit HoldLock( ActivityLock & lock ) : lock_( lock ), took_( !lock.heldByThisThread() ) {
      if ( took_ ) {
         lock_.lock();
      }
   }
   ~HoldLock() {
      if ( took_ ) {
         lock_.unlock();
      }
   }

 private:
   ActivityLock & lock_;
   bool took_;
};

// Milliseconds for poll(), rounded up so that timers never fire early.
int
pollTimeout( ActivityLoop::Clock::duration wait ) {
   if ( wait < ActivityLoop::Clock::duration::zero() ) {
      return -1;
   }
   auto ms = std::chrono::ceil< std::chrono::milliseconds >( wait ).count();
   return ms > INT_MAX ? INT_MAX : static_cast< int >( ms );
}

} // namespace

// What one turn waits for: the wake-up descriptor first, then the
// registered ones with the registration each was polled for.
struct ActivityLoop::Turn {
   std::vector< pollfd > fds;
   std::vector< U64 > registrations;
   Clock::duration wait{};
   TimerId newestTimer = 0;
   size_t deferred = 0;
};

ActivityLoop::ActivityLoop( ActivityLock & lock )
      : lock_( lock ), wakeFd_( eventfd( 0, EFD_NONBLOCK | EFD_CLOEXEC ) ) {
   KILN_ASSERT_MSG( wakeFd_ >= 0, "ActivityLoop: no eventfd" );
}

ActivityLoop::~ActivityLoop() {
   KILN_ASSERT_MSG( !running_, "ActivityLoop destroyed while running" );
   close( wakeFd_ );
}

void
ActivityLoop::wake() noexcept {
   U64 one = 1;
   // A full counter already means "wake up", so a failed write loses nothing.
   ssize_t written = write( wakeFd_, &one, sizeof one );
   (void)written;
}

void
ActivityLoop::drainWake() noexcept {
   U64 count;
   ssize_t got = read( wakeFd_, &count, sizeof count );
   (void)got;
}

void
ActivityLoop::defer( Callback fn ) {
   std::lock_guard< std::mutex > guard( mutex_ );
   deferred_.push_back( std::move( fn ) );
   if ( waiting_ ) {
      wake();
   }
}

ActivityLoop::TimerId
ActivityLoop::timerIs( Clock::duration delay, Callback fn ) {
   Clock::time_point deadline = Clock::now() + delay;
   std::lock_guard< std::mutex > guard( mutex_ );
   TimerId id = ++lastTimerId_;
   timers_.emplace( id, std::make_pair( deadline, std::move( fn ) ) );
   deadlines_.emplace( deadline, id );
   if ( waiting_ ) {
      wake();
   }
   return id;
}

bool
ActivityLoop::timerDel( TimerId id ) {
   std::lock_guard< std::mutex > guard( mutex_ );
   auto found = timers_.find( id );
   if ( found == timers_.end() ) {
      return false;
   }
   deadlines_.erase( { found->second.first, id } );
   timers_.erase( found );
   return true;
}

void
ActivityLoop::fdReadableIs( int fd, Callback fn ) {
   KILN_ASSERT( fd >= 0 );
   std::lock_guard< std::mutex > guard( mutex_ );
   watches_[ fd ] = Watch{ std::make_shared< Callback >( std::move( fn ) ),
                           ++lastRegistration_ };
   if ( waiting_ ) {
      wake();
   }
}

bool
ActivityLoop::fdDel( int fd ) {
   std::lock_guard< std::mutex > guard( mutex_ );
   return watches_.erase( fd ) > 0;
}

void
ActivityLoop::stop() {
   stopFromSignal();
}

void
ActivityLoop::stopFromSignal() noexcept {
   int savedErrno = errno; // the interrupted code may be about to read it
   stopRequested_.store( true );
   wake();
   errno = savedErrno;
}

ActivityLoop::Turn
ActivityLoop::prepareTurn( Clock::duration timeout ) {
   Turn turn;
   turn.fds.push_back( pollfd{ wakeFd_, POLLIN, 0 } );
   turn.registrations.push_back( 0 );
   std::lock_guard< std::mutex > guard( mutex_ );
   for ( const auto & [ fd, watch ] : watches_ ) {
      turn.fds.push_back( pollfd{ fd, POLLIN, 0 } );
      turn.registrations.push_back( watch.registration );
   }
   turn.wait = timeout;
   if ( !deferred_.empty() || stopRequested_.load() ) {
      turn.wait = Clock::duration::zero();
   } else if ( !deadlines_.empty() ) {
      Clock::duration untilTimer = deadlines_.begin()->first - Clock::now();
      if ( untilTimer < Clock::duration::zero() ) {
         untilTimer = Clock::duration::zero();
      }
      if ( turn.wait < Clock::duration::zero() || untilTimer < turn.wait ) {
         turn.wait = untilTimer;
      }
   }
   waiting_ = true;
   return turn;
}

void
ActivityLoop::wait( Turn & turn ) {
   {
      UnlockAnchor anchor( lock_ );
      // A signal cuts the wait short (EINTR); the turn then runs what is due.
      if ( poll( turn.fds.data(), turn.fds.size(), pollTimeout( turn.wait ) ) < 0 ) {
         KILN_ASSERT_MSG( errno == EINTR, "ActivityLoop: poll failed" );
         for ( pollfd & p : turn.fds ) {
            p.revents = 0;
         }
      }
   }
   // The turn runs what was there when the wait ended; what callbacks add
   // waits for the next turn.
   std::lock_guard< std::mutex > guard( mutex_ );
   waiting_ = false;
   turn.newestTimer = lastTimerId_;
   turn.deferred = deferred_.size();
}

size_t
ActivityLoop::runReadable( const Turn & turn ) {
   size_t ran = 0;
   for ( size_t i = 1; i < turn.fds.size(); ++i ) {
      const pollfd & p = turn.fds[ i ];
      KILN_ASSERT_MSG( !( p.revents & POLLNVAL ),
                       "ActivityLoop: descriptor closed while registered" );
      if ( !( p.revents & ( POLLIN | POLLHUP | POLLERR ) ) ) {
         continue;
      }
      std::shared_ptr< Callback > callback;
      {
         std::lock_guard< std::mutex > guard( mutex_ );
         auto found = watches_.find( p.fd );
         // Skip descriptors dropped or registered anew since the poll.
         if ( found == watches_.end() ||
              found->second.registration != turn.registrations[ i ] ) {
            continue;
         }
         callback = found->second.callback;
      }
      ( *callback )();
      ++ran;
   }
   return ran;
}

size_t
ActivityLoop::runDueTimers( TimerId newestAtStart ) {
   Clock::time_point now = Clock::now();
   size_t ran = 0;
   for ( ;; ) {
      Callback callback;
      {
         std::lock_guard< std::mutex > guard( mutex_ );
         auto due = deadlines_.begin();
         while ( due != deadlines_.end() && due->first <= now &&
                 due->second > newestAtStart ) {
            ++due; // set by a callback of this turn: waits for the next
         }
         if ( due == deadlines_.end() || due->first > now ) {
            return ran;
         }
         auto timer = timers_.find( due->second );
         callback = std::move( timer->second.second );
         timers_.erase( timer );
         deadlines_.erase( due );
      }
      callback();
      ++ran;
   }
}

size_t
ActivityLoop::runDeferred( size_t count ) {
   size_t ran = 0;
   for ( ; ran < count; ++ran ) {
      Callback callback;
      {
         std::lock_guard< std::mutex > guard( mutex_ );
         if ( deferred_.empty() ) {
            break;
         }
         callback = std::move( deferred_.front() );
         deferred_.pop_front();
      }
      callback();
   }
   return ran;
}

size_t
ActivityLoop::runOnce( Clock::duration timeout ) {
   KILN_ASSERT_MSG( !running_, "ActivityLoop turns do not nest" );
   HoldLock hold( lock_ );
   running_ = true;
   struct Running {
      bool & flag;
      ~Running() { flag = false; }
   } running{ running_ };

   Turn turn = prepareTurn( timeout );
   wait( turn );
   if ( turn.fds[ 0 ].revents & POLLIN ) {
      drainWake();
   }
   size_t ran = runReadable( turn );
   ran += runDueTimers( turn.newestTimer );
   ran += runDeferred( turn.deferred );
   return ran;
}

void
ActivityLoop::run() {
   HoldLock hold( lock_ );
   while ( !stopRequested_.exchange( false ) ) {
      runOnce( Clock::duration( -1 ) );
   }
}

} // namespace Kiln
