// The pieces of the qualifier dump (TesselTcamQualifiers*.cpp). Internal.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "common/TesselSdkCall.h"
#include "sdk/api/field_qualify.h"
#include "show/TesselTcamShow.h"

// A qualifier getter, traced like every SDK call. "Never set" (not found)
// is the entry not using the qualifier; any other failure is reported on
// standard error and the qualifier is not printed.
#define QUALIFIER_GET( call )                                                      \
   ( { int qualifierRc_ = SDK_CALL_TEXT_( #call, call );                          \
       if ( qualifierRc_ < 0 && qualifierRc_ != BCM_E_NOT_FOUND ) {                \
          ::Tessel::sdkCallFatalReport( __FILE_NAME__, __LINE__, #call,            \
                                        qualifierRc_ );                            \
       }                                                                           \
       qualifierRc_; } )

namespace Tessel {

// Prints one qualifier's value under its name when the getter succeeded and
// the mask is not zero.
class QualifierPrinter {
 public:
   QualifierPrinter( std::ostream & out, std::string name )
         : out_( out ), name_( std::move( name ) ) {}

   void
   integer( int rc, U32 data, U32 mask ) {
      if ( rc >= 0 && mask ) {
         printIntData( out_, name_, data, mask );
      }
   }
   void
   ip( int rc, bcm_ip_t data, bcm_ip_t mask ) {
      if ( rc >= 0 && mask ) {
         printIpData( out_, name_, data, mask );
      }
   }
   void ip6( int rc, const bcm_ip6_t & data, const bcm_ip6_t & mask );
   void mac( int rc, const bcm_mac_t & data, const bcm_mac_t & mask );
   void pbmp( int rc, const bcm_pbmp_t & data, const bcm_pbmp_t & mask );
   void modulePort( int rc, int moduleData, int moduleMask, int portData, int portMask );
   void ranges( int rc, const std::vector< bcm_field_range_t > & ranges,
                const std::vector< int > & inverts, int count );
   // An enumeration: one value, no mask.
   void enumeration( int rc, const char * valueName );

 private:
   std::ostream & out_;
   std::string name_;
};

// Getters of one qualifier: reads it and prints it through the printer.
typedef void ( *QualifierGetter )( U32 unit, U32 entryId, QualifierPrinter & printer );

struct QualifierDump {
   int qualifier;  // the SDK's value of the qualifier
   QualifierGetter get;
};

// The qualifiers of each family, their values from the shim.
std::vector< QualifierDump > addressQualifierDumps();
std::vector< QualifierDump > integerQualifierDumps();

} // namespace Tessel
