// The table views: stages, groups, features and entries of a unit, read
// from the agent's shared-memory tables.
#include <cstdio>
#include <map>
#include <string>

#include "export/TesselTcamVaultRecords.h"
#include "export/TesselTcamVaultTables.h"
#include "tools/tessel-show/Commands.h"
#include "tools/tessel-show/Json.h"

namespace TesselShow {

namespace {

using namespace Tessel;
using TesselTcam::VaultName;

// The unit, stage and pipe a per-stage view shows.
struct Where {
   U32 unit;
   U32 stage;
   U32 pipe;
   std::string stageName;
};

std::string
perStagePath( U32 kind, const Where & w ) {
   return unitTablePathOf( perStageText( perStageTable( kind )->path, w.stage, w.pipe ), w.unit );
}

// Asks the agent to fill the table, then reads it.
template< typename Record >
Outcome
fetch( AgentLink & link, U32 kind, const Where & w, std::vector< Record > & rows ) {
   if ( Outcome failure = link.request( w.unit, kind, w.stage, w.pipe ) ) {
      return failure;
   }
   return link.read( perStagePath( kind, w ), rows );
}

// Names by key; a table that cannot be read gives no names.
std::map< U32, std::string >
namesOf( AgentLink & link, const std::string & path ) {
   std::vector< VaultName > rows;
   std::map< U32, std::string > names;
   if ( !link.read( path, rows ) ) {
      for ( const VaultName & row : rows ) {
         names[ row.key().value ] = row.name().str();
      }
   }
   return names;
}

std::string
nameOr( const std::map< U32, std::string > & names, U32 key, const std::string & otherwise ) {
   auto found = names.find( key );
   return found == names.end() ? otherwise : found->second;
}

// "1 group", "2 groups".
std::string
counted( size_t count, const std::string & singular, const std::string & plural ) {
   return std::to_string( count ) + " " + ( count == 1 ? singular : plural );
}

void
heading( const Where & w, size_t count, const char * singular, const char * plural ) {
   std::printf( "Unit %u, stage %s, pipe %u: %s\n", w.unit, w.stageName.c_str(), w.pipe,
                counted( count, singular, plural ).c_str() );
}

Json &
whereJson( Json & json, const Where & w ) {
   return json.field( "unit", w.unit ).field( "stage", w.stage ).field( "pipe", w.pipe );
}

int
groups( AgentLink & link, const Options & o, const Where & w ) {
   std::vector< VaultGroupInfo > rows;
   if ( Outcome failure = fetch( link, vaultTypeGroups, w, rows ) ) {
      return fail( *failure );
   }
   auto names = namesOf( link, unitTablePathOf( groupNameTable.path, w.unit ) );
   Json json;
   whereJson( json.beginObject(), w ).key( "groups" ).beginArray();
   if ( !o.json ) {
      heading( w, rows.size(), "group", "groups" );
      std::printf( "%6s  %-34s %9s %9s %6s  %s\n", "Group", "Name", "Allocated", "Free",
                   "Copies", "SDK group" );
   }
   for ( const VaultGroupInfo & g : rows ) {
      std::string name = nameOr( names, g.key.value, "" );
      if ( o.json ) {
         json.beginObject().field( "group", g.key.value ).field( "name", name );
         json.field( "allocatedEntries", g.allocatedEntries ).field( "freeEntries", g.freeEntries );
         json.field( "numCopies", g.numCopies ).field( "globalGroupId", g.globalGroupId ).endObject();
      } else {
         std::printf( "%6u  %-34s %9u %9u %6u  0x%08x\n", g.key.value, name.c_str(),
                      g.allocatedEntries, g.freeEntries, g.numCopies, g.globalGroupId );
      }
   }
   if ( o.json ) {
      std::fputs( json.endArray().endObject().str().c_str(), stdout );
   }
   return exitOk;
}

int
features( AgentLink & link, const Options & o, const Where & w ) {
   std::vector< VaultFeatureInfo > rows;
   std::vector< VaultName > nameRows;
   if ( Outcome failure = fetch( link, vaultTypeFeatures, w, rows ) ) {
      return fail( *failure );
   }
   if ( Outcome failure = fetch( link, vaultTypeFeatureNames, w, nameRows ) ) {
      return fail( *failure );
   }
   std::map< U32, std::string > names;
   for ( const VaultName & row : nameRows ) {
      names[ row.key().value ] = row.name().str();
   }
   Json json;
   whereJson( json.beginObject(), w ).key( "features" ).beginArray();
   if ( !o.json ) {
      heading( w, rows.size(), "feature", "features" );
      std::printf( "%8s  %-40s %6s %9s %9s\n", "Feature", "Name", "Group", "Allocated", "Used" );
   }
   for ( const VaultFeatureInfo & f : rows ) {
      std::string name = nameOr( names, f.key.value, "" );
      if ( o.json ) {
         json.beginObject().field( "feature", f.key.value ).field( "name", name );
         json.field( "groupId", f.groupId ).field( "entriesAllocated", f.entriesAllocated );
         json.field( "entriesUsed", f.entriesUsed ).endObject();
      } else {
         std::printf( "%8u  %-40s %6u %9u %9u\n", f.key.value, name.c_str(), f.groupId,
                      f.entriesAllocated, f.entriesUsed );
      }
   }
   if ( o.json ) {
      std::fputs( json.endArray().endObject().str().c_str(), stdout );
   }
   return exitOk;
}

struct EntryRow {
   U32 feature = 0;
   U32 group = 0;
   U32 hits = 0;
   std::string name;
};

Outcome
entryRows( AgentLink & link, const Where & w, std::map< U32, EntryRow > & entries ) {
   std::vector< VaultEntryFeatureInfo > features;
   std::vector< VaultEntryGroupInfo > groups;
   std::vector< VaultName > names;
   Outcome failure = fetch( link, vaultTypeEntryFeatures, w, features );
   failure = failure ? failure : fetch( link, vaultTypeEntryGroups, w, groups );
   failure = failure ? failure : fetch( link, vaultTypeEntryNames, w, names );
   for ( const auto & f : features ) {
      entries[ f.key.value ].feature = f.featureId;
   }
   for ( const auto & g : groups ) {
      entries[ g.key.value ].group = g.groupId;
      entries[ g.key.value ].hits = g.stats;
   }
   for ( const auto & n : names ) {
      entries[ n.key().value ].name = n.name().str();
   }
   return failure;
}

int
entries( AgentLink & link, const Options & o, const Where & w ) {
   std::map< U32, EntryRow > rows;
   if ( Outcome failure = entryRows( link, w, rows ) ) {
      return fail( *failure );
   }
   Json json;
   whereJson( json.beginObject(), w ).key( "entries" ).beginArray();
   if ( !o.json ) {
      heading( w, rows.size(), "entry", "entries" );
      std::printf( "%10s %8s %6s %12s  %s\n", "Entry", "Feature", "Group", "Hits", "Name" );
   }
   for ( const auto & [ id, e ] : rows ) {
      if ( o.json ) {
         json.beginObject().field( "entry", id ).field( "feature", e.feature );
         json.field( "groupId", e.group ).field( "hits", e.hits ).field( "name", e.name );
         json.endObject();
      } else {
         std::printf( "%10u %8u %6u %12u  %s\n", id, e.feature, e.group, e.hits, e.name.c_str() );
      }
   }
   if ( o.json ) {
      std::fputs( json.endArray().endObject().str().c_str(), stdout );
   }
   return exitOk;
}

Outcome
stagesOf( AgentLink & link, U32 unit, std::vector< VaultStageInfo > & rows ) {
   Outcome failure = link.read( unitTablePathOf( stageTable.path, unit ), rows );
   if ( failure && failure->code == exitNotFound ) {
      failure->message = "unit " + std::to_string( unit ) + " is not known to the agent";
   }
   return failure;
}

int
stages( AgentLink & link, const Options & o, U32 unit ) {
   std::vector< VaultStageInfo > rows;
   if ( Outcome failure = stagesOf( link, unit, rows ) ) {
      return fail( *failure );
   }
   auto names = namesOf( link, unitTablePathOf( stageNameTable.path, unit ) );
   Json json;
   json.beginObject().field( "unit", unit ).key( "stages" ).beginArray();
   if ( !o.json ) {
      std::printf( "Unit %u: %s\n", unit, counted( rows.size(), "stage", "stages" ).c_str() );
      std::printf( "%6s  %-6s %-11s %5s  %12s\n", "Stage", "Name", "Pipe mode", "Pipes",
                   "TCAM entries" );
   }
   for ( const VaultStageInfo & s : rows ) {
      std::string name = nameOr( names, s.key.value, std::to_string( s.key.value ) );
      const char * mode = s.pipeOperationMode ? "pipe-local" : "global";
      if ( o.json ) {
         json.beginObject().field( "stage", s.key.value ).field( "name", name );
         json.field( "pipeOperationMode", unsigned( s.pipeOperationMode ) ).field( "mode", mode );
         json.field( "numPipes", s.numPipes ).field( "tcamSize", s.tcamSize ).endObject();
      } else {
         std::printf( "%6u  %-6s %-11s %5u  %12u\n", s.key.value, name.c_str(), mode, s.numPipes,
                      s.tcamSize );
      }
   }
   if ( o.json ) {
      std::fputs( json.endArray().endObject().str().c_str(), stdout );
   }
   return exitOk;
}

} // namespace

int
runTable( AgentLink & link, const Options & o ) {
   U32 unit = o.unit.value_or( 0 );
   if ( o.command == "stages" ) {
      return stages( link, o, unit );
   }
   Where w{ unit, o.stage.value_or( 0 ), o.pipe.value_or( 0 ), "" };
   auto names = namesOf( link, unitTablePathOf( stageNameTable.path, unit ) );
   w.stageName = nameOr( names, w.stage, std::to_string( w.stage ) );
   if ( o.command == "groups" ) {
      return groups( link, o, w );
   }
   if ( o.command == "features" ) {
      return features( link, o, w );
   }
   return entries( link, o, w );
}

} // namespace TesselShow
