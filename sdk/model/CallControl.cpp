#include "sdk/model/CallControl.h"

#include "platform/kiln/Activity.h"

#include <algorithm>
#include <map>
#include <sstream>

namespace ChipModel {

std::string
CallRecord::text() const {
   std::ostringstream out;
   out << function << "(" << unit;
   for ( S64 arg : args ) {
      out << ", " << arg;
   }
   out << ") = " << rc;
   return out.str();
}

U32
CallLog::count( const std::string & function, int unit ) const {
   std::string name = sdkFunctionOf( function );
   return static_cast< U32 >(
      std::count_if( records_.begin(), records_.end(), [ & ]( const CallRecord & r ) {
         return r.function == name && ( unit < 0 || r.unit == unit );
      } ) );
}

void
FaultPlan::add( Fault fault ) {
   fault.function = sdkFunctionOf( fault.function );
   fault.seen = 0;
   faults_.push_back( std::move( fault ) );
}

int
FaultPlan::check( int unit, const std::string & function ) {
   int rc = 0;
   for ( Fault & fault : faults_ ) {
      if ( fault.function != function || ( fault.unit >= 0 && fault.unit != unit ) ) {
         continue;
      }
      ++fault.seen;
      bool fires = fault.seen >= fault.nth && fault.seen < fault.nth + fault.times;
      if ( fires && rc == 0 ) {
         rc = fault.rc;
      }
   }
   return rc;
}

U32
FaultPlan::pending() const {
   return static_cast< U32 >(
      std::count_if( faults_.begin(), faults_.end(),
                     []( const Fault & f ) { return f.seen < f.nth + f.times - 1; } ) );
}

std::string
sdkFunctionOf( const std::string & name ) {
   static const std::map< std::string, std::string > shimCalls = {
      { "ob_field_entry_copy_id", "bcm_field_entry_content_copy" },
      { "oberon_tcam_flash_program", "bcm_field_tcam_commit" },
      { "oberon_bcm_tcam_capacity_info_get", "bcm_field_control_get" },
      { "oberon_bcm_esw_field_stat_pool_index_", "bcm_field_stat_hw_info_get" },
   };
   auto it = shimCalls.find( name );
   return it == shimCalls.end() ? name : it->second;
}

bool
activityLockHeldByThisThread() {
   return Kiln::ActivityUnlockAnchor::lock().heldByThisThread();
}

} // namespace ChipModel
