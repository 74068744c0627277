// UnitEntriesCreated: an entry manager's record of the entries it created on
// one unit. Entry allocation and installation fill it in; group management
// only creates and drops it as units come and go.
#pragma once

#include <string>

#include "common/TesselExport.h"
#include "platform/kiln/Entity.h"
#include "platform/kiln/Types.h"

namespace Tessel {

class TESSEL_EXPORT UnitEntriesCreated : public Kiln::Entity {
 public:
   explicit UnitEntriesCreated( U32 unit )
         : Kiln::Entity( "unit" + std::to_string( unit ) ), unit_( unit ) {}
   U32 unit() const { return unit_; }

 private:
   U32 unit_;
};

} // namespace Tessel
