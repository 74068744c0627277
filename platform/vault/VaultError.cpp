#include "platform/vault/VaultError.h"

#include <cstring>

namespace Vault {

const char *
errcName( Errc code ) {
   switch ( code ) {
    case Errc::ok: return "ok";
    case Errc::invalidArgument: return "invalidArgument";
    case Errc::notFound: return "notFound";
    case Errc::agentNotRunning: return "agentNotRunning";
    case Errc::corrupt: return "corrupt";
    case Errc::versionMismatch: return "versionMismatch";
    case Errc::inconsistent: return "inconsistent";
    case Errc::timeout: return "timeout";
    case Errc::busy: return "busy";
    case Errc::refused: return "refused";
    case Errc::tooLarge: return "tooLarge";
    case Errc::system: return "system";
   }
   return "unknown";
}

std::string
systemText( const std::string & what, int err ) {
   return what + ": " + std::strerror( err );
}

Status
systemStatus( const std::string & what, int err ) {
   return Status( Errc::system, systemText( what, err ) );
}

} // namespace Vault
