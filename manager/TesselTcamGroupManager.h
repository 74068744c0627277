// TesselTcamGroupManager: the one owner of the field-processor TCAM of every
// unit of the box. It holds the catalogue groups as SDK groups per unit
// (created on first use, counted per user, destroyed with the last), the
// entry managers of the feature reservations, and the collections of the
// shared classification resources (class ids, range checkers, UDFs).
//
// Life cycle (the agent drives it, on the activity thread):
//   1. construction by name: collections empty, sharing flags false;
//   2. the agent sets attributes: aclParamConfig (the sharing and key-width
//      settings are copied from it and kept current), platform objects;
//   3. handlePreInit(): the command line's request channel;
//   4. handleInitialized(): catalogue, per-chip qualifier indexes;
//   5. modChipInfoIs( module, info ) per module: its units become known and
//      are set up (pipes, reservations' entry managers, compression groups);
//      modChipInfoDel( module ) forgets them again, destroying their groups;
//   6. features: entryManagerIs / unboundedEntryManagerIs, then entries
//      through the entry manager, which calls initializeGroup and
//      uninitializeGroup around its use of a group on a unit.
//
// Locking: everything runs with the activity lock held; every SDK call
// releases it for its duration (common/TesselSdkCall.h), so state read
// before a call is looked up again after it.
//
// Naming follows platform/kiln/Entity.h: attribute foo() / fooIs( v );
// collection bar( k ), barIs( k, v ) (entity collections: barIs( k )
// returns the record, making it first), barDel( k ), barDelAll(),
// barHas( k ), barCollection() for iteration; observers get onFoo() and
// onBar( k ). The operations are split by topic over the source files named
// in the section headings.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

#include "catalogue/GroupQsetModKey.h"
#include "catalogue/TcamAllocationStrategy.h"
#include "catalogue/TcamGroupAssignment.h"
#include "catalogue/TcamGroupId.h"
#include "catalogue/TcamStageTypes.h"
#include "catalogue/TesselTcamGroups.h"
#include "common/TesselExport.h"
#include "export/GroupManagerVaultSm.h"
#include "export/TesselTcamCliVault.h"
#include "export/TesselTcamVaultMounts.h"
#include "manager/GroupCounts.h"
#include "manager/TesselOvidWarSm.h"
#include "manager/TesselTcamCompanions.h"
#include "manager/TesselTcamEntryManager.h"
#include "manager/TesselTcamKeys.h"
#include "platform/agent/AclParamConfig.h"
#include "platform/agent/AclTypes.h"
#include "platform/agent/ChipInfo.h"
#include "platform/agent/PlatformState.h"
#include "platform/agent/VlanState.h"
#include "platform/agent/TesselCommonSmData.h"
#include "platform/kiln/Attribute.h"
#include "platform/kiln/Collection.h"
#include "platform/kiln/Entity.h"
#include "platform/kiln/FlatHashCollection.h"
#include "resources/TesselClassIdTypes.h"
#include "resources/TesselRangeCheckerTypes.h"
#include "resources/TesselUdfTypes.h"
#include "sdk/shim/Oberon.h"
#include "sdk/shim/SdkStructs.h"

namespace Tessel {

class TESSEL_EXPORT TesselTcamGroupManager : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< TesselTcamGroupManager > {
    public:
      virtual void onAclParamConfig() {}
      virtual void onTesselTcamStub() {}
      virtual void onGroupManagerVaultRequest() {}
      virtual void onGroupManagerVaultSm() {}
      virtual void onPaclSliceSharingSupported() {}
      virtual void onMirrorAclSliceSharingSupported() {}
      virtual void onQosAclSliceSharingSupported() {}
      virtual void onPaclIpv6KeyWidthMode() {}
      virtual void onQosIpv6KeyWidthMode() {}
      virtual void onCliVaultHelper() {}
      virtual void onModChipInfo( U16 ) {}
      virtual void onNumPipe() {}
      virtual void onStageIngress( U32 ) {}
      virtual void onEntryManager( TcamGroupAssignment ) {}
      virtual void onIngressRaclSharingSupported() {}
      virtual void onQosAclSharingSupported() {}
      virtual void onP4RuntimeEnabled() {}
      virtual void onUnboundedEntryManager( TcamGroupAssignment ) {}
      virtual void onFeatureAgentConfigDir() {}
      virtual void onFeatureAgentStatusDir() {}
      virtual void onTesselCommonSmData() {}
      virtual void onGroupCounts( const GroupIdToPipeGroupId & ) {}
      virtual void onOvidWarSm( U32 ) {}
      virtual void onOvidWar( U32 ) {}
      virtual void onEvictStatus() {}
      virtual void onEvictClear() {}
      virtual void onMiscConfig() {}
      virtual void onL4SrcPortClassId( const TesselCompressionClassKey & ) {}
      virtual void onL4DstPortClassId( const TesselCompressionClassKey & ) {}
      virtual void onIpProtocolClassId( const TesselCompressionClassKey & ) {}
      virtual void onEtherTypeClassId( const TesselCompressionClassKey & ) {}
      virtual void onSrcIpClassId( const TesselCompressionClassKey & ) {}
      virtual void onDstIpClassId( const TesselCompressionClassKey & ) {}
      virtual void onVfiForwarding() {}
      virtual void onHitlessInit() {}
      virtual void onUdfQualRef( U32 ) {}
      virtual void onGroupIdToAclUdf( U8 ) {}
      virtual void onGroupOpenFlowAclUdfValid( U8 ) {}
      virtual void onGroupOpenFlowVxlanAclUdfValid( U8 ) {}
      virtual void onGroupIdToOpenFlowAclUdf( U8 ) {}
      virtual void onGroupIdToOpenFlowVxlanAclUdf( U8 ) {}
      virtual void onPktFmtIdToUdfId( PktFmtId ) {}
      virtual void onOpenFlowUdfIpProto( U32 ) {}
      virtual void onIpQualToUdf( U32 ) {}
      virtual void onIpAclUdf( const UdfUnitKey & ) {}
      virtual void onIp6AclUdf( const UdfUnitKey & ) {}
      virtual void onMacAclUdf( const UdfUnitKey & ) {}
      virtual void onOpenFlowAclUdf( const UdfUnitKey & ) {}
      virtual void onOpenFlowVxlanAclUdf( const UdfUnitKey & ) {}
      virtual void onMaxUdfLength( U32 ) {}
      virtual void onUdfResourceError( U8 ) {}
      virtual void onGroupMirroringAclValid( U8 ) {}
      virtual void onGroupMirroringAclType( U8 ) {}
      virtual void onMirrorAclGroupToPriority( U32 ) {}
      virtual void onExcludedQual( U32 ) {}
      virtual void onGroupIdToExcludeIndex( const GroupQsetModKey & ) {}
      virtual void onGroupIdToIncludeIndex( const GroupQsetModKey & ) {}
      virtual void onSliceFreed( U32 ) {}
      virtual void onManagedPriority( U32 ) {}
      virtual void onMaxPorts() {}
      virtual void onIpv6MirroringSupported() {}
      virtual void onTcamManagerForEntry( U32 ) {}
      virtual void onTcamStage( U32 ) {}
      virtual void onGroupHintIdInfo( const GroupUnitKey & ) {}
      virtual void onRangeCheckersExhausted( U32 ) {}
      virtual void onRangeChecker( const RangeCheckerDesc & ) {}
      virtual void onUnitRangeInfo( const UnitRangeInfoKey & ) {}
      virtual void onEntryRangeCheckId( U32 ) {}
      virtual void onGroupIdToPreselId( const UnitGroupId & ) {}
      virtual void onSimulation() {}
      virtual void onPreInit() {}
      virtual void onVlanState() {}
      virtual void onPlatformState() {}
   };

   typedef Kiln::OrderedCollection< TcamGroupAssignment,
                                    Kiln::Ptr< TesselBoundedTcamEntryManager > >
      EntryManagerMap;
   typedef Kiln::OrderedCollection< TcamGroupAssignment,
                                    Kiln::Ptr< TesselUnboundedTcamEntryManager > >
      UnboundedEntryManagerMap;
   typedef Kiln::OrderedCollection< TesselCompressionClassKey,
                                    Kiln::Ptr< TesselExactMatchClassEntry > >
      ExactMatchClassIdMap;
   typedef Kiln::OrderedCollection< TesselCompressionClassKey, Kiln::Ptr< TesselClassEntry > >
      ClassIdMap;

   explicit TesselTcamGroupManager( const Kiln::Name & name );
   // Detaches the entry managers that features still hold.
   ~TesselTcamGroupManager() override;

   // === Start-up (TesselTcamGroupManager.cpp) ===

   // Creates the command line's request channel and its state machine and
   // hands it the pending request.
   void handlePreInit();
   // Builds the catalogue and the per-chip qualifier indexes ("Exclude
   // double definition" / "Include double definition" when the catalogue
   // names a (group, chip type) twice), then sets up every unit known so far.
   void handleInitialized();
   // The units whose chip information is stored, ascending.
   std::vector< U32 > units() const;

   // === Modules (TesselTcamModules.cpp) ===

   // Stores the module's chip information. An equal record changes nothing
   // and notifies no one. The module's units that were not known yet are
   // set up; the record must not move units between modules.
   void modChipInfoIs( U16 moduleId, const Agent::ChipInfo & info );
   // Forgets the module: the groups of its units are destroyed (SDK errors
   // traced: the chip may be gone already) and the units' records dropped.
   void modChipInfoDel( U16 moduleId );
   // The chip information of the module that carries the unit, or null.
   // Valid until modChipInfo changes.
   const Agent::ChipInfo * chipInfo( U32 unit ) const;

   // === Entry managers (TesselTcamGroupManagerEntryMgrs.cpp) ===

   // The bounded entry manager of a reservation, made on the first request.
   // Asking again returns the same manager when every constructor parameter
   // is equal; a different one is a programming error that aborts with
   // "Reinstantiating the entity with fullName <name> where constructor
   // parameter attribute '<attr>' has a different value of <new> than the
   // current value of <old> not allowed".
   Kiln::Ptr< TesselBoundedTcamEntryManager >
   entryManagerIs( TcamGroupAssignment groupAssignment, const Kiln::String & desc,
                   TesselTcamGroupManager * groupManager, U32 group, U32 baseEntry,
                   U32 endEntry, TcamAllocationStrategy strategy );
   void entryManagerDel( TcamGroupAssignment groupAssignment );
   void entryManagerDelAll();
   // The same for unbounded entry managers.
   Kiln::Ptr< TesselUnboundedTcamEntryManager >
   unboundedEntryManagerIs( TcamGroupAssignment groupAssignment, const Kiln::String & desc,
                            TesselTcamGroupManager * groupManager, U32 group,
                            U32 baseEntry, U32 endEntry, TcamAllocationStrategy strategy );
   void unboundedEntryManagerDel( TcamGroupAssignment groupAssignment );
   void unboundedEntryManagerDelAll();
   // The entry managers of the hardware group, bounded ones first. Valid
   // until the entry managers change.
   const std::vector< Kiln::Ptr< TesselTcamEntryManager > > &
   entryManagersOfGroup( U32 group ) const;
   // The entry manager that owns the entry; aborts with "EntryMgr not found".
   Kiln::Ptr< TesselTcamEntryManager > tcamEntryMgr( U32 entryId ) const;
   // Entries held, over all units, by the entry manager of reservation row
   // `reservationIndex`; 0 when the row has no manager.
   U32 getNumOfTcamEntries( U16 reservationIndex ) const;

   // === Chip queries (TesselTcamChipQueries.cpp) ===

   // The hardware priority of a group: the catalogue's, except that groups
   // sharing a slice share a priority (port ACLs 33, QoS policies 16,
   // mirroring ACLs of one type take the priority of the first one made).
   U32 getTcamGroupPriority( U32 groupId, int mirAclType ) const;
   // The SDK id of one pipe copy of a group: group in bits 0-23, pipe in
   // 24-26 (on units whose field stage runs per pipe), flag in bit 27.
   U32 getPipeGroupId( U32 unit, U32 pipe, U32 flag, U32 groupId ) const;
   // Pipes a group spans on the unit: 2 under the outer-VLAN-ID workaround,
   // numPipe on per-pipe units, else 1.
   U32 getNumPipe( U32 unit ) const;
   // Pipes the group spans on the unit: getNumPipe( unit ) for ingress
   // groups; 1 for lookup and egress groups, whose stages run once per unit.
   U32 getNumPipe( U32 unit, U32 groupId ) const;
   // Copies of a group per pipe: 2 for groups that need the in-port bitmap
   // workaround on per-pipe units of chips with one of its conditions.
   U32 getNumCopiesPerPipe( U32 unit, U32 groupId ) const;
   bool groupNeedsIpbmWAR( U32 unit, U32 groupId ) const;
   // The chip type of the unit's chip information (Shim::ChipType), 0 without.
   U32 chipTypeFromUnit( U32 unit ) const;
   // Whether the unit runs the outer-VLAN-ID workaround: its chip shows
   // untagged packets with outer VLAN 0 and its ingress stage is global, so
   // an entry's twin shares the entry's SDK group (pipe 1 of 2).
   bool ovidWarNeeded( U32 unit ) const;
   // The unit's ports, read from the SDK once per unit (they do not change
   // while it is known); null when they cannot be read. Valid until the
   // unit is forgotten.
   const Shim::PortConfig * unitPortConfig( U32 unit );
   // The loopback port of the pipe, or -1.
   int getLoopbackPortId( U32 unit, U32 pipe );
   U16 getMaxPorts() const { return maxPorts(); }
   bool getIpv6MirroringSupported() const { return ipv6MirroringSupported(); }

   // === Group initialisation (TesselTcamGroupInit.cpp) ===

   // Makes sure the group exists on the unit as SDK groups (one per pipe
   // and copy) and counts one more user; true when it is usable. A failure
   // leaves nothing behind: what was made for the group is undone in
   // reverse and the counts are unchanged.
   bool initializeGroup( U32 unit, U32 groupId );
   // Whether the group exists on the unit.
   bool groupExists( U32 unit, U32 groupId ) const;
   // Creates one class-id compression group (COMPRESS_GROUP_*) on the unit;
   // other ids create nothing. A failure is traced and leaves the unit
   // without that group.
   void initializeCompressionGroups( U32 unit, TcamGroupId compressGroup );
   // Records the preselector of a group's pipe (its copies share it) under
   // UnitGroupId( unit, pipe group id of copy 0 ).
   void doStoreGroupPreselId( U32 unit, U32 pipeGroupId, U32 preselId );
   // Drops the group's preselector records on the unit; a preselector no
   // other group of the unit uses any more is destroyed.
   void doDestroyGroupPreselId( U32 unit, U32 groupId );
   // The preselector that selects the pipe's packets on the unit, if some
   // group already made it.
   std::optional< U32 > pipePreselId( U32 unit, U32 pipe ) const;
   // The keys of the group's pipe groups that exist on the unit, in order.
   std::vector< GroupIdToPipeGroupId > pipeGroupsOf( U32 unit, U32 groupId ) const;

   // === Teardown and availability (TesselTcamGroupTeardown.cpp) ===

   // Drops one user of the group on the unit ("refCount must be greater
   // than 0!" when there is none); the last one destroys the group's SDK
   // groups, preselectors and hint, and with destroyUdf its data qualifiers.
   void uninitializeTcamGroup( U32 unit, U32 groupId, bool destroyUdf );
   // The same, keeping the group's UDF qualifiers.
   void uninitializeGroup( U32 unit, U32 groupId );
   // Entries that still fit in the group on the unit, counted in logical
   // entries (an entry with two copies per pipe takes two hardware rows).
   U32 entriesAvailable( U32 unit, U32 group );
   // Compresses and destroys one SDK group (a pipe copy); errors traced.
   void destroyPipeGroup( U32 unit, U32 groupId );
   // Destroys the group's hint on the unit, if it has one; errors traced.
   void destroyGroupHint( U32 unit, U32 groupId );

   // === Counters (TesselTcamCounters.cpp) ===

   // The stat's packet count of `statType`, cross-checked against the raw
   // counter of its pool and index ("TCAM counter mismatch. unit: ..."
   // traced when they differ). The SDK's code.
   int fieldStatGetPackets( U32 unit, U32 statsId, int statType, U64 & value );
   // The stat's byte count of `statType`. The SDK's code.
   int fieldStatGetBytes( U32 unit, U32 statsId, int statType, U64 & value );
   // Resets what the eviction engine counted for the stat's counters.
   void clearEvictionCounter( U32 unit, int statsId, bool packets, bool bytes );
   // What the eviction engine moved for the stat's counters. The SDK's code.
   int getCounterEvictions( U32 unit, int statsId, U64 & packets, U64 & bytes );
   // The same summed over the stats of every entry manager's entries whose
   // counters live in the pipe.
   int getCounterEvictionsForPipe( U32 unit, U32 pipe, U64 & packets, U64 & bytes );

   // === Class-id compression (resources/TesselClassIds.cpp) ===
   //
   // A caller binds a value to a class id of its choosing on a unit: one
   // compression entry in the kind's compression group maps the value to
   // the id, and the main lookup matches the id through the kind's class
   // qualifier. Binding the same value again programs nothing. A different
   // value under a bound id: the L4-port kinds destroy the old entry first;
   // the other kinds leave it installed and only replace the record (their
   // bindings live as long as the group manager). Every SDK failure is
   // fatal, so the allocations return true; only a release of an unbound
   // id returns false. Callers must not interleave two allocations of one key.

   bool allocateSrcIpClassId( U32 unit, const IpAddrWithFullMask & srcIp, U8 classId );
   bool allocateDstIpClassId( U32 unit, const IpAddrWithFullMask & dstIp, const U64 & classId );
   bool allocateDstIp6ClassId( U32 unit, const Ip6AddrWithFullMask & dstIp6,
                               const U64 & classId );
   bool allocateIpProtocolClassId( U32 unit, U16 ipProtocol, U8 classId );
   bool allocateEtherTypeClassId( U32 unit, U16 etherType, U8 classId );
   bool allocateL4SrcPortClassId( U32 unit, U16 l4SrcPort, U8 classId );
   bool allocateL4DstPortClassId( U32 unit, U16 l4DstPort, U8 classId );
   // Destroys the compression entry of the id and forgets the binding;
   // false (nothing touched) when the id is not bound on the unit.
   bool releaseL4SrcPortClassId( U32 unit, U8 classId );
   bool releaseL4DstPortClassId( U32 unit, U8 classId );
   // The unit's module is gone: its compression entries are destroyed (SDK
   // errors traced, the chip may be gone) and its bindings forgotten.
   void forgetUnitClassIds( U32 unit );
   // Clears the six collections (bookkeeping only).
   void classIdDelAll();

 private:
   template< typename C, typename Callback, typename... Args >
   typename C::Value
   classEntryIs( C & collection, const TesselCompressionClassKey & k, Callback callback,
                 Args &&... args ) {
      typename C::Value made =
         new typename C::Value::element_type( std::forward< Args >( args )... );
      collectionIs( collection, k, made, callback );
      return made;
   }
   bool allocateExactMatchClassId( U32 unit, U32 value, U64 classId, int kind );

 public:
   // === User-defined fields (resources/TesselUdf*.cpp) ===
   //
   // A field (ACL type, ethertype, offset base, offset, length; the IP
   // protocol of the OpenFlow fields) is one hardware qualifier per unit,
   // shared by every group and entry that asks for it and counted per user:
   // the first user creates it, the last release destroys it. Entry managers
   // reach it through getAclUdf / findAclUdf / releaseAclUdf with their
   // group; the OpenFlow UDF groups through createGroupOpenFlowAclUdf. The
   // mechanism is the unit's: the flex parser, else the UDF module, else
   // field-processor data qualifiers. Hardware exhaustion is not fatal: the
   // field is refused (an empty list) and TESSEL_UDF_HW_RESOURCE_FULL is
   // logged once, TESSEL_UDF_HW_RESOURCE_NORMAL once resources are free
   // again. Other SDK failures and broken bookkeeping abort.

   // Which record a field belongs to: the ACL types' and the OpenFlow groups'.
   enum UdfTable : int {
      udfTableIp = 0, // Acl::ipv4
      udfTableIp6 = 1, // Acl::ipv6
      udfTableMac = 2, // Acl::mac
      udfTableOpenFlow = 3,
      udfTableOpenFlowVxlan = 4,
   };
   // A field as a user asks for it; `offset` as given (before adjustOffset).
   struct UdfField {
      U32 unit = 0;
      int aclType = 0;
      U32 ethType = UdfUnitSpec::ethTypeNotSet;
      UdfOffsetBase base = UdfBaseL3HeaderStart;
      U8 offset = 0;
      U8 length = 0;
      U32 ipProtocol = 0; // OpenFlow fields only
   };
   // What a mechanism programs: the field with its adjusted offset.
   struct UdfRequest {
      U32 unit = 0;
      U32 ethType = UdfUnitSpec::ethTypeNotSet;
      int aclType = 0;
      UdfOffsetBase base = UdfBaseL3HeaderStart;
      U8 offset = 0;
      U8 length = 0;
      U32 ipProtocol = 0;
      bool vxlan = false; // the OpenFlow VXLAN group's field
   };

   // The record of an ACL type (IPv4 0, IPv6 1, MAC 2; others assert).
   static UdfTable udfTableOf( int aclType );
   // The field's users and hardware, shared: an existing field gains a user
   // (of the group), else the width budgets are checked and the field is
   // created. The qualifiers; empty when refused (budget, exhaustion).
   // Throws Kiln::RangeException for a length outside 1 to 16 or an
   // adjusted offset above 127.
   QualIdList udfAcquire( UdfTable table, U32 groupId, U32 groupWidthLimit,
                          const UdfField & field );
   // The stored field equal to the request (unit, ethertype, base, adjusted
   // offset, length, IP protocol), verified in hardware; none when absent.
   UdfUnitSpec udfFind( UdfTable table, const UdfField & field );
   // Drops one user of the group; the last user destroys the hardware. The
   // field must exist and be used by the group (assertions). The hardware
   // goes with the last user, so no group may still hold the qualifier in
   // its key then (the SDK refuses, fatally).
   void udfRelease( UdfTable table, U32 groupId, const UdfField & field );

   // The OpenFlow UDF groups' fields (IFP_GROUP_OPENFLOW_UDF and, in its own
   // records, IFP_GROUP_OPENFLOW_VXLAN): an IPv4 field of packets of the IP
   // protocol, counted for the group and marked valid for it
   // (groupOpenFlowAclUdfValid). Call before the group is created on the
   // unit so that its key holds the field. Empty when refused.
   QualIdList createGroupOpenFlowAclUdf( U32 unit, U32 groupId, U32 ipProtocol,
                                         UdfOffsetBase base, U8 offset, U8 length );
   void releaseGroupOpenFlowAclUdf( U32 unit, U32 groupId, U32 ipProtocol, UdfOffsetBase base,
                                    U8 offset, U8 length );

   // The offset from the base as the hardware counts it: the L3 header end
   // adds the fixed header length (20 IPv4, 40 IPv6; options and extension
   // headers are not counted); kept in 8 bits.
   static U8 adjustOffset( UdfOffsetBase base, int aclType, U8 offset );
   // Whether a new field of `length` bytes would exceed the unit's maximum
   // UDF length or the group's limit (traced "groupUdfWidthExceeded").
   bool groupUdfWidthExceeded( U32 unit, U32 groupId, U32 groupWidthLimit, UdfTable table,
                               U32 ethType, U8 length ) const;
   // Bytes of UDF the unit may extract in all: maxUdfLength( unit ) when
   // set, else the chip information's.
   U32 unitMaxUdfLength( U32 unit ) const;

   // The mechanism's hardware of one field. Create: the qualifiers, empty
   // on exhaustion. Destroy: every SDK failure is fatal.
   QualIdList createUdfQualifier( U32 unit, U32 ethType, int aclType, UdfOffsetBase base,
                                  U8 offset, U8 length );
   QualIdList createUdfQualifier( const UdfRequest & request );
   QualIdList createUdfQualifierFlexParser( const UdfRequest & request );
   QualIdList createUdfQualifierUdfModule( const UdfRequest & request );
   QualIdList createUdfQualifierUdfTcam( const UdfRequest & request );
   void destroyUdfQualifier( U32 unit, U32 ethType, int aclType, UdfOffsetBase base,
                             const QualIdList & quals );
   void destroyUdfQualifierFlexParser( U32 unit, const QualIdList & quals );
   void destroyUdfQualifierUdfModule( U32 unit, const QualIdList & quals );
   void destroyUdfQualifierUdfTcam( U32 unit, U32 ethType, int aclType, UdfOffsetBase base,
                                    const QualIdList & quals );
   // Reads every qualifier back and asserts offset and width; traces "All
   // UDFs are programmed in hardware".
   void udfQualProgrammedInHw( U32 unit, const QualIdList & quals, U32 ethType, int aclType,
                               UdfOffsetBase base, U8 offset, U8 length ) const;
   void udfQualProgrammedInHwFlex( U32 unit, const QualIdList & quals, UdfOffsetBase base,
                                   U8 offset, U8 length ) const;
   void udfQualProgrammedInHwUdfModule( U32 unit, const QualIdList & quals, UdfOffsetBase base,
                                        U8 offset, U8 length ) const;
   void udfQualProgrammedInHwUdfTcam( U32 unit, const QualIdList & quals, U8 offset,
                                      U8 length ) const;

   // Flex-parser chunks of the unit taken by fields (bit n: chunk n).
   U32 flexChunkBitmap( U32 unit ) const;
   // Whether the unit's UDF hardware ran out since it last had room.
   bool udfHwResourceShort( U32 unit ) const { return udfHwShort_.count( unit ) != 0; }
   // The unit's module is gone: its fields' records are dropped and the
   // hardware its groups did not take with them destroyed (errors traced).
   void forgetUnitUdfs( U32 unit );

 private:
   enum UdfMechanism { udfFlexParser, udfModule, udfTcam };
   UdfMechanism udfMechanism( U32 unit ) const;
   const Kiln::OrderedCollection< UdfUnitKey, UdfUnitSpec > & udfSpecs( UdfTable table ) const;
   void udfSpecIs( UdfTable table, const UdfUnitSpec & spec );
   void udfSpecDel( UdfTable table, const UdfUnitKey & key );
   Kiln::Ptr< GroupUdfQual > groupUdfQual( UdfTable table, U32 groupId ) const;
   Kiln::Ptr< GroupUdfQual > groupUdfQualIs( UdfTable table, U32 groupId );
   U32 udfWidthSum( U32 unit, UdfTable table, const GroupUdfQual * group ) const;
   QualIdList udfShare( UdfTable table, U32 groupId, UdfUnitSpec spec );
   void udfHwResourceFull( U32 unit );
   void udfHwResourceAvailable( U32 unit );
   U32 flexChunksTake( U32 unit, U32 count );
   void flexChunksGive( U32 unit, U32 chunkBmap );
   PktFmtId udfModulePktFmt( const UdfRequest & request );
   void udfModuleFormatRelease( U32 unit, U32 udfId, int pktFmtId );
   void forgetUdfTcam( const UdfUnitSpec & spec, int aclType );
   void forgetUdfModule( const UdfUnitSpec & spec );
   void forgetUdfModulePktFmts( U32 unit );
   void forgetUdfFlex( const UdfUnitSpec & spec );

   std::set< U32 > udfHwShort_;               // units short of UDF hardware
   std::map< U32, U32 > flexChunksUsed_;      // unit -> chunk bitmap

 public:
   // === Policers (resources/TesselPolicers.cpp) ===
   //
   // One logical policer is a hardware policer in every pipe of the unit
   // (getNumPipe( unit )): pipe 0's id is chosen by the SDK and is the one
   // callers hold; the other pipes' ids derive from it (getPipePolicerId).
   // The configuration is an SDK bcm_policer_config_t in a byte buffer; it
   // is copied, so the caller's buffer stays as it was. No bookkeeping:
   // every SDK failure, running out of policers included, is fatal.

   // The base policer id; 0 when the unit has no pipes.
   U32 createPolicer( U32 unit, const Kiln::BytePtr & policerConfig ) const;
   void setPolicer( U32 unit, U32 policerId, const Kiln::BytePtr & policerConfig ) const;
   void removePolicer( U32 unit, U32 policerId ) const;
   // The pipe's policer id: the base id (below 2^24, as the SDK picks ids)
   // with the pipe in bits 24-26, like pipe entry and group ids; pipe 0
   // gives the base id itself.
   U32 getPipePolicerId( U32 unit, U32 pipe, U32 basePolicerId ) const;

   // === Range checkers (resources/TesselRangeCheckers.cpp) ===
   //
   // A checker matches an L4 source port, L4 destination port or packet
   // length against [low, high]. Every entry of a unit that asks for the
   // same descriptor uses one checker, counted per user: the first user
   // creates it, the last release destroys it at once. On range-module
   // chips a checker is one hardware range in each pipe the group spans
   // (getNumPipe( unit, groupId )), all known by the pipe-0 range's id;
   // installEntry qualifies each pipe's copies on that pipe's range. Elsewhere
   // it is one checker of the unit (the older field-range API). Running out
   // is not fatal: the unit's rangeCheckersExhausted flag is set until a
   // release frees a checker there. Other SDK failures and broken
   // bookkeeping abort. Each SDK call releases the activity lock; callers
   // must not interleave two requests for one descriptor on one unit.

   // The checker id for the descriptor on the unit, made on first use; 0
   // when the chip has none left (the flag is set; nothing is made).
   // "Unsupported range type" aborts for flags without a type on a
   // range-module chip.
   U32 getRangeChecker( U32 unit, U32 groupId, const RangeCheckerDesc & desc );
   // Gives one use back; the last one destroys the hardware, so no entry
   // may still qualify on it. Aborts on "data" for an unknown descriptor and
   // on "data->unitRefCount( unit ) > 0" for a unit without users.
   void releaseRangeChecker( U32 unit, U32 groupId, const RangeCheckerDesc & desc );
   // Qualifies the base entry on the checker and records the pair for
   // installEntry. The SDK's code: BCM_E_RESOURCE is returned with nothing
   // recorded, other failures abort; attaching a checker twice aborts.
   int attachRangeChecker( U32 unit, U32 baseEntryId, U32 baseRangeCheckId );
   // The unit's module is gone: its checkers are destroyed (errors traced,
   // the chip may be gone already) and their records dropped.
   void forgetUnitRangeCheckers( U32 unit );

   // === Owned objects ===

   const Kiln::Ptr< Acl::ParamConfig > & aclParamConfig() const { return aclParamConfig_; }
   // Copies the sharing and key-width settings and follows their changes.
   void aclParamConfigIs( const Kiln::Ptr< Acl::ParamConfig > & config );

   const Kiln::Ptr< TesselTcamStub > & tesselTcamStub() const { return tesselTcamStub_; }
   Kiln::Ptr< TesselTcamStub > tesselTcamStubIs();
   void tesselTcamStubDel();

   // The command line's request entity and the state machine serving it
   // (export/GroupManagerVault.cpp).
   const Kiln::Ptr< GroupManagerVaultRequest > &
   groupManagerVaultRequest() const {
      return groupManagerVaultRequest_;
   }
   Kiln::Ptr< GroupManagerVaultRequest > groupManagerVaultRequestIs();
   const Kiln::Ptr< GroupManagerVaultSm > &
   groupManagerVaultSm() const {
      return groupManagerVaultSm_;
   }
   // Serves groupManagerVaultRequest(), which must exist.
   Kiln::Ptr< GroupManagerVaultSm > groupManagerVaultSmIs();

   // === Reports (show/) ===
   //
   // Text for the operator, written to a descriptor the caller owns (left
   // open) with formatted writes. They read the group manager's state and
   // make read-only SDK calls with the activity lock released; the SDK walks
   // take the field-processor lock after that and release it first.

   // Per group of the unit: "=== TCAM detail|summary for switch <name> ===",
   // then a line per group with its use and room and, per reservation that
   // holds entries, what it uses; detail adds every entry with its hits.
   // pipe is read as an unsigned byte: 255 (-1) lists every pipe.
   void showTcamUsage( Kiln::String switchName, U32 fd, bool detail, U32 unit, S8 pipe );
   // The slices (banks) each reservation's group holds on the unit.
   void showSummaryTcamUsage( Kiln::String switchName, U32 fd, U32 unit );
   // The slice numbers of SDK group `groupId` on the unit, ", "-separated,
   // appended to `out`. An SDK result code; failures are traced.
   static int showSummaryTcamUsageHelper( int unit, int groupId, std::ostringstream & out );
   // tcamUsage( unit ) written to fd.
   void showRawTcamUsage( Kiln::String switchName, U32 fd, U32 unit );
   // One entry decoded: group, qualifiers, actions, counters.
   void showEntryTcamUsage( Kiln::String switchName, U32 fd, U32 unit, U32 entryId );

   // === Command-line tables (export/) ===

   // Fills the unit's stage table from the capacity query, one record per
   // stage (key: stage id), and drops records of stages that are gone.
   void dumpStageData( U16 unit, const Kiln::Ptr< VaultStagesMount > & mount );
   // Fills the unit's stage-name table: "IFP", "VFP", "EFP", "EXT", "EXACT", "CLASS".
   void dumpStageNames( U16 unit, const Kiln::Ptr< VaultStageNamesMount > & mount );
   // Fills the unit's group-name table from the catalogue.
   void dumpGroupNames( U16 unit, const Kiln::Ptr< VaultGroupNamesMount > & mount );
   // Replaces the table the request names (types 3 to 9) with the unit's
   // current state for the request's stage and pipe; other types change
   // nothing.
   void dumpData( const Kiln::Ptr< GroupManagerVaultRequest > & request );
   // Replaces the request's slice table: every slice of the stage and pipe
   // with the group that holds it.
   void dumpSliceData( const Kiln::Ptr< GroupManagerVaultRequest > & request );
   // Brings the tables of the module's units in step with the chip
   // information: units that became known get their stage tables (filled
   // at once) and their per-stage tables; units that are gone lose them.
   // Nothing without cliVaultHelper().
   void handleModuleUpdate( U16 moduleId );

   // === Attributes and collections ===

   // --- configuration the agent sets ---
   bool paclSliceSharingSupported() const { return paclSliceSharingSupported_.get(); }
   void
   paclSliceSharingSupportedIs( bool v ) {
      attributeIs( paclSliceSharingSupported_, v, &NotifieeConst::onPaclSliceSharingSupported );
   }
   bool mirrorAclSliceSharingSupported() const { return mirrorAclSliceSharingSupported_.get(); }
   void
   mirrorAclSliceSharingSupportedIs( bool v ) {
      attributeIs( mirrorAclSliceSharingSupported_, v,
                   &NotifieeConst::onMirrorAclSliceSharingSupported );
   }
   bool qosAclSliceSharingSupported() const { return qosAclSliceSharingSupported_.get(); }
   void
   qosAclSliceSharingSupportedIs( bool v ) {
      attributeIs( qosAclSliceSharingSupported_, v, &NotifieeConst::onQosAclSliceSharingSupported );
   }
   Acl::TcamBankSharingMode paclIpv6KeyWidthMode() const { return paclIpv6KeyWidthMode_.get(); }
   void
   paclIpv6KeyWidthModeIs( Acl::TcamBankSharingMode v ) {
      attributeIs( paclIpv6KeyWidthMode_, v, &NotifieeConst::onPaclIpv6KeyWidthMode );
   }
   Acl::TcamBankSharingMode qosIpv6KeyWidthMode() const { return qosIpv6KeyWidthMode_.get(); }
   void
   qosIpv6KeyWidthModeIs( Acl::TcamBankSharingMode v ) {
      attributeIs( qosIpv6KeyWidthMode_, v, &NotifieeConst::onQosIpv6KeyWidthMode );
   }
   const Kiln::Ptr< TesselTcam::CliVaultHelper > &
   cliVaultHelper() const {
      return cliVaultHelper_.get();
   }
   void
   cliVaultHelperIs( const Kiln::Ptr< TesselTcam::CliVaultHelper > & v ) {
      attributeIs( cliVaultHelper_, v, &NotifieeConst::onCliVaultHelper );
   }

   // --- agent services ---
   // The untagged ports of VLANs; the outer-VLAN-ID workaround follows it.
   const Kiln::Ptr< Agent::VlanState > & vlanState() const { return vlanState_; }
   void vlanStateIs( const Kiln::Ptr< Agent::VlanState > & v );
   // Flags of the platform; P4Runtime is copied into p4RuntimeEnabled.
   const Kiln::Ptr< Agent::PlatformState > & platformState() const { return platformState_; }
   void platformStateIs( const Kiln::Ptr< Agent::PlatformState > & v );

   // --- modules and units ---
   Agent::ChipInfo modChipInfo( U16 k ) const { return modChipInfo_.get( k ); }
   bool modChipInfoHas( U16 k ) const { return modChipInfo_.has( k ); }
   const Kiln::OrderedCollection< U16, Agent::ChipInfo > &
   modChipInfoCollection() const {
      return modChipInfo_;
   }
   U32 numPipe() const { return numPipe_.get(); }
   void numPipeIs( U32 v ) { attributeIs( numPipe_, v, &NotifieeConst::onNumPipe ); }
   bool stageIngress( U32 k ) const { return stageIngress_.get( k ); }
   bool stageIngressHas( U32 k ) const { return stageIngress_.has( k ); }
   void
   stageIngressIs( U32 k, bool v ) {
      collectionIs( stageIngress_, k, v, &NotifieeConst::onStageIngress );
   }
   void
   stageIngressDel( U32 k ) {
      collectionDel( stageIngress_, k, &NotifieeConst::onStageIngress );
   }
   void stageIngressDelAll() { collectionDelAll( stageIngress_, &NotifieeConst::onStageIngress ); }
   const Kiln::OrderedCollection< U32, bool > &
   stageIngressCollection() const {
      return stageIngress_;
   }

   // --- entry managers (TesselTcamGroupManagerEntryMgrs.cpp) ---
   Kiln::Ptr< TesselBoundedTcamEntryManager >
   entryManager( TcamGroupAssignment k ) const {
      return entryManager_.get( k );
   }
   bool entryManagerHas( TcamGroupAssignment k ) const { return entryManager_.has( k ); }
   const EntryManagerMap &
   entryManagerCollection() const {
      return entryManager_;
   }
   bool ingressRaclSharingSupported() const { return ingressRaclSharingSupported_.get(); }
   void
   ingressRaclSharingSupportedIs( bool v ) {
      attributeIs( ingressRaclSharingSupported_, v, &NotifieeConst::onIngressRaclSharingSupported );
   }
   bool qosAclSharingSupported() const { return qosAclSharingSupported_.get(); }
   void
   qosAclSharingSupportedIs( bool v ) {
      attributeIs( qosAclSharingSupported_, v, &NotifieeConst::onQosAclSharingSupported );
   }
   bool p4RuntimeEnabled() const { return p4RuntimeEnabled_.get(); }
   void
   p4RuntimeEnabledIs( bool v ) {
      attributeIs( p4RuntimeEnabled_, v, &NotifieeConst::onP4RuntimeEnabled );
   }
   Kiln::Ptr< TesselUnboundedTcamEntryManager >
   unboundedEntryManager( TcamGroupAssignment k ) const {
      return unboundedEntryManager_.get( k );
   }
   bool
   unboundedEntryManagerHas( TcamGroupAssignment k ) const {
      return unboundedEntryManager_.has( k );
   }
   const UnboundedEntryManagerMap &
   unboundedEntryManagerCollection() const {
      return unboundedEntryManager_;
   }
   const Kiln::Ptr< Kiln::Entity > &
   featureAgentConfigDir() const {
      return featureAgentConfigDir_.get();
   }
   void
   featureAgentConfigDirIs( const Kiln::Ptr< Kiln::Entity > & v ) {
      attributeIs( featureAgentConfigDir_, v, &NotifieeConst::onFeatureAgentConfigDir );
   }
   const Kiln::Ptr< Kiln::Entity > &
   featureAgentStatusDir() const {
      return featureAgentStatusDir_.get();
   }
   void
   featureAgentStatusDirIs( const Kiln::Ptr< Kiln::Entity > & v ) {
      attributeIs( featureAgentStatusDir_, v, &NotifieeConst::onFeatureAgentStatusDir );
   }
   const Kiln::Ptr< Agent::TesselCommonSmData > &
   tesselCommonSmData() const {
      return tesselCommonSmData_.get();
   }
   void
   tesselCommonSmDataIs( const Kiln::Ptr< Agent::TesselCommonSmData > & v ) {
      attributeIs( tesselCommonSmData_, v, &NotifieeConst::onTesselCommonSmData );
   }

   // --- groups ---
   Kiln::Ptr< GroupCounts >
   groupCounts( const GroupIdToPipeGroupId & k ) const {
      return groupCounts_.get( k );
   }
   bool groupCountsHas( const GroupIdToPipeGroupId & k ) const { return groupCounts_.has( k ); }
   Kiln::Ptr< GroupCounts >
   groupCountsIs( const GroupIdToPipeGroupId & k ) {
      return collectionEntityIs( groupCounts_, k, &NotifieeConst::onGroupCounts, k.valueText() );
   }
   void
   groupCountsDel( const GroupIdToPipeGroupId & k ) {
      collectionDel( groupCounts_, k, &NotifieeConst::onGroupCounts );
      ++groupCountsGeneration_;
   }
   void
   groupCountsDelAll() {
      collectionDelAll( groupCounts_, &NotifieeConst::onGroupCounts );
      ++groupCountsGeneration_;
   }
   // Moves on whenever counts leave the collection or lose a unit's record:
   // counts kept elsewhere are still good while it stays.
   U64 groupCountsGeneration() const { return groupCountsGeneration_; }
   // Moves on whenever an entry manager's exhausted marks change or the
   // managers come and go: a check of a group's marks holds while it stays.
   U64 exhaustionGeneration() const { return exhaustionGeneration_; }
   void exhaustionChanged() { ++exhaustionGeneration_; }
   const Kiln::OrderedCollection< GroupIdToPipeGroupId, Kiln::Ptr< GroupCounts > > &
   groupCountsCollection() const {
      return groupCounts_;
   }
   Kiln::Ptr< TesselOvidWarSm > ovidWarSm( U32 k ) const { return ovidWarSm_.get( k ); }
   bool ovidWarSmHas( U32 k ) const { return ovidWarSm_.has( k ); }
   // Watches the group manager's VLAN state.
   Kiln::Ptr< TesselOvidWarSm >
   ovidWarSmIs( U32 k ) {
      return collectionEntityIs( ovidWarSm_, k, &NotifieeConst::onOvidWarSm,
                                 "ovidWarSm" + std::to_string( k ), k, vlanState_ );
   }
   void ovidWarSmDel( U32 k ) { collectionDel( ovidWarSm_, k, &NotifieeConst::onOvidWarSm ); }
   void ovidWarSmDelAll() { collectionDelAll( ovidWarSm_, &NotifieeConst::onOvidWarSm ); }
   bool ovidWar( U32 k ) const { return ovidWar_.get( k ); }
   bool ovidWarHas( U32 k ) const { return ovidWar_.has( k ); }
   void ovidWarIs( U32 k, bool v ) { collectionIs( ovidWar_, k, v, &NotifieeConst::onOvidWar ); }
   void ovidWarDel( U32 k ) { collectionDel( ovidWar_, k, &NotifieeConst::onOvidWar ); }
   void ovidWarDelAll() { collectionDelAll( ovidWar_, &NotifieeConst::onOvidWar ); }
   const Kiln::OrderedCollection< U32, bool > &
   ovidWarCollection() const {
      return ovidWar_;
   }
   const Kiln::Ptr< Kiln::Entity > & evictStatus() const { return evictStatus_.get(); }
   void
   evictStatusIs( const Kiln::Ptr< Kiln::Entity > & v ) {
      attributeIs( evictStatus_, v, &NotifieeConst::onEvictStatus );
   }
   const Kiln::Ptr< Kiln::Entity > & evictClear() const { return evictClear_.get(); }
   void
   evictClearIs( const Kiln::Ptr< Kiln::Entity > & v ) {
      attributeIs( evictClear_, v, &NotifieeConst::onEvictClear );
   }
   const Kiln::Ptr< Kiln::Entity > & miscConfig() const { return miscConfig_.get(); }
   void
   miscConfigIs( const Kiln::Ptr< Kiln::Entity > & v ) {
      attributeIs( miscConfig_, v, &NotifieeConst::onMiscConfig );
   }

   // --- class-id compression ---
   // Is creates or replaces the record of a key; Is, Del and DelAll are
   // bookkeeping only.
   Kiln::Ptr< TesselExactMatchClassEntry >
   l4SrcPortClassId( const TesselCompressionClassKey & k ) const {
      return l4SrcPortClassId_.get( k );
   }
   bool
   l4SrcPortClassIdHas( const TesselCompressionClassKey & k ) const {
      return l4SrcPortClassId_.has( k );
   }
   Kiln::Ptr< TesselExactMatchClassEntry >
   l4SrcPortClassIdIs( const TesselCompressionClassKey & k, U32 value, U32 entry ) {
      return classEntryIs( l4SrcPortClassId_, k, &NotifieeConst::onL4SrcPortClassId, k, value,
                                 entry );
   }
   void
   l4SrcPortClassIdDel( const TesselCompressionClassKey & k ) {
      collectionDel( l4SrcPortClassId_, k, &NotifieeConst::onL4SrcPortClassId );
   }
   void
   l4SrcPortClassIdDelAll() {
      collectionDelAll( l4SrcPortClassId_, &NotifieeConst::onL4SrcPortClassId );
   }
   const ExactMatchClassIdMap &
   l4SrcPortClassIdCollection() const {
      return l4SrcPortClassId_;
   }
   Kiln::Ptr< TesselExactMatchClassEntry >
   l4DstPortClassId( const TesselCompressionClassKey & k ) const {
      return l4DstPortClassId_.get( k );
   }
   bool
   l4DstPortClassIdHas( const TesselCompressionClassKey & k ) const {
      return l4DstPortClassId_.has( k );
   }
   Kiln::Ptr< TesselExactMatchClassEntry >
   l4DstPortClassIdIs( const TesselCompressionClassKey & k, U32 value, U32 entry ) {
      return classEntryIs( l4DstPortClassId_, k, &NotifieeConst::onL4DstPortClassId, k, value,
                                 entry );
   }
   void
   l4DstPortClassIdDel( const TesselCompressionClassKey & k ) {
      collectionDel( l4DstPortClassId_, k, &NotifieeConst::onL4DstPortClassId );
   }
   void
   l4DstPortClassIdDelAll() {
      collectionDelAll( l4DstPortClassId_, &NotifieeConst::onL4DstPortClassId );
   }
   const ExactMatchClassIdMap &
   l4DstPortClassIdCollection() const {
      return l4DstPortClassId_;
   }
   Kiln::Ptr< TesselExactMatchClassEntry >
   ipProtocolClassId( const TesselCompressionClassKey & k ) const {
      return ipProtocolClassId_.get( k );
   }
   bool
   ipProtocolClassIdHas( const TesselCompressionClassKey & k ) const {
      return ipProtocolClassId_.has( k );
   }
   Kiln::Ptr< TesselExactMatchClassEntry >
   ipProtocolClassIdIs( const TesselCompressionClassKey & k, U32 value, U32 entry ) {
      return classEntryIs( ipProtocolClassId_, k, &NotifieeConst::onIpProtocolClassId, k,
                                 value, entry );
   }
   void
   ipProtocolClassIdDel( const TesselCompressionClassKey & k ) {
      collectionDel( ipProtocolClassId_, k, &NotifieeConst::onIpProtocolClassId );
   }
   void
   ipProtocolClassIdDelAll() {
      collectionDelAll( ipProtocolClassId_, &NotifieeConst::onIpProtocolClassId );
   }
   const ExactMatchClassIdMap &
   ipProtocolClassIdCollection() const {
      return ipProtocolClassId_;
   }
   Kiln::Ptr< TesselExactMatchClassEntry >
   etherTypeClassId( const TesselCompressionClassKey & k ) const {
      return etherTypeClassId_.get( k );
   }
   bool
   etherTypeClassIdHas( const TesselCompressionClassKey & k ) const {
      return etherTypeClassId_.has( k );
   }
   Kiln::Ptr< TesselExactMatchClassEntry >
   etherTypeClassIdIs( const TesselCompressionClassKey & k, U32 value, U32 entry ) {
      return classEntryIs( etherTypeClassId_, k, &NotifieeConst::onEtherTypeClassId, k, value,
                                 entry );
   }
   void
   etherTypeClassIdDel( const TesselCompressionClassKey & k ) {
      collectionDel( etherTypeClassId_, k, &NotifieeConst::onEtherTypeClassId );
   }
   void
   etherTypeClassIdDelAll() {
      collectionDelAll( etherTypeClassId_, &NotifieeConst::onEtherTypeClassId );
   }
   const ExactMatchClassIdMap &
   etherTypeClassIdCollection() const {
      return etherTypeClassId_;
   }
   Kiln::Ptr< TesselClassEntry >
   srcIpClassId( const TesselCompressionClassKey & k ) const {
      return srcIpClassId_.get( k );
   }
   bool
   srcIpClassIdHas( const TesselCompressionClassKey & k ) const {
      return srcIpClassId_.has( k );
   }
   Kiln::Ptr< TesselClassEntry >
   srcIpClassIdIs( const TesselCompressionClassKey & k, Wiretype::AddressFamily family,
                   U32 entry ) {
      return classEntryIs( srcIpClassId_, k, &NotifieeConst::onSrcIpClassId, k, family,
                                 entry );
   }
   void
   srcIpClassIdDel( const TesselCompressionClassKey & k ) {
      collectionDel( srcIpClassId_, k, &NotifieeConst::onSrcIpClassId );
   }
   void srcIpClassIdDelAll() { collectionDelAll( srcIpClassId_, &NotifieeConst::onSrcIpClassId ); }
   const ClassIdMap &
   srcIpClassIdCollection() const {
      return srcIpClassId_;
   }
   Kiln::Ptr< TesselClassEntry >
   dstIpClassId( const TesselCompressionClassKey & k ) const {
      return dstIpClassId_.get( k );
   }
   bool
   dstIpClassIdHas( const TesselCompressionClassKey & k ) const {
      return dstIpClassId_.has( k );
   }
   Kiln::Ptr< TesselClassEntry >
   dstIpClassIdIs( const TesselCompressionClassKey & k, Wiretype::AddressFamily family,
                   U32 entry ) {
      return classEntryIs( dstIpClassId_, k, &NotifieeConst::onDstIpClassId, k, family,
                                 entry );
   }
   void
   dstIpClassIdDel( const TesselCompressionClassKey & k ) {
      collectionDel( dstIpClassId_, k, &NotifieeConst::onDstIpClassId );
   }
   void dstIpClassIdDelAll() { collectionDelAll( dstIpClassId_, &NotifieeConst::onDstIpClassId ); }
   const ClassIdMap &
   dstIpClassIdCollection() const {
      return dstIpClassId_;
   }
   bool vfiForwarding() const { return vfiForwarding_.get(); }
   void
   vfiForwardingIs( bool v ) {
      attributeIs( vfiForwarding_, v, &NotifieeConst::onVfiForwarding );
   }
   bool hitlessInit() const { return hitlessInit_.get(); }
   void hitlessInitIs( bool v ) { attributeIs( hitlessInit_, v, &NotifieeConst::onHitlessInit ); }

   // --- user-defined fields ---
   U32 udfQualRef( U32 k ) const { return udfQualRef_.get( k ); }
   bool udfQualRefHas( U32 k ) const { return udfQualRef_.has( k ); }
   void
   udfQualRefIs( U32 k, U32 v ) {
      collectionIs( udfQualRef_, k, v, &NotifieeConst::onUdfQualRef );
   }
   U32
   udfQualRefInc( U32 k, S32 delta ) {
      return collectionInc( udfQualRef_, k, delta, &NotifieeConst::onUdfQualRef );
   }
   void udfQualRefDel( U32 k ) { collectionDel( udfQualRef_, k, &NotifieeConst::onUdfQualRef ); }
   void udfQualRefDelAll() { collectionDelAll( udfQualRef_, &NotifieeConst::onUdfQualRef ); }
   Kiln::Ptr< GroupUdfQual > groupIdToAclUdf( U8 k ) const { return groupIdToAclUdf_.get( k ); }
   bool groupIdToAclUdfHas( U8 k ) const { return groupIdToAclUdf_.has( k ); }
   Kiln::Ptr< GroupUdfQual >
   groupIdToAclUdfIs( U8 k ) {
      return collectionEntityIs( groupIdToAclUdf_, k, &NotifieeConst::onGroupIdToAclUdf, k );
   }
   void
   groupIdToAclUdfDel( U8 k ) {
      collectionDel( groupIdToAclUdf_, k, &NotifieeConst::onGroupIdToAclUdf );
   }
   void
   groupIdToAclUdfDelAll() {
      collectionDelAll( groupIdToAclUdf_, &NotifieeConst::onGroupIdToAclUdf );
   }
   bool groupOpenFlowAclUdfValid( U8 k ) const { return groupOpenFlowAclUdfValid_.get( k ); }
   bool groupOpenFlowAclUdfValidHas( U8 k ) const { return groupOpenFlowAclUdfValid_.has( k ); }
   void
   groupOpenFlowAclUdfValidIs( U8 k, bool v ) {
      collectionIs( groupOpenFlowAclUdfValid_, k, v, &NotifieeConst::onGroupOpenFlowAclUdfValid );
   }
   void
   groupOpenFlowAclUdfValidDel( U8 k ) {
      collectionDel( groupOpenFlowAclUdfValid_, k, &NotifieeConst::onGroupOpenFlowAclUdfValid );
   }
   void
   groupOpenFlowAclUdfValidDelAll() {
      collectionDelAll( groupOpenFlowAclUdfValid_, &NotifieeConst::onGroupOpenFlowAclUdfValid );
   }
   bool
   groupOpenFlowVxlanAclUdfValid( U8 k ) const {
      return groupOpenFlowVxlanAclUdfValid_.get( k );
   }
   bool
   groupOpenFlowVxlanAclUdfValidHas( U8 k ) const {
      return groupOpenFlowVxlanAclUdfValid_.has( k );
   }
   void
   groupOpenFlowVxlanAclUdfValidIs( U8 k, bool v ) {
      collectionIs( groupOpenFlowVxlanAclUdfValid_, k, v,
                    &NotifieeConst::onGroupOpenFlowVxlanAclUdfValid );
   }
   void
   groupOpenFlowVxlanAclUdfValidDel( U8 k ) {
      collectionDel( groupOpenFlowVxlanAclUdfValid_, k,
                     &NotifieeConst::onGroupOpenFlowVxlanAclUdfValid );
   }
   void
   groupOpenFlowVxlanAclUdfValidDelAll() {
      collectionDelAll( groupOpenFlowVxlanAclUdfValid_,
                        &NotifieeConst::onGroupOpenFlowVxlanAclUdfValid );
   }
   Kiln::Ptr< GroupUdfQual >
   groupIdToOpenFlowAclUdf( U8 k ) const {
      return groupIdToOpenFlowAclUdf_.get( k );
   }
   bool groupIdToOpenFlowAclUdfHas( U8 k ) const { return groupIdToOpenFlowAclUdf_.has( k ); }
   Kiln::Ptr< GroupUdfQual >
   groupIdToOpenFlowAclUdfIs( U8 k ) {
      return collectionEntityIs( groupIdToOpenFlowAclUdf_, k,
                                 &NotifieeConst::onGroupIdToOpenFlowAclUdf, k );
   }
   void
   groupIdToOpenFlowAclUdfDel( U8 k ) {
      collectionDel( groupIdToOpenFlowAclUdf_, k, &NotifieeConst::onGroupIdToOpenFlowAclUdf );
   }
   void
   groupIdToOpenFlowAclUdfDelAll() {
      collectionDelAll( groupIdToOpenFlowAclUdf_, &NotifieeConst::onGroupIdToOpenFlowAclUdf );
   }
   Kiln::Ptr< GroupUdfQual >
   groupIdToOpenFlowVxlanAclUdf( U8 k ) const {
      return groupIdToOpenFlowVxlanAclUdf_.get( k );
   }
   bool
   groupIdToOpenFlowVxlanAclUdfHas( U8 k ) const {
      return groupIdToOpenFlowVxlanAclUdf_.has( k );
   }
   Kiln::Ptr< GroupUdfQual >
   groupIdToOpenFlowVxlanAclUdfIs( U8 k ) {
      return collectionEntityIs( groupIdToOpenFlowVxlanAclUdf_, k,
                                 &NotifieeConst::onGroupIdToOpenFlowVxlanAclUdf, k );
   }
   void
   groupIdToOpenFlowVxlanAclUdfDel( U8 k ) {
      collectionDel( groupIdToOpenFlowVxlanAclUdf_, k,
                     &NotifieeConst::onGroupIdToOpenFlowVxlanAclUdf );
   }
   void
   groupIdToOpenFlowVxlanAclUdfDelAll() {
      collectionDelAll( groupIdToOpenFlowVxlanAclUdf_,
                        &NotifieeConst::onGroupIdToOpenFlowVxlanAclUdf );
   }
   UdfIdList pktFmtIdToUdfId( PktFmtId k ) const { return pktFmtIdToUdfId_.get( k ); }
   bool pktFmtIdToUdfIdHas( PktFmtId k ) const { return pktFmtIdToUdfId_.has( k ); }
   void
   pktFmtIdToUdfIdIs( PktFmtId k, const UdfIdList & v ) {
      collectionIs( pktFmtIdToUdfId_, k, v, &NotifieeConst::onPktFmtIdToUdfId );
   }
   void
   pktFmtIdToUdfIdDel( PktFmtId k ) {
      collectionDel( pktFmtIdToUdfId_, k, &NotifieeConst::onPktFmtIdToUdfId );
   }
   void
   pktFmtIdToUdfIdDelAll() {
      collectionDelAll( pktFmtIdToUdfId_, &NotifieeConst::onPktFmtIdToUdfId );
   }
   const Kiln::OrderedCollection< PktFmtId, UdfIdList > &
   pktFmtIdToUdfIdCollection() const {
      return pktFmtIdToUdfId_;
   }
   U32 openFlowUdfIpProto( U32 k ) const { return openFlowUdfIpProto_.get( k ); }
   bool openFlowUdfIpProtoHas( U32 k ) const { return openFlowUdfIpProto_.has( k ); }
   void
   openFlowUdfIpProtoIs( U32 k, U32 v ) {
      collectionIs( openFlowUdfIpProto_, k, v, &NotifieeConst::onOpenFlowUdfIpProto );
   }
   void
   openFlowUdfIpProtoDel( U32 k ) {
      collectionDel( openFlowUdfIpProto_, k, &NotifieeConst::onOpenFlowUdfIpProto );
   }
   void
   openFlowUdfIpProtoDelAll() {
      collectionDelAll( openFlowUdfIpProto_, &NotifieeConst::onOpenFlowUdfIpProto );
   }
   U32 ipQualToUdf( U32 k ) const { return ipQualToUdf_.get( k ); }
   bool ipQualToUdfHas( U32 k ) const { return ipQualToUdf_.has( k ); }
   void
   ipQualToUdfIs( U32 k, U32 v ) {
      collectionIs( ipQualToUdf_, k, v, &NotifieeConst::onIpQualToUdf );
   }
   void ipQualToUdfDel( U32 k ) { collectionDel( ipQualToUdf_, k, &NotifieeConst::onIpQualToUdf ); }
   void ipQualToUdfDelAll() { collectionDelAll( ipQualToUdf_, &NotifieeConst::onIpQualToUdf ); }
   UdfUnitSpec ipAclUdf( const UdfUnitKey & k ) const { return ipAclUdf_.get( k ); }
   bool ipAclUdfHas( const UdfUnitKey & k ) const { return ipAclUdf_.has( k ); }
   void
   ipAclUdfIs( const UdfUnitKey & k, const UdfUnitSpec & v ) {
      collectionIs( ipAclUdf_, k, v, &NotifieeConst::onIpAclUdf );
   }
   void
   ipAclUdfDel( const UdfUnitKey & k ) {
      collectionDel( ipAclUdf_, k, &NotifieeConst::onIpAclUdf );
   }
   void ipAclUdfDelAll() { collectionDelAll( ipAclUdf_, &NotifieeConst::onIpAclUdf ); }
   const Kiln::OrderedCollection< UdfUnitKey, UdfUnitSpec > &
   ipAclUdfCollection() const {
      return ipAclUdf_;
   }
   UdfUnitSpec ip6AclUdf( const UdfUnitKey & k ) const { return ip6AclUdf_.get( k ); }
   bool ip6AclUdfHas( const UdfUnitKey & k ) const { return ip6AclUdf_.has( k ); }
   void
   ip6AclUdfIs( const UdfUnitKey & k, const UdfUnitSpec & v ) {
      collectionIs( ip6AclUdf_, k, v, &NotifieeConst::onIp6AclUdf );
   }
   void
   ip6AclUdfDel( const UdfUnitKey & k ) {
      collectionDel( ip6AclUdf_, k, &NotifieeConst::onIp6AclUdf );
   }
   void ip6AclUdfDelAll() { collectionDelAll( ip6AclUdf_, &NotifieeConst::onIp6AclUdf ); }
   const Kiln::OrderedCollection< UdfUnitKey, UdfUnitSpec > &
   ip6AclUdfCollection() const {
      return ip6AclUdf_;
   }
   UdfUnitSpec macAclUdf( const UdfUnitKey & k ) const { return macAclUdf_.get( k ); }
   bool macAclUdfHas( const UdfUnitKey & k ) const { return macAclUdf_.has( k ); }
   void
   macAclUdfIs( const UdfUnitKey & k, const UdfUnitSpec & v ) {
      collectionIs( macAclUdf_, k, v, &NotifieeConst::onMacAclUdf );
   }
   void
   macAclUdfDel( const UdfUnitKey & k ) {
      collectionDel( macAclUdf_, k, &NotifieeConst::onMacAclUdf );
   }
   void macAclUdfDelAll() { collectionDelAll( macAclUdf_, &NotifieeConst::onMacAclUdf ); }
   const Kiln::OrderedCollection< UdfUnitKey, UdfUnitSpec > &
   macAclUdfCollection() const {
      return macAclUdf_;
   }
   UdfUnitSpec openFlowAclUdf( const UdfUnitKey & k ) const { return openFlowAclUdf_.get( k ); }
   bool openFlowAclUdfHas( const UdfUnitKey & k ) const { return openFlowAclUdf_.has( k ); }
   void
   openFlowAclUdfIs( const UdfUnitKey & k, const UdfUnitSpec & v ) {
      collectionIs( openFlowAclUdf_, k, v, &NotifieeConst::onOpenFlowAclUdf );
   }
   void
   openFlowAclUdfDel( const UdfUnitKey & k ) {
      collectionDel( openFlowAclUdf_, k, &NotifieeConst::onOpenFlowAclUdf );
   }
   void
   openFlowAclUdfDelAll() {
      collectionDelAll( openFlowAclUdf_, &NotifieeConst::onOpenFlowAclUdf );
   }
   const Kiln::OrderedCollection< UdfUnitKey, UdfUnitSpec > &
   openFlowAclUdfCollection() const {
      return openFlowAclUdf_;
   }
   UdfUnitSpec
   openFlowVxlanAclUdf( const UdfUnitKey & k ) const {
      return openFlowVxlanAclUdf_.get( k );
   }
   bool
   openFlowVxlanAclUdfHas( const UdfUnitKey & k ) const {
      return openFlowVxlanAclUdf_.has( k );
   }
   void
   openFlowVxlanAclUdfIs( const UdfUnitKey & k, const UdfUnitSpec & v ) {
      collectionIs( openFlowVxlanAclUdf_, k, v, &NotifieeConst::onOpenFlowVxlanAclUdf );
   }
   void
   openFlowVxlanAclUdfDel( const UdfUnitKey & k ) {
      collectionDel( openFlowVxlanAclUdf_, k, &NotifieeConst::onOpenFlowVxlanAclUdf );
   }
   void
   openFlowVxlanAclUdfDelAll() {
      collectionDelAll( openFlowVxlanAclUdf_, &NotifieeConst::onOpenFlowVxlanAclUdf );
   }
   const Kiln::OrderedCollection< UdfUnitKey, UdfUnitSpec > &
   openFlowVxlanAclUdfCollection() const {
      return openFlowVxlanAclUdf_;
   }
   U32 maxUdfLength( U32 k ) const { return maxUdfLength_.get( k ); }
   bool maxUdfLengthHas( U32 k ) const { return maxUdfLength_.has( k ); }
   void
   maxUdfLengthIs( U32 k, U32 v ) {
      collectionIs( maxUdfLength_, k, v, &NotifieeConst::onMaxUdfLength );
   }
   void
   maxUdfLengthDel( U32 k ) {
      collectionDel( maxUdfLength_, k, &NotifieeConst::onMaxUdfLength );
   }
   void maxUdfLengthDelAll() { collectionDelAll( maxUdfLength_, &NotifieeConst::onMaxUdfLength ); }
   bool udfResourceError( U8 k ) const { return udfResourceError_.get( k ); }
   bool udfResourceErrorHas( U8 k ) const { return udfResourceError_.has( k ); }
   void
   udfResourceErrorIs( U8 k, bool v ) {
      collectionIs( udfResourceError_, k, v, &NotifieeConst::onUdfResourceError );
   }
   void
   udfResourceErrorDel( U8 k ) {
      collectionDel( udfResourceError_, k, &NotifieeConst::onUdfResourceError );
   }
   void
   udfResourceErrorDelAll() {
      collectionDelAll( udfResourceError_, &NotifieeConst::onUdfResourceError );
   }

   // --- mirroring ACL groups ---
   bool groupMirroringAclValid( U8 k ) const { return groupMirroringAclValid_.get( k ); }
   bool groupMirroringAclValidHas( U8 k ) const { return groupMirroringAclValid_.has( k ); }
   void
   groupMirroringAclValidIs( U8 k, bool v ) {
      collectionIs( groupMirroringAclValid_, k, v, &NotifieeConst::onGroupMirroringAclValid );
   }
   void
   groupMirroringAclValidDel( U8 k ) {
      collectionDel( groupMirroringAclValid_, k, &NotifieeConst::onGroupMirroringAclValid );
   }
   void
   groupMirroringAclValidDelAll() {
      collectionDelAll( groupMirroringAclValid_, &NotifieeConst::onGroupMirroringAclValid );
   }
   const Kiln::OrderedCollection< U8, bool > &
   groupMirroringAclValidCollection() const {
      return groupMirroringAclValid_;
   }
   int groupMirroringAclType( U8 k ) const { return groupMirroringAclType_.get( k ); }
   bool groupMirroringAclTypeHas( U8 k ) const { return groupMirroringAclType_.has( k ); }
   void
   groupMirroringAclTypeIs( U8 k, int v ) {
      collectionIs( groupMirroringAclType_, k, v, &NotifieeConst::onGroupMirroringAclType );
   }
   void
   groupMirroringAclTypeDel( U8 k ) {
      collectionDel( groupMirroringAclType_, k, &NotifieeConst::onGroupMirroringAclType );
   }
   void
   groupMirroringAclTypeDelAll() {
      collectionDelAll( groupMirroringAclType_, &NotifieeConst::onGroupMirroringAclType );
   }
   U32 mirrorAclGroupToPriority( U32 k ) const { return mirrorAclGroupToPriority_.get( k ); }
   bool mirrorAclGroupToPriorityHas( U32 k ) const { return mirrorAclGroupToPriority_.has( k ); }
   void
   mirrorAclGroupToPriorityIs( U32 k, U32 v ) {
      collectionIs( mirrorAclGroupToPriority_, k, v, &NotifieeConst::onMirrorAclGroupToPriority );
   }
   void
   mirrorAclGroupToPriorityDel( U32 k ) {
      collectionDel( mirrorAclGroupToPriority_, k, &NotifieeConst::onMirrorAclGroupToPriority );
   }
   void
   mirrorAclGroupToPriorityDelAll() {
      collectionDelAll( mirrorAclGroupToPriority_, &NotifieeConst::onMirrorAclGroupToPriority );
   }
   const Kiln::OrderedCollection< U32, U32 > &
   mirrorAclGroupToPriorityCollection() const {
      return mirrorAclGroupToPriority_;
   }

   // --- qualifier sets ---
   Kiln::Ptr< QualPreselDataList > excludedQual( U32 k ) const { return excludedQual_.get( k ); }
   bool excludedQualHas( U32 k ) const { return excludedQual_.has( k ); }
   Kiln::Ptr< QualPreselDataList >
   excludedQualIs( U32 k ) {
      return collectionEntityIs( excludedQual_, k, &NotifieeConst::onExcludedQual, k );
   }
   void
   excludedQualDel( U32 k ) {
      collectionDel( excludedQual_, k, &NotifieeConst::onExcludedQual );
   }
   void excludedQualDelAll() { collectionDelAll( excludedQual_, &NotifieeConst::onExcludedQual ); }
   U32
   groupIdToExcludeIndex( const GroupQsetModKey & k ) const {
      return groupIdToExcludeIndex_.get( k );
   }
   bool
   groupIdToExcludeIndexHas( const GroupQsetModKey & k ) const {
      return groupIdToExcludeIndex_.has( k );
   }
   void
   groupIdToExcludeIndexIs( const GroupQsetModKey & k, U32 v ) {
      collectionIs( groupIdToExcludeIndex_, k, v, &NotifieeConst::onGroupIdToExcludeIndex );
   }
   void
   groupIdToExcludeIndexDel( const GroupQsetModKey & k ) {
      collectionDel( groupIdToExcludeIndex_, k, &NotifieeConst::onGroupIdToExcludeIndex );
   }
   void
   groupIdToExcludeIndexDelAll() {
      collectionDelAll( groupIdToExcludeIndex_, &NotifieeConst::onGroupIdToExcludeIndex );
   }
   const Kiln::OrderedCollection< GroupQsetModKey, U32 > &
   groupIdToExcludeIndexCollection() const {
      return groupIdToExcludeIndex_;
   }
   U32
   groupIdToIncludeIndex( const GroupQsetModKey & k ) const {
      return groupIdToIncludeIndex_.get( k );
   }
   bool
   groupIdToIncludeIndexHas( const GroupQsetModKey & k ) const {
      return groupIdToIncludeIndex_.has( k );
   }
   void
   groupIdToIncludeIndexIs( const GroupQsetModKey & k, U32 v ) {
      collectionIs( groupIdToIncludeIndex_, k, v, &NotifieeConst::onGroupIdToIncludeIndex );
   }
   void
   groupIdToIncludeIndexDel( const GroupQsetModKey & k ) {
      collectionDel( groupIdToIncludeIndex_, k, &NotifieeConst::onGroupIdToIncludeIndex );
   }
   void
   groupIdToIncludeIndexDelAll() {
      collectionDelAll( groupIdToIncludeIndex_, &NotifieeConst::onGroupIdToIncludeIndex );
   }
   const Kiln::OrderedCollection< GroupQsetModKey, U32 > &
   groupIdToIncludeIndexCollection() const {
      return groupIdToIncludeIndex_;
   }
   bool sliceFreedHas( U32 k ) const { return sliceFreed_.has( k ); }
   void sliceFreedIs( U32 k ) { collectionIs( sliceFreed_, k, &NotifieeConst::onSliceFreed ); }
   void sliceFreedDel( U32 k ) { collectionDel( sliceFreed_, k, &NotifieeConst::onSliceFreed ); }
   void sliceFreedDelAll() { collectionDelAll( sliceFreed_, &NotifieeConst::onSliceFreed ); }
   const Kiln::OrderedSet< U32 > &
   sliceFreedCollection() const {
      return sliceFreed_;
   }
   bool managedPriority( U32 k ) const { return managedPriority_.get( k ); }
   bool managedPriorityHas( U32 k ) const { return managedPriority_.has( k ); }
   void
   managedPriorityIs( U32 k, bool v ) {
      collectionIs( managedPriority_, k, v, &NotifieeConst::onManagedPriority );
   }
   void
   managedPriorityDel( U32 k ) {
      collectionDel( managedPriority_, k, &NotifieeConst::onManagedPriority );
   }
   void
   managedPriorityDelAll() {
      collectionDelAll( managedPriority_, &NotifieeConst::onManagedPriority );
   }
   U16 maxPorts() const { return maxPorts_.get(); }
   void maxPortsIs( U16 v ) { attributeIs( maxPorts_, v, &NotifieeConst::onMaxPorts ); }
   bool ipv6MirroringSupported() const { return ipv6MirroringSupported_.get(); }
   void
   ipv6MirroringSupportedIs( bool v ) {
      attributeIs( ipv6MirroringSupported_, v, &NotifieeConst::onIpv6MirroringSupported );
   }
   Kiln::Ptr< TesselTcamEntryManager >
   tcamManagerForEntry( U32 k ) const {
      return tcamManagerForEntry_.get( k );
   }
   bool tcamManagerForEntryHas( U32 k ) const { return tcamManagerForEntry_.has( k ); }
   // The owner in place, or null; valid until the next tcamManagerForEntryIs.
   const Kiln::Ptr< TesselTcamEntryManager > *
   tcamManagerForEntryFind( U32 k ) const {
      return tcamManagerForEntry_.find( k );
   }
   void
   tcamManagerForEntryIs( U32 k, const Kiln::Ptr< TesselTcamEntryManager > & v ) {
      collectionIs( tcamManagerForEntry_, k, v, &NotifieeConst::onTcamManagerForEntry );
   }
   void
   tcamManagerForEntryDel( U32 k ) {
      collectionDel( tcamManagerForEntry_, k, &NotifieeConst::onTcamManagerForEntry );
   }
   void
   tcamManagerForEntryDelAll() {
      collectionDelAll( tcamManagerForEntry_, &NotifieeConst::onTcamManagerForEntry );
   }
   TcamStageTypes tcamStage( U32 k ) const { return tcamStage_.get( k ); }
   bool tcamStageHas( U32 k ) const { return tcamStage_.has( k ); }
   void
   tcamStageIs( U32 k, TcamStageTypes v ) {
      collectionIs( tcamStage_, k, v, &NotifieeConst::onTcamStage );
   }
   void tcamStageDel( U32 k ) { collectionDel( tcamStage_, k, &NotifieeConst::onTcamStage ); }
   void tcamStageDelAll() { collectionDelAll( tcamStage_, &NotifieeConst::onTcamStage ); }
   const Kiln::OrderedCollection< U32, TcamStageTypes > &
   tcamStageCollection() const {
      return tcamStage_;
   }
   U32 groupHintIdInfo( const GroupUnitKey & k ) const { return groupHintIdInfo_.get( k ); }
   bool groupHintIdInfoHas( const GroupUnitKey & k ) const { return groupHintIdInfo_.has( k ); }
   void
   groupHintIdInfoIs( const GroupUnitKey & k, U32 v ) {
      collectionIs( groupHintIdInfo_, k, v, &NotifieeConst::onGroupHintIdInfo );
   }
   void
   groupHintIdInfoDel( const GroupUnitKey & k ) {
      collectionDel( groupHintIdInfo_, k, &NotifieeConst::onGroupHintIdInfo );
   }
   void
   groupHintIdInfoDelAll() {
      collectionDelAll( groupHintIdInfo_, &NotifieeConst::onGroupHintIdInfo );
   }
   const Kiln::OrderedCollection< GroupUnitKey, U32 > &
   groupHintIdInfoCollection() const {
      return groupHintIdInfo_;
   }

   // --- range checkers ---
   bool rangeCheckersExhaustedHas( U32 k ) const { return rangeCheckersExhausted_.has( k ); }
   void
   rangeCheckersExhaustedIs( U32 k ) {
      collectionIs( rangeCheckersExhausted_, k, &NotifieeConst::onRangeCheckersExhausted );
   }
   void
   rangeCheckersExhaustedDel( U32 k ) {
      collectionDel( rangeCheckersExhausted_, k, &NotifieeConst::onRangeCheckersExhausted );
   }
   void
   rangeCheckersExhaustedDelAll() {
      collectionDelAll( rangeCheckersExhausted_, &NotifieeConst::onRangeCheckersExhausted );
   }
   Kiln::Ptr< RangeCheckerData >
   rangeChecker( const RangeCheckerDesc & k ) const {
      return rangeChecker_.get( k );
   }
   bool rangeCheckerHas( const RangeCheckerDesc & k ) const { return rangeChecker_.has( k ); }
   Kiln::Ptr< RangeCheckerData >
   rangeCheckerIs( const RangeCheckerDesc & k ) {
      return collectionEntityIs( rangeChecker_, k, &NotifieeConst::onRangeChecker, k );
   }
   void
   rangeCheckerDel( const RangeCheckerDesc & k ) {
      collectionDel( rangeChecker_, k, &NotifieeConst::onRangeChecker );
   }
   void rangeCheckerDelAll() { collectionDelAll( rangeChecker_, &NotifieeConst::onRangeChecker ); }
   const Kiln::OrderedCollection< RangeCheckerDesc, Kiln::Ptr< RangeCheckerData > > &
   rangeCheckerCollection() const {
      return rangeChecker_;
   }
   Kiln::Ptr< UnitRangeIdInfo >
   unitRangeInfo( const UnitRangeInfoKey & k ) const {
      return unitRangeInfo_.get( k );
   }
   bool unitRangeInfoHas( const UnitRangeInfoKey & k ) const { return unitRangeInfo_.has( k ); }
   Kiln::Ptr< UnitRangeIdInfo >
   unitRangeInfoIs( const UnitRangeInfoKey & k ) {
      return collectionEntityIs( unitRangeInfo_, k, &NotifieeConst::onUnitRangeInfo, k );
   }
   void
   unitRangeInfoDel( const UnitRangeInfoKey & k ) {
      collectionDel( unitRangeInfo_, k, &NotifieeConst::onUnitRangeInfo );
   }
   void
   unitRangeInfoDelAll() {
      collectionDelAll( unitRangeInfo_, &NotifieeConst::onUnitRangeInfo );
   }
   const Kiln::OrderedCollection< UnitRangeInfoKey, Kiln::Ptr< UnitRangeIdInfo > > &
   unitRangeInfoCollection() const {
      return unitRangeInfo_;
   }
   Kiln::Ptr< EntryToRangeCheckIds >
   entryRangeCheckId( U32 k ) const {
      return entryRangeCheckId_.get( k );
   }
   bool entryRangeCheckIdHas( U32 k ) const { return entryRangeCheckId_.has( k ); }
   Kiln::Ptr< EntryToRangeCheckIds >
   entryRangeCheckIdIs( U32 k ) {
      return collectionEntityIs( entryRangeCheckId_, k, &NotifieeConst::onEntryRangeCheckId, k );
   }
   void
   entryRangeCheckIdDel( U32 k ) {
      collectionDel( entryRangeCheckId_, k, &NotifieeConst::onEntryRangeCheckId );
   }
   void
   entryRangeCheckIdDelAll() {
      collectionDelAll( entryRangeCheckId_, &NotifieeConst::onEntryRangeCheckId );
   }

   // --- command line channel and preselectors ---
   U32 groupIdToPreselId( const UnitGroupId & k ) const { return groupIdToPreselId_.get( k ); }
   bool groupIdToPreselIdHas( const UnitGroupId & k ) const { return groupIdToPreselId_.has( k ); }
   void
   groupIdToPreselIdIs( const UnitGroupId & k, U32 v ) {
      collectionIs( groupIdToPreselId_, k, v, &NotifieeConst::onGroupIdToPreselId );
   }
   void
   groupIdToPreselIdDel( const UnitGroupId & k ) {
      collectionDel( groupIdToPreselId_, k, &NotifieeConst::onGroupIdToPreselId );
   }
   void
   groupIdToPreselIdDelAll() {
      collectionDelAll( groupIdToPreselId_, &NotifieeConst::onGroupIdToPreselId );
   }
   const Kiln::OrderedCollection< UnitGroupId, U32 > &
   groupIdToPreselIdCollection() const {
      return groupIdToPreselId_;
   }
   bool simulation() const { return simulation_.get(); }
   void simulationIs( bool v ) { attributeIs( simulation_, v, &NotifieeConst::onSimulation ); }
   bool preInit() const { return preInit_.get(); }
   void preInitIs( bool v ) { attributeIs( preInit_, v, &NotifieeConst::onPreInit ); }
 private:
   class AclParamConfigReactor;
   class PlatformStateReactor;
   void copyAclParamConfig();
   U32 sharedMirrorAclPriority( U32 groupId, int mirAclType ) const;
   bool preselInUse( U32 unit, U32 preselId ) const;
   void setUpUnit( U32 unit, const Agent::ChipInfo & info );
   void registerReservations( U32 unit, const Agent::ChipInfo & info );
   void forgetUnit( U32 unit );
   void addGroupUser( U32 unit, U32 groupId );
   // Entry managers came or went: the by-group lists are built again and
   // calm groups' exhaustion marks are checked again.
   void
   managersChanged() {
      managersByGroupStale_ = true;
      exhaustionChanged();
   }
   void compressEntriesOfGroup( U32 unit, U32 groupId );
   void destroyGroupOnUnit( U32 unit, U32 groupId, bool destroyUdf );
   void destroyGroupUdfQualifiers( U32 unit, U32 groupId );
   void compressGroupsOfUnit( U32 unit );
   void crossCheckPackets( U32 unit, U32 statsId, bcm_field_stat_t stat, U64 expected );
   int statCounterIndex( U32 unit, U32 statsId, bcm_field_stat_t stat,
                         const oberon_stat_pool_index & info );
   template< typename Manager, typename Map, typename Callback >
   Kiln::Ptr< Manager > entryManagerMake( Map & map, Callback callback, const char * collection,
                                          TcamGroupAssignment groupAssignment,
                                          const Kiln::String & desc,
                                          TesselTcamGroupManager * groupManager, U32 group,
                                          U32 baseEntry, U32 endEntry,
                                          TcamAllocationStrategy strategy );

   bool initialized_ = false; // handleInitialized has run
   Kiln::Ptr< Acl::ParamConfig > aclParamConfig_;
   std::unique_ptr< AclParamConfigReactor > aclParamConfigReactor_;
   Kiln::Ptr< TesselTcamStub > tesselTcamStub_;
   Kiln::Ptr< GroupManagerVaultRequest > groupManagerVaultRequest_;
   Kiln::Ptr< GroupManagerVaultSm > groupManagerVaultSm_;
   Kiln::Ptr< Agent::VlanState > vlanState_;
   Kiln::Ptr< Agent::PlatformState > platformState_;
   std::unique_ptr< PlatformStateReactor > platformStateReactor_;
   std::map< U32, Shim::PortConfig > portConfigs_; // by unit
   mutable std::map< U32, std::vector< Kiln::Ptr< TesselTcamEntryManager > > > managersByGroup_;
   mutable bool managersByGroupStale_ = true;
   U64 exhaustionGeneration_ = 0;
   Kiln::Attribute< bool > paclSliceSharingSupported_;
   Kiln::Attribute< bool > mirrorAclSliceSharingSupported_;
   Kiln::Attribute< bool > qosAclSliceSharingSupported_;
   Kiln::Attribute< Acl::TcamBankSharingMode > paclIpv6KeyWidthMode_{
      Acl::tcamBankSharingModeDefault };
   Kiln::Attribute< Acl::TcamBankSharingMode > qosIpv6KeyWidthMode_{
      Acl::tcamBankSharingModeDefault };
   Kiln::Attribute< Kiln::Ptr< TesselTcam::CliVaultHelper > > cliVaultHelper_;
   Kiln::OrderedCollection< U16, Agent::ChipInfo > modChipInfo_;
   Kiln::Attribute< U32 > numPipe_;
   Kiln::OrderedCollection< U32, bool > stageIngress_;
   EntryManagerMap entryManager_;
   Kiln::Attribute< bool > ingressRaclSharingSupported_;
   Kiln::Attribute< bool > qosAclSharingSupported_;
   Kiln::Attribute< bool > p4RuntimeEnabled_;
   UnboundedEntryManagerMap unboundedEntryManager_;
   Kiln::Attribute< Kiln::Ptr< Kiln::Entity > > featureAgentConfigDir_;
   Kiln::Attribute< Kiln::Ptr< Kiln::Entity > > featureAgentStatusDir_;
   Kiln::Attribute< Kiln::Ptr< Agent::TesselCommonSmData > > tesselCommonSmData_;
   Kiln::OrderedCollection< GroupIdToPipeGroupId, Kiln::Ptr< GroupCounts > > groupCounts_;
   U64 groupCountsGeneration_ = 0;
   Kiln::OrderedCollection< U32, Kiln::Ptr< TesselOvidWarSm > > ovidWarSm_;
   Kiln::OrderedCollection< U32, bool > ovidWar_;
   Kiln::Attribute< Kiln::Ptr< Kiln::Entity > > evictStatus_;
   Kiln::Attribute< Kiln::Ptr< Kiln::Entity > > evictClear_;
   Kiln::Attribute< Kiln::Ptr< Kiln::Entity > > miscConfig_;
   ExactMatchClassIdMap l4SrcPortClassId_;
   ExactMatchClassIdMap l4DstPortClassId_;
   ExactMatchClassIdMap ipProtocolClassId_;
   ExactMatchClassIdMap etherTypeClassId_;
   ClassIdMap srcIpClassId_;
   ClassIdMap dstIpClassId_;
   Kiln::Attribute< bool > vfiForwarding_;
   Kiln::Attribute< bool > hitlessInit_;
   Kiln::OrderedCollection< U32, U32 > udfQualRef_;
   Kiln::OrderedCollection< U8, Kiln::Ptr< GroupUdfQual > > groupIdToAclUdf_;
   Kiln::OrderedCollection< U8, bool > groupOpenFlowAclUdfValid_;
   Kiln::OrderedCollection< U8, bool > groupOpenFlowVxlanAclUdfValid_;
   Kiln::OrderedCollection< U8, Kiln::Ptr< GroupUdfQual > > groupIdToOpenFlowAclUdf_;
   Kiln::OrderedCollection< U8, Kiln::Ptr< GroupUdfQual > > groupIdToOpenFlowVxlanAclUdf_;
   Kiln::OrderedCollection< PktFmtId, UdfIdList > pktFmtIdToUdfId_;
   Kiln::OrderedCollection< U32, U32 > openFlowUdfIpProto_;
   Kiln::OrderedCollection< U32, U32 > ipQualToUdf_;
   Kiln::OrderedCollection< UdfUnitKey, UdfUnitSpec > ipAclUdf_;
   Kiln::OrderedCollection< UdfUnitKey, UdfUnitSpec > ip6AclUdf_;
   Kiln::OrderedCollection< UdfUnitKey, UdfUnitSpec > macAclUdf_;
   Kiln::OrderedCollection< UdfUnitKey, UdfUnitSpec > openFlowAclUdf_;
   Kiln::OrderedCollection< UdfUnitKey, UdfUnitSpec > openFlowVxlanAclUdf_;
   Kiln::OrderedCollection< U32, U32 > maxUdfLength_;
   Kiln::OrderedCollection< U8, bool > udfResourceError_;
   Kiln::OrderedCollection< U8, bool > groupMirroringAclValid_;
   Kiln::OrderedCollection< U8, int > groupMirroringAclType_;
   Kiln::OrderedCollection< U32, U32 > mirrorAclGroupToPriority_;
   Kiln::OrderedCollection< U32, Kiln::Ptr< QualPreselDataList > > excludedQual_;
   Kiln::OrderedCollection< GroupQsetModKey, U32 > groupIdToExcludeIndex_;
   Kiln::OrderedCollection< GroupQsetModKey, U32 > groupIdToIncludeIndex_;
   Kiln::OrderedSet< U32 > sliceFreed_;
   Kiln::OrderedCollection< U32, bool > managedPriority_;
   Kiln::Attribute< U16 > maxPorts_;
   Kiln::Attribute< bool > ipv6MirroringSupported_;
   // Written and erased with every entry handed out: a flat table.
   Kiln::FlatHashCollection< U32, Kiln::Ptr< TesselTcamEntryManager >, EntryIdHash >
      tcamManagerForEntry_;
   Kiln::OrderedCollection< U32, TcamStageTypes > tcamStage_;
   Kiln::OrderedCollection< GroupUnitKey, U32 > groupHintIdInfo_;
   Kiln::OrderedSet< U32 > rangeCheckersExhausted_;
   Kiln::OrderedCollection< RangeCheckerDesc, Kiln::Ptr< RangeCheckerData > > rangeChecker_;
   Kiln::OrderedCollection< UnitRangeInfoKey, Kiln::Ptr< UnitRangeIdInfo > > unitRangeInfo_;
   Kiln::OrderedCollection< U32, Kiln::Ptr< EntryToRangeCheckIds > > entryRangeCheckId_;
   Kiln::OrderedCollection< UnitGroupId, U32 > groupIdToPreselId_;
   Kiln::Attribute< bool > simulation_;
   Kiln::Attribute< bool > preInit_;};

} // namespace Tessel
