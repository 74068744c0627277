#include "platform/fastlog/Clock.h"

#include <atomic>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <mutex>
#include <type_traits>

#if defined( __x86_64__ ) || defined( __i386__ )
#include <x86intrin.h>
#define FASTLOG_CYCLE_CLOCK 1
#endif

namespace FastLog {

U64
systemNanos() {
   timespec now;
   clock_gettime( CLOCK_REALTIME, &now );
   return U64( now.tv_sec ) * 1000000000u + U64( now.tv_nsec );
}

#ifdef FASTLOG_CYCLE_CLOCK

namespace {

constexpr U64 recalibrateNanos = 100000000;  // 100 ms
constexpr U64 firstScaleNanos = 10000000;    // a scale needs 10 ms to be exact enough
constexpr U64 maxPairCycles = 20000;         // a few microseconds: the thread was not held up

// Only where the kernel itself keeps time with the counter is it known to
// run at one rate on every CPU.
bool
counterTrusted() {
   std::FILE * file =
      std::fopen( "/sys/devices/system/clocksource/clocksource0/current_clocksource", "r" );
   if ( file == nullptr ) {
      return false;
   }
   char name[ 32 ] = {};
   const bool read = std::fgets( name, sizeof( name ), file ) != nullptr;
   std::fclose( file );
   return read && std::strcmp( name, "tsc\n" ) == 0;
}

// Reads the counter and the system clock together, the counter taken on
// both sides. False when the two counter readings lie far apart: the thread
// was held up, and the pair would skew the scale.
bool
readPair( U64 & cycles, U64 & nanos ) {
   const U64 before = __rdtsc();
   nanos = systemNanos();
   const U64 after = __rdtsc();
   cycles = before + ( after - before ) / 2;
   return after - before < maxPairCycles;
}

// base + ( counter - baseCycles ) * nsPerCycle, published under a
// sequence count so readers never mix two calibrations.
class CycleClock {
 public:
   U64
   now() {
      while ( true ) {
         const U32 version = version_.load( std::memory_order_acquire );
         const U64 baseCycles = baseCycles_.load( std::memory_order_relaxed );
         const U64 baseNanos = baseNanos_.load( std::memory_order_relaxed );
         const double nsPerCycle = nsPerCycle_.load( std::memory_order_relaxed );
         const U64 limit = limitCycles_.load( std::memory_order_relaxed );
         std::atomic_thread_fence( std::memory_order_acquire );
         if ( version_.load( std::memory_order_relaxed ) != version ) {
            continue;
         }
         const U64 cycles = __rdtsc();
         const U64 elapsed = cycles - baseCycles;
         if ( version & 1 || nsPerCycle == 0 || elapsed > limit ) {
            return calibrate();
         }
         // elapsed is below the limit: signed conversions, a single
         // instruction each way
         return baseNanos + U64( S64( double( S64( elapsed ) ) * nsPerCycle ) );
      }
   }

 private:
   // Takes the system clock; republishes the scale when enough time has
   // passed since the last base. One thread at a time; others just read
   // the system clock meanwhile.
   U64
   calibrate() {
      std::unique_lock< std::mutex > lock( mutex_, std::try_to_lock );
      U64 cycles;
      U64 nanos;
      if ( !readPair( cycles, nanos ) || !lock.owns_lock() ) {
         return nanos;
      }
      if ( anchorCycles_ == 0 || nanos < anchorNanos_ || cycles <= anchorCycles_ ) {
         anchorCycles_ = cycles;
         anchorNanos_ = nanos;
         return nanos;
      }
      if ( nanos - anchorNanos_ < firstScaleNanos ) {
         return nanos;
      }
      const double nsPerCycle = double( nanos - anchorNanos_ ) / double( cycles - anchorCycles_ );
      version_.fetch_add( 1, std::memory_order_relaxed );
      std::atomic_thread_fence( std::memory_order_release );
      baseCycles_.store( cycles, std::memory_order_relaxed );
      baseNanos_.store( nanos, std::memory_order_relaxed );
      nsPerCycle_.store( nsPerCycle, std::memory_order_relaxed );
      limitCycles_.store( U64( double( recalibrateNanos ) / nsPerCycle ),
                          std::memory_order_relaxed );
      version_.fetch_add( 1, std::memory_order_release );
      anchorCycles_ = cycles;
      anchorNanos_ = nanos;
      return nanos;
   }

   std::atomic< U32 > version_{ 0 };
   std::atomic< U64 > baseCycles_{ 0 };
   std::atomic< U64 > baseNanos_{ 0 };
   std::atomic< double > nsPerCycle_{ 0 };
   std::atomic< U64 > limitCycles_{ 0 };
   std::mutex mutex_;
   U64 anchorCycles_ = 0;  // guarded by mutex_: where the next scale is measured from
   U64 anchorNanos_ = 0;
};

const bool useCounter = counterTrusted();

// Constant-initialised and never destroyed: usable by static constructors
// and exit-time traces alike, and no guard to test on every read.
constinit CycleClock cycleClock;
static_assert( std::is_trivially_destructible_v< CycleClock > );

} // namespace

U64
nowNanos() {
   return useCounter ? cycleClock.now() : systemNanos();
}

#else

U64
nowNanos() {
   return systemNanos();
}

#endif

std::string
timestampText( U64 nanos ) {
   const time_t seconds = time_t( nanos / 1000000000u );
   const U32 micros = U32( ( nanos % 1000000000u ) / 1000u );
   tm local;
   localtime_r( &seconds, &local );
   char text[ 48 ];
   std::snprintf( text, sizeof( text ), "%04d-%02d-%02d %02d:%02d:%02d.%06u",
                  local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                  local.tm_min, local.tm_sec, unsigned( micros ) );
   return text;
}

} // namespace FastLog
