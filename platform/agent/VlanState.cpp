#include "platform/agent/VlanState.h"

#include "platform/kiln/BoundedIndex.h"

#include <string>

namespace Agent {

namespace {

void
checkVlan( U16 vlan ) {
   if ( vlan < VlanState::minVlanId || vlan > VlanState::maxVlanId ) {
      throw Kiln::RangeException( "VlanState: VLAN id " + std::to_string( vlan ) +
                                  " is outside 1 to 4094" );
   }
}

} // namespace

void
VlanState::untaggedBitmap( U16 vlan, U32 ( &words )[ TesselTypes::portBitmapWords ] ) const {
   TesselTypes::portListToBitmap( untaggedPorts( vlan ), words );
}

void
VlanState::untaggedPortsIs( U16 vlan, const TesselTypes::TesselPortList & ports ) {
   checkVlan( vlan );
   if ( ports.empty() ) {
      untaggedPortsDel( vlan );
   } else {
      collectionIs( untaggedPorts_, vlan, ports, &NotifieeConst::onUntaggedPorts );
   }
}

bool
VlanState::untaggedPortIs( U16 vlan, U32 port ) {
   checkVlan( vlan );
   TesselTypes::TesselPortList ports = untaggedPorts( vlan );
   if ( !ports.portIs( port ) ) {
      return false;
   }
   untaggedPortsIs( vlan, ports );
   return true;
}

bool
VlanState::untaggedPortDel( U16 vlan, U32 port ) {
   checkVlan( vlan );
   TesselTypes::TesselPortList ports = untaggedPorts( vlan );
   if ( !ports.portDel( port ) ) {
      return false;
   }
   untaggedPortsIs( vlan, ports );
   return true;
}

} // namespace Agent
