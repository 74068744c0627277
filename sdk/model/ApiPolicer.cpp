// Policers (bcm_policer_*) and their attachment to entries.
#include "sdk/api/policer.h"
#include "sdk/model/SdkCall.h"

using namespace ChipModel;

namespace {

std::vector< S64 >
configArgs( const bcm_policer_config_t * config ) {
   if ( !config ) {
      return {};
   }
   return { config->flags,        config->mode,       config->ckbits_sec,
            config->ckbits_burst, config->pkbits_sec, config->pkbits_burst };
}

// The pipe whose meters an entry's policer uses: its group's, or 0.
U32
meterPipeOf( const UnitState & s, const Entry & e ) {
   int pipe = s.field.group( e.group )->pipe;
   return pipe < 0 ? 0 : static_cast< U32 >( pipe );
}

} // namespace

extern "C" int
bcm_policer_create( int unit, bcm_policer_config_t * config, bcm_policer_t * policer_id ) {
   std::vector< S64 > args = configArgs( config );
   if ( config && policer_id && ( config->flags & BCM_POLICER_WITH_ID ) ) {
      args.push_back( *policer_id );
   }
   return sdkCall( __func__, unit, args, [ & ]( Unit & u ) {
      if ( !config || !policer_id ) {
         return BCM_E_PARAM;
      }
      return u.state().policers.create( *config, *policer_id );
   } );
}

extern "C" int
bcm_policer_set( int unit, bcm_policer_t policer_id, bcm_policer_config_t * config ) {
   std::vector< S64 > args = configArgs( config );
   args.insert( args.begin(), policer_id );
   return sdkCall( __func__, unit, args, [ & ]( Unit & u ) {
      return config ? u.state().policers.set( policer_id, *config ) : BCM_E_PARAM;
   } );
}

extern "C" int
bcm_policer_get( int unit, bcm_policer_t policer_id, bcm_policer_config_t * config ) {
   return sdkCall( __func__, unit, { policer_id }, [ & ]( Unit & u ) {
      return config ? u.state().policers.get( policer_id, *config ) : BCM_E_PARAM;
   } );
}

extern "C" int
bcm_policer_destroy( int unit, bcm_policer_t policer_id ) {
   return sdkCall( __func__, unit, { policer_id },
                   [ & ]( Unit & u ) { return u.state().policers.destroy( policer_id ); } );
}

extern "C" int
bcm_field_entry_policer_attach( int unit, bcm_field_entry_t entry, int level,
                                bcm_policer_t policer ) {
   return sdkCall( __func__, unit, { entry, level, policer }, [ & ]( Unit & u ) {
      UnitState & s = u.state();
      Entry * e = s.field.entry( entry );
      if ( level != 0 ) {
         return BCM_E_PARAM;
      }
      if ( !e || !s.policers.policer( policer ) ) {
         return BCM_E_NOT_FOUND;
      }
      if ( e->policer ) {
         return BCM_E_EXISTS;
      }
      int rc = s.policers.attach( policer, meterPipeOf( s, *e ) );
      if ( rc == BCM_E_NONE ) {
         e->policer = policer;
      }
      return rc;
   } );
}

extern "C" int
bcm_field_entry_policer_detach( int unit, bcm_field_entry_t entry, int level ) {
   return sdkCall( __func__, unit, { entry, level }, [ & ]( Unit & u ) {
      UnitState & s = u.state();
      Entry * e = s.field.entry( entry );
      if ( level != 0 ) {
         return BCM_E_PARAM;
      }
      if ( !e || !e->policer ) {
         return BCM_E_NOT_FOUND;
      }
      s.policers.detach( e->policer );
      e->policer = 0;
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_field_entry_policer_detach_all( int unit, bcm_field_entry_t entry ) {
   return sdkCall( __func__, unit, { entry }, [ & ]( Unit & u ) {
      UnitState & s = u.state();
      Entry * e = s.field.entry( entry );
      if ( !e ) {
         return BCM_E_NOT_FOUND;
      }
      if ( e->policer ) {
         s.policers.detach( e->policer );
         e->policer = 0;
      }
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_field_entry_policer_get( int unit, bcm_field_entry_t entry, int level,
                             bcm_policer_t * policer ) {
   return sdkCall( __func__, unit, { entry, level }, [ & ]( Unit & u ) {
      const Entry * e = u.state().field.entry( entry );
      if ( !policer || level != 0 ) {
         return BCM_E_PARAM;
      }
      if ( !e || !e->policer ) {
         return BCM_E_NOT_FOUND;
      }
      *policer = e->policer;
      return BCM_E_NONE;
   } );
}
