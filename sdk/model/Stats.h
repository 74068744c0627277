// Counters: each stage instance has pools of counter indices; an index counts
// the packets and bytes of one colour of one stat object. Stat objects take
// their indices from one pool of the stage instance of their group.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "platform/kiln/Types.h"
#include "sdk/api/field.h"

namespace ChipModel {

// Which counter index of a stat a type reads: all packets, one colour, or drops.
enum class CounterKind { all = 0, green, yellow, red, drop };
CounterKind counterKindOf( bcm_field_stat_t type );
bool countsBytes( bcm_field_stat_t type );

struct Counter {
   bool used = false;
   U64 packets = 0;
   U64 bytes = 0;
   U64 hardwarePackets = 0; // not yet evicted
   U64 hardwareBytes = 0;
   U64 evictedPackets = 0; // moved to software since the last eviction clear
   U64 evictedBytes = 0;

   // Counts one packet; evicts the hardware part at the threshold.
   void count( U64 length, U64 evictThreshold );
};

class CounterPools {
 public:
   CounterPools( U32 pools, U32 perPool );
   // `count` free indices of one pool (the first that has them), or nullopt.
   std::optional< std::pair< U32, std::vector< U32 > > > allocate( U32 count );
   void release( U32 pool, const std::vector< U32 > & indices );
   Counter * at( U32 pool, U32 index );
   U32 total() const { return pools_ * perPool_; }
   U32 free() const { return total() - used_; }

 private:
   U32 pools_;
   U32 perPool_;
   U32 used_ = 0; // kept, since the group status asks for it on every read
   std::vector< std::vector< Counter > > counters_;
   // Per pool: every index below it is in use, so searches start there and
   // a pool filled in order costs no rescanning.
   std::vector< U32 > firstFree_;
};

struct Stat {
   int id = 0;
   bcm_field_group_t group = 0;
   bcm_field_stage_t stage = bcmFieldStageIngress;
   U32 instance = 0;
   std::vector< bcm_field_stat_t > types; // in creation order
   U32 pool = 0;
   std::map< CounterKind, U32 > indexOf; // counter index per kind
   std::vector< U32 > indices;           // in order of first use by types
   U32 attached = 0;                     // entries it counts for

   bool counts( bcm_field_stat_t type ) const;
};

} // namespace ChipModel
