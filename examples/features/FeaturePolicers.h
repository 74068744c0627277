// FeaturePolicers: the policers one feature takes from the group manager,
// one logical policer per item (a class) and unit. A logical policer is a
// hardware policer in every pipe; each pipe copy of the item's entries
// takes the policer of its own pipe.
//
// The library treats running out of policers as fatal, so a feature keeps
// well inside the smallest chip's meters: at most maxPolicersPerUnit per
// feature and unit, refused beforehand with a message.
//
// Order on release: the entries first (an attached policer cannot go),
// then release() here. Threads: the activity thread.
#pragma once

#include <map>
#include <string>

#include "examples/features/FeatureEntries.h"
#include "examples/features/ItemFeature.h"

namespace Features {

// A committed-rate meter: `rateKbps` sustained, `burstKbits` at once.
struct PolicerRate {
   U32 rateKbps = 0;
   U32 burstKbits = 0;
   bool operator==( const PolicerRate & ) const = default;
   // "rate 64 kbit/s burst 8 kbit"
   std::string text() const;
};

class FeaturePolicers {
 public:
   static constexpr U32 maxPolicersPerUnit = 32;

   explicit FeaturePolicers( const Kiln::Ptr< Tessel::TesselTcamGroupManager > & manager );
   // Removes every policer.
   ~FeaturePolicers();
   FeaturePolicers( const FeaturePolicers & ) = delete;
   FeaturePolicers & operator=( const FeaturePolicers & ) = delete;

   // The item's policer on the unit (its base id), made on first use.
   // Packets above the rate turn red; with `dropRed` red packets are
   // dropped, else they go on coloured.
   U32 policer( U32 unit, U32 item, const PolicerRate & rate, bool dropRed );
   // Attaches the unit's policer `base` to every copy of the entry, each
   // copy to its pipe's policer. The first SDK error, else 0.
   int attach( const FeatureEntries & entries, U32 unit, U32 entry, U32 base ) const;
   // Removes every policer; no entry may hold one any more.
   void release();

   U32 count() const { return U32( policers_.size() ); }

 private:
   Kiln::Ptr< Tessel::TesselTcamGroupManager > manager_;
   std::map< std::pair< U32, U32 >, U32 > policers_; // (unit, item) -> base id
};

// Whether `items` policed items fit a feature; the refusal's text otherwise.
std::string policerLimitError( const std::string & feature, U32 items );

// A feature whose items may each take a policer (CoPP, QoS): the policers
// go after the entries, and no more items may be policed than fit.
template< typename Item >
class PolicedFeature : public ItemFeature< Item > {
 public:
   const FeaturePolicers & policers() const { return policers_; }

 protected:
   PolicedFeature( const Kiln::Ptr< Tessel::TesselTcamGroupManager > & manager,
                   Tessel::TcamGroupAssignment reservation, std::string name,
                   std::string itemWord )
         : ItemFeature< Item >( manager, reservation, std::move( name ), std::move( itemWord ) ),
           policers_( manager ) {}

   // How many of the items take a policer.
   virtual U32 policedItems() const = 0;
   std::string
   checkItems() const override {
      return policerLimitError( this->name(), policedItems() );
   }
   void releaseResources() override { policers_.release(); }

   FeaturePolicers policers_;
};

} // namespace Features
