#include "tests/proof/SiteRecorder.h"

#include <cstring>

namespace Proof {

class SiteRecorder::Sink : public FastLog::TraceSink {
 public:
   explicit Sink( SiteRecorder & recorder ) : recorder_( recorder ) {}
   void
   write( const FastLog::TraceRecord & record ) override {
      if ( record.level == 4 && std::strcmp( record.channel, "bcmFpCmd" ) == 0 ) {
         recorder_.traced( std::string( record.text ) );
      }
   }

 private:
   SiteRecorder & recorder_;
};

bool
parseCallTrace( const std::string & line, std::string & where, std::string & text ) {
   size_t space = line.find( ' ' );
   size_t rc = line.rfind( " (rc:" );
   if ( space == std::string::npos || rc == std::string::npos || rc <= space ||
        line.find( ':' ) > space ) {
      return false;
   }
   where = line.substr( 0, space );
   text = line.substr( space + 1, rc - space - 1 );
   return true;
}

std::string
fileOf( const std::string & where ) {
   return where.substr( 0, where.find( ':' ) );
}

SiteRecorder::SiteRecorder( ChipModel::Box & box, std::string ownFile )
      : box_( box ), ownFile_( std::move( ownFile ) ),
        levels_( "bcmFpCmd", FastLog::TraceLevels::upTo( 4 ) ),
        sink_( std::make_shared< Sink >( *this ) ) {
   previous_ = FastLog::traceSinkIs( sink_ );
   box_.callObserverIs( [ this ]( const ChipModel::CallRecord & r ) { called( r ); } );
}

SiteRecorder::~SiteRecorder() {
   box_.callObserverIs( nullptr );
   FastLog::traceSinkIs( previous_ );
}

void
SiteRecorder::called( const ChipModel::CallRecord & record ) {
   if ( record.function == "bcm_info_get" ) {
      return;
   }
   SiteCall call;
   call.function = record.function;
   call.unit = record.unit;
   call.nth = ++seen_[ { record.function, record.unit } ];
   call.phase = phase_;
   call.args = record.args;
   // The object a call works on is its first argument (after the unit); a
   // creation with an id names it second.
   bool withId = record.function.ends_with( "_create_id" );
   for ( size_t i = 0; i < record.args.size() && i < ( withId ? 2u : 1u ); ++i ) {
      S64 arg = record.args[ i ];
      call.pipeCopy = call.pipeCopy || ( arg > 0 && arg < ( S64( 1 ) << 28 ) && arg >> 24 != 0 );
   }
   pending_.push_back( std::move( call ) );
}

void
SiteRecorder::traced( const std::string & line ) {
   std::string where;
   std::string text;
   if ( !parseCallTrace( line, where, text ) ) {
      return;
   }
   bool own = where.compare( 0, ownFile_.size() + 1, ownFile_ + ":" ) == 0;
   for ( SiteCall & call : pending_ ) {
      if ( !own ) {
         call.where = where;
         call.text = text;
         call.noRcCheck = line.ends_with( " no rc check" );
         call.repeated = !calls_.empty() && calls_.back().text == text &&
                         calls_.back().function == call.function;
         calls_.push_back( std::move( call ) );
      }
   }
   pending_.clear();
}

} // namespace Proof
