// Gathering the slice map from the agent, and drawing it as SVG.
#include "tools/tessel-show/MapSvg.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>

#include "export/TesselTcamVaultTables.h"

namespace TesselShow {

namespace {

using namespace Tessel;

const char * const palette[] = { "#4e79a7", "#59a14f", "#b07aa1", "#76b7b2",
                                 "#edc948", "#e15759", "#f28e2b", "#9c755f" };

std::string
escaped( const std::string & text ) {
   std::string out;
   for ( char c : text ) {
      switch ( c ) {
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      case '&': out += "&amp;"; break;
      case '"': out += "&quot;"; break;
      default: out += c;
      }
   }
   return out;
}

std::string
format( const char * pattern, ... ) __attribute__( ( format( printf, 1, 2 ) ) );

std::string
format( const char * pattern, ... ) {
   char text[ 512 ];
   va_list args;
   va_start( args, pattern );
   std::vsnprintf( text, sizeof text, pattern, args );
   va_end( args );
   return text;
}

constexpr int sliceWidth = 56;
constexpr int sliceHeight = 64;
constexpr int margin = 16;

// One block: its title, its slices and a legend; `y` moves past it.
std::string
blockSvg( const MapBlock & block, int & y ) {
   std::string svg = format( "<text x=\"%d\" y=\"%d\" class=\"title\">Unit %u, stage %s, pipe "
                             "%u</text>\n",
                             margin, y + 14, block.unit, escaped( block.stageName ).c_str(),
                             block.pipe );
   y += 24;
   std::map< U32, size_t > colours;
   int x = margin;
   for ( const VaultSliceInfo & s : block.slices ) {
      U32 used = s.entryCount > s.freeCount ? s.entryCount - s.freeCount : 0;
      int fill = s.entryCount ? int( U64( used ) * sliceHeight / s.entryCount ) : 0;
      const char * colour = "#e8e8e8";
      if ( s.groupId ) {
         colour = palette[ colours.emplace( s.groupId, colours.size() ).first->second % 8 ];
      }
      svg += format( "<g><title>slice %u: %s, %u of %u used</title>\n", s.key.value,
                     s.groupId ? escaped( groupLabel( block, s.groupId ) ).c_str() : "free",
                     used, s.entryCount );
      svg += format( "<rect x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\" fill=\"%s\" "
                     "fill-opacity=\"0.35\" stroke=\"#555\"/>\n",
                     x, y, sliceWidth - 4, sliceHeight, colour );
      svg += format( "<rect x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\" fill=\"%s\"/>\n", x,
                     y + sliceHeight - fill, sliceWidth - 4, fill, colour );
      svg += format( "<text x=\"%d\" y=\"%d\" class=\"slice\">%u</text></g>\n",
                     x + ( sliceWidth - 4 ) / 2, y + sliceHeight + 14, s.key.value );
      x += sliceWidth;
   }
   y += sliceHeight + 24;
   for ( const auto & [ group, index ] : colours ) {
      svg += format( "<rect x=\"%d\" y=\"%d\" width=\"12\" height=\"12\" fill=\"%s\"/>"
                     "<text x=\"%d\" y=\"%d\">%s</text>\n",
                     margin, y, palette[ index % 8 ], margin + 18, y + 11,
                     escaped( groupLabel( block, group ) ).c_str() );
      y += 18;
   }
   y += margin;
   return svg;
}

// The stages the options cover, with their pipe counts and names.
Outcome
stagesOf( AgentLink & link, U32 unit, std::vector< VaultStageInfo > & stages,
          std::map< U32, std::string > & names ) {
   Outcome failure = link.read( unitTablePathOf( stageTable.path, unit ), stages );
   if ( failure && failure->code == exitNotFound ) {
      failure->message = "unit " + std::to_string( unit ) + " is not known to the agent";
   }
   std::vector< TesselTcam::VaultName > nameRows;
   if ( !failure && !link.read( unitTablePathOf( stageNameTable.path, unit ), nameRows ) ) {
      for ( const auto & row : nameRows ) {
         names[ row.key().value ] = row.name().str();
      }
   }
   return failure;
}

std::map< U32, std::string >
groupNamesOf( AgentLink & link, U32 unit ) {
   std::vector< TesselTcam::VaultName > rows;
   std::map< U32, std::string > names;
   if ( !link.read( unitTablePathOf( groupNameTable.path, unit ), rows ) ) {
      for ( const auto & row : rows ) {
         names[ row.key().value ] = row.name().str();
      }
   }
   return names;
}

} // namespace

std::string
groupLabel( const MapBlock & block, U32 sdkGroupId ) {
   auto found = block.groupNames.find( sdkGroupId & 0xFFFFFF );
   std::string name = found == block.groupNames.end() ? "group" : found->second;
   return format( "%s (0x%08x)", name.c_str(), sdkGroupId );
}

Outcome
collectUnitBlocks( AgentLink & link, const Options & o, U32 unit,
                   std::vector< MapBlock > & blocks ) {
   std::vector< VaultStageInfo > stages;
   std::map< U32, std::string > stageNames;
   if ( Outcome failure = stagesOf( link, unit, stages, stageNames ) ) {
      return failure;
   }
   std::map< U32, std::string > groupNames = groupNamesOf( link, unit );
   const VaultTableDesc & desc = *perStageTable( vaultTypeSlices );
   for ( const VaultStageInfo & stage : stages ) {
      if ( o.stage && *o.stage != stage.key.value ) {
         continue;
      }
      for ( U32 pipe = 0; pipe < stage.numPipes; ++pipe ) {
         if ( o.pipe && *o.pipe != reportAllPipes && *o.pipe != pipe ) {
            continue;
         }
         MapBlock block{ unit, stage.key.value, stageNames[ stage.key.value ], pipe, {},
                         groupNames };
         Outcome failure = link.request( unit, vaultTypeSlices, stage.key.value, pipe );
         failure = failure ? failure
                           : link.read( unitTablePathOf( perStageText( desc.path,
                                                                       stage.key.value, pipe ),
                                                         unit ),
                                        block.slices );
         if ( failure ) {
            return failure;
         }
         blocks.push_back( std::move( block ) );
      }
   }
   return std::nullopt;
}

std::string
mapSvg( const std::vector< MapBlock > & blocks ) {
   std::string body;
   int y = margin;
   size_t widest = 1;
   for ( const MapBlock & block : blocks ) {
      body += blockSvg( block, y );
      widest = std::max( widest, block.slices.size() );
   }
   int width = int( widest ) * sliceWidth + 2 * margin + 200;
   return format( "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%d\" height=\"%d\" "
                  "font-family=\"sans-serif\" font-size=\"12\">\n",
                  width, y ) +
          "<style>.title{font-weight:bold;font-size:14px}.slice{text-anchor:middle}</style>\n" +
          "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n" + body + "</svg>\n";
}

} // namespace TesselShow
