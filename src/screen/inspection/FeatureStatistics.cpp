#include "screen/inspection/FeatureStatistics.h"

#include <algorithm>
#include <cmath>

#include "base/Conversions.h"

namespace dravik::screen {

std::int16_t scaledFeature(double feature) {
    return toInt16(feature * 255);
}

void FeatureStatistics::add(std::int16_t value) {
    minimum_ = std::min(minimum_, value);
    maximum_ = std::max(maximum_, value);
    sum_ = toInt32(static_cast<double>(sum_) + value);
    const std::int32_t square = toInt32(static_cast<double>(value) * value);
    sumOfSquares_ = toInt32(static_cast<double>(sumOfSquares_) + square);
}

double FeatureStatistics::deviation(std::int16_t count) const {
    const double n = count;
    const std::int32_t scaledSquares = toInt32(n * sumOfSquares_);
    const double sum = sum_;
    return std::sqrt((scaledSquares - sum * sum) / (n * n));
}

}  // namespace dravik::screen
