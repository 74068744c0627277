#include "common/TesselSdkCall.h"

#include <cstdio>

#include "platform/fastlog/Trace.h"

namespace Tessel {

// Every SDK call of the library is traced on this channel.
FastLog::TraceChannel sdkCallChannel( "bcmFpCmd" );

void
sdkCallTrace( const char * file, int line, const char * callText, int rc,
              const char * suffix ) {
   TRACE_CH( sdkCallChannel, 4,
             file << ":" << line << " " << callText << " (rc:" << rc << ")" << suffix );
}

void
sdkCallFatalReport( const char * file, int line, const char * callText, int rc ) {
   std::fprintf( stderr, "%s:%d %s API ERROR:%s (%d)\n", file, line, callText,
                 bcm_errmsg( rc ), rc );
   std::fflush( stderr );
}

void
sdkCallErrorTrace( U32 unit, const char * callText, int rc, const std::string & more ) {
   TRACE_CH( sdkCallChannel, 0,
             "Unit: " << unit << " " << callText << " API ERROR: (rc:" << rc << ")"
                      << more );
}

} // namespace Tessel
