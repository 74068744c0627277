#include "platform/agent/PortList.h"

#include "platform/kiln/BoundedIndex.h"
#include "platform/kiln/Hash.h"
#include "platform/kiln/ValueText.h"

#include <algorithm>

namespace TesselTypes {

namespace {

const char typeName[] = "TesselTypes::TesselPortList";

void
checkPort( U32 port ) {
   if ( port >= maxPortCount ) {
      throw Kiln::RangeException( "TesselPortList: port " + std::to_string( port ) +
                                  " is above the highest port " +
                                  std::to_string( maxPortCount - 1 ) );
   }
}

} // namespace

TesselPortList::TesselPortList( std::initializer_list< U32 > ports ) {
   for ( U32 port : ports ) {
      portIs( port );
   }
}

TesselPortList::TesselPortList( const std::vector< U32 > & ports ) {
   for ( U32 port : ports ) {
      portIs( port );
   }
}

TesselPortList::TesselPortList( std::string_view text ) {
   Kiln::ValueTextReader r( text, typeName );
   for ( std::string_view port : r.list( "ports" ) ) {
      portIs( Kiln::parseValueNumber< U32 >( port ) );
   }
   r.end();
}

bool
TesselPortList::portHas( U32 port ) const {
   return std::binary_search( ports_.begin(), ports_.end(), port );
}

bool
TesselPortList::portIs( U32 port ) {
   checkPort( port );
   auto position = std::lower_bound( ports_.begin(), ports_.end(), port );
   if ( position != ports_.end() && *position == port ) {
      return false;
   }
   ports_.insert( position, port );
   return true;
}

bool
TesselPortList::portDel( U32 port ) {
   auto position = std::lower_bound( ports_.begin(), ports_.end(), port );
   if ( position == ports_.end() || *position != port ) {
      return false;
   }
   ports_.erase( position );
   return true;
}

std::string
TesselPortList::valueText() const {
   return Kiln::ValueText( typeName ).field( "ports", ports_ ).str();
}

void
portListToBitmap( const TesselPortList & ports, U32 ( &words )[ portBitmapWords ] ) {
   std::fill( words, words + portBitmapWords, 0u );
   for ( U32 port : ports ) {
      words[ port / 32 ] |= 1u << ( port % 32 );
   }
}

TesselPortList
bitmapToPortList( const U32 ( &words )[ portBitmapWords ] ) {
   TesselPortList ports;
   for ( U32 word = 0; word < portBitmapWords; ++word ) {
      for ( U32 bit = 0; bit < 32; ++bit ) {
         if ( words[ word ] & ( 1u << bit ) ) {
            ports.portIs( word * 32 + bit );
         }
      }
   }
   return ports;
}

} // namespace TesselTypes

size_t
std::hash< TesselTypes::TesselPortList >::operator()(
   const TesselTypes::TesselPortList & ports ) const noexcept {
   size_t h = Kiln::hashMix( static_cast< U32 >( ports.size() ) );
   for ( U32 port : ports ) {
      h = Kiln::hashCombine( h, port );
   }
   return h;
}
