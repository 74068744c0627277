// The activity: the lock that serialises an agent's work, the anchors that
// release it around blocking calls, and the loop that runs the work.
// See ActivityLock.h and ActivityLoop.h.
#pragma once

#include "platform/kiln/ActivityLock.h"
#include "platform/kiln/ActivityLoop.h"
