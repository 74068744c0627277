// Helpers of the shared-resource tests: a box with its group manager (the
// manager tests' ManagerBox), entries made directly on the model for
// packets to hit, and packets with payloads.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/fastlog/TraceSink.h"
#include "sdk/api/bcm.h"
#include "sdk/model/Ports.h"
#include "sdk/shim/SdkStructs.h"
#include "tests/manager/ManagerFixture.h"

namespace ResourceTest {

using namespace ManagerTest;

// The first front-panel port of a pipe of unit 0.
inline int
portOfPipe( ManagerBox & m, U32 pipe, U32 unit = 0 ) {
   return ChipModel::frontPanelPorts( m.box.unit( unit ).profile(), pipe ).front();
}

// An IPv4 UDP packet whose payload (after the UDP header) starts with the bytes.
inline ChipModel::Packet
udpWith( int port, std::vector< U8 > payload ) {
   ChipModel::Packet p = ChipModel::Packet::ipv4( port, 0x0a000001, 0x0a000002, 17, 4000, 4789 );
   p.payload = std::move( payload );
   return p;
}

// An entry in an existing SDK group that drops what it matches; installed
// by install().
class DropEntry {
 public:
   DropEntry( ManagerBox & m, U32 sdkGroup, U32 unit = 0 ) : m_( m ), unit_( unit ) {
      int unitArg = static_cast< int >( unit );
      int group = static_cast< int >( sdkGroup );
      EXPECT_EQ( BCM_E_NONE,
                 m_.sdk( [ & ] { return bcm_field_entry_create( unitArg, group, &id_ ); } ) );
      EXPECT_EQ( BCM_E_NONE, m_.sdk( [ & ] {
                    return bcm_field_action_add( unitArg, id_, bcmFieldActionDrop, 0, 0 );
                 } ) );
   }
   bcm_field_entry_t id() const { return id_; }
   int unit() const { return static_cast< int >( unit_ ); }
   void
   install() {
      EXPECT_EQ( BCM_E_NONE, m_.sdk( [ & ] { return bcm_field_entry_install( unit(), id_ ); } ) );
   }
   void
   destroy() {
      EXPECT_EQ( BCM_E_NONE, m_.sdk( [ & ] { return bcm_field_entry_destroy( unit(), id_ ); } ) );
   }

 private:
   ManagerBox & m_;
   U32 unit_;
   bcm_field_entry_t id_ = 0;
};

// Texts captured on a channel that contain `part`.
inline std::vector< std::string >
textsWith( const FastLog::TraceCapture & capture, const std::string & part ) {
   std::vector< std::string > found;
   for ( const std::string & text : capture.texts() ) {
      if ( text.find( part ) != std::string::npos ) {
         found.push_back( text );
      }
   }
   return found;
}

} // namespace ResourceTest
