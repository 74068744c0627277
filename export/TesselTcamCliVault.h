// The command line's shared-memory channel, agent side: the request
// message, the mounters that fill one table each, the units published, and
// CliVaultHelper, which makes, finds and removes mounters by name and unit.
//
// A mounter owns its table (a Vault::TableWriter at "<path>/<unit>") from
// cliVaultMounterFactory until doCleanup. Mount classes register their
// qualified name, record size and parent class with registerMountType; the
// factory makes the registered class and hands it its table.
//
// Everything here belongs to the agent's activity thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "common/TesselExport.h"
#include "export/TesselTcamVaultName.h"
#include "export/TesselTcamVaultRecords.h"
#include "platform/kiln/Attribute.h"
#include "platform/kiln/Collection.h"
#include "platform/kiln/Entity.h"
#include "platform/vault/VaultStore.h"
#include "platform/vault/VaultTable.h"

namespace TesselTcam {

class CliVaultMounter;

// A request and its answer. The requester fills unit, mounter and
// parameters (and a subclass's own attributes), then sets `request` last;
// the agent serves it and sets `response` to the same token.
class TESSEL_EXPORT CliVaultMessage : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< CliVaultMessage > {
    public:
      virtual void onParameters() {}
      virtual void onUnit() {}
      virtual void onMounter() {}
      virtual void onRequest() {}
      virtual void onResponse() {}
   };

   explicit CliVaultMessage( const Kiln::Name & name );
   ~CliVaultMessage() override;

   const Kiln::String & parameters() const { return parameters_.get(); }
   void
   parametersIs( const Kiln::String & v ) {
      attributeIs( parameters_, v, &NotifieeConst::onParameters );
   }
   U16 unit() const { return unit_.get(); }
   void unitIs( U16 v ) { attributeIs( unit_, v, &NotifieeConst::onUnit ); }
   // Counted while a request is pending; the server drops it when the
   // message goes back to idle.
   const Kiln::Ptr< CliVaultMounter > & mounter() const { return mounter_.get(); }
   void mounterIs( const Kiln::Ptr< CliVaultMounter > & v );
   U64 request() const { return request_.get(); }
   void requestIs( U64 v ) { attributeIs( request_, v, &NotifieeConst::onRequest ); }
   U64 response() const { return response_.get(); }
   void responseIs( U64 v ) { attributeIs( response_, v, &NotifieeConst::onResponse ); }

 private:
   Kiln::Attribute< Kiln::String > parameters_;
   Kiln::Attribute< U16 > unit_;
   Kiln::Attribute< Kiln::Ptr< CliVaultMounter > > mounter_;
   Kiln::Attribute< U64 > request_;
   Kiln::Attribute< U64 > response_;
};

// The base of every table mount: a unit, the table, and populateVault(),
// which subclasses implement to get their table filled.
class TESSEL_EXPORT CliVaultMounter : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< CliVaultMounter > {
    public:
      virtual void onUnit() {}
      virtual void onTable() {}
   };

   explicit CliVaultMounter( const Kiln::Name & name );
   ~CliVaultMounter() override;

   U16 unit() const { return unit_.get(); }
   void unitIs( U16 v ) { attributeIs( unit_, v, &NotifieeConst::onUnit ); }

   // Abstract: the base fails the assertion
   // false && "Call to abstract interface populateVault".
   virtual void populateVault();

   // The name the mount was made under; the entity keeps its own.
   const Kiln::Name & mountName() const { return mountName_; }
   void nameIsFromBackup( const Kiln::Name & name ) { mountName_ = name; }

   // The table, or null while the mount has none (before the factory
   // attached it, after cleanup). Writes are refused then.
   Vault::TableWriter * table() const { return table_.get(); }
   void tableIs( std::unique_ptr< Vault::TableWriter > table );
   // Removes the table from shared memory.
   void tableDel();

 protected:
   // Called after the table came or went.
   virtual void onTableChange() {}

 private:
   Kiln::Attribute< U16 > unit_;
   Kiln::Name mountName_;
   std::unique_ptr< Vault::TableWriter > table_;
};

// Units and a U16 value each (the module that carries the unit), mirrored
// into a table when one is attached (records VaultUnitInfo).
class TESSEL_EXPORT CliVaultUnits : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< CliVaultUnits > {
    public:
      virtual void onUnits( U16 ) {}
   };

   explicit CliVaultUnits( const Kiln::Name & name ) : Kiln::Entity( name ) {}

   U16 units( U16 unit ) const { return units_.get( unit ); }
   bool unitsHas( U16 unit ) const { return units_.has( unit ); }
   void unitsIs( U16 unit, U16 value );
   void unitsDel( U16 unit );
   void unitsDelAll();
   const Kiln::OrderedCollection< U16, U16 > & unitsCollection() const { return units_; }

   void tableIs( std::unique_ptr< Vault::TableWriter > table );
   Vault::TableWriter * table() const { return table_.get(); }

 private:
   void publish( U16 unit );
   Kiln::OrderedCollection< U16, U16 > units_;
   std::unique_ptr< Vault::TableWriter > table_;
};

// The mounter of one unit under one name.
class TESSEL_EXPORT CliVaultUnitCollection : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< CliVaultUnitCollection > {
    public:
      virtual void onCliVaultMounter() {}
   };
   explicit CliVaultUnitCollection( U16 unit );

   U16 unit() const { return unit_; }
   const Kiln::Ptr< CliVaultMounter > & cliVaultMounter() const { return mounter_.get(); }
   void
   cliVaultMounterIs( const Kiln::Ptr< CliVaultMounter > & v ) {
      attributeIs( mounter_, v, &NotifieeConst::onCliVaultMounter );
   }

 private:
   U16 unit_;
   Kiln::Attribute< Kiln::Ptr< CliVaultMounter > > mounter_;
};

// The mounters of one name, per unit.
class TESSEL_EXPORT CliVaultNamedCollection : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< CliVaultNamedCollection > {
    public:
      virtual void onCliVaultUnitData( U16 ) {}
   };
   explicit CliVaultNamedCollection( const Kiln::String & name ) : Kiln::Entity( name ) {}

   Kiln::Ptr< CliVaultUnitCollection >
   cliVaultUnitData( U16 unit ) const {
      return unitData_.get( unit );
   }
   bool cliVaultUnitDataHas( U16 unit ) const { return unitData_.has( unit ); }
   Kiln::Ptr< CliVaultUnitCollection >
   cliVaultUnitDataIs( U16 unit ) {
      return collectionEntityIs( unitData_, unit, &NotifieeConst::onCliVaultUnitData, unit );
   }
   void
   cliVaultUnitDataDel( U16 unit ) {
      collectionDel( unitData_, unit, &NotifieeConst::onCliVaultUnitData );
   }
   void
   cliVaultUnitDataDelAll() {
      collectionDelAll( unitData_, &NotifieeConst::onCliVaultUnitData );
   }
   const Kiln::OrderedCollection< U16, Kiln::Ptr< CliVaultUnitCollection > > &
   cliVaultUnitDataCollection() const {
      return unitData_;
   }

 private:
   Kiln::OrderedCollection< U16, Kiln::Ptr< CliVaultUnitCollection > > unitData_;
};

// A mount class the factory can make.
struct MountType {
   Kiln::String parentType;  // the class it derives from, as the factory is told
   U32 recordSize = 0;       // largest binary form of its records
   std::function< Kiln::Ptr< CliVaultMounter >( const Kiln::Name & ) > make;
};

// Makes `type` known to every helper of the process; a second registration
// of the same type replaces the first.
TESSEL_EXPORT void registerMountType( const Kiln::String & type, MountType mountType );
// The registered type, or null.
TESSEL_EXPORT const MountType * findMountType( const Kiln::String & type );

class TESSEL_EXPORT CliVaultHelper : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< CliVaultHelper > {
    public:
      virtual void onCliVaultNamedCollection( const Kiln::String & ) {}
   };

   // Tables are created in `store`, which must outlive the helper's tables
   // (the helper holds no reference to the tables' readers).
   CliVaultHelper( const Kiln::Name & name, Vault::Store & store );
   ~CliVaultHelper() override;

   // The mounter of `name` for `unit`, made on the first call: the
   // registered class `type` (which must have been registered with
   // `parentType`) with a table of `size` records at "<path>/<unit>". A
   // later call returns the same mounter. Null, traced, when the type is
   // unknown or has another parent, or the table cannot be created.
   Kiln::Ptr< CliVaultMounter > cliVaultMounterFactory( const Kiln::String & name, U16 unit,
                                                        const Kiln::String & path,
                                                        const Kiln::String & type, U32 size,
                                                        const Kiln::String & parentType );
   // The mounter, or null.
   Kiln::Ptr< CliVaultMounter > getCliVaultMounter( const Kiln::String & name, U16 unit ) const;
   // Removes the unit's table of `name` (at "<path>/<unit>") and its entry;
   // the named collection goes with its last unit.
   void doCleanup( const Kiln::String & name, U16 unit, const Kiln::String & path );

   Kiln::Ptr< CliVaultNamedCollection >
   cliVaultNamedCollection( const Kiln::String & name ) const {
      return named_.get( name );
   }
   bool cliVaultNamedCollectionHas( const Kiln::String & name ) const { return named_.has( name ); }
   Kiln::Ptr< CliVaultNamedCollection >
   cliVaultNamedCollectionIs( const Kiln::String & name ) {
      return collectionEntityIs( named_, name, &NotifieeConst::onCliVaultNamedCollection, name );
   }
   void
   cliVaultNamedCollectionDel( const Kiln::String & name ) {
      collectionDel( named_, name, &NotifieeConst::onCliVaultNamedCollection );
   }
   void
   cliVaultNamedCollectionDelAll() {
      collectionDelAll( named_, &NotifieeConst::onCliVaultNamedCollection );
   }
   const Kiln::OrderedCollection< Kiln::String, Kiln::Ptr< CliVaultNamedCollection > > &
   cliVaultNamedCollectionCollection() const {
      return named_;
   }

   // The units published for the command line ("cliVault/units").
   const Kiln::Ptr< CliVaultUnits > & cliVaultUnits() const { return units_; }
   Vault::Store & store() const { return store_; }

 private:
   Vault::Store & store_;
   Kiln::OrderedCollection< Kiln::String, Kiln::Ptr< CliVaultNamedCollection > > named_;
   Kiln::Ptr< CliVaultUnits > units_;
};

// The helper of an agent whose tables live in `store`, with its unit table
// created.
TESSEL_EXPORT Kiln::Ptr< CliVaultHelper > cliVaultHelperFactory( Vault::Store & store );
TESSEL_EXPORT Kiln::Ptr< CliVaultMessage > cliVaultMessageFactory();
TESSEL_EXPORT Kiln::Ptr< CliVaultUnits > cliVaultUnitsFactory();

} // namespace TesselTcam
