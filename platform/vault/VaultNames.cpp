#include "platform/vault/VaultNames.h"

#include <algorithm>
#include <cstdlib>
#include <dirent.h>
#include <sys/stat.h>

namespace Vault {

namespace {

bool
isWordChar( char c ) {
   return ( c >= 'a' && c <= 'z' ) || ( c >= 'A' && c <= 'Z' ) || ( c >= '0' && c <= '9' ) ||
          c == '_';
}

std::string
encodePath( const std::string & path ) {
   static const char hex[] = "0123456789ABCDEF";
   std::string out;
   out.reserve( path.size() );
   for ( char c : path ) {
      if ( isWordChar( c ) || c == '-' ) {
         out += c;
      } else if ( c == '/' ) {
         out += '.';
      } else {
         U8 byte = static_cast< U8 >( c );
         out += '%';
         out += hex[ byte >> 4 ];
         out += hex[ byte & 0xF ];
      }
   }
   return out;
}

} // namespace

Status
checkPrefix( const std::string & prefix ) {
   if ( prefix.empty() || prefix.size() > maxPrefixLength ) {
      return Status( Errc::invalidArgument,
                     "invalid prefix '" + prefix + "': needs 1 to " +
                        std::to_string( maxPrefixLength ) + " characters" );
   }
   if ( !std::all_of( prefix.begin(), prefix.end(), isWordChar ) ) {
      return Status( Errc::invalidArgument, "invalid prefix '" + prefix +
                                               "': only letters, digits and '_' allowed" );
   }
   return Status();
}

Status
checkTablePath( const std::string & prefix, const std::string & path ) {
   if ( path.empty() || path.size() > maxPathLength ) {
      return Status( Errc::invalidArgument,
                     "invalid table path '" + path + "': needs 1 to " +
                        std::to_string( maxPathLength ) + " characters" );
   }
   // The name without its leading '/' is one file name under /dev/shm.
   if ( tableSegmentName( prefix, path ).size() - 1 > maxShmNameLength ) {
      return Status( Errc::invalidArgument,
                     "invalid table path '" + path + "': its segment name is longer than " +
                        std::to_string( maxShmNameLength ) + " characters" );
   }
   return Status();
}

std::string
segmentFilePrefix( const std::string & prefix ) {
   return "tessel-" + prefix + "-";
}

std::string
tableSegmentName( const std::string & prefix, const std::string & path ) {
   return "/" + segmentFilePrefix( prefix ) + "t." + encodePath( path );
}

std::string
ownerSegmentName( const std::string & prefix ) {
   return "/" + segmentFilePrefix( prefix ) + "owner";
}

std::string
mailboxSegmentName( const std::string & prefix ) {
   return "/" + segmentFilePrefix( prefix ) + "mailbox";
}

std::vector< std::string >
listSegments( const std::string & prefix ) {
   std::vector< std::string > names;
   DIR * dir = opendir( "/dev/shm" );
   if ( !dir ) {
      return names;
   }
   const std::string start = segmentFilePrefix( prefix );
   while ( const dirent * entry = readdir( dir ) ) {
      std::string name = entry->d_name;
      if ( name.compare( 0, start.size(), start ) == 0 ) {
         names.push_back( "/" + name );
      }
   }
   closedir( dir );
   std::sort( names.begin(), names.end() );
   return names;
}

std::string
runtimeDirectory() {
   const char * xdg = std::getenv( "XDG_RUNTIME_DIR" );
   struct stat st;
   if ( xdg && xdg[ 0 ] == '/' && stat( xdg, &st ) == 0 && S_ISDIR( st.st_mode ) ) {
      return xdg;
   }
   return "/tmp";
}

std::string
runtimePath( const std::string & prefix, const std::string & suffix ) {
   return runtimeDirectory() + "/tessel-" + prefix + "." + suffix;
}

std::string
defaultReportSocketPath( const std::string & prefix ) {
   return runtimePath( prefix, "sock" );
}

} // namespace Vault
