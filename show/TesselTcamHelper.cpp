// The walk of a unit's groups and reservations shared by the usage report
// and the command-line tables.
#include "show/TesselTcamHelper.h"

#include <map>

#include "common/TesselSdkCall.h"
#include "manager/ReservationLayout.h"
#include "manager/TesselTcamGroupManager.h"
#include "sdk/api/field.h"

namespace Tessel {

namespace {

constexpr U32 copyBit = 1u << 27;

U32
pipeOf( U32 pipeGroupId ) {
   return ( pipeGroupId >> 24 ) & 7;
}

// The copy-0 usage of a pipe group once its status is known.
GroupUsage
usageOf( const TesselTcamGroupManager & manager, U32 unit, U32 pipeGroupId,
         const GroupCounts & counts, const bcm_field_group_status_t & status ) {
   GroupUsage usage;
   usage.pipeGroupId = pipeGroupId;
   usage.groupId = pipeGroupId & 0xFFFFFF;
   usage.pipe = pipeOf( pipeGroupId );
   // Only ingress entries get outer-VLAN twins; lookup and egress groups
   // hold one SDK entry per entry on any unit.
   usage.ovidWar = manager.ovidWarHas( unit ) && manager.ovidWar( unit ) &&
                   getGroupStage( usage.groupId ) == stageTypeIngress_;
   usage.perPipe = !usage.ovidWar && manager.getNumPipe( unit, usage.groupId ) > 1;
   usage.copies = manager.getNumCopiesPerPipe( unit, usage.groupId );
   U32 used = counts.unitAllocatedHas( unit ) ? counts.unitAllocated( unit ) : 0;
   U32 freeEntries = status.entries_free > 0 ? U32( status.entries_free ) : 0;
   if ( usage.ovidWar ) {
      freeEntries /= 2;
      used >>= 1;
   }
   usage.used = used * usage.copies;
   usage.freeEntries = freeEntries;
   return usage;
}

// The reservation table's rows of a group, in table order. The table is
// fixed, so it is indexed once rather than scanned per group and request.
const std::vector< U32 > &
reservationRowsOfGroup( U32 groupId ) {
   static const std::map< U32, std::vector< U32 > > rowsByGroup = [] {
      std::map< U32, std::vector< U32 > > rows;
      for ( U32 index = 0; index < numTcamReservations(); ++index ) {
         rows[ U32( getTcamReservation( index )->groupId ) ].push_back( index );
      }
      return rows;
   }();
   static const std::vector< U32 > none;
   auto found = rowsByGroup.find( groupId );
   return found == rowsByGroup.end() ? none : found->second;
}

} // namespace

std::vector< GroupUsage >
groupUsageOfUnit( TesselTcamGroupManager & manager, U32 unit ) {
   std::vector< GroupUsage > groups;
   for ( const auto & [ key, counts ] : manager.groupCountsCollection() ) {
      if ( !counts->unitRefCountHas( unit ) ) {
         continue;
      }
      Kiln::Ptr< GroupCounts > held = counts; // the SDK call lets others run
      int groupId = static_cast< int >( key.pipeGroupId );
      bcm_field_group_status_t status;
      bcm_field_group_status_t_init( &status );
      SDK_CALL_CHECKED( bcm_field_group_status_get( unit, groupId, &status ) );
      if ( key.pipeGroupId & copyBit ) {
         continue;
      }
      groups.push_back( usageOf( manager, unit, key.pipeGroupId, *held, status ) );
   }
   return groups;
}

std::vector< ReservationUse >
reservationsInUse( const TesselTcamGroupManager & manager, U32 unit, U32 groupId, U32 copies ) {
   std::vector< ReservationUse > uses;
   const std::vector< U32 > & rows = reservationRowsOfGroup( groupId );
   uses.reserve( rows.size() );
   const Agent::ChipInfo * info = manager.chipInfo( unit );
   for ( U32 index : rows ) {
      const TcamReservation * row = getTcamReservation( index );
      if ( !reservationKept( info ? *info : Agent::ChipInfo(), row->featureId ) ) {
         continue;
      }
      Kiln::Ptr< TesselTcamEntryManager > entryManager;
      if ( row->strategy == tcamAllocateUnbounded_ ) {
         entryManager = manager.unboundedEntryManager( row->featureId );
      } else {
         entryManager = manager.entryManager( row->featureId );
      }
      if ( !entryManager || !entryManager->internalUnitEntryHas( unit ) ) {
         continue;
      }
      U32 allocated = entryManager->entriesAllocated( unit ) * copies;
      if ( allocated == 0 ) {
         continue;
      }
      uses.push_back( { index, row, entryManager, allocated,
                        entriesInUse( *entryManager, unit ) * copies } );
   }
   return uses;
}

} // namespace Tessel
