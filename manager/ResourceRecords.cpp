// Value texts and constructors of the resource records (class ids, UDFs)
// and of the group manager's companions.

#include "manager/ClassIdRecords.h"
#include "manager/TesselTcamCompanions.h"
#include "manager/UdfRecords.h"
#include "platform/kiln/ValueText.h"

namespace Tessel {

std::string
TesselCompressionClassKey::valueText() const {
   return Kiln::ValueText( "Tessel::TesselCompressionClassKey" )
      .field( "classId", classId )
      .field( "unit", unit )
      .str();
}

std::string
UdfUnitKey::valueText() const {
   return Kiln::ValueText( "Tessel::UdfUnitKey" ).field( "unit", unit ).field( "quals", quals ).str();
}

GroupUdfQual::GroupUdfQual( U32 groupId )
      : Kiln::Entity( "groupUdfQual" + std::to_string( groupId ) ), groupId_( groupId ) {}

QualIdList
GroupUdfQual::qualsOfUnit( U32 unit ) const {
   QualIdList quals;
   for ( const auto & [ key, count ] : udfQualId_ ) {
      if ( key.unit == unit ) {
         quals.insert( key.quals.begin(), key.quals.end() );
      }
   }
   return quals;
}

QualPreselDataList::QualPreselDataList( U32 id )
      : Kiln::Entity( "excludedQual" + std::to_string( id ) ), id_( id ) {}

} // namespace Tessel
