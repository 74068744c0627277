// Policers: one hardware policer per pipe of the unit, their ids, their
// configuration, and traffic metered in every pipe once the pipe copies are
// attached; running out is fatal.
#include "tests/resources/ResourceFixture.h"

#include <gmock/gmock.h>

#include <cstring>

#include "platform/fastlog/TraceConfig.h"
#include "sdk/api/policer.h"

namespace ResourceTest {
namespace {

using ::testing::ElementsAre;

// A committed-rate policer that drops red packets: `burstBytes` pass at
// once, then 1000 bytes a second.
Kiln::BytePtr
dropRedConfig( U32 burstBytes = 1000, U32 flags = 0 ) {
   bcm_policer_config_t config;
   bcm_policer_config_t_init( &config );
   config.flags = BCM_POLICER_DROP_RED | flags;
   config.mode = bcmPolicerModeCommitted;
   config.ckbits_sec = 8;
   config.ckbits_burst = burstBytes * 8 / 1000;
   return Kiln::BytePtr::copyOf( config );
}

class PolicerTest : public testing::TestWithParam< ProfileFacts > {
 protected:
   // Policers a logical policer is made of: one per pipe, and one for the
   // outer-VLAN twins where they are the second pipe.
   U32 pipes() const { return GetParam().pipes(); }
   // The chip's own pipes, which meter independently.
   U32 modelPipes() const { return GetParam().ingressPipes; }
   const ChipModel::Policer *
   policer( U32 id ) const {
      return m.box.unit( 0 ).state().policers.policer( static_cast< bcm_policer_t >( id ) );
   }

   ManagerBox m{ { GetParam().name } };
};

TEST_P( PolicerTest, OnePolicerPerPipeWithDerivedIds ) {
   FastLog::TraceCapture trace( "TesselTcam", FastLog::TraceLevels::only( 5 ) );
   Kiln::BytePtr config = dropRedConfig();
   U32 base = m.manager->createPolicer( 0, config );
   ASSERT_NE( 0u, base );
   EXPECT_EQ( pipes(), m.box.counts( 0 ).policers );
   std::vector< std::string > expected;
   for ( U32 pipe = 0; pipe < pipes(); ++pipe ) {
      U32 id = m.manager->getPipePolicerId( 0, pipe, base );
      EXPECT_EQ( base | pipe << 24, id );
      ASSERT_TRUE( policer( id ) ) << pipe;
      EXPECT_EQ( bcmPolicerModeCommitted, policer( id )->config.mode );
      std::ostringstream text;
      text << "Unit: 0 (policerId=0x" << std::hex << id << ")";
      expected.push_back( text.str() );
   }
   EXPECT_EQ( expected, textsWith( trace, "policerId" ) );
   // Only the other pipes' policers were asked for by id; the caller's
   // configuration is as it was.
   EXPECT_EQ( pipes(), m.box.callCount( "bcm_policer_create", 0 ) );
   EXPECT_EQ( U32( BCM_POLICER_DROP_RED ), policer( base )->config.flags );
   EXPECT_EQ( 0u, reinterpret_cast< const bcm_policer_config_t * >( config.data() )->flags &
                     BCM_POLICER_WITH_ID );

   // setPolicer reaches every pipe's policer.
   bcm_policer_config_t faster;
   std::memcpy( &faster, config.data(), sizeof faster );
   faster.ckbits_sec = 64;
   m.manager->setPolicer( 0, base, Kiln::BytePtr::copyOf( faster ) );
   for ( U32 pipe = 0; pipe < pipes(); ++pipe ) {
      EXPECT_EQ( 64u, policer( m.manager->getPipePolicerId( 0, pipe, base ) )->config.ckbits_sec );
   }
   // A second logical policer gets the next free base id.
   U32 second = m.manager->createPolicer( 0, config );
   EXPECT_NE( base, second );
   EXPECT_EQ( 2 * pipes(), m.box.counts( 0 ).policers );
   m.manager->removePolicer( 0, base );
   m.manager->removePolicer( 0, second );
   EXPECT_EQ( 0u, m.box.counts( 0 ).policers );
}

// The entry manager gives each copy of an entry its own pipe's policer, so
// every pipe meters its own traffic; detaching lets the policers go.
TEST_P( PolicerTest, AnEntryTakesEachPipesPolicerAndGivesThemBack ) {
   FastLog::TraceCapture trace( "TesselTcam", FastLog::TraceLevels::only( 5 ) );
   auto acl = m.manager->entryManagerIs( test1TcamGroup_, "test", m.manager.get(),
                                         IFP_GROUP_IP_ACL_, 100, 110, tcamAllocateOnDemand_ );
   U32 base = m.manager->createPolicer( 0, dropRedConfig( 1000 ) );
   ASSERT_EQ( 100u, acl->getEntry( 0, 100, "policed" ) );
   acl->attachPolicer( 0, 100, base, true );
   ASSERT_EQ( 0, acl->installEntry( 0, 100 ) );
   U32 entryPipes = m.manager->getNumPipe( 0, IFP_GROUP_IP_ACL_ );
   U32 copies = m.manager->getNumCopiesPerPipe( 0, IFP_GROUP_IP_ACL_ );
   const ChipModel::FieldProcessor & field = m.box.unit( 0 ).state().field;
   // The policer each copy should have for `base`, pipe-major; with 0, the
   // one it has.
   auto copyPolicers = [ & ]( U32 base ) {
      std::vector< bcm_policer_t > policers;
      for ( U32 pipe = 0; pipe < entryPipes; ++pipe ) {
         for ( U32 copy = 0; copy < copies; ++copy ) {
            U32 id = acl->getPipeEntryId( 0, pipe, 100, copy );
            policers.push_back( base ? bcm_policer_t( m.manager->getPipePolicerId( 0, pipe, base ) )
                                     : field.entry( bcm_field_entry_t( id ) )->policer );
         }
      }
      return policers;
   };
   EXPECT_EQ( copyPolicers( base ), copyPolicers( 0 ) );
   EXPECT_EQ( entryPipes * copies, textsWith( trace, "(entry=0x" ).size() );
   EXPECT_EQ( "Unit: 0 (entry=0x64 policerId=" + std::to_string( base ) + ")",
              textsWith( trace, "(entry=0x" ).front() );
   auto passed = [ & ]( U32 pipe ) {
      U32 count = 0;
      for ( int i = 0; i < 20; ++i ) {
         ChipModel::Packet p = udpWith( portOfPipe( m, pipe ), {} );
         p.length = 100; // 800 bits: ten fit the 8000-bit burst
         p.timeUs = 1000;
         Kiln::UnlockAnchor anchor( Kiln::ActivityUnlockAnchor::lock() );
         count += m.box.send( 0, p ).dropped ? 0 : 1;
      }
      return count;
   };
   for ( U32 pipe = 0; pipe < modelPipes(); ++pipe ) {
      EXPECT_EQ( 10u, passed( pipe ) ) << "pipe " << pipe;
   }
   EXPECT_DEATH( acl->attachPolicer( 0, 100, base, true ),
                 "TesselPolicers.cpp:[0-9]+ bcm_field_entry_policer_attach\\( unit, entryId, 0, "
                 "policerId \\) API ERROR:Entry exists \\(-8\\)\n.*attachPolicer.*Assertion '0' "
                 "failed" );

   acl->attachPolicer( 0, 100, base, false );
   EXPECT_EQ( std::vector< bcm_policer_t >( entryPipes * copies, 0 ), copyPolicers( 0 ) );
   m.manager->removePolicer( 0, base );
   EXPECT_EQ( 0u, m.box.counts( 0 ).policers );
   EXPECT_EQ( 20u, passed( 0 ) );
   EXPECT_DEATH( acl->attachPolicer( 0, 100, base, false ),
                 "bcm_field_entry_policer_detach\\( unit, entryId, 0 \\) API ERROR:Entry not "
                 "found \\(-7\\)" );
}

TEST_P( PolicerTest, RemovingWhileAttachedIsFatal ) {
   U32 base = m.manager->createPolicer( 0, dropRedConfig() );
   ASSERT_TRUE( m.manager->initializeGroup( 0, IFP_GROUP_QOS_ ) );
   bcm_field_entry_t entry = 0;
   ASSERT_EQ( BCM_E_NONE, m.sdk( [ & ] {
                 return bcm_field_entry_create( 0, IFP_GROUP_QOS_, &entry ) +
                        bcm_field_entry_policer_attach( 0, entry, 0, int( base ) );
              } ) );
   EXPECT_DEATH( m.manager->removePolicer( 0, base ),
                 "TesselPolicers.cpp:[0-9]+ bcm_policer_destroy\\( unit, \\( bcm_policer_t "
                 "\\)policerId \\) API ERROR:.*\n.*removePolicer.*Assertion '0' failed" );
}

INSTANTIATE_TEST_SUITE_P( Profiles, PolicerTest, testing::ValuesIn( allProfiles() ),
                          profileName );

TEST( PolicerIdTest, APipesIdIsAPureFunctionOfItsArguments ) {
   ManagerBox m{ { "thx", "single" } };
   for ( U32 unit : { 0u, 1u } ) {
      EXPECT_EQ( 0x17u, m.manager->getPipePolicerId( unit, 0, 0x17 ) );
      EXPECT_EQ( 0x3000017u, m.manager->getPipePolicerId( unit, 3, 0x17 ) );
      EXPECT_EQ( 0x7ffffffu, m.manager->getPipePolicerId( unit, 7, 0xffffff ) );
      EXPECT_EQ( 0x1000017u, m.manager->getPipePolicerId( unit, 9, 0x17 ) ); // pipe bits only
   }
   // The unit's pipes decide how many there are: on the single-pipe chip
   // the outer-VLAN twins are a second pipe with a policer of their own.
   EXPECT_EQ( 0u, m.box.counts( 1 ).policers );
   U32 base = m.manager->createPolicer( 1, dropRedConfig() );
   EXPECT_EQ( 2u, m.box.counts( 1 ).policers );
   EXPECT_TRUE( m.box.unit( 1 ).state().policers.policer( int( base | 1u << 24 ) ) );
}

TEST( PolicerDeathTest, AnEmptyConfigurationAborts ) {
   ManagerBox m{ { "thx" } };
   EXPECT_DEATH( m.manager->createPolicer( 0, Kiln::BytePtr() ),
                 "createPolicer.*Assertion 'Invalid parameter, policer config is empty' failed" );
   EXPECT_DEATH( m.manager->setPolicer( 0, 1, Kiln::BytePtr() ),
                 "setPolicer.*Assertion 'Invalid parameter, policer config is empty' failed" );
   EXPECT_EQ( 0u, m.box.counts( 0 ).policers );
}

TEST( PolicerDeathTest, RunningOutOfPolicersIsFatal ) {
   ChipModel::Profile small = *ChipModel::findProfile( "thx" );
   small.metersPerPipe = 2; // two logical policers over four pipes
   ManagerBox m( small, AdjustedProfile{} );
   m.manager->createPolicer( 0, dropRedConfig() );
   m.manager->createPolicer( 0, dropRedConfig() );
   EXPECT_DEATH( m.manager->createPolicer( 0, dropRedConfig() ),
                 "TesselPolicers.cpp:[0-9]+ bcm_policer_create\\( unit, polCfg, \\( "
                 "bcm_policer_t \\* \\)&basePolicerId \\) API ERROR:No resources for "
                 "operation \\(-14\\)\n.*Assertion '0' failed" );
   // A pipe's policer refused by id is fatal the same way.
   m.box.failCall( 0, "bcm_policer_create", 2, BCM_E_RESOURCE );
   m.manager->removePolicer( 0, 1 );
   EXPECT_DEATH( m.manager->createPolicer( 0, dropRedConfig() ),
                 "bcm_policer_create\\( unit, polCfg, \\( bcm_policer_t \\* \\)&policerId "
                 "\\) API ERROR:No resources for operation \\(-14\\)" );
}

} // namespace
} // namespace ResourceTest
