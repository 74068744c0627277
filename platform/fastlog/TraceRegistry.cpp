// The process-wide table of channels and configuration rules.
#include <algorithm>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "platform/fastlog/Trace.h"

namespace FastLog {

class TraceRegistry {
 public:
   static TraceRegistry &
   instance() {
      // Never destroyed: channels in other libraries unregister during exit,
      // possibly after this library's statics would have gone.
      static TraceRegistry * registry = new TraceRegistry;
      return *registry;
   }

   void
   attach( TraceChannel & channel, const char * name ) {
      std::lock_guard< std::mutex > lock( mutex_ );
      auto it = channels_.try_emplace( name ).first;
      it->second.push_back( &channel );
      channel.name_ = it->first.c_str();
      channel.levels_.store( levelsOf( it->first ).mask(), std::memory_order_relaxed );
   }

   void
   detach( TraceChannel & channel ) {
      std::lock_guard< std::mutex > lock( mutex_ );
      channel.levels_.store( 0, std::memory_order_relaxed );
      auto it = channels_.find( channel.name_ );
      if ( it != channels_.end() ) {
         std::erase( it->second, &channel );
      }
   }

   void
   rulesIs( std::vector< TraceRule > rules ) {
      std::lock_guard< std::mutex > lock( mutex_ );
      rules_ = std::move( rules );
      publish();
   }

   void
   ruleAdd( std::string_view pattern, TraceLevels levels ) {
      std::lock_guard< std::mutex > lock( mutex_ );
      std::erase_if( rules_, [ & ]( const TraceRule & r ) { return r.pattern == pattern; } );
      rules_.push_back( TraceRule{ std::string( pattern ), levels } );
      publish();
   }

   std::vector< TraceRule >
   rules() {
      std::lock_guard< std::mutex > lock( mutex_ );
      return rules_;
   }

   TraceLevels
   levels( std::string_view name ) {
      std::lock_guard< std::mutex > lock( mutex_ );
      return levelsOf( name );
   }

 private:
   TraceRegistry() = default;

   // Expects mutex_ held.
   TraceLevels
   levelsOf( std::string_view name ) const {
      auto last = std::find_if( rules_.rbegin(), rules_.rend(), [ & ]( const TraceRule & r ) {
         return traceGlobMatches( r.pattern, name );
      } );
      return last == rules_.rend() ? TraceLevels::none() : last->levels;
   }

   // Expects mutex_ held.
   void
   publish() {
      for ( auto & [ name, handles ] : channels_ ) {
         const U32 mask = levelsOf( name ).mask();
         for ( TraceChannel * handle : handles ) {
            handle->levels_.store( mask, std::memory_order_relaxed );
         }
      }
   }

   std::mutex mutex_;
   std::vector< TraceRule > rules_;
   // Names are never erased: handles hand out pointers to them.
   std::map< std::string, std::vector< TraceChannel * >, std::less<> > channels_;
};

namespace {

// Reads TESSEL_TRACE when the library is loaded, before any channel of a
// library loaded after it registers.
const bool environmentApplied = ( traceConfigFromEnvironment(), true );

} // namespace

TraceChannel::TraceChannel( const char * name ) : levels_( 0 ), name_( "" ) {
   KILN_ASSERT( name != nullptr );
   TraceRegistry::instance().attach( *this, name );
}

TraceChannel::~TraceChannel() {
   TraceRegistry::instance().detach( *this );
}

void
traceLevelsIs( std::string_view pattern, TraceLevels levels ) {
   KILN_ASSERT_MSG( !pattern.empty(), "trace channel pattern is empty" );
   TraceRegistry::instance().ruleAdd( pattern, levels );
}

void
traceLevelsReset() {
   TraceRegistry::instance().rulesIs( {} );
}

TraceLevels
traceLevels( std::string_view channel ) {
   return TraceRegistry::instance().levels( channel );
}

std::vector< TraceRule >
traceRules() {
   return TraceRegistry::instance().rules();
}

void
traceRulesIs( std::vector< TraceRule > rules ) {
   TraceRegistry::instance().rulesIs( std::move( rules ) );
}

TraceLevelsScope::TraceLevelsScope( std::string_view pattern, TraceLevels levels )
      : saved_( traceRules() ) {
   traceLevelsIs( pattern, levels );
}

TraceLevelsScope::~TraceLevelsScope() {
   traceRulesIs( std::move( saved_ ) );
}

} // namespace FastLog
