// Packet classification.
//
// Stages run in the pipe of the packet's ingress port: VFP, the class-id
// compression stage (where the chip has one), IFP, then EFP. In a stage every
// group that sees the packet (its preselectors match, its port restriction
// holds the ingress port) yields its first installed, enabled, matching entry
// in lookup order (higher priority first, then arrival). Groups are taken in
// priority order (higher first, then creation order); the first group to
// give an action decides it, and an action and its cancel (Drop and
// DropCancel, CopyToCpu and CopyToCpuCancel, L3Switch and L3SwitchCancel) or
// two redirects decide each other. The groups of a stage all look up the
// same key: what a stage sets is seen from the next stage on, so class ids
// and VRF from VFP, compressed class ids from the class stage, the egress
// port, drop and colour from IFP. The counters of every hit entry count the
// packet, and policers of IFP hits colour it.
//
// Finding a group's first matching entry has two implementations: the plain
// loop over the group's rows, which is the reference, and the group's
// compiled table (ClassifyTable.h), which is the default. Everything else is
// shared, and the two must give the same results.
#pragma once

#include <optional>
#include <vector>

#include "sdk/api/field.h"
#include "sdk/model/Packet.h"
#include "sdk/model/Unit.h"

namespace ChipModel {

struct Hit {
   bcm_field_group_t group;
   bcm_field_entry_t entry;
};

struct ResolvedAction {
   bcm_field_action_t action;
   U32 param0 = 0;
   U32 param1 = 0;
   bool hasPorts = false;
   bcm_pbmp_t ports{};
   bcm_field_group_t group = 0; // where it came from
   bcm_field_entry_t entry = 0;
};

struct StageResult {
   bcm_field_stage_t stage;
   int pipe = -1;           // -1 for a global stage
   std::vector< Hit > hits; // in group precedence
   std::vector< ResolvedAction > actions;

   // The entry the group hit in this stage, if any.
   std::optional< bcm_field_entry_t > hitIn( bcm_field_group_t group ) const;
   const ResolvedAction * action( bcm_field_action_t action ) const;
};

struct LookupResult {
   std::vector< StageResult > stages; // in lookup order, stages the unit has
   bool dropped = false;
   bool copiedToCpu = false;
   std::optional< int > egressPort;
   bcm_field_color_t colour = bcmFieldColorGreen;

   const StageResult * stage( bcm_field_stage_t stage ) const;
   // The entry a group hit in any stage, if any.
   std::optional< bcm_field_entry_t > hitIn( bcm_field_group_t group ) const;
   // Every hit of every stage, in lookup order.
   std::vector< Hit > hits() const;
   // The action as resolved in the stage, or null.
   const ResolvedAction * action( bcm_field_stage_t stage,
                                  bcm_field_action_t action ) const;
};

// How a group's first matching entry is found.
enum class Classifier {
   fast,      // the group's compiled table
   reference, // the plain loop over its rows
};

// Looks the packet up in a unit's state. A packet entering on a port the
// profile does not have gives an empty result.
LookupResult classify( UnitState & state, const Packet & packet,
                       Classifier classifier = Classifier::fast );

} // namespace ChipModel
