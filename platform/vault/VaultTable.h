// Shared-memory tables: keyed maps (U32 key -> record) written by the agent
// and read by any number of other processes.
//
// A record is the caller's binary form of a value, at most `recordSize`
// bytes; the table keeps its key and its length beside it and never looks
// inside. A table lives in one segment (see VaultLayout.h): a header, then
// the records packed at the front of an array of slots.
//
// Consistency: the header's sequence counter is odd while the writer changes
// anything (a seqlock). A reader copies the whole table between two equal
// even readings, so it never sees a torn record nor half of a change; when
// the writer keeps it from such a copy for too long it reports `inconsistent`
// instead of returning a mixture.
//
// Growth: a full table doubles its capacity in place (ftruncate, then the
// larger capacity is published and the header's generation counted up), so
// no row is ever dropped. Readers notice the new size on their next snapshot
// and map the segment again.
//
// Lifetime: a TableWriter comes from Store::createTable (which holds the
// agent's prefix); destroying it retires and unlinks the segment. Readers
// holding a retired segment look the name up again.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/vault/VaultError.h"
#include "platform/vault/VaultKeyIndex.h"
#include "platform/vault/VaultProcess.h"
#include "platform/vault/VaultSegment.h"

namespace Vault {

struct TableHeader;

constexpr U32 maxRecordSize = 65536;
constexpr U32 maxTableCapacity = U32( 1 ) << 20;

// A record as stored: its key and the bytes the writer put.
struct Record {
   U32 key = 0;
   U32 length = 0;
   const U8 * data = nullptr;
};

// Writer of one table. Single-threaded: the agent's activity thread only.
// Move-only; the moved-from object owns nothing.
class TableWriter {
 public:
   class Batch;
   class Rewrite;

   TableWriter( TableWriter && ) noexcept = default;
   TableWriter & operator=( TableWriter && other ) noexcept;
   ~TableWriter();

   // Inserts the record or overwrites the one with the same key. Copies
   // `length` bytes (0 .. recordSize) from `data`; the rest of the slot is
   // zeroed. Grows the table when it is full. Throws Error: invalidArgument
   // for an over-long record, tooLarge when the table cannot grow further,
   // system when the segment cannot be enlarged.
   void put( U32 key, const void * data, U32 length );

   // Removes the record; false when there is none with that key. The last
   // record moves into the hole, so the order of records is not kept.
   bool remove( U32 key );

   // Removes every record; capacity and generation stay.
   void clear();

   // The stored record (pointing into the table, valid until the next
   // change), or nothing.
   std::optional< Record > find( U32 key ) const;

   // Keys in table order.
   std::vector< U32 > keys() const;

   U32 size() const;
   U32 capacity() const;
   U32 generation() const;
   U32 recordSize() const { return recordSize_; }
   const std::string & path() const { return path_; }
   const std::string & segmentName() const { return segment_.name(); }

 private:
   friend class Store;
   // Takes a freshly created, zero-filled segment sized for `capacity`
   // records and writes its header, the magic last.
   TableWriter( Segment segment, std::string path, U32 recordSize, U32 capacity,
                const ProcessIdentity & owner );

   TableHeader * header() const;
   U8 * slot( U32 index ) const;
   void beginChange();
   void endChange();
   void grow();
   void retire();
   void
   checkLength( U32 length ) const {
      if ( length > recordSize_ ) {
         refuseLength( length );
      }
   }
   [[noreturn]] void refuseLength( U32 length ) const;
   bool holds( U32 index, U32 key, const void * data, U32 length ) const;
   void writeSlot( U32 index, U32 key, const void * data, U32 length );
   void swapSlots( U32 a, U32 b );
   void truncate( U32 count );

   Segment segment_;
   std::string path_;
   U32 recordSize_ = 0;
   U32 slotSize_ = 0;
   U32 sequence_ = 0;    // the writer's copy of the header's sequence
   U32 changeDepth_ = 0;  // open changes and batches
   KeyIndex index_;  // key -> slot
   std::vector< U8 > scratch_;  // one slot, for swaps
};

// Several changes that readers see all together or not at all: the table's
// sequence stays odd from construction to destruction. Keep it short;
// readers spin meanwhile. Nests.
class TableWriter::Batch {
 public:
   explicit Batch( TableWriter & table ) : table_( table ) { table_.beginChange(); }
   ~Batch() { table_.endChange(); }
   Batch( const Batch & ) = delete;
   Batch & operator=( const Batch & ) = delete;

 private:
   TableWriter & table_;
};

// Makes the table hold exactly the records put through it, in the order
// they were put, changing only what differs: a record already stored at its
// place is not written again, so rewriting a table with what it holds
// leaves it, and its sequence, untouched. The first real change makes the
// sequence odd and commit() makes it even again, so readers see the old
// table or the new one. Keep what runs between the two short.
//
// A key put twice keeps its first place and takes the later bytes. If the
// rewrite is abandoned (destroyed without commit, e.g. by an exception),
// the records not put again stay: nothing is dropped, and the change ends.
class TableWriter::Rewrite {
 public:
   explicit Rewrite( TableWriter & table ) : table_( table ) {}
   ~Rewrite();
   Rewrite( const Rewrite & ) = delete;
   Rewrite & operator=( const Rewrite & ) = delete;

   // Throws as TableWriter::put, before changing anything.
   void put( U32 key, const void * data, U32 length );
   // Removes the records not put and ends the change. Once.
   void commit();
   // Whether anything was written or removed so far.
   bool changed() const { return changed_; }

 private:
   void place( U32 key, const void * data, U32 length );
   void open();
   void close();

   TableWriter & table_;
   U32 placed_ = 0;  // records put, at slots 0 .. placed_ - 1
   bool open_ = false;
   bool changed_ = false;
   bool done_ = false;
};

// A consistent copy of a whole table, owned by the reader process.
class Snapshot {
 public:
   U32 size() const { return count_; }
   bool empty() const { return count_ == 0; }
   U32 recordSize() const { return recordSize_; }
   U32 capacity() const { return capacity_; }
   U32 generation() const { return generation_; }

   // Record `index` (0 .. size() - 1, asserted). Its data pointer is valid
   // until the snapshot changes.
   Record at( U32 index ) const;

   // The record with that key, or nothing. Linear: tables are small.
   std::optional< Record > find( U32 key ) const;

   // Puts the records in ascending key order (tables keep no order).
   void sortByKey();

 private:
   friend class TableReader;
   std::vector< U8 > slots_;
   U32 slotSize_ = 0;
   U32 count_ = 0;
   U32 recordSize_ = 0;
   U32 capacity_ = 0;
   U32 generation_ = 0;
};

// Reader of one table, in any process of the same user. Opens the segment on
// first use and again whenever it was retired or grew. Not thread-safe; use
// one reader per thread.
class TableReader {
 public:
   TableReader( std::string prefix, std::string path );

   // Copies the whole table into `out` (reusing its memory). On error `out`
   // is left empty and the status says why:
   //   agentNotRunning  no agent holds the prefix, or the table's writer exited
   //   notFound         the agent runs but has no such table (yet)
   //   corrupt / versionMismatch  the segment cannot be read; never read
   //                    past its end, whatever its header claims
   //   inconsistent     the writer changed the table throughout maxAttempts
   //   invalidArgument  bad prefix or path
   Status snapshot( Snapshot & out );

   // Bounded retries of snapshot(): the first attempts spin, later ones yield
   // and then sleep 100 microseconds. Default 1000 (a few hundred ms).
   void setMaxAttempts( U32 attempts ) { maxAttempts_ = attempts ? attempts : 1; }

   const std::string & path() const { return path_; }
   const std::string & segmentName() const { return name_; }

 private:
   enum class Step { done, retry };

   Step tryOnce( Snapshot & out, Status & status );
   Status attach();
   Step unsettledHeader( Status & status );
   Step copyTable( Snapshot & out, Status & status );
   Status checkFixedHeader() const;
   Status checkShape( U32 capacity, U32 count, U32 recordSize, U32 slotSize ) const;
   Status checkSlots( const Snapshot & copy ) const;
   Status missingTable() const;
   Status writerGone() const;
   Status writerBusy() const;
   Status corrupt( const std::string & detail ) const;
   const TableHeader * header() const;

   std::string prefix_;
   std::string path_;
   std::string name_;
   Segment segment_;
   ProcessIdentity owner_;
   bool ownerChecked_ = false;  // the full check runs once per mapping
   U32 maxAttempts_ = 1000;
};

} // namespace Vault
