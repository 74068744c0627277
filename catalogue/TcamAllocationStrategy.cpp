#include "catalogue/TcamAllocationStrategy.h"

#include <iterator>
#include <ostream>

#include "catalogue/EnumText.h"

namespace Tessel {

namespace {

const char * const names[] = {
   "tcamAllocateUnbounded",
   "tcamAllocateOnDemand",
   "tcamAllocateAsChunk",
   "tcamAllocateAtBeginning",
};

static_assert( std::size( names ) == numTcamAllocationStrategyValues );

} // namespace

std::string_view
valueToStrep( TcamAllocationStrategy value ) {
   return EnumText::name( names, value );
}

std::string
stringValue( TcamAllocationStrategy value ) {
   return EnumText::text( names, value );
}

std::ostream &
operator<<( std::ostream & os, TcamAllocationStrategy value ) {
   return os << stringValue( value );
}

bool
sequenceToValue( std::string_view text, TcamAllocationStrategy & value ) {
   auto parsed = EnumText::parse( names, text );
   if ( parsed ) {
      value = static_cast< TcamAllocationStrategy >( *parsed );
   }
   return parsed.has_value();
}

TcamAllocationStrategy
TcamAllocationStrategyInstance( U32 value ) {
   return static_cast< TcamAllocationStrategy >( EnumText::checked( "TcamAllocationStrategy", names, value ) );
}

TcamAllocationStrategy
TcamAllocationStrategyInstance( std::string_view text ) {
   return static_cast< TcamAllocationStrategy >( EnumText::parsed( "TcamAllocationStrategy", names, text ) );
}

} // namespace Tessel
