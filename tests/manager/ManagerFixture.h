// A box of modelled chips with a group manager that knows its units, the
// activity lock held the way the agent holds it. The box checks that every
// SDK call is made with the lock released and aborts otherwise.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "manager/ChipInfoFromShim.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/kiln/ActivityLock.h"
#include "sdk/model/Box.h"

namespace ManagerTest {

using namespace Tessel;

// What each profile's unit looks like to the tests.
struct ProfileFacts {
   std::string name;
   U32 ingressPipes;      // SDK groups per ingress group
   bool portAclCopies;    // port ACL groups take two copies per pipe
   bool compressionGroups;
   // Untagged packets show outer VLAN 0: every entry of an ingress group
   // has a twin copy in the same SDK group ("pipe" 1 of 2).
   bool ovidWar;

   // What getNumPipe answers for the unit's ingress groups.
   U32 pipes() const { return ovidWar ? 2 : ingressPipes; }
};

inline const std::vector< ProfileFacts > &
allProfiles() {
   static const std::vector< ProfileFacts > facts = {
      { "single", 1, false, false, true },
      { "trident3", 1, false, false, false },
      { "thx", 4, true, false, false },
      { "th3", 8, false, true, false },
   };
   return facts;
}

inline void
PrintTo( const ProfileFacts & facts, std::ostream * os ) {
   *os << facts.name;
}

inline std::string
profileName( const testing::TestParamInfo< ProfileFacts > & info ) {
   return info.param.name;
}

inline ChipModel::Box::Options
checkedOptions() {
   ChipModel::Box::Options options;
   options.staged = false;
   options.activityCheck = ChipModel::ActivityCheck::abort;
   return options;
}

// Marks the constructor that takes an adjusted profile.
struct AdjustedProfile {};

// Whether units keep the entry ranges reserved when they are set up, or
// start bare (for tests of group creation that need every step to happen).
enum class Reservations { keep, release };

class ManagerBox {
 public:
   // A box of the profiles; the manager is initialised and, unless told
   // otherwise, knows every unit as module 1.
   explicit ManagerBox( const std::vector< std::string > & profiles, bool knowUnits = true,
                        Reservations reservations = Reservations::keep )
         : box( profiles, checkedOptions() ), manager( new TesselTcamGroupManager( "tcam" ) ) {
      manager->handlePreInit();
      manager->handleInitialized();
      for ( U32 unit = 0; knowUnits && unit < box.numUnits(); ++unit ) {
         manager->modChipInfoIs( static_cast< U16 >( 1 + unit ),
                                 chipInfoFromShim( static_cast< U16 >( 1 + unit ), { unit } ) );
         if ( reservations == Reservations::release ) {
            releaseReservations( unit );
         }
      }
   }
   // One unit of an adjusted profile.
   ManagerBox( const ChipModel::Profile & profile, AdjustedProfile )
         : box( std::vector< ChipModel::Profile >{ profile }, checkedOptions() ),
           manager( new TesselTcamGroupManager( "tcam" ) ) {
      manager->handleInitialized();
      manager->modChipInfoIs( 1, chipInfoFromShim( 1, { 0 } ) );
   }
   ~ManagerBox() { manager = nullptr; }

   void
   releaseReservations( U32 unit ) {
      for ( const auto & [ assignment, entries ] : manager->entryManagerCollection() ) {
         if ( entries->internalUnitEntryHas( unit ) &&
              entries->internalUnitEntry( unit )->rangeAllocated() &&
              entries->strategy() == tcamAllocateAtBeginning_ ) {
            entries->releaseRange( unit );
         }
      }
   }

   const ChipModel::Group *
   group( U32 id, U32 unit = 0 ) const {
      return box.unit( unit ).state().field.group( static_cast< int >( id ) );
   }
   // The SDK ids a group gets on a unit with these pipes and copies.
   static std::vector< U32 >
   pipeGroupIds( U32 group, U32 pipes, U32 copies ) {
      std::vector< U32 > ids;
      for ( U32 pipe = 0; pipe < pipes; ++pipe ) {
         for ( U32 copy = 0; copy < copies; ++copy ) {
            ids.push_back( group | ( pipes > 1 ? pipe << 24 : 0 ) | copy << 27 );
         }
      }
      return ids;
   }
   // An SDK call from the test, made the way the product makes them.
   template< typename Call >
   int
   sdk( Call call ) {
      Kiln::UnlockAnchor anchor( Kiln::ActivityUnlockAnchor::lock() );
      return call();
   }

   ChipModel::Box box;
   Kiln::ActivityLockGuard activity;
   Kiln::Ptr< TesselTcamGroupManager > manager;
};

} // namespace ManagerTest
