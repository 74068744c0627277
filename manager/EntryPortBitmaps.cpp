// Port bitmaps of entries: the in-ports an entry is restricted to, narrowed
// to what each copy sees, and the loopback ports of redirects.
//
// A copy sees the packets of its pipe's ports (per-pipe groups) or of every
// port (global ones). Where a pipe has two copies, both see the pipe's
// packets, so each takes half of the pipe's front-panel ports (copy 0 the
// lower half and the loopback port, copy 1 the upper half): a packet then
// hits one copy and is counted once.
#include <string>
#include <vector>

#include "manager/TesselOvidWarSm.h"
#include "manager/TesselTcamEntryManager.h"
#include "manager/TesselTcamGroupManager.h"
#include "platform/fastlog/Trace.h"

TRACE_CHANNEL( "TesselTcamEntryManager" );

namespace Tessel {

namespace {

U32
pipeOf( U32 tcamEntryId ) {
   return ( tcamEntryId >> 24 ) & 7;
}

U32
copyOf( U32 tcamEntryId ) {
   return ( tcamEntryId >> 27 ) & 1;
}

bcm_pbmp_t
portsAnd( const bcm_pbmp_t & a, const bcm_pbmp_t & b ) {
   bcm_pbmp_t result;
   for ( int w = 0; w < BCM_PBMP_WORD_MAX; ++w ) {
      result.pbits[ w ] = a.pbits[ w ] & b.pbits[ w ];
   }
   return result;
}

// Half `copy` of the pipe's front-panel ports; copy 0 also takes the
// loopback port.
bcm_pbmp_t
copyHalf( const Shim::PortConfig & config, U32 pipe, U32 copy ) {
   bcm_pbmp_t pipePorts = config.per_pipe( pipe );
   std::vector< int > front;
   for ( int port = 0; port < BCM_PBMP_PORT_MAX; ++port ) {
      if ( BCM_PBMP_MEMBER( pipePorts, port ) && BCM_PBMP_MEMBER( config.e, port ) ) {
         front.push_back( port );
      }
   }
   bcm_pbmp_t half = copy == 0 ? portsAnd( pipePorts, config.lb ) : bcm_pbmp_t{};
   size_t lower = front.size() / 2;
   for ( size_t i = copy == 0 ? 0 : lower; i < ( copy == 0 ? lower : front.size() ); ++i ) {
      BCM_PBMP_PORT_ADD( half, front[ i ] );
   }
   return half;
}

} // namespace

bcm_pbmp_t
TesselTcamEntryManager::copyPorts( U32 unit, U32 tcamEntryId ) const {
   const EntryLayout & layout = unitRecord( unit ).layout();
   const Shim::PortConfig * config = groupManager()->unitPortConfig( unit );
   if ( !layout.perPipe || !config ) {
      return allPortsBitmap();
   }
   if ( layout.copies == 1 ) {
      return config->per_pipe( pipeOf( tcamEntryId ) );
   }
   return copyHalf( *config, pipeOf( tcamEntryId ), copyOf( tcamEntryId ) );
}

bcm_pbmp_t
TesselTcamEntryManager::copyMask( U32 unit, U32 tcamEntryId ) const {
   const Shim::PortConfig * config = groupManager()->unitPortConfig( unit );
   if ( !unitRecord( unit ).layout().perPipe || !config ) {
      return allPortsBitmap();
   }
   return config->per_pipe( pipeOf( tcamEntryId ) );
}

bool
TesselTcamEntryManager::sharesPort( U32 unit, U32 tcamEntryId, int port ) const {
   return port >= 0 && port < BCM_PBMP_PORT_MAX &&
          BCM_PBMP_MEMBER( copyPorts( unit, tcamEntryId ), port );
}

Kiln::Ptr< TcamEntryBcmPbmp >
TesselTcamEntryManager::addTcamEntryToBcmPbmp( U32 unit, U32 entry ) {
   return unitRecord( unit ).tcamEntryBcmPbmpIs( entry );
}

Kiln::Ptr< TcamEntryBcmPbmp >
TesselTcamEntryManager::tcamEntryBcmPbmp( U32 unit, U32 entry ) const {
   return unitRecord( unit ).tcamEntryBcmPbmp( entry );
}

void
TesselTcamEntryManager::updateInPortsForEntry( U32 unit, U32 entry,
                                               const TesselTypes::TesselPortList & ports,
                                               bool permanent, bool singlePort ) {
   TRACE8( "updateInPortsForEntry unit " << unit << " entry " << entry << " ports "
                                         << ports.valueText() );
   Kiln::Ptr< TcamEntryBcmPbmp > record = addTcamEntryToBcmPbmp( unit, entry );
   bcm_pbmp_t data{};
   TesselTypes::portListToBitmap( ports, data.pbits );
   record->portsIs( data, allPortsBitmap() );
   record->inPortIs( singlePort && ports.size() == 1 ? static_cast< int >( ports.ports()[ 0 ] )
                                                     : -1 );
   record->permanentIs( permanent );
}

// The record's ports (`pbmpData`, and every port outside `pbmpMask`) that
// the copy sees.
void
TesselTcamEntryManager::addInPortsForEntry( U32 unit, U32 tcamEntryId, bcm_pbmp_t pbmpData,
                                            bcm_pbmp_t pbmpMask ) {
   Kiln::Ptr< TcamEntryBcmPbmp > record = tcamEntryBcmPbmp( unit, tcamEntryId & 0x00FFFFFF );
   KILN_ASSERT( record );
   bcm_pbmp_t accepted = ovidTwinPorts( pbmpData, pbmpMask, allPortsBitmap() );
   record->pbmpIs( portsAnd( accepted, copyPorts( unit, tcamEntryId ) ),
                   copyMask( unit, tcamEntryId ) );
}

// A single port: the copy that sees it matches it, the others nothing.
void
TesselTcamEntryManager::addInPortForEntry( U32 unit, U32 tcamEntryId, int port ) {
   Kiln::Ptr< TcamEntryBcmPbmp > record = tcamEntryBcmPbmp( unit, tcamEntryId & 0x00FFFFFF );
   KILN_ASSERT( record );
   bcm_pbmp_t data{};
   if ( sharesPort( unit, tcamEntryId, port ) ) {
      BCM_PBMP_PORT_ADD( data, port );
   }
   record->pbmpIs( data, copyMask( unit, tcamEntryId ) );
}

void
TesselTcamEntryManager::removeTcamEntryBcmPbmp( U32 unit, U32 entry ) {
   UnitEntriesCreated & record = unitRecord( unit );
   Kiln::Ptr< TcamEntryBcmPbmp > ports = record.tcamEntryBcmPbmp( entry );
   if ( ports && !ports->permanent() ) {
      record.tcamEntryBcmPbmpDel( entry );
   }
}

void
TesselTcamEntryManager::setTcamEntryBcmPbmpPermanent( U32 unit, U32 entry, bool permanent ) {
   TRACE7( "Making entry pbmp store permanent " << entry << " " << permanent );
   Kiln::Ptr< TcamEntryBcmPbmp > record = tcamEntryBcmPbmp( unit, entry );
   std::string missing = "Entry " + std::to_string( entry ) + " not found in pbmp collection.";
   KILN_ASSERT_MSG( record, missing.c_str() );
   record->permanentIs( permanent );
}

void
TesselTcamEntryManager::setLoopbackPortRedirectAction( U32 unit, U32 entry, int lbAction,
                                                       bcm_pbmp_t outPorts ) {
   unitRecord( unit ).loopbackPortRedirectActionIs(
      entry, LoopbackPortRedirect{ lbAction, PortBitmap{ outPorts } } );
}

void
TesselTcamEntryManager::addOutLoopbackPortForEntry( U32 unit, U32 entry, U32 pipe,
                                                    bcm_pbmp_t outPorts ) {
   int port = groupManager()->getLoopbackPortId( unit, pipe );
   TRACE7( "Looback portId pipe " << pipe << " port " << port );
   if ( port >= 0 ) {
      BCM_PBMP_PORT_ADD( outPorts, port );
   }
   unitRecord( unit ).outportsBcmPbmpIs( entry, PortBitmap{ outPorts } );
}

} // namespace Tessel
