// What every control on a user-interface thread shares: the trace switch and the number of the next trace
// line.
#pragma once

#include <cstdint>

namespace dravik::screen {

inline thread_local bool g_bTrace = false;
inline thread_local std::int32_t g_lLogEntry = 0;

}  // namespace dravik::screen
