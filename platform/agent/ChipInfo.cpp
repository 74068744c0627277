#include "platform/agent/ChipInfo.h"

#include "platform/kiln/BoundedIndex.h"
#include "platform/kiln/Hash.h"
#include "platform/kiln/ValueText.h"

#include <algorithm>

namespace Agent {

namespace {

const char typeName[] = "Agent::ChipInfo";

} // namespace

void
ChipInfo::unitsIs( std::vector< U32 > units ) {
   std::sort( units.begin(), units.end() );
   units.erase( std::unique( units.begin(), units.end() ), units.end() );
   units_ = std::move( units );
}

bool
ChipInfo::unitHas( U32 unit ) const {
   return std::binary_search( units_.begin(), units_.end(), unit );
}

void
ChipInfo::numPipesIs( U32 v ) {
   Kiln::checkBounds( v, 1, maxPipes, "ChipInfo::numPipes < 1 or > 8 not allowed" );
   numPipes_ = v;
}

std::string
ChipInfo::valueText() const {
   return Kiln::ValueText( typeName )
      .field( "moduleId", moduleId_ )
      .field( "units", units_ )
      .field( "chipType", chipType_ )
      .field( "numPipes", numPipes_ )
      .field( "perPipeIngress", perPipeIngress_ )
      .field( "copiesPerPipeCondition1", copiesPerPipeCondition1_ )
      .field( "copiesPerPipeCondition2", copiesPerPipeCondition2_ )
      .field( "copiesPerPipeCondition3", copiesPerPipeCondition3_ )
      .field( "rangeModule", rangeModule_ )
      .field( "flexParser", flexParser_ )
      .field( "udfModule", udfModule_ )
      .field( "flexChunkSize", flexChunkSize_ )
      .field( "flexChunkCount", flexChunkCount_ )
      .field( "maxUdfLength", maxUdfLength_ )
      .field( "groupUdfWidthLimit", groupUdfWidthLimit_ )
      .field( "udfWidthsJoined", udfWidthsJoined_ )
      .field( "serialMuxAllocation", serialMuxAllocation_ )
      .field( "multicastWar", multicastWar_ )
      .field( "untaggedOuterVlanZero", untaggedOuterVlanZero_ )
      .field( "classIdCompression", classIdCompression_ )
      .str();
}

ChipInfo::ChipInfo( std::string_view text ) {
   Kiln::ValueTextReader r( text, typeName );
   moduleId_ = r.number< U16 >( "moduleId" );
   std::vector< U32 > units;
   for ( std::string_view unit : r.list( "units" ) ) {
      units.push_back( Kiln::parseValueNumber< U32 >( unit ) );
   }
   unitsIs( std::move( units ) );
   chipType_ = r.number< U32 >( "chipType" );
   numPipesIs( r.number< U32 >( "numPipes" ) );
   perPipeIngress_ = r.flag( "perPipeIngress" );
   copiesPerPipeCondition1_ = r.flag( "copiesPerPipeCondition1" );
   copiesPerPipeCondition2_ = r.flag( "copiesPerPipeCondition2" );
   copiesPerPipeCondition3_ = r.flag( "copiesPerPipeCondition3" );
   rangeModule_ = r.flag( "rangeModule" );
   flexParser_ = r.flag( "flexParser" );
   udfModule_ = r.flag( "udfModule" );
   flexChunkSize_ = r.number< U32 >( "flexChunkSize" );
   flexChunkCount_ = r.number< U32 >( "flexChunkCount" );
   maxUdfLength_ = r.number< U32 >( "maxUdfLength" );
   groupUdfWidthLimit_ = r.number< U32 >( "groupUdfWidthLimit" );
   udfWidthsJoined_ = r.flag( "udfWidthsJoined" );
   serialMuxAllocation_ = r.flag( "serialMuxAllocation" );
   multicastWar_ = r.flag( "multicastWar" );
   untaggedOuterVlanZero_ = r.flag( "untaggedOuterVlanZero" );
   classIdCompression_ = r.flag( "classIdCompression" );
   r.end();
}

} // namespace Agent

size_t
std::hash< Agent::ChipInfo >::operator()( const Agent::ChipInfo & info ) const noexcept {
   size_t h = Kiln::hashMix( info.moduleId() );
   for ( U32 unit : info.units() ) {
      h = Kiln::hashCombine( h, unit );
   }
   h = Kiln::hashCombine( h, info.chipType() );
   h = Kiln::hashCombine( h, info.numPipes() );
   U32 flags = ( info.perPipeIngress() << 0 ) | ( info.copiesPerPipeCondition1() << 1 ) |
               ( info.copiesPerPipeCondition2() << 2 ) | ( info.copiesPerPipeCondition3() << 3 ) |
               ( info.rangeModule() << 4 ) | ( info.flexParser() << 5 ) |
               ( info.udfModule() << 6 ) | ( info.udfWidthsJoined() << 7 ) |
               ( info.serialMuxAllocation() << 8 ) | ( info.multicastWar() << 9 ) |
               ( info.untaggedOuterVlanZero() << 10 ) | ( info.classIdCompression() << 11 );
   h = Kiln::hashCombine( h, flags );
   h = Kiln::hashCombine( h, info.flexChunkSize() );
   h = Kiln::hashCombine( h, info.flexChunkCount() );
   h = Kiln::hashCombine( h, info.maxUdfLength() );
   return Kiln::hashCombine( h, info.groupUdfWidthLimit() );
}
