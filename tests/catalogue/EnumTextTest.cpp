#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>
#include <string>
#include <unordered_map>

#include "CatalogueFixture.h"
#include "catalogue/TesselTcamGroups.h"

using namespace Tessel;
using namespace CatalogueTest;

namespace {

// Every value from 0 to count - 1 has a distinct name that reads back, and
// the first number past them is refused.
template< typename Instance >
void
expectNamedValues( U32 count ) {
   std::set< std::string > names;
   for ( U32 value = 0; value < count; ++value ) {
      std::string text = Instance::valueToStrep( typename Instance::Enum( value ) );
      EXPECT_TRUE( names.insert( text ).second ) << text;
      EXPECT_EQ( value, static_cast< U32 >( Instance( text ).value() ) ) << text;
   }
   EXPECT_THROW( Instance{ count }.value(), Kiln::RangeException );
}

} // namespace

TEST( EnumText, EveryValueHasItsOwnName ) {
   expectNamedValues< TcamGroupIdInstance >( 93 );
   expectNamedValues< TcamGroupAssignmentInstance >( 139 );
   expectNamedValues< TcamAllocationStrategyInstance >( 4 );
   expectNamedValues< TcamStageTypesInstance >( 3 );
}

TEST( EnumText, NamesAreTheEnumeratorsWithoutTheirUnderscore ) {
   EXPECT_EQ( "IFP_INVALID_GROUP", TcamGroupIdInstance::valueToStrep( IFP_INVALID_GROUP_ ) );
   EXPECT_EQ( "IFP_GROUP_L2CTL_DOT1xMBA",
              TcamGroupIdInstance( IFP_GROUP_L2CTL_DOT1xMBA_ ).stringValue() );
   EXPECT_EQ( HIGHEST_TCAM_GROUP_, TcamGroupIdInstance( "HIGHEST_TCAM_GROUP" ).value() );
   EXPECT_EQ( COMPRESS_GROUP_ETHER_TYPE_,
              TcamGroupIdInstance::sequenceToValue( "COMPRESS_GROUP_ETHER_TYPE" ) );
   EXPECT_EQ( condiutP4RtPuntGroupReserved_,
              TcamGroupAssignmentInstance( "condiutP4RtPuntGroupReserved" ).value() );
   EXPECT_THROW( TcamGroupAssignmentInstance( "conduitP4RtPuntGroupReserved" ),
                 Kiln::ValueTextError );
   EXPECT_THROW( TcamGroupIdInstance( "IFP_GROUP_IP_ACL_" ), Kiln::ValueTextError );
   EXPECT_EQ( "ifpNatSupersetGroup", TcamGroupAssignmentInstance( 130u ).stringValue() );
   EXPECT_EQ( "test8TcamGroup", TcamGroupAssignmentInstance( 138u ).stringValue() );
   std::ostringstream os;
   os << tcamAllocateAtBeginning() << " " << stageTypeLookup() << " " << IFP_GROUP_IP_ACL_
      << " " << TcamGroupId( 93 );
   EXPECT_EQ( "tcamAllocateAtBeginning stageTypeLookup IFP_GROUP_IP_ACL 93", os.str() );
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
   EXPECT_EQ( stageTypeIngress_, getGroupStage( IFP_INVALID_GROUP_ ) );
   EXPECT_EQ( stageTypeIngress_, getGroupStage( IFP_GROUP_EVPN_MULTIHOMING_ ) );
   EXPECT_EQ( stageTypeEgress_, getGroupStage( EFP_GROUP_MAC_ACL_ ) );
   EXPECT_EQ( stageTypeEgress_, getGroupStage( EFP_GROUP_ECN_COUNT_ ) );
   EXPECT_EQ( stageTypeLookup_, getGroupStage( VFP_GROUP_IP_ACL_ ) );
   EXPECT_EQ( stageTypeLookup_, getGroupStage( VFP_GROUP_CONDUIT_P4RT_VRF_ ) );
   EXPECT_EQ( stageTypeIngress_, getGroupStage( COMPRESS_GROUP_L4_SRC_PORT_ ) );
   EXPECT_EQ( stageTypeIngress_, getGroupStage( COMPRESS_GROUP_ETHER_TYPE_ ) );
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
   EXPECT_EQ( "Value('Tessel::GroupQsetModKey', ** {'groupId': 8, 'chipType': 3})", os.str() );
}
