// VLAN state the TCAM manager watches: per VLAN, the ports on which the
// VLAN is carried untagged. Entries that match an outer VLAN id need, on
// some chips, twins that match untagged traffic of exactly those ports, so
// the manager observes onUntaggedPorts( vlan ) and re-qualifies the twins.
//
// The agent's VLAN configuration writes it. VLAN ids are 1 to 4094;
// setters refuse others with Kiln::RangeException ("VlanState: VLAN id 4095
// is outside 1 to 4094"). A VLAN without untagged ports has no entry:
// storing an empty list removes it. Observers are told once per VLAN whose
// ports really changed.
#pragma once

#include "platform/agent/PortList.h"
#include "platform/kiln/Collection.h"
#include "platform/kiln/Entity.h"
#include "platform/kiln/Types.h"

namespace Agent {

class VlanState : public Kiln::Entity {
 public:
   static constexpr U16 minVlanId = 1;
   static constexpr U16 maxVlanId = 4094;

   class NotifieeConst : public Kiln::Notifiee< VlanState > {
    public:
      virtual void onUntaggedPorts( U16 /* vlan */ ) {}
   };

   explicit VlanState( const Kiln::Name & name ) : Kiln::Entity( name ) {}

   // The VLAN's untagged ports; empty for any VLAN without them (including
   // ids that are not VLANs, such as 0).
   TesselTypes::TesselPortList untaggedPorts( U16 vlan ) const { return untaggedPorts_.get( vlan ); }
   bool untaggedPortsHas( U16 vlan ) const { return untaggedPorts_.has( vlan ); }
   // The same as the SDK's 7-word port bitmap.
   void untaggedBitmap( U16 vlan, U32 ( &words )[ TesselTypes::portBitmapWords ] ) const;

   void untaggedPortsIs( U16 vlan, const TesselTypes::TesselPortList & ports );
   // One port more or less; each returns whether anything changed.
   bool untaggedPortIs( U16 vlan, U32 port );
   bool untaggedPortDel( U16 vlan, U32 port );
   void
   untaggedPortsDel( U16 vlan ) {
      collectionDel( untaggedPorts_, vlan, &NotifieeConst::onUntaggedPorts );
   }
   void
   untaggedPortsDelAll() {
      collectionDelAll( untaggedPorts_, &NotifieeConst::onUntaggedPorts );
   }
   const Kiln::OrderedCollection< U16, TesselTypes::TesselPortList > &
   untaggedPortsCollection() const {
      return untaggedPorts_;
   }

 private:
   Kiln::OrderedCollection< U16, TesselTypes::TesselPortList > untaggedPorts_;
};

} // namespace Agent
