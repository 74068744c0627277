// Latency counters shared by the round-trip benchmarks: median, 99th
// percentile and maximum of the samples, in microseconds.
#pragma once

#include <algorithm>
#include <benchmark/benchmark.h>
#include <vector>

// The middle value (the upper one of an even count); values must not be empty.
inline double
median( std::vector< double > values ) {
   std::sort( values.begin(), values.end() );
   return values[ values.size() / 2 ];
}

inline void
percentiles( benchmark::State & state, std::vector< double > & micros ) {
   if ( micros.empty() ) {
      return;
   }
   std::sort( micros.begin(), micros.end() );
   state.counters[ "median_us" ] = micros[ micros.size() / 2 ];
   state.counters[ "p99_us" ] = micros[ micros.size() * 99 / 100 ];
   state.counters[ "max_us" ] = micros.back();
}
