#include "examples/features/MirrorFeature.h"

#include "common/TesselSdkCall.h"
#include "sdk/api/field.h"

namespace Features {

namespace {

// The key of IPv4 mirroring ACLs (0 IPv6, 1 IPv4, 2 MAC).
constexpr int ipv4MirrorAclType = 1;

} // namespace

MirrorFeature::MirrorFeature( const Kiln::Ptr< Tessel::TesselTcamGroupManager > & manager )
      : ItemFeature( manager, Tessel::mirroringAclTcamGroup1_, "Mirroring", "rule" ) {}

MirrorFeature::~MirrorFeature() {
   release();
}

std::string
MirrorFeature::itemText( U32 rule ) const {
   const MirrorRule & r = items_.at( rule );
   return "mirror " + r.session + " (" + ipv4MatchText( r.match ) +
          ( r.udf ? " udf=" + r.udf->text() : "" ) + ", to port " + std::to_string( r.port ) + ")";
}

std::string
MirrorFeature::prepare() {
   U8 group = U8( entries_.entryManager()->group() );
   entries_.groupManager()->groupMirroringAclTypeIs( group, ipv4MirrorAclType );
   entries_.groupManager()->groupMirroringAclValidIs( group, true );
   std::vector< UdfMatch > fields;
   for ( const MirrorRule & rule : items_ ) {
      if ( rule.udf ) {
         fields.push_back( *rule.udf );
      }
   }
   return udfs_.take( name(), fields );
}

void
MirrorFeature::releaseResources() {
   U8 group = U8( entries_.entryManager()->group() );
   if ( entries_.groupManager()->groupMirroringAclValid( group ) ) {
      entries_.groupManager()->groupMirroringAclValidIs( group, false );
   }
   udfs_.release();
}

std::vector< FeatureEntries::Spec >
MirrorFeature::specsOf( U32, U32 rule ) {
   U32 port = items_[ rule ].port;
   std::optional< UdfMatch > udf = items_[ rule ].udf;
   return matchSpecs( items_[ rule ].match, rule, "mirror " + items_[ rule ].session,
                      [ this, port, udf ]( U32 unit, U32 entry ) {
                         int rc = udf ? udfs_.qualify( unit, entry, *udf ) : 0;
                         return rc < 0 ? rc
                                       : SDK_CALL_UNIT( unit, bcm_field_action_add(
                                                                 unit, int( entry ),
                                                                 bcmFieldActionMirrorIngress, 0, port ) );
                      } );
}

} // namespace Features
