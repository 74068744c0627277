// Field-processor helpers of the shim: name tables, qualifier-set
// operations, entry copy, stat-id test and the range initialiser.
#include "sdk/api/field.h"
#include "sdk/api/range.h"
#include "sdk/shim/Shim.h"

namespace Shim {

namespace {

std::vector< std::string >
nameTable( int count, const char * ( *nameOf )(int)) {
   std::vector< std::string > names;
   names.reserve( static_cast< size_t >( count ) );
   for ( int value = 0; value < count; ++value ) {
      const char * name = nameOf( value );
      names.emplace_back( name ? name : "" );
   }
   return names;
}

bool
qualifierInRange( int qualifier ) {
   return qualifier >= 0 && qualifier < BCM_FIELD_QSET_WORDS * 32;
}

} // namespace

const std::vector< std::string > &
Sdk::qualifierNames() const {
   static const std::vector< std::string > names =
      nameTable( bcmFieldQualifyCount, bcm_field_qualify_name );
   return names;
}

const std::vector< std::string > &
Sdk::actionNames() const {
   static const std::vector< std::string > names =
      nameTable( bcmFieldActionCount, bcm_field_action_name );
   return names;
}

const std::vector< std::string > &
Sdk::statNames() const {
   static const std::vector< std::string > names =
      nameTable( bcmFieldStatCount, bcm_field_stat_name );
   return names;
}

void
Sdk::ob_field_qset_add( bcm_field_qset_t * qset, int qualifier ) const {
   if ( qset && qualifierInRange( qualifier ) ) {
      BCM_FIELD_QSET_ADD( *qset, qualifier );
   }
}

void
Sdk::ob_field_qset_remove( bcm_field_qset_t * qset, int qualifier ) const {
   if ( qset && qualifierInRange( qualifier ) ) {
      BCM_FIELD_QSET_REMOVE( *qset, qualifier );
   }
}

bool
Sdk::ob_field_qset_test( const bcm_field_qset_t & qset, int qualifier ) const {
   return qualifierInRange( qualifier ) && BCM_FIELD_QSET_TEST( qset, qualifier );
}

int
Sdk::ob_field_entry_copy_id( int unit, bcm_field_entry_t src,
                             bcm_field_entry_t dst ) const {
   return bcm_field_entry_content_copy( unit, src, dst );
}

bool
Sdk::ob_field_stat_id_invalid( int statId ) const {
   return statId <= 0;
}

void
Sdk::ob_range_config_init( bcm_range_config_t * config ) const {
   bcm_range_config_t_init( config );
   if ( config ) {
      config->rtype = bcmRangeTypeL4SrcPort;
   }
}

} // namespace Shim
