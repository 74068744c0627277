// TcamStageTypes: the field-processor stage a group lives in. Constants
// carry a trailing underscore and have value functions.
#pragma once

#include <iterator>
#include <ostream>

#include "platform/kiln/EnumInstance.h"
#include "platform/kiln/Types.h"

namespace Tessel {

enum TcamStageTypes : U32 {
   stageTypeIngress_ = 0, // IFP
   stageTypeLookup_ = 1,  // VFP
   stageTypeEgress_ = 2,  // EFP
};

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

struct TcamStageTypesNames {
   typedef TcamStageTypes Enum;
   static constexpr const char * typeName = "TcamStageTypes";
   static constexpr Kiln::EnumName< TcamStageTypes > names[] = {
      { stageTypeIngress_, "stageTypeIngress" },
      { stageTypeLookup_, "stageTypeLookup" },
      { stageTypeEgress_, "stageTypeEgress" },
   };
};

constexpr U32 numTcamStageTypesValues =
   static_cast< U32 >( std::size( TcamStageTypesNames::names ) );

// Text forms (the enumerator names without the trailing underscore) come
// from the instance type: valueToStrep( value ), which gives the digits of a
// value without a name, sequenceToValue( text ), checked construction from
// a number or a name, stringValue() and stream output.
typedef Kiln::EnumInstance< TcamStageTypesNames > TcamStageTypesInstance;

inline std::ostream &
operator<<( std::ostream & os, TcamStageTypes value ) {
   return os << TcamStageTypesInstance::valueToStrep( value );
}

} // namespace Tessel
