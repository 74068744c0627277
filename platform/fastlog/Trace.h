// Trace channels: named channels with levels 0-9, written with stream
// syntax at the call site.
//
//   TRACE_CHANNEL( "TesselTcam" );                      // once per source file
//   TRACE4( "Unit: " << unit << " group " << group );  // TRACE0 .. TRACE9
//
//   static FastLog::TraceChannel bcmFpCmdTrace( "bcmFpCmd" );  // another channel
//   TRACE_CH( bcmFpCmdTrace, 4, callText << " (rc:" << rc << ")" );
//
//   if ( TRACE_ON( 9 ) ) { ... expensive preparation ... }
//   if ( TRACE_CH_ON( bcmFpCmdTrace, 8 ) ) { ... }
//
// A trace point whose level is off costs one load and one branch and
// evaluates none of its arguments. Levels are configured at run time
// (TraceConfig.h); lines go to the current sink (TraceSink.h), standard
// error by default.
//
// TRACE_CHANNEL defines a file-local object, so it belongs in source files;
// code in headers traces through TRACE_CH with an explicit channel.
#pragma once

#include <atomic>
#include <memory>

#include "platform/fastlog/TraceConfig.h"
#include "platform/fastlog/TraceStream.h"
#include "platform/kiln/Types.h"

namespace FastLog {

// A handle on a named channel. Handles of one name share its levels; each
// handle keeps its own copy of the level mask so that testing a level is a
// single load. Construct at namespace scope (static storage); not copyable.
class TraceChannel {
 public:
   explicit TraceChannel( const char * name );
   ~TraceChannel();
   TraceChannel( const TraceChannel & ) = delete;
   TraceChannel & operator=( const TraceChannel & ) = delete;

   bool
   enabled( U32 level ) const {
      return levels_.load( std::memory_order_relaxed ) & ( 1u << level );
   }
   TraceLevels levels() const {
      return TraceLevels::fromMask( levels_.load( std::memory_order_relaxed ) );
   }
   // The channel's name; the text lives as long as the process.
   const char * name() const { return name_; }

 private:
   friend class TraceRegistry;
   std::atomic< U32 > levels_;
   const char * name_;
};

// Builds one trace line in a per-thread stream and hands it to the sink.
// Used by the macros; a line whose building throws is dropped. Cold: the
// compiler moves the line's building out of the caller's hot code, where
// trace points that are off would otherwise take cache room.
class TraceWriter {
 public:
   [[gnu::cold]] TraceWriter( const TraceChannel & channel, U32 level );
   ~TraceWriter();
   TraceWriter( const TraceWriter & ) = delete;
   TraceWriter & operator=( const TraceWriter & ) = delete;

   TraceStream & stream() { return *stream_; }
   void commit();

 private:
   const TraceChannel & channel_;
   U32 level_;
   TraceStream * stream_;
   std::unique_ptr< TraceStream > nested_;  // when a streamed value traces itself
};

} // namespace FastLog

// The file's channel object. A unity build compiles several files as one, so
// the build defines TESSEL_UNITY_ID per file and each file's channel gets a
// name of its own.
#define FASTLOG_PASTE_( a, b ) a##b
#define FASTLOG_PASTE( a, b ) FASTLOG_PASTE_( a, b )
#ifdef TESSEL_UNITY_ID
#define TRACE_FILE_CHANNEL FASTLOG_PASTE( fastLogTraceChannel_, TESSEL_UNITY_ID )
#else
#define TRACE_FILE_CHANNEL fastLogTraceChannel_
#endif

#define TRACE_CHANNEL( name ) static ::FastLog::TraceChannel TRACE_FILE_CHANNEL( name )

#define TRACE_CH_ON( channel, level )                                              \
   ( __builtin_expect( ( channel ).enabled( level ), 0 ) )

#define TRACE_CH( channel, level, ... )                                            \
   do {                                                                            \
      static_assert( ( level ) >= 0 && ( level ) <= 9, "trace levels are 0-9" );   \
      if ( TRACE_CH_ON( channel, level ) ) {                                       \
         ::FastLog::TraceWriter fastLogWriter_( ( channel ), ( level ) );          \
         fastLogWriter_.stream() << __VA_ARGS__;                                   \
         fastLogWriter_.commit();                                                  \
      }                                                                            \
   } while ( 0 )

#define TRACE_ON( level ) TRACE_CH_ON( TRACE_FILE_CHANNEL, level )
#define TRACE0( ... ) TRACE_CH( TRACE_FILE_CHANNEL, 0, __VA_ARGS__ )
#define TRACE1( ... ) TRACE_CH( TRACE_FILE_CHANNEL, 1, __VA_ARGS__ )
#define TRACE2( ... ) TRACE_CH( TRACE_FILE_CHANNEL, 2, __VA_ARGS__ )
#define TRACE3( ... ) TRACE_CH( TRACE_FILE_CHANNEL, 3, __VA_ARGS__ )
#define TRACE4( ... ) TRACE_CH( TRACE_FILE_CHANNEL, 4, __VA_ARGS__ )
#define TRACE5( ... ) TRACE_CH( TRACE_FILE_CHANNEL, 5, __VA_ARGS__ )
#define TRACE6( ... ) TRACE_CH( TRACE_FILE_CHANNEL, 6, __VA_ARGS__ )
#define TRACE7( ... ) TRACE_CH( TRACE_FILE_CHANNEL, 7, __VA_ARGS__ )
#define TRACE8( ... ) TRACE_CH( TRACE_FILE_CHANNEL, 8, __VA_ARGS__ )
#define TRACE9( ... ) TRACE_CH( TRACE_FILE_CHANNEL, 9, __VA_ARGS__ )
