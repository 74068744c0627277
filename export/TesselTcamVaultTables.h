// What the agent publishes for the command line and how to ask for it:
// the request kinds, the tables with their mounter names, paths and
// starting capacities, and the text-report requests. Both sides include
// this header, so their names cannot drift apart; it needs nothing but the
// standard library.
//
// Tables are per unit; a table's path is its path below with "/<unit>"
// appended. Per-stage tables take the stage id and the pipe first:
//   groups of stage 1, pipe 0 on unit 3:  "cliVault/groups/1/0/3"
// The stage tables (and the unit list and the group names) are filled when
// a unit becomes known; the others on request, each request replacing the
// whole table.
#pragma once

#include <cstdio>
#include <string>

#include "platform/kiln/EnumInstance.h"
#include "platform/kiln/Types.h"

namespace Tessel {

// The kind of a request (the mailbox request's `kind`), which is also the
// table it fills. dumpData serves 3 to 9; 8, the raw entries table, is
// declared and never filled.
enum TcamGroupManagerVaultTypes : U32 {
   vaultTypeNone = 0,
   vaultTypeStages = 1,
   vaultTypeStageNames = 2,
   vaultTypeGroups = 3,
   vaultTypeFeatures = 4,
   vaultTypeFeatureNames = 5,
   vaultTypeEntryFeatures = 6,
   vaultTypeEntryGroups = 7,
   vaultTypeEntries = 8,
   vaultTypeEntryNames = 9,
   vaultTypeSlices = 10,
};

struct TcamGroupManagerVaultTypesNames {
   typedef TcamGroupManagerVaultTypes Enum;
   static constexpr const char * typeName = "Tessel::TcamGroupManagerVaultTypes";
   static constexpr Kiln::EnumName< TcamGroupManagerVaultTypes > names[] = {
      { vaultTypeNone, "vaultTypeNone" },
      { vaultTypeStages, "vaultTypeStages" },
      { vaultTypeStageNames, "vaultTypeStageNames" },
      { vaultTypeGroups, "vaultTypeGroups" },
      { vaultTypeFeatures, "vaultTypeFeatures" },
      { vaultTypeFeatureNames, "vaultTypeFeatureNames" },
      { vaultTypeEntryFeatures, "vaultTypeEntryFeatures" },
      { vaultTypeEntryGroups, "vaultTypeEntryGroups" },
      { vaultTypeEntries, "vaultTypeEntries" },
      { vaultTypeEntryNames, "vaultTypeEntryNames" },
      { vaultTypeSlices, "vaultTypeSlices" },
   };
};
typedef Kiln::EnumInstance< TcamGroupManagerVaultTypesNames > TcamGroupManagerVaultTypesInstance;

// One table: how the agent names its mounter, where it lives, the mount
// class (its qualified name) and the capacity it starts with.
struct VaultTableDesc {
   TcamGroupManagerVaultTypes kind;
   const char * mounterName;  // "%d-%d" (stage, pipe) for per-stage tables
   const char * path;         // "%d/%d" (stage, pipe) for per-stage tables
   const char * mountType;
   const char * parentType;
   U32 capacity;
   bool perStage;
};

constexpr const char * staticMounterType = "Tessel::GroupManagerStaticVaultMounter";
constexpr const char * requestMounterType = "Tessel::GroupManagerVaultMounter";

// The stage tables, filled when the unit becomes known.
constexpr VaultTableDesc stageTable = { vaultTypeStages, "stage-list", "cliVault/stages",
                                        "Tessel::VaultStagesMount", staticMounterType, 6,
                                        false };
constexpr VaultTableDesc stageNameTable = {
   vaultTypeStageNames, "stage-name-list",         "cliVault/stages-name",
   "Tessel::VaultStageNamesMount", staticMounterType, 6, false };
// Names of the catalogue's groups, keyed by group id; filled with the
// stage tables.
constexpr VaultTableDesc groupNameTable = {
   vaultTypeNone, "group-name-list", "cliVault/groups-name", "Tessel::VaultGroupNamesMount",
   staticMounterType, 100, false };

// The tables filled on request, per stage and pipe.
constexpr VaultTableDesc perStageTables[] = {
   { vaultTypeGroups, "group-list-%d-%d", "cliVault/groups/%d/%d", "Tessel::VaultGroupsMount",
     requestMounterType, 20, true },
   { vaultTypeFeatures, "feature-list-%d-%d", "cliVault/features/%d/%d",
     "Tessel::VaultFeaturesMount", requestMounterType, 30, true },
   { vaultTypeFeatureNames, "feature-name-list-%d-%d", "cliVault/features-name/%d/%d",
     "Tessel::VaultFeatureNamesMount", requestMounterType, 30, true },
   { vaultTypeEntryGroups, "group-entry-list-%d-%d", "cliVault/entrygroups/%d/%d",
     "Tessel::VaultEntryGroupsMount", requestMounterType, 30, true },
   { vaultTypeEntryFeatures, "feature-entry-list-%d-%d", "cliVault/entryfeatures/%d/%d",
     "Tessel::VaultEntryFeaturesMount", requestMounterType, 400, true },
   { vaultTypeEntryNames, "entry-name-list-%d-%d", "cliVault/entries-name/%d/%d",
     "Tessel::VaultEntryNamesMount", requestMounterType, 400, true },
   { vaultTypeSlices, "slice-list-%d-%d", "cliVault/slices/%d/%d", "Tessel::VaultSlicesMount",
     requestMounterType, 48, true },
};

// The raw entries table keeps its path as both sides have always written it.
constexpr const char * entriesTablePath = "cliVault/entries-nsme/%d/%d";

// The units the agent knows (records TesselTcam::VaultUnitInfo).
constexpr const char * unitTablePath = "cliVault/units";
constexpr U32 unitTableCapacity = 8;

// The per-stage table of a kind, or null.
inline const VaultTableDesc *
perStageTable( U32 kind ) {
   for ( const VaultTableDesc & desc : perStageTables ) {
      if ( desc.kind == kind ) {
         return &desc;
      }
   }
   return nullptr;
}

// "%d-%d" / "%d/%d" filled with stage and pipe.
inline std::string
perStageText( const char * format, U32 stage, U32 pipe ) {
   char text[ 128 ];
   std::snprintf( text, sizeof text, format, int( stage ), int( pipe ) );
   return text;
}

// The path of a unit's table: "<path>/<unit>".
inline std::string
unitTablePathOf( const std::string & path, U32 unit ) {
   return path + "/" + std::to_string( unit );
}

// The prefix an agent serves under unless told otherwise; the command line
// reads TESSEL_PREFIX first.
constexpr const char * defaultAgentPrefix = "tessel";

// Mailbox results besides 0 (served).
constexpr S32 vaultResultUnknownUnit = -1;
constexpr S32 vaultResultUnknownStage = -2;
constexpr S32 vaultResultUnknownPipe = -3;
constexpr S32 vaultResultUnknownKind = -4;

// Text reports. The command line sends one line, words separated by
// blanks; the agent writes the report into the descriptor passed with it:
//   tcam usage <unit> <pipe 0..254, or 255 for all> <detail 0|1>
//   tcam summary <unit>
//   tcam raw <unit>
//   tcam entry <unit> <entry id>
//   tcam reservations
// and answers with an exit status: 0, or one of these.
constexpr S32 reportStatusBadRequest = 64;   // not a request of this list
constexpr S32 reportStatusUnknownUnit = 65;  // the agent knows no such unit
constexpr S32 reportStatusUnknownPipe = 66;  // the unit has no such pipe
constexpr U32 reportAllPipes = 255;

} // namespace Tessel
