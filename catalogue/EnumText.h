// Text forms shared by the catalogue's enumerations: each enumeration keeps
// a table of its enumerator names indexed by value, and these helpers turn
// values into text and text back into values.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/kiln/Types.h"

namespace Tessel::EnumText {

using Names = std::span< const char * const >;

// The enumerator name of value, or "" when the enumeration has no such value.
std::string_view
name( Names names, U32 value );

// The enumerator name of value, or its decimal digits when the enumeration
// has no such value, so that a stray number still shows in traces.
std::string
text( Names names, U32 value );

// The value whose enumerator name is exactly text.
std::optional< U32 >
parse( Names names, std::string_view text );

// value itself; throws std::out_of_range naming the enumeration when the
// enumeration has no such value.
U32
checked( const char * typeName, Names names, U32 value );

// The value named text; throws std::invalid_argument naming the enumeration
// and the text when no enumerator has that name.
U32
parsed( const char * typeName, Names names, std::string_view text );

} // namespace Tessel::EnumText
