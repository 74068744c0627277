// TcamAllocationStrategy: when an entry manager creates its entries in
// hardware. The values are stored and compared as numbers, so they are fixed.
// Each value has a constant (tcamAllocateAsChunk_) and a value function
// (tcamAllocateAsChunk()); both compare with U32.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

#include "common/TesselExport.h"
#include "platform/kiln/Types.h"

namespace Tessel {

enum TcamAllocationStrategy : U32 {
   tcamAllocateUnbounded_ = 0,   // no fixed range; the SDK picks each id
   tcamAllocateOnDemand_ = 1,    // fixed range; each entry created when asked for
   tcamAllocateAsChunk_ = 2,     // fixed range; all created at the first request
   tcamAllocateAtBeginning_ = 3, // fixed range; all created at initialisation
};

constexpr U32 numTcamAllocationStrategyValues = 4;

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

// Text forms: the enumerator name without the trailing underscore.
// valueToStrep gives "" and stringValue the decimal number for a value
// outside the enumeration; stream output is stringValue.
TESSEL_EXPORT std::string_view
valueToStrep( TcamAllocationStrategy value );
TESSEL_EXPORT std::string
stringValue( TcamAllocationStrategy value );
TESSEL_EXPORT std::ostream &
operator<<( std::ostream & os, TcamAllocationStrategy value );

// Parses an enumerator name; false (value untouched) for any other text.
TESSEL_EXPORT bool
sequenceToValue( std::string_view text, TcamAllocationStrategy & value );

// A value from its number or its name; throws std::out_of_range for a
// number outside the enumeration and std::invalid_argument for an unknown
// name.
TESSEL_EXPORT TcamAllocationStrategy
TcamAllocationStrategyInstance( U32 value );
TESSEL_EXPORT TcamAllocationStrategy
TcamAllocationStrategyInstance( std::string_view text );

} // namespace Tessel
