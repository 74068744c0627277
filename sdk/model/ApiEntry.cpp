// bcm_field_entry_*: entries, their install state, priority, copy, dumps.
#include <cstdio>
#include <mutex>

#include "sdk/api/field.h"
#include "sdk/model/SdkCall.h"

using namespace ChipModel;

extern "C" int
bcm_field_entry_create( int unit, bcm_field_group_t group, bcm_field_entry_t * entry ) {
   return sdkCall( __func__, unit, { group }, [ & ]( Unit & u ) {
      return entry ? u.state().field.entryCreate( group, *entry ) : BCM_E_PARAM;
   } );
}

extern "C" int
bcm_field_entry_create_id( int unit, bcm_field_group_t group, bcm_field_entry_t entry ) {
   return sdkCall( __func__, unit, { group, entry }, [ & ]( Unit & u ) {
      return u.state().field.entryCreateId( group, entry );
   } );
}

extern "C" int
bcm_field_entry_destroy( int unit, bcm_field_entry_t entry ) {
   return sdkCall( __func__, unit, { entry }, [ & ]( Unit & u ) {
      UnitState & s = u.state();
      const Entry * e = s.field.entry( entry );
      if ( e && e->policer ) {
         s.policers.detach( e->policer );
      }
      return s.field.entryDestroy( entry );
   } );
}

extern "C" int
bcm_field_entry_install( int unit, bcm_field_entry_t entry ) {
   return sdkCall( __func__, unit, { entry },
                   [ & ]( Unit & u ) { return u.state().field.entryInstall( entry ); } );
}

extern "C" int
bcm_field_entry_reinstall( int unit, bcm_field_entry_t entry ) {
   return sdkCall( __func__, unit, { entry },
                   [ & ]( Unit & u ) { return u.state().field.entryReinstall( entry ); } );
}

extern "C" int
bcm_field_entry_remove( int unit, bcm_field_entry_t entry ) {
   return sdkCall( __func__, unit, { entry },
                   [ & ]( Unit & u ) { return u.state().field.entryRemove( entry ); } );
}

extern "C" int
bcm_field_entry_enable_set( int unit, bcm_field_entry_t entry, int enable ) {
   return sdkCall( __func__, unit, { entry, enable }, [ & ]( Unit & u ) {
      return u.state().field.entryEnable( entry, enable != 0 );
   } );
}

extern "C" int
bcm_field_entry_enable_get( int unit, bcm_field_entry_t entry, int * enable ) {
   return sdkCall( __func__, unit, { entry }, [ & ]( Unit & u ) {
      const Entry * e = u.state().field.entry( entry );
      if ( !enable || !e ) {
         return enable ? BCM_E_NOT_FOUND : BCM_E_PARAM;
      }
      *enable = e->enabled ? 1 : 0;
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_field_entry_prio_set( int unit, bcm_field_entry_t entry, int priority ) {
   return sdkCall( __func__, unit, { entry, priority }, [ & ]( Unit & u ) {
      return u.state().field.entryPrioSet( entry, priority );
   } );
}

extern "C" int
bcm_field_entry_prio_get( int unit, bcm_field_entry_t entry, int * priority ) {
   return sdkCall( __func__, unit, { entry }, [ & ]( Unit & u ) {
      const Entry * e = u.state().field.entry( entry );
      if ( !priority || !e ) {
         return priority ? BCM_E_NOT_FOUND : BCM_E_PARAM;
      }
      *priority = e->priority;
      return BCM_E_NONE;
   } );
}

extern "C" int
bcm_field_entry_group_get( int unit, bcm_field_entry_t entry, bcm_field_group_t * group ) {
   return sdkCall( __func__, unit, { entry }, [ & ]( Unit & u ) {
      const Entry * e = u.state().field.entry( entry );
      if ( !group || !e ) {
         return group ? BCM_E_NOT_FOUND : BCM_E_PARAM;
      }
      *group = e->group;
      return BCM_E_NONE;
   } );
}

// A range of the range module serves the entries of its own pipe only (the
// qualify call refuses others), so a copy into another pipe leaves the
// source's ranges behind: the destination checks its own pipe's ranges.
extern "C" int
bcm_field_entry_content_copy( int unit, bcm_field_entry_t src, bcm_field_entry_t dst ) {
   return sdkCall( __func__, unit, { src, dst }, [ & ]( Unit & u ) {
      UnitState & s = u.state();
      int rc = s.field.entryContentCopy( src, dst );
      Entry * to = s.field.entry( dst );
      if ( rc != BCM_E_NONE || !to ) {
         return rc;
      }
      int pipe = s.field.group( to->group )->pipe;
      std::erase_if( to->soft.ranges, [ & ]( const RangeCheck & check ) {
         std::optional< U32 > rangePipe = s.ranges.pipeOf( check.range );
         return rangePipe && pipe >= 0 && static_cast< int >( *rangePipe ) != pipe;
      } );
      return rc;
   } );
}

extern "C" int
bcm_field_qualify_clear( int unit, bcm_field_entry_t entry ) {
   return sdkCall( __func__, unit, { entry },
                   [ & ]( Unit & u ) { return u.state().field.qualifyClear( entry ); } );
}

extern "C" int
bcm_field_entry_dump( int unit, bcm_field_entry_t entry ) {
   return sdkCall( __func__, unit, { entry }, [ & ]( Unit & u ) {
      std::string text;
      int rc = u.state().field.entryDump( entry, text );
      if ( rc == BCM_E_NONE ) {
         emitDump( text );
      }
      return rc;
   } );
}

// --- dump output -----------------------------------------------------------

namespace {

struct DumpSink {
   std::mutex mutex;
   bcm_dump_sink_t sink = nullptr;
   void * context = nullptr;
};

DumpSink &
dumpSink() {
   static DumpSink sink;
   return sink;
}

} // namespace

extern "C" void
bcm_dump_sink_set( bcm_dump_sink_t sink, void * context ) {
   std::lock_guard< std::mutex > guard( dumpSink().mutex );
   dumpSink().sink = sink;
   dumpSink().context = context;
}

void
ChipModel::emitDump( const std::string & text ) {
   std::lock_guard< std::mutex > guard( dumpSink().mutex );
   if ( dumpSink().sink ) {
      dumpSink().sink( dumpSink().context, text.c_str() );
   } else {
      std::fputs( text.c_str(), stdout );
   }
}
