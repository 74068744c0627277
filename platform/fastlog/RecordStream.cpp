// The process's current FastLog ring.
#include "platform/fastlog/FastLog.h"

namespace FastLog {

namespace {

constexpr U32 builtInCapacity = 4096;

RecordRing &
builtInRing() {
   alignas( 64 ) static U8 memory[ RecordRing::bytesFor( builtInCapacity ) ];
   static RecordRing ring( memory, sizeof( memory ) );
   return ring;
}

std::atomic< RecordRing * > current{ nullptr };

RecordRing &
currentRing() {
   RecordRing * ring = current.load( std::memory_order_acquire );
   return ring != nullptr ? *ring : builtInRing();
}

} // namespace

void
recordRingIs( RecordRing * ring ) {
   current.store( ring, std::memory_order_release );
}

RecordRing &
recordRing() {
   return currentRing();
}

std::vector< RecordText >
records() {
   return currentRing().records();
}

void
recordsDump( std::ostream & out ) {
   currentRing().dump( out );
}

void
recordsDump( int fd ) {
   currentRing().dump( fd );
}

void
recordsClear() {
   currentRing().clear();
}

namespace detail {

void
append( U32 kinds, const U64 * words, U32 count ) {
   currentRing().append( kinds, words, count );
}

} // namespace detail

} // namespace FastLog
