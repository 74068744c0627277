// Range checkers on every chip profile: shared per descriptor and unit,
// one hardware range per pipe on range-module chips, exhaustion reported
// and recovered, installed entries matching packets inside their range in
// every pipe, the hardware gone with the last user or with the module.
#include "tests/manager/EntryFixture.h"
#include "tests/resources/ResourceFixture.h"

#include "platform/fastlog/TraceConfig.h"
#include "sdk/api/range.h"

namespace ResourceTest {
namespace {

constexpr U32 aclGroup = IFP_GROUP_IP_ACL_;
const RangeCheckerDesc dstPorts( 1000, 2000, BCM_FIELD_RANGE_DSTPORT );

class RangeCheckerTest : public testing::TestWithParam< ProfileFacts > {
 protected:
   bool rangeModule() const { return m.profile().has( BCM_INFO_CAP_RANGE_MODULE ); }
   // Hardware ranges that make one checker of the ACL group on a unit.
   U32
   rangesPerChecker() const {
      return rangeModule() ? m.manager->getNumPipe( 0, aclGroup ) : 1;
   }
   const ChipModel::RangeTable & ranges( U32 unit = 0 ) const {
      return m.box.unit( unit ).state().ranges;
   }
   U32 rangeCount( U32 unit = 0 ) const { return m.box.counts( unit ).ranges; }
   // What the unit's hardware holds for a checker, per pipe: type, bounds,
   // the pipe it serves.
   void
   expectHardware( RangeCheckId id, const RangeCheckerDesc & desc, U32 unit = 0 ) const {
      if ( !rangeModule() ) {
         const ChipModel::FieldRange * r = ranges( unit ).fieldRange( int( id ) );
         ASSERT_TRUE( r );
         EXPECT_EQ( desc.rangeFlags(), r->flags );
         EXPECT_EQ( int( desc.low() ), r->min );
         EXPECT_EQ( int( desc.high() ), r->max );
         return;
      }
      Kiln::Ptr< UnitRangeIdInfo > info = m.manager->unitRangeInfo( UnitRangeInfoKey{ unit, id } );
      ASSERT_TRUE( info );
      ASSERT_EQ( rangesPerChecker(), info->pipeRangeIdCollection().size() );
      EXPECT_EQ( id, info->pipeRangeId( 0 ) );
      for ( U32 pipe = 0; pipe < rangesPerChecker(); ++pipe ) {
         const ChipModel::ModuleRange * r =
            ranges( unit ).moduleRange( int( info->pipeRangeId( pipe ) ) );
         ASSERT_TRUE( r ) << "pipe " << pipe;
         EXPECT_EQ( pipe, r->pipe );
         EXPECT_EQ( bcmRangeTypeL4DstPort, r->type );
         EXPECT_EQ( desc.low(), r->min );
         EXPECT_EQ( desc.high(), r->max );
      }
   }
   // Everything the manager keeps for checkers is gone.
   void
   expectNoRecords() const {
      EXPECT_TRUE( m.manager->rangeCheckerCollection().empty() );
      EXPECT_TRUE( m.manager->unitRangeInfoCollection().empty() );
   }

   EntryBox m{ { GetParam().name, GetParam().name } };
   Kiln::Ptr< TesselBoundedTcamEntryManager > acl =
      m.bounded( test1TcamGroup_, aclGroup, 100, 110, tcamAllocateOnDemand_ );
   Kiln::Ptr< TesselBoundedTcamEntryManager > acl6 =
      m.bounded( test2TcamGroup_, IFP_GROUP_IPV6_ACL_, 200, 210, tcamAllocateOnDemand_ );
};

TEST_P( RangeCheckerTest, EqualDescriptorsShareOneCheckerUntilTheLastRelease ) {
   FastLog::recordsClear();
   RangeCheckId id = acl->getRangeChecker( 0, dstPorts );
   ASSERT_NE( 0u, id );
   EXPECT_EQ( rangesPerChecker(), rangeCount() );
   expectHardware( id, dstPorts );
   // Another group asking for the same range gets the same checker.
   m.box.clearCallLog();
   EXPECT_EQ( id, acl6->getRangeChecker( 0, dstPorts ) );
   EXPECT_EQ( 0u, m.box.callLog().size() );
   EXPECT_EQ( 2u, m.manager->rangeChecker( dstPorts )->unitRefCount( 0 ) );
   // The same bounds on another field are another checker.
   RangeCheckerDesc srcPorts( 1000, 2000, BCM_FIELD_RANGE_SRCPORT );
   RangeCheckId src = acl->getRangeChecker( 0, srcPorts );
   EXPECT_NE( 0u, src );
   EXPECT_NE( id, src );
   EXPECT_EQ( 2 * rangesPerChecker(), rangeCount() );
   std::string log = EntryBox::fastLog();
   std::ostringstream created;
   created << "fp range create 0x" << std::hex << id << " 0x2 1000 2000\n";
   EXPECT_NE( std::string::npos, log.find( created.str() ) ) << log;

   acl->releaseRangeChecker( 0, dstPorts );
   EXPECT_EQ( 2 * rangesPerChecker(), rangeCount() );
   expectHardware( id, dstPorts );
   acl6->releaseRangeChecker( 0, dstPorts );
   EXPECT_EQ( rangesPerChecker(), rangeCount() );
   EXPECT_FALSE( m.manager->rangeCheckerHas( dstPorts ) );
   EXPECT_FALSE( m.manager->unitRangeInfoHas( UnitRangeInfoKey{ 0, id } ) );
   acl->releaseRangeChecker( 0, srcPorts );
   EXPECT_EQ( 0u, rangeCount() );
   expectNoRecords();
   EXPECT_NE( std::string::npos, EntryBox::fastLog().find( "fp range destroy " ) );
}

TEST_P( RangeCheckerTest, EachUnitHasItsOwnCheckerAndCount ) {
   RangeCheckId first = acl->getRangeChecker( 0, dstPorts );
   RangeCheckId second = acl->getRangeChecker( 1, dstPorts );
   ASSERT_NE( 0u, first );
   ASSERT_NE( 0u, second );
   acl->getRangeChecker( 1, dstPorts );
   EXPECT_EQ( rangesPerChecker(), rangeCount( 0 ) );
   EXPECT_EQ( rangesPerChecker(), rangeCount( 1 ) );
   Kiln::Ptr< RangeCheckerData > data = m.manager->rangeChecker( dstPorts );
   EXPECT_EQ( 1u, data->unitRefCount( 0 ) );
   EXPECT_EQ( 2u, data->unitRefCount( 1 ) );
   expectHardware( second, dstPorts, 1 );

   acl->releaseRangeChecker( 0, dstPorts );
   EXPECT_EQ( 0u, rangeCount( 0 ) );
   EXPECT_EQ( rangesPerChecker(), rangeCount( 1 ) );
   EXPECT_TRUE( m.manager->rangeCheckerHas( dstPorts ) );
   EXPECT_FALSE( data->unitIdHas( 0 ) );
   acl->releaseRangeChecker( 1, dstPorts );
   acl->releaseRangeChecker( 1, dstPorts );
   EXPECT_EQ( 0u, m.box.counts().ranges );
   expectNoRecords();
}

// The chip's last checker, then one too many: 0, the flag, nothing made;
// sharing still works; only a release that frees hardware clears the flag.
TEST_P( RangeCheckerTest, RunningOutIsReportedAndAFreeingReleaseRecovers ) {
   U32 limit = m.profile().rangeCheckers;
   for ( U32 i = 0; i < limit; ++i ) {
      ASSERT_NE( 0u, acl->getRangeChecker( 0, RangeCheckerDesc( i, i + 10, 2 ) ) ) << i;
   }
   EXPECT_FALSE( acl->rangeCheckersExhausted( 0 ) );
   RangeCheckerDesc extra( 5000, 6000, BCM_FIELD_RANGE_SRCPORT );
   m.box.clearCallLog();
   EXPECT_EQ( 0u, acl->getRangeChecker( 0, extra ) );
   EXPECT_TRUE( acl->rangeCheckersExhausted( 0 ) );
   EXPECT_TRUE( acl6->rangeCheckersExhausted( 0 ) );
   EXPECT_FALSE( acl->rangeCheckersExhausted( 1 ) );
   EXPECT_EQ( limit * rangesPerChecker(), rangeCount() );
   EXPECT_EQ( rangeModule() ? limit : 0u, m.manager->unitRangeInfoCollection().size() );
   // Pipe 0 refused: no other pipe was asked.
   EXPECT_EQ( 1u, m.box.callCount( rangeModule() ? "bcm_range_create"
                                                 : "bcm_field_range_create" ) );
   ASSERT_TRUE( m.manager->rangeCheckerHas( extra ) );
   EXPECT_TRUE( m.manager->rangeChecker( extra )->unitIdCollection().empty() );
   // Another unit still has all of its own.
   EXPECT_NE( 0u, acl->getRangeChecker( 1, extra ) );

   RangeCheckerDesc first( 0, 10, 2 );
   RangeCheckId shared = acl6->getRangeChecker( 0, first );
   EXPECT_NE( 0u, shared );
   acl6->releaseRangeChecker( 0, first ); // a user is left: nothing freed
   EXPECT_TRUE( acl->rangeCheckersExhausted( 0 ) );
   acl->releaseRangeChecker( 0, first );
   EXPECT_FALSE( acl->rangeCheckersExhausted( 0 ) );
   EXPECT_NE( 0u, acl->getRangeChecker( 0, extra ) );
}

// Each descriptor on its own entry; packets in every pipe of the model hit
// an entry exactly when their field lies inside its range, bounds included.
TEST_P( RangeCheckerTest, InstalledEntriesMatchInsideTheirRangeInEveryPipe ) {
   struct Case {
      RangeCheckerDesc desc;
      std::vector< U32 > inside;
      std::vector< U32 > outside;
   };
   const std::vector< Case > cases = {
      { dstPorts, { 1000, 1500, 2000 }, { 999, 2001 } },
      { RangeCheckerDesc( 5000, 5010, BCM_FIELD_RANGE_SRCPORT ), { 5000, 5010 }, { 4999, 5011 } },
      { RangeCheckerDesc( 200, 300, BCM_FIELD_RANGE_PACKET_LENGTH ), { 200, 300 }, { 199, 301 } },
   };
   // Case c's packet into the pipe, its field set to value.
   auto packet = [ & ]( U32 c, U32 pipe, U32 value ) {
      ChipModel::Packet p = ChipModel::Packet::ipv4( m.port( pipe, 1 ), 0xc0000201, 0x0a000000 + c,
                                                     17, 4000, 80 );
      if ( c == 0 ) {
         p.l4DstPort = U16( value );
      } else if ( c == 1 ) {
         p.l4SrcPort = U16( value );
      } else {
         p.length = value;
      }
      return p;
   };
   for ( U32 c = 0; c < cases.size(); ++c ) {
      U32 entry = 100 + c;
      ASSERT_EQ( entry, acl->getEntry( 0, entry, "range" ) );
      m.matchDstIp( entry, 0x0a000000 + c );
      RangeCheckId id = acl->getRangeChecker( 0, cases[ c ].desc );
      ASSERT_NE( 0u, id );
      ASSERT_EQ( 0, acl->attachRangeChecker( 0, entry, id ) );
      ASSERT_EQ( 0, acl->installEntry( 0, entry ) );
   }
   auto hits = [ & ]( U32 c, U32 pipe, U32 value ) {
      return !EntryBox::copiesHit( m.send( packet( c, pipe, value ) ), 100 + c ).empty();
   };
   for ( U32 c = 0; c < cases.size(); ++c ) {
      for ( U32 pipe = 0; pipe < m.modelPipes(); ++pipe ) {
         for ( U32 value : cases[ c ].inside ) {
            EXPECT_TRUE( hits( c, pipe, value ) ) << c << " pipe " << pipe << " value " << value;
         }
         for ( U32 value : cases[ c ].outside ) {
            EXPECT_FALSE( hits( c, pipe, value ) ) << c << " pipe " << pipe << " value " << value;
         }
      }
      EXPECT_EQ( cases[ c ].inside.size() * m.modelPipes(), acl->hitsForEntry( 0, 100 + c ) );
   }
   // Entries first, then their checkers: nothing is left.
   for ( U32 c = 0; c < cases.size(); ++c ) {
      acl->releaseEntry( 0, 100 + c );
      EXPECT_FALSE( m.manager->entryRangeCheckIdHas( 100 + c ) );
      acl->releaseRangeChecker( 0, cases[ c ].desc );
   }
   EXPECT_EQ( 0u, rangeCount() );
   expectNoRecords();
}

TEST_P( RangeCheckerTest, AttachingRecordsTheCheckerForInstallationOnly ) {
   FastLog::TraceCapture trace( "TesselTcam", FastLog::TraceLevels::only( 7 ) );
   ASSERT_EQ( 100u, acl->getEntry( 0, 100, "range" ) );
   RangeCheckId id = acl->getRangeChecker( 0, dstPorts );
   // Out of resources on the entry: the code, nothing recorded.
   m.box.failCall( 0, "bcm_field_qualify_RangeCheck", 1, BCM_E_RESOURCE );
   EXPECT_EQ( BCM_E_RESOURCE, acl->attachRangeChecker( 0, 100, id ) );
   EXPECT_FALSE( m.manager->entryRangeCheckIdHas( 100 ) );
   ASSERT_EQ( 0, acl->attachRangeChecker( 0, 100, id ) );
   EXPECT_EQ( std::vector< std::string >{ " Saving record for RnageId: " + std::to_string( id ) +
                                          " for entryId: 100" },
              textsWith( trace, "Saving" ) );
   EXPECT_TRUE( m.manager->entryRangeCheckId( 100 )->rangeCheckId( id ) );
   EXPECT_DEATH( acl->attachRangeChecker( 0, 100, id ),
                 "int Tessel::TesselTcamGroupManager::attachRangeChecker\\(U32, U32, U32\\): "
                 "Assertion '!entryRangeCheckId\\( baseEntryId \\)->rangeCheckIdHas\\( "
                 "baseRangeCheckId \\)' failed" );
   ASSERT_EQ( 0, acl->installEntry( 0, 100 ) );
   EXPECT_EQ( 0, acl->removeEntry( 0, 100 ) );
   EXPECT_FALSE( m.manager->entryRangeCheckIdHas( 100 ) );
   // The SDK keeps the removed entry's qualifiers: the checker is busy
   // until the entry goes, and destroying it then is fatal.
   EXPECT_DEATH( acl->releaseRangeChecker( 0, dstPorts ),
                 rangeModule()
                    ? "TesselRangeCheckers.cpp:[0-9]+ bcm_range_destroy\\( unit, id \\) API "
                      "ERROR:Operation still running \\(-10\\)"
                    : "TesselRangeCheckers.cpp:[0-9]+ bcm_field_range_destroy\\( unit, rid \\) "
                      "API ERROR:Operation still running \\(-10\\)" );
   acl->releaseEntry( 0, 100 );
   acl->releaseRangeChecker( 0, dstPorts );
   EXPECT_EQ( 0u, rangeCount() );
}

// A module that goes takes its units' checkers with it, whatever their
// counts; other units keep theirs.
TEST_P( RangeCheckerTest, AModuleThatGoesTakesItsCheckersWithIt ) {
   ASSERT_NE( 0u, acl->getRangeChecker( 0, dstPorts ) );
   ASSERT_NE( 0u, acl6->getRangeChecker( 0, dstPorts ) );
   ASSERT_NE( 0u, acl->getRangeChecker( 1, dstPorts ) );
   U32 perChecker = rangesPerChecker();
   m.manager->modChipInfoDel( 1 ); // unit 0's module
   EXPECT_EQ( 0u, rangeCount( 0 ) );
   EXPECT_EQ( perChecker, rangeCount( 1 ) );
   EXPECT_FALSE( m.manager->rangeChecker( dstPorts )->unitIdHas( 0 ) );
   acl->releaseRangeChecker( 1, dstPorts );
   EXPECT_EQ( 0u, m.box.counts().ranges );
   expectNoRecords();
}

INSTANTIATE_TEST_SUITE_P( Profiles, RangeCheckerTest, testing::ValuesIn( allProfiles() ),
                          profileName );

// --- fatal paths ---------------------------------------------------------------

class RangeCheckerDeathTest : public RangeCheckerTest {};

TEST_P( RangeCheckerDeathTest, BrokenBookkeepingAborts ) {
   EXPECT_DEATH( acl->releaseRangeChecker( 0, dstPorts ),
                 "void Tessel::TesselTcamGroupManager::releaseRangeChecker\\(U32, U32, const "
                 "Tessel::RangeCheckerDesc&\\): Assertion 'data' failed" );
   acl->getRangeChecker( 1, dstPorts );
   EXPECT_DEATH( acl->releaseRangeChecker( 0, dstPorts ),
                 "Assertion 'data->unitRefCount\\( unit \\) > 0' failed" );
   if ( !rangeModule() ) {
      return;
   }
   UnitRangeInfoKey key{ 1, m.manager->rangeChecker( dstPorts )->unitId( 1 ) };
   m.manager->unitRangeInfo( key )->pipeRangeIdDel( 1 );
   EXPECT_DEATH( acl->releaseRangeChecker( 1, dstPorts ),
                 "freeRangeCheck.*Assertion 'tcamGroupManager->unitRangeInfo\\( key "
                 "\\)->pipeRangeIdHas\\( pipeId \\)' failed" );
   m.manager->unitRangeInfoDel( key );
   EXPECT_DEATH( acl->releaseRangeChecker( 1, dstPorts ),
                 "Assertion 'tcamGroupManager->unitRangeInfoHas\\( key \\)' failed" );
   // A record left under the id the chip hands out next on unit 0.
   m.manager->unitRangeInfoIs( UnitRangeInfoKey{ 0, 1 } );
   EXPECT_DEATH( acl->getRangeChecker( 0, dstPorts ),
                 "Assertion 'RangeChecker already exists on Pipe 0' failed" );
}

TEST_P( RangeCheckerDeathTest, UnexpectedSdkFailuresAreFatal ) {
   if ( rangeModule() ) {
      m.box.failCall( 0, "bcm_port_config_get", 1, BCM_E_INTERNAL );
      EXPECT_DEATH( acl->getRangeChecker( 0, dstPorts ),
                    "TesselRangeCheckers.cpp:[0-9]+ bcm_port_config_get\\( unit, &portConfig \\) "
                    "API ERROR:Internal error \\(-1\\)\n.*Assertion '0' failed" );
      m.box.clearFaults();
      m.box.failCall( 0, "bcm_range_create", 1, BCM_E_PARAM );
      EXPECT_DEATH( acl->getRangeChecker( 0, dstPorts ),
                    "TesselRangeCheckers.cpp:[0-9]+ bcm_range_create\\( unit, 0, &conf \\) API "
                    "ERROR:Invalid parameter \\(-4\\)\n.*Assertion '0' failed" );
      // Pipe 0 made, a later pipe refused.
      m.box.clearFaults();
      m.box.failCall( 0, "bcm_range_create", 2, BCM_E_RESOURCE );
      EXPECT_DEATH( acl->getRangeChecker( 0, dstPorts ),
                    "getRangeCheckModule.*Assertion 'Failed to allocate RangeChecker' failed" );
      m.box.clearFaults();
      EXPECT_DEATH( acl->getRangeChecker( 0, RangeCheckerDesc( 1, 2, 0x4 ) ),
                    "void Tessel::setRangeCheckParams\\(U32, U32, bcm_pbmp_t, const "
                    "RangeCheckerDesc&, bcm_range_config_t\\*\\): Assertion 'Unsupported range "
                    "type' failed" );
   } else {
      // The older API takes the flags as they are; the chip refuses a range
      // without a type.
      EXPECT_DEATH( acl->getRangeChecker( 0, RangeCheckerDesc( 1, 2, 0x4 ) ),
                    "TesselRangeCheckers.cpp:[0-9]+ bcm_field_range_create\\( unit, &id, "
                    "specs.rangeFlags\\(\\), specs.low\\(\\), specs.high\\(\\) \\) API "
                    "ERROR:Invalid parameter \\(-4\\)\n.*Assertion '0' failed" );
   }
   ASSERT_EQ( 100u, acl->getEntry( 0, 100, "range" ) );
   RangeCheckId id = acl->getRangeChecker( 0, dstPorts );
   m.box.failCall( 0, "bcm_field_qualify_RangeCheck", 1, BCM_E_NOT_FOUND );
   EXPECT_DEATH( acl->attachRangeChecker( 0, 100, id ),
                 "bcm_field_qualify_RangeCheck\\( unit, baseEntryId, baseRangeCheckId, 0 \\) API "
                 "ERROR:Entry not found \\(-7\\)" );
}

INSTANTIATE_TEST_SUITE_P( Profiles, RangeCheckerDeathTest, testing::ValuesIn( allProfiles() ),
                          profileName );

} // namespace
} // namespace ResourceTest
