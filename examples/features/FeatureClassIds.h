// FeatureClassIds: the class ids a feature binds its destination port sets
// to, on chips with class-id compression.
//
// A set of L4 destination ports costs one TCAM row per port. On a chip
// with the compression stage each port can be bound to a class id
// (allocateL4DstPortClassId: a compression entry maps the port to the id)
// and the feature's entry matches the id instead. The ports of one set get
// consecutive ids in an aligned block, so one row with a masked class id
// matches the whole set. The library leaves the choice of ids to its
// callers: a feature owns a range of them (here `firstId` onwards, `ids`
// of them) and hands blocks out of it per unit. A port maps to one class
// id only, so it may be in one set of the feature (check()); sets that are
// equal share a block. Chips without compression get nothing: the feature
// expands the set into one row per port.
//
// Order on release: the entries first, then release(), which frees every
// binding (releaseL4DstPortClassId). Threads: the activity thread.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "examples/features/Ipv4Match.h"
#include "manager/TesselTcamGroupManager.h"

namespace Features {

class FeatureClassIds {
 public:
   static constexpr U32 firstId = 64;
   static constexpr U32 ids = 64;

   explicit FeatureClassIds( const Kiln::Ptr< Tessel::TesselTcamGroupManager > & manager );
   // Frees every binding.
   ~FeatureClassIds();
   FeatureClassIds( const FeatureClassIds & ) = delete;
   FeatureClassIds & operator=( const FeatureClassIds & ) = delete;

   // Why the sets (in item order; empty ones are skipped) cannot all be
   // bound: a port in two different sets, or more ids than the feature
   // owns. Empty when they fit.
   static std::string check( const std::string & feature,
                             const std::vector< std::vector< U16 > > & sets );
   // The ids the set's ports are bound to on the unit, bound on the set's
   // first use there; nothing on a chip without class-id compression.
   std::optional< ClassMatch > block( U32 unit, const std::vector< U16 > & set );
   // Frees every binding.
   void release();
   // Ports bound, all units.
   U32 bound() const;

 private:
   Kiln::Ptr< Tessel::TesselTcamGroupManager > manager_;
   std::map< std::pair< U32, std::vector< U16 > >, U32 > blocks_; // (unit, set) -> first id
   std::map< U32, U32 > nextId_;                                  // unit -> next free id
};

} // namespace Features
