// GroupCounts: the counters of one pipe group (one SDK copy of a catalogue
// group), per unit. The group manager keeps one per GroupIdToPipeGroupId in
// `groupCounts`; a unit has a record here exactly while the pipe group
// exists on it.
//
//   unitRefCount  users holding the group on the unit (features' entry
//                 managers, entriesAvailable while it measures)
//   unitAllocated entries created in this pipe group on the unit
#pragma once

#include "common/TesselExport.h"
#include "platform/kiln/Collection.h"
#include "platform/kiln/Entity.h"

namespace Tessel {

class TESSEL_EXPORT GroupCounts : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< GroupCounts > {
    public:
      virtual void onUnitRefCount( U32 ) {}
      virtual void onUnitAllocated( U32 ) {}
   };

   explicit GroupCounts( const Kiln::Name & name ) : Kiln::Entity( name ) {}

   U32 unitRefCount( U32 unit ) const { return unitRefCount_.get( unit ); }
   bool unitRefCountHas( U32 unit ) const { return unitRefCount_.has( unit ); }
   void
   unitRefCountIs( U32 unit, U32 n ) {
      collectionIs( unitRefCount_, unit, n, &NotifieeConst::onUnitRefCount );
   }
   U32
   unitRefCountInc( U32 unit, S32 delta ) {
      return collectionInc( unitRefCount_, unit, delta, &NotifieeConst::onUnitRefCount );
   }
   void
   unitRefCountDel( U32 unit ) {
      collectionDel( unitRefCount_, unit, &NotifieeConst::onUnitRefCount );
   }
   void
   unitRefCountDelAll() {
      collectionDelAll( unitRefCount_, &NotifieeConst::onUnitRefCount );
   }
   const Kiln::OrderedCollection< U32, U32 > &
   unitRefCountCollection() const {
      return unitRefCount_;
   }

   U32 unitAllocated( U32 unit ) const { return unitAllocated_.get( unit ); }
   bool unitAllocatedHas( U32 unit ) const { return unitAllocated_.has( unit ); }
   void
   unitAllocatedIs( U32 unit, U32 n ) {
      collectionIs( unitAllocated_, unit, n, &NotifieeConst::onUnitAllocated );
   }
   U32
   unitAllocatedInc( U32 unit, S32 delta ) {
      return collectionInc( unitAllocated_, unit, delta, &NotifieeConst::onUnitAllocated );
   }
   void
   unitAllocatedDel( U32 unit ) {
      collectionDel( unitAllocated_, unit, &NotifieeConst::onUnitAllocated );
   }
   void
   unitAllocatedDelAll() {
      collectionDelAll( unitAllocated_, &NotifieeConst::onUnitAllocated );
   }
   const Kiln::OrderedCollection< U32, U32 > &
   unitAllocatedCollection() const {
      return unitAllocated_;
   }

 private:
   Kiln::OrderedCollection< U32, U32 > unitRefCount_;
   Kiln::OrderedCollection< U32, U32 > unitAllocated_;
};

} // namespace Tessel
