// Range-checker records, kept by the group manager in three collections:
//
//   rangeChecker       RangeCheckerDesc  -> RangeCheckerData   the checker that
//                                                              serves a range
//                                                              on each unit
//   unitRangeInfo      UnitRangeInfoKey  -> UnitRangeIdInfo    its hardware
//                                                              range per pipe
//                                                              (range-module
//                                                              chips)
//   entryRangeCheckId  entry id          -> EntryToRangeCheckIds  checkers an
//                                                              entry qualifies on
//
// A checker on a range-module chip is one hardware range per pipe, all
// answering to the id of the pipe-0 range; entries install each pipe's copy
// with that pipe's range id (pipeRangeId), which is why installation reads
// these records. Keys are plain values with the platform's text form;
// records are entities in the platform's naming style.
#pragma once

#include <compare>
#include <string>

#include "common/TesselExport.h"
#include "platform/kiln/Collection.h"
#include "platform/kiln/Entity.h"
#include "platform/kiln/Types.h"

namespace Tessel {

typedef U32 RangeCheckId; // 0: no checker

// A range of L4 ports or packet lengths as features ask for it; checkers
// are shared by equal descriptors.
class RangeCheckerDesc {
 public:
   RangeCheckerDesc() = default;
   RangeCheckerDesc( U32 low, U32 high, U32 rangeFlags )
         : low_( low ), high_( high ), rangeFlags_( rangeFlags ) {}

   U32 low() const { return low_; }   // inclusive
   U32 high() const { return high_; } // inclusive
   // The SDK's field-range flags: 0x1 source L4 port, 0x2 destination L4
   // port, 0x100 packet length; other bits reach the older API unchanged.
   U32 rangeFlags() const { return rangeFlags_; }

   auto operator<=>( const RangeCheckerDesc & ) const = default;
   // "Value('Tessel::RangeCheckerDesc', ** {'low': 10, 'high': 20, 'rangeFlags': 1})"
   TESSEL_EXPORT std::string valueText() const;

 private:
   U32 low_ = 0;
   U32 high_ = 0;
   U32 rangeFlags_ = 0;
};

// The checkers that serve one descriptor, per unit, and their users.
class TESSEL_EXPORT RangeCheckerData : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< RangeCheckerData > {
    public:
      virtual void onUnitId( U32 ) {}
      virtual void onUnitRefCount( U32 ) {}
   };

   explicit RangeCheckerData( const RangeCheckerDesc & desc )
         : Kiln::Entity( desc.valueText() ), desc_( desc ) {}
   const RangeCheckerDesc & desc() const { return desc_; }

   RangeCheckId unitId( U32 unit ) const { return unitId_.get( unit ); }
   bool unitIdHas( U32 unit ) const { return unitId_.has( unit ); }
   void
   unitIdIs( U32 unit, RangeCheckId id ) {
      collectionIs( unitId_, unit, id, &NotifieeConst::onUnitId );
   }
   void unitIdDel( U32 unit ) { collectionDel( unitId_, unit, &NotifieeConst::onUnitId ); }
   void unitIdDelAll() { collectionDelAll( unitId_, &NotifieeConst::onUnitId ); }
   const Kiln::OrderedCollection< U32, RangeCheckId > &
   unitIdCollection() const {
      return unitId_;
   }

   U32 unitRefCount( U32 unit ) const { return unitRefCount_.get( unit ); }
   bool unitRefCountHas( U32 unit ) const { return unitRefCount_.has( unit ); }
   void
   unitRefCountIs( U32 unit, U32 n ) {
      collectionIs( unitRefCount_, unit, n, &NotifieeConst::onUnitRefCount );
   }
   // Adds a signed amount; going below zero aborts ("counter out of range").
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

 private:
   RangeCheckerDesc desc_;
   Kiln::OrderedCollection< U32, RangeCheckId > unitId_;
   Kiln::OrderedCollection< U32, U32 > unitRefCount_;
};

// A checker on a unit, named by the id of its pipe-0 range.
struct UnitRangeInfoKey {
   U32 unit = 0;
   RangeCheckId baseRangeId = 0;

   auto operator<=>( const UnitRangeInfoKey & ) const = default;
   // "Value('Tessel::UnitRangeInfoKey', ** {'unit': 0, 'baseRangeId': 3})"
   TESSEL_EXPORT std::string valueText() const;
};

// The per-pipe hardware ranges of one checker (range-module chips): the
// range id each pipe's entry copies qualify on.
class TESSEL_EXPORT UnitRangeIdInfo : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< UnitRangeIdInfo > {
    public:
      virtual void onPipeRangeId( U32 ) {}
   };

   explicit UnitRangeIdInfo( const UnitRangeInfoKey & key )
         : Kiln::Entity( key.valueText() ), key_( key ) {}
   const UnitRangeInfoKey & key() const { return key_; }

   RangeCheckId pipeRangeId( U32 pipe ) const { return pipeRangeId_.get( pipe ); }
   bool pipeRangeIdHas( U32 pipe ) const { return pipeRangeId_.has( pipe ); }
   void
   pipeRangeIdIs( U32 pipe, RangeCheckId id ) {
      collectionIs( pipeRangeId_, pipe, id, &NotifieeConst::onPipeRangeId );
   }
   void
   pipeRangeIdDel( U32 pipe ) {
      collectionDel( pipeRangeId_, pipe, &NotifieeConst::onPipeRangeId );
   }
   void
   pipeRangeIdDelAll() {
      collectionDelAll( pipeRangeId_, &NotifieeConst::onPipeRangeId );
   }
   const Kiln::OrderedCollection< U32, RangeCheckId > &
   pipeRangeIdCollection() const {
      return pipeRangeId_;
   }

 private:
   UnitRangeInfoKey key_;
   Kiln::OrderedCollection< U32, RangeCheckId > pipeRangeId_;
};

// The checkers attached to one entry (by the id entries qualify on, the
// pipe-0 range id), kept as a set: id -> true.
class TESSEL_EXPORT EntryToRangeCheckIds : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< EntryToRangeCheckIds > {
    public:
      virtual void onRangeCheckId( RangeCheckId ) {}
   };

   explicit EntryToRangeCheckIds( U32 entryId )
         : Kiln::Entity( std::to_string( entryId ) ), entryId_( entryId ) {}
   U32 entryId() const { return entryId_; }

   bool rangeCheckId( RangeCheckId id ) const { return rangeCheckId_.get( id ); }
   bool rangeCheckIdHas( RangeCheckId id ) const { return rangeCheckId_.has( id ); }
   void
   rangeCheckIdIs( RangeCheckId id, bool v ) {
      collectionIs( rangeCheckId_, id, v, &NotifieeConst::onRangeCheckId );
   }
   void
   rangeCheckIdDel( RangeCheckId id ) {
      collectionDel( rangeCheckId_, id, &NotifieeConst::onRangeCheckId );
   }
   void
   rangeCheckIdDelAll() {
      collectionDelAll( rangeCheckId_, &NotifieeConst::onRangeCheckId );
   }
   const Kiln::OrderedCollection< RangeCheckId, bool > &
   rangeCheckIdCollection() const {
      return rangeCheckId_;
   }

 private:
   U32 entryId_;
   Kiln::OrderedCollection< RangeCheckId, bool > rangeCheckId_;
};

} // namespace Tessel
