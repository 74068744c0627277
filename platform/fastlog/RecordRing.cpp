// The FastLog ring: lock-free writers, readers that skip torn records.
//
// A writer claims a sequence number, marks its slot busy (0), fills it and
// publishes it by storing seq + 1 in the mark. A reader copies a slot and
// keeps the copy only if the mark held the expected number before and
// after the copy (a sequence lock per slot) and its check word matches.
#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <new>
#include <sstream>

#include "platform/fastlog/Clock.h"
#include "platform/fastlog/FastLog.h"
#include "platform/fastlog/WriteAll.h"
#include "platform/kiln/Assert.h"

namespace FastLog {

struct RecordRing::Header {
   U32 magic;
   U32 slotBytes;
   U32 capacity;
   U32 maxItems;
   std::atomic< U64 > next;
   std::atomic< U64 > first;
};

struct RecordRing::Slot {
   std::atomic< U64 > mark;
   std::atomic< U64 > nanos;
   std::atomic< U64 > kinds;
   std::atomic< U64 > check;
   std::atomic< U64 > words[ maxItems ];
};

static_assert( std::atomic< U64 >::is_always_lock_free,
               "the ring is shared without locks, also between processes" );
static_assert( sizeof( RecordRing::Header ) == RecordRing::headerBytes );
static_assert( sizeof( RecordRing::Slot ) == RecordRing::slotBytes );

namespace {

// One record as read out of its slot.
struct Copy {
   U64 nanos;
   U32 kinds;
   U64 words[ RecordRing::maxItems ];
};

U32
capacityFor( size_t bytes ) {
   const size_t slots = bytes < sizeof( RecordRing::Header )
                           ? 0
                           : ( bytes - sizeof( RecordRing::Header ) ) / sizeof( RecordRing::Slot );
   U32 capacity = 1;
   while ( capacity <= slots / 2 && capacity < ( 1u << 30 ) ) {
      capacity *= 2;
   }
   return slots >= 2 ? capacity : 0;
}

U32
itemCount( U64 kinds ) {
   U32 count = 0;
   while ( count < RecordRing::maxItems && ( kinds >> ( 4 * count ) ) & 0xf ) {
      ++count;
   }
   return count;
}

// Each word is spread over the whole check by a multiplier of its own
// position, so that a word of another record, or a word in another place,
// changes the check; the products are independent of each other, which
// keeps the writer's cost a multiplication and an xor per word.
constexpr U64 checkMultiplier = 0x9e3779b97f4a7c15ull;

U64
checkOf( U64 seq, U64 nanos, U64 kinds ) {
   return seq * 0xbf58476d1ce4e5b9ull ^ nanos * 0x94d049bb133111ebull ^
          kinds * 0xc2b2ae3d27d4eb4full;
}

U64
checkAdd( U64 hash, U32 position, U64 word ) {
   return hash ^ ( word + position ) * ( checkMultiplier + 2 * position );
}

U64
checkEnd( U64 hash ) {
   hash ^= hash >> 31;
   hash *= checkMultiplier;
   return hash ^ ( hash >> 29 );
}

U64
checkWord( U64 seq, U64 nanos, U64 kinds, const U64 * words, U32 count ) {
   U64 hash = checkOf( seq, nanos, kinds );
   for ( U32 i = 0; i < count; ++i ) {
      hash = checkAdd( hash, i, words[ i ] );
   }
   return checkEnd( hash );
}

bool
readSlot( const RecordRing::Slot & slot, U64 seq, Copy & copy ) {
   if ( slot.mark.load( std::memory_order_acquire ) != seq + 1 ) {
      return false;
   }
   copy.nanos = slot.nanos.load( std::memory_order_relaxed );
   copy.kinds = U32( slot.kinds.load( std::memory_order_relaxed ) );
   const U64 check = slot.check.load( std::memory_order_relaxed );
   const U32 count = itemCount( copy.kinds );
   for ( U32 i = 0; i < count; ++i ) {
      copy.words[ i ] = slot.words[ i ].load( std::memory_order_relaxed );
   }
   std::atomic_thread_fence( std::memory_order_acquire );
   return slot.mark.load( std::memory_order_relaxed ) == seq + 1 &&
          check == checkWord( seq, copy.nanos, copy.kinds, copy.words, count );
}

void
appendItem( std::string & text, ItemKind kind, U64 word, bool afterNumber ) {
   char number[ 24 ];
   switch ( kind ) {
   case ItemKind::text:
      text += reinterpret_cast< const char * >( uintptr_t( word ) );
      return;
   case ItemKind::hex:
      std::snprintf( number, sizeof( number ), "0x%" PRIx64, word );
      break;
   case ItemKind::signedDec:
      std::snprintf( number, sizeof( number ), "%" PRId64, S64( word ) );
      break;
   default:
      std::snprintf( number, sizeof( number ), "%" PRIu64, word );
      break;
   }
   if ( afterNumber ) {
      text += ' ';
   }
   text += number;
}

std::string
itemsText( const Copy & copy ) {
   std::string text;
   bool afterNumber = false;
   for ( U32 i = 0; i < RecordRing::maxItems; ++i ) {
      const auto kind = ItemKind( ( copy.kinds >> ( 4 * i ) ) & 0xf );
      if ( kind == ItemKind::end ) {
         break;
      }
      appendItem( text, kind, copy.words[ i ], afterNumber );
      afterNumber = kind != ItemKind::text;
   }
   return text;
}

} // namespace

RecordRing::RecordRing( void * memory, size_t bytes ) {
   KILN_ASSERT_MSG( memory != nullptr && uintptr_t( memory ) % 8 == 0,
                    "FastLog ring memory must be 8-byte aligned" );
   const U32 capacity = capacityFor( bytes );
   KILN_ASSERT_MSG( capacity >= 2, "FastLog ring memory holds fewer than 2 records" );
   header_ = new ( memory ) Header{ magic, sizeof( Slot ), capacity, maxItems, {}, {} };
   header_->next.store( 0, std::memory_order_relaxed );
   header_->first.store( 0, std::memory_order_relaxed );
   slots_ = reinterpret_cast< Slot * >( header_ + 1 );
   for ( U32 i = 0; i < capacity; ++i ) {
      new ( &slots_[ i ] ) Slot();  // all marks 0: nothing published
   }
   mask_ = capacity - 1;
}

U32
RecordRing::capacity() const {
   return header_->capacity;
}

U64
RecordRing::written() const {
   return header_->next.load( std::memory_order_relaxed );
}

void
RecordRing::append( U32 kinds, const U64 * words, U32 count ) {
   const U64 seq = header_->next.fetch_add( 1, std::memory_order_relaxed );
   Slot & slot = slots_[ seq & mask_ ];
   slot.mark.store( 0, std::memory_order_relaxed );
   std::atomic_thread_fence( std::memory_order_release );
   const U64 nanos = nowNanos();
   slot.nanos.store( nanos, std::memory_order_relaxed );
   slot.kinds.store( kinds, std::memory_order_relaxed );
   U64 check = checkOf( seq, nanos, kinds );
   for ( U32 i = 0; i < count; ++i ) {
      slot.words[ i ].store( words[ i ], std::memory_order_relaxed );
      check = checkAdd( check, i, words[ i ] );
   }
   slot.check.store( checkEnd( check ), std::memory_order_relaxed );
   slot.mark.store( seq + 1, std::memory_order_release );
}

std::vector< RecordText >
RecordRing::records() const {
   const U64 next = header_->next.load( std::memory_order_acquire );
   const U64 first = header_->first.load( std::memory_order_relaxed );
   const U64 start = std::max( first, next > mask_ ? next - mask_ - 1 : 0 );
   std::vector< RecordText > records;
   for ( U64 seq = start; seq < next; ++seq ) {
      Copy copy;
      if ( readSlot( slots_[ seq & mask_ ], seq, copy ) ) {
         records.push_back( RecordText{ seq, copy.nanos, itemsText( copy ) } );
      }
   }
   return records;
}

void
RecordRing::dump( std::ostream & out ) const {
   for ( const RecordText & record : records() ) {
      out << record.seq << ' ' << timestampText( record.nanos ) << ' ' << record.text << '\n';
   }
}

void
RecordRing::dump( int fd ) const {
   std::ostringstream text;
   dump( text );
   writeAll( fd, text.str() );
}

void
RecordRing::clear() {
   header_->first.store( header_->next.load( std::memory_order_relaxed ),
                         std::memory_order_relaxed );
}

} // namespace FastLog
