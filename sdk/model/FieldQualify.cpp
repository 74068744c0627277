// Qualifiers and actions of entries (and qualifiers of preselectors).
#include <algorithm>

#include "sdk/api/error.h"
#include "sdk/model/FieldProcessor.h"

namespace ChipModel {

namespace {

bool
isPresel( bcm_field_entry_t id ) {
   return ( id & BCM_FIELD_QUALIFY_PRESEL ) != 0;
}

bool
sameAction( const Action & a, bcm_field_action_t action ) {
   return a.action == action;
}

} // namespace

Presel *
FieldProcessor::preselOf( bcm_field_entry_t id ) {
   auto it = presels_.find( id & ~BCM_FIELD_QUALIFY_PRESEL );
   return it == presels_.end() ? nullptr : &it->second;
}

int
FieldProcessor::qualify( bcm_field_entry_t id, int qualifier, const FieldValue & value ) {
   if ( !knownQualifier( qualifier ) ) {
      return BCM_E_PARAM;
   }
   if ( isPresel( id ) ) {
      Presel * presel = preselOf( id );
      if ( !presel ) {
         return BCM_E_NOT_FOUND;
      }
      presel->qualifiers[ qualifier ] = value;
      return BCM_E_NONE;
   }
   Entry * e = entry( id );
   if ( !e ) {
      return BCM_E_NOT_FOUND;
   }
   if ( !BCM_FIELD_QSET_TEST( groups_.at( e->group ).qset, qualifier ) ) {
      return BCM_E_PARAM;
   }
   e->soft.qualifiers[ qualifier ] = value;
   return BCM_E_NONE;
}

int
FieldProcessor::qualifyGet( bcm_field_entry_t id, int qualifier,
                            FieldValue & value ) const {
   const std::map< int, FieldValue > * qualifiers = nullptr;
   if ( isPresel( id ) ) {
      auto it = presels_.find( id & ~BCM_FIELD_QUALIFY_PRESEL );
      if ( it == presels_.end() ) {
         return BCM_E_NOT_FOUND;
      }
      qualifiers = &it->second.qualifiers;
   } else {
      const Entry * e = entry( id );
      if ( !e ) {
         return BCM_E_NOT_FOUND;
      }
      qualifiers = &e->soft.qualifiers;
   }
   auto it = qualifiers->find( qualifier );
   if ( it == qualifiers->end() ) {
      return BCM_E_NOT_FOUND;
   }
   value = it->second;
   return BCM_E_NONE;
}

int
FieldProcessor::rangeCheckSet( bcm_field_entry_t id, bcm_field_range_t range,
                               bool invert ) {
   Entry * e = entry( id );
   if ( !e ) {
      return BCM_E_NOT_FOUND;
   }
   if ( !BCM_FIELD_QSET_TEST( groups_.at( e->group ).qset, bcmFieldQualifyRangeCheck ) ) {
      return BCM_E_PARAM;
   }
   auto & ranges = e->soft.ranges;
   auto it = std::find_if( ranges.begin(), ranges.end(),
                           [ range ]( const RangeCheck & r ) { return r.range == range; } );
   if ( it != ranges.end() ) {
      it->invert = invert;
   } else {
      ranges.push_back( RangeCheck{ range, invert } );
   }
   return BCM_E_NONE;
}

int
FieldProcessor::dataQualify( bcm_field_entry_t id, int qualId, const FieldValue & value ) {
   Entry * e = entry( id );
   if ( !e ) {
      return BCM_E_NOT_FOUND;
   }
   if ( qualId < 0 || qualId >= BCM_FIELD_USER_NUM_UDFS ||
        !BCM_FIELD_BITSET_TEST( groups_.at( e->group ).qset.udf_map, qualId ) ) {
      return BCM_E_PARAM;
   }
   e->soft.dataQualifiers[ qualId ] = value;
   return BCM_E_NONE;
}

int
FieldProcessor::dataQualifyGet( bcm_field_entry_t id, int qualId,
                                FieldValue & value ) const {
   const Entry * e = entry( id );
   if ( !e ) {
      return BCM_E_NOT_FOUND;
   }
   auto it = e->soft.dataQualifiers.find( qualId );
   if ( it == e->soft.dataQualifiers.end() ) {
      return BCM_E_NOT_FOUND;
   }
   value = it->second;
   return BCM_E_NONE;
}

int
FieldProcessor::udfQualify( bcm_field_entry_t id, int udfId, const FieldValue & value ) {
   Entry * e = entry( id );
   if ( !e ) {
      return BCM_E_NOT_FOUND;
   }
   if ( udfId < 0 || udfId >= BCM_FIELD_USER_NUM_UDFS ||
        !BCM_FIELD_BITSET_TEST( groups_.at( e->group ).qset.udf_id_map, udfId ) ) {
      return BCM_E_PARAM;
   }
   e->soft.udfs[ udfId ] = value;
   return BCM_E_NONE;
}

int
FieldProcessor::udfQualifyGet( bcm_field_entry_t id, int udfId, FieldValue & value ) const {
   const Entry * e = entry( id );
   if ( !e ) {
      return BCM_E_NOT_FOUND;
   }
   auto it = e->soft.udfs.find( udfId );
   if ( it == e->soft.udfs.end() ) {
      return BCM_E_NOT_FOUND;
   }
   value = it->second;
   return BCM_E_NONE;
}

bool
FieldProcessor::actionAllowed( const Group & group, bcm_field_action_t action ) const {
   if ( action < 0 || action >= bcmFieldActionCount ) {
      return false;
   }
   return !group.aset || BCM_FIELD_ASET_TEST( *group.aset, action );
}

int
FieldProcessor::actionAdd( bcm_field_entry_t id, const Action & action, bool addPorts ) {
   Entry * e = entry( id );
   if ( !e ) {
      return BCM_E_NOT_FOUND;
   }
   if ( !actionAllowed( groups_.at( e->group ), action.action ) ) {
      return BCM_E_PARAM;
   }
   auto & actions = e->soft.actions;
   auto it = std::find_if( actions.begin(), actions.end(), [ & ]( const Action & a ) {
      return sameAction( a, action.action );
   } );
   if ( it == actions.end() ) {
      actions.push_back( action );
      return BCM_E_NONE;
   }
   if ( addPorts ) {
      for ( int w = 0; w < BCM_PBMP_WORD_MAX; ++w ) {
         it->ports.pbits[ w ] |= action.ports.pbits[ w ];
      }
      it->hasPorts = true;
   } else {
      *it = action;
   }
   return BCM_E_NONE;
}

int
FieldProcessor::actionGet( bcm_field_entry_t id, bcm_field_action_t action,
                           Action & out ) const {
   const Entry * e = entry( id );
   if ( !e ) {
      return BCM_E_NOT_FOUND;
   }
   const Action * found = e->soft.action( action );
   if ( !found ) {
      return BCM_E_NOT_FOUND;
   }
   out = *found;
   return BCM_E_NONE;
}

int
FieldProcessor::actionRemove( bcm_field_entry_t id, bcm_field_action_t action ) {
   Entry * e = entry( id );
   if ( !e ) {
      return BCM_E_NOT_FOUND;
   }
   auto & actions = e->soft.actions;
   auto it = std::find_if( actions.begin(), actions.end(),
                           [ & ]( const Action & a ) { return sameAction( a, action ); } );
   if ( it == actions.end() ) {
      return BCM_E_NOT_FOUND;
   }
   actions.erase( it );
   return BCM_E_NONE;
}

int
FieldProcessor::actionRemoveAll( bcm_field_entry_t id ) {
   Entry * e = entry( id );
   if ( !e ) {
      return BCM_E_NOT_FOUND;
   }
   e->soft.actions.clear();
   return BCM_E_NONE;
}

bool
FieldProcessor::rangeInUse( bcm_field_range_t range ) const {
   auto checks = []( const EntryImage & image, bcm_field_range_t r ) {
      return std::any_of( image.ranges.begin(), image.ranges.end(),
                          [ r ]( const RangeCheck & c ) { return c.range == r; } );
   };
   for ( const auto & [ id, e ] : entries_ ) {
      if ( checks( e.soft, range ) || ( e.hardware && checks( *e.hardware, range ) ) ) {
         return true;
      }
   }
   return false;
}

bool
FieldProcessor::dataQualifierInUse( int qualId ) const {
   return std::any_of( groups_.begin(), groups_.end(), [ qualId ]( const auto & g ) {
      return BCM_FIELD_BITSET_TEST( g.second.qset.udf_map, qualId ) != 0;
   } );
}

bool
FieldProcessor::udfInUse( int udfId ) const {
   return std::any_of( groups_.begin(), groups_.end(), [ udfId ]( const auto & g ) {
      return BCM_FIELD_BITSET_TEST( g.second.qset.udf_id_map, udfId ) != 0;
   } );
}

} // namespace ChipModel
