#include "catalogue/EnumText.h"

#include <stdexcept>

namespace Tessel::EnumText {

std::string_view
name( Names names, U32 value ) {
   return value < names.size() ? names[ value ] : "";
}

std::string
text( Names names, U32 value ) {
   return value < names.size() ? std::string( names[ value ] ) : std::to_string( value );
}

std::optional< U32 >
parse( Names names, std::string_view text ) {
   for ( U32 value = 0; value < names.size(); ++value ) {
      if ( text == names[ value ] ) {
         return value;
      }
   }
   return std::nullopt;
}

U32
checked( const char * typeName, Names names, U32 value ) {
   if ( value >= names.size() ) {
      throw std::out_of_range( std::string( typeName ) + " has no value " +
                               std::to_string( value ) );
   }
   return value;
}

U32
parsed( const char * typeName, Names names, std::string_view text ) {
   std::optional< U32 > value = parse( names, text );
   if ( !value ) {
      throw std::invalid_argument( std::string( typeName ) + " has no value named \"" +
                                   std::string( text ) + "\"" );
   }
   return *value;
}

} // namespace Tessel::EnumText
