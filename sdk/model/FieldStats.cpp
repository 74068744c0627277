// Stat objects: counter indices taken from the pools of the group's stage
// instance, attached to entries, read and written.
#include <algorithm>
#include <set>

#include "sdk/api/error.h"
#include "sdk/model/FieldProcessor.h"

namespace ChipModel {

namespace {

// Distinct counter kinds of the types, in order of first use; empty when a
// type is unknown or repeated.
std::vector< CounterKind >
kindsOf( const std::vector< bcm_field_stat_t > & types ) {
   std::vector< CounterKind > kinds;
   std::set< int > seen;
   for ( bcm_field_stat_t type : types ) {
      if ( type < 0 || type >= bcmFieldStatCount || !seen.insert( type ).second ) {
         return {};
      }
      CounterKind kind = counterKindOf( type );
      if ( std::find( kinds.begin(), kinds.end(), kind ) == kinds.end() ) {
         kinds.push_back( kind );
      }
   }
   return kinds;
}

} // namespace

CounterPools *
FieldProcessor::poolsOf( bcm_field_stage_t stage, U32 instance ) {
   auto it = pools_.find( { static_cast< int >( stage ), instance } );
   return it == pools_.end() ? nullptr : &it->second;
}

const CounterPools *
FieldProcessor::pools( bcm_field_stage_t stage, U32 instance ) const {
   return const_cast< FieldProcessor * >( this )->poolsOf( stage, instance );
}

const Stat *
FieldProcessor::stat( int id ) const {
   auto it = stats_.find( id );
   return it == stats_.end() ? nullptr : &it->second;
}

int
FieldProcessor::statCreate( bcm_field_group_t groupId,
                            const std::vector< bcm_field_stat_t > & types, int & id ) {
   Group * group = groupOf( groupId );
   if ( !group ) {
      return BCM_E_NOT_FOUND;
   }
   std::vector< CounterKind > kinds = kindsOf( types );
   if ( types.empty() || kinds.empty() ) {
      return BCM_E_PARAM;
   }
   CounterPools * counters = poolsOf( group->stage, group->instance );
   auto taken =
      counters ? counters->allocate( static_cast< U32 >( kinds.size() ) ) : std::nullopt;
   if ( !taken ) {
      return BCM_E_RESOURCE;
   }
   Stat stat;
   stat.id = nextStatId_++;
   stat.group = groupId;
   stat.stage = group->stage;
   stat.instance = group->instance;
   stat.types = types;
   stat.pool = taken->first;
   stat.indices = taken->second;
   for ( size_t i = 0; i < kinds.size(); ++i ) {
      stat.indexOf[ kinds[ i ] ] = stat.indices[ i ];
   }
   group->stats.insert( stat.id );
   id = stat.id;
   stats_.emplace( stat.id, std::move( stat ) );
   return BCM_E_NONE;
}

int
FieldProcessor::statDestroy( int id ) {
   auto it = stats_.find( id );
   if ( it == stats_.end() ) {
      return BCM_E_NOT_FOUND;
   }
   if ( it->second.attached ) {
      return BCM_E_BUSY;
   }
   poolsOf( it->second.stage, it->second.instance )
      ->release( it->second.pool, it->second.indices );
   groupOf( it->second.group )->stats.erase( id );
   stats_.erase( it );
   return BCM_E_NONE;
}

int
FieldProcessor::statAttach( bcm_field_entry_t entryId, int id ) {
   Entry * e = entry( entryId );
   auto it = stats_.find( id );
   if ( !e || it == stats_.end() ) {
      return BCM_E_NOT_FOUND;
   }
   if ( it->second.group != e->group ) {
      return BCM_E_PARAM;
   }
   if ( e->statId ) {
      return BCM_E_EXISTS;
   }
   e->statId = id;
   ++it->second.attached;
   return BCM_E_NONE;
}

int
FieldProcessor::statDetach( bcm_field_entry_t entryId, int id ) {
   Entry * e = entry( entryId );
   if ( !e || !stats_.count( id ) ) {
      return BCM_E_NOT_FOUND;
   }
   if ( e->statId != id ) {
      return BCM_E_NOT_FOUND;
   }
   e->statId = 0;
   --stats_.at( id ).attached;
   return BCM_E_NONE;
}

int
FieldProcessor::statGet( int id, bcm_field_stat_t type, U64 & value ) const {
   const Stat * s = stat( id );
   if ( !s ) {
      return BCM_E_NOT_FOUND;
   }
   if ( !s->counts( type ) ) {
      return BCM_E_PARAM;
   }
   const Counter * c =
      counter( s->stage, s->instance, s->pool, s->indexOf.at( counterKindOf( type ) ) );
   value = countsBytes( type ) ? c->bytes : c->packets;
   return BCM_E_NONE;
}

int
FieldProcessor::statSet( int id, bcm_field_stat_t type, U64 value ) {
   const Stat * s = stat( id );
   if ( !s ) {
      return BCM_E_NOT_FOUND;
   }
   if ( !s->counts( type ) ) {
      return BCM_E_PARAM;
   }
   Counter * c =
      counter( s->stage, s->instance, s->pool, s->indexOf.at( counterKindOf( type ) ) );
   if ( countsBytes( type ) ) {
      c->bytes = value;
      c->hardwareBytes = 0;
   } else {
      c->packets = value;
      c->hardwarePackets = 0;
   }
   return BCM_E_NONE;
}

const Counter *
FieldProcessor::counter( bcm_field_stage_t stage, U32 instance, U32 pool,
                         U32 index ) const {
   return const_cast< FieldProcessor * >( this )->counter( stage, instance, pool, index );
}

Counter *
FieldProcessor::counter( bcm_field_stage_t stage, U32 instance, U32 pool, U32 index ) {
   CounterPools * counters = poolsOf( stage, instance );
   return counters ? counters->at( pool, index ) : nullptr;
}

void
FieldProcessor::countHit( const Entry & e, U64 length, bcm_field_color_t colour,
                          bool dropped, U64 evictThreshold ) {
   if ( !e.statId ) {
      return;
   }
   const Stat & s = stats_.at( e.statId );
   auto countKind = [ & ]( CounterKind kind ) {
      auto it = s.indexOf.find( kind );
      if ( it != s.indexOf.end() ) {
         counter( s.stage, s.instance, s.pool, it->second )
            ->count( length, evictThreshold );
      }
   };
   countKind( CounterKind::all );
   countKind( colour == bcmFieldColorGreen    ? CounterKind::green
              : colour == bcmFieldColorYellow ? CounterKind::yellow
                                              : CounterKind::red );
   if ( dropped ) {
      countKind( CounterKind::drop );
   }
}

} // namespace ChipModel
