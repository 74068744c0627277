// The TCAM group catalogue: the compiled-in knowledge of which hardware
// groups exist, their stage and priority, the qualifiers each group's key
// holds, how those qualifier sets change per chip type, and which features
// reserve entries in which group.
//
// Free functions over process-wide static tables, without locks: the group
// manager calls initTcamGroups() once from its start-up handler on the
// activity thread, and afterwards everything is read-only except the one-time
// qualifier fills, which use guarded static initialisation and so are safe
// against concurrent first calls.
//
// Qualifier and action values are the SDK's enumerators. The shim reports
// them at run time, so every list is filled from Shim::sdk_ the first time it
// is needed; a shim must be installed by then ("SDK shim not installed").
// Lists end with -1.
#pragma once

#include "catalogue/GroupQsetModKey.h"
#include "catalogue/TcamAllocationStrategy.h"
#include "catalogue/TcamGroupAssignment.h"
#include "catalogue/TcamGroupId.h"
#include "catalogue/TcamStageTypes.h"
#include "common/TesselExport.h"
#include "platform/kiln/Types.h"

namespace Tessel {

constexpr U32 numTcamGroupDefs = 86;         // rows of the group table, row 0 empty
constexpr U32 tcamGroupQualifierSlots = 33;  // per group row, terminator included
constexpr U32 qsetModQualifierSlots = 80;    // per exclude/include row
constexpr U32 numGroupExcludes = 179;
constexpr U32 numGroupIncludes = 192;

// A row of the group table: 35 signed 32-bit words.
struct TcamGroupDef {
   S32 groupId;  // TcamGroupId
   S32 priority; // hardware group priority; larger wins
   int fields[ tcamGroupQualifierSlots ];
};
static_assert( sizeof( TcamGroupDef ) == 35 * sizeof( S32 ) );

// A row of the exclude or include table: 83 signed 32-bit words.
struct TcamQsetModDef {
   S32 groupId;  // TcamGroupId
   S32 chipType; // Shim::ChipType
   int fields[ qsetModQualifierSlots ];
   // Include rows: 1 when the group needs two copies per pipe on this chip
   // (the in-port bitmap workaround); 0 otherwise. Always 0 in exclude rows.
   S32 ipbmWar;
};
static_assert( sizeof( TcamQsetModDef ) == 83 * sizeof( S32 ) );

// A feature reservation: which group holds the feature's entries and how
// the feature's entry manager allocates them.
struct TcamReservation {
   const char * name; // display name, shown in reports; not unique
   TcamGroupAssignment featureId;
   TcamGroupId groupId;
   TcamAllocationStrategy strategy;
   // Entries reserved under the bounded strategies; -1 where none is fixed.
   // The "Group-Low" OpenFlow and Conduit rows carry 2 under
   // tcamAllocateUnbounded, and "MLAG EGRESS" reserves 0.
   S32 count;
   bool userConfigurable; // user-configured classification (ACLs, PBR, QoS...)
   bool runtimeQset;      // the group's qualifier set is chosen at run time
   bool mappingRow;       // lookup-stage VXLAN/VFI/PDP mapping, egress cos mapper
};

// A row of the group map. The map is empty today; the type keeps its
// interface for callers that walk it.
struct TcamGroupMap {
   S32 groupId;
   S32 mappedGroupId;
};

// Fills the group table's qualifier slots (first call only) and builds the
// group-to-row index. Asserts "groupId < HIGHEST_TCAM_GROUP_" for a row whose
// group is out of range and "!groupIdToIndex[ groupId ]" for a group indexed
// twice, which is what a second call without cleanupTcamGroups() runs into.
TESSEL_EXPORT void
initTcamGroups();

// Forgets the group-to-row index; the qualifier values stay.
TESSEL_EXPORT void
cleanupTcamGroups();

// Whether the group has a row. False for every id above 86; 86 itself is
// looked up (and is never indexed, so it is false too).
TESSEL_EXPORT bool
isTcamGroupDefined( U32 groupId );

// The group's hardware priority. Asserts
// "( groupId > IFP_INVALID_GROUP_ ) && ( groupId < HIGHEST_TCAM_GROUP_ )"
// and, when the group has no row (before initTcamGroups()), "groupIndex".
TESSEL_EXPORT U32
getGroupPriority( U32 groupId );

// The group's -1-terminated qualifier list, owned by the catalogue. The
// mirroring ACL groups (IFP_GROUP_MIRROR_ACL_1_ .. _4_) return the list of
// mirrorAclType: 1 IPv4 (15 qualifiers), 2 MAC (8), 0 IPv6 (16); any other
// type asserts "( mirrorAclType >= 0 ) && ( mirrorAclType <= 2 )". Other
// groups ignore mirrorAclType. Same assertions as getGroupPriority.
TESSEL_EXPORT int *
getTcamGroupFields( U32 groupId, int mirrorAclType );

// Row `row` of the group table (row 0 is the empty placeholder), or null
// for row >= numTcamGroupDefs. For listings; lookups go by group id.
TESSEL_EXPORT const TcamGroupDef *
getTcamGroupDef( U32 row );

// Row `index` of the exclude table (qualifiers a chip type removes from a
// group), or null when index is above 178. Callers walk from 0 until null.
TESSEL_EXPORT const TcamQsetModDef *
getGroupExcludes( U32 index );

// Row `index` of the include table (qualifiers a chip type adds, and the
// two-copies-per-pipe flag), or null when index is above 191.
TESSEL_EXPORT const TcamQsetModDef *
getGroupIncludes( U32 index );

// Row `index` of the reservation table, or null when index is above 127.
// Index 127 is one past the last row and returns a zeroed row (empty name,
// group IFP_INVALID_GROUP_); walk indexes below numTcamReservations().
TESSEL_EXPORT const TcamReservation *
getTcamReservation( U32 index );

// 127.
TESSEL_EXPORT U32
numTcamReservations();

// The group map for index 0, null for any other index.
TESSEL_EXPORT const TcamGroupMap *
getGroupMap( U32 index );

// 0.
TESSEL_EXPORT U32
numGroupMapEntries();

// True for IFP_GROUP_IP_PBR_ and IFP_GROUP_IPV6_PBR_, whose entry managers
// install a multicast placeholder entry first.
TESSEL_EXPORT bool
groupRequiresMulticastWAR( U32 groupId );

// True exactly for IFP_GROUP_IP_PBR_.
TESSEL_EXPORT bool
isIPv4( U32 groupId );

// True exactly for IFP_GROUP_IPV6_PBR_.
TESSEL_EXPORT bool
isIPv6( U32 groupId );

// Whether a reservation row (given by its feature id) is ignored on a unit.
// A unit uses either the dedicated-group layout (thxLayout: ARP, dot1x and
// OpenFlow control in groups 3, 4, 5 and 1) or the shared-group layout
// (groups 6 and 2), never both. vfpTH3SystemAclGroup_ follows th3SysAcl in
// the dedicated layout and is always skipped in the shared one.
TESSEL_EXPORT bool
skipReservation( TcamGroupAssignment featureId, bool thxLayout, bool th3SysAcl );

// The -1-terminated list of SDK action enumerators that IFP groups get as
// their action set on Trident3 chips; built from the shim on the first call.
TESSEL_EXPORT const int *
initializeTrident3IfpActionSet();

// The stage of a group, from its name: IFP_ ingress, VFP_ lookup, EFP_
// egress; the COMPRESS_GROUP_ groups are ingress. Asserts "group has no
// stage" for HIGHEST_TCAM_GROUP_ and ids above the enumeration.
TESSEL_EXPORT TcamStageTypes
getGroupStage( U32 groupId );

} // namespace Tessel
