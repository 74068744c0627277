// User-defined-field tests: the group manager on a profile, two entry
// managers of different groups (the IP ACL and QoS groups, whose keys leave
// room for fields on every chip), and readers of what the chip model holds
// for a field. The two managers get the widest budget a group has (the
// mirroring groups' 32 bytes) so that the tests reach the chip's own limits
// rather than the 8 bytes these groups keep by default.
#pragma once

#include "tests/resources/ResourceFixture.h"

#include "platform/agent/AclTypes.h"

namespace ResourceTest {

constexpr U32 noEthType = UdfUnitSpec::ethTypeNotSet;

class UdfBox {
 public:
   explicit UdfBox( const std::string & profile )
         : m{ { profile } }, first( managerOf( firstGroup ) ), second( managerOf( secondGroup ) ) {
      first->maxUdfLengthIs( widestGroupBudget );
      second->maxUdfLengthIs( widestGroupBudget );
   }

   static constexpr U32 firstGroup = IFP_GROUP_IP_ACL_;
   static constexpr U32 secondGroup = IFP_GROUP_QOS_;
   static constexpr U8 widestGroupBudget = 32;

   // An entry manager of the group that the manager registered.
   Kiln::Ptr< TesselTcamEntryManager >
   managerOf( U32 group ) const {
      for ( const auto & [ assignment, manager ] : m.manager->entryManagerCollection() ) {
         if ( manager->group() == group ) {
            return manager;
         }
      }
      for ( const auto & [ assignment, manager ] : m.manager->unboundedEntryManagerCollection() ) {
         if ( manager->group() == group ) {
            return manager;
         }
      }
      ADD_FAILURE() << "no entry manager of group " << group;
      return nullptr;
   }

   ChipModel::ObjectCounts counts() const { return m.box.counts( 0 ); }
   // Hardware objects of user-defined fields, whatever the mechanism.
   U32
   udfHardware() const {
      ChipModel::ObjectCounts c = counts();
      return c.dataQualifiers + c.udfObjects + c.chunks + c.packetFormats;
   }
   const ChipModel::UdfTable & udf() const { return m.box.unit( 0 ).state().udf; }
   // The offset a qualifier extracts at, from its base, as the model holds it.
   U32
   hwOffset( U32 qual ) const {
      int id = static_cast< int >( qual );
      if ( const ChipModel::DataQualifier * d = udf().data( id ) ) {
         return static_cast< U32 >( d->spec.byte_offset );
      }
      if ( const ChipModel::UdfObject * u = udf().udf( id ) ) {
         return u->spec.start_bit / 8;
      }
      const bcm_udf_chunk_info_t * c = udf().chunk( id );
      return c ? c->chunk_offset : ~0u;
   }
   // Qualifies the field's qualifiers of an entry with the bytes.
   int
   qualify( bcm_field_entry_t entry, const QualIdList & quals, std::vector< U8 > bytes ) {
      std::vector< U8 > mask( bytes.size(), 0xff );
      U16 length = static_cast< U16 >( bytes.size() );
      int rc = BCM_E_NONE;
      for ( U32 qual : quals ) {
         int id = static_cast< int >( qual );
         rc = rc ? rc : m.sdk( [ & ] {
            return udf().data( id )
                      ? bcm_field_qualify_data( 0, entry, id, bytes.data(), mask.data(), length )
                      : bcm_field_qualify_udf( 0, entry, id, length, bytes.data(), mask.data() );
         } );
      }
      return rc;
   }

   ManagerBox m;
   Kiln::Ptr< TesselTcamEntryManager > first;  // of firstGroup
   Kiln::Ptr< TesselTcamEntryManager > second; // of secondGroup
};

// The field qualifiers of an IPv4 field on each chip: one data qualifier,
// one UDF object, or a chunk id for each of the four IPv4 L4 formats.
inline size_t
ipv4QualCount( const std::string & profile ) {
   return profile == "th3" ? 4 : 1;
}

} // namespace ResourceTest
