#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "CatalogueFixture.h"
#include "catalogue/TesselTcamGroups.h"
#include "sdk/api/field_enums.h"
#include "sdk/shim/Shim.h"

using namespace Tessel;
using namespace CatalogueTest;

namespace {

// A list that the shim filled: terminated within its slots, every entry a
// qualifier of the SDK, none twice.
void
expectFilledList( const int * fields, unsigned slots, const std::string & what ) {
   std::vector< int > list = listOf( fields, slots );
   ASSERT_LT( list.size(), slots ) << what << ": no terminator";
   for ( int qual : list ) {
      EXPECT_NE( nullptr, bcm_field_qualify_name( qual ) ) << what << ": " << qual;
   }
   EXPECT_EQ( list.size(), setOf( list ).size() ) << what << ": a qualifier twice";
}

// Exactly one -1 in a row's slots: a fill that stopped early leaves a second
// one behind the static terminator.
void
expectOneTerminator( const int * fields, unsigned slots, const std::string & what ) {
   EXPECT_EQ( 1, std::count( fields, fields + slots, -1 ) ) << what;
}

void
expectStageSense( const std::vector< int > & list, U32 groupId, const std::string & what ) {
   std::set< int > forbidden = forbiddenIn( getGroupStage( groupId ) );
   for ( int qual : list ) {
      EXPECT_EQ( 0u, forbidden.count( qual ) )
         << what << " has " << bcm_field_qualify_name( qual );
   }
}

using Walker = const TcamQsetModDef * (*)( U32 );

std::vector< int >
fieldsOf( U32 groupId, int mirrorAclType = 0 ) {
   return listOf( getTcamGroupFields( groupId, mirrorAclType ), tcamGroupQualifierSlots );
}

bool
hasAny( const std::vector< int > & list, std::initializer_list< int > quals ) {
   for ( int qual : quals ) {
      if ( setOf( list ).count( qual ) ) {
         return true;
      }
   }
   return false;
}

// Every list the catalogue fills, in a fixed order.
std::vector< std::vector< int > >
everyList() {
   std::vector< std::vector< int > > lists;
   for ( U32 groupId = 1; groupId < HIGHEST_TCAM_GROUP_; ++groupId ) {
      lists.push_back( fieldsOf( groupId ) );
   }
   for ( int type : { 0, 1, 2 } ) {
      lists.push_back( fieldsOf( IFP_GROUP_MIRROR_ACL_1_, type ) );
   }
   for ( U32 i = 0; getGroupExcludes( i ); ++i ) {
      lists.push_back( listOf( getGroupExcludes( i )->fields, qsetModQualifierSlots ) );
   }
   for ( U32 i = 0; getGroupIncludes( i ); ++i ) {
      lists.push_back( listOf( getGroupIncludes( i )->fields, qsetModQualifierSlots ) );
   }
   lists.push_back( listOf( initializeTrident3IfpActionSet(), 100 ) );
   return lists;
}

std::vector< std::string >
nameTokens( U32 groupId ) {
   std::string name( groupName( groupId ) );
   std::vector< std::string > tokens;
   std::string::size_type start = 0;
   for ( auto end = name.find( '_' ); ; end = name.find( '_', start ) ) {
      tokens.push_back( name.substr( start, end - start ) );
      if ( end == std::string::npos ) {
         break;
      }
      start = end + 1;
   }
   return tokens;
}

} // namespace

using QualifierLists = Catalogue;

TEST_F( QualifierLists, EverySlotIsFilledFromTheShim ) {
   for ( U32 groupId = 1; groupId < HIGHEST_TCAM_GROUP_; ++groupId ) {
      if ( isMirrorAclGroup( groupId ) ) {
         continue;
      }
      std::string what = groupName( groupId );
      expectFilledList( getTcamGroupFields( groupId, 0 ), tcamGroupQualifierSlots, what );
      expectOneTerminator( getTcamGroupFields( groupId, 0 ), tcamGroupQualifierSlots, what );
      EXPECT_FALSE( fieldsOf( groupId ).empty() ) << what;
   }
   for ( int type : { 0, 1, 2 } ) {
      expectFilledList( getTcamGroupFields( IFP_GROUP_MIRROR_ACL_3_, type ), 17,
                        "mirror type " + std::to_string( type ) );
   }
   for ( Walker walker : { getGroupExcludes, getGroupIncludes } ) {
      for ( U32 i = 0; walker( i ); ++i ) {
         expectOneTerminator( walker( i )->fields, qsetModQualifierSlots,
                              "row " + std::to_string( i ) );
      }
   }
}

TEST_F( QualifierLists, GroupsMatchOnlyWhatTheirStageSees ) {
   for ( U32 groupId = 1; groupId < HIGHEST_TCAM_GROUP_; ++groupId ) {
      expectStageSense( fieldsOf( groupId ), groupId,
                        groupName( groupId ) );
   }
   for ( int type : { 0, 1, 2 } ) {
      expectStageSense( fieldsOf( IFP_GROUP_MIRROR_ACL_1_, type ), IFP_GROUP_MIRROR_ACL_1_,
                        "mirror type " + std::to_string( type ) );
   }
}

TEST_F( QualifierLists, GroupsMatchTheFieldsTheirNamesPromise ) {
   const Shim::Sdk & s = shim();
   auto v4 = { s.AR_bcmFieldQualifySrcIp(), s.AR_bcmFieldQualifyDstIp() };
   auto v6 = { s.AR_bcmFieldQualifySrcIp6(), s.AR_bcmFieldQualifyDstIp6(),
               s.AR_bcmFieldQualifyIp6NextHeader() };
   auto mac = { s.AR_bcmFieldQualifySrcMac(), s.AR_bcmFieldQualifyDstMac() };
   for ( U32 groupId = 1; groupId < HIGHEST_TCAM_GROUP_; ++groupId ) {
      std::vector< std::string > tokens = nameTokens( groupId );
      std::set< std::string > words( tokens.begin(), tokens.end() );
      std::vector< int > list = fieldsOf( groupId, words.count( "MIRROR" ) ? 1 : 0 );
      std::string what = groupName( groupId );
      if ( words.count( "IP" ) || words.count( "IPV4" ) ) {
         EXPECT_TRUE( hasAny( list, v4 ) ) << what;
         EXPECT_FALSE( hasAny( list, v6 ) ) << what;
      }
      if ( words.count( "IPV6" ) ) {
         EXPECT_TRUE( hasAny( list, v6 ) ) << what;
      }
      if ( words.count( "MAC" ) ) {
         EXPECT_TRUE( hasAny( list, mac ) ) << what;
         EXPECT_TRUE( hasAny( list, { s.AR_bcmFieldQualifyEtherType() } ) ) << what;
      }
   }
   EXPECT_TRUE( hasAny( fieldsOf( IFP_GROUP_MIRROR_ACL_1_, 0 ), v6 ) );
   EXPECT_TRUE( hasAny( fieldsOf( IFP_GROUP_MIRROR_ACL_1_, 2 ), mac ) );
}

// Installing an entry qualifies its ports (InPort/InPorts on ingress and
// lookup); user-configured features bind to ports, so their groups need them.
TEST_F( QualifierLists, UserConfiguredGroupsCanBeBoundToPorts ) {
   const Shim::Sdk & s = shim();
   for ( U32 i = 0; i < numTcamReservations(); ++i ) {
      const TcamReservation * row = getTcamReservation( i );
      if ( !row->userConfigurable && !row->runtimeQset ) {
         continue;
      }
      std::vector< int > list = fieldsOf( row->groupId );
      if ( getGroupStage( row->groupId ) == stageTypeEgress_ ) {
         EXPECT_TRUE( hasAny( list, { s.AR_bcmFieldQualifyOutPort(),
                                      s.AR_bcmFieldQualifyEgressClassL3Interface() } ) )
            << row->name;
      } else {
         EXPECT_TRUE(
            hasAny( list, { s.AR_bcmFieldQualifyInPort(), s.AR_bcmFieldQualifyInPorts() } ) )
            << row->name;
      }
   }
}

TEST_F( QualifierLists, Trident3IfpActionSetIsBuiltOnceFromTheShim ) {
   const int * actions = initializeTrident3IfpActionSet();
   EXPECT_EQ( actions, initializeTrident3IfpActionSet() );
   std::vector< int > list = listOf( actions, 100 );
   ASSERT_LT( list.size(), 100u );
   EXPECT_EQ( list.size(), setOf( list ).size() );
   for ( int action : list ) {
      EXPECT_NE( nullptr, bcm_field_action_name( action ) ) << action;
   }
   // Ingress actions only: egress mirroring and class-id setting belong to
   // other stages.
   const Shim::Sdk & s = shim();
   for ( int other : { s.AR_bcmFieldActionMirrorEgress(), s.AR_bcmFieldActionClassSet(),
                       s.AR_bcmFieldActionNewClassId() } ) {
      EXPECT_EQ( 0u, setOf( list ).count( other ) ) << bcm_field_action_name( other );
   }
   EXPECT_EQ( 1u, setOf( list ).count( s.AR_bcmFieldActionCopyToCpu() ) );
}

TEST_F( QualifierLists, AreAskedOfTheShimOnlyOnce ) {
   std::vector< std::vector< int > > before = everyList();
   cleanupTcamGroups();
   Shim::sdk_ = nullptr;
   // Any second fill would ask the missing shim and abort the test program.
   initTcamGroups();
   std::vector< std::vector< int > > after = everyList();
   Shim::sdk_ = &shim();
   EXPECT_EQ( before, after );
}

TEST( QualifierFill, NeedsAnInstalledShim ) {
   // Threadsafe death tests start a fresh process, whose lists are unfilled.
   GTEST_FLAG_SET( death_test_style, "threadsafe" );
   Shim::sdk_ = nullptr;
   const char * report = "Assertion 'SDK shim not installed' failed\\.";
   EXPECT_DEATH( initTcamGroups(), report );
   EXPECT_DEATH( getGroupExcludes( 0 ), report );
   EXPECT_DEATH( getGroupIncludes( 191 ), report );
   EXPECT_DEATH( getTcamGroupFields( IFP_GROUP_MIRROR_ACL_2_, 2 ), report );
   EXPECT_DEATH( initializeTrident3IfpActionSet(), report );
   GTEST_FLAG_SET( death_test_style, "fast" );
}
