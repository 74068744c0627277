#include "catalogue/TcamEarlyReservation.h"

#include "catalogue/TcamGroupId.h"
#include "platform/kiln/Assert.h"
#include "sdk/shim/Shim.h"

namespace Tessel {

EarlyReservationFacts
earlyReservationFacts( const Agent::PlatformState * state, bool p4RuntimeEnabled, U32 unit ) {
   KILN_ASSERT_MSG( Shim::sdk_, "SDK shim not installed" );
   const Shim::Sdk & shim = *Shim::sdk_;
   EarlyReservationFacts facts;
   facts.earlyReservation = state && state->earlyReservation();
   facts.pdpModeEnabled = state && state->pdpModeEnabled();
   facts.p4RuntimeEnabled = p4RuntimeEnabled;
   facts.familyCheck = shim.entryManagerFamilyCheckTrident3( unit ) ||
                       shim.entryManagerFamilyCheckTh3( unit ) ||
                       shim.entryManagerFamilyCheckCompact( unit );
   return facts;
}

bool
reservesAtBeginning( U32 group, TcamAllocationStrategy strategy,
                     const EarlyReservationFacts & facts ) {
   bool atBeginning = strategy == tcamAllocateAtBeginning_;
   bool reserve = atBeginning;
   if ( group == EFP_GROUP_VLAN_PRI_ || group == VFP_GROUP_IP_VFI_EXCEPTION_ ) {
      reserve = reserve && facts.earlyReservation;
   }
   if ( group == IFP_GROUP_PDP_ || group == VFP_GROUP_PDP_CLASS_ ) {
      reserve = reserve && facts.pdpModeEnabled;
   }
   if ( facts.familyCheck && group == VFP_GROUP_IP_VFI_EXCEPTION_ && !facts.pdpModeEnabled ) {
      reserve = atBeginning;
   }
   if ( group == IFP_GROUP_CONDUIT_P4RT_PUNT_ ) {
      reserve = reserve && facts.p4RuntimeEnabled;
   }
   return reserve;
}

} // namespace Tessel
