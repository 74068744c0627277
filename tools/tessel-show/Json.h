// A small JSON writer for --json output: objects and arrays written in
// order, text escaped, no whitespace but one newline at the end.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace TesselShow {

class Json {
 public:
   Json & beginObject() { return open( '{' ); }
   Json & endObject() { return close( '}' ); }
   Json & beginArray() { return open( '[' ); }
   Json & endArray() { return close( ']' ); }
   // The key of the next value inside an object.
   Json &
   key( std::string_view name ) {
      separate();
      quoted( name );
      text_ += ':';
      afterKey_ = true;
      return *this;
   }
   Json &
   value( std::string_view s ) {
      separate();
      quoted( s );
      return *this;
   }
   Json & value( const char * s ) { return value( std::string_view( s ) ); }
   Json & value( const std::string & s ) { return value( std::string_view( s ) ); }
   Json &
   value( unsigned long long n ) {
      separate();
      text_ += std::to_string( n );
      return *this;
   }
   Json & value( unsigned n ) { return value( static_cast< unsigned long long >( n ) ); }
   Json & value( unsigned long n ) { return value( static_cast< unsigned long long >( n ) ); }
   Json &
   value( int n ) {
      separate();
      text_ += std::to_string( n );
      return *this;
   }
   Json &
   value( bool b ) {
      separate();
      text_ += b ? "true" : "false";
      return *this;
   }
   template< typename T >
   Json &
   field( std::string_view name, const T & v ) {
      return key( name ).value( v );
   }
   std::string str() const { return text_ + "\n"; }

 private:
   Json &
   open( char c ) {
      separate();
      text_ += c;
      first_.push_back( true );
      return *this;
   }
   Json &
   close( char c ) {
      text_ += c;
      first_.pop_back();
      return *this;
   }
   void
   separate() {
      if ( afterKey_ ) {
         afterKey_ = false;
         return;
      }
      if ( !first_.empty() ) {
         if ( !first_.back() ) {
            text_ += ',';
         }
         first_.back() = false;
      }
   }
   void
   quoted( std::string_view s ) {
      text_ += '"';
      for ( unsigned char c : s ) {
         if ( c == '"' || c == '\\' ) {
            text_ += '\\';
            text_ += char( c );
         } else if ( c < 0x20 ) {
            char escaped[ 8 ];
            std::snprintf( escaped, sizeof escaped, "\\u%04x", c );
            text_ += escaped;
         } else {
            text_ += char( c );
         }
      }
      text_ += '"';
   }

   std::string text_;
   std::vector< bool > first_;
   bool afterKey_ = false;
};

} // namespace TesselShow
