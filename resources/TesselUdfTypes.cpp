// Text forms, bounds and counts of the UDF records.
#include "resources/TesselUdfTypes.h"

#include "platform/kiln/BoundedIndex.h"
#include "platform/kiln/ValueText.h"

namespace Tessel {

std::string
UdfUnitKey::valueText() const {
   return Kiln::ValueText( "Tessel::UdfUnitKey" ).field( "unit", unit ).field( "quals", quals ).str();
}

UdfUnitSpec::UdfUnitSpec( const UdfUnitKey & key, UdfOffsetBase base, U32 offset, U32 length,
                          U32 ethType, U32 ipProtocol, U32 refCount )
      : key_( key ), base_( base ), ethType_( ethType ), ipProtocol_( ipProtocol ),
        refCount_( refCount ) {
   checkLength( length );
   checkOffset( offset );
   offset_ = static_cast< U8 >( offset );
   length_ = static_cast< U8 >( length );
}

void
UdfUnitSpec::checkOffset( U32 offset ) {
   Kiln::checkBounds( offset, 0, offsetMax, "UdfUnitSpec::offset < 0 or > 127 not allowed" );
}

void
UdfUnitSpec::checkLength( U32 length ) {
   Kiln::checkBounds( length, lengthMin, lengthMax,
                      "UdfUnitSpec::length < 1 or > 16 not allowed" );
}

std::string
UdfUnitSpec::valueText() const {
   return Kiln::ValueText( "Tessel::UdfUnitSpec" )
      .field( "key", key_ )
      .field( "base", base_ )
      .field( "offset", offset_ )
      .field( "length", length_ )
      .field( "ethType", ethType_ )
      .field( "ipProtocol", ipProtocol_ )
      .field( "refCount", refCount_ )
      .str();
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

} // namespace Tessel
