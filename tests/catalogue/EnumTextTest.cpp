#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <unordered_map>

#include "CatalogueFixture.h"
#include "catalogue/TesselTcamGroups.h"

using namespace Tessel;
using namespace CatalogueTest;

namespace {

template< typename Enum >
void
expectRoundTrips( U32 count, Enum ( *fromNumber )( U32 ), Enum ( *fromText )( std::string_view ) ) {
   std::set< std::string > names;
   for ( U32 value = 0; value < count; ++value ) {
      Enum e = fromNumber( value );
      std::string text = stringValue( e );
      EXPECT_EQ( text, valueToStrep( e ) );
      EXPECT_TRUE( names.insert( text ).second ) << text;
      EXPECT_EQ( e, fromText( text ) ) << text;
      std::ostringstream os;
      os << e;
      EXPECT_EQ( text, os.str() );
      Enum parsed{};
      EXPECT_TRUE( sequenceToValue( text, parsed ) );
      EXPECT_EQ( static_cast< U32 >( e ), static_cast< U32 >( parsed ) );
   }
   EXPECT_EQ( count, names.size() );
}

template< typename Exception, typename Call >
std::string
messageOf( Call call ) {
   try {
      call();
   } catch ( const Exception & e ) {
      return e.what();
   }
   return "no exception";
}

} // namespace

TEST( EnumText, EveryValueRoundTripsThroughItsName ) {
   expectRoundTrips< TcamGroupId >( numTcamGroupIdValues, TcamGroupIdInstance,
                                    TcamGroupIdInstance );
   expectRoundTrips< TcamGroupAssignment >( numTcamGroupAssignmentValues,
                                            TcamGroupAssignmentInstance,
                                            TcamGroupAssignmentInstance );
   expectRoundTrips< TcamAllocationStrategy >( numTcamAllocationStrategyValues,
                                               TcamAllocationStrategyInstance,
                                               TcamAllocationStrategyInstance );
   expectRoundTrips< TcamStageTypes >( numTcamStageTypesValues, TcamStageTypesInstance,
                                       TcamStageTypesInstance );
}

TEST( EnumText, NamesAreTheEnumeratorsWithoutTheirUnderscore ) {
   EXPECT_EQ( 93u, numTcamGroupIdValues );
   EXPECT_EQ( 139u, numTcamGroupAssignmentValues );
   EXPECT_EQ( "IFP_INVALID_GROUP", stringValue( IFP_INVALID_GROUP_ ) );
   EXPECT_EQ( "IFP_GROUP_L2CTL_DOT1xMBA", stringValue( IFP_GROUP_L2CTL_DOT1xMBA_ ) );
   EXPECT_EQ( "HIGHEST_TCAM_GROUP", stringValue( TcamGroupId( 86 ) ) );
   EXPECT_EQ( "COMPRESS_GROUP_ETHER_TYPE", stringValue( TcamGroupId( 92 ) ) );
   EXPECT_EQ( "condiutP4RtPuntGroupReserved", stringValue( TcamGroupAssignment( 115 ) ) );
   EXPECT_EQ( "ifpNatSupersetGroup", stringValue( TcamGroupAssignment( 130 ) ) );
   EXPECT_EQ( "test1TcamGroup", stringValue( TcamGroupAssignment( 131 ) ) );
   EXPECT_EQ( "test8TcamGroup", stringValue( TcamGroupAssignment( 138 ) ) );
   EXPECT_EQ( "tcamAllocateAtBeginning", stringValue( tcamAllocateAtBeginning() ) );
   EXPECT_EQ( "stageTypeLookup", stringValue( stageTypeLookup() ) );
}

TEST( EnumText, StrayValuesAndUnknownNamesAreReported ) {
   EXPECT_EQ( "", valueToStrep( TcamGroupId( 93 ) ) );
   EXPECT_EQ( "93", stringValue( TcamGroupId( 93 ) ) );
   std::ostringstream os;
   os << TcamGroupAssignment( 1000 );
   EXPECT_EQ( "1000", os.str() );

   TcamGroupId untouched = IFP_GROUP_QOS_;
   EXPECT_FALSE( sequenceToValue( "IFP_GROUP_IP_ACL_", untouched ) );
   EXPECT_FALSE( sequenceToValue( "", untouched ) );
   EXPECT_FALSE( sequenceToValue( "ifp_group_ip_acl", untouched ) );
   EXPECT_EQ( IFP_GROUP_QOS_, untouched );

   EXPECT_EQ( "TcamGroupId has no value 93",
              messageOf< std::out_of_range >( [] { TcamGroupIdInstance( 93 ); } ) );
   EXPECT_EQ( "TcamAllocationStrategy has no value 4",
              messageOf< std::out_of_range >( [] { TcamAllocationStrategyInstance( 4 ); } ) );
   EXPECT_EQ( "TcamGroupAssignment has no value named \"conduitP4RtPuntGroupReserved\"",
              messageOf< std::invalid_argument >( [] {
                 TcamGroupAssignmentInstance( "conduitP4RtPuntGroupReserved" );
              } ) );
}

TEST( EnumText, ConstantsAndValueFunctionsCompareWithNumbers ) {
   static_assert( tcamAllocateUnbounded() == 0u && tcamAllocateOnDemand_ == 1u );
   static_assert( tcamAllocateAsChunk() == tcamAllocateAsChunk_ );
   static_assert( tcamAllocateAtBeginning_ == 3u );
   static_assert( stageTypeIngress() == 0u && stageTypeLookup_ == 1u &&
                  stageTypeEgress() == 2u );
   U32 groupId = 86;
   EXPECT_TRUE( groupId == HIGHEST_TCAM_GROUP_ );
   EXPECT_TRUE( groupId > IFP_INVALID_GROUP_ && groupId < COMPRESS_GROUP_L4_SRC_PORT_ );
   EXPECT_EQ( 115u, condiutP4RtPuntGroupReserved_ );
}

TEST( GroupStage, ComesFromTheGroupPrefix ) {
   for ( U32 groupId = 0; groupId < numTcamGroupIdValues; ++groupId ) {
      if ( groupId == HIGHEST_TCAM_GROUP_ ) {
         continue;
      }
      std::string name = stringValue( TcamGroupId( groupId ) );
      TcamStageTypes expected = name.starts_with( "VFP_" )   ? stageTypeLookup_
                                : name.starts_with( "EFP_" ) ? stageTypeEgress_
                                                             : stageTypeIngress_;
      EXPECT_EQ( expected, getGroupStage( groupId ) ) << name;
   }
   EXPECT_EQ( stageTypeIngress_, getGroupStage( COMPRESS_GROUP_DST_IP_ ) );
   EXPECT_EQ( stageTypeEgress_, getGroupStage( EFP_GROUP_ECN_COUNT_ ) );
   EXPECT_EQ( stageTypeLookup_, getGroupStage( VFP_GROUP_IP_ACL_ ) );
   const char * signature = "Tessel::TcamStageTypes Tessel::getGroupStage(U32)";
   EXPECT_DEATH( getGroupStage( HIGHEST_TCAM_GROUP_ ),
                 assertionReport( signature, "group has no stage" ) );
   EXPECT_DEATH( getGroupStage( 93 ), assertionReport( signature, "group has no stage" ) );
}

TEST( GroupQsetModKey, OrdersByGroupThenChipAndHashes ) {
   GroupQsetModKey a{ IFP_GROUP_IP_ACL_, 4 };
   GroupQsetModKey b{ IFP_GROUP_MAC_ACL_, 1 };
   GroupQsetModKey c{ IFP_GROUP_MAC_ACL_, 3 };
   EXPECT_LT( a, b );
   EXPECT_LT( b, c );
   EXPECT_EQ( c, ( GroupQsetModKey{ 8, 3 } ) );
   std::unordered_map< GroupQsetModKey, U32 > index;
   index[ a ] = 1;
   index[ b ] = 2;
   index[ GroupQsetModKey{ IFP_GROUP_IP_ACL_, 4 } ] = 3;
   EXPECT_EQ( 2u, index.size() );
   EXPECT_EQ( 3u, index.at( a ) );
   std::ostringstream os;
   os << c;
   EXPECT_EQ( "GroupQsetModKey(IFP_GROUP_MAC_ACL, 3)", os.str() );
}
