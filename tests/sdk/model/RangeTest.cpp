// Range checkers as a chip resource: each unit offers one of the two
// interfaces, with its profile's limit per unit (older API) or per pipe
// (range module); a full pipe leaves the others their room.
#include "tests/sdk/model/ModelTestSupport.h"

using namespace ModelTest;
using ChipModel::Box;

namespace {

class ModelRanges : public ::testing::TestWithParam< std::string > {
 protected:
   const ChipModel::Profile & profile() const { return box_.unit( 0 ).profile(); }
   bool rangeModule() const { return profile().has( BCM_INFO_CAP_RANGE_MODULE ); }
   int
   createInPipe( U32 pipe, U32 min = 10, U32 max = 20 ) {
      bcm_range_config_t config;
      bcm_range_config_t_init( &config );
      config.rtype = bcmRangeTypeL4DstPort;
      config.min = min;
      config.max = max;
      config.ports = ChipModel::pipePorts( profile(), pipe );
      return bcm_range_create( 0, 0, &config );
   }
   int
   createField( bcm_field_range_t * id, U32 flags = BCM_FIELD_RANGE_SRCPORT ) {
      return bcm_field_range_create( 0, id, flags, 10, 20 );
   }

   Box box_{ { GetParam() }, committed() };
};

TEST_P( ModelRanges, EachUnitOffersOneInterfaceWithItsLimit ) {
   bcm_field_range_t id = 0;
   if ( !rangeModule() ) {
      EXPECT_EQ( BCM_E_UNAVAIL, createInPipe( 0 ) );
      for ( U32 i = 0; i < profile().rangeCheckers; ++i ) {
         ASSERT_EQ( BCM_E_NONE, createField( &id ) ) << i;
      }
      EXPECT_EQ( BCM_E_RESOURCE, createField( &id ) );
      EXPECT_EQ( profile().rangeCheckers, box_.counts( 0 ).ranges );
      ASSERT_EQ( BCM_E_NONE, bcm_field_range_destroy( 0, id ) );
      EXPECT_EQ( BCM_E_NOT_FOUND, bcm_field_range_destroy( 0, id ) );
      // Bits beside the type are kept; a range without a type is refused.
      ASSERT_EQ( BCM_E_NONE, createField( &id, BCM_FIELD_RANGE_DSTPORT | 0x4 ) );
      U32 flags = 0;
      int min = 0;
      int max = 0;
      ASSERT_EQ( BCM_E_NONE, bcm_field_range_get( 0, id, &flags, &min, &max ) );
      EXPECT_EQ( U32( BCM_FIELD_RANGE_DSTPORT | 0x4 ), flags );
      EXPECT_EQ( BCM_E_PARAM, createField( &id, 0x4 ) );
      return;
   }
   EXPECT_EQ( BCM_E_UNAVAIL, createField( &id ) );
   U32 last = profile().pipes - 1;
   for ( U32 i = 0; i < profile().rangeCheckers; ++i ) {
      ASSERT_EQ( BCM_E_NONE, createInPipe( last ) ) << i;
   }
   EXPECT_EQ( BCM_E_RESOURCE, createInPipe( last ) );
   EXPECT_EQ( BCM_E_NONE, createInPipe( 0 ) );
   EXPECT_EQ( profile().rangeCheckers + 1, box_.counts( 0 ).ranges );
   // A range's ports must lie in one pipe, and its bounds be in order.
   bcm_range_config_t config;
   bcm_range_config_t_init( &config );
   EXPECT_EQ( BCM_E_PARAM, bcm_range_create( 0, 0, &config ) );
   config.ports = ChipModel::pipePorts( profile(), 0 );
   BCM_PBMP_PORT_ADD( config.ports, portIn( profile(), 1 ) );
   EXPECT_EQ( BCM_E_PARAM, bcm_range_create( 0, 0, &config ) );
   EXPECT_EQ( BCM_E_PARAM, createInPipe( 0, 20, 10 ) );
}

INSTANTIATE_TEST_SUITE_P( Profiles, ModelRanges,
                          ::testing::ValuesIn( ChipModel::profileNames() ) );

} // namespace
