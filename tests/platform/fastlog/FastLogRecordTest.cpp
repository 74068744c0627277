// The FastLog record stream: item texts, the ring's wrap-around and dump,
// rings in caller memory and writers on many threads.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cinttypes>
#include <cstring>
#include <sstream>
#include <thread>
#include <vector>

#include "platform/fastlog/Clock.h"
#include "platform/fastlog/FastLog.h"
#include "tests/platform/fastlog/FastLogTestUtil.h"

using FastLog::RecordRing;
using FastLog::RecordText;
using ::testing::ElementsAre;

namespace {

enum TcamGroupId : U32 { IFP_GROUP_ACL = 5 };
enum class Signed : S16 { minusTwo = -2 };

std::vector< std::string >
texts( const std::vector< RecordText > & records ) {
   std::vector< std::string > texts;
   for ( const RecordText & record : records ) {
      texts.push_back( record.text );
   }
   return texts;
}

// A ring in memory of its own, installed for the test's duration.
class RingTest : public ::testing::Test {
 protected:
   explicit RingTest( U32 capacity = 8 )
         : memory_( RecordRing::bytesFor( capacity ) / 8 ), ring_( memory_.data(), memory_.size() * 8 ) {
      FastLog::recordRingIs( &ring_ );
   }
   ~RingTest() override { FastLog::recordRingIs( nullptr ); }

   std::vector< U64 > memory_;
   RecordRing ring_;
};

TEST_F( RingTest, ItemsAreWrittenAsTextHexDecimalAndSigned ) {
   const U32 unit = 0;
   const U32 groupId = 0x1000005;
   const U32 entryId = 0x64;
   FASTLOG( "fp entry create ", unit, groupId, entryId );
   FASTLOG( "fp group compress ", "(group=", IFP_GROUP_ACL, ")" );
   FASTLOG( "fp stat create group=", groupId, " type0=packets", " StatType: ", FastLog::dec( 1u ),
            " index: ", FastLog::dec( 2u ) );
   FASTLOG( "rc ", -4, " ", S64( -9223372036854775807 - 1 ), Signed::minusTwo, true );
   FASTLOG( "max ", U64( 0xFFFFFFFFFFFFFFFFull ), FastLog::dec( U64( 0xFFFFFFFFFFFFFFFFull ) ) );
   FASTLOG( " fp entry prio " );
   EXPECT_THAT( texts( FastLog::records() ),
                ElementsAre( "fp entry create 0x0 0x1000005 0x64", "fp group compress (group=0x5)",
                             "fp stat create group=0x1000005 type0=packets StatType: 1 index: 2",
                             "rc -4 -9223372036854775808 -2 1",
                             "max 0xffffffffffffffff 18446744073709551615", " fp entry prio " ) );
}

TEST_F( RingTest, WrapAroundKeepsTheNewestInOrder ) {
   EXPECT_EQ( 8u, ring_.capacity() );
   for ( U32 i = 0; i < 20; ++i ) {
      FASTLOG( "fp entry destroy ", i );
   }
   const auto records = FastLog::records();
   ASSERT_EQ( 8u, records.size() );
   for ( U32 i = 0; i < 8; ++i ) {
      EXPECT_EQ( 12u + i, records[ i ].seq );
      std::ostringstream text;
      text << "fp entry destroy 0x" << std::hex << 12 + i;
      EXPECT_EQ( text.str(), records[ i ].text );
   }
   EXPECT_EQ( 20u, ring_.written() );
}

TEST_F( RingTest, DumpWritesSequenceTimeAndText ) {
   const U64 before = FastLog::systemNanos();
   FASTLOG( "fp entry create ", 0u, 0x1000005u, 0x64u );
   FASTLOG( "fp range create ", 1u, 0x8u, FastLog::dec( 10u ), FastLog::dec( 20u ) );
   const U64 after = FastLog::systemNanos();
   const auto records = FastLog::records();
   ASSERT_EQ( 2u, records.size() );
   EXPECT_LE( before - 1000000, records[ 0 ].nanos );
   EXPECT_GE( after + 1000000, records[ 1 ].nanos );
   EXPECT_LE( records[ 0 ].nanos, records[ 1 ].nanos );

   std::ostringstream dump;
   FastLog::recordsDump( dump );
   EXPECT_EQ( "0 <ts> fp entry create 0x0 0x1000005 0x64\n"
              "1 <ts> fp range create 0x1 0x8 10 20\n",
              FastLogTest::maskTimestamps( dump.str() ) );

   // The descriptor form writes the same text.
   int pipeFds[ 2 ];
   ASSERT_EQ( 0, pipe( pipeFds ) );
   FastLog::recordsDump( pipeFds[ 1 ] );
   close( pipeFds[ 1 ] );
   std::string fromFd;
   char buffer[ 256 ];
   for ( ssize_t n; ( n = read( pipeFds[ 0 ], buffer, sizeof( buffer ) ) ) > 0; ) {
      fromFd.append( buffer, size_t( n ) );
   }
   close( pipeFds[ 0 ] );
   EXPECT_EQ( dump.str(), fromFd );
}

TEST_F( RingTest, ClearForgetsRecordsButSequenceGoesOn ) {
   FASTLOG( "before ", 1u );
   FASTLOG( "before ", 2u );
   FastLog::recordsClear();
   EXPECT_TRUE( FastLog::records().empty() );
   FASTLOG( "after ", 3u );
   const auto records = FastLog::records();
   ASSERT_EQ( 1u, records.size() );
   EXPECT_EQ( 2u, records[ 0 ].seq );
   EXPECT_EQ( "after 0x3", records[ 0 ].text );
}

TEST( RecordRingLayout, CapacityIsThePowerOfTwoThatFits ) {
   std::vector< U64 > memory( 1024 );
   RecordRing exact( memory.data(), RecordRing::bytesFor( 16 ) );
   EXPECT_EQ( 16u, exact.capacity() );
   RecordRing between( memory.data(), RecordRing::bytesFor( 31 ) );
   EXPECT_EQ( 16u, between.capacity() );
   // The header is laid out where the caller said, readable by another process.
   U32 header[ 4 ];
   std::memcpy( header, memory.data(), sizeof( header ) );
   EXPECT_EQ( RecordRing::magic, header[ 0 ] );
   EXPECT_EQ( RecordRing::slotBytes, header[ 1 ] );
   EXPECT_EQ( 16u, header[ 2 ] );
   EXPECT_EQ( RecordRing::maxItems, header[ 3 ] );
   EXPECT_EQ( 0, std::memcmp( "FLR1", memory.data(), 4 ) );
}

TEST( RecordRingLayoutDeathTest, MemoryTooSmallOrMisalignedIsRefused ) {
   std::vector< U64 > memory( 64 );
   EXPECT_DEATH( RecordRing( memory.data(), RecordRing::bytesFor( 1 ) ),
                 "Assertion 'FastLog ring memory holds fewer than 2 records' failed" );
   EXPECT_DEATH( RecordRing( reinterpret_cast< U8 * >( memory.data() ) + 4, 400 ),
                 "Assertion 'FastLog ring memory must be 8-byte aligned' failed" );
}

TEST( BuiltInRing, HoldsTheLastRecordsWritten ) {
   FastLog::recordRingIs( nullptr );
   EXPECT_EQ( 4096u, FastLog::recordRing().capacity() );
   FastLog::recordsClear();
   FASTLOG( "fp group destroy ", 0x1000005u );
   EXPECT_THAT( texts( FastLog::records() ), ElementsAre( "fp group destroy 0x1000005" ) );
}

class ConcurrentRingTest : public RingTest {
 protected:
   // Small, so that writers keep overwriting the slots being read.
   ConcurrentRingTest() : RingTest( 4 ) {}
};

// Writers on several threads while a reader keeps reading: every record
// read is whole (its three numbers agree), and the final read holds the
// newest records with consecutive sequence numbers.
TEST_F( ConcurrentRingTest, WritersAndAReaderNeverSeeATornRecord ) {
   constexpr U32 threads = 4;
   constexpr U32 perThread = 20000;
   std::atomic< bool > done{ false };
   std::atomic< U32 > torn{ 0 };
   std::thread reader( [ & ] {
      while ( !done.load() ) {
         for ( const RecordText & record : FastLog::records() ) {
            unsigned t, i, twice, thrice;
            if ( std::sscanf( record.text.c_str(), "w %x %x %x %x", &t, &i, &twice, &thrice ) != 4 ||
                 twice != i * 2 || thrice != i * 3 + t ) {
               ++torn;
            }
         }
      }
   } );
   std::vector< std::thread > writers;
   for ( U32 t = 0; t < threads; ++t ) {
      writers.emplace_back( [ t ] {
         for ( U32 i = 0; i < perThread; ++i ) {
            FASTLOG( "w ", t, i, i * 2, i * 3 + t );
         }
      } );
   }
   for ( auto & writer : writers ) {
      writer.join();
   }
   done = true;
   reader.join();
   EXPECT_EQ( 0u, torn.load() );
   const auto records = FastLog::records();
   ASSERT_EQ( 4u, records.size() );
   EXPECT_EQ( U64( threads * perThread - 4 ), records.front().seq );
   for ( size_t i = 1; i < records.size(); ++i ) {
      EXPECT_EQ( records[ i - 1 ].seq + 1, records[ i ].seq );
   }
}

} // namespace
