// How the model stores qualifiers: every qualifier value is data and mask
// bytes, most significant byte first, of a fixed size per qualifier; and how
// many key bits a qualifier takes in a group's key.
#pragma once

#include <vector>

#include "platform/kiln/Types.h"
#include "sdk/api/field.h"

namespace ChipModel {

struct FieldValue {
   std::vector< U8 > data;
   std::vector< U8 > mask;
   bool operator==( const FieldValue & other ) const = default;
};

// Key bits of one qualifier; 0 for the stage markers.
U32 qualifierKeyBits( int qualifier );
// Stored bytes of one qualifier's data (and of its mask).
U32 qualifierBytes( int qualifier );
bool knownQualifier( int qualifier );

// Key bits of a qualifier set (data qualifiers and UDFs given as byte counts).
U32 qsetKeyBits( const bcm_field_qset_t & qset, U32 dataQualifierBytes );
// Single-width key bits; a row of width w holds w times as many.
constexpr U32 sliceKeyBits = 160;

// Big-endian integers of `bytes` bytes.
std::vector< U8 > toBytes( U64 value, U32 bytes );
U64 fromBytes( const std::vector< U8 > & bytes );
FieldValue intValue( U64 data, U64 mask, U32 bytes );

// ( packet & mask ) == ( data & mask ), byte by byte; a packet value shorter
// than the rule never matches.
bool maskedEqual( const FieldValue & rule, const std::vector< U8 > & packet );

// The stage a qualifier set asks for: StageLookup, StageEgress, a compression
// selector (class stage); ingress otherwise.
bcm_field_stage_t stageOfQset( const bcm_field_qset_t & qset );

} // namespace ChipModel
