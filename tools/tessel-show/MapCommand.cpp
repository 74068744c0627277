// tcam map: per unit, stage and pipe, the slices of the TCAM with the group
// that holds each and how full it is. Coloured on a terminal, plain text
// otherwise, JSON with --json, and an SVG picture with --svg.
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <string>
#include <unistd.h>

#include "export/TesselTcamVaultRecords.h"
#include "export/TesselTcamVaultTables.h"
#include "tools/tessel-show/Commands.h"
#include "tools/tessel-show/Json.h"
#include "tools/tessel-show/MapSvg.h"

namespace TesselShow {

namespace {

using namespace Tessel;

bool
colourWanted( Colour colour ) {
   if ( colour != Colour::automatic ) {
      return colour == Colour::always;
   }
   const char * term = std::getenv( "TERM" );
   return isatty( 1 ) && !std::getenv( "NO_COLOR" ) && term && std::string( term ) != "dumb";
}

// ANSI colours for groups, by order of appearance in a block.
const char * const ansiColours[] = { "\033[1;34m", "\033[1;32m", "\033[1;35m", "\033[1;36m",
                                     "\033[1;33m", "\033[1;31m", "\033[0;34m", "\033[0;32m" };
const char * const ansiReset = "\033[0m";

std::string
bar( U32 used, U32 entries, bool colour ) {
   constexpr U32 width = 10;
   U32 filled = entries ? ( used * width + entries - 1 ) / entries : 0;
   std::string text;
   for ( U32 i = 0; i < width; ++i ) {
      text += i < filled ? ( colour ? "\u2588" : "#" ) : ( colour ? "\u2591" : "." );
   }
   return text;
}

U32
percent( U32 used, U32 entries ) {
   return entries ? used * 100 / entries : 0;
}

struct Painter {
   bool colour;
   std::map< U32, size_t > order;  // group -> its colour index
   std::string
   paint( U32 group, const std::string & text ) {
      if ( !colour || !group ) {
         return text;
      }
      size_t index = order.emplace( group, order.size() ).first->second;
      return ansiColours[ index % 8 ] + text + ansiReset;
   }
};

// One letter per group in order of appearance; '.' for a free slice.
std::string
strip( const MapBlock & block, std::map< U32, char > & letters ) {
   std::string text;
   for ( const VaultSliceInfo & s : block.slices ) {
      if ( !s.groupId ) {
         text += '.';
         continue;
      }
      char letter = letters.emplace( s.groupId, char( 'A' + letters.size() % 26 ) ).first->second;
      text += letter;
   }
   return text;
}

void
printBlock( const MapBlock & block, bool colour ) {
   Painter painter{ colour, {} };
   std::map< U32, char > letters;
   std::string line = strip( block, letters );
   size_t held = 0;
   for ( const VaultSliceInfo & s : block.slices ) {
      held += s.groupId ? 1 : 0;
   }
   std::printf( "Unit %u, stage %s, pipe %u: %zu slices, %zu held by %zu group%s\n", block.unit,
                block.stageName.c_str(), block.pipe, block.slices.size(), held, letters.size(),
                letters.size() == 1 ? "" : "s" );
   std::string painted;
   for ( size_t i = 0; i < line.size(); ++i ) {
      painted += painter.paint( block.slices[ i ].groupId, std::string( 1, line[ i ] ) );
   }
   std::printf( "  [%s]\n", painted.c_str() );
   std::printf( "  %5s  %-44s %5s %13s  %s\n", "slice", "group", "row", "used/entries",
                "fill" );
   for ( const VaultSliceInfo & s : block.slices ) {
      U32 used = s.entryCount > s.freeCount ? s.entryCount - s.freeCount : 0;
      char usedText[ 32 ];
      std::snprintf( usedText, sizeof usedText, "%u/%u", used, s.entryCount );
      std::string group = "-";
      std::string row;
      if ( s.groupId ) {
         group = std::string( 1, letters[ s.groupId ] ) + " " + groupLabel( block, s.groupId );
         row = std::to_string( s.member + 1 ) + "/" + std::to_string( s.width );
      }
      char fixed[ 64 ];
      std::snprintf( fixed, sizeof fixed, "%-44s", group.c_str() );
      std::printf( "  %5u  %s %5s %13s  %s %3u%%\n", s.key.value,
                   painter.paint( s.groupId, fixed ).c_str(), row.c_str(), usedText,
                   painter.paint( s.groupId, bar( used, s.entryCount, colour ) ).c_str(),
                   percent( used, s.entryCount ) );
   }
   std::printf( "\n" );
}

void
blockJson( Json & json, const MapBlock & block ) {
   json.beginObject().field( "unit", block.unit ).field( "stage", block.stage );
   json.field( "stageName", block.stageName ).field( "pipe", block.pipe );
   json.key( "slices" ).beginArray();
   for ( const VaultSliceInfo & s : block.slices ) {
      U32 used = s.entryCount > s.freeCount ? s.entryCount - s.freeCount : 0;
      json.beginObject().field( "slice", s.key.value ).field( "entries", s.entryCount );
      json.field( "free", s.freeCount ).field( "used", used ).field( "groupId", s.groupId );
      json.field( "group", s.groupId ? groupLabel( block, s.groupId ) : std::string() );
      json.field( "width", s.width ).field( "member", s.member ).endObject();
   }
   json.endArray().endObject();
}

// Every block the options cover, in unit, stage, pipe order.
Outcome
collectBlocks( AgentLink & link, const Options & o, std::vector< MapBlock > & blocks ) {
   std::vector< U32 > units;
   if ( Outcome failure = unitsToShow( link, o, true, units ) ) {
      return failure;
   }
   for ( U32 unit : units ) {
      if ( Outcome failure = collectUnitBlocks( link, o, unit, blocks ) ) {
         return failure;
      }
   }
   return std::nullopt;
}

} // namespace

int
runMap( AgentLink & link, const Options & o ) {
   std::vector< MapBlock > blocks;
   if ( Outcome failure = collectBlocks( link, o, blocks ) ) {
      return fail( *failure );
   }
   if ( o.json ) {
      Json json;
      json.beginObject().key( "blocks" ).beginArray();
      for ( const MapBlock & block : blocks ) {
         blockJson( json, block );
      }
      std::fputs( json.endArray().endObject().str().c_str(), stdout );
   } else {
      bool colour = colourWanted( o.colour );
      for ( const MapBlock & block : blocks ) {
         printBlock( block, colour );
      }
   }
   if ( !o.svgFile.empty() ) {
      std::ofstream file( o.svgFile );
      file << mapSvg( blocks );
      if ( !file.good() ) {
         return fail( { exitOutput, "cannot write " + o.svgFile } );
      }
   }
   return exitOk;
}

} // namespace TesselShow
