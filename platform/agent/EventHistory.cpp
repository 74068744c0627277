#include "platform/agent/EventHistory.h"

#include "platform/kiln/Assert.h"

#include <cstdio>
#include <ctime>

namespace Agent {

std::string
EventRecord::str() const {
   using namespace std::chrono;
   auto sinceEpoch = time.time_since_epoch();
   auto wholeSeconds = floor< seconds >( sinceEpoch );
   auto micros = duration_cast< microseconds >( sinceEpoch - wholeSeconds ).count();
   // time_t is 32 bits on some 32-bit hosts; the calendar part is fine until 2038
   // there, and the microseconds come from the 64-bit duration either way.
   std::time_t t = static_cast< std::time_t >( wholeSeconds.count() );
   std::tm calendar{};
   gmtime_r( &t, &calendar );
   char stamp[ 128 ];
   std::snprintf( stamp, sizeof stamp, "%04d-%02d-%02d %02d:%02d:%02d.%06lld",
                  calendar.tm_year + 1900, calendar.tm_mon + 1, calendar.tm_mday,
                  calendar.tm_hour, calendar.tm_min, calendar.tm_sec,
                  static_cast< long long >( micros ) );
   return std::string( stamp ) + " " + source.str() + ": " + text.str();
}

EventHistory::EventHistory( const Kiln::Name & name, size_t capacity )
      : Kiln::Entity( name ), capacity_( capacity ),
        clock_( [] { return std::chrono::system_clock::now(); } ) {
   KILN_ASSERT_MSG( capacity_ > 0, "event history capacity must be above 0" );
}

void
EventHistory::clockIs( Clock clock ) {
   KILN_ASSERT_MSG( clock, "event history clock must not be empty" );
   clock_ = std::move( clock );
}

U64
EventHistory::eventIs( const Kiln::String & source, const Kiln::String & text ) {
   if ( records_.size() == capacity_ ) {
      records_.pop_front();
      ++dropped_;
   }
   U64 sequence = ++lastSequence_;
   records_.push_back( EventRecord{ sequence, clock_(), source, text } );
   notify( &NotifieeConst::onEvent, sequence );
   return sequence;
}

EventHistoryWriter::EventHistoryWriter( const Kiln::Ptr< EventHistory > & history,
                                        const Kiln::String & source )
      : history_( history ), source_( source ) {
   KILN_ASSERT_MSG( history_, "event history writer without a history" );
}

U64
EventHistoryWriter::addEvent( const Kiln::String & text ) {
   return history_->eventIs( source_, text );
}

EventHistoryReader::EventHistoryReader( const Kiln::Ptr< const EventHistory > & history )
      : history_( history ) {
   KILN_ASSERT_MSG( history_, "event history reader without a history" );
}

std::vector< EventRecord >
EventHistoryReader::events() const {
   return std::vector< EventRecord >( history_->records().begin(), history_->records().end() );
}

std::vector< EventRecord >
EventHistoryReader::eventsSince( U64 sequence ) const {
   std::vector< EventRecord > newer;
   for ( const EventRecord & record : history_->records() ) {
      if ( record.sequence > sequence ) {
         newer.push_back( record );
      }
   }
   return newer;
}

std::vector< Kiln::String >
EventHistoryReader::texts() const {
   std::vector< Kiln::String > result;
   for ( const EventRecord & record : history_->records() ) {
      result.push_back( record.text );
   }
   return result;
}

std::vector< std::string >
EventHistoryReader::lines() const {
   std::vector< std::string > result;
   for ( const EventRecord & record : history_->records() ) {
      result.push_back( record.str() );
   }
   return result;
}

} // namespace Agent
