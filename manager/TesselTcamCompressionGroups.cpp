// The class-id compression groups: per unit, small groups that map one
// exact value (an address, L4 port, protocol or ethertype) to a class id.
#include "manager/TesselTcamGroupManager.h"

#include <vector>

#include "common/TesselSdkCall.h"
#include "manager/SdkShimAccess.h"
#include "platform/fastlog/Trace.h"
#include "sdk/shim/SdkStructs.h"

TRACE_CHANNEL( "TesselTcam" );

namespace Tessel {

namespace {

// The selector and the compressed field(s) of a compression group; empty
// for any other group id.
std::vector< int >
compressionQualifiers( TcamGroupId group ) {
   const Shim::Sdk & shim = sdkShim();
   int select = shim.AR_bcmFieldQualifyCompressionSelect();
   int addrSelect = shim.AR_bcmFieldQualifyCompressionAddrSelect();
   switch ( group ) {
    case COMPRESS_GROUP_L4_SRC_PORT_:
      return { select, shim.AR_bcmFieldQualifyL4SrcPort() };
    case COMPRESS_GROUP_L4_DST_PORT_:
      return { select, shim.AR_bcmFieldQualifyL4DstPort() };
    case COMPRESS_GROUP_IP_PROTOCOL_:
      return { select, shim.AR_bcmFieldQualifyIpProtocol() };
    case COMPRESS_GROUP_ETHER_TYPE_:
      return { select, shim.AR_bcmFieldQualifyEtherType() };
    case COMPRESS_GROUP_SRC_IP_:
      return { addrSelect, shim.AR_bcmFieldQualifySrcIp(), shim.AR_bcmFieldQualifySrcIp6() };
    case COMPRESS_GROUP_DST_IP_:
      return { addrSelect, shim.AR_bcmFieldQualifyDstIp(), shim.AR_bcmFieldQualifyDstIp6() };
    default:
      return {};
   }
}

} // namespace

void
TesselTcamGroupManager::initializeCompressionGroups( U32 unit, TcamGroupId compressGroup ) {
   TRACE8( "initializeCompressionGroups unit " << unit << " group " << compressGroup );
   std::vector< int > quals = compressionQualifiers( compressGroup );
   if ( quals.empty() || groupExists( unit, compressGroup ) ) {
      return;
   }
   Shim::GroupConfig groupConfig;
   for ( int qual : quals ) {
      sdkShim().ob_field_qset_add( &groupConfig.qset, qual );
   }
   groupConfig.flags_or( BCM_FIELD_GROUP_CREATE_WITH_ID );
   groupConfig.group = static_cast< bcm_field_group_t >( compressGroup );
   BCM_FIELD_ASET_ADD( groupConfig.aset, sdkShim().AR_bcmFieldActionNewClassId() );
   if ( SDK_CALL_UNIT( unit, bcm_field_group_config_create( unit, &groupConfig ) ) < 0 ) {
      return;
   }
   tcamStageIs( compressGroup, getGroupStage( compressGroup ) );
   groupCountsIs( GroupIdToPipeGroupId{ compressGroup, compressGroup } )->unitRefCountIs( unit, 1 );
}

} // namespace Tessel
