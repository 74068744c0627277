// The key and the name record of the command line's shared-memory tables.
//
//   TesselTcam::Id           the key of every table: one U32 `value`
//   TesselTcam::VaultName    a key and a name of at most 60 characters in a
//                            fixed 61-byte buffer (name and NUL)
//
// Binary form of a VaultName, as a table stores it (little-endian):
//   key U32, count U32, then `count` bytes of the buffer, then 3 bytes of
//   slack; serializeLen() = 11 + count. A reader accepts a count of at most
//   61 and never reads past the record's length.
//
// Everything a reader needs is inline here, so the command line can decode
// the tables without the agent's library; the text forms and the string
// constructors live in TesselTcamVaultName.cpp.
#pragma once

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>

#include "common/TesselExport.h"
#include "platform/kiln/BoundedIndex.h"
#include "platform/kiln/Hash.h"
#include "platform/kiln/String.h"
#include "platform/kiln/Types.h"

namespace TesselTcam {

// Little-endian fields of the binary forms (the hosts are x86).
inline void
putU32( U8 * out, U32 value ) {
   std::memcpy( out, &value, sizeof( value ) );
}
inline U32
getU32( const U8 * in ) {
   U32 value;
   std::memcpy( &value, in, sizeof( value ) );
   return value;
}

struct Id {
   U32 value = 0;

   Id() = default;
   Id( U32 v ) : value( v ) {}
   // Reads the text form; Kiln::ValueTextError on anything else.
   TESSEL_EXPORT explicit Id( std::string_view text );

   auto operator<=>( const Id & ) const = default;
   // Value('TesselTcam::Id', ** {'value': 5})
   TESSEL_EXPORT std::string valueText() const;
};

struct NameIndexRange60Bounds {
   typedef U8 Type;
   static constexpr const char * name = "NameIndexRange60";
   static constexpr U8 min = 0;
   static constexpr U8 max = 60;
};
// An index into a VaultName's buffer; leaving 0 .. 60 throws
// Kiln::RangeException with
// "NameIndexRange60::value < NameIndexRange60::min or > NameIndexRange60::max not allowed".
typedef Kiln::BoundedIndex< NameIndexRange60Bounds > NameIndexRange60;

class VaultName {
 public:
   static constexpr U32 maxNameLength = 60;
   static constexpr U32 bufferSize = 61;    // name and NUL
   static constexpr U32 recordSize = 72;    // key, count, buffer, slack
   static constexpr U32 headerSize = 8;     // key and count

   VaultName() = default;
   VaultName( Id key, const Kiln::String & name ) : key_( key ) { nameIs( name ); }
   // There is none: a VaultName holds a collection. Fails an assertion with
   // "No String constructor for VaultName - has collection".
   TESSEL_EXPORT explicit VaultName( std::string_view text );

   Id key() const { return key_; }
   void keyIs( Id key ) { key_ = key; }
   // Bytes of the buffer in use, 0 .. 61.
   U32 count() const { return count_; }

   // Stores the first 60 characters of `name` and a NUL after them. The
   // count becomes length + 1 unless it is larger already (a count of 0 is
   // first raised to 1); the NUL ends the name either way.
   void
   nameIs( const Kiln::String & name ) {
      U32 length = std::min< U32 >( static_cast< U32 >( name.size() ), maxNameLength );
      std::memcpy( buffer_.data(), name.c_str(), length );
      buffer_[ length ] = 0;
      count_ = std::max( std::max< U32 >( count_, 1 ), length + 1 );
   }
   // The text up to the first NUL; empty when the count is 0.
   Kiln::String
   name() const {
      const char * text = reinterpret_cast< const char * >( buffer_.data() );
      return Kiln::String( text, strnlen( text, count_ ) );
   }

   U8 nameBuffer( NameIndexRange60 index ) const { return buffer_[ index.value() ]; }
   void
   nameBufferIs( NameIndexRange60 index, U8 byte ) {
      buffer_[ index.value() ] = byte;
      count_ = std::max< U32 >( count_, index.value() + 1u );
   }
   // Zeroes the byte; deleting the last one in use also drops the zero
   // bytes that then end the buffer from the count.
   void
   nameBufferDel( NameIndexRange60 index ) {
      buffer_[ index.value() ] = 0;
      if ( index.value() + 1u == count_ ) {
         while ( count_ > 0 && buffer_[ count_ - 1 ] == 0 ) {
            --count_;
         }
      }
   }
   void
   nameBufferDelAll() {
      buffer_.fill( 0 );
      count_ = 0;
   }

   // An empty record: nothing in the buffer.
   bool operator!() const { return count_ == 0; }
   bool
   operator==( const VaultName & other ) const {
      return key_ == other.key_ && count_ == other.count_ &&
             std::memcmp( buffer_.data(), other.buffer_.data(), count_ ) == 0;
   }

   // Value('TesselTcam::VaultName', ** {'key': <Id>, 'nameBuffer': [bytes in use]})
   TESSEL_EXPORT std::string valueText() const;

   U32 serializeLen() const { return 11 + count_; }
   // 72 when the stored count is below 62, 0 (not a name record) otherwise
   // or when fewer than the key and count are there.
   static U32
   deserializeLen( const void * data, U32 length ) {
      if ( length < headerSize ) {
         return 0;
      }
      return getU32( static_cast< const U8 * >( data ) + 4 ) < 62 ? recordSize : 0;
   }
   // Writes serializeLen() bytes. A count above 61 cannot be written: see
   // serializeCheck.
   void
   serialize( void * out ) const {
      if ( count_ >= 62 ) {
         serializeCheck( count_, buffer_.data() );
      }
      U8 * bytes = static_cast< U8 * >( out );
      putU32( bytes, key_.value );
      putU32( bytes + 4, count_ );
      std::memcpy( bytes + headerSize, buffer_.data(), count_ );
      std::memset( bytes + headerSize + count_, 0, 3 );
   }
   // Reads a stored record of `length` bytes; false (out unchanged) when it
   // is not one: too short for its count, or a count above 61.
   static bool
   deserialize( const void * data, U32 length, VaultName & out ) {
      const U8 * bytes = static_cast< const U8 * >( data );
      if ( deserializeLen( data, length ) == 0 ) {
         return false;
      }
      U32 count = getU32( bytes + 4 );
      if ( count > bufferSize || length < headerSize + count ) {
         return false;
      }
      out = VaultName();
      out.key_ = Id( getU32( bytes ) );
      out.count_ = count;
      std::memcpy( out.buffer_.data(), bytes + headerSize, count );
      return true;
   }
   // Throws std::length_error for a count of 62 or more: "PodArray::set
   // expected size <=61, instead got<count>. Buffer is at address:<address>
   // with contents:<the 61 bytes in hex>".
   TESSEL_EXPORT static void serializeCheck( U32 count, const U8 * buffer );

 private:
   Id key_;
   U32 count_ = 0;
   std::array< U8, bufferSize > buffer_{};
};

} // namespace TesselTcam

template<>
struct std::hash< TesselTcam::Id > {
   size_t
   operator()( const TesselTcam::Id & id ) const noexcept {
      return Kiln::hashMix( id.value );
   }
};
