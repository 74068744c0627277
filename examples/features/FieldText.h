// The text of the line formats the example features and the agent read
// (workloads, packet files): words separated by blanks, "#" to the end of
// the line a comment, and fields written key=value.
//
// A bad line is reported as "<file>:<line>: <what>" (FieldTextError); the
// value readers say what is wrong with the value and name the key.
#pragma once

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/agent/PortList.h"
#include "platform/kiln/Types.h"

namespace Features {

class FieldTextError : public std::runtime_error {
 public:
   using std::runtime_error::runtime_error;
};

// One line taken apart: the words before the first key=value field, then
// the fields. `where` ("file:7") prefixes every error.
class FieldLine {
 public:
   // Throws FieldTextError for a field with an empty key or value, a key
   // given twice, or a plain word after the first field.
   FieldLine( const std::string & text, std::string where );

   const std::string & where() const { return where_; }
   // Blanks and a comment only.
   bool empty() const { return words_.empty() && fields_.empty(); }
   const std::vector< std::string > & words() const { return words_; }
   bool has( const std::string & key ) const { return fields_.count( key ) != 0; }
   // The field's text, if given.
   std::optional< std::string > text( const std::string & key ) const;

   // Refuses every field not in `allowed` ("unknown field 'x' (acl takes a, b)").
   void allowOnly( const std::vector< std::string > & allowed,
                   const std::string & owner ) const;
   // Throws FieldTextError "<where>: <what>".
   [[noreturn]] void fail( const std::string & what ) const;

   // Readers of a field's value; nothing when the field is absent. A value
   // that does not read throws FieldTextError naming the key.
   // Unsigned decimal, or hexadecimal with 0x, at most `max`.
   std::optional< U32 > number( const std::string & key, U32 max ) const;
   // "A.B.C.D" or "A.B.C.D/LEN": address and mask (host bits must be clear).
   std::optional< std::pair< U32, U32 > > ipv4Prefix( const std::string & key ) const;
   // "P" or "LO-HI", inclusive.
   std::optional< std::pair< U16, U16 > > portRange( const std::string & key ) const;
   // "tcp", "udp", "icmp", "igmp", "gre", "ospf", "pim", "vrrp" or 0..255.
   std::optional< U8 > protocol( const std::string & key ) const;
   // "1,2,5-8": front-panel ports.
   std::optional< TesselTypes::TesselPortList > ports( const std::string & key ) const;
   // "02:00:00:00:00:01"
   std::optional< std::array< U8, 6 > > mac( const std::string & key ) const;

 private:
   // `read( value )` of the field's text; nothing when the field is absent.
   template< typename Read >
   auto
   readField( const std::string & key, Read read ) const
      -> std::optional< decltype( read( std::string() ) ) > {
      std::optional< std::string > value = text( key );
      if ( !value ) {
         return std::nullopt;
      }
      return read( *value );
   }

   std::string where_;
   std::vector< std::string > words_;
   std::map< std::string, std::string > fields_;
};

// Reads a file of such lines: calls `line` for every line that holds more
// than blanks and a comment. FieldTextError "<path>: cannot open" when the
// file cannot be read.
void readFieldFile( const std::string & path,
                    const std::function< void( const FieldLine & ) > & line );

// "0x2112a442": 1 to `max` bytes, two hex digits each; nothing when the
// text is not that.
std::optional< std::vector< U8 > > hexBytes( const std::string & text, size_t max );

// The protocol's number for a name readers accept, or nothing.
std::optional< U8 > protocolNumber( const std::string & name );

} // namespace Features
