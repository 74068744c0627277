#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <random>
#include <sstream>

#include "examples/features/ClassBench.h"

using namespace Features;

namespace {

const std::string firstRule =
   "@237.73.3.4/32\t67.236.63.210/32\t0 : 65535\t1711 : 1711\t0x06/0xFF\t0x0000/0x0200\t";

TEST( ClassBenchRules, ReadsEveryFieldOfAFilterLine ) {
   auto rule = parseClassBenchRule( firstRule, "t:1" );
   EXPECT_EQ( 0xed490304u, rule.srcIp );
   EXPECT_EQ( 32u, rule.srcLen );
   EXPECT_EQ( 0x43ec3fd2u, rule.dstIp );
   EXPECT_EQ( 0, rule.srcPortLow );
   EXPECT_EQ( 65535, rule.srcPortHigh );
   EXPECT_EQ( 1711, rule.dstPortLow );
   EXPECT_EQ( 1711, rule.dstPortHigh );
   EXPECT_EQ( 6, rule.protocol );
   EXPECT_EQ( 0xff, rule.protocolMask );
   EXPECT_EQ( 0, rule.flags );
   EXPECT_EQ( 0x0200, rule.flagsMask );
}

TEST( ClassBenchRules, RefusesDamagedLinesNamingTheLine ) {
   struct Case {
      std::string line;
      std::string message;
   } cases[] = {
      { "237.73.3.4/32\t1.2.3.4/32\t0 : 1\t0 : 1\t0x06/0xFF\t0x0/0x0", "f:7: a filter line starts with '@'" },
      { "@237.73.3.4/32\t1.2.3.4/32\t0 : 1\t0 : 1\t0x06/0xFF", "f:7: a filter line has 6 fields, this one 5" },
      { "@237.73.3.4/33\t1.2.3.4/32\t0 : 1\t0 : 1\t0x06/0xFF\t0x0/0x0", "f:7: bad prefix length '33'" },
      { "@237.73.3.256/32\t1.2.3.4/32\t0 : 1\t0 : 1\t0x06/0xFF\t0x0/0x0", "f:7: bad address octet '256'" },
      { "@10.0.0.1/8\t1.2.3.4/32\t0 : 1\t0 : 1\t0x06/0xFF\t0x0/0x0", "f:7: host bits set past the prefix length in '10.0.0.1/8'" },
      { "@10.0.0.0/8\t1.2.3.4/32\t9 : 1\t0 : 1\t0x06/0xFF\t0x0/0x0", "f:7: port range '9 : 1' ends below its start" },
      { "@10.0.0.0/8\t1.2.3.4/32\t0 : 65536\t0 : 1\t0x06/0xFF\t0x0/0x0", "f:7: bad port '65536'" },
      { "@10.0.0.0/8\t1.2.3.4/32\t0 : 1\t0 : 1\t0x106/0xFF\t0x0/0x0", "f:7: bad protocol '106'" },
      { "@10.0.0.0/8\t1.2.3.4/32\t0 : 1\t0 : 1\t6/0xFF\t0x0/0x0", "f:7: bad protocol '6/0xFF'" },
   };
   for ( const auto & c : cases ) {
      try {
         parseClassBenchRule( c.line, "f:7" );
         ADD_FAILURE() << "accepted: " << c.line;
      } catch ( const ClassBenchError & e ) {
         EXPECT_EQ( c.message, e.what() );
      }
   }
}

TEST( ClassBenchTrace, ReadsHeadersAndRefusesBadOnes ) {
   std::istringstream in( "1923697128\t2273746465\t0\t1221\t6\t4294967295\t261\n\n"
                          "1\t2\t3\t4\t5\t6\n" );
   try {
      readClassBenchTrace( in, "trace" );
      ADD_FAILURE() << "a short line was accepted";
   } catch ( const ClassBenchError & e ) {
      EXPECT_STREQ( "trace:3: a trace line has 7 fields, this one 6", e.what() );
   }
   auto header = parseClassBenchHeader( "1923697128\t2273746465\t0\t1221\t6\t4294967295\t261", "t" );
   EXPECT_EQ( 1923697128u, header.srcIp );
   EXPECT_EQ( 1221, header.dstPort );
   EXPECT_EQ( 0xffffffffu, header.flags );
   EXPECT_EQ( 261u, header.ruleIndex );
   EXPECT_THROW( parseClassBenchHeader( "1 2 3 70000 5 6 7", "t" ), ClassBenchError );
   EXPECT_THROW( parseClassBenchHeader( "1 2 3 4 -5 6 7", "t" ), ClassBenchError );
}

TEST( ClassBenchFiles, MissingFileIsAClearError ) {
   try {
      readClassBenchRulesFile( "/nonexistent/acl" );
      ADD_FAILURE();
   } catch ( const ClassBenchError & e ) {
      EXPECT_STREQ( "/nonexistent/acl: cannot open", e.what() );
   }
}

// The prefixes of a range match exactly the ports of the range.
TEST( PortRangePrefixes, CoverExactlyTheRange ) {
   std::mt19937 random( 7 );
   std::vector< std::pair< U16, U16 > > ranges = {
      { 0, 65535 }, { 80, 80 }, { 1024, 65535 }, { 1, 65534 }, { 33434, 33600 }, { 0, 0 } };
   for ( int i = 0; i < 200; ++i ) {
      U16 a = static_cast< U16 >( random() ), b = static_cast< U16 >( random() );
      ranges.push_back( { std::min( a, b ), std::max( a, b ) } );
   }
   for ( auto [ low, high ] : ranges ) {
      auto prefixes = portRangePrefixes( low, high );
      EXPECT_LE( prefixes.size(), 30u );
      for ( U32 port = 0; port <= 0xffff; port += ( port % 97 == 0 ) ? 1 : 13 ) {
         int hits = 0;
         for ( auto p : prefixes ) {
            hits += ( port & p.mask ) == p.value;
         }
         EXPECT_EQ( port >= low && port <= high ? 1 : 0, hits )
            << low << "-" << high << " port " << port;
      }
   }
   EXPECT_EQ( 1u, portRangePrefixes( 0, 65535 ).size() );
   EXPECT_EQ( 0, portRangePrefixes( 0, 65535 )[ 0 ].mask );
   EXPECT_EQ( 6u, portRangePrefixes( 1024, 65535 ).size() );
}

// The public rule sets, where the checkout has them beside it.
TEST( ClassBenchFiles, PublicSetsParseCompletely ) {
   const char * source = std::getenv( "TESSEL_SOURCE_DIR" );
   auto dir = std::filesystem::path( source ? source : "." ) / ".." / "shared" / "data" /
              "classbench";
   if ( !std::filesystem::exists( dir / "acl1_1k" ) ) {
      GTEST_SKIP() << "ClassBench data not found at " << dir << "; skipping";
   }
   struct Set {
      const char * name;
      size_t rules, headers;
   } sets[] = { { "acl1_1k", 878, 8780 }, { "fw1_1k", 761, 7610 }, { "ipc1_1k", 923, 9325 } };
   for ( const auto & set : sets ) {
      EXPECT_EQ( set.rules, readClassBenchRulesFile( ( dir / set.name ).string() ).size() );
      auto trace = readClassBenchTraceFile( ( dir / ( std::string( set.name ) + "_trace" ) ).string() );
      EXPECT_EQ( set.headers, trace.size() );
   }
}

} // namespace
