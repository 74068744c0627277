// FeatureEntries: the entries one feature holds in its reservation, the way
// a feature uses the library:
//
//   1. the entry manager of the reservation, from the group manager
//      (reservationEntryManager: the catalogue row's group and strategy);
//   2. per entry: getEntry (every pipe copy made, with its counters), the
//      feature's qualifiers and actions on the base entry through the SDK,
//      its priority, installEntry (copied into every pipe copy, installed);
//   3. counters read as sums over the copies (hitsForEntry);
//   4. removeEntry and releaseEntry when the feature lets go.
//
// Each entry is made for one of the feature's items (a rule, a class) and
// remembers it, so a packet's hit can be traced back to the item.
// installItems() makes the entries of a list of items on every unit all or
// nothing: when the reservation runs out (the entry manager answers 0 and
// marks the unit exhausted) or an SDK call fails, everything it made is
// given back and the report says how far it got.
//
// Threads: the activity thread, holding the activity lock; every SDK call
// and library call releases it where it reaches the chip.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/TcamGroupAssignment.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/kiln/Ptr.h"

namespace Features {

// The unbounded entry manager of a reservation whose catalogue row
// allocates unbounded (the IP ACL, CoPP, QoS policy and mirroring rows),
// as the group manager registered it for the catalogue row; asked for with
// the row's own figures, so the group manager hands out the manager it
// already has.
Kiln::Ptr< Tessel::TesselUnboundedTcamEntryManager >
reservationEntryManager( Tessel::TesselTcamGroupManager & manager,
                         Tessel::TcamGroupAssignment reservation );

// How far installing a feature's items got.
struct LoadReport {
   LoadReport() = default;
   LoadReport( std::string featureName, std::string itemName, U32 count = 0 )
         : feature( std::move( featureName ) ), itemWord( std::move( itemName ) ), items( count ) {}

   std::string feature;           // "ACL"
   std::string itemWord;          // "rule", "class"
   U32 items = 0;                 // asked for
   U32 itemsInstalled = 0;        // per unit; items when ok()
   U32 entries = 0;               // logical entries per unit
   U32 hardwareEntries = 0;       // SDK entries: every unit, pipe and copy
   U32 entriesWithoutCounter = 0; // the counter pool ran out for them
   U32 rangeCheckers = 0;         // distinct range checkers held, all units
   U32 rangesExpanded = 0;        // port ranges expanded: the chip had no checker left
   U32 classIdPorts = 0;          // L4 ports bound to class ids, all units
   U32 udfFields = 0;             // user-defined fields held, all units
   std::string error;             // why installing stopped; empty when it did not
   bool ok() const { return error.empty(); }
   // "1 rule", "878 rules", "2 classes".
   std::string itemsText( U32 count ) const;
   // Entries per item: 1.0 when every item took one entry.
   double expansion() const { return items ? double( entries ) / items : 0.0; }
};

class FeatureEntries {
 public:
   // Writes the entry's qualifiers and actions (and what the feature needs
   // on the copies, such as policers); the first SDK error, else 0.
   typedef std::function< int( U32 unit, U32 entry ) > Program;

   // One entry of an item.
   struct Spec {
      U32 priority; // higher wins within the reservation's group
      Kiln::String desc;
      Program program;
   };

   // What add() made of a request.
   struct Outcome {
      U32 entry = 0;          // the logical entry id; 0 when none was made
      bool exhausted = false; // the reservation has no room left on the unit
      int rc = 0;             // the SDK error that stopped it, if any
   };

   // An entry held: the logical id on its unit and the item it serves.
   struct Held {
      U32 unit;
      U32 entry;
      U32 item;
   };

   FeatureEntries( const Kiln::Ptr< Tessel::TesselTcamGroupManager > & manager,
                   Tessel::TcamGroupAssignment reservation );
   // Gives every entry back.
   ~FeatureEntries();
   FeatureEntries( const FeatureEntries & ) = delete;
   FeatureEntries & operator=( const FeatureEntries & ) = delete;

   // One entry for `item` on `unit`: taken from the entry manager,
   // programmed, given its priority and installed in every copy. A failure
   // gives back what it made.
   Outcome add( U32 unit, U32 item, const Spec & spec );

   // The entries of `items` items on every unit the group manager knows,
   // unit by unit and item by item, as `specsOf( unit, item )` describes
   // them. All or nothing: on a failure every entry held is given back and
   // the report's error says which unit, how many items fitted and why.
   // `itemWord` names one item ("rule").
   LoadReport installItems( const std::string & feature, const std::string & itemWord,
                            U32 items,
                            const std::function< std::vector< Spec >( U32, U32 ) > & specsOf );

   // Takes every entry out of hardware and gives it back, newest first.
   void release();

   const std::vector< Held > & held() const { return held_; }
   // The item whose entry a packet hit: `sdkGroup` and `sdkEntry` as the
   // chip reports the hit (any pipe copy); nothing when the hit is not in
   // this reservation's group or not one of these entries.
   std::optional< U32 > itemOf( U32 unit, U32 sdkGroup, U32 sdkEntry ) const;
   // Packets counted by the item's entries on the unit, summed over copies.
   U64 packets( U32 unit, U32 item );
   // Calls `fn( pipe, copy, sdkEntryId )` for every copy of the entry.
   void forEachCopy( U32 unit, U32 entry,
                     const std::function< void( U32, U32, U32 ) > & fn ) const;
   // SDK entries behind one logical entry on the unit: pipes times copies.
   U32 copiesPerEntry( U32 unit ) const;
   // Held entries of the unit whose base copy has no counter.
   U32 entriesWithoutCounter( U32 unit ) const;

   const Kiln::Ptr< Tessel::TesselUnboundedTcamEntryManager > &
   entryManager() const {
      return entryManager_;
   }
   const Kiln::Ptr< Tessel::TesselTcamGroupManager > & groupManager() const { return manager_; }

 private:
   void giveBack( const Held & held, bool installed );
   std::string failureText( const Outcome & outcome ) const;

   Kiln::Ptr< Tessel::TesselTcamGroupManager > manager_;
   Kiln::Ptr< Tessel::TesselUnboundedTcamEntryManager > entryManager_;
   std::vector< Held > held_;
   std::map< std::pair< U32, U32 >, U32 > itemOfEntry_; // (unit, entry) -> item
};

} // namespace Features
