// TcamAllocationStrategy: when an entry manager creates its entries in
// hardware. The values are stored and compared as numbers, so they are fixed.
// Each value has a constant (tcamAllocateAsChunk_) and a value function
// (tcamAllocateAsChunk()); both compare with U32.
#pragma once

#include <iterator>
#include <ostream>

#include "platform/kiln/EnumInstance.h"
#include "platform/kiln/Types.h"

namespace Tessel {

enum TcamAllocationStrategy : U32 {
   tcamAllocateUnbounded_ = 0,   // no fixed range; the SDK picks each id
   tcamAllocateOnDemand_ = 1,    // fixed range; each entry created when asked for
   tcamAllocateAsChunk_ = 2,     // fixed range; all created at the first request
   tcamAllocateAtBeginning_ = 3, // fixed range; all created at initialisation
};

constexpr TcamAllocationStrategy
tcamAllocateUnbounded() {
   return tcamAllocateUnbounded_;
}

constexpr TcamAllocationStrategy
tcamAllocateOnDemand() {
   return tcamAllocateOnDemand_;
}

constexpr TcamAllocationStrategy
tcamAllocateAsChunk() {
   return tcamAllocateAsChunk_;
}

constexpr TcamAllocationStrategy
tcamAllocateAtBeginning() {
   return tcamAllocateAtBeginning_;
}

struct TcamAllocationStrategyNames {
   typedef TcamAllocationStrategy Enum;
   static constexpr const char * typeName = "TcamAllocationStrategy";
   static constexpr Kiln::EnumName< TcamAllocationStrategy > names[] = {
      { tcamAllocateUnbounded_, "tcamAllocateUnbounded" },
      { tcamAllocateOnDemand_, "tcamAllocateOnDemand" },
      { tcamAllocateAsChunk_, "tcamAllocateAsChunk" },
      { tcamAllocateAtBeginning_, "tcamAllocateAtBeginning" },
   };
};

constexpr U32 numTcamAllocationStrategyValues =
   static_cast< U32 >( std::size( TcamAllocationStrategyNames::names ) );

// Text forms (the enumerator names without the trailing underscore) come
// from the instance type: valueToStrep( value ), which gives the digits of a
// value without a name, sequenceToValue( text ), checked construction from
// a number or a name, stringValue() and stream output.
typedef Kiln::EnumInstance< TcamAllocationStrategyNames > TcamAllocationStrategyInstance;

inline std::ostream &
operator<<( std::ostream & os, TcamAllocationStrategy value ) {
   return os << TcamAllocationStrategyInstance::valueToStrep( value );
}

} // namespace Tessel
