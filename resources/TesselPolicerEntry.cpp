// The entry managers' side of policers: each pipe copy of an entry takes
// its own pipe's policer.
#include <ios>

#include "common/TesselSdkCall.h"
#include "manager/TesselTcamEntryManager.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/fastlog/Trace.h"

TRACE_CHANNEL( "TesselTcam" );

namespace Tessel {

void
TesselTcamEntryManager::attachPolicer( U32 unit, U32 entry, U32 basePolicerId,
                                       bool attach ) const {
   TRACE8( __PRETTY_FUNCTION__ );
   KILN_ASSERT_MSG( groupManager(), "entry manager without its group manager" );
   const TesselTcamGroupManager & manager = *groupManager();
   U32 numPipe = manager.getNumPipe( unit, group() );
   U32 copies = manager.getNumCopiesPerPipe( unit, group() );
   for ( U32 pipe = 0; pipe < numPipe; ++pipe ) {
      U32 policerId = manager.getPipePolicerId( unit, pipe, basePolicerId );
      for ( U32 copy = 0; copy < copies; ++copy ) {
         U32 entryId = getPipeEntryId( unit, pipe, entry, copy );
         if ( attach ) {
            SDK_CALL_CHECKED( bcm_field_entry_policer_attach( unit, entryId, 0, policerId ) );
         } else {
            SDK_CALL_CHECKED( bcm_field_entry_policer_detach( unit, entryId, 0 ) );
         }
         TRACE5( "Unit: " << unit << " (entry=0x" << std::hex << entryId
                          << " policerId=" << std::dec << policerId << ")" );
      }
   }
}

} // namespace Tessel
