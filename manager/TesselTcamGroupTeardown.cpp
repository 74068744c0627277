// Group teardown, and the count of entries a group can still take.
#include "manager/TesselTcamGroupManager.h"

#include "catalogue/TesselTcamGroups.h"
#include "common/TesselSdkCall.h"
#include "manager/SdkShimAccess.h"
#include "platform/fastlog/FastLog.h"
#include "platform/fastlog/Trace.h"
#include "sdk/api/field_data.h"
#include "sdk/shim/SdkStructs.h"

TRACE_CHANNEL( "TesselTcam" );

namespace Tessel {

namespace {

// A pipe group of a unit, named the way the compress loop reads.
struct UnitPipeGroup {
   U32 pipeGroupId;
   U32 key() const { return pipeGroupId; }
};

} // namespace

void
TesselTcamGroupManager::uninitializeTcamGroup( U32 unit, U32 groupId, bool destroyUdf ) {
   TRACE8( "uninitializeTcamGroup unit " << unit << " group " << groupId );
   KILN_ASSERT_MSG( groupExists( unit, groupId ), "refCount must be greater than 0!" );
   U32 count = 0;
   for ( const GroupIdToPipeGroupId & key : pipeGroupsOf( unit, groupId ) ) {
      count = groupCounts( key )->unitRefCountInc( unit, -1 );
   }
   TRACE5( "Unit: " << unit << " Destroying group " << groupId << " ref count is now "
                    << count );
   if ( count > 0 ) {
      return;
   }
   compressEntriesOfGroup( unit, groupId );
   destroyGroupOnUnit( unit, groupId, destroyUdf );
}

void
TesselTcamGroupManager::uninitializeGroup( U32 unit, U32 groupId ) {
   uninitializeTcamGroup( unit, groupId, false );
}

// Entries of the group's managers on the unit are packed before the group
// goes, bounded managers first.
void
TesselTcamGroupManager::compressEntriesOfGroup( U32 unit, U32 groupId ) {
   for ( const auto & [ assignment, manager ] : entryManager_ ) {
      if ( manager->group() == groupId ) {
         manager->compressEntries( unit );
      }
   }
   for ( const auto & [ assignment, manager ] : unboundedEntryManager_ ) {
      if ( manager->group() == groupId ) {
         manager->compressEntries( unit );
      }
   }
}

// Destroys what the group holds on the unit, whatever its count: its SDK
// groups, preselectors, hint and, with destroyUdf, its data qualifiers.
// SDK errors are traced and do not stop the teardown.
void
TesselTcamGroupManager::destroyGroupOnUnit( U32 unit, U32 groupId, bool destroyUdf ) {
   for ( const GroupIdToPipeGroupId & key : pipeGroupsOf( unit, groupId ) ) {
      destroyPipeGroup( unit, key.pipeGroupId );
      Kiln::Ptr< GroupCounts > counts = groupCounts( key );
      counts->unitRefCountDel( unit );
      counts->unitAllocatedDel( unit );
      if ( counts->unitRefCountCollection().empty() ) {
         groupCountsDel( key );
      } else {
         ++groupCountsGeneration_; // kept counts lost this unit's record
      }
   }
   doDestroyGroupPreselId( unit, groupId );
   destroyGroupHint( unit, groupId );
   if ( destroyUdf ) {
      destroyGroupUdfQualifiers( unit, groupId );
   }
}

void
TesselTcamGroupManager::destroyPipeGroup( U32 unit, U32 groupId ) {
   SDK_CALL_NO_RC_CHECK( bcm_field_group_compress( unit, groupId ) );
   SDK_CALL_UNIT( unit, bcm_field_group_destroy( unit, groupId ) );
   FASTLOG( "fp group destroy ", unit, groupId );
}

void
TesselTcamGroupManager::destroyGroupHint( U32 unit, U32 groupId ) {
   GroupUnitKey groupUnitKey{ unit, groupId };
   if ( !groupHintIdInfoHas( groupUnitKey ) ) {
      return;
   }
   SDK_CALL_UNIT( unit, bcm_field_hints_destroy( unit, groupHintIdInfo( groupUnitKey ) ) );
   groupHintIdInfoDel( groupUnitKey );
}

// The group's data qualifiers on the unit go with it (chips whose UDFs are
// field-processor data qualifiers).
void
TesselTcamGroupManager::destroyGroupUdfQualifiers( U32 unit, U32 groupId ) {
   Kiln::Ptr< GroupUdfQual > udf = groupIdToAclUdf( static_cast< U8 >( groupId ) );
   const Agent::ChipInfo * info = chipInfo( unit );
   if ( !udf || ( info && ( info->flexParser() || info->udfModule() ) ) ) {
      return;
   }
   for ( U32 qual : udf->qualsOfUnit( unit ) ) {
      int qualId = static_cast< int >( qual );
      Shim::DataPacketFormat udfQualPktType;
      udfQualPktType.relative_offset = 0;
      udfQualPktType.outer_ip = BCM_FIELD_DATA_FORMAT_IP4;
      udfQualPktType.l2 = BCM_FIELD_DATA_FORMAT_L2_ETH_II;
      SDK_CALL_UNIT( unit, bcm_field_data_qualifier_packet_format_delete( unit, qualId,
                                                                          &udfQualPktType ) );
      SDK_CALL_UNIT( unit, bcm_field_data_qualifier_destroy( unit, qualId ) );
   }
   for ( const auto & [ key, uses ] : udf->udfQualIdCollection() ) {
      if ( key.unit == unit ) {
         udf->udfQualIdDel( key );
      }
   }
}

U32
TesselTcamGroupManager::entriesAvailable( U32 unit, U32 group ) {
   TRACE8( "entriesAvailable unit " << unit << " group " << group );
   if ( !initializeGroup( unit, group ) ) {
      return 0;
   }
   Shim::GroupStatus status;
   int rc = SDK_CALL_UNIT( unit, bcm_field_group_status_get( unit, group, &status ) );
   if ( rc >= 0 && status.entries_free == 0 ) {
      compressGroupsOfUnit( unit );
      SDK_CALL_UNIT( unit, bcm_field_group_status_get( unit, group, &status ) );
   }
   uninitializeGroup( unit, group );
   U32 entriesFree = status.entries_free > 0 ? static_cast< U32 >( status.entries_free ) : 0;
   if ( ovidWar( unit ) && getGroupStage( group ) == stageTypeIngress_ ) {
      entriesFree /= 2; // every ingress entry has its twin in the group
   }
   if ( !sdkShim().anyCopiesCondition( unit ) ) {
      return entriesFree;
   }
   return entriesFree / getNumCopiesPerPipe( unit, group );
}

// Packs every group of the unit, giving empty slices back to the stage.
void
TesselTcamGroupManager::compressGroupsOfUnit( U32 unit ) {
   std::vector< UnitPipeGroup > groups;
   for ( const auto & [ key, counts ] : groupCounts_ ) {
      if ( counts->unitRefCountHas( unit ) ) {
         groups.push_back( UnitPipeGroup{ key.pipeGroupId } );
      }
   }
   for ( const UnitPipeGroup & groupIter : groups ) {
      SDK_CALL_NO_RC_CHECK( bcm_field_group_compress( unit, groupIter.key() ) );
      FASTLOG( "fp group compress ", "(group=", groupIter.key(), ")" );
   }
   sliceFreedDelAll();
}

} // namespace Tessel
