// Chip information of one switch module: which units (chips) it carries and
// what those chips can do. The agent learns it per module and hands it to the
// TCAM manager, which keeps it keyed by module id (`modChipInfo`) and asks
// it per unit through chipInfoForUnit().
//
// A value type: copied in and out of collections, compared field by field
// (storing an equal record is no change and notifies no one), hashed, and
// written and read back in the platform's value form
//    Value('Agent::ChipInfo', ** {'moduleId': 1, 'units': [0, 1], ...})
//
// A default record describes a single-pipe chip with none of the optional
// capabilities: the answers a unit without chip information gets.
#pragma once

#include "platform/kiln/Types.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Agent {

class ChipInfo {
 public:
   // Pipe numbers occupy three bits of the SDK's per-pipe group and entry ids.
   static constexpr U32 maxPipes = 8;

   ChipInfo() = default;
   explicit ChipInfo( U16 moduleId ) : moduleId_( moduleId ) {}
   // Reads the value form back; Kiln::ValueTextError on malformed text,
   // Kiln::RangeException when a field is outside its bounds.
   explicit ChipInfo( std::string_view valueText );

   U16 moduleId() const { return moduleId_; }
   void moduleIdIs( U16 v ) { moduleId_ = v; }

   // The units of the module, ascending, each once (unitsIs sorts and drops
   // repeats, so two records listing the same units compare equal).
   const std::vector< U32 > & units() const { return units_; }
   void unitsIs( std::vector< U32 > units );
   bool unitHas( U32 unit ) const;

   // Chip family: the codes of sdk/shim/ChipType.h (Shim::ChipType); kept as
   // a plain number so that the platform does not depend on the SDK.
   U32 chipType() const { return chipType_; }
   void chipTypeIs( U32 v ) { chipType_ = v; }

   // Field-processor pipes per unit, 1 to maxPipes (RangeException outside).
   U32 numPipes() const { return numPipes_; }
   void numPipesIs( U32 v );
   // The ingress stage runs per pipe: groups and entries are created once per
   // pipe rather than once per unit.
   bool perPipeIngress() const { return perPipeIngress_; }
   void perPipeIngressIs( bool v ) { perPipeIngress_ = v; }
   // The three chip conditions under which a group that needs the in-port
   // bitmap workaround takes two copies per pipe (any one of them suffices).
   bool copiesPerPipeCondition1() const { return copiesPerPipeCondition1_; }
   void copiesPerPipeCondition1Is( bool v ) { copiesPerPipeCondition1_ = v; }
   bool copiesPerPipeCondition2() const { return copiesPerPipeCondition2_; }
   void copiesPerPipeCondition2Is( bool v ) { copiesPerPipeCondition2_ = v; }
   bool copiesPerPipeCondition3() const { return copiesPerPipeCondition3_; }
   void copiesPerPipeCondition3Is( bool v ) { copiesPerPipeCondition3_ = v; }
   bool
   anyCopiesPerPipeCondition() const {
      return copiesPerPipeCondition1_ || copiesPerPipeCondition2_ || copiesPerPipeCondition3_;
   }

   // Range checkers come from the range module (one hardware range per pipe);
   // without it, from the older field-range API.
   bool rangeModule() const { return rangeModule_; }
   void rangeModuleIs( bool v ) { rangeModule_ = v; }

   // User-defined fields. The mechanism is chosen in this order: the flex
   // parser, else the UDF module, else field-processor data qualifiers.
   bool flexParser() const { return flexParser_; }
   void flexParserIs( bool v ) { flexParser_ = v; }
   bool udfModule() const { return udfModule_; }
   void udfModuleIs( bool v ) { udfModule_ = v; }
   // Flex-parser chunks: bytes per chunk and chunks per unit (0 without
   // the flex parser).
   U32 flexChunkSize() const { return flexChunkSize_; }
   void flexChunkSizeIs( U32 v ) { flexChunkSize_ = v; }
   U32 flexChunkCount() const { return flexChunkCount_; }
   void flexChunkCountIs( U32 v ) { flexChunkCount_ = v; }
   // Bytes of user-defined fields the unit can extract in all.
   U32 maxUdfLength() const { return maxUdfLength_; }
   void maxUdfLengthIs( U32 v ) { maxUdfLength_ = v; }
   // Bytes of user-defined fields one group's key can hold.
   U32 groupUdfWidthLimit() const { return groupUdfWidthLimit_; }
   void groupUdfWidthLimitIs( U32 v ) { groupUdfWidthLimit_ = v; }
   // The IPv4, IPv6 and MAC ACL fields draw on one budget: their widths are
   // added together when a new field is checked against the limits.
   bool udfWidthsJoined() const { return udfWidthsJoined_; }
   void udfWidthsJoinedIs( bool v ) { udfWidthsJoined_ = v; }

   // Groups must be created with serial multiplexer allocation.
   bool serialMuxAllocation() const { return serialMuxAllocation_; }
   void serialMuxAllocationIs( bool v ) { serialMuxAllocation_ = v; }
   // Groups that carry multicast traffic need the dummy multicast entry.
   bool multicastWar() const { return multicastWar_; }
   void multicastWarIs( bool v ) { multicastWar_ = v; }
   // The field processor sees untagged packets with outer VLAN id 0 instead
   // of the port's native VLAN, so outer-VLAN entries need untagged twins.
   bool untaggedOuterVlanZero() const { return untaggedOuterVlanZero_; }
   void untaggedOuterVlanZeroIs( bool v ) { untaggedOuterVlanZero_ = v; }
   // The chip has the class-id compression groups (addresses, L4 ports, IP
   // protocols and ethertypes mapped to short class ids).
   bool classIdCompression() const { return classIdCompression_; }
   void classIdCompressionIs( bool v ) { classIdCompression_ = v; }

   std::string valueText() const;
   bool operator==( const ChipInfo & ) const = default;

 private:
   U16 moduleId_ = 0;
   std::vector< U32 > units_;
   U32 chipType_ = 0;
   U32 numPipes_ = 1;
   bool perPipeIngress_ = false;
   bool copiesPerPipeCondition1_ = false;
   bool copiesPerPipeCondition2_ = false;
   bool copiesPerPipeCondition3_ = false;
   bool rangeModule_ = false;
   bool flexParser_ = false;
   bool udfModule_ = false;
   U32 flexChunkSize_ = 0;
   U32 flexChunkCount_ = 0;
   U32 maxUdfLength_ = 0;
   U32 groupUdfWidthLimit_ = 0;
   bool udfWidthsJoined_ = false;
   bool serialMuxAllocation_ = false;
   bool multicastWar_ = false;
   bool untaggedOuterVlanZero_ = false;
   bool classIdCompression_ = false;
};

// The chip information of the module that carries `unit`, or null when no
// module does. `modChipInfo` is any collection of (module id, ChipInfo)
// pairs, such as Kiln::OrderedCollection< U16, ChipInfo >; when two modules
// claim the unit, the one met first wins. The pointer is valid until the
// collection changes.
template< typename ModChipInfo >
const ChipInfo *
chipInfoForUnit( const ModChipInfo & modChipInfo, U32 unit ) {
   for ( const auto & [ moduleId, info ] : modChipInfo ) {
      if ( info.unitHas( unit ) ) {
         return &info;
      }
   }
   return nullptr;
}

} // namespace Agent

template<>
struct std::hash< Agent::ChipInfo > {
   size_t operator()( const Agent::ChipInfo & info ) const noexcept;
};
