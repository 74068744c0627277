// A field group as the model holds it: where it lives (stage, pipe), what it
// may match and do, the slices it owns and its entries in lookup order.
#pragma once

#include <optional>
#include <set>
#include <vector>

#include "platform/kiln/Types.h"
#include "sdk/api/field.h"
#include "sdk/model/ClassifyTable.h"
#include "sdk/model/PriorityArray.h"

namespace ChipModel {

struct Group {
   bcm_field_group_t id = 0;
   bcm_field_stage_t stage = bcmFieldStageIngress;
   U32 instance = 0; // stage instance: the pipe of a pipe-local stage, else 0
   int pipe = -1;    // -1 for a group of a global stage
   int priority = 0;
   bcm_field_group_mode_t mode = bcmFieldGroupModeSingle;
   U32 width = 1; // slices per row
   U32 rowsPerSlice = 0;
   bcm_field_qset_t qset{};
   std::optional< bcm_field_aset_t > aset;
   std::optional< bcm_pbmp_t > ports;
   std::vector< bcm_field_presel_t > presels;
   std::optional< bcm_field_hintid_t > hint;
   std::vector< U32 > chain; // first slice of each run of `width` slices, in row order
   PriorityArray rows;       // keys are entry ids
   std::set< int > stats;
   U64 created = 0; // creation order
   U64 moves = 0;   // physical entry moves so far
   // The installed entries compiled for lookup; a cache that lookups may
   // rebuild, so it changes under a const group.
   mutable ClassifyTable table;

   // The run of the chain that holds a row.
   U32 sliceOfRow( U32 row ) const { return chain.at( row / rowsPerSlice ); }
   // Entries in each run of the chain, in chain order.
   std::vector< U32 > usedPerRun() const;
};

} // namespace ChipModel
