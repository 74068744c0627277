#include "examples/features/FeatureUdfs.h"

#include <cstdio>

#include "common/TesselSdkCall.h"
#include "platform/agent/AclTypes.h"
#include "sdk/api/field_qualify.h"

namespace Features {

using namespace Tessel;

std::string
UdfMatch::text() const {
   std::string hex;
   for ( U8 byte : bytes ) {
      char two[ 3 ];
      std::snprintf( two, sizeof( two ), "%02x", byte );
      hex += two;
   }
   return std::to_string( offset ) + ":0x" + hex;
}

FeatureUdfs::FeatureUdfs( const FeatureEntries & entries ) : entries_( entries ) {}

FeatureUdfs::~FeatureUdfs() {
   release();
}

const FeatureUdfs::Held *
FeatureUdfs::find( U32 unit, const UdfMatch & match ) const {
   for ( const Held & held : held_ ) {
      if ( held.unit == unit && held.offset == match.offset &&
           held.length == match.bytes.size() ) {
         return &held;
      }
   }
   return nullptr;
}

std::string
FeatureUdfs::take( const std::string & feature, const std::vector< UdfMatch > & matches ) {
   TesselUnboundedTcamEntryManager & manager = *entries_.entryManager();
   for ( U32 unit : entries_.groupManager()->units() ) {
      for ( const UdfMatch & match : matches ) {
         if ( find( unit, match ) ) {
            continue;
         }
         U8 length = U8( match.bytes.size() );
         QualIdList quals = manager.getAclUdf( unit, Acl::ipv4_, UdfUnitSpec::ethTypeNotSet,
                                               UdfBaseL3HeaderEnd, match.offset, length );
         std::string where = feature + ": udf=" + std::to_string( match.offset ) + " with " +
                             std::to_string( length ) + " bytes on unit " + std::to_string( unit );
         if ( quals.empty() ) {
            return where + ": the chip has no user-defined field left for it (or the group's "
                           "key no room)";
         }
         held_.push_back( Held{ unit, match.offset, length, quals } );
         if ( !manager.addUdfQualifierToGroupQset( unit, quals ) ) {
            return where + ": the group's key cannot take the field";
         }
      }
   }
   return "";
}

int
FeatureUdfs::qualify( U32 unit, U32 entry, const UdfMatch & match ) const {
   const Held * held = find( unit, match );
   if ( !held ) {
      return BCM_E_NOT_FOUND;
   }
   const Agent::ChipInfo * info = entries_.groupManager()->chipInfo( unit );
   bool udfIds = info && ( info->flexParser() || info->udfModule() );
   std::vector< U8 > mask( match.bytes.size(), 0xff );
   U16 length = U16( match.bytes.size() );
   int e = int( entry );
   for ( U32 qual : held->quals ) {
      int id = int( qual );
      int rc = udfIds ? SDK_CALL_UNIT( unit, bcm_field_qualify_udf( unit, e, id, length,
                                                                    match.bytes.data(), mask.data() ) )
                      : SDK_CALL_UNIT( unit, bcm_field_qualify_data( unit, e, id, match.bytes.data(),
                                                                     mask.data(), length ) );
      if ( rc < 0 ) {
         return rc;
      }
   }
   return 0;
}

void
FeatureUdfs::release() {
   while ( !held_.empty() ) {
      Held held = held_.back();
      held_.pop_back();
      entries_.entryManager()->releaseAclUdf( held.unit, Acl::ipv4_, UdfUnitSpec::ethTypeNotSet,
                                              UdfBaseL3HeaderEnd, held.offset, held.length );
   }
}

} // namespace Features
