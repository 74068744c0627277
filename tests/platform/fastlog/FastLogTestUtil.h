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

// A timestamp as lines start with it.
inline const char * const timestampPattern =
   "[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{6}";

} // namespace FastLogTest
