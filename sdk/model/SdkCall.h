// How the model's bcm_* entry points run: every one goes through the box's
// hook (activity check, call log, fault injection, unit lookup), then its
// body runs on the unit under the box's lock.
#pragma once

#include <utility>
#include <vector>

#include "sdk/api/error.h"
#include "sdk/model/Box.h"

namespace ChipModel {

// BCM_E_UNIT when there is no box.
template< typename Body >
int
sdkCall( const char * function, int unit, std::vector< S64 > args, Body && body ) {
   Box * box = Box::current();
   if ( !box ) {
      return BCM_E_UNIT;
   }
   return box->call( function, unit, std::move( args ), std::forward< Body >( body ) );
}

// Writes text to the dump output (bcm_dump_sink_set).
void emitDump( const std::string & text );

} // namespace ChipModel
