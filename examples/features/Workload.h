// Workload files: which feature loads which rules, one rule per line.
//
//   # comment (from '#' to the end of the line; blank lines are skipped)
//   acl    permit|deny  MATCH...
//   copp   CLASS MATCH... rate=KBIT/S burst=KBIT
//   qos    CLASS MATCH... priority=0-7 [colour=green|yellow|red] [rate=KBIT/S burst=KBIT]
//   mirror SESSION MATCH... [udf=OFFSET:0xHEX] port=PORT
//
//   MATCH  src=A.B.C.D[/LEN] dst=A.B.C.D[/LEN] proto=tcp|udp|icmp|...|0-255
//          sport=P[-P] dport=P[-P] | dports=P[-P][,P[-P]...] (at most 16 ports)
//          dscp=0-63 in=PORT[,PORT|PORT-PORT...]
//          every field optional; an omitted field matches anything
//   udf    bytes at OFFSET (0 to 107) from the L4 header's start, 1 to 16
//
// Lines of one feature keep their order, which is the feature's priority
// order (the first line wins). A bad line stops the reading with
// "<file>:<line>: <what>" (FieldTextError); nothing of the file is used.
#pragma once

#include <string>
#include <vector>

#include "examples/features/AclFeature.h"
#include "examples/features/CoppFeature.h"
#include "examples/features/MirrorFeature.h"
#include "examples/features/QosFeature.h"

namespace Features {

struct Workload {
   std::vector< AclRule > acl;
   std::vector< CoppClass > copp;
   std::vector< QosClass > qos;
   std::vector< MirrorRule > mirror;

   U32 size() const { return U32( acl.size() + copp.size() + qos.size() + mirror.size() ); }
};

// Reads a workload file; throws FieldTextError.
Workload readWorkloadFile( const std::string & path );
// Adds one line's rule to the workload; throws FieldTextError.
void readWorkloadLine( const FieldLine & line, Workload & workload );

} // namespace Features
