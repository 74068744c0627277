// The FastLog stream: an always-on record of the changes made to the field
// processor, cheap enough to write at every such SDK call.
//
//   FASTLOG( "fp entry create ", unit, groupId, entryId );
//   FASTLOG( "fp group compress ", "(group=", groupId, ")" );
//   FASTLOG( "fp stat create group=", groupId, " StatType: ", FastLog::dec( n ) );
//
// A record is binary: the addresses of its texts (string literals only, as
// only the address is kept), its integers, a sequence number and a time
// stamp, in a fixed-size ring that keeps the newest records. It is turned
// into text only when read:
//
//   "<seq> <YYYY-MM-DD HH:MM:SS.uuuuuu> <items>"
//   e.g. "1207 2024-05-01 12:34:56.123456 fp entry create 0x0 0x1000005 0x64"
//
// Items are written in order: texts as they are; unsigned integers and
// enumerations with an unsigned underlying type in hexadecimal with "0x"
// (ids); signed integers in decimal (return codes); bool as 0 or 1;
// FastLog::dec( n ) in decimal (counts). An integer that follows another
// integer is separated from it by a blank. A record holds 1 to 8 items, the
// first a text; both limits are checked at compile time.
//
// Writing is thread-safe and lock-free. Reading while others write leaves
// out the records still being written or overwritten during the read.
#pragma once

#include <atomic>
#include <iosfwd>
#include <string>
#include <type_traits>
#include <vector>

#include "platform/kiln/Types.h"

namespace FastLog {

enum class ItemKind : U32 { end = 0, text = 1, hex = 2, signedDec = 3, unsignedDec = 4 };

// An unsigned integer to be written in decimal.
struct Dec {
   U64 value;
};

template< typename T >
constexpr Dec
dec( T value ) {
   static_assert( std::is_integral_v< T > && std::is_unsigned_v< T >,
                  "FastLog::dec takes an unsigned integer" );
   return Dec{ U64( value ) };
}

struct RecordText {
   U64 seq;
   U64 nanos;
   std::string text;  // the items, without sequence number and time stamp
   bool operator==( const RecordText & ) const = default;
};

// The ring: a header followed by `capacity` slots, laid out in memory the
// caller may provide (a mapping another process can read, say). Every field
// has a fixed width, so 32-bit and 64-bit processes agree on the layout:
//
//   header  U32 magic "FLR1", U32 slotBytes, U32 capacity, U32 maxItems,
//           U64 next (sequence number of the next record),
//           U64 first (records before it were cleared)
//   slot    U64 mark (seq + 1 once complete, 0 while written),
//           U64 nanos, U64 kinds (4 bits per item, ItemKind),
//           U64 check (a hash of seq, nanos, kinds and the items' words),
//           U64 words[ maxItems ] (text addresses or integers)
//
// The check word catches what the mark cannot: a writer held up for a whole
// turn of the ring finishing its stores into a slot a newer record owns.
// Text addresses mean something only inside the writing process.
class RecordRing {
 public:
   static constexpr U32 maxItems = 8;
   static constexpr U32 magic = 0x31524c46;  // "FLR1" read as bytes

   static constexpr size_t headerBytes = 32;
   static constexpr size_t slotBytes = 32 + 8 * maxItems;

   // Bytes needed for a ring of `capacity` records.
   static constexpr size_t
   bytesFor( U32 capacity ) {
      return headerBytes + size_t( capacity ) * slotBytes;
   }

   // Lays out an empty ring in `memory` (8-byte aligned, not owned, must
   // outlive the ring). The capacity is the largest power of two that fits,
   // at least 2 or the constructor asserts.
   RecordRing( void * memory, size_t bytes );

   U32 capacity() const;
   // Records written since the ring was laid out.
   U64 written() const;

   void append( U32 kinds, const U64 * words, U32 count );
   // The records held, oldest first, as text.
   std::vector< RecordText > records() const;
   void dump( std::ostream & out ) const;
   void dump( int fd ) const;
   // Forgets what is held; sequence numbers go on.
   void clear();

   struct Header;
   struct Slot;

 private:
   Header * header_;
   Slot * slots_;
   U64 mask_;
};

// The ring FASTLOG writes to: a built-in one of 4096 records unless another
// was installed. Install before other threads write; the caller keeps the
// ring (and its memory) alive while it is installed. nullptr: the built-in one.
void recordRingIs( RecordRing * ring );
RecordRing & recordRing();

// Shorthands for the current ring, for tools and tests.
std::vector< RecordText > records();
void recordsDump( std::ostream & out );
void recordsDump( int fd );
void recordsClear();

namespace detail {

void append( U32 kinds, const U64 * words, U32 count );

template< typename T >
constexpr ItemKind
kindOf() {
   using Value = std::remove_cv_t< T >;
   if constexpr ( std::is_array_v< Value > ) {
      static_assert( std::is_same_v< std::remove_cv_t< std::remove_extent_t< Value > >, char >,
                     "FASTLOG texts must be string literals" );
      return ItemKind::text;
   } else if constexpr ( std::is_same_v< Value, Dec > ) {
      return ItemKind::unsignedDec;
   } else if constexpr ( std::is_same_v< Value, bool > ) {
      return ItemKind::unsignedDec;
   } else if constexpr ( std::is_enum_v< Value > ) {
      return kindOf< std::underlying_type_t< Value > >();
   } else {
      static_assert( std::is_integral_v< Value >,
                     "FASTLOG items are string literals, integers, enums or FastLog::dec" );
      return std::is_signed_v< Value > ? ItemKind::signedDec : ItemKind::hex;
   }
}

template< typename T >
U64
wordOf( const T & item ) {
   if constexpr ( std::is_array_v< T > ) {
      return U64( reinterpret_cast< uintptr_t >( &item[ 0 ] ) );
   } else if constexpr ( std::is_same_v< T, Dec > ) {
      return item.value;
   } else if constexpr ( kindOf< T >() == ItemKind::signedDec ) {
      return U64( S64( item ) );  // sign-extended, read back as S64
   } else {
      return U64( item );
   }
}

template< typename... Items >
constexpr U32
kindsOf() {
   U32 kinds = 0;
   U32 shift = 0;
   ( ( kinds |= U32( kindOf< Items >() ) << shift, shift += 4 ), ... );
   return kinds;
}

} // namespace detail

template< typename First, typename... Items >
inline void
record( const First & first, const Items &... items ) {
   static_assert( 1 + sizeof...( Items ) <= RecordRing::maxItems,
                  "a FASTLOG record holds at most 8 texts and integers" );
   static_assert( detail::kindOf< First >() == ItemKind::text,
                  "a FASTLOG record starts with a text" );
   constexpr U32 kinds = detail::kindsOf< First, Items... >();
   const U64 words[] = { detail::wordOf( first ), detail::wordOf( items )... };
   detail::append( kinds, words, 1 + sizeof...( Items ) );
}

} // namespace FastLog

#define FASTLOG( ... ) ::FastLog::record( __VA_ARGS__ )
