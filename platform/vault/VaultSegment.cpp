#include "platform/vault/VaultSegment.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Vault {

Segment::Segment( Segment && other ) noexcept {
   *this = std::move( other );
}

Segment &
Segment::operator=( Segment && other ) noexcept {
   if ( this != &other ) {
      reset();
      name_ = std::move( other.name_ );
      std::swap( fd_, other.fd_ );
      std::swap( writable_, other.writable_ );
      std::swap( data_, other.data_ );
      std::swap( size_, other.size_ );
   }
   return *this;
}

Segment::~Segment() {
   reset();
}

void
Segment::reset() {
   unmap();
   if ( fd_ >= 0 ) {
      close( fd_ );
      fd_ = -1;
   }
   name_.clear();
}

void
Segment::unmap() {
   if ( data_ ) {
      munmap( data_, static_cast< size_t >( size_ ) );
   }
   data_ = nullptr;
   size_ = 0;
}

Status
Segment::map( U64 size ) {
   unmap();
   if ( size == 0 ) {
      return Status();
   }
   int protection = writable_ ? PROT_READ | PROT_WRITE : PROT_READ;
   void * at = mmap( nullptr, static_cast< size_t >( size ), protection, MAP_SHARED, fd_, 0 );
   if ( at == MAP_FAILED ) {
      return systemStatus( "mmap " + name_, errno );
   }
   data_ = static_cast< U8 * >( at );
   size_ = size;
   return Status();
}

Status
Segment::create( const std::string & name, U64 size, Segment & out ) {
   out.reset();
   if ( size == 0 || size > maxSegmentBytes ) {
      return Status( Errc::tooLarge, "segment " + name + " of " + std::to_string( size ) +
                                        " bytes is out of range" );
   }
   int fd = shm_open( name.c_str(), O_RDWR | O_CREAT | O_EXCL, 0600 );
   if ( fd < 0 ) {
      int err = errno;
      return Status( err == EEXIST ? Errc::busy : Errc::system,
                     systemText( "shm_open " + name, err ) );
   }
   out.name_ = name;
   out.fd_ = fd;
   out.writable_ = true;
   // The umask may have taken bits away; owner read and write are needed.
   if ( fchmod( fd, 0600 ) != 0 || ftruncate( fd, static_cast< off_t >( size ) ) != 0 ) {
      Status failed = systemStatus( "sizing " + name, errno );
      shm_unlink( name.c_str() );
      out.reset();
      return failed;
   }
   Status mapped = out.map( size );
   if ( !mapped.ok() ) {
      shm_unlink( name.c_str() );
      out.reset();
   }
   return mapped;
}

Status
Segment::open( const std::string & name, bool writable, Segment & out ) {
   out.reset();
   int fd = shm_open( name.c_str(), writable ? O_RDWR : O_RDONLY, 0 );
   if ( fd < 0 ) {
      int err = errno;
      return Status( err == ENOENT ? Errc::notFound : Errc::system,
                     systemText( "shm_open " + name, err ) );
   }
   out.name_ = name;
   out.fd_ = fd;
   out.writable_ = writable;
   Status mapped = out.map( std::min( fileSizeOf( fd ), maxSegmentBytes ) );
   if ( !mapped.ok() ) {
      out.reset();
   }
   return mapped;
}

Status
Segment::grow( U64 size ) {
   if ( size > maxSegmentBytes ) {
      return Status( Errc::tooLarge, "segment " + name_ + " cannot grow to " +
                                        std::to_string( size ) + " bytes" );
   }
   if ( ftruncate( fd_, static_cast< off_t >( size ) ) != 0 ) {
      return systemStatus( "growing " + name_, errno );
   }
   void * at = mremap( data_, static_cast< size_t >( size_ ), static_cast< size_t >( size ),
                       MREMAP_MAYMOVE );
   if ( at == MAP_FAILED ) {
      return systemStatus( "mremap " + name_, errno );
   }
   data_ = static_cast< U8 * >( at );
   size_ = size;
   return Status();
}

Status
Segment::remapToFileSize( bool & changed ) {
   U64 fileSize = std::min( fileSizeOf( fd_ ), maxSegmentBytes );
   changed = fileSize != size_;
   return changed ? map( fileSize ) : Status();
}

bool
Segment::unlinkIfOwn() const {
   struct stat mine;
   struct stat named;
   std::string path = "/dev/shm" + name_;
   if ( fd_ < 0 || fstat( fd_, &mine ) != 0 || stat( path.c_str(), &named ) != 0 ) {
      return false;
   }
   if ( mine.st_ino != named.st_ino || mine.st_dev != named.st_dev ) {
      return false;
   }
   return shm_unlink( name_.c_str() ) == 0;
}

Status
unlinkSegment( const std::string & name ) {
   if ( shm_unlink( name.c_str() ) != 0 && errno != ENOENT ) {
      return systemStatus( "shm_unlink " + name, errno );
   }
   return Status();
}

U64
fileSizeOf( int fd ) {
   struct stat st;
   if ( fstat( fd, &st ) != 0 || st.st_size < 0 ) {
      return 0;
   }
   return static_cast< U64 >( st.st_size );
}

} // namespace Vault
