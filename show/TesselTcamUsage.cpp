// The per-group usage report.
#include <cstdio>
#include <string>

#include "manager/TesselTcamGroupManager.h"
#include "platform/fastlog/Trace.h"
#include "show/TesselTcamHelper.h"

TRACE_CHANNEL( "TesselTcamShow" );

namespace Tessel {

namespace {

void
printReservation( int out, bool detail, U32 unit, const GroupUsage & group,
                  const ReservationUse & use ) {
   const char * name = use.row->name;
   if ( detail && use.allocated != use.used ) {
      dprintf( out, "  %s reserves %d entries (%d used).\n", name, int( use.allocated ),
               int( use.used ) );
   } else {
      dprintf( out, "  %s uses %d entries.\n", name, int( use.allocated ) );
   }
   if ( !detail ) {
      return;
   }
   for ( const auto & [ entryId, entryName ] : entriesOnUnit( *use.entryManager, unit ) ) {
      long long hits = static_cast< long long >( entryHits( *use.entryManager, unit, entryId,
                                                            group ) );
      dprintf( out, "    %-10d %12lld hits - %s\n", int( entryId ), hits, entryName.c_str() );
   }
}

} // namespace

void
TesselTcamGroupManager::showTcamUsage( Kiln::String switchName, U32 fd, bool detail, U32 unit,
                                       S8 pipe ) {
   TRACE8( "showTcamUsage unit " << unit << " pipe " << int( pipe ) );
   int out = static_cast< int >( fd );
   dprintf( out, "=== TCAM %s for switch %s ===\n", detail ? "detail" : "summary",
            switchName.c_str() );
   U8 pipeFilter = static_cast< U8 >( pipe );
   for ( const GroupUsage & group : groupUsageOfUnit( *this, unit ) ) {
      std::string pipeText;
      if ( group.perPipe ) {
         if ( pipeFilter < 255 && group.pipe != pipeFilter ) {
            continue;
         }
         pipeText = " in PIPE " + std::to_string( group.pipe );
      }
      dprintf( out, "TCAM group %d%s uses %d %s and can use up to %d more.\n",
               int( group.groupId ), pipeText.c_str(), int( group.used ),
               group.used == 1 ? "entry" : "entries", int( group.freeEntries ) );
      for ( const ReservationUse & use :
            reservationsInUse( *this, unit, group.groupId, group.copies ) ) {
         printReservation( out, detail, unit, group, use );
      }
   }
}

} // namespace Tessel
