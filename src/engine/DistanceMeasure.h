// Distances of samples: how much nearer a sample is to its own character than to the nearest other one,
// judged by the characters' means without the sample itself. 0 is on its character's mean, 0.5 as near to
// another, 1 on another's mean.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "engine/Sample.h"

namespace dravik {

// Sums over the samples of each character, kept up to date as samples come and go.
class ClassStatistics {
  public:
    void add(const Sample& sample);
    void remove(const Sample& sample);

    struct Class {
        std::int32_t code = 0;
        std::int32_t count = 0;
        std::array<double, kInputCount> sums{};
    };
    // Nothing when no sample has that code.
    const Class* find(std::int32_t code) const;
    std::span<const Class> classes() const noexcept { return classes_; }

  private:
    friend class DistanceMeasure;
    std::vector<Class> classes_;  // some may be without samples
    std::unordered_map<std::int32_t, std::size_t> places_;
    std::array<double, kInputCount> squares_{};
    std::int64_t total_ = 0;
};

// Measures against the statistics as they were when it was made.
class DistanceMeasure {
  public:
    explicit DistanceMeasure(const ClassStatistics& statistics);

    // `member` tells that the sample is one of those in the statistics. At least 0 and at most 1.
    double distance(const Sample& sample, bool member) const;

  private:
    struct Middle {
        std::int32_t code;
        float count;
    };
    std::array<float, kInputCount> weights_{};
    std::vector<Middle> middles_;
    std::vector<float> means_;  // a weighted row for each class
};

}  // namespace dravik
