// The text form of value types, used in traces and to rebuild values:
//
//    Value('Tessel::RangeCheckerDesc', ** {'low': 10, 'high': 20, 'rangeFlags': 1})
//
// Field values are written as:
//   integers and enumerations  decimal                     10, -3
//   bool                       True or False
//   text (String, Name, std::string, const char *)
//                              quoted, \ and ' escaped     'ip acl', 'it\'s'
//   a value type               its own valueText()         Value('Tessel::UdfUnitKey', ** {...})
//   a sequence (anything with begin/end, sets and vectors)
//                              [a, b], elements as above   [1, 2]
// A value type provides `std::string valueText() const` and, usually, a
// constructor from text that reads it back with ValueTextReader:
//
//    std::string valueText() const {
//       return Kiln::ValueText( "Tessel::RangeCheckerDesc" )
//          .field( "low", low ).field( "high", high ).field( "rangeFlags", rangeFlags )
//          .str();
//    }
//    explicit RangeCheckerDesc( std::string_view text ) {
//       Kiln::ValueTextReader r( text, "Tessel::RangeCheckerDesc" );
//       low = r.number< U32 >( "low" );
//       high = r.number< U32 >( "high" );
//       rangeFlags = r.number< U32 >( "rangeFlags" );
//       r.end();
//    }
#pragma once

#include "platform/kiln/String.h"

#include <charconv>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <vector>

namespace Kiln {

// Text that is not the value form asked for. The message says what was
// expected, where, and in which text.
class ValueTextError : public std::invalid_argument {
 public:
   using std::invalid_argument::invalid_argument;
};

// Appends `text` quoted: 'text', with \ and ' escaped by a backslash.
void appendQuoted( std::string & out, std::string_view text );

template< typename T >
void appendValueText( std::string & out, const T & value );

// The text form of one field value (see the table above).
template< typename T >
std::string
valueText( const T & value ) {
   std::string out;
   appendValueText( out, value );
   return out;
}

// Writes one value form, field by field, in the order the fields are given.
class ValueText {
 public:
   explicit ValueText( std::string_view typeName );

   template< typename T >
   ValueText &
   field( std::string_view name, const T & value ) {
      beginField( name );
      appendValueText( text_, value );
      return *this;
   }
   // A field whose value text is already written.
   ValueText & rawField( std::string_view name, std::string_view valueText );

   std::string
   str() const {
      return text_ + "})";
   }

 private:
   void beginField( std::string_view name );
   std::string text_;
   bool first_ = true;
};

// Parsers of one raw field value; they throw ValueTextError.
// A decimal integer that fits T (T integral or an enumeration; for bool
// use parseValueBool). Nothing else may surround it.
template< typename T >
T parseValueNumber( std::string_view raw );
bool parseValueBool( std::string_view raw );
// A quoted text, unescaped.
std::string parseValueString( std::string_view raw );
// The raw texts of the elements of [a, b]; nested values and lists stay
// whole.
std::vector< std::string_view > parseValueList( std::string_view raw );

// Reads one value form: the prefix on construction, then each field in
// order by name, then end(). Every mistake throws ValueTextError naming the
// type, what was expected and where. The views handed out point into
// `text`, which must outlive them.
class ValueTextReader {
 public:
   ValueTextReader( std::string_view text, std::string_view typeName );

   // The raw text of the next field, which must be called `name`.
   std::string_view field( std::string_view name );
   template< typename T >
   T
   number( std::string_view name ) {
      std::string_view raw = field( name );
      try {
         return parseValueNumber< T >( raw );
      } catch ( const ValueTextError & e ) {
         failField( name, e );
      }
   }
   bool flag( std::string_view name );
   std::string text( std::string_view name );
   std::vector< std::string_view > list( std::string_view name );
   // Checks the closing "})" and that nothing follows it.
   void end();

 private:
   [[noreturn]] void fail( const std::string & problem ) const;
   [[noreturn]] void failField( std::string_view name, const ValueTextError & e ) const;
   void expect( std::string_view literal );

   std::string_view text_;
   std::string typeName_;
   size_t position_;
   bool first_ = true;
};

namespace Detail {

template< typename T >
concept TextLike = std::is_convertible_v< const T &, std::string_view > ||
                   std::is_same_v< T, String > || std::is_same_v< T, Name >;

template< typename T >
concept HasValueText = requires( const T & v ) {
   { v.valueText() } -> std::convertible_to< std::string >;
};

template< typename T >
concept Sequence = requires( const T & v ) {
   std::begin( v );
   std::end( v );
};

template< typename T >
void
appendInteger( std::string & out, T value ) {
   char digits[ 24 ];
   auto [ end, ec ] = std::to_chars( digits, digits + sizeof digits, value );
   out.append( digits, end );
}

[[noreturn]] void throwNotANumber( std::string_view raw );
[[noreturn]] void throwNumberOutOfRange( std::string_view raw );

} // namespace Detail

template< typename T >
void
appendValueText( std::string & out, const T & value ) {
   if constexpr ( std::is_same_v< T, bool > ) {
      out += value ? "True" : "False";
   } else if constexpr ( std::is_enum_v< T > ) {
      Detail::appendInteger( out, static_cast< std::underlying_type_t< T > >( value ) );
   } else if constexpr ( std::is_integral_v< T > ) {
      Detail::appendInteger( out, value );
   } else if constexpr ( std::is_same_v< T, String > || std::is_same_v< T, Name > ) {
      appendQuoted( out, value.str() );
   } else if constexpr ( Detail::TextLike< T > ) {
      appendQuoted( out, std::string_view( value ) );
   } else if constexpr ( Detail::HasValueText< T > ) {
      out += value.valueText();
   } else if constexpr ( Detail::Sequence< T > ) {
      out += '[';
      bool first = true;
      for ( const auto & element : value ) {
         if ( !first ) {
            out += ", ";
         }
         first = false;
         appendValueText( out, element );
      }
      out += ']';
   } else {
      static_assert( std::is_void_v< T >, "no text form for this type: give it valueText()" );
   }
}

template< typename T >
T
parseValueNumber( std::string_view raw ) {
   static_assert( ( std::is_integral_v< T > && !std::is_same_v< T, bool > ) ||
                     std::is_enum_v< T >,
                  "not a number type" );
   if constexpr ( std::is_enum_v< T > ) {
      return static_cast< T >( parseValueNumber< std::underlying_type_t< T > >( raw ) );
   } else {
      T value{};
      auto [ end, ec ] = std::from_chars( raw.data(), raw.data() + raw.size(), value );
      if ( ec == std::errc::result_out_of_range ) {
         Detail::throwNumberOutOfRange( raw );
      }
      if ( ec != std::errc() || end != raw.data() + raw.size() ) {
         Detail::throwNotANumber( raw );
      }
      return value;
   }
}

} // namespace Kiln
