// capacity: the TCAM rows the agent publishes in the platform's capacity
// tables, read straight from shared memory (no request: the agent keeps
// them current), shown as a table with a warning per stage above the
// threshold, or as JSON.
#include <cstdio>

#include "startup/TesselTcamCapacityView.h"
#include "tools/tessel-show/Commands.h"
#include "tools/tessel-show/Json.h"

namespace TesselShow {

namespace {

using Hardware::Capacity::CapacityRow;
namespace View = Hardware::Capacity::Tessel;

std::string
capacityJson( const std::vector< CapacityRow > & rows, U32 threshold ) {
   Json json;
   json.beginObject().key( "capacity" ).beginArray();
   for ( const CapacityRow & row : rows ) {
      const auto & f = row.figures;
      json.beginObject().field( "unit", row.key.unit ).field( "stage", row.key.feature.str() );
      json.field( "slice", row.key.row.empty() ? "all" : row.key.row.str() );
      json.field( "used", f.used ).field( "free", f.free ).field( "total", f.total ).endObject();
   }
   json.endArray().field( "threshold", threshold ).key( "warnings" ).beginArray();
   for ( const View::TcamCapacityWarning & warning : View::tcamCapacityWarnings( rows, threshold ) ) {
      json.value( warning.text() );
   }
   return json.endArray().endObject().str();
}

} // namespace

int
runCapacity( const Options & o ) {
   std::vector< CapacityRow > all;
   Vault::Status status = View::readTesselTcamCapacity( o.prefix, all );
   if ( !status.ok() ) {
      return fail( failureOf( status ) );
   }
   std::vector< CapacityRow > rows;
   for ( const CapacityRow & row : all ) {
      if ( !o.unit || row.key.unit == *o.unit ) {
         rows.push_back( row );
      }
   }
   if ( o.unit && rows.empty() ) {
      return fail( { exitNotFound, "unit " + std::to_string( *o.unit ) +
                                      " has no capacity published by the agent" } );
   }
   std::string text = o.json ? capacityJson( rows, o.thresholdPercent )
                             : View::renderTesselTcamCapacity( rows, o.thresholdPercent );
   std::fputs( text.c_str(), stdout );
   return exitOk;
}

} // namespace TesselShow
