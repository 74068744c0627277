// Text forms of enumerations, driven by a table of enumerator names:
//
//    enum TcamAllocationStrategy : U32 { tcamAllocateUnbounded = 0, ... };
//    struct TcamAllocationStrategyNames {
//       typedef TcamAllocationStrategy Enum;
//       static constexpr const char * typeName = "TcamAllocationStrategy";
//       static constexpr Kiln::EnumName< TcamAllocationStrategy > names[] = {
//          { tcamAllocateUnbounded, "tcamAllocateUnbounded" }, ... };
//    };
//    typedef Kiln::EnumInstance< TcamAllocationStrategyNames > TcamAllocationStrategyInstance;
//
//    TcamAllocationStrategyInstance::valueToStrep( tcamAllocateAsChunk ) // "tcamAllocateAsChunk"
//    TcamAllocationStrategyInstance( "tcamAllocateOnDemand" ).value()  // tcamAllocateOnDemand
//    TcamAllocationStrategyInstance( 7u )                               // throws RangeException
//
// Stream output of the bare enumeration needs one line next to it, in its
// own namespace so that it is found:
//    inline std::ostream & operator<<( std::ostream & os, TcamAllocationStrategy v ) {
//       return os << TcamAllocationStrategyInstance::valueToStrep( v );
//    }
#pragma once

#include "platform/kiln/Assert.h"
#include "platform/kiln/BoundedIndex.h"
#include "platform/kiln/ValueText.h"

#include <concepts>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>

namespace Kiln {

template< typename E >
struct EnumName {
   E value;
   const char * name;
};

template< typename Names >
class EnumInstance {
 public:
   typedef typename Names::Enum Enum;
   typedef std::underlying_type_t< Enum > Number;

   // The enumerator's name; the number in decimal for a value that has no
   // name (an enumeration can hold any number of its underlying type).
   static std::string
   valueToStrep( Enum value ) {
      const auto & byValue = tables().byValue;
      auto found = byValue.find( static_cast< Number >( value ) );
      if ( found == byValue.end() ) {
         return std::to_string( static_cast< Number >( value ) );
      }
      return found->second;
   }
   // The enumerator called `name`; ValueTextError for any other text.
   static Enum
   sequenceToValue( std::string_view name ) {
      const auto & byName = tables().byName;
      auto found = byName.find( name );
      if ( found == byName.end() ) {
         throw ValueTextError( std::string( Names::typeName ) + ": no enumerator is named '" +
                               std::string( name ) + "'" );
      }
      return found->second;
   }
   // Whether `number` is the value of an enumerator.
   static bool
   isValid( Number number ) {
      return tables().byValue.count( number ) > 0;
   }

   EnumInstance() noexcept : value_( Names::names[ 0 ].value ) {}
   EnumInstance( Enum value ) noexcept : value_( value ) {}
   // Checked: RangeException when no enumerator has this value.
   template< std::integral I >
   explicit EnumInstance( I number ) : value_( checked( number ) ) {}
   // Checked: ValueTextError when no enumerator has this name.
   explicit EnumInstance( std::string_view name ) : value_( sequenceToValue( name ) ) {}
   explicit EnumInstance( const char * name ) : EnumInstance( std::string_view( name ) ) {}

   Enum
   value() const noexcept {
      return value_;
   }
   operator Enum() const noexcept { return value_; }
   std::string
   stringValue() const {
      return valueToStrep( value_ );
   }
   // In value forms an enumeration is its number.
   std::string
   valueText() const {
      return std::to_string( static_cast< Number >( value_ ) );
   }

   // Comparisons go through the conversion to Enum.
   friend std::ostream &
   operator<<( std::ostream & os, EnumInstance e ) {
      return os << e.stringValue();
   }

 private:
   struct Tables {
      std::unordered_map< Number, std::string > byValue;
      std::unordered_map< std::string_view, Enum > byName;
   };
   // Built on first use from the names table. Two enumerators may share a
   // value (the first name is its text), never a name.
   static const Tables &
   tables() {
      static const Tables built = [] {
         Tables t;
         for ( const auto & entry : Names::names ) {
            t.byValue.emplace( static_cast< Number >( entry.value ), entry.name );
            bool fresh = t.byName.emplace( entry.name, entry.value ).second;
            KILN_ASSERT_MSG( fresh, "two enumerators with one name" );
         }
         return t;
      }();
      return built;
   }
   template< std::integral I >
   static Enum
   checked( I number ) {
      if ( !std::in_range< Number >( number ) ||
           !isValid( static_cast< Number >( number ) ) ) {
         throw RangeException( std::string( Names::typeName ) + ": no enumerator has the value " +
                               std::to_string( number ) );
      }
      return static_cast< Enum >( number );
   }

   Enum value_;
};

} // namespace Kiln
