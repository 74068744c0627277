#include "sdk/model/Box.h"

#include <cstdlib>
#include <sstream>
#include <stdexcept>

#include "platform/kiln/Assert.h"
#include "sdk/api/error.h"

namespace ChipModel {

namespace {

Box * currentBox = nullptr;

std::vector< Profile >
profilesNamed( const std::vector< std::string > & names ) {
   std::vector< Profile > profiles;
   for ( const std::string & name : names ) {
      const Profile * profile = findProfile( name );
      if ( !profile ) {
         std::string known;
         for ( const std::string & n : profileNames() ) {
            known += ( known.empty() ? "" : ", " ) + n;
         }
         throw std::invalid_argument( "unknown chip profile '" + name +
                                      "' (known: " + known + ")" );
      }
      profiles.push_back( *profile );
   }
   return profiles;
}

// bcm_info_get reads constant chip facts; the shim's chip queries use it
// with the activity lock held.
bool
exemptFromActivityCheck( const char * function ) {
   return std::string( function ) == "bcm_info_get";
}

} // namespace

ObjectCounts &
ObjectCounts::operator+=( const ObjectCounts & o ) {
   groups += o.groups;
   entries += o.entries;
   stats += o.stats;
   presels += o.presels;
   hints += o.hints;
   ranges += o.ranges;
   policers += o.policers;
   udfObjects += o.udfObjects;
   dataQualifiers += o.dataQualifiers;
   packetFormats += o.packetFormats;
   chunks += o.chunks;
   return *this;
}

U32
ObjectCounts::total() const {
   return groups + entries + stats + presels + hints + ranges + policers + udfObjects +
          dataQualifiers + packetFormats + chunks;
}

std::string
ObjectCounts::text() const {
   std::ostringstream out;
   auto put = [ & ]( const char * name, U32 value ) {
      if ( value ) {
         out << ( out.tellp() ? " " : "" ) << name << "=" << value;
      }
   };
   put( "groups", groups );
   put( "entries", entries );
   put( "stats", stats );
   put( "presels", presels );
   put( "hints", hints );
   put( "ranges", ranges );
   put( "policers", policers );
   put( "udfObjects", udfObjects );
   put( "dataQualifiers", dataQualifiers );
   put( "packetFormats", packetFormats );
   put( "chunks", chunks );
   return out.tellp() ? out.str() : "none";
}

Box::Box( const std::vector< std::string > & profiles ) : Box( profiles, Options() ) {}

Box::Box( const std::vector< std::string > & profiles, Options options ) {
   build( profilesNamed( profiles ), options );
}

Box::Box( const std::vector< Profile > & profiles, Options options ) {
   build( profiles, options );
}

void
Box::build( const std::vector< Profile > & profiles, Options options ) {
   KILN_ASSERT_MSG( !currentBox, "one chip model box at a time" );
   for ( const Profile & profile : profiles ) {
      profiles_.push_back( std::make_unique< Profile >( profile ) );
      units_.push_back( std::make_unique< Unit >( static_cast< int >( units_.size() ),
                                                  *profiles_.back(), options.staged ) );
   }
   activityCheck_ = options.activityCheck;
   classifier_ = options.classifier;
   previousShim_ = Shim::sdk_;
   Shim::sdk_ = &shim_;
   currentBox = this;
}

Box::~Box() {
   std::lock_guard< std::recursive_mutex > guard( mutex_ );
   currentBox = nullptr;
   Shim::sdk_ = previousShim_;
}

Box *
Box::current() {
   return currentBox;
}

Unit &
Box::unit( U32 n ) {
   KILN_ASSERT( n < units_.size() );
   return *units_[ n ];
}

const Unit &
Box::unit( U32 n ) const {
   KILN_ASSERT( n < units_.size() );
   return *units_[ n ];
}

std::vector< CallRecord >
Box::callLog() const {
   std::lock_guard< std::recursive_mutex > guard( mutex_ );
   return log_.records();
}

U32
Box::callCount( const std::string & function, int unit ) const {
   std::lock_guard< std::recursive_mutex > guard( mutex_ );
   return log_.count( function, unit );
}

void
Box::clearCallLog() {
   std::lock_guard< std::recursive_mutex > guard( mutex_ );
   log_.clear();
}

void
Box::callObserverIs( std::function< void( const CallRecord & ) > observer ) {
   std::lock_guard< std::recursive_mutex > guard( mutex_ );
   callObserver_ = std::move( observer );
}

void
Box::failCall( int unit, const std::string & function, U32 nth, int rc, U32 times ) {
   std::lock_guard< std::recursive_mutex > guard( mutex_ );
   faults_.add( Fault{ unit, function, nth, rc, times } );
}

void
Box::clearFaults() {
   std::lock_guard< std::recursive_mutex > guard( mutex_ );
   faults_.clear();
}

U32
Box::pendingFaults() const {
   std::lock_guard< std::recursive_mutex > guard( mutex_ );
   return faults_.pending();
}

void
Box::activityCheckIs( ActivityCheck mode ) {
   std::lock_guard< std::recursive_mutex > guard( mutex_ );
   activityCheck_ = mode;
}

ActivityCheck
Box::activityCheck() const {
   std::lock_guard< std::recursive_mutex > guard( mutex_ );
   return activityCheck_;
}

U32
Box::activityViolations() const {
   std::lock_guard< std::recursive_mutex > guard( mutex_ );
   return activityViolations_;
}

ObjectCounts
Box::counts( U32 n ) const {
   std::lock_guard< std::recursive_mutex > guard( mutex_ );
   const UnitState & s = unit( n ).state();
   ObjectCounts c;
   c.groups = static_cast< U32 >( s.field.groups().size() );
   c.entries = static_cast< U32 >( s.field.entries().size() );
   c.stats = static_cast< U32 >( s.field.stats().size() );
   c.presels = static_cast< U32 >( s.field.presels().size() );
   c.hints = static_cast< U32 >( s.field.hints().size() );
   c.ranges = s.ranges.count();
   c.policers = s.policers.count();
   c.udfObjects = s.udf.udfObjectCount();
   c.dataQualifiers = s.udf.dataQualifierCount();
   c.packetFormats = s.udf.packetFormatCount();
   c.chunks = s.udf.chunkCount();
   return c;
}

ObjectCounts
Box::counts() const {
   ObjectCounts all;
   for ( U32 n = 0; n < numUnits(); ++n ) {
      all += counts( n );
   }
   return all;
}

Classifier
Box::defaultClassifier() {
   const char * named = std::getenv( "TESSEL_MODEL_CLASSIFIER" );
   if ( !named || std::string( named ) == "fast" ) {
      return Classifier::fast;
   }
   if ( std::string( named ) == "reference" ) {
      return Classifier::reference;
   }
   throw std::invalid_argument( "unknown classifier '" + std::string( named ) +
                                "' in TESSEL_MODEL_CLASSIFIER (known: fast, reference)" );
}

void
Box::classifierIs( Classifier classifier ) {
   std::lock_guard< std::recursive_mutex > guard( mutex_ );
   classifier_ = classifier;
}

Classifier
Box::classifier() const {
   std::lock_guard< std::recursive_mutex > guard( mutex_ );
   return classifier_;
}

LookupResult
Box::send( U32 n, const Packet & packet ) {
   std::lock_guard< std::recursive_mutex > guard( mutex_ );
   UnitState * active = unit( n ).active();
   if ( !active ) {
      LookupResult nothing;
      return nothing;
   }
   return classify( *active, packet, classifier_ );
}

void
Box::restart( U32 n, bool hitless ) {
   std::lock_guard< std::recursive_mutex > guard( mutex_ );
   unit( n ).restart( hitless );
}

void
Box::checkActivity( const char * function ) {
   if ( activityCheck_ == ActivityCheck::off || exemptFromActivityCheck( function ) ||
        !activityLockHeldByThisThread() ) {
      return;
   }
   ++activityViolations_;
   if ( activityCheck_ == ActivityCheck::abort ) {
      std::string message =
         std::string( function ) + " called while holding the activity lock";
      Kiln::assertionFailed( message.c_str(), __FILE_NAME__, __LINE__,
                             __PRETTY_FUNCTION__ );
   }
}

int
Box::call( const char * function, int unit, std::vector< S64 > args,
           const std::function< int( Unit & ) > & body ) {
   std::lock_guard< std::recursive_mutex > guard( mutex_ );
   checkActivity( function );
   size_t index = log_.size();
   log_.append( CallRecord{ unit, function, std::move( args ), BCM_E_NONE } );
   int rc = faults_.check( unit, function );
   if ( rc == BCM_E_NONE ) {
      if ( unit < 0 || static_cast< U32 >( unit ) >= units_.size() ) {
         rc = BCM_E_UNIT;
      } else {
         rc = body( *units_[ static_cast< size_t >( unit ) ] );
      }
   }
   log_.setResult( index, rc );
   if ( callObserver_ ) {
      callObserver_( log_.records()[ index ] );
   }
   return rc;
}

} // namespace ChipModel
