#include "manager/TesselOvidWarSm.h"

#include "common/TesselSdkCall.h"
#include "platform/fastlog/Trace.h"
#include "platform/kiln/ValueText.h"
#include "sdk/api/field_qualify.h"

TRACE_CHANNEL( "TesselTcamEntryManager" );

namespace Tessel {

std::string
TesselTcamEntryOvidKey::valueText() const {
   return Kiln::ValueText( "Tessel::TesselTcamEntryOvidKey" )
      .field( "tcamEntryId", tcamEntryId )
      .field( "ovid", ovid )
      .str();
}

bcm_pbmp_t
ovidTwinPorts( const bcm_pbmp_t & data, const bcm_pbmp_t & mask, const bcm_pbmp_t & untagged ) {
   bcm_pbmp_t ports;
   for ( int w = 0; w < BCM_PBMP_WORD_MAX; ++w ) {
      ports.pbits[ w ] = ( data.pbits[ w ] | ~mask.pbits[ w ] ) & untagged.pbits[ w ];
   }
   return ports;
}

bcm_pbmp_t
allPortsBitmap() {
   bcm_pbmp_t all;
   for ( int w = 0; w < BCM_PBMP_WORD_MAX; ++w ) {
      all.pbits[ w ] = 0xFFFFFFFF;
   }
   return all;
}

class TesselOvidWarSm::VlanReactor : public Agent::VlanState::NotifieeConst {
 public:
   explicit VlanReactor( TesselOvidWarSm & sm ) : sm_( sm ) {}
   void onUntaggedPorts( U16 vlan ) override { sm_.handleOvidUtBitmap( vlan ); }

 private:
   TesselOvidWarSm & sm_;
};

TesselOvidWarSm::TesselOvidWarSm( const Kiln::Name & name, U32 unit,
                                  const Kiln::Ptr< Agent::VlanState > & vlanState )
      : Kiln::Entity( name ), unit_( unit ), reactor_( std::make_unique< VlanReactor >( *this ) ) {
   vlanStateIs( vlanState );
}

TesselOvidWarSm::~TesselOvidWarSm() = default;

void
TesselOvidWarSm::vlanStateIs( const Kiln::Ptr< Agent::VlanState > & vlanState ) {
   vlanState_ = vlanState;
   reactor_->notifierIs( vlanState );
}

bcm_pbmp_t
TesselOvidWarSm::untaggedPorts( U32 ovid ) const {
   bcm_pbmp_t ports{};
   if ( vlanState_ ) {
      vlanState_->untaggedBitmap( static_cast< U16 >( ovid ), ports.pbits );
   }
   return ports;
}

void
TesselOvidWarSm::twinIs( U32 tcamEntryId, U32 ovid, U32 baseEntry ) {
   U32 before = twinOvid( tcamEntryId );
   if ( before && before != ovid ) {
      twinDel( tcamEntryId );
   }
   ovidEntriesIs( ovid )->ovidTcamEntryIs( tcamEntryId, baseEntry );
   tcamOvidMapIs( TesselTcamEntryOvidKey{ tcamEntryId, ovid } )->ovidIs( ovid );
}

void
TesselOvidWarSm::twinDel( U32 tcamEntryId ) {
   U32 ovid = twinOvid( tcamEntryId );
   if ( !ovid ) {
      return;
   }
   tcamOvidMapDel( TesselTcamEntryOvidKey{ tcamEntryId, ovid } );
   Kiln::Ptr< OvidEntry > twins = ovidEntries( ovid );
   twins->ovidTcamEntryDel( tcamEntryId );
   if ( twins->ovidTcamEntryCollection().empty() ) {
      ovidEntriesDel( ovid );
   }
}

U32
TesselOvidWarSm::twinOvid( U32 tcamEntryId ) const {
   auto it = tcamOvidMap_.lowerBound( TesselTcamEntryOvidKey{ tcamEntryId, 0 } );
   return it != tcamOvidMap_.end() && it->first.tcamEntryId == tcamEntryId ? it->first.ovid : 0;
}

void
TesselOvidWarSm::handleOvidUtBitmap( U32 vlan ) {
   TRACE8( "TesselOvidWarSm::" << "handleOvidUtBitmap" << " unit " << unit_ << " vlan " << vlan );
   Kiln::Ptr< OvidEntry > twins = ovidEntries( vlan );
   if ( !twins ) {
      return;
   }
   bcm_pbmp_t untagged = untaggedPorts( vlan );
   // The SDK calls release the activity lock: work on a snapshot.
   std::vector< std::pair< U32, U32 > > snapshot( twins->ovidTcamEntryCollection().begin(),
                                                  twins->ovidTcamEntryCollection().end() );
   for ( const auto & [ twin, baseEntry ] : snapshot ) {
      retwin( TwinIter{ twin }, EntryBase{ baseEntry }, untagged );
   }
}

void
TesselOvidWarSm::retwin( TwinIter iter, EntryBase entryBase, const bcm_pbmp_t & untagged ) {
   U32 unit = unit_;
   bcm_pbmp_t inportsOrig = allPortsBitmap();
   bcm_pbmp_t mask = allPortsBitmap();
   int rc = SDK_CALL( bcm_field_qualify_InPorts_get( unit, entryBase.featureEntryId(),
                                                     &inportsOrig, &mask ) );
   if ( rc < 0 && rc != BCM_E_NOT_FOUND ) { // a base without in-ports matches every port
      retwinError( rc, entryBase.featureEntryId() );
      return;
   }
   bcm_pbmp_t ports = ovidTwinPorts( inportsOrig, mask, untagged );
   mask = allPortsBitmap();
   rc = SDK_CALL( bcm_field_qualify_InPorts( unit, iter.key(), ports, mask ) );
   if ( rc < 0 ) {
      retwinError( rc, iter.key() );
      return;
   }
   U32 entry = iter.key();
   rc = SDK_CALL( bcm_field_entry_reinstall( unit, entry ) );
   if ( rc < 0 ) {
      retwinError( rc, entry );
   }
}

void
TesselOvidWarSm::retwinError( int rc, U32 entry ) const {
   TRACE0( "TesselOvidWarSm::" << "handleOvidUtBitmap" << " Unit: " << unit_ << " entry 0x"
                               << std::hex << entry << std::dec << " API ERROR:" << " (rc:" << rc
                               << ")" );
}

} // namespace Tessel
