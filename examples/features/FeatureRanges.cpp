#include "examples/features/FeatureRanges.h"

#include "manager/TesselTcamGroupManager.h"
#include "sdk/api/range.h"

namespace Features {

using Tessel::RangeCheckerDesc;

FeatureRanges::FeatureRanges( const Kiln::Ptr< Tessel::TesselTcamEntryManager > & entryManager )
      : entryManager_( entryManager ) {}

FeatureRanges::~FeatureRanges() {
   release();
}

KeyResources
FeatureRanges::take( U32 unit, const Ipv4Match & match ) {
   KeyResources resources;
   resources.srcRange = takeOne( unit, match.srcPorts, BCM_FIELD_RANGE_SRCPORT );
   if ( match.dstPortSet.empty() ) {
      resources.dstRange = takeOne( unit, match.dstPorts, BCM_FIELD_RANGE_DSTPORT );
   }
   return resources;
}

U32
FeatureRanges::takeOne( U32 unit, const PortRange & range, U32 flags ) {
   if ( !rangeNeedsChecker( range ) ) {
      return 0;
   }
   RangeCheckerDesc desc( range.low, range.high, flags );
   // The group manager records an entry's checkers under the entry id
   // alone, and the ids of two units' entries can be equal: on a box of
   // several units the ranges are expanded until it keeps them per unit.
   if ( entryManager_->groupManager()->units().size() > 1 ) {
      ++expanded_;
      return 0;
   }
   // Once the chip said no, only a range already held can still be shared:
   // asking for a new one would only cost a failing SDK call per rule.
   bool held = users_.count( { unit, desc } ) != 0;
   U32 id = entryManager_->rangeCheckersExhausted( unit ) && !held
               ? 0
               : entryManager_->getRangeChecker( unit, desc );
   if ( !id ) {
      ++expanded_;
      return 0;
   }
   uses_.emplace_back( unit, desc );
   ++users_[ { unit, desc } ];
   return id;
}

void
FeatureRanges::release() {
   while ( !uses_.empty() ) {
      auto [ unit, desc ] = uses_.back();
      uses_.pop_back();
      if ( --users_[ { unit, desc } ] == 0 ) {
         users_.erase( { unit, desc } );
      }
      entryManager_->releaseRangeChecker( unit, desc );
   }
   expanded_ = 0;
}

U32
FeatureRanges::checkers() const {
   return U32( users_.size() );
}

} // namespace Features
