// The agent's event history: a bounded log of notable moments ("Programming
// TCAMs Start"), each stamped with the wall-clock time, its writer's source
// name and a sequence number.
//
//    Kiln::Ptr< Agent::EventHistory > history = new Agent::EventHistory( "events" );
//    Kiln::Ptr< Agent::EventHistoryWriter > writer =
//       new Agent::EventHistoryWriter( history, "TesselTcamFlashDownloadSm" );
//    writer->addEvent( "Programming TCAMs Start" );
//    Agent::EventHistoryReader( history ).texts();   // { "Programming TCAMs Start" }
//
// The history keeps the newest `capacity` records; older ones are dropped
// and counted (dropped()), so a reader can tell that it missed some.
// Sequence numbers start at 1 and never repeat. Observers get
// onEvent( sequence ) after each record is added.
// Threads: the activity thread only.
#pragma once

#include "platform/kiln/Entity.h"
#include "platform/kiln/Ptr.h"
#include "platform/kiln/String.h"
#include "platform/kiln/Types.h"

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace Agent {

struct EventRecord {
   U64 sequence = 0;
   std::chrono::system_clock::time_point time;
   Kiln::String source;
   Kiln::String text;

   // "2026-11-22 01:40:27.123456 <source>: <text>" (UTC, microseconds).
   std::string str() const;
   bool operator==( const EventRecord & ) const = default;
};

class EventHistory : public Kiln::Entity {
 public:
   typedef std::function< std::chrono::system_clock::time_point() > Clock;
   static constexpr size_t defaultCapacity = 1024;

   class NotifieeConst : public Kiln::Notifiee< EventHistory > {
    public:
      virtual void onEvent( U64 /* sequence */ ) {}
   };

   // A capacity of 0 is a programming error ("event history capacity must
   // be above 0").
   explicit EventHistory( const Kiln::Name & name, size_t capacity = defaultCapacity );

   // The time source (the system clock by default); tests fix it.
   void clockIs( Clock clock );

   size_t capacity() const { return capacity_; }
   // Records kept, oldest first.
   const std::deque< EventRecord > & records() const { return records_; }
   // Records dropped to stay within the capacity.
   U64 dropped() const { return dropped_; }
   // The sequence number of the newest record; 0 before the first.
   U64 lastSequence() const { return lastSequence_; }

   // Appends one record and returns its sequence number. Writers call it
   // through EventHistoryWriter.
   U64 eventIs( const Kiln::String & source, const Kiln::String & text );

 private:
   size_t capacity_;
   Clock clock_;
   std::deque< EventRecord > records_;
   U64 dropped_ = 0;
   U64 lastSequence_ = 0;
};

// What a feature holds to add events under its own source name.
class EventHistoryWriter : public Kiln::PtrInterface {
 public:
   // `history` must not be null.
   EventHistoryWriter( const Kiln::Ptr< EventHistory > & history, const Kiln::String & source );

   const Kiln::String & source() const { return source_; }
   const Kiln::Ptr< EventHistory > & history() const { return history_; }
   // Adds `text` now; returns the record's sequence number.
   U64 addEvent( const Kiln::String & text );

 private:
   Kiln::Ptr< EventHistory > history_;
   Kiln::String source_;
};

// Read access for tests and tools.
class EventHistoryReader {
 public:
   // `history` must not be null.
   explicit EventHistoryReader( const Kiln::Ptr< const EventHistory > & history );

   // Every record kept, oldest first.
   std::vector< EventRecord > events() const;
   // The records newer than `sequence`, oldest first: a tool that remembers
   // the last sequence it showed asks for what came after it.
   std::vector< EventRecord > eventsSince( U64 sequence ) const;
   // The texts of the records kept, oldest first.
   std::vector< Kiln::String > texts() const;
   // The records as lines (EventRecord::str()), oldest first.
   std::vector< std::string > lines() const;

 private:
   Kiln::Ptr< const EventHistory > history_;
};

} // namespace Agent
