#include "examples/features/QosFeature.h"

#include "common/TesselSdkCall.h"
#include "sdk/api/field.h"

namespace Features {

namespace {

const char * const colourNames[] = { "green", "yellow", "red" };

} // namespace

const char *
colourName( bcm_field_color_t colour ) {
   return colour >= bcmFieldColorGreen && colour <= bcmFieldColorRed ? colourNames[ colour ] : "?";
}

std::optional< bcm_field_color_t >
colourOfName( const std::string & name ) {
   for ( int colour = bcmFieldColorGreen; colour <= bcmFieldColorRed; ++colour ) {
      if ( name == colourNames[ colour ] ) {
         return bcm_field_color_t( colour );
      }
   }
   return std::nullopt;
}

QosFeature::QosFeature( const Kiln::Ptr< Tessel::TesselTcamGroupManager > & manager )
      : PolicedFeature( manager, Tessel::policyQosIpTcamGroup_, "QoS", "class" ),
        classIds_( manager ) {}

QosFeature::~QosFeature() {
   release();
}

std::string
QosFeature::itemText( U32 item ) const {
   const QosClass & c = items_.at( item );
   return "qos " + c.name + " (" + ipv4MatchText( c.match ) + ", priority " +
          std::to_string( c.priority ) +
          ( c.colour ? std::string( ", colour " ) + colourName( *c.colour ) : "" ) +
          ( c.rate ? ", " + c.rate->text() : "" ) + ")";
}

U32
QosFeature::policedItems() const {
   U32 policed = 0;
   for ( const QosClass & c : items_ ) {
      policed += c.rate ? 1 : 0;
   }
   return policed;
}

std::string
QosFeature::checkItems() const {
   std::vector< std::vector< U16 > > sets;
   for ( const QosClass & c : items_ ) {
      sets.push_back( c.match.dstPortSet );
   }
   std::string error = PolicedFeature::checkItems();
   return error.empty() ? FeatureClassIds::check( name(), sets ) : error;
}

void
QosFeature::releaseResources() {
   PolicedFeature::releaseResources();
   classIds_.release();
}

int
QosFeature::addActions( U32 unit, U32 entry, const QosClass & c, std::optional< U32 > policer ) {
   int e = int( entry );
   int rc = SDK_CALL_UNIT( unit, bcm_field_action_add( unit, e, bcmFieldActionPrioIntNew,
                                                       c.priority, 0 ) );
   if ( rc >= 0 && c.colour ) {
      rc = SDK_CALL_UNIT( unit, bcm_field_action_add( unit, e, bcmFieldActionDropPrecedence,
                                                      U32( *c.colour ), 0 ) );
   }
   if ( rc >= 0 && policer ) {
      rc = policers_.attach( entries_, unit, entry, *policer );
   }
   return rc;
}

std::vector< FeatureEntries::Spec >
QosFeature::specsOf( U32 unit, U32 item ) {
   const QosClass & c = items_[ item ];
   std::optional< U32 > policer;
   if ( c.rate ) {
      policer = policers_.policer( unit, item, *c.rate, false );
   }
   KeyResources resources;
   resources.dstPortClass = classIds_.block( unit, c.match.dstPortSet );
   return matchSpecs(
      c.match, item, "qos " + c.name,
      [ this, &c, policer ]( U32 u, U32 entry ) { return addActions( u, entry, c, policer ); },
      resources );
}

} // namespace Features
