#include <algorithm>
#include <cstdio>
#include <cstring>
#include <sched.h>
#include <time.h>

#include "platform/kiln/Assert.h"
#include "platform/vault/VaultAtomic.h"
#include "platform/vault/VaultLayout.h"
#include "platform/vault/VaultNames.h"
#include "platform/vault/VaultStore.h"
#include "platform/vault/VaultTable.h"

namespace Vault {

namespace {

// Early attempts retry at once (a change takes microseconds); later ones
// give the writer the processor, then time.
void
backOff( U32 attempt ) {
   if ( attempt < 16 ) {
      return;
   }
   if ( attempt < 128 ) {
      sched_yield();
      return;
   }
   timespec pause = { 0, 100 * 1000 };
   nanosleep( &pause, nullptr );
}

std::string
hex( U32 value ) {
   char text[ 16 ];
   std::snprintf( text, sizeof( text ), "0x%08x", value );
   return text;
}

} // namespace

Record
Snapshot::at( U32 index ) const {
   KILN_ASSERT( index < count_ );
   const U8 * at = slots_.data() + U64( index ) * slotSize_;
   SlotHeader slotHeader;
   std::memcpy( &slotHeader, at, sizeof( slotHeader ) );
   return Record{ slotHeader.key, slotHeader.length, at + sizeof( SlotHeader ) };
}

std::optional< Record >
Snapshot::find( U32 key ) const {
   for ( U32 index = 0; index < count_; ++index ) {
      Record record = at( index );
      if ( record.key == key ) {
         return record;
      }
   }
   return std::nullopt;
}

void
Snapshot::sortByKey() {
   std::vector< U32 > order( count_ );
   for ( U32 index = 0; index < count_; ++index ) {
      order[ index ] = index;
   }
   std::sort( order.begin(), order.end(),
              [ this ]( U32 a, U32 b ) { return at( a ).key < at( b ).key; } );
   std::vector< U8 > sorted( slots_.size() );
   for ( U32 index = 0; index < count_; ++index ) {
      std::memcpy( sorted.data() + U64( index ) * slotSize_,
                   slots_.data() + U64( order[ index ] ) * slotSize_, slotSize_ );
   }
   slots_.swap( sorted );
}

TableReader::TableReader( std::string prefix, std::string path )
      : prefix_( std::move( prefix ) ), path_( std::move( path ) ) {
   if ( checkPrefix( prefix_ ).ok() && checkTablePath( prefix_, path_ ).ok() ) {
      name_ = tableSegmentName( prefix_, path_ );
   }
}

const TableHeader *
TableReader::header() const {
   return reinterpret_cast< const TableHeader * >( segment_.data() );
}

Status
TableReader::snapshot( Snapshot & out ) {
   Status status;
   for ( U32 attempt = 0; attempt < maxAttempts_; ++attempt ) {
      backOff( attempt );
      if ( tryOnce( out, status ) == Step::done ) {
         if ( !status.ok() ) {
            out.count_ = 0;
         }
         return status;
      }
   }
   out.count_ = 0;
   if ( status.code() == Errc::inconsistent && !isAlive( owner_ ) ) {
      return writerGone();
   }
   return status;
}

Status
TableReader::attach() {
   if ( name_.empty() ) {
      Status bad = checkPrefix( prefix_ );
      return bad.ok() ? checkTablePath( prefix_, path_ ) : bad;
   }
   ownerChecked_ = false;
   Status status = Segment::open( name_, false, segment_ );
   return status.code() == Errc::notFound ? missingTable() : status;
}

TableReader::Step
TableReader::tryOnce( Snapshot & out, Status & status ) {
   if ( !segment_.valid() ) {
      status = attach();
      if ( !status.ok() ) {
         return Step::done;
      }
   }
   // Taking the file's size first means a segment that shrank is never read
   // past its end (only tampering shrinks one; the window left is tiny).
   bool changed = false;
   status = segment_.remapToFileSize( changed );
   if ( !status.ok() ) {
      return Step::done;
   }
   if ( segment_.size() < sizeof( TableHeader ) || loadAcquire( &header()->magic ) == 0 ) {
      return unsettledHeader( status );
   }
   status = checkFixedHeader();
   if ( !status.ok() ) {
      return Step::done;
   }
   if ( !ownerChecked_ ) {
      owner_ = ProcessIdentity{ header()->ownerPid, header()->ownerStart };
      ownerChecked_ = true;
      if ( !isAlive( owner_ ) ) {
         status = writerGone();
         return Step::done;
      }
   }
   if ( loadAcquire( &header()->state ) == segmentRetired ) {
      segment_.reset();  // its writer left; look the name up again
      status = missingTable();
      return Step::retry;
   }
   return copyTable( out, status );
}

TableReader::Step
TableReader::copyTable( Snapshot & out, Status & status ) {
   const TableHeader * h = header();
   U32 before = loadAcquire( &h->sequence );
   if ( before & 1 ) {
      status = writerBusy();
      return Step::retry;
   }
   U32 capacity = loadRelaxed( &h->capacity );
   U32 count = loadRelaxed( &h->count );
   U32 recordSize = loadRelaxed( &h->recordSize );
   U32 slotSize = loadRelaxed( &h->slotSize );
   U32 generation = loadRelaxed( &h->generation );
   Status shape = checkShape( capacity, count, recordSize, slotSize );
   if ( shape.ok() && count > 0 ) {
      out.slots_.resize( U64( count ) * slotSize );
      // The copy may race with a change; the sequence check below discards it.
      std::memcpy( out.slots_.data(), segment_.data() + sizeof( TableHeader ),
                   out.slots_.size() );
   }
   std::atomic_thread_fence( std::memory_order_acquire );
   if ( loadRelaxed( &h->sequence ) != before ) {
      status = writerBusy();
      return Step::retry;
   }
   if ( !shape.ok() ) {
      // The table may have grown after the size was taken: look once more.
      bool changed = false;
      status = segment_.remapToFileSize( changed );
      if ( status.ok() && !changed ) {
         status = shape;
      }
      return status.ok() ? Step::retry : Step::done;
   }
   out.slotSize_ = slotSize;
   out.count_ = count;
   out.recordSize_ = recordSize;
   out.capacity_ = capacity;
   out.generation_ = generation;
   status = checkSlots( out );
   if ( status.ok() && !pidExists( owner_.pid ) ) {
      status = writerGone();
   }
   return Step::done;
}

// A segment shorter than a header or with a zero magic may be one its writer
// is still setting up: retry, and report it if it stays so.
TableReader::Step
TableReader::unsettledHeader( Status & status ) {
   U64 size = segment_.size();
   if ( size > 0 && size < sizeof( TableHeader ) ) {
      // Writers size a segment in one step: a partial header is never transient.
      status = corrupt( "truncated to " + std::to_string( size ) + " bytes, its header needs " +
                        std::to_string( sizeof( TableHeader ) ) );
      return Step::done;
   }
   status = corrupt( size == 0 ? "the segment is empty" : "its header was never written" );
   return Step::retry;
}

Status
TableReader::writerBusy() const {
   return Status( Errc::inconsistent, "no consistent view of table '" + path_ + "' after " +
                                         std::to_string( maxAttempts_ ) +
                                         " attempts: the writer kept changing it" );
}

Status
TableReader::corrupt( const std::string & detail ) const {
   return Status( Errc::corrupt, "corrupt table '" + path_ + "' (" + name_ + "): " + detail );
}

// Fields the writer sets once, before the magic.
Status
TableReader::checkFixedHeader() const {
   const TableHeader * h = header();
   if ( h->magic != tableMagic ) {
      return corrupt( "bad magic " + hex( h->magic ) );
   }
   if ( h->version != layoutVersion ) {
      return Status( Errc::versionMismatch,
                     "table '" + path_ + "' (" + name_ + ") has layout version " +
                        std::to_string( h->version ) + ", this reader understands " +
                        std::to_string( layoutVersion ) );
   }
   if ( h->headerSize != sizeof( TableHeader ) ) {
      return corrupt( "header size " + std::to_string( h->headerSize ) + ", expected " +
                      std::to_string( sizeof( TableHeader ) ) );
   }
   if ( strnlen( h->path, sizeof( h->path ) ) == sizeof( h->path ) ||
        path_ != h->path ) {
      return corrupt( "it holds table '" +
                      std::string( h->path, strnlen( h->path, sizeof( h->path ) ) ) + "'" );
   }
   return Status();
}

Status
TableReader::checkShape( U32 capacity, U32 count, U32 recordSize, U32 slotSize ) const {
   if ( recordSize == 0 || recordSize > maxRecordSize ) {
      return corrupt( "record size " + std::to_string( recordSize ) + " out of range" );
   }
   if ( slotSize != tableSlotSize( recordSize ) ) {
      return corrupt( "slot size " + std::to_string( slotSize ) + " does not fit record size " +
                      std::to_string( recordSize ) );
   }
   if ( count > capacity ) {
      return corrupt( "count " + std::to_string( count ) + " exceeds capacity " +
                      std::to_string( capacity ) );
   }
   U64 needed = sizeof( TableHeader ) + U64( capacity ) * slotSize;
   if ( needed > segment_.size() ) {
      return corrupt( "capacity " + std::to_string( capacity ) + " needs " +
                      std::to_string( needed ) + " bytes, the segment has " +
                      std::to_string( segment_.size() ) );
   }
   return Status();
}

Status
TableReader::checkSlots( const Snapshot & copy ) const {
   for ( U32 index = 0; index < copy.size(); ++index ) {
      Record record = copy.at( index );
      if ( record.length > copy.recordSize() ) {
         return corrupt( "record " + std::to_string( index ) + " (key " +
                         std::to_string( record.key ) + ") claims " +
                         std::to_string( record.length ) + " bytes, at most " +
                         std::to_string( copy.recordSize() ) + " fit" );
      }
   }
   return Status();
}

Status
TableReader::missingTable() const {
   Status agent = agentStatus( prefix_ );
   if ( !agent.ok() ) {
      return agent;
   }
   return Status( Errc::notFound, "table '" + path_ + "' not found (no segment " + name_ + ")" );
}

Status
TableReader::writerGone() const {
   return Status( Errc::agentNotRunning,
                  "agent not running: table '" + path_ + "' was written by pid " +
                     std::to_string( owner_.pid ) + ", which has exited" );
}

} // namespace Vault
