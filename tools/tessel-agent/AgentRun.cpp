#include "tools/tessel-agent/AgentRun.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <memory>
#include <optional>

#include "examples/features/ClassBench.h"
#include "examples/features/FieldText.h"
#include "platform/fastlog/TraceSink.h"
#include "platform/kiln/ActivityLock.h"
#include "tools/agent/AgentFeatures.h"
#include "tools/agent/SimulatedAgent.h"

namespace TesselAgent {

namespace {

using namespace SimAgent;
using Clock = std::chrono::steady_clock;

Kiln::ActivityLoop * loopToStop = nullptr;

void
onStopSignal( int ) {
   if ( loopToStop ) {
      loopToStop->stopFromSignal();
   }
}

void
stopOnSignals( Kiln::ActivityLoop * loop ) {
   loopToStop = loop;
   struct sigaction action = {};
   action.sa_handler = loop ? onStopSignal : SIG_DFL;
   sigemptyset( &action.sa_mask );
   sigaction( SIGINT, &action, nullptr );
   sigaction( SIGTERM, &action, nullptr );
}

void
say( const std::string & text ) {
   std::printf( "tessel-agent: %s\n", text.c_str() );
   std::fflush( stdout );
}

int
failure( const std::string & text, int code = exitFailure ) {
   std::fflush( stdout );
   std::fprintf( stderr, "tessel-agent: %s\n", text.c_str() );
   return code;
}

double
millisecondsSince( Clock::time_point start ) {
   return std::chrono::duration< double, std::milli >( Clock::now() - start ).count();
}

std::string
fixed( double value ) {
   char text[ 32 ];
   std::snprintf( text, sizeof( text ), "%.1f", value );
   return text;
}

// Everything the run reads, read before anything starts: a bad file stops
// the agent before it claims its prefix.
struct Inputs {
   Features::Workload workload;
   std::vector< TrafficPacket > traffic;
   std::vector< Features::ClassBenchRule > rules;
   std::vector< Features::ClassBenchHeader > headers;
};

void
checkTrafficUnits( const std::vector< TrafficPacket > & traffic, size_t units ) {
   for ( const TrafficPacket & packet : traffic ) {
      if ( packet.unit >= units ) {
         throw Features::FieldTextError( packet.where + ": unit " + std::to_string( packet.unit ) +
                                         ", but the box has " + std::to_string( units ) +
                                         ( units == 1 ? " unit" : " units" ) );
      }
   }
}

Inputs
readInputs( const AgentOptions & o ) {
   Inputs in;
   if ( !o.workload.empty() ) {
      in.workload = Features::readWorkloadFile( o.workload );
   }
   if ( !o.traffic.empty() ) {
      in.traffic = readTrafficFile( o.traffic );
      checkTrafficUnits( in.traffic, o.profiles.size() );
   }
   if ( !o.classBenchRules.empty() ) {
      in.rules = Features::readClassBenchRulesFile( o.classBenchRules );
      if ( !in.workload.acl.empty() ) {
         throw Features::FieldTextError( o.workload + ": has acl lines, and --classbench-rules "
                                         "makes the ACL; give one or the other" );
      }
   }
   if ( !o.classBenchTrace.empty() ) {
      in.headers = Features::readClassBenchTraceFile( o.classBenchTrace );
   }
   return in;
}

class Run {
 public:
   Run( const AgentOptions & options, Inputs inputs )
         : options_( options ), inputs_( std::move( inputs ) ),
           agent_( SimAgent::Settings{ options.profiles, options.prefix, options.socketPath, "",
                                       !options.once } ) {}
   // The handlers must not outlive the loop, whatever ended the run.
   ~Run() { stopOnSignals( nullptr ); }

   int
   execute() {
      stopOnSignals( options_.once ? nullptr : &agent_.loop() );
      agent_.start();
      features_.emplace( agent_.manager() );
      int rc = load();
      rc = rc == exitOk ? sendTraffic() : rc;
      if ( rc == exitOk ) {
         listItems();
      }
      if ( rc == exitOk && !options_.once ) {
         serve();
      }
      int end = finish();
      return rc == exitOk ? end : rc;
   }

 private:
   int load();
   int loadClassBench();
   int sendTraffic();
   void listItems();
   void serve();
   int finish();

   const AgentOptions & options_;
   Inputs inputs_;
   SimulatedAgent agent_;
   std::optional< AgentFeatures > features_;
   std::vector< Verdict > verdicts_;
};

int
Run::load() {
   for ( const Features::LoadReport & report : features_->load( inputs_.workload ) ) {
      if ( !report.ok() ) {
         return failure( report.error );
      }
      say( loadText( report ) );
   }
   int rc = inputs_.rules.empty() ? exitOk : loadClassBench();
   agent_.publishCapacity();
   return rc;
}

int
Run::loadClassBench() {
   Clock::time_point start = Clock::now();
   Features::LoadReport report = features_->loadClassBench( inputs_.rules );
   double ms = millisecondsSince( start );
   if ( !report.ok() ) {
      return failure( "classbench: " + options_.classBenchRules + ": " + report.error );
   }
   std::printf( "classbench: %s: %s, loaded in %s ms\n", options_.classBenchRules.c_str(),
                loadText( report ).c_str(), fixed( ms ).c_str() );
   return exitOk;
}

int
Run::sendTraffic() {
   std::vector< TrafficPacket > packets = inputs_.traffic;
   int port = firstFrontPanelPort( agent_.box(), 0 );
   for ( const Features::ClassBenchHeader & header : inputs_.headers ) {
      packets.push_back( packetOfHeader( header, port ) );
   }
   if ( packets.empty() ) {
      return exitOk;
   }
   TrafficSummary summary;
   Clock::time_point start = Clock::now();
   for ( const TrafficPacket & packet : packets ) {
      verdicts_.push_back( features_->send( agent_.box(), packet ) );
      summary.add( verdicts_.back() );
   }
   double ms = millisecondsSince( start );
   if ( inputs_.headers.empty() ) {
      say( "traffic " + options_.traffic + ": " + summary.text() );
   } else {
      std::printf( "classbench: %s: %u headers classified in %s ms (%s us each); %u hit a rule\n",
                   options_.classBenchTrace.c_str(), summary.packets, fixed( ms ).c_str(),
                   fixed( ms * 1000 / summary.packets ).c_str(), summary.aclHits );
   }
   std::string error = options_.hitsFile.empty() ? "" : writeHits( options_.hitsFile, verdicts_ );
   return error.empty() ? exitOk : failure( error );
}

// What each workload rule holds and counted: small enough to list, and the
// entry ids are what tessel-show tcam entry takes.
void
Run::listItems() {
   if ( !inputs_.rules.empty() ) {
      return;
   }
   for ( U32 unit = 0; unit < agent_.box().numUnits(); ++unit ) {
      for ( const std::string & line : features_->itemLines( unit ) ) {
         say( "unit " + std::to_string( unit ) + ": " + line );
      }
   }
}

void
Run::serve() {
   const Tessel::TesselTcamCliServer * server = agent_.server();
   say( "ready: prefix " + options_.prefix + ", socket " + server->reportSocketPath() );
   agent_.refreshCapacityEvery( std::chrono::seconds( 1 ) );
   agent_.loop().run();
   say( "stopping" );
}

// Features give everything back, then the agent; the chip must then hold
// nothing of what the library made.
int
Run::finish() {
   features_.reset();
   agent_.stop();
   ChipModel::ObjectCounts left = agent_.box().counts();
   if ( left.total() ) {
      return failure( "the chip still holds objects after everything was released: " +
                      left.text() );
   }
   return exitOk;
}

bool
traceTo( const std::string & path, std::string & error ) {
   std::shared_ptr< FastLog::FileSink > sink = FastLog::FileSink::open( path, error );
   if ( sink ) {
      FastLog::traceSinkIs( sink );
   }
   return sink != nullptr;
}

} // namespace

int
runAgent( const AgentOptions & options ) {
   std::string error;
   if ( !options.traceFile.empty() && !traceTo( options.traceFile, error ) ) {
      return failure( error );
   }
   try {
      Inputs inputs = readInputs( options );
      Kiln::ActivityLockGuard activity;
      Run run( options, std::move( inputs ) );
      return run.execute();
   } catch ( const std::exception & e ) {
      // Unreadable input (FieldTextError, ClassBenchError), a prefix held by
      // another agent (Vault::Error): said as they are.
      return failure( e.what() );
   }
}

} // namespace TesselAgent
