#include "tests/sdk/model/RandomWorkload.h"

#include <algorithm>
#include <array>
#include <tuple>

#include "sdk/model/PacketFields.h"
#include "tests/sdk/model/ModelTestSupport.h"

namespace ModelTest {

using ChipModel::FieldValue;
using ChipModel::Packet;

namespace {

constexpr U32 binBits = 2 * ChipModel::sliceKeyBits; // a double-wide row
constexpr U32 firstEntries = 12;
constexpr U32 firstBulkEntries = 100;
constexpr size_t mostEntries = 400;
const U32 dstIps[] = { 0x0a000001, 0x0a000002, 0x0a000003, 0x0a000104,
                       0x0a000105, 0x0a010006, 0xc0000207, 0xc0000208 };
const U32 srcIps[] = { 0xc0000201, 0xc0000202, 0x0a000001, 0 };
const U16 l4Ports[] = { 80, 443, 1000, 5000, 22 };
const U8 payloadBytes[] = { 0, 1, 0xab };

// Qualifiers that pick a group's stage rather than match packets.
bool
marksStage( int q ) {
   return q == bcmFieldQualifyStageIngress || q == bcmFieldQualifyStageLookup ||
          q == bcmFieldQualifyStageEgress || q == bcmFieldQualifyStageClass ||
          q == bcmFieldQualifyCompressionSelect ||
          q == bcmFieldQualifyCompressionAddrSelect;
}

int
markerOf( bcm_field_stage_t stage ) {
   switch ( stage ) {
   case bcmFieldStageLookup:
      return bcmFieldQualifyStageLookup;
   case bcmFieldStageEgress:
      return bcmFieldQualifyStageEgress;
   case bcmFieldStageClass:
      return bcmFieldQualifyCompressionSelect;
   default:
      return bcmFieldQualifyStageIngress;
   }
}

std::array< U8, 16 >
ip6( U8 last ) {
   std::array< U8, 16 > a{ { 0x20, 0x01, 0x0d, 0xb8 } };
   a[ 15 ] = last;
   return a;
}

} // namespace

RandomWorkload::RandomWorkload( ChipModel::Box & box, U32 seed )
    : box_( box ), profile_( box.unit( 0 ).profile() ), random_( seed ) {
   pipes_.push_back( 0 );
   if ( profile_.pipes > 1 ) {
      pipes_.push_back( profile_.pipes - 1 );
   }
   planGroups();
   planClassStage();
   createRanges();
   createUserField();
   createPolicers();
   fillPackets();
   for ( GroupPlan & plan : groups_ ) {
      createGroup( plan );
   }
   for ( const GroupPlan & plan : groups_ ) {
      for ( U32 i = 0; i < ( plan.bulk ? firstBulkEntries : firstEntries ); ++i ) {
         addEntry( plan );
      }
   }
}

// Every qualifier that matches packets, shuffled into groups of a
// double-wide row each: the first in VFP, the second in EFP, the others in
// IFP of pipe 0. Then a group of many entries in each pipe of the workload.
void
RandomWorkload::planGroups() {
   std::vector< int > all;
   for ( int q = 0; q < bcmFieldQualifyCount; ++q ) {
      if ( !marksStage( q ) ) {
         all.push_back( q );
      }
   }
   std::shuffle( all.begin(), all.end(), random_ );
   std::vector< std::vector< int > > bins;
   std::vector< U32 > bits;
   for ( int q : all ) {
      U32 need = ChipModel::qualifierKeyBits( q );
      size_t bin = 0;
      while ( bin < bins.size() && bits[ bin ] + need > binBits ) {
         ++bin;
      }
      if ( bin == bins.size() ) {
         bins.emplace_back();
         bits.push_back( 0 );
      }
      bins[ bin ].push_back( q );
      bits[ bin ] += need;
   }
   bool ifpPerPipe = profile_.stage( bcmFieldStageIngress )->pipeLocal;
   for ( size_t i = 0; i < bins.size(); ++i ) {
      GroupPlan plan;
      plan.id = static_cast< bcm_field_group_t >( 10 + i );
      plan.stage = i == 0 ? bcmFieldStageLookup
                   : i == 1 ? bcmFieldStageEgress
                            : bcmFieldStageIngress;
      plan.pipe = plan.stage == bcmFieldStageIngress && ifpPerPipe ? 0 : -1;
      plan.qualifiers = bins[ i ];
      plan.rangeChecks = std::count( bins[ i ].begin(), bins[ i ].end(),
                                     static_cast< int >( bcmFieldQualifyRangeCheck ) ) > 0;
      groups_.push_back( plan );
   }
   for ( U32 pipe : pipes_ ) {
      GroupPlan bulk;
      bulk.id = static_cast< bcm_field_group_t >( 100 + pipe );
      bulk.pipe = ifpPerPipe ? static_cast< int >( pipe ) : -1;
      bulk.portsOf = static_cast< int >( pipe );
      bulk.qualifiers = { bcmFieldQualifySrcIp, bcmFieldQualifyDstIp,
                          bcmFieldQualifyL4DstPort, bcmFieldQualifyIpProtocol };
      bulk.bulk = true;
      bulk.rangeChecks = true;
      bulk.userField = pipe == 0;
      groups_.push_back( bulk );
   }
}

// On chips that compress: groups that set class ids from ports and
// protocols; two also match a class id their stage sets, which they must
// not see before the next stage.
void
RandomWorkload::planClassStage() {
   if ( !profile_.stage( bcmFieldStageClass ) ) {
      return;
   }
   const std::vector< std::vector< int > > qualifiers = {
      { bcmFieldQualifyL4SrcPort, bcmFieldQualifyL4SrcPortClass },
      { bcmFieldQualifyL4DstPort },
      { bcmFieldQualifyIpProtocol, bcmFieldQualifyL4SrcPortClass } };
   for ( size_t i = 0; i < qualifiers.size(); ++i ) {
      GroupPlan plan;
      plan.id = static_cast< bcm_field_group_t >( 200 + i );
      plan.stage = bcmFieldStageClass;
      plan.qualifiers = qualifiers[ i ];
      groups_.push_back( plan );
   }
}

void
RandomWorkload::createGroup( GroupPlan & plan ) {
   bcm_field_group_config_t config;
   bcm_field_group_config_t_init( &config );
   config.flags = BCM_FIELD_GROUP_CREATE_WITH_ID;
   config.group = plan.id;
   config.priority = static_cast< int >( below( 3 ) ); // ties: creation order decides
   BCM_FIELD_QSET_INIT( config.qset );
   BCM_FIELD_QSET_ADD( config.qset, markerOf( plan.stage ) );
   for ( int q : plan.qualifiers ) {
      BCM_FIELD_QSET_ADD( config.qset, q );
   }
   if ( plan.rangeChecks ) {
      BCM_FIELD_QSET_ADD( config.qset, bcmFieldQualifyRangeCheck );
   }
   if ( plan.portsOf < 0 && plan.pipe >= 0 ) {
      plan.portsOf = plan.pipe;
   }
   if ( plan.portsOf >= 0 ) {
      config.flags |= BCM_FIELD_GROUP_CREATE_WITH_PORT;
      config.ports = ChipModel::pipePorts( profile_, static_cast< U32 >( plan.portsOf ) );
   }
   if ( plan.userField ) {
      ASSERT_EQ( BCM_E_NONE,
                 dataQualifier_
                    ? bcm_field_qset_data_qualifier_add( 0, &config.qset, userFieldId_ )
                    : bcm_field_qset_udf_add( 0, &config.qset, userFieldId_ ) );
   }
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) ) << plan.id;
}

// Checkers of source and destination ports and of the packet length: the
// unit's (older API) or two in each pipe of the workload (range module).
void
RandomWorkload::createRanges() {
   if ( !profile_.has( BCM_INFO_CAP_RANGE_MODULE ) ) {
      const std::vector< std::tuple< U32, int, int > > checkers = {
         { BCM_FIELD_RANGE_SRCPORT, 1000, 5000 },
         { BCM_FIELD_RANGE_DSTPORT, 0, 100 },
         { BCM_FIELD_RANGE_PACKET_LENGTH, 0, 200 },
         { BCM_FIELD_RANGE_DSTPORT, 400, 1000 } };
      for ( const auto & [ flags, min, max ] : checkers ) {
         bcm_field_range_t id;
         ASSERT_EQ( BCM_E_NONE, bcm_field_range_create( 0, &id, flags, min, max ) );
         ranges_[ -1 ].push_back( id );
      }
      return;
   }
   for ( U32 pipe : pipes_ ) {
      for ( bcm_range_type_t type : { bcmRangeTypeL4DstPort, bcmRangeTypePacketLength } ) {
         bcm_range_config_t config;
         bcm_range_config_t_init( &config );
         config.rtype = type;
         config.min = type == bcmRangeTypeL4DstPort ? 0 : 100;
         config.max = type == bcmRangeTypeL4DstPort ? 1000 : 300;
         config.ports = ChipModel::pipePorts( profile_, pipe );
         ASSERT_EQ( BCM_E_NONE, bcm_range_create( 0, 0, &config ) );
         ranges_[ static_cast< int >( pipe ) ].push_back(
            static_cast< bcm_field_range_t >( config.rid ) );
      }
   }
}

// Two payload bytes after the UDP (or TCP) header, by the profile's means.
void
RandomWorkload::createUserField() {
   userFieldBytes_ = 2;
   if ( profile_.has( BCM_INFO_CAP_DATA_QUALIFIERS ) ) {
      dataQualifier_ = true;
      bcm_field_data_qualifier_t qual;
      bcm_field_data_qualifier_t_init( &qual );
      qual.offset_base = bcmFieldDataOffsetBaseOuterL4Header;
      qual.byte_offset = 8;
      qual.byte_length = static_cast< int >( userFieldBytes_ );
      ASSERT_EQ( BCM_E_NONE, bcm_field_data_qualifier_create( 0, &qual ) );
      bcm_field_data_packet_format_t format;
      bcm_field_data_packet_format_t_init( &format );
      format.outer_ip = BCM_FIELD_DATA_FORMAT_IP4; // IPv6 packets read zeros
      ASSERT_EQ( BCM_E_NONE,
                 bcm_field_data_qualifier_packet_format_add( 0, qual.qual_id, &format ) );
      userFieldId_ = qual.qual_id;
   } else if ( profile_.has( BCM_INFO_CAP_UDF_MODULE ) ) {
      Shim::Udf udf;
      udf.layer = bcmUdfLayerL4OuterHeader;
      udf.start_is( 8 * 8 );
      udf.width_is( 8 * userFieldBytes_ );
      ASSERT_EQ( BCM_E_NONE, bcm_udf_create( 0, nullptr, &udf, &userFieldId_ ) );
      Shim::UdfPktFormatInfo format;
      format.ethertype = 0x0800;
      format.ethertype_mask = 0xffff;
      bcm_udf_pkt_format_id_t formatId;
      ASSERT_EQ( BCM_E_NONE, bcm_udf_pkt_format_create( 0, 0, &format, &formatId ) );
      ASSERT_EQ( BCM_E_NONE, bcm_udf_pkt_format_add( 0, userFieldId_, formatId ) );
   } else {
      Shim::UdfChunkInfo chunk;
      chunk.abstract_pkt_format = bcmUdfAbstractPktFormatIpv4Udp;
      chunk.chunk_bmap = 0x1;
      chunk.offset_is( 28 ); // 20 bytes of IPv4, 8 of UDP
      chunk.width_is( userFieldBytes_ );
      ASSERT_EQ( BCM_E_NONE, bcm_udf_chunk_create( 0, nullptr, &chunk, &userFieldId_ ) );
   }
}

// One meter per pipe of the workload, small enough to turn packets red.
void
RandomWorkload::createPolicers() {
   for ( size_t i = 0; i < pipes_.size(); ++i ) {
      bcm_policer_config_t config;
      bcm_policer_config_t_init( &config );
      config.mode = bcmPolicerModeSrTcm;
      config.flags = BCM_POLICER_DROP_RED;
      config.ckbits_sec = 800;
      config.ckbits_burst = 8;
      config.pkbits_burst = 8;
      bcm_policer_t id;
      ASSERT_EQ( BCM_E_NONE, bcm_policer_create( 0, &config, &id ) );
      policers_.push_back( id );
   }
}

void
RandomWorkload::fillPackets() {
   for ( int i = 0; i < 48; ++i ) {
      U32 pipe = pipes_[ below( static_cast< U32 >( pipes_.size() ) ) ];
      std::vector< int > ports = ChipModel::frontPanelPorts( profile_, pipe );
      int port = chance( 20 ) ? ChipModel::loopbackPort( profile_, pipe )
                              : ports[ below( 2 ) ];
      U8 protocol = std::vector< U8 >{ 6, 17, 1 }[ below( 3 ) ];
      U16 sport = l4Ports[ below( 5 ) ];
      U16 dport = l4Ports[ below( 5 ) ];
      U32 src = below( 4 ); // one draw per statement: the same packets on every compiler
      U32 dst = below( 8 );
      U32 kind = below( 10 );
      Packet p = Packet::ethernet( port, kind == 8 ? 0x0806 : 0x88cc );
      if ( kind < 6 ) {
         p = Packet::ipv4( port, srcIps[ src ], dstIps[ dst ], protocol, sport, dport );
      } else if ( kind < 8 ) {
         p = Packet::ipv6( port, ip6( U8( src % 3 ) ), ip6( U8( dst % 3 ) ), protocol, sport,
                           dport );
      }
      if ( chance( 40 ) ) {
         p.vlan = static_cast< U16 >( 10 * ( 1 + below( 2 ) ) );
         p.vlanPriority = static_cast< U8 >( below( 8 ) );
      }
      p.srcMac[ 5 ] = static_cast< U8 >( below( 3 ) );
      p.dstMac[ 5 ] = static_cast< U8 >( below( 3 ) );
      p.tcpFlags = std::vector< U8 >{ 0, 0x02, 0x12 }[ below( 3 ) ];
      p.dscp = std::vector< U8 >{ 0, 10, 46 }[ below( 3 ) ];
      p.ttl = chance( 20 ) ? 1 : 64;
      for ( U32 n = below( 12 ); n > 0; --n ) {
         p.payload.push_back( payloadBytes[ below( 3 ) ] );
      }
      p.length = chance( 30 ) ? 64 + below( 1400 ) : 0;
      if ( chance( 30 ) ) {
         p.outPort = ChipModel::frontPanelPorts( profile_, pipes_.back() )[ below( 2 ) ];
      }
      p.portClass = below( 4 );
      pool_.push_back( p );
   }
}

Packet
RandomWorkload::packet() {
   Packet p = pool_[ below( static_cast< U32 >( pool_.size() ) ) ];
   timeUs_ += below( 3000 );
   p.timeUs = timeUs_;
   return p;
}

const RandomWorkload::GroupPlan &
RandomWorkload::planOf( bcm_field_entry_t id ) const {
   bcm_field_group_t group = entries_.at( id );
   return *std::find_if( groups_.begin(), groups_.end(),
                         [ group ]( const GroupPlan & p ) { return p.id == group; } );
}

bcm_field_entry_t
RandomWorkload::anyEntry() {
   auto it = entries_.begin();
   std::advance( it, below( static_cast< U32 >( entries_.size() ) ) );
   return it->first;
}

void
RandomWorkload::step() {
   if ( entries_.empty() || below( 8 ) == 0 ) {
      addEntry( groups_[ below( static_cast< U32 >( groups_.size() ) ) ] );
      return;
   }
   bcm_field_entry_t id = anyEntry();
   const ChipModel::Entry * e = box_.unit( 0 ).state().field.entry( id );
   const GroupPlan & plan = planOf( id );
   switch ( entries_.size() > mostEntries ? 6 : below( 8 ) ) {
   case 0:
      writeRules( plan, id );
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_install( 0, id ) );
      break;
   case 1:
      writeActions( plan, id );
      ASSERT_EQ( e->installed() ? BCM_E_NONE : BCM_E_PARAM,
                 bcm_field_entry_reinstall( 0, id ) );
      break;
   case 2:
      ASSERT_EQ( BCM_E_NONE, e->installed() ? bcm_field_entry_remove( 0, id )
                                            : bcm_field_entry_install( 0, id ) );
      break;
   case 3:
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_enable_set( 0, id, !e->enabled ) );
      break;
   case 4:
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_prio_set( 0, id, priority() ) );
      break;
   case 5: { // the content of another entry of the group
      bcm_field_entry_t from = anyEntry();
      if ( entries_.at( from ) == plan.id ) {
         ASSERT_EQ( BCM_E_NONE, bcm_field_entry_content_copy( 0, from, id ) );
         ASSERT_EQ( BCM_E_NONE, bcm_field_entry_install( 0, id ) );
      }
      break;
   }
   case 6:
      destroyEntry( id );
      break;
   default:
      addEntry( plan );
      break;
   }
}

void
RandomWorkload::addEntry( const GroupPlan & plan ) {
   bcm_field_entry_t id = nextEntry_++;
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, plan.id, id ) );
   entries_[ id ] = plan.id;
   if ( chance( 70 ) ) { // else the default priority, the lowest
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_prio_set( 0, id, priority() ) );
   }
   writeRules( plan, id );
   writeActions( plan, id );
   attachCountersAndMeter( plan, id );
   if ( chance( 90 ) ) {
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_install( 0, id ) );
   }
   if ( chance( 10 ) ) {
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_enable_set( 0, id, 0 ) );
   }
}

void
RandomWorkload::destroyEntry( bcm_field_entry_t id ) {
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_destroy( 0, id ) );
   entries_.erase( id );
   auto stat = statOf_.find( id );
   if ( stat != statOf_.end() ) {
      ASSERT_EQ( BCM_E_NONE, bcm_field_stat_destroy( 0, stat->second ) );
      statOf_.erase( stat );
   }
}

// Up to three of the group's qualifiers (none: a catch-all), range checks
// and the user field; bulk entries mostly name one destination exactly.
void
RandomWorkload::writeRules( const GroupPlan & plan, bcm_field_entry_t id ) {
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_clear( 0, id ) );
   ChipModel::FieldProcessor & field = box_.unit( 0 ).state().field;
   if ( plan.bulk ) {
      U32 mask = chance( 90 ) ? 0xffffffff : 0xffffff00 | below( 256 );
      FieldValue dst = ChipModel::intValue( dstIps[ below( 8 ) ], mask, 4 );
      ASSERT_EQ( BCM_E_NONE, field.qualify( id, bcmFieldQualifyDstIp, dst ) );
   }
   const Packet & target = pool_[ below( static_cast< U32 >( pool_.size() ) ) ];
   for ( U32 n = chance( 8 ) ? 0 : 1 + below( 3 ); n > 0; --n ) {
      int q = telling( plan, target );
      ASSERT_EQ( BCM_E_NONE, field.qualify( id, q, ruleFor( q, target ) ) );
   }
   if ( plan.rangeChecks && chance( 40 ) ) {
      std::vector< bcm_field_range_t > usable = ranges_[ -1 ];
      for ( const auto & [ pipe, ids ] : ranges_ ) {
         if ( pipe >= 0 && ( plan.pipe < 0 || plan.pipe == pipe ) ) {
            usable.insert( usable.end(), ids.begin(), ids.end() );
         }
      }
      for ( U32 n = 1 + below( 2 ); n > 0; --n ) {
         bcm_field_range_t range = usable[ below( static_cast< U32 >( usable.size() ) ) ];
         ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_RangeCheck(
                                   0, id, range, static_cast< int >( below( 2 ) ) ) );
      }
   }
   if ( plan.userField && chance( 50 ) ) {
      std::vector< U8 > data;
      std::vector< U8 > mask;
      for ( U32 i = 0; i < userFieldBytes_; ++i ) {
         data.push_back( payloadBytes[ below( 3 ) ] );
         mask.push_back( chance( 80 ) ? 0xff : static_cast< U8 >( random_() ) );
      }
      int length = static_cast< int >( userFieldBytes_ );
      ASSERT_EQ( BCM_E_NONE,
                 dataQualifier_
                    ? bcm_field_qualify_data( 0, id, userFieldId_, data.data(), mask.data(),
                                              static_cast< U16 >( length ) )
                    : bcm_field_qualify_udf( 0, id, userFieldId_, length, data.data(),
                                             mask.data() ) );
   }
}

void
RandomWorkload::writeActions( const GroupPlan & plan, bcm_field_entry_t id ) {
   ASSERT_EQ( BCM_E_NONE, bcm_field_action_remove_all( 0, id ) );
   static const std::map< bcm_field_stage_t, std::vector< bcm_field_action_t > > actions = {
      { bcmFieldStageLookup,
        { bcmFieldActionClassSourceSet, bcmFieldActionClassDestSet, bcmFieldActionVrfSet,
          bcmFieldActionOuterVlanNew, bcmFieldActionDrop, bcmFieldActionCopyToCpu } },
      { bcmFieldStageClass, { bcmFieldActionNewClassId } },
      { bcmFieldStageIngress,
        { bcmFieldActionDrop, bcmFieldActionDropCancel, bcmFieldActionCopyToCpu,
          bcmFieldActionCopyToCpuCancel, bcmFieldActionRedirectPort, bcmFieldActionCosQNew,
          bcmFieldActionRpDrop, bcmFieldActionYpDrop, bcmFieldActionL3Switch,
          bcmFieldActionL3SwitchCancel } },
      { bcmFieldStageEgress,
        { bcmFieldActionDrop, bcmFieldActionCopyToCpu, bcmFieldActionCosQNew } } };
   const std::vector< bcm_field_action_t > & mine = actions.at( plan.stage );
   for ( U32 n = 1 + below( 2 ); n > 0; --n ) {
      bcm_field_action_t action = mine[ below( static_cast< U32 >( mine.size() ) ) ];
      U32 param1 = 0;
      if ( action == bcmFieldActionRedirectPort ) {
         param1 = static_cast< U32 >( pool_[ below( 48 ) ].inPort );
      }
      int rc = bcm_field_action_add( 0, id, action, below( 4 ), param1 );
      ASSERT_TRUE( rc == BCM_E_NONE || rc == BCM_E_EXISTS ) << rc;
   }
}

void
RandomWorkload::attachCountersAndMeter( const GroupPlan & plan, bcm_field_entry_t id ) {
   if ( profile_.stage( plan.stage )->counterPools == 0 ) {
      return;
   }
   bcm_field_stat_t types[] = { bcmFieldStatPackets, bcmFieldStatBytes,
                                bcmFieldStatRedPackets, bcmFieldStatDropPackets };
   int stat;
   ASSERT_EQ( BCM_E_NONE, bcm_field_stat_create( 0, plan.id, 4, types, &stat ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_stat_attach( 0, id, stat ) );
   statOf_[ id ] = stat;
   if ( plan.stage == bcmFieldStageIngress && chance( 25 ) ) {
      bcm_policer_t policer = policers_[ plan.pipe > 0 ? pipes_.size() - 1 : 0 ];
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_policer_attach( 0, id, 0, policer ) );
   }
}

// One of the group's qualifiers, mostly one whose value in the target is
// not zero: many fields read zero in every packet, and rules on them alone
// would match all packets or none. Port sets are always worth a rule.
int
RandomWorkload::telling( const GroupPlan & plan, const Packet & target ) {
   ChipModel::LookupContext context( target, 0 );
   int q = 0;
   for ( int tries = 0; tries < 3; ++tries ) {
      q = plan.qualifiers[ below( static_cast< U32 >( plan.qualifiers.size() ) ) ];
      const std::vector< U8 > & value = context.field( q );
      if ( ChipModel::isPortSet( q ) ||
           std::any_of( value.begin(), value.end(), []( U8 b ) { return b != 0; } ) ) {
         break;
      }
   }
   return q;
}

// A rule over the qualifier's bytes: its value in the target packet, a
// small number (class ids, VRFs, enumerations and their Any values) or
// random bytes, under an exact or a random mask; bits outside the mask are
// noise the match must ignore.
FieldValue
RandomWorkload::ruleFor( int qualifier, const Packet & target ) {
   U32 bytes = ChipModel::qualifierBytes( qualifier );
   std::vector< U8 > value = valueFor( qualifier, bytes, target );
   FieldValue rule{ value, std::vector< U8 >( bytes ) };
   bool exact = chance( 40 );
   for ( U32 i = 0; i < bytes; ++i ) {
      U32 kind = below( 4 );
      U8 mask = exact || kind < 2 ? 0xff : kind == 2 ? 0 : static_cast< U8 >( random_() );
      rule.mask[ i ] = mask;
      rule.data[ i ] = static_cast< U8 >( ( value[ i ] & mask ) | ( random_() & ~mask ) );
   }
   return rule;
}

std::vector< U8 >
RandomWorkload::valueFor( int qualifier, U32 bytes, const Packet & target ) {
   if ( ChipModel::isPortSet( qualifier ) ) {
      std::vector< U8 > value = portSetValue( target );
      std::vector< U8 > portClass = ChipModel::toBytes( below( 4 ), bytes - 28 );
      value.insert( value.end(), portClass.begin(), portClass.end() );
      return value;
   }
   U32 kind = below( 20 );
   if ( kind < 15 ) {
      ChipModel::LookupContext context( target, 0 );
      if ( context.field( qualifier ).size() == bytes ) {
         return context.field( qualifier );
      }
   }
   if ( kind < 18 ) {
      return ChipModel::toBytes( below( 4 ), bytes );
   }
   std::vector< U8 > value;
   for ( U32 i = 0; i < bytes; ++i ) {
      value.push_back( static_cast< U8 >( random_() ) );
   }
   return value;
}

// A bitmap of some ingress ports of the pool, the target's often among
// them; most significant byte of each 32-port word first.
std::vector< U8 >
RandomWorkload::portSetValue( const Packet & target ) {
   std::vector< U8 > value( 28, 0 );
   for ( U32 n = below( 4 ); n > 0; --n ) {
      int port = chance( 50 ) ? target.inPort : pool_[ below( 48 ) ].inPort;
      value[ static_cast< size_t >( ( port / 32 ) * 4 + 3 - ( port % 32 ) / 8 ) ] |=
         static_cast< U8 >( 1u << ( port % 8 ) );
   }
   return value;
}

} // namespace ModelTest
