// The stream a trace line is written to. It reads like std::ostream and
// gives the same text, but writes strings and integers straight into the
// line; everything else (floating point, pointers, enums, user types with
// an operator<< for std::ostream, manipulators such as std::hex or
// std::setw) goes through a std::ostream over the same line. Once that
// stream's formatting differs from the default, every later value of the
// line goes through it too, so manipulators apply as they would.
#pragma once

#include <charconv>
#include <cstring>
#include <iosfwd>
#include <memory>
#include <streambuf>
#include <string>
#include <string_view>
#include <type_traits>

namespace FastLog {

namespace detail {

// Line storage kept from line to line: building a line allocates only when
// it is longer than any before it in the same stream.
class LineBuffer : public std::streambuf {
 public:
   LineBuffer();

   void reset() { setp( storage_.data(), storage_.data() + storage_.size() ); }
   std::string_view text() const { return { pbase(), size_t( pptr() - pbase() ) }; }

   void
   append( const char * data, size_t size ) {
      if ( size_t( epptr() - pptr() ) < size ) {
         grow( size );
      }
      std::memcpy( pptr(), data, size );
      pbump( int( size ) );
   }

 protected:
   int_type overflow( int_type c ) override;
   std::streamsize xsputn( const char * data, std::streamsize size ) override;

 private:
   void grow( size_t more );
   std::string storage_;
};

template< typename T >
constexpr bool isCharacter = std::is_same_v< T, char > || std::is_same_v< T, signed char > ||
                             std::is_same_v< T, unsigned char >;

// Written straight into the line; bool and the character types have their
// own overloads.
template< typename T >
constexpr bool isPlainInteger = std::is_integral_v< T > && !std::is_same_v< T, bool > &&
                                !isCharacter< T > && !std::is_same_v< T, wchar_t > &&
                                !std::is_same_v< T, char8_t > && !std::is_same_v< T, char16_t > &&
                                !std::is_same_v< T, char32_t >;

} // namespace detail

class TraceStream {
 public:
   TraceStream();
   ~TraceStream();
   TraceStream( const TraceStream & ) = delete;
   TraceStream & operator=( const TraceStream & ) = delete;

   // Starts a new line with default formatting.
   void reset();
   std::string_view text() const { return buffer_.text(); }

   TraceStream &
   operator<<( std::string_view text ) {
      if ( formatting_ ) {
         return formatted( text );
      }
      buffer_.append( text.data(), text.size() );
      return *this;
   }
   TraceStream & operator<<( const std::string & text ) { return *this << std::string_view( text ); }
   TraceStream &
   operator<<( const char * text ) {
      return *this << ( text != nullptr ? std::string_view( text ) : std::string_view( "(null)" ) );
   }
   TraceStream & operator<<( char c ) { return *this << std::string_view( &c, 1 ); }
   TraceStream & operator<<( signed char c ) { return *this << char( c ); }
   TraceStream & operator<<( unsigned char c ) { return *this << char( c ); }
   TraceStream & operator<<( bool value ) { return formatting_ ? formatted( value ) : *this << char( '0' + value ); }

   template< typename T >
      requires detail::isPlainInteger< T >
   TraceStream &
   operator<<( T value ) {
      if ( formatting_ ) {
         return formatted( value );
      }
      char digits[ 24 ];
      const auto end = std::to_chars( digits, digits + sizeof( digits ), value ).ptr;
      buffer_.append( digits, size_t( end - digits ) );
      return *this;
   }

   // Anything else is written by std::ostream.
   template< typename T >
      requires( !detail::isPlainInteger< T > && !detail::isCharacter< T > &&
                !std::is_same_v< T, bool > && !std::is_convertible_v< const T &, std::string_view > )
   TraceStream &
   operator<<( const T & value ) {
      return formatted( value );
   }

   TraceStream & operator<<( std::ios_base & ( *manipulator )( std::ios_base & ) );
   TraceStream & operator<<( std::ostream & ( *manipulator )( std::ostream & ) );
   TraceStream & operator<<( std::basic_ios< char > & ( *manipulator )( std::basic_ios< char > & ) );

 private:
   friend class TraceWriter;

   template< typename T >
   TraceStream &
   formatted( const T & value ) {
      ostream() << value;
      settle();
      return *this;
   }

   // The std::ostream over the line, made on first use.
   std::ostream & ostream();
   // Notes whether the std::ostream's formatting is still the default.
   void settle();

   detail::LineBuffer buffer_;
   std::unique_ptr< std::ostream > ostream_;
   bool formatting_ = false;  // values must go through ostream_
   bool ostreamUsed_ = false;  // ostream_ needs resetting for the next line
   bool busy_ = false;         // a TraceWriter is building a line in it
};

} // namespace FastLog
