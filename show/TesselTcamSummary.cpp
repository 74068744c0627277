// The bank summary: which slices the groups of each reservation hold.
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "common/TesselSdkCall.h"
#include "manager/ReservationLayout.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/fastlog/Trace.h"
#include "sdk/api/field.h"

TRACE_CHANNEL( "TesselTcamShow" );

namespace Tessel {

namespace {

const char * const dashes = "--------------------------------------------\n";

// A pipe group of the unit and the reservations it holds, in table order.
struct GroupBanks {
   U32 pipeGroupId;
   std::vector< const char * > names;
   std::string banks;
};

std::vector< GroupBanks >
groupsWithReservations( const TesselTcamGroupManager & manager, U32 unit ) {
   std::vector< GroupBanks > groups;
   const Agent::ChipInfo * info = manager.chipInfo( unit );
   for ( const auto & [ key, counts ] : manager.groupCountsCollection() ) {
      if ( !counts->unitRefCountHas( unit ) ) {
         continue;
      }
      GroupBanks group{ key.pipeGroupId, {}, "" };
      for ( U32 index = 0; index < numTcamReservations(); ++index ) {
         const TcamReservation * row = getTcamReservation( index );
         if ( U32( row->groupId ) == key.groupId &&
              reservationKept( info ? *info : Agent::ChipInfo(), row->featureId ) ) {
            group.names.push_back( row->name );
         }
      }
      groups.push_back( std::move( group ) );
   }
   return groups;
}

} // namespace

void
TesselTcamGroupManager::showSummaryTcamUsage( Kiln::String switchName, U32 fd, U32 unit ) {
   TRACE8( "showSummaryTcamUsage unit " << unit );
   int out = static_cast< int >( fd );
   dprintf( out, "=== TCAM summary for switch %s ===\n%s Banks           Used By\n",
            switchName.c_str(), dashes );
   dprintf( out, "%s", dashes );
   std::vector< GroupBanks > groups = groupsWithReservations( *this, unit );
   {
      // The walk reads only the SDK; nothing of ours is touched meanwhile.
      Kiln::UnlockAnchor anchor( Kiln::ActivityUnlockAnchor::lock() );
      for ( GroupBanks & group : groups ) {
         std::ostringstream banks;
         if ( showSummaryTcamUsageHelper( int( unit ), int( group.pipeGroupId ), banks ) < 0 ) {
            TRACE8( "Unit: " << unit << " " << "showSummaryTcamUsage"
                             << " showSummaryTcamUsageHelper error" );
            return;
         }
         group.banks = banks.str();
      }
   }
   // The first reservation in table order names a set of banks.
   std::map< std::string, std::string > usedBy;
   for ( const GroupBanks & group : groups ) {
      for ( const char * name : group.names ) {
         if ( !group.banks.empty() ) {
            usedBy.emplace( group.banks, name );
         }
      }
   }
   for ( const auto & [ banks, name ] : usedBy ) {
      dprintf( out, " %-15s %s\n", banks.c_str(), name.c_str() );
   }
   dprintf( out, "%s", dashes );
}

int
TesselTcamGroupManager::showSummaryTcamUsageHelper( int unit, int groupId,
                                                    std::ostringstream & out ) {
   bcm_field_control_t * control = nullptr;
   int rc = SDK_CALL( bcm_field_control_get( unit, &control ) );
   if ( rc < 0 ) {
      TRACE8( "Unit: " << unit << " " << "showSummaryTcamUsageHelper"
                       << " Cannot get field control structure " );
      return rc;
   }
   rc = SDK_CALL( FP_LOCK( unit ) );
   if ( rc < 0 ) {
      TRACE8( "Unit: " << unit << " " << "showSummaryTcamUsageHelper"
                       << " unable to acquire FP_LOCK" );
      return rc;
   }
   for ( bcm_field_control_group_t * group = control->groups; group; group = group->next ) {
      if ( group->gid != groupId ) {
         continue;
      }
      int count = 0;
      rc = SDK_CALL( bcm_field_group_mode_slice_count_get( unit, group->flags & 0xffff, &count ) );
      if ( rc < 0 ) {
         TRACE8( "Unit: " << unit << " " << "showSummaryTcamUsageHelper"
                          << " Cannot get group slice count " );
         SDK_CALL_NO_RC_CHECK( FP_UNLOCK( unit ) );
         return rc;
      }
      for ( bcm_field_control_slice_t * slice = group->slices; slice; slice = slice->next ) {
         for ( int k = 0; k < count; ++k ) {
            if ( out.tellp() > 0 ) {
               out << ", ";
            }
            out << ( ( slice->slice_number + k ) & 0xff );
         }
      }
   }
   SDK_CALL_NO_RC_CHECK( FP_UNLOCK( unit ) );
   return BCM_E_NONE;
}

} // namespace Tessel
