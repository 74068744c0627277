// handleModuleUpdate: the command line's tables of a unit exist while the
// unit is known.
#include <algorithm>
#include <vector>

#include "manager/TesselTcamGroupManager.h"
#include "platform/fastlog/Trace.h"

TRACE_CHANNEL( "TesselTcamCliVault" );

namespace Tessel {

namespace {

using TesselTcam::CliVaultHelper;

Kiln::Ptr< TesselTcam::CliVaultMounter >
mountStatic( CliVaultHelper & helper, U16 unit, const VaultTableDesc & desc ) {
   return helper.cliVaultMounterFactory( desc.mounterName, unit, desc.path, desc.mountType,
                                         desc.capacity, desc.parentType );
}

// The per-stage tables of one stage and pipe, handed what their requests
// need.
void
mountPerStage( TesselTcamGroupManager & manager, CliVaultHelper & helper, U16 unit, U32 stage,
               U32 pipe ) {
   for ( const VaultTableDesc & desc : perStageTables ) {
      Kiln::Ptr< GroupManagerVaultMounter > mounter =
         Kiln::ptr_cast< GroupManagerVaultMounter >( helper.cliVaultMounterFactory(
            perStageText( desc.mounterName, stage, pipe ), unit,
            perStageText( desc.path, stage, pipe ), desc.mountType, desc.capacity,
            desc.parentType ) );
      if ( !mounter ) {
         continue;
      }
      mounter->cliVaultMessageIs( manager.groupManagerVaultRequest() );
      mounter->stageIdIs( U16( stage ) );
      mounter->pipeIdIs( U16( pipe ) );
      mounter->callerTypeIs( desc.kind );
   }
}

void
addUnitTables( TesselTcamGroupManager & manager, CliVaultHelper & helper, U16 unit,
               U16 moduleId ) {
   TRACE7( "Unit: " << unit << " command-line tables created" );
   auto stages = Kiln::ptr_cast< VaultStagesMount >( mountStatic( helper, unit, stageTable ) );
   auto names = Kiln::ptr_cast< VaultStageNamesMount >( mountStatic( helper, unit, stageNameTable ) );
   auto groups = Kiln::ptr_cast< VaultGroupNamesMount >( mountStatic( helper, unit, groupNameTable ) );
   if ( !stages || !names || !groups ) {
      return;
   }
   manager.dumpStageData( unit, stages );
   manager.dumpStageNames( unit, names );
   manager.dumpGroupNames( unit, groups );
   for ( Id stage : stages->recordKeys() ) {
      U32 pipes = stages->vaultStageInfo( stage )->numPipes;
      for ( U32 pipe = 0; pipe < pipes; ++pipe ) {
         mountPerStage( manager, helper, unit, stage.value, pipe );
      }
   }
   helper.cliVaultUnits()->unitsIs( unit, moduleId );
}

void
removeUnitTables( CliVaultHelper & helper, U16 unit ) {
   TRACE7( "Unit: " << unit << " command-line tables removed" );
   for ( const Kiln::String & name : helper.cliVaultNamedCollectionCollection().keys() ) {
      Kiln::Ptr< TesselTcam::CliVaultMounter > mounter = helper.getCliVaultMounter( name, unit );
      if ( !mounter ) {
         continue;
      }
      std::string path = mounter->table() ? mounter->table()->path() : "";
      helper.doCleanup( name, unit, path.substr( 0, path.rfind( '/' ) ) );
   }
   helper.cliVaultUnits()->unitsDel( unit );
}

} // namespace

void
TesselTcamGroupManager::handleModuleUpdate( U16 moduleId ) {
   Kiln::Ptr< CliVaultHelper > helper = cliVaultHelper();
   if ( !helper ) {
      return;
   }
   TRACE8( "handleModuleUpdate module " << moduleId );
   std::vector< U32 > known = units();
   for ( U16 unit : helper->cliVaultUnits()->unitsCollection().keys() ) {
      if ( std::find( known.begin(), known.end(), unit ) == known.end() ) {
         removeUnitTables( *helper, unit );
      }
   }
   const Agent::ChipInfo * info = modChipInfo_.find( moduleId );
   if ( !info ) {
      return;
   }
   for ( U32 unit : info->units() ) {
      if ( !helper->cliVaultUnits()->unitsHas( U16( unit ) ) ) {
         addUnitTables( *this, *helper, U16( unit ), moduleId );
      }
   }
}

} // namespace Tessel
