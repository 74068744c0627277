// bcm_field_stat_*, bcm_field_entry_stat_*: stat objects and their counters.
#include "sdk/api/field.h"
#include "sdk/model/SdkCall.h"

using namespace ChipModel;

namespace {

// Pool ids name the stage too: stage * poolsPerStage + pool (ingress pools
// keep their own numbers).
constexpr int poolsPerStage = 256;

} // namespace

extern "C" int
bcm_field_stat_create( int unit, bcm_field_group_t group, int nstat,
                       bcm_field_stat_t * stat_arr, int * stat_id ) {
   std::vector< S64 > args = { group, nstat };
   for ( int i = 0; stat_arr && i < nstat && i < bcmFieldStatCount; ++i ) {
      args.push_back( stat_arr[ i ] );
   }
   return sdkCall( __func__, unit, args, [ & ]( Unit & u ) {
      if ( !stat_arr || !stat_id || nstat <= 0 || nstat > bcmFieldStatCount ) {
         return BCM_E_PARAM;
      }
      std::vector< bcm_field_stat_t > types( stat_arr, stat_arr + nstat );
      return u.state().field.statCreate( group, types, *stat_id );
   } );
}

extern "C" int
bcm_field_stat_destroy( int unit, int stat_id ) {
   return sdkCall( __func__, unit, { stat_id },
                   [ & ]( Unit & u ) { return u.state().field.statDestroy( stat_id ); } );
}

extern "C" int
bcm_field_entry_stat_attach( int unit, bcm_field_entry_t entry, int stat_id ) {
   return sdkCall( __func__, unit, { entry, stat_id }, [ & ]( Unit & u ) {
      return u.state().field.statAttach( entry, stat_id );
   } );
}

extern "C" int
bcm_field_entry_stat_detach( int unit, bcm_field_entry_t entry, int stat_id ) {
   return sdkCall( __func__, unit, { entry, stat_id }, [ & ]( Unit & u ) {
      return u.state().field.statDetach( entry, stat_id );
   } );
}

extern "C" int
bcm_field_entry_stat_get( int unit, bcm_field_entry_t entry, int * stat_id ) {
   return sdkCall( __func__, unit, { entry }, [ & ]( Unit & u ) {
      const Entry * e = u.state().field.entry( entry );
      if ( !stat_id ) {
         return BCM_E_PARAM;
      }
      if ( !e || !e->statId ) {
         return BCM_E_NOT_FOUND;
      }
      *stat_id = e->statId;
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_field_stat_get( int unit, int stat_id, bcm_field_stat_t type, uint64_t * value ) {
   return sdkCall( __func__, unit, { stat_id, type }, [ & ]( Unit & u ) {
      if ( !value ) {
         return BCM_E_PARAM;
      }
      U64 read = 0;
      int rc = u.state().field.statGet( stat_id, type, read );
      *value = read;
      return rc;
   } );
}

extern "C" int
bcm_field_stat_set( int unit, int stat_id, bcm_field_stat_t type, uint64_t value ) {
   return sdkCall(
      __func__, unit, { stat_id, type, static_cast< S64 >( value ) },
      [ & ]( Unit & u ) { return u.state().field.statSet( stat_id, type, value ); } );
}

extern "C" int
bcm_field_stat_size( int unit, int stat_id, int * nstat ) {
   return sdkCall( __func__, unit, { stat_id }, [ & ]( Unit & u ) {
      const Stat * s = u.state().field.stat( stat_id );
      if ( !nstat || !s ) {
         return nstat ? BCM_E_NOT_FOUND : BCM_E_PARAM;
      }
      *nstat = static_cast< int >( s->types.size() );
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_field_stat_config_get( int unit, int stat_id, int nstat, bcm_field_stat_t * stat_arr ) {
   return sdkCall( __func__, unit, { stat_id, nstat }, [ & ]( Unit & u ) {
      const Stat * s = u.state().field.stat( stat_id );
      if ( !stat_arr || !s ) {
         return stat_arr ? BCM_E_NOT_FOUND : BCM_E_PARAM;
      }
      if ( nstat < 0 || static_cast< size_t >( nstat ) > s->types.size() ) {
         return BCM_E_PARAM;
      }
      for ( int i = 0; i < nstat; ++i ) {
         stat_arr[ i ] = s->types[ static_cast< size_t >( i ) ];
      }
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_field_stat_hw_info_get( int unit, int stat_id, int * pipe, int * pool_id, int max,
                            int * indices, int * count ) {
   return sdkCall( __func__, unit, { stat_id, max }, [ & ]( Unit & u ) {
      const Stat * s = u.state().field.stat( stat_id );
      if ( !pipe || !pool_id || !count || ( max > 0 && !indices ) ) {
         return BCM_E_PARAM;
      }
      if ( !s ) {
         return BCM_E_NOT_FOUND;
      }
      *pipe = static_cast< int >( s->instance );
      *pool_id =
         static_cast< int >( s->stage ) * poolsPerStage + static_cast< int >( s->pool );
      *count = static_cast< int >( s->indices.size() );
      for ( int i = 0; i < max && i < *count; ++i ) {
         indices[ i ] = static_cast< int >( s->indices[ static_cast< size_t >( i ) ] );
      }
      return BCM_E_NONE;
   } );
}

namespace {

// The counter at (pipe, pool, index); null when none is in use there.
Counter *
counterAt( Unit & u, int pipe, int pool, int index ) {
   if ( pipe < 0 || pool < 0 || index < 0 ) {
      return nullptr;
   }
   auto stage = static_cast< bcm_field_stage_t >( pool / poolsPerStage );
   return u.state().field.counter( stage, static_cast< U32 >( pipe ),
                                   static_cast< U32 >( pool % poolsPerStage ),
                                   static_cast< U32 >( index ) );
}

} // namespace

extern "C" int
bcm_field_stat_pool_counter_get( int unit, int pipe, int pool_id, int index,
                                 uint64_t * packets, uint64_t * bytes ) {
   return sdkCall( __func__, unit, { pipe, pool_id, index }, [ & ]( Unit & u ) {
      if ( !packets || !bytes ) {
         return BCM_E_PARAM;
      }
      Counter * c = counterAt( u, pipe, pool_id, index );
      if ( !c ) {
         return BCM_E_NOT_FOUND;
      }
      *packets = c->packets;
      *bytes = c->bytes;
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_field_stat_eviction_get( int unit, int pipe, int pool_id, int index, uint64_t * packets,
                             uint64_t * bytes ) {
   return sdkCall( __func__, unit, { pipe, pool_id, index }, [ & ]( Unit & u ) {
      if ( !packets || !bytes ) {
         return BCM_E_PARAM;
      }
      Counter * c = counterAt( u, pipe, pool_id, index );
      if ( !c ) {
         return BCM_E_NOT_FOUND;
      }
      *packets = c->evictedPackets;
      *bytes = c->evictedBytes;
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_field_stat_eviction_clear( int unit, int pipe, int pool_id, int index, int packets,
                               int bytes ) {
   return sdkCall( __func__, unit, { pipe, pool_id, index, packets, bytes },
                   [ & ]( Unit & u ) {
                      Counter * c = counterAt( u, pipe, pool_id, index );
                      if ( !c ) {
                         return BCM_E_NOT_FOUND;
                      }
                      if ( packets ) {
                         c->evictedPackets = 0;
                      }
                      if ( bytes ) {
                         c->evictedBytes = 0;
                      }
                      return BCM_E_NONE;
                   } );
}
