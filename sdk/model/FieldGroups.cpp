// Groups: creation (stage, pipe, width, slices), destruction, compression,
// status.
#include <algorithm>

#include "sdk/api/error.h"
#include "sdk/model/FieldProcessor.h"
#include "sdk/model/Ports.h"
#include "sdk/model/Qualifiers.h"

namespace ChipModel {

namespace {

bool
flagSet( const bcm_field_group_config_t & config, U32 flag ) {
   return ( config.flags & flag ) != 0;
}

bool
emptyAset( const bcm_field_aset_t & aset ) {
   for ( U32 word : aset.w ) {
      if ( word ) {
         return false;
      }
   }
   return true;
}

} // namespace

FieldProcessor::FieldProcessor( const Profile & profile ) : profile_( &profile ) {
   for ( const StageProfile & stage : profile.stages ) {
      U32 instances = profile.instances( stage );
      stages_.emplace_back( stage, instances );
      for ( U32 instance = 0; instance < instances; ++instance ) {
         pools_.emplace( std::make_pair( static_cast< int >( stage.stage ), instance ),
                         CounterPools( stage.counterPools, stage.countersPerPool ) );
      }
   }
}

StageSlices *
FieldProcessor::slicesOf( bcm_field_stage_t stage ) {
   for ( StageSlices & slices : stages_ ) {
      if ( slices.profile().stage == stage ) {
         return &slices;
      }
   }
   return nullptr;
}

const StageSlices *
FieldProcessor::slices( bcm_field_stage_t stage ) const {
   return const_cast< FieldProcessor * >( this )->slicesOf( stage );
}

Group *
FieldProcessor::groupOf( bcm_field_group_t id ) {
   auto it = groups_.find( id );
   return it == groups_.end() ? nullptr : &it->second;
}

const Group *
FieldProcessor::group( bcm_field_group_t id ) const {
   return const_cast< FieldProcessor * >( this )->groupOf( id );
}

bcm_field_group_t
FieldProcessor::pickGroupId() const {
   for ( bcm_field_group_t id = 1; id < modelIdLimit; ++id ) {
      if ( !groups_.count( id ) ) {
         return id;
      }
   }
   return 0;
}

// Width from the qualifier set, or from the mode when one is given.
int
FieldProcessor::resolveGroupWidth( const bcm_field_group_config_t & config,
                                   const StageProfile & stage, U32 extraKeyBytes,
                                   Group & group ) const {
   U32 bits = qsetKeyBits( config.qset, extraKeyBytes );
   U32 needed = std::max< U32 >( 1, ( bits + sliceKeyBits - 1 ) / sliceKeyBits );
   U32 width = needed;
   if ( flagSet( config, BCM_FIELD_GROUP_CREATE_WITH_MODE ) ) {
      if ( config.mode < 0 || config.mode >= bcmFieldGroupModeCount ) {
         return BCM_E_PARAM;
      }
      if ( config.mode >= bcmFieldGroupModeSingle &&
           config.mode <= bcmFieldGroupModeTriple ) {
         width = static_cast< U32 >( config.mode );
         if ( width < needed ) {
            return BCM_E_PARAM;
         }
      }
   }
   if ( width > stage.maxSlicesPerRow ) {
      return BCM_E_RESOURCE;
   }
   group.width = width;
   group.mode = static_cast< bcm_field_group_mode_t >( width );
   group.rowsPerSlice = stage.entriesPerSlice;
   return BCM_E_NONE;
}

// Hint and preselectors named by the config must exist.
int
FieldProcessor::checkGroupReferences( const bcm_field_group_config_t & config,
                                      Group & group ) const {
   if ( flagSet( config, BCM_FIELD_GROUP_CREATE_WITH_HINTID ) && config.hintid != 0 ) {
      if ( !hints_.count( config.hintid ) ) {
         return BCM_E_NOT_FOUND;
      }
      group.hint = config.hintid;
   }
   if ( flagSet( config, BCM_FIELD_GROUP_CREATE_WITH_PRESELSET ) ) {
      for ( int id = 0; id < BCM_FIELD_PRESEL_MAX; ++id ) {
         if ( BCM_FIELD_PRESEL_TEST( config.preselset, id ) ) {
            if ( !presels_.count( id ) ) {
               return BCM_E_NOT_FOUND;
            }
            group.presels.push_back( id );
         }
      }
   }
   if ( flagSet( config, BCM_FIELD_GROUP_CREATE_WITH_PORT ) ) {
      if ( _shr_pbmp_is_null( config.ports ) ) {
         return BCM_E_PARAM;
      }
      group.ports = config.ports;
   }
   if ( flagSet( config, BCM_FIELD_GROUP_CREATE_WITH_ASET ) && !emptyAset( config.aset ) ) {
      group.aset = config.aset;
   }
   return BCM_E_NONE;
}

// The one pipe the group's preselectors select by port, if they agree.
std::optional< U32 >
FieldProcessor::pipeOfPresels( const Group & group ) const {
   std::optional< U32 > pipe;
   for ( bcm_field_presel_t id : group.presels ) {
      auto q = presels_.at( id ).qualifiers.find( bcmFieldQualifyMixedSrcClassId );
      if ( q == presels_.at( id ).qualifiers.end() ) {
         continue;
      }
      bcm_pbmp_t ports{};
      for ( int w = 0; w < BCM_PBMP_WORD_MAX; ++w ) {
         ports.pbits[ w ] = static_cast< U32 >( fromBytes(
            { q->second.data.begin() + 4 * w, q->second.data.begin() + 4 * w + 4 } ) );
      }
      std::optional< U32 > here = pipeOfPorts( *profile_, ports );
      if ( !here || ( pipe && *pipe != *here ) ) {
         return std::nullopt;
      }
      pipe = here;
   }
   return pipe;
}

// The stage instance (pipe) of a group of a pipe-local stage comes from its
// ports or its preselectors; both, when given, must name the same one pipe.
int
FieldProcessor::resolveGroupPlace( const StageProfile & stage, Group & group ) const {
   if ( !stage.pipeLocal ) {
      group.pipe = -1;
      group.instance = 0;
      return BCM_E_NONE;
   }
   std::optional< U32 > byPorts;
   if ( group.ports ) {
      byPorts = pipeOfPorts( *profile_, *group.ports );
      if ( !byPorts ) {
         return BCM_E_PARAM;
      }
   }
   std::optional< U32 > byPresels;
   if ( !group.presels.empty() ) {
      byPresels = pipeOfPresels( group );
      if ( !byPresels ) {
         return BCM_E_PARAM;
      }
   }
   if ( !byPorts && !byPresels ) {
      return BCM_E_PARAM;
   }
   if ( byPorts && byPresels && *byPorts != *byPresels ) {
      return BCM_E_PARAM;
   }
   group.instance = byPorts ? *byPorts : *byPresels;
   group.pipe = static_cast< int >( group.instance );
   return BCM_E_NONE;
}

int
FieldProcessor::groupCreate( bcm_field_group_config_t & config, U32 extraKeyBytes ) {
   Group group;
   group.stage = stageOfQset( config.qset );
   StageSlices * slices = slicesOf( group.stage );
   if ( !slices ) {
      return BCM_E_UNAVAIL;
   }
   if ( flagSet( config, BCM_FIELD_GROUP_CREATE_WITH_ID ) ) {
      if ( config.group <= 0 || config.group > BCM_FIELD_ID_MAX ) {
         return BCM_E_PARAM;
      }
      if ( groups_.count( config.group ) ) {
         return BCM_E_EXISTS;
      }
      group.id = config.group;
   } else {
      group.id = pickGroupId();
   }
   if ( groups_.size() >= profile_->groupIds || group.id == 0 ) {
      return BCM_E_RESOURCE;
   }
   int rc = resolveGroupWidth( config, slices->profile(), extraKeyBytes, group );
   if ( rc == BCM_E_NONE ) {
      rc = checkGroupReferences( config, group );
   }
   if ( rc == BCM_E_NONE ) {
      rc = resolveGroupPlace( slices->profile(), group );
   }
   if ( rc != BCM_E_NONE ) {
      return rc;
   }
   std::optional< U32 > first = slices->findFreeRun( group.instance, group.width );
   if ( !first ) {
      return BCM_E_RESOURCE;
   }
   slices->take( group.instance, *first, group.width, group.id );
   group.chain.push_back( *first );
   group.rows = PriorityArray( group.rowsPerSlice );
   group.priority = config.priority;
   group.qset = config.qset;
   group.created = ++groupsCreated_;
   for ( bcm_field_presel_t id : group.presels ) {
      ++presels_.at( id ).users;
   }
   if ( group.hint ) {
      ++hints_.at( *group.hint ).users;
   }
   config.group = group.id;
   groups_.emplace( group.id, std::move( group ) );
   return BCM_E_NONE;
}

int
FieldProcessor::groupDestroy( bcm_field_group_t id ) {
   Group * group = groupOf( id );
   if ( !group ) {
      return BCM_E_NOT_FOUND;
   }
   if ( group->rows.size() || !group->stats.empty() ) {
      return BCM_E_BUSY;
   }
   StageSlices * slices = slicesOf( group->stage );
   for ( U32 first : group->chain ) {
      slices->release( group->instance, first, group->width );
   }
   for ( bcm_field_presel_t presel : group->presels ) {
      --presels_.at( presel ).users;
   }
   if ( group->hint ) {
      --hints_.at( *group->hint ).users;
   }
   groups_.erase( id );
   return BCM_E_NONE;
}

// Takes one more run of slices for the group; false when none is free.
bool
FieldProcessor::expand( Group & group ) {
   StageSlices * slices = slicesOf( group.stage );
   std::optional< U32 > first = slices->findFreeRun( group.instance, group.width );
   if ( !first ) {
      return false;
   }
   slices->take( group.instance, *first, group.width, group.id );
   group.chain.push_back( *first );
   group.rows.grow( group.rowsPerSlice );
   return true;
}

int
FieldProcessor::groupCompress( bcm_field_group_t id ) {
   Group * group = groupOf( id );
   if ( !group ) {
      return BCM_E_NOT_FOUND;
   }
   MoveCounter mover( *group );
   group->rows.pack( mover );
   StageSlices * slices = slicesOf( group->stage );
   while ( group->chain.size() > 1 && group->rows.trailingFree() >= group->rowsPerSlice ) {
      slices->release( group->instance, group->chain.back(), group->width );
      group->chain.pop_back();
      group->rows.truncate( group->rows.capacity() - group->rowsPerSlice );
   }
   return BCM_E_NONE;
}

int
FieldProcessor::groupStatus( bcm_field_group_t id,
                             bcm_field_group_status_t & status ) const {
   const Group * group = this->group( id );
   if ( !group ) {
      return BCM_E_NOT_FOUND;
   }
   const StageSlices * stageSlices = slices( group->stage );
   U32 spare = stageSlices->freeRuns( group->instance, group->width ) * group->rowsPerSlice;
   U32 freeRows = group->rows.capacity() - group->rows.size();
   status = bcm_field_group_status_t{};
   status.prio_min = BCM_FIELD_ENTRY_PRIO_LOWEST;
   status.prio_max = BCM_FIELD_ENTRY_PRIO_HIGHEST;
   status.entries_free = static_cast< int >( freeRows + spare );
   status.entries_total = static_cast< int >( group->rows.size() ) + status.entries_free;
   const CounterPools * counters = pools( group->stage, group->instance );
   status.counters_total = counters ? static_cast< int >( counters->total() ) : 0;
   status.counters_free = counters ? static_cast< int >( counters->free() ) : 0;
   status.slices_used = static_cast< int >( group->chain.size() * group->width );
   return BCM_E_NONE;
}

int
FieldProcessor::operMode( int stageQualifier, bcm_field_group_oper_mode_t & mode ) const {
   bcm_field_stage_t stage;
   switch ( stageQualifier ) {
   case bcmFieldQualifyStageIngress:
      stage = bcmFieldStageIngress;
      break;
   case bcmFieldQualifyStageLookup:
      stage = bcmFieldStageLookup;
      break;
   case bcmFieldQualifyStageEgress:
      stage = bcmFieldStageEgress;
      break;
   case bcmFieldQualifyStageClass:
      stage = bcmFieldStageClass;
      break;
   default:
      return BCM_E_PARAM;
   }
   const StageProfile * profile = profile_->stage( stage );
   if ( !profile ) {
      return BCM_E_UNAVAIL;
   }
   mode = profile->pipeLocal ? bcmFieldGroupOperModePipeLocal : bcmFieldGroupOperModeGlobal;
   return BCM_E_NONE;
}

std::vector< const Group * >
FieldProcessor::groupsInOrder( bcm_field_stage_t stage, U32 instance ) const {
   std::vector< const Group * > found;
   for ( const auto & [ id, group ] : groups_ ) {
      if ( group.stage == stage && group.instance == instance ) {
         found.push_back( &group );
      }
   }
   std::sort( found.begin(), found.end(), []( const Group * a, const Group * b ) {
      return a->priority != b->priority ? a->priority > b->priority
                                        : a->created < b->created;
   } );
   return found;
}

} // namespace ChipModel
