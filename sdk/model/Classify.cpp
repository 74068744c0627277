#include "sdk/model/Classify.h"

#include <algorithm>

#include "sdk/model/PacketFields.h"
#include "sdk/model/Ports.h"

namespace ChipModel {

namespace {

bcm_field_action_t
partnerOf( bcm_field_action_t action ) {
   switch ( action ) {
   case bcmFieldActionDrop:
      return bcmFieldActionDropCancel;
   case bcmFieldActionDropCancel:
      return bcmFieldActionDrop;
   case bcmFieldActionCopyToCpu:
      return bcmFieldActionCopyToCpuCancel;
   case bcmFieldActionCopyToCpuCancel:
      return bcmFieldActionCopyToCpu;
   case bcmFieldActionL3Switch:
      return bcmFieldActionL3SwitchCancel;
   case bcmFieldActionL3SwitchCancel:
      return bcmFieldActionL3Switch;
   default:
      return action;
   }
}

bool
isRedirect( bcm_field_action_t action ) {
   return action == bcmFieldActionRedirectPort || action == bcmFieldActionRedirectPbmp ||
          action == bcmFieldActionRedirectTrunk ||
          action == bcmFieldActionRedirectEgrNextHop;
}

// Whether an action is already decided by a group of higher precedence.
bool
decided( const std::vector< ResolvedAction > & resolved, bcm_field_action_t action ) {
   return std::any_of( resolved.begin(), resolved.end(),
                       [ action ]( const ResolvedAction & r ) {
                          return r.action == action || r.action == partnerOf( action ) ||
                                 ( isRedirect( action ) && isRedirect( r.action ) );
                       } );
}

bool
rangesMatch( const EntryImage & image, const LookupContext & context,
             const UnitState & state ) {
   return std::all_of( image.ranges.begin(), image.ranges.end(), [ & ]( RangeCheck check ) {
      return rangeHit( state.ranges, check.range, context ) != check.invert;
   } );
}

bool
extractedMatch( const std::map< int, FieldValue > & rules, const LookupContext & context,
                const UnitState & state, bool data ) {
   for ( const auto & [ id, rule ] : rules ) {
      auto value = data ? state.udf.extractData( id, context.layout )
                        : state.udf.extractUdf( id, context.layout );
      if ( !maskedEqual( rule,
                         value ? *value : std::vector< U8 >( rule.data.size(), 0 ) ) ) {
         return false;
      }
   }
   return true;
}

bool
imageMatches( const EntryImage & image, const LookupContext & context,
              const UnitState & state ) {
   for ( const auto & [ qualifier, rule ] : image.qualifiers ) {
      if ( !qualifierMatches( qualifier, rule, context ) ) {
         return false;
      }
   }
   return rangesMatch( image, context, state ) &&
          extractedMatch( image.dataQualifiers, context, state, true ) &&
          extractedMatch( image.udfs, context, state, false );
}

bool
groupSees( const Group & group, const LookupContext & context,
           const FieldProcessor & field ) {
   if ( group.ports && !BCM_PBMP_MEMBER( *group.ports, context.packet.inPort ) ) {
      return false;
   }
   if ( group.presels.empty() ) {
      return true;
   }
   return std::any_of( group.presels.begin(), group.presels.end(), [ & ]( auto id ) {
      const Presel * presel = field.presel( id );
      return std::all_of( presel->qualifiers.begin(), presel->qualifiers.end(),
                          [ & ]( const auto & q ) {
                             return qualifierMatches( q.first, q.second, context );
                          } );
   } );
}

// The first installed, enabled, matching entry of the group in lookup order:
// the plain loop.
const Entry *
firstMatch( const Group & group, const LookupContext & context, const UnitState & state ) {
   const Entry * found = nullptr;
   group.rows.forEachInOrder( [ & ]( U32 key ) {
      const Entry * e = state.field.entry( static_cast< bcm_field_entry_t >( key ) );
      if ( e->installed() && e->enabled && imageMatches( *e->hardware, context, state ) ) {
         found = e;
      }
      return found != nullptr;
   } );
   return found;
}

const Entry *
firstMatch( const Group & group, const LookupContext & context, const UnitState & state,
            Classifier classifier ) {
   if ( classifier == Classifier::fast ) {
      if ( std::optional< const Entry * > found =
              group.table.firstMatch( group, context, state ) ) {
         return *found;
      }
   }
   return firstMatch( group, context, state );
}

void
resolve( StageResult & result, const Entry & entry ) {
   for ( const Action & a : entry.hardware->actions ) {
      if ( decided( result.actions, a.action ) ) {
         continue;
      }
      result.actions.push_back( ResolvedAction{ a.action, a.param0, a.param1, a.hasPorts,
                                                a.ports, entry.group, entry.id } );
   }
}

StageResult
runStage( UnitState & state, LookupContext & context, const StageProfile & stage,
          Classifier classifier, std::vector< const Entry * > & hitEntries ) {
   StageResult result;
   result.stage = stage.stage;
   result.pipe = stage.pipeLocal ? static_cast< int >( context.pipe ) : -1;
   context.newStage( stage.stage );
   U32 instance = stage.pipeLocal ? context.pipe : 0;
   std::vector< std::pair< const Group *, const Entry * > > classHits;
   for ( const Group * group : state.field.groupsInOrder( stage.stage, instance ) ) {
      if ( !groupSees( *group, context, state.field ) ) {
         continue;
      }
      if ( const Entry * e = firstMatch( *group, context, state, classifier ) ) {
         result.hits.push_back( Hit{ group->id, e->id } );
         hitEntries.push_back( e );
         resolve( result, *e );
         if ( stage.stage == bcmFieldStageClass ) {
            classHits.emplace_back( group, e );
         }
      }
   }
   // Compressed class ids feed the later stages only.
   for ( const auto & [ group, e ] : classHits ) {
      noteCompressedClass( *group, *e, context );
   }
   return result;
}

bcm_field_color_t
worse( bcm_field_color_t a, bcm_field_color_t b ) {
   return a > b ? a : b;
}

// Policers of the stage's hits colour the packet.
void
meter( UnitState & state, const StageResult & result, LookupContext & context ) {
   for ( const Hit & hit : result.hits ) {
      const Entry * e = state.field.entry( hit.entry );
      if ( e && e->policer ) {
         context.colour =
            worse( context.colour, state.policers.meter( e->policer, context.length,
                                                         context.packet.timeUs ) );
         const Policer * p = state.policers.policer( e->policer );
         if ( context.colour == bcmFieldColorRed && p &&
              ( p->config.flags & BCM_POLICER_DROP_RED ) ) {
            context.dropped = true;
         }
      }
   }
}

} // namespace

std::optional< bcm_field_entry_t >
StageResult::hitIn( bcm_field_group_t group ) const {
   for ( const Hit & hit : hits ) {
      if ( hit.group == group ) {
         return hit.entry;
      }
   }
   return std::nullopt;
}

const ResolvedAction *
StageResult::action( bcm_field_action_t which ) const {
   for ( const ResolvedAction & a : actions ) {
      if ( a.action == which ) {
         return &a;
      }
   }
   return nullptr;
}

const StageResult *
LookupResult::stage( bcm_field_stage_t which ) const {
   for ( const StageResult & s : stages ) {
      if ( s.stage == which ) {
         return &s;
      }
   }
   return nullptr;
}

std::optional< bcm_field_entry_t >
LookupResult::hitIn( bcm_field_group_t group ) const {
   for ( const StageResult & s : stages ) {
      if ( auto entry = s.hitIn( group ) ) {
         return entry;
      }
   }
   return std::nullopt;
}

std::vector< Hit >
LookupResult::hits() const {
   std::vector< Hit > all;
   for ( const StageResult & s : stages ) {
      all.insert( all.end(), s.hits.begin(), s.hits.end() );
   }
   return all;
}

const ResolvedAction *
LookupResult::action( bcm_field_stage_t which, bcm_field_action_t action ) const {
   const StageResult * s = stage( which );
   return s ? s->action( action ) : nullptr;
}

LookupResult
classify( UnitState & state, const Packet & packet, Classifier classifier ) {
   LookupResult result;
   const Profile & profile = state.field.profile();
   std::optional< U32 > pipe = pipeOfPort( profile, packet.inPort );
   if ( !pipe ) {
      return result;
   }
   LookupContext context( packet, *pipe );
   std::vector< const Entry * > hitEntries;
   static const bcm_field_stage_t order[] = { bcmFieldStageLookup, bcmFieldStageClass,
                                              bcmFieldStageIngress, bcmFieldStageEgress };
   for ( bcm_field_stage_t stage : order ) {
      const StageProfile * stageProfile = profile.stage( stage );
      if ( !stageProfile ) {
         continue;
      }
      result.stages.push_back(
         runStage( state, context, *stageProfile, classifier, hitEntries ) );
      if ( stage == bcmFieldStageIngress ) {
         meter( state, result.stages.back(), context );
      }
      if ( stage != bcmFieldStageClass ) {
         applyStageEffects( result.stages.back(), context );
      }
   }
   result.dropped = context.dropped;
   result.copiedToCpu = context.copiedToCpu;
   result.egressPort = context.egressPort;
   result.colour = context.colour;
   for ( const Entry * e : hitEntries ) {
      state.field.countHit( *e, context.length, context.colour, context.dropped,
                            profile.evictThresholdPackets );
   }
   return result;
}

} // namespace ChipModel
