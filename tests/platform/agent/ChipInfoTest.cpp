#include <gtest/gtest.h>

#include "platform/agent/ChipInfo.h"
#include "platform/kiln/BoundedIndex.h"
#include "platform/kiln/Collection.h"
#include "platform/kiln/Entity.h"
#include "platform/kiln/ValueText.h"
#include "tests/common/Thrown.h"

#include <functional>
#include <string>
#include <vector>

namespace {

using Agent::ChipInfo;

// A four-pipe chip with every capability set, so that no field is at its default.
ChipInfo
fourPipeChip() {
   ChipInfo info( 3 );
   info.unitsIs( { 1, 0 } );
   info.chipTypeIs( 3 );
   info.numPipesIs( 4 );
   info.perPipeIngressIs( true );
   info.copiesPerPipeCondition1Is( true );
   info.copiesPerPipeCondition2Is( true );
   info.copiesPerPipeCondition3Is( true );
   info.rangeModuleIs( true );
   info.flexParserIs( true );
   info.udfModuleIs( true );
   info.flexChunkSizeIs( 2 );
   info.flexChunkCountIs( 16 );
   info.maxUdfLengthIs( 32 );
   info.groupUdfWidthLimitIs( 12 );
   info.udfWidthsJoinedIs( true );
   info.serialMuxAllocationIs( true );
   info.multicastWarIs( true );
   info.untaggedOuterVlanZeroIs( true );
   info.classIdCompressionIs( true );
   return info;
}

// Every way to make a record differ from fourPipeChip() in one field.
std::vector< std::function< void( ChipInfo & ) > >
oneFieldChanges() {
   return {
      []( ChipInfo & i ) { i.moduleIdIs( 4 ); },
      []( ChipInfo & i ) { i.unitsIs( { 0 } ); },
      []( ChipInfo & i ) { i.chipTypeIs( 4 ); },
      []( ChipInfo & i ) { i.numPipesIs( 8 ); },
      []( ChipInfo & i ) { i.perPipeIngressIs( false ); },
      []( ChipInfo & i ) { i.copiesPerPipeCondition1Is( false ); },
      []( ChipInfo & i ) { i.copiesPerPipeCondition2Is( false ); },
      []( ChipInfo & i ) { i.copiesPerPipeCondition3Is( false ); },
      []( ChipInfo & i ) { i.rangeModuleIs( false ); },
      []( ChipInfo & i ) { i.flexParserIs( false ); },
      []( ChipInfo & i ) { i.udfModuleIs( false ); },
      []( ChipInfo & i ) { i.flexChunkSizeIs( 4 ); },
      []( ChipInfo & i ) { i.flexChunkCountIs( 8 ); },
      []( ChipInfo & i ) { i.maxUdfLengthIs( 8 ); },
      []( ChipInfo & i ) { i.groupUdfWidthLimitIs( 8 ); },
      []( ChipInfo & i ) { i.udfWidthsJoinedIs( false ); },
      []( ChipInfo & i ) { i.serialMuxAllocationIs( false ); },
      []( ChipInfo & i ) { i.multicastWarIs( false ); },
      []( ChipInfo & i ) { i.untaggedOuterVlanZeroIs( false ); },
      []( ChipInfo & i ) { i.classIdCompressionIs( false ); },
   };
}

TEST( ChipInfo, EveryFieldTakesPartInEqualityTextAndHash ) {
   const ChipInfo base = fourPipeChip();
   std::hash< ChipInfo > hash;
   for ( size_t n = 0; n < oneFieldChanges().size(); ++n ) {
      SCOPED_TRACE( "change " + std::to_string( n ) );
      ChipInfo changed = base;
      oneFieldChanges()[ n ]( changed );
      EXPECT_NE( base, changed );
      EXPECT_NE( base.valueText(), changed.valueText() );
      EXPECT_NE( hash( base ), hash( changed ) );
      // Reading the text back restores exactly the changed field.
      EXPECT_EQ( changed, ChipInfo( changed.valueText() ) );
   }
   EXPECT_EQ( base, ChipInfo( base.valueText() ) );
}

TEST( ChipInfo, ValueFormIsExact ) {
   ChipInfo info( 7 );
   info.unitsIs( { 0, 1 } );
   info.chipTypeIs( 2 );
   info.udfModuleIs( true );
   info.maxUdfLengthIs( 16 );
   EXPECT_EQ( "Value('Agent::ChipInfo', ** {'moduleId': 7, 'units': [0, 1], 'chipType': 2, "
              "'numPipes': 1, 'perPipeIngress': False, 'copiesPerPipeCondition1': False, "
              "'copiesPerPipeCondition2': False, 'copiesPerPipeCondition3': False, "
              "'rangeModule': False, 'flexParser': False, 'udfModule': True, "
              "'flexChunkSize': 0, 'flexChunkCount': 0, 'maxUdfLength': 16, "
              "'groupUdfWidthLimit': 0, 'udfWidthsJoined': False, "
              "'serialMuxAllocation': False, 'multicastWar': False, "
              "'untaggedOuterVlanZero': False, 'classIdCompression': False})",
              info.valueText() );
}

TEST( ChipInfo, BadTextAndBadPipeCountsAreRefused ) {
   std::string text = fourPipeChip().valueText();
   // Units repeated or unordered in text still give the normalised set.
   std::string shuffled = text;
   shuffled.replace( shuffled.find( "[0, 1]" ), 6, "[1, 0, 1]" );
   EXPECT_EQ( fourPipeChip(), ChipInfo( shuffled ) );

   std::string pipes9 = text;
   pipes9.replace( pipes9.find( "'numPipes': 4" ), 13, "'numPipes': 9" );
   EXPECT_THROW( ChipInfo{ pipes9 }, Kiln::RangeException );
   std::string bigModule = text;
   bigModule.replace( bigModule.find( "'moduleId': 3" ), 13, "'moduleId': 65536" );
   EXPECT_THROW( ChipInfo{ bigModule }, Kiln::ValueTextError );
   EXPECT_THROW( ChipInfo{ text.substr( 0, text.size() - 2 ) }, Kiln::ValueTextError );

   ChipInfo info;
   EXPECT_EQ( 1u, info.numPipes() );
   EXPECT_EQ( "ChipInfo::numPipes < 1 or > 8 not allowed",
              TestText::thrownText< Kiln::RangeException >( [ & ] { info.numPipesIs( 0 ); } ) );
   EXPECT_EQ( 1u, info.numPipes() );
}

// The manager's `modChipInfo`, written as entity collections are.
class ChipInfoHolder : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< ChipInfoHolder > {
    public:
      virtual void onModChipInfo( U16 ) {}
   };
   ChipInfoHolder() : Kiln::Entity( "holder" ) {}
   void
   modChipInfoIs( U16 modId, const ChipInfo & info ) {
      collectionIs( modChipInfo_, modId, info, &NotifieeConst::onModChipInfo );
   }
   void
   modChipInfoDel( U16 modId ) {
      collectionDel( modChipInfo_, modId, &NotifieeConst::onModChipInfo );
   }
   Kiln::OrderedCollection< U16, ChipInfo > modChipInfo_;
};

struct ModWatcher : ChipInfoHolder::NotifieeConst {
   std::vector< U16 > seen;
   void onModChipInfo( U16 modId ) override { seen.push_back( modId ); }
};

TEST( ChipInfo, StoringAnEqualRecordNotifiesNoOne ) {
   ChipInfoHolder holder;
   ModWatcher watcher;
   watcher.notifierIs( &holder );
   holder.modChipInfoIs( 3, fourPipeChip() );
   holder.modChipInfoIs( 3, fourPipeChip() );
   // Units are a set: another listing order is the same record.
   ChipInfo reordered = fourPipeChip();
   reordered.unitsIs( { 0, 1, 1 } );
   EXPECT_EQ( std::hash< ChipInfo >()( fourPipeChip() ), std::hash< ChipInfo >()( reordered ) );
   EXPECT_EQ( ( std::vector< U32 >{ 0, 1 } ), reordered.units() );
   holder.modChipInfoIs( 3, reordered );
   EXPECT_EQ( ( std::vector< U16 >{ 3 } ), watcher.seen );

   ChipInfo changed = fourPipeChip();
   changed.maxUdfLengthIs( 8 );
   holder.modChipInfoIs( 3, changed );
   EXPECT_EQ( ( std::vector< U16 >{ 3, 3 } ), watcher.seen );
   EXPECT_EQ( 8u, holder.modChipInfo_.get( 3 ).maxUdfLength() );
}

TEST( ChipInfo, UnitLookupFindsTheCarryingModule ) {
   ChipInfoHolder holder;
   ChipInfo a( 1 ), b( 2 );
   a.unitsIs( { 0, 1 } );
   b.unitsIs( { 2 } );
   b.numPipesIs( 4 );
   holder.modChipInfoIs( 1, a );
   holder.modChipInfoIs( 2, b );

   const ChipInfo * found = Agent::chipInfoForUnit( holder.modChipInfo_, 2 );
   ASSERT_NE( nullptr, found );
   EXPECT_EQ( 2, found->moduleId() );
   EXPECT_EQ( 4u, found->numPipes() );
   EXPECT_EQ( 1, Agent::chipInfoForUnit( holder.modChipInfo_, 1 )->moduleId() );
   EXPECT_EQ( nullptr, Agent::chipInfoForUnit( holder.modChipInfo_, 3 ) );

   // A unit whose module leaves has no chip information any more.
   holder.modChipInfoDel( 2 );
   EXPECT_EQ( nullptr, Agent::chipInfoForUnit( holder.modChipInfo_, 2 ) );
}

} // namespace
