// The field processor: groups, entries, actions, statistics, preselectors,
// hints, dumps and the field control walk. Qualifier setters and getters are
// in sdk/api/field_qualify.h, data qualifiers in sdk/api/field_data.h.
//
// Every function returns a result code of sdk/api/error.h. Common codes:
// BCM_E_UNIT (no such unit), BCM_E_INIT (field processor not initialised),
// BCM_E_PARAM (a null pointer or a value out of range), BCM_E_NOT_FOUND (no
// such group, entry, stat, presel or hint). Each function adds its own below.
//
// Ids. Group and entry ids are 28-bit values (bits 0-27). The SDK never
// derives anything from the bits of an id the caller chooses: an id is a
// name, not a location. Ids the SDK picks lie below 2^24 and are never 0.
#pragma once

#include "sdk/api/field_enums.h"
#include "sdk/api/field_types.h"
#include "sdk/api/types.h"

typedef int bcm_field_group_t;
typedef int bcm_field_entry_t;
typedef int bcm_field_presel_t;
typedef uint32_t bcm_field_hintid_t;
typedef uint32_t bcm_field_range_t;
typedef int bcm_policer_t;

#define BCM_FIELD_ID_MAX 0x0fffffff // largest group or entry id

// OR-ed into an entry argument of a qualify call, it names a preselector:
// bcm_field_qualify_Stage( unit, preselId | BCM_FIELD_QUALIFY_PRESEL, ... ).
#define BCM_FIELD_QUALIFY_PRESEL 0x40000000

#define BCM_FIELD_ENTRY_PRIO_LOWEST 0
#define BCM_FIELD_ENTRY_PRIO_HIGHEST 0x7fffffff
#define BCM_FIELD_ENTRY_PRIO_DEFAULT 0 // priority of a newly created entry

// ---------------------------------------------------------------------------
// Qualifier sets, action sets, preselector sets
// ---------------------------------------------------------------------------

#define BCM_FIELD_QSET_WORDS 8      // room for 256 qualifiers
#define BCM_FIELD_USER_NUM_UDFS 64  // data qualifier and UDF ids below this
#define BCM_FIELD_ASET_WORDS 4      // room for 128 actions
#define BCM_FIELD_PRESEL_MAX 128    // preselector ids below this

typedef struct bcm_field_qset_s {
   uint32_t w[ BCM_FIELD_QSET_WORDS ];
   uint32_t udf_map[ BCM_FIELD_USER_NUM_UDFS / 32 ]; // data qualifier ids
   uint32_t udf_id_map[ BCM_FIELD_USER_NUM_UDFS / 32 ]; // UDF module / chunk ids
} bcm_field_qset_t;

typedef struct bcm_field_aset_s {
   uint32_t w[ BCM_FIELD_ASET_WORDS ];
} bcm_field_aset_t;

typedef struct bcm_field_presel_set_s {
   uint32_t w[ BCM_FIELD_PRESEL_MAX / 32 ];
} bcm_field_presel_set_t;

#define BCM_FIELD_BITSET_ADD( words, bit )                                         \
   ( ( words )[ ( bit ) / 32 ] |= ( 1u << ( ( bit ) % 32 ) ) )
#define BCM_FIELD_BITSET_REMOVE( words, bit )                                      \
   ( ( words )[ ( bit ) / 32 ] &= ~( 1u << ( ( bit ) % 32 ) ) )
#define BCM_FIELD_BITSET_TEST( words, bit )                                        \
   ( ( ( words )[ ( bit ) / 32 ] >> ( ( bit ) % 32 ) ) & 1u )

#define BCM_FIELD_QSET_INIT( qset ) bcm_field_qset_t_init( &( qset ) )
#define BCM_FIELD_QSET_ADD( qset, q ) BCM_FIELD_BITSET_ADD( ( qset ).w, q )
#define BCM_FIELD_QSET_REMOVE( qset, q ) BCM_FIELD_BITSET_REMOVE( ( qset ).w, q )
#define BCM_FIELD_QSET_TEST( qset, q ) BCM_FIELD_BITSET_TEST( ( qset ).w, q )
#define BCM_FIELD_ASET_INIT( aset ) bcm_field_aset_t_init( &( aset ) )
#define BCM_FIELD_ASET_ADD( aset, a ) BCM_FIELD_BITSET_ADD( ( aset ).w, a )
#define BCM_FIELD_ASET_REMOVE( aset, a ) BCM_FIELD_BITSET_REMOVE( ( aset ).w, a )
#define BCM_FIELD_ASET_TEST( aset, a ) BCM_FIELD_BITSET_TEST( ( aset ).w, a )
#define BCM_FIELD_PRESEL_INIT( set ) bcm_field_presel_set_t_init( &( set ) )
#define BCM_FIELD_PRESEL_ADD( set, id ) BCM_FIELD_BITSET_ADD( ( set ).w, id )
#define BCM_FIELD_PRESEL_REMOVE( set, id ) BCM_FIELD_BITSET_REMOVE( ( set ).w, id )
#define BCM_FIELD_PRESEL_TEST( set, id ) BCM_FIELD_BITSET_TEST( ( set ).w, id )

// ---------------------------------------------------------------------------
// Groups
// ---------------------------------------------------------------------------

// bcm_field_group_config_t.flags
#define BCM_FIELD_GROUP_CREATE_WITH_ID 0x1         // use config.group as the id
#define BCM_FIELD_GROUP_CREATE_WITH_PORT 0x2       // restrict to config.ports
#define BCM_FIELD_GROUP_CREATE_WITH_MODE 0x4       // use config.mode
#define BCM_FIELD_GROUP_CREATE_WITH_ASET 0x8       // entries may use only config.aset
#define BCM_FIELD_GROUP_CREATE_WITH_PRESELSET 0x40 // config.preselset selects packets
#define BCM_FIELD_GROUP_CREATE_WITH_HINTID 0x8000  // config.hintid applies
// With WITH_ASET an empty action set restricts nothing, with WITH_HINTID a
// hint id of 0 names no hint, with WITH_PRESELSET an empty set selects every
// packet; WITH_PORT with no ports is refused (BCM_E_PARAM).

typedef struct bcm_field_group_config_s {
   uint32_t flags;               // BCM_FIELD_GROUP_CREATE_*
   bcm_field_qset_t qset;        // what entries may match; its size fixes the width
   int priority;                 // higher is looked up with precedence
   bcm_field_group_t group;      // in with WITH_ID, out always
   bcm_field_group_mode_t mode;  // with WITH_MODE
   bcm_pbmp_t ports;             // with WITH_PORT
   bcm_field_aset_t aset;        // with WITH_ASET
   bcm_field_hintid_t hintid;    // with WITH_HINTID
   bcm_field_presel_set_t preselset; // with WITH_PRESELSET
   int action_res_id;            // action resource; -1 lets the SDK choose
   int use_serial_mux_allocation; // 1 on chips whose key muxes are serial
} bcm_field_group_config_t;

// What a group holds and may still take. entries_free counts the entries
// that can still be created in the group, including those that fit in free
// slices of its stage and pipe it may expand into (slices that other groups
// may take first). prio_min..prio_max is the range of entry priorities.
typedef struct bcm_field_group_status_s {
   int prio_min;
   int prio_max;
   int entries_total; // entries held now plus entries_free
   int entries_free;
   int counters_total; // counter indices of the group's stage and pipe
   int counters_free;
   int meters_total;   // meters of the group's pipe
   int meters_free;
   int slices_used;    // slices the group holds now
} bcm_field_group_status_t;

// ---------------------------------------------------------------------------
// Entries, actions
// ---------------------------------------------------------------------------

#define BCM_FIELD_ACTION_PARAM_NUM 2 // parameters of one action

typedef struct bcm_field_action_info_s {
   bcm_field_action_t action;
   uint32_t param[ BCM_FIELD_ACTION_PARAM_NUM ];
} bcm_field_action_info_t;

// A class-assignment action with a 64-bit class id (class-id compression).
typedef struct bcm_field_class_info_s {
   bcm_field_action_t action;
   uint64_t class_id;
} bcm_field_class_info_t;

// ---------------------------------------------------------------------------
// Hints
// ---------------------------------------------------------------------------

typedef struct bcm_field_hint_s {
   bcm_field_hint_type_t hint_type;
   bcm_field_qualify_t qual;
   uint32_t max_values; // compression: distinct values expected
   uint32_t start_bit;  // extraction: first bit kept
   uint32_t end_bit;    // extraction: last bit kept
   uint32_t flags;
} bcm_field_hint_t;

#define BCM_FIELD_HINTS_PER_ID_MAX 8

// ---------------------------------------------------------------------------
// Statistics
// ---------------------------------------------------------------------------

#define BCM_FIELD_STAT_INDICES_MAX 8 // counter indices one stat object may use

// ---------------------------------------------------------------------------
// The field control walk: the SDK's own view of stages, slices and groups.
// Read it only between bcm_field_control_lock and bcm_field_control_unlock;
// the structures are the SDK's and change when the lock is released.
// ---------------------------------------------------------------------------

typedef struct bcm_field_control_slice_s {
   int slice_number; // within the stage: pipe * slices per pipe + slice in pipe
   int pipe;
   int entry_count;  // entries the slice holds, free or not
   int free_count;
   // Next primary slice of the chain of the group that owns this slice, or
   // null. A group of width w owns slices slice_number .. slice_number + w - 1
   // for every primary slice of its chain.
   struct bcm_field_control_slice_s * next;
} bcm_field_control_slice_t;

typedef struct bcm_field_control_stage_s {
   int stage_id;     // bcm_field_stage_t
   int tcam_sz;      // entries of the stage, all pipes
   int tcam_slices;  // slices of the stage, all pipes
   bcm_field_control_slice_t * slices; // array of tcam_slices
   struct bcm_field_control_stage_s * next;
} bcm_field_control_stage_t;

typedef struct bcm_field_control_group_s {
   bcm_field_group_t gid;
   uint32_t flags;   // low 16 bits: the group's bcm_field_group_mode_t
   int stage_id;
   int pipe;         // -1 for a group of a global stage
   int priority;
   bcm_field_control_slice_t * slices; // first primary slice of the chain
   struct bcm_field_control_group_s * next;
} bcm_field_control_group_t;

typedef struct bcm_field_control_s {
   bcm_field_control_stage_t * stages; // in the SDK's stage order
   bcm_field_control_group_t * groups; // in creation order
} bcm_field_control_t;

#define FP_LOCK( unit ) bcm_field_control_lock( unit )
#define FP_UNLOCK( unit ) bcm_field_control_unlock( unit )

// bcm_field_tcam_commit flags
#define BCM_FIELD_COMMIT_HITLESS 0x1       // forwarding keeps running across the start
#define BCM_FIELD_COMMIT_LACP_DRAIN 0x2
#define BCM_FIELD_COMMIT_SKIP_DOWNLOAD 0x4 // the hardware already holds the image

// Text output of the dump functions. The SDK writes dumps to standard output
// unless a sink is set; the sink gets the text in pieces as it is produced.
typedef void ( *bcm_dump_sink_t )( void * context, const char * text );

extern "C" {

void bcm_field_qset_t_init( bcm_field_qset_t * qset );
void bcm_field_aset_t_init( bcm_field_aset_t * aset );
void bcm_field_presel_set_t_init( bcm_field_presel_set_t * set );
// Zeroes config and sets action_res_id to -1.
void bcm_field_group_config_t_init( bcm_field_group_config_t * config );
void bcm_field_group_status_t_init( bcm_field_group_status_t * status );
void bcm_field_hint_t_init( bcm_field_hint_t * hint );
void bcm_field_class_info_t_init( bcm_field_class_info_t * info );

// Sets where dumps go: sink( context, text ) per piece; a null sink restores
// standard output. Process-wide.
void bcm_dump_sink_set( bcm_dump_sink_t sink, void * context );

// --- groups ---------------------------------------------------------------

// Creates a group in the stage its qualifier set names (StageLookup,
// StageEgress, a compression selector for the class stage; ingress
// otherwise). The group takes free slices for one entry row of its width.
// On a unit whose stage is pipe-local the group's pipe comes from its port
// restriction (WITH_PORT; all ports in one pipe) or from its preselectors
// (a MixedSrcClassId port bitmap within one pipe); a group with neither, or
// whose ports span pipes, is refused with BCM_E_PARAM.
// Returns BCM_E_EXISTS (WITH_ID and the id is taken), BCM_E_RESOURCE (no free
// slices of the width, no group ids), BCM_E_PARAM (qualifier not in the
// stage, mode narrower than the qualifier set, bad id, ports span pipes),
// BCM_E_NOT_FOUND (hint or preselector of the config does not exist),
// BCM_E_UNAVAIL (the unit has no such stage).
int bcm_field_group_config_create( int unit, bcm_field_group_config_t * config );

// BCM_E_BUSY while the group holds entries or stat objects.
int bcm_field_group_destroy( int unit, bcm_field_group_t group );

// Packs the group's entries towards its first slice and gives back every
// slice that is then empty, keeping one row.
int bcm_field_group_compress( int unit, bcm_field_group_t group );

int bcm_field_group_status_get( int unit, bcm_field_group_t group,
                                bcm_field_group_status_t * status );

// The pipe mode of a stage, named by its stage qualifier
// (bcmFieldQualifyStageIngress, StageLookup, StageEgress).
int bcm_field_group_oper_mode_get( int unit, bcm_field_qualify_t stage,
                                   bcm_field_group_oper_mode_t * mode );

int bcm_field_group_qset_get( int unit, bcm_field_group_t group, bcm_field_qset_t * qset );
int bcm_field_group_priority_get( int unit, bcm_field_group_t group, int * priority );
int bcm_field_group_mode_get( int unit, bcm_field_group_t group,
                              bcm_field_group_mode_t * mode );

// Writes the group, its slices and its entries to the dump output.
int bcm_field_group_dump( int unit, bcm_field_group_t group );

// --- entries --------------------------------------------------------------

// Creates an entry in the group with an id the SDK picks (below 2^24, never
// 0). The entry takes a free row of the group, expanding the group into a
// free slice of its stage and pipe when its rows are full; BCM_E_RESOURCE
// when none is left. The new entry has priority BCM_FIELD_ENTRY_PRIO_DEFAULT,
// no qualifiers and no actions, and is not installed.
int bcm_field_entry_create( int unit, bcm_field_group_t group, bcm_field_entry_t * entry );

// As bcm_field_entry_create with the caller's id; BCM_E_EXISTS when the id
// is taken on the unit.
int bcm_field_entry_create_id( int unit, bcm_field_group_t group, bcm_field_entry_t entry );

// Removes the entry from hardware if installed, detaches its stat and
// policers and frees its row.
int bcm_field_entry_destroy( int unit, bcm_field_entry_t entry );

// Writes the entry's qualifiers and actions into hardware (again, when it is
// installed already). Before the unit's TCAM commit the write is staged.
int bcm_field_entry_install( int unit, bcm_field_entry_t entry );
int bcm_field_entry_reinstall( int unit, bcm_field_entry_t entry );

// Takes the entry out of hardware, keeping it with its qualifiers and
// actions. BCM_E_PARAM when it is not installed.
int bcm_field_entry_remove( int unit, bcm_field_entry_t entry );

// A disabled entry stays installed but never matches.
int bcm_field_entry_enable_set( int unit, bcm_field_entry_t entry, int enable );
int bcm_field_entry_enable_get( int unit, bcm_field_entry_t entry, int * enable );

// Higher priority wins; entries of equal priority keep their order of
// arrival (the earlier one wins). BCM_E_PARAM outside the group's
// prio_min .. prio_max. The move costs physical row moves inside the group.
int bcm_field_entry_prio_set( int unit, bcm_field_entry_t entry, int priority );
int bcm_field_entry_prio_get( int unit, bcm_field_entry_t entry, int * priority );

int bcm_field_entry_group_get( int unit, bcm_field_entry_t entry, bcm_field_group_t * group );

// Copies the qualifiers and actions of src into dst, replacing dst's; dst
// must exist, in a group of the same stage whose qualifier and action sets
// hold what src uses (BCM_E_PARAM otherwise). Priority, stat, policers and
// installed state of dst are kept.
int bcm_field_entry_content_copy( int unit, bcm_field_entry_t src, bcm_field_entry_t dst );

// Drops every qualifier of the entry (the entry then matches everything).
int bcm_field_qualify_clear( int unit, bcm_field_entry_t entry );

// Writes the entry, its qualifiers, actions, priority and state to the dump output.
int bcm_field_entry_dump( int unit, bcm_field_entry_t entry );

// Actions. BCM_E_PARAM for an action outside the group's action set (WITH_ASET)
// or not allowed in its stage; adding an action again replaces its parameters.
int bcm_field_action_add( int unit, bcm_field_entry_t entry, bcm_field_action_t action,
                          uint32_t param0, uint32_t param1 );
// BCM_E_NOT_FOUND when the entry does not carry the action.
int bcm_field_action_get( int unit, bcm_field_entry_t entry, bcm_field_action_t action,
                          uint32_t * param0, uint32_t * param1 );
int bcm_field_action_remove( int unit, bcm_field_entry_t entry, bcm_field_action_t action );
int bcm_field_action_remove_all( int unit, bcm_field_entry_t entry );
// An action whose parameter is a port set (RedirectPbmp, EgressMask,
// EgressPortsAdd, MirrorIngress ...): adds the ports to those the entry has.
int bcm_field_action_ports_add( int unit, bcm_field_entry_t entry, bcm_field_action_t action,
                                bcm_pbmp_t pbmp );
int bcm_field_action_ports_get( int unit, bcm_field_entry_t entry, bcm_field_action_t action,
                                bcm_pbmp_t * pbmp );
// A class-assignment action: param0 the low, param1 the high 32 bits of class_id.
int bcm_field_action_class_add( int unit, bcm_field_entry_t entry,
                                bcm_field_class_info_t * class_info );
int bcm_field_action_class_get( int unit, bcm_field_entry_t entry,
                                bcm_field_class_info_t * class_info );
// The entry's actions in the order they were added; *count is the number the
// entry has, of which the first max are written.
int bcm_field_entry_action_list_get( int unit, bcm_field_entry_t entry, int max,
                                     bcm_field_action_info_t * list, int * count );

// --- statistics -----------------------------------------------------------

// Creates a stat object in the group's stage and pipe counting the nstat
// types of stat_arr, in that order. It takes one counter index per colour
// among the types (packets and bytes of one colour share an index) from the
// stage's counter pools; BCM_E_RESOURCE when the pools are short, BCM_E_PARAM
// for a repeated or unknown type.
int bcm_field_stat_create( int unit, bcm_field_group_t group, int nstat,
                           bcm_field_stat_t * stat_arr, int * stat_id );
// BCM_E_BUSY while attached to an entry.
int bcm_field_stat_destroy( int unit, int stat_id );
// The stat must belong to the entry's group (BCM_E_PARAM); BCM_E_EXISTS when
// the entry has a stat already.
int bcm_field_entry_stat_attach( int unit, bcm_field_entry_t entry, int stat_id );
int bcm_field_entry_stat_detach( int unit, bcm_field_entry_t entry, int stat_id );
// The stat attached to the entry; BCM_E_NOT_FOUND when none.
int bcm_field_entry_stat_get( int unit, bcm_field_entry_t entry, int * stat_id );
// BCM_E_PARAM for a type the stat does not count.
int bcm_field_stat_get( int unit, int stat_id, bcm_field_stat_t type, uint64_t * value );
int bcm_field_stat_set( int unit, int stat_id, bcm_field_stat_t type, uint64_t value );
int bcm_field_stat_size( int unit, int stat_id, int * nstat );
// The stat's types in creation order; nstat at most the stat's size.
int bcm_field_stat_config_get( int unit, int stat_id, int nstat, bcm_field_stat_t * stat_arr );
// Where the stat's counters live: pipe (0 for a global stage), pool and the
// counter indices. Pool ids are opaque; pass them back as they are.
int bcm_field_stat_hw_info_get( int unit, int stat_id, int * pipe, int * pool_id, int max,
                                int * indices, int * count );
// The raw counter at (pipe, pool, index): packets and bytes counted there.
int bcm_field_stat_pool_counter_get( int unit, int pipe, int pool_id, int index,
                                     uint64_t * packets, uint64_t * bytes );
// What the counter-eviction engine moved out of the hardware counter at
// (pipe, pool, index) into the SDK's software counter since the last clear.
int bcm_field_stat_eviction_get( int unit, int pipe, int pool_id, int index,
                                 uint64_t * packets, uint64_t * bytes );
int bcm_field_stat_eviction_clear( int unit, int pipe, int pool_id, int index, int packets,
                                   int bytes );

// --- policers on entries (sdk/api/policer.h creates them) -----------------

// Level 0 only. The policer meters in the entry's pipe from then on; one
// policer may meter in one pipe only (BCM_E_PARAM). BCM_E_EXISTS when the
// entry has a policer at the level.
int bcm_field_entry_policer_attach( int unit, bcm_field_entry_t entry, int level,
                                    bcm_policer_t policer );
int bcm_field_entry_policer_detach( int unit, bcm_field_entry_t entry, int level );
int bcm_field_entry_policer_detach_all( int unit, bcm_field_entry_t entry );
int bcm_field_entry_policer_get( int unit, bcm_field_entry_t entry, int level,
                                 bcm_policer_t * policer );

// --- preselectors ---------------------------------------------------------

// A preselector is qualified like an entry (id | BCM_FIELD_QUALIFY_PRESEL)
// and lets a group see only the packets it matches. BCM_E_RESOURCE when the
// unit's preselectors are used up.
int bcm_field_presel_create( int unit, bcm_field_presel_t * presel );
int bcm_field_presel_create_id( int unit, bcm_field_presel_t presel );
// BCM_E_BUSY while a group uses it.
int bcm_field_presel_destroy( int unit, bcm_field_presel_t presel );

// --- hints ----------------------------------------------------------------

int bcm_field_hints_create( int unit, bcm_field_hintid_t * hint_id );
// BCM_E_RESOURCE when the hint id holds BCM_FIELD_HINTS_PER_ID_MAX hints.
int bcm_field_hints_add( int unit, bcm_field_hintid_t hint_id, bcm_field_hint_t * hint );
// The hint's n-th hint (0-based); BCM_E_NOT_FOUND past the last.
int bcm_field_hints_get( int unit, bcm_field_hintid_t hint_id, int n,
                         bcm_field_hint_t * hint );
// BCM_E_BUSY while a group uses it.
int bcm_field_hints_destroy( int unit, bcm_field_hintid_t hint_id );

// --- field control walk, TCAM commit --------------------------------------

// The unit's control structure; BCM_E_INIT when the field processor is not
// initialised. The pointer stays valid for the unit's life.
int bcm_field_control_get( int unit, bcm_field_control_t ** control );
// The field-processor lock: refreshes the control structure and holds the
// SDK still until bcm_field_control_unlock. The holding thread may make
// other SDK calls meanwhile (and take it again; each lock needs its unlock).
// BCM_E_PARAM from an unlock without a lock.
int bcm_field_control_lock( int unit );
int bcm_field_control_unlock( int unit );
// Slices one entry row of the mode spans (Single 1, Double 2, Triple 3).
int bcm_field_group_mode_slice_count_get( int unit, int mode, int * count );

// Ends the start-up staging of the unit: installs made before it become
// active in hardware now; later installs take effect at once.
// BCM_FIELD_COMMIT_* flags. BCM_E_BUSY when called a second time.
int bcm_field_tcam_commit( int unit, uint32_t flags );

}
