#include "sdk/model/ClassifyTable.h"

#include <algorithm>

#include "sdk/model/Group.h"
#include "sdk/model/Unit.h"

namespace ChipModel {

namespace {

// Below this many rows a plain scan of the table is as quick as buckets.
constexpr U32 bucketsFromRows = 64;
constexpr U32 anyValue = 256; // the bucket of the rows that take any value

// Rows a lookup scans on average when bucketing by a byte: those that take
// any value, and those of the packet's bucket, weighted by how many rows
// each bucket holds.
double
bucketCost( const std::vector< U32 > & counts, U32 anyValueRows ) {
   double squares = 0;
   double total = 0;
   for ( U32 c : counts ) {
      squares += double( c ) * c;
      total += c;
   }
   return anyValueRows + ( total ? squares / total : 0 );
}

} // namespace

void
ClassifyTable::removed( bcm_field_entry_t id ) {
   auto it = rowOf_.find( id );
   if ( stale_ || it == rowOf_.end() ) {
      return;
   }
   flags_[ it->second ] = gone;
   rowOf_.erase( it );
   if ( ++goneRows_ * 2 > ids_.size() ) {
      stale_ = true; // mostly holes: worth compacting
   }
}

void
ClassifyTable::enabledIs( bcm_field_entry_t id, bool enabled ) {
   auto it = rowOf_.find( id );
   if ( stale_ || it == rowOf_.end() ) {
      return;
   }
   U8 & flags = flags_[ it->second ];
   flags = static_cast< U8 >( enabled ? flags & ~disabled : flags | disabled );
}

// Keeps the key bytes that some row masks; the others cannot tell rows apart.
void
ClassifyTable::chooseBytes( const std::vector< CompiledRow > & compiled ) {
   std::vector< bool > used( layout_.bytes(), false );
   for ( const CompiledRow & row : compiled ) {
      for ( size_t i = 0; i < row.mask.size(); ++i ) {
         used[ i ] = used[ i ] || row.mask[ i ];
      }
   }
   gather_.clear();
   for ( U32 i = 0; i < layout_.bytes(); ++i ) {
      if ( used[ i ] ) {
         gather_.push_back( i );
      }
   }
   words_ = static_cast< U32 >( ( gather_.size() + 7 ) / 8 );
}

// Rows and keys are packed the same way, so the byte order within a word
// does not matter.
void
ClassifyTable::store( U32 row, const CompiledRow & compiled, bool enabled ) {
   U8 * data = reinterpret_cast< U8 * >( bits_.data() + size_t( row ) * 2 * words_ );
   U8 * mask = data + size_t( words_ ) * 8;
   for ( size_t b = 0; b < gather_.size(); ++b ) {
      data[ b ] = compiled.data[ gather_[ b ] ];
      mask[ b ] = compiled.mask[ gather_[ b ] ];
   }
   flags_[ row ] = static_cast< U8 >( ( enabled ? 0 : disabled ) |
                                      ( compiled.never ? never : 0 ) );
}

void
ClassifyTable::rebuild( const Group & group, const FieldProcessor & field ) {
   std::vector< const Entry * > entries;
   group.rows.forEachInOrder( [ & ]( U32 key ) {
      const Entry * e = field.entry( static_cast< bcm_field_entry_t >( key ) );
      if ( e && e->installed() ) {
         entries.push_back( e );
      }
      return false;
   } );
   layout_ = KeyLayout();
   for ( const Entry * e : entries ) {
      layout_.cover( *e->hardware );
   }
   layout_.finish();
   std::vector< CompiledRow > compiled;
   for ( const Entry * e : entries ) {
      compiled.push_back( layout_.compile( *e->hardware ) );
   }
   chooseBytes( compiled );
   bits_.assign( entries.size() * 2 * words_, 0 );
   flags_.assign( entries.size(), 0 );
   ids_.clear();
   rowOf_.clear();
   goneRows_ = 0;
   for ( U32 row = 0; row < entries.size(); ++row ) {
      ids_.push_back( entries[ row ]->id );
      rowOf_[ entries[ row ]->id ] = row;
      store( row, compiled[ row ], entries[ row ]->enabled );
   }
   key_.assign( words_, 0 );
   buildBuckets();
   stale_ = false;
   ++rebuilds_;
}

U8
ClassifyTable::rowByte( U32 row, bool mask, U32 byte ) const {
   return reinterpret_cast< const U8 * >( rowBits( row ) + ( mask ? words_ : 0 ) )[ byte ];
}

// Buckets by the packed byte that promises the shortest scans, and only
// when that at least halves them.
void
ClassifyTable::buildBuckets() {
   buckets_.clear();
   U32 rows = this->rows();
   if ( rows < bucketsFromRows ) {
      return;
   }
   std::optional< U32 > best;
   double bestCost = rows / 2.0;
   for ( U32 b = 0; b < gather_.size(); ++b ) {
      std::vector< U32 > counts( 256, 0 );
      U32 anyValueRows = 0;
      for ( U32 row = 0; row < rows; ++row ) {
         if ( rowByte( row, true, b ) == 0xff ) {
            ++counts[ rowByte( row, false, b ) ];
         } else {
            ++anyValueRows;
         }
      }
      double cost = bucketCost( counts, anyValueRows );
      if ( cost < bestCost ) {
         bestCost = cost;
         best = b;
      }
   }
   if ( !best ) {
      return;
   }
   bucketByte_ = *best;
   buckets_.assign( anyValue + 1, {} );
   for ( U32 row = 0; row < rows; ++row ) {
      bool exact = rowByte( row, true, bucketByte_ ) == 0xff;
      buckets_[ exact ? rowByte( row, false, bucketByte_ ) : anyValue ].push_back( row );
   }
}

bool
ClassifyTable::rowMatches( U32 row, const U64 * key ) const {
   const U64 * bits = rowBits( row );
   for ( U32 w = 0; w < words_; ++w ) {
      if ( ( key[ w ] & bits[ words_ + w ] ) != bits[ w ] ) {
         return false;
      }
   }
   return !flags_[ row ];
}

std::optional< U32 >
ClassifyTable::scan( const U64 * key ) const {
   if ( buckets_.empty() ) {
      for ( U32 row = 0; row < ids_.size(); ++row ) {
         if ( rowMatches( row, key ) ) {
            return row;
         }
      }
      return std::nullopt;
   }
   // The first hit of the packet's bucket, unless a row that takes any
   // value comes before it and matches too.
   U8 value = reinterpret_cast< const U8 * >( key )[ bucketByte_ ];
   std::optional< U32 > found;
   for ( U32 row : buckets_[ value ] ) {
      if ( rowMatches( row, key ) ) {
         found = row;
         break;
      }
   }
   for ( U32 row : buckets_[ anyValue ] ) {
      if ( found && row > *found ) {
         break;
      }
      if ( rowMatches( row, key ) ) {
         return row;
      }
   }
   return found;
}

std::optional< const Entry * >
ClassifyTable::firstMatch( const Group & group, const LookupContext & context,
                           const UnitState & state ) {
   if ( stale_ ) {
      rebuild( group, state.field );
   }
   if ( !layout_.packetKey( context, state, keyBytes_ ) ) {
      ++fallbacks_;
      return std::nullopt;
   }
   std::fill( key_.begin(), key_.end(), 0 );
   U8 * packed = reinterpret_cast< U8 * >( key_.data() );
   for ( size_t b = 0; b < gather_.size(); ++b ) {
      packed[ b ] = keyBytes_[ gather_[ b ] ];
   }
   std::optional< U32 > row = scan( key_.data() );
   return row ? state.field.entry( ids_[ *row ] ) : nullptr;
}

} // namespace ChipModel
