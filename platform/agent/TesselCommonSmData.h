// The shared start-up state of the chip family's state machines: which
// units exist and may be programmed, the readiness flags the TCAM flash
// download waits for, and how the agent is starting.
//
// The agent fills it as start-up progresses; the TCAM manager's flash
// download observes `flashDownloadWait` and programs once
// flashDownloadReady() holds. All members notify observers on real change
// only (see platform/kiln/Entity.h).
#pragma once

#include "platform/kiln/Attribute.h"
#include "platform/kiln/Collection.h"
#include "platform/kiln/Entity.h"
#include "platform/kiln/EnumInstance.h"
#include "platform/kiln/Types.h"

#include <ostream>
#include <vector>

namespace Agent {

// What the flash download waits for. Each party sets its flag in
// `flashDownloadWait` to true when it is ready.
enum TcamFlashDownloadReq : U32 {
   // Every unit's chip is attached and initialised.
   tcamFlashDownloadReqChipInit = 0,
   // Front-panel ports are created and configured.
   tcamFlashDownloadReqPortInit = 1,
   // Feature agents have installed their start-up entries.
   tcamFlashDownloadReqFeatureConfig = 2,
   // Forwarding tables are reconciled with the hardware.
   tcamFlashDownloadReqForwardingReconcile = 3,
   // The start-up stage "TesselSliceTcamReconcile" is running; the flash
   // download sets this one itself.
   tcamFlashDownloadReqSliceTcamReconcile = 4,
   // LACP partners have been told to hold traffic. Not required by default:
   // the agent requires it when it sets `lacpDrainNeeded`.
   tcamFlashDownloadReqLacpDrain = 5,
};

struct TcamFlashDownloadReqNames {
   typedef TcamFlashDownloadReq Enum;
   static constexpr const char * typeName = "TcamFlashDownloadReq";
   static constexpr Kiln::EnumName< TcamFlashDownloadReq > names[] = {
      { tcamFlashDownloadReqChipInit, "tcamFlashDownloadReqChipInit" },
      { tcamFlashDownloadReqPortInit, "tcamFlashDownloadReqPortInit" },
      { tcamFlashDownloadReqFeatureConfig, "tcamFlashDownloadReqFeatureConfig" },
      { tcamFlashDownloadReqForwardingReconcile, "tcamFlashDownloadReqForwardingReconcile" },
      { tcamFlashDownloadReqSliceTcamReconcile, "tcamFlashDownloadReqSliceTcamReconcile" },
      { tcamFlashDownloadReqLacpDrain, "tcamFlashDownloadReqLacpDrain" },
   };
};
typedef Kiln::EnumInstance< TcamFlashDownloadReqNames > TcamFlashDownloadReqInstance;

inline std::ostream &
operator<<( std::ostream & os, TcamFlashDownloadReq v ) {
   return os << TcamFlashDownloadReqInstance::valueToStrep( v );
}

class TesselCommonSmData : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< TesselCommonSmData > {
    public:
      virtual void onUnit( U32 /* unit */ ) {}
      virtual void onDoNotProgramUnit( U32 /* unit */ ) {}
      virtual void onFlashDownloadWait( TcamFlashDownloadReq /* req */ ) {}
      virtual void onFlashDownloadRequired( TcamFlashDownloadReq /* req */ ) {}
      virtual void onHitlessStartup() {}
      virtual void onLacpDrainNeeded() {}
      virtual void onSkipTcamFlashDownload() {}
   };

   // Starts with no units, no flags set, and requests 0 to 4 required.
   explicit TesselCommonSmData( const Kiln::Name & name );

   // The units (chips) of the box.
   bool unitHas( U32 unit ) const { return unit_.has( unit ); }
   void unitIs( U32 unit ) { collectionIs( unit_, unit, &NotifieeConst::onUnit ); }
   void unitDel( U32 unit ) { collectionDel( unit_, unit, &NotifieeConst::onUnit ); }
   void unitDelAll() { collectionDelAll( unit_, &NotifieeConst::onUnit ); }
   const Kiln::OrderedSet< U32 > & unitCollection() const { return unit_; }

   // Units whose TCAM must not be programmed at start-up (a unit that
   // failed to initialise, or one left to another agent).
   bool doNotProgramUnitHas( U32 unit ) const { return doNotProgramUnit_.has( unit ); }
   void
   doNotProgramUnitIs( U32 unit ) {
      collectionIs( doNotProgramUnit_, unit, &NotifieeConst::onDoNotProgramUnit );
   }
   void
   doNotProgramUnitDel( U32 unit ) {
      collectionDel( doNotProgramUnit_, unit, &NotifieeConst::onDoNotProgramUnit );
   }
   // The units to program, ascending: every unit not marked above.
   std::vector< U32 > unitsToProgram() const;

   // Readiness flags; a request with no flag counts as not ready.
   bool flashDownloadWait( TcamFlashDownloadReq req ) const { return flashDownloadWait_.get( req ); }
   bool flashDownloadWaitHas( TcamFlashDownloadReq req ) const { return flashDownloadWait_.has( req ); }
   void
   flashDownloadWaitIs( TcamFlashDownloadReq req, bool ready ) {
      collectionIs( flashDownloadWait_, req, ready, &NotifieeConst::onFlashDownloadWait );
   }
   void
   flashDownloadWaitDel( TcamFlashDownloadReq req ) {
      collectionDel( flashDownloadWait_, req, &NotifieeConst::onFlashDownloadWait );
   }
   void
   flashDownloadWaitDelAll() {
      collectionDelAll( flashDownloadWait_, &NotifieeConst::onFlashDownloadWait );
   }
   const Kiln::OrderedCollection< TcamFlashDownloadReq, bool > &
   flashDownloadWaitCollection() const {
      return flashDownloadWait_;
   }

   // The requests whose flags must all be true before the download runs.
   bool
   flashDownloadRequiredHas( TcamFlashDownloadReq req ) const {
      return flashDownloadRequired_.has( req );
   }
   void
   flashDownloadRequiredIs( TcamFlashDownloadReq req ) {
      collectionIs( flashDownloadRequired_, req, &NotifieeConst::onFlashDownloadRequired );
   }
   void
   flashDownloadRequiredDel( TcamFlashDownloadReq req ) {
      collectionDel( flashDownloadRequired_, req, &NotifieeConst::onFlashDownloadRequired );
   }
   const Kiln::OrderedSet< TcamFlashDownloadReq > &
   flashDownloadRequiredCollection() const {
      return flashDownloadRequired_;
   }
   // Every required request's flag is true.
   bool flashDownloadReady() const;
   // The required requests whose flag is not true, ascending (for traces).
   std::vector< TcamFlashDownloadReq > flashDownloadMissing() const;

   // The agent restarts without disturbing forwarding.
   bool hitlessStartup() const { return hitlessStartup_.get(); }
   void
   hitlessStartupIs( bool v ) {
      attributeIs( hitlessStartup_, v, &NotifieeConst::onHitlessStartup );
   }
   // Port-channel partners must be drained while the TCAM is programmed.
   bool lacpDrainNeeded() const { return lacpDrainNeeded_.get(); }
   void
   lacpDrainNeededIs( bool v ) {
      attributeIs( lacpDrainNeeded_, v, &NotifieeConst::onLacpDrainNeeded );
   }
   // The TCAM already holds what start-up would write (a hitless restart
   // with nothing changed): the download keeps it instead of rewriting it.
   bool skipTcamFlashDownload() const { return skipTcamFlashDownload_.get(); }
   void
   skipTcamFlashDownloadIs( bool v ) {
      attributeIs( skipTcamFlashDownload_, v, &NotifieeConst::onSkipTcamFlashDownload );
   }

 private:
   Kiln::OrderedSet< U32 > unit_;
   Kiln::OrderedSet< U32 > doNotProgramUnit_;
   Kiln::OrderedCollection< TcamFlashDownloadReq, bool > flashDownloadWait_;
   Kiln::OrderedSet< TcamFlashDownloadReq > flashDownloadRequired_;
   Kiln::Attribute< bool > hitlessStartup_;
   Kiln::Attribute< bool > lacpDrainNeeded_;
   Kiln::Attribute< bool > skipTcamFlashDownload_;
};

} // namespace Agent
