#include "manager/QsetModIndex.h"

#include <string>

#include "platform/kiln/Assert.h"

namespace Tessel {

std::map< GroupQsetModKey, U32 >
indexQsetModRows( const TcamQsetModDef * ( *row )( U32 ), const char * what ) {
   std::map< GroupQsetModKey, U32 > index;
   for ( U32 i = 0; const TcamQsetModDef * def = row( i ); ++i ) {
      GroupQsetModKey key{ static_cast< U32 >( def->groupId ),
                           static_cast< U32 >( def->chipType ) };
      if ( !index.emplace( key, i ).second ) {
         std::string message = key.valueText() + " " + what + " double definition";
         KILN_ASSERT_MSG( false, message.c_str() );
      }
   }
   return index;
}

} // namespace Tessel
