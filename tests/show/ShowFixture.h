// The reports' tests: a box with a group manager (tests/manager's
// ManagerBox, the activity check aborting on any SDK call made with the
// lock held) and the text a report writes into a descriptor.
#pragma once

#include <functional>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

#include "sdk/api/error.h"
#include "sdk/api/field_qualify.h"
#include "tests/manager/ManagerFixture.h"

namespace ShowTest {

using namespace Tessel;
using ManagerTest::ManagerBox;
using ManagerTest::Reservations;

// What `write( fd )` writes into a fresh descriptor.
inline std::string
written( const std::function< void( U32 ) > & write ) {
   int fd = memfd_create( "report", MFD_CLOEXEC );
   write( U32( fd ) );
   std::string text;
   char buffer[ 4096 ];
   off_t offset = 0;
   for ( ssize_t got; ( got = pread( fd, buffer, sizeof buffer, offset ) ) > 0; offset += got ) {
      text.append( buffer, size_t( got ) );
   }
   close( fd );
   return text;
}

// The SDK's free count of a group, as the model reports it.
inline int
freeEntries( ManagerBox & m, U32 unit, U32 sdkGroupId ) {
   bcm_field_group_status_t status;
   m.sdk( [ & ] { return bcm_field_group_status_get( int( unit ), int( sdkGroupId ), &status ); } );
   return status.entries_free;
}

// Counts `n` entries in a pipe group the way entry allocation does.
inline void
countEntries( ManagerBox & m, U32 unit, U32 groupId, U32 sdkGroupId, S32 n ) {
   m.manager->groupCounts( GroupIdToPipeGroupId{ groupId, sdkGroupId } )->unitAllocatedInc( unit, n );
}

} // namespace ShowTest
