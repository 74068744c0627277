// Entry managers: one per feature reservation (TcamGroupAssignment), made
// and kept by the group manager (entryManagerIs, unboundedEntryManagerIs).
// A feature draws the entries of its reservation from its manager; the
// manager's hardware group (`group`) is shared with the other reservations
// of that group.
//
//   TesselBoundedTcamEntryManager    a fixed range of logical entry ids,
//                                    baseEntry (inclusive) to endEntry
//   TesselUnboundedTcamEntryManager  ids picked by the SDK
//
// Construction is final: the constructor parameters are the identity that
// the group manager compares when a reservation is asked for again. What
// this header gives beyond them is the per-unit frame that group management
// drives (initializeUnit when a unit becomes known, forgetUnit when its
// module goes, compressEntries before a group is torn down); entry
// allocation, installation and release fill in those members and add their
// own.
//
// Ownership: the group manager holds its entry managers in its collections;
// an entry manager points back at its group manager without counting it
// (the group manager outlives them: its destructor detaches those that
// features still hold, and their groupManager() becomes null).
// Threads: the activity thread only, like every entity.
#pragma once

#include "catalogue/TcamAllocationStrategy.h"
#include "catalogue/TcamGroupAssignment.h"
#include "common/TesselExport.h"
#include "manager/UnitEntriesCreated.h"
#include "platform/kiln/Attribute.h"
#include "platform/kiln/Collection.h"
#include "platform/kiln/Entity.h"
#include "resources/TesselUdfTypes.h"

namespace Tessel {

class TesselTcamGroupManager;

class TESSEL_EXPORT TesselTcamEntryManager : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< TesselTcamEntryManager > {
    public:
      virtual void onExhausted( U32 ) {}
      virtual void onInternalUnitEntry( U32 ) {}
      virtual void onMaxPrio() {}
      virtual void onInvalidPrio() {}
      virtual void onAllocateStatsPerEntry() {}
      virtual void onMaxUdfLength() {}
      virtual void onInitialized() {}
   };

   // Runs handleInitialized(): every unit the group manager knows gets its
   // per-unit records.
   TesselTcamEntryManager( const Kiln::Name & name, TcamGroupAssignment groupAssignment,
                           const Kiln::String & desc, TesselTcamGroupManager * groupManager,
                           U32 group, U32 baseEntry, U32 endEntry,
                           TcamAllocationStrategy strategy );
   ~TesselTcamEntryManager() override;

   // === User-defined fields (resources/TesselUdfEntry.cpp) ===
   // Fields of packet bytes for the entries of this manager's group, shared
   // per unit with every group that asks for the same field and counted per
   // user (see the group manager's UDF section). aclType: Acl::ipv4 0, ipv6 1,
   // mac 2; ethType: a MAC field's ethertype, or UdfUnitSpec::ethTypeNotSet.

   // The field's qualifiers, made on first use; empty when the unit's or
   // this group's UDF width would be exceeded or the hardware is exhausted
   // (nothing programmed then). Throws Kiln::RangeException for a length
   // outside 1 to 16 or an offset above 127 from the base's start.
   QualIdList getAclUdf( U32 unit, int aclType, U32 ethType, UdfOffsetBase base, U8 offset,
                         U8 length );
   // The existing field's qualifiers (verified in hardware), or empty.
   QualIdList findAclUdf( U32 unit, int aclType, U32 ethType, UdfOffsetBase base, U8 offset,
                          U8 length );
   // Gives one use by this group back; the last use destroys the hardware,
   // so the group must not hold the field in its key in hardware any more
   // (its entries released and the group recreated or torn down).
   void releaseAclUdf( U32 unit, int aclType, U32 ethType, UdfOffsetBase base, U8 offset,
                       U8 length );
   // Whether the field exists; it is checked against the hardware (a
   // mismatch aborts).
   bool verifyMirroringAclUdf( U32 unit, int aclType, U32 ethType, UdfOffsetBase base,
                               U8 offset, U8 length );
   // Adds the qualifiers to the group's qualifier set on the unit ("adding
   // UDF qual="). True when the SDK accepts every one and the group, where
   // it exists on the unit, already holds them in its key; false means the
   // group must be recreated (when its entries are gone) before entries can
   // qualify the field.
   bool addUdfQualifierToGroupQset( U32 unit, const QualIdList & quals );
   // Bytes of UDF one key of this group may hold: maxUdfLength(), capped by
   // the chip's per-group limit where its chip information has one.
   U32 groupUdfWidthLimit( U32 unit ) const;

   // --- constructor parameters ---
   TcamGroupAssignment groupAssignment() const { return groupAssignment_; }
   const Kiln::String & desc() const { return desc_; }
   // Null once the group manager is gone.
   TesselTcamGroupManager * groupManager() const { return groupManager_; }
   U32 group() const { return group_; }
   U32 baseEntry() const { return baseEntry_; }
   U32 endEntry() const { return endEntry_; }
   TcamAllocationStrategy strategy() const { return strategy_; }

   // --- attributes ---
   U32 maxPrio() const { return maxPrio_.get(); }
   void maxPrioIs( U32 v ) { attributeIs( maxPrio_, v, &NotifieeConst::onMaxPrio ); }
   U32 invalidPrio() const { return invalidPrio_.get(); }
   void invalidPrioIs( U32 v ) { attributeIs( invalidPrio_, v, &NotifieeConst::onInvalidPrio ); }
   bool allocateStatsPerEntry() const { return allocateStatsPerEntry_.get(); }
   void
   allocateStatsPerEntryIs( bool v ) {
      attributeIs( allocateStatsPerEntry_, v, &NotifieeConst::onAllocateStatsPerEntry );
   }
   U8 maxUdfLength() const { return maxUdfLength_.get(); }
   void maxUdfLengthIs( U8 v ) { attributeIs( maxUdfLength_, v, &NotifieeConst::onMaxUdfLength ); }
   bool initialized() const { return initialized_.get(); }
   void initializedIs( bool v ) { attributeIs( initialized_, v, &NotifieeConst::onInitialized ); }

   // --- per-unit collections ---
   bool exhausted( U32 unit ) const { return exhausted_.get( unit ); }
   bool exhaustedHas( U32 unit ) const { return exhausted_.has( unit ); }
   void
   exhaustedIs( U32 unit, bool v ) {
      collectionIs( exhausted_, unit, v, &NotifieeConst::onExhausted );
   }
   void exhaustedDel( U32 unit ) { collectionDel( exhausted_, unit, &NotifieeConst::onExhausted ); }
   void exhaustedDelAll() { collectionDelAll( exhausted_, &NotifieeConst::onExhausted ); }

   Kiln::Ptr< UnitEntriesCreated >
   internalUnitEntry( U32 unit ) const {
      return internalUnitEntry_.get( unit );
   }
   Kiln::Ptr< UnitEntriesCreated >
   internalUnitEntryIs( U32 unit ) {
      return collectionEntityIs( internalUnitEntry_, unit,
                                 &NotifieeConst::onInternalUnitEntry, unit );
   }
   void
   internalUnitEntryDel( U32 unit ) {
      collectionDel( internalUnitEntry_, unit, &NotifieeConst::onInternalUnitEntry );
   }
   void
   internalUnitEntryDelAll() {
      collectionDelAll( internalUnitEntry_, &NotifieeConst::onInternalUnitEntry );
   }
   const Kiln::OrderedCollection< U32, Kiln::Ptr< UnitEntriesCreated > > &
   internalUnitEntryCollection() const {
      return internalUnitEntry_;
   }

   // --- driven by the group manager ---
   // Sets up the manager on every unit the group manager knows.
   void handleInitialized();
   // A unit became known: its record exists and it is not exhausted.
   virtual void initializeUnit( U32 unit );
   // The unit's module is gone: its records are dropped.
   virtual void forgetUnit( U32 unit );
   // Packs the manager's entries on the unit before its group is torn down.
   // Entries are allocated elsewhere; until then there is nothing to pack.
   virtual void compressEntries( U32 unit );
   // Entries the manager holds on the unit. Counted by entry allocation;
   // 0 until it exists.
   virtual U32 entriesAllocated( U32 unit ) const;

   // --- entry release, built with entry allocation ---
   virtual void releaseEntry( U32 unit, U32 entry );
   virtual void releaseEntryInternal( U32 unit, U32 entry, bool mayRemoveGroup );

 private:
   friend class TesselTcamGroupManager;
   void groupManagerDetach() { groupManager_ = nullptr; }

   TcamGroupAssignment groupAssignment_;
   Kiln::String desc_;
   TesselTcamGroupManager * groupManager_;
   U32 group_;
   U32 baseEntry_;
   U32 endEntry_;
   TcamAllocationStrategy strategy_;

   Kiln::OrderedCollection< U32, bool > exhausted_;
   Kiln::OrderedCollection< U32, Kiln::Ptr< UnitEntriesCreated > > internalUnitEntry_;
   Kiln::Attribute< U32 > maxPrio_{ 0 };
   Kiln::Attribute< U32 > invalidPrio_{ 0xFFFFFFFF };
   Kiln::Attribute< bool > allocateStatsPerEntry_{ true };
   Kiln::Attribute< U8 > maxUdfLength_{ 32 };
   Kiln::Attribute< bool > initialized_{ false };
};

class TESSEL_EXPORT TesselBoundedTcamEntryManager : public TesselTcamEntryManager {
 public:
   using TesselTcamEntryManager::TesselTcamEntryManager;
   ~TesselBoundedTcamEntryManager() override;
};

class TESSEL_EXPORT TesselUnboundedTcamEntryManager : public TesselTcamEntryManager {
 public:
   using TesselTcamEntryManager::TesselTcamEntryManager;
   ~TesselUnboundedTcamEntryManager() override;
};

} // namespace Tessel
