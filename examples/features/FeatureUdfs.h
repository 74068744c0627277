// FeatureUdfs: the user-defined fields one feature matches, and the bytes
// of a rule that match one.
//
// A field is packet bytes at an offset from a base, here the L4 header of
// IPv4 packets (the end of a 20-byte IPv4 header). The feature asks its
// entry manager for each distinct field (offset, length) on every unit
// before its group exists there, so that the group is created with the
// field in its key (getAclUdf, addUdfQualifierToGroupQset); groups and
// features asking for the same field share its hardware, counted per
// user. A field the chip or the group's width cannot take comes back empty:
// the feature refuses the rules that need it. Entries then qualify the
// field's qualifiers with the rule's bytes, by the unit's mechanism (data
// qualifiers, or UDF ids on chips with the UDF module or the flex parser).
//
// Order on release: the entries first, and the group gone with them (the
// last use of a field destroys its hardware, which no key may still hold),
// then release(). Threads: the activity thread.
#pragma once

#include <string>
#include <vector>

#include "examples/features/FeatureEntries.h"
#include "resources/TesselUdfTypes.h"

namespace Features {

// Bytes at `offset` from the L4 header's start.
struct UdfMatch {
   U8 offset = 0;
   std::vector< U8 > bytes; // 1 to maxBytes

   static constexpr U8 maxOffset = 107; // 127 from the IPv4 header's start
   static constexpr U32 maxBytes = 16;
   bool operator==( const UdfMatch & ) const = default;
   // "8:0x2112a442", as the workload writes it.
   std::string text() const;
};

class FeatureUdfs {
 public:
   explicit FeatureUdfs( const FeatureEntries & entries );
   // Gives every field back.
   ~FeatureUdfs();
   FeatureUdfs( const FeatureUdfs & ) = delete;
   FeatureUdfs & operator=( const FeatureUdfs & ) = delete;

   // Takes the distinct fields of `matches` on every unit; call before the
   // feature's first entry. Why a field was refused ("<feature>: ..."), or
   // empty when every one was taken. What was taken before a refusal stays
   // held until release().
   std::string take( const std::string & feature, const std::vector< UdfMatch > & matches );
   // Qualifies the entry with the match's bytes on its field's qualifiers.
   // The first SDK error, else 0.
   int qualify( U32 unit, U32 entry, const UdfMatch & match ) const;
   // Gives every field back; the last user destroys its hardware.
   void release();
   // Fields held, summed over units.
   U32 fields() const { return U32( held_.size() ); }

 private:
   struct Held {
      U32 unit;
      U8 offset;
      U8 length;
      Tessel::QualIdList quals;
   };
   const Held * find( U32 unit, const UdfMatch & match ) const;

   const FeatureEntries & entries_;
   std::vector< Held > held_;
};

} // namespace Features
