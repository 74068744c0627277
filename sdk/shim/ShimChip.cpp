// Chip queries of the shim: everything comes from bcm_info_get.
#include "sdk/api/port.h"
#include "sdk/shim/Shim.h"

namespace Shim {

namespace {

// The unit's facts, or all zero for a unit the SDK does not know.
bcm_info_t
unitInfo( U32 unit ) {
   bcm_info_t info = {};
   if ( bcm_info_get( static_cast< int >( unit ), &info ) < 0 ) {
      info = bcm_info_t{};
   }
   return info;
}

bool
hasCapability( U32 unit, U32 capability ) {
   return ( unitInfo( unit ).capability & capability ) != 0;
}

} // namespace

ChipType
Sdk::chipType( U32 unit ) const {
   switch ( unitInfo( unit ).device ) {
   case BCM_DEVICE_CLASSIC:
      return chipTypeClassic;
   case BCM_DEVICE_TRIDENT3:
      return chipTypeTrident3;
   case BCM_DEVICE_THX:
      return chipTypeThx;
   case BCM_DEVICE_TH3:
      return chipTypeTh3;
   case BCM_DEVICE_COMPACT:
      return chipTypeCompact;
   default:
      return chipTypeUnknown;
   }
}

U32
Sdk::numPipes( U32 unit ) const {
   int pipes = unitInfo( unit ).num_pipes;
   return pipes > 0 ? static_cast< U32 >( pipes ) : 1;
}

bool
Sdk::isClassicFamily( U32 unit ) const {
   return chipType( unit ) == chipTypeClassic;
}

bool
Sdk::isTrident3Family( U32 unit ) const {
   return chipType( unit ) == chipTypeTrident3;
}

bool
Sdk::isThxFamily( U32 unit ) const {
   return chipType( unit ) == chipTypeThx;
}

bool
Sdk::isTh3Family( U32 unit ) const {
   return chipType( unit ) == chipTypeTh3;
}

bool
Sdk::isCompactFamily( U32 unit ) const {
   return chipType( unit ) == chipTypeCompact;
}

bool
Sdk::fieldStagePerPipe( U32 unit ) const {
   return hasCapability( unit, BCM_INFO_CAP_IFP_PIPE_LOCAL );
}

bool
Sdk::copiesConditionThxFamily( U32 unit ) const {
   return isThxFamily( unit );
}

bool
Sdk::copiesConditionPipeLocalInPorts( U32 unit ) const {
   return hasCapability( unit, BCM_INFO_CAP_PIPE_LOCAL_INPORTS );
}

bool
Sdk::copiesConditionIfpDoubleCount( U32 unit ) const {
   return hasCapability( unit, BCM_INFO_CAP_IFP_DOUBLE_COUNT );
}

bool
Sdk::anyCopiesCondition( U32 unit ) const {
   return copiesConditionThxFamily( unit ) || copiesConditionPipeLocalInPorts( unit ) ||
          copiesConditionIfpDoubleCount( unit );
}

bool
Sdk::ifpSliceSizeExempt( U32 unit ) const {
   return isClassicFamily( unit ) || isTrident3Family( unit ) || isTh3Family( unit ) ||
          isCompactFamily( unit );
}

bool
Sdk::entryManagerFamilyCheckTrident3( U32 unit ) const {
   return isTrident3Family( unit );
}

bool
Sdk::entryManagerFamilyCheckTh3( U32 unit ) const {
   return isTh3Family( unit );
}

bool
Sdk::entryManagerFamilyCheckCompact( U32 unit ) const {
   return isCompactFamily( unit );
}

bool
Sdk::untaggedOuterVlanZero( U32 unit ) const {
   return isClassicFamily( unit );
}

bool
Sdk::hasRangeModule( U32 unit ) const {
   return hasCapability( unit, BCM_INFO_CAP_RANGE_MODULE );
}

bool
Sdk::hasUdfModule( U32 unit ) const {
   return hasCapability( unit, BCM_INFO_CAP_UDF_MODULE );
}

bool
Sdk::hasFlexParser( U32 unit ) const {
   return hasCapability( unit, BCM_INFO_CAP_FLEX_PARSER );
}

bool
Sdk::hasDataQualifiers( U32 unit ) const {
   return hasCapability( unit, BCM_INFO_CAP_DATA_QUALIFIERS );
}

bool
Sdk::hasClassStage( U32 unit ) const {
   return hasCapability( unit, BCM_INFO_CAP_CLASS_STAGE );
}

bool
Sdk::udfWidthsJoined( U32 unit ) const {
   return hasCapability( unit, BCM_INFO_CAP_JOINED_UDF_WIDTH );
}

U32
Sdk::udfMaxLength( U32 unit ) const {
   return static_cast< U32 >( unitInfo( unit ).udf_max_bytes );
}

U32
Sdk::flexChunkCount( U32 unit ) const {
   return static_cast< U32 >( unitInfo( unit ).flex_chunks );
}

U32
Sdk::flexChunkBytes( U32 unit ) const {
   return static_cast< U32 >( unitInfo( unit ).flex_chunk_bytes );
}

bool
Sdk::requiresSerialMuxAllocation( U32 unit ) const {
   return hasCapability( unit, BCM_INFO_CAP_SERIAL_MUX );
}

} // namespace Shim
