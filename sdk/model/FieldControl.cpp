#include "sdk/model/FieldControl.h"

#include <algorithm>

namespace ChipModel {

namespace {

// Chips that count IFP slice sizes in half rows report twice the rows.
U32
reportedRows( const Profile & profile, const StageProfile & stage ) {
   bool doubled = profile.ifpDoubleCount && stage.stage == bcmFieldStageIngress;
   return stage.entriesPerSlice * ( doubled ? 2 : 1 );
}

} // namespace

void
FieldControl::rebuild( const FieldProcessor & field ) {
   const auto & all = field.allSlices();
   stages_.resize( all.size() );
   slices_.resize( all.size() );
   for ( size_t i = 0; i < all.size(); ++i ) {
      rebuildStage( field, all[ i ], i );
      stages_[ i ].next = i + 1 < all.size() ? &stages_[ i + 1 ] : nullptr;
   }
   control_.stages = stages_.empty() ? nullptr : &stages_[ 0 ];
   rebuildGroups( field );
}

void
FieldControl::rebuildStage( const FieldProcessor & field, const StageSlices & slices,
                            size_t index ) {
   const StageProfile & stage = slices.profile();
   U32 perInstance = slices.slicesPerInstance();
   auto & records = slices_[ index ];
   records.assign( perInstance * slices.instances(), bcm_field_control_slice_t{} );
   int rows = static_cast< int >( reportedRows( field.profile(), stage ) );
   for ( U32 instance = 0; instance < slices.instances(); ++instance ) {
      for ( U32 s = 0; s < perInstance; ++s ) {
         bcm_field_control_slice_t & record = records[ instance * perInstance + s ];
         record.slice_number = static_cast< int >( instance * perInstance + s );
         record.pipe = stage.pipeLocal ? static_cast< int >( instance ) : -1;
         record.entry_count = rows;
         record.free_count = static_cast< int >( stage.entriesPerSlice );
      }
   }
   bcm_field_control_stage_t & record = stages_[ index ];
   record.stage_id = stage.stage;
   record.tcam_slices = static_cast< int >( records.size() );
   record.tcam_sz = rows * record.tcam_slices;
   record.slices = records.empty() ? nullptr : &records[ 0 ];
}

void
FieldControl::rebuildGroups( const FieldProcessor & field ) {
   groups_.assign( field.groups().size(), bcm_field_control_group_t{} );
   std::vector< const Group * > byCreation;
   for ( const auto & [ id, group ] : field.groups() ) {
      byCreation.push_back( &group );
   }
   std::sort( byCreation.begin(), byCreation.end(),
              []( const Group * a, const Group * b ) { return a->created < b->created; } );
   for ( size_t g = 0; g < byCreation.size(); ++g ) {
      const Group & group = *byCreation[ g ];
      size_t stageIndex = 0;
      while ( stages_[ stageIndex ].stage_id != group.stage ) {
         ++stageIndex;
      }
      auto & records = slices_[ stageIndex ];
      U32 base = group.instance * field.allSlices()[ stageIndex ].slicesPerInstance();
      std::vector< U32 > used = group.usedPerRun();
      for ( size_t run = 0; run < group.chain.size(); ++run ) {
         for ( U32 member = 0; member < group.width; ++member ) {
            records[ base + group.chain[ run ] + member ].free_count -=
               static_cast< int >( used[ run ] );
         }
         records[ base + group.chain[ run ] ].next =
            run + 1 < group.chain.size() ? &records[ base + group.chain[ run + 1 ] ]
                                         : nullptr;
      }
      bcm_field_control_group_t & record = groups_[ g ];
      record.gid = group.id;
      record.flags = static_cast< U32 >( group.mode );
      record.stage_id = group.stage;
      record.pipe = group.pipe;
      record.priority = group.priority;
      record.slices = &records[ base + group.chain.front() ];
      record.next = g + 1 < byCreation.size() ? &groups_[ g + 1 ] : nullptr;
   }
   control_.groups = groups_.empty() ? nullptr : &groups_[ 0 ];
}

} // namespace ChipModel
