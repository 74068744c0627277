#include "tests/proof/RandomOps.h"

#include <sstream>

#include "common/TesselSdkCall.h"
#include "manager/ChipInfoFromShim.h"
#include "platform/agent/AclTypes.h"
#include "sdk/api/bcm.h"
#include "sdk/api/policer.h"

namespace Proof {

using namespace Tessel;

namespace {

const RangeCheckerDesc rangeDescs[] = { { 1000, 2000, BCM_FIELD_RANGE_DSTPORT },
                                        { 0, 1023, BCM_FIELD_RANGE_SRCPORT },
                                        { 64, 128, BCM_FIELD_RANGE_PACKET_LENGTH } };
struct UdfChoice {
   int aclType;
   UdfOffsetBase base;
   U8 offset;
   U8 length;
};
const UdfChoice udfChoices[] = { { Acl::ipv4_, UdfBaseL3HeaderEnd, 8, 2 },
                                 { Acl::ipv4_, UdfBaseL3HeaderStart, 12, 4 },
                                 { Acl::ipv6_, UdfBaseL3HeaderEnd, 0, 2 } };

U16 moduleOf( U32 unit ) { return U16( unit + 1 ); }

Kiln::BytePtr
policerConfig() {
   bcm_policer_config_t config;
   bcm_policer_config_t_init( &config );
   config.mode = bcmPolicerModeCommitted;
   config.ckbits_sec = 64;
   config.ckbits_burst = 8;
   return Kiln::BytePtr::copyOf( config );
}

} // namespace


RandomOps::RandomOps( const std::vector< std::string > & profiles )
      : agent_( SimAgent::Settings{ profiles, "", "", "random", false } ),
        vlans_( new Agent::VlanState( "randomVlans" ) ) {
   agent_.start();
   Kiln::Ptr< TesselTcamGroupManager > m = agent_.manager();
   m->vlanStateIs( vlans_ );
   managers_.push_back( m->entryManagerIs( test1TcamGroup_, "random acl", m.get(),
                                           IFP_GROUP_IP_ACL_, 100, 116, tcamAllocateOnDemand_ ) );
   managers_.push_back( m->entryManagerIs( test2TcamGroup_, "random qos", m.get(),
                                           IFP_GROUP_QOS_, 200, 204, tcamAllocateAsChunk_ ) );
   managers_.push_back( m->unboundedEntryManagerIs( test3TcamGroup_, "random egress", m.get(),
                                                    EFP_GROUP_IP_ACL_, 0, 0,
                                                    tcamAllocateUnbounded_ ) );
   // Fields are taken for a group that never gets entries here, so no key
   // holds them when they go.
   udfManager_ = m->unboundedEntryManagerIs( test4TcamGroup_, "random udf", m.get(),
                                             IFP_GROUP_MAC_ACL_, 0, 0, tcamAllocateUnbounded_ );
   for ( U32 unit = 0; unit < agent_.box().numUnits(); ++unit ) {
      units_[ unit ];
   }
   agent_.box().clearCallLog();
}

RandomOps::~RandomOps() {
   if ( !finished_ ) {
      finish();
   }
}

std::string
RandomOps::step( Choices & c ) {
   U32 unit = c.below( U32( units_.size() ) );
   if ( !units_[ unit ].known ) {
      return module( unit );
   }
   // The call log is not needed; it would only grow.
   agent_.box().clearCallLog();
   switch ( c.below( 12 ) ) {
   case 0:
   case 1: return getEntry( unit, c );
   case 2: return installEntry( unit, c );
   case 3: return priority( unit, c );
   case 4: return removeEntry( unit, c );
   case 5: return releaseEntry( unit, c );
   case 6: return rangeChecker( unit, c );
   case 7: return udfField( unit, c );
   case 8: return classId( unit, c );
   case 9: return policer( unit, c );
   case 10: return vlan( c );
   default: return c.below( 4 ) == 0 ? module( unit ) : getEntry( unit, c );
   }
}

std::string
RandomOps::getEntry( U32 unit, Choices & c ) {
   size_t which = c.below( U32( managers_.size() ) );
   Manager & m = managers_[ which ];
   U32 got = 0;
   U32 asked = 0;
   if ( auto bounded = Kiln::ptr_cast< TesselBoundedTcamEntryManager >( m ) ) {
      asked = m->baseEntry() + c.below( m->endEntry() - m->baseEntry() );
      got = bounded->getEntry( unit, asked, "random" );
   } else {
      got = Kiln::ptr_cast< TesselUnboundedTcamEntryManager >( m )->getEntry( unit, "random" );
   }
   if ( got ) {
      units_[ unit ].entries[ which ][ got ] = false;
   }
   std::ostringstream out;
   out << "getEntry unit " << unit << " manager " << which << " " << asked << " -> " << got;
   return out.str();
}

std::optional< std::pair< size_t, U32 > >
RandomOps::pickEntry( U32 unit, Choices & c ) {
   std::vector< std::pair< size_t, U32 > > all;
   for ( auto & [ which, entries ] : units_[ unit ].entries ) {
      for ( auto & [ entry, installed ] : entries ) {
         all.emplace_back( which, entry );
      }
   }
   if ( all.empty() ) {
      return std::nullopt;
   }
   return all[ c.below( U32( all.size() ) ) ];
}

std::string
RandomOps::installEntry( U32 unit, Choices & c ) {
   auto picked = pickEntry( unit, c );
   if ( !picked ) {
      return "no entry";
   }
   auto [ which, entry ] = *picked;
   std::map< size_t, std::map< U32, bool > > & held = units_[ unit ].entries;
   U32 dst = 0x0a000000 | entry;
   int rc = SDK_CALL( bcm_field_qualify_DstIp( int( unit ), int( entry ), dst, 0xffffffff ) );
   if ( rc >= 0 ) {
      rc = managers_[ which ]->installEntry( unit, entry );
   }
   held[ which ][ entry ] = rc == 0;
   return "install unit " + std::to_string( unit ) + " entry " + std::to_string( entry ) +
          " rc " + std::to_string( rc );
}

std::string
RandomOps::priority( U32 unit, Choices & c ) {
   auto picked = pickEntry( unit, c );
   if ( !picked ) {
      return "no entry";
   }
   auto [ which, entry ] = *picked;
   U32 prio = 1 + c.below( 100000 );
   managers_[ which ]->setPriorityForEntry( unit, entry, prio );
   return "priority unit " + std::to_string( unit ) + " entry " + std::to_string( entry ) + " " +
          std::to_string( prio );
}

std::string
RandomOps::removeEntry( U32 unit, Choices & c ) {
   auto picked = pickEntry( unit, c );
   if ( !picked ) {
      return "no entry";
   }
   auto [ which, entry ] = *picked;
   std::map< size_t, std::map< U32, bool > > & held = units_[ unit ].entries;
   if ( !held[ which ][ entry ] ) {
      return "remove skipped: not installed";
   }
   managers_[ which ]->removeEntry( unit, entry );
   held[ which ][ entry ] = false;
   return "remove unit " + std::to_string( unit ) + " entry " + std::to_string( entry );
}

std::string
RandomOps::releaseEntry( U32 unit, Choices & c ) {
   auto picked = pickEntry( unit, c );
   if ( !picked ) {
      return "no entry";
   }
   auto [ which, entry ] = *picked;
   std::map< size_t, std::map< U32, bool > > & held = units_[ unit ].entries;
   managers_[ which ]->releaseEntry( unit, entry );
   held[ which ].erase( entry );
   return "release unit " + std::to_string( unit ) + " entry " + std::to_string( entry );
}

std::string
RandomOps::rangeChecker( U32 unit, Choices & c ) {
   size_t which = c.below( 3 );
   U32 & users = units_[ unit ].rangeUsers[ which ];
   if ( users && c.below( 2 ) ) {
      managers_[ 0 ]->releaseRangeChecker( unit, rangeDescs[ which ] );
      --users;
      return "release range " + std::to_string( which );
   }
   U32 id = managers_[ 0 ]->getRangeChecker( unit, rangeDescs[ which ] );
   users += id ? 1 : 0;
   return "get range " + std::to_string( which ) + " -> " + std::to_string( id );
}

std::string
RandomOps::udfField( U32 unit, Choices & c ) {
   size_t which = c.below( 3 );
   const UdfChoice & f = udfChoices[ which ];
   U32 & users = units_[ unit ].udfUsers[ which ];
   if ( users && c.below( 2 ) ) {
      udfManager_->releaseAclUdf( unit, f.aclType, UdfUnitSpec::ethTypeNotSet, f.base, f.offset,
                                  f.length );
      --users;
      return "release udf " + std::to_string( which );
   }
   QualIdList quals = udfManager_->getAclUdf( unit, f.aclType, UdfUnitSpec::ethTypeNotSet,
                                              f.base, f.offset, f.length );
   users += quals.empty() ? 0 : 1;
   return "get udf " + std::to_string( which ) + " -> " + std::to_string( quals.size() );
}

std::string
RandomOps::classId( U32 unit, Choices & c ) {
   const Agent::ChipInfo * info = agent_.manager()->chipInfo( unit );
   if ( !info || !info->classIdCompression() ) {
      return "no class ids on unit " + std::to_string( unit );
   }
   U8 id = U8( 1 + c.below( 4 ) );
   auto & bound = units_[ unit ].l4ClassIds;
   if ( bound.count( id ) && c.below( 2 ) ) {
      agent_.manager()->releaseL4SrcPortClassId( unit, id );
      bound.erase( id );
      return "release class id " + std::to_string( id );
   }
   U16 port = U16( 1000 + c.below( 3 ) );
   agent_.manager()->allocateL4SrcPortClassId( unit, port, id );
   bound[ id ] = port;
   return "bind class id " + std::to_string( id ) + " to " + std::to_string( port );
}

std::string
RandomOps::policer( U32 unit, Choices & c ) {
   std::vector< U32 > & held = units_[ unit ].policers;
   if ( !held.empty() && c.below( 2 ) ) {
      size_t i = c.below( U32( held.size() ) );
      agent_.manager()->removePolicer( unit, held[ i ] );
      held.erase( held.begin() + long( i ) );
      return "remove policer";
   }
   held.push_back( agent_.manager()->createPolicer( unit, policerConfig() ) );
   return "create policer " + std::to_string( held.back() );
}

std::string
RandomOps::vlan( Choices & c ) {
   U16 vlan = U16( 100 + c.below( 2 ) );
   U32 port = 1 + c.below( 8 );
   if ( c.below( 2 ) ) {
      vlans_->untaggedPortDel( vlan, port );
   } else {
      vlans_->untaggedPortIs( vlan, port );
   }
   return "vlan " + std::to_string( vlan ) + " port " + std::to_string( port );
}

// A known unit's module goes (the features give back what the library does
// not keep: policers); a gone one comes back.
std::string
RandomOps::module( U32 unit ) {
   UnitState & state = units_[ unit ];
   Kiln::Ptr< TesselTcamGroupManager > m = agent_.manager();
   if ( state.known ) {
      for ( U32 policer : state.policers ) {
         m->removePolicer( unit, policer );
      }
      m->modChipInfoDel( moduleOf( unit ) );
      m->handleModuleUpdate( moduleOf( unit ) );
      state = UnitState{};
      state.known = false;
      return "module of unit " + std::to_string( unit ) + " gone";
   }
   m->modChipInfoIs( moduleOf( unit ), chipInfoFromShim( moduleOf( unit ), { unit } ) );
   m->handleModuleUpdate( moduleOf( unit ) );
   state.known = true;
   return "module of unit " + std::to_string( unit ) + " back";
}

void
RandomOps::releaseUnit( U32 unit ) {
   UnitState & state = units_[ unit ];
   Kiln::Ptr< TesselTcamGroupManager > m = agent_.manager();
   for ( auto & [ which, entries ] : state.entries ) {
      for ( auto & [ entry, installed ] : entries ) {
         if ( installed ) {
            managers_[ which ]->removeEntry( unit, entry );
         }
         managers_[ which ]->releaseEntry( unit, entry );
      }
   }
   for ( auto & [ which, users ] : state.rangeUsers ) {
      for ( ; users; --users ) {
         managers_[ 0 ]->releaseRangeChecker( unit, rangeDescs[ which ] );
      }
   }
   for ( auto & [ which, users ] : state.udfUsers ) {
      const UdfChoice & f = udfChoices[ which ];
      for ( ; users; --users ) {
         udfManager_->releaseAclUdf( unit, f.aclType, UdfUnitSpec::ethTypeNotSet, f.base,
                                     f.offset, f.length );
      }
   }
   for ( auto & [ id, port ] : state.l4ClassIds ) {
      m->releaseL4SrcPortClassId( unit, id );
   }
   for ( U32 policer : state.policers ) {
      m->removePolicer( unit, policer );
   }
   state = UnitState{};
}

std::string
RandomOps::finish() {
   finished_ = true;
   for ( auto & [ unit, state ] : units_ ) {
      if ( state.known ) {
         releaseUnit( unit );
      }
   }
   std::string violations = check();
   managers_.clear();
   udfManager_ = nullptr;
   agent_.stop();
   ChipModel::ObjectCounts left = agent_.box().counts();
   return violations + ( left.total() ? "left in the chip: " + left.text() : "" );
}

} // namespace Proof
