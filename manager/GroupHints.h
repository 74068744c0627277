// Hints that tell the SDK how to lay out a group's key. Internal.
//
// A group with a hint number gets one SDK hint when it is created: the
// IPv6 prefix ACLs match only the upper 64 bits of their address, so the
// key keeps only those (an extraction hint), which lets the group fit a
// narrower key.
#pragma once

#include "platform/kiln/Types.h"

namespace Tessel {

// One record of the hint table: unsigned 32-bit words.
struct GroupHint {
   U32 qual;      // SDK qualifier
   U32 maxValues; // distinct values expected (compression hints)
   U32 startBit;  // first bit kept (extraction hints)
   U32 endBit;    // last bit kept
};

// The hint of a group, or null when it has none. The qualifiers are the
// shim's, asked for on the first call.
const GroupHint * groupHint( U32 groupId );

// The SDK hint type of the table's hints.
int groupHintType();

} // namespace Tessel
