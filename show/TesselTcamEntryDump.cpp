// The entry dump: the entry's group, qualifiers, actions and counters as the
// SDK holds them.
#include <algorithm>
#include <cstdio>
#include <vector>

#include "manager/SdkShimAccess.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/fastlog/Trace.h"
#include "show/QualifierPrinter.h"

TRACE_CHANNEL( "TesselTcamShow" );

namespace Tessel {

namespace {

// Every qualifier the dump can print, built from the shim's values once.
const std::vector< QualifierDump > &
qualifierDumps() {
   static const std::vector< QualifierDump > dumps = [] {
      std::vector< QualifierDump > all = addressQualifierDumps();
      std::vector< QualifierDump > integers = integerQualifierDumps();
      all.insert( all.end(), integers.begin(), integers.end() );
      return all;
   }();
   return dumps;
}

// The stage selectors every group's qualifier set starts with: nothing to
// show for an entry.
bool
silentQualifier( int qualifier ) {
   const Shim::Sdk & s = sdkShim();
   return qualifier == s.AR_bcmFieldQualifyStageIngress() ||
          qualifier == s.AR_bcmFieldQualifyStageLookup() ||
          qualifier == s.AR_bcmFieldQualifyStageEgress() ||
          qualifier == s.AR_bcmFieldQualifyStageClass();
}

std::string
nameOf( const std::vector< std::string > & names, int value ) {
   return value >= 0 && size_t( value ) < names.size() ? names[ value ] : std::string();
}

void
printQualifier( std::ostringstream & out, U32 unit, U32 entryId, int qualifier ) {
   const std::vector< std::string > & names = sdkShim().qualifierNames();
   for ( const QualifierDump & dump : qualifierDumps() ) {
      if ( dump.qualifier == qualifier ) {
         QualifierPrinter printer( out, nameOf( names, qualifier ) );
         dump.get( unit, entryId, printer );
         return;
      }
   }
   if ( silentQualifier( qualifier ) ) {
      return;
   }
   out << "qualifier with ID " << qualifier << " is unknown\n";
   if ( qualifier >= 0 && size_t( qualifier ) < names.size() ) {
      out << "   (" << names[ qualifier ] << ")\n";
   }
}

// The qualifiers of the entry's group, ended by -1.
std::vector< int >
groupQualifiers( U32 unit, int groupId ) {
   bcm_field_qset_t qset;
   BCM_FIELD_QSET_INIT( qset );
   std::vector< int > qualifiers;
   if ( SDK_CALL( bcm_field_group_qset_get( unit, groupId, &qset ) ) >= 0 ) {
      int count = sdkShim().AR_bcmFieldQualifyCount();
      for ( int qualifier = 0; qualifier < count; ++qualifier ) {
         if ( sdkShim().ob_field_qset_test( qset, qualifier ) ) {
            qualifiers.push_back( qualifier );
         }
      }
   }
   qualifiers.push_back( -1 );
   return qualifiers;
}

} // namespace

void
TesselTcamGroupManager::showEntryTcamUsage( Kiln::String switchName, U32 fd, U32 unit,
                                            U32 entryId ) {
   TRACE8( "showEntryTcamUsage" );
   int out = static_cast< int >( fd );
   dprintf( out, "\n=== TCAM entry information for %s; entry ID: 0x%x (%d) ===\n",
            switchName.c_str(), entryId, int( entryId ) );
   std::ostringstream text;
   showDiagEntryTcamUsage( text, unit, entryId );
   dprintf( out, "%s", text.str().c_str() );
}

void
showDiagEntryTcamUsage( std::ostringstream & out, U32 unit, U32 entryId ) {
   bcm_field_group_t groupId = 0;
   if ( SDK_CALL( bcm_field_entry_group_get( unit, entryId, &groupId ) ) < 0 ) {
      out << "entry " << "0x" << std::hex << entryId << std::dec << " (" << entryId << ") "
          << "not found.\n\n";
      return;
   }
   out << "   Group: " << groupId << "\n";
   std::vector< int > qualifiers = groupQualifiers( unit, groupId );
   printTcamEntryQualifiers( out, unit, entryId, qualifiers.data() );
   printTcamEntryActions( out, unit, entryId );
   printTcamEntryStatistics( out, unit, entryId );
}

void
printTcamEntryQualifiers( std::ostringstream & out, U32 unit, U32 entryId,
                          const int * qualifierIds ) {
   out << "\n=== Qualifiers ===\n";
   for ( const int * id = qualifierIds; *id != -1; ++id ) {
      printQualifier( out, unit, entryId, *id );
   }
}

void
printTcamEntryActions( std::ostringstream & out, U32 unit, U32 entryId ) {
   out << "\n=== Actions ===\n";
   std::vector< bcm_field_action_info_t > actions( BCM_FIELD_ASET_WORDS * 32 );
   int max = static_cast< int >( actions.size() );
   int count = 0;
   if ( SDK_CALL( bcm_field_entry_action_list_get( unit, entryId, max, actions.data(),
                                                   &count ) ) < 0 ) {
      return;
   }
   const std::vector< std::string > & names = sdkShim().actionNames();
   for ( int a = 0; a < std::min( count, max ); ++a ) {
      out << nameOf( names, actions[ a ].action );
      bool first = true;
      for ( int p = 0; p < BCM_FIELD_ACTION_PARAM_NUM; ++p ) {
         U32 value = actions[ a ].param[ p ];
         if ( value == 0 ) {
            continue;
         }
         out << ( first ? ":" : "" ) << "\n   param" << p << ": 0x" << std::hex << value
             << std::dec << " (" << value << ")";
         first = false;
      }
      out << "\n";
   }
}

void
printTcamEntryStatistics( std::ostringstream & out, U32 unit, U32 entryId ) {
   out << "\n=== Statistics ===\n";
   int statId = 0;
   int size = 0;
   if ( SDK_CALL( bcm_field_entry_stat_get( unit, entryId, &statId ) ) < 0 ||
        SDK_CALL( bcm_field_stat_size( unit, statId, &size ) ) < 0 ) {
      return;
   }
   std::vector< bcm_field_stat_t > types( size > 0 ? size : 0 );
   if ( SDK_CALL( bcm_field_stat_config_get( unit, statId, size, types.data() ) ) < 0 ) {
      return;
   }
   std::vector< std::pair< int, U64 > > values;
   for ( bcm_field_stat_t type : types ) {
      if ( type >= sdkShim().AR_bcmFieldStatCount() ) {
         continue;
      }
      uint64_t value = 0;
      if ( SDK_CALL( bcm_field_stat_get( unit, statId, type, &value ) ) < 0 ) {
         break;
      }
      values.emplace_back( type, value );
   }
   out << "Counters: \n";
   const std::vector< std::string > & names = sdkShim().statNames();
   for ( const auto & [ type, value ] : values ) {
      out << "   " << nameOf( names, type ) << ": " << value << "\n";
   }
}

} // namespace Tessel
