// Random use of the library on a simulated agent, step by step, with the
// library's bookkeeping checked against the chip model after every step.
// Shared by the seeded test and the fuzz target (fuzz/), so it uses no test
// framework: failures come back as text.
//
//   Proof::RandomOps ops( { "thx", "single" } );   // started agent
//   Proof::SeededChoices choices( seed );
//   for ( ... ) { ops.step( choices ); if ( auto v = ops.check(); !v.empty() ) ... }
//   std::string leaks = ops.finish();                // everything given back
//
// Operations: entries got (on-demand, chunk, unbounded), installed,
// re-prioritised, removed and released; range checkers, UDF fields, class
// ids and policers taken and given back; VLANs' untagged ports changed;
// units' modules removed and added again.
#pragma once

#include <map>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "platform/kiln/ActivityLock.h"
#include "tools/agent/SimulatedAgent.h"

namespace Proof {

// Where the operations' choices come from.
class Choices {
 public:
   virtual ~Choices() = default;
   // A number below bound (bound > 0).
   virtual U32 below( U32 bound ) = 0;
};

class SeededChoices : public Choices {
 public:
   explicit SeededChoices( U64 seed ) : engine_( seed ) {}
   U32 below( U32 bound ) override { return U32( engine_() % bound ); }

 private:
   std::mt19937_64 engine_;
};

// The fuzzer's bytes, then zeros; exhausted() once they are used up.
class ByteChoices : public Choices {
 public:
   ByteChoices( const U8 * data, size_t size ) : data_( data ), size_( size ) {}
   U32
   below( U32 bound ) override {
      U32 value = pos_ < size_ ? data_[ pos_ ] : 0;
      ++pos_;
      return value % bound;
   }
   bool exhausted() const { return pos_ >= size_; }

 private:
   const U8 * data_;
   size_t size_;
   size_t pos_ = 0;
};

class RandomOps {
 public:
   // Starts an agent of one unit per profile.
   explicit RandomOps( const std::vector< std::string > & profiles );
   ~RandomOps();

   // One operation; returns what it did ("getEntry unit 1 acl 103 -> 103").
   std::string step( Choices & choices );
   // The library's bookkeeping against the chip; empty when they agree.
   std::string check();
   // Gives everything back and stops the agent; what the chip still holds
   // ("" when nothing).
   std::string finish();

 private:
   // What the driver, as the features, holds on a unit.
   struct UnitState {
      bool known = true;
      // Per manager (index in managers_): entry -> installed.
      std::map< size_t, std::map< U32, bool > > entries;
      std::map< size_t, U32 > rangeUsers;
      std::map< size_t, U32 > udfUsers;
      std::vector< U32 > policers;
      std::map< U8, U16 > l4ClassIds; // class id -> port
   };
   using Manager = Kiln::Ptr< Tessel::TesselTcamEntryManager >;

   // An entry the driver holds on the unit: (manager index, entry).
   std::optional< std::pair< size_t, U32 > > pickEntry( U32 unit, Choices & c );
   std::string getEntry( U32 unit, Choices & c );
   std::string installEntry( U32 unit, Choices & c );
   std::string priority( U32 unit, Choices & c );
   std::string removeEntry( U32 unit, Choices & c );
   std::string releaseEntry( U32 unit, Choices & c );
   std::string rangeChecker( U32 unit, Choices & c );
   std::string udfField( U32 unit, Choices & c );
   std::string classId( U32 unit, Choices & c );
   std::string policer( U32 unit, Choices & c );
   std::string vlan( Choices & c );
   std::string module( U32 unit );
   void releaseUnit( U32 unit );
   std::string checkUnit( U32 unit );

   Kiln::ActivityLockGuard activity_;
   SimAgent::SimulatedAgent agent_;
   Kiln::Ptr< Agent::VlanState > vlans_;
   std::vector< Manager > managers_;
   Manager udfManager_;
   std::map< U32, UnitState > units_;
   bool finished_ = false;
};

} // namespace Proof
