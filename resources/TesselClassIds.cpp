// Class-id compression: binding exact values (addresses, L4 ports, IP
// protocols, ethertypes) to caller-chosen class ids through one entry of the
// kind's compression group per binding.
#include "manager/TesselTcamGroupManager.h"

#include <algorithm>
#include <sstream>
#include <string>

#include "common/TesselSdkCall.h"
#include "manager/SdkShimAccess.h"
#include "platform/fastlog/FastLog.h"
#include "platform/fastlog/Trace.h"
#include "sdk/api/field_qualify.h"
#include "sdk/shim/SdkStructs.h"

TRACE_CHANNEL( "TesselTcam" );

namespace Tessel {

namespace {

// The exact-match kinds, with the words their traces name them by. The
// capital and small "port" of the two port kinds differ on purpose.
enum ExactMatchKind { ipProtocolKind, etherTypeKind, l4SrcPortKind, l4DstPortKind };

struct ExactMatchTexts {
   const char * alreadyAssigned;
   const char * allocating;
   bool hex;
};

const ExactMatchTexts &
textsOf( ExactMatchKind kind ) {
   static const ExactMatchTexts texts[] = {
      { " already assigned to IpProtocol ", " to IpProtocol ", false },
      { " already assigned to EtherType 0x", " to EtherType 0x", true },
      { " already assigned to Src Port ", " to Src Port ", false },
      { " already assigned to Dst Port ", " to Dst port ", false },
   };
   return texts[ kind ];
}

// "179" or, for the ethertype, "800" after the text's "0x".
std::string
valueText( ExactMatchKind kind, U32 value ) {
   std::ostringstream text;
   if ( textsOf( kind ).hex ) {
      text << std::hex;
   }
   text << value;
   return text.str();
}

// The class-assignment action of a compression entry, then the install.
void
assignClassAndInstall( U32 unit, bcm_field_entry_t entry, U64 classId ) {
   Shim::ClassInfo class_info;
   class_info.action_is( sdkShim().AR_bcmFieldActionNewClassId() );
   class_info.class_id_is( classId );
   SDK_CALL_CHECKED( bcm_field_action_class_add( unit, entry, &class_info ) );
   SDK_CALL_CHECKED( bcm_field_entry_install( unit, entry ) );
}

// A new compression entry for an exact 16-bit value, qualified with a full
// mask; its id.
U32
createExactMatchEntry( U32 unit, ExactMatchKind kind, U32 value, U64 classId ) {
   bcm_field_entry_t entry = 0;
   switch ( kind ) {
    case ipProtocolKind: {
      SDK_CALL_CHECKED( bcm_field_entry_create( unit, COMPRESS_GROUP_IP_PROTOCOL_, &entry ) );
      U8 ipProtocol = static_cast< U8 >( value );
      SDK_CALL_CHECKED( bcm_field_qualify_IpProtocol( unit, entry, ipProtocol, 0xFF ) );
      break;
    }
    case etherTypeKind: {
      SDK_CALL_CHECKED( bcm_field_entry_create( unit, COMPRESS_GROUP_ETHER_TYPE_, &entry ) );
      U16 etherType = static_cast< U16 >( value );
      SDK_CALL_CHECKED( bcm_field_qualify_EtherType( unit, entry, etherType, 0xFFFF ) );
      break;
    }
    case l4SrcPortKind: {
      SDK_CALL_CHECKED( bcm_field_entry_create( unit, COMPRESS_GROUP_L4_SRC_PORT_, &entry ) );
      bcm_l4_port_t l4SrcPort = static_cast< bcm_l4_port_t >( value );
      SDK_CALL_CHECKED( bcm_field_qualify_L4SrcPort( unit, entry, l4SrcPort, 0xFFFF ) );
      break;
    }
    case l4DstPortKind: {
      SDK_CALL_CHECKED( bcm_field_entry_create( unit, COMPRESS_GROUP_L4_DST_PORT_, &entry ) );
      bcm_l4_port_t l4DstPort = static_cast< bcm_l4_port_t >( value );
      SDK_CALL_CHECKED( bcm_field_qualify_L4DstPort( unit, entry, l4DstPort, 0xFFFF ) );
      break;
    }
   }
   FASTLOG( "fp entry create ", unit, U32( entry ) );
   assignClassAndInstall( unit, entry, classId );
   return static_cast< U32 >( entry );
}

} // namespace

// --- the exact-match kinds ---------------------------------------------------

// The common shape of the exact-match allocations: an identical binding is
// kept, a different one replaced (the port kinds release the old entry
// first), then the entry is made and recorded.
bool
TesselTcamGroupManager::allocateExactMatchClassId( U32 unit, U32 value, U64 classId,
                                                   int kindValue ) {
   ExactMatchKind kind = static_cast< ExactMatchKind >( kindValue );
   ExactMatchClassIdMap * maps[] = { &ipProtocolClassId_, &etherTypeClassId_, &l4SrcPortClassId_,
                                     &l4DstPortClassId_ };
   TesselCompressionClassKey key{ classId, unit };
   if ( Kiln::Ptr< TesselExactMatchClassEntry > bound = maps[ kind ]->get( key ) ) {
      if ( bound->value() == value ) {
         TRACE5( "Unit: " << unit << " " << " ClassID " << classId
                          << textsOf( kind ).alreadyAssigned << valueText( kind, value ) );
         return true;
      }
      if ( kind == l4SrcPortKind ) {
         releaseL4SrcPortClassId( unit, static_cast< U8 >( classId ) );
      } else if ( kind == l4DstPortKind ) {
         releaseL4DstPortClassId( unit, static_cast< U8 >( classId ) );
      }
   }
   TRACE5( "Unit: " << unit << " " << " Allocating ClassID " << classId
                    << textsOf( kind ).allocating << valueText( kind, value ) );
   U32 entry = createExactMatchEntry( unit, kind, value, classId );
   switch ( kind ) {
    case ipProtocolKind:
      ipProtocolClassIdIs( key, value, entry );
      break;
    case etherTypeKind:
      etherTypeClassIdIs( key, value, entry );
      break;
    case l4SrcPortKind:
      l4SrcPortClassIdIs( key, value, entry );
      break;
    case l4DstPortKind:
      l4DstPortClassIdIs( key, value, entry );
      break;
   }
   return true;
}

bool
TesselTcamGroupManager::allocateIpProtocolClassId( U32 unit, U16 ipProtocol, U8 classId ) {
   TRACE8( __PRETTY_FUNCTION__ );
   return allocateExactMatchClassId( unit, ipProtocol, classId, ipProtocolKind );
}

bool
TesselTcamGroupManager::allocateEtherTypeClassId( U32 unit, U16 etherType, U8 classId ) {
   TRACE8( __PRETTY_FUNCTION__ );
   return allocateExactMatchClassId( unit, etherType, classId, etherTypeKind );
}

bool
TesselTcamGroupManager::allocateL4SrcPortClassId( U32 unit, U16 l4SrcPort, U8 classId ) {
   TRACE8( __PRETTY_FUNCTION__ );
   return allocateExactMatchClassId( unit, l4SrcPort, classId, l4SrcPortKind );
}

bool
TesselTcamGroupManager::allocateL4DstPortClassId( U32 unit, U16 l4DstPort, U8 classId ) {
   TRACE8( __PRETTY_FUNCTION__ );
   return allocateExactMatchClassId( unit, l4DstPort, classId, l4DstPortKind );
}

bool
TesselTcamGroupManager::releaseL4SrcPortClassId( U32 unit, U8 classId ) {
   TRACE8( __PRETTY_FUNCTION__ );
   TesselCompressionClassKey key{ classId, unit };
   if ( !l4SrcPortClassIdHas( key ) ) {
      TRACE5( "Unit: " << unit << " " << " Class ID: " << U32( classId ) << " Not available" );
      return false;
   }
   TRACE5( "Unit: " << unit << " " << " Freeing Class ID: " << U32( classId ) );
   SDK_CALL_CHECKED( bcm_field_entry_destroy( unit, l4SrcPortClassId( key )->entry() ) );
   FASTLOG( "fp entry destroy ", unit, l4SrcPortClassId( key )->entry() );
   l4SrcPortClassIdDel( key );
   return true;
}

bool
TesselTcamGroupManager::releaseL4DstPortClassId( U32 unit, U8 classId ) {
   TRACE8( __PRETTY_FUNCTION__ );
   TesselCompressionClassKey key{ classId, unit };
   if ( !l4DstPortClassIdHas( key ) ) {
      TRACE5( "Unit: " << unit << " " << " Class ID: " << U32( classId ) << " Not available" );
      return false;
   }
   TRACE5( "Unit: " << unit << " " << " Freeing Class ID: " << U32( classId ) );
   SDK_CALL_CHECKED( bcm_field_entry_destroy( unit, l4DstPortClassId( key )->entry() ) );
   FASTLOG( "fp entry destroy ", unit, l4DstPortClassId( key )->entry() );
   l4DstPortClassIdDel( key );
   return true;
}

// --- the address kinds -------------------------------------------------------

bool
TesselTcamGroupManager::allocateSrcIpClassId( U32 unit, const IpAddrWithFullMask & srcIp,
                                              U8 classId ) {
   TRACE8( __PRETTY_FUNCTION__ );
   TesselCompressionClassKey key{ classId, unit };
   Kiln::Ptr< TesselClassEntry > bound = srcIpClassId( key );
   if ( bound && bound->binds( srcIp ) ) {
      return true; // the address kinds trace only their SDK calls
   }
   bcm_field_entry_t entry = 0;
   SDK_CALL_CHECKED( bcm_field_entry_create( unit, COMPRESS_GROUP_SRC_IP_, &entry ) );
   bcm_ip_t srcIpValue = srcIp.address.value();
   bcm_ip_t srcIpMask = srcIp.mask.value();
   SDK_CALL_CHECKED( bcm_field_qualify_SrcIp( unit, entry, srcIpValue, srcIpMask ) );
   FASTLOG( "fp entry create ", unit, U32( entry ) );
   assignClassAndInstall( unit, entry, classId );
   srcIpClassIdIs( key, Wiretype::ipv4, static_cast< U32 >( entry ) )->ipAddrIs( srcIp.masked() );
   return true;
}

bool
TesselTcamGroupManager::allocateDstIpClassId( U32 unit, const IpAddrWithFullMask & dstIp,
                                              const U64 & classId ) {
   TRACE8( __PRETTY_FUNCTION__ );
   TesselCompressionClassKey key{ classId, unit };
   Kiln::Ptr< TesselClassEntry > bound = dstIpClassId( key );
   if ( bound && bound->binds( dstIp ) ) {
      return true; // the address kinds trace only their SDK calls
   }
   bcm_field_entry_t entry = 0;
   SDK_CALL_CHECKED( bcm_field_entry_create( unit, COMPRESS_GROUP_DST_IP_, &entry ) );
   bcm_ip_t dstIpValue = dstIp.address.value();
   bcm_ip_t dstIpMask = dstIp.mask.value();
   SDK_CALL_CHECKED( bcm_field_qualify_DstIp( unit, entry, dstIpValue, dstIpMask ) );
   FASTLOG( "fp entry create ", unit, U32( entry ) );
   assignClassAndInstall( unit, entry, classId );
   dstIpClassIdIs( key, Wiretype::ipv4, static_cast< U32 >( entry ) )->ipAddrIs( dstIp.masked() );
   return true;
}

bool
TesselTcamGroupManager::allocateDstIp6ClassId( U32 unit, const Ip6AddrWithFullMask & dstIp6,
                                               const U64 & classId ) {
   TRACE8( __PRETTY_FUNCTION__ );
   TesselCompressionClassKey key{ classId, unit };
   Kiln::Ptr< TesselClassEntry > bound = dstIpClassId( key );
   if ( bound && bound->binds( dstIp6 ) ) {
      return true; // the address kinds trace only their SDK calls
   }
   bcm_field_entry_t entry = 0;
   SDK_CALL_CHECKED( bcm_field_entry_create( unit, COMPRESS_GROUP_DST_IP_, &entry ) );
   bcm_ip6_t ip6Addr;
   bcm_ip6_t ip6Mask;
   std::copy( dstIp6.address.bytes().begin(), dstIp6.address.bytes().end(), ip6Addr );
   std::copy( dstIp6.mask.bytes().begin(), dstIp6.mask.bytes().end(), ip6Mask );
   SDK_CALL_CHECKED( bcm_field_qualify_DstIp6( unit, entry, ip6Addr, ip6Mask ) );
   FASTLOG( "fp entry create ", unit, U32( entry ) );
   assignClassAndInstall( unit, entry, classId );
   dstIpClassIdIs( key, Wiretype::ipv6, static_cast< U32 >( entry ) )->ip6AddrIs( dstIp6.address );
   return true;
}

// --- units and teardown ------------------------------------------------------

void
TesselTcamGroupManager::forgetUnitClassIds( U32 unit ) {
   TRACE8( "forgetUnitClassIds unit " << unit );
   auto forget = [ this, unit ]( auto & map, auto del ) {
      for ( const auto & [ key, record ] : map ) {
         if ( key.unit != unit ) {
            continue;
         }
         SDK_CALL_UNIT( unit, bcm_field_entry_destroy( unit, record->entry() ) );
         ( this->*del )( key );
      }
   };
   forget( l4SrcPortClassId_, &TesselTcamGroupManager::l4SrcPortClassIdDel );
   forget( l4DstPortClassId_, &TesselTcamGroupManager::l4DstPortClassIdDel );
   forget( ipProtocolClassId_, &TesselTcamGroupManager::ipProtocolClassIdDel );
   forget( etherTypeClassId_, &TesselTcamGroupManager::etherTypeClassIdDel );
   forget( srcIpClassId_, &TesselTcamGroupManager::srcIpClassIdDel );
   forget( dstIpClassId_, &TesselTcamGroupManager::dstIpClassIdDel );
}

void
TesselTcamGroupManager::classIdDelAll() {
   srcIpClassIdDelAll();
   dstIpClassIdDelAll();
   ipProtocolClassIdDelAll();
   etherTypeClassIdDelAll();
   l4SrcPortClassIdDelAll();
   l4DstPortClassIdDelAll();
}

} // namespace Tessel
