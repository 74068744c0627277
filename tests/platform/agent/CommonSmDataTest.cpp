#include <gtest/gtest.h>

#include "platform/agent/TesselCommonSmData.h"

#include <vector>

namespace {

using namespace Agent;

struct ReadinessWatcher : TesselCommonSmData::NotifieeConst {
   std::vector< TcamFlashDownloadReq > waits;
   std::vector< bool > readyWhenTold;
   std::vector< U32 > units;
   int flags = 0;
   void
   onFlashDownloadWait( TcamFlashDownloadReq req ) override {
      waits.push_back( req );
      readyWhenTold.push_back( notifier()->flashDownloadReady() );
   }
   void onUnit( U32 unit ) override { units.push_back( unit ); }
   void onHitlessStartup() override { ++flags; }
   void onLacpDrainNeeded() override { ++flags; }
   void onSkipTcamFlashDownload() override { ++flags; }
};

class Readiness : public ::testing::Test {
 protected:
   Readiness() : scsd( new TesselCommonSmData( "scsd" ) ) { watcher.notifierIs( scsd ); }
   void
   setAllRequired() {
      for ( TcamFlashDownloadReq req : scsd->flashDownloadRequiredCollection() ) {
         scsd->flashDownloadWaitIs( req, true );
      }
   }
   Kiln::Ptr< TesselCommonSmData > scsd;
   ReadinessWatcher watcher;
};

TEST_F( Readiness, ReadyOnlyOnceEveryRequiredFlagIsTrue ) {
   EXPECT_FALSE( scsd->flashDownloadReady() );
   EXPECT_EQ( ( std::vector< TcamFlashDownloadReq >{
                 tcamFlashDownloadReqChipInit, tcamFlashDownloadReqPortInit,
                 tcamFlashDownloadReqFeatureConfig, tcamFlashDownloadReqForwardingReconcile,
                 tcamFlashDownloadReqSliceTcamReconcile } ),
              scsd->flashDownloadMissing() );

   for ( TcamFlashDownloadReq req : { tcamFlashDownloadReqChipInit, tcamFlashDownloadReqPortInit,
                                      tcamFlashDownloadReqFeatureConfig,
                                      tcamFlashDownloadReqForwardingReconcile } ) {
      scsd->flashDownloadWaitIs( req, true );
   }
   // A flag that is present but false is not ready either.
   scsd->flashDownloadWaitIs( tcamFlashDownloadReqSliceTcamReconcile, false );
   EXPECT_EQ( std::vector< TcamFlashDownloadReq >{ tcamFlashDownloadReqSliceTcamReconcile },
              scsd->flashDownloadMissing() );
   scsd->flashDownloadWaitIs( tcamFlashDownloadReqSliceTcamReconcile, true );
   EXPECT_TRUE( scsd->flashDownloadReady() );
   // Observers read the new state: only the last notification saw ready.
   EXPECT_EQ( ( std::vector< bool >{ false, false, false, false, false, true } ),
              watcher.readyWhenTold );
}

TEST_F( Readiness, NotificationsOnlyOnRealChange ) {
   scsd->flashDownloadWaitIs( tcamFlashDownloadReqPortInit, true );
   scsd->flashDownloadWaitIs( tcamFlashDownloadReqPortInit, true );
   scsd->flashDownloadWaitIs( tcamFlashDownloadReqPortInit, false );
   scsd->flashDownloadWaitDel( tcamFlashDownloadReqPortInit );
   scsd->flashDownloadWaitDel( tcamFlashDownloadReqPortInit );
   EXPECT_EQ( std::vector< TcamFlashDownloadReq >( 3, tcamFlashDownloadReqPortInit ),
              watcher.waits );

   scsd->hitlessStartupIs( false );
   scsd->hitlessStartupIs( true );
   scsd->lacpDrainNeededIs( true );
   scsd->skipTcamFlashDownloadIs( true );
   scsd->skipTcamFlashDownloadIs( true );
   EXPECT_EQ( 3, watcher.flags );
}

TEST_F( Readiness, TheRequiredSetDecides ) {
   setAllRequired();
   ASSERT_TRUE( scsd->flashDownloadReady() );
   // The drain becomes required when the agent says so, and holds it back.
   scsd->flashDownloadRequiredIs( tcamFlashDownloadReqLacpDrain );
   EXPECT_FALSE( scsd->flashDownloadReady() );
   scsd->flashDownloadWaitIs( tcamFlashDownloadReqLacpDrain, true );
   EXPECT_TRUE( scsd->flashDownloadReady() );

   // A flag dropped while no longer required does not matter.
   scsd->flashDownloadRequiredDel( tcamFlashDownloadReqForwardingReconcile );
   scsd->flashDownloadWaitDel( tcamFlashDownloadReqForwardingReconcile );
   EXPECT_TRUE( scsd->flashDownloadReady() );
   scsd->flashDownloadWaitDelAll();
   EXPECT_FALSE( scsd->flashDownloadReady() );
}

TEST_F( Readiness, UnitsMarkedNotToProgramAreSkipped ) {
   for ( U32 unit : { 2u, 0u, 1u, 0u } ) {
      scsd->unitIs( unit );
   }
   EXPECT_EQ( ( std::vector< U32 >{ 2, 0, 1 } ), watcher.units );
   scsd->doNotProgramUnitIs( 1 );
   scsd->doNotProgramUnitIs( 7 ); // not a unit: changes nothing to program
   EXPECT_EQ( ( std::vector< U32 >{ 0, 2 } ), scsd->unitsToProgram() );
   scsd->doNotProgramUnitDel( 1 );
   scsd->unitDel( 0 );
   EXPECT_EQ( ( std::vector< U32 >{ 1, 2 } ), scsd->unitsToProgram() );
}

} // namespace
