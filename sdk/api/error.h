// Result codes of the chip SDK. Every bcm_* call returns one of these;
// negative values are errors. bcm_errmsg() gives the SDK's text for a code.
#pragma once

#define BCM_E_NONE 0
#define BCM_E_INTERNAL ( -1 )
#define BCM_E_MEMORY ( -2 )
#define BCM_E_UNIT ( -3 )
#define BCM_E_PARAM ( -4 )
#define BCM_E_EMPTY ( -5 )
#define BCM_E_FULL ( -6 )
#define BCM_E_NOT_FOUND ( -7 )
#define BCM_E_EXISTS ( -8 )
#define BCM_E_TIMEOUT ( -9 )
#define BCM_E_BUSY ( -10 )
#define BCM_E_FAIL ( -11 )
#define BCM_E_DISABLED ( -12 )
#define BCM_E_BADID ( -13 )
#define BCM_E_RESOURCE ( -14 )
#define BCM_E_CONFIG ( -15 )
#define BCM_E_UNAVAIL ( -16 )
#define BCM_E_INIT ( -17 )
#define BCM_E_PORT ( -18 )
#define BCM_E_LIMIT ( -19 ) // one past the last code

#define BCM_SUCCESS( rc ) ( ( rc ) >= 0 )
#define BCM_FAILURE( rc ) ( ( rc ) < 0 )

extern "C" {

// The SDK's text for a result code; "Unknown error" for codes it does not know.
// The returned string is static.
const char * bcm_errmsg( int rc );

}
