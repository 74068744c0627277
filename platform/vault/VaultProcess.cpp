#include "platform/vault/VaultProcess.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

namespace Vault {

ProcessIdentity
selfIdentity() {
   ProcessIdentity self;
   self.pid = static_cast< U32 >( getpid() );
   self.startTime = processStartTime( self.pid );
   return self;
}

namespace {

struct StatFields {
   char state = '?';
   U64 startTime = 0;
};

// Reads the state (field 3) and start time (field 22) of /proc/<pid>/stat.
bool
readStat( U32 pid, StatFields & out ) {
   char path[ 32 ];
   std::snprintf( path, sizeof( path ), "/proc/%u/stat", pid );
   int fd = open( path, O_RDONLY | O_CLOEXEC );
   if ( fd < 0 ) {
      return false;
   }
   char text[ 1024 ];
   ssize_t got = read( fd, text, sizeof( text ) - 1 );
   close( fd );
   if ( got <= 0 ) {
      return false;
   }
   text[ got ] = '\0';
   // The command name in parentheses may hold blanks and ')'; fields are
   // counted from the last ')', which ends field 2.
   const char * field = std::strrchr( text, ')' );
   if ( !field || field[ 1 ] != ' ' ) {
      return false;
   }
   out.state = field[ 2 ];
   for ( int number = 2; field && number < 22; ++number ) {
      field = std::strchr( field + 1, ' ' );
   }
   out.startTime = field ? std::strtoull( field + 1, nullptr, 10 ) : 0;
   return true;
}

} // namespace

U64
processStartTime( U32 pid ) {
   StatFields fields;
   return readStat( pid, fields ) ? fields.startTime : 0;
}

bool
pidExists( U32 pid ) {
   if ( pid == 0 || pid > 0x7fffffffu ) {
      return false;
   }
   // EPERM: it exists but belongs to someone else.
   return kill( static_cast< pid_t >( pid ), 0 ) == 0 || errno == EPERM;
}

bool
isAlive( const ProcessIdentity & identity ) {
   if ( !pidExists( identity.pid ) ) {
      return false;
   }
   StatFields fields;
   if ( !readStat( identity.pid, fields ) ) {
      return pidExists( identity.pid );  // no /proc to ask: trust the kernel
   }
   // A zombie has exited; only its parent has not collected it yet.
   if ( fields.state == 'Z' || fields.state == 'X' ) {
      return false;
   }
   return identity.startTime == 0 || fields.startTime == identity.startTime;
}

} // namespace Vault
