// The records of the command line's shared-memory tables.
//
// Every field is unsigned. The binary form a table stores is the fields in
// declaration order, little-endian, without padding (the key first, as a
// U32), so a 32-bit agent and a 64-bit command line read the same bytes:
//
//   VaultStageInfo          key, pipeOperationMode (U8), numPipes, tcamSize      13 bytes
//   VaultGroupInfo          key, allocatedEntries, freeEntries, numCopies,
//                           globalGroupId                                         20
//   VaultFeatureInfo        key, entriesAllocated, entriesUsed, groupId           16
//   VaultEntryGroupInfo     key, groupId, stats                                   12
//   VaultEntryFeatureInfo   key, featureId                                         8
//   VaultGroupQualiferInfo  key, offset, size                                     12
//   VaultEntryInfo          key, size, then `size` bytes of data             8 + size
//   VaultSliceInfo          key, entryCount, freeCount, groupId, width, member    24
//   TesselTcam::VaultUnitInfo  key (unit), moduleId                                8
//
// deserialize() takes a stored record and its length and refuses (false)
// anything that is not one: a reader of a damaged table says so instead of
// printing garbage. The decoding is inline, so the command line needs only
// this header; the text forms (vaultString() and the string constructors,
// for traces and the framework's value representation) are in the library.
#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "common/TesselExport.h"
#include "export/TesselTcamVaultName.h"

namespace TesselTcam {

// Writes the fields of a binary form one after the other.
class RecordWriter {
 public:
   explicit RecordWriter( void * out ) : out_( static_cast< U8 * >( out ) ) {}
   RecordWriter &
   u32( U32 value ) {
      putU32( out_, value );
      out_ += 4;
      return *this;
   }
   RecordWriter &
   u8( U8 value ) {
      *out_++ = value;
      return *this;
   }

 private:
   U8 * out_;
};

// Reads them back; ok() is false once a field would lie past the end.
class RecordReader {
 public:
   RecordReader( const void * data, U32 length )
         : in_( static_cast< const U8 * >( data ) ), left_( length ) {}
   U32
   u32() {
      if ( left_ < 4 ) {
         ok_ = false;
         return 0;
      }
      U32 value = getU32( in_ );
      in_ += 4;
      left_ -= 4;
      return value;
   }
   U8
   u8() {
      if ( left_ < 1 ) {
         ok_ = false;
         return 0;
      }
      --left_;
      return *in_++;
   }
   const U8 * position() const { return in_; }
   U32 left() const { return left_; }
   bool ok() const { return ok_; }
   // Every byte read, nothing left over.
   bool done() const { return ok_ && left_ == 0; }

 private:
   const U8 * in_;
   U32 left_;
   bool ok_ = true;
};

// Known units of the agent: a unit and the module that carries it.
struct VaultUnitInfo {
   static constexpr U32 recordSize = 8;
   Id key;
   U32 moduleId = 0;

   U32 serializeLen() const { return recordSize; }
   void serialize( void * out ) const { RecordWriter( out ).u32( key.value ).u32( moduleId ); }
   static bool
   deserialize( const void * data, U32 length, VaultUnitInfo & out ) {
      RecordReader r( data, length );
      VaultUnitInfo v;
      v.key = r.u32();
      v.moduleId = r.u32();
      return r.done() && ( out = v, true );
   }
   bool operator==( const VaultUnitInfo & ) const = default;
};

} // namespace TesselTcam

namespace Tessel {

using TesselTcam::Id;

struct VaultStageInfo {
   static constexpr U32 recordSize = 13;
   Id key;                    // stage id
   U8 pipeOperationMode = 0;  // the SDK's operating mode of the stage
   U32 numPipes = 0;          // pipes the stage is programmed in separately
   U32 tcamSize = 0;          // entries of the stage's TCAM

   VaultStageInfo() = default;
   VaultStageInfo( Id k, U8 mode, U32 pipes, U32 size )
         : key( k ), pipeOperationMode( mode ), numPipes( pipes ), tcamSize( size ) {}
   TESSEL_EXPORT explicit VaultStageInfo( std::string_view text );
   TESSEL_EXPORT std::string vaultString() const;
   std::string valueText() const { return vaultString(); }

   U32 serializeLen() const { return recordSize; }
   void
   serialize( void * out ) const {
      TesselTcam::RecordWriter( out )
         .u32( key.value )
         .u8( pipeOperationMode )
         .u32( numPipes )
         .u32( tcamSize );
   }
   static bool
   deserialize( const void * data, U32 length, VaultStageInfo & out ) {
      TesselTcam::RecordReader r( data, length );
      VaultStageInfo v;
      v.key = r.u32();
      v.pipeOperationMode = r.u8();
      v.numPipes = r.u32();
      v.tcamSize = r.u32();
      return r.done() && ( out = v, true );
   }
   bool operator==( const VaultStageInfo & ) const = default;
};

struct VaultGroupInfo {
   static constexpr U32 recordSize = 20;
   Id key;                    // group id (low 24 bits of the SDK group id)
   U32 allocatedEntries = 0;  // used entries x copies
   U32 freeEntries = 0;       // the SDK's free count (halved under the outer-VLAN workaround)
   U32 numCopies = 0;         // copies per pipe
   U32 globalGroupId = 0;     // the SDK group id

   VaultGroupInfo() = default;
   VaultGroupInfo( Id k, U32 allocated, U32 free, U32 copies, U32 global )
         : key( k ), allocatedEntries( allocated ), freeEntries( free ), numCopies( copies ),
           globalGroupId( global ) {}
   TESSEL_EXPORT explicit VaultGroupInfo( std::string_view text );
   TESSEL_EXPORT std::string vaultString() const;
   std::string valueText() const { return vaultString(); }

   U32 serializeLen() const { return recordSize; }
   void
   serialize( void * out ) const {
      TesselTcam::RecordWriter( out )
         .u32( key.value )
         .u32( allocatedEntries )
         .u32( freeEntries )
         .u32( numCopies )
         .u32( globalGroupId );
   }
   static bool
   deserialize( const void * data, U32 length, VaultGroupInfo & out ) {
      TesselTcam::RecordReader r( data, length );
      VaultGroupInfo v;
      v.key = r.u32();
      v.allocatedEntries = r.u32();
      v.freeEntries = r.u32();
      v.numCopies = r.u32();
      v.globalGroupId = r.u32();
      return r.done() && ( out = v, true );
   }
   bool operator==( const VaultGroupInfo & ) const = default;
};

struct VaultFeatureInfo {
   static constexpr U32 recordSize = 16;
   Id key;                    // the reservation's index in the reservation table
   U32 entriesAllocated = 0;  // x copies
   U32 entriesUsed = 0;       // x copies
   U32 groupId = 0;

   VaultFeatureInfo() = default;
   VaultFeatureInfo( Id k, U32 allocated, U32 used, U32 group )
         : key( k ), entriesAllocated( allocated ), entriesUsed( used ), groupId( group ) {}
   TESSEL_EXPORT explicit VaultFeatureInfo( std::string_view text );
   TESSEL_EXPORT std::string vaultString() const;
   std::string valueText() const { return vaultString(); }

   U32 serializeLen() const { return recordSize; }
   void
   serialize( void * out ) const {
      TesselTcam::RecordWriter( out )
         .u32( key.value )
         .u32( entriesAllocated )
         .u32( entriesUsed )
         .u32( groupId );
   }
   static bool
   deserialize( const void * data, U32 length, VaultFeatureInfo & out ) {
      TesselTcam::RecordReader r( data, length );
      VaultFeatureInfo v;
      v.key = r.u32();
      v.entriesAllocated = r.u32();
      v.entriesUsed = r.u32();
      v.groupId = r.u32();
      return r.done() && ( out = v, true );
   }
   bool operator==( const VaultFeatureInfo & ) const = default;
};

struct VaultEntryGroupInfo {
   static constexpr U32 recordSize = 12;
   Id key;           // logical entry id
   U32 groupId = 0;
   U32 stats = 0;    // hits of the entry, summed over its copies

   VaultEntryGroupInfo() = default;
   VaultEntryGroupInfo( Id k, U32 group, U32 hits )
         : key( k ), groupId( group ), stats( hits ) {}
   TESSEL_EXPORT explicit VaultEntryGroupInfo( std::string_view text );
   TESSEL_EXPORT std::string vaultString() const;
   std::string valueText() const { return vaultString(); }

   U32 serializeLen() const { return recordSize; }
   void
   serialize( void * out ) const {
      TesselTcam::RecordWriter( out ).u32( key.value ).u32( groupId ).u32( stats );
   }
   static bool
   deserialize( const void * data, U32 length, VaultEntryGroupInfo & out ) {
      TesselTcam::RecordReader r( data, length );
      VaultEntryGroupInfo v;
      v.key = r.u32();
      v.groupId = r.u32();
      v.stats = r.u32();
      return r.done() && ( out = v, true );
   }
   bool operator==( const VaultEntryGroupInfo & ) const = default;
};

struct VaultEntryFeatureInfo {
   static constexpr U32 recordSize = 8;
   Id key;             // logical entry id
   U32 featureId = 0;  // reservation index of the feature that owns the entry

   VaultEntryFeatureInfo() = default;
   VaultEntryFeatureInfo( Id k, U32 feature )
         : key( k ), featureId( feature ) {}
   TESSEL_EXPORT explicit VaultEntryFeatureInfo( std::string_view text );
   TESSEL_EXPORT std::string vaultString() const;
   std::string valueText() const { return vaultString(); }

   U32 serializeLen() const { return recordSize; }
   void
   serialize( void * out ) const {
      TesselTcam::RecordWriter( out ).u32( key.value ).u32( featureId );
   }
   static bool
   deserialize( const void * data, U32 length, VaultEntryFeatureInfo & out ) {
      TesselTcam::RecordReader r( data, length );
      VaultEntryFeatureInfo v;
      v.key = r.u32();
      v.featureId = r.u32();
      return r.done() && ( out = v, true );
   }
   bool operator==( const VaultEntryFeatureInfo & ) const = default;
};

struct VaultGroupQualiferInfo {
   static constexpr U32 recordSize = 12;
   Id key;
   U32 offset = 0;
   U32 size = 0;

   VaultGroupQualiferInfo() = default;
   VaultGroupQualiferInfo( Id k, U32 o, U32 n )
         : key( k ), offset( o ), size( n ) {}
   TESSEL_EXPORT explicit VaultGroupQualiferInfo( std::string_view text );
   TESSEL_EXPORT std::string vaultString() const;
   std::string valueText() const { return vaultString(); }

   U32 serializeLen() const { return recordSize; }
   void
   serialize( void * out ) const {
      TesselTcam::RecordWriter( out ).u32( key.value ).u32( offset ).u32( size );
   }
   static bool
   deserialize( const void * data, U32 length, VaultGroupQualiferInfo & out ) {
      TesselTcam::RecordReader r( data, length );
      VaultGroupQualiferInfo v;
      v.key = r.u32();
      v.offset = r.u32();
      v.size = r.u32();
      return r.done() && ( out = v, true );
   }
   bool operator==( const VaultGroupQualiferInfo & ) const = default;
};

struct EntryIndexRange255Bounds {
   typedef U16 Type;
   static constexpr const char * name = "EntryIndexRange255";
   static constexpr U16 min = 0;
   static constexpr U16 max = 255;
};
typedef Kiln::BoundedIndex< EntryIndexRange255Bounds > EntryIndexRange255;

// Raw bytes of an entry: `size` bytes of `data` in use.
class VaultEntryInfo {
 public:
   static constexpr U32 dataSize = 256;
   static constexpr U32 recordSize = 8 + dataSize;

   VaultEntryInfo() = default;
   explicit VaultEntryInfo( Id key ) : key_( key ) {}
   // There is none: the record holds a collection. Fails an assertion with
   // "No String constructor for VaultEntryInfo - has collection".
   TESSEL_EXPORT explicit VaultEntryInfo( std::string_view text );
   TESSEL_EXPORT std::string vaultString() const;
   std::string valueText() const { return vaultString(); }

   Id key() const { return key_; }
   U32 size() const { return size_; }
   U8 data( EntryIndexRange255 index ) const { return data_[ index.value() ]; }
   void
   dataIs( EntryIndexRange255 index, U8 byte ) {
      data_[ index.value() ] = byte;
      size_ = std::max< U32 >( size_, index.value() + 1u );
   }

   U32 serializeLen() const { return 8 + size_; }
   void
   serialize( void * out ) const {
      TesselTcam::RecordWriter( out ).u32( key_.value ).u32( size_ );
      std::memcpy( static_cast< U8 * >( out ) + 8, data_.data(), size_ );
   }
   static bool
   deserialize( const void * data, U32 length, VaultEntryInfo & out ) {
      TesselTcam::RecordReader r( data, length );
      VaultEntryInfo v( r.u32() );
      v.size_ = r.u32();
      if ( !r.ok() || v.size_ > dataSize || r.left() != v.size_ ) {
         return false;
      }
      std::memcpy( v.data_.data(), r.position(), v.size_ );
      out = v;
      return true;
   }
   bool
   operator==( const VaultEntryInfo & other ) const {
      return key_ == other.key_ && size_ == other.size_ &&
             std::memcmp( data_.data(), other.data_.data(), size_ ) == 0;
   }

 private:
   Id key_;
   U32 size_ = 0;
   std::array< U8, dataSize > data_{};
};

// One slice of a stage and pipe, and the group that holds it.
struct VaultSliceInfo {
   static constexpr U32 recordSize = 24;
   Id key;               // slice number within the stage
   U32 entryCount = 0;   // rows of the slice
   U32 freeCount = 0;    // rows still free
   U32 groupId = 0;      // SDK id of the group holding the slice; 0 when free
   U32 width = 0;        // slices one row of that group spans
   U32 member = 0;       // this slice's place in the row, 0 .. width - 1

   VaultSliceInfo() = default;
   VaultSliceInfo( Id k, U32 entries, U32 free, U32 group, U32 w, U32 m )
         : key( k ), entryCount( entries ), freeCount( free ), groupId( group ), width( w ),
           member( m ) {}
   TESSEL_EXPORT explicit VaultSliceInfo( std::string_view text );
   TESSEL_EXPORT std::string vaultString() const;
   std::string valueText() const { return vaultString(); }

   U32 serializeLen() const { return recordSize; }
   void
   serialize( void * out ) const {
      TesselTcam::RecordWriter( out )
         .u32( key.value )
         .u32( entryCount )
         .u32( freeCount )
         .u32( groupId )
         .u32( width )
         .u32( member );
   }
   static bool
   deserialize( const void * data, U32 length, VaultSliceInfo & out ) {
      TesselTcam::RecordReader r( data, length );
      VaultSliceInfo v;
      v.key = r.u32();
      v.entryCount = r.u32();
      v.freeCount = r.u32();
      v.groupId = r.u32();
      v.width = r.u32();
      v.member = r.u32();
      return r.done() && ( out = v, true );
   }
   bool operator==( const VaultSliceInfo & ) const = default;
};

} // namespace Tessel
