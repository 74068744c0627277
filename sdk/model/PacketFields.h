// What a packet shows each qualifier during a lookup, and what a stage's
// resolved actions change for the stages after it.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "sdk/api/field.h"
#include "sdk/model/Entry.h"
#include "sdk/model/Group.h"
#include "sdk/model/Packet.h"
#include "sdk/model/Qualifiers.h"
#include "sdk/model/Ranges.h"
#include "sdk/model/Udf.h"

namespace ChipModel {

struct StageResult;

// The packet and what the lookup has learnt about it so far.
struct LookupContext {
   LookupContext( const Packet & packet, U32 pipe );

   const Packet & packet;
   std::vector< U8 > frame;
   PacketLayout layout;
   U32 pipe;
   U32 length;
   bcm_field_stage_t stage = bcmFieldStageLookup;
   U32 srcClass = 0; // SrcClassField, from VFP
   U32 dstClass = 0; // DstClassField, from VFP
   U32 vrf = 0;
   U16 forwardingVlan = 0;
   std::map< int, U32 > compressedClass; // by the *Class qualifier it feeds
   std::optional< int > egressPort;
   bool dropped = false;
   bool copiedToCpu = false;
   bcm_field_color_t colour = bcmFieldColorGreen;

   // The packet's value of a qualifier, computed once per stage.
   const std::vector< U8 > & field( int qualifier ) const;
   // Forgets the values: a new stage may see them differently.
   void newStage( bcm_field_stage_t next );

 private:
   mutable std::vector< std::vector< U8 > > fields_;
   mutable std::vector< bool > known_;
};

// Whether the packet's value of the qualifier matches the rule.
bool qualifierMatches( int qualifier, const FieldValue & rule,
                       const LookupContext & context );

// The parts of qualifierMatches that the compiled lookup (ClassifyKey.h)
// shares, so that both read a rule the same way:
// an enumeration rule set to its Any value, which matches every packet;
bool matchesEveryPacket( int qualifier, const FieldValue & rule );
// the qualifiers whose first 28 bytes are a port bitmap (InPorts,
// DevicePortBitmap, MixedSrcClassId), and the byte and bit of a port in it
// (nullopt for a port outside every bitmap);
bool isPortSet( int qualifier );
std::optional< std::pair< size_t, U8 > > portBitOf( int port );
// the qualifiers that compare only the upper 8 of their 16 bytes;
bool isIp6High( int qualifier );
// whether the packet hits a range checker (one of another pipe never hits).
bool rangeHit( const RangeTable & ranges, bcm_field_range_t range,
               const LookupContext & context );
// Records the class id a compression group's hit assigns.
void noteCompressedClass( const Group & group, const Entry & entry,
                          LookupContext & context );
// Carries a stage's resolved actions over to the later stages.
void applyStageEffects( const StageResult & result, LookupContext & context );

} // namespace ChipModel
