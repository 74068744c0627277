#include "sdk/model/ClassifyKey.h"

#include <algorithm>
#include <cstring>

#include "platform/kiln/Assert.h"
#include "sdk/model/PacketFields.h"
#include "sdk/model/Unit.h"

namespace ChipModel {

namespace {

constexpr U32 portBitmapBytes = 4 * BCM_PBMP_WORD_MAX;
constexpr U32 ip6HighBytes = 8;
constexpr U32 classIdBytes = 4;

SegmentKind
kindOf( int qualifier ) {
   if ( qualifier == bcmFieldQualifyMixedSrcClassId ) {
      return SegmentKind::mixedSrcClass;
   }
   if ( isPortSet( qualifier ) ) {
      return SegmentKind::portSet;
   }
   return isIp6High( qualifier ) ? SegmentKind::ip6High : SegmentKind::field;
}

// Bytes of the packet's value of a qualifier. They depend on the qualifier
// only, so one packet tells them all.
U32
valueBytes( int qualifier ) {
   static const std::vector< U32 > sizes = [] {
      const Packet probePacket;
      const LookupContext probe( probePacket, 0 );
      std::vector< U32 > all;
      for ( int q = 0; q < bcmFieldQualifyCount; ++q ) {
         all.push_back( static_cast< U32 >( probe.field( q ).size() ) );
      }
      return all;
   }();
   return sizes.at( static_cast< size_t >( qualifier ) );
}

U32
segmentBytes( SegmentKind kind, int qualifier ) {
   switch ( kind ) {
   case SegmentKind::portSet:
      return portBitmapBytes;
   case SegmentKind::mixedSrcClass:
      return portBitmapBytes + classIdBytes;
   case SegmentKind::ip6High:
      return ip6HighBytes;
   default:
      return valueBytes( qualifier );
   }
}

// Bytes of a rule the plain loop reads whatever its length.
size_t
ruleBytesRead( SegmentKind kind ) {
   switch ( kind ) {
   case SegmentKind::portSet:
   case SegmentKind::mixedSrcClass:
      return portBitmapBytes;
   case SegmentKind::ip6High:
      return ip6HighBytes;
   default:
      return 0;
   }
}

// The qualifier calls store rules of their qualifier's size; a shorter one
// is a fault of the model's own.
void
checkRule( SegmentKind kind, const FieldValue & rule ) {
   KILN_ASSERT_MSG( rule.mask.size() >= rule.data.size() &&
                       rule.data.size() >= ruleBytesRead( kind ),
                    "a rule shorter than its qualifier" );
}

// Rule bytes [from, to) at `at` in the row.
void
put( const FieldValue & rule, size_t from, size_t to, U32 at, CompiledRow & row ) {
   for ( size_t i = from; i < to; ++i ) {
      row.mask[ at + i - from ] = rule.mask[ i ];
      row.data[ at + i - from ] = static_cast< U8 >( rule.data[ i ] & rule.mask[ i ] );
   }
}

// A port-set rule rejects the ports in ( mask & ~data ): the packet's port
// bit must be clear there.
void
putPortSet( const FieldValue & rule, U32 at, CompiledRow & row ) {
   for ( U32 i = 0; i < portBitmapBytes; ++i ) {
      row.mask[ at + i ] = static_cast< U8 >( rule.mask[ i ] & ~rule.data[ i ] );
      row.data[ at + i ] = 0;
   }
}

bool
putPortBit( int port, U8 * out ) {
   std::optional< std::pair< size_t, U8 > > at = portBitOf( port );
   if ( !at ) {
      return false;
   }
   std::memset( out, 0, portBitmapBytes );
   out[ at->first ] = at->second;
   return true;
}

} // namespace

void
KeyLayout::need( SegmentKind kind, int id, U32 length ) {
   U32 & held = lengths_[ { kind, id } ];
   held = std::max( held, length );
}

void
KeyLayout::cover( const EntryImage & image ) {
   for ( const auto & [ qualifier, rule ] : image.qualifiers ) {
      if ( !matchesEveryPacket( qualifier, rule ) ) {
         SegmentKind kind = kindOf( qualifier );
         need( kind, qualifier, segmentBytes( kind, qualifier ) );
      }
   }
   for ( const RangeCheck & check : image.ranges ) {
      if ( std::find( ranges_.begin(), ranges_.end(), check.range ) == ranges_.end() ) {
         ranges_.push_back( check.range );
      }
   }
   for ( const auto & [ id, rule ] : image.dataQualifiers ) {
      need( SegmentKind::data, id, static_cast< U32 >( rule.data.size() ) );
   }
   for ( const auto & [ id, rule ] : image.udfs ) {
      need( SegmentKind::udf, id, static_cast< U32 >( rule.data.size() ) );
   }
}

void
KeyLayout::finish() {
   std::sort( ranges_.begin(), ranges_.end() );
   if ( !ranges_.empty() ) {
      U32 bytes = static_cast< U32 >( ( ranges_.size() + 7 ) / 8 );
      lengths_[ { SegmentKind::ranges, 0 } ] = bytes;
   }
   for ( const auto & [ id, length ] : lengths_ ) {
      index_[ id ] = segments_.size();
      segments_.push_back( KeySegment{ id.first, id.second, bytes_, length } );
      bytes_ += length;
   }
   lengths_.clear();
}

const KeySegment &
KeyLayout::segment( SegmentKind kind, int id ) const {
   auto it = index_.find( { kind, id } );
   KILN_ASSERT_MSG( it != index_.end(), "an image the layout does not cover" );
   return segments_[ it->second ];
}

void
KeyLayout::compileQualifier( int qualifier, const FieldValue & rule,
                             CompiledRow & row ) const {
   SegmentKind kind = kindOf( qualifier );
   const KeySegment & s = segment( kind, qualifier );
   checkRule( kind, rule );
   switch ( kind ) {
   case SegmentKind::field:
      // A rule longer than the packet's value matches no packet.
      row.never = row.never || rule.data.size() > s.length;
      put( rule, 0, std::min< size_t >( rule.data.size(), s.length ), s.offset, row );
      break;
   case SegmentKind::ip6High:
      put( rule, 0, ip6HighBytes, s.offset, row );
      break;
   case SegmentKind::mixedSrcClass: {
      size_t end = std::min< size_t >( rule.data.size(), s.length );
      row.never = row.never || rule.data.size() > s.length;
      put( rule, portBitmapBytes, end, s.offset + portBitmapBytes, row );
      putPortSet( rule, s.offset, row );
      break;
   }
   default:
      putPortSet( rule, s.offset, row );
      break;
   }
}

// A checker checked twice must give both answers: the same answer twice
// is one check, opposite ones match no packet.
void
KeyLayout::compileRanges( const std::vector< RangeCheck > & checks,
                          CompiledRow & row ) const {
   for ( const RangeCheck & check : checks ) {
      const KeySegment & s = segment( SegmentKind::ranges, 0 );
      auto it = std::lower_bound( ranges_.begin(), ranges_.end(), check.range );
      size_t bit = static_cast< size_t >( it - ranges_.begin() );
      U8 value = static_cast< U8 >( 1u << ( bit % 8 ) );
      U8 & mask = row.mask[ s.offset + bit / 8 ];
      U8 & data = row.data[ s.offset + bit / 8 ];
      U8 wanted = check.invert ? 0 : value;
      row.never = row.never || ( ( mask & value ) && ( data & value ) != wanted );
      mask |= value;
      data = static_cast< U8 >( ( data & ~value ) | wanted );
   }
}

void
KeyLayout::compileExtracted( SegmentKind kind, int id, const FieldValue & rule,
                             CompiledRow & row ) const {
   checkRule( kind, rule );
   put( rule, 0, rule.data.size(), segment( kind, id ).offset, row );
}

CompiledRow
KeyLayout::compile( const EntryImage & image ) const {
   CompiledRow row;
   row.data.assign( bytes_, 0 );
   row.mask.assign( bytes_, 0 );
   for ( const auto & [ qualifier, rule ] : image.qualifiers ) {
      if ( !matchesEveryPacket( qualifier, rule ) ) {
         compileQualifier( qualifier, rule, row );
      }
   }
   compileRanges( image.ranges, row );
   for ( const auto & [ id, rule ] : image.dataQualifiers ) {
      compileExtracted( SegmentKind::data, id, rule, row );
   }
   for ( const auto & [ id, rule ] : image.udfs ) {
      compileExtracted( SegmentKind::udf, id, rule, row );
   }
   return row;
}

void
KeyLayout::rangeBits( const LookupContext & context, const UnitState & state,
                      U8 * out ) const {
   for ( size_t bit = 0; bit < ranges_.size(); ++bit ) {
      if ( rangeHit( state.ranges, ranges_[ bit ], context ) ) {
         out[ bit / 8 ] |= static_cast< U8 >( 1u << ( bit % 8 ) );
      }
   }
}

// A format the extraction does not serve reads as zeros, as in the plain
// loop; bytes shorter than the longest rule make the key inexact.
bool
KeyLayout::extracted( const KeySegment & s, const LookupContext & context,
                      const UnitState & state, U8 * out ) const {
   std::optional< std::vector< U8 > > value =
      s.kind == SegmentKind::data ? state.udf.extractData( s.id, context.layout )
                                  : state.udf.extractUdf( s.id, context.layout );
   if ( !value ) {
      return true;
   }
   if ( value->size() < s.length ) {
      return false;
   }
   std::memcpy( out, value->data(), s.length );
   return true;
}

bool
KeyLayout::packetKey( const LookupContext & context, const UnitState & state,
                      std::vector< U8 > & key ) const {
   key.assign( bytes_, 0 );
   for ( const KeySegment & s : segments_ ) {
      U8 * out = key.data() + s.offset;
      switch ( s.kind ) {
      case SegmentKind::field:
      case SegmentKind::ip6High: {
         const std::vector< U8 > & value = context.field( s.id );
         if ( value.size() < s.length ) {
            return false;
         }
         std::memcpy( out, value.data(), s.length );
         break;
      }
      case SegmentKind::mixedSrcClass: {
         std::vector< U8 > portClass = toBytes( context.packet.portClass, classIdBytes );
         std::memcpy( out + portBitmapBytes, portClass.data(), classIdBytes );
      }
         [[fallthrough]];
      case SegmentKind::portSet:
         if ( !putPortBit( context.packet.inPort, out ) ) {
            return false;
         }
         break;
      case SegmentKind::ranges:
         rangeBits( context, state, out );
         break;
      case SegmentKind::data:
      case SegmentKind::udf:
         if ( !extracted( s, context, state, out ) ) {
            return false;
         }
         break;
      }
   }
   return true;
}

} // namespace ChipModel
