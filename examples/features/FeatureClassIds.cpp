#include "examples/features/FeatureClassIds.h"

#include <set>

namespace Features {

namespace {

// The aligned block a set takes: the next power of two at or above its size.
U32
blockSize( size_t ports ) {
   U32 size = 1;
   while ( size < ports ) {
      size *= 2;
   }
   return size;
}

U32
alignUp( U32 id, U32 size ) {
   return ( id + size - 1 ) / size * size;
}

} // namespace

FeatureClassIds::FeatureClassIds( const Kiln::Ptr< Tessel::TesselTcamGroupManager > & manager )
      : manager_( manager ) {}

FeatureClassIds::~FeatureClassIds() {
   release();
}

std::string
FeatureClassIds::check( const std::string & feature,
                        const std::vector< std::vector< U16 > > & sets ) {
   std::map< U16, const std::vector< U16 > * > setOfPort;
   std::set< std::vector< U16 > > placed;
   U32 next = firstId;
   for ( const std::vector< U16 > & set : sets ) {
      for ( U16 port : set ) {
         auto [ it, added ] = setOfPort.emplace( port, &set );
         if ( !added && *it->second != set ) {
            return feature + ": port " + std::to_string( port ) +
                   " is in two different port sets; a port maps to one class id";
         }
      }
      if ( !set.empty() && placed.insert( set ).second ) {
         next = alignUp( next, blockSize( set.size() ) ) + blockSize( set.size() );
      }
   }
   if ( next > firstId + ids ) {
      return feature + ": the port sets need " + std::to_string( next - firstId ) +
             " class ids, at most " + std::to_string( ids ) + " fit";
   }
   return "";
}

std::optional< ClassMatch >
FeatureClassIds::block( U32 unit, const std::vector< U16 > & set ) {
   const Agent::ChipInfo * info = manager_->chipInfo( unit );
   if ( !info || !info->classIdCompression() || set.empty() ) {
      return std::nullopt;
   }
   U32 size = blockSize( set.size() );
   auto it = blocks_.find( { unit, set } );
   if ( it == blocks_.end() ) {
      U32 first = alignUp( nextId_.emplace( unit, firstId ).first->second, size );
      nextId_[ unit ] = first + size;
      for ( size_t i = 0; i < set.size(); ++i ) {
         manager_->allocateL4DstPortClassId( unit, set[ i ], U8( first + i ) );
      }
      it = blocks_.emplace( std::make_pair( unit, set ), first ).first;
   }
   return ClassMatch{ U8( it->second ), U8( ~( size - 1 ) ) };
}

void
FeatureClassIds::release() {
   for ( const auto & [ key, first ] : blocks_ ) {
      for ( size_t i = 0; i < key.second.size(); ++i ) {
         manager_->releaseL4DstPortClassId( key.first, U8( first + i ) );
      }
   }
   blocks_.clear();
   nextId_.clear();
}

U32
FeatureClassIds::bound() const {
   U32 ports = 0;
   for ( const auto & [ key, first ] : blocks_ ) {
      ports += U32( key.second.size() );
   }
   return ports;
}

} // namespace Features
