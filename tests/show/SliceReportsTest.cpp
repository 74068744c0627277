// The bank summary and the raw slice table: their text against the slices
// the chip model gives the groups, and their failure paths.
#include <algorithm>
#include <map>

#include "manager/ReservationLayout.h"
#include "platform/fastlog/TraceSink.h"
#include "show/TesselTcamShow.h"
#include "tests/show/ShowFixture.h"

namespace {

using namespace ShowTest;

const std::string dashes = "--------------------------------------------\n";
const std::string summaryHead =
   "=== TCAM summary for switch sw1 ===\n" + dashes + " Banks           Used By\n" + dashes;

// "a, b, ..." for the slices the model gave the group.
std::string
banksOf( ManagerBox & m, U32 sdkGroupId ) {
   const ChipModel::Group * group = m.group( sdkGroupId );
   std::string banks;
   for ( U32 first : group->chain ) {
      for ( U32 k = 0; k < group->width; ++k ) {
         banks += ( banks.empty() ? "" : ", " ) + std::to_string( first + k );
      }
   }
   return banks;
}

std::string
summary( ManagerBox & m ) {
   return written( [ & ]( U32 fd ) { m.manager->showSummaryTcamUsage( "sw1", fd, 0 ); } );
}

std::string
row( const std::string & banks, const std::string & name ) {
   char line[ 256 ];
   std::snprintf( line, sizeof line, " %-15s %s\n", banks.c_str(), name.c_str() );
   return line;
}

// The names of the reservations the unit keeps in a group, in table order.
std::vector< std::string >
keptReservations( ManagerBox & m, U32 group ) {
   std::vector< std::string > names;
   for ( U32 i = 0; i < numTcamReservations(); ++i ) {
      const TcamReservation * row = getTcamReservation( i );
      if ( U32( row->groupId ) == group &&
           reservationKept( *m.manager->chipInfo( 0 ), row->featureId ) ) {
         names.push_back( row->name );
      }
   }
   return names;
}

// The groups reserved at start-up (the control-plane groups 2 and 6) are
// each shared by several reservations; the IP ACL group has one.
TEST( BankSummaryTest, EachSetOfBanksShowsTheFirstReservationThatUsesIt ) {
   ManagerBox m{ { "single" } };
   ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_IP_ACL_ ) );
   ASSERT_GT( keptReservations( m, IFP_GROUP_L2CTL_L3ROUTING_ ).size(), 1u );
   std::map< std::string, std::string > rows;
   for ( U32 group : { IFP_GROUP_L3CTRL_SNOOPING_HELM_, IFP_GROUP_L2CTL_L3ROUTING_,
                       IFP_GROUP_IP_ACL_ } ) {
      ASSERT_TRUE( m.group( group ) ) << group;
      rows.emplace( banksOf( m, group ), keptReservations( m, group ).at( 0 ) );
   }
   ASSERT_EQ( 3u, rows.size() );
   std::string expected = summaryHead;
   for ( const auto & [ banks, name ] : rows ) {
      expected += row( banks, name );
   }
   EXPECT_EQ( expected + dashes, summary( m ) );
}

TEST( BankSummaryTest, FieldControlFailuresEndTheReportAfterItsHeading ) {
   const std::vector< std::pair< std::string, std::string > > failures = {
      { "bcm_field_control_get", " Cannot get field control structure " },
      { "bcm_field_control_lock", " unable to acquire FP_LOCK" },
      { "bcm_field_group_mode_slice_count_get", " Cannot get group slice count " } };
   for ( const auto & [ call, text ] : failures ) {
      ManagerBox m{ { "single" } };
      ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_IP_ACL_ ) );
      FastLog::TraceCapture capture( "TesselTcamShow", FastLog::TraceLevels::only( 8 ) );
      m.box.failCall( 0, call, 1, BCM_E_INTERNAL );
      EXPECT_EQ( summaryHead, summary( m ) ) << call;
      std::vector< std::string > texts = capture.texts();
      EXPECT_NE( texts.end(), std::find( texts.begin(), texts.end(),
                                         "Unit: 0 showSummaryTcamUsageHelper" + text ) )
         << call;
      EXPECT_NE( texts.end(),
                 std::find( texts.begin(), texts.end(),
                            "Unit: 0 showSummaryTcamUsage showSummaryTcamUsageHelper error" ) );
      // The field-processor lock was given back.
      EXPECT_EQ( BCM_E_PARAM, m.sdk( [] { return bcm_field_control_unlock( 0 ); } ) ) << call;
   }
}

const char * const singleRaw = R"(-----------------------------------------------
|Stage                                    IFP |
-----------------------------------------------
|              SliceNumber |  Total |    Free |
-----------------------------------------------
|                        0 |    256 |     253 |
|                        1 |    256 |     253 |
|                        2 |    256 |     256 |
|                        3 |    256 |     256 |
|                        4 |    256 |     256 |
|                        5 |    256 |     256 |
|                        6 |    256 |     256 |
|                        7 |    256 |     256 |
|                        8 |    256 |     256 |
|                        9 |    256 |     256 |
|                       10 |    256 |     256 |
|                       11 |    256 |     256 |
-----------------------------------------------
|                          |   3072 |    3066 |
-----------------------------------------------
-----------------------------------------------
|Stage                                    VFP |
-----------------------------------------------
|              SliceNumber |  Total |    Free |
-----------------------------------------------
|                        0 |    256 |     256 |
|                        1 |    256 |     256 |
|                        2 |    256 |     256 |
|                        3 |    256 |     256 |
-----------------------------------------------
|                          |   1024 |    1024 |
-----------------------------------------------
-----------------------------------------------
|Stage                                    EFP |
-----------------------------------------------
|              SliceNumber |  Total |    Free |
-----------------------------------------------
|                        0 |    256 |     256 |
|                        1 |    256 |     256 |
|                        2 |    256 |     256 |
|                        3 |    256 |     256 |
-----------------------------------------------
|                          |   1024 |    1024 |
-----------------------------------------------
)";

// On a bare unit (no reservations made at start-up), three entries in the
// IP ACL group's double-wide rows.
TEST( RawSliceTableTest, EveryStageWithItsSlicesAndTotals ) {
   ManagerBox m{ { "single" }, true, Reservations::release };
   ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_IP_ACL_ ) );
   int group = IFP_GROUP_IP_ACL_;
   for ( int entry = 1; entry <= 3; ++entry ) {
      ASSERT_EQ( BCM_E_NONE,
                 m.sdk( [ & ] { return bcm_field_entry_create_id( 0, group, 0x800000 + entry ); } ) );
   }
   EXPECT_EQ( singleRaw, tcamUsage( 0 ).str() );
   EXPECT_EQ( singleRaw, written( [ & ]( U32 fd ) { m.manager->showRawTcamUsage( "sw1", fd, 0 ); } ) );
}

size_t
occurrences( const std::string & text, const std::string & part ) {
   size_t count = 0;
   for ( size_t at = text.find( part ); at != std::string::npos; at = text.find( part, at + 1 ) ) {
      ++count;
   }
   return count;
}

// The THx-like chip counts IFP slices in half rows: the report halves the
// slice sizes and the total, not the free counts.
TEST( RawSliceTableTest, HalfRowChipsShowTheirIfpSlicesHalved ) {
   ManagerBox m{ { "thx" }, true, Reservations::release };
   const ChipModel::Profile & thx = m.box.unit( 0 ).profile();
   const ChipModel::StageProfile & ifp = thx.stages.at( 0 );
   ASSERT_EQ( 768u, ifp.entriesPerSlice ); // the field control says 1536 half rows
   U32 slices = ifp.slicesPerPipe * thx.pipes;
   std::string text = tcamUsage( 0 ).str();
   EXPECT_EQ( slices, occurrences( text, " |    768 |     768 |\n" ) );
   char total[ 64 ];
   std::snprintf( total, sizeof total, "|%25s |%7u |%8u |\n", "", slices * 768, slices * 768 );
   EXPECT_NE( std::string::npos, text.find( total ) ) << total;
   EXPECT_EQ( 8u, occurrences( text, " |    512 |     512 |\n" ) ); // VFP and EFP as they are
}

TEST( RawSliceTableTest, AStageTheQueryDoesNotReportIsLeftOut ) {
   ManagerBox m{ { "th3" } };
   std::string text = tcamUsage( 0 ).str();
   EXPECT_EQ( 3u, occurrences( text, "|Stage" ) );
   EXPECT_EQ( 1u, occurrences( text, "IFP |" ) );
   EXPECT_EQ( std::string::npos, text.find( "CLASS" ) );
}

TEST( RawSliceTableDeathTest, AFailingCapacityQueryIsFatal ) {
   ManagerBox m{ { "single" } };
   m.box.failCall( 0, "oberon_bcm_tcam_capacity_info_get", 1, BCM_E_INTERNAL );
   EXPECT_DEATH( tcamUsage( 0 ), "TesselTcamRaw.cpp:[0-9]+ oberon_bcm_tcam_capacity_info_get\\( "
                                 "unit, &info \\) API ERROR:.* \\(-[0-9]+\\)" );
}

TEST( ReservationListingTest, EveryRowAsNameAndAssignmentEndedByAHash ) {
   std::string text = getTcamReservationData().str();
   EXPECT_EQ( 0u, text.find( "OpenFlow UDF 75#OpenFlow VXLAN UDF 76#" ) );
   EXPECT_EQ( numTcamReservations(), occurrences( text, "#" ) );
   const TcamReservation * last = getTcamReservation( numTcamReservations() - 1 );
   std::string tail = std::string( last->name ) + " " + std::to_string( last->featureId ) + "#";
   EXPECT_EQ( text.size() - tail.size(), text.rfind( tail ) );
}

} // namespace
