// Fixed-width integer names used throughout the agent. They live in the
// global namespace on purpose: function signatures printed by assertions
// ("U32 Tessel::getGroupPriority(U32)") must show these names unqualified.
#pragma once

#include <cstdint>

typedef uint8_t U8;
typedef uint16_t U16;
typedef uint32_t U32;
typedef uint64_t U64;
typedef int8_t S8;
typedef int16_t S16;
typedef int32_t S32;
typedef int64_t S64;
