// The one family of macros through which the library calls the chip SDK.
//
// Each macro stringifies the call as written, so call sites are written the
// way the traces must read: SDK_CALL( bcm_field_entry_install( unit, entryId ) )
// traces "bcm_field_entry_install( unit, entryId )". Every call is made with
// the activity lock released (an unlock anchor around the call) and is traced
// at level 4 on the "bcmFpCmd" channel as
//    <file>:<line> <call text> (rc:<code>)
//
//   SDK_CALL( call )            returns the code.
//   SDK_CALL_CHECKED( call )    returns the code; a negative code is fatal:
//                               standard error gets
//                               "<file>:<line> <call text> API ERROR:<error string> (<code>)"
//                               and the caller aborts on the assertion "0".
//   SDK_CALL_RESOURCE_OK( call )  as SDK_CALL_CHECKED, except that the
//                               resource-exhausted code (BCM_E_RESOURCE) is
//                               returned for the caller to handle.
//   SDK_CALL_NO_RC_CHECK( call )  result deliberately ignored; the trace line
//                               ends in " no rc check".
//   SDK_CALL_UNIT( unit, call ) returns the code; a negative code is also traced
//                               as "Unit: <unit> <call text> API ERROR: (rc:<code>)".
//   SDK_CALL_UNIT_MORE( unit, call, more )  the same, with the stream
//                               expression `more` appended to the error line.
//
// The macros are GNU statement expressions so that the fatal assertion names
// the calling function.
#pragma once

#include <sstream>
#include <string>

#include "common/TesselExport.h"
#include "platform/fastlog/Trace.h"
#include "platform/kiln/ActivityLock.h"
#include "platform/kiln/Assert.h"
#include "platform/kiln/Types.h"
#include "sdk/api/error.h"

namespace Tessel {

// The "bcmFpCmd" channel, tested at the call site so that a call whose
// trace is off does not leave the caller.
TESSEL_EXPORT extern FastLog::TraceChannel sdkCallChannel;

// Level-4 trace of a finished call; `suffix` follows the closing parenthesis.
// The macros call it only when the level is on.
[[gnu::cold]] TESSEL_EXPORT void sdkCallTrace( const char * file, int line,
                                               const char * callText, int rc,
                                               const char * suffix );
// Writes the fatal report of a failed call to standard error.
[[gnu::cold]] TESSEL_EXPORT void sdkCallFatalReport( const char * file, int line,
                                                     const char * callText, int rc );
// Traces "Unit: <unit> <call text> API ERROR: (rc:<code>)<more>".
[[gnu::cold]] TESSEL_EXPORT void sdkCallErrorTrace( U32 unit, const char * callText, int rc,
                                                    const std::string & more );

// The error line of SDK_CALL_UNIT_MORE with `more( stream )` appended. Out
// of line and cold, one per call site, so that the stream it builds takes
// no room in the caller's code.
template< typename More >
[[gnu::cold, gnu::noinline]] void
sdkCallErrorTraceMore( U32 unit, const char * callText, int rc, const More & more ) {
   std::ostringstream stream;
   more( stream );
   sdkCallErrorTrace( unit, callText, rc, stream.str() );
}

// Keeps the activity lock released over a run of SDK calls that have
// nothing between them touching an entity (traces and FASTLOG records may
// be written), so that the calls' own releases have nothing to do. The lock
// is taken again when the run ends.
class SdkCallRun : public ::Kiln::UnlockAnchor {
 public:
   SdkCallRun() : UnlockAnchor( ::Kiln::ActivityUnlockAnchor::lock() ) {}
};

} // namespace Tessel

// Each public macro stringifies its own argument: handing `call` on to another
// macro would expand the macros inside it (BCM_FIELD_QUALIFY_PRESEL) before
// the text is taken. The internal forms take the text ready-made.
#define SDK_CALL_RAW_( call )                                                      \
   ( { int sdkRc_;                                                                 \
       {                                                                           \
          ::Kiln::UnlockAnchor sdkAnchor_( ::Kiln::ActivityUnlockAnchor::lock() ); \
          sdkRc_ = ( call );                                                       \
       }                                                                           \
       sdkRc_; } )

#define SDK_CALL_TRACE_( text, rc, suffix )                                        \
   do {                                                                            \
      if ( TRACE_CH_ON( ::Tessel::sdkCallChannel, 4 ) ) {                          \
         ::Tessel::sdkCallTrace( __FILE_NAME__, __LINE__, text, rc, suffix );      \
      }                                                                            \
   } while ( 0 )

#define SDK_CALL_TEXT_( text, call )                                               \
   ( { int sdkRc_ = SDK_CALL_RAW_( call );                                         \
       SDK_CALL_TRACE_( text, sdkRc_, "" );                                        \
       sdkRc_; } )

#define SDK_CALL_UNIT_TEXT_( unit, text, call, more )                              \
   ( { int sdkRc_ = SDK_CALL_TEXT_( text, call );                                  \
       if ( sdkRc_ < 0 ) {                                                         \
          ::Tessel::sdkCallErrorTraceMore(                                         \
             unit, text, sdkRc_,                                                   \
             [ & ]( std::ostream & sdkMore_ ) { sdkMore_ << more; } );             \
       }                                                                           \
       sdkRc_; } )

#define SDK_CALL( call ) SDK_CALL_TEXT_( #call, call )

#define SDK_CALL_CHECKED( call )                                                   \
   ( { int sdkRc_ = SDK_CALL_TEXT_( #call, call );                                 \
       if ( sdkRc_ < 0 ) {                                                         \
          ::Tessel::sdkCallFatalReport( __FILE_NAME__, __LINE__, #call, sdkRc_ );  \
          KILN_ASSERT( 0 );                                                        \
       }                                                                           \
       sdkRc_; } )

#define SDK_CALL_RESOURCE_OK( call )                                               \
   ( { int sdkRc_ = SDK_CALL_TEXT_( #call, call );                                 \
       if ( sdkRc_ < 0 && sdkRc_ != BCM_E_RESOURCE ) {                             \
          ::Tessel::sdkCallFatalReport( __FILE_NAME__, __LINE__, #call, sdkRc_ );  \
          KILN_ASSERT( 0 );                                                        \
       }                                                                           \
       sdkRc_; } )

#define SDK_CALL_NO_RC_CHECK( call )                                               \
   do {                                                                            \
      int sdkRc_ = SDK_CALL_RAW_( call );                                          \
      SDK_CALL_TRACE_( #call, sdkRc_, " no rc check" );                            \
   } while ( 0 )

#define SDK_CALL_UNIT_MORE( unit, call, more )                                     \
   SDK_CALL_UNIT_TEXT_( unit, #call, call, more )

#define SDK_CALL_UNIT( unit, call ) SDK_CALL_UNIT_TEXT_( unit, #call, call, "" )
