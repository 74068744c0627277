#include <algorithm>
#include <cstring>

#include "platform/kiln/Assert.h"
#include "platform/vault/VaultAtomic.h"
#include "platform/vault/VaultLayout.h"
#include "platform/vault/VaultTable.h"

namespace Vault {

TableWriter::TableWriter( Segment segment, std::string path, U32 recordSize, U32 capacity,
                          const ProcessIdentity & owner )
      : segment_( std::move( segment ) ), path_( std::move( path ) ),
        recordSize_( recordSize ), slotSize_( static_cast< U32 >( tableSlotSize( recordSize ) ) ) {
   TableHeader * h = header();
   h->version = layoutVersion;
   h->headerSize = sizeof( TableHeader );
   h->state = segmentLive;
   h->recordSize = recordSize;
   h->slotSize = slotSize_;
   h->capacity = capacity;
   h->ownerPid = owner.pid;
   h->ownerStart = owner.startTime;
   std::memcpy( h->path, path_.data(), std::min< size_t >( path_.size(), sizeof( h->path ) - 1 ) );
   // Readers take a zero magic for a header still being written.
   storeRelease( &h->magic, tableMagic );
}

TableWriter &
TableWriter::operator=( TableWriter && other ) noexcept {
   if ( this != &other ) {
      retire();
      segment_ = std::move( other.segment_ );
      path_ = std::move( other.path_ );
      recordSize_ = other.recordSize_;
      slotSize_ = other.slotSize_;
      sequence_ = other.sequence_;
      changeDepth_ = other.changeDepth_;
      index_ = std::move( other.index_ );
   }
   return *this;
}

TableWriter::~TableWriter() {
   retire();
}

void
TableWriter::retire() {
   if ( !segment_.valid() ) {
      return;
   }
   // Only someone tampering could have shrunk the segment; do not fault on it.
   if ( fileSizeOf( segment_.fd() ) >= sizeof( TableHeader ) ) {
      storeRelease( &header()->state, segmentRetired );
   }
   segment_.unlinkIfOwn();
   segment_.reset();
   index_.clear();
}

TableHeader *
TableWriter::header() const {
   return reinterpret_cast< TableHeader * >( segment_.data() );
}

U8 *
TableWriter::slot( U32 index ) const {
   return segment_.data() + sizeof( TableHeader ) + U64( index ) * slotSize_;
}

void
TableWriter::beginChange() {
   if ( changeDepth_++ == 0 ) {
      storeRelaxed( &header()->sequence, ++sequence_ );
      // The odd sequence must be visible before any byte of the change.
      std::atomic_thread_fence( std::memory_order_release );
   }
}

void
TableWriter::endChange() {
   if ( --changeDepth_ == 0 ) {
      storeRelease( &header()->sequence, ++sequence_ );
   }
}

namespace {

U32
keyAt( const U8 * slot ) {
   SlotHeader slotHeader;
   std::memcpy( &slotHeader, slot, sizeof( slotHeader ) );
   return slotHeader.key;
}

} // namespace

void
TableWriter::refuseLength( U32 length ) const {
   throw Error( Errc::invalidArgument,
                "record of " + std::to_string( length ) + " bytes for table '" + path_ +
                   "' exceeds its record size " + std::to_string( recordSize_ ) );
}

void
TableWriter::put( U32 key, const void * data, U32 length ) {
   checkLength( length );
   U32 index = index_.find( key );
   bool added = index == KeyIndex::none;
   if ( added ) {
      // Whatever can throw happens before the change starts, so a failure
      // leaves the table as it was and its sequence even.
      index = size();
      if ( index == capacity() ) {
         grow();
      }
      index_.set( key, index );
   }
   beginChange();
   writeSlot( index, key, data, length );
   if ( added ) {
      storeRelaxed( &header()->count, index + 1 );
   }
   endChange();
}

bool
TableWriter::holds( U32 index, U32 key, const void * data, U32 length ) const {
   const U8 * at = slot( index );
   SlotHeader slotHeader;
   std::memcpy( &slotHeader, at, sizeof( slotHeader ) );
   return slotHeader.key == key && slotHeader.length == length &&
          ( length == 0 || std::memcmp( at + sizeof( SlotHeader ), data, length ) == 0 );
}

// The caller has a change open.
void
TableWriter::writeSlot( U32 index, U32 key, const void * data, U32 length ) {
   U8 * at = slot( index );
   SlotHeader slotHeader = { key, length };
   std::memcpy( at, &slotHeader, sizeof( slotHeader ) );
   if ( length > 0 ) {
      std::memcpy( at + sizeof( SlotHeader ), data, length );
   }
   std::memset( at + sizeof( SlotHeader ) + length, 0, slotSize_ - sizeof( SlotHeader ) - length );
}

// The caller has a change open; both slots are in use.
void
TableWriter::swapSlots( U32 a, U32 b ) {
   scratch_.resize( slotSize_ );
   std::memcpy( scratch_.data(), slot( a ), slotSize_ );
   std::memcpy( slot( a ), slot( b ), slotSize_ );
   std::memcpy( slot( b ), scratch_.data(), slotSize_ );
   // Both keys are present: setting them never reallocates.
   index_.set( keyAt( slot( a ) ), a );
   index_.set( keyAt( slot( b ) ), b );
}

// Drops the records from `count` on; the caller has a change open.
void
TableWriter::truncate( U32 count ) {
   for ( U32 index = count; index < size(); ++index ) {
      index_.erase( keyAt( slot( index ) ) );
   }
   storeRelaxed( &header()->count, count );
}

TableWriter::Rewrite::~Rewrite() {
   if ( !done_ ) {
      close();
   }
}

void
TableWriter::Rewrite::open() {
   if ( !open_ ) {
      table_.beginChange();
      open_ = true;
      changed_ = true;
   }
}

void
TableWriter::Rewrite::close() {
   if ( open_ ) {
      open_ = false;
      table_.endChange();
   }
}

void
TableWriter::Rewrite::put( U32 key, const void * data, U32 length ) {
   // The common case: the table is rewritten with what it holds.
   if ( placed_ < table_.size() && table_.holds( placed_, key, data, length ) ) {
      ++placed_;
      return;
   }
   place( key, data, length );
}

// Out of line, so that put() stays a short function for the common case.
[[gnu::noinline]] void
TableWriter::Rewrite::place( U32 key, const void * data, U32 length ) {
   TableWriter & t = table_;
   t.checkLength( length );
   U32 at = placed_ < t.size() && keyAt( t.slot( placed_ ) ) == key ? placed_
                                                                    : t.index_.find( key );
   if ( at != KeyIndex::none && at < placed_ ) {
      if ( !t.holds( at, key, data, length ) ) {
         open();
         t.writeSlot( at, key, data, length );
      }
      return;
   }
   if ( at == KeyIndex::none ) {
      at = t.size();
      if ( at == t.capacity() ) {
         t.grow();
      }
      t.index_.set( key, at );
      open();
      t.writeSlot( at, key, data, length );
      storeRelaxed( &t.header()->count, at + 1 );
   } else if ( !t.holds( at, key, data, length ) ) {
      open();
      t.writeSlot( at, key, data, length );
   }
   if ( at != placed_ ) {
      open();
      t.swapSlots( at, placed_ );
   }
   ++placed_;
}

void
TableWriter::Rewrite::commit() {
   KILN_ASSERT( !done_ );
   if ( placed_ < table_.size() ) {
      open();
      table_.truncate( placed_ );
   }
   close();
   done_ = true;
}

void
TableWriter::grow() {
   U32 current = capacity();
   U32 wanted = std::min( current * 2, maxTableCapacity );
   if ( wanted <= current ) {
      throw Error( Errc::tooLarge, "table '" + path_ + "' cannot grow beyond " +
                                      std::to_string( current ) + " records" );
   }
   // The file grows first: a reader that sees the new capacity finds the
   // bytes behind it.
   Status grown = segment_.grow( sizeof( TableHeader ) + U64( wanted ) * slotSize_ );
   if ( !grown.ok() ) {
      throw Error( grown );
   }
   beginChange();
   storeRelaxed( &header()->capacity, wanted );
   storeRelaxed( &header()->generation, header()->generation + 1 );
   endChange();
}

bool
TableWriter::remove( U32 key ) {
   U32 hole = index_.find( key );
   if ( hole == KeyIndex::none ) {
      return false;
   }
   U32 last = size() - 1;
   index_.erase( key );
   beginChange();
   if ( hole != last ) {
      std::memcpy( slot( hole ), slot( last ), slotSize_ );
      SlotHeader moved;
      std::memcpy( &moved, slot( hole ), sizeof( moved ) );
      index_.set( moved.key, hole );  // present: never reallocates
   }
   storeRelaxed( &header()->count, last );
   endChange();
   return true;
}

void
TableWriter::clear() {
   beginChange();
   storeRelaxed( &header()->count, 0 );
   endChange();
   index_.clear();
}

std::optional< Record >
TableWriter::find( U32 key ) const {
   U32 index = index_.find( key );
   if ( index == KeyIndex::none ) {
      return std::nullopt;
   }
   const U8 * at = slot( index );
   SlotHeader slotHeader;
   std::memcpy( &slotHeader, at, sizeof( slotHeader ) );
   return Record{ slotHeader.key, slotHeader.length, at + sizeof( SlotHeader ) };
}

std::vector< U32 >
TableWriter::keys() const {
   std::vector< U32 > out;
   out.reserve( size() );
   for ( U32 index = 0; index < size(); ++index ) {
      SlotHeader slotHeader;
      std::memcpy( &slotHeader, slot( index ), sizeof( slotHeader ) );
      out.push_back( slotHeader.key );
   }
   return out;
}

U32
TableWriter::size() const {
   return segment_.valid() ? header()->count : 0;
}

U32
TableWriter::capacity() const {
   return segment_.valid() ? header()->capacity : 0;
}

U32
TableWriter::generation() const {
   return segment_.valid() ? header()->generation : 0;
}

} // namespace Vault
