#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "common/TesselSdkCall.h"
#include "platform/fastlog/TraceConfig.h"
#include "platform/fastlog/TraceSink.h"
#include "platform/kiln/ActivityLock.h"

namespace {

bool lockHeldDuringCall = true;

// Stands in for an SDK function: records whether the activity lock was
// released around it and returns the code it is given.
int
fakeSdkCall( int unit, int rc ) {
   ( void )unit;
   lockHeldDuringCall = Kiln::ActivityUnlockAnchor::lock().heldByThisThread();
   return rc;
}

std::string
at( int line ) {
   return std::string( "SdkCallTest.cpp:" ) + std::to_string( line ) + " ";
}

class SdkCall : public ::testing::Test {
 protected:
   FastLog::TraceCapture capture_{ "bcmFpCmd", FastLog::TraceLevels::all() };
   int unit = 0;
};

TEST_F( SdkCall, TracesTheCallAsWrittenWithItsCode ) {
   int line = __LINE__ + 1;
   int rc = SDK_CALL( fakeSdkCall( unit, 3 ) );
   EXPECT_EQ( 3, rc );
   EXPECT_THAT( capture_.texts(),
                ::testing::ElementsAre( at( line ) + "fakeSdkCall( unit, 3 ) (rc:3)" ) );
}

TEST_F( SdkCall, ReleasesTheActivityLockForTheCallAndTakesItBack ) {
   Kiln::ActivityLockGuard guard;
   lockHeldDuringCall = true;
   SDK_CALL( fakeSdkCall( unit, 0 ) );
   EXPECT_FALSE( lockHeldDuringCall );
   EXPECT_TRUE( Kiln::ActivityUnlockAnchor::lock().heldByThisThread() );
}

TEST_F( SdkCall, WorksWhereTheLockIsNotHeld ) {
   EXPECT_EQ( BCM_E_FULL, SDK_CALL( fakeSdkCall( unit, BCM_E_FULL ) ) );
   EXPECT_FALSE( Kiln::ActivityUnlockAnchor::lock().heldByThisThread() );
}

TEST_F( SdkCall, IgnoredResultsAreMarked ) {
   int line = __LINE__ + 1;
   SDK_CALL_NO_RC_CHECK( fakeSdkCall( unit, BCM_E_FAIL ) );
   EXPECT_THAT( capture_.texts(),
                ::testing::ElementsAre( at( line ) +
                                        "fakeSdkCall( unit, BCM_E_FAIL ) (rc:-11) no rc check" ) );
}

TEST_F( SdkCall, UnitFormTracesFailuresOnly ) {
   unit = 2;
   EXPECT_EQ( 0, SDK_CALL_UNIT( unit, fakeSdkCall( unit, 0 ) ) );
   EXPECT_EQ( 1u, capture_.texts().size() );
   capture_.clear();
   int line = __LINE__ + 1;
   EXPECT_EQ( -7, SDK_CALL_UNIT_MORE( unit, fakeSdkCall( unit, -7 ), " for entryId: " << 100 ) );
   EXPECT_THAT( capture_.texts(),
                ::testing::ElementsAre(
                   at( line ) + "fakeSdkCall( unit, -7 ) (rc:-7)",
                   "Unit: 2 fakeSdkCall( unit, -7 ) API ERROR: (rc:-7) for entryId: 100" ) );
}

#define FAKE_PRESEL_FLAG 0x40

TEST_F( SdkCall, MacrosInsideTheCallKeepTheirNamesInEveryForm ) {
   unit = 1;
   SDK_CALL( fakeSdkCall( unit | FAKE_PRESEL_FLAG, 0 ) );
   SDK_CALL_CHECKED( fakeSdkCall( unit | FAKE_PRESEL_FLAG, 0 ) );
   SDK_CALL_NO_RC_CHECK( fakeSdkCall( unit | FAKE_PRESEL_FLAG, 0 ) );
   SDK_CALL_UNIT( unit, fakeSdkCall( unit | FAKE_PRESEL_FLAG, -4 ) );
   SDK_CALL_UNIT_MORE( unit, fakeSdkCall( unit | FAKE_PRESEL_FLAG, -4 ), "" );
   auto texts = capture_.texts();
   ASSERT_EQ( 7u, texts.size() );
   for ( const auto & text : texts ) {
      EXPECT_THAT( text, ::testing::HasSubstr( "fakeSdkCall( unit | FAKE_PRESEL_FLAG, " ) );
   }
}

TEST_F( SdkCall, CheckedCallPassesSuccessThrough ) {
   EXPECT_EQ( 5, SDK_CALL_CHECKED( fakeSdkCall( unit, 5 ) ) );
}

TEST_F( SdkCall, ResourceFormHandsExhaustionToTheCaller ) {
   EXPECT_EQ( BCM_E_RESOURCE, SDK_CALL_RESOURCE_OK( fakeSdkCall( unit, BCM_E_RESOURCE ) ) );
   EXPECT_EQ( 2, SDK_CALL_RESOURCE_OK( fakeSdkCall( unit, 2 ) ) );
   EXPECT_EQ( 2u, capture_.texts().size() );
}

void
resourceFormFailure( int unit ) {
   SDK_CALL_RESOURCE_OK( fakeSdkCall( unit, BCM_E_BUSY ) );
}

TEST( SdkCallDeathTest, ResourceFormIsFatalForOtherCodes ) {
   int line = __LINE__ - 4;
   EXPECT_DEATH( resourceFormFailure( 0 ),
                 at( line ) + "fakeSdkCall\\( unit, BCM_E_BUSY \\) API ERROR:.* \\(-[0-9]+\\)\n"
                              ".*resourceFormFailure\\(int\\): Assertion '0' failed" );
}

void
checkedFailure( int unit ) {
   SDK_CALL_CHECKED( fakeSdkCall( unit, BCM_E_RESOURCE ) );
}

TEST( SdkCallDeathTest, CheckedFailureReportsTheCallAndAbortsInTheCaller ) {
   int line = __LINE__ - 4;
   EXPECT_DEATH( checkedFailure( 0 ),
                 at( line ) + "fakeSdkCall\\( unit, BCM_E_RESOURCE \\) API ERROR:No resources "
                              "for operation \\(-14\\)\n.*void \\{anonymous\\}::checkedFailure"
                              "\\(int\\): Assertion '0' failed" );
}

} // namespace
