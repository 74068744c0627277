// The field processor of one unit: stages of slices, groups, entries,
// counters, preselectors and hints, with the operations behind the
// bcm_field_* calls. Operations return SDK result codes and change nothing
// when they fail. Checks that involve other tables of the unit (ranges,
// policers, data qualifiers, UDFs) are made by the caller before it calls in.
//
// A value type: copying it copies the whole hardware state (a hitless
// restart keeps such a copy in hardware while the agent starts again).
// Not thread-safe; the unit's lock is held by every caller.
#pragma once

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "sdk/model/Entry.h"
#include "sdk/model/Group.h"
#include "sdk/model/Presels.h"
#include "sdk/model/Profile.h"
#include "sdk/model/Slices.h"
#include "sdk/model/Stats.h"

namespace ChipModel {

// Group and entry ids the SDK picks itself stay below this.
constexpr int modelIdLimit = 1 << 24;

class FieldProcessor {
 public:
   explicit FieldProcessor( const Profile & profile );

   const Profile & profile() const { return *profile_; }

   // --- groups (FieldGroups.cpp) ---
   // extraKeyBytes: key bytes of the data qualifiers and UDFs of the qset.
   int groupCreate( bcm_field_group_config_t & config, U32 extraKeyBytes );
   int groupDestroy( bcm_field_group_t id );
   int groupCompress( bcm_field_group_t id );
   // Fills all but the meter figures.
   int groupStatus( bcm_field_group_t id, bcm_field_group_status_t & status ) const;
   int operMode( int stageQualifier, bcm_field_group_oper_mode_t & mode ) const;
   const Group * group( bcm_field_group_t id ) const;
   const std::map< bcm_field_group_t, Group > & groups() const { return groups_; }
   // Groups of a stage instance in lookup precedence: higher priority first,
   // then creation order.
   std::vector< const Group * > groupsInOrder( bcm_field_stage_t stage,
                                               U32 instance ) const;
   const StageSlices * slices( bcm_field_stage_t stage ) const;
   const std::vector< StageSlices > & allSlices() const { return stages_; }

   // --- entries (FieldEntries.cpp) ---
   int entryCreate( bcm_field_group_t group, bcm_field_entry_t & id );
   int entryCreateId( bcm_field_group_t group, bcm_field_entry_t id );
   // Destroys the entry; the stat it had (if any) is left detached.
   int entryDestroy( bcm_field_entry_t id );
   int entryInstall( bcm_field_entry_t id );
   int entryReinstall( bcm_field_entry_t id );
   int entryRemove( bcm_field_entry_t id );
   int entryEnable( bcm_field_entry_t id, bool enable );
   int entryPrioSet( bcm_field_entry_t id, int priority );
   int entryContentCopy( bcm_field_entry_t src, bcm_field_entry_t dst );
   int qualifyClear( bcm_field_entry_t id );
   const Entry * entry( bcm_field_entry_t id ) const;
   Entry * entry( bcm_field_entry_t id );
   const std::unordered_map< bcm_field_entry_t, Entry > & entries() const {
      return entries_;
   }
   // The row of an entry in its group; -1 when unknown.
   S64 rowOf( bcm_field_entry_t id ) const;

   // --- qualifiers and actions (FieldQualify.cpp) ---
   // On an entry (the group's qset must hold the qualifier) or, with
   // BCM_FIELD_QUALIFY_PRESEL in id, on a preselector.
   int qualify( bcm_field_entry_t id, int qualifier, const FieldValue & value );
   int qualifyGet( bcm_field_entry_t id, int qualifier, FieldValue & value ) const;
   int rangeCheckSet( bcm_field_entry_t id, bcm_field_range_t range, bool invert );
   int dataQualify( bcm_field_entry_t id, int qualId, const FieldValue & value );
   int dataQualifyGet( bcm_field_entry_t id, int qualId, FieldValue & value ) const;
   int udfQualify( bcm_field_entry_t id, int udfId, const FieldValue & value );
   int udfQualifyGet( bcm_field_entry_t id, int udfId, FieldValue & value ) const;
   int actionAdd( bcm_field_entry_t id, const Action & action, bool addPorts );
   int actionGet( bcm_field_entry_t id, bcm_field_action_t action, Action & out ) const;
   int actionRemove( bcm_field_entry_t id, bcm_field_action_t action );
   int actionRemoveAll( bcm_field_entry_t id );
   // Whether any entry (software or hardware) checks the range.
   bool rangeInUse( bcm_field_range_t range ) const;
   // Whether any group's qualifier set holds the data qualifier or UDF.
   bool dataQualifierInUse( int qualId ) const;
   bool udfInUse( int udfId ) const;

   // --- stats (FieldStats.cpp) ---
   int statCreate( bcm_field_group_t group, const std::vector< bcm_field_stat_t > & types,
                   int & id );
   int statDestroy( int id );
   int statAttach( bcm_field_entry_t entry, int id );
   int statDetach( bcm_field_entry_t entry, int id );
   int statGet( int id, bcm_field_stat_t type, U64 & value ) const;
   int statSet( int id, bcm_field_stat_t type, U64 value );
   const Stat * stat( int id ) const;
   const std::map< int, Stat > & stats() const { return stats_; }
   // The counter at (stage instance of pipe, pool, index) of the ingress stage.
   const Counter * counter( bcm_field_stage_t stage, U32 instance, U32 pool,
                            U32 index ) const;
   Counter * counter( bcm_field_stage_t stage, U32 instance, U32 pool, U32 index );
   const CounterPools * pools( bcm_field_stage_t stage, U32 instance ) const;
   // Counts a packet that hit the entry on every counter kind it falls in.
   void countHit( const Entry & entry, U64 length, bcm_field_color_t colour, bool dropped,
                  U64 evictThreshold );

   // --- preselectors and hints (FieldPresels.cpp) ---
   int preselCreate( bcm_field_presel_t & id );
   int preselCreateId( bcm_field_presel_t id );
   int preselDestroy( bcm_field_presel_t id );
   const Presel * presel( bcm_field_presel_t id ) const;
   const std::map< bcm_field_presel_t, Presel > & presels() const { return presels_; }
   int hintsCreate( bcm_field_hintid_t & id );
   int hintsAdd( bcm_field_hintid_t id, const bcm_field_hint_t & hint );
   int hintsGet( bcm_field_hintid_t id, int n, bcm_field_hint_t & hint ) const;
   int hintsDestroy( bcm_field_hintid_t id );
   const std::map< bcm_field_hintid_t, Hint > & hints() const { return hints_; }

   // --- dumps (FieldDump.cpp) ---
   int groupDump( bcm_field_group_t id, std::string & text ) const;
   int entryDump( bcm_field_entry_t id, std::string & text ) const;

 private:
   // Counts the physical moves of a group's entries.
   class MoveCounter : public PriorityArray::Mover {
    public:
      explicit MoveCounter( Group & group ) : group_( group ) {}
      void move( U32, U32, U32 ) override { ++group_.moves; }

    private:
      Group & group_;
   };

   StageSlices * slicesOf( bcm_field_stage_t stage );
   CounterPools * poolsOf( bcm_field_stage_t stage, U32 instance );
   Group * groupOf( bcm_field_group_t id );
   int resolveGroupPlace( const StageProfile & stage, Group & group ) const;
   int resolveGroupWidth( const bcm_field_group_config_t & config,
                          const StageProfile & stage, U32 extraKeyBytes,
                          Group & group ) const;
   int checkGroupReferences( const bcm_field_group_config_t & config, Group & group ) const;
   std::optional< U32 > pipeOfPresels( const Group & group ) const;
   bool expand( Group & group );
   int addEntry( Group & group, bcm_field_entry_t id );
   bcm_field_entry_t pickEntryId();
   bcm_field_group_t pickGroupId() const;
   bool actionAllowed( const Group & group, bcm_field_action_t action ) const;
   Presel * preselOf( bcm_field_entry_t id );

   const Profile * profile_;
   std::vector< StageSlices > stages_;
   std::map< std::pair< int, U32 >, CounterPools > pools_; // by (stage, instance)
   std::map< bcm_field_group_t, Group > groups_;
   std::unordered_map< bcm_field_entry_t, Entry > entries_;
   std::map< int, Stat > stats_;
   std::map< bcm_field_presel_t, Presel > presels_;
   std::map< bcm_field_hintid_t, Hint > hints_;
   U64 groupsCreated_ = 0;
   bcm_field_entry_t entryCursor_ = 0;
   int nextStatId_ = 1;
   bcm_field_hintid_t nextHintId_ = 1;
};

} // namespace ChipModel
