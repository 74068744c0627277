#include "sdk/model/Ranges.h"

#include "sdk/api/error.h"
#include "sdk/api/port.h"
#include "sdk/model/Ports.h"

namespace ChipModel {

namespace {

constexpr U32 rangeTypeBits =
   BCM_FIELD_RANGE_SRCPORT | BCM_FIELD_RANGE_DSTPORT | BCM_FIELD_RANGE_PACKET_LENGTH;

bool
inside( U32 value, U32 min, U32 max ) {
   return min <= value && value <= max;
}

} // namespace

int
RangeTable::fieldRangeCreate( bcm_field_range_t & id, bool withId, U32 flags, int min,
                              int max ) {
   if ( profile_->has( BCM_INFO_CAP_RANGE_MODULE ) ) {
      return BCM_E_UNAVAIL;
   }
   if ( min > max || min < 0 || !( flags & rangeTypeBits ) ) {
      return BCM_E_PARAM;
   }
   if ( withId && ( id == 0 || fieldRanges_.count( id ) ) ) {
      return id == 0 ? BCM_E_PARAM : BCM_E_EXISTS;
   }
   if ( fieldRanges_.size() >= profile_->rangeCheckers ) {
      return BCM_E_RESOURCE;
   }
   if ( !withId ) {
      for ( id = 1; fieldRanges_.count( id ); ++id ) {
      }
   }
   fieldRanges_[ id ] = FieldRange{ id, flags, min, max };
   return BCM_E_NONE;
}

int
RangeTable::fieldRangeDestroy( bcm_field_range_t id ) {
   return fieldRanges_.erase( id ) ? BCM_E_NONE : BCM_E_NOT_FOUND;
}

const FieldRange *
RangeTable::fieldRange( bcm_field_range_t id ) const {
   auto it = fieldRanges_.find( id );
   return it == fieldRanges_.end() ? nullptr : &it->second;
}

int
RangeTable::moduleRangeCreate( bool withId, bcm_range_config_t & config ) {
   if ( !profile_->has( BCM_INFO_CAP_RANGE_MODULE ) ) {
      return BCM_E_UNAVAIL;
   }
   std::optional< U32 > pipe = pipeOfPorts( *profile_, config.ports );
   if ( !pipe || config.min > config.max || config.rtype < 0 ||
        config.rtype >= bcmRangeTypeCount ) {
      return BCM_E_PARAM;
   }
   if ( withId && ( config.rid <= 0 || moduleRanges_.count( config.rid ) ) ) {
      return config.rid <= 0 ? BCM_E_PARAM : BCM_E_EXISTS;
   }
   U32 inPipe = 0;
   for ( const auto & [ rid, range ] : moduleRanges_ ) {
      inPipe += range.pipe == *pipe ? 1 : 0;
   }
   if ( inPipe >= profile_->rangeCheckers ) {
      return BCM_E_RESOURCE;
   }
   if ( !withId ) {
      for ( config.rid = 1; moduleRanges_.count( config.rid ); ++config.rid ) {
      }
   }
   moduleRanges_[ config.rid ] =
      ModuleRange{ config.rid, config.rtype, config.min, config.max, *pipe, config.ports };
   return BCM_E_NONE;
}

int
RangeTable::moduleRangeDestroy( bcm_range_t rid ) {
   return moduleRanges_.erase( rid ) ? BCM_E_NONE : BCM_E_NOT_FOUND;
}

const ModuleRange *
RangeTable::moduleRange( bcm_range_t rid ) const {
   auto it = moduleRanges_.find( rid );
   return it == moduleRanges_.end() ? nullptr : &it->second;
}

bool
RangeTable::exists( U32 id ) const {
   return fieldRanges_.count( id ) ||
          moduleRanges_.count( static_cast< bcm_range_t >( id ) );
}

std::optional< U32 >
RangeTable::pipeOf( U32 id ) const {
   const ModuleRange * range = moduleRange( static_cast< bcm_range_t >( id ) );
   return range ? std::optional< U32 >( range->pipe ) : std::nullopt;
}

bool
RangeTable::hits( U32 id, U32 l4SrcPort, U32 l4DstPort, U32 length ) const {
   if ( const FieldRange * r = fieldRange( id ) ) {
      U32 min = static_cast< U32 >( r->min );
      U32 max = static_cast< U32 >( r->max );
      if ( r->flags & BCM_FIELD_RANGE_SRCPORT ) {
         return inside( l4SrcPort, min, max );
      }
      if ( r->flags & BCM_FIELD_RANGE_DSTPORT ) {
         return inside( l4DstPort, min, max );
      }
      return inside( length, min, max );
   }
   if ( const ModuleRange * r = moduleRange( static_cast< bcm_range_t >( id ) ) ) {
      U32 value = r->type == bcmRangeTypeL4SrcPort   ? l4SrcPort
                  : r->type == bcmRangeTypeL4DstPort ? l4DstPort
                                                     : length;
      return inside( value, r->min, r->max );
   }
   return false;
}

} // namespace ChipModel
