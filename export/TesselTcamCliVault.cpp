// The command line's shared-memory channel: message, mounters, units and
// the helper that makes and removes mounters.
#include "export/TesselTcamCliVault.h"

#include <map>

#include "export/TesselTcamVaultTables.h"
#include "platform/fastlog/Trace.h"
#include "platform/kiln/Assert.h"

TRACE_CHANNEL( "TesselTcamCliVault" );

namespace TesselTcam {

CliVaultMessage::CliVaultMessage( const Kiln::Name & name ) : Kiln::Entity( name ) {}

CliVaultMessage::~CliVaultMessage() = default;

void
CliVaultMessage::mounterIs( const Kiln::Ptr< CliVaultMounter > & v ) {
   attributeIs( mounter_, v, &NotifieeConst::onMounter );
}

CliVaultMounter::CliVaultMounter( const Kiln::Name & name )
      : Kiln::Entity( name ), mountName_( name ) {}

CliVaultMounter::~CliVaultMounter() = default;

void
CliVaultMounter::populateVault() {
   KILN_ASSERT( false && "Call to abstract interface populateVault" );
}

void
CliVaultMounter::tableIs( std::unique_ptr< Vault::TableWriter > table ) {
   table_ = std::move( table );
   onTableChange();
   notify( &NotifieeConst::onTable );
}

void
CliVaultMounter::tableDel() {
   if ( !table_ ) {
      return;
   }
   table_.reset();
   onTableChange();
   notify( &NotifieeConst::onTable );
}

void
CliVaultUnits::unitsIs( U16 unit, U16 value ) {
   if ( collectionIs( units_, unit, value, &NotifieeConst::onUnits ) ) {
      publish( unit );
   }
}

void
CliVaultUnits::unitsDel( U16 unit ) {
   if ( collectionDel( units_, unit, &NotifieeConst::onUnits ) ) {
      publish( unit );
   }
}

void
CliVaultUnits::unitsDelAll() {
   for ( U16 unit : units_.keys() ) {
      unitsDel( unit );
   }
}

void
CliVaultUnits::tableIs( std::unique_ptr< Vault::TableWriter > table ) {
   table_ = std::move( table );
   for ( const auto & [ unit, value ] : units_ ) {
      publish( unit );
   }
}

void
CliVaultUnits::publish( U16 unit ) {
   if ( !table_ ) {
      return;
   }
   if ( !units_.has( unit ) ) {
      table_->remove( unit );
      return;
   }
   VaultUnitInfo record;
   record.key = unit;
   record.moduleId = units_.get( unit );
   U8 bytes[ VaultUnitInfo::recordSize ];
   record.serialize( bytes );
   table_->put( unit, bytes, record.serializeLen() );
}

CliVaultUnitCollection::CliVaultUnitCollection( U16 unit )
      : Kiln::Entity( "unit" + std::to_string( unit ) ), unit_( unit ) {}

namespace {

std::map< Kiln::String, MountType > &
mountTypes() {
   static std::map< Kiln::String, MountType > types;
   return types;
}

} // namespace

void
registerMountType( const Kiln::String & type, MountType mountType ) {
   mountTypes()[ type ] = std::move( mountType );
}

const MountType *
findMountType( const Kiln::String & type ) {
   auto found = mountTypes().find( type );
   return found == mountTypes().end() ? nullptr : &found->second;
}

CliVaultHelper::CliVaultHelper( const Kiln::Name & name, Vault::Store & store )
      : Kiln::Entity( name ), store_( store ), units_( cliVaultUnitsFactory() ) {}

// The tables go with their mounters; the units table with its entity.
CliVaultHelper::~CliVaultHelper() = default;

Kiln::Ptr< CliVaultMounter >
CliVaultHelper::getCliVaultMounter( const Kiln::String & name, U16 unit ) const {
   Kiln::Ptr< CliVaultNamedCollection > named = named_.get( name );
   if ( !named || !named->cliVaultUnitDataHas( unit ) ) {
      return nullptr;
   }
   return named->cliVaultUnitData( unit )->cliVaultMounter();
}

Kiln::Ptr< CliVaultMounter >
CliVaultHelper::cliVaultMounterFactory( const Kiln::String & name, U16 unit,
                                        const Kiln::String & path, const Kiln::String & type,
                                        U32 size, const Kiln::String & parentType ) {
   if ( Kiln::Ptr< CliVaultMounter > existing = getCliVaultMounter( name, unit ) ) {
      return existing;
   }
   const MountType * mountType = findMountType( type );
   if ( !mountType || mountType->parentType != parentType ) {
      TRACE2( "cliVaultMounterFactory: " << type << " is not a mount type derived from "
                                         << parentType );
      return nullptr;
   }
   std::string fullPath = Tessel::unitTablePathOf( path.str(), unit );
   Kiln::Ptr< CliVaultMounter > mounter = mountType->make( fullPath );
   if ( !mounter ) {
      return nullptr;
   }
   try {
      mounter->tableIs( std::make_unique< Vault::TableWriter >(
         store_.createTable( fullPath, mountType->recordSize, size ) ) );
   } catch ( const Vault::Error & e ) {
      TRACE2( "cliVaultMounterFactory: table " << fullPath << ": " << e.what() );
      return nullptr;
   }
   mounter->unitIs( unit );
   mounter->nameIsFromBackup( name.str() );
   cliVaultNamedCollectionIs( name )->cliVaultUnitDataIs( unit )->cliVaultMounterIs( mounter );
   TRACE8( "cliVaultMounterFactory " << name << " unit " << unit << " at " << fullPath );
   return mounter;
}

void
CliVaultHelper::doCleanup( const Kiln::String & name, U16 unit, const Kiln::String & path ) {
   Kiln::Ptr< CliVaultMounter > mounter = getCliVaultMounter( name, unit );
   if ( !mounter ) {
      return;
   }
   TRACE8( "doCleanup " << name << " unit " << unit << " at "
                        << Tessel::unitTablePathOf( path.str(), unit ) );
   mounter->tableDel();
   Kiln::Ptr< CliVaultNamedCollection > named = named_.get( name );
   named->cliVaultUnitDataDel( unit );
   if ( named->cliVaultUnitDataCollection().empty() ) {
      cliVaultNamedCollectionDel( name );
   }
}

Kiln::Ptr< CliVaultHelper >
cliVaultHelperFactory( Vault::Store & store ) {
   Kiln::Ptr< CliVaultHelper > helper = new CliVaultHelper( "cliVaultHelper", store );
   helper->cliVaultUnits()->tableIs( std::make_unique< Vault::TableWriter >(
      store.createTable( Tessel::unitTablePath, VaultUnitInfo::recordSize,
                         Tessel::unitTableCapacity ) ) );
   return helper;
}

Kiln::Ptr< CliVaultMessage >
cliVaultMessageFactory() {
   return new CliVaultMessage( "cliVaultMessage" );
}

Kiln::Ptr< CliVaultUnits >
cliVaultUnitsFactory() {
   return new CliVaultUnits( "cliVaultUnits" );
}

} // namespace TesselTcam
