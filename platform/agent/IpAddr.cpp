#include "platform/agent/IpAddr.h"

#include "platform/agent/AddressText.h"
#include "platform/kiln/Hash.h"
#include "platform/kiln/ValueText.h"

namespace Wiretype {

IpAddr::IpAddr( std::string_view text )
      : value_( Detail::parseDottedQuad( text, "IPv4", text ) ) {}

std::string
IpAddr::stringValue() const {
   return Detail::dottedQuad( value_ );
}

std::string
IpAddr::valueText() const {
   return Kiln::valueText( stringValue() );
}

std::ostream &
operator<<( std::ostream & os, const IpAddr & addr ) {
   return os << addr.stringValue();
}

} // namespace Wiretype

size_t
std::hash< Wiretype::IpAddr >::operator()( const Wiretype::IpAddr & addr ) const noexcept {
   return Kiln::hashMix( addr.value() );
}
