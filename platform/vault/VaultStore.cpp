#include "platform/vault/VaultStore.h"

#include <cerrno>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/vault/VaultAtomic.h"
#include "platform/vault/VaultLayout.h"
#include "platform/vault/VaultNames.h"

namespace Vault {

namespace {

// Both headers keep their state word at the same place.
static_assert( offsetof( TableHeader, state ) == 8 );
static_assert( offsetof( MailboxHeader, state ) == 8 );

// Tells readers still holding the segment that its writer left.
void
retireSegment( const std::string & name ) {
   Segment segment;
   if ( !Segment::open( name, true, segment ).ok() || segment.size() < 12 ) {
      return;
   }
   U32 magic = loadAcquire( reinterpret_cast< const U32 * >( segment.data() ) );
   if ( magic == tableMagic || magic == mailboxMagic ) {
      storeRelease( reinterpret_cast< U32 * >( segment.data() + 8 ), segmentRetired );
   }
}

bool
sameObject( int fd, const std::string & name ) {
   struct stat opened;
   struct stat named;
   std::string path = "/dev/shm" + name;
   return fstat( fd, &opened ) == 0 && stat( path.c_str(), &named ) == 0 &&
          opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
}

bool
readOwner( int fd, OwnerHeader & out ) {
   return pread( fd, &out, sizeof( out ), 0 ) == static_cast< ssize_t >( sizeof( out ) ) &&
          out.magic == ownerMagic && out.version == layoutVersion;
}

} // namespace

Store::Store( std::string prefix ) : prefix_( std::move( prefix ) ) {
   Status valid = checkPrefix( prefix_ );
   if ( !valid.ok() ) {
      throw Error( valid );
   }
   identity_ = selfIdentity();
   claimOwnerSegment();
   // The lock was free, so anything else under the prefix is a dead agent's.
   staleRemoved_ = removeAll();
}

Store::~Store() {
   removeAll();
   std::string name = ownerSegmentName( prefix_ );
   if ( sameObject( ownerFd_, name ) ) {
      shm_unlink( name.c_str() );
   }
   close( ownerFd_ );  // drops the lock
}

void
Store::claimOwnerSegment() {
   const std::string name = ownerSegmentName( prefix_ );
   // The name may be replaced between open and lock by an agent that is just
   // leaving; a lock on the replaced object would be worthless, so retry.
   for ( int attempt = 0; attempt < 8; ++attempt ) {
      int fd = shm_open( name.c_str(), O_RDWR | O_CREAT, 0600 );
      if ( fd < 0 ) {
         throw Error( Errc::system, systemText( "shm_open " + name, errno ) );
      }
      if ( flock( fd, LOCK_EX | LOCK_NB ) != 0 ) {
         OwnerHeader holder = {};
         bool known = readOwner( fd, holder );
         close( fd );
         throw Error( Errc::busy, "prefix '" + prefix_ + "' is held by the running agent" +
                                     ( known ? " with pid " + std::to_string( holder.ownerPid )
                                             : std::string() ) );
      }
      if ( !sameObject( fd, name ) ) {
         close( fd );
         continue;
      }
      OwnerHeader header = {};
      header.magic = ownerMagic;
      header.version = layoutVersion;
      header.headerSize = sizeof( OwnerHeader );
      header.ownerPid = identity_.pid;
      header.ownerStart = identity_.startTime;
      if ( fchmod( fd, 0600 ) != 0 || ftruncate( fd, sizeof( header ) ) != 0 ||
           pwrite( fd, &header, sizeof( header ), 0 ) != sizeof( header ) ) {
         int err = errno;
         close( fd );
         throw Error( Errc::system, systemText( "writing " + name, err ) );
      }
      ownerFd_ = fd;
      return;
   }
   throw Error( Errc::busy, "prefix '" + prefix_ + "': its owner segment keeps changing" );
}

U32
Store::removeAll() {
   const std::string owner = ownerSegmentName( prefix_ );
   U32 removed = 0;
   for ( const std::string & name : listSegments( prefix_ ) ) {
      if ( name != owner ) {
         retireSegment( name );
         removed += unlinkSegment( name ).ok() ? 1 : 0;
      }
   }
   return removed;
}

TableWriter
Store::createTable( const std::string & path, U32 recordSize, U32 capacity ) {
   Status valid = checkTablePath( prefix_, path );
   if ( !valid.ok() ) {
      throw Error( valid );
   }
   if ( recordSize == 0 || recordSize > maxRecordSize || capacity == 0 ||
        capacity > maxTableCapacity ) {
      throw Error( Errc::invalidArgument,
                   "table '" + path + "': record size " + std::to_string( recordSize ) +
                      " or capacity " + std::to_string( capacity ) + " out of range" );
   }
   const std::string name = tableSegmentName( prefix_, path );
   Segment segment;
   Status created =
      Segment::create( name, sizeof( TableHeader ) + capacity * tableSlotSize( recordSize ),
                       segment );
   if ( created.code() == Errc::busy ) {
      throw Error( Errc::busy, "table '" + path + "' exists already (" + name + ")" );
   }
   if ( !created.ok() ) {
      throw Error( created );
   }
   return TableWriter( std::move( segment ), path, recordSize, capacity, identity_ );
}

Status
agentStatus( const std::string & prefix ) {
   Status valid = checkPrefix( prefix );
   if ( !valid.ok() ) {
      return valid;
   }
   const std::string name = ownerSegmentName( prefix );
   int fd = shm_open( name.c_str(), O_RDONLY, 0 );
   OwnerHeader owner = {};
   bool known = fd >= 0 && readOwner( fd, owner );
   if ( fd >= 0 ) {
      close( fd );
   }
   if ( !known ) {
      return Status( Errc::agentNotRunning,
                     "agent not running: no agent holds prefix '" + prefix + "'" );
   }
   if ( !isAlive( ProcessIdentity{ owner.ownerPid, owner.ownerStart } ) ) {
      return Status( Errc::agentNotRunning, "agent not running: prefix '" + prefix +
                                               "' was held by pid " +
                                               std::to_string( owner.ownerPid ) +
                                               ", which has exited" );
   }
   return Status();
}

} // namespace Vault
