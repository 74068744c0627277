// Shared set-up of the start-up tests: a box on the activity thread with the
// lock check on, the shared start-up state, and an installed IFP entry that
// packets can hit.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/agent/TesselCommonSmData.h"
#include "platform/kiln/ActivityLock.h"
#include "tests/sdk/model/ModelTestSupport.h"

namespace StartupTest {

inline const std::vector< std::string > &
profiles() {
   static const std::vector< std::string > names = { "single", "trident3", "thx", "th3" };
   return names;
}

// Every SDK call must come with the activity lock released: the test thread
// holds it as the agent's activity thread does, and the box aborts on a
// call made with it held.
inline ChipModel::Box::Options
checkedOptions( bool staged = true ) {
   ChipModel::Box::Options options;
   options.staged = staged;
   options.activityCheck = ChipModel::ActivityCheck::abort;
   return options;
}

inline Kiln::Ptr< Agent::TesselCommonSmData >
startupState( U32 units ) {
   Kiln::Ptr< Agent::TesselCommonSmData > scsd = new Agent::TesselCommonSmData( "scsd" );
   for ( U32 unit = 0; unit < units; ++unit ) {
      scsd->unitIs( unit );
   }
   return scsd;
}

// Sets the readiness flags the agent's other parties own (all required
// ones except request 4, which the flash download sets itself).
inline void
othersReady( Agent::TesselCommonSmData & scsd ) {
   for ( Agent::TcamFlashDownloadReq req :
         { Agent::tcamFlashDownloadReqChipInit, Agent::tcamFlashDownloadReqPortInit,
           Agent::tcamFlashDownloadReqFeatureConfig,
           Agent::tcamFlashDownloadReqForwardingReconcile } ) {
      scsd.flashDownloadWaitIs( req, true );
   }
}

constexpr U32 dstHit = 0x0a000001; // 10.0.0.1

// Group `id` on pipe 0 of the IFP matching DstIp, with one entry `id`
// sending 10.0.0.1 to CoS queue 3, installed.
inline void
installIfpEntry( ChipModel::Box & box, U32 unit, bcm_field_group_t id ) {
   // The test stands in for a feature: its own SDK calls release the lock.
   Kiln::UnlockAnchor anchor( Kiln::ActivityUnlockAnchor::lock() );
   const ChipModel::Profile & profile = box.unit( unit ).profile();
   bcm_field_group_config_t config =
      ModelTest::groupConfig( profile, id, ModelTest::qsetOf( { bcmFieldQualifyDstIp } ), 10 );
   int u = static_cast< int >( unit );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( u, &config ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( u, id, id ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_DstIp( u, id, dstHit, 0xffffffff ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_action_add( u, id, bcmFieldActionCosQNew, 3, 0 ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_install( u, id ) );
}

// Whether a packet to 10.0.0.1 on pipe 0 hits group `id` in hardware.
inline bool
packetHits( ChipModel::Box & box, U32 unit, bcm_field_group_t id ) {
   const ChipModel::Profile & profile = box.unit( unit ).profile();
   ChipModel::Packet packet = ChipModel::Packet::ipv4( ModelTest::portIn( profile, 0 ),
                                                       0xc0000201, dstHit, 6, 1234, 80 );
   return box.send( unit, packet ).hitIn( id ).has_value();
}

// The texts matching `pattern` (a whole-text extended regex).
inline std::vector< std::string >
matching( const std::vector< std::string > & texts, const std::string & pattern ) {
   auto matcher = ::testing::MatchesRegex( pattern );
   std::vector< std::string > out;
   for ( const std::string & text : texts ) {
      if ( ::testing::Matches( matcher )( text ) ) {
         out.push_back( text );
      }
   }
   return out;
}

} // namespace StartupTest
