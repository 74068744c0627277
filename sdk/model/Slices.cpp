#include "sdk/model/Slices.h"

#include "platform/kiln/Assert.h"

namespace ChipModel {

StageSlices::StageSlices( const StageProfile & profile, U32 instances )
    : profile_( &profile ),
      owner_( instances, std::vector< bcm_field_group_t >( profile.slicesPerPipe, 0 ) ) {}

std::optional< U32 >
StageSlices::findFreeRun( U32 instance, U32 width ) const {
   const auto & slices = owner_.at( instance );
   for ( U32 first = 0; first + width <= slices.size(); first += width ) {
      bool free = true;
      for ( U32 s = first; s < first + width && free; ++s ) {
         free = slices[ s ] == 0;
      }
      if ( free ) {
         return first;
      }
   }
   return std::nullopt;
}

U32
StageSlices::freeRuns( U32 instance, U32 width ) const {
   const auto & slices = owner_.at( instance );
   U32 runs = 0;
   for ( U32 first = 0; first + width <= slices.size(); first += width ) {
      bool free = true;
      for ( U32 s = first; s < first + width && free; ++s ) {
         free = slices[ s ] == 0;
      }
      runs += free ? 1 : 0;
   }
   return runs;
}

void
StageSlices::take( U32 instance, U32 first, U32 width, bcm_field_group_t group ) {
   for ( U32 s = first; s < first + width; ++s ) {
      KILN_ASSERT( owner_.at( instance ).at( s ) == 0 );
      owner_[ instance ][ s ] = group;
   }
}

void
StageSlices::release( U32 instance, U32 first, U32 width ) {
   for ( U32 s = first; s < first + width; ++s ) {
      owner_.at( instance ).at( s ) = 0;
   }
}

bcm_field_group_t
StageSlices::owner( U32 instance, U32 slice ) const {
   return owner_.at( instance ).at( slice );
}

U32
StageSlices::freeSlices() const {
   U32 free = 0;
   for ( const auto & slices : owner_ ) {
      for ( bcm_field_group_t owner : slices ) {
         free += owner == 0 ? 1 : 0;
      }
   }
   return free;
}

} // namespace ChipModel
