#include "platform/fastlog/WriteAll.h"

#include <cerrno>
#include <unistd.h>

namespace FastLog {

bool
writeAll( int fd, std::string_view text ) {
   while ( !text.empty() ) {
      const ssize_t written = ::write( fd, text.data(), text.size() );
      if ( written < 0 ) {
         if ( errno == EINTR ) {
            continue;
         }
         return false;
      }
      text.remove_prefix( size_t( written ) );
   }
   return true;
}

} // namespace FastLog
