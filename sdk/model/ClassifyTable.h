// A group's installed entries compiled for lookup: the fast path behind
// classify() (Classify.h), which must answer exactly as the plain loop does.
//
// The table holds one row per installed entry of the group, in lookup order:
// the entry's data and mask over the bytes of the group's key (ClassifyKey.h)
// that some row masks, packed into 64-bit words, and whether the entry is
// disabled. A packet's key is built once per group and compared row by row;
// the first row whose masked words agree names the hit. A table of many rows
// also sorts them into buckets by the value of the one key byte that spreads
// them best: a row that needs an exact value of that byte goes into that
// value's bucket, every other row into a list that every packet scans, and
// a lookup merges the packet's bucket with that list in row order.
//
// Upkeep. The field processor tells the table of every change to the
// group's installed entries: a disabled, enabled or removed entry only flips
// a flag of its row; anything else (an install, a reinstall, a new priority)
// marks the table stale, and the next lookup rebuilds it from the group's
// rows. Changes that keep the lookup order (row moves, compression) need
// nothing.
//
// A value type that holds entry ids, never pointers, so a copied unit state
// copies a table that is right for the copy. Not thread-safe: the unit's
// lock is held by every caller.
#pragma once

#include <optional>
#include <unordered_map>
#include <vector>

#include "platform/kiln/Types.h"
#include "sdk/model/ClassifyKey.h"
#include "sdk/model/Entry.h"

namespace ChipModel {

struct Group;
class FieldProcessor;

class ClassifyTable {
 public:
   // --- upkeep, called by the field processor after the change ---
   // An installed entry was written or moved in the order.
   void changed() { stale_ = true; }
   // The entry left hardware (remove) or was destroyed.
   void removed( bcm_field_entry_t id );
   void enabledIs( bcm_field_entry_t id, bool enabled );

   // The group's first installed, enabled entry that matches the packet, or
   // null; nullopt when only the plain loop can answer (a packet value the
   // key cannot express). Rebuilds a stale table first.
   std::optional< const Entry * > firstMatch( const Group & group,
                                              const LookupContext & context,
                                              const UnitState & state );

   // --- for tests and benchmarks ---
   bool stale() const { return stale_; }
   U64 rebuilds() const { return rebuilds_; }
   // Lookups left to the plain loop so far.
   U64 fallbacks() const { return fallbacks_; }
   U32 rows() const { return static_cast< U32 >( ids_.size() ); }
   U32 wordsPerRow() const { return words_; }
   bool bucketed() const { return !buckets_.empty(); }

 private:
   enum Flag : U8 { disabled = 1, never = 2, gone = 4 };

   void rebuild( const Group & group, const FieldProcessor & field );
   void chooseBytes( const std::vector< CompiledRow > & compiled );
   void store( U32 row, const CompiledRow & compiled, bool enabled );
   void buildBuckets();
   const U64 * rowBits( U32 row ) const {
      return bits_.data() + size_t( row ) * 2 * words_;
   }
   U8 rowByte( U32 row, bool mask, U32 byte ) const;
   bool rowMatches( U32 row, const U64 * key ) const;
   std::optional< U32 > scan( const U64 * key ) const;

   bool stale_ = true;
   U64 rebuilds_ = 0;
   U64 fallbacks_ = 0;
   KeyLayout layout_;
   std::vector< U32 > gather_;   // key byte of each packed byte
   U32 words_ = 0;               // 64-bit words per row
   std::vector< U64 > bits_;     // per row: words_ of data, then words_ of mask
   std::vector< bcm_field_entry_t > ids_;
   std::vector< U8 > flags_;
   std::unordered_map< bcm_field_entry_t, U32 > rowOf_; // rows not gone
   U32 goneRows_ = 0;
   // The packed byte the buckets go by; per value of it the rows that need
   // that value, ascending; then the rows that take any value.
   U32 bucketByte_ = 0;
   std::vector< std::vector< U32 > > buckets_;
   std::vector< U8 > keyBytes_; // scratch
   std::vector< U64 > key_;     // scratch
};

} // namespace ChipModel
