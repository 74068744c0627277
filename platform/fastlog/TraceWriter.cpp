// Building trace lines and handing them to the current sink.
#include <algorithm>
#include <cstring>
#include <ostream>
#include <streambuf>

#include "platform/fastlog/Clock.h"
#include "platform/fastlog/Trace.h"
#include "platform/fastlog/TraceSink.h"

namespace FastLog {

namespace {

// A stream buffer whose storage is kept from line to line, so building a
// line allocates only when it is longer than any before it on the thread.
class LineBuffer : public std::streambuf {
 public:
   LineBuffer() : storage_( 256, '\0' ) { reset(); }

   void reset() { setp( storage_.data(), storage_.data() + storage_.size() ); }
   std::string_view text() const { return { pbase(), size_t( pptr() - pbase() ) }; }

 protected:
   int_type
   overflow( int_type c ) override {
      if ( traits_type::eq_int_type( c, traits_type::eof() ) ) {
         return traits_type::not_eof( c );
      }
      grow( 1 );
      *pptr() = traits_type::to_char_type( c );
      pbump( 1 );
      return c;
   }

   std::streamsize
   xsputn( const char * text, std::streamsize count ) override {
      if ( epptr() - pptr() < count ) {
         grow( size_t( count ) );
      }
      std::memcpy( pptr(), text, size_t( count ) );
      pbump( int( count ) );
      return count;
   }

 private:
   void
   grow( size_t more ) {
      const size_t used = size_t( pptr() - pbase() );
      storage_.resize( std::max( storage_.size() * 2, used + more ) );
      setp( storage_.data(), storage_.data() + storage_.size() );
      pbump( int( used ) );
   }

   std::string storage_;
};

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

struct TraceWriter::LineStream {
   LineBuffer buffer;
   std::ostream stream{ &buffer };
   bool busy = false;

   // A line starts with the stream's default formatting, whatever the
   // previous line on the thread left behind (std::hex and the like).
   void
   reset() {
      buffer.reset();
      stream.clear();
      stream.flags( std::ios_base::dec | std::ios_base::skipws );
      stream.width( 0 );
      stream.precision( 6 );
      stream.fill( ' ' );
   }
};

namespace {

thread_local TraceWriter::LineStream threadLine;

} // namespace

TraceWriter::TraceWriter( const TraceChannel & channel, U32 level )
      : channel_( channel ), level_( level ), line_( &threadLine ) {
   if ( line_->busy ) {
      nested_ = std::make_unique< LineStream >();
      line_ = nested_.get();
   }
   line_->busy = true;
   line_->reset();
   stream_ = &line_->stream;
}

TraceWriter::~TraceWriter() {
   line_->busy = false;
}

void
TraceWriter::commit() {
   const TraceRecord record{ nowNanos(), channel_.name(), level_, line_->buffer.text() };
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
