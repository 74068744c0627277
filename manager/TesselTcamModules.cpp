// Modules coming and going: their units are set up when their chip
// information arrives and forgotten when it leaves.
#include "manager/TesselTcamGroupManager.h"

#include <algorithm>

#include "catalogue/TesselTcamGroups.h"
#include "manager/ReservationLayout.h"
#include "platform/fastlog/Trace.h"

TRACE_CHANNEL( "TesselTcam" );

namespace Tessel {

namespace {

bool
contains( const std::vector< U32 > & units, U32 unit ) {
   return std::find( units.begin(), units.end(), unit ) != units.end();
}

} // namespace

void
TesselTcamGroupManager::modChipInfoIs( U16 moduleId, const Agent::ChipInfo & info ) {
   std::vector< U32 > before = units();
   std::vector< U32 > leaving;
   if ( const Agent::ChipInfo * old = modChipInfo_.find( moduleId ) ) {
      for ( U32 unit : old->units() ) {
         if ( !info.unitHas( unit ) ) {
            leaving.push_back( unit );
         }
      }
   }
   for ( U32 unit : leaving ) {
      forgetUnit( unit );
   }
   if ( !collectionIs( modChipInfo_, moduleId, info, &NotifieeConst::onModChipInfo ) ) {
      return;
   }
   TRACE5( "module " << moduleId << " chip information " << info.valueText() );
   for ( U32 unit : info.units() ) {
      if ( initialized_ && !contains( before, unit ) ) {
         setUpUnit( unit, info );
      }
   }
}

void
TesselTcamGroupManager::modChipInfoDel( U16 moduleId ) {
   const Agent::ChipInfo * info = modChipInfo_.find( moduleId );
   if ( !info ) {
      return;
   }
   TRACE5( "module " << moduleId << " gone" );
   for ( U32 unit : info->units() ) {
      forgetUnit( unit );
   }
   collectionDel( modChipInfo_, moduleId, &NotifieeConst::onModChipInfo );
}

// A unit became known: its pipes, its reservations' entry managers and,
// on chips that have them, its compression groups.
void
TesselTcamGroupManager::setUpUnit( U32 unit, const Agent::ChipInfo & info ) {
   TRACE7( "setUpUnit unit " << unit );
   stageIngressIs( unit, info.perPipeIngress() );
   if ( info.perPipeIngress() ) {
      numPipeIs( info.numPipes() );
   }
   // Before any group exists: the pipe count must not change under entries.
   if ( ovidWarNeeded( unit ) ) {
      ovidWarIs( unit, true );
      ovidWarSmIs( unit );
   }
   for ( const auto & [ assignment, manager ] : entryManager_ ) {
      manager->initializeUnit( unit );
   }
   for ( const auto & [ assignment, manager ] : unboundedEntryManager_ ) {
      manager->initializeUnit( unit );
   }
   registerReservations( unit, info );
   if ( info.classIdCompression() ) {
      for ( U32 group = COMPRESS_GROUP_L4_SRC_PORT_; group <= COMPRESS_GROUP_ETHER_TYPE_; ++group ) {
         initializeCompressionGroups( unit, static_cast< TcamGroupId >( group ) );
      }
   }
}

// The entry managers of the reservation rows the unit keeps.
void
TesselTcamGroupManager::registerReservations( U32 unit, const Agent::ChipInfo & info ) {
   for ( U32 row = 0; row < numTcamReservations(); ++row ) {
      const TcamReservation & r = *getTcamReservation( row );
      if ( !reservationKept( info, r.featureId ) ) {
         continue;
      }
      EntryRange range = reservationEntryRange( row );
      TRACE9( "Unit: " << unit << " reservation " << r.featureId << " group " << r.groupId );
      if ( r.strategy == tcamAllocateUnbounded_ ) {
         unboundedEntryManagerIs( r.featureId, r.name, this, r.groupId, range.baseEntry,
                                  range.endEntry, r.strategy );
      } else {
         entryManagerIs( r.featureId, r.name, this, r.groupId, range.baseEntry, range.endEntry,
                         r.strategy );
      }
   }
}

// The unit's module is gone: entry managers drop the unit, its class-id
// entries go, then its groups are destroyed with their UDFs, then its range
// checkers, which no entry checks any more (errors traced: the chip may be
// gone already), and its records dropped.
void
TesselTcamGroupManager::forgetUnit( U32 unit ) {
   TRACE7( "forgetUnit unit " << unit );
   for ( const auto & [ assignment, manager ] : entryManager_ ) {
      manager->forgetUnit( unit );
   }
   for ( const auto & [ assignment, manager ] : unboundedEntryManager_ ) {
      manager->forgetUnit( unit );
   }
   forgetUnitClassIds( unit );
   std::vector< U32 > groups;
   for ( const auto & [ key, counts ] : groupCounts_ ) {
      if ( counts->unitRefCountHas( unit ) &&
           ( groups.empty() || groups.back() != key.groupId ) ) {
         groups.push_back( key.groupId );
      }
   }
   for ( U32 groupId : groups ) {
      destroyGroupOnUnit( unit, groupId, true );
   }
   forgetUnitUdfs( unit );
   forgetUnitRangeCheckers( unit );
   stageIngressDel( unit );
   ovidWarDel( unit );
   ovidWarSmDel( unit );
   portConfigs_.erase( unit );
}

} // namespace Tessel
