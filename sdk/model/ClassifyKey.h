// The key of a group's compiled lookup table (ClassifyTable.h): a byte
// string with one segment for each qualifier, data qualifier and UDF that the
// group's installed entries use, plus one bit per range checker they check.
// Entries compile to data and mask bytes over it and packets to key bytes, so
// that an entry matches a packet exactly when ( key & mask ) == data, the
// same answer the plain loop's qualifierMatches and range and UDF checks give.
//
// A layout is built from the images it is to hold: cover() each of them,
// then finish() once; only then compile() them and build packet keys.
#pragma once

#include <map>
#include <utility>
#include <vector>

#include "platform/kiln/Types.h"
#include "sdk/model/Entry.h"

namespace ChipModel {

struct LookupContext;
struct UnitState;

enum class SegmentKind : U8 {
   field,         // the packet's value of the qualifier, compared as is
   ip6High,       // the upper 8 bytes of an IPv6 address
   portSet,       // a one-bit-per-port bitmap of the ingress port
   mixedSrcClass, // that bitmap, then the port's class id
   ranges,        // one bit per range checker: whether the packet hits it
   data,          // the bytes a data qualifier extracts
   udf,           // the bytes a UDF extracts
};

struct KeySegment {
   SegmentKind kind;
   int id = 0;     // qualifier, data qualifier or UDF id; 0 for the range bits
   U32 offset = 0; // of the segment's first byte in the key
   U32 length = 0; // bytes
};

// An entry over the key: ( key & mask ) == data for the packets it
// matches; none when `never` (a rule longer than the packet's value, or a
// range checker that must both hit and miss).
struct CompiledRow {
   std::vector< U8 > data; // already masked
   std::vector< U8 > mask;
   bool never = false;
};

class KeyLayout {
 public:
   // Makes room for what the image uses.
   void cover( const EntryImage & image );
   // Places the segments; call once, after the last cover.
   void finish();

   U32 bytes() const { return bytes_; }

   // The image over this layout; the image must have been covered. A rule
   // shorter than its qualifier's bytes asserts.
   CompiledRow compile( const EntryImage & image ) const;
   // The packet's key bytes (key is resized to bytes()); false when the
   // packet has a value the key cannot express exactly (an ingress port
   // outside the port bitmaps, extracted bytes shorter than a rule), and then
   // only the plain loop can answer for this packet.
   bool packetKey( const LookupContext & context, const UnitState & state,
                   std::vector< U8 > & key ) const;

 private:
   using SegmentId = std::pair< SegmentKind, int >;

   void need( SegmentKind kind, int id, U32 length );
   const KeySegment & segment( SegmentKind kind, int id ) const;
   void compileQualifier( int qualifier, const FieldValue & rule, CompiledRow & row ) const;
   void compileRanges( const std::vector< RangeCheck > & checks, CompiledRow & row ) const;
   void compileExtracted( SegmentKind kind, int id, const FieldValue & rule,
                          CompiledRow & row ) const;
   void rangeBits( const LookupContext & context, const UnitState & state,
                   U8 * out ) const;
   bool extracted( const KeySegment & segment, const LookupContext & context,
                   const UnitState & state, U8 * out ) const;

   std::map< SegmentId, U32 > lengths_;      // while covering
   std::vector< bcm_field_range_t > ranges_; // bit i of the range segment, ascending
   std::vector< KeySegment > segments_;
   std::map< SegmentId, size_t > index_; // into segments_
   U32 bytes_ = 0;
};

} // namespace ChipModel
