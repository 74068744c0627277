// Text forms of the table key and the name record.
#include "export/TesselTcamVaultName.h"

#include <cstdio>
#include <stdexcept>
#include <vector>

#include "platform/kiln/Assert.h"
#include "platform/kiln/ValueText.h"

namespace TesselTcam {

Id::Id( std::string_view text ) {
   Kiln::ValueTextReader reader( text, "TesselTcam::Id" );
   value = reader.number< U32 >( "value" );
   reader.end();
}

std::string
Id::valueText() const {
   return Kiln::ValueText( "TesselTcam::Id" ).field( "value", value ).str();
}

VaultName::VaultName( std::string_view ) {
   KILN_ASSERT_MSG( false, "No String constructor for VaultName - has collection" );
}

std::string
VaultName::valueText() const {
   std::vector< U8 > used( buffer_.begin(), buffer_.begin() + count_ );
   return Kiln::ValueText( "TesselTcam::VaultName" )
      .rawField( "key", key_.valueText() )
      .field( "nameBuffer", used )
      .str();
}

void
VaultName::serializeCheck( U32 count, const U8 * buffer ) {
   if ( count < 62 ) {
      return;
   }
   std::string dump;
   for ( U32 i = 0; i < bufferSize; ++i ) {
      char hex[ 4 ];
      std::snprintf( hex, sizeof hex, "%s%02x", i ? " " : "", buffer[ i ] );
      dump += hex;
   }
   char address[ 32 ];
   std::snprintf( address, sizeof address, "%p", static_cast< const void * >( buffer ) );
   throw std::length_error( "PodArray::set expected size <=" + std::to_string( bufferSize ) +
                            ", instead got" + std::to_string( count ) +
                            ". Buffer is at address:" + address + " with contents:" + dump );
}

} // namespace TesselTcam
