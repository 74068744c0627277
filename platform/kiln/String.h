// Text values: Kiln::String for free text (descriptions, parameters, report
// output) and Kiln::Name for the name of an entity.
//
// Both are small value classes over std::string, built implicitly from
// string literals and std::string. A String converts implicitly to a Name
// (names are often built from text); the other way is explicit, or use
// name.str(), so that a comparison between the two is never ambiguous.
#pragma once

#include <compare>
#include <cstddef>
#include <functional>
#include <ostream>
#include <string>
#include <utility>

namespace Kiln {

class Name;

class String {
 public:
   String() = default;
   // A null pointer gives the empty string.
   String( const char * text ) : value_( text ? text : "" ) {}
   String( const char * text, size_t size ) : value_( text, size ) {}
   String( std::string text ) : value_( std::move( text ) ) {}
   explicit String( const Name & name );

   const char *
   c_str() const noexcept {
      return value_.c_str();
   }
   size_t
   size() const noexcept {
      return value_.size();
   }
   bool
   empty() const noexcept {
      return value_.empty();
   }
   const std::string &
   str() const noexcept {
      return value_;
   }

   String &
   operator+=( const String & more ) {
      value_ += more.value_;
      return *this;
   }
   friend String
   operator+( String a, const String & b ) {
      return a += b;
   }

   friend bool
   operator==( const String & a, const String & b ) noexcept {
      return a.value_ == b.value_;
   }
   friend std::strong_ordering
   operator<=>( const String & a, const String & b ) noexcept {
      return a.value_ <=> b.value_;
   }
   friend std::ostream &
   operator<<( std::ostream & os, const String & s ) {
      return os << s.value_;
   }

 private:
   std::string value_;
};

class Name {
 public:
   Name() = default;
   // A null pointer gives the empty name.
   Name( const char * text ) : value_( text ? text : "" ) {}
   Name( std::string text ) : value_( std::move( text ) ) {}
   Name( const String & text ) : value_( text.str() ) {}

   const char *
   c_str() const noexcept {
      return value_.c_str();
   }
   size_t
   size() const noexcept {
      return value_.size();
   }
   bool
   empty() const noexcept {
      return value_.empty();
   }
   const std::string &
   str() const noexcept {
      return value_;
   }

   friend bool
   operator==( const Name & a, const Name & b ) noexcept {
      return a.value_ == b.value_;
   }
   friend std::strong_ordering
   operator<=>( const Name & a, const Name & b ) noexcept {
      return a.value_ <=> b.value_;
   }
   friend std::ostream &
   operator<<( std::ostream & os, const Name & n ) {
      return os << n.value_;
   }

 private:
   std::string value_;
};

inline String::String( const Name & name ) : value_( name.str() ) {}

} // namespace Kiln

template<>
struct std::hash< Kiln::String > {
   size_t
   operator()( const Kiln::String & s ) const noexcept {
      return std::hash< std::string >()( s.str() );
   }
};

template<>
struct std::hash< Kiln::Name > {
   size_t
   operator()( const Kiln::Name & n ) const noexcept {
      return std::hash< std::string >()( n.str() );
   }
};
