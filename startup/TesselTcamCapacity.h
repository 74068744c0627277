// TesselTcamCapacitySm: publishes the field-processor TCAM of every unit in
// the platform's hardware-capacity tables, per stage (IFP, VFP, EFP) and
// slice, as the chip's SDK reports it.
//
//    Kiln::Ptr< Hardware::Capacity::Tessel::TesselTcamCapacitySm > sm =
//       new Hardware::Capacity::Tessel::TesselTcamCapacitySm( "tcamCapacitySm" );
//    sm->scsdIs( scsd );                       // the units come from here
//    sm->capacityHelperSmIs( capacity );       // the platform's capacity service
//    sm->initCapacityTableFeatureMaps();
//    sm->updateCapacityTable();                // after the flash download, and
//                                              // whenever fresh figures are wanted
//
// Rows, under the feature group "TesselTcamCapacity", feature = stage name,
// per unit: "Slice-<n>" for slice n of the stage (used = entries - free,
// free, reserved 0, total = entries), and the stage's own row (empty row
// name) with the sums over its slices. The figures are the SDK's as they
// are: chips that count IFP rows in half rows report twice the entries.
//
// A unit whose query fails keeps the rows of its last good query; a unit
// that leaves the start-up state loses its rows.
//
// Locking: the activity thread, holding the activity lock; each query is
// made with the lock released, so the units are walked by key and the
// attributes read again after every call.
#pragma once

#include "common/TesselExport.h"
#include "platform/agent/CapacityHelperSm.h"
#include "platform/agent/TesselCommonSmData.h"
#include "platform/kiln/Attribute.h"
#include "platform/kiln/Entity.h"
#include "platform/kiln/Ptr.h"
#include "platform/kiln/String.h"
#include "platform/kiln/Types.h"
#include "sdk/shim/Oberon.h"
#include "startup/TesselTcamCapacityNames.h"

#include <memory>

namespace Hardware::Capacity::Tessel {

class TESSEL_EXPORT TesselTcamCapacitySm : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< TesselTcamCapacitySm > {
    public:
      virtual void onScsd() {}
      virtual void onCapacityHelperSm() {}
   };

   explicit TesselTcamCapacitySm( const Kiln::Name & name );
   ~TesselTcamCapacitySm() override;

   // The shared start-up state, whose units are published. A unit removed
   // from it has its rows removed.
   const Kiln::Ptr< Agent::TesselCommonSmData > & scsd() const { return scsd_.get(); }
   void scsdIs( const Kiln::Ptr< Agent::TesselCommonSmData > & scsd );
   void scsdDel() { scsdIs( nullptr ); }

   // The capacity service the rows go to.
   const Kiln::Ptr< CapacityHelperSm > &
   capacityHelperSm() const {
      return capacityHelperSm_.get();
   }
   void
   capacityHelperSmIs( const Kiln::Ptr< CapacityHelperSm > & helper ) {
      attributeIs( capacityHelperSm_, helper, &NotifieeConst::onCapacityHelperSm );
   }

   // Registers "IFP", "VFP" and "EFP" under "TesselTcamCapacity". Needs the
   // capacity service ("TCAM capacity without a capacity service").
   void initCapacityTableFeatureMaps();

   // Queries every unit of the start-up state and publishes its rows; a
   // unit whose query fails is traced and skipped. Needs the capacity
   // service and initCapacityTableFeatureMaps() first.
   void updateCapacityTable();

   // Publishes the rows of one unit from a filled query buffer (what
   // updateCapacityTable does after a good query).
   void publishCapacity( U32 unit, const oberon_tcam_capacity_info & info );

 private:
   class ScsdReactor;

   void publishStage( U32 unit, int stageId, const oberon_tcam_capacity_info & info );

   Kiln::Attribute< Kiln::Ptr< Agent::TesselCommonSmData > > scsd_;
   Kiln::Attribute< Kiln::Ptr< CapacityHelperSm > > capacityHelperSm_;
   std::unique_ptr< ScsdReactor > scsdReactor_;
};

} // namespace Hardware::Capacity::Tessel
