// Helpers shared by the FastLog tests.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>

#include "platform/fastlog/TraceConfig.h"

namespace FastLogTest {

// Every test starts with all channels off, whatever TESSEL_TRACE said, and
// leaves the rules as it found them.
class TraceTest : public ::testing::Test {
 protected:
   void SetUp() override { saved_ = FastLog::traceRules(); FastLog::traceLevelsReset(); }
   void TearDown() override { FastLog::traceRulesIs( saved_ ); }

 private:
   std::vector< FastLog::TraceRule > saved_;
};

// Collects what is written to descriptor 2 while it lives.
class StderrCapture {
 public:
   StderrCapture() {
      char path[] = "/tmp/fastlog-stderr-XXXXXX";
      fd_ = mkstemp( path );
      path_ = path;
      fflush( stderr );
      saved_ = dup( 2 );
      dup2( fd_, 2 );
   }
   ~StderrCapture() {
      restore();
      close( fd_ );
      unlink( path_.c_str() );
   }
   std::string
   text() {
      restore();
      std::ifstream file( path_ );
      std::stringstream text;
      text << file.rdbuf();
      return text.str();
   }

 private:
   void
   restore() {
      if ( saved_ >= 0 ) {
         fflush( stderr );
         dup2( saved_, 2 );
         close( saved_ );
         saved_ = -1;
      }
   }
   int fd_ = -1;
   int saved_ = -1;
   std::string path_;
};

// `text` with every time stamp ("2024-05-01 12:34:56.123456") replaced by
// "<ts>", so that whole lines can be compared exactly.
inline std::string
maskTimestamps( const std::string & text ) {
   static const char shape[] = "dddd-dd-dd dd:dd:dd.dddddd";
   const size_t width = sizeof( shape ) - 1;
   auto stampAt = [ & ]( size_t pos ) {
      for ( size_t i = 0; i < width; ++i ) {
         const char c = text[ pos + i ];
         if ( shape[ i ] == 'd' ? !( c >= '0' && c <= '9' ) : c != shape[ i ] ) {
            return false;
         }
      }
      return true;
   };
   std::string masked;
   for ( size_t pos = 0; pos < text.size(); ) {
      if ( pos + width <= text.size() && stampAt( pos ) ) {
         masked += "<ts>";
         pos += width;
      } else {
         masked += text[ pos++ ];
      }
   }
   return masked;
}

} // namespace FastLogTest
