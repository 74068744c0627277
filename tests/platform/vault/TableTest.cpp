// Tables within one process: bookkeeping against a model, growth, batches,
// and the texts of the reader's failures.
#include <algorithm>
#include <map>
#include <random>

#include "platform/vault/VaultLayout.h"
#include "platform/vault/VaultStore.h"
#include "platform/vault/VaultTable.h"
#include "tests/platform/vault/VaultTestSupport.h"
#include "tests/common/Thrown.h"

using namespace Vault;
using VaultTest::RawSegment;
using VaultTest::TestPrefix;

namespace {

std::map< U32, std::string >
contents( const Snapshot & snapshot ) {
   std::map< U32, std::string > out;
   for ( U32 i = 0; i < snapshot.size(); ++i ) {
      Record record = snapshot.at( i );
      EXPECT_TRUE( out.emplace( record.key, std::string( reinterpret_cast< const char * >(
                                                            record.data ),
                                                         record.length ) )
                      .second )
         << "key " << record.key << " twice";
   }
   return out;
}

void
putText( TableWriter & table, U32 key, const std::string & text ) {
   table.put( key, text.data(), static_cast< U32 >( text.size() ) );
}

} // namespace

// A fixed-seed mix of puts, overwrites, removals and clears; after every step
// the reader's copy must equal a plain map, and the writer's own lookups too.
TEST( VaultTable, RandomWorkloadMatchesModel ) {
   TestPrefix prefix;
   Store store( prefix );
   TableWriter table = store.createTable( "cliVault/groups/1/0/3", 24, 6 );
   TableReader reader( prefix, "cliVault/groups/1/0/3" );
   std::map< U32, std::string > model;
   std::mt19937 random( 20240611 );
   Snapshot snapshot;
   size_t largest = 0;
   for ( int step = 0; step < 3000; ++step ) {
      U32 key = random() % 64;
      U32 action = random() % 100;
      if ( action < 60 ) {
         std::string text( 1 + random() % 24, static_cast< char >( 'a' + step % 26 ) );
         putText( table, key, text );
         model[ key ] = text;
      } else if ( action < 98 ) {
         EXPECT_EQ( model.erase( key ) == 1, table.remove( key ) );
      } else {
         table.clear();
         model.clear();
      }
      ASSERT_TRUE( reader.snapshot( snapshot ).ok() );
      ASSERT_EQ( model, contents( snapshot ) ) << "step " << step;
      ASSERT_EQ( model.size(), table.size() );
      largest = std::max( largest, model.size() );
      for ( const auto & [ k, text ] : model ) {
         std::optional< Record > own = table.find( k );
         ASSERT_TRUE( own && own->length == text.size() ) << "step " << step << " key " << k;
      }
   }
   EXPECT_GE( table.capacity(), largest );
   EXPECT_GT( largest, 6u );  // the workload made it grow
}

TEST( VaultTable, ShorterOverwriteLeavesNoOldBytes ) {
   TestPrefix prefix;
   Store store( prefix );
   TableWriter table = store.createTable( "t", 16, 4 );
   putText( table, 7, "0123456789abcdef" );
   putText( table, 7, "xy" );
   TableReader reader( prefix, "t" );
   Snapshot snapshot;
   ASSERT_TRUE( reader.snapshot( snapshot ).ok() );
   Record record = snapshot.at( 0 );
   EXPECT_EQ( 2u, record.length );
   for ( U32 i = 2; i < 16; ++i ) {
      EXPECT_EQ( 0, record.data[ i ] ) << i;
   }
}

TEST( VaultTable, OverlongRecordIsRefusedAndChangesNothing ) {
   TestPrefix prefix;
   Store store( prefix );
   TableWriter table = store.createTable( "cliVault/stages", 8, 2 );
   putText( table, 1, "12345678" );
   std::optional< Error > error =
      TestText::thrown< Error >( [ & ] { putText( table, 2, "123456789" ); } );
   ASSERT_TRUE( error );
   EXPECT_EQ( Errc::invalidArgument, error->code() );
   EXPECT_STREQ( "record of 9 bytes for table 'cliVault/stages' exceeds its record size 8",
                 error->what() );
   EXPECT_EQ( 1u, table.size() );
   EXPECT_FALSE( table.find( 2 ) );
}

// Starting sizes are only starting sizes: 400 rows into a table of 6.
TEST( VaultTable, FullTableGrowsAndKeepsEveryRow ) {
   TestPrefix prefix;
   Store store( prefix );
   TableWriter table = store.createTable( "cliVault/entries-name/1/0/0", 72, 6 );
   TableReader reader( prefix, "cliVault/entries-name/1/0/0" );
   Snapshot snapshot;
   ASSERT_TRUE( reader.snapshot( snapshot ).ok() );
   EXPECT_EQ( 6u, snapshot.capacity() );
   EXPECT_EQ( 0u, snapshot.generation() );
   for ( U32 key = 0; key < 400; ++key ) {
      std::vector< U32 > record = VaultTest::makeRecord( key, 1, 18 );
      table.put( key, record.data(), 72 );
   }
   ASSERT_TRUE( reader.snapshot( snapshot ).ok() );
   EXPECT_EQ( 400u, snapshot.size() );
   EXPECT_EQ( 768u, snapshot.capacity() );  // 6 doubled seven times
   EXPECT_EQ( 7u, snapshot.generation() );
   snapshot.sortByKey();
   for ( U32 key = 0; key < 400; ++key ) {
      Record record = snapshot.at( key );
      ASSERT_EQ( key, record.key );
      ASSERT_TRUE( VaultTest::recordIntact( key, record.data, record.length, 18 ) ) << key;
   }
}

TEST( VaultTable, GrowthStopsAtTheLimitWithoutLosingTheTable ) {
   TestPrefix prefix;
   Store store( prefix );
   TableWriter table = store.createTable( "big", 1, maxTableCapacity );
   for ( U32 key = 0; key < maxTableCapacity; ++key ) {
      table.put( key, "x", 1 );
   }
   std::optional< Error > error =
      TestText::thrown< Error >( [ & ] { table.put( maxTableCapacity, "x", 1 ); } );
   ASSERT_TRUE( error );
   EXPECT_EQ( Errc::tooLarge, error->code() );
   EXPECT_STREQ( "table 'big' cannot grow beyond 1048576 records", error->what() );
   TableReader reader( prefix, "big" );
   Snapshot snapshot;
   ASSERT_TRUE( reader.snapshot( snapshot ).ok() );  // sequence left even
   EXPECT_EQ( maxTableCapacity, snapshot.size() );
   EXPECT_FALSE( table.find( maxTableCapacity ) );
}

// A batch keeps the sequence odd: a reader with few attempts says so instead
// of returning half of it, and sees all of it once the batch ends.
TEST( VaultTable, ReaderNeverReturnsHalfABatch ) {
   TestPrefix prefix;
   Store store( prefix );
   TableWriter table = store.createTable( "t", 4, 8 );
   TableReader reader( prefix, "t" );
   reader.setMaxAttempts( 5 );
   Snapshot snapshot;
   {
      TableWriter::Batch batch( table );
      table.clear();
      for ( U32 key = 0; key < 20; ++key ) {
         table.put( key, &key, 4 );
      }
      Status status = reader.snapshot( snapshot );
      EXPECT_EQ( Errc::inconsistent, status.code() );
      EXPECT_EQ( "no consistent view of table 't' after 5 attempts: the writer kept changing it",
                 status.text() );
      EXPECT_TRUE( snapshot.empty() );
   }
   ASSERT_TRUE( reader.snapshot( snapshot ).ok() );
   EXPECT_EQ( 20u, snapshot.size() );
}

// Rewrites of a fixed-seed series of row lists (rows kept, changed, dropped,
// added, reordered, a key twice): the reader sees exactly the list in its
// order, the writer's lookups agree, and the sequence moves only when the
// list differs from what the table held.
TEST( VaultTable, RewriteWritesOnlyWhatDiffers ) {
   TestPrefix prefix;
   Store store( prefix );
   TableWriter table = store.createTable( "t", 8, 4 );
   TableReader reader( prefix, "t" );
   RawSegment raw( table.segmentName() );
   std::vector< std::pair< U32, std::string > > rows;  // as the table should hold them
   std::mt19937 random( 31 );
   Snapshot snapshot;
   for ( int step = 0; step < 400; ++step ) {
      std::vector< std::pair< U32, std::string > > next;
      for ( const auto & row : rows ) {
         U32 action = random() % 10;
         if ( action == 0 ) {
            continue;
         }
         next.push_back( row );
         if ( action == 1 ) {
            next.back().second = std::string( 1 + random() % 8, char( 'a' + step % 26 ) );
         }
      }
      auto has = [ & ]( U32 key ) {
         return std::any_of( next.begin(), next.end(),
                             [ & ]( const auto & row ) { return row.first == key; } );
      };
      for ( U32 add = random() % 4; add > 0; --add ) {
         U32 key = random() % 40;
         if ( !has( key ) ) {
            next.emplace_back( key, std::string( 1 + random() % 8, 'n' ) );
         }
      }
      if ( step % 7 == 0 ) {
         std::shuffle( next.begin(), next.end(), random );
      }
      std::vector< std::pair< U32, std::string > > expected = next;
      if ( step % 5 == 0 && !next.empty() ) {
         next.push_back( next[ random() % next.size() ] );  // put twice: no second row
      }
      U32 sequenceBefore = raw.as< TableHeader >()->sequence;
      TableWriter::Rewrite rewrite( table );
      for ( const auto & [ key, text ] : next ) {
         rewrite.put( key, text.data(), U32( text.size() ) );
      }
      rewrite.commit();
      ASSERT_TRUE( reader.snapshot( snapshot ).ok() );
      ASSERT_EQ( expected.size(), snapshot.size() ) << "step " << step;
      for ( U32 i = 0; i < snapshot.size(); ++i ) {
         Record record = snapshot.at( i );
         ASSERT_EQ( expected[ i ].first, record.key ) << "step " << step << " row " << i;
         ASSERT_EQ( expected[ i ].second,
                    std::string( reinterpret_cast< const char * >( record.data ), record.length ) );
         std::optional< Record > own = table.find( record.key );
         ASSERT_TRUE( own && own->length == record.length ) << "step " << step;
      }
      ASSERT_EQ( expected.size(), table.size() );
      EXPECT_EQ( 0u, raw.as< TableHeader >()->sequence % 2 );
      EXPECT_EQ( expected != rows, rewrite.changed() ) << "step " << step;
      EXPECT_EQ( expected != rows, raw.as< TableHeader >()->sequence != sequenceBefore );
      rows = expected;
   }
}

// A rewrite given up half-way keeps the rows it did not reach, ends its
// change, and keeps the index whole.
TEST( VaultTable, AbandonedRewriteDropsNothing ) {
   TestPrefix prefix;
   Store store( prefix );
   TableWriter table = store.createTable( "t", 4, 4 );
   for ( U32 key = 1; key <= 3; ++key ) {
      table.put( key, "old", 3 );
   }
   {
      TableWriter::Rewrite rewrite( table );
      rewrite.put( 3, "new", 3 );
      rewrite.put( 9, "add", 3 );
      rewrite.put( 3, "2nd", 3 );  // the later bytes, the first place
      EXPECT_THROW( rewrite.put( 4, "too long", 8 ), Error );
   }
   TableReader reader( prefix, "t" );
   reader.setMaxAttempts( 1 );
   Snapshot snapshot;
   ASSERT_TRUE( reader.snapshot( snapshot ).ok() );
   std::map< U32, std::string > expected = { { 1, "old" }, { 2, "old" }, { 3, "2nd" },
                                             { 9, "add" } };
   EXPECT_EQ( expected, contents( snapshot ) );
   for ( const auto & [ key, text ] : expected ) {
      ASSERT_TRUE( table.find( key ) ) << key;
   }
   EXPECT_TRUE( table.remove( 3 ) );
   EXPECT_FALSE( table.find( 3 ) );
}

TEST( VaultTable, CreateRefusesBadArgumentsAndDuplicates ) {
   TestPrefix prefix;
   Store store( prefix );
   TableWriter table = store.createTable( "t", 4, 1 );
   auto codeOf = [ & ]( const std::string & path, U32 recordSize, U32 capacity ) {
      std::optional< Error > error = TestText::thrown< Error >(
         [ & ] { store.createTable( path, recordSize, capacity ); } );
      return error ? error->code() : Errc::ok;
   };
   EXPECT_EQ( Errc::busy, codeOf( "t", 4, 1 ) );
   EXPECT_EQ( Errc::invalidArgument, codeOf( "", 4, 1 ) );
   EXPECT_EQ( Errc::invalidArgument, codeOf( "u", 0, 1 ) );
   EXPECT_EQ( Errc::invalidArgument, codeOf( "u", maxRecordSize + 1, 1 ) );
   EXPECT_EQ( Errc::invalidArgument, codeOf( "u", 4, 0 ) );
   EXPECT_EQ( Errc::invalidArgument, codeOf( "u", 4, maxTableCapacity + 1 ) );
   EXPECT_EQ( Errc::invalidArgument, codeOf( std::string( 200, 'p' ), 4, 1 ) );
   EXPECT_EQ( "table 't' exists already (/tessel-" + prefix.str() + "-t.t)",
              TestText::thrownText< Error >( [ & ] { store.createTable( "t", 4, 1 ); } ) );
}

// What a reader says about tables that are not there.
TEST( VaultTable, MissingTablesAndAgents ) {
   TestPrefix prefix;
   Snapshot snapshot;
   TableReader early( prefix, "cliVault/stages/0" );
   Status status = early.snapshot( snapshot );
   EXPECT_EQ( Errc::agentNotRunning, status.code() );
   EXPECT_EQ( "agent not running: no agent holds prefix '" + prefix.str() + "'", status.text() );

   Store store( prefix );
   status = early.snapshot( snapshot );
   EXPECT_EQ( Errc::notFound, status.code() );
   EXPECT_EQ( "table 'cliVault/stages/0' not found (no segment /tessel-" + prefix.str() +
                 "-t.cliVault.stages.0)",
              status.text() );

   {
      TableWriter table = store.createTable( "cliVault/stages/0", 4, 1 );
      table.put( 3, "abc", 3 );
      ASSERT_TRUE( early.snapshot( snapshot ).ok() );
      EXPECT_EQ( 1u, snapshot.size() );
   }
   // The writer went; the reader still maps the retired segment.
   EXPECT_EQ( Errc::notFound, early.snapshot( snapshot ).code() );
   EXPECT_TRUE( snapshot.empty() );

   TableReader bad( "no-dash", "t" );
   status = bad.snapshot( snapshot );
   EXPECT_EQ( Errc::invalidArgument, status.code() );
   EXPECT_EQ( "invalid prefix 'no-dash': only letters, digits and '_' allowed", status.text() );
}

// A reader attached to one table generation follows the writer's
// replacement under the same name.
TEST( VaultTable, ReaderFollowsARecreatedTable ) {
   TestPrefix prefix;
   Store store( prefix );
   TableReader reader( prefix, "t" );
   Snapshot snapshot;
   auto table = std::make_unique< TableWriter >( store.createTable( "t", 4, 1 ) );
   table->put( 1, "one", 3 );
   ASSERT_TRUE( reader.snapshot( snapshot ).ok() );
   table.reset();
   TableWriter again = store.createTable( "t", 8, 1 );
   again.put( 2, "second", 6 );
   ASSERT_TRUE( reader.snapshot( snapshot ).ok() );
   ASSERT_EQ( 1u, snapshot.size() );
   EXPECT_EQ( 2u, snapshot.at( 0 ).key );
   EXPECT_EQ( 8u, snapshot.recordSize() );
}

// The writer's index against a plain map, with keys that collide in the
// low bits and removals in the middle of probe runs.
TEST( VaultKeyIndex, RandomWorkloadMatchesModel ) {
   KeyIndex index;
   std::map< U32, U32 > model;
   std::mt19937 random( 7 );
   for ( int step = 0; step < 200000; ++step ) {
      U32 key = ( random() % 300 ) << ( step % 3 == 0 ? 20 : 0 );
      if ( random() % 3 ) {
         U32 slot = random() % 1000;
         index.set( key, slot );
         model[ key ] = slot;
      } else {
         ASSERT_EQ( model.erase( key ) == 1, index.erase( key ) ) << "step " << step;
      }
      if ( step % 50000 == 49999 ) {
         index.clear();
         model.clear();
      }
      ASSERT_EQ( model.size(), index.size() );
      if ( step % 97 == 0 ) {
         for ( U32 probe = 0; probe < 300; ++probe ) {
            for ( U32 high : { 0u, 20u } ) {
               auto found = model.find( probe << high );
               ASSERT_EQ( found == model.end() ? KeyIndex::none : found->second,
                          index.find( probe << high ) )
                  << "step " << step << " key " << ( probe << high );
            }
         }
      }
   }
}
