// Preselectors and hints: unit-wide objects with a limited supply, held by
// the groups that name them.
#include "sdk/api/error.h"
#include "sdk/model/FieldProcessor.h"

namespace ChipModel {

int
FieldProcessor::preselCreate( bcm_field_presel_t & id ) {
   if ( presels_.size() >= profile_->presels ) {
      return BCM_E_RESOURCE;
   }
   for ( bcm_field_presel_t candidate = 1; candidate < BCM_FIELD_PRESEL_MAX; ++candidate ) {
      if ( !presels_.count( candidate ) ) {
         id = candidate;
         return preselCreateId( candidate );
      }
   }
   return BCM_E_RESOURCE;
}

int
FieldProcessor::preselCreateId( bcm_field_presel_t id ) {
   if ( id <= 0 || id >= BCM_FIELD_PRESEL_MAX ) {
      return BCM_E_PARAM;
   }
   if ( presels_.count( id ) ) {
      return BCM_E_EXISTS;
   }
   if ( presels_.size() >= profile_->presels ) {
      return BCM_E_RESOURCE;
   }
   presels_[ id ].id = id;
   return BCM_E_NONE;
}

int
FieldProcessor::preselDestroy( bcm_field_presel_t id ) {
   auto it = presels_.find( id & ~BCM_FIELD_QUALIFY_PRESEL );
   if ( it == presels_.end() ) {
      return BCM_E_NOT_FOUND;
   }
   if ( it->second.users ) {
      return BCM_E_BUSY;
   }
   presels_.erase( it );
   return BCM_E_NONE;
}

const Presel *
FieldProcessor::presel( bcm_field_presel_t id ) const {
   auto it = presels_.find( id & ~BCM_FIELD_QUALIFY_PRESEL );
   return it == presels_.end() ? nullptr : &it->second;
}

int
FieldProcessor::hintsCreate( bcm_field_hintid_t & id ) {
   if ( hints_.size() >= profile_->hints ) {
      return BCM_E_RESOURCE;
   }
   while ( hints_.count( nextHintId_ ) || nextHintId_ == 0 ) {
      ++nextHintId_;
   }
   id = nextHintId_++;
   hints_[ id ].id = id;
   return BCM_E_NONE;
}

int
FieldProcessor::hintsAdd( bcm_field_hintid_t id, const bcm_field_hint_t & hint ) {
   auto it = hints_.find( id );
   if ( it == hints_.end() ) {
      return BCM_E_NOT_FOUND;
   }
   if ( hint.hint_type < 0 || hint.hint_type >= bcmFieldHintTypeCount ||
        !knownQualifier( hint.qual ) ) {
      return BCM_E_PARAM;
   }
   if ( hint.hint_type == bcmFieldHintTypeExtraction && hint.end_bit < hint.start_bit ) {
      return BCM_E_PARAM;
   }
   if ( it->second.hints.size() >= BCM_FIELD_HINTS_PER_ID_MAX ) {
      return BCM_E_RESOURCE;
   }
   it->second.hints.push_back( hint );
   return BCM_E_NONE;
}

int
FieldProcessor::hintsGet( bcm_field_hintid_t id, int n, bcm_field_hint_t & hint ) const {
   auto it = hints_.find( id );
   if ( it == hints_.end() || n < 0 ||
        static_cast< size_t >( n ) >= it->second.hints.size() ) {
      return BCM_E_NOT_FOUND;
   }
   hint = it->second.hints[ static_cast< size_t >( n ) ];
   return BCM_E_NONE;
}

int
FieldProcessor::hintsDestroy( bcm_field_hintid_t id ) {
   auto it = hints_.find( id );
   if ( it == hints_.end() ) {
      return BCM_E_NOT_FOUND;
   }
   if ( it->second.users ) {
      return BCM_E_BUSY;
   }
   hints_.erase( it );
   return BCM_E_NONE;
}

} // namespace ChipModel
