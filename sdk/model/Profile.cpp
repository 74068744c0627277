#include "sdk/model/Profile.h"

#include "sdk/api/port.h"

namespace ChipModel {

namespace {

StageProfile
stage( bcm_field_stage_t id, bool pipeLocal, U32 slices, U32 entries, U32 widest, U32 pools,
       U32 perPool ) {
   return StageProfile{ id, pipeLocal, slices, entries, widest, pools, perPool };
}

Profile
singleProfile() {
   Profile p{};
   p.name = "single";
   p.chipType = Shim::chipTypeClassic;
   p.device = BCM_DEVICE_CLASSIC;
   p.capability = BCM_INFO_CAP_DATA_QUALIFIERS;
   p.pipes = 1;
   p.frontPanelPortsPerPipe = 24;
   p.portStride = 28;
   p.stages = { stage( bcmFieldStageIngress, false, 12, 256, 3, 4, 512 ),
                stage( bcmFieldStageLookup, false, 4, 256, 2, 2, 256 ),
                stage( bcmFieldStageEgress, false, 4, 256, 2, 2, 256 ) };
   p.presels = 32;
   p.hints = 16;
   p.groupIds = 128;
   p.metersPerPipe = 512;
   p.rangeCheckers = 32;
   p.dataQualifiers = 8;
   p.dataQualifierBytes = 32;
   p.dataPacketFormats = 64;
   p.udfMaxBytes = 32;
   p.evictThresholdPackets = 1u << 24;
   return p;
}

Profile
trident3Profile() {
   Profile p = singleProfile();
   p.name = "trident3";
   p.chipType = Shim::chipTypeTrident3;
   p.device = BCM_DEVICE_TRIDENT3;
   p.capability = BCM_INFO_CAP_UDF_MODULE | BCM_INFO_CAP_SERIAL_MUX;
   p.pipes = 2;
   p.frontPanelPortsPerPipe = 24;
   p.stages = { stage( bcmFieldStageIngress, false, 12, 512, 3, 8, 512 ),
                stage( bcmFieldStageLookup, false, 4, 512, 2, 2, 512 ),
                stage( bcmFieldStageEgress, false, 4, 512, 2, 2, 512 ) };
   p.dataQualifiers = 0;
   p.dataQualifierBytes = 0;
   p.dataPacketFormats = 0;
   p.udfObjects = 16;
   p.udfPacketFormats = 32;
   return p;
}

Profile
thxProfile() {
   Profile p = singleProfile();
   p.name = "thx";
   p.chipType = Shim::chipTypeThx;
   p.device = BCM_DEVICE_THX;
   p.capability = BCM_INFO_CAP_RANGE_MODULE | BCM_INFO_CAP_DATA_QUALIFIERS |
                  BCM_INFO_CAP_IFP_PIPE_LOCAL | BCM_INFO_CAP_PIPE_LOCAL_INPORTS |
                  BCM_INFO_CAP_IFP_DOUBLE_COUNT;
   p.pipes = 4;
   p.frontPanelPortsPerPipe = 16;
   p.stages = { stage( bcmFieldStageIngress, true, 24, 768, 3, 4, 512 ),
                stage( bcmFieldStageLookup, false, 4, 512, 2, 2, 512 ),
                stage( bcmFieldStageEgress, false, 4, 512, 2, 2, 512 ) };
   p.metersPerPipe = 256;
   p.rangeCheckers = 16;
   p.ifpDoubleCount = true;
   return p;
}

Profile
th3Profile() {
   Profile p = singleProfile();
   p.name = "th3";
   p.chipType = Shim::chipTypeTh3;
   p.device = BCM_DEVICE_TH3;
   p.capability = BCM_INFO_CAP_RANGE_MODULE | BCM_INFO_CAP_FLEX_PARSER |
                  BCM_INFO_CAP_IFP_PIPE_LOCAL | BCM_INFO_CAP_CLASS_STAGE |
                  BCM_INFO_CAP_JOINED_UDF_WIDTH;
   p.pipes = 8;
   p.frontPanelPortsPerPipe = 8;
   p.stages = { stage( bcmFieldStageIngress, true, 16, 256, 3, 4, 256 ),
                stage( bcmFieldStageLookup, false, 4, 512, 2, 2, 512 ),
                stage( bcmFieldStageEgress, false, 4, 512, 2, 2, 512 ),
                // Double rows: the address groups key a selector and both an
                // IPv4 and an IPv6 address (164 bits).
                stage( bcmFieldStageClass, false, 8, 128, 2, 0, 0 ) };
   p.metersPerPipe = 128;
   p.rangeCheckers = 8;
   p.dataQualifiers = 0;
   p.dataQualifierBytes = 0;
   p.dataPacketFormats = 0;
   p.flexChunks = 16;
   p.flexChunkBytes = 2;
   return p;
}

const std::vector< Profile > &
allProfiles() {
   static const std::vector< Profile > profiles = { singleProfile(), trident3Profile(),
                                                    thxProfile(), th3Profile() };
   return profiles;
}

} // namespace

const StageProfile *
Profile::stage( bcm_field_stage_t id ) const {
   for ( const StageProfile & s : stages ) {
      if ( s.stage == id ) {
         return &s;
      }
   }
   return nullptr;
}

U32
Profile::instances( const StageProfile & s ) const {
   return s.pipeLocal ? pipes : 1;
}

const Profile *
findProfile( const std::string & name ) {
   for ( const Profile & profile : allProfiles() ) {
      if ( profile.name == name ) {
         return &profile;
      }
   }
   return nullptr;
}

std::vector< std::string >
profileNames() {
   std::vector< std::string > names;
   for ( const Profile & profile : allProfiles() ) {
      names.push_back( profile.name );
   }
   return names;
}

} // namespace ChipModel
