// ItemFeature: what the example features share. A feature is given an
// ordered list of items (rules, classes); each item becomes one or more
// entries in the feature's reservation on every unit, the first item at the
// highest priority. Installing replaces what was installed and is all or
// nothing; a hit in the chip is traced back to its item; counters are read
// per item.
//
// A feature derives from it and says what an item's entries are
// (specsOf), and, where it needs them, what to check before (checkItems),
// to prepare on the chip before the first entry (prepare) and to give back
// after the last (releaseResources). A feature whose group key has range
// checkers takes them for its items' port ranges through ranges_ (see
// FeatureRanges); they go back right after the entries. Derived destructors
// call release(): their own resources (policers, fields) can only go after
// the entries.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "examples/features/FeatureEntries.h"
#include "examples/features/FeatureRanges.h"
#include "examples/features/Ipv4Match.h"

namespace Features {

template< typename Item >
class ItemFeature {
 public:
   ItemFeature( const ItemFeature & ) = delete;
   ItemFeature & operator=( const ItemFeature & ) = delete;

   // Installs the items on every unit the group manager knows, replacing
   // what was installed. When they do not fit (or the chip refuses one)
   // nothing stays installed and the report says how many fitted.
   LoadReport
   install( const std::vector< Item > & items ) {
      release();
      items_ = items;
      LoadReport report( name_, itemWord_, U32( items_.size() ) );
      report.error = checkItems();
      if ( report.ok() && !items_.empty() ) {
         report.error = prepare();
      }
      if ( report.ok() && !items_.empty() ) {
         report = entries_.installItems( name_, itemWord_, U32( items_.size() ),
                                         [ this ]( U32 unit, U32 item ) { return specsOf( unit, item ); } );
         report.rangeCheckers = ranges_.checkers();
         report.rangesExpanded = ranges_.expanded();
         noteResources( report );
      }
      if ( !report.ok() ) {
         release();
      }
      return report;
   }

   // Every entry taken out and given back, then their range checkers and
   // the feature's resources; the items are forgotten.
   void
   release() {
      entries_.release();
      ranges_.release();
      releaseResources();
      items_.clear();
   }

   const std::vector< Item > & items() const { return items_; }
   // The item (0-based, in install order) whose entry a packet hit, from
   // the hit as the chip reports it; nothing for hits of other groups.
   std::optional< U32 >
   itemOf( U32 unit, U32 sdkGroup, U32 sdkEntry ) const {
      return entries_.itemOf( unit, sdkGroup, sdkEntry );
   }
   // Packets counted by the item's entries on the unit.
   U64 itemPackets( U32 unit, U32 item ) { return entries_.packets( unit, item ); }
   const FeatureEntries & entries() const { return entries_; }
   const std::string & name() const { return name_; }
   // The item for the operator: "acl rule 0 (deny proto=6 dport=22)".
   virtual std::string itemText( U32 item ) const = 0;

 protected:
   ItemFeature( const Kiln::Ptr< Tessel::TesselTcamGroupManager > & manager,
                Tessel::TcamGroupAssignment reservation, std::string name, std::string itemWord )
         : entries_( manager, reservation ), ranges_( entries_.entryManager() ),
           name_( std::move( name ) ), itemWord_( std::move( itemWord ) ) {}
   virtual ~ItemFeature() = default;

   // The entries of the item on the unit, all at its priority.
   virtual std::vector< FeatureEntries::Spec > specsOf( U32 unit, U32 item ) = 0;
   // Why the items cannot be installed at all, or empty.
   virtual std::string checkItems() const { return ""; }
   // What the chip needs before the first entry; why it could not be done,
   // or empty.
   virtual std::string prepare() { return ""; }
   virtual void releaseResources() {}
   // Adds what the feature holds of the chip's shared resources to the report.
   virtual void noteResources( LoadReport & ) const {}

   // One entry per key of the match, at the item's priority (the first
   // item highest): qualified with the key (the ranges and set `resources`
   // holds take one key each), then given the item's actions by `actions`
   // (the first SDK error, else 0).
   std::vector< FeatureEntries::Spec >
   matchSpecs( const Ipv4Match & match, U32 item, const Kiln::String & desc,
               const FeatureEntries::Program & actions, const KeyResources & resources = {} ) {
      U32 priority = U32( items_.size() ) - item;
      std::vector< FeatureEntries::Spec > specs;
      for ( const Ipv4Key & key : ipv4Keys( match, resources ) ) {
         specs.push_back( { priority, desc, [ this, key, actions ]( U32 unit, U32 entry ) {
                              int rc = qualifyIpv4( *entries_.entryManager(), unit, entry, key );
                              return rc < 0 ? rc : actions( unit, entry );
                           } } );
      }
      return specs;
   }

   FeatureEntries entries_;
   FeatureRanges ranges_;
   std::vector< Item > items_;

 private:
   std::string name_;
   std::string itemWord_;
};

} // namespace Features
