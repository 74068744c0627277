#include "sdk/model/Stats.h"

#include <algorithm>

namespace ChipModel {

CounterKind
counterKindOf( bcm_field_stat_t type ) {
   switch ( type ) {
   case bcmFieldStatGreenPackets:
   case bcmFieldStatGreenBytes:
      return CounterKind::green;
   case bcmFieldStatYellowPackets:
   case bcmFieldStatYellowBytes:
      return CounterKind::yellow;
   case bcmFieldStatRedPackets:
   case bcmFieldStatRedBytes:
      return CounterKind::red;
   case bcmFieldStatDropPackets:
   case bcmFieldStatDropBytes:
      return CounterKind::drop;
   default:
      return CounterKind::all;
   }
}

bool
countsBytes( bcm_field_stat_t type ) {
   return type == bcmFieldStatBytes || type == bcmFieldStatGreenBytes ||
          type == bcmFieldStatYellowBytes || type == bcmFieldStatRedBytes ||
          type == bcmFieldStatDropBytes;
}

void
Counter::count( U64 length, U64 evictThreshold ) {
   ++packets;
   bytes += length;
   ++hardwarePackets;
   hardwareBytes += length;
   if ( evictThreshold && hardwarePackets >= evictThreshold ) {
      evictedPackets += hardwarePackets;
      evictedBytes += hardwareBytes;
      hardwarePackets = 0;
      hardwareBytes = 0;
   }
}

CounterPools::CounterPools( U32 pools, U32 perPool )
    : pools_( pools ), perPool_( perPool ),
      counters_( pools, std::vector< Counter >( perPool ) ), firstFree_( pools, 0 ) {}

std::optional< std::pair< U32, std::vector< U32 > > >
CounterPools::allocate( U32 count ) {
   for ( U32 pool = 0; pool < pools_; ++pool ) {
      std::vector< U32 > found;
      U32 index = firstFree_[ pool ];
      for ( ; index < perPool_ && found.size() < count; ++index ) {
         if ( !counters_[ pool ][ index ].used ) {
            found.push_back( index );
         }
      }
      if ( found.empty() ) {
         firstFree_[ pool ] = perPool_;
      } else {
         firstFree_[ pool ] = found.front();
      }
      if ( found.size() == count ) {
         for ( U32 taken : found ) {
            counters_[ pool ][ taken ] = Counter{};
            counters_[ pool ][ taken ].used = true;
         }
         used_ += count;
         return std::make_pair( pool, found );
      }
   }
   return std::nullopt;
}

void
CounterPools::release( U32 pool, const std::vector< U32 > & indices ) {
   for ( U32 index : indices ) {
      Counter & counter = counters_.at( pool ).at( index );
      used_ -= counter.used ? 1 : 0;
      counter = Counter{};
      firstFree_[ pool ] = std::min( firstFree_[ pool ], index );
   }
}

Counter *
CounterPools::at( U32 pool, U32 index ) {
   if ( pool >= pools_ || index >= perPool_ || !counters_[ pool ][ index ].used ) {
      return nullptr;
   }
   return &counters_[ pool ][ index ];
}

bool
Stat::counts( bcm_field_stat_t type ) const {
   return std::find( types.begin(), types.end(), type ) != types.end();
}

} // namespace ChipModel
