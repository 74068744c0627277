// Policers of a unit: a limited number of meters per pipe; a policer meters
// in the pipe of the first entry it is attached to.
#pragma once

#include <map>
#include <optional>

#include "platform/kiln/Types.h"
#include "sdk/api/field.h"
#include "sdk/api/policer.h"
#include "sdk/model/Profile.h"

namespace ChipModel {

struct Policer {
   bcm_policer_t id = 0;
   bcm_policer_config_t config{};
   std::optional< U32 > pipe; // bound by the first attach
   U32 users = 0;             // entries attached
   // Token buckets, in bits, refilled by packet time.
   double committedTokens = 0;
   double peakTokens = 0;
   U64 lastUs = 0;
   bool primed = false;
};

class PolicerTable {
 public:
   explicit PolicerTable( const Profile & profile ) : profile_( &profile ) {}

   int create( bcm_policer_config_t & config, bcm_policer_t & id );
   int set( bcm_policer_t id, const bcm_policer_config_t & config );
   int get( bcm_policer_t id, bcm_policer_config_t & config ) const;
   int destroy( bcm_policer_t id );
   // Attaching binds the policer to the pipe (BCM_E_PARAM when bound to
   // another; BCM_E_RESOURCE when the pipe's meters are used up).
   int attach( bcm_policer_t id, U32 pipe );
   void detach( bcm_policer_t id );
   const Policer * policer( bcm_policer_t id ) const;
   // Colours a packet of `bytes` at time `nowUs` (and consumes tokens).
   bcm_field_color_t meter( bcm_policer_t id, U32 bytes, U64 nowUs );
   U32 count() const { return static_cast< U32 >( policers_.size() ); }
   U32 metersUsed( U32 pipe ) const;

 private:
   const Profile * profile_;
   std::map< bcm_policer_t, Policer > policers_;
};

} // namespace ChipModel
