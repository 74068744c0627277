#pragma once

// The name of an enumeration value from its table, or null outside it.
template< int N >
const char *
nameOf( const char * const ( &table )[ N ], int value ) {
   return ( value >= 0 && value < N ) ? table[ value ] : nullptr;
}
