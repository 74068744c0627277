// Segments damaged on purpose: the reader reports what is wrong and never
// reads past the end of a segment, whatever its header claims.
#include <functional>

#include "platform/vault/VaultLayout.h"
#include "platform/vault/VaultMailbox.h"
#include "platform/vault/VaultStore.h"
#include "platform/vault/VaultTable.h"
#include "tests/platform/vault/VaultTestSupport.h"

using namespace Vault;
using VaultTest::RawSegment;
using VaultTest::TestPrefix;

namespace {

struct Damage {
   const char * what;
   std::function< void( RawSegment & ) > apply;
   Errc code;
   const char * detail;  // after "corrupt table 't/a' (<name>): "; empty: text not pinned
};

// A live table of 3 records of up to 8 bytes, capacity 4.
struct DamagedTable {
   TestPrefix prefix;
   Store store{ prefix };
   TableWriter table = store.createTable( "t/a", 8, 4 );
   TableReader reader{ prefix, "t/a" };
   Snapshot snapshot;

   DamagedTable() {
      for ( U32 key = 10; key < 13; ++key ) {
         table.put( key, "abcdefgh", 8 );
      }
      reader.setMaxAttempts( 20 );
   }
   std::string prefixText() const {
      return "corrupt table 't/a' (" + table.segmentName() + "): ";
   }
};

const U64 fullSize = sizeof( TableHeader ) + 4 * tableSlotSize( 8 );

const std::vector< Damage > damages = {
   { "magic", []( RawSegment & s ) { s.as< TableHeader >()->magic = 0xdeadbeef; },
     Errc::corrupt, "bad magic 0xdeadbeef" },
   { "version", []( RawSegment & s ) { s.as< TableHeader >()->version = 9; },
     Errc::versionMismatch, "" },
   { "header size", []( RawSegment & s ) { s.as< TableHeader >()->headerSize = 128; },
     Errc::corrupt, "header size 128, expected 256" },
   { "path", []( RawSegment & s ) { s.as< TableHeader >()->path[ 2 ] = 'b'; },
     Errc::corrupt, "it holds table 't/b'" },
   { "unterminated path",
     []( RawSegment & s ) { std::memset( s.as< TableHeader >()->path, 'x', 200 ); },
     Errc::corrupt, "" },
   { "record size", []( RawSegment & s ) { s.as< TableHeader >()->recordSize = 0; },
     Errc::corrupt, "record size 0 out of range" },
   { "slot size", []( RawSegment & s ) { s.as< TableHeader >()->slotSize = 8; },
     Errc::corrupt, "slot size 8 does not fit record size 8" },
   { "count", []( RawSegment & s ) { s.as< TableHeader >()->count = 0xffffffff; },
     Errc::corrupt, "count 4294967295 exceeds capacity 4" },
   { "capacity", []( RawSegment & s ) { s.as< TableHeader >()->capacity = 0xffffffff; },
     Errc::corrupt, "capacity 4294967295 needs 68719476976 bytes, the segment has 320" },
   { "record length",
     []( RawSegment & s ) {
        s.as< SlotHeader >( sizeof( TableHeader ) + tableSlotSize( 8 ) )->length = 9;
     },
     Errc::corrupt, "record 1 (key 11) claims 9 bytes, at most 8 fit" },
   { "truncated header", []( RawSegment & s ) { s.truncate( 100 ); }, Errc::corrupt,
     "truncated to 100 bytes, its header needs 256" },
   { "truncated slots", []( RawSegment & s ) { s.truncate( sizeof( TableHeader ) + 20 ); },
     Errc::corrupt, "capacity 4 needs 320 bytes, the segment has 276" },
   { "empty", []( RawSegment & s ) { s.truncate( 0 ); }, Errc::corrupt,
     "the segment is empty" },
   { "zero magic", []( RawSegment & s ) { s.as< TableHeader >()->magic = 0; }, Errc::corrupt,
     "its header was never written" },
   { "sequence stuck odd", []( RawSegment & s ) { s.as< TableHeader >()->sequence |= 1; },
     Errc::inconsistent, "" },
};

void
expectDamage( DamagedTable & t, const Damage & damage, const std::string & when ) {
   Status status = t.reader.snapshot( t.snapshot );
   EXPECT_EQ( damage.code, status.code() ) << damage.what << when << ": " << status.text();
   if ( *damage.detail ) {
      EXPECT_EQ( t.prefixText() + damage.detail, status.text() ) << damage.what << when;
   }
   EXPECT_TRUE( t.snapshot.empty() ) << damage.what << when;
}

} // namespace

TEST( VaultCorruption, FreshReaderReportsEachDamage ) {
   ASSERT_EQ( 320u, fullSize );
   for ( const Damage & damage : damages ) {
      DamagedTable t;
      {
         RawSegment raw( t.table.segmentName() );
         damage.apply( raw );
      }
      expectDamage( t, damage, " (fresh reader)" );
   }
}

// The reader has the healthy segment mapped when it is damaged: it must
// notice a shrunken file before touching the bytes that went away.
TEST( VaultCorruption, AttachedReaderSurvivesEachDamage ) {
   for ( const Damage & damage : damages ) {
      DamagedTable t;
      ASSERT_TRUE( t.reader.snapshot( t.snapshot ).ok() );
      ASSERT_EQ( 3u, t.snapshot.size() );
      {
         RawSegment raw( t.table.segmentName() );
         damage.apply( raw );
      }
      expectDamage( t, damage, " (attached reader)" );
   }
}

// A stuck odd sequence from a writer that died in the middle of a change is
// reported as the missing agent, not as a busy one.
TEST( VaultCorruption, WriterDeadInTheMiddleOfAChange ) {
   TestPrefix prefix;
   VaultTest::Child writer( [ & ] {
      auto * store = new Store( prefix );
      auto * table = new TableWriter( store->createTable( "t", 4, 2 ) );
      table->put( 1, "abcd", 4 );
      new TableWriter::Batch( *table );  // never ends
      return 0;
   } );
   ASSERT_EQ( 0, writer.wait() );
   TableReader reader( prefix, "t" );
   reader.setMaxAttempts( 10 );
   Snapshot snapshot;
   EXPECT_EQ( Errc::agentNotRunning, reader.snapshot( snapshot ).code() );
}

TEST( VaultCorruption, MailboxClientRefusesADamagedMailbox ) {
   TestPrefix prefix;
   Store store( prefix );
   MailboxServer server( store, 2 );
   MailboxClient client( prefix );
   Answer answer;
   {
      RawSegment raw( server.segmentName() );
      raw.as< MailboxHeader >()->slotCount = 1000;
   }
   Status status = client.call( Request(), answer, std::chrono::milliseconds( 10 ) );
   EXPECT_EQ( Errc::corrupt, status.code() );
   EXPECT_EQ( "corrupt mailbox " + server.segmentName() + ": 1000 slots do not fit 896 bytes",
              status.text() );
   {
      RawSegment raw( server.segmentName() );
      raw.as< MailboxHeader >()->slotCount = 2;
      raw.truncate( 64 );
   }
   status = client.call( Request(), answer, std::chrono::milliseconds( 10 ) );
   EXPECT_EQ( "corrupt mailbox " + server.segmentName() + ": truncated to 64 bytes",
              status.text() );
}

// A client may write anything into its slot: the agent answers a parameter
// length out of range without calling its handler.
TEST( VaultCorruption, AgentRejectsAnOutOfRangeParameterLength ) {
   TestPrefix prefix;
   Store store( prefix );
   MailboxServer server( store, 2 );
   RawSegment raw( server.segmentName() );
   MailboxSlot * slot = raw.as< MailboxSlot >( sizeof( MailboxHeader ) );
   const U32 me = static_cast< U32 >( getpid() ) << 8;
   slot->parameterLength = 5000;
   slot->requestToken = 77;
   slot->control = me | slotRequested;
   bool called = false;
   EXPECT_EQ( 1u, server.serve( [ & ]( const IncomingRequest & ) {
      called = true;
      return 0;
   } ) );
   EXPECT_FALSE( called );
   EXPECT_EQ( me | slotAnswered, slot->control );
   EXPECT_EQ( answerBadRequest, slot->result );
   EXPECT_EQ( 77u, slot->responseToken );
}
