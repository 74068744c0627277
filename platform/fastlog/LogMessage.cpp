// Writing and counting named log messages.
#include <map>
#include <mutex>

#include "platform/fastlog/Clock.h"
#include "platform/fastlog/LogMessage.h"
#include "platform/fastlog/WriteAll.h"

#include <unistd.h>

namespace FastLog {

namespace {

struct LogState {
   std::mutex mutex;
   std::shared_ptr< LogSink > sink = std::make_shared< FdLogSink >( STDERR_FILENO );
   std::map< std::string, U64, std::less<> > counts;
};

LogState &
state() {
   static LogState * state = new LogState;  // outlives exit-time messages
   return *state;
}

} // namespace

const char *
severityWord( U32 severity ) {
   static const char * const words[] = { "emergency", "alert",  "critical", "error",
                                         "warning",   "notice", "info",     "debug" };
   return severity < 8 ? words[ severity ] : "unknown";
}

std::string
logLineText( const LogRecord & record ) {
   std::string line = timestampText( record.nanos );
   line += ' ';
   line += record.def.name;
   line += " (" + std::to_string( record.def.severity ) + ' ';
   line += severityWord( record.def.severity );
   line += "): ";
   line += record.text;
   return line;
}

void
FdLogSink::write( const LogRecord & record ) {
   writeAll( fd_, logLineText( record ) + '\n' );
}

std::shared_ptr< LogSink >
logSinkIs( std::shared_ptr< LogSink > sink ) {
   if ( !sink ) {
      sink = std::make_shared< FdLogSink >( STDERR_FILENO );
   }
   std::lock_guard< std::mutex > lock( state().mutex );
   state().sink.swap( sink );
   return sink;
}

std::string
fillPlaceholders( std::string_view text, const std::vector< std::string > & values ) {
   std::string filled;
   size_t next = 0;
   for ( size_t i = 0; i < text.size(); ++i ) {
      if ( text[ i ] == '%' && i + 1 < text.size() && text[ i + 1 ] == 's' ) {
         KILN_ASSERT_MSG( next < values.size(), "log message has more %s than values" );
         filled += values[ next++ ];
         ++i;
      } else if ( text[ i ] == '%' && i + 1 < text.size() && text[ i + 1 ] == '%' ) {
         filled += '%';
         ++i;
      } else {
         filled += text[ i ];
      }
   }
   return filled;
}

void
logMessageWrite( const LogMessageDef & def, std::string_view text ) {
   const LogRecord record{ nowNanos(), def, text };
   std::lock_guard< std::mutex > lock( state().mutex );
   auto count = state().counts.try_emplace( def.name, 0 ).first;
   ++count->second;
   state().sink->write( record );
}

U64
logMessageCount( std::string_view name ) {
   std::lock_guard< std::mutex > lock( state().mutex );
   auto count = state().counts.find( name );
   return count == state().counts.end() ? 0 : count->second;
}

void
logMessageCountsReset() {
   std::lock_guard< std::mutex > lock( state().mutex );
   state().counts.clear();
}

class LogCapture::Sink : public LogSink {
 public:
   void
   write( const LogRecord & record ) override {
      messages.push_back( Message{ record.def.name, record.def.severity,
                                   std::string( record.text ), logLineText( record ) } );
   }

   std::vector< Message > messages;  // guarded by the log lock
};

LogCapture::LogCapture()
      : sink_( std::make_shared< Sink >() ), previous_( logSinkIs( sink_ ) ) {}

LogCapture::~LogCapture() {
   logSinkIs( previous_ );
}

std::vector< LogCapture::Message >
LogCapture::messages() const {
   std::lock_guard< std::mutex > lock( state().mutex );
   return sink_->messages;
}

} // namespace FastLog
