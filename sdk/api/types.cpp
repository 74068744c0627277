#include "sdk/api/types.h"

#include <cstdio>

extern "C" char *
_shr_pbmp_format( _shr_pbmp_t bmp, char * buf ) {
   char * out = buf;
   out += std::sprintf( out, "0x" );
   for ( int w = BCM_PBMP_WORD_MAX - 1; w >= 0; --w ) {
      out += std::sprintf( out, "%08x", static_cast< unsigned >( bmp.pbits[ w ] ) );
   }
   return buf;
}

extern "C" int
_shr_pbmp_is_null( _shr_pbmp_t bmp ) {
   for ( uint32_t word : bmp.pbits ) {
      if ( word ) {
         return 0;
      }
   }
   return 1;
}

extern "C" int
_shr_pbmp_count( _shr_pbmp_t bmp ) {
   int count = 0;
   for ( uint32_t word : bmp.pbits ) {
      count += __builtin_popcount( word );
   }
   return count;
}
