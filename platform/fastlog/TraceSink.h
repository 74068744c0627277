// Where trace lines go. One sink is current at a time; standard error
// unless another is installed.
//
// A line written to standard error or a file reads
//   "<YYYY-MM-DD HH:MM:SS.uuuuuu> <channel> <level> <text>"
// e.g. "2024-05-01 12:34:56.123456 TesselTcam 4 Unit: 0 group 5".
//
// Sinks are called under the process-wide trace write lock, one line at a
// time and never concurrently, so a sink's write needs no locking of its
// own; a sink must not trace.
#pragma once

#include <iosfwd>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "platform/fastlog/TraceConfig.h"
#include "platform/kiln/Types.h"

namespace FastLog {

// One line as handed to a sink; the views live for the call only, except
// `channel`, which lives as long as the process.
struct TraceRecord {
   U64 nanos;  // wall clock, nanoseconds since the epoch
   const char * channel;
   U32 level;
   std::string_view text;
};

// A line as kept by the ring and capture sinks.
struct TraceEntry {
   U64 nanos;
   std::string channel;
   U32 level;
   std::string text;
   bool operator==( const TraceEntry & ) const = default;
};

// "<timestamp> <channel> <level> <text>", without a newline.
std::string traceLineText( const TraceRecord & record );
std::string traceLineText( const TraceEntry & entry );

class TraceSink {
 public:
   virtual ~TraceSink() = default;
   virtual void write( const TraceRecord & record ) = 0;

 protected:
   // For sinks read by other threads: hold it while reading what write() keeps.
   static std::unique_lock< std::mutex > writeLock();
};

// Installs `sink` (nullptr: standard error) and returns the one it replaces.
std::shared_ptr< TraceSink > traceSinkIs( std::shared_ptr< TraceSink > sink );
std::shared_ptr< TraceSink > traceSink();

// Writes each line with one write(2) on descriptor 2.
class StderrSink : public TraceSink {
 public:
   void write( const TraceRecord & record ) override;
};

// Appends lines to a file, one write(2) per line, so nothing is lost in a
// buffer when the process dies.
class FileSink : public TraceSink {
 public:
   // Opens (creating, appending) `path`; on failure returns nullptr and sets
   // `error` to "cannot open trace file <path>: <reason>".
   static std::shared_ptr< FileSink > open( const std::string & path, std::string & error );
   ~FileSink() override;
   void write( const TraceRecord & record ) override;

 private:
   explicit FileSink( int fd ) : fd_( fd ) {}
   int fd_;
};

// Keeps the last `capacity` lines in memory for a running agent to dump.
// Line storage is reused, so a full ring writes without allocating.
class RingSink : public TraceSink {
 public:
   explicit RingSink( U32 capacity );
   void write( const TraceRecord & record ) override;

   U32 capacity() const { return U32( slots_.size() ); }
   // Lines held, oldest first.
   std::vector< TraceEntry > lines() const;
   // Lines written over because the ring was full, since creation or clear().
   U64 dropped() const;
   // One formatted line each, oldest first, preceded by
   // "(<n> earlier lines dropped)" when lines were lost.
   void dump( std::ostream & out ) const;
   void dump( int fd ) const;
   void clear();

 private:
   struct Slot {
      U64 nanos = 0;
      const char * channel = "";
      U32 level = 0;
      std::string text;
   };
   // Expects the write lock held.
   std::vector< TraceEntry > linesHeld() const;

   std::vector< Slot > slots_;
   U64 written_ = 0;
};

// For tests: installs a sink that keeps every line for its lifetime, then
// puts the previous sink back. The second form also turns levels on for its
// lifetime (TraceLevelsScope).
class TraceCapture {
 public:
   TraceCapture();
   TraceCapture( std::string_view pattern, TraceLevels levels );
   ~TraceCapture();
   TraceCapture( const TraceCapture & ) = delete;
   TraceCapture & operator=( const TraceCapture & ) = delete;

   std::vector< TraceEntry > lines() const;
   // The bare texts, in order.
   std::vector< std::string > texts() const;
   void clear();

   class Sink;

 private:
   std::shared_ptr< Sink > sink_;
   std::shared_ptr< TraceSink > previous_;
   std::unique_ptr< TraceLevelsScope > levels_;
};

} // namespace FastLog
