// Helpers for the shared-memory tests: unique prefixes, child processes and
// records whose every word depends on the key, so a torn copy shows.
#pragma once

#include <cstdlib>
#include <cstring>
#include <functional>
#include <signal.h>
#include <string>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <fcntl.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "platform/vault/VaultNames.h"

namespace VaultTest {

// A prefix no other test run uses; whatever is left under it is removed
// when the guard goes.
class TestPrefix {
 public:
   TestPrefix() {
      static int counter = 0;
      name_ = "vt" + std::to_string( getpid() ) + "_" + std::to_string( ++counter );
   }
   ~TestPrefix() {
      for ( const std::string & segment : Vault::listSegments( name_ ) ) {
         shm_unlink( segment.c_str() );
      }
      unlink( Vault::runtimePath( name_, "bell" ).c_str() );
      unlink( Vault::runtimePath( name_, "sock" ).c_str() );
   }
   const std::string & str() const { return name_; }
   operator const std::string &() const { return name_; }

 private:
   std::string name_;
};

// A child process running body, which leaves through _exit( body() ) and so
// skips every destructor of the parent's objects. A child still running when
// the Child goes (a failed assertion returned early) is killed.
class Child {
 public:
   explicit Child( const std::function< int() > & body ) {
      pid_ = fork();
      running_ = pid_ > 0;
      if ( pid_ == 0 ) {
         int code = 99;
         try {
            code = body();
         } catch ( ... ) {
         }
         _exit( code );
      }
   }
   ~Child() {
      if ( running_ ) {
         kill( pid_, SIGKILL );
         wait();
      }
   }
   Child( const Child & ) = delete;
   Child & operator=( const Child & ) = delete;

   pid_t pid() const { return pid_; }

   // The exit code, or 128 + the signal that ended it.
   int wait() {
      int status = 0;
      pid_t waited = waitpid( pid_, &status, 0 );
      running_ = false;
      if ( waited <= 0 ) {
         return -1;
      }
      return WIFEXITED( status ) ? WEXITSTATUS( status ) : 128 + WTERMSIG( status );
   }

 private:
   pid_t pid_ = -1;
   bool running_ = false;
};

// A pipe to say "go" across fork.
class Signal {
 public:
   Signal() { EXPECT_EQ( 0, pipe( fds_ ) ); }
   ~Signal() {
      close( fds_[ 0 ] );
      close( fds_[ 1 ] );
   }
   void send() { EXPECT_EQ( 1, write( fds_[ 1 ], "!", 1 ) ); }
   bool wait() {
      char c;
      return read( fds_[ 0 ], &c, 1 ) == 1;
   }
   // True once send() happened, without blocking.
   bool poll() {
      int flags = fcntl( fds_[ 0 ], F_GETFL );
      fcntl( fds_[ 0 ], F_SETFL, flags | O_NONBLOCK );
      char c;
      bool got = read( fds_[ 0 ], &c, 1 ) == 1;
      fcntl( fds_[ 0 ], F_SETFL, flags );
      return got;
   }

 private:
   int fds_[ 2 ] = { -1, -1 };
};

// A record of `words` U32: the key, a version, then words derived from both.
inline std::vector< U32 >
makeRecord( U32 key, U32 version, U32 words ) {
   std::vector< U32 > record( words );
   record[ 0 ] = key;
   if ( words > 1 ) {
      record[ 1 ] = version;
   }
   for ( U32 i = 2; i < words; ++i ) {
      record[ i ] = key * 2654435761u ^ version * 40503u ^ i;
   }
   return record;
}

// True when the bytes are exactly makeRecord( key, their version, words ).
inline bool
recordIntact( U32 key, const U8 * data, U32 length, U32 words ) {
   if ( length != words * 4 ) {
      return false;
   }
   U32 version = 0;
   std::memcpy( &version, data + 4, 4 );
   std::vector< U32 > expected = makeRecord( key, version, words );
   return std::memcmp( expected.data(), data, length ) == 0;
}

// A private directory for socket files, removed with what it holds.
class TempDir {
 public:
   TempDir() {
      char pattern[] = "/tmp/vault-test-XXXXXX";
      path_ = mkdtemp( pattern ) ? pattern : "";
   }
   ~TempDir() {
      std::string command = "rm -rf '" + path_ + "'";
      if ( !path_.empty() && system( command.c_str() ) != 0 ) {
         ADD_FAILURE() << "could not remove " << path_;
      }
   }
   std::string file( const std::string & name ) const { return path_ + "/" + name; }
   const std::string & path() const { return path_; }

 private:
   std::string path_;
};

// Mode bits of a file, e.g. 0600.
inline unsigned
modeOf( const std::string & path ) {
   struct stat st;
   return stat( path.c_str(), &st ) == 0 ? ( st.st_mode & 07777 ) : 0xFFFF;
}

// A read-write mapping of a segment, for tests that damage it on purpose.
class RawSegment {
 public:
   explicit RawSegment( const std::string & name ) {
      fd_ = shm_open( name.c_str(), O_RDWR, 0 );
      struct stat st;
      fstat( fd_, &st );
      size_ = static_cast< size_t >( st.st_size );
      data_ = static_cast< U8 * >(
         mmap( nullptr, size_, PROT_READ | PROT_WRITE, MAP_SHARED, fd_, 0 ) );
   }
   ~RawSegment() {
      munmap( data_, size_ );
      close( fd_ );
   }
   template < typename T > T * as( size_t offset = 0 ) {
      return reinterpret_cast< T * >( data_ + offset );
   }
   void truncate( off_t size ) { EXPECT_EQ( 0, ftruncate( fd_, size ) ); }

 private:
   int fd_ = -1;
   size_t size_ = 0;
   U8 * data_ = nullptr;
};

} // namespace VaultTest
