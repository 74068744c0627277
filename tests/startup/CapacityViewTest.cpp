// The operator's capacity table: order, alignment, percentages, and the
// warning boundary.
#include "startup/TesselTcamCapacityView.h"
#include "tests/common/Thrown.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

using namespace Hardware::Capacity;
using namespace Hardware::Capacity::Tessel;

namespace {

CapacityRow
row( U32 unit, const char * stage, const char * slice, U32 used, U32 free, U32 total,
     const char * group = "TesselTcamCapacity" ) {
   return CapacityRow{ CapacityKey( group, stage, unit, slice ),
                       CapacityFigures( used, free, 0, total ) };
}

// A stage row of `used` out of `total`.
std::vector< CapacityRow >
stageAt( U32 used, U32 total ) {
   return { row( 0, "IFP", "", used, total - used, total ) };
}

} // namespace

TEST( CapacityView, SortsByUnitStageAndSliceNumberWithTheStageTotalLast ) {
   // In the table's key order: names, not numbers.
   std::vector< CapacityRow > rows = {
      row( 0, "EFP", "", 0, 512, 512 ),           row( 0, "IFP", "", 770, 1534, 2304 ),
      row( 0, "IFP", "Slice-0", 768, 0, 768 ),    row( 0, "IFP", "Slice-10", 2, 766, 768 ),
      row( 0, "IFP", "Slice-2", 0, 768, 768 ),    row( 0, "VFP", "", 0, 0, 0 ),
      row( 1, "IFP", "", 1, 255, 256 ),           row( 12, "EFP", "Slice-0", 0, 512, 512 ),
      row( 0, "IFP", "x", 0, 1, 1, "Other" ),
   };
   EXPECT_EQ( "Unit  Stage  Slice     Used  Free  Total   Used%\n"
              "   0  IFP    Slice-0    768     0    768  100.0%\n"
              "   0  IFP    Slice-2      0   768    768    0.0%\n"
              "   0  IFP    Slice-10     2   766    768    0.3%\n"
              "   0  IFP    all        770  1534   2304   33.5%\n"
              "   0  VFP    all          0     0      0       -\n"
              "   0  EFP    all          0   512    512    0.0%\n"
              "   1  IFP    all          1   255    256    0.4%\n"
              "  12  EFP    Slice-0      0   512    512    0.0%\n",
              renderTesselTcamCapacity( rows ) );
}

TEST( CapacityView, OddRowNamesComeAfterTheNumberedSlices ) {
   std::vector< CapacityRow > rows = {
      row( 0, "XFP", "", 0, 1, 1 ),           row( 0, "IFP", "", 0, 1, 1 ),
      row( 0, "IFP", "Slice-x", 0, 1, 1 ),    row( 0, "IFP", "Slice-", 0, 1, 1 ),
      row( 0, "IFP", "Slice-3", 0, 1, 1 ),    row( 0, "IFP", "Slice-99999999999", 0, 1, 1 ),
   };
   std::string text = renderTesselTcamCapacity( rows );
   std::vector< size_t > at;
   for ( const char * name : { "Slice-3 ", "Slice-99999999999", "Slice- ", "Slice-x", "all",
                               "XFP" } ) {
      at.push_back( text.find( name ) );
   }
   EXPECT_THAT( at, ::testing::Each( ::testing::Ne( std::string::npos ) ) ) << text;
   EXPECT_TRUE( std::is_sorted( at.begin(), at.end() ) ) << text;
}

TEST( CapacityView, NothingPublished ) {
   EXPECT_EQ( "No TCAM capacity published.\n", renderTesselTcamCapacity( {} ) );
   EXPECT_EQ( "No TCAM capacity published.\n",
              renderTesselTcamCapacity( { row( 0, "IFP", "", 1, 1, 2, "Other" ) } ) );
}

TEST( CapacityView, PercentagesRoundUpButNeverToFull ) {
   const std::pair< CapacityFigures, const char * > cases[] = {
      { CapacityFigures( 0, 0, 0, 0 ), "-" },
      { CapacityFigures( 0, 10, 0, 10 ), "0.0%" },
      { CapacityFigures( 1, 9999, 0, 10000 ), "0.1%" },
      { CapacityFigures( 900, 100, 0, 1000 ), "90.0%" },
      { CapacityFigures( 9001, 999, 0, 10000 ), "90.1%" },
      { CapacityFigures( 9999, 1, 0, 10000 ), "99.9%" },
      { CapacityFigures( 10, 0, 0, 10 ), "100.0%" },
      { CapacityFigures( 0xffffffff, 0, 0, 0xffffffff ), "100.0%" },
   };
   for ( const auto & [ figures, text ] : cases ) {
      EXPECT_EQ( text, usedPercentText( figures ) ) << figures.valueText();
   }
}

TEST( CapacityView, WarnsAboveTheThresholdNotAtIt ) {
   EXPECT_TRUE( tcamCapacityWarnings( stageAt( 900, 1000 ) ).empty() ); // exactly 90%
   std::vector< TcamCapacityWarning > above = tcamCapacityWarnings( stageAt( 9001, 10000 ) );
   ASSERT_EQ( 1u, above.size() );
   EXPECT_EQ( "WARNING: unit 0 stage IFP is 90.1% used (threshold 90%)", above[ 0 ].text() );
   // One entry past 90% of a table whose 90% is not a whole entry.
   EXPECT_TRUE( tcamCapacityWarnings( stageAt( 691, 768 ) ).empty() ); // 89.97%
   EXPECT_EQ( 1u, tcamCapacityWarnings( stageAt( 692, 768 ) ).size() );

}

TEST( CapacityView, TheThresholdIsConfigurableAndChecked ) {
   std::vector< CapacityRow > rows = {
      row( 0, "IFP", "", 60, 40, 100 ), row( 0, "IFP", "Slice-0", 100, 0, 100 ),
      row( 1, "VFP", "", 51, 49, 100 ), row( 1, "EFP", "", 0, 0, 0 ),
   };
   std::string text = renderTesselTcamCapacity( rows, 50 );
   EXPECT_THAT( text, ::testing::EndsWith(
                         "WARNING: unit 0 stage IFP is 60.0% used (threshold 50%)\n"
                         "WARNING: unit 1 stage VFP is 51.0% used (threshold 50%)\n" ) );
   EXPECT_TRUE( tcamCapacityWarnings( rows ).empty() ); // a full slice is not a full stage
   EXPECT_EQ( 2u, tcamCapacityWarnings( rows, 0 ).size() );
   EXPECT_TRUE( tcamCapacityWarnings( { row( 0, "IFP", "", 10, 0, 10 ) }, 100 ).empty() );
   EXPECT_EQ( "capacity warning threshold must be 0 to 100 percent, not 101",
              TestText::thrownText< std::invalid_argument >(
                 [ & ] { renderTesselTcamCapacity( rows, 101 ); } ) );
}
