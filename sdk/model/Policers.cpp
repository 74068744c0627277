#include "sdk/model/Policers.h"

#include <algorithm>

#include "sdk/api/error.h"

namespace ChipModel {

namespace {

void
refill( Policer & p, U64 nowUs ) {
   const bcm_policer_config_t & c = p.config;
   double committedCap = static_cast< double >( c.ckbits_burst ) * 1000.0;
   double peakCap = static_cast< double >( c.pkbits_burst ) * 1000.0;
   if ( !p.primed ) {
      p.committedTokens = committedCap;
      p.peakTokens = peakCap;
      p.lastUs = nowUs;
      p.primed = true;
      return;
   }
   double elapsed =
      nowUs > p.lastUs ? static_cast< double >( nowUs - p.lastUs ) / 1e6 : 0.0;
   p.lastUs = std::max( p.lastUs, nowUs );
   p.committedTokens =
      std::min( committedCap, p.committedTokens + elapsed * c.ckbits_sec * 1000.0 );
   double peakRate = c.mode == bcmPolicerModeTrTcm ? c.pkbits_sec : c.ckbits_sec;
   p.peakTokens = std::min( peakCap, p.peakTokens + elapsed * peakRate * 1000.0 );
}

} // namespace

int
PolicerTable::create( bcm_policer_config_t & config, bcm_policer_t & id ) {
   if ( config.mode < 0 || config.mode >= bcmPolicerModeCount ) {
      return BCM_E_PARAM;
   }
   bool withId = config.flags & BCM_POLICER_WITH_ID;
   if ( withId && ( id <= 0 || policers_.count( id ) ) ) {
      return id <= 0 ? BCM_E_PARAM : BCM_E_EXISTS;
   }
   if ( policers_.size() >= profile_->metersPerPipe * profile_->pipes ) {
      return BCM_E_RESOURCE;
   }
   if ( !withId ) {
      for ( id = 1; policers_.count( id ); ++id ) {
      }
   }
   Policer & p = policers_[ id ];
   p.id = id;
   p.config = config;
   return BCM_E_NONE;
}

int
PolicerTable::set( bcm_policer_t id, const bcm_policer_config_t & config ) {
   auto it = policers_.find( id );
   if ( it == policers_.end() ) {
      return BCM_E_NOT_FOUND;
   }
   if ( config.mode < 0 || config.mode >= bcmPolicerModeCount ) {
      return BCM_E_PARAM;
   }
   it->second.config = config;
   it->second.primed = false;
   return BCM_E_NONE;
}

int
PolicerTable::get( bcm_policer_t id, bcm_policer_config_t & config ) const {
   auto it = policers_.find( id );
   if ( it == policers_.end() ) {
      return BCM_E_NOT_FOUND;
   }
   config = it->second.config;
   return BCM_E_NONE;
}

int
PolicerTable::destroy( bcm_policer_t id ) {
   auto it = policers_.find( id );
   if ( it == policers_.end() ) {
      return BCM_E_NOT_FOUND;
   }
   if ( it->second.users ) {
      return BCM_E_BUSY;
   }
   policers_.erase( it );
   return BCM_E_NONE;
}

U32
PolicerTable::metersUsed( U32 pipe ) const {
   return static_cast< U32 >(
      std::count_if( policers_.begin(), policers_.end(),
                     [ pipe ]( const auto & p ) { return p.second.pipe == pipe; } ) );
}

int
PolicerTable::attach( bcm_policer_t id, U32 pipe ) {
   auto it = policers_.find( id );
   if ( it == policers_.end() ) {
      return BCM_E_NOT_FOUND;
   }
   Policer & p = it->second;
   if ( p.pipe && *p.pipe != pipe ) {
      return BCM_E_PARAM;
   }
   if ( !p.pipe && metersUsed( pipe ) >= profile_->metersPerPipe ) {
      return BCM_E_RESOURCE;
   }
   p.pipe = pipe;
   ++p.users;
   return BCM_E_NONE;
}

void
PolicerTable::detach( bcm_policer_t id ) {
   auto it = policers_.find( id );
   if ( it != policers_.end() && it->second.users && --it->second.users == 0 ) {
      it->second.pipe.reset();
   }
}

const Policer *
PolicerTable::policer( bcm_policer_t id ) const {
   auto it = policers_.find( id );
   return it == policers_.end() ? nullptr : &it->second;
}

// srTCM and trTCM in colour-blind form: green within the committed bucket,
// yellow within the peak (or excess) bucket, red otherwise.
bcm_field_color_t
PolicerTable::meter( bcm_policer_t id, U32 bytes, U64 nowUs ) {
   auto it = policers_.find( id );
   if ( it == policers_.end() || it->second.config.mode == bcmPolicerModePassThrough ) {
      return bcmFieldColorGreen;
   }
   Policer & p = it->second;
   refill( p, nowUs );
   double bits = static_cast< double >( bytes ) * 8.0;
   if ( p.committedTokens >= bits ) {
      p.committedTokens -= bits;
      if ( p.config.mode == bcmPolicerModeTrTcm ) {
         p.peakTokens = std::max( 0.0, p.peakTokens - bits );
      }
      return bcmFieldColorGreen;
   }
   if ( p.config.mode != bcmPolicerModeCommitted && p.peakTokens >= bits ) {
      p.peakTokens -= bits;
      return bcmFieldColorYellow;
   }
   return bcmFieldColorRed;
}

} // namespace ChipModel
