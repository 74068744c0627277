#include "sdk/api/error.h"

namespace {

const char * const errorTexts[] = {
   "Ok",                          // BCM_E_NONE
   "Internal error",              // BCM_E_INTERNAL
   "Out of memory",               // BCM_E_MEMORY
   "Invalid unit",                // BCM_E_UNIT
   "Invalid parameter",           // BCM_E_PARAM
   "Table empty",                 // BCM_E_EMPTY
   "Table full",                  // BCM_E_FULL
   "Entry not found",             // BCM_E_NOT_FOUND
   "Entry exists",                // BCM_E_EXISTS
   "Operation timed out",         // BCM_E_TIMEOUT
   "Operation still running",     // BCM_E_BUSY
   "Operation failed",            // BCM_E_FAIL
   "Operation disabled",          // BCM_E_DISABLED
   "Invalid identifier",          // BCM_E_BADID
   "No resources for operation",  // BCM_E_RESOURCE
   "Invalid configuration",       // BCM_E_CONFIG
   "Feature unavailable",         // BCM_E_UNAVAIL
   "Feature not initialized",     // BCM_E_INIT
   "Invalid port",                // BCM_E_PORT
};

} // namespace

extern "C" const char *
bcm_errmsg( int rc ) {
   if ( rc > 0 || rc <= BCM_E_LIMIT ) {
      return rc > 0 ? "Ok" : "Unknown error";
   }
   return errorTexts[ -rc ];
}
