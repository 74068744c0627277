// The agent's side of the command line: table requests from the mailbox and
// text reports from the report socket.
#include "export/TesselTcamCliServer.h"

#include <charconv>
#include <cstdio>
#include <optional>
#include <unistd.h>
#include <vector>

#include "export/TesselTcamVaultTables.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/fastlog/Trace.h"
#include "platform/vault/VaultNames.h"
#include "show/TesselTcamShow.h"

TRACE_CHANNEL( "TesselTcamCliServer" );

namespace Tessel {

namespace {

// After an answer the activity thread watches the mailbox this long for the
// command's next request, and serves at most this many rounds so in before
// it lets other activities run.
constexpr std::chrono::microseconds watchAfterAnswer( 100 );
constexpr U32 roundsPerWake = 32;

std::string
hostName() {
   char name[ 256 ] = {};
   if ( gethostname( name, sizeof name - 1 ) != 0 || !name[ 0 ] ) {
      return "localhost";
   }
   return name;
}

std::vector< std::string >
words( const std::string & line ) {
   std::vector< std::string > result;
   size_t start = 0;
   while ( start < line.size() ) {
      size_t end = line.find( ' ', start );
      if ( end == std::string::npos ) {
         end = line.size();
      }
      if ( end > start ) {
         result.push_back( line.substr( start, end - start ) );
      }
      start = end + 1;
   }
   return result;
}

std::optional< U32 >
number( const std::string & word ) {
   U32 value = 0;
   auto [ end, ec ] = std::from_chars( word.data(), word.data() + word.size(), value );
   if ( ec != std::errc() || end != word.data() + word.size() ) {
      return std::nullopt;
   }
   return value;
}

// A parsed report request: the report's name and its numbers.
struct ReportRequest {
   std::string report;
   std::vector< U32 > numbers;
};

// "tcam <report> <numbers...>" with the count of numbers the report takes.
std::optional< ReportRequest >
parseReport( const std::string & line ) {
   static const std::vector< std::pair< std::string, size_t > > reports = {
      { "usage", 3 }, { "summary", 1 }, { "raw", 1 }, { "entry", 2 }, { "reservations", 0 } };
   std::vector< std::string > w = words( line );
   if ( w.size() < 2 || w[ 0 ] != "tcam" ) {
      return std::nullopt;
   }
   for ( const auto & [ name, count ] : reports ) {
      if ( w[ 1 ] != name || w.size() != 2 + count ) {
         continue;
      }
      ReportRequest request{ name, {} };
      for ( size_t i = 2; i < w.size(); ++i ) {
         std::optional< U32 > n = number( w[ i ] );
         if ( !n ) {
            return std::nullopt;
         }
         request.numbers.push_back( *n );
      }
      return request;
   }
   return std::nullopt;
}

} // namespace

TesselTcamCliServer::TesselTcamCliServer( const Kiln::Ptr< TesselTcamGroupManager > & manager,
                                          Options options )
      : manager_( manager ),
        switchName_( options.switchName.empty() ? hostName() : options.switchName ),
        store_( std::make_unique< Vault::Store >( options.prefix ) ) {
   std::string socketPath = options.reportSocketPath.empty()
                               ? Vault::defaultReportSocketPath( options.prefix )
                               : options.reportSocketPath;
   mailbox_ = std::make_unique< Vault::MailboxServer >( *store_, options.mailboxSlots );
   reports_ = std::make_unique< Vault::ReportServer >(
      socketPath, [ this ]( const std::string & line, int out ) {
         return serveReportRequest( line, out );
      } );
   manager_->groupManagerVaultRequestIs();
   manager_->groupManagerVaultSmIs();
   helper_ = TesselTcam::cliVaultHelperFactory( *store_ );
   manager_->cliVaultHelperIs( helper_ );
   TRACE5( "serving the command line under prefix " << options.prefix << ", reports at "
                                                    << socketPath );
}

TesselTcamCliServer::~TesselTcamCliServer() {
   detach();
   if ( manager_->cliVaultHelper() == helper_ ) {
      manager_->cliVaultHelperIs( nullptr );
   }
   helper_->cliVaultNamedCollectionDelAll();
   helper_ = nullptr;
}

void
TesselTcamCliServer::attach( Kiln::ActivityLoop & loop ) {
   detach();
   loop_ = &loop;
   loop.fdReadableIs( mailbox_->fd(), [ this ] { serveTableRequests(); } );
   loop.fdReadableIs( reports_->fd(), [ this ] { serveReports(); } );
}

void
TesselTcamCliServer::detach() {
   if ( loop_ ) {
      loop_->fdDel( mailbox_->fd() );
      loop_->fdDel( reports_->fd() );
      loop_ = nullptr;
   }
}

U32
TesselTcamCliServer::serveTableRequests() {
   auto handler = [ this ]( const Vault::IncomingRequest & in ) { return serveTableRequest( in ); };
   U32 served = mailbox_->serve( handler );
   for ( U32 round = 1; served > 0 && round < roundsPerWake &&
                        mailbox_->requestWithin( watchAfterAnswer );
         ++round ) {
      served += mailbox_->serve( handler );
   }
   return served;
}

U32
TesselTcamCliServer::serveReports() {
   return reports_->serve();
}

S32
TesselTcamCliServer::serveTableRequest( const Vault::IncomingRequest & in ) {
   const Vault::Request & request = in.request;
   TRACE7( "table request from pid " << in.clientPid << ": unit " << request.unit << " kind "
                                     << request.kind << " stage " << request.stage << " pipe "
                                     << request.pipe );
   S32 result = checkTableRequest( request );
   if ( result != 0 ) {
      return result;
   }
   if ( request.kind == vaultTypeStages || request.kind == vaultTypeStageNames ) {
      return 0; // filled when the unit became known
   }
   return fillTable( request );
}

// Whether the request names a table that exists: a known unit, a stage it
// has and a pipe of that stage.
S32
TesselTcamCliServer::checkTableRequest( const Vault::Request & request ) const {
   if ( request.unit > 0xFFFF || !helper_->cliVaultUnits()->unitsHas( U16( request.unit ) ) ) {
      return vaultResultUnknownUnit;
   }
   if ( request.kind == vaultTypeStages || request.kind == vaultTypeStageNames ) {
      return 0;
   }
   if ( !perStageTable( request.kind ) ) {
      return vaultResultUnknownKind;
   }
   auto stages = Kiln::ptr_cast< VaultStagesMount >(
      helper_->getCliVaultMounter( stageTable.mounterName, U16( request.unit ) ) );
   std::optional< VaultStageInfo > stage =
      stages ? stages->vaultStageInfo( request.stage ) : std::nullopt;
   if ( !stage ) {
      return vaultResultUnknownStage;
   }
   return request.pipe < stage->numPipes ? 0 : vaultResultUnknownPipe;
}

// Sets the request on the group manager's request entity through the
// table's mounter, whose state machine fills the table; then returns the
// entity to idle so that the next request, even an identical one, is seen.
S32
TesselTcamCliServer::fillTable( const Vault::Request & request ) {
   const VaultTableDesc & desc = *perStageTable( request.kind );
   Kiln::Ptr< GroupManagerVaultMounter > mounter =
      Kiln::ptr_cast< GroupManagerVaultMounter >( helper_->cliVaultMounterFactory(
         perStageText( desc.mounterName, request.stage, request.pipe ), U16( request.unit ),
         perStageText( desc.path, request.stage, request.pipe ), desc.mountType, desc.capacity,
         desc.parentType ) );
   if ( !mounter ) {
      return vaultResultUnknownPipe;
   }
   Kiln::Ptr< GroupManagerVaultRequest > message = mounter->cliVaultMessage();
   struct Idle {
      Kiln::Ptr< GroupManagerVaultRequest > message;
      ~Idle() {
         message->requestIs( 0 );
         message->responseIs( 0 );
         message->mounterIs( nullptr );
      }
   } idle{ message };
   mounter->populateVault();
   bool served = message->request() != 0 && message->response() == message->request();
   return served ? 0 : Vault::answerHandlerFailed;
}

S32
TesselTcamCliServer::serveReportRequest( const std::string & line, int out ) {
   TRACE7( "report request: " << line );
   std::optional< ReportRequest > request = parseReport( line );
   if ( !request ) {
      return reportStatusBadRequest;
   }
   const std::vector< U32 > & n = request->numbers;
   if ( request->report == "reservations" ) {
      dprintf( out, "%s\n", getTcamReservationData().c_str() );
      return 0;
   }
   U32 unit = n[ 0 ];
   if ( !manager_->chipInfo( unit ) ) {
      return reportStatusUnknownUnit;
   }
   if ( request->report == "usage" ) {
      if ( n[ 1 ] != reportAllPipes && n[ 1 ] >= manager_->getNumPipe( unit ) ) {
         return reportStatusUnknownPipe;
      }
      manager_->showTcamUsage( switchName_, U32( out ), n[ 2 ] != 0, unit, S8( n[ 1 ] ) );
   } else if ( request->report == "summary" ) {
      manager_->showSummaryTcamUsage( switchName_, U32( out ), unit );
   } else if ( request->report == "raw" ) {
      manager_->showRawTcamUsage( switchName_, U32( out ), unit );
   } else {
      manager_->showEntryTcamUsage( switchName_, U32( out ), unit, n[ 1 ] );
   }
   return 0;
}

} // namespace Tessel
