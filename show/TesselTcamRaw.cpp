// The raw slice table of the capacity query, and the reservation listing.
#include <algorithm>
#include <cstdio>
#include <string>

#include "catalogue/TesselTcamGroups.h"
#include "common/TesselSdkCall.h"
#include "manager/SdkShimAccess.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/fastlog/Trace.h"
#include "sdk/shim/Oberon.h"
#include "show/TesselTcamShow.h"
#include "show/TesselTcamStageNames.h"

TRACE_CHANNEL( "TesselTcamShow" );

namespace Tessel {

namespace {

const char * const rule = "-----------------------------------------------\n";

std::string
formatted( const char * format, const char * text, int a, int b ) {
   char line[ 128 ];
   std::snprintf( line, sizeof line, format, text, a, b );
   return line;
}

std::string
stageText( const oberon_tcam_stage_info & stage, bool halveEntries ) {
   char line[ 128 ];
   std::string text = rule;
   std::snprintf( line, sizeof line, "|Stage%39s |\n", tcamStageName( stage.stage_id ) );
   text += line;
   text += rule;
   std::snprintf( line, sizeof line, "|%25s |%7s |%8s |\n", "SliceNumber", "Total", "Free" );
   text += line;
   text += rule;
   int divisor = halveEntries ? 2 : 1;
   int freeTotal = 0;
   int slices = std::min( stage.tcam_slices, OBERON_TCAM_SLICES_MAX );
   for ( int slice = 0; slice < slices; ++slice ) {
      const oberon_tcam_slice_info & info = stage.slices[ slice ];
      text += formatted( "|%25s |%7d |%8d |\n", std::to_string( slice ).c_str(),
                         info.entry_count / divisor, info.free_count );
      freeTotal += info.free_count;
   }
   text += rule;
   text += formatted( "|%25s |%7d |%8d |\n", "", stage.tcam_sz / divisor, freeTotal );
   text += rule;
   return text;
}

} // namespace

Kiln::String
tcamUsage( U32 unit ) {
   TRACE8( "tcamUsage unit " << unit );
   oberon_tcam_capacity_info info;
   SDK_CALL_CHECKED( oberon_bcm_tcam_capacity_info_get( unit, &info ) );
   bool exempt = sdkShim().ifpSliceSizeExempt( unit );
   std::string text;
   int stages = std::min( info.num_stages, OBERON_TCAM_STAGES_MAX );
   for ( int s = 0; s < stages; ++s ) {
      const oberon_tcam_stage_info & stage = info.stages[ s ];
      if ( stage.tcam_slices == 0 ) {
         continue; // a stage the query counts without reporting it
      }
      text += stageText( stage, stage.stage_id == 0 && !exempt );
   }
   return text;
}

void
TesselTcamGroupManager::showRawTcamUsage( Kiln::String, U32 fd, U32 unit ) {
   dprintf( static_cast< int >( fd ), "%s", tcamUsage( unit ).c_str() );
}

Kiln::String
getTcamReservationData() {
   std::string text;
   for ( U32 index = 0; index < numTcamReservations(); ++index ) {
      const TcamReservation * row = getTcamReservation( index );
      text += std::string( row->name ) + " " + std::to_string( int( row->featureId ) ) + "#";
   }
   return text;
}

} // namespace Tessel
