// The SDK qualifier set of a catalogue group on a unit. Internal.
#pragma once

#include "platform/agent/ChipInfo.h"
#include "platform/kiln/Types.h"
#include "sdk/api/field.h"

namespace Tessel {

class TesselTcamGroupManager;

// The group's qualifier set on the unit: its stage, its catalogue list (of
// its mirroring ACL type for the mirroring groups), its UDF qualifiers, the
// unit's chip-type include row added and exclude row removed, and for
// groups that share a slice the qualifiers of their partners, so that the
// partners present one common set.
bcm_field_qset_t groupQset( const TesselTcamGroupManager & manager, U32 unit, U32 groupId );

// Adds a UDF qualifier to a qualifier set by the unit's UDF mechanism: a
// UDF id on chips with the UDF module or the flex parser, a data qualifier
// otherwise. An SDK result code (errors traced).
int addUdfQualifierToQset( U32 unit, bcm_field_qset_t * qset, U32 qual,
                           const Agent::ChipInfo * chipInfo );

// Whether the qualifier set holds the qualifier.
bool qsetHas( const bcm_field_qset_t & qset, int qual );

} // namespace Tessel
