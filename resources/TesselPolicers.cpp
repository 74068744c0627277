// Policers: one hardware policer per pipe of the unit for each logical one.
#include "manager/TesselTcamGroupManager.h"

#include <cstring>
#include <ios>

#include "common/TesselSdkCall.h"
#include "platform/fastlog/Trace.h"
#include "sdk/api/field.h"
#include "sdk/api/policer.h"
#include "sdk/shim/SdkStructs.h"

TRACE_CHANNEL( "TesselTcam" );

namespace Tessel {

namespace {

constexpr U32 pipeShift = 24;
constexpr U32 pipeMask = 0x7;
constexpr U32 sdkIdLimit = 1u << pipeShift; // the SDK picks ids below this

// The caller's configuration, copied: the with-id flag set for the other
// pipes must not reach the caller's buffer.
Shim::PolicerConfig
configOf( const Kiln::BytePtr & policerConfig ) {
   KILN_ASSERT_MSG( policerConfig.size() >= sizeof( bcm_policer_config_t ),
                    "policer config shorter than bcm_policer_config_t" );
   Shim::PolicerConfig config;
   std::memcpy( static_cast< bcm_policer_config_t * >( &config ), policerConfig.data(),
                sizeof( bcm_policer_config_t ) );
   return config;
}

} // namespace

U32
TesselTcamGroupManager::getPipePolicerId( U32 unit, U32 pipe, U32 basePolicerId ) const {
   ( void )unit;
   KILN_ASSERT( basePolicerId < sdkIdLimit );
   return basePolicerId | ( ( pipe & pipeMask ) << pipeShift );
}

U32
TesselTcamGroupManager::createPolicer( U32 unit, const Kiln::BytePtr & policerConfig ) const {
   TRACE8( __PRETTY_FUNCTION__ );
   KILN_ASSERT_MSG( policerConfig, "Invalid parameter, policer config is empty" );
   Shim::PolicerConfig config = configOf( policerConfig );
   bcm_policer_config_t * polCfg = &config;
   U32 numPipe = getNumPipe( unit );
   if ( numPipe == 0 ) {
      return 0;
   }
   U32 basePolicerId = 0;
   SDK_CALL_CHECKED( bcm_policer_create( unit, polCfg, ( bcm_policer_t * )&basePolicerId ) );
   TRACE5( "Unit: " << unit << " (policerId=0x" << std::hex << basePolicerId << ")" );
   config.flags_or( BCM_POLICER_WITH_ID );
   for ( U32 pipe = 1; pipe < numPipe; ++pipe ) {
      U32 policerId = getPipePolicerId( unit, pipe, basePolicerId );
      SDK_CALL_CHECKED( bcm_policer_create( unit, polCfg, ( bcm_policer_t * )&policerId ) );
      TRACE5( "Unit: " << unit << " (policerId=0x" << std::hex << policerId << ")" );
   }
   return basePolicerId;
}

void
TesselTcamGroupManager::setPolicer( U32 unit, U32 policerId,
                                    const Kiln::BytePtr & policerConfig ) const {
   TRACE8( __PRETTY_FUNCTION__ );
   KILN_ASSERT_MSG( policerConfig, "Invalid parameter, policer config is empty" );
   Shim::PolicerConfig config = configOf( policerConfig );
   bcm_policer_config_t * policerCfg = &config;
   U32 basePolicerId = policerId;
   for ( U32 pipe = 0; pipe < getNumPipe( unit ); ++pipe ) {
      policerId = getPipePolicerId( unit, pipe, basePolicerId );
      SDK_CALL_CHECKED( bcm_policer_set( unit, policerId, ( bcm_policer_config_t * )policerCfg ) );
      TRACE5( "Unit: " << unit << " policerId=0x" << std::hex << policerId );
   }
}

void
TesselTcamGroupManager::removePolicer( U32 unit, U32 policerId ) const {
   TRACE8( __PRETTY_FUNCTION__ );
   U32 basePolicerId = policerId;
   for ( U32 pipe = 0; pipe < getNumPipe( unit ); ++pipe ) {
      policerId = getPipePolicerId( unit, pipe, basePolicerId );
      SDK_CALL_CHECKED( bcm_policer_destroy( unit, ( bcm_policer_t )policerId ) );
      TRACE5( "Unit: " << unit << " (policerId=0x" << std::hex << policerId << ")" );
   }
}

// Each copy of the entry takes its own pipe's policer, as installation
// gives each copy its own pipe's ranges.
void
TesselTcamEntryManager::attachPolicer( U32 unit, U32 baseEntryId, U32 basePolicerId,
                                       bool attach ) const {
   TRACE8( __PRETTY_FUNCTION__ );
   KILN_ASSERT( groupManager() );
   const TesselTcamGroupManager & manager = *groupManager();
   U32 numPipes = manager.getNumPipe( unit, group() );
   U32 copies = manager.getNumCopiesPerPipe( unit, group() );
   for ( U32 pipe = 0; pipe < numPipes; ++pipe ) {
      U32 policerId = manager.getPipePolicerId( unit, pipe, basePolicerId );
      for ( U32 copy = 0; copy < copies; ++copy ) {
         U32 entryId = getPipeEntryId( unit, pipe, baseEntryId, copy );
         if ( attach ) {
            SDK_CALL_CHECKED( bcm_field_entry_policer_attach( unit, entryId, 0, policerId ) );
         } else {
            SDK_CALL_CHECKED( bcm_field_entry_policer_detach( unit, entryId, 0 ) );
         }
         TRACE5( "Unit: " << unit << " (entry=0x" << std::hex << entryId << std::dec
                          << " policerId=" << policerId << ")" );
      }
   }
}

} // namespace Tessel
