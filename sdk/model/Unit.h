// One modelled chip: its profile, the SDK state the agent builds in it, and
// what its hardware shows packets.
//
// Start-up staging: a unit starts staged (unless the box says otherwise).
// While staged, packets see only what a hitless restart kept in hardware (a
// cold unit: nothing); bcm_field_tcam_commit ends staging and packets see
// the installed entries from then on.
#pragma once

#include <optional>

#include "sdk/model/FieldControl.h"
#include "sdk/model/FieldProcessor.h"
#include "sdk/model/Policers.h"
#include "sdk/model/Profile.h"
#include "sdk/model/Ranges.h"
#include "sdk/model/Udf.h"

namespace ChipModel {

// Everything the SDK holds for a unit. A value type.
struct UnitState {
   explicit UnitState( const Profile & profile )
       : field( profile ), ranges( profile ), policers( profile ), udf( profile ) {}
   FieldProcessor field;
   RangeTable ranges;
   PolicerTable policers;
   UdfTable udf;
};

class Unit {
 public:
   Unit( int number, const Profile & profile, bool staged );
   Unit( const Unit & ) = delete;
   Unit & operator=( const Unit & ) = delete;

   int number() const { return number_; }
   const Profile & profile() const { return *profile_; }

   // The SDK's state of the unit.
   UnitState & state() { return state_; }
   const UnitState & state() const { return state_; }
   // What packets are matched against: the SDK's state once committed,
   // before that what a hitless restart kept; null when nothing is active.
   UnitState * active();

   bool staged() const { return staged_; }
   U32 commitFlags() const { return commitFlags_; }
   U32 commits() const { return commits_; }
   // Ends staging; nothing when not staged.
   void commit( U32 flags );
   // The agent starts again: the SDK state is emptied and staging begins.
   // A hitless restart keeps the hardware image active until the commit.
   void restart( bool hitless );

   bool fieldInitialised() const { return fieldInitialised_; }
   void fieldInitialisedIs( bool value ) { fieldInitialised_ = value; }
   FieldControl & fieldControl() { return control_; }
   // Control lock depth: bcm_field_control_lock nesting on this unit.
   int & controlLocks() { return controlLocks_; }

 private:
   int number_;
   const Profile * profile_;
   UnitState state_;
   std::optional< UnitState > retained_;
   bool staged_;
   U32 commitFlags_ = 0;
   U32 commits_ = 0;
   bool fieldInitialised_ = true;
   FieldControl control_;
   int controlLocks_ = 0;
};

} // namespace ChipModel
