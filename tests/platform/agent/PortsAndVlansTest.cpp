#include <gtest/gtest.h>

#include "platform/agent/PortList.h"
#include "platform/agent/VlanState.h"
#include "platform/kiln/BoundedIndex.h"
#include "platform/kiln/ValueText.h"
#include "tests/common/Thrown.h"

#include <random>
#include <string>
#include <unordered_set>
#include <vector>

namespace {

using TesselTypes::TesselPortList;
using TesselTypes::portBitmapWords;

TEST( PortList, BitmapRoundTripsCoverEveryWord ) {
   TesselPortList ports{ 0, 5, 31, 32, 63, 64, 100, 191, 192, 223 };
   U32 words[ portBitmapWords ];
   std::fill( words, words + portBitmapWords, 0xdeadbeefu ); // stale bits must go
   TesselTypes::portListToBitmap( ports, words );
   const U32 expected[ portBitmapWords ] = { 0x80000021u, 0x80000001u, 0x00000001u, 0x00000010u,
                                             0x00000000u, 0x80000000u, 0x80000001u };
   for ( U32 w = 0; w < portBitmapWords; ++w ) {
      EXPECT_EQ( expected[ w ], words[ w ] ) << "word " << w;
   }
   EXPECT_EQ( ports, TesselTypes::bitmapToPortList( words ) );

   // Random bitmaps, fixed seed: bitmap -> list -> bitmap is the identity.
   std::mt19937 random( 42 );
   for ( int round = 0; round < 200; ++round ) {
      U32 in[ portBitmapWords ], out[ portBitmapWords ];
      for ( U32 & w : in ) {
         w = U32( random() );
      }
      TesselPortList list = TesselTypes::bitmapToPortList( in );
      TesselTypes::portListToBitmap( list, out );
      ASSERT_TRUE( std::equal( in, in + portBitmapWords, out ) ) << list.valueText();
   }
   U32 all[ portBitmapWords ];
   std::fill( all, all + portBitmapWords, 0xffffffffu );
   EXPECT_EQ( 224u, TesselTypes::bitmapToPortList( all ).size() );
}

TEST( PortList, PortsAreASetAndInvalidPortsAreRefused ) {
   TesselPortList a{ 40, 3, 40, 7 };
   TesselPortList b( std::vector< U32 >{ 7, 40, 3 } );
   EXPECT_EQ( a, b );
   EXPECT_EQ( ( std::vector< U32 >{ 3, 7, 40 } ), a.ports() );
   EXPECT_FALSE( a.portIs( 7 ) );
   EXPECT_TRUE( a.portDel( 7 ) );
   EXPECT_FALSE( a.portDel( 7 ) );
   std::unordered_set< TesselPortList > lists{ a, b, TesselPortList{ 40, 3 } };
   EXPECT_EQ( 2u, lists.size() );

   EXPECT_EQ( "TesselPortList: port 224 is above the highest port 223",
              TestText::thrownText< Kiln::RangeException >( [ & ] { a.portIs( 224 ); } ) );
   EXPECT_EQ( ( std::vector< U32 >{ 3, 40 } ), a.ports() ); // unchanged
   EXPECT_THROW( ( TesselPortList{ 1, 4294967295u } ), Kiln::RangeException );
}

TEST( PortList, ValueForm ) {
   TesselPortList ports{ 33, 1 };
   EXPECT_EQ( "Value('TesselTypes::TesselPortList', ** {'ports': [1, 33]})", ports.valueText() );
   EXPECT_EQ( ports, TesselPortList( ports.valueText() ) );
   EXPECT_EQ( TesselPortList(), TesselPortList( TesselPortList().valueText() ) );
   EXPECT_THROW( TesselPortList( "Value('TesselTypes::TesselPortList', ** {'ports': [1, 300]})" ),
                 Kiln::RangeException );
   EXPECT_THROW( TesselPortList( "Value('TesselTypes::TesselPortList', ** {'ports': [1, x]})" ),
                 Kiln::ValueTextError );
}

struct VlanWatcher : Agent::VlanState::NotifieeConst {
   std::vector< U16 > seen;
   void onUntaggedPorts( U16 vlan ) override { seen.push_back( vlan ); }
};

class Vlans : public ::testing::Test {
 protected:
   Vlans() : vlans( new Agent::VlanState( "vlans" ) ) { watcher.notifierIs( vlans ); }
   Kiln::Ptr< Agent::VlanState > vlans;
   VlanWatcher watcher;
};

TEST_F( Vlans, OneNotificationPerRealChangeOfAVlan ) {
   vlans->untaggedPortsIs( 100, TesselPortList{ 5, 40 } );
   vlans->untaggedPortsIs( 100, TesselPortList{ 40, 5 } ); // same set
   EXPECT_TRUE( vlans->untaggedPortIs( 200, 5 ) );
   EXPECT_FALSE( vlans->untaggedPortIs( 100, 40 ) );      // already there
   EXPECT_FALSE( vlans->untaggedPortDel( 100, 6 ) );      // never there
   EXPECT_TRUE( vlans->untaggedPortDel( 100, 5 ) );       // port 5 stops carrying 100
   EXPECT_EQ( ( std::vector< U16 >{ 100, 200, 100 } ), watcher.seen );
   EXPECT_EQ( TesselPortList{ 40 }, vlans->untaggedPorts( 100 ) );
   EXPECT_EQ( TesselPortList{ 5 }, vlans->untaggedPorts( 200 ) );
}

TEST_F( Vlans, AVlanWithoutUntaggedPortsHasNoEntry ) {
   vlans->untaggedPortsIs( 100, TesselPortList{ 64 } );
   EXPECT_TRUE( vlans->untaggedPortDel( 100, 64 ) );
   EXPECT_FALSE( vlans->untaggedPortsHas( 100 ) );
   vlans->untaggedPortsIs( 300, TesselPortList() ); // nothing to remove: no notification
   EXPECT_EQ( ( std::vector< U16 >{ 100, 100 } ), watcher.seen );

   U32 words[ portBitmapWords ];
   vlans->untaggedPortIs( 10, 35 );
   vlans->untaggedBitmap( 10, words );
   EXPECT_EQ( 0u, words[ 0 ] );
   EXPECT_EQ( 8u, words[ 1 ] );
   vlans->untaggedBitmap( 0, words ); // not a VLAN: no ports
   EXPECT_EQ( 0u, words[ 1 ] );
}

TEST_F( Vlans, InvalidVlanIdsAreRefused ) {
   for ( U16 vlan : { U16( 0 ), U16( 4095 ) } ) {
      EXPECT_EQ( "VlanState: VLAN id " + std::to_string( vlan ) + " is outside 1 to 4094",
                 TestText::thrownText< Kiln::RangeException >(
                    [ & ] { vlans->untaggedPortIs( vlan, 1 ); } ) );
   }
   EXPECT_THROW( vlans->untaggedPortsIs( 4095, TesselPortList{ 1 } ), Kiln::RangeException );
   vlans->untaggedPortIs( 4094, 1 );
   EXPECT_THROW( vlans->untaggedPortIs( 4094, 224 ), Kiln::RangeException );
   EXPECT_EQ( std::vector< U16 >{ 4094 }, watcher.seen );
}

} // namespace
