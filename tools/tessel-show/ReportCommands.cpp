// The text reports: the agent writes them into our standard output, or,
// for --json and the reservation listing, into a memory file we read back.
#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

#include "export/TesselTcamVaultTables.h"
#include "tools/tessel-show/Commands.h"
#include "tools/tessel-show/Json.h"

namespace TesselShow {

namespace {

// A file in memory the agent writes into; read back once it answered.
class Capture {
 public:
   Capture() : fd_( memfd_create( "tessel-show", MFD_CLOEXEC ) ) {}
   ~Capture() {
      if ( fd_ >= 0 ) {
         close( fd_ );
      }
   }
   int fd() const { return fd_; }
   std::string
   text() const {
      std::string all;
      char buffer[ 4096 ];
      ssize_t got;
      off_t offset = 0;
      while ( ( got = pread( fd_, buffer, sizeof buffer, offset ) ) > 0 ) {
         all.append( buffer, size_t( got ) );
         offset += got;
      }
      return all;
   }

 private:
   int fd_;
};

std::string
requestLine( const Options & o, U32 unit ) {
   std::string u = std::to_string( unit );
   if ( o.command == "usage" ) {
      return "tcam usage " + u + " " + std::to_string( o.pipe.value_or( Tessel::reportAllPipes ) ) +
             ( o.detail ? " 1" : " 0" );
   }
   if ( o.command == "entry" ) {
      return "tcam entry " + u + " " + std::to_string( o.entryId );
   }
   if ( o.command == "reservations" ) {
      return "tcam reservations";
   }
   return "tcam " + o.command + " " + u;
}

// "name number#name number#..." as one line per reservation.
void
reservationRows( const std::string & listing, Json * json ) {
   size_t start = 0;
   for ( size_t end; ( end = listing.find( '#', start ) ) != std::string::npos; start = end + 1 ) {
      std::string item = listing.substr( start, end - start );
      size_t blank = item.rfind( ' ' );
      std::string name = blank == std::string::npos ? item : item.substr( 0, blank );
      std::string number = blank == std::string::npos ? "" : item.substr( blank + 1 );
      if ( json ) {
         json->beginObject().field( "name", name ).field( "assignment", std::atoi( number.c_str() ) )
            .endObject();
      } else {
         std::printf( "%10s  %s\n", number.c_str(), name.c_str() );
      }
   }
}

int
reservations( AgentLink & link, const Options & o ) {
   Capture capture;
   if ( Outcome failure = link.report( requestLine( o, 0 ), capture.fd() ) ) {
      return fail( *failure );
   }
   if ( o.json ) {
      Json json;
      json.beginObject().key( "reservations" ).beginArray();
      reservationRows( capture.text(), &json );
      json.endArray().endObject();
      std::fputs( json.str().c_str(), stdout );
   } else {
      std::printf( "%10s  %s\n", "Assignment", "Reservation" );
      reservationRows( capture.text(), nullptr );
   }
   return exitOk;
}

} // namespace

int
runReport( AgentLink & link, const Options & o ) {
   if ( o.command == "reservations" ) {
      return reservations( link, o );
   }
   std::vector< U32 > units;
   if ( Outcome failure = unitsToShow( link, o, o.command != "entry", units ) ) {
      return fail( *failure );
   }
   Json json;
   json.beginObject().key( "reports" ).beginArray();
   U32 pipe = o.pipe.value_or( Tessel::reportAllPipes );
   for ( U32 unit : units ) {
      if ( !o.json ) {
         std::fflush( stdout ); // the agent writes into the same file
         if ( Outcome failure = link.report( requestLine( o, unit ), 1, unit, pipe ) ) {
            return fail( *failure );
         }
         continue;
      }
      Capture capture;
      if ( Outcome failure = link.report( requestLine( o, unit ), capture.fd(), unit, pipe ) ) {
         return fail( *failure );
      }
      json.beginObject().field( "unit", unit ).field( "report", o.command );
      json.field( "text", capture.text() ).endObject();
   }
   if ( o.json ) {
      json.endArray().endObject();
      std::fputs( json.str().c_str(), stdout );
   }
   return exitOk;
}

} // namespace TesselShow
