// Range checkers: one checker per descriptor and unit, shared by every
// entry that asks for it and counted per user. On range-module chips a
// checker is a hardware range in each pipe, known by the pipe-0 range's id.
#include "resources/TesselRangeCheckers.h"

#include "common/TesselSdkCall.h"
#include "platform/fastlog/FastLog.h"
#include "platform/fastlog/Trace.h"
#include "sdk/api/field_qualify.h"
#include "sdk/shim/SdkStructs.h"
#include "sdk/shim/Shim.h"

TRACE_CHANNEL( "TesselTcam" );

namespace Tessel {

namespace {

bool
hasRangeModule( const TesselTcamGroupManager & manager, U32 unit ) {
   const Agent::ChipInfo * info = manager.chipInfo( unit );
   return info && info->rangeModule();
}

void
logRangeCreate( U32 id, const RangeCheckerDesc & specs ) {
   FASTLOG( "fp range create ", id, specs.rangeFlags(), FastLog::dec( specs.low() ),
            FastLog::dec( specs.high() ) );
}

// One pipe's range of the checker, ready for bcm_range_create.
bcm_range_config_t
pipeRangeConfig( U32 unit, U32 pipe, const Shim::PortConfig & portConfig,
                 const RangeCheckerDesc & specs ) {
   bcm_range_config_t conf;
   SdkShim->ob_range_config_init( &conf );
   setRangeCheckParams( unit, pipe, portConfig.per_pipe( pipe ), specs, &conf );
   return conf;
}

void
recordPipeRange( TesselTcamGroupManager * tcamGroupManager, const UnitRangeInfoKey & key,
                 U32 pipe, const bcm_range_config_t & conf ) {
   tcamGroupManager->unitRangeInfo( key )->pipeRangeIdIs( pipe, RangeCheckId( conf.rid ) );
}

int
getRangeCheckModule( U32 unit, TesselTcamGroupManager * tcamGroupManager, U8 numPipes,
                     const RangeCheckerDesc & specs, U32 * id ) {
   Shim::PortConfig portConfig;
   SDK_CALL_CHECKED( bcm_port_config_get( unit, &portConfig ) );
   if ( numPipes == 0 ) {
      return BCM_E_NONE;
   }
   bcm_range_config_t conf = pipeRangeConfig( unit, 0, portConfig, specs );
   int rc = SDK_CALL_RESOURCE_OK( bcm_range_create( unit, 0, &conf ) );
   if ( rc < 0 ) {
      return rc; // out of checkers: the caller's to report
   }
   logRangeCreate( U32( conf.rid ), specs );
   *id = RangeCheckId( conf.rid );
   UnitRangeInfoKey key{ unit, *id };
   KILN_ASSERT_MSG( !tcamGroupManager->unitRangeInfoHas( key ),
                    "RangeChecker already exists on Pipe 0" );
   tcamGroupManager->unitRangeInfoIs( key );
   recordPipeRange( tcamGroupManager, key, 0, conf );
   // The other pipes are not taken back on failure: a chip that had room
   // in pipe 0 and none in another is beyond repair here.
   for ( U32 pipe = 1; pipe < numPipes; ++pipe ) {
      conf = pipeRangeConfig( unit, pipe, portConfig, specs );
      rc = SDK_CALL_UNIT( unit, bcm_range_create( unit, 0, &conf ) );
      KILN_ASSERT_MSG( rc >= 0, "Failed to allocate RangeChecker" );
      logRangeCreate( U32( conf.rid ), specs );
      recordPipeRange( tcamGroupManager, key, pipe, conf );
   }
   return BCM_E_NONE;
}

int
getRangeCheckField( U32 unit, const RangeCheckerDesc & specs, U32 * rangeId ) {
   bcm_field_range_t id = 0;
   int rc = SDK_CALL_RESOURCE_OK(
      bcm_field_range_create( unit, &id, specs.rangeFlags(), specs.low(), specs.high() ) );
   if ( rc >= 0 ) {
      logRangeCreate( U32( id ), specs );
      *rangeId = U32( id );
   }
   return rc;
}

} // namespace

void
setRangeCheckParams( U32 unit, U32 pipe, bcm_pbmp_t pipePorts, const RangeCheckerDesc & specs,
                     bcm_range_config_t * conf ) {
   TRACE9( "setRangeCheckParams unit " << unit << " pipe " << pipe << " "
                                       << specs.valueText() );
   if ( specs.rangeFlags() & BCM_FIELD_RANGE_SRCPORT ) {
      conf->rtype = bcm_range_type_t( SdkShim->AR_bcmRangeTypeL4SrcPort() );
   } else if ( specs.rangeFlags() & BCM_FIELD_RANGE_DSTPORT ) {
      conf->rtype = bcm_range_type_t( SdkShim->AR_bcmRangeTypeL4DstPort() );
   } else if ( specs.rangeFlags() & BCM_FIELD_RANGE_PACKET_LENGTH ) {
      conf->rtype = bcm_range_type_t( SdkShim->AR_bcmRangeTypePacketLength() );
   } else {
      KILN_ASSERT_MSG( false, "Unsupported range type" );
   }
   conf->rid = 0;
   conf->min = specs.low();
   conf->max = specs.high();
   conf->ports = pipePorts;
}

int
getRangeCheck( U32 unit, TesselTcamGroupManager * tcamGroupManager, U8 numPipes,
               const RangeCheckerDesc & specs, U32 * id ) {
   TRACE8( "getRangeCheck unit " << unit << " pipes " << U32( numPipes ) << " "
                                 << specs.valueText() );
   if ( hasRangeModule( *tcamGroupManager, unit ) ) {
      return getRangeCheckModule( unit, tcamGroupManager, numPipes, specs, id );
   }
   return getRangeCheckField( unit, specs, id );
}

void
freeRangeCheck( U32 unit, TesselTcamGroupManager * tcamGroupManager, U8 numPipes, U32 baseId ) {
   TRACE8( "freeRangeCheck unit " << unit << " pipes " << U32( numPipes ) << " id "
                                  << baseId );
   if ( !hasRangeModule( *tcamGroupManager, unit ) ) {
      bcm_field_range_t rid = bcm_field_range_t( baseId );
      SDK_CALL_CHECKED( bcm_field_range_destroy( unit, rid ) );
      return;
   }
   UnitRangeInfoKey key{ unit, baseId };
   for ( U32 pipeId = 0; pipeId < numPipes; ++pipeId ) {
      // Looked up again for each pipe: the calls release the activity lock.
      KILN_ASSERT( tcamGroupManager->unitRangeInfoHas( key ) );
      KILN_ASSERT( tcamGroupManager->unitRangeInfo( key )->pipeRangeIdHas( pipeId ) );
      bcm_range_t id =
         bcm_range_t( tcamGroupManager->unitRangeInfo( key )->pipeRangeId( pipeId ) );
      SDK_CALL_CHECKED( bcm_range_destroy( unit, id ) );
   }
   tcamGroupManager->unitRangeInfoDel( key );
}

U32
TesselTcamGroupManager::getRangeChecker( U32 unit, U32 groupId, const RangeCheckerDesc & desc ) {
   TRACE8( "getRangeChecker unit " << unit << " group " << groupId << " " << desc.valueText() );
   U8 numPipes = U8( getNumPipe( unit, groupId ) );
   Kiln::Ptr< RangeCheckerData > data = rangeCheckerIs( desc );
   RangeCheckId id = data->unitId( unit );
   if ( !id ) {
      int rc = getRangeCheck( unit, this, numPipes, desc, &id );
      TRACE7( "getRangeCheck rc:" << rc << " line " << __LINE__ );
      if ( rc == BCM_E_RESOURCE ) {
         TRACE1( "Unit: " << unit << " out of range checkers for " << desc.valueText() );
         rangeCheckersExhaustedIs( unit );
         return 0;
      }
      data = rangeCheckerIs( desc ); // the calls released the activity lock
   }
   data->unitIdIs( unit, id );
   data->unitRefCountInc( unit, 1 );
   return id;
}

void
TesselTcamGroupManager::releaseRangeChecker( U32 unit, U32 groupId,
                                             const RangeCheckerDesc & desc ) {
   TRACE8( "releaseRangeChecker unit " << unit << " group " << groupId << " "
                                       << desc.valueText() );
   Kiln::Ptr< RangeCheckerData > data = rangeChecker( desc );
   KILN_ASSERT( data );
   KILN_ASSERT( data->unitRefCount( unit ) > 0 );
   U8 numPipes = U8( getNumPipe( unit, groupId ) );
   if ( data->unitRefCountInc( unit, -1 ) > 0 ) {
      return;
   }
   RangeCheckId id = data->unitId( unit );
   freeRangeCheck( unit, this, numPipes, id );
   FASTLOG( "fp range destroy ", id );
   data->unitRefCountDel( unit );
   data->unitIdDel( unit );
   rangeCheckersExhaustedDel( unit );
   if ( data->unitIdCollection().empty() && rangeChecker( desc ) == data ) {
      rangeCheckerDel( desc );
   }
}

int
TesselTcamGroupManager::attachRangeChecker( U32 unit, U32 baseEntryId, U32 baseRangeCheckId ) {
   TRACE8( "attachRangeChecker unit " << unit << " entry " << baseEntryId << " id "
                                      << baseRangeCheckId );
   int rc = SDK_CALL_RESOURCE_OK(
      bcm_field_qualify_RangeCheck( unit, baseEntryId, baseRangeCheckId, 0 ) );
   if ( rc < 0 ) {
      return rc;
   }
   TRACE7( " Saving record for RnageId: " << baseRangeCheckId << " for entryId: "
                                          << baseEntryId );
   entryRangeCheckIdIs( baseEntryId );
   KILN_ASSERT( !entryRangeCheckId( baseEntryId )->rangeCheckIdHas( baseRangeCheckId ) );
   entryRangeCheckId( baseEntryId )->rangeCheckIdIs( baseRangeCheckId, true );
   return rc;
}

// Walks snapshots of the keys: the SDK calls release the activity lock.
void
TesselTcamGroupManager::forgetUnitRangeCheckers( U32 unit ) {
   TRACE8( "forgetUnitRangeCheckers unit " << unit );
   for ( const UnitRangeInfoKey & key : unitRangeInfo_.keys() ) {
      Kiln::Ptr< UnitRangeIdInfo > info = unitRangeInfo( key );
      if ( key.unit != unit || !info ) {
         continue;
      }
      for ( U32 pipe : info->pipeRangeIdCollection().keys() ) {
         bcm_range_t id = bcm_range_t( info->pipeRangeId( pipe ) );
         SDK_CALL_UNIT( unit, bcm_range_destroy( unit, id ) );
      }
      unitRangeInfoDel( key );
   }
   bool fieldRanges = !hasRangeModule( *this, unit );
   for ( const RangeCheckerDesc & desc : rangeChecker_.keys() ) {
      Kiln::Ptr< RangeCheckerData > data = rangeChecker( desc );
      if ( !data || !data->unitIdHas( unit ) ) {
         continue;
      }
      bcm_field_range_t rid = bcm_field_range_t( data->unitId( unit ) );
      if ( fieldRanges ) {
         SDK_CALL_UNIT( unit, bcm_field_range_destroy( unit, rid ) );
      }
      data->unitIdDel( unit );
      data->unitRefCountDel( unit );
      if ( data->unitIdCollection().empty() ) {
         rangeCheckerDel( desc );
      }
   }
   rangeCheckersExhaustedDel( unit );
}

U32
TesselTcamEntryManager::getRangeChecker( U32 unit, const RangeCheckerDesc & desc ) {
   KILN_ASSERT( groupManager() );
   return groupManager()->getRangeChecker( unit, group(), desc );
}

void
TesselTcamEntryManager::releaseRangeChecker( U32 unit, const RangeCheckerDesc & desc ) {
   KILN_ASSERT( groupManager() );
   groupManager()->releaseRangeChecker( unit, group(), desc );
}

int
TesselTcamEntryManager::attachRangeChecker( U32 unit, U32 entryId, U32 rangeCheckId ) {
   KILN_ASSERT( groupManager() );
   return groupManager()->attachRangeChecker( unit, entryId, rangeCheckId );
}

} // namespace Tessel
