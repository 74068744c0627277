// The maker's shim object as the manager reaches it. Internal.
#pragma once

#include "platform/kiln/Assert.h"
#include "sdk/shim/Shim.h"

namespace Tessel {

// The installed shim; aborts with "SDK shim not installed" before there is one.
inline const Shim::Sdk &
sdkShim() {
   KILN_ASSERT_MSG( Shim::sdk_, "SDK shim not installed" );
   return *Shim::sdk_;
}

} // namespace Tessel
