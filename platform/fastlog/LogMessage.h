// Named log messages: the agent's log lines that operators read.
//
//   constexpr FastLog::LogMessageDef udfHwResourceFull{
//      "TESSEL_UDF_HW_RESOURCE_FULL", 3,
//      "The switch is unable to program UDF due to insufficient hardware resources.",
//      "Reconfigure other ACLs or features that use UDF to free up UDF hardware resources." };
//   FastLog::logMessage( udfHwResourceFull );
//
// A message's text may hold "%s" placeholders ("%%" writes "%"), filled in
// order by the arguments of logMessage, each written with operator<<.
//
// One line per message goes to the log sink, standard error unless
// redirected:
//   "<YYYY-MM-DD HH:MM:SS.uuuuuu> <NAME> (<severity> <severity word>): <text>"
//   e.g. "... TESSEL_UDF_HW_RESOURCE_FULL (3 error): The switch is unable ..."
// Severities follow the usual system-log scale: 0 emergency, 1 alert,
// 2 critical, 3 error, 4 warning, 5 notice, 6 info, 7 debug.
//
// Every message is counted per name, whatever the sink. Thread-safe.
#pragma once

#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "platform/kiln/Assert.h"
#include "platform/kiln/Types.h"

namespace FastLog {

// Checked when compiled: a name of upper-case letters, digits and "_"
// starting with a letter, a severity 0-7 and a text. A bad definition does
// not compile.
struct LogMessageDef {
   consteval LogMessageDef( const char * name, U32 severity, const char * text,
                            const char * advice )
         : name( name ), severity( severity ), text( text ), advice( advice ),
           placeholders( countPlaceholders( text ) ) {
      if ( !validName( name ) ) {
         throw "log message names are upper case: letters, digits and _";
      }
      if ( severity > 7 ) {
         throw "log message severities are 0-7";
      }
      if ( text[ 0 ] == '\0' ) {
         throw "a log message needs a text";
      }
   }

   const char * name;
   U32 severity;
   const char * text;
   const char * advice;
   U32 placeholders;  // "%s" in text

 private:
   static consteval bool
   validName( const char * name ) {
      if ( !( name[ 0 ] >= 'A' && name[ 0 ] <= 'Z' ) ) {
         return false;
      }
      for ( const char * c = name; *c; ++c ) {
         const bool ok = ( *c >= 'A' && *c <= 'Z' ) || ( *c >= '0' && *c <= '9' ) || *c == '_';
         if ( !ok ) {
            return false;
         }
      }
      return true;
   }

   static consteval U32
   countPlaceholders( const char * text ) {
      U32 count = 0;
      for ( const char * c = text; *c; ++c ) {
         if ( c[ 0 ] == '%' && ( c[ 1 ] == 's' || c[ 1 ] == '%' ) ) {
            count += c[ 1 ] == 's';
            ++c;
         } else if ( c[ 0 ] == '%' ) {
            throw "a log message text uses only %s and %%";
         }
      }
      return count;
   }
};

// "error" for 3 and so on.
const char * severityWord( U32 severity );

// One message as handed to a log sink; `text` has its placeholders filled.
struct LogRecord {
   U64 nanos;
   const LogMessageDef & def;
   std::string_view text;
};

// The line written for a record, without a newline.
std::string logLineText( const LogRecord & record );

class LogSink {
 public:
   virtual ~LogSink() = default;
   // Called under the log lock, one message at a time.
   virtual void write( const LogRecord & record ) = 0;
};

// Writes one line per message to a descriptor it does not own.
class FdLogSink : public LogSink {
 public:
   explicit FdLogSink( int fd ) : fd_( fd ) {}
   void write( const LogRecord & record ) override;

 private:
   int fd_;
};

// Installs `sink` (nullptr: standard error) and returns the one it replaces.
std::shared_ptr< LogSink > logSinkIs( std::shared_ptr< LogSink > sink );

// Writes a message whose placeholders are already filled; logMessage below
// is the usual way in.
void logMessageWrite( const LogMessageDef & def, std::string_view text );

// `text` with each "%s" replaced by the next of `values` and "%%" by "%".
std::string fillPlaceholders( std::string_view text, const std::vector< std::string > & values );

template< typename T >
std::string
logArgumentText( const T & value ) {
   std::ostringstream text;
   text << value;
   return text.str();
}

// Writes `def` with its placeholders filled by `args`. The number of
// arguments must equal the number of "%s" (asserted).
template< typename... Args >
void
logMessage( const LogMessageDef & def, const Args &... args ) {
   KILN_ASSERT_MSG( sizeof...( Args ) == def.placeholders,
                    "log message arguments do not match its %s placeholders" );
   if constexpr ( sizeof...( Args ) == 0 ) {
      logMessageWrite( def, fillPlaceholders( def.text, {} ) );
   } else {
      logMessageWrite( def, fillPlaceholders( def.text, { logArgumentText( args )... } ) );
   }
}

// Messages of this name written since start or the last reset.
U64 logMessageCount( std::string_view name );
void logMessageCountsReset();

// For tests: keeps the messages written during its lifetime instead of
// passing them on, then puts the previous sink back.
class LogCapture {
 public:
   struct Message {
      std::string name;
      U32 severity;
      std::string text;
      std::string line;  // as the stderr sink writes it
   };

   LogCapture();
   ~LogCapture();
   LogCapture( const LogCapture & ) = delete;
   LogCapture & operator=( const LogCapture & ) = delete;

   std::vector< Message > messages() const;

   class Sink;

 private:
   std::shared_ptr< Sink > sink_;
   std::shared_ptr< LogSink > previous_;
};

} // namespace FastLog
