// The log messages of user-defined fields: the unit's UDF hardware ran out
// (a field was refused), and it has room again.
#pragma once

#include "platform/fastlog/LogMessage.h"

namespace Tessel {

inline constexpr FastLog::LogMessageDef udfHwResourceFullMessage{
   "TESSEL_UDF_HW_RESOURCE_FULL", 3,
   "The switch is unable to program UDF due to insufficient hardware resources.",
   "Reconfigure other ACLs or features that use UDF to free up UDF hardware resources." };

inline constexpr FastLog::LogMessageDef udfHwResourceNormalMessage{
   "TESSEL_UDF_HW_RESOURCE_NORMAL", 3,
   "The switch was able to program all the UDFs in the hardware.", "" };

} // namespace Tessel
