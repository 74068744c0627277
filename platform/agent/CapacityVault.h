// The hardware-capacity tables in shared memory, where the command line
// reads them: the agent mirrors the rows of one feature group of its
// capacity service into a Vault table, and a show command in another
// process reads them back.
//
//    // agent (activity thread)
//    Hardware::Capacity::CapacityVaultWriter writer( store, "capacity/tcam", capacity,
//                                                    "TesselTcamCapacity" );
//    // command line (any process of the same user)
//    std::vector< Hardware::Capacity::CapacityRow > rows;
//    Vault::Status status = Hardware::Capacity::readCapacityTable( prefix, "capacity/tcam", rows );
//
// Each row is one fixed-size record (CapacityVaultRecord) under a U32 row
// id that the writer gives the row's key while the row exists. The writer
// copies every row there is when it is made and then every change the
// service notifies (onCapacityEntry): a row set or registered is written,
// a row removed is removed. Each record is replaced whole (readers never
// see a torn one); a reader racing a refresh of many rows may see some new
// and some old figures, never a mixture within a row.
#pragma once

#include "platform/agent/CapacityHelperSm.h"
#include "platform/kiln/Ptr.h"
#include "platform/kiln/String.h"
#include "platform/kiln/Types.h"
#include "platform/vault/VaultError.h"
#include "platform/vault/VaultStore.h"
#include "platform/vault/VaultTable.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Hardware::Capacity {

// The binary form of one row. Fixed-width fields in host byte order, no
// padding, the same in 32- and 64-bit processes. Names are NUL-padded and
// hold at most capacityVaultNameMax bytes.
constexpr U32 capacityVaultFormat = 1;
constexpr size_t capacityVaultNameMax = 63;

struct CapacityVaultRecord {
   U32 format; // capacityVaultFormat
   U32 unit;
   U32 used;
   U32 free;
   U32 reserved;
   U32 total;
   char featureGroup[ capacityVaultNameMax + 1 ];
   char feature[ capacityVaultNameMax + 1 ];
   char row[ capacityVaultNameMax + 1 ];
};
static_assert( sizeof( CapacityVaultRecord ) == 6 * 4 + 3 * 64 );
static_assert( offsetof( CapacityVaultRecord, featureGroup ) == 24 );

// The record of a row; nothing when a name is longer than
// capacityVaultNameMax or holds a NUL (it would not come back as it was).
std::optional< CapacityVaultRecord > capacityVaultRecord( const CapacityRow & row );
// The row of a stored record; nothing, and `error` says why, when the bytes
// are not a record of this format (wrong length or format, a name without
// its terminating NUL).
std::optional< CapacityRow > capacityRowOf( const U8 * data, U32 length, std::string & error );

// Mirrors the rows of one feature group into a Vault table. Lives on the
// activity thread; owns the table, which goes when the writer goes.
class CapacityVaultWriter : public CapacityHelperSm::NotifieeConst {
 public:
   // Creates the table at `path` in `store` and writes every row of
   // `featureGroup` (of every group when empty) that `capacity` holds.
   // `capacity` must not be null. Throws Vault::Error as
   // Store::createTable does.
   CapacityVaultWriter( Vault::Store & store, const std::string & path,
                        const Kiln::Ptr< CapacityHelperSm > & capacity,
                        const Kiln::String & featureGroup );
   ~CapacityVaultWriter() override;

   void onCapacityEntry( const CapacityKey & key ) override;

   const Kiln::Ptr< CapacityHelperSm > & capacity() const { return capacity_; }
   const Kiln::String & featureGroup() const { return featureGroup_; }
   const Vault::TableWriter & table() const { return table_; }
   // The row id a key is stored under, or nothing.
   std::optional< U32 > rowId( const CapacityKey & key ) const;
   // Rows that could not be published: a name that does not fit the record,
   // or a table that could not grow. Each is traced on "CapacityVault".
   U32 rowsNotPublished() const { return rowsNotPublished_; }

 private:
   bool mirrors( const CapacityKey & key ) const;
   void publish( const CapacityKey & key );
   void unpublish( const CapacityKey & key );
   U32 newRowId();

   Vault::TableWriter table_;
   Kiln::Ptr< CapacityHelperSm > capacity_;
   Kiln::String featureGroup_;
   std::map< CapacityKey, U32 > rowIds_;
   std::vector< U32 > freeRowIds_;
   U32 nextRowId_ = 0;
   U32 rowsNotPublished_ = 0;
};

// The rows of the capacity table at `path` of the agent holding `prefix`,
// in key order (feature group, feature, unit, row). On error `rows` is
// empty and the status says why: the codes of Vault::TableReader::snapshot,
// and corrupt (naming the row id) for a record that is not a capacity row.
Vault::Status readCapacityTable( const std::string & prefix, const std::string & path,
                                 std::vector< CapacityRow > & rows );

} // namespace Hardware::Capacity
