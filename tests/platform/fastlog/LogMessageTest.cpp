// Named log messages: the line written, placeholders, counts per name and
// where the lines go.
#include <gmock/gmock.h>
#include <gtest/gtest.h>


#include "platform/fastlog/LogMessage.h"
#include "tests/platform/fastlog/FastLogTestUtil.h"

namespace {

constexpr FastLog::LogMessageDef udfHwResourceFull{
   "TESSEL_UDF_HW_RESOURCE_FULL", 3,
   "The switch is unable to program UDF due to insufficient hardware resources.",
   "Reconfigure other ACLs or features that use UDF to free up UDF hardware resources." };
constexpr FastLog::LogMessageDef udfHwResourceNormal{
   "TESSEL_UDF_HW_RESOURCE_NORMAL", 3,
   "The switch was able to program all the UDFs in the hardware.", "" };
constexpr FastLog::LogMessageDef groupFull{ "TESSEL_TCAM_GROUP_FULL2", 4,
                                            "Group %s on unit %s is 100%% full.", "" };

class LogMessageTest : public ::testing::Test {
 protected:
   void SetUp() override { FastLog::logMessageCountsReset(); }
   void TearDown() override { FastLog::logMessageCountsReset(); }
};

TEST_F( LogMessageTest, CountsPerNameUntilReset ) {
   FastLog::LogCapture capture;
   EXPECT_EQ( 0u, FastLog::logMessageCount( "TESSEL_UDF_HW_RESOURCE_FULL" ) );
   FastLog::logMessage( udfHwResourceFull );
   FastLog::logMessage( udfHwResourceFull );
   FastLog::logMessage( udfHwResourceNormal );
   EXPECT_EQ( 2u, FastLog::logMessageCount( "TESSEL_UDF_HW_RESOURCE_FULL" ) );
   EXPECT_EQ( 1u, FastLog::logMessageCount( "TESSEL_UDF_HW_RESOURCE_NORMAL" ) );
   EXPECT_EQ( 0u, FastLog::logMessageCount( "TESSEL_UDF_HW_RESOURCE" ) );
   FastLog::logMessageCountsReset();
   EXPECT_EQ( 0u, FastLog::logMessageCount( "TESSEL_UDF_HW_RESOURCE_FULL" ) );
   EXPECT_EQ( 3u, capture.messages().size() );
}

TEST_F( LogMessageTest, LineCarriesNameSeverityAndText ) {
   FastLog::LogCapture capture;
   FastLog::logMessage( udfHwResourceFull );
   const auto messages = capture.messages();
   ASSERT_EQ( 1u, messages.size() );
   EXPECT_EQ( "TESSEL_UDF_HW_RESOURCE_FULL", messages[ 0 ].name );
   EXPECT_EQ( 3u, messages[ 0 ].severity );
   EXPECT_EQ( "The switch is unable to program UDF due to insufficient hardware resources.",
              messages[ 0 ].text );
   EXPECT_EQ( "<ts> TESSEL_UDF_HW_RESOURCE_FULL (3 error): The switch is unable to program UDF "
              "due to insufficient hardware resources.",
              FastLogTest::maskTimestamps( messages[ 0 ].line ) );
}

TEST_F( LogMessageTest, PlaceholdersAreFilledInOrder ) {
   FastLog::LogCapture capture;
   FastLog::logMessage( groupFull, "IFP_GROUP_ACL", 0 );
   ASSERT_EQ( 1u, capture.messages().size() );
   EXPECT_EQ( "Group IFP_GROUP_ACL on unit 0 is 100% full.", capture.messages()[ 0 ].text );
   EXPECT_EQ( 2u, groupFull.placeholders );
   EXPECT_EQ( "a%b", FastLog::fillPlaceholders( "a%%b", {} ) );
}

TEST_F( LogMessageTest, StandardErrorByDefaultAndAnyDescriptorOnRequest ) {
   {
      FastLogTest::StderrCapture stderrCapture;
      FastLog::logMessage( udfHwResourceNormal );
      EXPECT_EQ( "<ts> TESSEL_UDF_HW_RESOURCE_NORMAL (3 error): The switch was able to program "
                 "all the UDFs in the hardware.\n",
                 FastLogTest::maskTimestamps( stderrCapture.text() ) );
   }
   int pipeFds[ 2 ];
   ASSERT_EQ( 0, pipe( pipeFds ) );
   auto previous = FastLog::logSinkIs( std::make_shared< FastLog::FdLogSink >( pipeFds[ 1 ] ) );
   FastLog::logMessage( udfHwResourceFull );
   FastLog::logSinkIs( previous );
   close( pipeFds[ 1 ] );
   char buffer[ 512 ] = {};
   ASSERT_GT( read( pipeFds[ 0 ], buffer, sizeof( buffer ) - 1 ), 0 );
   close( pipeFds[ 0 ] );
   EXPECT_THAT( buffer, ::testing::EndsWith( "TESSEL_UDF_HW_RESOURCE_FULL (3 error): The switch "
                                             "is unable to program UDF due to insufficient "
                                             "hardware resources.\n" ) );
   EXPECT_EQ( 2u, FastLog::logMessageCount( "TESSEL_UDF_HW_RESOURCE_FULL" ) +
                     FastLog::logMessageCount( "TESSEL_UDF_HW_RESOURCE_NORMAL" ) );
}

TEST( LogMessageDeathTest, ArgumentsMustMatchPlaceholders ) {
   EXPECT_DEATH( FastLog::logMessage( groupFull, "only one" ),
                 "Assertion 'log message arguments do not match its %s placeholders' failed" );
   EXPECT_DEATH( FastLog::logMessage( udfHwResourceFull, 1 ),
                 "Assertion 'log message arguments do not match its %s placeholders' failed" );
}

} // namespace
