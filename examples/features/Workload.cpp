#include "examples/features/Workload.h"

namespace Features {

namespace {

std::vector< std::string >
fieldsWith( std::vector< std::string > extra ) {
   std::vector< std::string > fields = ipv4MatchFields();
   fields.insert( fields.end(), extra.begin(), extra.end() );
   return fields;
}

// The line's words must be the feature and `count` more.
void
expectWords( const FieldLine & line, size_t count, const std::string & usage ) {
   if ( line.words().size() != count + 1 ) {
      line.fail( line.words()[ 0 ] + " takes " + usage );
   }
}

// rate= and burst= come together; nothing when neither is given.
std::optional< PolicerRate >
readRate( const FieldLine & line ) {
   std::optional< U32 > rate = line.number( "rate", 100000000 );
   std::optional< U32 > burst = line.number( "burst", 1000000 );
   if ( !rate && !burst ) {
      return std::nullopt;
   }
   if ( !rate || !burst ) {
      line.fail( "rate= and burst= go together (kbit/s and kbit)" );
   }
   return PolicerRate{ *rate, *burst };
}

void
readAcl( const FieldLine & line, Workload & w ) {
   expectWords( line, 1, "permit or deny, then match fields" );
   line.allowOnly( ipv4MatchFields(), "acl" );
   const std::string & action = line.words()[ 1 ];
   if ( action != "permit" && action != "deny" ) {
      line.fail( "acl action '" + action + "' is neither permit nor deny" );
   }
   w.acl.push_back( AclRule{ action == "deny" ? AclRule::Action::deny : AclRule::Action::permit,
                             readIpv4Match( line ) } );
}

void
readCopp( const FieldLine & line, Workload & w ) {
   expectWords( line, 1, "a class name, then match fields, rate= and burst=" );
   line.allowOnly( fieldsWith( { "rate", "burst" } ), "copp" );
   std::optional< PolicerRate > rate = readRate( line );
   if ( !rate ) {
      line.fail( "copp class '" + line.words()[ 1 ] + "' needs rate= and burst=" );
   }
   w.copp.push_back( CoppClass{ line.words()[ 1 ], readIpv4Match( line ), *rate } );
}

std::optional< bcm_field_color_t >
readColour( const FieldLine & line ) {
   std::optional< std::string > text = line.text( "colour" );
   if ( !text ) {
      return std::nullopt;
   }
   std::optional< bcm_field_color_t > colour = colourOfName( *text );
   if ( colour ) {
      return colour;
   }
   line.fail( "bad colour '" + *text + "' (green, yellow or red)" );
}

void
readQos( const FieldLine & line, Workload & w ) {
   expectWords( line, 1, "a class name, then match fields and priority=" );
   line.allowOnly( fieldsWith( { "priority", "colour", "rate", "burst" } ), "qos" );
   std::optional< U32 > priority = line.number( "priority", 7 );
   if ( !priority ) {
      line.fail( "qos class '" + line.words()[ 1 ] + "' needs priority=" );
   }
   w.qos.push_back( QosClass{ line.words()[ 1 ], readIpv4Match( line ), U8( *priority ),
                              readColour( line ), readRate( line ) } );
}

// "OFFSET:0xHEX": bytes at an offset from the L4 header's start.
std::optional< UdfMatch >
readUdf( const FieldLine & line ) {
   std::optional< std::string > text = line.text( "udf" );
   if ( !text ) {
      return std::nullopt;
   }
   size_t colon = text->find( ':' );
   std::string offset = text->substr( 0, colon );
   std::optional< std::vector< U8 > > bytes =
      colon == std::string::npos ? std::nullopt
                                 : hexBytes( text->substr( colon + 1 ), UdfMatch::maxBytes );
   if ( !bytes || offset.empty() || offset.size() > 3 ||
        offset.find_first_not_of( "0123456789" ) != std::string::npos ||
        std::stoul( offset ) > UdfMatch::maxOffset ) {
      line.fail( "bad udf '" + *text + "' (OFFSET:0xHEX, offset 0 to " +
                 std::to_string( UdfMatch::maxOffset ) + " from the L4 header, 1 to " +
                 std::to_string( UdfMatch::maxBytes ) + " bytes)" );
   }
   return UdfMatch{ U8( std::stoul( offset ) ), *bytes };
}

void
readMirror( const FieldLine & line, Workload & w ) {
   expectWords( line, 1, "a session name, then match fields, udf= and port=" );
   line.allowOnly( fieldsWith( { "udf", "port" } ), "mirror" );
   std::optional< U32 > port = line.number( "port", TesselTypes::maxPortCount - 1 );
   if ( !port ) {
      line.fail( "mirror session '" + line.words()[ 1 ] + "' needs port=" );
   }
   w.mirror.push_back(
      MirrorRule{ line.words()[ 1 ], readIpv4Match( line ), *port, readUdf( line ) } );
}

} // namespace

void
readWorkloadLine( const FieldLine & line, Workload & workload ) {
   static const std::pair< const char *, void ( * )( const FieldLine &, Workload & ) > features[] = {
      { "acl", readAcl }, { "copp", readCopp }, { "qos", readQos }, { "mirror", readMirror } };
   if ( line.words().empty() ) {
      line.fail( "a line starts with its feature: acl, copp, qos or mirror" );
   }
   for ( const auto & [ name, read ] : features ) {
      if ( line.words()[ 0 ] == name ) {
         read( line, workload );
         return;
      }
   }
   line.fail( "unknown feature '" + line.words()[ 0 ] + "' (acl, copp, qos or mirror)" );
}

Workload
readWorkloadFile( const std::string & path ) {
   Workload workload;
   readFieldFile( path, [ &workload ]( const FieldLine & line ) { readWorkloadLine( line, workload ); } );
   return workload;
}

} // namespace Features
