// Assertions: programming errors abort the process.
//
// The report names the failed expression (or the message given instead),
// the source file name and the enclosing function's signature exactly as
// the compiler spells it, e.g.
//   TesselTcamGroups.cpp:120: U32 Tessel::getGroupPriority(U32): Assertion '( groupId > 0 )' failed.
// Assertions are always on; they guard invariants that the hardware relies on.
#pragma once

namespace Kiln {

[[noreturn]] void assertionFailed( const char * text, const char * file, int line,
                                   const char * function );

} // namespace Kiln

// The expression text is stringified as written, so call sites keep the
// spacing that the messages must show: KILN_ASSERT( entryId > 0 ).
#define KILN_ASSERT( expr )                                                        \
   ( ( expr ) ? static_cast< void >( 0 )                                           \
              : ::Kiln::assertionFailed( #expr, __FILE_NAME__, __LINE__,           \
                                         __PRETTY_FUNCTION__ ) )

// The message replaces the expression text in the report.
#define KILN_ASSERT_MSG( expr, message )                                           \
   ( ( expr ) ? static_cast< void >( 0 )                                           \
              : ::Kiln::assertionFailed( message, __FILE_NAME__, __LINE__,         \
                                         __PRETTY_FUNCTION__ ) )
