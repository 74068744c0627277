// What tests control about SDK calls: the call log, fault injection and the
// activity-lock check. The box owns one of each; every bcm_* entry point of
// the model passes through them (sdk/model/SdkCall.h).
#pragma once

#include <string>
#include <vector>

#include "platform/kiln/Types.h"

namespace ChipModel {

// One SDK call as it was made.
struct CallRecord {
   int unit;
   std::string function;    // "bcm_field_entry_create_id"
   std::vector< S64 > args; // integer arguments after the unit, in order
   int rc;
   // "bcm_field_entry_create_id(0, 42, 16777217) = 0"
   std::string text() const;
};

class CallLog {
 public:
   void append( CallRecord record ) { records_.push_back( std::move( record ) ); }
   void setResult( size_t index, int rc ) { records_.at( index ).rc = rc; }
   size_t size() const { return records_.size(); }
   const std::vector< CallRecord > & records() const { return records_; }
   void clear() { records_.clear(); }
   // Calls of the function (any unit when unit is -1).
   U32 count( const std::string & function, int unit = -1 ) const;

 private:
   std::vector< CallRecord > records_;
};

// Makes chosen calls fail: the nth call (counting from 1, from the moment
// the fault is set) of a function on a unit returns rc and does nothing;
// `times` calls fail in a row from there.
struct Fault {
   int unit;             // -1: any unit
   std::string function; // an SDK function, or a shim call it stands for
   U32 nth;
   int rc;
   U32 times = 1;
   U32 seen = 0; // matching calls so far
};

class FaultPlan {
 public:
   void add( Fault fault );
   void clear() { faults_.clear(); }
   // Counts the call against every matching fault; the code of the first
   // fault that fires, or 0.
   int check( int unit, const std::string & function );
   // Faults that have not fired all their times yet.
   U32 pending() const;

 private:
   std::vector< Fault > faults_;
};

// The SDK function a shim call is made of, for faults and counts by the
// shim's name: "ob_field_entry_copy_id" is "bcm_field_entry_content_copy".
std::string sdkFunctionOf( const std::string & name );

enum class ActivityCheck {
   off,   // no check
   count, // count violations; the call proceeds
   abort, // a violation is a programming error: the process aborts
};

// Whether the calling thread holds the agent's activity lock.
bool activityLockHeldByThisThread();

} // namespace ChipModel
