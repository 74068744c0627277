// One open, mapped POSIX shared-memory object (shm_open + mmap).
//
// Owns the descriptor and the mapping; both go when the Segment is destroyed
// or reset. The name stays until someone unlinks it: writers do so on clean
// exit, through unlinkIfOwn() so that they never remove a successor's object
// that took the same name.
#pragma once

#include <string>

#include "platform/vault/VaultError.h"

namespace Vault {

// Largest object this layer creates or maps: keeps a corrupt size from
// exhausting a 32-bit address space.
constexpr U64 maxSegmentBytes = U64( 1 ) << 30;

class Segment {
 public:
   Segment() = default;
   Segment( Segment && other ) noexcept;
   Segment & operator=( Segment && other ) noexcept;
   Segment( const Segment & ) = delete;
   Segment & operator=( const Segment & ) = delete;
   ~Segment();

   // Creates the object exclusively with mode 0600 (whatever the umask) and
   // maps `size` bytes read-write, zero-filled. EEXIST -> busy.
   static Status create( const std::string & name, U64 size, Segment & out );

   // Opens an existing object and maps all of it (at most maxSegmentBytes).
   // A missing name -> notFound; an empty object maps nothing (size() 0).
   static Status open( const std::string & name, bool writable, Segment & out );

   // Writer: grows the object to `size` bytes and maps all of it (the
   // mapping may move).
   Status grow( U64 size );

   // Reader: maps again when the object's size differs from the mapping, so a
   // grown table becomes visible and a shrunken one is never read past its
   // end. Sets `changed` when it remapped.
   Status remapToFileSize( bool & changed );

   // Removes the name if it still refers to this object. False when the name
   // is gone or now names another object.
   bool unlinkIfOwn() const;

   void reset();

   bool valid() const { return fd_ >= 0; }
   U8 * data() const { return data_; }
   U64 size() const { return size_; }
   int fd() const { return fd_; }
   const std::string & name() const { return name_; }

 private:
   Status map( U64 size );
   void unmap();

   std::string name_;
   int fd_ = -1;
   bool writable_ = false;
   U8 * data_ = nullptr;
   U64 size_ = 0;
};

// Unlinks a name; a name that does not exist is not an error.
Status unlinkSegment( const std::string & name );

// Size of the object behind the descriptor, 0 when fstat fails.
U64 fileSizeOf( int fd );

} // namespace Vault
