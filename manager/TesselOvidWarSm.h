// The outer-VLAN-ID workaround's watch on one unit.
//
// On chips that show untagged packets to the field processor with outer
// VLAN 0, an entry that matches outer VLAN V would miss V's untagged
// traffic. Its copy in pipe 1 (which shares the base entry's SDK group)
// becomes a twin that matches outer VLAN 0 on the ports where V is carried
// untagged (TesselTcamEntryManager::processOvidWarEntry). This state machine
// keeps the twins of each VLAN and, when the agent's VLAN state reports
// that V's untagged ports changed, re-qualifies V's twins on the new ports
// and reinstalls them.
//
//   ovidEntries  VLAN id -> OvidEntry: the twins that depend on the VLAN
//   tcamOvidMap  (twin's pipe entry id, VLAN id) -> TcamOvidEntry
//
// The group manager makes one per unit under the workaround (ovidWarSmIs)
// and points it at its VLAN state. Activity thread only; SDK calls release
// the activity lock.
#pragma once

#include <compare>
#include <memory>
#include <string>

#include "common/TesselExport.h"
#include "platform/agent/VlanState.h"
#include "platform/kiln/Collection.h"
#include "platform/kiln/Entity.h"
#include "platform/kiln/Types.h"
#include "sdk/api/types.h"

namespace Tessel {

// A twin copy and the VLAN its base entry matches.
struct TesselTcamEntryOvidKey {
   U32 tcamEntryId = 0;
   U32 ovid = 0;

   auto operator<=>( const TesselTcamEntryOvidKey & ) const = default;
   // "Value('Tessel::TesselTcamEntryOvidKey', ** {'tcamEntryId': 16777316, 'ovid': 100})"
   TESSEL_EXPORT std::string valueText() const;
};

// The twins of one outer VLAN id: twin's pipe entry id -> base entry id.
class TESSEL_EXPORT OvidEntry : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< OvidEntry > {
    public:
      virtual void onOvidTcamEntry( U32 ) {}
   };

   explicit OvidEntry( U32 ovid ) : Kiln::Entity( "ovid" + std::to_string( ovid ) ) {}

   U32 ovidTcamEntry( U32 tcamEntryId ) const { return ovidTcamEntry_.get( tcamEntryId ); }
   bool ovidTcamEntryHas( U32 tcamEntryId ) const { return ovidTcamEntry_.has( tcamEntryId ); }
   void
   ovidTcamEntryIs( U32 tcamEntryId, U32 baseEntry ) {
      collectionIs( ovidTcamEntry_, tcamEntryId, baseEntry, &NotifieeConst::onOvidTcamEntry );
   }
   void
   ovidTcamEntryDel( U32 tcamEntryId ) {
      collectionDel( ovidTcamEntry_, tcamEntryId, &NotifieeConst::onOvidTcamEntry );
   }
   const Kiln::OrderedCollection< U32, U32 > &
   ovidTcamEntryCollection() const {
      return ovidTcamEntry_;
   }

 private:
   Kiln::OrderedCollection< U32, U32 > ovidTcamEntry_;
};

// One twin: the outer VLAN id its base entry matches.
class TESSEL_EXPORT TcamOvidEntry : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< TcamOvidEntry > {
    public:
      virtual void onOvid() {}
   };

   explicit TcamOvidEntry( const TesselTcamEntryOvidKey & key )
         : Kiln::Entity( key.valueText() ) {}

   U32 ovid() const { return ovid_; }
   void
   ovidIs( U32 v ) {
      if ( ovid_ != v ) {
         ovid_ = v;
         notify( &NotifieeConst::onOvid );
      }
   }

 private:
   U32 ovid_ = 0;
};

class TESSEL_EXPORT TesselOvidWarSm : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< TesselOvidWarSm > {
    public:
      virtual void onOvidEntries( U32 ) {}
      virtual void onTcamOvidMap( const TesselTcamEntryOvidKey & ) {}
   };

   // Watches `vlanState` (may be null: no VLAN has untagged ports).
   TesselOvidWarSm( const Kiln::Name & name, U32 unit,
                    const Kiln::Ptr< Agent::VlanState > & vlanState );
   ~TesselOvidWarSm() override;
   U32 unit() const { return unit_; }

   const Kiln::Ptr< Agent::VlanState > & vlanState() const { return vlanState_; }
   // Follows another VLAN state from now on.
   void vlanStateIs( const Kiln::Ptr< Agent::VlanState > & vlanState );
   // The VLAN's untagged ports as an SDK bitmap; empty without a VLAN state.
   bcm_pbmp_t untaggedPorts( U32 ovid ) const;

   // --- collections ---
   Kiln::Ptr< OvidEntry > ovidEntries( U32 ovid ) const { return ovidEntries_.get( ovid ); }
   bool ovidEntriesHas( U32 ovid ) const { return ovidEntries_.has( ovid ); }
   Kiln::Ptr< OvidEntry >
   ovidEntriesIs( U32 ovid ) {
      return collectionEntityIs( ovidEntries_, ovid, &NotifieeConst::onOvidEntries, ovid );
   }
   void
   ovidEntriesDel( U32 ovid ) {
      collectionDel( ovidEntries_, ovid, &NotifieeConst::onOvidEntries );
   }
   void ovidEntriesDelAll() { collectionDelAll( ovidEntries_, &NotifieeConst::onOvidEntries ); }
   const Kiln::OrderedCollection< U32, Kiln::Ptr< OvidEntry > > &
   ovidEntriesCollection() const {
      return ovidEntries_;
   }
   Kiln::Ptr< TcamOvidEntry >
   tcamOvidMap( const TesselTcamEntryOvidKey & key ) const {
      return tcamOvidMap_.get( key );
   }
   bool
   tcamOvidMapHas( const TesselTcamEntryOvidKey & key ) const {
      return tcamOvidMap_.has( key );
   }
   Kiln::Ptr< TcamOvidEntry >
   tcamOvidMapIs( const TesselTcamEntryOvidKey & key ) {
      return collectionEntityIs( tcamOvidMap_, key, &NotifieeConst::onTcamOvidMap, key );
   }
   void
   tcamOvidMapDel( const TesselTcamEntryOvidKey & key ) {
      collectionDel( tcamOvidMap_, key, &NotifieeConst::onTcamOvidMap );
   }
   void tcamOvidMapDelAll() { collectionDelAll( tcamOvidMap_, &NotifieeConst::onTcamOvidMap ); }
   const Kiln::OrderedCollection< TesselTcamEntryOvidKey, Kiln::Ptr< TcamOvidEntry > > &
   tcamOvidMapCollection() const {
      return tcamOvidMap_;
   }

   // --- the twins ---
   // Records `tcamEntryId` as a twin of `baseEntry` for VLAN `ovid`,
   // replacing what it was recorded under before.
   void twinIs( U32 tcamEntryId, U32 ovid, U32 baseEntry );
   // Forgets the copy, whatever VLAN it was a twin for; nothing when it is
   // none.
   void twinDel( U32 tcamEntryId );
   // The VLAN the copy is a twin for, or 0.
   U32 twinOvid( U32 tcamEntryId ) const;

   // VLAN `vlan`'s untagged ports changed: each of its twins matches the
   // base entry's ports that now carry it untagged and is reinstalled. SDK
   // errors are traced ("TesselOvidWarSm::handleOvidUtBitmap ... API ERROR:")
   // and the next twin is handled.
   void handleOvidUtBitmap( U32 vlan );

 private:
   class VlanReactor;
   // A twin as handleOvidUtBitmap visits it, and its base entry.
   struct TwinIter {
      U32 twin;
      U32 key() const { return twin; }
   };
   struct EntryBase {
      U32 entry;
      U32 featureEntryId() const { return entry; }
   };
   void retwin( TwinIter iter, EntryBase entryBase, const bcm_pbmp_t & untagged );
   void retwinError( int rc, U32 entry ) const;

   U32 unit_;
   Kiln::Ptr< Agent::VlanState > vlanState_;
   std::unique_ptr< VlanReactor > reactor_;
   Kiln::OrderedCollection< U32, Kiln::Ptr< OvidEntry > > ovidEntries_;
   Kiln::OrderedCollection< TesselTcamEntryOvidKey, Kiln::Ptr< TcamOvidEntry > > tcamOvidMap_;
};

// The twin's ports: those the base entry matches (`data`, and every port
// outside `mask`) that carry the VLAN untagged.
TESSEL_EXPORT bcm_pbmp_t
ovidTwinPorts( const bcm_pbmp_t & data, const bcm_pbmp_t & mask, const bcm_pbmp_t & untagged );
// Every port.
TESSEL_EXPORT bcm_pbmp_t
allPortsBitmap();

} // namespace Tessel
