// The entry managers' way to user-defined fields: the group manager's shared
// records, used with the manager's own group.
#include "manager/TesselTcamEntryManager.h"

#include <algorithm>

#include "common/TesselSdkCall.h"
#include "manager/GroupQset.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/fastlog/Trace.h"

TRACE_CHANNEL( "TesselTcam" );

namespace Tessel {

namespace {

TesselTcamGroupManager &
managerOf( const TesselTcamEntryManager & entryManager ) {
   KILN_ASSERT_MSG( entryManager.groupManager(), "entry manager without its group manager" );
   return *entryManager.groupManager();
}

TesselTcamGroupManager::UdfField
fieldOf( U32 unit, int aclType, U32 ethType, UdfOffsetBase base, U8 offset, U8 length ) {
   return TesselTcamGroupManager::UdfField{ unit, aclType, ethType, base, offset, length, 0 };
}

bool
qsetHoldsUdf( const bcm_field_qset_t & qset, U32 qual ) {
   int id = static_cast< int >( qual );
   return id < BCM_FIELD_USER_NUM_UDFS && ( BCM_FIELD_BITSET_TEST( qset.udf_map, id ) ||
                                            BCM_FIELD_BITSET_TEST( qset.udf_id_map, id ) );
}

} // namespace

U32
TesselTcamEntryManager::groupUdfWidthLimit( U32 unit ) const {
   U32 limit = maxUdfLength();
   const Agent::ChipInfo * info = groupManager() ? groupManager()->chipInfo( unit ) : nullptr;
   if ( info && info->groupUdfWidthLimit() ) {
      limit = std::min( limit, info->groupUdfWidthLimit() );
   }
   return limit;
}

QualIdList
TesselTcamEntryManager::getAclUdf( U32 unit, int aclType, U32 ethType, UdfOffsetBase base,
                                   U8 offset, U8 length ) {
   TRACE8( __PRETTY_FUNCTION__ );
   TesselTcamGroupManager & manager = managerOf( *this );
   return manager.udfAcquire( TesselTcamGroupManager::udfTableOf( aclType ), group(),
                              groupUdfWidthLimit( unit ),
                              fieldOf( unit, aclType, ethType, base, offset, length ) );
}

QualIdList
TesselTcamEntryManager::findAclUdf( U32 unit, int aclType, U32 ethType, UdfOffsetBase base,
                                    U8 offset, U8 length ) {
   TRACE8( __PRETTY_FUNCTION__ );
   TesselTcamGroupManager & manager = managerOf( *this );
   return manager
      .udfFind( TesselTcamGroupManager::udfTableOf( aclType ),
                fieldOf( unit, aclType, ethType, base, offset, length ) )
      .key()
      .quals;
}

void
TesselTcamEntryManager::releaseAclUdf( U32 unit, int aclType, U32 ethType, UdfOffsetBase base,
                                       U8 offset, U8 length ) {
   TRACE8( __PRETTY_FUNCTION__ );
   TesselTcamGroupManager & manager = managerOf( *this );
   manager.udfRelease( TesselTcamGroupManager::udfTableOf( aclType ), group(),
                       fieldOf( unit, aclType, ethType, base, offset, length ) );
}

bool
TesselTcamEntryManager::verifyMirroringAclUdf( U32 unit, int aclType, U32 ethType,
                                               UdfOffsetBase base, U8 offset, U8 length ) {
   TRACE8( __PRETTY_FUNCTION__ );
   return !findAclUdf( unit, aclType, ethType, base, offset, length ).empty();
}

bool
TesselTcamEntryManager::addUdfQualifierToGroupQset( U32 unit, const QualIdList & quals ) {
   TRACE8( __PRETTY_FUNCTION__ );
   TesselTcamGroupManager & manager = managerOf( *this );
   bcm_field_qset_t qset = groupQset( manager, unit, group() );
   bool accepted = true;
   for ( U32 qual : quals ) {
      TRACE9( "adding UDF qual=" << qual );
      accepted = addUdfQualifierToQset( unit, &qset, qual, manager.chipInfo( unit ) ) >= 0 &&
                 accepted;
   }
   std::vector< GroupIdToPipeGroupId > pipeGroups = manager.pipeGroupsOf( unit, group() );
   if ( !accepted || pipeGroups.empty() ) {
      return accepted;
   }
   bcm_field_qset_t live;
   BCM_FIELD_QSET_INIT( live );
   int groupId = static_cast< int >( pipeGroups.front().pipeGroupId );
   if ( SDK_CALL_UNIT( unit, bcm_field_group_qset_get( unit, groupId, &live ) ) < 0 ) {
      return false;
   }
   return std::all_of( quals.begin(), quals.end(),
                       [ &live ]( U32 qual ) { return qsetHoldsUdf( live, qual ); } );
}

} // namespace Tessel
