// Which entry ranges are reserved when a unit is set up: the strategy,
// narrowed for the groups that reserve only when the platform uses them.
#include "tests/catalogue/CatalogueFixture.h"

#include "catalogue/TcamEarlyReservation.h"
#include "catalogue/TcamGroupId.h"
#include "sdk/model/Box.h"

namespace CatalogueTest {
namespace {

using namespace Tessel;

bool
reserves( U32 group, const EarlyReservationFacts & facts,
          TcamAllocationStrategy strategy = tcamAllocateAtBeginning_ ) {
   return reservesAtBeginning( group, strategy, facts );
}

TEST( EarlyReservation, OtherGroupsFollowTheirStrategy ) {
   EarlyReservationFacts none;
   EXPECT_TRUE( reserves( IFP_GROUP_L2CTL_L3ROUTING_, none ) );
   for ( TcamAllocationStrategy other :
         { tcamAllocateUnbounded_, tcamAllocateOnDemand_, tcamAllocateAsChunk_ } ) {
      EXPECT_FALSE( reserves( IFP_GROUP_L2CTL_L3ROUTING_, none, other ) );
      EarlyReservationFacts all{ true, true, true, true };
      for ( U32 group : { 27u, 49u, 69u, 79u, 80u } ) {
         EXPECT_FALSE( reserves( group, all, other ) ) << group;
      }
   }
}

TEST( EarlyReservation, EachSpecialGroupWaitsForItsFlag ) {
   struct Case {
      U32 group;
      EarlyReservationFacts facts;
      bool reserved;
   };
   const Case cases[] = {
      { EFP_GROUP_VLAN_PRI_, { false, true, true, false }, false },
      { EFP_GROUP_VLAN_PRI_, { true, false, false, false }, true },
      { VFP_GROUP_IP_VFI_EXCEPTION_, { false, false, false, false }, false },
      { VFP_GROUP_IP_VFI_EXCEPTION_, { true, false, false, false }, true },
      { IFP_GROUP_PDP_, { true, false, true, true }, false },
      { IFP_GROUP_PDP_, { false, true, false, false }, true },
      { VFP_GROUP_PDP_CLASS_, { false, true, false, false }, true },
      { VFP_GROUP_PDP_CLASS_, { false, false, false, true }, false },
      { IFP_GROUP_CONDUIT_P4RT_PUNT_, { true, true, false, true }, false },
      { IFP_GROUP_CONDUIT_P4RT_PUNT_, { false, false, true, false }, true },
   };
   for ( const Case & c : cases ) {
      EXPECT_EQ( c.reserved, reserves( c.group, c.facts ) )
         << c.group << " early " << c.facts.earlyReservation << " pdp " << c.facts.pdpModeEnabled
         << " p4 " << c.facts.p4RuntimeEnabled << " family " << c.facts.familyCheck;
   }
}

// On the three families, group 79 reserves by its strategy alone unless
// PDP mode is on; PDP mode brings its early-reservation test back.
TEST( EarlyReservation, TheFamilyChecksFreeGroup79FromItsFlagWithoutPdp ) {
   EXPECT_TRUE( reserves( VFP_GROUP_IP_VFI_EXCEPTION_, { false, false, false, true } ) );
   EXPECT_FALSE( reserves( VFP_GROUP_IP_VFI_EXCEPTION_, { false, true, false, true } ) );
   EXPECT_TRUE( reserves( VFP_GROUP_IP_VFI_EXCEPTION_, { true, true, false, true } ) );
   EXPECT_FALSE( reserves( EFP_GROUP_VLAN_PRI_, { false, false, false, true } ) );
}

TEST( EarlyReservation, FactsComeFromThePlatformAndTheChip ) {
   ChipModel::Box box( { "single", "trident3", "thx", "th3" } );
   Kiln::Ptr< Agent::PlatformState > state = new Agent::PlatformState( "platform" );
   state->pdpModeEnabledIs( true );
   EarlyReservationFacts facts = earlyReservationFacts( state.get(), true, 2 );
   EXPECT_TRUE( facts.pdpModeEnabled );
   EXPECT_FALSE( facts.earlyReservation );
   EXPECT_TRUE( facts.p4RuntimeEnabled );
   EXPECT_FALSE( facts.familyCheck );
   EXPECT_TRUE( earlyReservationFacts( nullptr, false, 1 ).familyCheck );
   EXPECT_TRUE( earlyReservationFacts( nullptr, false, 3 ).familyCheck );
   EXPECT_FALSE( earlyReservationFacts( nullptr, false, 0 ).familyCheck );
   EXPECT_FALSE( earlyReservationFacts( nullptr, false, 0 ).pdpModeEnabled );
}

} // namespace
} // namespace CatalogueTest
