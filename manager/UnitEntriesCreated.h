// UnitEntriesCreated: an entry manager's record of what it holds on one
// unit, and the records an entry carries until it is installed.
//
//   layout                  how the manager's group lies on the unit: pipes,
//                           copies per pipe and their SDK group ids, fixed
//                           while the manager holds the group
//   entryCreated            logical entry id -> description: the entries
//                           handed out; its size is the count of created
//                           entries
//   groupId                 pipe entry id -> pipe group id the copy lives in
//   entryStats              pipe entry id -> SDK stat id of the copy
//   tcamEntryBcmPbmp        logical entry id -> in-port record
//   outportsBcmPbmp         logical entry id -> loopback out-ports of the
//                           copy being installed
//   loopbackPortRedirectAction  logical entry id -> redirect to the pipe's
//                           loopback port
//   rangeAllocated          the whole entry range exists in hardware (chunk
//                           and at-beginning managers)
//   multicastDummy          the multicast placeholder entry of a PBR group (0:
//                           none)
//
// Group management creates and drops the record as units come and go; the
// entry manager fills it in. Activity thread only.
#pragma once

#include <array>
#include <span>
#include <stdexcept>
#include <string>

#include "common/TesselExport.h"
#include "platform/kiln/Attribute.h"
#include "platform/kiln/Collection.h"
#include "platform/kiln/Entity.h"
#include "platform/kiln/FlatHashCollection.h"
#include "platform/kiln/String.h"
#include "platform/kiln/Types.h"
#include "sdk/api/types.h"

namespace Tessel {

// An SDK port bitmap as a value that compares.
struct PortBitmap {
   bcm_pbmp_t bits{};

   bool
   operator==( const PortBitmap & other ) const {
      for ( int w = 0; w < BCM_PBMP_WORD_MAX; ++w ) {
         if ( bits.pbits[ w ] != other.bits.pbits[ w ] ) {
            return false;
         }
      }
      return true;
   }
};

// An entry's redirect whose port set must name the loopback port of each
// copy's own pipe.
struct LoopbackPortRedirect {
   int lbAction = 0;   // a port-set action (RedirectPbmp, EgressPortsAdd ...)
   PortBitmap outPorts; // the other ports of the action, the same in every pipe

   bool operator==( const LoopbackPortRedirect & ) const = default;
};

// Ports an entry must match on, kept from updateInPortsForEntry until the
// entry is installed (or for good, when permanent). `portsData` and
// `portsMask` are what the feature asked for; `pbmpData` and `pbmpMask` the
// same narrowed to the copy being qualified (addInPortsForEntry). A single
// port (`inPort` >= 0) is qualified with InPort instead of the bitmap.
class TESSEL_EXPORT TcamEntryBcmPbmp : public Kiln::Entity {
 public:
   explicit TcamEntryBcmPbmp( U32 entry ) : Kiln::Entity( std::to_string( entry ) ) {}

   const bcm_pbmp_t & portsData() const { return portsData_; }
   const bcm_pbmp_t & portsMask() const { return portsMask_; }
   void
   portsIs( const bcm_pbmp_t & data, const bcm_pbmp_t & mask ) {
      portsData_ = data;
      portsMask_ = mask;
   }
   const bcm_pbmp_t & pbmpData() const { return pbmpData_; }
   const bcm_pbmp_t & pbmpMask() const { return pbmpMask_; }
   void
   pbmpIs( const bcm_pbmp_t & data, const bcm_pbmp_t & mask ) {
      pbmpData_ = data;
      pbmpMask_ = mask;
   }
   int inPort() const { return inPort_; }
   void inPortIs( int port ) { inPort_ = port; }
   bool permanent() const { return permanent_; }
   void permanentIs( bool v ) { permanent_ = v; }

 private:
   bcm_pbmp_t portsData_{};
   bcm_pbmp_t portsMask_{};
   bcm_pbmp_t pbmpData_{};
   bcm_pbmp_t pbmpMask_{};
   int inPort_ = -1;
   bool permanent_ = false;
};

// Slots of the tables keyed by logical entry id: neighbouring ids in
// neighbouring slots (ids are handed out densely).
struct EntryIdHash {
   size_t
   operator()( U32 entry ) const noexcept {
      return entry;
   }
};

// Slots of the tables keyed by pipe entry id: the copies of one entry side
// by side in a block of eight slots (pipe, and copy 1 four pipes on), the
// blocks in id order, so that the copies of an entry share a cache line.
struct PipeEntryIdHash {
   size_t
   operator()( U32 tcamEntryId ) const noexcept {
      U32 pipe = tcamEntryId >> 24 & 7;
      U32 copy = tcamEntryId >> 27 & 1;
      return size_t( tcamEntryId & 0x00FFFFFF ) << 3 | ( ( pipe + 4 * copy ) & 7 );
   }
};

// How a manager's group lies on a unit while the manager holds it. A plain
// value (no allocation), so that callers copy it freely before SDK calls.
struct EntryLayout {
   // Pipes 0-7, two copies each at most (the fields of a pipe entry id).
   static constexpr U32 maxPipeGroups = 16;

   U32 pipes = 1;
   U32 copies = 1;
   // [ pipe * copies + copy ], the first `used` of them.
   std::array< U32, maxPipeGroups > ids{};
   U32 used = 0;
   // The group runs per pipe (its copies see only their pipe's ports).
   bool perPipe = false;
   // Copies in pipe 1 are outer-VLAN twins of the base entry.
   bool ovidTwins = false;
   // Copies of each pipe are qualified on the ranges of that pipe.
   bool rangeModule = false;
   // The group keeps a multicast placeholder entry (PBR groups on chips
   // that call for it).
   bool multicastWar = false;

   bool operator==( const EntryLayout & ) const = default;
   // Throws std::out_of_range for a copy the layout does not have.
   U32
   pipeGroupId( U32 pipe, U32 copy ) const {
      U32 index = pipe * copies + copy;
      if ( index >= used ) {
         throw std::out_of_range( "EntryLayout::pipeGroupId" );
      }
      return ids[ index ];
   }
   std::span< const U32 >
   pipeGroupIds() const {
      return { ids.data(), used };
   }
   // Appends the SDK group of the next copy, pipe-major.
   void
   pipeGroupIdAdd( U32 pipeGroupId ) {
      if ( used >= maxPipeGroups ) {
         throw std::out_of_range( "EntryLayout::pipeGroupIdAdd" );
      }
      ids[ used++ ] = pipeGroupId;
   }
};

class TESSEL_EXPORT UnitEntriesCreated : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< UnitEntriesCreated > {
    public:
      virtual void onLayout() {}
      virtual void onEntryCreated( U32 ) {}
      virtual void onGroupId( U32 ) {}
      virtual void onEntryStats( U32 ) {}
      virtual void onTcamEntryBcmPbmp( U32 ) {}
      virtual void onOutportsBcmPbmp( U32 ) {}
      virtual void onLoopbackPortRedirectAction( U32 ) {}
      virtual void onRangeAllocated() {}
      virtual void onMulticastDummy() {}
   };

   explicit UnitEntriesCreated( U32 unit )
         : Kiln::Entity( "unit" + std::to_string( unit ) ), unit_( unit ) {}
   U32 unit() const { return unit_; }

   const EntryLayout & layout() const { return layout_.get(); }
   void layoutIs( const EntryLayout & v ) { attributeIs( layout_, v, &NotifieeConst::onLayout ); }

   Kiln::String entryCreated( U32 entry ) const { return entryCreated_.get( entry ); }
   bool entryCreatedHas( U32 entry ) const { return entryCreated_.has( entry ); }
   void
   entryCreatedIs( U32 entry, const Kiln::String & desc ) {
      collectionIs( entryCreated_, entry, desc, &NotifieeConst::onEntryCreated );
   }
   void
   entryCreatedDel( U32 entry ) {
      collectionDel( entryCreated_, entry, &NotifieeConst::onEntryCreated );
   }
   void
   entryCreatedDelAll() {
      collectionDelAll( entryCreated_, &NotifieeConst::onEntryCreated );
   }
   const Kiln::OrderedCollection< U32, Kiln::String > &
   entryCreatedCollection() const {
      return entryCreated_;
   }

   U32 groupId( U32 tcamEntryId ) const { return groupId_.get( tcamEntryId ); }
   bool groupIdHas( U32 tcamEntryId ) const { return groupId_.has( tcamEntryId ); }
   void
   groupIdIs( U32 tcamEntryId, U32 pipeGroupId ) {
      collectionIs( groupId_, tcamEntryId, pipeGroupId, &NotifieeConst::onGroupId );
   }
   void
   groupIdDel( U32 tcamEntryId ) {
      collectionDel( groupId_, tcamEntryId, &NotifieeConst::onGroupId );
   }
   void groupIdDelAll() { collectionDelAll( groupId_, &NotifieeConst::onGroupId ); }
   const Kiln::FlatHashCollection< U32, U32, PipeEntryIdHash > &
   groupIdCollection() const {
      return groupId_;
   }

   int entryStats( U32 tcamEntryId ) const { return entryStats_.get( tcamEntryId ); }
   bool entryStatsHas( U32 tcamEntryId ) const { return entryStats_.has( tcamEntryId ); }
   void
   entryStatsIs( U32 tcamEntryId, int statsId ) {
      collectionIs( entryStats_, tcamEntryId, statsId, &NotifieeConst::onEntryStats );
   }
   void
   entryStatsDel( U32 tcamEntryId ) {
      collectionDel( entryStats_, tcamEntryId, &NotifieeConst::onEntryStats );
   }
   void entryStatsDelAll() { collectionDelAll( entryStats_, &NotifieeConst::onEntryStats ); }
   const Kiln::FlatHashCollection< U32, int, PipeEntryIdHash > &
   entryStatsCollection() const {
      return entryStats_;
   }

   Kiln::Ptr< TcamEntryBcmPbmp >
   tcamEntryBcmPbmp( U32 entry ) const {
      return tcamEntryBcmPbmp_.get( entry );
   }
   bool tcamEntryBcmPbmpHas( U32 entry ) const { return tcamEntryBcmPbmp_.has( entry ); }
   Kiln::Ptr< TcamEntryBcmPbmp >
   tcamEntryBcmPbmpIs( U32 entry ) {
      return collectionEntityIs( tcamEntryBcmPbmp_, entry, &NotifieeConst::onTcamEntryBcmPbmp,
                                 entry );
   }
   void
   tcamEntryBcmPbmpDel( U32 entry ) {
      collectionDel( tcamEntryBcmPbmp_, entry, &NotifieeConst::onTcamEntryBcmPbmp );
   }
   void
   tcamEntryBcmPbmpDelAll() {
      collectionDelAll( tcamEntryBcmPbmp_, &NotifieeConst::onTcamEntryBcmPbmp );
   }
   const Kiln::FlatHashCollection< U32, Kiln::Ptr< TcamEntryBcmPbmp >, EntryIdHash > &
   tcamEntryBcmPbmpCollection() const {
      return tcamEntryBcmPbmp_;
   }

   PortBitmap outportsBcmPbmp( U32 entry ) const { return outportsBcmPbmp_.get( entry ); }
   bool outportsBcmPbmpHas( U32 entry ) const { return outportsBcmPbmp_.has( entry ); }
   void
   outportsBcmPbmpIs( U32 entry, const PortBitmap & ports ) {
      collectionIs( outportsBcmPbmp_, entry, ports, &NotifieeConst::onOutportsBcmPbmp );
   }
   void
   outportsBcmPbmpDel( U32 entry ) {
      collectionDel( outportsBcmPbmp_, entry, &NotifieeConst::onOutportsBcmPbmp );
   }

   LoopbackPortRedirect
   loopbackPortRedirectAction( U32 entry ) const {
      return loopbackPortRedirectAction_.get( entry );
   }
   bool
   loopbackPortRedirectActionHas( U32 entry ) const {
      return loopbackPortRedirectAction_.has( entry );
   }
   void
   loopbackPortRedirectActionIs( U32 entry, const LoopbackPortRedirect & redirect ) {
      collectionIs( loopbackPortRedirectAction_, entry, redirect,
                    &NotifieeConst::onLoopbackPortRedirectAction );
   }
   void
   loopbackPortRedirectActionDel( U32 entry ) {
      collectionDel( loopbackPortRedirectAction_, entry,
                     &NotifieeConst::onLoopbackPortRedirectAction );
   }

   bool rangeAllocated() const { return rangeAllocated_.get(); }
   void
   rangeAllocatedIs( bool v ) {
      attributeIs( rangeAllocated_, v, &NotifieeConst::onRangeAllocated );
   }

   U32 multicastDummy() const { return multicastDummy_.get(); }
   void
   multicastDummyIs( U32 entry ) {
      attributeIs( multicastDummy_, entry, &NotifieeConst::onMulticastDummy );
   }

 private:
   U32 unit_;
   Kiln::Attribute< EntryLayout > layout_;
   Kiln::OrderedCollection< U32, Kiln::String > entryCreated_;
   // Filled and emptied with every entry: flat tables, no allocation per
   // entry once grown.
   Kiln::FlatHashCollection< U32, U32, PipeEntryIdHash > groupId_;
   Kiln::FlatHashCollection< U32, int, PipeEntryIdHash > entryStats_;
   Kiln::FlatHashCollection< U32, Kiln::Ptr< TcamEntryBcmPbmp >, EntryIdHash > tcamEntryBcmPbmp_;
   Kiln::FlatHashCollection< U32, PortBitmap, EntryIdHash > outportsBcmPbmp_;
   Kiln::FlatHashCollection< U32, LoopbackPortRedirect, EntryIdHash > loopbackPortRedirectAction_;
   Kiln::Attribute< bool > rangeAllocated_;
   Kiln::Attribute< U32 > multicastDummy_;
};

} // namespace Tessel
