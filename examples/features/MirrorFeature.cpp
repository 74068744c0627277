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
   return "mirror " + r.session + " (" + ipv4MatchText( r.match ) + ", to port " +
          std::to_string( r.port ) + ")";
}

void
MirrorFeature::prepare() {
   U8 group = U8( entries_.entryManager()->group() );
   entries_.groupManager()->groupMirroringAclTypeIs( group, ipv4MirrorAclType );
   entries_.groupManager()->groupMirroringAclValidIs( group, true );
}

void
MirrorFeature::releaseResources() {
   U8 group = U8( entries_.entryManager()->group() );
   if ( entries_.groupManager()->groupMirroringAclValid( group ) ) {
      entries_.groupManager()->groupMirroringAclValidIs( group, false );
   }
}

std::vector< FeatureEntries::Spec >
MirrorFeature::specsOf( U32, U32 rule ) {
   U32 port = items_[ rule ].port;
   return matchSpecs( items_[ rule ].match, rule, "mirror " + items_[ rule ].session,
                      [ port ]( U32 unit, U32 entry ) {
                         return SDK_CALL_UNIT( unit, bcm_field_action_add(
                                                        unit, int( entry ),
                                                        bcmFieldActionMirrorIngress, 0, port ) );
                      } );
}

} // namespace Features
