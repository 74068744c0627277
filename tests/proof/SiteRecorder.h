// Records every SDK call the library makes while it runs: the chip model's
// function, which call of that function on its unit it was (the count a
// fault is set with), and the library's call site (source position and call
// text, from the level-4 trace each call of the SDK macros writes after the
// call returns). Calls the test makes itself through the macros are left
// out by their source file; bcm_info_get is the shim's constant chip facts,
// asked outside any call site, and is never counted.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/fastlog/TraceConfig.h"
#include "platform/fastlog/TraceSink.h"
#include "sdk/model/Box.h"

namespace Proof {

struct SiteCall {
   std::string function; // the model's: "bcm_field_entry_create_id"
   int unit = 0;
   U32 nth = 0;          // from 1, per function and unit
   std::string where;    // "EntryAllocation.cpp:88"
   std::string text;     // "bcm_field_entry_create_id( unit, groupId, entryId )"
   std::string phase;    // the scenario's phase when the call was made
   bool pipeCopy = false; // an id argument names a pipe copy (bits 24-27 set)
   bool repeated = false; // the library's previous call had the same text
   std::vector< S64 > args; // as the model logged them, after the unit
   bool noRcCheck = false; // traced as deliberately ignored
};

// "File.cpp:12 call text (rc:-3)" split into where and text; false for
// other lines.
bool parseCallTrace( const std::string & line, std::string & where, std::string & text );
// The file of "File.cpp:12".
std::string fileOf( const std::string & where );

class SiteRecorder {
 public:
   // Observes the box's calls and the bcmFpCmd channel until destroyed.
   // Calls traced from `ownFile` are the test's, not the library's.
   SiteRecorder( ChipModel::Box & box, std::string ownFile );
   ~SiteRecorder();
   SiteRecorder( const SiteRecorder & ) = delete;
   SiteRecorder & operator=( const SiteRecorder & ) = delete;

   void phaseIs( const std::string & phase ) { phase_ = phase; }
   // The library's calls in order.
   const std::vector< SiteCall > & calls() const { return calls_; }

 private:
   class Sink;
   void called( const ChipModel::CallRecord & record );
   void traced( const std::string & line );

   ChipModel::Box & box_;
   std::string ownFile_;
   std::string phase_;
   std::map< std::pair< std::string, int >, U32 > seen_;
   std::vector< SiteCall > pending_;
   std::vector< SiteCall > calls_;
   FastLog::TraceLevelsScope levels_;
   std::shared_ptr< Sink > sink_;
   std::shared_ptr< FastLog::TraceSink > previous_;
};

} // namespace Proof
