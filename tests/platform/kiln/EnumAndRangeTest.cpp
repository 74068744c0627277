#include <gtest/gtest.h>

#include "platform/kiln/BoundedIndex.h"
#include "platform/kiln/EnumInstance.h"

#include <sstream>
#include <unordered_set>

namespace {

enum TcamAllocationStrategy : U32 {
   tcamAllocateUnbounded = 0,
   tcamAllocateOnDemand = 1,
   tcamAllocateAsChunk = 2,
   tcamAllocateAtBeginning = 3,
};

struct TcamAllocationStrategyNames {
   typedef TcamAllocationStrategy Enum;
   static constexpr const char * typeName = "TcamAllocationStrategy";
   static constexpr Kiln::EnumName< TcamAllocationStrategy > names[] = {
      { tcamAllocateUnbounded, "tcamAllocateUnbounded" },
      { tcamAllocateOnDemand, "tcamAllocateOnDemand" },
      { tcamAllocateAsChunk, "tcamAllocateAsChunk" },
      { tcamAllocateAtBeginning, "tcamAllocateAtBeginning" },
   };
};
typedef Kiln::EnumInstance< TcamAllocationStrategyNames > TcamAllocationStrategyInstance;

std::ostream &
operator<<( std::ostream & os, TcamAllocationStrategy v ) {
   return os << TcamAllocationStrategyInstance::valueToStrep( v );
}

// A scoped enumeration with a gap and a second name for one value.
enum class Stage : S8 { ingress = 0, egress = 2, lookup = -1 };
struct StageNames {
   typedef Stage Enum;
   static constexpr const char * typeName = "Stage";
   static constexpr Kiln::EnumName< Stage > names[] = {
      { Stage::ingress, "stageTypeIngress" },
      { Stage::egress, "stageTypeEgress" },
      { Stage::lookup, "stageTypeLookup" },
      { Stage::ingress, "IFP" },
   };
};
typedef Kiln::EnumInstance< StageNames > StageInstance;

TEST( EnumInstance, NamesAndValuesConvertBothWays ) {
   EXPECT_EQ( "tcamAllocateAsChunk",
              TcamAllocationStrategyInstance::valueToStrep( tcamAllocateAsChunk ) );
   EXPECT_EQ( tcamAllocateOnDemand,
              TcamAllocationStrategyInstance::sequenceToValue( "tcamAllocateOnDemand" ) );
   TcamAllocationStrategyInstance fromNumber( 3u );
   TcamAllocationStrategyInstance fromName( "tcamAllocateAtBeginning" );
   EXPECT_EQ( fromNumber, fromName );
   EXPECT_EQ( tcamAllocateAtBeginning, fromName.value() );
   EXPECT_EQ( "tcamAllocateAtBeginning", fromNumber.stringValue() );
   EXPECT_EQ( "3", fromNumber.valueText() );

   std::ostringstream os;
   os << fromName << " " << tcamAllocateUnbounded;
   EXPECT_EQ( "tcamAllocateAtBeginning tcamAllocateUnbounded", os.str() );

   switch ( TcamAllocationStrategyInstance( "tcamAllocateAsChunk" ) ) {
    case tcamAllocateAsChunk:
      break;
    default:
      ADD_FAILURE() << "instance does not convert to its enumerator";
   }
}

TEST( EnumInstance, UnknownNamesAndNumbersAreRefused ) {
   try {
      TcamAllocationStrategyInstance( "tcamAllocateLater" );
      ADD_FAILURE() << "no exception";
   } catch ( const Kiln::ValueTextError & e ) {
      EXPECT_STREQ( "TcamAllocationStrategy: no enumerator is named 'tcamAllocateLater'",
                    e.what() );
   }
   try {
      TcamAllocationStrategyInstance( 4 );
      ADD_FAILURE() << "no exception";
   } catch ( const Kiln::RangeException & e ) {
      EXPECT_STREQ( "TcamAllocationStrategy: no enumerator has the value 4", e.what() );
   }
   // Numbers beyond the underlying type must not wrap onto a valid value.
   EXPECT_THROW( TcamAllocationStrategyInstance( ( 1LL << 32 ) + 1 ), std::out_of_range );
   EXPECT_THROW( TcamAllocationStrategyInstance( -1 ), Kiln::RangeException );
   // An unnamed value still prints.
   EXPECT_EQ( "9", TcamAllocationStrategyInstance::valueToStrep(
                      static_cast< TcamAllocationStrategy >( 9 ) ) );
}

TEST( EnumInstance, ScopedEnumerationsWithGapsAndAliases ) {
   EXPECT_EQ( Stage::lookup, StageInstance( -1 ).value() );
   EXPECT_THROW( StageInstance( 1 ), Kiln::RangeException );
   EXPECT_EQ( "stageTypeIngress", StageInstance::valueToStrep( Stage::ingress ) );
   EXPECT_EQ( Stage::ingress, StageInstance( "IFP" ).value() );
   EXPECT_EQ( "-1", StageInstance( Stage::lookup ).valueText() );
}

struct NameIndexRange60Bounds {
   typedef U8 Type;
   static constexpr const char * name = "NameIndexRange60";
   static constexpr U8 min = 0;
   static constexpr U8 max = 60;
};
typedef Kiln::BoundedIndex< NameIndexRange60Bounds > NameIndexRange60;

const char * const range60Text =
   "NameIndexRange60::value < NameIndexRange60::min or > NameIndexRange60::max not allowed";

// The message of the RangeException that `fn` throws.
template< typename Fn >
std::string
rangeErrorOf( Fn fn ) {
   try {
      fn();
   } catch ( const Kiln::RangeException & e ) {
      return e.what();
   }
   return "no exception";
}

TEST( BoundedIndex, ConstructionOutOfBoundsThrowsTheExactText ) {
   EXPECT_EQ( 60, NameIndexRange60( 60 ).value() );
   EXPECT_EQ( range60Text, rangeErrorOf( [] { NameIndexRange60 i( 61 ); } ) );
   EXPECT_EQ( range60Text, rangeErrorOf( [] { NameIndexRange60 i( -1 ); } ) );
   // 316 would be 60 once cut to 8 bits.
   EXPECT_EQ( range60Text, rangeErrorOf( [] { NameIndexRange60 i( 316 ); } ) );
   EXPECT_EQ( range60Text, NameIndexRange60::rangeMessage() );
   EXPECT_EQ( 0, NameIndexRange60().value() );
}

TEST( BoundedIndex, ArithmeticStaysInBoundsOrThrowsUnchanged ) {
   NameIndexRange60 i = 58;
   i += 2;
   EXPECT_EQ( 60, i );
   EXPECT_EQ( range60Text, rangeErrorOf( [ & ] { ++i; } ) );
   EXPECT_EQ( 60, i ); // a failed step leaves the index as it was
   EXPECT_EQ( range60Text, rangeErrorOf( [ & ] { i += 200; } ) );
   EXPECT_EQ( range60Text, rangeErrorOf( [ & ] { (void)( i - 61 ); } ) );
   EXPECT_EQ( 0, i - 60 );
   NameIndexRange60 zero;
   EXPECT_EQ( range60Text, rangeErrorOf( [ & ] { zero--; } ) );
   EXPECT_EQ( range60Text, rangeErrorOf( [ & ] { zero += -1; } ) );
   EXPECT_EQ( 1, ( zero++, zero ) );
}

TEST( BoundedIndex, ComparesWithPlainIntegersWithoutChecking ) {
   NameIndexRange60 i = 60;
   EXPECT_TRUE( i < 61 );
   EXPECT_TRUE( i > -1 );
   EXPECT_TRUE( i != 1000 );
   EXPECT_TRUE( 61 > i );
   EXPECT_TRUE( NameIndexRange60( 3 ) < NameIndexRange60( 4 ) );
   std::unordered_set< NameIndexRange60 > seen{ 1, 2, 1 };
   EXPECT_EQ( 2u, seen.size() );
   std::ostringstream os;
   os << i;
   EXPECT_EQ( "60", os.str() );
}

TEST( CheckBounds, ThrowsTheGivenTextAcrossIntegerTypes ) {
   const char * text = "UdfUnitSpec::length < 1 or > 16 not allowed";
   EXPECT_NO_THROW( Kiln::checkBounds( U8( 1 ), 1, 16, text ) );
   EXPECT_NO_THROW( Kiln::checkBounds( U8( 16 ), 1, 16, text ) );
   EXPECT_EQ( text, rangeErrorOf( [ & ] { Kiln::checkBounds( U8( 0 ), 1, 16, text ); } ) );
   EXPECT_EQ( text, rangeErrorOf( [ & ] { Kiln::checkBounds( U8( 17 ), 1, 16, text ); } ) );
   // A negative number against unsigned bounds is below them, not huge.
   EXPECT_EQ( "UdfUnitSpec::offset < 0 or > 127 not allowed", rangeErrorOf( [] {
                 Kiln::checkBounds( -1, 0u, 127u, "UdfUnitSpec::offset < 0 or > 127 not allowed" );
              } ) );
}

} // namespace
