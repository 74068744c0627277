// Hardware-capacity tables: every agent feature publishes how much of each
// hardware resource is used, free, reserved and in total, so that operators
// can watch it from the command line.
//
// A table row is named by four parts: the feature group (an agent's table,
// "TesselTcamCapacity"), the feature (a resource of it, "IFP"), the unit
// (chip) and the row within the feature ("Slice-3"; the empty row is the
// feature's own total).
//
//    capacity->initCapacityTableFeature( "TesselTcamCapacity", "IFP" );
//    capacity->initCapacityTableFeature( "TesselTcamCapacity", "IFP", unit, "Slice-0" );
//    capacity->updateCapacityEntry( "TesselTcamCapacity", "IFP", unit, "Slice-0",
//                                   used, free, 0, total );
//
// A feature must be registered before its rows are updated; rows may be
// registered ahead (they start at zero) or come into being on their first
// update. Publication: the rows are plain records in key order
// (capacityTable(), capacityEntryCollection()), and observers get
// onCapacityEntry( key ) after every real change and removal, which is
// where a shared-memory writer hooks in.
// Threads: the activity thread only.
#pragma once

#include "platform/kiln/Collection.h"
#include "platform/kiln/Entity.h"
#include "platform/kiln/String.h"
#include "platform/kiln/Types.h"

#include <compare>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Hardware::Capacity {

// The name of one row. Ordered by feature group, feature, unit, row.
struct CapacityKey {
   Kiln::String featureGroup;
   Kiln::String feature;
   U32 unit = 0;
   Kiln::String row;

   CapacityKey() = default;
   CapacityKey( Kiln::String featureGroup, Kiln::String feature, U32 unit, Kiln::String row )
         : featureGroup( std::move( featureGroup ) ), feature( std::move( feature ) ),
           unit( unit ), row( std::move( row ) ) {}
   explicit CapacityKey( std::string_view valueText );
   // Value('Hardware::Capacity::CapacityKey', ** {'featureGroup': 'TesselTcamCapacity',
   //       'feature': 'IFP', 'unit': 0, 'row': 'Slice-3'})
   std::string valueText() const;
   bool operator==( const CapacityKey & ) const = default;
   std::strong_ordering operator<=>( const CapacityKey & ) const = default;
};

// The figures of one row, in entries (or whatever the feature counts).
struct CapacityFigures {
   U32 used = 0;
   U32 free = 0;
   U32 reserved = 0;
   U32 total = 0;

   CapacityFigures() = default;
   CapacityFigures( U32 used, U32 free, U32 reserved, U32 total )
         : used( used ), free( free ), reserved( reserved ), total( total ) {}
   explicit CapacityFigures( std::string_view valueText );
   std::string valueText() const;
   bool operator==( const CapacityFigures & ) const = default;
};

struct CapacityRow {
   CapacityKey key;
   CapacityFigures figures;
   bool operator==( const CapacityRow & ) const = default;
};

class CapacityHelperSm : public Kiln::Entity {
 public:
   // (feature group, feature)
   typedef std::pair< Kiln::String, Kiln::String > FeatureKey;

   class NotifieeConst : public Kiln::Notifiee< CapacityHelperSm > {
    public:
      virtual void onCapacityFeature( const FeatureKey & /* feature */ ) {}
      virtual void onCapacityEntry( const CapacityKey & /* row */ ) {}
   };

   explicit CapacityHelperSm( const Kiln::Name & name ) : Kiln::Entity( name ) {}

   // Registers a feature of a feature group; again changes nothing. Both
   // names must not be empty ("capacity feature group and feature must be
   // named").
   void initCapacityTableFeature( const Kiln::String & featureGroup,
                                  const Kiln::String & feature );
   // Registers the feature and one row of it at zero; a row already there
   // keeps its figures.
   void initCapacityTableFeature( const Kiln::String & featureGroup, const Kiln::String & feature,
                                  U32 unit, const Kiln::String & row );
   // Sets the figures of a row, creating it when new. Updating a row of a
   // feature that was not registered is a programming error ("capacity
   // feature not registered").
   void updateCapacityEntry( const Kiln::String & featureGroup, const Kiln::String & feature,
                             U32 unit, const Kiln::String & row, U32 used, U32 free,
                             U32 reserved, U32 total );

   bool
   capacityFeatureHas( const Kiln::String & featureGroup, const Kiln::String & feature ) const {
      return capacityFeature_.has( FeatureKey( featureGroup, feature ) );
   }
   const Kiln::OrderedSet< FeatureKey > & capacityFeatureCollection() const {
      return capacityFeature_;
   }

   bool capacityEntryHas( const CapacityKey & key ) const { return capacityEntry_.has( key ); }
   // Zero figures for a row that does not exist.
   CapacityFigures capacityEntry( const CapacityKey & key ) const { return capacityEntry_.get( key ); }
   void
   capacityEntryDel( const CapacityKey & key ) {
      collectionDel( capacityEntry_, key, &NotifieeConst::onCapacityEntry );
   }
   void
   capacityEntryDelAll() {
      collectionDelAll( capacityEntry_, &NotifieeConst::onCapacityEntry );
   }
   // Removes every row of one unit in a feature group (the unit went away);
   // returns how many.
   size_t capacityEntryDelUnit( const Kiln::String & featureGroup, U32 unit );
   const Kiln::OrderedCollection< CapacityKey, CapacityFigures > &
   capacityEntryCollection() const {
      return capacityEntry_;
   }

   // The whole table, in key order.
   std::vector< CapacityRow > capacityTable() const;

 private:
   void featureIs( const Kiln::String & featureGroup, const Kiln::String & feature );

   Kiln::OrderedSet< FeatureKey > capacityFeature_;
   Kiln::OrderedCollection< CapacityKey, CapacityFigures > capacityEntry_;
};

} // namespace Hardware::Capacity

template<>
struct std::hash< Hardware::Capacity::CapacityKey > {
   size_t operator()( const Hardware::Capacity::CapacityKey & key ) const noexcept;
};
