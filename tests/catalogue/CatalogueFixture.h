// Shared set-up of the catalogue tests: a shim for the one-time fills, the
// catalogue initialised per test, and the exact texts of its assertions.
#pragma once

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/TesselTcamGroups.h"
#include "sdk/shim/Shim.h"
#include "tests/common/RegexText.h"

namespace CatalogueTest {

inline Shim::Sdk &
shim() {
   static Shim::Sdk sdk;
   return sdk;
}

// What a stage's key cannot see. Ingress runs after forwarding lookup but
// before egress; the lookup stage runs before forwarding, so it sees neither
// forwarding results nor the ingress-only port bitmaps, range checkers and
// compressed classes; egress has no ingress bitmaps, ranges or classes.
inline std::set< int >
forbiddenIn( Tessel::TcamStageTypes stage ) {
   const Shim::Sdk & s = shim();
   std::set< int > egressOnly = {
      s.AR_bcmFieldQualifyOutPort(),         s.AR_bcmFieldQualifyEgressClassL3Interface(),
      s.AR_bcmFieldQualifyEgressClassL2Gre(), s.AR_bcmFieldQualifyEgressClassVxlan(),
      s.AR_bcmFieldQualifyCpuQueue(),        s.AR_bcmFieldQualifyMirrorCopy(),
      s.AR_bcmFieldQualifyStageEgress(),
   };
   std::set< int > ingressOnly = {
      s.AR_bcmFieldQualifyInPorts(),         s.AR_bcmFieldQualifyDevicePortBitmap(),
      s.AR_bcmFieldQualifyRangeCheck(),      s.AR_bcmFieldQualifySrcIpClass(),
      s.AR_bcmFieldQualifyDstIpClass(),      s.AR_bcmFieldQualifyL4SrcPortClass(),
      s.AR_bcmFieldQualifyL4DstPortClass(),  s.AR_bcmFieldQualifyIpProtocolClass(),
      s.AR_bcmFieldQualifyEtherTypeClass(),  s.AR_bcmFieldQualifyCompressionSelect(),
      s.AR_bcmFieldQualifyCompressionAddrSelect(), s.AR_bcmFieldQualifyStageIngress(),
   };
   std::set< int > forwardingResults = {
      s.AR_bcmFieldQualifyMyStationHit(),    s.AR_bcmFieldQualifyL3Routable(),
      s.AR_bcmFieldQualifyDstL3Egress(),     s.AR_bcmFieldQualifyDstMultipath(),
      s.AR_bcmFieldQualifyIpmcStarGroupHit(), s.AR_bcmFieldQualifyL2SrcStatic(),
      s.AR_bcmFieldQualifyDstClassL2(),      s.AR_bcmFieldQualifyDstClassL3(),
      s.AR_bcmFieldQualifySrcClassField(),   s.AR_bcmFieldQualifyDstClassField(),
      s.AR_bcmFieldQualifyIngressClassField(), s.AR_bcmFieldQualifyPacketRes(),
      s.AR_bcmFieldQualifyIntPriority(),     s.AR_bcmFieldQualifyColor(),
      s.AR_bcmFieldQualifyDrop(),            s.AR_bcmFieldQualifyDstPort(),
      s.AR_bcmFieldQualifyForwardingVlanId(), s.AR_bcmFieldQualifyForwardingType(),
   };
   std::set< int > out;
   if ( stage != Tessel::stageTypeEgress_ ) {
      out.insert( egressOnly.begin(), egressOnly.end() );
   }
   if ( stage != Tessel::stageTypeIngress_ ) {
      out.insert( ingressOnly.begin(), ingressOnly.end() );
   }
   if ( stage == Tessel::stageTypeLookup_ ) {
      out.insert( forwardingResults.begin(), forwardingResults.end() );
   } else {
      out.insert( s.AR_bcmFieldQualifyStageLookup() );
   }
   return out;
}

// The regular expression that matches exactly this assertion report from
// TesselTcamGroups.cpp, whatever its line.
inline std::string
assertionReport( std::string_view signature, std::string_view text ) {
   return "TesselTcamGroups\\.cpp:[0-9]+: " + TestText::literalRegex( signature ) +
          ": Assertion '" + TestText::literalRegex( text ) + "' failed\\.";
}

inline std::string
groupName( U32 groupId ) {
   return Tessel::TcamGroupIdInstance::valueToStrep( Tessel::TcamGroupId( groupId ) );
}

// The qualifiers of a -1-terminated list, in order.
inline std::vector< int >
listOf( const int * fields, unsigned slots ) {
   std::vector< int > out;
   for ( unsigned i = 0; i < slots && fields[ i ] != -1; ++i ) {
      out.push_back( fields[ i ] );
   }
   return out;
}

inline std::set< int >
setOf( const std::vector< int > & list ) {
   return std::set< int >( list.begin(), list.end() );
}

class Catalogue : public ::testing::Test {
 protected:
   void
   SetUp() override {
      Shim::sdk_ = &shim();
      Tessel::initTcamGroups();
   }

   void
   TearDown() override {
      Tessel::cleanupTcamGroups();
   }
};

} // namespace CatalogueTest
