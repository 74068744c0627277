// Entry-manager tests: a ManagerBox with helpers to make test reservations'
// entry managers, act as a feature on the base entry, and look at what the
// chip model holds and what packets hit.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/fastlog/FastLog.h"
#include "sdk/api/field_qualify.h"
#include "sdk/model/Ports.h"
#include "tests/manager/ManagerFixture.h"

namespace ManagerTest {

// The destination address the entry tests match and send to.
constexpr U32 dst = 0x0a000001;

class EntryBox : public ManagerBox {
 public:
   using ManagerBox::ManagerBox;

   Kiln::Ptr< TesselBoundedTcamEntryManager >
   bounded( TcamGroupAssignment assignment, U32 group, U32 baseEntry, U32 endEntry,
            TcamAllocationStrategy strategy ) {
      return manager->entryManagerIs( assignment, "test", manager.get(), group, baseEntry,
                                      endEntry, strategy );
   }
   Kiln::Ptr< TesselUnboundedTcamEntryManager >
   unbounded( TcamGroupAssignment assignment, U32 group ) {
      return manager->unboundedEntryManagerIs( assignment, "test", manager.get(), group, 0, 0,
                                               tcamAllocateUnbounded_ );
   }

   const ChipModel::Profile & profile( U32 unit = 0 ) const { return box.unit( unit ).profile(); }
   const ChipModel::FieldProcessor & field( U32 unit = 0 ) const {
      return box.unit( unit ).state().field;
   }
   const ChipModel::Entry *
   entry( U32 id, U32 unit = 0 ) const {
      return field( unit ).entry( static_cast< bcm_field_entry_t >( id ) );
   }
   // Front-panel port `n` of model pipe `pipe`.
   int
   port( U32 pipe, U32 n = 0 ) const {
      return ChipModel::frontPanelPorts( profile(), pipe ).at( n );
   }
   U32 modelPipes() const { return profile().pipes; }

   // The feature's part: qualifiers and actions on the base entry.
   void
   matchDstIp( U32 entryId, U32 ip, U32 unit = 0 ) {
      ASSERT_EQ( 0, sdk( [ & ] { return bcm_field_qualify_DstIp( unit, entryId, ip, 0xffffffff ); } ) );
   }
   void
   addAction( U32 entryId, int action, U32 param0 = 0, U32 unit = 0 ) {
      ASSERT_EQ( 0, sdk( [ & ] {
                    return bcm_field_action_add( unit, entryId,
                                                 static_cast< bcm_field_action_t >( action ),
                                                 param0, 0 );
                 } ) );
   }

   ChipModel::LookupResult
   send( const ChipModel::Packet & packet, U32 unit = 0 ) {
      Kiln::UnlockAnchor anchor( Kiln::ActivityUnlockAnchor::lock() );
      return box.send( unit, packet );
   }
   // An IPv4 TCP packet to `dst` entering on `inPort`.
   ChipModel::LookupResult
   sendTo( int inPort, U32 dst, U16 dstPort = 80, U32 unit = 0 ) {
      return send( ChipModel::Packet::ipv4( inPort, 0xc0000201, dst, 6, 1234, dstPort ), unit );
   }
   // The SDK entry the packet hit in the group's SDK group `sdkGroup`.
   static std::optional< bcm_field_entry_t >
   hitIn( const ChipModel::LookupResult & result, U32 sdkGroup ) {
      return result.hitIn( static_cast< bcm_field_group_t >( sdkGroup ) );
   }
   // Hits of the packet whose entry has the logical id `entry` (any copy).
   static std::vector< U32 >
   copiesHit( const ChipModel::LookupResult & result, U32 entry ) {
      std::vector< U32 > copies;
      for ( const ChipModel::Hit & hit : result.hits() ) {
         if ( ( U32( hit.entry ) & 0x00FFFFFF ) == entry ) {
            copies.push_back( U32( hit.entry ) );
         }
      }
      return copies;
   }
   // The FastLog records as text, one per line.
   static std::string
   fastLog() {
      std::string text;
      for ( const FastLog::RecordText & record : FastLog::records() ) {
         text += record.text + "\n";
      }
      return text;
   }
};

inline bcm_pbmp_t
portsOf( std::initializer_list< int > ports ) {
   bcm_pbmp_t pbmp{};
   for ( int port : ports ) {
      BCM_PBMP_PORT_ADD( pbmp, port );
   }
   return pbmp;
}

// The SDK ids of one logical entry, pipe-major, copy-minor.
inline std::vector< U32 >
copyIds( U32 entry, U32 pipes, U32 copies ) {
   std::vector< U32 > ids;
   for ( U32 pipe = 0; pipe < pipes; ++pipe ) {
      for ( U32 copy = 0; copy < copies; ++copy ) {
         ids.push_back( entry | pipe << 24 | copy << 27 );
      }
   }
   return ids;
}

} // namespace ManagerTest
