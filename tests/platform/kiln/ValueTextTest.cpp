#include <gtest/gtest.h>

#include "platform/kiln/Collection.h"
#include "platform/kiln/ValueText.h"

#include <string>
#include <vector>

namespace {

// Value types written the way product value types write themselves.
struct RangeCheckerDesc {
   U32 low = 0;
   U32 high = 0;
   U32 rangeFlags = 0;

   RangeCheckerDesc() = default;
   RangeCheckerDesc( U32 l, U32 h, U32 f ) : low( l ), high( h ), rangeFlags( f ) {}
   explicit RangeCheckerDesc( std::string_view text ) {
      Kiln::ValueTextReader r( text, "Tessel::RangeCheckerDesc" );
      low = r.number< U32 >( "low" );
      high = r.number< U32 >( "high" );
      rangeFlags = r.number< U32 >( "rangeFlags" );
      r.end();
   }
   std::string
   valueText() const {
      return Kiln::ValueText( "Tessel::RangeCheckerDesc" )
         .field( "low", low )
         .field( "high", high )
         .field( "rangeFlags", rangeFlags )
         .str();
   }
   bool operator==( const RangeCheckerDesc & ) const = default;
};

enum UdfOffsetBase : S32 { udfOffsetBaseL2 = 0, udfOffsetBaseL4 = 2 };

struct UdfUnitKey {
   U32 unit = 0;
   std::vector< U32 > quals;

   UdfUnitKey() = default;
   UdfUnitKey( U32 u, std::vector< U32 > q ) : unit( u ), quals( std::move( q ) ) {}
   explicit UdfUnitKey( std::string_view text ) {
      Kiln::ValueTextReader r( text, "Tessel::UdfUnitKey" );
      unit = r.number< U32 >( "unit" );
      for ( std::string_view q : r.list( "quals" ) ) {
         quals.push_back( Kiln::parseValueNumber< U32 >( q ) );
      }
      r.end();
   }
   std::string
   valueText() const {
      return Kiln::ValueText( "Tessel::UdfUnitKey" )
         .field( "unit", unit )
         .field( "quals", quals )
         .str();
   }
   bool operator==( const UdfUnitKey & ) const = default;
};

struct UdfUnitSpec {
   UdfUnitKey key;
   UdfOffsetBase base = udfOffsetBaseL2;
   U8 offset = 0;
   S8 adjust = 0;
   bool shared = false;
   Kiln::String owner;

   UdfUnitSpec() = default;
   explicit UdfUnitSpec( std::string_view text ) {
      Kiln::ValueTextReader r( text, "Tessel::UdfUnitSpec" );
      key = UdfUnitKey( r.field( "key" ) );
      base = r.number< UdfOffsetBase >( "base" );
      offset = r.number< U8 >( "offset" );
      adjust = r.number< S8 >( "adjust" );
      shared = r.flag( "shared" );
      owner = r.text( "owner" );
      r.end();
   }
   std::string
   valueText() const {
      return Kiln::ValueText( "Tessel::UdfUnitSpec" )
         .field( "key", key )
         .field( "base", base )
         .field( "offset", offset )
         .field( "adjust", adjust )
         .field( "shared", shared )
         .field( "owner", owner )
         .str();
   }
   bool operator==( const UdfUnitSpec & ) const = default;
};

TEST( ValueText, WritesTheExactForm ) {
   EXPECT_EQ( "Value('Tessel::RangeCheckerDesc', ** {'low': 10, 'high': 20, 'rangeFlags': 1})",
              RangeCheckerDesc( 10, 20, 1 ).valueText() );
   EXPECT_EQ( "Value('Tessel::Empty', ** {})", Kiln::ValueText( "Tessel::Empty" ).str() );
}

TEST( ValueText, NestedValuesListsTextAndSmallIntegers ) {
   UdfUnitSpec spec;
   spec.key = UdfUnitKey( 3, { 7, 8 } );
   spec.base = udfOffsetBaseL4;
   spec.offset = 65; // a U8, must not print as 'A'
   spec.adjust = -4;
   spec.shared = true;
   spec.owner = "it's c:\\acl";
   EXPECT_EQ( "Value('Tessel::UdfUnitSpec', ** {'key': Value('Tessel::UdfUnitKey', ** {'unit': 3, "
              "'quals': [7, 8]}), 'base': 2, 'offset': 65, 'adjust': -4, 'shared': True, "
              "'owner': 'it\\'s c:\\\\acl'})",
              spec.valueText() );

   Kiln::OrderedSet< U8 > bytes;
   bytes.add( 104 );
   bytes.add( 105 );
   EXPECT_EQ( "[104, 105]", Kiln::valueText( bytes ) );
   EXPECT_EQ( "[]", Kiln::valueText( std::vector< U32 >() ) );
   EXPECT_EQ( "[[1], []]", Kiln::valueText( std::vector< std::vector< int > >{ { 1 }, {} } ) );
}

TEST( ValueText, ReadsBackWhatItWrites ) {
   RangeCheckerDesc desc( 0, 4294967295u, 0x102 );
   EXPECT_EQ( desc, RangeCheckerDesc( desc.valueText() ) );

   UdfUnitSpec spec;
   spec.key = UdfUnitKey( 1, {} );
   spec.offset = 127;
   spec.adjust = -128;
   spec.owner = "a, b}) 'c' [d]"; // separators inside quotes
   EXPECT_EQ( spec, UdfUnitSpec( spec.valueText() ) );
   spec.key.quals = { 1, 2, 3 };
   spec.owner = "";
   EXPECT_EQ( spec, UdfUnitSpec( spec.valueText() ) );
}

// The message of the ValueTextError that `parse` throws.
template< typename Parse >
std::string
errorOf( Parse parse ) {
   try {
      parse();
   } catch ( const Kiln::ValueTextError & e ) {
      return e.what();
   }
   return "no error";
}

TEST( ValueText, MalformedTextIsRefusedWithAClearMessage ) {
   auto parseDesc = []( const char * text ) {
      return errorOf( [ & ] { RangeCheckerDesc d( text ); } );
   };
   EXPECT_EQ( "Tessel::RangeCheckerDesc: expected \"Value('Tessel::RangeCheckerDesc', ** {\" at "
              "offset 0 of \"Value('Tessel::UnitRangeInfoKey', ** {'low': 1})\"",
              parseDesc( "Value('Tessel::UnitRangeInfoKey', ** {'low': 1})" ) );
   EXPECT_EQ( "Tessel::RangeCheckerDesc: expected \", 'high': \" at offset 46 of "
              "\"Value('Tessel::RangeCheckerDesc', ** {'low': 1, 'rangeFlags': 2, 'high': 3})\"",
              parseDesc( "Value('Tessel::RangeCheckerDesc', ** {'low': 1, 'rangeFlags': 2, "
                         "'high': 3})" ) );
   EXPECT_EQ( "Tessel::RangeCheckerDesc: field 'high': expected a decimal number, got \"0x10\"",
              parseDesc( "Value('Tessel::RangeCheckerDesc', ** {'low': 1, 'high': 0x10, "
                         "'rangeFlags': 2})" ) );
   EXPECT_EQ( "Tessel::RangeCheckerDesc: field 'low': expected a decimal number, got \"-1\"",
              parseDesc( "Value('Tessel::RangeCheckerDesc', ** {'low': -1, 'high': 1, "
                         "'rangeFlags': 2})" ) );
   EXPECT_EQ( "Tessel::RangeCheckerDesc: field 'low': number 4294967296 out of range",
              parseDesc( "Value('Tessel::RangeCheckerDesc', ** {'low': 4294967296, 'high': 1, "
                         "'rangeFlags': 2})" ) );
   EXPECT_EQ( "Tessel::RangeCheckerDesc: expected \"})\" at offset 74 of "
              "\"Value('Tessel::RangeCheckerDesc', ** {'low': 1, 'high': 2, 'rangeFlags': 3, "
              "'extra': 4})\"",
              parseDesc( "Value('Tessel::RangeCheckerDesc', ** {'low': 1, 'high': 2, "
                         "'rangeFlags': 3, 'extra': 4})" ) );
   EXPECT_EQ( "Tessel::RangeCheckerDesc: unexpected text after the value at offset 76 of "
              "\"Value('Tessel::RangeCheckerDesc', ** {'low': 1, 'high': 2, 'rangeFlags': 3}) \"",
              parseDesc( "Value('Tessel::RangeCheckerDesc', ** {'low': 1, 'high': 2, "
                         "'rangeFlags': 3}) " ) );
   EXPECT_EQ( "Tessel::RangeCheckerDesc: field 'low' has no value at offset 45 of "
              "\"Value('Tessel::RangeCheckerDesc', ** {'low': , 'high': 2, 'rangeFlags': 3})\"",
              parseDesc( "Value('Tessel::RangeCheckerDesc', ** {'low': , 'high': 2, "
                         "'rangeFlags': 3})" ) );
   EXPECT_EQ( "Tessel::RangeCheckerDesc: expected \", 'high': \" at offset 46 of "
              "\"Value('Tessel::RangeCheckerDesc', ** {'low': 1})\"",
              parseDesc( "Value('Tessel::RangeCheckerDesc', ** {'low': 1})" ) );
}

TEST( ValueText, MalformedNestedValuesAndListsAreRefused ) {
   auto parseSpec = []( const std::string & text ) {
      return errorOf( [ & ] { UdfUnitSpec s( text ); } );
   };
   UdfUnitSpec spec;
   spec.key = UdfUnitKey( 1, { 5, 6 } );
   std::string good = spec.valueText();
   auto with = [ & ]( const std::string & from, const std::string & to ) {
      std::string text = good;
      text.replace( text.find( from ), from.size(), to );
      return text;
   };
   EXPECT_EQ( "Tessel::UdfUnitSpec: field 'key': unbalanced '}' in \"Value('Tessel::UdfUnitKey', "
              "** {'unit': 1, 'quals': [5, 6]}, 'base': 0, 'offset': 0, 'adjust': 0, 'shared': "
              "False, 'owner': ''})\"",
              parseSpec( with( "]})", "]}" ) ) );
   EXPECT_EQ( "Tessel::UdfUnitKey: field 'quals': expected \", \" between list elements in "
              "\"[5,6]\"",
              parseSpec( with( "[5, 6]", "[5,6]" ) ) );
   EXPECT_EQ( "Tessel::UdfUnitKey: field 'quals': empty list element in \"[5, 6, ]\"",
              parseSpec( with( "[5, 6]", "[5, 6, ]" ) ) );
   EXPECT_EQ( "Tessel::UdfUnitSpec: field 'shared': expected True or False, got \"false\"",
              parseSpec( with( "False", "false" ) ) );
   EXPECT_EQ( "Tessel::UdfUnitSpec: field 'owner': unterminated quote in \"'})\"",
              parseSpec( with( "''})", "'})" ) ) );
   EXPECT_EQ( "Tessel::UdfUnitSpec: field 'offset': number 256 out of range",
              parseSpec( with( "'offset': 0", "'offset': 256" ) ) );
   EXPECT_EQ( "Tessel::UdfUnitSpec: field 'adjust': number -129 out of range",
              parseSpec( with( "'adjust': 0", "'adjust': -129" ) ) );
}

TEST( ValueText, RawValueParsers ) {
   EXPECT_EQ( "it's", Kiln::parseValueString( "'it\\'s'" ) );
   EXPECT_EQ( "expected a quoted text, got \"plain\"",
              errorOf( [] { Kiln::parseValueString( "plain" ); } ) );
   EXPECT_EQ( "bad quoting in \"'a'b'\"", errorOf( [] { Kiln::parseValueString( "'a'b'" ); } ) );
   auto elements = Kiln::parseValueList( "[Value('X', ** {'a': [1, 2]}), 'x, y', [3]]" );
   ASSERT_EQ( 3u, elements.size() );
   EXPECT_EQ( "Value('X', ** {'a': [1, 2]})", elements[ 0 ] );
   EXPECT_EQ( "'x, y'", elements[ 1 ] );
   EXPECT_EQ( "[3]", elements[ 2 ] );
   EXPECT_TRUE( Kiln::parseValueList( "[]" ).empty() );
   EXPECT_EQ( "X: field 'a': missing ']' in \"[1, 2\"", errorOf( [] {
                 Kiln::ValueTextReader r( "Value('X', ** {'a': [1, 2", "X" );
                 r.field( "a" );
              } ) );
   EXPECT_EQ( "unbalanced ')' in \"1), 2\"",
              errorOf( [] { Kiln::parseValueList( "[1), 2]" ); } ) );
}

} // namespace
