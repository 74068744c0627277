// TcamStageTypes: the field-processor stage a group lives in. Constants
// carry a trailing underscore and have value functions.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

#include "common/TesselExport.h"
#include "platform/kiln/Types.h"

namespace Tessel {

enum TcamStageTypes : U32 {
   stageTypeIngress_ = 0, // IFP
   stageTypeLookup_ = 1,  // VFP
   stageTypeEgress_ = 2,  // EFP
};

constexpr U32 numTcamStageTypesValues = 3;

constexpr TcamStageTypes
stageTypeIngress() {
   return stageTypeIngress_;
}
constexpr TcamStageTypes
stageTypeLookup() {
   return stageTypeLookup_;
}
constexpr TcamStageTypes
stageTypeEgress() {
   return stageTypeEgress_;
}

// Text forms: the enumerator name without the trailing underscore.
// valueToStrep gives "" and stringValue the decimal number for a value
// outside the enumeration; stream output is stringValue.
TESSEL_EXPORT std::string_view
valueToStrep( TcamStageTypes value );
TESSEL_EXPORT std::string
stringValue( TcamStageTypes value );
TESSEL_EXPORT std::ostream &
operator<<( std::ostream & os, TcamStageTypes value );

// Parses an enumerator name; false (value untouched) for any other text.
TESSEL_EXPORT bool
sequenceToValue( std::string_view text, TcamStageTypes & value );

// A value from its number or its name; throws std::out_of_range for a
// number outside the enumeration and std::invalid_argument for an unknown
// name.
TESSEL_EXPORT TcamStageTypes
TcamStageTypesInstance( U32 value );
TESSEL_EXPORT TcamStageTypes
TcamStageTypesInstance( std::string_view text );

} // namespace Tessel
