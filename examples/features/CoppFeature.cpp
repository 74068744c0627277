#include "examples/features/CoppFeature.h"

#include "common/TesselSdkCall.h"
#include "sdk/api/field.h"

namespace Features {

CoppFeature::CoppFeature( const Kiln::Ptr< Tessel::TesselTcamGroupManager > & manager )
      : PolicedFeature( manager, Tessel::policyCoppIpTcamGroup_, "CoPP", "class" ) {}

CoppFeature::~CoppFeature() {
   release();
}

std::string
CoppFeature::itemText( U32 item ) const {
   const CoppClass & c = items_.at( item );
   return "copp " + c.name + " (" + ipv4MatchText( c.match ) + ", " + c.rate.text() + ")";
}

std::vector< FeatureEntries::Spec >
CoppFeature::specsOf( U32 unit, U32 item ) {
   const CoppClass & c = items_[ item ];
   U32 policer = policers_.policer( unit, item, c.rate, true );
   return matchSpecs( c.match, item, "copp " + c.name, [ this, policer ]( U32 u, U32 entry ) {
      int rc = SDK_CALL_UNIT( u, bcm_field_action_add( u, int( entry ), bcmFieldActionCopyToCpu, 0, 0 ) );
      return rc < 0 ? rc : policers_.attach( entries_, u, entry, policer );
   } );
}

} // namespace Features
