// The demonstration of the shared chip resources (class ids, user-defined
// fields, policers) on a unit of its own.
#pragma once

// Builds its own box; call it while no other box exists.
void demoSharedResources();
