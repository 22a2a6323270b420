// The allocations of all threads, counted, of which one may fail.
#pragma once

#include <atomic>

namespace dravik::test {

inline std::atomic<bool> isCounting{false};
inline std::atomic<long> allocations{0};
inline std::atomic<long> failingAllocation{0};  // the number of the one that fails, from 1; 0 for none

}  // namespace dravik::test
