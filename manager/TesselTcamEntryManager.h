// Entry managers: one per feature reservation (TcamGroupAssignment), made
// and kept by the group manager (entryManagerIs, unboundedEntryManagerIs).
// A feature draws the entries of its reservation from its manager; the
// manager's hardware group (`group`) is shared with the other reservations
// of that group.
//
//   TesselBoundedTcamEntryManager    a fixed range of logical entry ids,
//                                    baseEntry (inclusive) to endEntry; the
//                                    id fixes the entry's default priority
//   TesselUnboundedTcamEntryManager  ids picked by the SDK
//
// A logical entry is one SDK entry per pipe and copy of the group. The SDK
// id of a copy is the logical id with the pipe in bits 24-26 and the copy
// in bit 27 (getPipeEntryId); pipe 0, copy 0 is the base entry, which the
// feature qualifies and gives actions before it installs:
//
//   id = manager->getEntry( unit, entry, "desc" );       // every copy exists,
//                                                         // with its counters
//   bcm_field_qualify_...( unit, id, ... );               // on the base entry
//   manager->updateInPortsForEntry( unit, id, ports, false, false );  // optional
//   manager->installEntry( unit, id );                    // every copy installed
//   manager->hitsForEntry( unit, id );                    // summed over copies
//   manager->removeEntry( unit, id );                     // out of hardware
//   manager->releaseEntry( unit, id );                    // id given back
//
// When entries are created in hardware is the manager's strategy:
// unbounded and on-demand create each entry when asked for and destroy it
// on release; a chunk is created whole at the first request on a unit and
// destroyed with the last release there; at-beginning ranges are created
// when the unit is set up and kept. Released chunk and at-beginning entries
// stay in hardware as scrubbed slots. The first entry on a unit takes a
// reference on the group (creating it), the last release gives it back.
//
// Results: SDK errors never throw. getEntry answers 0 and marks the unit
// exhausted, installEntry returns the first SDK error, reads yield what
// could be read. Caller faults (an id outside the range, removing an entry
// that is not installed, a failing priority change) abort with the texts
// given below.
//
// Ownership: the group manager holds its entry managers in its collections;
// an entry manager points back at its group manager without counting it
// (the group manager outlives them: its destructor detaches those that
// features still hold, and their groupManager() becomes null).
// Threads: the activity thread only, like every entity; every SDK call
// releases the activity lock for its duration.
#pragma once

#include <vector>

#include "catalogue/TcamAllocationStrategy.h"
#include "catalogue/TcamGroupAssignment.h"
#include "common/TesselExport.h"
#include "manager/GroupCounts.h"
#include "manager/StatTypes.h"
#include "manager/UnitEntriesCreated.h"
#include "platform/agent/PortList.h"
#include "platform/kiln/Attribute.h"
#include "platform/kiln/Collection.h"
#include "platform/kiln/Entity.h"
#include "resources/TesselRangeCheckerTypes.h"
#include "resources/TesselUdfTypes.h"
#include "sdk/api/types.h"

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

   // The id getEntryBase is given for an unbounded request.
   static constexpr U32 anyEntry = 0xFFFFFFFF;

   // Runs handleInitialized(): every unit the group manager has set up gets
   // its per-unit records.
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

   // === Range checkers (resources/TesselRangeCheckers.cpp) ===
   // The group manager's shared checkers, asked for with this manager's
   // group (which decides the pipes a checker spans). Typical use:
   //
   //   U32 id = manager->getRangeChecker( unit, desc );   // 0: none left
   //   manager->attachRangeChecker( unit, entry, id );    // before installEntry
   //   ...
   //   manager->releaseEntry( unit, entry );
   //   manager->releaseRangeChecker( unit, desc );        // after the entry
   U32 getRangeChecker( U32 unit, const RangeCheckerDesc & desc );
   void releaseRangeChecker( U32 unit, const RangeCheckerDesc & desc );
   // The SDK's code; see TesselTcamGroupManager::attachRangeChecker.
   int attachRangeChecker( U32 unit, U32 entryId, U32 rangeCheckId );

   // === Policers (resources/TesselPolicers.cpp) ===
   // Attaches the policer's copy of each pipe to the entry's copies in that
   // pipe (every copy), or detaches whatever policer they have (policerId
   // is then only traced). Every SDK failure is fatal.
   void attachPolicer( U32 unit, U32 entryId, U32 policerId, bool attach ) const;

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
      if ( collectionIs( exhausted_, unit, v, &NotifieeConst::onExhausted ) ) {
         exhaustionChanged();
      }
   }
   void
   exhaustedDel( U32 unit ) {
      if ( collectionDel( exhausted_, unit, &NotifieeConst::onExhausted ) ) {
         exhaustionChanged();
      }
   }
   void
   exhaustedDelAll() {
      if ( collectionDelAll( exhausted_, &NotifieeConst::onExhausted ) ) {
         exhaustionChanged();
      }
   }

   Kiln::Ptr< UnitEntriesCreated >
   internalUnitEntry( U32 unit ) const {
      return internalUnitEntry_.get( unit );
   }
   bool internalUnitEntryHas( U32 unit ) const { return internalUnitEntry_.has( unit ); }
   Kiln::Ptr< UnitEntriesCreated >
   internalUnitEntryIs( U32 unit ) {
      lastRecord_ = nullptr;
      return collectionEntityIs( internalUnitEntry_, unit,
                                 &NotifieeConst::onInternalUnitEntry, unit );
   }
   // The kept record is forgotten before the change: observers told of it
   // must not be handed a record that has gone.
   void
   internalUnitEntryDel( U32 unit ) {
      lastRecord_ = nullptr;
      collectionDel( internalUnitEntry_, unit, &NotifieeConst::onInternalUnitEntry );
   }
   // Key by key in key order, each deletion told, like any DelAll.
   void
   internalUnitEntryDelAll() {
      for ( U32 unit : internalUnitEntry_.keys() ) {
         internalUnitEntryDel( unit );
      }
   }
   const Kiln::OrderedCollection< U32, Kiln::Ptr< UnitEntriesCreated > > &
   internalUnitEntryCollection() const {
      return internalUnitEntry_;
   }

   // --- entry ids (TesselTcamEntryManager.cpp) ---
   // The SDK id of one copy: the logical id's low 24 bits, the pipe in bits
   // 24-26, the copy in bit 27.
   static U32
   getPipeEntryId( U32, U32 pipe, U32 entry, U32 copy ) {
      return ( entry & 0x00FFFFFF ) | ( pipe & 7 ) << 24 | ( copy & 1 ) << 27;
   }
   // Copy 1 of a pipe to copy 0.
   static U32 getBaseCopyEntryId( U32 entry ) { return entry & ~( 1u << 27 ); }
   // maxPrio - entry: lower ids take precedence.
   U32 defaultPrio( U32 entry ) const { return maxPrio() - entry; }

   // --- driven by the group manager (TesselTcamEntryManager.cpp) ---
   // Sets up the manager on every unit the group manager has set up.
   void handleInitialized();
   // A unit became known: its record exists, it is not exhausted, and an
   // at-beginning range that the unit reserves early is created
   // ("initializeGroup( unit )" aborts when its group cannot be made). A
   // unit already known is left alone.
   virtual void initializeUnit( U32 unit );
   // The unit's module is gone: what the manager holds there is destroyed
   // (errors traced: the chip may be gone already) and its records dropped.
   // The group manager destroys the group itself.
   virtual void forgetUnit( U32 unit );
   // Packs the manager's pipe groups on the unit before the group goes and
   // clears the unit's slice-freed mark.
   virtual void compressEntries( U32 unit );
   // Creates the whole entry range of an at-beginning manager on the unit,
   // holding the group for it ("initializeGroup( unit )" aborts when the
   // group cannot be made, "strategy() != tcamAllocateAtBeginning()" when
   // the range does not fit).
   void reserveRange( U32 unit );
   // Gives a reserved range back: its entries are destroyed and the group
   // is let go. None of its entries may be handed out.
   void releaseRange( U32 unit );

   // --- allocation (EntryAllocation.cpp) ---
   // The common worker of getEntry: creates the entry (entry anyEntry: an
   // SDK-chosen id) in every pipe and copy and attaches its counters. The
   // logical id, or 0 when the id is in use on the unit or the hardware is
   // full (the unit is then marked exhausted and what was made is undone).
   U32 getEntryBase( U32 unit, U32 entry, const Kiln::String & desc,
                     const Kiln::Ptr< StatTypes > & statTypes );
   // Creates the whole entry range on the unit (chunk and at-beginning
   // managers); false, creating nothing, when it does not fit.
   bool allocateAllEntries( U32 unit );
   // Destroys the whole entry range on the unit.
   void deallocateAllEntries( U32 unit );
   // How many more entries this manager can hand out on the unit.
   U32 entriesAvailable( U32 unit );
   // How many entries count as allocated on the unit: the range of a held
   // chunk or at-beginning manager, else the entries created.
   virtual U32 entriesAllocated( U32 unit ) const;
   // Records exhaustion on the unit and spreads it: every manager of the
   // same group follows (but at-beginning managers and chunk managers that
   // hold their chunk); managers of other groups only hear of space freed.
   void setExhausted( U32 unit, bool exhausted, bool freed );
   void setExhaustedForManager( U32 unit, bool exhausted, U32 group, bool freed );
   // Tells the group manager that the exhausted marks changed.
   void exhaustionChanged();
   // Whether range checkers ran out on the unit.
   bool rangeCheckersExhausted( U32 unit ) const;
   // Holds the group on the unit (creating it when needed) and reads its
   // priority range; the PBR groups get their multicast placeholder entry.
   // False, holding nothing and the unit marked exhausted, when the group
   // cannot be made or its priority range was never read.
   bool initializeGroup( U32 unit );

   // --- installation and attributes (EntryInstall.cpp) ---
   // Copies the base entry into every copy, adds in-ports, per-pipe range
   // checks and loopback redirect ports, and installs every copy. 0 or the
   // first SDK error.
   int installEntry( U32 unit, U32 entry );
   int reinstallEntry( U32 unit, U32 entry );
   // Takes every copy out of hardware, keeping the entry; the entry must be
   // installed (a failure aborts on "0").
   int removeEntry( U32 unit, U32 entry );
   // Gives the entry back; the last one on a unit may tear the group down.
   virtual void releaseEntry( U32 unit, U32 entry );
   virtual void releaseEntryInternal( U32 unit, U32 entry, bool mayRemoveGroup );
   // Enables or disables every copy; errors other than allowedRc traced.
   void enableEntry( U32 unit, U32 entry, bool enable, int allowedRc );
   // Sets the priority of every copy; invalidPrio means defaultPrio( entry ).
   // A failure aborts on "0".
   int setPriorityForEntry( U32 unit, U32 entry, U32 priority );

   // --- port bitmaps (EntryPortBitmaps.cpp) ---
   // The entry's in-port record, made empty when it has none.
   Kiln::Ptr< TcamEntryBcmPbmp > addTcamEntryToBcmPbmp( U32 unit, U32 entry );
   // The entry's in-port record, or null.
   Kiln::Ptr< TcamEntryBcmPbmp > tcamEntryBcmPbmp( U32 unit, U32 entry ) const;
   // The entry is to match on `ports` from its next install: kept
   // permanently when `permanent`, else dropped by that install; with
   // `singlePort` a list of one port is matched with InPort (for groups that
   // key on the in-port rather than the bitmap).
   void updateInPortsForEntry( U32 unit, U32 entry, const TesselTypes::TesselPortList & ports,
                               bool permanent, bool singlePort );
   // Narrow the entry's record to the ports the copy sees.
   void addInPortsForEntry( U32 unit, U32 tcamEntryId, bcm_pbmp_t pbmpData,
                            bcm_pbmp_t pbmpMask );
   void addInPortForEntry( U32 unit, U32 tcamEntryId, int port );
   void removeTcamEntryBcmPbmp( U32 unit, U32 entry );
   // Aborts with "Entry <id> not found in pbmp collection." without a record.
   void setTcamEntryBcmPbmpPermanent( U32 unit, U32 entry, bool permanent );
   // The entry's port-set action `lbAction` goes out `outPorts` and the
   // loopback port of each copy's own pipe (added at install).
   void setLoopbackPortRedirectAction( U32 unit, U32 entry, int lbAction, bcm_pbmp_t outPorts );
   // Records the out-ports of the entry's loopback redirect in `pipe`:
   // `outPorts` and the pipe's loopback port.
   void addOutLoopbackPortForEntry( U32 unit, U32 entry, U32 pipe, bcm_pbmp_t outPorts );

   // --- counters (EntryStats.cpp) ---
   // Creates a stat counting statTypes in the copy's group and attaches it;
   // errors traced, the copy then goes without. Two types must be
   // neighbours in the SDK's numbering (a packets/bytes pair).
   void installStats( U32 unit, U32 entry, U32 tcamEntryId,
                      const Kiln::Ptr< StatTypes > & statTypes );
   // Detaches and destroys the copy's stat, if it has one.
   void removeStats( U32 unit, U32 tcamEntryId );
   // Counts summed over every pipe and copy; 0 for what cannot be read.
   U64 hitsForEntry( U32 unit, U32 entry );
   U64 hitsForPipeEntry( U32 unit, U32 tcamEntryId );
   U64 byteHitsForEntry( U32 unit, U32 entry );
   U64 greenByteHitsForEntry( U32 unit, U32 entry );
   U64 yellowByteHitsForEntry( U32 unit, U32 entry );
   U64 byteDropsForEntry( U32 unit, U32 entry );
   U64 greenPktHitsForEntry( U32 unit, U32 entry );
   U64 yellowPktHitsForEntry( U32 unit, U32 entry );
   U64 pktDropsForEntry( U32 unit, U32 entry );
   void clearHitsForEntry( U32 unit, U32 entry );
   void clearBytesForEntry( U32 unit, U32 entry );
   int fieldStatGetBytes( U32 unit, U32 statsId, int statType, U64 & value );
   int fieldStatGetPackets( U32 unit, U32 statsId, int statType, U64 & value );

   // --- outer-VLAN-ID workaround (EntryOvidWar.cpp) ---
   // Makes copy tcamEntryId the untagged twin of base entry `entry` when
   // the base matches one exact outer VLAN; a plain copy otherwise.
   // SDK errors are traced and returned.
   int processOvidWarEntry( U32 unit, U32 entry, U32 tcamEntryId );
   // Records (remove false) or forgets the copy as a twin of VLAN `ovid`.
   void tcamMgrUpdateOvidEntryMap( U32 unit, U32 ovid, U32 tcamEntryId, bool remove );

 protected:
   // The unit's record; a unit the manager was never set up on aborts.
   UnitEntriesCreated & unitRecord( U32 unit ) const;

 private:
   friend class TesselTcamGroupManager;
   void groupManagerDetach() { groupManager_ = nullptr; }

   // EntryAllocation.cpp
   EntryLayout layoutOf( U32 unit ) const;
   bool prepareUnit( U32 unit );
   int createCopy( U32 unit, U32 pipe, U32 copy, U32 & entry, const Kiln::String & desc );
   void countCopy( U32 unit, U32 pipeGroupId, S32 delta );
   GroupCounts * pipeGroupCounts( U32 unit, U32 pipeGroupId ) const;
   void undoCopies( U32 unit, U32 entry, U32 made );
   bool copyFailureIsFatal( const EntryLayout & layout, U32 pipe, U32 copy ) const;
   void recordCopy( U32 unit, U32 entry, U32 tcamEntryId, U32 pipeGroupId,
                    const Kiln::String & desc, const Kiln::Ptr< StatTypes > & statTypes );
   bool createRangeEntry( U32 unit, U32 entry );
   void destroyRange( U32 unit, U32 end, U32 endCopies );
   bool reservesAtBeginning( U32 unit ) const;
   void addMulticastDummy( U32 unit );
   bool multicastWar( U32 unit ) const;
   bool anyPipeGroupEmpty( U32 unit ) const;
   // EntryInstall.cpp
   int installCopy( U32 unit, U32 entry, U32 pipe, U32 copy, bool & copied );
   int qualifyInPorts( U32 unit, U32 entry, U32 tcamEntryId );
   int qualifyRangeCheckers( U32 unit, U32 entry, U32 tcamEntryId, U32 pipe );
   int installLoopbackRedirect( U32 unit, U32 entry );
   void dropInstallRecords( U32 unit, U32 entry );
   // The copy's valid counter, whose evictions an install clears, or 0.
   static int evictionStat( const UnitEntriesCreated & record, U32 tcamEntryId );
   // EntryRelease.cpp
   void releaseCopy( U32 unit, U32 tcamEntryId, U32 pipeGroupId, bool & freed );
   void scrubCopy( U32 unit, U32 entryId );
   void dropEntryRecords( U32 unit, U32 entry );
   void releaseGroupIfUnused( U32 unit, bool mayRemoveGroup );
   void releaseMulticastDummyIfAlone( U32 unit );
   void traceGroupStatus( U32 unit );
   void dropOwner( U32 entry );
   // EntryPortBitmaps.cpp
   bcm_pbmp_t copyPorts( U32 unit, U32 tcamEntryId ) const;
   bcm_pbmp_t copyMask( U32 unit, U32 tcamEntryId ) const;
   bool sharesPort( U32 unit, U32 tcamEntryId, int port ) const;
   // EntryStats.cpp
   U64 sumForEntry( U32 unit, U32 entry, int statType, bool bytes );
   void clearForEntry( U32 unit, U32 entry, int statType );
   void clearHitsSpecial( U32 unit, int statsId );

   TcamGroupAssignment groupAssignment_;
   Kiln::String desc_;
   TesselTcamGroupManager * groupManager_;
   U32 group_;
   U32 baseEntry_;
   U32 endEntry_;
   TcamAllocationStrategy strategy_;

   // The group manager's counts of the pipe groups this manager counts
   // into (pipeGroupCounts).
   struct KeptCounts {
      U32 unit;
      U32 pipeGroupId;
      Kiln::Ptr< GroupCounts > counts;
      U64 generation; // the group manager's counts generation when last checked
   };
   mutable std::vector< KeptCounts > keptCounts_;

   Kiln::OrderedCollection< U32, bool > exhausted_;
   Kiln::OrderedCollection< U32, Kiln::Ptr< UnitEntriesCreated > > internalUnitEntry_;
   // The record unitRecord found last: an entry's work asks for its unit's
   // record a dozen times. Forgotten whenever the collection changes.
   mutable U32 lastRecordUnit_ = 0;
   mutable UnitEntriesCreated * lastRecord_ = nullptr;
   // The unit on which every manager of the group was last found not
   // exhausted, and the group manager's exhaustion generation then
   // (setExhausted has nothing to do while both hold).
   U32 calmUnit_ = 0;
   U64 calmGeneration_ = ~U64( 0 );
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

   // The entry `entry` (baseEntry <= entry < endEntry, else the program
   // aborts on "entry >= baseEntry() && entry < endEntry()") with packet and
   // byte counters, at its default priority; 0 when it is in use on the
   // unit or does not fit.
   U32 getEntry( U32 unit, U32 entry, const Kiln::String & desc );
   // The same with the counters the caller chose.
   U32 getEntryWithStats( U32 unit, U32 entry, const Kiln::String & desc,
                          const Kiln::Ptr< StatTypes > & statTypes );
};

class TESSEL_EXPORT TesselUnboundedTcamEntryManager : public TesselTcamEntryManager {
 public:
   using TesselTcamEntryManager::TesselTcamEntryManager;
   ~TesselUnboundedTcamEntryManager() override;

   // A new entry with an id the SDK picks, with packet and byte counters; 0
   // when the group is full.
   U32 getEntry( U32 unit, const Kiln::String & desc );
   U32 getEntryWithStats( U32 unit, const Kiln::String & desc,
                          const Kiln::Ptr< StatTypes > & statTypes );
};

} // namespace Tessel
