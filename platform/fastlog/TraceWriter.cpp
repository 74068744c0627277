// Building trace lines and handing them to the current sink.

#include "platform/fastlog/Clock.h"
#include "platform/fastlog/Trace.h"
#include "platform/fastlog/TraceSink.h"

namespace FastLog {

namespace {

std::mutex &
writeMutex() {
   static std::mutex * mutex = new std::mutex;  // outlives exit-time tracing
   return *mutex;
}

// Guarded by writeMutex().
std::shared_ptr< TraceSink > &
currentSink() {
   static auto * sink = new std::shared_ptr< TraceSink >( std::make_shared< StderrSink >() );
   return *sink;
}

} // namespace

namespace {

// Initial-exec: the library is loaded with the program, and the general
// model's lookup would be a good part of a trace line's cost.
thread_local TraceStream threadStream __attribute__( ( tls_model( "initial-exec" ) ) );

} // namespace

TraceWriter::TraceWriter( const TraceChannel & channel, U32 level )
      : channel_( channel ), level_( level ), stream_( &threadStream ) {
   if ( stream_->busy_ ) {
      nested_ = std::make_unique< TraceStream >();
      stream_ = nested_.get();
   }
   stream_->busy_ = true;
   stream_->reset();
}

TraceWriter::~TraceWriter() {
   stream_->busy_ = false;
}

void
TraceWriter::commit() {
   const TraceRecord record{ nowNanos(), channel_.name(), level_, stream_->text() };
   std::lock_guard< std::mutex > lock( writeMutex() );
   currentSink()->write( record );
}

std::unique_lock< std::mutex >
TraceSink::writeLock() {
   return std::unique_lock< std::mutex >( writeMutex() );
}

std::shared_ptr< TraceSink >
traceSinkIs( std::shared_ptr< TraceSink > sink ) {
   if ( !sink ) {
      sink = std::make_shared< StderrSink >();
   }
   std::lock_guard< std::mutex > lock( writeMutex() );
   currentSink().swap( sink );
   return sink;
}

std::shared_ptr< TraceSink >
traceSink() {
   std::lock_guard< std::mutex > lock( writeMutex() );
   return currentSink();
}

} // namespace FastLog
