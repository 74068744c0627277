// Every SDK call site the scenario reaches, failed once with the resource
// code and once with a generic error: the library carries on (and then its
// teardown leaves nothing in the chip) or stops with its fatal text.
//
// A site is a call of the library's source position in one phase of the
// scenario, on the base object or on a pipe copy; its first call is the one
// failed. TESSEL_PROOF_SAMPLE=n runs every n-th site (default 1; 8 under
// the address sanitizer); TESSEL_PROOF_REPORT=<file> appends the outcomes
// as markdown tables (docs/reliability.md).
#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <sys/wait.h>
#include <cstdlib>
#include <fstream>
#include <set>
#include <tuple>

#include "catalogue/TcamGroupId.h"
#include "platform/fastlog/TraceSink.h"
#include "sdk/api/error.h"
#include "tests/common/RegexText.h"
#include "tests/platform/vault/VaultTestSupport.h"
#include "tests/proof/Expectations.h"
#include "tests/proof/ProofScenario.h"

namespace Proof {
namespace {

constexpr U32 chunkGroup = Tessel::IFP_GROUP_QOS_; // the scenario's chunk manager's
constexpr int codes[] = { BCM_E_RESOURCE, BCM_E_INTERNAL };

U32
sampleStride() {
   if ( const char * text = std::getenv( "TESSEL_PROOF_SAMPLE" ) ) {
      return std::max( 1, std::atoi( text ) );
   }
#if defined( __SANITIZE_ADDRESS__ )
   return 8;
#else
   return 1;
#endif
}

// The first call of each site, in the order the scenario reaches them.
std::vector< SiteCall >
sitesOf( const std::vector< SiteCall > & calls, bool tablesOnly ) {
   std::set< std::tuple< std::string, std::string, bool > > seen;
   std::vector< SiteCall > sites;
   for ( const SiteCall & call : calls ) {
      if ( tablesOnly != ( call.phase == "tables" ) ) {
         continue;
      }
      if ( seen.insert( { call.phase, call.where, call.pipeCopy || call.repeated } ).second ) {
         sites.push_back( call );
      }
   }
   return sites;
}

std::vector< SiteCall >
record( const std::string & profile, bool tables, const std::string & prefix ) {
   Scenario scenario( profile, tables, prefix );
   SiteRecorder recorder( scenario.box(), "ProofScenario.cpp" );
   scenario.run( [ & ]( const std::string & phase ) { recorder.phaseIs( phase ); } );
   return recorder.calls();
}

struct Carried {
   bool fired = false;   // the fault was met
   bool traced = false;  // an "API ERROR" line was traced
   std::string left;     // what the chip still holds after teardown
};

Carried
runFaulted( const std::string & profile, const SiteCall & site, int rc,
            const std::string & prefix ) {
   Carried result;
   FastLog::TraceCapture errors( "*", FastLog::TraceLevels::only( 0 ) );
   Scenario scenario( profile, site.phase == "tables", prefix );
   scenario.box().failCall( site.unit, site.function, site.nth, rc );
   scenario.run();
   result.fired = scenario.box().pendingFaults() == 0;
   for ( const std::string & text : errors.texts() ) {
      result.traced = result.traced || text.find( "API ERROR" ) != std::string::npos;
   }
   ChipModel::ObjectCounts left = scenario.box().counts();
   result.left = left.total() ? left.text() : "";
   return result;
}

// One row of the report.
struct Row {
   const SiteCall * site;
   std::string outcomes[ 2 ];
};

std::string
outcomeText( const Expected & expected, const Carried & carried, int rc ) {
   if ( expected.fatal ) {
      std::string death = expected.death;
      size_t error = death.find( " API ERROR:" );
      return "fatal: `" + ( error == std::string::npos ? death : death.substr( error + 1 ) ) + "`";
   }
   (void)rc;
   return carried.traced ? "carries on, traced" : "carries on";
}

std::string
givenBackText() {
   return "carries on; what it could not give back stays";
}

void
report( const std::string & profile, const std::vector< Row > & rows ) {
   const char * path = std::getenv( "TESSEL_PROOF_REPORT" );
   if ( !path ) {
      return;
   }
   std::ofstream out( path, std::ios::app );
   out << "\n### " << profile << "\n\n"
       << "| call site | call | phase | out of resources | other error |\n"
       << "|---|---|---|---|---|\n";
   for ( const Row & row : rows ) {
      const SiteCall & s = *row.site;
      out << "| " << s.where << ( s.pipeCopy || s.repeated ? " (pipe copy)" : "" ) << " | `"
          << s.function << "` #" << s.nth << " | " << s.phase << " | " << row.outcomes[ 0 ]
          << " | " << row.outcomes[ 1 ] << " |\n";
   }
}

class FaultSweep : public testing::TestWithParam< std::string > {
 protected:
   void
   sweep( const SiteCall & site, Row & row ) {
      for ( int i = 0; i < 2; ++i ) {
         int rc = codes[ i ];
         std::string what = site.where + " " + site.function + " #" + std::to_string( site.nth ) +
                            " in " + site.phase + " failing with " + std::to_string( rc );
         SCOPED_TRACE( what );
         if ( std::getenv( "TESSEL_PROOF_VERBOSE" ) ) {
            std::fprintf( stderr, "fault: %s\n", what.c_str() );
         }
         Expected expected = expectedOutcome( site, rc, chunkGroup );
         Carried carried;
         if ( expected.fatal ) {
            EXPECT_DEATH( runFaulted( GetParam(), site, rc, prefix ),
                          TestText::literalRegex( expected.death ) );
         } else if ( givesBack( site ) ) {
            // What could not be given back stays in the chip, and a later
            // release that needs it gone (a checker an entry still uses)
            // may stop on the SDK's refusal: either end is accepted, in a
            // process of its own.
            EXPECT_EXIT( ( runFaulted( GetParam(), site, rc, prefix ), std::exit( 0 ) ),
                         []( int status ) {
                            return ( WIFEXITED( status ) && WEXITSTATUS( status ) == 0 ) ||
                                   ( WIFSIGNALED( status ) && WTERMSIG( status ) == SIGABRT );
                         },
                         "" );
         } else {
            carried = runFaulted( GetParam(), site, rc, prefix );
            EXPECT_TRUE( carried.fired );
            EXPECT_EQ( "", carried.left );
         }
         row.outcomes[ i ] = !expected.fatal && givesBack( site )
                                ? givenBackText()
                                : outcomeText( expected, carried, rc );
      }
   }

   VaultTest::TestPrefix prefix;
};

TEST_P( FaultSweep, EverySiteCarriesOnOrStopsWithItsText ) {
   testing::FLAGS_gtest_death_test_style = "fast";
   std::vector< SiteCall > sites = sitesOf( record( GetParam(), false, prefix ), false );
   std::vector< SiteCall > tables = sitesOf( record( GetParam(), true, prefix ), true );
   sites.insert( sites.end(), tables.begin(), tables.end() );
   ASSERT_GT( sites.size(), 50u );
   std::vector< Row > rows;
   U32 stride = sampleStride();
   for ( size_t i = 0; i < sites.size(); i += stride ) {
      rows.push_back( Row{ &sites[ i ], {} } );
      sweep( sites[ i ], rows.back() );
   }
   report( GetParam(), rows );
}

INSTANTIATE_TEST_SUITE_P( Profiles, FaultSweep,
                          testing::Values( "single", "trident3", "thx", "th3" ),
                          []( const testing::TestParamInfo< std::string > & info ) {
                             return info.param;
                          } );

} // namespace
} // namespace Proof
