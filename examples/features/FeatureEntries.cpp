#include "examples/features/FeatureEntries.h"

#include "catalogue/TesselTcamGroups.h"
#include "manager/ReservationLayout.h"
#include "platform/kiln/Assert.h"
#include "sdk/api/error.h"

namespace Features {

using namespace Tessel;

Kiln::Ptr< TesselUnboundedTcamEntryManager >
reservationEntryManager( TesselTcamGroupManager & manager, TcamGroupAssignment reservation ) {
   for ( U32 row = 0; row < numTcamReservations(); ++row ) {
      const TcamReservation & r = *getTcamReservation( row );
      if ( r.featureId != reservation ) {
         continue;
      }
      KILN_ASSERT_MSG( r.strategy == tcamAllocateUnbounded_,
                       "the example features use unbounded reservations" );
      EntryRange range = reservationEntryRange( row );
      return manager.unboundedEntryManagerIs( reservation, r.name, &manager, r.groupId,
                                              range.baseEntry, range.endEntry, r.strategy );
   }
   KILN_ASSERT_MSG( false, "reservation not in the catalogue" );
   return nullptr;
}

std::string
LoadReport::itemsText( U32 count ) const {
   std::string plural = itemWord + ( itemWord.back() == 's' ? "es" : "s" );
   return std::to_string( count ) + " " + ( count == 1 ? itemWord : plural );
}

FeatureEntries::FeatureEntries( const Kiln::Ptr< TesselTcamGroupManager > & manager,
                                TcamGroupAssignment reservation )
      : manager_( manager ), entryManager_( reservationEntryManager( *manager, reservation ) ) {}

FeatureEntries::~FeatureEntries() {
   release();
}

FeatureEntries::Outcome
FeatureEntries::add( U32 unit, U32 item, const Spec & spec ) {
   Outcome outcome;
   U32 entry = entryManager_->getEntry( unit, spec.desc );
   if ( !entry ) {
      outcome.exhausted = entryManager_->exhaustedHas( unit ) && entryManager_->exhausted( unit );
      return outcome;
   }
   int rc = spec.program( unit, entry );
   if ( rc >= 0 ) {
      entryManager_->setPriorityForEntry( unit, entry, spec.priority );
      rc = entryManager_->installEntry( unit, entry );
   }
   if ( rc < 0 ) {
      // Copies may be installed or not: releasing destroys each one.
      giveBack( Held{ unit, entry, item }, false );
      outcome.rc = rc;
      return outcome;
   }
   held_.push_back( Held{ unit, entry, item } );
   itemOfEntry_[ { unit, entry } ] = item;
   outcome.entry = entry;
   return outcome;
}

std::string
FeatureEntries::failureText( const Outcome & outcome ) const {
   if ( outcome.exhausted ) {
      return "the TCAM is exhausted (reservation " + entryManager_->desc().str() + ")";
   }
   if ( outcome.rc < 0 ) {
      return std::string( "the chip refused an entry: " ) + bcm_errmsg( outcome.rc ) + " (" +
             std::to_string( outcome.rc ) + ")";
   }
   return "no entry left in reservation " + entryManager_->desc().str();
}

LoadReport
FeatureEntries::installItems( const std::string & feature, const std::string & itemWord,
                              U32 items,
                              const std::function< std::vector< Spec >( U32, U32 ) > & specsOf ) {
   LoadReport report( feature, itemWord, items );
   for ( U32 unit : manager_->units() ) {
      U32 entries = 0;
      for ( U32 item = 0; item < items; ++item ) {
         for ( const Spec & spec : specsOf( unit, item ) ) {
            Outcome outcome = add( unit, item, spec );
            if ( !outcome.entry ) {
               report.error = feature + ": " + std::to_string( item ) + " of " +
                              report.itemsText( items ) + " fitted on unit " +
                              std::to_string( unit ) + " (" + std::to_string( entries ) +
                              " entries), then " + failureText( outcome ) +
                              "; nothing is left installed";
               report.itemsInstalled = item;
               report.entries = entries;
               release();
               return report;
            }
            ++entries;
         }
      }
      report.entries = entries;
      report.hardwareEntries += entries * copiesPerEntry( unit );
      report.entriesWithoutCounter += entriesWithoutCounter( unit );
   }
   report.itemsInstalled = items;
   return report;
}

void
FeatureEntries::giveBack( const Held & held, bool installed ) {
   if ( installed ) {
      entryManager_->removeEntry( held.unit, held.entry );
   }
   entryManager_->releaseEntry( held.unit, held.entry );
}

void
FeatureEntries::release() {
   while ( !held_.empty() ) {
      Held held = held_.back();
      held_.pop_back();
      itemOfEntry_.erase( { held.unit, held.entry } );
      giveBack( held, true );
   }
}

std::optional< U32 >
FeatureEntries::itemOf( U32 unit, U32 sdkGroup, U32 sdkEntry ) const {
   if ( ( sdkGroup & 0xFFFFFF ) != entryManager_->group() ) {
      return std::nullopt;
   }
   auto it = itemOfEntry_.find( { unit, sdkEntry & 0xFFFFFF } );
   return it == itemOfEntry_.end() ? std::nullopt : std::optional< U32 >( it->second );
}

U64
FeatureEntries::packets( U32 unit, U32 item ) {
   U64 total = 0;
   for ( const Held & held : held_ ) {
      if ( held.unit == unit && held.item == item ) {
         total += entryManager_->hitsForEntry( unit, held.entry );
      }
   }
   return total;
}

void
FeatureEntries::forEachCopy( U32 unit, U32 entry,
                             const std::function< void( U32, U32, U32 ) > & fn ) const {
   const EntryLayout & layout = entryManager_->internalUnitEntry( unit )->layout();
   for ( U32 pipe = 0; pipe < layout.pipes; ++pipe ) {
      for ( U32 copy = 0; copy < layout.copies; ++copy ) {
         fn( pipe, copy, TesselTcamEntryManager::getPipeEntryId( unit, pipe, entry, copy ) );
      }
   }
}

U32
FeatureEntries::copiesPerEntry( U32 unit ) const {
   if ( !entryManager_->internalUnitEntryHas( unit ) ) {
      return 0;
   }
   const EntryLayout & layout = entryManager_->internalUnitEntry( unit )->layout();
   return layout.pipes * layout.copies;
}

U32
FeatureEntries::entriesWithoutCounter( U32 unit ) const {
   U32 count = 0;
   for ( const Held & held : held_ ) {
      if ( held.unit == unit && !entryManager_->internalUnitEntry( unit )->entryStatsHas( held.entry ) ) {
         ++count;
      }
   }
   return count;
}

} // namespace Features
