// Cost of a trace point that is off, one that is on and written into the
// ring sink, and of a FastLog record.
#include <benchmark/benchmark.h>

#include <memory>

#include "platform/fastlog/FastLog.h"
#include "platform/fastlog/Trace.h"
#include "platform/fastlog/TraceSink.h"

namespace {

TRACE_CHANNEL( "FastLogBench" );

int evaluations = 0;

int
costlyArgument() {
   return ++evaluations;
}

void
disabledTrace( benchmark::State & state ) {
   FastLog::traceLevelsReset();
   U32 unit = 0;
   for ( auto _ : state ) {
      TRACE4( "Unit: " << unit << " group " << costlyArgument() );
      benchmark::DoNotOptimize( unit );
   }
   if ( evaluations != 0 ) {
      state.SkipWithError( "a disabled trace evaluated its arguments" );
   }
}
BENCHMARK( disabledTrace );

void
enabledTraceIntoRing( benchmark::State & state ) {
   auto previous = FastLog::traceSinkIs( std::make_shared< FastLog::RingSink >( 1024 ) );
   FastLog::traceLevelsIs( "FastLogBench", FastLog::TraceLevels::all() );
   U32 unit = 0;
   U32 group = 0x1000005;
   for ( auto _ : state ) {
      TRACE4( "Unit: " << unit << " group " << group );
      ++group;
   }
   FastLog::traceLevelsReset();
   FastLog::traceSinkIs( previous );
}
BENCHMARK( enabledTraceIntoRing );

void
fastLogRecord( benchmark::State & state ) {
   U32 unit = 0;
   U32 groupId = 0x1000005;
   U32 entryId = 0x64;
   for ( auto _ : state ) {
      FASTLOG( "fp entry create ", unit, groupId, entryId );
      ++entryId;
   }
}
BENCHMARK( fastLogRecord );

} // namespace

BENCHMARK_MAIN();
