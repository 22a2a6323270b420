// Statistics of one feature over a character's samples, counted in whole numbers of the widths that the
// screen has always used: what does not fit raises Overflow (6).
#pragma once

#include <cstdint>
#include <limits>

namespace dravik::screen {

// A feature, 0 to 1, as a grey value, 0 to 255.
std::int16_t scaledFeature(double feature);

class FeatureStatistics {
  public:
    void add(std::int16_t value);

    std::int16_t minimum() const noexcept { return minimum_; }
    std::int16_t maximum() const noexcept { return maximum_; }
    // Population standard deviation over the `count` values added, 1 or more.
    double deviation(std::int16_t count) const;

  private:
    std::int16_t minimum_ = std::numeric_limits<std::int16_t>::max();
    std::int16_t maximum_ = std::numeric_limits<std::int16_t>::min();
    std::int32_t sum_ = 0;
    std::int32_t sumOfSquares_ = 0;
};

}  // namespace dravik::screen
