// StatTypes: the counters an entry asks for, as the SDK's stat types in the
// order of its counter list (position 0, 1, ...). The default an entry gets
// is packets then bytes.
#pragma once

#include "common/TesselExport.h"
#include "platform/kiln/Collection.h"
#include "platform/kiln/Entity.h"
#include "platform/kiln/Ptr.h"
#include "platform/kiln/Types.h"

namespace Tessel {

class TESSEL_EXPORT StatTypes : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< StatTypes > {
    public:
      virtual void onType( U32 ) {}
   };

   explicit StatTypes( const Kiln::Name & name ) : Kiln::Entity( name ) {}

   // The SDK stat type at `position`.
   U32 type( U32 position ) const { return type_.get( position ); }
   bool typeHas( U32 position ) const { return type_.has( position ); }
   void
   typeIs( U32 position, U32 statType ) {
      collectionIs( type_, position, statType, &NotifieeConst::onType );
   }
   void typeDel( U32 position ) { collectionDel( type_, position, &NotifieeConst::onType ); }
   void typeDelAll() { collectionDelAll( type_, &NotifieeConst::onType ); }
   const Kiln::OrderedCollection< U32, U32 > &
   typeCollection() const {
      return type_;
   }

   // A fresh list holding the SDK's packet type at 0 and its byte type at
   // 1 (from the shim, which must be installed).
   static Kiln::Ptr< StatTypes > packetsAndBytes();

 private:
   Kiln::OrderedCollection< U32, U32 > type_;
};

// The packets-and-bytes list getEntry gives entries, made once; not to be
// changed.
const Kiln::Ptr< StatTypes > & defaultStatTypes();

} // namespace Tessel
