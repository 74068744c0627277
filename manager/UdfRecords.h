// Records of the user-defined-field collections (ipAclUdf ... groupIdToAclUdf,
// pktFmtIdToUdfId). Keys and the qualifier lists are final; the UDF
// operations fill in the rest. GroupUdfQual is complete because group
// initialisation and teardown read it: the qualifiers a group adds to its
// key on each unit.
#pragma once

#include <compare>
#include <set>
#include <string>

#include "common/TesselExport.h"
#include "platform/kiln/Collection.h"
#include "platform/kiln/Entity.h"
#include "platform/kiln/Types.h"

namespace Tessel {

typedef S32 PktFmtId; // an SDK packet-format id (UDF module)

// SDK qualifier ids that together implement one field; empty means none.
typedef std::set< U32 > QualIdList;
// SDK UDF ids (UDF module).
typedef std::set< U32 > UdfIdList;

// A field on a unit: the unit and the qualifiers that implement it.
struct UdfUnitKey {
   U32 unit = 0;
   QualIdList quals;

   auto operator<=>( const UdfUnitKey & ) const = default;
   // "Value('Tessel::UdfUnitKey', ** {'unit': 0, 'quals': [3, 4]})"
   TESSEL_EXPORT std::string valueText() const;
};

// A field as features describe it, with its users.
struct UdfUnitSpec {
   UdfUnitKey key;
   U32 base = 0;   // UdfOffsetBase
   U8 offset = 0;
   U8 length = 0;
   U32 ethType = 0xFFFFFFFF;
   U32 ipProtocol = 0;
   U32 refCount = 0;

   bool operator==( const UdfUnitSpec & ) const = default;
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
