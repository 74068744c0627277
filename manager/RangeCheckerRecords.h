// Records of the range-checker collections (rangeChecker, unitRangeInfo,
// entryRangeCheckId). Keys are final; the records are the shapes the range
// checker operations fill in.
#pragma once

#include <compare>
#include <string>

#include "common/TesselExport.h"
#include "platform/kiln/Entity.h"
#include "platform/kiln/Types.h"

namespace Tessel {

typedef U32 RangeCheckId; // 0: no checker

// A range of L4 ports or packet lengths as features ask for it.
struct RangeCheckerDesc {
   U32 low = 0;        // inclusive
   U32 high = 0;       // inclusive
   U32 rangeFlags = 0; // 0x1 source L4 port, 0x2 destination L4 port, 0x100 length

   auto operator<=>( const RangeCheckerDesc & ) const = default;
   // "Value('Tessel::RangeCheckerDesc', ** {'low': 10, 'high': 20, 'rangeFlags': 1})"
   TESSEL_EXPORT std::string valueText() const;
};

// The checkers that serve one descriptor, per unit.
class TESSEL_EXPORT RangeCheckerData : public Kiln::Entity {
 public:
   explicit RangeCheckerData( const RangeCheckerDesc & desc )
         : Kiln::Entity( desc.valueText() ), desc_( desc ) {}
   const RangeCheckerDesc & desc() const { return desc_; }

 private:
   RangeCheckerDesc desc_;
};

// A checker on a unit, named by the id of its pipe-0 range.
struct UnitRangeInfoKey {
   U32 unit = 0;
   RangeCheckId baseRangeId = 0;

   auto operator<=>( const UnitRangeInfoKey & ) const = default;
   // "Value('Tessel::UnitRangeInfoKey', ** {'unit': 0, 'baseRangeId': 3})"
   TESSEL_EXPORT std::string valueText() const;
};

// The per-pipe hardware ranges of one checker (range-module chips).
class TESSEL_EXPORT UnitRangeIdInfo : public Kiln::Entity {
 public:
   explicit UnitRangeIdInfo( const UnitRangeInfoKey & key )
         : Kiln::Entity( key.valueText() ), key_( key ) {}
   const UnitRangeInfoKey & key() const { return key_; }

 private:
   UnitRangeInfoKey key_;
};

// The checkers attached to one entry.
class TESSEL_EXPORT EntryToRangeCheckIds : public Kiln::Entity {
 public:
   explicit EntryToRangeCheckIds( U32 entryId )
         : Kiln::Entity( std::to_string( entryId ) ), entryId_( entryId ) {}
   U32 entryId() const { return entryId_; }

 private:
   U32 entryId_;
};

} // namespace Tessel
