// The time that a piece of work takes: the median of nine runs, in milliseconds.
#pragma once

#include <algorithm>
#include <array>
#include <chrono>

namespace dravik {

template <class Work>
double medianTime(const Work& work) {
    std::array<double, 9> times{};
    for (double& time : times) {
        const auto start = std::chrono::steady_clock::now();
        work();
        time = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    }
    std::nth_element(times.begin(), times.begin() + times.size() / 2, times.end());
    return times[times.size() / 2];
}

}  // namespace dravik
