#include "startup/TesselTcamCapacityView.h"

#include "platform/agent/CapacityVault.h"
#include "startup/TesselTcamCapacityNames.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <stdexcept>
#include <tuple>

namespace Hardware::Capacity::Tessel {

const char * const tesselTcamCapacityVaultPath = "capacity/tcam";

namespace {

constexpr size_t columns = 7;
typedef std::array< std::string, columns > Line;
// Unit and the figures read right-aligned, names left-aligned.
constexpr std::array< bool, columns > rightAligned = { true, false, false, true,
                                                       true, true,  true };

void
checkThreshold( U32 thresholdPercent ) {
   if ( thresholdPercent > 100 ) {
      throw std::invalid_argument( "capacity warning threshold must be 0 to 100 percent, not " +
                                   std::to_string( thresholdPercent ) );
   }
}

bool
isTcamStageRow( const CapacityRow & row ) {
   return row.key.featureGroup == tesselTcamCapacityFeatureGroup && row.key.row.empty();
}

// IFP, VFP, EFP in pipeline order, then stages this version does not know.
int
stageRank( const Kiln::String & stage ) {
   for ( int id = 0; id <= 2; ++id ) {
      if ( stage == tcamStageName( id ) ) {
         return id;
      }
   }
   return 3;
}

// "Slice-<n>" by n, other names after them by name, the stage's own row last.
std::tuple< int, U64, std::string >
sliceRank( const Kiln::String & row ) {
   if ( row.empty() ) {
      return { 2, 0, "" };
   }
   const std::string & name = row.str();
   const std::string prefix = "Slice-";
   U64 number = 0;
   if ( name.size() > prefix.size() && name.compare( 0, prefix.size(), prefix ) == 0 ) {
      const char * first = name.data() + prefix.size();
      const char * last = name.data() + name.size();
      auto [ end, error ] = std::from_chars( first, last, number );
      if ( error == std::errc() && end == last ) {
         return { 0, number, "" };
      }
   }
   return { 1, 0, name };
}

bool
displayOrder( const CapacityRow & a, const CapacityRow & b ) {
   auto rank = []( const CapacityRow & r ) {
      return std::make_tuple( r.key.unit, stageRank( r.key.feature ), r.key.feature.str(),
                              sliceRank( r.key.row ) );
   };
   return rank( a ) < rank( b );
}

std::vector< CapacityRow >
tcamRowsInDisplayOrder( const std::vector< CapacityRow > & rows ) {
   std::vector< CapacityRow > shown;
   for ( const CapacityRow & row : rows ) {
      if ( row.key.featureGroup == tesselTcamCapacityFeatureGroup ) {
         shown.push_back( row );
      }
   }
   std::stable_sort( shown.begin(), shown.end(), displayOrder );
   return shown;
}

Line
lineOf( const CapacityRow & row ) {
   const CapacityFigures & f = row.figures;
   return { std::to_string( row.key.unit ),
            row.key.feature.str(),
            row.key.row.empty() ? "all" : row.key.row.str(),
            std::to_string( f.used ),
            std::to_string( f.free ),
            std::to_string( f.total ),
            usedPercentText( f ) };
}

std::string
renderLines( const std::vector< Line > & lines ) {
   std::array< size_t, columns > width{};
   for ( const Line & line : lines ) {
      for ( size_t c = 0; c < columns; ++c ) {
         width[ c ] = std::max( width[ c ], line[ c ].size() );
      }
   }
   std::string text;
   for ( const Line & line : lines ) {
      std::string out;
      for ( size_t c = 0; c < columns; ++c ) {
         std::string pad( width[ c ] - line[ c ].size(), ' ' );
         out += c ? "  " : "";
         out += rightAligned[ c ] ? pad + line[ c ] : line[ c ] + pad;
      }
      out.erase( out.find_last_not_of( ' ' ) + 1 );
      text += out + "\n";
   }
   return text;
}

} // namespace

Vault::Status
readTesselTcamCapacity( const std::string & prefix, std::vector< CapacityRow > & rows ) {
   return readCapacityTable( prefix, tesselTcamCapacityVaultPath, rows );
}

std::string
usedPercentText( const CapacityFigures & figures ) {
   if ( figures.total == 0 ) {
      return "-";
   }
   U64 scaled = U64( figures.used ) * 1000;
   U64 tenths = ( scaled + figures.total - 1 ) / figures.total;
   if ( figures.used < figures.total ) {
      tenths = std::min< U64 >( tenths, 999 );
   }
   return std::to_string( tenths / 10 ) + "." + std::to_string( tenths % 10 ) + "%";
}

std::string
TcamCapacityWarning::text() const {
   return "WARNING: unit " + std::to_string( unit ) + " stage " + stage.str() + " is " +
          usedPercentText( figures ) + " used (threshold " +
          std::to_string( thresholdPercent ) + "%)";
}

std::vector< TcamCapacityWarning >
tcamCapacityWarnings( const std::vector< CapacityRow > & rows, U32 thresholdPercent ) {
   checkThreshold( thresholdPercent );
   std::vector< TcamCapacityWarning > warnings;
   for ( const CapacityRow & row : tcamRowsInDisplayOrder( rows ) ) {
      const CapacityFigures & f = row.figures;
      if ( isTcamStageRow( row ) && U64( f.used ) * 100 > U64( thresholdPercent ) * f.total ) {
         warnings.push_back(
            TcamCapacityWarning{ row.key.unit, row.key.feature, f, thresholdPercent } );
      }
   }
   return warnings;
}

std::string
renderTesselTcamCapacity( const std::vector< CapacityRow > & rows, U32 thresholdPercent ) {
   std::vector< TcamCapacityWarning > warnings = tcamCapacityWarnings( rows, thresholdPercent );
   std::vector< CapacityRow > shown = tcamRowsInDisplayOrder( rows );
   if ( shown.empty() ) {
      return "No TCAM capacity published.\n";
   }
   std::vector< Line > lines = { { "Unit", "Stage", "Slice", "Used", "Free", "Total", "Used%" } };
   for ( const CapacityRow & row : shown ) {
      lines.push_back( lineOf( row ) );
   }
   std::string text = renderLines( lines );
   for ( const TcamCapacityWarning & warning : warnings ) {
      text += warning.text() + "\n";
   }
   return text;
}

} // namespace Hardware::Capacity::Tessel
