// Entries: creation in a row of the group (expanding the group when full),
// destruction, install state, priority, copy.
#include "sdk/api/error.h"
#include "sdk/model/FieldProcessor.h"

namespace ChipModel {


const Entry *
FieldProcessor::entry( bcm_field_entry_t id ) const {
   auto it = entries_.find( id );
   return it == entries_.end() ? nullptr : &it->second;
}

Entry *
FieldProcessor::entry( bcm_field_entry_t id ) {
   auto it = entries_.find( id );
   return it == entries_.end() ? nullptr : &it->second;
}

S64
FieldProcessor::rowOf( bcm_field_entry_t id ) const {
   const Entry * e = entry( id );
   if ( !e ) {
      return -1;
   }
   std::optional< U32 > row =
      groups_.at( e->group ).rows.slotOf( static_cast< U32 >( id ) );
   return row ? static_cast< S64 >( *row ) : -1;
}

bcm_field_entry_t
FieldProcessor::pickEntryId() {
   for ( bcm_field_entry_t tries = 1; tries < modelIdLimit; ++tries ) {
      entryCursor_ = entryCursor_ + 1 < modelIdLimit ? entryCursor_ + 1 : 1;
      if ( !entries_.count( entryCursor_ ) ) {
         return entryCursor_;
      }
   }
   return 0;
}

int
FieldProcessor::addEntry( Group & group, bcm_field_entry_t id ) {
   if ( group.rows.full() && !expand( group ) ) {
      return BCM_E_RESOURCE;
   }
   MoveCounter mover( group );
   group.rows.insert( static_cast< U32 >( id ), BCM_FIELD_ENTRY_PRIO_DEFAULT, mover );
   Entry & created = entries_[ id ];
   created.id = id;
   created.group = group.id;
   return BCM_E_NONE;
}

int
FieldProcessor::entryCreate( bcm_field_group_t groupId, bcm_field_entry_t & id ) {
   Group * group = groupOf( groupId );
   if ( !group ) {
      return BCM_E_NOT_FOUND;
   }
   bcm_field_entry_t picked = pickEntryId();
   if ( picked == 0 ) {
      return BCM_E_RESOURCE;
   }
   int rc = addEntry( *group, picked );
   if ( rc == BCM_E_NONE ) {
      id = picked;
   }
   return rc;
}

int
FieldProcessor::entryCreateId( bcm_field_group_t groupId, bcm_field_entry_t id ) {
   Group * group = groupOf( groupId );
   if ( !group ) {
      return BCM_E_NOT_FOUND;
   }
   if ( id <= 0 || id > BCM_FIELD_ID_MAX ) {
      return BCM_E_PARAM;
   }
   if ( entries_.count( id ) ) {
      return BCM_E_EXISTS;
   }
   return addEntry( *group, id );
}

int
FieldProcessor::entryDestroy( bcm_field_entry_t id ) {
   Entry * e = entry( id );
   if ( !e ) {
      return BCM_E_NOT_FOUND;
   }
   if ( e->statId ) {
      --stats_.at( e->statId ).attached;
   }
   Group & group = groups_.at( e->group );
   group.table.removed( id );
   group.rows.erase( static_cast< U32 >( id ) );
   entries_.erase( id );
   return BCM_E_NONE;
}

int
FieldProcessor::entryInstall( bcm_field_entry_t id ) {
   Entry * e = entry( id );
   if ( !e ) {
      return BCM_E_NOT_FOUND;
   }
   e->hardware = e->soft;
   groups_.at( e->group ).table.changed();
   return BCM_E_NONE;
}

int
FieldProcessor::entryReinstall( bcm_field_entry_t id ) {
   Entry * e = entry( id );
   if ( !e ) {
      return BCM_E_NOT_FOUND;
   }
   if ( !e->installed() ) {
      return BCM_E_PARAM;
   }
   e->hardware = e->soft;
   groups_.at( e->group ).table.changed();
   return BCM_E_NONE;
}

int
FieldProcessor::entryRemove( bcm_field_entry_t id ) {
   Entry * e = entry( id );
   if ( !e ) {
      return BCM_E_NOT_FOUND;
   }
   if ( !e->installed() ) {
      return BCM_E_PARAM;
   }
   e->hardware.reset();
   groups_.at( e->group ).table.removed( id );
   return BCM_E_NONE;
}

int
FieldProcessor::entryEnable( bcm_field_entry_t id, bool enable ) {
   Entry * e = entry( id );
   if ( !e ) {
      return BCM_E_NOT_FOUND;
   }
   e->enabled = enable;
   groups_.at( e->group ).table.enabledIs( id, enable );
   return BCM_E_NONE;
}

int
FieldProcessor::entryPrioSet( bcm_field_entry_t id, int priority ) {
   Entry * e = entry( id );
   if ( !e ) {
      return BCM_E_NOT_FOUND;
   }
   if ( priority < BCM_FIELD_ENTRY_PRIO_LOWEST ) {
      return BCM_E_PARAM;
   }
   Group & group = groups_.at( e->group );
   MoveCounter mover( group );
   group.rows.reprioritise( static_cast< U32 >( id ), priority, mover );
   e->priority = priority;
   if ( e->installed() ) {
      group.table.changed();
   }
   return BCM_E_NONE;
}

int
FieldProcessor::entryContentCopy( bcm_field_entry_t src, bcm_field_entry_t dst ) {
   const Entry * from = entry( src );
   Entry * to = entry( dst );
   if ( !from || !to ) {
      return BCM_E_NOT_FOUND;
   }
   const Group & fromGroup = groups_.at( from->group );
   const Group & toGroup = groups_.at( to->group );
   if ( fromGroup.stage != toGroup.stage ) {
      return BCM_E_PARAM;
   }
   for ( const auto & [ qualifier, value ] : from->soft.qualifiers ) {
      if ( !BCM_FIELD_QSET_TEST( toGroup.qset, qualifier ) ) {
         return BCM_E_PARAM;
      }
   }
   for ( const Action & action : from->soft.actions ) {
      if ( !actionAllowed( toGroup, action.action ) ) {
         return BCM_E_PARAM;
      }
   }
   if ( ( !from->soft.dataQualifiers.empty() || !from->soft.udfs.empty() ) &&
        fromGroup.id != toGroup.id ) {
      for ( const auto & [ qualId, value ] : from->soft.dataQualifiers ) {
         if ( !BCM_FIELD_BITSET_TEST( toGroup.qset.udf_map, qualId ) ) {
            return BCM_E_PARAM;
         }
      }
      for ( const auto & [ udfId, value ] : from->soft.udfs ) {
         if ( !BCM_FIELD_BITSET_TEST( toGroup.qset.udf_id_map, udfId ) ) {
            return BCM_E_PARAM;
         }
      }
   }
   to->soft = from->soft;
   return BCM_E_NONE;
}

int
FieldProcessor::qualifyClear( bcm_field_entry_t id ) {
   Entry * e = entry( id );
   if ( !e ) {
      return BCM_E_NOT_FOUND;
   }
   e->soft.qualifiers.clear();
   e->soft.dataQualifiers.clear();
   e->soft.udfs.clear();
   e->soft.ranges.clear();
   return BCM_E_NONE;
}

} // namespace ChipModel
