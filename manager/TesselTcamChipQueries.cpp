// Per-unit chip queries and group priorities.
#include "manager/TesselTcamGroupManager.h"

#include "catalogue/TesselTcamGroups.h"
#include "common/TesselSdkCall.h"
#include "manager/SdkShimAccess.h"

namespace Tessel {

namespace {

constexpr U32 pipeGroupIdGroupMask = 0x00FFFFFF;
constexpr U32 pipeGroupIdPipeShift = 24;
constexpr U32 pipeGroupIdFlagShift = 27;

} // namespace

U32
TesselTcamGroupManager::getTcamGroupPriority( U32 groupId, int mirAclType ) const {
   bool paclGroup = groupId == IFP_GROUP_IP_ACL_ || groupId == IFP_GROUP_IPV6_ACL_;
   if ( paclGroup && paclSliceSharingSupported() ) {
      return getGroupPriority( IFP_GROUP_IP_ACL_ );
   }
   bool qosGroup = groupId == IFP_GROUP_POLICY_QOS_IP_ || groupId == IFP_GROUP_POLICY_QOS_IPV6_;
   if ( qosGroup && qosAclSliceSharingSupported() ) {
      return getGroupPriority( IFP_GROUP_POLICY_QOS_IP_ );
   }
   if ( isMirrorAclGroup( groupId ) && mirAclType < 2 && mirrorAclSliceSharingSupported() ) {
      KILN_ASSERT( groupMirroringAclType( groupId ) == mirAclType );
      return sharedMirrorAclPriority( groupId, mirAclType );
   }
   return getGroupPriority( groupId );
}

// Mirroring ACL groups of one type share a slice and so a priority: the
// group's own once it has one, else that of the first other group in use
// with the same type.
U32
TesselTcamGroupManager::sharedMirrorAclPriority( U32 groupId, int mirAclType ) const {
   U8 group = static_cast< U8 >( groupId );
   if ( mirrorAclGroupToPriorityHas( groupId ) ) {
      return mirrorAclGroupToPriority( groupId );
   }
   for ( U8 other = IFP_GROUP_MIRROR_ACL_1_; other <= IFP_GROUP_MIRROR_ACL_4_; ++other ) {
      if ( other == group || !groupMirroringAclValid( other ) ||
           groupMirroringAclType( other ) != mirAclType ) {
         continue;
      }
      return mirrorAclGroupToPriorityHas( other ) ? mirrorAclGroupToPriority( other )
                                                  : getGroupPriority( other );
   }
   return getGroupPriority( groupId );
}

U32
TesselTcamGroupManager::getPipeGroupId( U32 unit, U32 pipe, U32 flag, U32 groupId ) const {
   U32 id = groupId & pipeGroupIdGroupMask;
   if ( sdkShim().fieldStagePerPipe( unit ) ) {
      id |= ( pipe & 7 ) << pipeGroupIdPipeShift;
   }
   return id | ( ( flag & 1 ) << pipeGroupIdFlagShift );
}

U32
TesselTcamGroupManager::getNumPipe( U32 unit ) const {
   if ( ovidWar( unit ) ) {
      return 2;
   }
   if ( !stageIngress( unit ) ) {
      return 1;
   }
   const Agent::ChipInfo * info = chipInfo( unit );
   return info ? info->numPipes() : numPipe();
}

U32
TesselTcamGroupManager::getNumPipe( U32 unit, U32 groupId ) const {
   return getGroupStage( groupId ) == stageTypeIngress_ ? getNumPipe( unit ) : 1;
}

U32
TesselTcamGroupManager::getNumCopiesPerPipe( U32 unit, U32 groupId ) const {
   bool twoCopies = stageIngress( unit ) && sdkShim().anyCopiesCondition( unit ) &&
                    groupNeedsIpbmWAR( unit, groupId );
   return twoCopies ? 2 : 1;
}

bool
TesselTcamGroupManager::groupNeedsIpbmWAR( U32 unit, U32 groupId ) const {
   GroupQsetModKey key{ groupId, chipTypeFromUnit( unit ) };
   if ( !groupIdToIncludeIndexHas( key ) ) {
      return false;
   }
   S32 flag = getGroupIncludes( groupIdToIncludeIndex( key ) )->ipbmWar;
   if ( groupId == IFP_GROUP_POLICY_QOS_IPV6_ && flag != 1 ) {
      flag = qosIpv6KeyWidthMode() == 1;
   }
   return flag != 0;
}

bool
TesselTcamGroupManager::ovidWarNeeded( U32 unit ) const {
   const Agent::ChipInfo * info = chipInfo( unit );
   return info && info->untaggedOuterVlanZero() && !info->perPipeIngress();
}

const Shim::PortConfig *
TesselTcamGroupManager::unitPortConfig( U32 unit ) {
   auto found = portConfigs_.find( unit );
   if ( found != portConfigs_.end() ) {
      return &found->second;
   }
   Shim::PortConfig portConfig;
   if ( SDK_CALL_UNIT( unit, bcm_port_config_get( unit, &portConfig ) ) < 0 ) {
      return nullptr;
   }
   return &portConfigs_.emplace( unit, portConfig ).first->second;
}

int
TesselTcamGroupManager::getLoopbackPortId( U32 unit, U32 pipe ) {
   const Shim::PortConfig * portConfig = unitPortConfig( unit );
   return portConfig ? portConfig->loopback_port( pipe ) : -1;
}

U32
TesselTcamGroupManager::chipTypeFromUnit( U32 unit ) const {
   const Agent::ChipInfo * info = chipInfo( unit );
   return info ? info->chipType() : 0;
}

} // namespace Tessel
