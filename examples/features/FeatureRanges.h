// FeatureRanges: the range checkers one feature takes for its port ranges.
//
// A range that is neither one port nor every port would cost a rule up to
// 30 value/mask rows per port field. The chip's range checkers match it in
// one: the feature asks its entry manager for the range's checker (the
// group manager hands every entry of the unit that asks for the same range
// the same checker, counted per user), attaches it to the entry before
// installing, and gives its use back after the entry is gone; the last use
// gives the checker back to the chip. Checkers are few: once the chip has
// none left (getRangeChecker answers 0 and the unit is marked
// rangeCheckersExhausted) the feature expands the remaining ranges instead,
// and asks again only for ranges it already holds (they share) until a
// release frees a checker.
//
// The group manager keeps an entry's checkers under the entry id alone, so
// on a box of several units (whose entry ids repeat) ranges are expanded.
//
// One use is taken per item, unit and range field, so a range that several
// items share holds one checker with one count per item.
//
// Order on release: the entries first (an attached checker stays in their
// key), then release() here. Threads: the activity thread.
#pragma once

#include <map>
#include <vector>

#include "examples/features/Ipv4Match.h"
#include "manager/TesselTcamEntryManager.h"

namespace Features {

class FeatureRanges {
 public:
   explicit FeatureRanges( const Kiln::Ptr< Tessel::TesselTcamEntryManager > & entryManager );
   // Gives every use back.
   ~FeatureRanges();
   FeatureRanges( const FeatureRanges & ) = delete;
   FeatureRanges & operator=( const FeatureRanges & ) = delete;

   // The checkers for the match's port ranges on the unit, one use each
   // taken; 0 for a range that needs none (one port, any port, or the
   // destination given as a port set) and for one the chip has no checker
   // left for, which the caller expands.
   KeyResources take( U32 unit, const Ipv4Match & match );
   // Gives every use back; the last user of a checker frees it on the chip.
   void release();

   // Distinct checkers held, summed over units.
   U32 checkers() const;
   // Ranges that found no checker since the last release: expanded.
   U32 expanded() const { return expanded_; }

 private:
   U32 takeOne( U32 unit, const PortRange & range, U32 flags );

   Kiln::Ptr< Tessel::TesselTcamEntryManager > entryManager_;
   std::vector< std::pair< U32, Tessel::RangeCheckerDesc > > uses_; // (unit, range)
   std::map< std::pair< U32, Tessel::RangeCheckerDesc >, U32 > users_;
   U32 expanded_ = 0;
};

} // namespace Features
