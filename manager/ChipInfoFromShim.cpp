#include "manager/ChipInfoFromShim.h"

#include "manager/SdkShimAccess.h"

namespace Tessel {

Agent::ChipInfo
chipInfoFromShim( U16 moduleId, const std::vector< U32 > & units ) {
   KILN_ASSERT( !units.empty() );
   const Shim::Sdk & shim = sdkShim();
   U32 unit = units.front();
   Agent::ChipInfo info( moduleId );
   info.unitsIs( units );
   info.chipTypeIs( shim.chipType( unit ) );
   info.numPipesIs( shim.numPipes( unit ) );
   info.perPipeIngressIs( shim.fieldStagePerPipe( unit ) );
   info.copiesPerPipeCondition1Is( shim.copiesConditionThxFamily( unit ) );
   info.copiesPerPipeCondition2Is( shim.copiesConditionPipeLocalInPorts( unit ) );
   info.copiesPerPipeCondition3Is( shim.copiesConditionIfpDoubleCount( unit ) );
   info.rangeModuleIs( shim.hasRangeModule( unit ) );
   info.flexParserIs( shim.hasFlexParser( unit ) );
   info.udfModuleIs( shim.hasUdfModule( unit ) );
   info.flexChunkSizeIs( shim.flexChunkBytes( unit ) );
   info.flexChunkCountIs( shim.flexChunkCount( unit ) );
   info.maxUdfLengthIs( shim.udfMaxLength( unit ) );
   info.udfWidthsJoinedIs( shim.udfWidthsJoined( unit ) );
   info.serialMuxAllocationIs( shim.requiresSerialMuxAllocation( unit ) );
   info.classIdCompressionIs( shim.hasClassStage( unit ) );
   info.untaggedOuterVlanZeroIs( shim.untaggedOuterVlanZero( unit ) );
   return info;
}

} // namespace Tessel
