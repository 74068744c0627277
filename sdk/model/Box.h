// The chip model's control interface: a box of modelled chips (units) behind
// the SDK's bcm_* functions and the shim.
//
// Lifecycle. Constructing a Box makes it the process's current box: from then
// on bcm_* calls reach its units (unit numbers 0 .. numUnits() - 1) and
// Shim::sdk_ points at a shim object the box owns. Destroying it restores the
// shim pointer and leaves no current box (bcm_* calls then return
// BCM_E_UNIT). One box at a time.
//
// Locking. One lock serialises every bcm_* call, packet sends and the
// control calls below; bcm_field_control_lock holds it between calls (the
// field-processor lock). Control calls may be made from any thread.
//
// Every bcm_* call goes through one hook: it checks the activity lock (when
// checking is on), logs the call, applies fault injection, then runs.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "sdk/model/CallControl.h"
#include "sdk/model/Classify.h"
#include "sdk/model/Profile.h"
#include "sdk/model/Unit.h"
#include "sdk/shim/Shim.h"

namespace ChipModel {

// Live objects of one unit (or of the whole box), per kind.
struct ObjectCounts {
   U32 groups = 0;
   U32 entries = 0;
   U32 stats = 0;
   U32 presels = 0;
   U32 hints = 0;
   U32 ranges = 0; // both range APIs
   U32 policers = 0;
   U32 udfObjects = 0; // UDF module objects
   U32 dataQualifiers = 0;
   U32 packetFormats = 0; // UDF module formats and data-qualifier formats/ethertypes
   U32 chunks = 0;        // flex-parser chunks

   bool operator==( const ObjectCounts & other ) const = default;
   ObjectCounts & operator+=( const ObjectCounts & other );
   U32 total() const;
   // "groups=1 entries=3 ..." with the kinds that are not zero; "none" when empty.
   std::string text() const;
};

class Box {
 public:
   struct Options {
      // Units start staged: installs take effect at bcm_field_tcam_commit
      // (oberon_tcam_flash_program). False: units start committed.
      bool staged = true;
      ActivityCheck activityCheck = ActivityCheck::off;
      // How packets find a group's entry: its compiled table, or the plain
      // loop that is the reference (both give the same results).
      Classifier classifier = defaultClassifier();
   };

   // Classifier::fast, or what the environment variable
   // TESSEL_MODEL_CLASSIFIER names ("fast" or "reference"), so that a whole
   // test program can run on the reference; any other value throws
   // std::invalid_argument naming it and the known ones.
   static Classifier defaultClassifier();

   // Units by profile name ("single", "trident3", "thx", "th3"); throws
   // std::invalid_argument naming the unknown profile and the known ones.
   explicit Box( const std::vector< std::string > & profiles );
   Box( const std::vector< std::string > & profiles, Options options );
   // Units with profiles given as data (for tests that need other limits).
   Box( const std::vector< Profile > & profiles, Options options );
   ~Box();
   Box( const Box & ) = delete;
   Box & operator=( const Box & ) = delete;

   // The current box, or null.
   static Box * current();

   U32 numUnits() const { return static_cast< U32 >( units_.size() ); }
   // Unit n; n must be below numUnits(). Hold lock() while reading the
   // state of a unit that other threads may change.
   Unit & unit( U32 n );
   const Unit & unit( U32 n ) const;
   std::recursive_mutex & lock() { return mutex_; }

   // --- call log ---
   std::vector< CallRecord > callLog() const;
   // Calls of an SDK function (or of the shim call made of it) on a unit,
   // any unit when unit is -1.
   U32 callCount( const std::string & function, int unit = -1 ) const;
   void clearCallLog();
   // Called after every bcm_* call with its record (result filled in), under
   // the box's lock, whether or not the log is cleared meanwhile: for
   // recorders that must see every call in order. It must not call the SDK.
   // An empty function removes it.
   void callObserverIs( std::function< void( const CallRecord & ) > observer );

   // --- fault injection ---
   // The nth call (from 1, counted from now) of function on unit (-1: any)
   // returns rc without doing anything; `times` calls in a row fail.
   // function is an SDK name or a shim call ("ob_field_entry_copy_id").
   void failCall( int unit, const std::string & function, U32 nth, int rc, U32 times = 1 );
   void clearFaults();
   // Faults that have not fired yet.
   U32 pendingFaults() const;

   // --- activity-lock check ---
   void activityCheckIs( ActivityCheck mode );
   ActivityCheck activityCheck() const;
   // Calls made while the calling thread held the activity lock (count mode).
   U32 activityViolations() const;

   // --- objects ---
   ObjectCounts counts( U32 unit ) const;
   ObjectCounts counts() const; // all units

   // --- packets ---
   void classifierIs( Classifier classifier );
   Classifier classifier() const;
   // Looks the packet up in the unit: VFP, IFP (and the class stage), then
   // EFP, in the pipe of its ingress port; counters and meters of hit
   // entries move. A packet on a port the unit does not have hits nothing.
   LookupResult send( U32 unit, const Packet & packet );

   // --- start-up ---
   // The agent restarts on the unit: its SDK state is emptied and staging
   // begins again; a hitless restart keeps the hardware image for packets
   // until the unit's next commit.
   void restart( U32 unit, bool hitless );

   // The hook every bcm_* entry point runs through (sdk/model/SdkCall.h).
   int call( const char * function, int unit, std::vector< S64 > args,
             const std::function< int( Unit & ) > & body );

 private:
   void build( const std::vector< Profile > & profiles, Options options );
   void checkActivity( const char * function );

   mutable std::recursive_mutex mutex_;
   std::vector< std::unique_ptr< Profile > > profiles_;
   std::vector< std::unique_ptr< Unit > > units_;
   Shim::Sdk shim_;
   Shim::Sdk * previousShim_ = nullptr;
   CallLog log_;
   std::function< void( const CallRecord & ) > callObserver_;
   FaultPlan faults_;
   ActivityCheck activityCheck_ = ActivityCheck::off;
   Classifier classifier_ = Classifier::fast;
   U32 activityViolations_ = 0;
};

} // namespace ChipModel
