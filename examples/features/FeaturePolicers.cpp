#include "examples/features/FeaturePolicers.h"

#include "common/TesselSdkCall.h"
#include "sdk/api/policer.h"

namespace Features {

std::string
PolicerRate::text() const {
   return "rate " + std::to_string( rateKbps ) + " kbit/s burst " + std::to_string( burstKbits ) +
          " kbit";
}

FeaturePolicers::FeaturePolicers( const Kiln::Ptr< Tessel::TesselTcamGroupManager > & manager )
      : manager_( manager ) {}

FeaturePolicers::~FeaturePolicers() {
   release();
}

U32
FeaturePolicers::policer( U32 unit, U32 item, const PolicerRate & rate, bool dropRed ) {
   auto it = policers_.find( { unit, item } );
   if ( it != policers_.end() ) {
      return it->second;
   }
   bcm_policer_config_t config;
   bcm_policer_config_t_init( &config );
   config.mode = bcmPolicerModeCommitted;
   config.flags = dropRed ? BCM_POLICER_DROP_RED : 0;
   config.ckbits_sec = rate.rateKbps;
   config.ckbits_burst = rate.burstKbits;
   U32 base = manager_->createPolicer( unit, Kiln::BytePtr::copyOf( config ) );
   policers_[ { unit, item } ] = base;
   return base;
}

int
FeaturePolicers::attach( const FeatureEntries & entries, U32 unit, U32 entry, U32 base ) const {
   int first = 0;
   entries.forEachCopy( unit, entry, [ & ]( U32 pipe, U32, U32 copyId ) {
      int pipePolicer = int( manager_->getPipePolicerId( unit, pipe, base ) );
      int rc = SDK_CALL_UNIT(
         unit, bcm_field_entry_policer_attach( unit, int( copyId ), 0, pipePolicer ) );
      first = first < 0 ? first : rc;
   } );
   return first;
}

void
FeaturePolicers::release() {
   for ( const auto & [ key, base ] : policers_ ) {
      manager_->removePolicer( key.first, base );
   }
   policers_.clear();
}

std::string
policerLimitError( const std::string & feature, U32 items ) {
   if ( items <= FeaturePolicers::maxPolicersPerUnit ) {
      return "";
   }
   return feature + ": " + std::to_string( items ) + " policed classes, at most " +
          std::to_string( FeaturePolicers::maxPolicersPerUnit ) + " fit";
}

} // namespace Features
