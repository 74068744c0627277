// The invariants RandomOps checks after every step: what the library
// records per unit is what the chip model holds.
#include "tests/proof/RandomOps.h"

#include <set>
#include <sstream>

namespace Proof {

using namespace Tessel;

namespace {

// Entries of an SDK group of the unit in the chip model.
std::optional< U32 >
modelEntries( const ChipModel::Unit & unit, U32 sdkGroup ) {
   const ChipModel::Group * group = unit.state().field.group( int( sdkGroup ) );
   return group ? std::optional< U32 >( group->rows.size() ) : std::nullopt;
}

bool
compressionGroup( U32 sdkGroup ) {
   return sdkGroup >= COMPRESS_GROUP_L4_SRC_PORT_ && sdkGroup <= COMPRESS_GROUP_ETHER_TYPE_;
}

// Group users and entry counts against the model's groups.
void
checkGroups( const TesselTcamGroupManager & m, const ChipModel::Unit & hw, U32 unit,
             std::ostream & out ) {
   std::set< U32 > counted; // logical groups may share an SDK group
   for ( const auto & [ key, counts ] : m.groupCountsCollection() ) {
      bool used = counts->unitRefCountHas( unit ) && counts->unitRefCount( unit ) > 0;
      std::optional< U32 > entries = modelEntries( hw, key.pipeGroupId );
      if ( used != entries.has_value() ) {
         out << "group 0x" << std::hex << key.pipeGroupId << std::dec << ( used ? " used" : " unused" )
             << " but " << ( entries ? "present" : "absent" ) << " in the chip; ";
      }
      U32 allocated = counts->unitAllocatedHas( unit ) ? counts->unitAllocated( unit ) : 0;
      // Class-id entries are the group manager's own, not entry managers'.
      bool managed = !compressionGroup( key.pipeGroupId );
      if ( allocated >= 0x80000000u || ( managed && entries && allocated != *entries ) ) {
         out << "group 0x" << std::hex << key.pipeGroupId << std::dec << " counts " << allocated
             << " entries, the chip holds " << entries.value_or( 0 ) << "; ";
      }
      if ( used ) {
         counted.insert( key.pipeGroupId );
      }
   }
   for ( const auto & [ id, group ] : hw.state().field.groups() ) {
      if ( !compressionGroup( U32( id ) ) && !counted.count( U32( id ) ) ) {
         out << "group 0x" << std::hex << id << std::dec << " in the chip is not in use; ";
      }
   }
}

} // namespace

std::string
RandomOps::checkUnit( U32 unit ) {
   std::ostringstream out;
   TesselTcamGroupManager & m = *agent_.manager();
   const ChipModel::Unit & hw = agent_.box().unit( unit );
   checkGroups( m, hw, unit, out );
   for ( size_t which = 0; which < managers_.size(); ++which ) {
      const Manager & manager = managers_[ which ];
      const std::map< U32, bool > & held = units_[ unit ].entries[ which ];
      UnitEntriesCreated & record = *manager->internalUnitEntry( unit );
      if ( record.entryCreatedCollection().size() != held.size() ) {
         out << "manager " << which << " records " << record.entryCreatedCollection().size()
             << " entries, the feature holds " << held.size() << "; ";
      }
      for ( const auto & [ copy, pipeGroup ] : record.groupIdCollection() ) {
         const ChipModel::Entry * e = hw.state().field.entry( int( copy ) );
         if ( !e || U32( e->group ) != pipeGroup ) {
            out << "copy 0x" << std::hex << copy << " of group 0x" << pipeGroup << std::dec
                << " not in the chip; ";
         }
      }
      U32 allocated = manager->entriesAllocated( unit );
      U32 expected = manager->strategy() == tcamAllocateAsChunk_
                        ? ( held.empty() ? 0 : manager->endEntry() - manager->baseEntry() )
                        : U32( held.size() );
      if ( allocated != expected ) {
         out << "manager " << which << " entriesAllocated " << allocated << ", expected "
             << expected << "; ";
      }
   }
   return out.str();
}

std::string
RandomOps::check() {
   std::string violations;
   for ( auto & [ unit, state ] : units_ ) {
      std::string v = state.known ? checkUnit( unit ) : "";
      ChipModel::ObjectCounts counts = agent_.box().counts( unit );
      U32 pipes = state.known ? agent_.manager()->getNumPipe( unit ) : 0;
      if ( counts.policers != state.policers.size() * pipes ) {
         v += "policers " + std::to_string( counts.policers ) + ", expected " +
              std::to_string( state.policers.size() * pipes ) + "; ";
      }
      U32 checkers = 0;
      for ( const auto & [ which, users ] : state.rangeUsers ) {
         checkers += users ? 1 : 0;
      }
      if ( ( counts.ranges == 0 ) != ( checkers == 0 ) ) {
         v += "range checkers in the chip " + std::to_string( counts.ranges ) + " for " +
              std::to_string( checkers ) + " descriptors in use; ";
      }
      if ( !state.known && counts.total() != 0 ) {
         v += "a gone unit holds " + counts.text() + "; ";
      }
      violations += v.empty() ? "" : "unit " + std::to_string( unit ) + ": " + v;
   }
   return violations;
}

} // namespace Proof
