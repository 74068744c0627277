// Layout of the shared-memory segments.
//
// A 32-bit and a 64-bit process must read the same bytes the same way, so
// every field has a fixed width, 64-bit fields are explicitly 8-aligned (the
// 32-bit ABI would align them to 4), and the static_asserts below pin every
// offset; both builds compile them. Integers are little-endian (x86 only).
//
// Table segment:   TableHeader, then `capacity` slots of `slotSize` bytes,
//                  the first `count` of them in use (dense, unordered).
// Slot:            SlotHeader { key, length }, then `recordSize` bytes of
//                  which the first `length` hold the record; padded to 8.
// Mailbox segment: MailboxHeader, then `slotCount` MailboxSlot.
// Owner segment:   OwnerHeader only; the live agent holds an flock on it.
//
// Words marked "atomic" are only accessed through VaultAtomic.h.
#pragma once

#include <cstddef>

#include "platform/kiln/Types.h"

namespace Vault {

constexpr U16 layoutVersion = 1;

constexpr U32 tableMagic = 0x31425456;    // "VTB1"
constexpr U32 mailboxMagic = 0x31424D56;  // "VMB1"
constexpr U32 ownerMagic = 0x31574F56;    // "VOW1"

// Header state: a retired segment was left by its writer (clean exit or
// taken over); readers drop it and look the name up again.
constexpr U32 segmentLive = 1;
constexpr U32 segmentRetired = 2;

struct TableHeader {
   U32 magic;
   U16 version;
   U16 headerSize;
   U32 state;       // atomic: segmentLive / segmentRetired
   U32 sequence;    // atomic: odd while the writer changes the table
   U32 generation;  // +1 each time the table grows
   U32 recordSize;  // bytes a record may hold
   U32 slotSize;    // sizeof( SlotHeader ) + recordSize rounded up to 8
   U32 capacity;    // slots in the segment
   U32 count;       // slots in use
   U32 ownerPid;
   alignas( 8 ) U64 ownerStart;
   char path[ 200 ];  // the table's path, NUL-terminated
   U8 reserved[ 8 ];
};

struct SlotHeader {
   U32 key;
   U32 length;  // bytes of the record actually written
};

struct OwnerHeader {
   U32 magic;
   U16 version;
   U16 headerSize;
   U32 ownerPid;
   U32 reserved;
   alignas( 8 ) U64 ownerStart;
};

constexpr U32 maxParameterLength = 256;
constexpr U32 maxDoorbellPath = 108;  // sun_path of a UNIX socket address

struct MailboxHeader {
   U32 magic;
   U16 version;
   U16 headerSize;
   U32 state;      // atomic: segmentLive / segmentRetired
   U32 slotCount;
   U32 slotSize;   // sizeof( MailboxSlot )
   U32 ownerPid;
   alignas( 8 ) U64 ownerStart;
   U32 nextToken;  // atomic: request counter of the whole mailbox
   U32 reserved0;
   char doorbell[ maxDoorbellPath ];  // datagram socket that wakes the agent
   U8 reserved[ 108 ];
};

// State of a request slot, in the low byte of its control word; the claiming
// client's pid sits above it. Free slots hold 0.
enum MailboxSlotState : U32 {
   slotFree = 0,
   slotClaimed = 1,    // a client fills in the request
   slotRequested = 2,  // waiting for the agent
   slotServing = 3,    // the agent is filling the tables
   slotAnswered = 4,   // responseToken and result are valid
   slotAbandoned = 5,  // the client gave up; the agent frees it when done
};

struct MailboxSlot {
   U32 control;  // atomic, futex word: ( pid << 8 ) | MailboxSlotState
   U32 unit;
   U32 kind;
   U32 stage;
   U32 pipe;
   U32 parameterLength;
   alignas( 8 ) U64 requestToken;
   U64 responseToken;
   S32 result;
   U32 reserved0;
   char parameters[ maxParameterLength ];
   U8 reserved[ 16 ];
};

static_assert( sizeof( TableHeader ) == 256 );
static_assert( offsetof( TableHeader, sequence ) == 12 );
static_assert( offsetof( TableHeader, count ) == 32 );
static_assert( offsetof( TableHeader, ownerPid ) == 36 );
static_assert( offsetof( TableHeader, ownerStart ) == 40 );
static_assert( offsetof( TableHeader, path ) == 48 );
static_assert( sizeof( SlotHeader ) == 8 );
static_assert( sizeof( OwnerHeader ) == 24 );
static_assert( offsetof( OwnerHeader, ownerStart ) == 16 );
static_assert( sizeof( MailboxHeader ) == 256 );
static_assert( offsetof( MailboxHeader, ownerStart ) == 24 );
static_assert( offsetof( MailboxHeader, nextToken ) == 32 );
static_assert( offsetof( MailboxHeader, doorbell ) == 40 );
static_assert( sizeof( MailboxSlot ) == 320 );
static_assert( offsetof( MailboxSlot, requestToken ) == 24 );
static_assert( offsetof( MailboxSlot, responseToken ) == 32 );
static_assert( offsetof( MailboxSlot, result ) == 40 );
static_assert( offsetof( MailboxSlot, parameters ) == 48 );

// Bytes of one table slot for records of up to recordSize bytes.
constexpr U64
tableSlotSize( U32 recordSize ) {
   return sizeof( SlotHeader ) + ( ( U64( recordSize ) + 7 ) & ~U64( 7 ) );
}

} // namespace Vault
