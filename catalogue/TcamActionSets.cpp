// The action set of IFP groups on Trident3 chips. Those chips size a
// group's action resources from an explicit action set, so IFP groups there
// name every action an ingress feature may write: forwarding and copy
// decisions, redirects, mirroring, queue and priority changes, marking,
// policing and counting, sampling, NAT and PFC. Actions of other stages
// (egress mirroring, VLAN translation, class-id setting) are left out.
#include <array>
#include <iterator>

#include "catalogue/TesselTcamGroups.h"
#include "platform/kiln/Assert.h"
#include "sdk/shim/Shim.h"

namespace Tessel {

namespace {

using Query = int ( Shim::Sdk::* )() const;
using Sdk = Shim::Sdk;

constexpr Query trident3IfpActions[] = {
   &Sdk::AR_bcmFieldActionCopyToCpu,        &Sdk::AR_bcmFieldActionCopyToCpuCancel,
   &Sdk::AR_bcmFieldActionDrop,             &Sdk::AR_bcmFieldActionDropCancel,
   &Sdk::AR_bcmFieldActionRedirectPort,     &Sdk::AR_bcmFieldActionRedirectPbmp,
   &Sdk::AR_bcmFieldActionRedirectTrunk,    &Sdk::AR_bcmFieldActionRedirectEgrNextHop,
   &Sdk::AR_bcmFieldActionEgressMask,       &Sdk::AR_bcmFieldActionEgressPortsAdd,
   &Sdk::AR_bcmFieldActionL3Switch,         &Sdk::AR_bcmFieldActionL3SwitchCancel,
   &Sdk::AR_bcmFieldActionMirrorIngress,    &Sdk::AR_bcmFieldActionMirrorOverride,
   &Sdk::AR_bcmFieldActionCosQNew,          &Sdk::AR_bcmFieldActionCosQCpuNew,
   &Sdk::AR_bcmFieldActionPrioIntNew,       &Sdk::AR_bcmFieldActionDscpNew,
   &Sdk::AR_bcmFieldActionEcnNew,           &Sdk::AR_bcmFieldActionDropPrecedence,
   &Sdk::AR_bcmFieldActionGpDrop,           &Sdk::AR_bcmFieldActionYpDrop,
   &Sdk::AR_bcmFieldActionRpDrop,           &Sdk::AR_bcmFieldActionOuterVlanNew,
   &Sdk::AR_bcmFieldActionOuterVlanPrioNew, &Sdk::AR_bcmFieldActionVrfSet,
   &Sdk::AR_bcmFieldActionPolicerGroup,     &Sdk::AR_bcmFieldActionMeterConfig,
   &Sdk::AR_bcmFieldActionStatGroup,        &Sdk::AR_bcmFieldActionIngSampleEnable,
   &Sdk::AR_bcmFieldActionSnoop,            &Sdk::AR_bcmFieldActionTtlDecrementCancel,
   &Sdk::AR_bcmFieldActionNatEnable,        &Sdk::AR_bcmFieldActionPfcTxEnable,
   &Sdk::AR_bcmFieldActionUseGlobalMeterColor, &Sdk::AR_bcmFieldActionColorIndependent,
};

constexpr std::size_t numActions = std::size( trident3IfpActions );

std::array< int, numActions + 1 >
askShim() {
   KILN_ASSERT_MSG( Shim::sdk_, "SDK shim not installed" );
   std::array< int, numActions + 1 > actions{};
   for ( std::size_t i = 0; i < numActions; ++i ) {
      actions[ i ] = ( Shim::sdk_->*trident3IfpActions[ i ] )();
   }
   actions[ numActions ] = -1;
   return actions;
}

} // namespace

const int *
initializeTrident3IfpActionSet() {
   static const std::array< int, numActions + 1 > actions = askShim();
   return actions.data();
}

} // namespace Tessel
