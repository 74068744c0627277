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

// What the request's table will hold: the rows staged on its mount; null
// for the other tables.
struct DumpRows {
   std::vector< VaultGroupInfo > * groups = nullptr;
   std::vector< VaultFeatureInfo > * features = nullptr;
   std::vector< TesselTcam::VaultName > * featureNames = nullptr;
   std::vector< VaultEntryFeatureInfo > * entryFeatures = nullptr;
   std::vector< VaultEntryGroupInfo > * entryGroups = nullptr;
   std::vector< TesselTcam::VaultName > * entryNames = nullptr;
};

template< typename Mount >
auto *
stagedRowsOf( const Kiln::Ptr< Mount > & mount ) {
   return mount ? &mount->stagedRows() : nullptr;
}

DumpRows
rowsOf( const DumpTargets & t ) {
   return { stagedRowsOf( t.groups ),        stagedRowsOf( t.features ),
            stagedRowsOf( t.featureNames ),  stagedRowsOf( t.entryFeatures ),
            stagedRowsOf( t.entryGroups ),   stagedRowsOf( t.entryNames ) };
}

// Makes the table hold exactly the staged rows, in one change that writes
// only what differs, so a reader sees the old table or the new one and an
// unchanged table is not written at all.
template< typename Mount >
void
commitRows( const Kiln::Ptr< Mount > & mount ) {
   if ( mount ) {
      mount->stagedRowsCommit();
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
addEntryRows( const DumpRows & rows, const TesselTcamGroupManager & manager, U32 unit,
              const GroupUsage & group ) {
   for ( const ReservationUse & use :
         reservationsInUse( manager, unit, group.groupId, group.copies ) ) {
      if ( rows.features ) {
         rows.features->push_back( { use.index, use.allocated, use.used, group.groupId } );
      }
      if ( rows.featureNames ) {
         rows.featureNames->emplace_back( use.index, use.row->name );
      }
      if ( !rows.entryFeatures && !rows.entryGroups && !rows.entryNames ) {
         continue;
      }
      std::vector< U32 > counted;
      forEachEntryOnUnit( *use.entryManager, unit, [ & ]( U32 entryId, const Kiln::String & name ) {
         if ( rows.entryFeatures ) {
            rows.entryFeatures->push_back( { entryId, use.index } );
         }
         if ( rows.entryNames ) {
            rows.entryNames->emplace_back( entryId, name );
         }
         if ( rows.entryGroups ) {
            counted.push_back( entryId );
         }
      } );
      // The counters are read only for the table that shows them, after the
      // walk: reading them lets other activities run.
      for ( U32 entryId : counted ) {
         U64 hits = entryHits( *use.entryManager, unit, entryId, group );
         rows.entryGroups->push_back(
            { entryId, group.groupId,
              U32( std::min< U64 >( hits, std::numeric_limits< U32 >::max() ) ) } );
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
   DumpRows rows = rowsOf( t );
   for ( const GroupUsage & group : groupUsageOfUnit( *this, unit ) ) {
      if ( stageOfGroup( group.groupId ) != stageId ||
           ( pipeFilter && group.perPipe && group.pipe != *pipeFilter ) ) {
         continue;
      }
      if ( rows.groups ) {
         rows.groups->push_back(
            { group.groupId, group.used, group.freeEntries, group.copies, group.pipeGroupId } );
      }
      addEntryRows( rows, *this, unit, group );
   }
   commitRows( t.groups );
   commitRows( t.features );
   commitRows( t.featureNames );
   commitRows( t.entryFeatures );
   commitRows( t.entryGroups );
   commitRows( t.entryNames );
}

} // namespace Tessel
