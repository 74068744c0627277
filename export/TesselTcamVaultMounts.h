// The TCAM tables of the command line: the request entity, the two mounter
// bases and one mount class per table (see TesselTcamVaultTables.h for
// names, paths and capacities).
//
//   CliVaultMounter
//   |- GroupManagerStaticVaultMounter   filled when the unit becomes known
//   |  |- VaultStagesMount, VaultStageNamesMount, VaultQualifierNamesMount,
//   |  |  VaultGroupNamesMount
//   |- GroupManagerVaultMounter         filled on request, per stage and pipe
//      |- VaultGroupsMount, VaultFeaturesMount, VaultFeatureNamesMount,
//         VaultEntryGroupsMount, VaultEntryFeaturesMount, VaultEntryNamesMount,
//         VaultEntriesMount, VaultGroupQualifersMount, VaultSlicesMount
//
// Each mount's attribute is its table, named after its record: for the
// groups table vaultGroupInfoIs( record ) (insert or overwrite, then
// notify), vaultGroupInfoDel( key ), vaultGroupInfoDelAll(),
// vaultGroupInfoCommit( record ) (write without notifying),
// vaultGroupInfo( key ), and the notifications vaultGroupInfoNotify( key ),
// vaultGroupInfoNotifyCollection(), vaultGroupInfoNotifyMountStatus(). All
// writes are refused (false, nothing written) while the mount has no table.
#pragma once

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include "export/TesselTcamCliVault.h"
#include "export/TesselTcamVaultTables.h"

namespace Tessel {

// The group manager's request entity: a CliVaultMessage that also names the
// table kind, the stage and the pipe.
class TESSEL_EXPORT GroupManagerVaultRequest : public TesselTcam::CliVaultMessage {
 public:
   class NotifieeConst : public TesselTcam::CliVaultMessage::NotifieeConst {
    public:
      virtual void onType() {}
      virtual void onStageId() {}
      virtual void onPipeId() {}
   };
   explicit GroupManagerVaultRequest( const Kiln::Name & name )
         : TesselTcam::CliVaultMessage( name ) {}

   TcamGroupManagerVaultTypes type() const { return type_.get(); }
   void typeIs( TcamGroupManagerVaultTypes v ) { attributeIs( type_, v, &NotifieeConst::onType ); }
   U16 stageId() const { return stageId_.get(); }
   void stageIdIs( U16 v ) { attributeIs( stageId_, v, &NotifieeConst::onStageId ); }
   U16 pipeId() const { return pipeId_.get(); }
   void pipeIdIs( U16 v ) { attributeIs( pipeId_, v, &NotifieeConst::onPipeId ); }

 private:
   Kiln::Attribute< TcamGroupManagerVaultTypes > type_{ vaultTypeNone };
   Kiln::Attribute< U16 > stageId_;
   Kiln::Attribute< U16 > pipeId_;
};

// Tables filled on request: populateVault() fills the request entity and
// sets its `request` last, which wakes the group manager's state machine.
class TESSEL_EXPORT GroupManagerVaultMounter : public TesselTcam::CliVaultMounter {
 public:
   class NotifieeConst : public TesselTcam::CliVaultMounter::NotifieeConst {
    public:
      virtual void onCliVaultMessage() {}
      virtual void onStageId() {}
      virtual void onPipeId() {}
      virtual void onCallerType() {}
   };
   explicit GroupManagerVaultMounter( const Kiln::Name & name )
         : TesselTcam::CliVaultMounter( name ) {}

   const Kiln::Ptr< GroupManagerVaultRequest > &
   cliVaultMessage() const {
      return cliVaultMessage_.get();
   }
   void
   cliVaultMessageIs( const Kiln::Ptr< GroupManagerVaultRequest > & v ) {
      attributeIs( cliVaultMessage_, v, &NotifieeConst::onCliVaultMessage );
   }
   U16 stageId() const { return stageId_.get(); }
   void stageIdIs( U16 v ) { attributeIs( stageId_, v, &NotifieeConst::onStageId ); }
   U16 pipeId() const { return pipeId_.get(); }
   void pipeIdIs( U16 v ) { attributeIs( pipeId_, v, &NotifieeConst::onPipeId ); }
   TcamGroupManagerVaultTypes callerType() const { return callerType_.get(); }
   void
   callerTypeIs( TcamGroupManagerVaultTypes v ) {
      attributeIs( callerType_, v, &NotifieeConst::onCallerType );
   }

   // Fills the request (unit, mounter, parameters, pipe, type, stage) and
   // sets `request` to this mounter's identity, sign-extended to 64 bits.
   // Needs cliVaultMessage().
   void populateVault() override;
   // The token populateVault() writes.
   U64 requestToken() const;

 private:
   Kiln::Attribute< Kiln::Ptr< GroupManagerVaultRequest > > cliVaultMessage_;
   Kiln::Attribute< U16 > stageId_;
   Kiln::Attribute< U16 > pipeId_;
   Kiln::Attribute< TcamGroupManagerVaultTypes > callerType_{ vaultTypeNone };
};

// Tables that depend on no stage or pipe; they are filled when their unit
// becomes known, so populateVault() only traces.
class TESSEL_EXPORT GroupManagerStaticVaultMounter : public TesselTcam::CliVaultMounter {
 public:
   explicit GroupManagerStaticVaultMounter( const Kiln::Name & name )
         : TesselTcam::CliVaultMounter( name ) {}
   void populateVault() override;
};

inline Id keyOf( const TesselTcam::VaultName & r ) { return r.key(); }
inline Id keyOf( const VaultEntryInfo & r ) { return r.key(); }
template< typename R >
Id
keyOf( const R & r ) {
   return r.key;
}

// A mount whose table holds Record; the named members of each class below
// are one-liners over these.
template< typename Record, typename Parent >
class VaultMount : public Parent {
 public:
   class NotifieeConst : public Parent::NotifieeConst {
    public:
      virtual void onRecord( Id ) {}
      virtual void onRecordCollection() {}
      virtual void onRecordMountStatus() {}
   };
   typedef Record RecordType;
   using Parent::Parent;

   // Writes the record (insert or overwrite) and notifies; false without a
   // table.
   bool
   recordIs( const Record & record ) {
      if ( !recordCommit( &record ) ) {
         return false;
      }
      recordNotify( keyOf( record ) );
      return true;
   }
   // Writes the record without notifying; false without a table.
   bool
   recordCommit( const Record * record ) {
      Vault::TableWriter * table = this->table();
      if ( !table || !record ) {
         return false;
      }
      std::array< U8, Record::recordSize > bytes;
      record->serialize( bytes.data() );
      table->put( keyOf( *record ).value, bytes.data(), record->serializeLen() );
      return true;
   }
   // Rows for the next stagedRowsCommit(), emptied by it (also when it
   // throws); one dump at a time stages them. The vector keeps
   // its memory, so refilling a table of the same size allocates nothing.
   std::vector< Record > & stagedRows() { return staged_; }
   // Makes the table hold exactly the staged rows, in their order, in one
   // change that writes only what differs (Vault::TableWriter::Rewrite);
   // notifies the collection when something changed. Returns whether
   // something did; false without a table.
   bool
   stagedRowsCommit() {
      struct Unstage {
         std::vector< Record > & rows;
         ~Unstage() { rows.clear(); }
      } unstage{ staged_ };
      Vault::TableWriter * table = this->table();
      bool changed = false;
      if ( table ) {
         Vault::TableWriter::Rewrite rewrite( *table );
         std::array< U8, Record::recordSize > bytes;
         for ( const Record & record : staged_ ) {
            record.serialize( bytes.data() );
            rewrite.put( keyOf( record ).value, bytes.data(), record.serializeLen() );
         }
         rewrite.commit();
         changed = rewrite.changed();
      }
      if ( changed ) {
         recordNotifyCollection();
      }
      return changed;
   }
   bool
   recordDel( Id key ) {
      Vault::TableWriter * table = this->table();
      if ( !table || !table->remove( key.value ) ) {
         return false;
      }
      recordNotify( key );
      return true;
   }
   void
   recordDelAll() {
      if ( Vault::TableWriter * table = this->table() ) {
         table->clear();
         recordNotifyCollection();
      }
   }
   // The stored record, or nothing (no table, no such key, or bytes that
   // are not a record).
   std::optional< Record >
   record( Id key ) const {
      Vault::TableWriter * table = this->table();
      std::optional< Vault::Record > stored = table ? table->find( key.value ) : std::nullopt;
      Record out;
      if ( !stored || !Record::deserialize( stored->data, stored->length, out ) ) {
         return std::nullopt;
      }
      return out;
   }
   // Every key in the table, ascending.
   std::vector< Id >
   recordKeys() const {
      std::vector< Id > keys;
      if ( Vault::TableWriter * table = this->table() ) {
         for ( U32 key : table->keys() ) {
            keys.push_back( key );
         }
      }
      std::sort( keys.begin(), keys.end() );
      return keys;
   }
   void recordNotify( Id key ) { this->notify( &NotifieeConst::onRecord, key ); }
   void recordNotifyCollection() { this->notify( &NotifieeConst::onRecordCollection ); }
   void recordNotifyMountStatus() { this->notify( &NotifieeConst::onRecordMountStatus ); }

 protected:
   void onTableChange() override { recordNotifyMountStatus(); }

 private:
   std::vector< Record > staged_;
};

class TESSEL_EXPORT VaultStagesMount : public VaultMount< VaultStageInfo,
                                                          GroupManagerStaticVaultMounter > {
 public:
   using VaultMount::VaultMount;
   bool vaultStageInfoIs( const VaultStageInfo & r ) { return recordIs( r ); }
   bool vaultStageInfoCommit( const VaultStageInfo * r ) { return recordCommit( r ); }
   bool vaultStageInfoDel( Id k ) { return recordDel( k ); }
   void vaultStageInfoDelAll() { recordDelAll(); }
   std::optional< VaultStageInfo > vaultStageInfo( Id k ) const { return record( k ); }
   void vaultStageInfoNotify( Id k ) { recordNotify( k ); }
   void vaultStageInfoNotifyCollection() { recordNotifyCollection(); }
   void vaultStageInfoNotifyMountStatus() { recordNotifyMountStatus(); }
};

// The three name tables of the static kind share their members' names.
template< typename Parent >
class VaultNameMount : public VaultMount< TesselTcam::VaultName, Parent > {
 public:
   typedef VaultMount< TesselTcam::VaultName, Parent > Base;
   using Base::Base;
   bool vaultNameIs( const TesselTcam::VaultName & r ) { return this->recordIs( r ); }
   bool vaultNameCommit( const TesselTcam::VaultName * r ) { return this->recordCommit( r ); }
   bool vaultNameDel( Id k ) { return this->recordDel( k ); }
   void vaultNameDelAll() { this->recordDelAll(); }
   std::optional< TesselTcam::VaultName > vaultName( Id k ) const { return this->record( k ); }
   void vaultNameNotify( Id k ) { this->recordNotify( k ); }
   void vaultNameNotifyCollection() { this->recordNotifyCollection(); }
   void vaultNameNotifyMountStatus() { this->recordNotifyMountStatus(); }
};

class TESSEL_EXPORT VaultStageNamesMount
      : public VaultNameMount< GroupManagerStaticVaultMounter > {
 public:
   using VaultNameMount::VaultNameMount;
};

class TESSEL_EXPORT VaultQualifierNamesMount
      : public VaultNameMount< GroupManagerStaticVaultMounter > {
 public:
   using VaultNameMount::VaultNameMount;
};

class TESSEL_EXPORT VaultGroupNamesMount
      : public VaultNameMount< GroupManagerStaticVaultMounter > {
 public:
   using VaultNameMount::VaultNameMount;
};

class TESSEL_EXPORT VaultFeatureNamesMount : public VaultNameMount< GroupManagerVaultMounter > {
 public:
   using VaultNameMount::VaultNameMount;
};

class TESSEL_EXPORT VaultEntryNamesMount : public VaultNameMount< GroupManagerVaultMounter > {
 public:
   using VaultNameMount::VaultNameMount;
};

class TESSEL_EXPORT VaultGroupsMount : public VaultMount< VaultGroupInfo,
                                                          GroupManagerVaultMounter > {
 public:
   using VaultMount::VaultMount;
   bool vaultGroupInfoIs( const VaultGroupInfo & r ) { return recordIs( r ); }
   bool vaultGroupInfoCommit( const VaultGroupInfo * r ) { return recordCommit( r ); }
   bool vaultGroupInfoDel( Id k ) { return recordDel( k ); }
   void vaultGroupInfoDelAll() { recordDelAll(); }
   std::optional< VaultGroupInfo > vaultGroupInfo( Id k ) const { return record( k ); }
   void vaultGroupInfoNotify( Id k ) { recordNotify( k ); }
   void vaultGroupInfoNotifyCollection() { recordNotifyCollection(); }
   void vaultGroupInfoNotifyMountStatus() { recordNotifyMountStatus(); }
};

class TESSEL_EXPORT VaultFeaturesMount : public VaultMount< VaultFeatureInfo,
                                                            GroupManagerVaultMounter > {
 public:
   using VaultMount::VaultMount;
   bool vaultFeatureInfoIs( const VaultFeatureInfo & r ) { return recordIs( r ); }
   bool vaultFeatureInfoCommit( const VaultFeatureInfo * r ) { return recordCommit( r ); }
   bool vaultFeatureInfoDel( Id k ) { return recordDel( k ); }
   void vaultFeatureInfoDelAll() { recordDelAll(); }
   std::optional< VaultFeatureInfo > vaultFeatureInfo( Id k ) const { return record( k ); }
   void vaultFeatureInfoNotify( Id k ) { recordNotify( k ); }
   void vaultFeatureInfoNotifyCollection() { recordNotifyCollection(); }
   void vaultFeatureInfoNotifyMountStatus() { recordNotifyMountStatus(); }
};

class TESSEL_EXPORT VaultEntryGroupsMount : public VaultMount< VaultEntryGroupInfo,
                                                               GroupManagerVaultMounter > {
 public:
   using VaultMount::VaultMount;
   bool vaultEntryGroupInfoIs( const VaultEntryGroupInfo & r ) { return recordIs( r ); }
   bool vaultEntryGroupInfoCommit( const VaultEntryGroupInfo * r ) { return recordCommit( r ); }
   bool vaultEntryGroupInfoDel( Id k ) { return recordDel( k ); }
   void vaultEntryGroupInfoDelAll() { recordDelAll(); }
   std::optional< VaultEntryGroupInfo > vaultEntryGroupInfo( Id k ) const { return record( k ); }
   void vaultEntryGroupInfoNotify( Id k ) { recordNotify( k ); }
   void vaultEntryGroupInfoNotifyCollection() { recordNotifyCollection(); }
   void vaultEntryGroupInfoNotifyMountStatus() { recordNotifyMountStatus(); }
};

class TESSEL_EXPORT VaultEntryFeaturesMount : public VaultMount< VaultEntryFeatureInfo,
                                                                 GroupManagerVaultMounter > {
 public:
   using VaultMount::VaultMount;
   bool vaultEntryFeatureInfoIs( const VaultEntryFeatureInfo & r ) { return recordIs( r ); }
   bool
   vaultEntryFeatureInfoCommit( const VaultEntryFeatureInfo * r ) {
      return recordCommit( r );
   }
   bool vaultEntryFeatureInfoDel( Id k ) { return recordDel( k ); }
   void vaultEntryFeatureInfoDelAll() { recordDelAll(); }
   std::optional< VaultEntryFeatureInfo >
   vaultEntryFeatureInfo( Id k ) const {
      return record( k );
   }
   void vaultEntryFeatureInfoNotify( Id k ) { recordNotify( k ); }
   void vaultEntryFeatureInfoNotifyCollection() { recordNotifyCollection(); }
   void vaultEntryFeatureInfoNotifyMountStatus() { recordNotifyMountStatus(); }
};

class TESSEL_EXPORT VaultEntriesMount : public VaultMount< VaultEntryInfo,
                                                           GroupManagerVaultMounter > {
 public:
   using VaultMount::VaultMount;
   bool vaultEntryInfoIs( const VaultEntryInfo & r ) { return recordIs( r ); }
   bool vaultEntryInfoCommit( const VaultEntryInfo * r ) { return recordCommit( r ); }
   bool vaultEntryInfoDel( Id k ) { return recordDel( k ); }
   void vaultEntryInfoDelAll() { recordDelAll(); }
   std::optional< VaultEntryInfo > vaultEntryInfo( Id k ) const { return record( k ); }
   void vaultEntryInfoNotify( Id k ) { recordNotify( k ); }
   void vaultEntryInfoNotifyCollection() { recordNotifyCollection(); }
   void vaultEntryInfoNotifyMountStatus() { recordNotifyMountStatus(); }
};

class TESSEL_EXPORT VaultGroupQualifersMount : public VaultMount< VaultGroupQualiferInfo,
                                                                  GroupManagerVaultMounter > {
 public:
   using VaultMount::VaultMount;
   bool vaultGroupQualiferInfoIs( const VaultGroupQualiferInfo & r ) { return recordIs( r ); }
   bool
   vaultGroupQualiferInfoCommit( const VaultGroupQualiferInfo * r ) {
      return recordCommit( r );
   }
   bool vaultGroupQualiferInfoDel( Id k ) { return recordDel( k ); }
   void vaultGroupQualiferInfoDelAll() { recordDelAll(); }
   std::optional< VaultGroupQualiferInfo >
   vaultGroupQualiferInfo( Id k ) const {
      return record( k );
   }
   void vaultGroupQualiferInfoNotify( Id k ) { recordNotify( k ); }
   void vaultGroupQualiferInfoNotifyCollection() { recordNotifyCollection(); }
   void vaultGroupQualiferInfoNotifyMountStatus() { recordNotifyMountStatus(); }
};

class TESSEL_EXPORT VaultSlicesMount : public VaultMount< VaultSliceInfo,
                                                          GroupManagerVaultMounter > {
 public:
   using VaultMount::VaultMount;
   bool vaultSliceInfoIs( const VaultSliceInfo & r ) { return recordIs( r ); }
   bool vaultSliceInfoCommit( const VaultSliceInfo * r ) { return recordCommit( r ); }
   bool vaultSliceInfoDel( Id k ) { return recordDel( k ); }
   void vaultSliceInfoDelAll() { recordDelAll(); }
   std::optional< VaultSliceInfo > vaultSliceInfo( Id k ) const { return record( k ); }
   void vaultSliceInfoNotify( Id k ) { recordNotify( k ); }
   void vaultSliceInfoNotifyCollection() { recordNotifyCollection(); }
   void vaultSliceInfoNotifyMountStatus() { recordNotifyMountStatus(); }
};

// Registers every mount class above with the channel's factory; done once
// when the library loads, and harmless to repeat.
TESSEL_EXPORT void registerGroupManagerMountTypes();

} // namespace Tessel
