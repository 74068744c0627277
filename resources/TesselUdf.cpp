// User-defined fields: the shared, counted records of the fields and the
// width budgets; the mechanisms live in TesselUdfTcam.cpp,
// TesselUdfModule.cpp and TesselUdfFlex.cpp.
#include "manager/TesselTcamGroupManager.h"

#include <algorithm>

#include "platform/fastlog/LogMessage.h"
#include "platform/fastlog/Trace.h"
#include "platform/kiln/ValueText.h"
#include "resources/TesselUdfMessages.h"

TRACE_CHANNEL( "TesselTcam" );

namespace Tessel {

namespace {

const char *
foundText( TesselTcamGroupManager::UdfTable table ) {
   switch ( table ) {
    case TesselTcamGroupManager::udfTableIp:
      return " Found existing IP ACL udf quals: ";
    case TesselTcamGroupManager::udfTableIp6:
      return " Found existing IP6 ACL udf quals: ";
    case TesselTcamGroupManager::udfTableMac:
      return " Found existing MAC ACL udf quals: ";
    case TesselTcamGroupManager::udfTableOpenFlow:
      return " Found existing OpenFlow ACL udf quals: ";
    case TesselTcamGroupManager::udfTableOpenFlowVxlan:
      break;
   }
   return " Found existing OpenFlow VXLAN ACL udf quals: ";
}

// The OpenFlow fields are IPv4 fields.
int
aclTypeOf( TesselTcamGroupManager::UdfTable table ) {
   return table <= TesselTcamGroupManager::udfTableMac ? static_cast< int >( table )
                                                        : Acl::ipv4_;
}

std::string
qualsText( const QualIdList & quals ) {
   return Kiln::valueText( quals );
}

bool
sameField( const UdfUnitSpec & spec, const TesselTcamGroupManager::UdfField & field,
           U8 offset ) {
   return spec.key().unit == field.unit && spec.ethType() == field.ethType &&
          spec.base() == field.base && spec.offset() == offset &&
          spec.length() == field.length && spec.ipProtocol() == field.ipProtocol;
}

} // namespace

// --- records -----------------------------------------------------------------

TesselTcamGroupManager::UdfTable
TesselTcamGroupManager::udfTableOf( int aclType ) {
   if ( aclType == Acl::ipv4_ ) {
      return udfTableIp;
   }
   if ( aclType == Acl::ipv6_ ) {
      return udfTableIp6;
   }
   KILN_ASSERT( aclType == Acl::mac() );
   return udfTableMac;
}

const Kiln::OrderedCollection< UdfUnitKey, UdfUnitSpec > &
TesselTcamGroupManager::udfSpecs( UdfTable table ) const {
   switch ( table ) {
    case udfTableIp:
      return ipAclUdf_;
    case udfTableIp6:
      return ip6AclUdf_;
    case udfTableMac:
      return macAclUdf_;
    case udfTableOpenFlow:
      return openFlowAclUdf_;
    case udfTableOpenFlowVxlan:
      break;
   }
   return openFlowVxlanAclUdf_;
}

void
TesselTcamGroupManager::udfSpecIs( UdfTable table, const UdfUnitSpec & spec ) {
   switch ( table ) {
    case udfTableIp:
      return ipAclUdfIs( spec.key(), spec );
    case udfTableIp6:
      return ip6AclUdfIs( spec.key(), spec );
    case udfTableMac:
      return macAclUdfIs( spec.key(), spec );
    case udfTableOpenFlow:
      return openFlowAclUdfIs( spec.key(), spec );
    case udfTableOpenFlowVxlan:
      return openFlowVxlanAclUdfIs( spec.key(), spec );
   }
}

void
TesselTcamGroupManager::udfSpecDel( UdfTable table, const UdfUnitKey & key ) {
   switch ( table ) {
    case udfTableIp:
      return ipAclUdfDel( key );
    case udfTableIp6:
      return ip6AclUdfDel( key );
    case udfTableMac:
      return macAclUdfDel( key );
    case udfTableOpenFlow:
      return openFlowAclUdfDel( key );
    case udfTableOpenFlowVxlan:
      return openFlowVxlanAclUdfDel( key );
   }
}

Kiln::Ptr< GroupUdfQual >
TesselTcamGroupManager::groupUdfQual( UdfTable table, U32 groupId ) const {
   U8 group = static_cast< U8 >( groupId );
   return table == udfTableOpenFlow        ? groupIdToOpenFlowAclUdf( group )
          : table == udfTableOpenFlowVxlan ? groupIdToOpenFlowVxlanAclUdf( group )
                                           : groupIdToAclUdf( group );
}

Kiln::Ptr< GroupUdfQual >
TesselTcamGroupManager::groupUdfQualIs( UdfTable table, U32 groupId ) {
   U8 group = static_cast< U8 >( groupId );
   return table == udfTableOpenFlow        ? groupIdToOpenFlowAclUdfIs( group )
          : table == udfTableOpenFlowVxlan ? groupIdToOpenFlowVxlanAclUdfIs( group )
                                           : groupIdToAclUdfIs( group );
}

// --- offsets and budgets -------------------------------------------------------

U8
TesselTcamGroupManager::adjustOffset( UdfOffsetBase base, int aclType, U8 offset ) {
   if ( base != UdfBaseL3HeaderEnd ) {
      return offset;
   }
   if ( aclType == Acl::ipv4_ ) {
      return static_cast< U8 >( offset + 20 );
   }
   KILN_ASSERT( aclType == Acl::ipv6_ );
   return static_cast< U8 >( offset + 40 );
}

U32
TesselTcamGroupManager::unitMaxUdfLength( U32 unit ) const {
   if ( maxUdfLengthHas( unit ) ) {
      return maxUdfLength( unit );
   }
   const Agent::ChipInfo * info = chipInfo( unit );
   return info ? info->maxUdfLength() : 0;
}

// Bytes of the fields on the unit that count against a new field of the
// table: the table's, or all three ACL types' where the chip joins them;
// with `group`, only those the group uses.
U32
TesselTcamGroupManager::udfWidthSum( U32 unit, UdfTable table, const GroupUdfQual * group ) const {
   const Agent::ChipInfo * info = chipInfo( unit );
   bool joined = info && info->udfWidthsJoined() && table <= udfTableMac;
   U32 sum = 0;
   for ( int t = udfTableIp; t <= udfTableOpenFlowVxlan; ++t ) {
      if ( t != table && !( joined && t <= udfTableMac ) ) {
         continue;
      }
      for ( const auto & [ key, spec ] : udfSpecs( static_cast< UdfTable >( t ) ) ) {
         if ( key.unit == unit && ( !group || group->udfQualIdHas( key ) ) ) {
            sum += spec.length();
         }
      }
   }
   return sum;
}

bool
TesselTcamGroupManager::groupUdfWidthExceeded( U32 unit, U32 groupId, U32 groupWidthLimit,
                                               UdfTable table, U32 ethType, U8 length ) const {
   Kiln::Ptr< GroupUdfQual > group = groupUdfQual( table, groupId );
   U32 unitSum = udfWidthSum( unit, table, nullptr );
   U32 groupSum = group ? udfWidthSum( unit, table, group.get() ) : 0;
   U32 unitLimit = unitMaxUdfLength( unit );
   bool unitFits = unitSum + length <= unitLimit;
   if ( unitFits && groupSum + length <= groupWidthLimit ) {
      return false;
   }
   TRACE5( "groupUdfWidthExceeded"
           << " ACL type: " << aclTypeOf( table ) << " Ether type:" << ethType
           << " UDF length: " << U32( length )
           << " Max UDF length:" << ( unitFits ? groupWidthLimit : unitLimit ) );
   return true;
}

// --- find, acquire, release ----------------------------------------------------

UdfUnitSpec
TesselTcamGroupManager::udfFind( UdfTable table, const UdfField & field ) {
   U32 wide = U32( field.offset ) + adjustOffset( field.base, aclTypeOf( table ), 0 );
   if ( wide > UdfUnitSpec::offsetMax ) {
      return UdfUnitSpec();
   }
   U8 offset = static_cast< U8 >( wide );
   const auto & specs = udfSpecs( table );
   auto found = std::find_if( specs.begin(), specs.end(), [ & ]( const auto & item ) {
      return sameField( item.second, field, offset );
   } );
   if ( found == specs.end() ) {
      return UdfUnitSpec();
   }
   UdfUnitSpec spec = found->second;
   TRACE7( foundText( table ) << qualsText( spec.key().quals ) << " ref cnt: "
                              << spec.refCount() );
   udfQualProgrammedInHw( field.unit, spec.key().quals, field.ethType, aclTypeOf( table ),
                          field.base, offset, field.length );
   return spec;
}

// One more user, of the group, of an existing field.
QualIdList
TesselTcamGroupManager::udfShare( UdfTable table, U32 groupId, UdfUnitSpec spec ) {
   spec.refCountIs( spec.refCount() + 1 );
   udfSpecIs( table, spec );
   U32 groups = groupUdfQualIs( table, groupId )->udfQualIdInc( spec.key(), 1 );
   TRACE7( "new refcount for Qual: " << qualsText( spec.key().quals ) << " "
                                     << spec.refCount() << " Groups referencing Qual: "
                                     << qualsText( spec.key().quals ) << " are now: "
                                     << groups );
   return spec.key().quals;
}

QualIdList
TesselTcamGroupManager::udfAcquire( UdfTable table, U32 groupId, U32 groupWidthLimit,
                                    const UdfField & field ) {
   TRACE8( __PRETTY_FUNCTION__ );
   int aclType = aclTypeOf( table );
   UdfUnitSpec::checkLength( field.length );
   UdfUnitSpec::checkOffset( U32( field.offset ) + adjustOffset( field.base, aclType, 0 ) );
   if ( UdfUnitSpec found = udfFind( table, field ) ) {
      return udfShare( table, groupId, found );
   }
   if ( groupUdfWidthExceeded( field.unit, groupId, groupWidthLimit, table, field.ethType,
                               field.length ) ) {
      return {};
   }
   UdfRequest request{ field.unit,   field.ethType,
                       aclType,      field.base,
                       adjustOffset( field.base, aclType, field.offset ),
                       field.length, field.ipProtocol,
                       table == udfTableOpenFlowVxlan };
   QualIdList quals = createUdfQualifier( request );
   if ( quals.empty() ) {
      TRACE5( "Unit: " << field.unit << " could not allocate UDF qualifier" );
      return {};
   }
   UdfUnitSpec spec( UdfUnitKey{ field.unit, quals }, field.base, request.offset, field.length,
                     field.ethType, field.ipProtocol, 1 );
   udfSpecIs( table, spec );
   groupUdfQualIs( table, groupId )->udfQualIdIs( spec.key(), 1 );
   return quals;
}

void
TesselTcamGroupManager::udfRelease( UdfTable table, U32 groupId, const UdfField & field ) {
   TRACE8( __PRETTY_FUNCTION__ );
   UdfUnitSpec spec = udfFind( table, field );
   KILN_ASSERT( !!spec );
   KILN_ASSERT( spec.refCount() > 0 );
   const UdfUnitKey unitKey = spec.key();
   Kiln::Ptr< GroupUdfQual > groupToQual = groupUdfQual( table, groupId );
   KILN_ASSERT( groupToQual );
   KILN_ASSERT( groupToQual->udfQualId( unitKey ) > 0 );
   spec.refCountIs( spec.refCount() - 1 );
   if ( groupToQual->udfQualIdInc( unitKey, -1 ) == 0 ) {
      groupToQual->udfQualIdDel( unitKey );
   }
   if ( spec.refCount() > 0 ) {
      udfSpecIs( table, spec );
      return;
   }
   TRACE5( "Unit: " << field.unit << " Destroying UDF qualifier: " << qualsText( unitKey.quals ) );
   destroyUdfQualifier( field.unit, field.ethType, aclTypeOf( table ), field.base, unitKey.quals );
   udfSpecDel( table, unitKey );
   udfHwResourceAvailable( field.unit );
}

// --- the OpenFlow UDF groups -------------------------------------------------

namespace {

TesselTcamGroupManager::UdfTable
openFlowTable( U32 groupId ) {
   KILN_ASSERT_MSG( groupId == IFP_GROUP_OPENFLOW_UDF_ || groupId == IFP_GROUP_OPENFLOW_VXLAN_,
                    "not an OpenFlow UDF group" );
   return groupId == IFP_GROUP_OPENFLOW_VXLAN_ ? TesselTcamGroupManager::udfTableOpenFlowVxlan
                                               : TesselTcamGroupManager::udfTableOpenFlow;
}

} // namespace

QualIdList
TesselTcamGroupManager::createGroupOpenFlowAclUdf( U32 unit, U32 groupId, U32 ipProtocol,
                                                   UdfOffsetBase base, U8 offset, U8 length ) {
   TRACE8( __PRETTY_FUNCTION__ );
   UdfTable table = openFlowTable( groupId );
   const Agent::ChipInfo * info = chipInfo( unit );
   U32 groupLimit = info && info->groupUdfWidthLimit() ? info->groupUdfWidthLimit()
                                                        : unitMaxUdfLength( unit );
   UdfField field{ unit, Acl::ipv4_, UdfUnitSpec::ethTypeNotSet, base, offset, length,
                   ipProtocol };
   QualIdList quals = udfAcquire( table, groupId, groupLimit, field );
   if ( quals.empty() ) {
      return quals;
   }
   U8 group = static_cast< U8 >( groupId );
   if ( table == udfTableOpenFlowVxlan ) {
      groupOpenFlowVxlanAclUdfValidIs( group, true );
   } else {
      groupOpenFlowAclUdfValidIs( group, true );
   }
   openFlowUdfIpProtoIs( groupId, ipProtocol );
   return quals;
}

void
TesselTcamGroupManager::releaseGroupOpenFlowAclUdf( U32 unit, U32 groupId, U32 ipProtocol,
                                                    UdfOffsetBase base, U8 offset, U8 length ) {
   TRACE8( __PRETTY_FUNCTION__ );
   UdfTable table = openFlowTable( groupId );
   udfRelease( table, groupId,
               UdfField{ unit, Acl::ipv4_, UdfUnitSpec::ethTypeNotSet, base, offset, length,
                         ipProtocol } );
   Kiln::Ptr< GroupUdfQual > record = groupUdfQual( table, groupId );
   if ( record && record->udfQualIdCollection().empty() ) {
      U8 group = static_cast< U8 >( groupId );
      if ( table == udfTableOpenFlowVxlan ) {
         groupOpenFlowVxlanAclUdfValidIs( group, false );
      } else {
         groupOpenFlowAclUdfValidIs( group, false );
      }
   }
}

// --- hardware, by mechanism ------------------------------------------------------

TesselTcamGroupManager::UdfMechanism
TesselTcamGroupManager::udfMechanism( U32 unit ) const {
   const Agent::ChipInfo * info = chipInfo( unit );
   if ( info && info->flexParser() ) {
      return udfFlexParser;
   }
   if ( info && info->udfModule() ) {
      return udfModule;
   }
   return udfTcam;
}

QualIdList
TesselTcamGroupManager::createUdfQualifier( U32 unit, U32 ethType, int aclType,
                                            UdfOffsetBase base, U8 offset, U8 length ) {
   return createUdfQualifier( UdfRequest{ unit, ethType, aclType, base, offset, length } );
}

QualIdList
TesselTcamGroupManager::createUdfQualifier( const UdfRequest & request ) {
   TRACE8( "createUdfQualifier unit " << request.unit << " base " << request.base
                                      << " offset " << U32( request.offset ) << " length "
                                      << U32( request.length ) );
   QualIdList quals;
   switch ( udfMechanism( request.unit ) ) {
    case udfFlexParser:
      quals = createUdfQualifierFlexParser( request );
      break;
    case udfModule:
      quals = createUdfQualifierUdfModule( request );
      break;
    case udfTcam:
      quals = createUdfQualifierUdfTcam( request );
      break;
   }
   if ( !quals.empty() ) {
      udfHwResourceAvailable( request.unit );
   }
   return quals;
}

void
TesselTcamGroupManager::destroyUdfQualifier( U32 unit, U32 ethType, int aclType,
                                             UdfOffsetBase base, const QualIdList & quals ) {
   switch ( udfMechanism( unit ) ) {
    case udfFlexParser:
      return destroyUdfQualifierFlexParser( unit, quals );
    case udfModule:
      return destroyUdfQualifierUdfModule( unit, quals );
    case udfTcam:
      return destroyUdfQualifierUdfTcam( unit, ethType, aclType, base, quals );
   }
}

void
TesselTcamGroupManager::udfQualProgrammedInHw( U32 unit, const QualIdList & quals, U32 ethType,
                                               int aclType, UdfOffsetBase base, U8 offset,
                                               U8 length ) const {
   ( void )ethType;
   ( void )aclType;
   switch ( udfMechanism( unit ) ) {
    case udfFlexParser:
      udfQualProgrammedInHwFlex( unit, quals, base, offset, length );
      break;
    case udfModule:
      udfQualProgrammedInHwUdfModule( unit, quals, base, offset, length );
      break;
    case udfTcam:
      udfQualProgrammedInHwUdfTcam( unit, quals, offset, length );
      break;
   }
   TRACE7( "All UDFs are programmed in hardware" );
}

// --- units going ---------------------------------------------------------------

void
TesselTcamGroupManager::forgetUnitUdfs( U32 unit ) {
   TRACE8( "forgetUnitUdfs unit " << unit );
   UdfMechanism mechanism = udfMechanism( unit );
   for ( int t = udfTableIp; t <= udfTableOpenFlowVxlan; ++t ) {
      UdfTable table = static_cast< UdfTable >( t );
      for ( const auto & [ key, spec ] : udfSpecs( table ) ) {
         if ( key.unit != unit ) {
            continue;
         }
         if ( mechanism == udfFlexParser ) {
            forgetUdfFlex( spec );
         } else if ( mechanism == udfModule ) {
            forgetUdfModule( spec );
         } else {
            forgetUdfTcam( spec, aclTypeOf( table ) );
         }
         udfSpecDel( table, key );
      }
   }
   forgetUdfModulePktFmts( unit );
   for ( const auto * groups : { &groupIdToAclUdf_, &groupIdToOpenFlowAclUdf_,
                                 &groupIdToOpenFlowVxlanAclUdf_ } ) {
      for ( const auto & [ group, record ] : *groups ) {
         for ( const auto & [ key, uses ] : record->udfQualIdCollection() ) {
            if ( key.unit == unit ) {
               record->udfQualIdDel( key );
            }
         }
      }
   }
   flexChunksUsed_.erase( unit );
   udfHwShort_.erase( unit );
}

// --- running short and recovering ----------------------------------------------

// Announced once per shortage of the unit.
void
TesselTcamGroupManager::udfHwResourceFull( U32 unit ) {
   if ( udfHwShort_.insert( unit ).second ) {
      FastLog::logMessage( udfHwResourceFullMessage );
   }
}

// The unit's UDF hardware had room again (a field was programmed or one
// freed its hardware): the end of a shortage is announced once.
void
TesselTcamGroupManager::udfHwResourceAvailable( U32 unit ) {
   if ( udfHwShort_.erase( unit ) ) {
      FastLog::logMessage( udfHwResourceNormalMessage );
   }
}

} // namespace Tessel
