// The sinks that come with the library.
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sstream>
#include <unistd.h>

#include "platform/fastlog/Clock.h"
#include "platform/fastlog/TraceSink.h"
#include "platform/fastlog/WriteAll.h"
#include "platform/kiln/Assert.h"

namespace FastLog {

std::string
traceLineText( const TraceRecord & record ) {
   std::string line = timestampText( record.nanos );
   line += ' ';
   line += record.channel;
   line += ' ';
   line += std::to_string( record.level );
   line += ' ';
   line += record.text;
   return line;
}

std::string
traceLineText( const TraceEntry & entry ) {
   return traceLineText(
      TraceRecord{ entry.nanos, entry.channel.c_str(), entry.level, entry.text } );
}

void
StderrSink::write( const TraceRecord & record ) {
   writeAll( STDERR_FILENO, traceLineText( record ) + '\n' );
}

std::shared_ptr< FileSink >
FileSink::open( const std::string & path, std::string & error ) {
   const int fd = ::open( path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644 );
   if ( fd < 0 ) {
      error = "cannot open trace file " + path + ": " + std::strerror( errno );
      return nullptr;
   }
   return std::shared_ptr< FileSink >( new FileSink( fd ) );
}

FileSink::~FileSink() {
   ::close( fd_ );
}

void
FileSink::write( const TraceRecord & record ) {
   writeAll( fd_, traceLineText( record ) + '\n' );
}

RingSink::RingSink( U32 capacity ) : slots_( capacity ) {
   KILN_ASSERT_MSG( capacity > 0, "a trace ring needs room for one line at least" );
}

void
RingSink::write( const TraceRecord & record ) {
   Slot & slot = slots_[ written_ % slots_.size() ];
   slot.nanos = record.nanos;
   slot.channel = record.channel;
   slot.level = record.level;
   slot.text.assign( record.text );
   ++written_;
}

std::vector< TraceEntry >
RingSink::linesHeld() const {
   const U64 held = std::min< U64 >( written_, slots_.size() );
   std::vector< TraceEntry > lines;
   lines.reserve( size_t( held ) );
   for ( U64 seq = written_ - held; seq < written_; ++seq ) {
      const Slot & slot = slots_[ seq % slots_.size() ];
      lines.push_back( TraceEntry{ slot.nanos, slot.channel, slot.level, slot.text } );
   }
   return lines;
}

std::vector< TraceEntry >
RingSink::lines() const {
   auto lock = writeLock();
   return linesHeld();
}

U64
RingSink::dropped() const {
   auto lock = writeLock();
   return written_ - std::min< U64 >( written_, slots_.size() );
}

void
RingSink::dump( std::ostream & out ) const {
   auto lock = writeLock();
   const U64 lost = written_ - std::min< U64 >( written_, slots_.size() );
   const std::vector< TraceEntry > lines = linesHeld();
   lock.unlock();
   if ( lost > 0 ) {
      out << "(" << lost << " earlier lines dropped)\n";
   }
   for ( const TraceEntry & line : lines ) {
      out << traceLineText( line ) << '\n';
   }
}

void
RingSink::dump( int fd ) const {
   std::ostringstream text;
   dump( text );
   writeAll( fd, text.str() );
}

void
RingSink::clear() {
   auto lock = writeLock();
   written_ = 0;
}

class TraceCapture::Sink : public TraceSink {
 public:
   void
   write( const TraceRecord & record ) override {
      lines_.push_back(
         TraceEntry{ record.nanos, record.channel, record.level, std::string( record.text ) } );
   }

   std::vector< TraceEntry >
   lines() const {
      auto lock = writeLock();
      return lines_;
   }

   void
   clear() {
      auto lock = writeLock();
      lines_.clear();
   }

 private:
   std::vector< TraceEntry > lines_;
};

TraceCapture::TraceCapture()
      : sink_( std::make_shared< Sink >() ), previous_( traceSinkIs( sink_ ) ) {}

TraceCapture::TraceCapture( std::string_view pattern, TraceLevels levels ) : TraceCapture() {
   levels_ = std::make_unique< TraceLevelsScope >( pattern, levels );
}

TraceCapture::~TraceCapture() {
   levels_.reset();
   traceSinkIs( previous_ );
}

std::vector< TraceEntry >
TraceCapture::lines() const {
   return sink_->lines();
}

std::vector< std::string >
TraceCapture::texts() const {
   std::vector< std::string > texts;
   for ( TraceEntry & line : sink_->lines() ) {
      texts.push_back( std::move( line.text ) );
   }
   return texts;
}

void
TraceCapture::clear() {
   sink_->clear();
}

} // namespace FastLog
