// Group initialisation: a catalogue group becomes SDK groups on a unit, one
// per pipe and copy, with their preselectors and hint. Each hardware step
// registers its undo as soon as it has succeeded, so a failure half-way
// takes back exactly what was made, in reverse.
#include "manager/TesselTcamGroupManager.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "catalogue/TesselTcamGroups.h"
#include "common/TesselSdkCall.h"
#include "manager/GroupHints.h"
#include "manager/GroupQset.h"
#include "manager/SdkShimAccess.h"
#include "manager/UndoList.h"
#include "platform/fastlog/Trace.h"
#include "sdk/api/field_qualify.h"
#include "sdk/shim/SdkStructs.h"

TRACE_CHANNEL( "TesselTcam" );

namespace Tessel {

namespace {

// Creates one catalogue group on a unit (steps 4 to 8 of initializeGroup).
class GroupCreation {
 public:
   GroupCreation( TesselTcamGroupManager & manager, U32 unit, U32 groupId,
                  const bcm_field_qset_t & qset, const Shim::PortConfig & portConfig )
         : m_( manager ), unit_( unit ), groupId_( groupId ), portConfig_( portConfig ),
           perPipe_( manager.stageIngress( unit ) &&
                     getGroupStage( groupId ) == stageTypeIngress_ ),
           pipes_( manager.getNumPipe( unit, groupId ) ),
           copies_( manager.getNumCopiesPerPipe( unit, groupId ) ) {
      groupConfig_.qset = qset;
   }

   bool run();

 private:
   void buildConfig();
   void setActionSet();
   bool createPresels( UndoList & undo );
   bool createPresel( U32 pipe );
   bool createHint( UndoList & undo );
   bool createPipeGroups( UndoList & undo );
   bool createPipeGroup( U32 pipe, U32 copy );
   void record();
   bool needsOvidWar() const;

   TesselTcamGroupManager & m_;
   U32 unit_;
   U32 groupId_;
   const Shim::PortConfig & portConfig_;
   // An ingress group of a unit whose ingress runs per pipe: one SDK group
   // per pipe, each seeing only the packets of its pipe's ports.
   bool perPipe_;
   U32 pipes_;
   U32 copies_;
   Shim::GroupConfig groupConfig_;
   std::vector< bcm_field_presel_t > presels_; // by pipe
   std::vector< U32 > pipeGroups_;             // created, in order
};

bool
GroupCreation::run() {
   TRACE5( "Unit: " << unit_ << " Creating group " << groupId_ );
   buildConfig();
   UndoList undo;
   undo.push( [ this ] {
      TRACE5( "Unit: " << unit_ << " group " << groupId_ << " ref count is now 0" );
      if ( isMirrorAclGroup( groupId_ ) ) {
         m_.groupMirroringAclTypeIs( static_cast< U8 >( groupId_ ), -1 );
      }
   } );
   if ( !createPresels( undo ) || !createHint( undo ) || !createPipeGroups( undo ) ) {
      return false;
   }
   undo.commit();
   record();
   return true;
}

// Flags by value in the order they are decided: 8 (action set), 32768
// (hint), 1 (id), 4 (mode); groups limited to a pipe take 2 (ports) and 64
// (preselectors) and have no action set of their own.
void
GroupCreation::buildConfig() {
   Shim::GroupConfig & groupConfig = groupConfig_;
   groupConfig.action_res_id = -1;
   groupConfig.flags_or( BCM_FIELD_GROUP_CREATE_WITH_ASET );
   groupConfig.flags_or( BCM_FIELD_GROUP_CREATE_WITH_HINTID );
   groupConfig.flags_or( BCM_FIELD_GROUP_CREATE_WITH_ID );
   groupConfig.flags_or( BCM_FIELD_GROUP_CREATE_WITH_MODE );
   if ( perPipe_ ) {
      groupConfig.flags_or( BCM_FIELD_GROUP_CREATE_WITH_PORT );
      groupConfig.flags_clear( BCM_FIELD_GROUP_CREATE_WITH_ASET );
      groupConfig.flags_or( BCM_FIELD_GROUP_CREATE_WITH_PRESELSET );
   }
   const Agent::ChipInfo * info = m_.chipInfo( unit_ );
   groupConfig.use_serial_mux_allocation = info && info->serialMuxAllocation() ? 1 : 0;
   groupConfig.mode = static_cast< bcm_field_group_mode_t >(
      sdkShim().AR_bcmFieldGroupModeAuto() );
   groupConfig.priority =
      static_cast< int >( m_.getTcamGroupPriority( groupId_, m_.groupMirroringAclType( groupId_ ) ) );
   setActionSet();
   m_.tcamStageIs( groupId_, getGroupStage( groupId_ ) );
}

// Trident3 ingress groups list their actions; elsewhere a group may use
// every action of its stage.
void
GroupCreation::setActionSet() {
   bool trident3 = m_.chipTypeFromUnit( unit_ ) == Shim::chipTypeTrident3;
   bool ingress = getGroupStage( groupId_ ) == stageTypeIngress_;
   if ( !trident3 || !ingress ||
        !( groupConfig_.flags & BCM_FIELD_GROUP_CREATE_WITH_ASET ) ) {
      groupConfig_.flags_clear( BCM_FIELD_GROUP_CREATE_WITH_ASET );
      return;
   }
   for ( const int * action = initializeTrident3IfpActionSet(); *action != -1; ++action ) {
      BCM_FIELD_ASET_ADD( groupConfig_.aset, *action );
   }
}

// Per-pipe groups see only their pipe's packets through the pipe's
// preselector, which the pipe's copies share.
bool
GroupCreation::createPresels( UndoList & undo ) {
   if ( !perPipe_ ) {
      return true;
   }
   undo.push( [ this ] { m_.doDestroyGroupPreselId( unit_, groupId_ ); } );
   for ( U32 pipe = 0; pipe < pipes_; ++pipe ) {
      if ( !createPresel( pipe ) ) {
         return false;
      }
   }
   return true;
}

bool
GroupCreation::createPresel( U32 pipe ) {
   U32 unit = unit_;
   const Shim::PortConfig & portConfig = portConfig_;
   U32 pipeGroupId = m_.getPipeGroupId( unit, pipe, 0, groupId_ );
   if ( std::optional< U32 > shared = m_.pipePreselId( unit, pipe ) ) {
      m_.doStoreGroupPreselId( unit, pipeGroupId, *shared );
      presels_.push_back( static_cast< bcm_field_presel_t >( *shared ) );
      return true;
   }
   bcm_field_presel_t preselId = 0;
   if ( SDK_CALL_UNIT( unit, bcm_field_presel_create( unit, &preselId ) ) < 0 ) {
      return false;
   }
   m_.doStoreGroupPreselId( unit, pipeGroupId, static_cast< U32 >( preselId ) );
   presels_.push_back( preselId );
   if ( SDK_CALL_UNIT( unit, bcm_field_qualify_Stage( unit, preselId | BCM_FIELD_QUALIFY_PRESEL,
                                                      bcmFieldStageIngress ) ) < 0 ) {
      return false;
   }
   U32 preselKeyData = 0; // any port class: the ports alone select
   U32 preselKeyMask = 0;
   int rc = SDK_CALL_UNIT(
      unit, bcm_field_qualify_MixedSrcClassId( unit, preselId | BCM_FIELD_QUALIFY_PRESEL,
                                               portConfig.per_pipe( pipe ), preselKeyData,
                                               preselKeyMask ) );
   TRACE7( "Unit: " << unit << " group " << groupId_ << " pipe " << pipe << " presel "
                    << preselId << " mirror acl slice sharing mode "
                    << m_.mirrorAclSliceSharingSupported() );
   return rc >= 0;
}

bool
GroupCreation::createHint( UndoList & undo ) {
   const GroupHint * table = groupHint( groupId_ );
   if ( !table ) {
      groupConfig_.flags_clear( BCM_FIELD_GROUP_CREATE_WITH_HINTID );
      return true;
   }
   U32 unit = unit_;
   bcm_field_hintid_t hintId = 0;
   if ( SDK_CALL_UNIT( unit, bcm_field_hints_create( unit, &hintId ) ) < 0 ) {
      return false;
   }
   m_.groupHintIdInfoIs( GroupUnitKey{ unit, groupId_ }, hintId );
   undo.push( [ this ] { m_.destroyGroupHint( unit_, groupId_ ); } );
   Shim::FieldHint hint;
   hint.hint_type = static_cast< bcm_field_hint_type_t >( groupHintType() );
   hint.qual = static_cast< bcm_field_qualify_t >( table->qual );
   hint.max_values = table->maxValues;
   hint.start_bit = table->startBit;
   hint.end_bit = table->endBit;
   if ( SDK_CALL_UNIT( unit, bcm_field_hints_add( unit, hintId, &hint ) ) < 0 ) {
      return false;
   }
   groupConfig_.hintid = hintId;
   return true;
}

// On a global stage the pipes share one SDK group (the outer-VLAN twins'
// second pipe): each distinct id is created once.
bool
GroupCreation::createPipeGroups( UndoList & undo ) {
   for ( U32 pipe = 0; pipe < pipes_; ++pipe ) {
      for ( U32 copy = 0; copy < copies_; ++copy ) {
         U32 groupId = m_.getPipeGroupId( unit_, pipe, copy, groupId_ );
         if ( std::find( pipeGroups_.begin(), pipeGroups_.end(), groupId ) != pipeGroups_.end() ) {
            continue;
         }
         if ( !createPipeGroup( pipe, copy ) ) {
            return false;
         }
         undo.push( [ this, id = pipeGroups_.back() ] { m_.destroyPipeGroup( unit_, id ); } );
      }
   }
   return true;
}

bool
GroupCreation::createPipeGroup( U32 pipe, U32 copy ) {
   U32 unit = unit_;
   Shim::GroupConfig & groupConfig = groupConfig_;
   U32 groupId = m_.getPipeGroupId( unit, pipe, copy, groupId_ );
   groupConfig.group = static_cast< bcm_field_group_t >( groupId );
   if ( perPipe_ ) {
      groupConfig.ports = portConfig_.per_pipe( pipe );
   }
   if ( groupConfig.flags & BCM_FIELD_GROUP_CREATE_WITH_PRESELSET ) {
      BCM_FIELD_PRESEL_INIT( groupConfig.preselset );
      BCM_FIELD_PRESEL_ADD( groupConfig.preselset, presels_.at( pipe ) );
   }
   int rc = SDK_CALL_UNIT( unit, bcm_field_group_config_create( unit, &groupConfig ) );
   if ( rc < 0 ) {
      TRACE0( "Could not create group: " << groupId << " Due to error: " << bcm_errmsg( rc ) );
      return false;
   }
   pipeGroups_.push_back( groupId );
   if ( TRACE_ON( 9 ) ) {
      SDK_CALL_UNIT( unit, bcm_field_group_dump( unit, groupId ) );
   }
   return true;
}

// Step 8: the group is in use by one user on the unit.
void
GroupCreation::record() {
   for ( U32 pipeGroupId : pipeGroups_ ) {
      m_.groupCountsIs( GroupIdToPipeGroupId{ groupId_, pipeGroupId } )
         ->unitRefCountIs( unit_, 1 );
   }
   TRACE5( "Unit: " << unit_ << " group " << groupId_ << " ref count is now 1" );
   if ( needsOvidWar() ) {
      m_.ovidWarIs( unit_, true );
   }
   if ( isMirrorAclGroup( groupId_ ) ) {
      m_.mirrorAclGroupToPriorityIs( groupId_, static_cast< U32 >( groupConfig_.priority ) );
   }
}

// Untagged packets reach the field processor with outer VLAN 0 on chips
// that say so; ingress groups that match the outer VLAN then need twins.
// The unit's pipe count is set when the unit arrives; this only keeps it.
bool
GroupCreation::needsOvidWar() const {
   return m_.ovidWarNeeded( unit_ ) && getGroupStage( groupId_ ) == stageTypeIngress_ &&
          qsetHas( groupConfig_.qset, sdkShim().AR_bcmFieldQualifyOuterVlanId() );
}

} // namespace

bool
TesselTcamGroupManager::initializeGroup( U32 unit, U32 groupId ) {
   TRACE8( "initializeGroup unit " << unit << " group " << groupId );
   bcm_field_qset_t qset = groupQset( *this, unit, groupId );
   Shim::PortConfig portConfig;
   if ( SDK_CALL_UNIT( unit, bcm_port_config_get( unit, &portConfig ) ) < 0 ) {
      return false;
   }
   if ( groupExists( unit, groupId ) ) {
      addGroupUser( unit, groupId );
      return true;
   }
   return GroupCreation( *this, unit, groupId, qset, portConfig ).run();
}

bool
TesselTcamGroupManager::groupExists( U32 unit, U32 groupId ) const {
   Kiln::Ptr< GroupCounts > base = groupCounts( GroupIdToPipeGroupId{ groupId, groupId } );
   return base && base->unitRefCount( unit ) > 0;
}

// Mirroring ACL groups keep one count however many features use them.
void
TesselTcamGroupManager::addGroupUser( U32 unit, U32 groupId ) {
   if ( isMirrorAclGroup( groupId ) ) {
      TRACE5( "Unit: " << unit << " Not incrementing ref cnt for mirroring acl group "
                       << " group Id " << groupId );
      return;
   }
   U32 count = 0;
   for ( const GroupIdToPipeGroupId & key : pipeGroupsOf( unit, groupId ) ) {
      count = groupCounts( key )->unitRefCountInc( unit, 1 );
   }
   TRACE5( "Unit: " << unit << " group " << groupId << " ref count is now " << count );
}

std::vector< GroupIdToPipeGroupId >
TesselTcamGroupManager::pipeGroupsOf( U32 unit, U32 groupId ) const {
   std::vector< GroupIdToPipeGroupId > keys;
   for ( auto it = groupCounts_.lowerBound( GroupIdToPipeGroupId{ groupId, 0 } );
         it != groupCounts_.end() && it->first.groupId == groupId; ++it ) {
      if ( it->second->unitRefCountHas( unit ) ) {
         keys.push_back( it->first );
      }
   }
   return keys;
}

void
TesselTcamGroupManager::doStoreGroupPreselId( U32 unit, U32 pipeGroupId, U32 preselId ) {
   groupIdToPreselIdIs( UnitGroupId{ unit, pipeGroupId }, preselId );
}

// A preselector selects one pipe's packets, so every per-pipe group of
// that pipe uses the same one; the last group to let go destroys it.
void
TesselTcamGroupManager::doDestroyGroupPreselId( U32 unit, U32 groupId ) {
   for ( const UnitGroupId & key : groupIdToPreselId_.keys() ) {
      if ( key.unit != unit || ( key.groupId & 0x00FFFFFF ) != groupId ) {
         continue;
      }
      U32 preselId = groupIdToPreselId( key );
      groupIdToPreselIdDel( key );
      if ( !preselInUse( unit, preselId ) ) {
         SDK_CALL_UNIT( unit, bcm_field_presel_destroy( unit, preselId ) );
      }
   }
}

bool
TesselTcamGroupManager::preselInUse( U32 unit, U32 preselId ) const {
   for ( const auto & [ key, presel ] : groupIdToPreselId_ ) {
      if ( key.unit == unit && presel == preselId ) {
         return true;
      }
   }
   return false;
}

std::optional< U32 >
TesselTcamGroupManager::pipePreselId( U32 unit, U32 pipe ) const {
   for ( const auto & [ key, presel ] : groupIdToPreselId_ ) {
      U32 group = key.groupId & 0x00FFFFFF;
      if ( key.unit == unit && key.groupId == getPipeGroupId( unit, pipe, 0, group ) ) {
         return presel;
      }
   }
   return std::nullopt;
}

} // namespace Tessel
