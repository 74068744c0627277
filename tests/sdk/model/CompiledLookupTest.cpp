// The compiled lookup tables against the plain loop: a random workload on
// every profile, each packet looked up by both on the same state; and the
// rules and settings the tables leave to the plain loop.
#include <cstdlib>
#include <iomanip>
#include <set>
#include <sstream>
#include <stdexcept>

#include "sdk/model/FieldProcessor.h"
#include "tests/sdk/model/ModelTestSupport.h"
#include "tests/sdk/model/RandomWorkload.h"
#include "tests/common/Thrown.h"

using namespace ModelTest;
using ChipModel::Box;
using ChipModel::Classifier;
using ChipModel::LookupResult;
using ChipModel::Packet;
using ChipModel::UnitState;

namespace {

std::string
describe( const LookupResult & r ) {
   std::ostringstream out;
   for ( const ChipModel::StageResult & s : r.stages ) {
      out << "stage " << s.stage << " pipe " << s.pipe << " hits";
      for ( const ChipModel::Hit & h : s.hits ) {
         out << ' ' << h.group << ':' << h.entry;
      }
      out << " actions";
      for ( const ChipModel::ResolvedAction & a : s.actions ) {
         out << ' ' << a.action << '(' << a.param0 << ',' << a.param1 << ")@" << a.entry;
      }
      out << '\n';
   }
   out << "dropped " << r.dropped << " cpu " << r.copiedToCpu << " egress "
       << r.egressPort.value_or( -1 ) << " colour " << r.colour;
   return out.str();
}

// Every counter index of every stat, and the buckets of the meters.
std::string
describeCounters( const UnitState & state, const std::vector< bcm_policer_t > & policers ) {
   std::ostringstream out;
   for ( const auto & [ id, stat ] : state.field.stats() ) {
      out << "stat " << id;
      for ( U32 index : stat.indices ) {
         const ChipModel::Counter * c =
            state.field.counter( stat.stage, stat.instance, stat.pool, index );
         out << ' ' << c->packets << '/' << c->bytes << '/' << c->hardwarePackets << '/'
             << c->evictedPackets;
      }
      out << '\n';
   }
   for ( bcm_policer_t id : policers ) {
      const ChipModel::Policer * p = state.policers.policer( id );
      out << "policer " << id << std::hexfloat << ' ' << p->committedTokens << ' '
          << p->peakTokens << '\n';
   }
   return out.str();
}

Box::Options
fastAndCommitted() {
   Box::Options options = committed();
   options.classifier = Classifier::fast; // whatever the environment says
   return options;
}

class CompiledLookup : public ::testing::TestWithParam< const char * > {
 protected:
   CompiledLookup() : box_( { GetParam() }, fastAndCommitted() ) {}

   // The packet through the box (the tables, on the unit's own state) and
   // through the plain loop on a copy of that state taken before.
   void check( const Packet & packet, int index ) {
      UnitState copy = *box_.unit( 0 ).active();
      LookupResult expected = ChipModel::classify( copy, packet, Classifier::reference );
      LookupResult got = box_.send( 0, packet );
      ASSERT_EQ( describe( expected ), describe( got ) ) << "packet " << index;
      ASSERT_EQ( describeCounters( copy, workload_->policers() ),
                 describeCounters( *box_.unit( 0 ).active(), workload_->policers() ) )
         << "packet " << index;
      for ( const ChipModel::Hit & hit : got.hits() ) {
         hits_.insert( { hit.group, hit.entry } );
      }
   }

   // Every group's table, and whether one of them is bucketed.
   U64 fallbacks( bool & bucketed ) {
      U64 all = 0;
      for ( const auto & [ id, group ] : box_.unit( 0 ).active()->field.groups() ) {
         all += group.table.fallbacks();
         bucketed = bucketed || group.table.bucketed();
      }
      return all;
   }

   Box box_;
   std::optional< RandomWorkload > workload_;
   std::set< std::pair< bcm_field_group_t, bcm_field_entry_t > > hits_;
};

} // namespace

TEST_P( CompiledLookup, AnswersAsThePlainLoopWhileEntriesChange ) {
   workload_.emplace( box_, 1234 );
   ASSERT_FALSE( HasFatalFailure() );
   bool bucketed = false;
   for ( int i = 0; i < 500; ++i ) {
      workload_->step();
      ASSERT_FALSE( HasFatalFailure() ) << "step " << i;
      check( workload_->packet(), i );
      ASSERT_FALSE( HasFatalFailure() );
      fallbacks( bucketed );
   }
   // What was checked is worth checking: no lookup fell back to the plain
   // loop, big groups were bucketed, every group hit and many entries did.
   EXPECT_EQ( 0u, fallbacks( bucketed ) );
   EXPECT_TRUE( bucketed );
   for ( const RandomWorkload::GroupPlan & plan : workload_->groups() ) {
      auto first = hits_.lower_bound( { plan.id, 0 } );
      EXPECT_TRUE( first != hits_.end() && first->first == plan.id ) << "group " << plan.id;
   }
   EXPECT_LE( 30u, hits_.size() );
}

// A hitless restart moves the hardware image, tables included, aside for
// packets while the new agent starts from nothing.
TEST_P( CompiledLookup, TheImageAHitlessRestartKeepsAnswersAsBefore ) {
   workload_.emplace( box_, 99 );
   ASSERT_FALSE( HasFatalFailure() );
   for ( int i = 0; i < 50; ++i ) {
      workload_->step();
      ASSERT_FALSE( HasFatalFailure() );
      check( workload_->packet(), i );
      ASSERT_FALSE( HasFatalFailure() );
   }
   box_.restart( 0, true );
   for ( int i = 0; i < 50; ++i ) {
      check( workload_->packet(), i );
      ASSERT_FALSE( HasFatalFailure() );
   }
   bool bucketed = false;
   EXPECT_EQ( 0u, fallbacks( bucketed ) );
}

INSTANTIATE_TEST_SUITE_P( Profiles, CompiledLookup,
                          ::testing::Values( "single", "trident3", "thx", "th3" ) );

namespace {

Box::Options
committedWith( Classifier classifier ) {
   Box::Options options = committed();
   options.classifier = classifier;
   return options;
}

void
createGroup( const Box & box, bcm_field_group_t id, bcm_field_qset_t qset, int priority ) {
   bcm_field_group_config_t config =
      groupConfig( box.unit( 0 ).profile(), id, qset, priority );
   ASSERT_EQ( BCM_E_NONE, bcm_field_group_config_create( 0, &config ) );
}

// An entry with one action, left for the caller to qualify and install.
void
createEntry( bcm_field_group_t group, bcm_field_entry_t id, int priority,
             bcm_field_action_t action, U32 param0 = 0 ) {
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_create_id( 0, group, id ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_entry_prio_set( 0, id, priority ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_action_add( 0, id, action, param0, 0 ) );
}

// "group:entry" of every hit, in lookup order.
std::string
hitsOf( Box & box, const Packet & packet ) {
   std::string text;
   for ( const ChipModel::Hit & hit : box.send( 0, packet ).hits() ) {
      text += ( text.empty() ? "" : " " ) + std::to_string( hit.group ) + ":" +
              std::to_string( hit.entry );
   }
   return text;
}

} // namespace

class CompiledLookupRules : public ::testing::TestWithParam< Classifier > {};

// The groups of the class stage look up at once: a class id one of them
// sets reaches the ingress stage, not its neighbours.
TEST_P( CompiledLookupRules, ClassIdsOfTheClassStageAreSeenFromTheNextStageOn ) {
   Box box( { "th3" }, committedWith( GetParam() ) );
   const bcm_field_qualify_t select = bcmFieldQualifyCompressionSelect;
   const bcm_field_qualify_t portClass = bcmFieldQualifyL4SrcPortClass;
   createGroup( box, 87, qsetOf( { select, bcmFieldQualifyL4SrcPort } ), 10 );
   createEntry( 87, 1, 1, bcmFieldActionNewClassId, 6 );
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_L4SrcPort( 0, 1, 179, 0xffff ) );
   createGroup( box, 88, qsetOf( { select, bcmFieldQualifyIpProtocol, portClass } ), 5 );
   createEntry( 88, 2, 10, bcmFieldActionNewClassId, 3 );
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_L4SrcPortClass( 0, 2, 6, 0xff ) );
   createEntry( 88, 3, 1, bcmFieldActionNewClassId, 1 ); // any packet
   createGroup( box, 1, qsetOf( { portClass, bcmFieldQualifyIpProtocolClass } ), 1 );
   createEntry( 1, 10, 1, bcmFieldActionDrop );
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_L4SrcPortClass( 0, 10, 6, 0xff ) );
   ASSERT_EQ( BCM_E_NONE, bcm_field_qualify_IpProtocolClass( 0, 10, 1, 0xff ) );
   for ( bcm_field_entry_t id : { 1, 2, 3, 10 } ) {
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_install( 0, id ) );
   }
   Packet bgp = Packet::ipv4( portIn( box.unit( 0 ).profile(), 0 ), 1, 2, 6, 179, 5000 );
   EXPECT_EQ( "87:1 88:3 1:10", hitsOf( box, bgp ) );
}

// Rules no packet can satisfy: a value longer than the packet's field, and
// a checker that must both hit and miss. The same answer twice is one check.
TEST_P( CompiledLookupRules, ImpossibleRulesMatchNothing ) {
   Box box( { "single" }, committedWith( GetParam() ) );
   bcm_field_range_t web;
   ASSERT_EQ( BCM_E_NONE,
              bcm_field_range_create( 0, &web, BCM_FIELD_RANGE_DSTPORT, 0, 100 ) );
   createGroup( box, 1, qsetOf( { bcmFieldQualifyDstIp, bcmFieldQualifyRangeCheck } ), 1 );
   ChipModel::FieldProcessor & field = box.unit( 0 ).state().field;
   createEntry( 1, 1, 9, bcmFieldActionDrop );
   ChipModel::FieldValue tooLong{ { 10, 0, 0, 1, 0 }, { 0xff, 0xff, 0xff, 0xff, 0 } };
   ASSERT_EQ( BCM_E_NONE, field.qualify( 1, bcmFieldQualifyDstIp, tooLong ) );
   createEntry( 1, 2, 8, bcmFieldActionDrop );
   field.entry( 2 )->soft.ranges = { { web, false }, { web, true } };
   createEntry( 1, 3, 1, bcmFieldActionDrop );
   field.entry( 3 )->soft.ranges = { { web, false }, { web, false } };
   for ( bcm_field_entry_t id : { 1, 2, 3 } ) {
      ASSERT_EQ( BCM_E_NONE, bcm_field_entry_install( 0, id ) );
   }
   int port = portIn( box.unit( 0 ).profile(), 0 );
   EXPECT_EQ( "1:3", hitsOf( box, Packet::ipv4( port, 1, 0x0a000001, 6, 1000, 80 ) ) );
   EXPECT_EQ( "", hitsOf( box, Packet::ipv4( port, 1, 0x0a000001, 6, 1000, 200 ) ) );
}

INSTANTIATE_TEST_SUITE_P( BothPaths, CompiledLookupRules,
                          ::testing::Values( Classifier::fast, Classifier::reference ) );

TEST( CompiledLookupDeathTest, ARuleShorterThanItsQualifierIsAFaultOfTheModel ) {
   EXPECT_DEATH(
      {
         Box box( { "single" }, committedWith( Classifier::fast ) );
         createGroup( box, 1, qsetOf( { bcmFieldQualifyInPorts } ), 1 );
         createEntry( 1, 1, 1, bcmFieldActionDrop );
         box.unit( 0 ).state().field.qualify( 1, bcmFieldQualifyInPorts,
                                              ChipModel::intValue( 1, 1, 4 ) );
         bcm_field_entry_install( 0, 1 );
         box.send( 0, Packet::ipv4( portIn( box.unit( 0 ).profile(), 0 ), 1, 2, 6, 3, 4 ) );
      },
      "Assertion 'a rule shorter than its qualifier' failed" );
}

// A whole test run may use the plain loop: boxes built without a choice
// take it from TESSEL_MODEL_CLASSIFIER.
TEST( CompiledLookupChoice, TheEnvironmentChoosesForBoxesThatDoNot ) {
   const char * set = std::getenv( "TESSEL_MODEL_CLASSIFIER" );
   std::optional< std::string > before;
   if ( set ) {
      before = set;
   }
   unsetenv( "TESSEL_MODEL_CLASSIFIER" );
   EXPECT_EQ( Classifier::fast, Box::Options().classifier );
   setenv( "TESSEL_MODEL_CLASSIFIER", "reference", 1 );
   EXPECT_EQ( Classifier::reference, Box( { "single" } ).classifier() );
   setenv( "TESSEL_MODEL_CLASSIFIER", "fast", 1 );
   EXPECT_EQ( Classifier::fast, Box::Options().classifier );
   setenv( "TESSEL_MODEL_CLASSIFIER", "quick", 1 );
   EXPECT_EQ( "unknown classifier 'quick' in TESSEL_MODEL_CLASSIFIER (known: fast, reference)",
              TestText::thrownText< std::invalid_argument >( [] { Box::Options options; } ) );
   if ( before ) {
      setenv( "TESSEL_MODEL_CLASSIFIER", before->c_str(), 1 );
   } else {
      unsetenv( "TESSEL_MODEL_CLASSIFIER" );
   }
}
