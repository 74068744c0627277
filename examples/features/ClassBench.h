// Reading ClassBench filter sets and header traces.
//
// A filter line: "@<src>/<len>\t<dst>/<len>\t<lo> : <hi>\t<lo> : <hi>\t0x<proto>/0x<mask>\t0x<flags>/0x<mask>\t"
// A trace line:  "<src>\t<dst>\t<sport>\t<dport>\t<proto>\t<flags>\t<rule index>"
// Rule order is priority order: the first line has the highest priority and
// a rule's index is its 0-based line number. Input comes from outside the
// agent, so every line is checked and a bad one is reported with its number;
// nothing is guessed.
#pragma once

#include <istream>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/kiln/Types.h"

namespace Features {

struct ClassBenchRule {
   U32 srcIp = 0;
   U32 srcLen = 0;   // prefix length 0..32
   U32 dstIp = 0;
   U32 dstLen = 0;
   U16 srcPortLow = 0;
   U16 srcPortHigh = 0xffff;
   U16 dstPortLow = 0;
   U16 dstPortHigh = 0xffff;
   U8 protocol = 0;
   U8 protocolMask = 0;
   U16 flags = 0;
   U16 flagsMask = 0;
};

struct ClassBenchHeader {
   U32 srcIp = 0;
   U32 dstIp = 0;
   U16 srcPort = 0;
   U16 dstPort = 0;
   U8 protocol = 0;
   U32 flags = 0;     // the generator's encoding: ( rule flags << 16 ) | rule flags mask
   U32 ruleIndex = 0; // 0-based index of the rule the header was made from
};

// A line that could not be read: "<file>:<line>: <what>".
class ClassBenchError : public std::runtime_error {
 public:
   using std::runtime_error::runtime_error;
};

// Parses one line; throws ClassBenchError naming `where`.
ClassBenchRule parseClassBenchRule( const std::string & line, const std::string & where );
ClassBenchHeader parseClassBenchHeader( const std::string & line,
                                        const std::string & where );

// Whole files; blank lines are skipped, anything else must parse.
std::vector< ClassBenchRule > readClassBenchRules( std::istream & in,
                                                   const std::string & name );
std::vector< ClassBenchHeader > readClassBenchTrace( std::istream & in,
                                                     const std::string & name );
std::vector< ClassBenchRule > readClassBenchRulesFile( const std::string & path );
std::vector< ClassBenchHeader > readClassBenchTraceFile( const std::string & path );

// The mask of a prefix length: 24 gives 0xffffff00.
U32 prefixMask( U32 length );

// The value/mask pairs that together match exactly the ports low..high,
// fewest first-fit prefixes (at most 30 for a 16-bit range).
struct PortPrefix {
   U16 value;
   U16 mask;
};
std::vector< PortPrefix > portRangePrefixes( U16 low, U16 high );

} // namespace Features
