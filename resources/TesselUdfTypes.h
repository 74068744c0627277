// Value types of user-defined fields (UDF): the qualifier lists that
// implement a field, the field as features describe it (UdfUnitSpec, kept in
// ipAclUdf ... openFlowVxlanAclUdf), and the per-group use counts
// (GroupUdfQual, kept in groupIdToAclUdf and its OpenFlow twins), which
// group initialisation and teardown read: the qualifiers a group adds to
// its key on each unit.
#pragma once

#include <compare>
#include <ostream>
#include <set>
#include <string>

#include "common/TesselExport.h"
#include "platform/kiln/Collection.h"
#include "platform/kiln/Entity.h"
#include "platform/kiln/EnumInstance.h"
#include "platform/kiln/Types.h"

namespace Tessel {

typedef S32 PktFmtId; // an SDK packet-format id (UDF module)

// SDK qualifier ids that together implement one field (a data qualifier, a
// UDF object, or the flex-parser chunk ids of every packet format the field
// is programmed on); empty means none.
typedef std::set< U32 > QualIdList;
// SDK UDF ids (UDF module).
typedef std::set< U32 > UdfIdList;

// Where a field's offset counts from.
enum UdfOffsetBase : U32 {
   UdfBasePacketStart = 0,
   UdfBaseL2HeaderStart = 1,
   UdfBaseL2HeaderEnd = 2,
   UdfBaseL3HeaderStart = 3,
   UdfBaseL3HeaderEnd = 4,
};

struct UdfOffsetBaseNames {
   typedef UdfOffsetBase Enum;
   static constexpr const char * typeName = "Tessel::UdfOffsetBase";
   static constexpr Kiln::EnumName< UdfOffsetBase > names[] = {
      { UdfBasePacketStart, "UdfBasePacketStart" },
      { UdfBaseL2HeaderStart, "UdfBaseL2HeaderStart" },
      { UdfBaseL2HeaderEnd, "UdfBaseL2HeaderEnd" },
      { UdfBaseL3HeaderStart, "UdfBaseL3HeaderStart" },
      { UdfBaseL3HeaderEnd, "UdfBaseL3HeaderEnd" },
   };
};
typedef Kiln::EnumInstance< UdfOffsetBaseNames > UdfOffsetBaseInstance;

inline std::ostream &
operator<<( std::ostream & os, UdfOffsetBase v ) {
   return os << UdfOffsetBaseInstance::valueToStrep( v );
}

// A field on a unit: the unit and the qualifiers that implement it.
struct UdfUnitKey {
   U32 unit = 0;
   QualIdList quals;

   auto operator<=>( const UdfUnitKey & ) const = default;
   // "Value('Tessel::UdfUnitKey', ** {'unit': 0, 'quals': [3, 4]})"
   TESSEL_EXPORT std::string valueText() const;
};

// A field as features describe it, with its users. A default-made spec is
// "none" (no qualifiers) and tests false.
class TESSEL_EXPORT UdfUnitSpec {
 public:
   static constexpr U32 ethTypeNotSet = 0xFFFFFFFF;
   static constexpr U32 lengthMin = 1;
   static constexpr U32 lengthMax = 16;
   static constexpr U32 offsetMax = 127;

   UdfUnitSpec() = default;
   // Throws Kiln::RangeException "UdfUnitSpec::length < 1 or > 16 not
   // allowed" or "UdfUnitSpec::offset < 0 or > 127 not allowed".
   UdfUnitSpec( const UdfUnitKey & key, UdfOffsetBase base, U32 offset, U32 length,
                U32 ethType, U32 ipProtocol, U32 refCount );

   const UdfUnitKey & key() const { return key_; }
   UdfOffsetBase base() const { return base_; }
   U8 offset() const { return offset_; } // from the base, after adjustOffset
   U8 length() const { return length_; } // bytes
   U32 ethType() const { return ethType_; }
   U32 ipProtocol() const { return ipProtocol_; }
   U32 refCount() const { return refCount_; }
   void refCountIs( U32 v ) { refCount_ = v; }

   // Checked like the constructor.
   static void checkOffset( U32 offset );
   static void checkLength( U32 length );

   explicit operator bool() const { return !key_.quals.empty(); }
   bool operator==( const UdfUnitSpec & ) const = default;
   // "Value('Tessel::UdfUnitSpec', ** {'key': ..., 'base': 4, 'offset': 24,
   //  'length': 2, 'ethType': 4294967295, 'ipProtocol': 0, 'refCount': 1})"
   std::string valueText() const;

 private:
   UdfUnitKey key_;
   UdfOffsetBase base_ = UdfBasePacketStart;
   U8 offset_ = 0;
   U8 length_ = 0;
   U32 ethType_ = ethTypeNotSet;
   U32 ipProtocol_ = 0;
   U32 refCount_ = 0;
};

// The fields one group's key holds, with their use counts in the group.
class TESSEL_EXPORT GroupUdfQual : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< GroupUdfQual > {
    public:
      virtual void onUdfQualId( const UdfUnitKey & ) {}
   };

   explicit GroupUdfQual( U32 groupId );

   U32 groupId() const { return groupId_; }

   U32 udfQualId( const UdfUnitKey & k ) const { return udfQualId_.get( k ); }
   bool udfQualIdHas( const UdfUnitKey & k ) const { return udfQualId_.has( k ); }
   void
   udfQualIdIs( const UdfUnitKey & k, U32 n ) {
      collectionIs( udfQualId_, k, n, &NotifieeConst::onUdfQualId );
   }
   U32
   udfQualIdInc( const UdfUnitKey & k, S32 delta ) {
      return collectionInc( udfQualId_, k, delta, &NotifieeConst::onUdfQualId );
   }
   void
   udfQualIdDec( const UdfUnitKey & k ) {
      udfQualIdInc( k, -1 );
   }
   void
   udfQualIdDel( const UdfUnitKey & k ) {
      collectionDel( udfQualId_, k, &NotifieeConst::onUdfQualId );
   }
   void
   udfQualIdDelAll() {
      collectionDelAll( udfQualId_, &NotifieeConst::onUdfQualId );
   }
   const Kiln::OrderedCollection< UdfUnitKey, U32 > &
   udfQualIdCollection() const {
      return udfQualId_;
   }
   // The qualifier ids of every field the group holds on the unit.
   QualIdList qualsOfUnit( U32 unit ) const;

 private:
   U32 groupId_;
   Kiln::OrderedCollection< UdfUnitKey, U32 > udfQualId_;
};

} // namespace Tessel
