#include <gtest/gtest.h>

#include "sdk/api/error.h"

TEST( SdkErrors, EveryCodeHasItsText ) {
   EXPECT_STREQ( "Ok", bcm_errmsg( BCM_E_NONE ) );
   EXPECT_STREQ( "Invalid parameter", bcm_errmsg( BCM_E_PARAM ) );
   EXPECT_STREQ( "No resources for operation", bcm_errmsg( BCM_E_RESOURCE ) );
   EXPECT_STREQ( "Invalid port", bcm_errmsg( BCM_E_PORT ) );
   for ( int rc = BCM_E_PORT; rc <= BCM_E_NONE; ++rc ) {
      EXPECT_STRNE( "Unknown error", bcm_errmsg( rc ) ) << rc;
   }
}

TEST( SdkErrors, CodesOutsideTheTableAreUnknown ) {
   EXPECT_STREQ( "Unknown error", bcm_errmsg( BCM_E_LIMIT ) );
   EXPECT_STREQ( "Unknown error", bcm_errmsg( -1000 ) );
}
