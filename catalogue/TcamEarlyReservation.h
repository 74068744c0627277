// Which entry managers reserve their whole entry range when a unit is set
// up, before any feature asks for an entry. The reservation rows say
// tcamAllocateAtBeginning; a few groups reserve only when the platform uses
// what they serve:
//
//   EFP_GROUP_VLAN_PRI (69), VFP_GROUP_IP_VFI_EXCEPTION (79)
//                       the TCAM profile reserves them early
//                       (PlatformState::earlyReservation); on Trident3, TH3
//                       and compact chips group 79 with PDP mode off follows
//                       its strategy alone
//   IFP_GROUP_PDP (27), VFP_GROUP_PDP_CLASS (80)
//                       PDP mode is on (PlatformState::pdpModeEnabled)
//   IFP_GROUP_CONDUIT_P4RT_PUNT (49)
//                       P4Runtime is configured (p4RuntimeEnabled)
//
// Other groups reserve exactly when their strategy is tcamAllocateAtBeginning.
#pragma once

#include "catalogue/TcamAllocationStrategy.h"
#include "common/TesselExport.h"
#include "platform/agent/PlatformState.h"
#include "platform/kiln/Types.h"

namespace Tessel {

// What the rule reads besides the group and its strategy.
struct EarlyReservationFacts {
   bool earlyReservation = false; // PlatformState::earlyReservation
   bool pdpModeEnabled = false;   // PlatformState::pdpModeEnabled
   bool p4RuntimeEnabled = false; // the group manager's p4RuntimeEnabled
   // One of the shim's three entry-manager family checks holds for the unit
   // (Trident3, TH3, compact).
   bool familyCheck = false;
};

// The facts for a unit: the platform's flags (all false without a platform
// state), the given P4Runtime flag, and the shim's family checks, which
// must be installed.
TESSEL_EXPORT EarlyReservationFacts
earlyReservationFacts( const Agent::PlatformState * state, bool p4RuntimeEnabled, U32 unit );

// Whether a manager of `group` with `strategy` reserves its entry range
// when a unit is set up.
TESSEL_EXPORT bool
reservesAtBeginning( U32 group, TcamAllocationStrategy strategy,
                     const EarlyReservationFacts & facts );

} // namespace Tessel
