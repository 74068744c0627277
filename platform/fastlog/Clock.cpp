#include "platform/fastlog/Clock.h"

#include <cstdio>
#include <ctime>

namespace FastLog {

U64
nowNanos() {
   timespec now;
   clock_gettime( CLOCK_REALTIME, &now );
   return U64( now.tv_sec ) * 1000000000u + U64( now.tv_nsec );
}

std::string
timestampText( U64 nanos ) {
   const time_t seconds = time_t( nanos / 1000000000u );
   const U32 micros = U32( ( nanos % 1000000000u ) / 1000u );
   tm local;
   localtime_r( &seconds, &local );
   char text[ 48 ];
   std::snprintf( text, sizeof( text ), "%04d-%02d-%02d %02d:%02d:%02d.%06u",
                  local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                  local.tm_min, local.tm_sec, unsigned( micros ) );
   return text;
}

} // namespace FastLog
