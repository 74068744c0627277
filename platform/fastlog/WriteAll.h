// Writing text to a descriptor in full.
#pragma once

#include <string_view>

namespace FastLog {

// Writes all of `text` to `fd`, going on after partial writes and signals.
// Returns false on an error (errno tells which); the descriptor stays open.
bool writeAll( int fd, std::string_view text );

} // namespace FastLog
