// The activity loop: runs all of an agent's work on one thread, holding the
// activity lock, and releases the lock only while it waits for work.
//
//    Kiln::ActivityLoop loop;
//    loop.fdReadableIs( sock, [ & ] { serve( sock ); } );
//    loop.timerIs( std::chrono::seconds( 1 ), [ & ] { poll(); } );
//    loop.run();                      // until loop.stop()
//
// Work comes from three sources, run in this order in each turn: readable
// descriptors, timers that are due, deferred calls. Work added by a callback
// (a deferred call, a timer with no delay) runs in a later turn, never in
// the turn that added it, so a callback that re-arms itself cannot starve
// the rest.
//
// Registration (defer, timers, descriptors, stop) is thread-safe and wakes
// a waiting loop; callbacks may use all of it. runOnce() and run() belong to
// one thread at a time and do not nest. An exception thrown by a callback
// leaves runOnce(); work not yet run stays queued.
#pragma once

#include "platform/kiln/ActivityLock.h"
#include "platform/kiln/Types.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <utility>

namespace Kiln {

class ActivityLoop {
 public:
   typedef std::function< void() > Callback;
   typedef std::chrono::steady_clock Clock;
   typedef U64 TimerId;

   // The loop holds `lock` while it runs callbacks (the process's activity
   // lock by default). Aborts when no wake-up descriptor can be made.
   explicit ActivityLoop( ActivityLock & lock = ActivityUnlockAnchor::lock() );
   // Must not be running. Pending work is dropped without being run.
   ~ActivityLoop();
   ActivityLoop( const ActivityLoop & ) = delete;
   ActivityLoop & operator=( const ActivityLoop & ) = delete;

   // Runs `fn` in the next turn, after the calls deferred before it.
   void defer( Callback fn );

   // Runs `fn` once, `delay` from now (no earlier). Returns its id, never 0.
   TimerId timerIs( Clock::duration delay, Callback fn );
   // Cancels a timer; returns whether it was still pending.
   bool timerDel( TimerId id );

   // Calls `fn` in every turn in which `fd` is readable, at end of file or in
   // error, until fdDel( fd ). Replaces an earlier callback for the same fd.
   // The caller keeps the descriptor open while it is registered (closing
   // it first is a programming error and aborts the loop).
   void fdReadableIs( int fd, Callback fn );
   // Forgets `fd`; returns whether it was registered. Does not close it.
   bool fdDel( int fd );

   // One turn: waits until there is work or `timeout` has passed (a negative
   // timeout waits without limit), with the lock released while waiting,
   // then runs the work that is ready. Takes the lock for the turn when the
   // calling thread does not hold it already. Returns the number of
   // callbacks run. Does not wait while a stop request is pending (run()
   // consumes it).
   size_t runOnce( Clock::duration timeout );
   // Turns until stop is requested, holding the lock throughout (except while
   // waiting). The request is consumed: run() can be called again later,
   // and a request made before run() ends it at once.
   void run();

   // Ends run() after the current turn. Any thread.
   void stop();
   // The same from a signal handler: async-signal-safe.
   void stopFromSignal() noexcept;

 private:
   struct Watch {
      std::shared_ptr< Callback > callback;
      U64 registration; // tells a re-registered descriptor from the old one
   };
   struct Turn;

   void wake() noexcept;
   void drainWake() noexcept;
   Turn prepareTurn( Clock::duration timeout );
   void wait( Turn & turn );
   size_t runReadable( const Turn & turn );
   size_t runDueTimers( TimerId newestAtStart );
   size_t runDeferred( size_t count );

   ActivityLock & lock_;
   int wakeFd_;
   std::atomic< bool > stopRequested_{ false };
   bool running_ = false;

   // What callers register; guarded by mutex_, which is never held while a
   // callback runs.
   std::mutex mutex_;
   bool waiting_ = false;
   std::deque< Callback > deferred_;
   std::map< TimerId, std::pair< Clock::time_point, Callback > > timers_;
   std::set< std::pair< Clock::time_point, TimerId > > deadlines_;
   TimerId lastTimerId_ = 0;
   std::map< int, Watch > watches_;
   U64 lastRegistration_ = 0;
};

} // namespace Kiln
