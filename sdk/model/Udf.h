// User-defined fields of a unit, by mechanism: data qualifiers of the field
// processor, UDF module objects hung on packet formats, flex-parser chunks on
// abstract packet formats. Each has the unit's limits from the profile.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <vector>

#include "platform/kiln/Types.h"
#include "sdk/api/field_data.h"
#include "sdk/api/udf.h"
#include "sdk/model/Profile.h"

namespace ChipModel {

// What a packet offers a UDF extraction: its bytes and where its layers start.
struct PacketLayout {
   const std::vector< U8 > * bytes = nullptr;
   U32 l3Offset = 0;
   std::optional< U32 > l4Offset;
   bool vlanTagged = false;
   bool ipv4 = false;
   bool ipv6 = false;
   U16 etherType = 0;
   U8 ipProtocol = 0;
   bcm_udf_abstract_pkt_format_t abstractFormat = bcmUdfAbstractPktFormatUnknownL3;
};

struct DataQualifier {
   bcm_field_data_qualifier_t spec{};
   std::vector< bcm_field_data_packet_format_t > formats;
   std::vector< bcm_field_data_ethertype_t > ethertypes;
};

struct UdfObject {
   bcm_udf_t spec{};
   std::set< bcm_udf_pkt_format_id_t > formats;
};

class UdfTable {
 public:
   explicit UdfTable( const Profile & profile ) : profile_( &profile ) {}

   // Data qualifiers.
   int dataCreate( bcm_field_data_qualifier_t & qual );
   // The caller checks first that no group holds it.
   int dataDestroy( int id );
   const DataQualifier * data( int id ) const;
   int dataFormatAdd( int id, const bcm_field_data_packet_format_t & format );
   int dataFormatDelete( int id, const bcm_field_data_packet_format_t & format );
   int dataEthertypeAdd( int id, const bcm_field_data_ethertype_t & etype );
   int dataEthertypeDelete( int id, const bcm_field_data_ethertype_t & etype );

   // UDF module.
   int udfCreate( const bcm_udf_t & spec, bcm_udf_id_t & id );
   // Destroys a UDF object or a chunk object; the caller checks groups first.
   int udfDestroy( bcm_udf_id_t id );
   const UdfObject * udf( bcm_udf_id_t id ) const;
   int formatCreate( U32 options, const bcm_udf_pkt_format_info_t & info,
                     bcm_udf_pkt_format_id_t & id );
   int formatDestroy( bcm_udf_pkt_format_id_t id );
   const bcm_udf_pkt_format_info_t * format( bcm_udf_pkt_format_id_t id ) const;
   int formatAdd( bcm_udf_id_t udf, bcm_udf_pkt_format_id_t format );
   int formatDelete( bcm_udf_id_t udf, bcm_udf_pkt_format_id_t format );

   // Flex parser.
   int abstractInfo( bcm_udf_abstract_pkt_format_t apf,
                     bcm_udf_abstract_pkt_format_info_t & info ) const;
   int chunkCreate( const bcm_udf_chunk_info_t & info, bcm_udf_id_t & id );
   const bcm_udf_chunk_info_t * chunk( bcm_udf_id_t id ) const;
   // The chunk object that programs exactly these chunks on the format, or null.
   const bcm_udf_chunk_info_t * chunkOn( bcm_udf_abstract_pkt_format_t apf,
                                         U32 chunkBmap ) const;

   // Key bytes a qualifier set's data qualifiers and UDFs add; flex chunks
   // count once however many formats' chunk ids name them.
   U32 keyBytes( const bcm_field_qset_t & qset ) const;
   // The bytes a data qualifier / UDF id extracts from a packet; nullopt when
   // the packet's format is not one it serves. A chunk id stands for its
   // chunks: it extracts what the packet's format programs those chunks with.
   std::optional< std::vector< U8 > > extractData( int id,
                                                   const PacketLayout & packet ) const;
   std::optional< std::vector< U8 > > extractUdf( bcm_udf_id_t id,
                                                  const PacketLayout & packet ) const;

   U32 dataQualifierCount() const { return static_cast< U32 >( data_.size() ); }
   U32 udfObjectCount() const { return static_cast< U32 >( udfs_.size() ); }
   // Module packet-format objects plus formats and ethertypes added to data qualifiers.
   U32 packetFormatCount() const;
   U32 chunkCount() const { return static_cast< U32 >( chunks_.size() ); }

 private:
   bool udfIdFree( bcm_udf_id_t id ) const;
   std::optional< bcm_udf_id_t > pickUdfId() const;
   U32 dataFormatsUsed() const;

   const Profile * profile_;
   std::map< int, DataQualifier > data_;
   std::map< bcm_udf_id_t, UdfObject > udfs_;
   std::map< bcm_udf_pkt_format_id_t, bcm_udf_pkt_format_info_t > formats_;
   std::map< bcm_udf_id_t, bcm_udf_chunk_info_t > chunks_;
};

} // namespace ChipModel
