#include "manager/ReservationLayout.h"

#include "sdk/shim/ChipType.h"

namespace Tessel {

namespace {

U32
fixedCount( const TcamReservation & row ) {
   return row.count > 0 ? static_cast< U32 >( row.count ) : 0;
}

} // namespace

EntryRange
reservationEntryRange( U32 row ) {
   const TcamReservation * reservation = getTcamReservation( row );
   KILN_ASSERT( reservation && row < numTcamReservations() );
   if ( reservation->strategy == tcamAllocateUnbounded_ ) {
      return EntryRange{ 0, fixedCount( *reservation ) };
   }
   U32 base = reservationEntryBase;
   for ( U32 earlier = 0; earlier < row; ++earlier ) {
      const TcamReservation * r = getTcamReservation( earlier );
      if ( r->strategy != tcamAllocateUnbounded_ ) {
         base += fixedCount( *r );
      }
   }
   return EntryRange{ base, base + fixedCount( *reservation ) };
}

bool
reservationKept( const Agent::ChipInfo & info, TcamGroupAssignment featureId ) {
   bool th3 = info.chipType() == Shim::chipTypeTh3;
   return !skipReservation( featureId, info.perPipeIngress(), !th3 );
}

} // namespace Tessel
