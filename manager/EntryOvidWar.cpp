// The outer-VLAN-ID workaround on the entry side: the pipe-1 copy of an
// entry that matches one outer VLAN becomes its untagged twin (outer VLAN 0
// on the ports that carry the VLAN untagged), and the unit's
// TesselOvidWarSm keeps it current.
#include "common/TesselSdkCall.h"
#include "manager/TesselOvidWarSm.h"
#include "manager/TesselTcamEntryManager.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/fastlog/Trace.h"
#include "sdk/api/field_qualify.h"
#include "sdk/shim/Shim.h"

TRACE_CHANNEL( "TesselTcamEntryManager" );

namespace Tessel {

namespace {

constexpr bcm_vlan_t vlanIdMask = 0xFFF;
constexpr bcm_vlan_t reservedVlan = 4095;

} // namespace

#define OVID_ERROR " for entryId: " << entry << " processOvidWarEntry"

int
TesselTcamEntryManager::processOvidWarEntry( U32 unit, U32 entry, U32 tcamEntryId ) {
   if ( tcamEntryId == entry ) {
      return 0;
   }
   int rc = SDK_CALL_UNIT_MORE( unit, SdkShim->ob_field_entry_copy_id( unit, entry, tcamEntryId ),
                                OVID_ERROR );
   if ( rc < 0 ) {
      return rc;
   }
   bcm_vlan_t ovid = 0;
   bcm_vlan_t mask = 0;
   rc = SDK_CALL( bcm_field_qualify_OuterVlanId_get( unit, entry, &ovid, &mask ) );
   bool exactVlan = rc >= 0 && ovid < reservedVlan && ( mask & vlanIdMask ) == vlanIdMask;
   if ( !exactVlan ) {
      if ( rc < 0 && rc != BCM_E_NOT_FOUND ) {
         TRACE0( "Unit: " << unit << " bcm_field_qualify_OuterVlanId_get( unit, entry, &ovid, "
                          << "&mask ) API ERROR:" << " (rc:" << rc << ")" << OVID_ERROR );
      }
      tcamMgrUpdateOvidEntryMap( unit, 0, tcamEntryId, true ); // a plain copy
      return rc == BCM_E_NOT_FOUND ? 0 : rc;
   }
   bcm_pbmp_t inportsOrig = allPortsBitmap(); // a base without in-ports takes every port
   bcm_pbmp_t portMask = allPortsBitmap();
   rc = SDK_CALL( bcm_field_qualify_InPorts_get( unit, entry, &inportsOrig, &portMask ) );
   if ( rc < 0 && rc != BCM_E_NOT_FOUND ) {
      return rc;
   }
   Kiln::Ptr< TesselOvidWarSm > sm = groupManager()->ovidWarSm( unit );
   bcm_pbmp_t untagged = sm ? sm->untaggedPorts( ovid ) : bcm_pbmp_t{};
   bcm_pbmp_t inports = ovidTwinPorts( inportsOrig, portMask, untagged );
   bcm_pbmp_t all_ports = allPortsBitmap();
   rc = SDK_CALL_UNIT_MORE( unit, bcm_field_qualify_OuterVlanId( unit, tcamEntryId, 0, -1 ),
                            OVID_ERROR );
   if ( rc >= 0 ) {
      rc = SDK_CALL_UNIT_MORE(
         unit, bcm_field_qualify_InPorts( unit, tcamEntryId, inports, all_ports ), OVID_ERROR );
   }
   if ( rc < 0 ) {
      return rc;
   }
   TRACE7( "Unit: " << unit << " entry 0x" << std::hex << tcamEntryId << std::dec
                    << " twins outer vlan " << ovid );
   tcamMgrUpdateOvidEntryMap( unit, ovid, tcamEntryId, false );
   return 0;
}

void
TesselTcamEntryManager::tcamMgrUpdateOvidEntryMap( U32 unit, U32 ovid, U32 tcamEntryId,
                                                   bool remove ) {
   Kiln::Ptr< TesselOvidWarSm > sm = groupManager() ? groupManager()->ovidWarSm( unit ) : nullptr;
   if ( !sm ) {
      return;
   }
   if ( remove ) {
      sm->twinDel( tcamEntryId );
   } else {
      sm->twinIs( tcamEntryId, ovid, tcamEntryId & 0x00FFFFFF );
   }
}

} // namespace Tessel
