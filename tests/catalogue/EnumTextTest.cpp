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

TEST( GroupStage, ComesFromTheGroupPrefix ) {
   const std::pair< U32, TcamStageTypes > cases[] = {
      { IFP_INVALID_GROUP_, stageTypeIngress_ },  { IFP_GROUP_EVPN_MULTIHOMING_, stageTypeIngress_ },
      { EFP_GROUP_MAC_ACL_, stageTypeEgress_ },   { EFP_GROUP_ECN_COUNT_, stageTypeEgress_ },
      { VFP_GROUP_IP_ACL_, stageTypeLookup_ },    { VFP_GROUP_CONDUIT_P4RT_VRF_, stageTypeLookup_ },
      { COMPRESS_GROUP_L4_SRC_PORT_, stageTypeIngress_ },
      { COMPRESS_GROUP_ETHER_TYPE_, stageTypeIngress_ },
   };
   for ( const auto & [ group, stage ] : cases ) {
      EXPECT_EQ( stage, getGroupStage( group ) ) << TcamGroupId( group );
   }
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
