// Processor time that images take, in milliseconds.
#pragma once

#include <time.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace dravik {

// Of the calling thread alone: those that a library keeps waiting take time of their own.
inline double processorTime() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return 1e3 * static_cast<double>(now.tv_sec) + 1e-6 * static_cast<double>(now.tv_nsec);
}

class Times {
  public:
    void add(const std::string& image, std::size_t lines, double time) {
        byLines_[lines].push_back(time);
        slowest_.emplace_back(time, image);
    }
    // Medians by the number of lines, then those that take longest.
    void print() {
        for (auto& [lines, times] : byLines_) {
            std::sort(times.begin(), times.end());
            std::printf(
                "processor time of %zu images of %zu lines: median %.1f ms, nine in ten below %.1f ms\n",
                times.size(), lines, times[times.size() / 2], times[times.size() * 9 / 10]);
        }
        std::sort(slowest_.rbegin(), slowest_.rend());
        std::printf("the slowest:");
        for (std::size_t i = 0; i < std::min(kSlowest, slowest_.size()); ++i)
            std::printf(" %.1f ms %s", slowest_[i].first, slowest_[i].second.c_str());
        std::printf("\n");
    }

  private:
    static constexpr std::size_t kSlowest = 14;
    std::map<std::size_t, std::vector<double>> byLines_;
    std::vector<std::pair<double, std::string>> slowest_;
};

}  // namespace dravik
