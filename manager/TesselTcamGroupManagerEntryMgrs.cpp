// The entry-manager registry: one manager per feature reservation, made on
// the first request and handed out again only to an identical request.
#include "manager/TesselTcamGroupManager.h"

#include <cstdio>
#include <string>

#include "catalogue/TesselTcamGroups.h"
#include "platform/fastlog/Trace.h"

TRACE_CHANNEL( "TesselTcam" );

namespace Tessel {

namespace {

std::string
entryManagerName( const Kiln::Name & groupManager, const char * collection,
                  TcamGroupAssignment groupAssignment ) {
   return groupManager.str() + "/" + collection + "/" +
          TcamGroupAssignmentInstance::valueToStrep( groupAssignment );
}

// A group manager by name and identity: two instances may share a name.
std::string
groupManagerText( const TesselTcamGroupManager * groupManager ) {
   if ( !groupManager ) {
      return "null";
   }
   char address[ 24 ];
   std::snprintf( address, sizeof( address ), "%p", static_cast< const void * >( groupManager ) );
   return groupManager->name().str() + " at " + address;
}

// The refusal of a request that differs from the existing manager in
// constructor parameter `attr`; empty when the values agree.
std::string
mismatch( const TesselTcamEntryManager & existing, const char * attr,
          const std::string & newValue, const std::string & oldValue ) {
   if ( newValue == oldValue ) {
      return {};
   }
   return "Reinstantiating the entity with fullName " + existing.name().str() +
          " where constructor parameter attribute '" + attr +
          "' has a different value of " + newValue + " than the current value of " +
          oldValue + " not allowed";
}

// The first constructor parameter, in declaration order, whose requested
// value differs from the existing manager's, as the refusal text.
std::string
reinstantiationRefusal( const TesselTcamEntryManager & e, const Kiln::String & desc,
                        TesselTcamGroupManager * groupManager, U32 group, U32 baseEntry,
                        U32 endEntry, TcamAllocationStrategy strategy ) {
   auto strategyText = TcamAllocationStrategyInstance::valueToStrep;
   std::string refusal[] = {
      mismatch( e, "group", std::to_string( group ), std::to_string( e.group() ) ),
      mismatch( e, "desc", desc.str(), e.desc().str() ),
      mismatch( e, "groupManager", groupManagerText( groupManager ),
                groupManagerText( e.groupManager() ) ),
      mismatch( e, "baseEntry", std::to_string( baseEntry ), std::to_string( e.baseEntry() ) ),
      mismatch( e, "endEntry", std::to_string( endEntry ), std::to_string( e.endEntry() ) ),
      mismatch( e, "strategy", strategyText( strategy ), strategyText( e.strategy() ) ),
   };
   for ( const std::string & text : refusal ) {
      if ( !text.empty() ) {
         return text;
      }
   }
   return {};
}

} // namespace

template< typename Manager, typename Map, typename Callback >
Kiln::Ptr< Manager >
TesselTcamGroupManager::entryManagerMake( Map & map, Callback callback, const char * collection,
                                          TcamGroupAssignment groupAssignment,
                                          const Kiln::String & desc,
                                          TesselTcamGroupManager * groupManager, U32 group,
                                          U32 baseEntry, U32 endEntry,
                                          TcamAllocationStrategy strategy ) {
   TRACE5( "entry manager for " << groupAssignment << " group " << group << " desc " << desc );
   Kiln::Ptr< Manager > made =
      new Manager( entryManagerName( name(), collection, groupAssignment ), groupAssignment, desc,
                   groupManager, group, baseEntry, endEntry, strategy );
   collectionIs( map, groupAssignment, made, callback );
   managersChanged();
   return made;
}

Kiln::Ptr< TesselBoundedTcamEntryManager >
TesselTcamGroupManager::entryManagerIs( TcamGroupAssignment groupAssignment,
                                        const Kiln::String & desc,
                                        TesselTcamGroupManager * groupManager, U32 group,
                                        U32 baseEntry, U32 endEntry,
                                        TcamAllocationStrategy strategy ) {
   if ( Kiln::Ptr< TesselBoundedTcamEntryManager > existing = entryManager( groupAssignment ) ) {
      std::string refusal = reinstantiationRefusal( *existing, desc, groupManager, group,
                                                    baseEntry, endEntry, strategy );
      KILN_ASSERT_MSG( refusal.empty(), refusal.c_str() );
      return existing;
   }
   return entryManagerMake< TesselBoundedTcamEntryManager >(
      entryManager_, &NotifieeConst::onEntryManager, "entryManager", groupAssignment, desc,
      groupManager, group, baseEntry, endEntry, strategy );
}

Kiln::Ptr< TesselUnboundedTcamEntryManager >
TesselTcamGroupManager::unboundedEntryManagerIs( TcamGroupAssignment groupAssignment,
                                                 const Kiln::String & desc,
                                                 TesselTcamGroupManager * groupManager,
                                                 U32 group, U32 baseEntry, U32 endEntry,
                                                 TcamAllocationStrategy strategy ) {
   if ( Kiln::Ptr< TesselUnboundedTcamEntryManager > existing =
           unboundedEntryManager( groupAssignment ) ) {
      std::string refusal = reinstantiationRefusal( *existing, desc, groupManager, group,
                                                    baseEntry, endEntry, strategy );
      KILN_ASSERT_MSG( refusal.empty(), refusal.c_str() );
      return existing;
   }
   return entryManagerMake< TesselUnboundedTcamEntryManager >(
      unboundedEntryManager_, &NotifieeConst::onUnboundedEntryManager, "unboundedEntryManager",
      groupAssignment, desc, groupManager, group, baseEntry, endEntry, strategy );
}

void
TesselTcamGroupManager::entryManagerDel( TcamGroupAssignment groupAssignment ) {
   collectionDel( entryManager_, groupAssignment, &NotifieeConst::onEntryManager );
   managersChanged();
}

void
TesselTcamGroupManager::entryManagerDelAll() {
   collectionDelAll( entryManager_, &NotifieeConst::onEntryManager );
   managersChanged();
}

void
TesselTcamGroupManager::unboundedEntryManagerDel( TcamGroupAssignment groupAssignment ) {
   collectionDel( unboundedEntryManager_, groupAssignment,
                  &NotifieeConst::onUnboundedEntryManager );
   managersChanged();
}

void
TesselTcamGroupManager::unboundedEntryManagerDelAll() {
   collectionDelAll( unboundedEntryManager_, &NotifieeConst::onUnboundedEntryManager );
   managersChanged();
}

const std::vector< Kiln::Ptr< TesselTcamEntryManager > > &
TesselTcamGroupManager::entryManagersOfGroup( U32 group ) const {
   if ( managersByGroupStale_ ) {
      managersByGroup_.clear();
      for ( const auto & [ assignment, manager ] : entryManager_ ) {
         managersByGroup_[ manager->group() ].push_back( manager );
      }
      for ( const auto & [ assignment, manager ] : unboundedEntryManager_ ) {
         managersByGroup_[ manager->group() ].push_back( manager );
      }
      managersByGroupStale_ = false;
   }
   static const std::vector< Kiln::Ptr< TesselTcamEntryManager > > none;
   auto found = managersByGroup_.find( group );
   return found == managersByGroup_.end() ? none : found->second;
}

Kiln::Ptr< TesselTcamEntryManager >
TesselTcamGroupManager::tcamEntryMgr( U32 entryId ) const {
   KILN_ASSERT_MSG( tcamManagerForEntryHas( entryId ), "EntryMgr not found" );
   return tcamManagerForEntry( entryId );
}

U32
TesselTcamGroupManager::getNumOfTcamEntries( U16 reservationIndex ) const {
   const TcamReservation * row = reservationIndex < numTcamReservations()
                                    ? getTcamReservation( reservationIndex )
                                    : nullptr;
   if ( !row ) {
      return 0;
   }
   Kiln::Ptr< TesselTcamEntryManager > manager;
   if ( row->strategy == tcamAllocateUnbounded_ ) {
      manager = unboundedEntryManager( row->featureId );
   } else {
      manager = entryManager( row->featureId );
   }
   U32 entries = 0;
   for ( U32 unit : manager ? units() : std::vector< U32 >() ) {
      entries += manager->entriesAllocated( unit );
   }
   return entries;
}

} // namespace Tessel
