// dumpData: the per-stage tables of a request, from the same walk of the
// unit's groups and reservations as the usage report.
#include <limits>
#include <vector>

#include "catalogue/TesselTcamGroups.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/fastlog/Trace.h"
#include "sdk/api/field_types.h"
#include "show/TesselTcamHelper.h"

TRACE_CHANNEL( "TesselTcamCliVault" );

namespace Tessel {

namespace {

// The table of the request's kind; the others stay null.
struct DumpTargets {
   Kiln::Ptr< VaultGroupsMount > groups;
   Kiln::Ptr< VaultFeaturesMount > features;
   Kiln::Ptr< VaultFeatureNamesMount > featureNames;
   Kiln::Ptr< VaultEntryFeaturesMount > entryFeatures;
   Kiln::Ptr< VaultEntryGroupsMount > entryGroups;
   Kiln::Ptr< VaultEntryNamesMount > entryNames;
};

DumpTargets
targetsOf( TcamGroupManagerVaultTypes type, const Kiln::Ptr< TesselTcam::CliVaultMounter > & m ) {
   DumpTargets t;
   switch ( type ) {
   case vaultTypeGroups: t.groups = Kiln::ptr_cast< VaultGroupsMount >( m ); break;
   case vaultTypeFeatures: t.features = Kiln::ptr_cast< VaultFeaturesMount >( m ); break;
   case vaultTypeFeatureNames:
      t.featureNames = Kiln::ptr_cast< VaultFeatureNamesMount >( m );
      break;
   case vaultTypeEntryFeatures:
      t.entryFeatures = Kiln::ptr_cast< VaultEntryFeaturesMount >( m );
      break;
   case vaultTypeEntryGroups: t.entryGroups = Kiln::ptr_cast< VaultEntryGroupsMount >( m ); break;
   case vaultTypeEntryNames: t.entryNames = Kiln::ptr_cast< VaultEntryNamesMount >( m ); break;
   default: break;
   }
   return t;
}

// What the request's table will hold.
struct DumpRows {
   std::vector< VaultGroupInfo > groups;
   std::vector< VaultFeatureInfo > features;
   std::vector< TesselTcam::VaultName > featureNames;
   std::vector< VaultEntryFeatureInfo > entryFeatures;
   std::vector< VaultEntryGroupInfo > entryGroups;
   std::vector< TesselTcam::VaultName > entryNames;
};

// Replaces the table's rows in one change, so a reader sees the old table
// or the new one.
template< typename Mount, typename Record >
void
replaceRows( const Kiln::Ptr< Mount > & mount, const std::vector< Record > & rows ) {
   Vault::TableWriter * table = mount ? mount->table() : nullptr;
   if ( !table ) {
      return;
   }
   Vault::TableWriter::Batch batch( *table );
   mount->recordDelAll();
   for ( const Record & row : rows ) {
      mount->recordIs( row );
   }
}

// The stage a group's entries are looked up in: the class-id compression
// groups live in a stage of their own.
U32
stageOfGroup( U32 groupId ) {
   return groupId > HIGHEST_TCAM_GROUP_ ? U32( bcmFieldStageClass )
                                        : U32( getGroupStage( groupId ) );
}

void
addEntryRows( DumpRows & rows, const TesselTcamGroupManager & manager, U32 unit,
              const GroupUsage & group, const DumpTargets & t ) {
   for ( const ReservationUse & use :
         reservationsInUse( manager, unit, group.groupId, group.copies ) ) {
      if ( t.features ) {
         rows.features.push_back( { use.index, use.allocated, use.used, group.groupId } );
      }
      if ( t.featureNames ) {
         rows.featureNames.emplace_back( use.index, use.row->name );
      }
      if ( !t.entryFeatures && !t.entryGroups && !t.entryNames ) {
         continue;
      }
      for ( const auto & [ entryId, name ] : entriesOnUnit( *use.entryManager, unit ) ) {
         rows.entryFeatures.push_back( { entryId, use.index } );
         rows.entryNames.emplace_back( entryId, name );
         if ( t.entryGroups ) { // the counters are read only for the table that shows them
            U64 hits = entryHits( *use.entryManager, unit, entryId, group );
            rows.entryGroups.push_back(
               { entryId, group.groupId,
                 U32( std::min< U64 >( hits, std::numeric_limits< U32 >::max() ) ) } );
         }
      }
   }
}

} // namespace

void
TesselTcamGroupManager::dumpData( const Kiln::Ptr< GroupManagerVaultRequest > & request ) {
   U32 unit = request->unit();
   U32 stageId = request->stageId();
   U32 pipeId = request->pipeId();
   TcamGroupManagerVaultTypes type = request->type();
   TRACE8( "dumpData unit " << unit << " stage " << stageId << " pipe " << pipeId << " type "
                            << U32( type ) );
   if ( type < vaultTypeGroups || type > vaultTypeEntryNames ) {
      return;
   }
   DumpTargets t = targetsOf( type, request->mounter() );
   std::optional< U32 > pipeFilter;
   Kiln::Ptr< VaultStagesMount > stages;
   if ( cliVaultHelper() ) {
      stages = Kiln::ptr_cast< VaultStagesMount >(
         cliVaultHelper()->getCliVaultMounter( stageTable.mounterName, U16( unit ) ) );
   }
   std::optional< VaultStageInfo > stage = stages ? stages->vaultStageInfo( stageId ) : std::nullopt;
   if ( stage && stage->pipeOperationMode != 0 ) {
      pipeFilter = pipeId;
   }
   DumpRows rows;
   for ( const GroupUsage & group : groupUsageOfUnit( *this, unit ) ) {
      if ( stageOfGroup( group.groupId ) != stageId ||
           ( pipeFilter && group.perPipe && group.pipe != *pipeFilter ) ) {
         continue;
      }
      if ( t.groups ) {
         rows.groups.push_back(
            { group.groupId, group.used, group.freeEntries, group.copies, group.pipeGroupId } );
      }
      addEntryRows( rows, *this, unit, group, t );
   }
   replaceRows( t.groups, rows.groups );
   replaceRows( t.features, rows.features );
   replaceRows( t.featureNames, rows.featureNames );
   replaceRows( t.entryFeatures, rows.entryFeatures );
   replaceRows( t.entryGroups, rows.entryGroups );
   replaceRows( t.entryNames, rows.entryNames );
}

} // namespace Tessel
