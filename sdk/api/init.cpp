// Initialisers of the SDK's structures: everything zero unless the
// structure's header says otherwise.
#include <cstring>

#include "sdk/api/bcm.h"

namespace {

template< typename T >
void
zero( T * value ) {
   if ( value ) {
      std::memset( static_cast< void * >( value ), 0, sizeof( T ) );
   }
}

} // namespace

extern "C" {

void
bcm_port_config_t_init( bcm_port_config_t * config ) {
   zero( config );
}

void
bcm_field_qset_t_init( bcm_field_qset_t * qset ) {
   zero( qset );
}

void
bcm_field_aset_t_init( bcm_field_aset_t * aset ) {
   zero( aset );
}

void
bcm_field_presel_set_t_init( bcm_field_presel_set_t * set ) {
   zero( set );
}

void
bcm_field_group_config_t_init( bcm_field_group_config_t * config ) {
   zero( config );
   if ( config ) {
      config->action_res_id = -1;
   }
}

void
bcm_field_group_status_t_init( bcm_field_group_status_t * status ) {
   zero( status );
}

void
bcm_field_hint_t_init( bcm_field_hint_t * hint ) {
   zero( hint );
}

void
bcm_field_class_info_t_init( bcm_field_class_info_t * info ) {
   zero( info );
}

void
bcm_field_data_qualifier_t_init( bcm_field_data_qualifier_t * qual ) {
   zero( qual );
}

void
bcm_field_data_packet_format_t_init( bcm_field_data_packet_format_t * format ) {
   zero( format );
   if ( format ) {
      format->l2 = BCM_FIELD_DATA_FORMAT_L2_ANY;
      format->vlan_tag = BCM_FIELD_DATA_FORMAT_VLAN_TAG_ANY;
      format->outer_ip = BCM_FIELD_DATA_FORMAT_IP_ANY;
      format->inner_ip = BCM_FIELD_DATA_FORMAT_IP_ANY;
      format->tunnel = BCM_FIELD_DATA_FORMAT_TUNNEL_ANY;
   }
}

void
bcm_field_data_ethertype_t_init( bcm_field_data_ethertype_t * etype ) {
   zero( etype );
   if ( etype ) {
      etype->l2 = BCM_FIELD_DATA_FORMAT_L2_ANY;
      etype->vlan_tag = BCM_FIELD_DATA_FORMAT_VLAN_TAG_ANY;
   }
}

void
bcm_udf_t_init( bcm_udf_t * udf ) {
   zero( udf );
}

void
bcm_udf_pkt_format_info_t_init( bcm_udf_pkt_format_info_t * info ) {
   zero( info );
   if ( info ) {
      info->l2 = BCM_PKT_FORMAT_L2_ANY;
      info->vlan_tag = BCM_PKT_FORMAT_VLAN_TAG_ANY;
      info->outer_ip = BCM_PKT_FORMAT_IP_ANY;
      info->inner_ip = BCM_PKT_FORMAT_IP_ANY;
      info->tunnel = BCM_PKT_FORMAT_TUNNEL_ANY;
   }
}

void
bcm_udf_chunk_info_t_init( bcm_udf_chunk_info_t * info ) {
   zero( info );
}

void
bcm_range_config_t_init( bcm_range_config_t * config ) {
   zero( config );
}

void
bcm_policer_config_t_init( bcm_policer_config_t * config ) {
   zero( config );
}

}
