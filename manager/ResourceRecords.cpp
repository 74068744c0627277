// Constructors of the group manager's companions.

#include "manager/TesselTcamCompanions.h"

namespace Tessel {

QualPreselDataList::QualPreselDataList( U32 id )
      : Kiln::Entity( "excludedQual" + std::to_string( id ) ), id_( id ) {}

} // namespace Tessel
