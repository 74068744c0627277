// A random workload for a modelled unit: groups in every stage (and in two
// pipes) that between them hold every qualifier the model matches, range
// checkers, a user-defined field of the profile's kind, class ids set in
// one stage and matched in the next, counters and meters; entries created,
// rewritten, reprioritised (with many equal priorities), disabled, removed,
// reinstalled and destroyed one step at a time; and packets whose fields
// come from small sets of values so that entries built from the same sets
// hit them often.
#pragma once

#include <map>
#include <random>
#include <vector>

#include "sdk/model/Box.h"
#include "sdk/model/Qualifiers.h"

namespace ModelTest {

class RandomWorkload {
 public:
   struct GroupPlan {
      bcm_field_group_t id = 0;
      bcm_field_stage_t stage = bcmFieldStageIngress;
      int pipe = -1;    // of a per-pipe stage's group; -1 in a global stage
      int portsOf = -1; // the pipe whose ports it is limited to; -1 none
      std::vector< int > qualifiers; // those its entries may set
      bool bulk = false;             // many entries on exact addresses
      bool rangeChecks = false;
      bool userField = false;
   };

   // Builds the groups, checkers, user-defined field and meters on unit 0 of
   // the box, and a first batch of entries. Failures are gtest failures.
   RandomWorkload( ChipModel::Box & box, U32 seed );

   // One random change to the entries.
   void step();
   // A packet from the pool, on a port of one of the workload's pipes.
   ChipModel::Packet packet();

   const std::vector< GroupPlan > & groups() const { return groups_; }
   const std::vector< bcm_policer_t > & policers() const { return policers_; }

 private:
   U32 below( U32 n ) { return static_cast< U32 >( random_() % n ); }
   bool chance( U32 percent ) { return below( 100 ) < percent; }
   // Few priorities, so that many entries tie.
   int priority() { return static_cast< int >( below( 4 ) ); }

   void planGroups();
   void planClassStage();
   void createGroup( GroupPlan & plan );
   void createRanges();
   void createUserField();
   void createPolicers();
   void fillPackets();

   bcm_field_entry_t anyEntry();
   void addEntry( const GroupPlan & plan );
   void writeRules( const GroupPlan & plan, bcm_field_entry_t id );
   void writeActions( const GroupPlan & plan, bcm_field_entry_t id );
   void attachCountersAndMeter( const GroupPlan & plan, bcm_field_entry_t id );
   void destroyEntry( bcm_field_entry_t id );
   int telling( const GroupPlan & plan, const ChipModel::Packet & target );
   ChipModel::FieldValue ruleFor( int qualifier, const ChipModel::Packet & target );
   std::vector< U8 > valueFor( int qualifier, U32 bytes, const ChipModel::Packet & target );
   std::vector< U8 > portSetValue( const ChipModel::Packet & target );
   const GroupPlan & planOf( bcm_field_entry_t id ) const;

   ChipModel::Box & box_;
   const ChipModel::Profile & profile_;
   std::mt19937 random_;
   std::vector< U32 > pipes_; // pipe 0 and the last
   std::vector< GroupPlan > groups_;
   std::vector< ChipModel::Packet > pool_;
   std::map< int, std::vector< bcm_field_range_t > > ranges_; // by pipe; -1: the unit's
   std::vector< bcm_policer_t > policers_;                    // by index into pipes_
   bool dataQualifier_ = false; // the user field is a data qualifier, else a UDF
   int userFieldId_ = 0;
   U32 userFieldBytes_ = 0;
   std::map< bcm_field_entry_t, bcm_field_group_t > entries_;
   std::map< bcm_field_entry_t, int > statOf_;
   bcm_field_entry_t nextEntry_ = 1;
   U64 timeUs_ = 0;
};

} // namespace ModelTest
