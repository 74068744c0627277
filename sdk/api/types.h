// Basic value types of the chip SDK: ports, VLANs, addresses and port
// bitmaps. Plain C layouts; the functions are declared extern "C".
#pragma once

#include <stdint.h>

#define BCM_PBMP_PORT_MAX 224 // 7 words of 32 ports
#define BCM_PIPES_MAX 8       // pipes a unit may have

typedef int bcm_port_t;
typedef int bcm_module_t;
typedef int bcm_trunk_t;
typedef int bcm_l4_port_t;
typedef uint16_t bcm_vlan_t;
typedef uint16_t bcm_ethertype_t;
typedef uint32_t bcm_ip_t; // host byte order: 10.0.0.1 is 0x0a000001
typedef uint8_t bcm_ip6_t[ 16 ]; // network byte order
typedef uint8_t bcm_mac_t[ 6 ];  // network byte order

// A set of ports, one bit per port number: port p is bit p % 32 of word p / 32.
typedef struct _shr_pbmp {
   uint32_t pbits[ 7 ];
} _shr_pbmp_t;
typedef _shr_pbmp_t bcm_pbmp_t;

// Size of the buffer _shr_pbmp_format() writes: "0x", 56 hex digits, NUL.
#define _SHR_PBMP_FMT_LEN 59

#define BCM_PBMP_WORD_MAX 7
#define BCM_PBMP_CLEAR( bm )                                                       \
   do {                                                                            \
      for ( int _w = 0; _w < BCM_PBMP_WORD_MAX; ++_w ) {                           \
         ( bm ).pbits[ _w ] = 0;                                                   \
      }                                                                            \
   } while ( 0 )
#define BCM_PBMP_PORT_ADD( bm, port )                                              \
   ( ( bm ).pbits[ ( port ) / 32 ] |= ( 1u << ( ( port ) % 32 ) ) )
#define BCM_PBMP_PORT_REMOVE( bm, port )                                           \
   ( ( bm ).pbits[ ( port ) / 32 ] &= ~( 1u << ( ( port ) % 32 ) ) )
#define BCM_PBMP_MEMBER( bm, port )                                                \
   ( ( ( bm ).pbits[ ( port ) / 32 ] & ( 1u << ( ( port ) % 32 ) ) ) != 0 )

extern "C" {

// Writes the bitmap into buf (at least _SHR_PBMP_FMT_LEN bytes) as "0x"
// followed by the seven words in hex, most significant word first; returns buf.
char * _shr_pbmp_format( _shr_pbmp_t bmp, char * buf );

// True (1) when no port is set.
int _shr_pbmp_is_null( _shr_pbmp_t bmp );

// Number of ports set.
int _shr_pbmp_count( _shr_pbmp_t bmp );

}
