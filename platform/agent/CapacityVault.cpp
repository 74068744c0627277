#include "platform/agent/CapacityVault.h"

#include "platform/fastlog/Trace.h"
#include "platform/kiln/Assert.h"

#include <algorithm>
#include <cstring>

TRACE_CHANNEL( "CapacityVault" );

namespace Hardware::Capacity {

namespace {

// Room for the tables of a few units before the first growth.
constexpr U32 initialCapacity = 256;

bool
copyName( char ( &to )[ capacityVaultNameMax + 1 ], const Kiln::String & name ) {
   // A NUL inside the name would end it early when read back.
   if ( name.size() > capacityVaultNameMax || name.str().find( '\0' ) != std::string::npos ) {
      return false;
   }
   std::memset( to, 0, sizeof( to ) );
   std::memcpy( to, name.c_str(), name.size() );
   return true;
}

std::optional< Kiln::String >
nameOf( const char ( &from )[ capacityVaultNameMax + 1 ] ) {
   const char * end = static_cast< const char * >( std::memchr( from, 0, sizeof( from ) ) );
   if ( !end ) {
      return std::nullopt;
   }
   return Kiln::String( from, static_cast< size_t >( end - from ) );
}

} // namespace

std::optional< CapacityVaultRecord >
capacityVaultRecord( const CapacityRow & row ) {
   CapacityVaultRecord record{};
   record.format = capacityVaultFormat;
   record.unit = row.key.unit;
   record.used = row.figures.used;
   record.free = row.figures.free;
   record.reserved = row.figures.reserved;
   record.total = row.figures.total;
   if ( !copyName( record.featureGroup, row.key.featureGroup ) ||
        !copyName( record.feature, row.key.feature ) || !copyName( record.row, row.key.row ) ) {
      return std::nullopt;
   }
   return record;
}

std::optional< CapacityRow >
capacityRowOf( const U8 * data, U32 length, std::string & error ) {
   CapacityVaultRecord record;
   if ( length != sizeof( record ) ) {
      error = "record of " + std::to_string( length ) + " bytes, a capacity row has " +
              std::to_string( sizeof( record ) );
      return std::nullopt;
   }
   std::memcpy( &record, data, sizeof( record ) );
   if ( record.format != capacityVaultFormat ) {
      error = "capacity row format " + std::to_string( record.format ) + ", expected " +
              std::to_string( capacityVaultFormat );
      return std::nullopt;
   }
   std::optional< Kiln::String > featureGroup = nameOf( record.featureGroup );
   std::optional< Kiln::String > feature = nameOf( record.feature );
   std::optional< Kiln::String > row = nameOf( record.row );
   if ( !featureGroup || !feature || !row ) {
      error = "capacity row with an unterminated name";
      return std::nullopt;
   }
   return CapacityRow{
      CapacityKey( *featureGroup, *feature, record.unit, *row ),
      CapacityFigures( record.used, record.free, record.reserved, record.total ) };
}

CapacityVaultWriter::CapacityVaultWriter( Vault::Store & store, const std::string & path,
                                          const Kiln::Ptr< CapacityHelperSm > & capacity,
                                          const Kiln::String & featureGroup )
      : table_( store.createTable( path, sizeof( CapacityVaultRecord ), initialCapacity ) ),
        capacity_( capacity ), featureGroup_( featureGroup ) {
   KILN_ASSERT_MSG( capacity_, "capacity table writer without a capacity service" );
   {
      Vault::TableWriter::Batch batch( table_ );
      for ( const auto & [ key, figures ] : capacity_->capacityEntryCollection() ) {
         if ( mirrors( key ) ) {
            publish( key );
         }
      }
   }
   notifierIs( capacity_ );
}

CapacityVaultWriter::~CapacityVaultWriter() = default;

std::optional< U32 >
CapacityVaultWriter::rowId( const CapacityKey & key ) const {
   auto found = rowIds_.find( key );
   if ( found == rowIds_.end() ) {
      return std::nullopt;
   }
   return found->second;
}

void
CapacityVaultWriter::onCapacityEntry( const CapacityKey & key ) {
   if ( !mirrors( key ) ) {
      return;
   }
   if ( capacity_->capacityEntryHas( key ) ) {
      publish( key );
   } else {
      unpublish( key );
   }
}

bool
CapacityVaultWriter::mirrors( const CapacityKey & key ) const {
   return featureGroup_.empty() || key.featureGroup == featureGroup_;
}

// A failure here is reported and counted rather than thrown: the writer
// runs inside the capacity service's notification, whose caller has no
// business with shared memory.
void
CapacityVaultWriter::publish( const CapacityKey & key ) {
   std::optional< CapacityVaultRecord > record =
      capacityVaultRecord( CapacityRow{ key, capacity_->capacityEntry( key ) } );
   if ( !record ) {
      ++rowsNotPublished_;
      TRACE0( "Capacity row not published, a name is longer than "
              << capacityVaultNameMax << " bytes: " << key.valueText() );
      return;
   }
   auto [ found, inserted ] = rowIds_.try_emplace( key, 0 );
   if ( inserted ) {
      found->second = newRowId();
   }
   try {
      table_.put( found->second, &*record, sizeof( *record ) );
   } catch ( const Vault::Error & error ) {
      ++rowsNotPublished_;
      TRACE0( "Capacity row not published: " << error.what() << ": " << key.valueText() );
      if ( inserted ) {
         freeRowIds_.push_back( found->second );
         rowIds_.erase( found );
      }
   }
}

void
CapacityVaultWriter::unpublish( const CapacityKey & key ) {
   auto found = rowIds_.find( key );
   if ( found == rowIds_.end() ) {
      return;
   }
   table_.remove( found->second );
   freeRowIds_.push_back( found->second );
   rowIds_.erase( found );
}

U32
CapacityVaultWriter::newRowId() {
   if ( !freeRowIds_.empty() ) {
      U32 id = freeRowIds_.back();
      freeRowIds_.pop_back();
      return id;
   }
   return nextRowId_++;
}

Vault::Status
readCapacityTable( const std::string & prefix, const std::string & path,
                   std::vector< CapacityRow > & rows ) {
   rows.clear();
   Vault::TableReader reader( prefix, path );
   Vault::Snapshot snapshot;
   Vault::Status status = reader.snapshot( snapshot );
   if ( !status.ok() ) {
      return status;
   }
   rows.reserve( snapshot.size() );
   for ( U32 i = 0; i < snapshot.size(); ++i ) {
      Vault::Record record = snapshot.at( i );
      std::string error;
      std::optional< CapacityRow > row = capacityRowOf( record.data, record.length, error );
      if ( !row ) {
         rows.clear();
         return Vault::Status( Vault::Errc::corrupt, "corrupt capacity table '" + path +
                                                        "': row " + std::to_string( record.key ) +
                                                        ": " + error );
      }
      rows.push_back( std::move( *row ) );
   }
   std::sort( rows.begin(), rows.end(), []( const CapacityRow & a, const CapacityRow & b ) {
      return a.key < b.key;
   } );
   return status;
}

} // namespace Hardware::Capacity
