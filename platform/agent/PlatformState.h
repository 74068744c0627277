// Platform state that the TCAM manager reads while it initialises: how the
// agent was started and which optional features the running configuration
// (the epoch) has turned on. The agent sets the flags before it hands the
// object to the manager and keeps them current; the manager observes them.
//
// All flags start false; setting an equal value notifies no one.
#pragma once

#include "platform/kiln/Attribute.h"
#include "platform/kiln/Entity.h"

namespace Agent {

class PlatformState : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< PlatformState > {
    public:
      virtual void onEarlyReservation() {}
      virtual void onPdpModeEnabled() {}
      virtual void onP4RuntimeEnabled() {}
      virtual void onVfiForwarding() {}
      virtual void onHitlessInit() {}
      virtual void onSimulation() {}
      virtual void onPreInit() {}
   };

   explicit PlatformState( const Kiln::Name & name ) : Kiln::Entity( name ) {}

   // The TCAM profile in force sets aside the at-beginning entry ranges of
   // the egress VLAN-priority group (69) and the VFI-exception group (79)
   // when the agent starts; when false those ranges are taken on first use.
   bool earlyReservation() const { return earlyReservation_.get(); }
   void
   earlyReservationIs( bool v ) {
      attributeIs( earlyReservation_, v, &NotifieeConst::onEarlyReservation );
   }

   // The epoch status reports PDP mode: the PDP classification groups (27
   // and 80) are in use and reserve their ranges at start.
   bool pdpModeEnabled() const { return pdpModeEnabled_.get(); }
   void
   pdpModeEnabledIs( bool v ) {
      attributeIs( pdpModeEnabled_, v, &NotifieeConst::onPdpModeEnabled );
   }

   // P4Runtime is configured: its punt group (49) reserves its range at
   // start. The TCAM manager copies it into its own `p4RuntimeEnabled`.
   bool p4RuntimeEnabled() const { return p4RuntimeEnabled_.get(); }
   void
   p4RuntimeEnabledIs( bool v ) {
      attributeIs( p4RuntimeEnabled_, v, &NotifieeConst::onP4RuntimeEnabled );
   }

   // Bridging of overlay traffic goes through virtual forwarding instances
   // (VFIs) rather than VLANs.
   bool vfiForwarding() const { return vfiForwarding_.get(); }
   void
   vfiForwardingIs( bool v ) {
      attributeIs( vfiForwarding_, v, &NotifieeConst::onVfiForwarding );
   }

   // The agent restarted without disturbing forwarding: hardware state is
   // reconciled, not rebuilt.
   bool hitlessInit() const { return hitlessInit_.get(); }
   void
   hitlessInitIs( bool v ) {
      attributeIs( hitlessInit_, v, &NotifieeConst::onHitlessInit );
   }

   // Running without switch hardware (a chip model stands in for the SDK).
   bool simulation() const { return simulation_.get(); }
   void
   simulationIs( bool v ) {
      attributeIs( simulation_, v, &NotifieeConst::onSimulation );
   }

   // The agent is in its pre-initialisation phase: objects exist, chips are
   // not yet initialised.
   bool preInit() const { return preInit_.get(); }
   void
   preInitIs( bool v ) {
      attributeIs( preInit_, v, &NotifieeConst::onPreInit );
   }

 private:
   Kiln::Attribute< bool > earlyReservation_;
   Kiln::Attribute< bool > pdpModeEnabled_;
   Kiln::Attribute< bool > p4RuntimeEnabled_;
   Kiln::Attribute< bool > vfiForwarding_;
   Kiln::Attribute< bool > hitlessInit_;
   Kiln::Attribute< bool > simulation_;
   Kiln::Attribute< bool > preInit_;
};

} // namespace Agent
