// Text forms of the table records: written for traces and read back by the
// string constructors (Kiln::ValueTextError on any other text).
#include "export/TesselTcamVaultRecords.h"

#include <vector>

#include "platform/kiln/Assert.h"
#include "platform/kiln/ValueText.h"

namespace Tessel {

namespace {

Id
readKey( Kiln::ValueTextReader & reader ) {
   return Id( reader.field( "key" ) );
}

} // namespace

VaultStageInfo::VaultStageInfo( std::string_view text ) {
   Kiln::ValueTextReader r( text, "Tessel::VaultStageInfo" );
   key = readKey( r );
   pipeOperationMode = r.number< U8 >( "pipeOperationMode" );
   numPipes = r.number< U32 >( "numPipes" );
   tcamSize = r.number< U32 >( "tcamSize" );
   r.end();
}

std::string
VaultStageInfo::vaultString() const {
   return Kiln::ValueText( "Tessel::VaultStageInfo" )
      .rawField( "key", key.valueText() )
      .field( "pipeOperationMode", pipeOperationMode )
      .field( "numPipes", numPipes )
      .field( "tcamSize", tcamSize )
      .str();
}

VaultGroupInfo::VaultGroupInfo( std::string_view text ) {
   Kiln::ValueTextReader r( text, "Tessel::VaultGroupInfo" );
   key = readKey( r );
   allocatedEntries = r.number< U32 >( "allocatedEntries" );
   freeEntries = r.number< U32 >( "freeEntries" );
   numCopies = r.number< U32 >( "numCopies" );
   globalGroupId = r.number< U32 >( "globalGroupId" );
   r.end();
}

std::string
VaultGroupInfo::vaultString() const {
   return Kiln::ValueText( "Tessel::VaultGroupInfo" )
      .rawField( "key", key.valueText() )
      .field( "allocatedEntries", allocatedEntries )
      .field( "freeEntries", freeEntries )
      .field( "numCopies", numCopies )
      .field( "globalGroupId", globalGroupId )
      .str();
}

VaultFeatureInfo::VaultFeatureInfo( std::string_view text ) {
   Kiln::ValueTextReader r( text, "Tessel::VaultFeatureInfo" );
   key = readKey( r );
   entriesAllocated = r.number< U32 >( "entriesAllocated" );
   entriesUsed = r.number< U32 >( "entriesUsed" );
   groupId = r.number< U32 >( "groupId" );
   r.end();
}

std::string
VaultFeatureInfo::vaultString() const {
   return Kiln::ValueText( "Tessel::VaultFeatureInfo" )
      .rawField( "key", key.valueText() )
      .field( "entriesAllocated", entriesAllocated )
      .field( "entriesUsed", entriesUsed )
      .field( "groupId", groupId )
      .str();
}

VaultEntryGroupInfo::VaultEntryGroupInfo( std::string_view text ) {
   Kiln::ValueTextReader r( text, "Tessel::VaultEntryGroupInfo" );
   key = readKey( r );
   groupId = r.number< U32 >( "groupId" );
   stats = r.number< U32 >( "stats" );
   r.end();
}

std::string
VaultEntryGroupInfo::vaultString() const {
   return Kiln::ValueText( "Tessel::VaultEntryGroupInfo" )
      .rawField( "key", key.valueText() )
      .field( "groupId", groupId )
      .field( "stats", stats )
      .str();
}

VaultEntryFeatureInfo::VaultEntryFeatureInfo( std::string_view text ) {
   Kiln::ValueTextReader r( text, "Tessel::VaultEntryFeatureInfo" );
   key = readKey( r );
   featureId = r.number< U32 >( "featureId" );
   r.end();
}

std::string
VaultEntryFeatureInfo::vaultString() const {
   return Kiln::ValueText( "Tessel::VaultEntryFeatureInfo" )
      .rawField( "key", key.valueText() )
      .field( "featureId", featureId )
      .str();
}

VaultGroupQualiferInfo::VaultGroupQualiferInfo( std::string_view text ) {
   Kiln::ValueTextReader r( text, "Tessel::VaultGroupQualiferInfo" );
   key = readKey( r );
   offset = r.number< U32 >( "offset" );
   size = r.number< U32 >( "size" );
   r.end();
}

std::string
VaultGroupQualiferInfo::vaultString() const {
   return Kiln::ValueText( "Tessel::VaultGroupQualiferInfo" )
      .rawField( "key", key.valueText() )
      .field( "offset", offset )
      .field( "size", size )
      .str();
}

VaultEntryInfo::VaultEntryInfo( std::string_view ) {
   KILN_ASSERT_MSG( false, "No String constructor for VaultEntryInfo - has collection" );
}

std::string
VaultEntryInfo::vaultString() const {
   std::vector< U8 > used( data_.begin(), data_.begin() + size_ );
   return Kiln::ValueText( "Tessel::VaultEntryInfo" )
      .rawField( "key", key_.valueText() )
      .field( "size", size_ )
      .field( "data", used )
      .str();
}

VaultSliceInfo::VaultSliceInfo( std::string_view text ) {
   Kiln::ValueTextReader r( text, "Tessel::VaultSliceInfo" );
   key = readKey( r );
   entryCount = r.number< U32 >( "entryCount" );
   freeCount = r.number< U32 >( "freeCount" );
   groupId = r.number< U32 >( "groupId" );
   width = r.number< U32 >( "width" );
   member = r.number< U32 >( "member" );
   r.end();
}

std::string
VaultSliceInfo::vaultString() const {
   return Kiln::ValueText( "Tessel::VaultSliceInfo" )
      .rawField( "key", key.valueText() )
      .field( "entryCount", entryCount )
      .field( "freeCount", freeCount )
      .field( "groupId", groupId )
      .field( "width", width )
      .field( "member", member )
      .str();
}

} // namespace Tessel
