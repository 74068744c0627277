#include "platform/agent/TesselCommonSmData.h"

namespace Agent {

TesselCommonSmData::TesselCommonSmData( const Kiln::Name & name ) : Kiln::Entity( name ) {
   for ( TcamFlashDownloadReq req :
         { tcamFlashDownloadReqChipInit, tcamFlashDownloadReqPortInit,
           tcamFlashDownloadReqFeatureConfig, tcamFlashDownloadReqForwardingReconcile,
           tcamFlashDownloadReqSliceTcamReconcile } ) {
      flashDownloadRequired_.add( req );
   }
}

std::vector< U32 >
TesselCommonSmData::unitsToProgram() const {
   std::vector< U32 > units;
   for ( U32 unit : unit_ ) {
      if ( !doNotProgramUnit_.has( unit ) ) {
         units.push_back( unit );
      }
   }
   return units;
}

bool
TesselCommonSmData::flashDownloadReady() const {
   return flashDownloadMissing().empty();
}

std::vector< TcamFlashDownloadReq >
TesselCommonSmData::flashDownloadMissing() const {
   std::vector< TcamFlashDownloadReq > missing;
   for ( TcamFlashDownloadReq req : flashDownloadRequired_ ) {
      if ( !flashDownloadWait_.get( req ) ) {
         missing.push_back( req );
      }
   }
   return missing;
}

} // namespace Agent
