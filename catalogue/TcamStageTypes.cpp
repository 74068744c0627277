#include "catalogue/TcamStageTypes.h"

#include <iterator>
#include <ostream>

#include "catalogue/EnumText.h"

namespace Tessel {

namespace {

const char * const names[] = {
   "stageTypeIngress",
   "stageTypeLookup",
   "stageTypeEgress",
};

static_assert( std::size( names ) == numTcamStageTypesValues );

} // namespace

std::string_view
valueToStrep( TcamStageTypes value ) {
   return EnumText::name( names, value );
}

std::string
stringValue( TcamStageTypes value ) {
   return EnumText::text( names, value );
}

std::ostream &
operator<<( std::ostream & os, TcamStageTypes value ) {
   return os << stringValue( value );
}

bool
sequenceToValue( std::string_view text, TcamStageTypes & value ) {
   auto parsed = EnumText::parse( names, text );
   if ( parsed ) {
      value = static_cast< TcamStageTypes >( *parsed );
   }
   return parsed.has_value();
}

TcamStageTypes
TcamStageTypesInstance( U32 value ) {
   return static_cast< TcamStageTypes >( EnumText::checked( "TcamStageTypes", names, value ) );
}

TcamStageTypes
TcamStageTypesInstance( std::string_view text ) {
   return static_cast< TcamStageTypes >( EnumText::parsed( "TcamStageTypes", names, text ) );
}

} // namespace Tessel
