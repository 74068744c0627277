// Integers confined to bounds: index types of fixed-size records and field
// checks of value types. Leaving the bounds throws Kiln::RangeException.
//
//    struct NameIndexRange60Bounds {
//       typedef U8 Type;
//       static constexpr const char * name = "NameIndexRange60";
//       static constexpr U8 min = 0;
//       static constexpr U8 max = 60;
//    };
//    typedef Kiln::BoundedIndex< NameIndexRange60Bounds > NameIndexRange60;
//
//    NameIndexRange60 i = 61;   // throws: "NameIndexRange60::value <
//                               // NameIndexRange60::min or > NameIndexRange60::max not allowed"
//    Kiln::checkBounds( spec.length, 1, 16, "UdfUnitSpec::length < 1 or > 16 not allowed" );
#pragma once

#include "platform/kiln/Hash.h"

#include <compare>
#include <concepts>
#include <cstddef>
#include <functional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>

namespace Kiln {

// A value outside its allowed bounds.
class RangeException : public std::out_of_range {
 public:
   using std::out_of_range::out_of_range;
};

// Throws RangeException( message ) unless min <= value <= max. The
// comparison is exact whatever the three integer types are.
template< std::integral T, std::integral L, std::integral H >
void
checkBounds( T value, L min, H max, const char * message ) {
   if ( std::cmp_less( value, min ) || std::cmp_greater( value, max ) ) {
      throw RangeException( message );
   }
}

// An integer of Bounds::Type kept within [Bounds::min, Bounds::max].
// Built implicitly from any integer (checked, so `index( 3 )` reads well);
// read back with value(). Compares with other indexes and with plain
// integers without range checks.
template< typename Bounds >
class BoundedIndex {
 public:
   typedef typename Bounds::Type Type;
   static constexpr Type min = Bounds::min;
   static constexpr Type max = Bounds::max;

   // The text of the exception thrown when the bounds are left.
   static std::string
   rangeMessage() {
      std::string name = Bounds::name;
      return name + "::value < " + name + "::min or > " + name + "::max not allowed";
   }

   BoundedIndex() noexcept : value_( min ) {}
   template< std::integral I >
   BoundedIndex( I value ) : value_( checked( value ) ) {}

   Type
   value() const noexcept {
      return value_;
   }
   std::string
   valueText() const {
      return std::to_string( value_ );
   }

   template< std::integral I >
   BoundedIndex &
   operator+=( I delta ) {
      Type result;
      if ( __builtin_add_overflow( value_, delta, &result ) ) {
         throw RangeException( rangeMessage() );
      }
      value_ = checked( result );
      return *this;
   }
   template< std::integral I >
   BoundedIndex &
   operator-=( I delta ) {
      Type result;
      if ( __builtin_sub_overflow( value_, delta, &result ) ) {
         throw RangeException( rangeMessage() );
      }
      value_ = checked( result );
      return *this;
   }
   BoundedIndex &
   operator++() {
      return *this += 1;
   }
   BoundedIndex &
   operator--() {
      return *this -= 1;
   }
   BoundedIndex
   operator++( int ) {
      BoundedIndex before = *this;
      *this += 1;
      return before;
   }
   BoundedIndex
   operator--( int ) {
      BoundedIndex before = *this;
      *this -= 1;
      return before;
   }
   template< std::integral I >
   friend BoundedIndex
   operator+( BoundedIndex index, I delta ) {
      return index += delta;
   }
   template< std::integral I >
   friend BoundedIndex
   operator-( BoundedIndex index, I delta ) {
      return index -= delta;
   }

   friend bool
   operator==( BoundedIndex a, BoundedIndex b ) noexcept {
      return a.value_ == b.value_;
   }
   friend auto
   operator<=>( BoundedIndex a, BoundedIndex b ) noexcept {
      return a.value_ <=> b.value_;
   }
   template< std::integral I >
   friend bool
   operator==( BoundedIndex a, I b ) noexcept {
      return std::cmp_equal( a.value_, b );
   }
   template< std::integral I >
   friend std::strong_ordering
   operator<=>( BoundedIndex a, I b ) noexcept {
      return std::cmp_less( a.value_, b )      ? std::strong_ordering::less
             : std::cmp_greater( a.value_, b ) ? std::strong_ordering::greater
                                               : std::strong_ordering::equal;
   }
   friend std::ostream &
   operator<<( std::ostream & os, BoundedIndex index ) {
      return os << +index.value_; // U8 prints as a number
   }

 private:
   template< std::integral I >
   static Type
   checked( I value ) {
      if ( std::cmp_less( value, min ) || std::cmp_greater( value, max ) ) {
         throw RangeException( rangeMessage() );
      }
      return static_cast< Type >( value );
   }

   Type value_;
};

} // namespace Kiln

template< typename Bounds >
struct std::hash< Kiln::BoundedIndex< Bounds > > {
   size_t
   operator()( const Kiln::BoundedIndex< Bounds > & index ) const noexcept {
      return Kiln::hashMix( index.value() );
   }
};
