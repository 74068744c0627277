#include "tests/proof/Expectations.h"

#include <vector>

#include "sdk/api/error.h"
#include "sdk/shim/Oberon.h"

namespace Proof {

namespace {

enum class Rule {
   carriesOn,
   fatal,         // every failure is fatal
   resourceOk,    // running out is reported to the caller; other failures are fatal
   perPipeRange,  // a checker's range in a later pipe must follow pipe 0
   entryCreation, // see entryCreation()
   reservedGroup, // a group reserved when the unit is set up must be made
};

struct SiteRule {
   const char * file;
   const char * function; // the call text's start; "" for any
   Rule rule;
};

// First match wins.
const std::vector< SiteRule > &
siteRules() {
   static const std::vector< SiteRule > rules = {
      { "TesselPolicers.cpp", "", Rule::fatal },
      // Forgetting a gone unit's bindings: the chip may be gone already.
      { "TesselClassIds.cpp", "bcm_field_entry_destroy( unit, record->entry() )",
        Rule::carriesOn },
      { "TesselClassIds.cpp", "", Rule::fatal },
      { "EntryInstall.cpp", "bcm_field_entry_remove(", Rule::fatal },
      { "EntryInstall.cpp", "bcm_field_entry_prio_set(", Rule::fatal },
      { "TesselTcamHelper.cpp", "bcm_field_group_status_get(", Rule::fatal },
      { "TesselTcamRaw.cpp", "oberon_bcm_tcam_capacity_info_get(", Rule::fatal },
      { "TesselTcamDumpStages.cpp", "oberon_bcm_tcam_capacity_info_get(", Rule::fatal },
      { "TesselTcamDumpData.cpp", "bcm_field_group_status_get(", Rule::fatal },
      { "TesselRangeCheckers.cpp", "bcm_range_create(", Rule::perPipeRange },
      { "TesselRangeCheckers.cpp", "bcm_field_range_create(", Rule::resourceOk },
      { "TesselRangeCheckers.cpp", "bcm_field_qualify_RangeCheck(", Rule::resourceOk },
      { "TesselRangeCheckers.cpp", "", Rule::fatal },
      { "TesselUdfTcam.cpp", "bcm_field_data_qualifier_create(", Rule::resourceOk },
      { "TesselUdfTcam.cpp", "bcm_field_data_qualifier_packet_format_add(", Rule::resourceOk },
      { "TesselUdfTcam.cpp", "bcm_field_data_qualifier_ethertype_add(", Rule::resourceOk },
      { "TesselUdfModule.cpp", "bcm_udf_create(", Rule::resourceOk },
      { "TesselUdfModule.cpp", "bcm_udf_pkt_format_create(", Rule::resourceOk },
      { "TesselUdfModule.cpp", "bcm_udf_pkt_format_add(", Rule::resourceOk },
      { "TesselUdfFlex.cpp", "bcm_udf_chunk_create(", Rule::resourceOk },
      { "TesselUdfTcam.cpp", "", Rule::fatal },
      { "TesselUdfModule.cpp", "", Rule::fatal },
      { "TesselUdfFlex.cpp", "", Rule::fatal },
      { "EntryAllocation.cpp", "bcm_field_entry_create_id(", Rule::entryCreation },
      { "TesselTcamGroupInit.cpp", "", Rule::reservedGroup },
      { "EntryAllocation.cpp", "bcm_field_group_status_get(", Rule::reservedGroup },
      { "GroupHints.cpp", "", Rule::reservedGroup },
   };
   return rules;
}

Rule
ruleOf( const SiteCall & call ) {
   std::string file = fileOf( call.where );
   for ( const SiteRule & r : siteRules() ) {
      if ( file == r.file && call.text.starts_with( r.function ) ) {
         return r.rule;
      }
   }
   return Rule::carriesOn;
}

// The code the library sees: a shim call made of several SDK calls answers
// its own code when the first fails.
int
visibleCode( const SiteCall & call, int rc ) {
   bool capacity = call.text.starts_with( "oberon_bcm_tcam_capacity_info_get(" );
   return capacity && call.function == "bcm_field_control_get" ? OBERON_E_NO_FIELD_CONTROL : rc;
}

Expected
sdkFatal( const SiteCall & call, int sdkRc ) {
   int rc = visibleCode( call, sdkRc );
   return { true, call.where + " " + call.text + " API ERROR:" + bcm_errmsg( rc ) + " (" +
                     std::to_string( rc ) + ")" };
}

Expected
assertion( const std::string & text ) {
   return { true, "Assertion '" + text + "' failed." };
}

S64
arg( const SiteCall & call, size_t i ) {
   return i < call.args.size() ? call.args[ i ] : 0;
}

// Entry creation: a range (chunk or at-beginning) is all or nothing, and
// an at-beginning range must always fit; a single entry's copy in another
// pipe's group must follow pipe 0 (copies sharing pipe 0's group compete
// with it for rows, so they may run out).
bool
reserving( const SiteCall & call ) {
   return call.phase == "start-up" || call.phase == "reserve";
}

Expected
entryCreation( const SiteCall & call, U32 chunkGroup ) {
   if ( reserving( call ) ) {
      return assertion( "strategy() != tcamAllocateAtBeginning()" );
   }
   if ( U32( arg( call, 0 ) & 0xFFFFFF ) == chunkGroup ) {
      return {};
   }
   bool otherPipesGroup = ( arg( call, 1 ) >> 24 & 7 ) != 0 && arg( call, 0 ) >> 24 != 0;
   return otherPipesGroup ? assertion( "Failed to create per pipe entries" ) : Expected{};
}

} // namespace

Expected
expectedOutcome( const SiteCall & call, int rc, U32 chunkGroup ) {
   switch ( ruleOf( call ) ) {
   case Rule::fatal:
      return sdkFatal( call, rc );
   case Rule::resourceOk:
      return rc == BCM_E_RESOURCE ? Expected{} : sdkFatal( call, rc );
   case Rule::perPipeRange:
      if ( call.repeated ) {
         return assertion( "Failed to allocate RangeChecker" );
      }
      return rc == BCM_E_RESOURCE ? Expected{} : sdkFatal( call, rc );
   case Rule::entryCreation:
      return entryCreation( call, chunkGroup );
   case Rule::reservedGroup:
      return reserving( call ) ? assertion( "initializeGroup( unit )" ) : Expected{};
   case Rule::carriesOn:
      break;
   }
   return {};
}

bool
givesBack( const SiteCall & call ) {
   // A unit without a compression group carries on; a class id of its kind
   // then stops on the SDK's refusal.
   if ( fileOf( call.where ) == "TesselTcamCompressionGroups.cpp" ) {
      return true;
   }
   for ( const char * word : { "destroy", "detach", "delete", "_remove", "compress", "UNLOCK" } ) {
      if ( call.text.find( word ) != std::string::npos ) {
         return true;
      }
   }
   return false;
}

} // namespace Proof
