// Entry and group dumps: what the SDK holds, as text.
#include <cstdio>
#include <sstream>

#include "sdk/api/error.h"
#include "sdk/model/FieldProcessor.h"

namespace ChipModel {

namespace {

std::string
hex( const std::vector< U8 > & bytes ) {
   std::string out;
   char digits[ 3 ];
   for ( U8 byte : bytes ) {
      std::snprintf( digits, sizeof( digits ), "%02x", byte );
      out += digits;
   }
   return out;
}

std::string
stateText( const Entry & e ) {
   return std::string( e.installed() ? "installed" : "not installed" ) +
          ( e.enabled ? ", enabled" : ", disabled" );
}

void
dumpImage( std::ostringstream & out, const EntryImage & image ) {
   for ( const auto & [ q, v ] : image.qualifiers ) {
      out << "   " << bcm_field_qualify_name( q ) << ": data " << hex( v.data ) << " mask "
          << hex( v.mask ) << "\n";
   }
   for ( const auto & [ id, v ] : image.dataQualifiers ) {
      out << "   Data " << id << ": data " << hex( v.data ) << " mask " << hex( v.mask )
          << "\n";
   }
   for ( const auto & [ id, v ] : image.udfs ) {
      out << "   Udf " << id << ": data " << hex( v.data ) << " mask " << hex( v.mask )
          << "\n";
   }
   for ( const RangeCheck & r : image.ranges ) {
      out << "   RangeCheck: range " << r.range << " invert " << ( r.invert ? 1 : 0 )
          << "\n";
   }
   for ( const Action & a : image.actions ) {
      out << "   Action " << bcm_field_action_name( a.action ) << ": 0x" << std::hex
          << a.param0 << " 0x" << a.param1 << std::dec;
      if ( a.hasPorts ) {
         char ports[ _SHR_PBMP_FMT_LEN ];
         out << " ports " << _shr_pbmp_format( a.ports, ports );
      }
      out << "\n";
   }
}

} // namespace

int
FieldProcessor::entryDump( bcm_field_entry_t id, std::string & text ) const {
   const Entry * e = entry( id );
   if ( !e ) {
      return BCM_E_NOT_FOUND;
   }
   const Group & g = groups_.at( e->group );
   S64 row = rowOf( id );
   std::ostringstream out;
   out << "EID " << id << " (0x" << std::hex << id << std::dec << "): group " << g.id
       << ", stage " << bcm_field_stage_name( g.stage ) << ", pipe " << g.pipe
       << ", priority " << e->priority << ", row " << row << ", slice "
       << g.sliceOfRow( static_cast< U32 >( row ) ) << ", " << stateText( *e ) << "\n";
   dumpImage( out, e->soft );
   if ( e->statId ) {
      const Stat & s = stats_.at( e->statId );
      out << "   Stat " << s.id << ":";
      for ( bcm_field_stat_t type : s.types ) {
         U64 value = 0;
         statGet( s.id, type, value );
         out << " " << bcm_field_stat_name( type ) << "=" << value;
      }
      out << "\n";
   }
   if ( e->policer ) {
      out << "   Policer " << e->policer << "\n";
   }
   text = out.str();
   return BCM_E_NONE;
}

int
FieldProcessor::groupDump( bcm_field_group_t id, std::string & text ) const {
   const Group * g = group( id );
   if ( !g ) {
      return BCM_E_NOT_FOUND;
   }
   std::ostringstream out;
   out << "GID " << g->id << " (0x" << std::hex << g->id << std::dec << "): stage "
       << bcm_field_stage_name( g->stage ) << ", pipe " << g->pipe << ", priority "
       << g->priority << ", mode " << bcm_field_group_mode_name( g->mode ) << ", slices";
   for ( U32 first : g->chain ) {
      out << " " << first;
      if ( g->width > 1 ) {
         out << "-" << first + g->width - 1;
      }
   }
   out << "\n   qset:";
   for ( int q = 0; q < bcmFieldQualifyCount; ++q ) {
      if ( BCM_FIELD_QSET_TEST( g->qset, q ) ) {
         out << " " << bcm_field_qualify_name( q );
      }
   }
   bcm_field_group_status_t status;
   groupStatus( id, status );
   out << "\n   entries " << g->rows.size() << ", free " << status.entries_free
       << ", moves " << g->moves << "\n";
   for ( U32 key : g->rows.keysInOrder() ) {
      const Entry & e = entries_.at( static_cast< bcm_field_entry_t >( key ) );
      out << "   EID " << e.id << " (0x" << std::hex << e.id << std::dec << "): priority "
          << e.priority << ", row " << *g->rows.slotOf( key ) << ", " << stateText( e )
          << "\n";
   }
   text = out.str();
   return BCM_E_NONE;
}

} // namespace ChipModel
