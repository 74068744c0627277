// Port lists and the SDK's port bitmaps.
//
// A TesselPortList is a set of front-panel port numbers, kept ascending
// without repeats, so two lists of the same ports compare equal whatever
// order they were built in. The SDK's port bitmaps are 7 words of 32 bits,
// bit n (word n / 32, bit n % 32) standing for port n, so ports are 0 to
// 223; a port outside that is refused with Kiln::RangeException
// ("TesselPortList: port 224 is above the highest port 223").
#pragma once

#include "platform/kiln/Types.h"

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace TesselTypes {

constexpr U32 portBitmapWords = 7;
constexpr U32 maxPortCount = portBitmapWords * 32;

class TesselPortList {
 public:
   typedef std::vector< U32 >::const_iterator const_iterator;

   TesselPortList() = default;
   TesselPortList( std::initializer_list< U32 > ports );
   explicit TesselPortList( const std::vector< U32 > & ports );
   // Value('TesselTypes::TesselPortList', ** {'ports': [1, 5, 40]}); throws
   // Kiln::ValueTextError on malformed text, RangeException on a bad port.
   explicit TesselPortList( std::string_view valueText );

   bool portHas( U32 port ) const;
   // Adds the port; returns whether it was new.
   bool portIs( U32 port );
   // Removes the port; returns whether it was there.
   bool portDel( U32 port );
   void portDelAll() { ports_.clear(); }

   size_t size() const { return ports_.size(); }
   bool empty() const { return ports_.empty(); }
   const std::vector< U32 > & ports() const { return ports_; }
   const_iterator begin() const { return ports_.begin(); }
   const_iterator end() const { return ports_.end(); }

   std::string valueText() const;
   bool operator==( const TesselPortList & ) const = default;

 private:
   std::vector< U32 > ports_;
};

// Fills `words` with the bitmap of `ports` (every other bit cleared).
void portListToBitmap( const TesselPortList & ports, U32 ( &words )[ portBitmapWords ] );
// The ports whose bits are set in `words`.
TesselPortList bitmapToPortList( const U32 ( &words )[ portBitmapWords ] );

} // namespace TesselTypes

template<>
struct std::hash< TesselTypes::TesselPortList > {
   size_t operator()( const TesselTypes::TesselPortList & ports ) const noexcept;
};
