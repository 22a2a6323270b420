// The figures behind the histograms.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "base/Failure.h"

namespace dravik::screen {

// An element of an array; raises Subscript out of range (9) behind its end.
template <class Array>
const typename Array::value_type& element(const Array& array, std::size_t index) {
    if (index >= array.size()) throw Failure(RuntimeError::SubscriptOutOfRange);
    return array[index];
}

// Smallest, largest and mean value; raise Subscript out of range (9) for no values.
double MinValue(std::span<const double> values);
double MaxValue(std::span<const double> values);
double AvgValue(std::span<const double> values);

constexpr int kBins = 10;

// Distances counted into bins of equal width from 0 to the largest. A bin holds what lies above its lower
// edge up to and including its upper edge; the first holds 0 too.
struct DistanceBins {
    std::array<std::int16_t, kBins> counts{};
    std::int16_t largestCount = 0;
    double width = 0;  // 0 when every Distance is 0
};

// Raises Overflow (6) when a bin takes more than 32,767 samples, Subscript out of range (9) for no Distances.
DistanceBins binDistances(std::span<const double> distances);

}  // namespace dravik::screen
